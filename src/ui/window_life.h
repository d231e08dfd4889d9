// The life of a window that stands over another one and works on what is that one's: what begins
// when it opens, what its events may do while a message stands over it, and how it goes.
#pragma once

#include "ui/wx_prompts.h"

#include <functional>
#include <optional>

class wxTopLevelWindow;
class wxWindow;
class wxCloseEvent;

namespace corvane {

/// A member of that window, which outlives its controls' events.
class window_life {
 public:
  /// What is particular to a window. Each may be empty.
  struct ways {
    /// Before the window goes: lets go of files.
    std::function<void()> release;
    /// Whether the user may close it now. It may ask.
    std::function<bool()> may_close;
    /// After its owner can be used again. Not called when the window goes with its owner.
    std::function<void()> left;
  };

  /// `window` stands over `owner`. Boxes and dialogs of `ask` belong to it once it has begun.
  window_life(wxTopLevelWindow& window, wxWindow& owner, wx_prompts& ask, ways particular);
  window_life(const window_life&) = delete;
  window_life& operator=(const window_life&) = delete;

  /// The owner cannot be used any more. To be called when the controls are there.
  void begin();

  /// One event. It is left out, and the answer false, while another one is on: a message or a file
  /// dialog stands over it, which does not disable the window on every system; and once the window
  /// has gone.
  bool during(const std::function<void()>& event);

  /// Whether `during` would leave an event out.
  bool is_busy() const { return in_event_ || leaving_; }

  /// Goes for good: the owner can be used again and gets the keyboard. Only once.
  void leave();

 private:
  void on_close(wxCloseEvent& event);

  wxTopLevelWindow& window_;
  wxWindow& owner_;
  wx_prompts& ask_;
  ways ways_;
  std::optional<wx_prompts::asking_window> asking_;
  bool in_event_ = false;
  bool leaving_ = false;
};

}  // namespace corvane
