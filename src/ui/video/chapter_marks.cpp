#include "ui/video/chapter_marks.h"

#include <wx/settings.h>
#include <wx/textctrl.h>
#include <wx/wupdlock.h>

#include <algorithm>
#include <cstddef>

namespace corvane {

// Both readable on the ground of a text field.
wxColour colour_of(chapter_line_fate fate) {
  const bool dark = wxSystemSettings::GetAppearance().IsUsingDarkBackground();
  switch (fate) {
    case chapter_line_fate::typo:
      return dark ? wxColour(255, 128, 128) : wxColour(192, 0, 0);
    case chapter_line_fate::left_out:
    case chapter_line_fate::cut:
      return dark ? wxColour(255, 180, 84) : wxColour(150, 84, 0);
    case chapter_line_fate::blank:
    case chapter_line_fate::stored:
      break;
  }
  return {};
}

void mark_chapter_lines(wxTextCtrl& field, const std::vector<chapter_line>& lines) {
  const wxWindowUpdateLocker still(&field);
  const wxString text = field.GetValue();
  wxTextAttr plain(field.GetForegroundColour());  // what is not named would stay
  plain.SetFontUnderlined(wxTEXT_ATTR_UNDERLINE_NONE);
  field.SetStyle(0, static_cast<long>(text.length()), plain);
  std::size_t begin = 0;
  for (const chapter_line& line : lines) {
    const std::size_t end = std::min(text.find('\n', begin), text.length());
    if (const wxColour colour = colour_of(line.fate); colour.IsOk()) {
      wxTextAttr mark(colour);
      mark.SetFontUnderlined(wxTEXT_ATTR_UNDERLINE_SPECIAL, colour);
      field.SetStyle(static_cast<long>(begin), static_cast<long>(end), mark);
    }
    begin = end + 1;
  }
}

}  // namespace corvane
