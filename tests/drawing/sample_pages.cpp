#include "drawing/sample_pages.h"

#include "drawing/colours.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace corvane::drawing_test {
namespace {

page_text text_of(std::string text, page_box box, text_style style) {
  page_text one;
  one.text = std::move(text);
  one.box = box;
  one.style = std::move(style);
  return one;
}

text_style style_of(std::string family, int size, page_colour colour = white) {
  text_style style;
  style.families = {std::move(family)};
  style.size = size;
  style.colour = colour;
  return style;
}

/// In parts of a hundred of the page.
page_box box_of(const drawn_page& page, int left, int top, int width, int height) {
  return {page.width * left / 100, page.height * top / 100, page.width * width / 100,
          page.height * height / 100};
}

drawn_page list_page(drawn_page page) {
  page.background = colour_background{
      {20, 30, 70, 255}, {90, 20, 60, 255}, colour_background::direction::down_right};
  text_style heading = style_of("serif", page.height / 10);
  heading.bold = true;
  heading.shadow = 3;
  heading.shadow_colour = {0, 0, 0, 160};
  page_text top = text_of("Holidays in Brittany", box_of(page, 10, 10, 80, 14), heading);
  top.across = page_align::middle;
  page.shapes.emplace_back(top);
  const std::array<std::string, 6> entries{
      "1  Arriving",     "2  Ħarsa lejn il-baħar – über Wälder",
      "3  日本の夏休み", "4  رحلة إلى البحر",
      "5  טיול אל הים",  "6  A name that is much too long for the line that it has got here"};
  for (int i = 0; i < 6; ++i) {
    page_rectangle row;
    row.box = box_of(page, 10, 28 + 10 * i, 80, 9);
    row.radius = page.height / 40;
    row.colour = {255, 255, 255, static_cast<std::uint8_t>(i == 0 ? 90 : 40)};
    row.border = i == 0 ? 2 : 0;
    row.border_colour = {255, 220, 120, 255};
    page.shapes.emplace_back(row);
    page_text entry =
        text_of(entries.at(static_cast<std::size_t>(i)), box_of(page, 13, 28 + 10 * i, 74, 9),
                style_of("sans", page.height / 18));
    entry.least_size = page.height / 24;
    page.shapes.emplace_back(entry);
  }
  return page;
}

drawn_page grid_page(drawn_page page) {
  picture_background background;
  background.file = "photo";
  background.shade = {10, 20, 40, 150};
  page.background = background;
  for (int i = 0; i < 6; ++i) {
    const int left = 11 + 27 * (i % 3), top = 16 + 36 * (i / 3);
    page_thumbnail film;
    film.file = "film";
    film.seconds = i;
    film.box = box_of(page, left, top, 24, 22);
    film.border = 2;
    film.border_colour = white;
    page.shapes.emplace_back(film);
    text_style style = style_of("sans", page.height / 24);
    style.outline = 2;
    style.outline_colour = black;
    page_text caption = text_of(
        i % 2 == 0 ? "Chapter " + std::to_string(i + 1) : "A walk along the coast with friends",
        box_of(page, left, top + 23, 24, 11), style);
    caption.across = page_align::middle;
    caption.down = page_align::begin;
    caption.most_lines = 2;
    page.shapes.emplace_back(caption);
  }
  return page;
}

drawn_page bright_page(drawn_page page) {
  picture_background background;
  background.file = "film";
  background.fit = page_fit::fit;
  background.around = {60, 60, 60, 255};
  page.background = background;
  for (int i = 0; i < 4; ++i) {
    text_style style = style_of(i % 2 == 0 ? "sans" : "serif", page.height / 12);
    style.italic = i == 3;
    style.bold = i == 2;
    style.outline = i == 0 ? 0 : i;
    style.outline_colour = black;
    style.shadow = i == 0 ? 2 : i == 3 ? 4 : 0;
    style.shadow_colour = {0, 0, 0, 200};
    page_text line = text_of("Outline of " + std::to_string(style.outline) + ", shadow of " +
                                 std::to_string(style.shadow),
                             box_of(page, 10, 14 + 18 * i, 80, 16), style);
    line.across = i % 2 == 0 ? page_align::begin : page_align::end;
    line.least_size = 12;
    page.shapes.emplace_back(line);
  }
  return page;
}

void put(picture& shown, int x, int y, const std::array<int, 3>& colour) {
  const auto at = 3 * static_cast<std::size_t>(y * shown.width + x);
  for (std::size_t i = 0; i < 3; ++i)
    shown.rgb[at + i] = static_cast<std::uint8_t>(std::clamp(colour[i], 0, 255));
}

}  // namespace

drawn_page empty_page(int height, bool is_wide) {
  drawn_page page;
  page.height = height;
  page.is_wide = is_wide;
  page.pixel_aspect = page_pixel_aspect(height, is_wide);
  return page;
}

std::vector<named_page> sample_pages() {
  std::vector<named_page> pages;
  for (const int height : {480, 576})
    for (const bool is_wide : {false, true}) {
      const drawn_page empty = empty_page(height, is_wide);
      const std::string kind = std::to_string(height) + (is_wide ? "-wide" : "-narrow");
      pages.push_back({"list-" + kind, list_page(empty)});
      pages.push_back({"grid-" + kind, grid_page(empty)});
      pages.push_back({"bright-" + kind, bright_page(empty)});
    }
  return pages;
}

shaped_picture sample_picture(const std::string& file) {
  constexpr int width = 1200, height = 800;
  const bool is_film = file == "film";
  picture shown{width, height, std::vector<std::uint8_t>(std::size_t{3} * width * height)};
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x) {
      const double from_middle = std::hypot(x - width / 2, y - height / 2);
      const bool is_ring = from_middle < 300 && from_middle > 270;
      if (is_film)
        put(shown, x, y,
            is_ring ? std::array{200, 40, 40} : std::array{255 - y / 10, 250, 200 + x / 25});
      else
        put(shown, x, y,
            is_ring ? std::array{240, 220, 80}
                    : std::array{60 + y / 6, 120 + x / 12, 160 + (x / 40 + y / 40) % 2 * 40});
    }
  return {std::move(shown), 1};
}

}  // namespace corvane::drawing_test
