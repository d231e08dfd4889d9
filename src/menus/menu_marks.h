// What the picture of the menu editor says about the buttons of a menu: what each of them does,
// where the arrow keys lead, which overlap.
//
// Buttons are 0-based here, 1-based in texts. A blank record is no button.
#pragma once

#include "disc/disc_command.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// What a button does, in words (words_of_command of examine/item_summary.h).
using words_of_action = std::function<std::string(const disc_command&)>;

struct button_mark {
  int index = 0;
  std::string words;          ///< "2: title 1, chapter 3"
  bool is_reached = true;     ///< by the arrow keys, from the first button on
  std::vector<int> overlaps;  ///< the other buttons that "accept" would tell it overlaps with
  bool operator==(const button_mark&) const = default;
};

/// Of the buttons among these records, in their order. Of more than a hundred it is not looked who
/// overlaps and who is reached: no menu has as many, and the time grows with their square.
std::vector<button_mark> marks_of(const std::vector<std::string>& records,
                                  const words_of_action& words);

enum class arrow_key { up, down, left, right };

/// Where a key leads to from a button.
struct key_way {
  arrow_key key = arrow_key::up;
  int from = 0, to = 0;
  bool operator==(const key_way&) const = default;
};

/// The ways that lead to another button, as the disc will have them; of one button, or of all.
/// Empty for more than a hundred buttons.
std::vector<key_way> ways_of(const std::vector<std::string>& records,
                             std::optional<int> from = std::nullopt);

}  // namespace corvane
