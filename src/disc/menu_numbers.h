// The numbers of menus in navigation commands: other ones, when menus have moved.
#pragma once

#include <functional>
#include <string>
#include <string_view>

namespace corvane {

/// The number that a menu has now by the one that it had, both 1-based.
using number_of_menu_now = std::function<int(int before)>;

/// The command as a row holds it ("jump menu 3", or a typed program) with the menus' numbers of
/// now. All that a disc of rows can name are those of its one titleset; menus of the whole disc,
/// which only edited XML has, keep theirs. What dvdauthor cannot read stays as it is.
std::string with_menu_numbers(std::string_view command, const number_of_menu_now& now);

/// Whether a command looks at or sets the register in which the jump table keeps a menu's number.
/// What it holds there is known only while a disc plays.
bool uses_menu_register(std::string_view command);

}  // namespace corvane
