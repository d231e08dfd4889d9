// The map of a disc as an SVG picture: a text of its own that any browser shows.
#pragma once

#include "authoring/map_cards.h"
#include "authoring/map_layout.h"
#include "examine/disc_map.h"

#include <map>
#include <string>
#include <vector>

namespace corvane {

/// What the map is drawn with, as "#rrggbb".
struct map_colours {
  std::string paper = "#f6f6f4";
  std::string card = "#ffffff", card_edge = "#9a9a98", text = "#1b1b1b", faint_text = "#5f5f5d";
  std::string first_play_head = "#dcdcda", menu_head = "#d5e4f7", title_head = "#d9edd9";
  std::string button_arrow = "#2f6fb5", end_arrow = "#2e8b4f", first_arrow = "#505050";
  std::string wrong = "#c42b1c", wrong_head = "#f8d5d1";
  std::string blank_picture = "#c9c9c7";
};

/// The colours in a dark window.
map_colours dark_map_colours();

/// What stands for a card's heading, of these colours.
const std::string& head_colour(const map_card& card, const map_colours& colours);
/// Likewise for an arrow.
const std::string& arrow_colour(const map_arrow& arrow, const map_colours& colours);

/// The two points behind an arrow's end that make its head with it.
struct map_arrow_head {
  map_point tip, upper, lower;
};
map_arrow_head head_of_arrow(const std::vector<map_point>& points);

/// A text in at most so many columns (a character of East Asian width takes two): what does not fit
/// is "…".
std::string cut_to_columns(const std::string& text, int columns);

/// In UTF-8. `pictures`: files of pictures (PNG) by place, which become part of the text; a title
/// or menu without one gets a plain field.
std::string svg_of(const disc_map& map, const std::vector<map_card>& cards,
                   const map_layout& layout, const std::map<map_place, std::string>& pictures);

}  // namespace corvane
