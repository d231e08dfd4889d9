// What helps when a menu's buttons have looks that spumux does not find a way for in time
// (examine/colour_groups.h): another order, or for a few buttons the look of others.
//
// Looks are numbers, one for each button; equal numbers are equal looks. Buttons are 0-based.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// Whether spumux finds a way in time.
bool are_looks_sorted_out(const std::vector<int>& looks);

/// The buttons in an order in which those of one look follow each other; among themselves they keep
/// theirs. The looks stay in the order in which they come first, if that is good enough, and are
/// else put so that spumux is done soonest.
std::vector<int> order_by_look(const std::vector<int>& looks);

/// Another look for a few buttons.
struct fewer_looks {
  std::vector<int> buttons;  ///< that get another look
  int as = 0;                ///< the button that has it
  bool order = false;        ///< and then all are to be ordered by look
};

/// The fewest buttons that have to get the most used look, so that spumux finds a way: those of the
/// least used looks. Only those that `may_change` do, and the look is one of theirs. nullopt: it
/// finds one anyway, or those are not enough.
std::optional<fewer_looks> fewer_looks_of(const std::vector<int>& looks,
                                          const std::vector<bool>& may_change);

/// What is to be done about a menu's looks; neither where there is nothing to do.
struct look_cures {
  bool order = false;  ///< to order them by look is enough
  std::optional<fewer_looks> fewer;
};
look_cures cures_of(const std::vector<int>& looks, const std::vector<bool>& may_change);

/// "gives buttons 3, 7 and 12 the look of button 1"
std::string text_of(const fewer_looks& plan);

}  // namespace corvane
