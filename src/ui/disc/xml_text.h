// How XML is shown in a text editor: fixed pitch, line numbers, colours on the system's own
// background.
#pragma once

#include <string>
#include <string_view>

class wxStyledTextCtrl;
class wxWindow;

namespace corvane {

wxStyledTextCtrl* make_xml_text(wxWindow* parent);

/// Fills the editor (UTF-8, lines ended by CR LF): nothing to undo, the caret at the start.
void fill_xml_text(wxStyledTextCtrl& editor, std::string_view text);
std::string text_of(wxStyledTextCtrl& editor);

/// Selects the next or the last place where the words stand, from the selection on and around the
/// end, whatever the case of letters. False when there is none.
bool find_in(wxStyledTextCtrl& editor, const std::string& words, bool backwards);

}  // namespace corvane
