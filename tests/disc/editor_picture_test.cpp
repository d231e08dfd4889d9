// The picture of the menu editor against what gm draws in a run: the same dots.
#include "authoring/menu_overlays.h"
#include "command.h"
#include "formats/text.h"
#include "media/picture.h"
#include "menus/menu_overlay.h"
#include "picture_file.h"
#include "platform/files/paths.h"
#include "project/disc_of.h"
#include "project/menu_rows.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <random>
#include <utility>

namespace corvane::disc {
namespace {

constexpr int lines = 480;

/// The drawing commands of a menu, carried out by a shell: the colour is no comment for it.
void draw_with_gm(const testing_support::temporary_folder& folder, const project& p) {
  const run_paths where{folder.path(), folder.path(), path_style::posix};
  std::string script = button_image_commands(disc_of(p), where, 1);
  for (const auto& [from, to] : {std::pair<std::string, std::string>{"\r\n", "\n"},
                                 {" #010101 ", " '#010101' "},
                                 {where.tool("gm"), "gm"}})
    script = replace_all(script, from, to);
  const std::string file = folder.add("draw.sh", script);
  run({{"sh", file}});
}

class read_bitmaps : public bitmap_reader {
 public:
  const button_bitmap* read(const std::string& stored) override {
    const result<picture> p = read_picture(native_from_stored(stored));
    if (!p)
      return nullptr;
    last_ = {p->width, p->height, p->rgb};
    return &last_;
  }

 private:
  button_bitmap last_;
};

/// How many dots of the editor's picture differ from those of gm's.
int different_dots(const std::string& png, const std::vector<std::string>& records,
                   button_state state, int thickness) {
  std::vector<overlay_button> buttons;
  for (const std::string& record : records)
    buttons.push_back(overlay_button_of(record, state));
  read_bitmaps bitmaps;
  const overlay_picture ours = overlay_of(buttons, thickness, lines, bitmaps);
  const picture_file theirs = read_png(png, overlay_width, lines);
  int different = 0;
  for (int y = 0; y < lines; ++y)
    for (int x = 0; x < overlay_width; ++x) {
      const auto at = static_cast<std::size_t>(y * overlay_width + x) * 4;
      const bool clear = ours.rgba[at + 3] == 0;
      const dot d = theirs.at(x, y);
      const bool same = clear ? theirs.is_clear(x, y)
                              : d.opacity != 0 && d.red == ours.rgba[at] &&
                                    d.green == ours.rgba[at + 1] && d.blue == ours.rgba[at + 2];
      different += same ? 0 : 1;
    }
  return different;
}

void expect_same_dots(const testing_support::temporary_folder& folder,
                      const std::vector<std::string>& records, int thickness) {
  project p;
  p.menulist = {"\\menu.m2v/"};
  p.moremenuoptions = {" 0\t00:00:00.0\t00:00:00.0\t " + std::to_string(thickness)};
  p.menubuttons = {join(records, "|")};
  draw_with_gm(folder, p);
  EXPECT_EQ(
      different_dots(folder.path("highlight1.png"), records, button_state::highlighted, thickness),
      0)
      << p.menubuttons[0] << ", thickness " << thickness;
  EXPECT_EQ(different_dots(folder.path("select1.png"), records, button_state::selected, thickness),
            0)
      << p.menubuttons[0] << ", thickness " << thickness;
}

std::string record_at(int x0, int y0, int x1, int y1, const std::string& looks) {
  std::string record;
  for (const int edge : {x0, y0, x1, y1})
    record += (edge < 0 ? "" : " ") + std::to_string(edge) + "/";
  return record + "exit/" + looks;
}

/// Frames, bars and scraps in any place, on one another and over the picture's edges.
std::vector<std::string> random_records(std::mt19937& random, int count) {
  const auto below = [&random](int most) {
    return static_cast<int>(random() % static_cast<unsigned>(most));
  };
  std::vector<std::string> records;
  for (int i = 0; i < count; ++i) {
    const int x = below(700), y = below(470);
    const int width = below(3) == 0 ? below(14) : below(300);
    const int height = below(2) == 0 ? below(12) : below(150);
    const auto& colours = button_colours;
    const auto colour = [&] { return colours[static_cast<std::size_t>(below(10))]; };
    records.push_back(record_at(x, y, x + width, y + height, colour() + "/" + colour()));
  }
  return records;
}

TEST(EditorPicture, FramesAndUnderlinesOfEveryThicknessHaveTheDotsThatGmDraws) {
  const testing_support::temporary_folder folder;
  std::mt19937 random(20260101);
  for (int thickness = 1; thickness <= 20; ++thickness) {
    std::vector<std::string> records = random_records(random, 4);
    records.push_back(record_at(400, 300, 600, 303, "yellow/blue"));
    records.push_back(record_at(100, 300, 300, 400, "cyan/brown"));
    expect_same_dots(folder, records, thickness);
  }
}

TEST(EditorPicture, SmallestButtonsHaveTheDotsThatGmDraws) {
  const testing_support::temporary_folder folder;
  std::vector<std::string> records;
  for (int height = 0; height < 9; ++height)
    for (int width = 2; width < 9; ++width)
      records.push_back(record_at(20 + 20 * width, 20 + 20 * height, 20 + 21 * width,
                                  20 + 21 * height, "white/green"));
  expect_same_dots(folder, records, 1);
}

TEST(EditorPicture, BitmapsAndWhatTheyCoverHaveTheDotsThatGmDraws) {
  const testing_support::temporary_folder folder;
  const std::string on = folder.path("on.bmp"), pressed = folder.path("pressed.bmp");
  for (const auto& [file, colour] : {std::pair{on, "blue"}, std::pair{pressed, "red"}})
    ASSERT_EQ(run({{"gm", "convert", "-size", "120x40", std::string("xc:") + colour, "-fill",
                    "#010101", "-draw", "rectangle 10,10 60,30", "-colors", "4", file}})
                  .status,
              0);
  const std::string looks = folder.stored("on.bmp") + "/" + folder.stored("pressed.bmp");
  expect_same_dots(
      folder,
      {record_at(90, 90, 300, 160, "yellow/white"), record_at(100, 101, 220, 141, looks),
       record_at(660, 460, 780, 500, looks), record_at(150, 120, 200, 200, "cyan/orange")},
      3);
}

}  // namespace
}  // namespace corvane::disc
