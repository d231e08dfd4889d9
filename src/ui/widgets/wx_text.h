// Text between the core (UTF-8) and the toolkit.
#pragma once

#include <wx/arrstr.h>
#include <wx/string.h>

#include <string>
#include <string_view>
#include <vector>

namespace corvane {

/// UTF-8 as the toolkit takes it. Bytes that are not UTF-8 (a tool's message in another encoding, a
/// damaged project) each become U+FFFD, so that the rest of the text is still shown.
wxString wx_text(std::string_view text);

/// The same with line breaks as controls take them: CR LF becomes LF.
wxString wx_lines(std::string_view text);

/// All entries of a list.
wxArrayString wx_rows(const std::vector<std::string>& rows);

/// The toolkit's text as UTF-8.
std::string utf8_of(const wxString& text);

/// Has the clipboard hold it; nothing happens if another program holds the clipboard.
void copy_to_clipboard(const wxString& text);

/// "1:02:03.4", without what lies beyond the tenth.
wxString tenths_text(double seconds);

}  // namespace corvane
