// Text in lines that fit.
#pragma once

#include <wx/string.h>

class wxDC;

namespace corvane {

/// The text with line breaks, so that no line is wider than `width` pixels in the font of `dc`.
/// Lines end at blanks; a word that is too wide for a line, as a long path is, is cut.
wxString wrapped(const wxDC& dc, const wxString& text, int width);

}  // namespace corvane
