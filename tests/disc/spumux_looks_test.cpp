// Menus of many looks and the real spumux: what the check lets through ends in time, and what it
// refuses would not.
#include "command.h"
#include "examine/colour_groups.h"
#include "large_sets.h"
#include "media.h"
#include "menus/menu_overlay.h"
#include "project/offered_colours.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace corvane::disc {
namespace {

using testing_support::temporary_folder;

// In seconds of the processor's time, so that other programs make no difference.
constexpr int most_seconds = 10;
constexpr int quick_seconds = 2;

class no_bitmaps : public bitmap_reader {
 public:
  const button_bitmap* read(const std::string&) override { return nullptr; }
};

struct menu_look {
  std::string highlight, select;
  bool operator==(const menu_look&) const = default;
};

/// Frames, six in a row.
std::vector<overlay_button> frames(const std::vector<menu_look>& looks,
                                   std::string menu_look::*which) {
  std::vector<overlay_button> buttons;
  for (std::size_t i = 0; i < looks.size(); ++i) {
    const auto x = static_cast<std::int64_t>(20 + i % 6 * 115);
    const auto y = static_cast<std::int64_t>(20 + i / 6 * 60);
    buttons.push_back({{x, y, x + 90, y + 20}, looks[i].*which, false});
  }
  return buttons;
}

/// A picture as the run has it drawn (tests/disc/editor_picture_test.cpp), as a file of its own.
void write_picture(const temporary_folder& folder, const std::string& name,
                   const std::vector<overlay_button>& buttons) {
  no_bitmaps none;
  const overlay_picture picture = overlay_of(buttons, 1, 480, none);
  std::string bytes = "P6 720 480 255\n";
  for (std::size_t dot = 0; dot < picture.rgba.size(); dot += 4)
    for (std::size_t c = 0; c < 3; ++c)
      bytes += picture.rgba[dot + 3] == 0 ? '\1' : static_cast<char>(picture.rgba[dot + c]);
  folder.add(name + ".ppm", bytes);
  ASSERT_EQ(run({{"gm", "convert", folder.path(name + ".ppm"), folder.path(name + ".png")}}).status,
            0);
}

std::string overlay_xml(const temporary_folder& folder, const std::vector<menu_look>& looks) {
  std::string xml =
      "<subpictures><stream><spu start=\"00:00:00.0\" end=\"00:00:00.0\" highlight=\"" +
      folder.path("highlight.png") + "\" select=\"" + folder.path("select.png") +
      "\" transparent=\"010101\" force=\"yes\" autoorder=\"rows\">";
  for (const overlay_button& b : frames(looks, &menu_look::highlight))
    xml += "<button x0=\"" + std::to_string(b.box.left) + "\" y0=\"" + std::to_string(b.box.top) +
           "\" x1=\"" + std::to_string(b.box.right) + "\" y1=\"" + std::to_string(b.box.bottom) +
           "\"/>";
  return xml + "</spu></stream></subpictures>";
}

/// The system's limit ends spumux after so many seconds of the processor's.
finished spumux(const temporary_folder& folder, const std::vector<menu_look>& looks, int seconds) {
  write_picture(folder, "highlight", frames(looks, &menu_look::highlight));
  write_picture(folder, "select", frames(looks, &menu_look::select));
  folder.add("menu.xml", overlay_xml(folder, looks));
  command c{{"sh", "-c", "ulimit -t " + std::to_string(seconds) + " && exec spumux \"$0\"",
             folder.path("menu.xml")}};
  c.environment = {{"VIDEO_FORMAT", "NTSC"}};
  c.input_file = folder.path("menu.mpg");
  c.output_file = folder.path("out.mpg");
  return run(c);
}

std::vector<int> numbers_of(const std::vector<menu_look>& looks) {
  std::vector<disc_button> buttons(looks.size());
  for (std::size_t i = 0; i < looks.size(); ++i) {
    buttons[i].highlight.text = looks[i].highlight;
    buttons[i].select.text = looks[i].select;
  }
  return looks_of(buttons);
}

std::vector<menu_look> random_looks(std::mt19937& numbers) {
  const auto below = [&numbers](std::size_t count) { return numbers() % count; };
  std::vector<menu_look> kinds;
  while (kinds.size() < 9) {
    menu_look look{offered_colours[below(offered_colours.size())].name,
                   offered_colours[below(offered_colours.size())].name};
    if (std::find(kinds.begin(), kinds.end(), look) == kinds.end())
      kinds.push_back(std::move(look));
  }
  kinds.resize(below(9) + 1);
  std::vector<menu_look> looks;
  const std::size_t count = below(36) + 1, order = below(4), many = below(count) + 1;
  for (std::size_t i = 0; i < count; ++i)
    switch (order) {
      case 0:  // in turns
        looks.push_back(kinds[i % kinds.size()]);
        break;
      case 1:  // one behind the other
        looks.push_back(kinds[i * kinds.size() / count]);
        break;
      case 2:  // many of one, then the others
        looks.push_back(kinds[i < many ? 0 : i % kinds.size()]);
        break;
      default:
        looks.push_back(kinds[below(kinds.size())]);
    }
  return looks;
}

/// Every other one takes spumux between a quarter of the allowed time and four times of it.
std::vector<menu_look> random_menu(unsigned seed) {
  std::mt19937 numbers(seed);
  for (;;) {
    std::vector<menu_look> looks = random_looks(numbers);
    const double steps = steps_to_colour(numbers_of(looks)) / most_steps_to_colour;
    if (seed % 2 == 0 || (steps > 0.25 && steps < 4))
      return looks;
  }
}

TEST(SpumuxLooks, WhatIsAllowedEndsInTenSecondsAndWhatIsRefusedIsNotQuick) {
  const temporary_folder folder;
  ASSERT_EQ(
      run({{"mplex", "-f", "8", "-o", folder.path("menu.mpg"), media("menu-ntsc.m2v")}}).status, 0);
  const auto all = static_cast<unsigned>(part_of_set(200));
  unsigned refused = 0;
  for (unsigned seed = 1; seed <= all; ++seed) {
    const std::vector<menu_look> looks = random_menu(seed);
    const bool allowed = !are_looks_too_slow(numbers_of(looks));
    const finished done = spumux(folder, looks, allowed ? most_seconds : quick_seconds);
    if (allowed)
      EXPECT_NE(done.out.find("1 subtitles added"), std::string::npos)
          << "menu " << seed << ", " << looks.size() << " buttons, status " << done.status << ": "
          << done.out;
    else
      EXPECT_GT(done.status, 128) << "menu " << seed << ", " << looks.size()
                                  << " buttons, was quick: " << done.out;
    refused += allowed ? 0 : 1;
  }
  EXPECT_GT(refused, all / 10);
  EXPECT_LT(refused, all * 9 / 10);
}

}  // namespace
}  // namespace corvane::disc
