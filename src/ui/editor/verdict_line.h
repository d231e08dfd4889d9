// One line about a command that is typed: what it does, or what is wrong with it, with a mark.
#pragma once

#include "menus/action_choices.h"

#include <wx/panel.h>

class wxStaticBitmap;
class wxStaticText;

namespace corvane {

/// Always as high as its mark, so that nothing moves while one types.
class verdict_line : public wxPanel {
 public:
  explicit verdict_line(wxWindow* parent);

  /// The text is shortened to the room that there is; all of it is the tip.
  void show(const action_verdict& verdict);

 private:
  wxStaticBitmap* mark_;
  wxStaticText* words_;
};

}  // namespace corvane
