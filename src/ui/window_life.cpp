#include "ui/window_life.h"

#include <wx/toplevel.h>

#include <utility>

namespace corvane {

window_life::window_life(wxTopLevelWindow& window, wxWindow& owner, wx_prompts& ask,
                         ways particular)
    : window_(window), owner_(owner), ask_(ask), ways_(std::move(particular)) {
  window_.Bind(wxEVT_CLOSE_WINDOW, &window_life::on_close, this);
}

void window_life::begin() {
  asking_.emplace(ask_, window_);
  owner_.Disable();
}

bool window_life::during(const std::function<void()>& event) {
  if (is_busy())
    return false;
  in_event_ = true;
  event();
  in_event_ = false;
  return true;
}

// When the session ends, nothing is asked. A window over which a message stands stays even then: it
// would be deleted under its event. It goes with its owner, which waits.
void window_life::on_close(wxCloseEvent& event) {
  if (!event.CanVeto()) {
    if (!in_event_)
      leave();
    return;
  }
  bool may_close = true;
  const bool free = during([&] { may_close = !ways_.may_close || ways_.may_close(); });
  if (free && may_close)
    leave();
  else
    event.Veto();
}

// The owner first: a disabled one would not get the keyboard back. Hiding takes the focus from a
// field, which is an event that comes too late.
void window_life::leave() {
  if (leaving_)
    return;
  leaving_ = true;
  if (ways_.release)
    ways_.release();
  asking_.reset();
  owner_.Enable();
  window_.Hide();
  owner_.Raise();
  const auto left = std::move(ways_.left);
  window_.Destroy();
  if (left)
    left();
}

}  // namespace corvane
