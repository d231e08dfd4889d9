// Where a disc leads a viewer: its commands, done as a player does them, from the first play, a
// button or the end of a title up to the next picture.
//
// Answers are "title 2 chapter 3", "menu 1" (numbered as `menus_with_pictures` has them), "disc
// menu 1" of the video manager, "stop", and "nowhere" where a player is left without anything to
// do. Not set where it cannot be told; nor is "nowhere" where that depends on what was seen before.
#pragma once

#include "disc/finding.h"
#include "examine/read_disc.h"

#include <cstddef>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

namespace corvane {

/// A menu and what it is called.
using named_menu = std::pair<finding_item, const disc_menu_contents*>;

/// The menus that show anything, in the first language, each kind numbered in its order: those of
/// titlesets ("menu 1"), then those of the video manager ("disc menu 1"). Others only lead on.
std::vector<named_menu> menus_with_pictures(const disc_contents& disc);

/// Said where commands lead nowhere, so that what they belong to goes on.
inline constexpr const char* goes_on = "goes on";
/// Said where there are commands, but not where they lead.
inline constexpr const char* not_told = "not told";

/// The walks over one disc, which must stay. All of them together do so many commands at most that
/// no disc takes more than moments; what is left then cannot be told.
class disc_walks {
 public:
  explicit disc_walks(const disc_contents& disc);

  std::optional<std::string> after_start();
  std::optional<std::string> after_title(const disc_title_contents& title);

  /// `button`: 0-based, of those that the menu shows.
  std::optional<std::string> after_button(const disc_menu_contents& menu, std::size_t button);

  /// What commands of this title or menu lead to, those before it, behind it, or of a cell; or
  /// `goes_on`.
  std::optional<std::string> by_commands(const disc_title_contents& title,
                                         std::span<const vm_command> commands);
  std::optional<std::string> by_commands(const disc_menu_contents& menu,
                                         std::span<const vm_command> commands);

  /// The entries that lead to a menu which shows something, by their names in commands: "root".
  std::vector<std::string> entries_of(const disc_menu_contents& menu);

 private:
  class walk;

  const disc_contents& disc_;
  std::map<const program_chain*, std::string> names_;               // of menus that show anything
  std::map<std::pair<int, int>, const disc_menu_contents*> menus_;  // by titleset and number
  std::map<std::pair<int, menu_kind>, const disc_menu_contents*> entries_;
  std::map<int, const disc_title_contents*> titles_;
  std::map<std::pair<int, int>, const disc_title_contents*> titleset_titles_;
  int steps_left_ = 5'000'000;
};

}  // namespace corvane
