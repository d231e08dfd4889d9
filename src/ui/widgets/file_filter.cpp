#include "ui/widgets/file_filter.h"

#include "formats/text.h"

#include <cstddef>

namespace corvane {
namespace {

bool is_letter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

std::string case_blind(const std::string& pattern) {
  std::string blind;
  for (const char c : pattern) {
    if (!is_letter(c)) {
      blind += c;
      continue;
    }
    const char low = static_cast<char>(c | 0x20);
    const char high = static_cast<char>(c & ~0x20);
    blind.append({'[', low, high, ']'});
  }
  return blind;
}

}  // namespace

std::vector<filter_entry> filter_entries(std::string_view filter) {
  std::vector<filter_entry> entries;
  const std::vector<std::string> pieces = split(filter, '|');
  for (std::size_t i = 0; i + 1 < pieces.size(); i += 2) {
    filter_entry entry{pieces[i], {}};
    for (const std::string& pattern : split(pieces[i + 1], ';'))
      if (!trim(pattern).empty())
        entry.patterns.emplace_back(trim(pattern));
    if (!entry.patterns.empty())
      entries.push_back(std::move(entry));
  }
  return entries;
}

std::string toolkit_filter(std::string_view filter, path_style style) {
  std::vector<std::string> pieces;
  for (filter_entry& entry : filter_entries(filter)) {
    if (style == path_style::posix)
      for (std::string& pattern : entry.patterns)
        pattern = case_blind(pattern);
    pieces.push_back(entry.text);
    pieces.push_back(join(entry.patterns, ";"));
  }
  return join(pieces, "|");
}

std::string with_implied_extension(std::string_view path, std::string_view filter) {
  std::string whole(path);
  const std::vector<filter_entry> entries = filter_entries(filter);
  if (whole.empty() || entries.size() != 1 || entries[0].patterns.size() != 1)
    return whole;
  const std::string& pattern = entries[0].patterns[0];
  if (!pattern.starts_with("*.") || pattern.find_first_of("*?", 1) != std::string::npos)
    return whole;
  const std::string extension = pattern.substr(1);
  const std::size_t separator_at = whole.find_last_of("/\\");
  const std::string name = whole.substr(separator_at == std::string::npos ? 0 : separator_at + 1);
  if (name.empty() || (name.size() > extension.size() && lower(name).ends_with(lower(extension))))
    return whole;
  return whole + extension;
}

}  // namespace corvane
