#include "ui/display_order.h"

// The display's own calls, kept away from the toolkit: their macros have everyday names.
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <chrono>
#include <poll.h>

namespace corvane::testing_support {
namespace {

using std::chrono::steady_clock;

/// A connection of the robot's own, with a window that is never shown.
class asker {
 public:
  asker() : display_(XOpenDisplay(nullptr)) {
    if (display_ == nullptr)
      return;
    root_ = DefaultRootWindow(display_);
    window_ = XCreateSimpleWindow(display_, root_, 0, 0, 1, 1, 0, 0, 0);
    XSelectInput(display_, window_, PropertyChangeMask);
  }
  asker(const asker&) = delete;
  asker& operator=(const asker&) = delete;
  ~asker() {
    if (display_ != nullptr)
      XCloseDisplay(display_);
  }

  /// Asks the window manager how wide its frames are; it takes the questions and everything else
  /// in the order in which they come.
  void ask_and_wait() {
    if (display_ == nullptr || !window_manager_is_there())
      return;
    XEvent event{};
    while (XCheckTypedWindowEvent(display_, window_, PropertyNotify, &event) != False) {
    }
    event = XEvent{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window_;
    event.xclient.message_type = XInternAtom(display_, "_NET_REQUEST_FRAME_EXTENTS", False);
    event.xclient.format = 32;
    XSendEvent(display_, root_, False, SubstructureNotifyMask | SubstructureRedirectMask, &event);
    XFlush(display_);
    const auto end = steady_clock::now() + std::chrono::seconds(2);
    while (XCheckTypedWindowEvent(display_, window_, PropertyNotify, &event) == False &&
           steady_clock::now() < end) {
      pollfd answers{ConnectionNumber(display_), POLLIN, 0};
      poll(&answers, 1, 50);
    }
  }

 private:
  bool window_manager_is_there() {
    Atom type = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char* value = nullptr;
    XGetWindowProperty(display_, root_, XInternAtom(display_, "_NET_SUPPORTING_WM_CHECK", False), 0,
                       1, False, XA_WINDOW, &type, &format, &count, &left, &value);
    if (value != nullptr)
      XFree(value);
    return count == 1;
  }

  Display* display_;
  Window root_ = 0;
  Window window_ = 0;
};

}  // namespace

void wait_for_window_manager() {
  static asker one;
  one.ask_and_wait();
}

}  // namespace corvane::testing_support
