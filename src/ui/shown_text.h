// Text between the core (UTF-8) and the toolkit.
#pragma once

#include <wx/string.h>

#include <string>
#include <string_view>

namespace corvane {

/// UTF-8 as the toolkit takes it. Bytes that are not UTF-8 (a tool's message in another encoding, a
/// damaged project) each become U+FFFD, so that the rest of the text is still shown.
wxString shown(std::string_view text);

/// The same with line breaks as controls take them: CR LF becomes LF.
wxString shown_lines(std::string_view text);

/// The toolkit's text as UTF-8.
std::string utf8_of(const wxString& text);

}  // namespace corvane
