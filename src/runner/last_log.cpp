#include "runner/last_log.h"

#include "formats/text.h"
#include "platform/files/files.h"
#include "platform/text/utf8.h"
#include "runner/output_lines.h"

#include <algorithm>
#include <cstdint>
#include <fstream>

namespace corvane {
namespace {

/// More than that nobody reads in a window.
constexpr std::uintmax_t most_shown = std::uintmax_t{4} << 20;

}  // namespace

log_line_kind kind_of_log_line(std::string_view line) {
  line = trim_left(line);
  if (is_error_line(line))
    return log_line_kind::error;
  if (line.starts_with("WARN") || line.starts_with("++ WARN") || line.starts_with("--WARN"))
    return log_line_kind::warning;
  return step_in_line(line).empty() ? log_line_kind::plain : log_line_kind::step;
}

std::vector<line_of_log> log_lines(std::string_view log) {
  std::string text = repaired_utf8(log);
  std::replace(text.begin(), text.end(), '\0', ' ');
  std::vector<line_of_log> lines;
  for (std::string& line : split(text, crlf)) {
    if (line.starts_with(' '))
      line.erase(0, 1);
    line.erase(trim_right(line).size());
    const log_line_kind kind = lines.empty() ? log_line_kind::plain : kind_of_log_line(line);
    lines.push_back({std::move(line), kind});
  }
  while (!lines.empty() && lines.back().text.empty())
    lines.pop_back();
  return lines;
}

std::vector<line_of_log> last_log(const std::string& path) {
  const std::uintmax_t size = file_size(path).value_or(0);
  const std::uintmax_t left_out = size > most_shown ? size - most_shown : 0;
  std::ifstream file(path_of(path), std::ios::binary);
  file.seekg(static_cast<std::streamoff>(left_out));
  std::string text(static_cast<std::size_t>(size - left_out), '\0');
  file.read(text.data(), static_cast<std::streamsize>(text.size()));
  text.resize(static_cast<std::size_t>(std::max<std::streamsize>(0, file.gcount())));
  if (left_out > 0) {
    text.erase(0, text.find('\n') + 1);
    text.insert(0, "(the beginning is left out here; the whole log is \"" + path + "\")\r\n");
  }
  return log_lines(text);
}

}  // namespace corvane
