// The progress of something that is read while the main window waits, with a way past it.
#pragma once

#include <wx/string.h>

#include <functional>

class wxWindow;

namespace corvane {

/// What is read and what the box says of it.
struct reading {
  wxString text;                 ///< what is read
  wxString past;                 ///< label of the button that ends it
  wxString tip;                  ///< what the button does
  std::function<bool()> step;    ///< reads for a moment; false: all is read
  std::function<double()> part;  ///< that is read, 0 to 1
};

/// Reads to the end, with a box once that takes longer than a moment. Returns false if the user
/// wants no more of it.
bool read_with_box(wxWindow& owner, const reading& what);

}  // namespace corvane
