// A status bar whose sentences can be read whole: what a pane has no room for is shortened there,
// and is the bar's tip.
#pragma once

#include <wx/statusbr.h>

#include <vector>

namespace corvane {

class telling_status_bar : public wxStatusBar {
 public:
  /// A pane for each of `widths`, as wxStatusBar::SetStatusWidths takes them.
  telling_status_bar(wxWindow* parent, const std::vector<int>& widths);

 protected:
  void DoUpdateStatusText(int pane) override;

 private:
  void show_tip();
};

}  // namespace corvane
