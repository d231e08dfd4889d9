// The program's designs, measured on the pictures that are drawn of them and not on what the layout
// says: nothing is cut off or outside of what televisions show, texts can be read, entries do not
// overlap, buttons lie over their entries, films keep their shape.
//
// A tenth of the discs and forms, always the same; all of them with CORVANE_WHOLE_SETS.
#include "disc/large_sets.h"
#include "drawing/design_pages.h"
#include "drawing/page_drawer.h"
#include "menus/maker/design_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace corvane {
namespace {

using drawing_test::designed_page;
using drawing_test::disc_kind;
using testing::IsEmpty;

class no_bitmaps_of_designs final : public bitmap_reader {
 public:
  const button_bitmap* read(const std::string& /*stored*/) override { return nullptr; }
};

/// Of every film: a black circle on white.
result<std::shared_ptr<const shaped_picture>> circle_picture(const std::string& /*file*/,
                                                             double /*seconds*/) {
  static const auto circle = [] {
    constexpr int width = 400, height = 300;
    picture shown{width, height, std::vector<std::uint8_t>(std::size_t{3} * width * height, 255)};
    for (int y = 0; y < height; ++y)
      for (int x = 0; x < width; ++x)
        if (std::hypot(x + 0.5 - width / 2, y + 0.5 - height / 2) < 90)
          std::fill_n(&shown.rgb[3 * static_cast<std::size_t>(y * width + x)], 3, 0);
    return std::make_shared<const shaped_picture>(shaped_picture{std::move(shown), 1});
  }();
  return result<std::shared_ptr<const shaped_picture>>::ok(circle);
}

/// The pixels that something is drawn on.
struct inked_pixels {
  std::vector<std::uint8_t> alpha;  ///< of the whole page
  page_box box;                     ///< the smallest that has them all; without height if none
};

inked_pixels inked_of(const std::vector<std::uint8_t>& rgba, int width, int height) {
  inked_pixels ink;
  ink.alpha.resize(rgba.size() / 4);
  int left = width, right = 0, top = height, bottom = 0;
  const std::uint8_t* from = rgba.data() + 3;
  std::uint8_t* to = ink.alpha.data();
  for (int y = 0; y < height; ++y)
    for (int x = 0; x < width; ++x, from += 4, ++to) {
      if (*from == 0)
        continue;
      *to = *from;
      left = std::min(left, x);
      right = std::max(right, x + 1);
      top = std::min(top, y);
      bottom = y + 1;
    }
  if (left < right)
    ink.box = {left, top, right - left, bottom - top};
  return ink;
}

bool is_in(const page_box& inner, const page_box& outer) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right() <= outer.right() &&
         inner.bottom() <= outer.bottom();
}

std::string told(const page_box& box) {
  return std::to_string(box.left) + "," + std::to_string(box.top) + " " +
         std::to_string(box.width) + "x" + std::to_string(box.height);
}

template <typename Look>
void for_each_in(const page_box& box, int width, const Look& look) {
  for (int y = box.top; y < box.bottom(); ++y)
    for (int x = box.left; x < box.right(); ++x)
      look(static_cast<std::size_t>(y) * static_cast<std::size_t>(width) +
           static_cast<std::size_t>(x));
}

/// How light something is, as contrasts of texts are told: 0 to 1.
double lightness(const std::uint8_t* rgb) {
  static const auto linear = [] {
    std::array<double, 256> values{};
    for (std::size_t i = 0; i < values.size(); ++i) {
      const double part = static_cast<double>(i) / 255;
      values.at(i) = part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    }
    return values;
  }();
  return 0.2126 * linear.at(rgb[0]) + 0.7152 * linear.at(rgb[1]) + 0.0722 * linear.at(rgb[2]);
}

