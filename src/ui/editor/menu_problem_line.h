// The line below the menu editor's picture: what stands against the menu as it is, the worst of it
// in words, all of it with what to do in its tip. It is looked at again a moment after a change.
#pragma once

#include "disc/finding.h"

#include <wx/panel.h>
#include <wx/timer.h>

#include <functional>
#include <vector>

class wxStaticBitmap;
class wxStaticText;

namespace corvane {

class menu_problem_line : public wxPanel {
 public:
  menu_problem_line(wxWindow* parent, std::function<std::vector<finding>()> look);

  /// Something may have changed.
  void look_again();

 private:
  void show();

  std::function<std::vector<finding>()> look_;
  wxTimer rested_;
  wxStaticBitmap* mark_;
  wxStaticText* words_;
};

}  // namespace corvane
