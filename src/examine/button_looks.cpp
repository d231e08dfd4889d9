#include "examine/button_looks.h"

#include "examine/button_shapes.h"
#include "formats/numbers.h"
#include "project/offered_colours.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <set>
#include <span>

namespace corvane {
namespace {

constexpr int frame_width = 720;
constexpr std::size_t buttons_of_a_menu = 36;
constexpr const char* nothing_seen = "nothing";

/// Dots, and the rectangle around them with both ends included.
struct seen_dots {
  int count = 0;
  int x0 = 0, y0 = 0, x1 = 0, y1 = 0;

  void add(const seen_dots& more) {
    if (more.count == 0)
      return;
    if (count == 0) {
      *this = more;
      return;
    }
    *this = {count + more.count, std::min(x0, more.x0), std::min(y0, more.y0),
             std::max(x1, more.x1), std::max(y1, more.y1)};
  }
};

std::string text_of(const seen_dots& dots) {
  if (dots.count == 0)
    return nothing_seen;
  return std::to_string(dots.count) + (dots.count == 1 ? " dot" : " dots") + " within " +
         std::to_string(dots.x0) + "," + std::to_string(dots.y0) + " to " +
         std::to_string(dots.x1) + "," + std::to_string(dots.y1);
}

// What is foreseen -------------------------------------------------------------------------------

/// A button's rectangle as it is asked for: what is drawn of it ends before its right and lower
/// edge.
struct button_place {
  int x0 = 0, y0 = 0, x1 = 0, y1 = 0;
};

/// Not set: it is not drawn as foreseen, or not at all.
std::optional<button_place> place_of(const disc_button& b, int frame_height) {
  const auto x0 = whole_number(b.x0, frame_width), y0 = whole_number(b.y0, frame_height);
  const auto x1 = whole_number(b.x1, frame_width), y1 = whole_number(b.y1, frame_height);
  // Of smaller rounded rectangles GraphicsMagick draws nothing.
  if (!x0 || !y0 || !x1 || !y1 || *x1 - *x0 < 4 || *y1 - *y0 < 2 ||
      (*x1 - *x0 < 6 && *y1 - *y0 < 3))
    return std::nullopt;
  return button_place{*x0, *y0, *x1, *y1};
}

/// On the disc the right and lower edges belong to both.
bool touch(const button_place& a, const button_place& b) {
  return a.x0 <= b.x1 && b.x0 <= a.x1 && a.y0 <= b.y1 && b.y0 <= a.y1;
}

/// With its corners.
int dots_in(const rounded_box& r) {
  return static_cast<int>((r.right - r.left + 1) * (r.bottom - r.top + 1));
}

/// A bar, or of more than three lines a frame whose inside begins one pixel behind its thickness;
/// an inside that is a pixel thin is not cleared (GraphicsMagick 1.3.40, measured).
seen_dots drawing_of(const button_place& b, int thickness) {
  const button_box box{b.x0, b.y0, b.x1, b.y1};
  const rounded_box all = filled_shape(box);
  seen_dots dots{dots_in(all), b.x0, b.y0, static_cast<int>(all.right),
                 static_cast<int>(all.bottom)};
  const std::optional<rounded_box> inside = cleared_shape(box, thickness);
  if (inside && inside->right > inside->left && inside->bottom > inside->top)
    dots.count -= dots_in(*inside);
  return dots;
}

std::string offered_name(const std::string& colour) {
  const bool offered = std::any_of(offered_colours.begin(), offered_colours.end(),
                                   [&](const offered_colour& c) { return colour == c.name; });
  return offered ? colour : std::string();
}

bool has_bitmap(const disc_menu& menu, disc_look disc_button::*look) {
  return std::any_of(menu.buttons.begin(), menu.buttons.end(),
                     [&](const disc_button& b) { return (b.*look).is_bitmap; });
}

/// Those of all buttons; nothing when one is not known.
std::vector<button_place> places_of(const disc_description& d, const disc_menu& menu) {
  std::vector<button_place> places;
  if (menu.buttons.size() > buttons_of_a_menu)
    return {};
  for (const disc_button& b : menu.buttons) {
    const auto place = place_of(b, d.picture_height());
    if (!place)
      return {};
    places.push_back(*place);
  }
  return places;
}

// What a disc shows ------------------------------------------------------------------------------

/// How far a colour may be off after its way through luma and chroma of eight bits.
constexpr int colour_tolerance = 6;

bool is_near(int one, int other) {
  return std::abs(one - other) <= colour_tolerance;
}

std::string name_of_colour(const rgb_colour& seen) {
  for (const offered_colour& c : offered_colours)
    if (is_near(seen.red, c.red) && is_near(seen.green, c.green) && is_near(seen.blue, c.blue))
      return c.name;
  std::array<char, 8> text{};
  std::snprintf(text.data(), text.size(), "#%02X%02X%02X", unsigned{seen.red}, unsigned{seen.green},
                unsigned{seen.blue});
  return text.data();
}

/// Of each code the dots within a button.
using dots_by_code = std::array<seen_dots, 4>;

void add_run(const subpicture_run& run, const menu_button& b, dots_by_code& dots) {
  const int x0 = std::max(run.x0, b.x0), x1 = std::min(run.x1, b.x1);
  if (x0 <= x1 && run.y >= b.y0 && run.y <= b.y1)
    dots[run.code].add({x1 - x0 + 1, x0, run.y, x1, run.y});
}

std::string colours_of(const dots_by_code& dots, const code_looks& looks,
                       const std::array<std::uint32_t, 16>& palette) {
  constexpr int opaque = 15;
  std::set<std::string> seen;
  for (std::size_t code = 0; code < dots.size(); ++code) {
    const int opacity = looks.opacity[code];
    if (dots[code].count == 0 || opacity == 0)
      continue;
    std::string name = name_of_colour(colour_of_entry(palette[looks.colour[code]]));
    if (opacity < opaque)
      name += ", " + std::to_string((opaque - opacity) * 100 / opaque) + " % transparent";
    seen.insert(std::move(name));
  }
  std::string text;
  for (const std::string& name : seen)
    text += (text.empty() ? "" : " and ") + name;
  return text.empty() ? nothing_seen : text;
}

seen_dots dots_of(const dots_by_code& dots, const code_looks& looks) {
  seen_dots all;
  for (std::size_t code = 0; code < dots.size(); ++code)
    if (looks.opacity[code] > 0)
      all.add(dots[code]);
  return all;
}

std::vector<int> numbers_of(std::string_view text) {
  constexpr int too_large = 1'000'000;
  std::vector<int> numbers;
  bool within = false;
  for (const char c : text) {
    if (is_digit(c) && !within)
      numbers.push_back(0);
    within = is_digit(c);
    if (within)
      numbers.back() = std::min(numbers.back() * 10 + (c - '0'), too_large);
  }
  return numbers;
}

}  // namespace

std::optional<int> whole_number(const text_number& edge, int most) {
  if (!edge.is_number || edge.value < 0 || edge.value > most ||
      edge.value != std::floor(edge.value))
    return std::nullopt;
  return static_cast<int>(edge.value);
}

std::vector<seen_button> foreseen_buttons(const disc_description& d, const disc_menu& menu) {
  std::vector<seen_button> all(menu.buttons.size());
  const std::vector<button_place> places = places_of(d, menu);
  const auto thickness = whole_number(menu.thickness, frame_width);
  if (places.empty() || !thickness)
    return all;
  const bool highlights = !has_bitmap(menu, &disc_button::highlight);
  const bool selects = !has_bitmap(menu, &disc_button::select);
  for (std::size_t i = 0; i < places.size(); ++i) {
    const auto is_touched = [&](const button_place& other) {
      return &other != &places[i] && touch(other, places[i]);
    };
    if (std::any_of(places.begin(), places.end(), is_touched))
      continue;
    if (highlights)
      all[i].highlighted = offered_name(menu.buttons[i].highlight.text);
    if (highlights && !all[i].highlighted.empty())
      all[i].drawn = text_of(drawing_of(places[i], *thickness));
    if (selects)
      all[i].selected = offered_name(menu.buttons[i].select.text);
  }
  return all;
}

result<subpicture> picture_of_buttons(const chain_streams& streams) {
  constexpr int frame_height = 576;
  const std::span<const std::uint8_t> unit = streams.overlay;
  const std::size_t size = stated_unit_size(unit);
  if (unit.empty())
    return result<subpicture>::ok({});
  if (unit.size() < 2 || unit.size() < size)
    return result<subpicture>::fail("is cut off");
  return read_subpicture(unit.first(size), frame_width, frame_height);
}

std::vector<seen_button> buttons_on_disc(const disc_menu_contents& menu,
                                         const subpicture& picture) {
  if (!menu.chain.highlight)
    return {};
  const highlight_information& shown = *menu.chain.highlight;
  const std::span<const menu_button> buttons = shown.first_group();
  std::vector<dots_by_code> dots(buttons.size());
  for (const subpicture_run& run : picture.runs)
    for (std::size_t i = 0; i < buttons.size(); ++i)
      add_run(run, buttons[i], dots[i]);
  std::vector<seen_button> all;
  for (std::size_t i = 0; i < buttons.size(); ++i) {
    code_looks highlighted = picture.at_rest, selected = picture.at_rest;
    if (buttons[i].colours >= 1 && buttons[i].colours <= 3) {
      const auto& row = shown.colours[static_cast<std::size_t>(buttons[i].colours) - 1];
      highlighted = code_looks_of(row[0]);
      selected = code_looks_of(row[1]);
    }
    const auto& palette = menu.chain.tables->palette;
    all.push_back({colours_of(dots[i], highlighted, palette),
                   colours_of(dots[i], selected, palette), text_of(dots_of(dots[i], highlighted))});
  }
  return all;
}

bool is_same_drawing(std::string_view foreseen, std::string_view found) {
  constexpr int edge_tolerance = 2, dots_tolerance = 32;
  const std::vector<int> a = numbers_of(foreseen), b = numbers_of(found);
  if (a.size() != 5 || b.size() != 5)
    return foreseen == found;
  for (std::size_t edge = 1; edge < 5; ++edge)
    if (std::abs(a[edge] - b[edge]) > edge_tolerance)
      return false;
  return std::abs(a[0] - b[0]) <= dots_tolerance + a[0] / 20;
}

}  // namespace corvane
