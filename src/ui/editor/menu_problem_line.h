// The line below the menu editor's picture: what stands against the menu as it is, the worst of it
// in words, all of it with what to do in its tip. It is looked at again a moment after a change.
// Looks that spumux would not sort out have their cures beside it, each a click.
#pragma once

#include "disc/finding.h"
#include "menus/look_cures.h"
#include "ui/editor/menu_event.h"

#include <wx/panel.h>
#include <wx/timer.h>

#include <functional>
#include <vector>

class wxButton;
class wxStaticBitmap;
class wxStaticText;

namespace corvane {

class menu_problem_line : public wxPanel {
 public:
  /// `look`: what stands against the menu of `editor` now. A click on a cure is told.
  menu_problem_line(wxWindow* parent, const menu_editor& editor,
                    std::function<std::vector<finding>()> look, const tell_event& tell);

  /// Something may have changed.
  void look_again();

 private:
  void show();
  void show_cures(const look_cures& cures);

  const menu_editor& editor_;
  std::function<std::vector<finding>()> look_;
  wxTimer rested_;
  wxStaticBitmap* mark_;
  wxStaticText* words_;
  wxButton *order_, *fewer_;
};

}  // namespace corvane
