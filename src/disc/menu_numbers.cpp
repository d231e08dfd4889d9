#include "disc/menu_numbers.h"

#include "disc/command_reading.h"

#include <cctype>
#include <cstddef>

namespace corvane {
namespace {

/// Rows hold commands without their last ";"; somebody may have typed it.
command_reading reading_of_row(const std::string& command) {
  command_reading with_end = read_commands(command + ";");
  return with_end.fault ? read_commands(command) : with_end;
}

bool is_of_a_word(char c) {
  return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '_';
}

}  // namespace

std::string with_menu_numbers(std::string_view command, const number_of_menu_now& now) {
  std::string text(command);
  const command_reading reading = reading_of_row(text);
  // From the last on, so that the places of the others stay.
  for (auto menu = reading.menus.rbegin(); menu != reading.menus.rend(); ++menu)
    if (const int number = now(menu->number);
        number != menu->number && menu->titleset.value_or(1) == 1)
      text.replace(menu->at, menu->length, std::to_string(number));
  return text;
}

bool uses_menu_register(std::string_view command) {
  constexpr std::string_view name = "g1";
  for (std::size_t at = command.find(name); at != std::string_view::npos;
       at = command.find(name, at + 1)) {
    const std::size_t end = at + name.size();
    const bool begins = at == 0 || !is_of_a_word(command[at - 1]);
    if (begins && (end == command.size() || !is_of_a_word(command[end])))
      return true;
  }
  return false;
}

}  // namespace corvane
