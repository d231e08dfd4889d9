// What a button, a title's end or the first play can be made to do, to be picked from with names
// and times: "title 2: tour (24:10)", "chapter 3, 00:12:30". The commands are those of the editors'
// own lists.
#pragma once

#include "disc/disc_description.h"
#include "menus/lead_commands.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {

struct action_choice {
  std::string command;  ///< as the editor's list has it: "jump title 2 chapter  3"
  std::string text;     ///< a line for a person; of a chapter, as it stands below its title
  std::string line;     ///< the same by itself: "title 2: tour, chapter 3, 00:12:30"
  int title = 0;        ///< that it plays, 1-based; 0: none
  int chapter = 0;      ///< of the title, 1-based; 0: all of it
  bool operator==(const action_choice&) const = default;
};

/// How long a title (1-based) is, in words; empty: not known.
using length_teller = std::function<std::string(int title)>;

/// Titles, each with the chapters that the disc will have behind it, then menus, then "exit". A
/// title without chapters is offered, too; the editor's own list has no entry for it.
std::vector<action_choice> action_choices(const disc_description& d, const length_teller& length);

/// The same for another command than a button's: only what `from` can do. Of a title's end with the
/// jump table "call last menu" stands behind the menus; of first play "<default>" is the last one.
std::vector<action_choice> command_choices(const disc_description& d, const length_teller& length,
                                           const lead_source& from);

/// What of them is shown: those in whose line each word of `search` stands, in capitals or not, a
/// number as a number by itself; first those with the words as they were typed. Without a search
/// all but the chapters, and of those the title's that is `open` (1-based; 0: none) or with
/// `all_chapters` every one. Indices.
struct choice_filter {
  std::string search;
  int open = 0;
  bool all_chapters = false;
};
std::vector<std::size_t> shown_choices(const std::vector<action_choice>& all,
                                       const choice_filter& filter);

/// The lines of these: a chapter below its title is set in, any other one says which title it is
/// of.
std::vector<std::string> choice_lines(const std::vector<action_choice>& all,
                                      const std::vector<std::size_t>& shown);

/// The choice with which a command is meant, whatever its blanks; nullopt: none.
std::optional<std::size_t> choice_of_command(const std::vector<action_choice>& all,
                                             std::string_view command);

/// What a text would do as the action of a button.
struct action_verdict {
  enum class kind { fine, typed, wrong };
  kind what = kind::fine;
  std::string text;  ///< "plays title 2: tour, from chapter 3"; of a wrong one why, as a clause
  bool operator==(const action_verdict&) const = default;
};

/// By the rules of the check before a run. `menu`: of the button, 1-based.
action_verdict verdict_on_action(const disc_description& d, int menu, const std::string& text);

/// Likewise of a text as the command at a title's end or of first play. What stands in `d` as
/// theirs has no part in it.
action_verdict verdict_on_command(const disc_description& d, const lead_source& from,
                                  const std::string& text);

}  // namespace corvane
