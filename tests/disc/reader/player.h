// Plays a disc as a player does, without its pictures: follows the navigation commands on
// libdvdnav's virtual machine and says where they lead.
#pragma once

#include <memory>
#include <string>

namespace corvane::disc {

class player {
 public:
  /// A disc's folder or image.
  explicit player(const std::string& native_path);
  ~player();
  player(const player&) = delete;
  player& operator=(const player&) = delete;

  /// Plays from the start until something is shown: "menu 2" (with its buttons, of the titleset),
  /// "title 1 chapter 2", "stopped", or "failed: " and why.
  std::string start();

  /// Presses a button (1-based) of the menu shown; then as `start`.
  std::string press(int button);

  /// Presses the menu key of the remote control; then as `start`.
  std::string call_menu();

  /// Plays the title or menu shown to its end, up to where something else is shown; chapters of
  /// one title are not something else.
  std::string play_to_end();

 private:
  struct machine;
  std::unique_ptr<machine> machine_;
};

}  // namespace corvane::disc
