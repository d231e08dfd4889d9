// A column of controls that scrolls when the screen is too small for all of it.
#pragma once

#include <wx/scrolwin.h>

class wxSizer;

namespace corvane {

class scrolled_column : public wxScrolledWindow {
 public:
  explicit scrolled_column(wxWindow* parent);

  /// The controls; they are children of this window.
  void hold(wxSizer* controls);

  /// Whether it may be lower than its controls, with a scroll bar beside them. At first it may not:
  /// it wants as much room as they do.
  void let_scroll(bool scrolls);
  bool scrolls() const { return scrolls_; }

 protected:
  wxSize DoGetBestSize() const override;

 private:
  bool scrolls_ = false;
};

}  // namespace corvane
