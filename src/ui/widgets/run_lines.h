// What a window that makes something tells of it: a sentence with a mark, or, while it makes, the
// step, how far it is, and the button that stops it. Each is a panel of its own, so that what
// belongs together is shown and hidden together; a window shows one of the two.
#pragma once

#include <wx/panel.h>

#include <functional>
#include <string>

class wxButton;
class wxGauge;
class wxStaticBitmap;
class wxStaticText;

namespace corvane {

/// The sentence: controls "mark" and "said".
class said_line : public wxPanel {
 public:
  explicit said_line(wxWindow* parent);

  /// `picture`: the icon that is its mark. Without a text there is no mark either.
  void say(const std::string& text, const char* picture);

 private:
  wxStaticBitmap* mark_;
  wxStaticText* said_;
};

/// How far it is: controls "step", "progress" and "stop".
class run_line : public wxPanel {
 public:
  /// A click on the button, which has this label and tip, calls `stop`.
  run_line(wxWindow* parent, const char* label, const char* tip, std::function<void()> stop);

  /// `percent`: how much of all is done, from 0 to 100.
  void tell(double percent, const std::string& step);

  /// The keyboard goes to the button.
  void focus_stop();

 private:
  wxStaticText* step_;
  wxGauge* gauge_;
  wxButton* stop_;
};

}  // namespace corvane
