#include "side/shown_report.h"

#include <charconv>
#include <ostream>
#include <stdexcept>
#include <string_view>
#include <system_error>

namespace corvane::side {
namespace {

struct unreadable : std::runtime_error {
  using std::runtime_error::runtime_error;
};

/// An item's text; the line of the page ends after it.
std::string text_of(const element& item) {
  return item.text.substr(0, item.text.find('\n'));
}

/// Takes a text that must be next, a number that must be next.
void skip(std::string_view& text, std::string_view expected) {
  if (!text.starts_with(expected))
    throw unreadable("no \"" + std::string(expected) + "\" in \"" + std::string(text) + "\"");
  text.remove_prefix(expected.size());
}

int take_number(std::string_view& text) {
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc())
    throw unreadable("no number in \"" + std::string(text) + "\"");
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return number;
}

/// "NAME (3 chapters)": the name may hold the same, so the last one counts.
shown_row row_of(const element& item, std::string_view between, std::string_view unit) {
  const std::string text = text_of(item);
  const auto at = text.rfind(between);
  if (at == std::string::npos)
    throw unreadable("no count in \"" + text + "\"");
  shown_row row{text.substr(0, at)};
  std::string_view rest = std::string_view(text).substr(at + between.size());
  row.count = take_number(rest);
  skip(rest, unit);
  if (!rest.empty())
    throw unreadable("more after the count in \"" + text + "\"");
  return row;
}

shown_button button_of(const element& item, int number) {
  const std::string text = text_of(item);
  std::string_view rest = text;
  shown_button b;
  skip(rest, "Button" + std::to_string(number) + "(");
  b.x0 = take_number(rest);
  skip(rest, "x");
  b.y0 = take_number(rest);
  skip(rest, ",");
  b.x1 = take_number(rest);
  skip(rest, "x");
  b.y1 = take_number(rest);
  skip(rest, ") goes to:");
  b.target = rest;
  return b;
}

const element& child(const element& parent, std::string_view name, std::size_t number) {
  const auto found = parent.all(name);
  if (number >= found.size())
    throw unreadable("no <" + std::string(name) + "> number " + std::to_string(number + 1) +
                     " in <" + parent.name + "> \"" + text_of(parent) + "\"");
  return *found[number];
}

/// The items of the list below one that reads `heading`.
std::vector<const element*> list_of(const element& list, std::string_view heading) {
  const element& item = child(list, "li", 0);
  if (text_of(item) != heading)
    throw unreadable("\"" + text_of(item) + "\" is not \"" + std::string(heading) + "\"");
  return child(item, "ul", 0).all("li");
}

void read_contents(const element& item, shown_report& report) {
  for (const element* title : child(item, "ul", 0).all("li"))
    report.titles.push_back(row_of(*title, " (", " chapters)"));
  for (const element* menu : child(item, "ul", 1).all("li"))
    report.menus.push_back(row_of(*menu, "  (", " buttons)"));
}

void read_targets(const element& item, shown_report& report) {
  for (const element* menu : list_of(child(item, "ul", 0), "Menus:")) {
    const std::string name = "Menu" + std::to_string(report.buttons.size() + 1);
    if (text_of(*menu) != name)
      throw unreadable("\"" + text_of(*menu) + "\" is not \"" + name + "\"");
    auto& buttons = report.buttons.emplace_back();
    for (const element* button : child(*menu, "ul", 0).all("li"))
      buttons.push_back(button_of(*button, static_cast<int>(buttons.size()) + 1));
  }
  for (const element* title : list_of(child(item, "ul", 1), "Titles:")) {
    const std::string text = text_of(*title);
    std::string_view rest = text;
    skip(rest, "Title" + std::to_string(report.post_commands.size() + 1) + " goes to: ");
    report.post_commands.emplace_back(rest);
  }
}

}  // namespace

std::optional<shown_report> read_report(const element& page, std::string& why) {
  try {
    const element* const list = find(page, "ul");
    if (list == nullptr)
      throw unreadable("no list");
    shown_report report;
    read_contents(child(*list, "li", 0), report);
    const element& first = child(*list, "li", 1);
    const std::string text = text_of(first);
    std::string_view rest = text;
    skip(rest, "The DVD will begin with ");
    report.first = rest;
    read_targets(first, report);
    return report;
  } catch (const unreadable& e) {
    why = e.what();
    return std::nullopt;
  }
}

void PrintTo(const shown_report& report, std::ostream* out) {
  for (const shown_row& title : report.titles)
    *out << "\n" << title.name << ", chapters: " << title.count;
  for (std::size_t m = 0; m < report.menus.size(); ++m) {
    *out << "\n" << report.menus[m].name << ", buttons: " << report.menus[m].count;
    if (m < report.buttons.size())
      for (const shown_button& b : report.buttons[m])
        *out << "\n  " << b.x0 << " " << b.y0 << " " << b.x1 << " " << b.y1 << " " << b.target;
  }
  *out << "\nfirst: " << report.first;
  for (const std::string& command : report.post_commands)
    *out << "\nthen: " << command;
}

}  // namespace corvane::side
