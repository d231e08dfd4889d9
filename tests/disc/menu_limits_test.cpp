// Menus at the edge of what a disc can hold, and beyond: a right disc, or a message that names the
// menu.
#include "clips.h"
#include "examine/read_disc.h"
#include "formats/disc_files.h"
#include "formats/text.h"
#include "shown_overlays.h"
#include "walk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace corvane::disc {
namespace {

using testing::HasSubstr;

constexpr const char* ten_colours[] = {"black", "brown", "orange", "yellow",  "green",
                                       "blue",  "white", "grey",   "magenta", "cyan"};

std::string record(int x0, int y0, int x1, int y1, const std::string& action,
                   const std::string& highlight, const std::string& select) {
  std::string text;
  for (const int edge : {x0, y0, x1, y1})
    text += " " + std::to_string(edge) + "/";
  return text + action + "/" + highlight + "/" + select;
}

project with_menu(const std::vector<std::string>& buttons,
                  const std::string& options = " 0\t00:00:00.0\t00:00:00.0\t 1") {
  project p = short_project();
  add_menu(p, stored_media("menu-ntsc.m2v"), "", buttons, options);
  return p;
}

/// `count` bars two lines high in `colours` colours, six in a row.
std::vector<std::string> bars(int count, int colours) {
  std::vector<std::string> buttons;
  for (int i = 0; i < count; ++i) {
    const int x = 20 + i % 6 * 115, y = 20 + i / 6 * 60;
    const char* const colour = ten_colours[i % colours];
    buttons.push_back(
        record(x, y, x + 90, y + 2, i % 2 == 0 ? "jump title 1" : "exit", colour, colour));
  }
  return buttons;
}

/// Bits of a pixel by place, rows from the last to the first, each filled up to four bytes.
std::string pixel_rows(int width, int height, int bits, const std::function<int(int, int)>& index) {
  std::string rows;
  for (int y = height - 1; y >= 0; --y) {
    std::string row(static_cast<std::size_t>((width * bits + 31) / 32 * 4), '\0');
    for (int x = 0; x < width; ++x) {
      const int bit = x * bits, shift = 8 - bits - bit % 8;
      char& byte = row[static_cast<std::size_t>(bit / 8)];
      byte = static_cast<char>(byte | index(x, y) << shift);
    }
    rows += row;
  }
  return rows;
}

struct rgb {
  int red, green, blue;
};

constexpr rgb nothing{1, 1, 1};

/// A Windows bitmap without compression.
std::string bitmap(int width, int height, int bits, std::vector<rgb> palette,
                   const std::function<int(int, int)>& index) {
  palette.resize(std::size_t{1} << bits, {0, 0, 0});
  const std::string rows = pixel_rows(width, height, bits, index);
  const auto start = static_cast<int>(54 + 4 * palette.size());
  std::string file = "BM";
  const auto add = [&](int value, int bytes) {
    for (int i = 0; i < bytes; ++i)
      file += static_cast<char>(value >> (8 * i) & 255);
  };
  const int size = static_cast<int>(rows.size());
  for (const int value : {start + size, 0, start, 40, width, height})
    add(value, 4);
  add(1, 2);
  add(bits, 2);
  for (const int value : {0, size, 2835, 2835, 1 << bits, 0})
    add(value, 4);
  for (const rgb& colour : palette) {
    add(colour.blue, 1);
    add(colour.green, 1);
    add(colour.red, 1);
    add(0, 1);
  }
  return file + rows;
}

/// Dots of the first colours of the palette behind the first entry, in stripes, within a margin.
std::function<int(int, int)> stripes(int colours) {
  return [colours](int x, int y) { return x < 3 || y < 2 || x > 34 ? 0 : 1 + x / 10 % colours; };
}

const std::vector<rgb> four_colours{nothing, {255, 165, 0}, {255, 255, 255}, {0, 0, 255}};

/// A button of 40 by 30 whose bitmap is this file's.
std::string bitmap_button(const studio& s, const std::string& file, const std::string& bytes,
                          int x = 100, int y = 100) {
  s.folder().add("work/" + file, bytes);
  const std::string stored = s.folder().stored("work/" + file);
  return record(x, y, x + 40, y + 30, "exit", stored, stored);
}

void expect_right_menu(const studio& s, const project& p) {
  const contents disc = s.authored(p);
  ASSERT_FALSE(disc.menus.empty());
  expect_disc_shows_what_was_drawn(s, disc);
}

/// A run that fails with these words, though a disc may have been made.
void expect_failed_run(const studio& s, const project& p, const std::string& words) {
  const finished done = s.author(p, {"--force"});
  EXPECT_EQ(done.status, 1) << done.out;
  EXPECT_THAT(done.out, HasSubstr("There was an error.  Please review the log."));
  EXPECT_THAT(s.folder().read("work/home/CorvaneLOG.txt"), HasSubstr(words));
}

/// Refused before anything is made.
void expect_refused(const studio& s, const project& p, const std::string& words) {
  const finished done = s.author(p);
  EXPECT_EQ(done.status, 2) << done.out;
  EXPECT_THAT(done.out, HasSubstr(words));
  EXPECT_FALSE(folder_exists(s.out()));
}

TEST(MenuLimits, MenuWithoutButtonsIsShown) {
  const studio s;
  const contents disc = s.authored(with_menu({}));
  ASSERT_FALSE(disc.menus.empty());
  EXPECT_TRUE(disc.menus[0].buttons.empty());
  EXPECT_NEAR(disc.menus[0].chain.seconds, 2, 0.1);
  EXPECT_EQ(disc.menus[0].chain.still_seconds, 255);
}

TEST(MenuLimits, MenuWithoutButtonsMayHaveAnyTimes) {
  const studio s;
  s.authored(with_menu({}, " 0\t00:00:20.0\t00:00:00.0\t 1"));
}

TEST(MenuLimits, ThirtySixButtonsAreAllSeenAndAllLeadSomewhere) {
  const studio s;
  contents disc = s.authored(with_menu(bars(36, 3)));
  expect_disc_shows_what_was_drawn(s, disc);
  press_all_buttons(s.out(), disc);
  ASSERT_EQ(disc.menus[0].buttons.size(), 36u);
  for (std::size_t i = 0; i < 36; ++i)
    EXPECT_EQ(disc.menus[0].buttons[i].leads_to, i % 2 == 0 ? "title 1 chapter 1" : "stopped") << i;
}

TEST(MenuLimits, ThirtySixButtonsThatRememberTheirMenuAllLeadToTheirTitle) {
  const studio s;
  project p = with_menu(bars(36, 3));
  p.menubuttons[0] = replace_all(p.menubuttons[0], "/exit/", "/jump  title 1 chapter 1/");
  add_menu(p, stored_media("menu-ntsc.m2v"), "", bars(1, 1));
  p.jumptable = true;
  contents disc = s.authored(p);
  expect_disc_shows_what_was_drawn(s, disc);
  press_all_buttons(s.out(), disc);
  ASSERT_EQ(disc.menus[0].buttons.size(), 36u);
  for (const button& b : disc.menus[0].buttons)
    EXPECT_EQ(b.leads_to, "title 1 chapter 1");
}

/// `menus` menus and the jump table; `titles` buttons of menu 1 play a title, four do not.
project with_many_commands(int menus, int titles) {
  std::vector<std::string> buttons = bars(titles + 4, 1);
  for (int i = 0; i < titles + 4; ++i) {
    std::string& button = buttons[static_cast<std::size_t>(i)];
    button = replace_all(button, "/exit/", "/jump title 1/");
    if (i >= titles)
      button = replace_all(button, "/jump title 1/", "/jump menu " + std::to_string(menus) + "/");
  }
  project p = with_menu(buttons);
  for (int menu = 2; menu <= menus; ++menu)
    add_menu(p, stored_media("menu-ntsc.m2v"), "", bars(1, 1));
  p.jumptable = true;
  return p;
}

TEST(MenuLimits, MenuOf128CommandsIsAuthored) {
  const studio s;
  contents disc = s.authored(with_many_commands(30, 32));
  ASSERT_GE(disc.menus.size(), 30u);
  const program_chain& chain = disc.menus[0].chain;
  EXPECT_EQ(chain.pre.size() + chain.post.size() + chain.cell.size(), 128u);
  press_all_buttons(s.out(), disc);
  ASSERT_EQ(disc.menus[0].buttons.size(), 36u);
  EXPECT_EQ(disc.menus[0].buttons[31].leads_to, "title 1 chapter 1");
  EXPECT_EQ(disc.menus[0].buttons[32].leads_to, "menu 30");
}

TEST(MenuLimits, MenuOf129CommandsIsRefused) {
  expect_refused(studio(), with_many_commands(31, 32), "Menu 1 needs 129 commands");
  expect_refused(studio(), with_many_commands(34, 32), "Menu 1 needs 132 commands");
}

TEST(MenuLimits, ThirtySevenButtonsAreRefused) {
  expect_refused(studio(), with_menu(bars(37, 1)),
                 "Button 37 of menu 1 is one too many: the menu has 37 buttons");
}

/// Bars in a menu of 16:9. Each thirteenth one does not do what the one does that is twelve before.
project with_wide_menu(int count) {
  std::vector<std::string> buttons;
  for (int i = 0; i < count; ++i) {
    const int x = 20 + i % 6 * 115, y = 20 + i / 6 * 60;
    buttons.push_back(record(x, y, x + 90, y + 2, (i + i / 12) % 2 == 0 ? "jump title 1" : "exit",
                             "yellow", "white"));
  }
  project p = short_project();
  add_menu(p,
           stored_from_native(kept_clip(
               "ffmpeg -nostdin -v error -f lavfi -i testsrc2=s=720x480:r=30000/1001 -t 1 -c:v "
               "mpeg2video -bf 0 -g 15 -b:v 1000k -maxrate 8000k -bufsize 1835k -flags +cgop "
               "-sc_threshold 1000000000 -aspect 16:9",
               "wide.m2v")),
           "", buttons);
  return p;
}

/// The buttons of the first menu as they stand in its navigation pack.
highlight_information highlights_on(const studio& s) {
  const auto files = open_folder(s.out());
  EXPECT_TRUE(files) << files.error;
  const auto read = ::corvane::read_disc(**files);
  EXPECT_TRUE(read) << read.error;
  const auto shown = read->menus.at(0).chain.highlight;
  EXPECT_TRUE(shown);
  return shown ? *shown : highlight_information();
}

TEST(MenuLimits, TwelveButtonsOfAWideMenuStandThreeTimesOnTheDiscAndAllLeadSomewhere) {
  const studio s;
  contents disc = s.authored(with_wide_menu(12));
  expect_disc_shows_what_was_drawn(s, disc);
  press_all_buttons(s.out(), disc);
  ASSERT_EQ(disc.menus[0].buttons.size(), 12u);
  for (std::size_t i = 0; i < 12; ++i)
    EXPECT_EQ(disc.menus[0].buttons[i].leads_to, i % 2 == 0 ? "title 1 chapter 1" : "stopped") << i;
  const highlight_information all = highlights_on(s);
  EXPECT_EQ(all.groups, 3);
  ASSERT_EQ(all.buttons.size(), 36u);
  for (std::size_t i = 12; i < 36; ++i)
    EXPECT_EQ(all.buttons[i], all.buttons[i % 12]) << i;
}

TEST(MenuLimits, ThirteenButtonsOfAWideMenuAreRefused) {
  const studio s;
  expect_refused(s, with_wide_menu(13), "the menu has 13 buttons and is 16:9 on the disc");
}

/// What the rule says of it: the thirteenth stands where the first one is and leads where it leads.
TEST(MenuLimits, ThirteenthButtonOfAWideMenuBecomesTheFirstWhenItIsForced) {
  const studio s;
  const finished done = s.author(with_wide_menu(13), {"--force"});
  EXPECT_EQ(done.status, 1) << done.out;
  EXPECT_NE(done.out.find("states 13 buttons; there can be 12"), std::string::npos) << done.out;
  EXPECT_NE(done.out.find("menu 1, button 13: edges: 20,20 to 110,22."), std::string::npos)
      << done.out;
  EXPECT_NE(done.out.find("menu 1, button 13: leads to: title 1 chapter 1."), std::string::npos)
      << done.out;
  EXPECT_EQ(done.out.find("menu 1, button 12: "), std::string::npos) << done.out;
}

TEST(MenuLimits, NineColoursAreAllShown) {
  const studio s;
  expect_right_menu(s, with_menu(bars(9, 9)));
}

TEST(MenuLimits, TenColoursAreRefused) {
  expect_refused(studio(), with_menu(bars(10, 10)),
                 "Button 10 of menu 1 cannot be shown: with it the menu uses 10");
}

TEST(MenuLimits, ColoursThatWouldTakeHoursAreRefused) {
  expect_refused(studio(), with_menu(bars(36, 9)), "Menu 1 has 36 buttons in 9 combinations");
}

TEST(MenuLimits, FrameThickerThanItsButtonIsABar) {
  const studio s;
  const contents disc = s.authored(with_menu({record(100, 100, 160, 110, "exit", "white", "grey")},
                                             " 0\t00:00:00.0\t00:00:00.0\t 9"));
  expect_disc_shows_what_was_drawn(s, disc);
  const picture_file drawn = read_png(picture_path(s, "highlight", 1), 720, 480);
  for (int x = 103; x <= 155; ++x)
    EXPECT_FALSE(drawn.is_clear(x, 105)) << x;
}

TEST(MenuLimits, FrameOfThicknessNoughtIsOnePixelThick) {
  const studio s;
  expect_right_menu(s, with_menu({record(100, 100, 160, 130, "exit", "white", "grey")},
                                 " 0\t00:00:00.0\t00:00:00.0\t 0"));
  const picture_file drawn = read_png(picture_path(s, "highlight", 1), 720, 480);
  EXPECT_FALSE(drawn.is_clear(100, 115));
  EXPECT_TRUE(drawn.is_clear(101, 115));
}

TEST(MenuLimits, SmallestButtonsAreSeen) {
  const studio s;
  expect_right_menu(s, with_menu({record(100, 100, 106, 102, "exit", "white", "grey"),
                                  record(100, 200, 104, 203, "exit", "white", "grey"),
                                  record(714, 478, 720, 480, "exit", "white", "grey")}));
}

TEST(MenuLimits, BitmapsOfOneAndFourBitsAreShown) {
  const studio s;
  expect_right_menu(
      s,
      with_menu({bitmap_button(s, "one.bmp", bitmap(40, 30, 1, {nothing, {255, 0, 0}}, stripes(1))),
                 bitmap_button(s, "four.bmp", bitmap(40, 30, 4, four_colours, stripes(3)), 300)}));
}

TEST(MenuLimits, RunLengthEncodedBitmapIsShown) {
  const studio s;
  const std::string arrow = stored_media("arrow.bmp");
  expect_right_menu(s, with_menu({record(100, 100, 130, 132, "exit", arrow, arrow)}));
}

TEST(MenuLimits, BitmapOfTwoBitsIsRefused) {
  const studio s;
  expect_refused(
      s, with_menu({bitmap_button(s, "two.bmp", bitmap(40, 30, 2, four_colours, stripes(3)))}),
      "Button 1 of menu 1 cannot be authored: the bitmap");
}

TEST(MenuLimits, BitmapThatHasGoneIsRefused) {
  const studio s;
  const std::string gone = s.folder().stored("work/gone.bmp");
  expect_refused(s, with_menu({record(100, 100, 140, 130, "exit", "white", gone)}),
                 "gone.bmp appears to be missing");
}

TEST(MenuLimits, BitmapThatHasGrownSinceIsShownAsFarAsTheButtonGoes) {
  const studio s;
  const contents disc = s.authored(
      with_menu({bitmap_button(s, "a.bmp", bitmap(80, 60, 4, four_colours, stripes(3)))}));
  ASSERT_TRUE(!disc.menus.empty() && disc.menus[0].shown && disc.menus[0].buttons.size() == 1);
  const picture_file drawn = read_png(picture_path(s, "highlight", 1), 720, 480);
  int seen = 0;
  for (int y = 0; y < 480; ++y)
    for (int x = 0; x < 720; ++x) {
      const bool within = x >= 100 && x < 140 && y >= 100 && y < 130;
      const dot found =
          disc.menus[0].shown->at(x, y, disc.menus[0].buttons.data(), button_state::highlighted);
      EXPECT_EQ(found.opacity, within ? drawn.at(x, y).opacity : 0) << x << "," << y;
      seen += found.opacity != 0;
    }
  EXPECT_GT(seen, 500);
  EXPECT_FALSE(drawn.is_clear(120, 140)) << "the picture goes on";
}

TEST(MenuLimits, BitmapsAtTheEdgesAreShown) {
  const studio s;
  expect_right_menu(
      s, with_menu(
             {bitmap_button(s, "a.bmp", bitmap(40, 30, 4, four_colours, stripes(3)), 0, 0),
              bitmap_button(s, "b.bmp", bitmap(40, 30, 4, four_colours, stripes(2)), 680, 450)}));
}

TEST(MenuLimits, BitmapOfMoreColoursThanAButtonCanShowFailsTheRun) {
  const studio s;
  std::vector<rgb> palette{nothing};
  for (int i = 1; i < 16; ++i)
    palette.push_back({i * 16, 255 - i * 16, i * 5});
  const project p = with_menu({bitmap_button(
      s, "a.bmp", bitmap(40, 30, 4, palette, [](int x, int y) { return (x / 5 + y / 10) % 16; }))});
  expect_failed_run(s, p,
                    "ERR:  the buttons of menu 1 will not be seen: no picture of them was added");
}

TEST(MenuLimits, ColourAndBitmapInOneButtonAreShown) {
  const studio s;
  bitmap_button(s, "one.bmp", bitmap(40, 30, 1, {nothing, {255, 0, 0}}, stripes(1)));
  const std::string file = s.folder().stored("work/one.bmp");
  expect_right_menu(s, with_menu({record(100, 100, 140, 130, "exit", "yellow", file),
                                  record(300, 100, 340, 130, "exit", file, "cyan")}));
}

TEST(MenuLimits, SecondMenuWhosePictureCannotBeMadeIsTheOneThatIsNamed) {
  const studio s;
  bitmap_button(s, "many.bmp", bitmap(40, 30, 4, four_colours, stripes(3)));
  project p = with_menu(bars(2, 2));
  add_menu(p, stored_media("menu-ntsc.m2v"), "",
           {record(100, 100, 140, 130, "exit", "yellow", s.folder().stored("work/many.bmp"))});
  expect_failed_run(s, p,
                    "ERR:  the buttons of menu 2 will not be seen: no picture of them was added");
}

TEST(MenuLimits, ButtonsThatComeAfterTheEndOfTheMenuFailTheRun) {
  const studio s;
  expect_failed_run(
      s, with_menu(bars(2, 1), " 0\t00:00:20.0\t00:00:00.0\t 1"),
      "ERR:  the buttons of menu 1 will not be seen: their picture comes up after the "
      "end of the menu");
}

TEST(MenuLimits, ButtonsThatEndBeforeTheyBeginFailTheRun) {
  const studio s;
  expect_failed_run(s, with_menu(bars(2, 1), " 0\t00:00:01.0\t00:00:00.5\t 1"),
                    "ERR:  the buttons of menu 1 will not be seen: no picture of them was added");
}

TEST(MenuLimits, ButtonsMayComeLater) {
  const studio s;
  contents disc = s.authored(with_menu(bars(2, 1), " 0\t00:00:01.0\t00:00:00.0\t 1"));
  expect_disc_shows_what_was_drawn(s, disc);
  press_all_buttons(s.out(), disc);
  EXPECT_EQ(disc.menus[0].buttons.at(0).leads_to, "title 1 chapter 1");
}

TEST(MenuLimits, StreamsThatHaveGoneAreRefused) {
  const studio s;
  const std::string here = s.copy_media("menu-ntsc.m2v", "menu.m2v");
  const std::string gone = s.folder().stored("work/gone.m2v");
  project p = short_project();
  add_menu(p, here, "", bars(1, 1));
  add_menu(p, gone, "", bars(1, 1));
  expect_refused(s, p, "gone.m2v appears to be missing");
  p.menulist[1] = here + "/" + s.folder().stored("work/gone.ac3");
  expect_refused(s, p, "gone.ac3 appears to be missing");
}

TEST(MenuLimits, VideoOfTheOtherStandardIsRefused) {
  project p = short_project();
  add_menu(p, stored_media("menu-pal.m2v"), "", bars(1, 1));
  expect_refused(studio(), p, "is PAL, but the project is NTSC");
}

}  // namespace
}  // namespace corvane::disc
