#include "player.h"

#include <array>
#include <cstdarg>
#include <dvdnav/dvdnav.h>

namespace corvane::disc {

namespace {

/// Blocks after which a disc that shows nothing else is given up: far more than the samples have.
constexpr int patience = 20000;

void say_nothing(void*, dvdnav_logger_level_t, const char*, va_list) {}

}  // namespace

struct player::machine {
  dvdnav_t* nav = nullptr;
  int title = -1, part = 0;  ///< title 0: menu `part`

  ~machine() {
    if (nav != nullptr)
      dvdnav_close(nav);
  }

  std::string failure() const {
    return std::string("failed: ") + (nav != nullptr ? dvdnav_err_to_string(nav) : "not open");
  }

  std::string place() const {
    if (title == 0)
      return "menu " + std::to_string(part);
    return "title " + std::to_string(title) + " chapter " + std::to_string(part);
  }

  /// Whether the navigation packet just read shows something: a title's picture, or a menu with
  /// buttons to press.
  bool shows_something() {
    if (dvdnav_current_title_info(nav, &title, &part) != DVDNAV_STATUS_OK)
      return false;
    std::int32_t whole = 0, program = 0;
    if (title == 0)  // `part` is the kind of menu then, not its number
      dvdnav_current_title_program(nav, &whole, &part, &program);
    const pci_t* packet = dvdnav_get_current_nav_pci(nav);
    return title > 0 || (packet != nullptr && packet->hli.hl_gi.btn_ns > 0);
  }

  /// Plays on until something is shown for which `enough` holds.
  template <typename Condition>
  std::string play_until(Condition enough) {
    std::array<std::uint8_t, DVD_VIDEO_LB_LEN> block{};
    for (int i = 0; i < patience; ++i) {
      std::int32_t event = 0, length = 0;
      if (dvdnav_get_next_block(nav, block.data(), &event, &length) != DVDNAV_STATUS_OK)
        return failure();
      if (event == DVDNAV_STOP)
        return "stopped";
      if (event == DVDNAV_STILL_FRAME)
        dvdnav_still_skip(nav);
      if (event == DVDNAV_WAIT)
        dvdnav_wait_skip(nav);
      if (event == DVDNAV_NAV_PACKET && shows_something() && enough())
        return place();
    }
    return "failed: nothing else is shown";
  }
};

player::player(const std::string& native_path) : machine_(std::make_unique<machine>()) {
  const dvdnav_logger_cb log{say_nothing};
  if (dvdnav_open2(&machine_->nav, nullptr, &log, native_path.c_str()) != DVDNAV_STATUS_OK)
    machine_->nav = nullptr;
  else
    dvdnav_set_readahead_flag(machine_->nav, 0);
}

player::~player() = default;

std::string player::start() {
  if (machine_->nav == nullptr)
    return machine_->failure();
  return machine_->play_until([] { return true; });
}

std::string player::press(int button) {
  if (machine_->nav == nullptr)
    return machine_->failure();
  pci_t* const packet = dvdnav_get_current_nav_pci(machine_->nav);
  if (dvdnav_button_select_and_activate(machine_->nav, packet, button) != DVDNAV_STATUS_OK)
    return machine_->failure();
  return machine_->play_until([] { return true; });
}

std::string player::call_menu() {
  if (machine_->nav == nullptr ||
      dvdnav_menu_call(machine_->nav, DVD_MENU_Root) != DVDNAV_STATUS_OK)
    return machine_->failure();
  return machine_->play_until([this] { return machine_->title == 0; });
}

std::string player::play_to_end() {
  if (machine_->nav == nullptr)
    return machine_->failure();
  const int title = machine_->title, part = machine_->part;
  int last = part;
  return machine_->play_until([this, title, part, &last] {
    if (machine_->title != title)
      return true;
    // The same title again: only going back within it is something new.
    const bool again = title == 0 ? machine_->part != part : machine_->part < last;
    last = machine_->part;
    return again;
  });
}

}  // namespace corvane::disc
