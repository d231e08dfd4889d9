#include "authoring/map_svg.h"

#include "formats/numbers.h"
#include "formats/text.h"
#include "formats/xml_text.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>

namespace corvane {
namespace {

namespace measures = map_measures;
using svg_kind = map_place::kind;

constexpr int text_size = 12;
constexpr int row_columns = 36, head_columns = 23, first_play_columns = 22;

/// "12.5": to a tenth.
std::string svg_number(double value) {
  const auto tenths = static_cast<std::int64_t>(std::llround(value * 10));
  const std::string whole = (tenths < 0 ? "-" : "") + trimmed(std::abs(tenths) / 10);
  return tenths % 10 == 0 ? whole : whole + "." + trimmed(std::abs(tenths) % 10);
}

std::string svg_point(const map_point& p) {
  return svg_number(p.x) + "," + svg_number(p.y);
}

/// A text between tags.
std::string svg_text(std::string_view text) {
  return replace_all(xml_attribute_text(text), ">", "&gt;");
}

/// name="value"
std::string with_value(std::string_view name, std::string_view value) {
  return " " + std::string(name) + "=\"" + std::string(value) + "\"";
}

std::string rectangle(const map_box& box, std::string_view fill, std::string_view more = {}) {
  return "<rect" + with_value("x", svg_number(box.x)) + with_value("y", svg_number(box.y)) +
         with_value("width", svg_number(box.width)) + with_value("height", svg_number(box.height)) +
         with_value("fill", fill) + std::string(more) + "/>\n";
}

std::string text_at(double x, double y, std::string_view colour, const std::string& text,
                    std::string_view more = {}) {
  return "<text" + with_value("x", svg_number(x)) + with_value("y", svg_number(y)) +
         with_value("fill", colour) + std::string(more) + ">" + svg_text(text) + "</text>\n";
}

std::string base64(std::string_view bytes) {
  constexpr std::string_view digits =
      "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
  std::string text;
  for (std::size_t i = 0; i < bytes.size(); i += 3) {
    std::uint32_t three = 0;
    const std::size_t count = std::min<std::size_t>(3, bytes.size() - i);
    for (std::size_t k = 0; k < 3; ++k)
      three = three << 8 | (k < count ? static_cast<unsigned char>(bytes[i + k]) : 0U);
    for (std::size_t k = 0; k < 4; ++k)
      text += k <= count ? digits[three >> (18 - 6 * k) & 63] : '=';
  }
  return text;
}

/// A character of UTF-8 that begins at `at`: how many bytes and columns it takes.
struct shown_character {
  std::size_t bytes = 1;
  int columns = 1;
};

shown_character character_at(const std::string& text, std::size_t at) {
  shown_character c;
  while (at + c.bytes < text.size() &&
         (static_cast<unsigned char>(text[at + c.bytes]) & 0xC0) == 0x80)
    ++c.bytes;
  std::uint32_t code = static_cast<unsigned char>(text[at]) & (c.bytes > 2 ? 0x0FU : 0x7FU);
  for (std::size_t i = 1; i < c.bytes; ++i)
    code = code << 6 | (static_cast<unsigned char>(text[at + i]) & 0x3FU);
  const bool is_wide = (code >= 0x1100 && code <= 0x115F) || (code >= 0x2E80 && code <= 0xA4CF) ||
                       (code >= 0xAC00 && code <= 0xD7A3) || (code >= 0xF900 && code <= 0xFAFF) ||
                       (code >= 0xFE30 && code <= 0xFE6F) || (code >= 0xFF00 && code <= 0xFF60) ||
                       (code >= 0x1F300 && code <= 0x1FAFF);
  c.columns = c.bytes > 2 && is_wide ? 2 : 1;
  return c;
}

class svg_writer {
 public:
  svg_writer(const disc_map& map, const std::vector<map_card>& cards, const map_layout& layout,
             const std::map<map_place, std::string>& pictures)
      : map_(map), cards_(cards), layout_(layout), pictures_(pictures) {}

  std::string write() {
    text_ =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\"" +
        with_value("width", svg_number(layout_.width)) +
        with_value("height", svg_number(layout_.height)) +
        with_value("viewBox",
                   "0 0 " + svg_number(layout_.width) + " " + svg_number(layout_.height)) +
        with_value("font-family", "sans-serif") + with_value("font-size", trimmed(text_size)) +
        ">\n<title>map of the disc</title>\n";
    text_ += rectangle({0, 0, layout_.width, layout_.height}, colours_.paper);
    for (const laid_arrow& arrow : layout_.arrows)
      add_arrow(arrow);
    for (std::size_t i = 0; i < cards_.size() && i < layout_.boxes.size(); ++i)
      add_card(cards_[i], layout_.boxes[i]);
    return text_ + "</svg>\n";
  }

 private:
  void add_arrow(const laid_arrow& laid) {
    const map_arrow& arrow = map_.arrows[laid.arrow];
    const std::string& colour = arrow_colour(arrow, colours_);
    std::string path = "M" + svg_point(laid.points.front());
    for (const auto& curve : curves_of(laid.points))
      path += " C" + svg_point(curve[0]) + " " + svg_point(curve[1]) + " " + svg_point(curve[2]);
    text_ += "<path" + with_value("d", path) + with_value("fill", "none") +
             with_value("stroke", colour) + with_value("stroke-width", "1.4") + "><title>" +
             svg_text(source_text(arrow) + " leads to " + target_text(arrow)) + "</title></path>\n";
    const map_arrow_head head = head_of_arrow(laid.points);
    text_ += "<path" +
             with_value("d", "M" + svg_point(head.tip) + " L" + svg_point(head.upper) + " L" +
                                 svg_point(head.lower) + " Z") +
             with_value("fill", colour) + "/>\n";
  }

