// Where a disc leads a viewer: its commands, done as a player does them, from the first play, a
// button or the end of a title up to the next picture.
//
// Answers are "title 2 chapter 3", "menu 1" (numbered as `menus_with_pictures` has them), "disc
// menu 1" of the video manager, "stop", and "nowhere" where a player is left without anything to
// do. Not set where it depends on what was seen before, or cannot be told.
#pragma once

#include "examine/read_disc.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace corvane {

/// The menus of titlesets that show anything, in their order, in the first language: menu n is at
/// n-1. Others only lead on.
std::vector<const disc_menu_contents*> menus_with_pictures(const disc_contents& disc);

/// The same of the video manager.
std::vector<const disc_menu_contents*> disc_menus_with_pictures(const disc_contents& disc);

std::optional<std::string> after_start(const disc_contents& disc);
std::optional<std::string> after_title(const disc_contents& disc, const disc_title_contents& title);

/// `button`: 0-based, of those that the menu shows.
std::optional<std::string> after_button(const disc_contents& disc, const disc_menu_contents& menu,
                                        std::size_t button);

}  // namespace corvane
