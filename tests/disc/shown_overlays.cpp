#include "shown_overlays.h"

#include <gtest/gtest.h>

#include <cstdlib>

namespace corvane::disc {
namespace {

/// How far apart two colours may be: the disc holds them as luma and chroma of eight bits.
constexpr int colour_tolerance = 6;

bool looks_like(const dot& shown, const dot& drawn) {
  if (drawn.opacity == 0)
    return shown.opacity == 0;
  return shown.opacity == 15 && std::abs(shown.red - drawn.red) <= colour_tolerance &&
         std::abs(shown.green - drawn.green) <= colour_tolerance &&
         std::abs(shown.blue - drawn.blue) <= colour_tolerance;
}

/// What a player shows with each button lit: that button as it was drawn, and nothing else.
void expect_shown_as_drawn(const menu& m, button_state state, const picture_file& drawn) {
  ASSERT_TRUE(m.shown) << "menu " << m.number << " has no picture of its buttons";
  for (const button& lit : m.buttons) {
    int wrong = 0, seen = 0;
    for (int y = 0; y < drawn.height; ++y) {
      for (int x = 0; x < drawn.width; ++x) {
        const bool within = x >= lit.x0 && x <= lit.x1 && y >= lit.y0 && y <= lit.y1;
        const dot shown = m.shown->at(x, y, &lit, state);
        seen += shown.opacity != 0;
        wrong += !looks_like(shown, within ? drawn.at(x, y) : dot{});
      }
    }
    EXPECT_EQ(wrong, 0) << "menu " << m.number << ", button at " << lit.x0 << "," << lit.y0;
    EXPECT_GT(seen, 0) << "menu " << m.number << ", button at " << lit.x0 << "," << lit.y0;
  }
}

}  // namespace

std::string picture_path(const studio& s, const std::string& kind, int menu) {
  return s.app() + "/" + kind + std::to_string(menu) + ".png";
}

void expect_disc_shows_what_was_drawn(const studio& s, const contents& disc, int height) {
  for (const menu& m : disc.menus) {
    if (m.chain.seconds == 0)
      continue;
    expect_shown_as_drawn(m, button_state::highlighted,
                          read_png(picture_path(s, "highlight", m.number), 720, height));
    expect_shown_as_drawn(m, button_state::pressed,
                          read_png(picture_path(s, "select", m.number), 720, height));
    EXPECT_TRUE(m.shown && m.shown->picture.forced) << "menu " << m.number;
  }
}

}  // namespace corvane::disc
