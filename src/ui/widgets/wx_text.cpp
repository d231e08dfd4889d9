#include "ui/widgets/wx_text.h"

#include "formats/text.h"
#include "platform/text/utf8.h"

namespace corvane {

wxString wx_text(std::string_view text) {
  if (is_utf8(text))
    return wxString::FromUTF8Unchecked(text.data(), text.size());
  const std::string whole = repaired_utf8(text);
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
