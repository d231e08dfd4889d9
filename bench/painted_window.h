// Watches an X server for the first window that a program paints.
#pragma once

#include <chrono>

struct _XDisplay;

namespace corvane::bench {

/// The connection to an X server without a window manager. Paints the root window in a colour that
/// no program uses, so that a window is seen to be painted when another colour appears where it is.
class painted_window {
 public:
  /// Connects to $DISPLAY; ends the program with a message when there is none.
  painted_window();
  ~painted_window();
  painted_window(const painted_window&) = delete;
  painted_window& operator=(const painted_window&) = delete;

  /// Paints the root and forgets earlier windows.
  void clear();

  /// Waits until a mapped top-level window larger than a dialog's button shows something. False
  /// when none did within the time.
  bool wait(std::chrono::milliseconds longest);

 private:
  bool any_window_is_painted();
  bool line_is_painted(int x, int y, int width, int height);

  _XDisplay* display_;
};

}  // namespace corvane::bench
