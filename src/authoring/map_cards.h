// What stands on the nodes of a disc's map, in words: heading, name, length, where each exit leads.
// The window and the pictures that are saved of it show the same.
#pragma once

#include "disc/disc_description.h"
#include "examine/disc_map.h"

#include <map>
#include <string>
#include <vector>

namespace corvane {

struct map_card_row {
  std::string text;       ///< "2: title 2, chapter 3", "then menu 1"
  bool is_wrong = false;  ///< it leads nowhere
  bool ends_disc = false;
  bool operator==(const map_card_row&) const = default;
};

struct map_card {
  map_place place;
  std::string heading;             ///< "title 2"
  std::string name;                ///< of its file; of first play empty
  std::string detail;              ///< "24:10 min, 5 chapters"
  std::string trouble;             ///< "nothing leads here"; empty: none
  std::string video;               ///< native path of what its picture is taken from; may be empty
  std::vector<map_card_row> rows;  ///< one for each exit; none of first play
  bool operator==(const map_card&) const = default;
};

/// One for each node. `lengths`: of titles and menus, where they are known: "24:10 min".
std::vector<map_card> cards_of(const disc_description& d, const disc_map& map,
                               const std::map<map_place, std::string>& lengths);

/// Whether it is in trouble, or a row of it leads nowhere.
bool is_wrong(const map_card& card);

/// All that a card says, for a person who does not see it: "title 2, tour.m2v, 24:10 min, ...".
std::string words_of(const map_card& card);

/// Whether the card says this anywhere; without regard to ASCII capitals.
bool holds_text(const map_card& card, const std::string& text);

}  // namespace corvane
