// The pictures of the menus' buttons: as gm draws them in a run, and as the disc shows them.
#include "drawn_colours.h"
#include "examine/button_looks.h"
#include "examine/verification.h"
#include "platform/files/files.h"
#include "shown_overlays.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <sstream>

namespace corvane::disc {
namespace {

/// A button whose colours are the `highlight`th and the `select`th of the ten.
struct drawn_button {
  int x0, y0, x1, y1;
  std::size_t highlight, select;
  bool is_frame() const { return y1 - y0 > 3; }
};

std::string record_of(const drawn_button& b) {
  std::ostringstream text;
  text << ' ' << b.x0 << "/ " << b.y0 << "/ " << b.x1 << "/ " << b.y1 << "/jump title 1/"
       << drawn_colours[b.highlight].name << '/' << drawn_colours[b.select].name;
  return text.str();
}

/// Five buttons one below the other that have all ten colours, in one state or the other.
std::vector<drawn_button> five_buttons(int height) {
  std::vector<drawn_button> buttons;
  for (int i = 0; i < 5; ++i) {
    const auto colour = static_cast<std::size_t>(i);
    buttons.push_back(
        {60 + 40 * i, 40 + 80 * i, 260 + 50 * i, 40 + 80 * i + height, colour, colour + 5});
  }
  return buttons;
}

void add_drawn_menu(project& p, const std::vector<drawn_button>& buttons, int thickness,
                    const std::string& video = "menu-ntsc.m2v") {
  std::vector<std::string> records;
  for (const drawn_button& b : buttons)
    records.push_back(record_of(b));
  add_menu(p, stored_media(video), "", records,
           " 0\t00:00:00.0\t00:00:00.0\t " + std::to_string(thickness));
}

bool is_near_corner(const drawn_button& b, int x, int y, int inset) {
  // Corners are rounded by two pixels sideways and three up and down.
  const int left = b.x0 + inset, right = b.x1 - 2 - inset;
  const int top = b.y0 + inset, bottom = b.y1 - 1 - inset;
  return (std::abs(x - left) <= 2 || std::abs(x - right) <= 2) &&
         (std::abs(y - top) <= 3 || std::abs(y - bottom) <= 3);
}

bool is_within(const drawn_button& b, int x, int y, int inset) {
  return x >= b.x0 + inset && x <= b.x1 - 2 - inset && y >= b.y0 + inset && y <= b.y1 - 1 - inset;
}

/// What the picture has of a button, against what it should have: a bar, or a frame whose lines are
/// one pixel more than its thickness, since its inside begins there.
void expect_drawn(const picture_file& picture, const drawn_button& b, int thickness,
                  const named_colour& colour) {
  int wrong = 0;
  for (int y = b.y0; y <= b.y1; ++y) {
    for (int x = b.x0; x <= b.x1; ++x) {
      const dot found = picture.at(x, y);
      const bool is_coloured =
          found.red == colour.red && found.green == colour.green && found.blue == colour.blue;
      if (found.opacity != 0 && !is_coloured)
        ++wrong;
      if (is_near_corner(b, x, y, 0) || (b.is_frame() && is_near_corner(b, x, y, thickness + 1)))
        continue;
      const bool wanted =
          is_within(b, x, y, 0) && !(b.is_frame() && is_within(b, x, y, thickness + 1));
      if (wanted != (found.opacity != 0))
        ++wrong;
    }
  }
  EXPECT_EQ(wrong, 0) << colour.name << " of " << b.x0 << "," << b.y0 << ", thickness "
                      << thickness;
}

/// That nothing is drawn outside of the buttons.
void expect_clear_elsewhere(const picture_file& picture, const std::vector<drawn_button>& buttons) {
  int drawn = 0;
  for (int y = 0; y < picture.height; ++y)
    for (int x = 0; x < picture.width; ++x)
      if (!picture.is_clear(x, y) &&
          std::none_of(buttons.begin(), buttons.end(),
                       [&](const drawn_button& b) { return is_within(b, x, y, 0); }))
        ++drawn;
  EXPECT_EQ(drawn, 0);
}

void expect_menu_drawn(const studio& s, int menu, const std::vector<drawn_button>& buttons,
                       int thickness) {
  const picture_file highlight = read_png(picture_path(s, "highlight", menu), 720, 480);
  const picture_file select = read_png(picture_path(s, "select", menu), 720, 480);
  for (const drawn_button& b : buttons) {
    expect_drawn(highlight, b, thickness, drawn_colours[b.highlight]);
    expect_drawn(select, b, thickness, drawn_colours[b.select]);
  }
  expect_clear_elsewhere(highlight, buttons);
  expect_clear_elsewhere(select, buttons);
}

finding_item item_of(std::size_t menu, std::size_t button) {
  return {finding_item::whole_kind::menu, static_cast<int>(menu) + 1,
          finding_item::part_kind::button, static_cast<int>(button) + 1};
}

/// What verification says of a button, "(nothing)" if nothing.
std::string said_of(const disc_traits& disc, const finding_item& item, disc_trait_kind what) {
  const disc_trait* const trait = disc.find(item, what);
  return trait == nullptr ? "(nothing)" : trait->value;
}

/// That verification foresaw the buttons of all menus, and found them.
void expect_verified(const studio& s, const std::vector<std::vector<drawn_button>>& menus) {
  const auto text = read_file(s.app() + "/foreseen.xml", 1u << 30);
  ASSERT_TRUE(text) << text.error;
  const auto foreseen = parse_foreseen(*text);
  ASSERT_TRUE(foreseen) << foreseen.error;
  verification look({s.out(), {}}, nullptr);
  while (look.step(1000)) {
  }
  for (std::size_t menu = 0; menu < menus.size(); ++menu)
    for (std::size_t i = 0; i < menus[menu].size(); ++i) {
      const drawn_button& b = menus[menu][i];
      const finding_item item = item_of(menu, i);
      for (const disc_traits* const disc : {&foreseen->disc, &look.found()}) {
        EXPECT_EQ(said_of(*disc, item, disc_trait_kind::highlighted),
                  drawn_colours[b.highlight].name);
        EXPECT_EQ(said_of(*disc, item, disc_trait_kind::selected), drawn_colours[b.select].name);
      }
      const std::string asked = said_of(foreseen->disc, item, disc_trait_kind::drawn);
      const std::string found = said_of(look.found(), item, disc_trait_kind::drawn);
      EXPECT_NE(asked, "(nothing)");
      EXPECT_TRUE(is_same_drawing(asked, found)) << asked << ", found " << found;
    }
}

/// All ten colours as bars of three lines and as frames of three thicknesses.
TEST(MenuOverlaysOnDisc, BarsAndFramesHaveTheirPlaceThicknessAndColour) {
  const std::vector<std::pair<int, int>> heights_and_thicknesses{{3, 1}, {40, 1}, {40, 3}, {60, 8}};
  project p = short_project();
  for (const auto& [height, thickness] : heights_and_thicknesses)
    add_drawn_menu(p, five_buttons(height), thickness);
  const studio s;
  const contents disc = s.authored(p);
  std::vector<std::vector<drawn_button>> menus;
  for (const auto& [height, thickness] : heights_and_thicknesses) {
    menus.push_back(five_buttons(height));
    expect_menu_drawn(s, static_cast<int>(menus.size()), menus.back(), thickness);
  }
  expect_disc_shows_what_was_drawn(s, disc);
  expect_verified(s, menus);
}

TEST(MenuOverlaysOnDisc, PalMenuShowsItsButtonsDownToTheLastLine) {
  project p;
  p.globalregion = "PAL";
  add_title(p, {stored_media("clip-pal.m2v"), stored_media("clip.ac3")});
  const std::vector<drawn_button> buttons = {
      {0, 0, 720, 4, 3, 9}, {20, 500, 220, 576, 4, 8}, {500, 540, 720, 576, 6, 1}};
  add_drawn_menu(p, buttons, 2, "menu-pal.m2v");
  const studio s;
  expect_disc_shows_what_was_drawn(s, s.authored(p), 576);
  expect_verified(s, {buttons});
}

TEST(MenuOverlaysOnDisc, ButtonsAtOddLinesAreShownWhereTheyWereDrawn) {
  project p = short_project();
  const std::vector<drawn_button> buttons = {
      {100, 101, 301, 142, 3, 9}, {101, 201, 300, 204, 4, 8}, {99, 300, 301, 303, 5, 1}};
  add_drawn_menu(p, buttons, 2);
  const studio s;
  const contents disc = s.authored(p);
  expect_disc_shows_what_was_drawn(s, disc);
  expect_verified(s, {buttons});
}

TEST(MenuOverlaysOnDisc, SamplesShowWhatWasDrawn) {
  for (const char* sample : {"sample.cvp", "sample-pal.cvp"}) {
    const studio s;
    const finished done =
        run({{CORVANE_AUTHOR, "--no-iso", media(sample), s.out()}, {{"CORVANE_HOME", s.app()}}});
    ASSERT_EQ(done.status, 0) << done.out;
    const auto disc = s.disc();
    ASSERT_TRUE(disc) << disc.error;
    expect_disc_shows_what_was_drawn(s, *disc, std::string(sample) == "sample.cvp" ? 480 : 576);
  }
}

}  // namespace
}  // namespace corvane::disc
