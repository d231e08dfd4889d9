#include "painted_window.h"

#include <X11/Xlib.h>
#include <X11/Xutil.h>
#include <algorithm>
#include <cstdlib>
#include <iostream>
#include <thread>

namespace corvane::bench {
namespace {

constexpr unsigned long root_colour = 0x00ff00ff;
constexpr int smallest_window = 100;

// A window may go between being listed and being asked about.
int ignore_errors(Display*, XErrorEvent*) {
  return 0;
}

}  // namespace

painted_window::painted_window() : display_(XOpenDisplay(nullptr)) {
  if (display_ == nullptr) {
    std::cerr << "first_paint: no X server at $DISPLAY\n";
    std::exit(1);
  }
  XSetErrorHandler(ignore_errors);
}

painted_window::~painted_window() {
  XCloseDisplay(display_);
}

void painted_window::clear() {
  const Window root = DefaultRootWindow(display_);
  XSetWindowBackground(display_, root, root_colour);
  XClearWindow(display_, root);
  XSync(display_, True);
}

bool painted_window::line_is_painted(int x, int y, int width, int height) {
  const int screen = DefaultScreen(display_);
  const int left = std::clamp(x, 0, DisplayWidth(display_, screen) - 1);
  const int top = std::clamp(y, 0, DisplayHeight(display_, screen) - 1);
  const int right = std::clamp(x + width, left + 1, DisplayWidth(display_, screen));
  const int bottom = std::clamp(y + height, top + 1, DisplayHeight(display_, screen));
  XImage* const image = XGetImage(display_, DefaultRootWindow(display_), left, top,
                                  static_cast<unsigned>(right - left),
                                  static_cast<unsigned>(bottom - top), AllPlanes, ZPixmap);
  if (image == nullptr)
    return false;
  bool painted = false;
  for (int row = 0; row < image->height && !painted; ++row)
    for (int column = 0; column < image->width && !painted; ++column)
      painted = (XGetPixel(image, column, row) & 0x00ffffff) != root_colour;
  XDestroyImage(image);
  return painted;
}

// Looks along one line and one column through the middle of each window, which is quick.
bool painted_window::any_window_is_painted() {
  Window root = 0;
  Window parent = 0;
  Window* children = nullptr;
  unsigned count = 0;
  if (XQueryTree(display_, DefaultRootWindow(display_), &root, &parent, &children, &count) == 0)
    return false;
  bool painted = false;
  for (unsigned i = 0; i < count && !painted; ++i) {
    XWindowAttributes window;
    if (XGetWindowAttributes(display_, children[i], &window) == 0 ||
        window.map_state != IsViewable || window.c_class != InputOutput ||
        window.width < smallest_window || window.height < smallest_window)
      continue;
    painted = line_is_painted(window.x, window.y + window.height / 2, window.width, 1) ||
              line_is_painted(window.x + window.width / 2, window.y, 1, window.height);
  }
  if (children != nullptr)
    XFree(children);
  return painted;
}

bool painted_window::wait(std::chrono::milliseconds longest) {
  const auto end = std::chrono::steady_clock::now() + longest;
  while (std::chrono::steady_clock::now() < end) {
    if (any_window_is_painted())
      return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
  return false;
}

}  // namespace corvane::bench
