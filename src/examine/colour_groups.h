// How long spumux looks for a way to show a menu's buttons.
//
// A player has three groups of colours for the buttons of a menu, each good for three combinations
// of a highlight and a select colour. spumux tries to do with one group, then with two, then with
// three, and each time goes through the ways to give the buttons their groups, the first button's
// changing fastest, until one fits. That is done at once for few buttons and for few combinations;
// with many of both it takes years.
#pragma once

#include "disc/disc_description.h"

#include <vector>

namespace corvane {

/// Combinations of a highlight and a select colour or bitmap that the buttons have.
int colour_combinations(const std::vector<disc_button>& buttons);

/// How many ways are gone through; ten to thirty million are in a second.
double ways_to_colour(const std::vector<disc_button>& buttons);

/// Ways that take about ten minutes: more are not worth waiting for.
inline constexpr double most_ways_to_colour = 1e10;

}  // namespace corvane
