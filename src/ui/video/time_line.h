// The time line of a player: where it stands, where chapters are marked and where the disc begins
// one. A click or a drag chooses a time. Its keys are the window's.
#pragma once

#include <wx/window.h>

#include <functional>
#include <vector>

namespace corvane {

class time_line : public wxWindow {
 public:
  /// `choose` gets the time that the user points at. All times are in seconds.
  time_line(wxWindow* parent, std::function<void(double)> choose);
  ~time_line() override;

  void set_length(double seconds);
  void set_position(double seconds, double landing);
  void set_marks(std::vector<double> seconds);

  double position() const { return position_; }
  const std::vector<double>& marks() const { return marks_; }

  /// The place of a time, in pixels from the left.
  int place_of(double seconds) const;

  bool AcceptsFocus() const override { return IsEnabled(); }

 protected:
  wxSize DoGetBestClientSize() const override;

 private:
  double time_at(int x) const;
  int margin() const;
  void on_paint();
  void on_pointer(wxMouseEvent& event);

  std::function<void(double)> choose_;
  double length_ = 0;
  double position_ = 0;
  double landing_ = 0;
  std::vector<double> marks_;
};

}  // namespace corvane
