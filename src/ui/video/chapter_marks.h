// How typed chapter times look in their text field, and what is said about them.
#pragma once

#include "tools/chapters.h"

#include <wx/colour.h>

#include <vector>

class wxTextCtrl;

namespace corvane {

/// The colour in which a line of that fate stands; not Ok: the field's own.
wxColour colour_of(chapter_line_fate fate);

/// Colours and underlines the lines that will not be stored as they stand. `lines` are those of
/// the field's text.
void mark_chapter_lines(wxTextCtrl& field, const std::vector<chapter_line>& lines);

}  // namespace corvane
