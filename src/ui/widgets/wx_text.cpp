#include "ui/widgets/wx_text.h"

#include "formats/text.h"
#include "platform/text/utf8.h"

#include <wx/clipbrd.h>
#include <wx/dataobj.h>

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

void copy_to_clipboard(const wxString& text) {
  const wxClipboardLocker clipboard;
  if (!!clipboard)
    wxTheClipboard->SetData(new wxTextDataObject(text));
}

wxString tenths_text(double seconds) {
  const auto tenths = static_cast<long long>(seconds * 10 + 0.001);
  return wxString::Format("%lld:%02lld:%02lld.%lld", tenths / 36000, tenths / 600 % 60,
                          tenths / 10 % 60, tenths % 10);
}

}  // namespace corvane
