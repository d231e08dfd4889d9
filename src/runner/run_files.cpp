#include "runner/run_files.h"

#include "formats/numbers.h"

namespace corvane::run_file {
namespace {

/// A name with a number in it.
struct numbered_name {
  std::string_view before, after;

  std::string of(int number) const {
    return std::string(before) + trimmed(number) + std::string(after);
  }
  /// What stands between the two; nullopt when the name is another.
  std::optional<std::string_view> middle_of(std::string_view name) const {
    if (name.size() < before.size() + after.size() || !name.starts_with(before) ||
        !name.ends_with(after))
      return std::nullopt;
    return name.substr(before.size(), name.size() - before.size() - after.size());
  }
};

constexpr numbered_name menu_controls{"menu", ".xml"}, subtitle_controls{"sub", ".xml"},
    highlights{"highlight", ".png"}, selects{"select", ".png"}, titles{"title", ".mpg"},
    menus{"menu", ".mpg"}, menus_with_buttons{"menusub", ".mpg"};

bool is_number(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
}

std::optional<std::string> number_in(std::string_view name, const numbered_name& made) {
  const auto number = made.middle_of(name);
  if (!number || !is_number(*number))
    return std::nullopt;
  return std::string(*number);
}

}  // namespace

std::string menu_control(int menu) {
  return menu_controls.of(menu);
}

std::string highlight_picture(int menu) {
  return highlights.of(menu);
}

std::string select_picture(int menu) {
  return selects.of(menu);
}

std::string subtitle_control(int title, int subtitle) {
  return std::string(subtitle_controls.before) + trimmed(title) + "-" + trimmed(subtitle) +
         std::string(subtitle_controls.after);
}

std::optional<std::string> menu_of_control(std::string_view name) {
  return number_in(name, menu_controls);
}

std::optional<std::string> menu_of_picture(std::string_view name) {
  const auto highlight = number_in(name, highlights);
  return highlight ? highlight : number_in(name, selects);
}

std::optional<subtitle_name> subtitle_of_control(std::string_view name) {
  const auto numbers = subtitle_controls.middle_of(name);
  const auto dash = numbers ? numbers->find('-') : std::string_view::npos;
  if (dash == std::string_view::npos || !is_number(numbers->substr(0, dash)) ||
      !is_number(numbers->substr(dash + 1)))
    return std::nullopt;
  return subtitle_name{std::string(numbers->substr(0, dash)),
                       std::string(numbers->substr(dash + 1))};
}

std::string title_stream(int title) {
  return titles.of(title);
}

std::string menu_stream(int menu) {
  return menus.of(menu);
}

std::string menu_with_buttons(int menu) {
  return menus_with_buttons.of(menu);
}

std::optional<std::string> title_of_stream(std::string_view name) {
  return number_in(name, titles);
}

std::optional<std::string> menu_of_stream(std::string_view name) {
  const auto with_buttons = number_in(name, menus_with_buttons);
  return with_buttons ? with_buttons : number_in(name, menus);
}

bool is_stream(std::string_view name) {
  if (name == before_subtitle)
    return true;
  for (const numbered_name& made : {titles, menus, menus_with_buttons})
    if (number_in(name, made))
      return true;
  return false;
}

}  // namespace corvane::run_file
