#include "ui/widgets/wx_text.h"

#include "formats/text.h"
#include "platform/text/utf8.h"

#include <algorithm>
#include <cstddef>

namespace corvane {
namespace {

/// Length of the well-formed character at the front; 0 when there is none.
std::size_t character_length(std::string_view text) {
  const std::size_t most = std::min<std::size_t>(4, text.size());
  for (std::size_t n = 1; n <= most; ++n)
    if (is_utf8(text.substr(0, n)))
      return n;
  return 0;
}

}  // namespace

wxString wx_text(std::string_view text) {
  if (is_utf8(text))
    return wxString::FromUTF8Unchecked(text.data(), text.size());
  std::string whole;
  while (!text.empty()) {
    const std::size_t n = character_length(text);
    if (n == 0)
      whole += "\xEF\xBF\xBD";
    else
      whole += text.substr(0, n);
    text.remove_prefix(std::max<std::size_t>(n, 1));
  }
  return wxString::FromUTF8Unchecked(whole.data(), whole.size());
}

wxString wx_lines(std::string_view text) {
  return wx_text(replace_all(text, crlf, "\n"));
}

wxArrayString wx_rows(const std::vector<std::string>& rows) {
  wxArrayString all;
  for (const std::string& row : rows)
    all.push_back(wx_text(row));
  return all;
}

std::string utf8_of(const wxString& text) {
  return text.utf8_string();
}

}  // namespace corvane
