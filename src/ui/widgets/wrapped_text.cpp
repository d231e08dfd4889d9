#include "ui/widgets/wrapped_text.h"

#include <wx/arrstr.h>
#include <wx/dc.h>
#include <wx/tokenzr.h>

#include <cstddef>

namespace corvane {
namespace {

/// How many characters of the text fit; at least one, so that it gets shorter.
std::size_t fitting(const wxDC& dc, const wxString& text, int width) {
  wxArrayInt widths;
  dc.GetPartialTextExtents(text, widths);
  std::size_t count = 1;
  while (count < widths.size() && widths[count] <= width)
    ++count;
  return count;
}

/// Lines of a text without line breaks.
wxString wrapped_line(const wxDC& dc, const wxString& text, int width) {
  wxString whole, line;
  for (wxString word : wxStringTokenize(text, " ", wxTOKEN_RET_EMPTY_ALL)) {
    const wxString longer = line.empty() ? word : line + " " + word;
    if (dc.GetTextExtent(longer).x <= width) {
      line = longer;
      continue;
    }
    if (!line.empty())
      whole += line + "\n";
    while (dc.GetTextExtent(word).x > width && word.length() > 1) {
      const std::size_t count = fitting(dc, word, width);
      whole += word.Left(count) + "\n";
      word = word.Mid(count);
    }
    line = word;
  }
  return whole + line;
}

}  // namespace

wxString wrapped(const wxDC& dc, const wxString& text, int width) {
  wxString whole;
  for (const wxString& line : wxStringTokenize(text, "\n", wxTOKEN_RET_EMPTY_ALL))
    whole += (whole.empty() ? "" : "\n") + wrapped_line(dc, line, width);
  return whole;
}

}  // namespace corvane
