// How long spumux looks for a way to show a menu's buttons.
//
// A player has three groups of colours for the buttons of a menu, each good for three combinations
// of a highlight and a select colour: a look. spumux tries to do with one group, then with two,
// then with three, and each time goes through the ways to give the buttons their groups, the first
// button's changing fastest, until one fits. Of each way it looks at the buttons from the first on
// until one does not fit into its group. That is done at once for few buttons and for few looks;
// with many of both it takes years. (spumux 0.7.2, measured.)
#pragma once

#include "disc/disc_description.h"

#include <vector>

namespace corvane {

/// The buttons' looks as numbers, in the order in which they first come: of equal number are those
/// of one highlight and select colour or bitmap.
std::vector<int> looks_of(const std::vector<disc_button>& buttons);

/// How many there are of them.
int count_of_looks(const std::vector<int>& looks);

/// The looks that fit into the three groups.
inline constexpr int most_looks = 9;

/// How many ways are gone through.
double ways_to_colour(const std::vector<int>& looks);

/// How many buttons are looked at on the way, never less than it is and at most 60 % more: four to
/// eight nanoseconds each on a computer of 2023. Of at most most_looks looks. Beyond
/// most_steps_to_colour it is no more than a number that is larger.
double steps_to_colour(const std::vector<int>& looks);

/// Steps that take four to eight seconds there.
inline constexpr double most_steps_to_colour = 1e9;

/// Whether spumux does not end in about ten seconds. Of more than most_looks looks, which it does
/// not find a way for, this is not asked: false.
bool are_looks_too_slow(const std::vector<int>& looks);

}  // namespace corvane
