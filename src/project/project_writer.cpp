#include "formats/line_reader.h"
#include "formats/numbers.h"
#include "formats/text.h"
#include "project/menu_rows.h"
#include "project/project_file.h"
#include "project/project_text.h"

#include <algorithm>
#include <cstdint>

namespace corvane {
namespace {

void add_line(std::string& text, std::string_view line) {
  text.append(line).append(crlf);
}

/// Text of many lines, whatever its line ends: a text box on Linux gives bare line feeds.
void add_lines(std::string& text, std::string_view lines) {
  line_reader reader(lines);
  while (const auto line = reader.next())
    add_line(text, *line);
}

void add_section(std::string& text, const std::vector<std::string>& rows) {
  for (const std::string& row : rows)
    add_line(text, row);
  add_line(text, "***");
}

/// "menu07:" for menu 7.
std::string menu_row_mark(std::size_t menu) {
  const std::string digits = trimmed(static_cast<std::int64_t>(menu));
  return "menu" + std::string(digits.size() < 2 ? 2 - digits.size() : 0, '0') + digits + ":";
}

void add_buttons(std::string& text, const std::vector<std::string>& menubuttons) {
  for (std::size_t i = 0; i < menubuttons.size(); ++i) {
    const std::string mark = menu_row_mark(i + 1);
    for (const std::string& record : pieces_of(menubuttons[i]))
      add_line(text, mark + record);
  }
  add_line(text, "***");
}

std::string_view check_mark(bool checked) {
  return checked ? "True" : "False";
}

}  // namespace

std::string project_text(const project& p) {
  std::string text;
  add_line(text, version_title);
  add_section(text, p.List11);
  add_section(text, p.chapters);
  add_section(text, p.delay);
  add_section(text, p.languagetags);
  add_section(text, p.menulist);
  add_section(text, p.moremenuoptions);
  add_buttons(text, p.menubuttons);
  add_section(text, p.postinfo);
  add_section(text, p.subtitledata);
  add_section(text, p.subtitleoptions);
  add_line(text, p.firstplay);
  add_line(text, p.globalregion);
  add_line(text, check_mark(p.isocreate));
  add_line(text, check_mark(p.jumptable));
  add_lines(text, p.customxml);
  return text;
}

std::size_t menus_in_file(const project& p) {
  const auto last_with_buttons =
      std::find_if(p.menubuttons.rbegin(), p.menubuttons.rend(),
                   [](const std::string& element) { return !element.empty(); });
  const auto button_menus = static_cast<std::size_t>(p.menubuttons.rend() - last_with_buttons);
  return std::max(p.menulist.size(), button_menus);
}

}  // namespace corvane
