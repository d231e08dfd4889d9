// Where the commands of a disc will lead, as examine/disc_walk.h finds it on the finished disc.
//
// Answers are places as they stand there, with `either_place` between them where registers tell
// which one it is; not set where it is not foreseen.
#pragma once

#include "disc/command_reading.h"
#include "disc/disc_description.h"
#include "disc/finding.h"

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace corvane {

/// The menus that show something, in their first language, with their items as the disc has them: a
/// menu without a picture is none there.
std::vector<std::pair<finding_item, const disc_menu*>> menus_shown(const disc_description& d);

class foreseen_ways {
 public:
  /// `d` must outlive it. `hand_edited`: by XML that somebody edited, where a title that says
  /// nothing of what follows it ends the disc.
  foreseen_ways(const disc_description& d, bool hand_edited);

  std::optional<std::string> after_start() const;
  std::optional<std::string> after_title(int number) const;
  /// Of a menu of the description.
  std::optional<std::string> after_button(const disc_menu& menu, const disc_command& action) const;

  // Of hand-edited XML; with `goes_on` (examine/disc_walk.h) where they may lead nowhere.
  // ----------

  std::optional<std::string> by_title_command(int title, const disc_command& command) const;
  std::optional<std::string> by_menu_command(const disc_menu& menu,
                                             const disc_command& command) const;

 private:
  /// Whose command it is.
  struct owner {
    int titleset = 0;  ///< 0: of the whole disc
    int title = 0;     ///< of the description; 0: none
  };
  struct search;

  bool through(const disc_command& command, const owner& of, search& s) const;
  void follow(const command_lead& lead, const owner& of, search& s) const;
  void to_title(int number, search& s) const;
  void to_menu(const disc_menu* menu, search& s) const;
  std::optional<std::string> by_command(const disc_command& command, const owner& of) const;

  int title_number(int titleset, int number) const;
  const disc_menu* menu_at(int titleset, int number) const;
  const disc_menu* entry_of(int titleset, const std::string& entry) const;
  bool is_one_titleset() const;

  std::optional<std::string> remembered_place(const disc_command& command, int titleset,
                                              int from) const;
  std::optional<std::string> remembered_menu(int titleset, int number) const;

  const disc_description& d_;
  bool hand_edited_;
  /// In their first language, by titleset (0: of the whole disc).
  std::map<int, std::vector<const disc_menu*>> menus_;
  std::map<const disc_menu*, std::string> names_;  // of those that show something
};

}  // namespace corvane
