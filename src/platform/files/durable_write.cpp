#include "platform/files/durable_write.h"

#include "platform/files/files.h"

#include <charconv>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace corvane {
namespace {

namespace fs = std::filesystem;
using native_char = fs::path::value_type;

/// Of a longer name only the beginning stands in the name beside it. Some systems allow no more
/// than 143 bytes.
constexpr std::size_t longest_beginning = 100;

/// Whether a name must not be cut before this unit of UTF-8, or of UTF-16.
constexpr bool continues(native_char c) {
  if constexpr (sizeof(native_char) == 1)
    return (c & 0xC0) == 0x80;
  else
    return (c & 0xFC00) == 0xDC00;
}

/// In the names beside targets, before the number. Others write files of parts too ("film.part12"),
/// and those are nobody's to remove: this one is made by nobody else.
constexpr std::string_view part_mark = ".corvane-part";

/// The name beside the target without the number at its end.
fs::path beginning_beside(const fs::path& target) {
  fs::path::string_type name = target.filename().native();
  if (name.size() > longest_beginning) {
    std::size_t end = longest_beginning;
    while (end > 0 && continues(name[end]))
      --end;
    name.resize(end);
  }
  return fs::path(name) += part_mark;
}

/// The process whose part of a text has this name; nullopt when it is no name of a part.
std::optional<unsigned long> maker_of(std::string_view name, std::string_view beginning) {
  if (!name.starts_with(beginning))
    return std::nullopt;
  const char* const end = name.data() + name.size();
  unsigned long process = 0;
  const auto read = std::from_chars(name.data() + beginning.size(), end, process);
  return read.ec == std::errc() && read.ptr == end ? std::optional(process) : std::nullopt;
}

}  // namespace

fs::path unused_name_beside(const fs::path& target) {
  return target.parent_path() / (beginning_beside(target) += std::to_string(process_number()));
}

std::optional<fs::path> target_of_part(const fs::path& name) {
  const std::string text = text_of(name.filename());
  const auto at = text.rfind(part_mark);
  if (at == std::string::npos || !maker_of(text, text.substr(0, at + part_mark.size())))
    return std::nullopt;
  return name.parent_path() / path_of(text.substr(0, at));
}

void remove_left_parts_of(const fs::path& target) {
  const std::string beginning = text_of(beginning_beside(target));
  const fs::path folder = target.has_parent_path() ? target.parent_path() : fs::path(".");
  for (const std::string& name : files_in(text_of(folder))) {
    const auto process = maker_of(name, beginning);
    std::error_code ignored;
    if (process && has_ended(*process))
      fs::remove(folder / path_of(name), ignored);
  }
}

}  // namespace corvane