/// 1 to 21.
double contrast_of(double a, double b) {
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

class DesignPictures : public testing::Test {
 protected:
  DesignPictures() : designs_(designs_in(CORVANE_DESIGNS, "")) {
    auto made = make_page_drawer();
    EXPECT_TRUE(made) << made.error;
    if (made)
      drawer_ = std::move(*made);
    EXPECT_GE(designs_.size(), 8U);
  }

  page_canvas drawn(const drawn_page& page) { return drawer_->draw(page, circle_picture).canvas; }

  /// The shape by itself, on nothing.
  inked_pixels ink_of(const drawn_page& page, page_shape shape) {
    drawn_page alone = page;
    alone.background = video_background{};
    alone.shapes = {std::move(shape)};
    const page_canvas canvas = drawn(alone);
    return inked_of(canvas.rgba, canvas.width, canvas.height);
  }

  template <typename Look>
  void for_each_page(const Look& look) {
    for (const found_design& found : designs_) {
      ASSERT_TRUE(found.design) << found.design.error;
      for (const auto& [form, kind] : chosen_of(found.id)) {
        const text_measure measure = [this](std::string_view text, const text_style& style,
                                            int width, double aspect) {
          return drawer_->measure(text, style, width, aspect);
        };
        for (const designed_page& page :
             drawing_test::designed_pages(*found.design, form, kind.disc, measure)) {
          SCOPED_TRACE(found.id + (form.standard == video_standard::pal ? " PAL" : " NTSC") +
                       (form.is_wide ? " 16:9 " : " 4:3 ") + kind.name + ": " + page.name);
          look(*found.design, form, kind, page);
        }
      }
    }
  }

 private:
  using disc_in_form = std::pair<page_form, disc_kind>;

  /// Other ones for each design.
  static std::vector<disc_in_form> chosen_of(const std::string& id) {
    std::vector<disc_in_form> all;
    for (const video_standard standard : {video_standard::ntsc, video_standard::pal})
      for (const bool is_wide : {false, true})
        for (disc_kind& kind : drawing_test::kinds_of_discs())
          all.emplace_back(page_form{standard, is_wide}, std::move(kind));
    std::seed_seq seed(id.begin(), id.end());
    std::mt19937 random(seed);
    for (std::size_t i = all.size() - 1; i > 0; --i)
      std::swap(all[i], all[random() % (i + 1)]);
    all.resize(static_cast<std::size_t>(disc::part_of_set(static_cast<int>(all.size()))));
    return all;
  }

  std::vector<found_design> designs_;
  std::unique_ptr<page_drawer> drawer_;
};

/// Of the background: as wide as the page.
bool is_band(const page_shape& shape) {
  const auto* const rectangle = std::get_if<page_rectangle>(&shape);
  return rectangle != nullptr && rectangle->box.width == 720;
}

page_box box_of_shape(const page_shape& shape) {
  return std::visit([](const auto& one) { return one.box; }, shape);
}

bool is_text_or_film(const page_shape& shape) {
  return !std::holds_alternative<page_rectangle>(shape);
}

/// Whose button holds the shape, 0-based.
std::optional<std::size_t> button_of(const page_shape& shape, const laid_out_menu& laid_out) {
  const page_box box = box_of_shape(shape);
  const int x = box.left + box.width / 2, y = box.top + box.height / 2;
  for (std::size_t i = 0; i < laid_out.buttons.size(); ++i) {
    const menu_rectangle& button = laid_out.buttons[i];
    if (button.contains(x, y) && box.width <= button.x1 - button.x0)
      return i;
  }
  return std::nullopt;
}

inked_pixels ink_of_button(const menu_design& design, const designed_page& page, std::size_t i,
                           button_state state = button_state::highlighted) {
  no_bitmaps_of_designs none;
  const overlay_picture overlay =
      overlay_of({drawing_test::shown_button(design, page, static_cast<int>(i) + 1, state)},
                 design.frame, page.laid_out.page.height, none);
  return inked_of(overlay.rgba, overlay.width, overlay.height);
}

TEST_F(DesignPictures, ShowNothingOutsideOfTheSafeArea) {
  for_each_page([&](const menu_design& design, const page_form& /*form*/, const disc_kind& /*kind*/,
                    const designed_page& page) {
    const drawn_page& drawn = page.laid_out.page;
    const int tenth = (drawn.height + 9) / 10;
    const page_box safe{72, tenth, 576, drawn.height - 2 * tenth};
    for (const page_shape& shape : drawn.shapes)
      if (!is_band(shape)) {
        const page_box box = ink_of(drawn, shape).box;
        EXPECT_TRUE(is_in(box, safe)) << told(box);
      }
    for (std::size_t i = 0; i < page.laid_out.buttons.size(); ++i) {
      const page_box box = ink_of_button(design, page, i).box;
      EXPECT_TRUE(is_in(box, safe)) << told(box);
    }
  });
}

/// A text as it would be with all the room of a large page.
drawn_page with_room(const drawn_page& page, page_text text) {
  drawn_page large = page;
  large.width = 1800;
  large.height = 900;
  large.background = video_background{};
  text.box = {100, 100, 1600, 700};
  large.shapes = {std::move(text)};
  return large;
}

std::int64_t sum_of(const inked_pixels& ink) {
  std::int64_t sum = 0;
  for_each_in({0, 0, static_cast<int>(ink.alpha.size()), 1}, 0,
              [&](std::size_t at) { sum += ink.alpha[at]; });
  return sum;
}

TEST_F(DesignPictures, ShowTextsWhole) {
  for_each_page([&](const menu_design& /*design*/, const page_form& /*form*/, const disc_kind& kind,
                    const designed_page& page) {
    if (kind.name != "names") {
      EXPECT_THAT(page.laid_out.notes, IsEmpty());
    }
    for (const page_shape& shape : page.laid_out.page.shapes)
      if (const auto* const text = std::get_if<page_text>(&shape)) {
        const inked_pixels ink = ink_of(page.laid_out.page, *text);
        const page_canvas whole = drawn(with_room(page.laid_out.page, *text));
        const inked_pixels all = inked_of(whole.rgba, whole.width, whole.height);
        EXPECT_GT(ink.box.width, 0) << text->text;
        EXPECT_EQ(ink.box.width, all.box.width) << text->text;
        EXPECT_EQ(ink.box.height, all.box.height) << text->text;
        EXPECT_EQ(sum_of(ink), sum_of(all)) << text->text;
      }
  });
}

TEST_F(DesignPictures, ShowEntriesThatDoNotOverlap) {
  for_each_page([&](const menu_design& /*design*/, const page_form& /*form*/,
                    const disc_kind& /*kind*/, const designed_page& page) {
    const drawn_page& drawn = page.laid_out.page;
    constexpr int heading = 100;
    std::vector<std::uint8_t> owners(static_cast<std::size_t>(drawn.width * drawn.height));
    std::vector<std::uint8_t> inked(owners.size());
    int in_others = 0, text_over_film = 0;
    for (const page_shape& shape : drawn.shapes) {
      const auto button = button_of(shape, page.laid_out);
      if (!button && !is_text_or_film(shape))
        continue;
      const int owner = button ? static_cast<int>(*button) + 1 : heading;
      const inked_pixels ink = ink_of(drawn, shape);
      for_each_in(ink.box, drawn.width, [&](std::size_t at) {
        if (ink.alpha[at] == 0)
          return;
        in_others += owners[at] != 0 && owners[at] != owner ? 1 : 0;
        owners[at] = static_cast<std::uint8_t>(owner);
        if (is_text_or_film(shape)) {
          text_over_film += inked[at];
          inked[at] = 1;
        }
      });
    }
    EXPECT_EQ(in_others, 0);
    EXPECT_EQ(text_over_film, 0);
  });
}

TEST_F(DesignPictures, HaveButtonsExactlyOverTheirEntries) {
  for_each_page([&](const menu_design& design, const page_form& /*form*/, const disc_kind& /*kind*/,
                    const designed_page& page) {
    const drawn_page& drawn = page.laid_out.page;
    std::vector<int> shapes_in(page.laid_out.buttons.size());
    std::vector<inked_pixels> frames;
    for (std::size_t i = 0; i < page.laid_out.buttons.size(); ++i) {
      frames.push_back(ink_of_button(design, page, i));
      EXPECT_EQ(frames[i].box.top % 2, 0);
      EXPECT_EQ(frames[i].box.height % 2, 0);
    }
    for (const page_shape& shape : drawn.shapes) {
      const auto button = button_of(shape, page.laid_out);
      if (!button)
        continue;
      ++shapes_in[*button];
      const inked_pixels ink = ink_of(drawn, shape);
      const inked_pixels& frame = frames[*button];
      EXPECT_TRUE(is_in(ink.box, frame.box)) << told(ink.box) << " in " << told(frame.box);
      const design_panel& panel =
          *button < page.menu.entries.size() ? design.entry_panel : design.way_panel;
      if (shapes_in[*button] == 1 && panel.is_seen()) {
        EXPECT_EQ(told(ink.box), told(frame.box));
      }
      if (!is_text_or_film(shape))
        continue;
      int beneath_frame = 0;
      for_each_in(ink.box, drawn.width, [&](std::size_t at) {
        beneath_frame += ink.alpha[at] != 0 && frame.alpha[at] != 0 ? 1 : 0;
      });
      EXPECT_EQ(beneath_frame, 0);
    }
    EXPECT_THAT(shapes_in, testing::Each(testing::Gt(0)));
  });
}

TEST_F(DesignPictures, KeepTheShapeOfFilms) {
  int films = 0;
  for_each_page([&](const menu_design& /*design*/, const page_form& /*form*/,
                    const disc_kind& /*kind*/, const designed_page& page) {
    const drawn_page& drawn_on = page.laid_out.page;
    for (const page_shape& shape : drawn_on.shapes) {
      if (!std::holds_alternative<page_thumbnail>(shape))
        continue;
      ++films;
      auto film = std::get<page_thumbnail>(shape);
      film.border = 0;
      drawn_page alone = drawn_on;
      alone.background = colour_background{{255, 255, 255, 255}, {255, 255, 255, 255}};
      alone.shapes = {film};
      page_canvas canvas = drawn(alone);
      // What is dark is the circle.
      for (std::size_t i = 0; i < canvas.rgba.size(); i += 4)
        canvas.rgba[i + 3] = canvas.rgba[i] < 128 ? 255 : 0;
      const page_box circle = inked_of(canvas.rgba, canvas.width, canvas.height).box;
      EXPECT_GT(circle.height, 12);
      // Edges are found to half a pixel.
      EXPECT_NEAR(circle.width * drawn_on.pixel_aspect, circle.height, drawn_on.pixel_aspect + 0.5)
          << told(film.box);
      EXPECT_NEAR(circle.left + circle.width / 2.0, film.box.left + film.box.width / 2.0, 1);
    }
  });
  EXPECT_GT(films, 20);
}

/// The page on films that are as unlike each other as can be; on its own background but once.
std::vector<page_colour> colours_behind(const menu_design& design) {
  if (std::holds_alternative<video_background>(design.background))
    return {{0, 0, 0, 255}, {255, 255, 255, 255}, {120, 140, 90, 255}};
  return {{0, 0, 0, 255}};
}

/// The lightness of which a tenth of them contrasts less.
double worst_contrast(std::vector<double> around, double with) {
  if (around.empty())
    return 0;
  for (double& one : around)
    one = contrast_of(one, with);
  const auto tenth = around.begin() + static_cast<std::ptrdiff_t>(around.size() / 10);
  std::ranges::nth_element(around, tenth);
  return *tenth;
}

/// The letters of a text by themselves, where they stand on the page.
page_text letters_of(page_text text) {
  text.style.colour = {255, 255, 255, 255};
  text.style.outline_colour.alpha = 0;
  text.style.shadow_colour.alpha = 0;
  return text;
}

/// Of a text's letters to what is beneath and beside them. `below`: the page with everything but
/// letters.
double contrast_of_letters(const inked_pixels& letters, const picture& page, const picture& below) {
  constexpr int core = 200, beside = 32;
  double light = 0;
  int cores = 0;
  std::vector<double> around;
  const auto width = static_cast<std::size_t>(page.width);
  for_each_in(letters.box, page.width, [&](std::size_t at) {
    if (letters.alpha[at] < core)
      return;
    ++cores;
    light += lightness(&page.rgb[3 * at]);
    around.push_back(lightness(&below.rgb[3 * at]));
    for (const std::size_t next : {at - 1, at + 1, at - width, at + width})
      if (letters.alpha[next] < beside)
        around.push_back(lightness(&below.rgb[3 * next]));
  });
  return cores == 0 ? 0 : worst_contrast(std::move(around), light / cores);
}

TEST_F(DesignPictures, HaveTextsThatCanBeRead) {
  // What is demanded of texts of this size for people who see badly.
  constexpr double enough = 4.5;
  for_each_page([&](const menu_design& design, const page_form& /*form*/, const disc_kind& /*kind*/,
                    const designed_page& page) {
    drawn_page without = page.laid_out.page;
    std::vector<std::pair<std::string, inked_pixels>> letters;
    for (page_shape& shape : without.shapes)
      if (auto* const text = std::get_if<page_text>(&shape)) {
        letters.emplace_back(text->text, ink_of(without, letters_of(*text)));
        text->style.colour.alpha = 0;
      }
    const page_canvas with = drawn(page.laid_out.page), below = drawn(without);
    for (const page_colour& behind : colours_behind(design)) {
      const picture seen = on_colour(with, behind), seen_below = on_colour(below, behind);
      for (const auto& [text, ink] : letters)
        EXPECT_GE(contrast_of_letters(ink, seen, seen_below), enough) << text;
    }
  });
}

/// Of a button's frame to what it lies over.
double contrast_of_frame(const inked_pixels& frame, const page_colour& colour,
                         const picture& page) {
  const std::array<std::uint8_t, 3> rgb{colour.red, colour.green, colour.blue};
  std::vector<double> beneath;
  for_each_in(frame.box, page.width, [&](std::size_t at) {
    if (frame.alpha[at] != 0)
      beneath.push_back(lightness(&page.rgb[3 * at]));
  });
  return worst_contrast(std::move(beneath), lightness(rgb.data()));
}

page_colour colour_of_frame(const menu_design& design, const designed_page& page, std::size_t i,
                            button_state state) {
  no_bitmaps_of_designs none;
  const overlay_picture overlay =
      overlay_of({drawing_test::shown_button(design, page, static_cast<int>(i) + 1, state)},
                 design.frame, page.laid_out.page.height, none);
  for (std::size_t at = 0; at < overlay.rgba.size(); at += 4)
    if (overlay.rgba[at + 3] != 0)
      return {overlay.rgba[at], overlay.rgba[at + 1], overlay.rgba[at + 2], 255};
  return {};
}

TEST_F(DesignPictures, HaveButtonsThatAreSeenOnThem) {
  constexpr double enough = 2.2;
  for_each_page([&](const menu_design& design, const page_form& /*form*/, const disc_kind& /*kind*/,
                    const designed_page& page) {
    const page_canvas canvas = drawn(page.laid_out.page);
    for (const page_colour& behind : colours_behind(design)) {
      const picture seen = on_colour(canvas, behind);
      for (std::size_t i = 0; i < page.laid_out.buttons.size(); ++i) {
        const page_colour chosen = colour_of_frame(design, page, i, button_state::highlighted);
        const page_colour pressed = colour_of_frame(design, page, i, button_state::selected);
        EXPECT_NE(chosen, pressed);
        for (const button_state state : {button_state::highlighted, button_state::selected})
          EXPECT_GE(contrast_of_frame(ink_of_button(design, page, i, state),
                                      state == button_state::selected ? pressed : chosen, seen),
                    enough)
              << "button " << i + 1 << (state == button_state::selected ? ", pressed" : "")
              << ", on " << int{behind.green};
      }
    }
  });
}

}  // namespace
}  // namespace corvane
