#include "project/menu_rows.h"

#include "formats/numbers.h"
#include "formats/text.h"
#include "project/offered_colours.h"
#include "project/project.h"

#include <iterator>

namespace corvane {
namespace {

/// Piece `index`, or nothing where the row has fewer.
std::string piece(const std::vector<std::string>& pieces, std::size_t index,
                  const std::string& otherwise = {}) {
  return index < pieces.size() ? pieces[index] : otherwise;
}

std::vector<std::string> names_of_colours() {
  std::vector<std::string> names;
  names.reserve(std::size(offered_colours));
  for (const offered_colour& colour : offered_colours)
    names.emplace_back(colour.name);
  return names;
}

/// The element of a menu (1-based); empty where the array has none.
std::string_view element_of(const project& p, int menu) {
  if (menu < 1 || menu - 1 > UUBound(p.menubuttons))
    return {};
  return p.menubuttons[static_cast<std::size_t>(menu) - 1];
}

}  // namespace

const std::vector<std::string> button_colours = names_of_colours();

std::vector<std::string> pieces_of(std::string_view element) {
  return split(element, '|');
}

std::vector<std::string> fields_of(std::string_view record) {
  return split(record, '/');
}

button_record parse_button(std::string_view record) {
  const std::vector<std::string> f = fields_of(record);
  return {piece(f, 0), piece(f, 1), piece(f, 2), piece(f, 3),
          piece(f, 4), piece(f, 5), piece(f, 6)};
}

std::string button_text(const button_record& button) {
  return join(
      {button.x0, button.y0, button.x1, button.y1, button.action, button.highlight, button.select},
      "/");
}

button_record button_with_edges(int x0, int y0, int x1, int y1) {
  button_record button;
  button.x0 = leading_blank(x0);
  button.y0 = leading_blank(y0);
  button.x1 = leading_blank(x1);
  button.y1 = leading_blank(y1);
  return button;
}

std::optional<std::string> why_not_a_field(std::string_view text) {
  if (holds_control_character(text))
    return "contains a line break, a tab or another control character";
  for (const char c : {'/', '|', '\\'})
    if (text.find(c) != std::string_view::npos)
      return std::string("contains \"") + c + '"';
  return std::nullopt;
}

bool is_bitmap(std::string_view value) {
  return value.find('\\') != std::string_view::npos;
}

menu_options parse_menu_options(std::string_view row) {
  const std::vector<std::string> f = split(row, '\t');
  const menu_options fresh;
  menu_options options;
  options.loop = leading_number_text(piece(f, 0)) == "1";
  options.spu_begin = piece(f, 1, fresh.spu_begin);
  options.spu_end = piece(f, 2, fresh.spu_end);
  options.thickness_text = piece(f, 3, fresh.thickness_text);
  options.thickness = leading_whole(options.thickness_text);
  return options;
}

std::string menu_options_text(const menu_options& options) {
  return join({leading_blank(options.loop ? 1 : 0), options.spu_begin, options.spu_end,
               leading_blank(options.thickness)},
              "\t");
}

std::vector<std::string> menu_files(std::string_view row) {
  return split(row, '/');
}

menu_streams parse_menu_row(std::string_view row) {
  const std::vector<std::string> f = menu_files(row);
  return {piece(f, 0), piece(f, 1)};
}

std::string menu_row_text(const menu_streams& streams) {
  return streams.video + "/" + streams.audio;
}

std::vector<std::string> button_records(const project& p, int menu) {
  std::vector<std::string> records = pieces_of(element_of(p, menu));
  std::erase_if(records, [](const std::string& record) { return trim(record).empty(); });
  return records;
}

int buttoncount(const project& p, int menu) {
  return static_cast<int>(pieces_of(element_of(p, menu)).size());
}

}  // namespace corvane