  void add_card(const map_card& card, const map_box& box) {
    const bool wrong = is_wrong(card);
    const std::string& edge = wrong ? colours_.wrong : colours_.card_edge;
    const bool is_first = card.place.what == svg_kind::first_play;
    const double head = is_first ? measures::first_play_head : measures::head;
    text_ += "<g" + with_value("transform", "translate(" + svg_point({box.x, box.y}) + ")") + ">\n";
    text_ += rectangle({0, 0, box.width, box.height}, colours_.card, with_value("rx", "4"));
    text_ += rectangle({0, 0, box.width, head}, head_colour(card, colours_), with_value("rx", "4"));
    if (is_first)
      add_first_play(card);
    else
      add_head(card);
    for (std::size_t i = 0; i < card.rows.size(); ++i)
      add_row(card.rows[i], exit_height(card.place, static_cast<int>(i) + 1), box.width);
    text_ += rectangle({0, 0, box.width, box.height}, "none",
                       with_value("rx", "4") + with_value("stroke", edge) +
                           with_value("stroke-width", wrong ? "2" : "1"));
    text_ += "</g>\n";
  }

  void add_first_play(const map_card& card) {
    const double line = measures::first_play_head / 2 + 4;
    text_ += text_at(measures::inset, line, colours_.text, card.heading,
                     with_value("font-weight", "bold"));
    text_ += text_at(measures::inset + 66, line,
                     card.trouble.empty() ? colours_.faint_text : colours_.wrong,
                     cut_to_columns(card.detail, first_play_columns));
  }

  void add_head(const map_card& card) {
    const map_box place{measures::inset, (measures::head - measures::picture_height) / 2,
                        measures::picture_width, measures::picture_height};
    text_ += rectangle(place, colours_.blank_picture);
    if (const auto picture = pictures_.find(card.place); picture != pictures_.end())
      text_ += "<image" + with_value("x", svg_number(place.x)) +
               with_value("y", svg_number(place.y)) + with_value("width", svg_number(place.width)) +
               with_value("height", svg_number(place.height)) +
               with_value("href", "data:image/png;base64," + base64(picture->second)) + "/>\n";
    const double x = place.x + place.width + measures::inset;
    text_ += text_at(x, 19, colours_.text, card.heading, with_value("font-weight", "bold"));
    text_ += text_at(x, 37, colours_.text, cut_to_columns(card.name, head_columns));
    text_ += card.trouble.empty()
                 ? text_at(x, 55, colours_.faint_text, cut_to_columns(card.detail, head_columns))
                 : text_at(x, 55, colours_.wrong, cut_to_columns(card.trouble, head_columns));
  }

  void add_row(const map_card_row& row, double middle, double width) {
    text_ += text_at(measures::inset, middle + 4, row.is_wrong ? colours_.wrong : colours_.text,
                     cut_to_columns(row.text, row_columns));
    if (row.ends_disc)
      text_ += rectangle({width - 16, middle - 4, 8, 8}, colours_.faint_text);
  }

  const disc_map& map_;
  const std::vector<map_card>& cards_;
  const map_layout& layout_;
  const std::map<map_place, std::string>& pictures_;
  map_colours colours_;
  std::string text_;
};

}  // namespace

map_colours dark_map_colours() {
  map_colours c;
  c.paper = "#242424";
  c.card = "#303030";
  c.card_edge = "#6c6c6c";
  c.text = "#f0f0f0";
  c.faint_text = "#b4b4b4";
  c.first_play_head = "#484848";
  c.menu_head = "#264463";
  c.title_head = "#28512f";
  c.button_arrow = "#6aa9ec";
  c.end_arrow = "#66c385";
  c.first_arrow = "#c8c8c8";
  c.wrong = "#ff7a6b";
  c.wrong_head = "#642a24";
  c.blank_picture = "#505050";
  return c;
}

const std::string& head_colour(const map_card& card, const map_colours& colours) {
  if (!card.trouble.empty())
    return colours.wrong_head;
  switch (card.place.what) {
    case svg_kind::first_play:
      return colours.first_play_head;
    case svg_kind::title:
      return colours.title_head;
    default:
      return colours.menu_head;
  }
}

const std::string& arrow_colour(const map_arrow& arrow, const map_colours& colours) {
  switch (arrow.from.what) {
    case svg_kind::first_play:
      return colours.first_arrow;
    case svg_kind::title:
      return colours.end_arrow;
    default:
      return colours.button_arrow;
  }
}

map_arrow_head head_of_arrow(const std::vector<map_point>& points) {
  constexpr double length = 9, half = 4;
  const map_point tip = points.back();
  const map_point& before = points[points.size() - 2];
  const double back = before.x <= tip.x ? -length : length;
  return {tip, {tip.x + back, tip.y - half}, {tip.x + back, tip.y + half}};
}

std::string cut_to_columns(const std::string& text, int columns) {
  int used = 0;
  std::size_t fits = 0;  // bytes that leave room for the mark
  for (std::size_t at = 0; at < text.size();) {
    const shown_character c = character_at(text, at);
    if (used + c.columns > columns)
      return text.substr(0, fits) + "\xE2\x80\xA6";
    used += c.columns;
    at += c.bytes;
    if (used < columns)
      fits = at;
  }
  return text;
}

std::string svg_of(const disc_map& map, const std::vector<map_card>& cards,
                   const map_layout& layout, const std::map<map_place, std::string>& pictures) {
  return svg_writer(map, cards, layout, pictures).write();
}

}  // namespace corvane
