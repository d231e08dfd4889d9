// Menus made by the program of a project's titles, on the disc that is authored of them: every
// design, both standards and proportions, few titles and many, chapters to the limit, names of any
// length and script. Each button is pressed, each page entered and left.
#include "clips.h"
#include "examine/file_facts.h"
#include "formats/text.h"
#include "formats/time_text.h"
#include "large_sets.h"
#include "media/video_file.h"
#include "menus/made_pages.h"
#include "menus/maker/design_folder.h"
#include "project/menu_rows.h"
#include "project/project_file.h"
#include "project/project_text.h"
#include "shown_overlays.h"
#include "walk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace corvane::disc {
namespace {

using testing::HasSubstr;
using testing_support::odd_names;

enum class titles_of { one, seven, forty, chapters, odd_names };

struct made_disc {
  std::string design;
  bool pal = false, wide = false;
  titles_of titles = titles_of::one;
};

std::string text_of_case(const made_disc& d) {
  constexpr std::array names{"1 title", "7 titles", "40 titles", "99 chapters", "odd names"};
  return d.design + ", " + (d.pal ? "PAL" : "NTSC") + ", " + (d.wide ? "16:9" : "4:3") + ", " +
         names.at(static_cast<std::size_t>(d.titles));
}

/// Pictures in a group, of which chapters begin every one: about half a second.
int group_of(bool pal) {
  return pal ? 12 : 15;
}
double group_seconds(bool pal) {
  return pal ? group_of(pal) / 25.0 : group_of(pal) * 1.001 / 30;
}

/// A video of so many seconds.
std::string tiny_film(bool pal, bool wide, const std::string& seconds) {
  const std::string rate = pal ? "25" : "30000/1001";
  return kept_clip("ffmpeg -nostdin -v error -f lavfi -i testsrc2=s=720x" +
                       std::string(pal ? "576" : "480") + ":r=" + rate + " -t " + seconds +
                       " -c:v mpeg2video -bf 0 -g " + std::to_string(group_of(pal)) +
                       " -b:v 1000k -maxrate 8000k -bufsize 1835k"
                       " -flags +cgop -sc_threshold 1000000000 -aspect " +
                       (wide ? "16:9" : "4:3"),
                   "tiny.m2v");
}

/// Its sound.
std::string tiny_sound(const std::string& seconds) {
  return stored_from_native(kept_clip(
      "ffmpeg -nostdin -v error -f lavfi -i sine=r=48000 -t " + seconds + " -b:a 64k", "tiny.ac3"));
}

/// A copy of its own in the work folder, so that each title has a name of its own.
std::string film_named(const studio& s, const std::string& film, const std::string& name) {
  const std::string to = s.folder().path("work/" + name + ".m2v");
  std::filesystem::copy_file(path_of(film), path_of(to));
  return stored_from_native(to);
}

void add_titles(const studio& s, const made_disc& of, project& p) {
  const bool has_chapters = of.titles == titles_of::chapters;
  const std::string seconds = has_chapters ? "52" : "1.2";
  const std::string film = tiny_film(of.pal, of.wide, seconds), sound = tiny_sound(seconds);
  const std::string two = "00:00:00.00,00:00:00.60";
  switch (of.titles) {
    case titles_of::one:
      return add_title(p, {film_named(s, film, "holiday"), sound}, two);
    case titles_of::chapters: {
      std::string times = "00:00:00.00";
      for (int chapter = 1; chapter < 99; ++chapter)
        times += "," + time_text(chapter * group_seconds(of.pal));
      return add_title(p, {film_named(s, film, "long walk"), sound}, times);
    }
    case titles_of::odd_names:
      for (const std::string& name : odd_names())
        add_title(p, {film_named(s, film, name), sound}, two);
      return;
    default:
      for (int title = 1; title <= (of.titles == titles_of::seven ? 7 : 40); ++title)
        add_title(p, {film_named(s, film, "film " + std::to_string(title)), sound},
                  title % 10 == 1 ? two : "00:00:00.00");
  }
}

/// What --make-menus says, and the project that it saves.
struct made_project {
  finished done;
  project p;
};

made_project make_menus(const studio& s, const project& before,
                        const std::vector<std::string>& words) {
  EXPECT_FALSE(write_file(s.project_file(), project_text(before)));
  command c;
  c.words = {CORVANE_AUTHOR, "--make-menus"};
  c.words.insert(c.words.end(), words.begin(), words.end());
  c.words.push_back(s.project_file());
  c.environment["CORVANE_HOME"] = s.app();
  made_project made{run(c), before};
  EXPECT_EQ(made.done.status, 0) << made.done.out;
  const auto text = read_file(s.project_file(), 1u << 30);
  const auto loaded = text ? parse_project(*text) : result<loaded_project>::fail(text.error);
  EXPECT_TRUE(loaded) << loaded.error;
  if (!loaded)
    return made;
  made.p.menulist = loaded->menulist;
  made.p.moremenuoptions = loaded->moremenuoptions;
  made.p.menubuttons = loaded->menubuttons;
  made.p.postinfo = loaded->postinfo;
  return made;
}

/// Where a button must lead by its record: "title 2 chapter 3", "menu 4".
std::string target_of(const std::string& record) {
  const std::vector<std::string> words = split(parse_button(record).action, ' ');
  std::vector<std::string> said;
  for (const std::string& word : words)
    if (!word.empty())
      said.push_back(word);
  if (said.size() >= 3 && said[1] == "menu")
    return "menu " + said[2];
  EXPECT_GE(said.size(), 3u) << record;
  return "title " + said.at(2) + " chapter " + (said.size() > 4 ? said[4] : "1");
}

void expect_ways(const made_project& made, const contents& disc) {
  EXPECT_EQ(disc.begins_with, "menu 1");
  std::set<std::string> reached;
  std::size_t menus = 0;
  for (const menu& m : disc.menus) {
    if (m.chain.seconds == 0)
      continue;
    ++menus;
    SCOPED_TRACE("menu " + std::to_string(m.number));
    const std::vector<std::string> records = button_records(made.p, m.number);
    ASSERT_EQ(m.buttons.size(), records.size());
    bool can_be_left = m.number == 1;
    for (std::size_t i = 0; i < records.size(); ++i) {
      // Empty where nobody came to this menu.
      EXPECT_EQ(m.buttons[i].leads_to, target_of(records[i]));
      reached.insert(m.buttons[i].leads_to);
      can_be_left = can_be_left || (m.buttons[i].leads_to.starts_with("menu ") &&
                                    std::atoi(m.buttons[i].leads_to.c_str() + 5) < m.number);
      if (m.buttons[i].leads_to.starts_with("title")) {
        EXPECT_EQ(m.buttons[i].then, "menu 1");
      }
    }
    EXPECT_TRUE(can_be_left);
  }
  EXPECT_EQ(menus, made.p.menulist.size());
  for (const title& t : disc.titles)
    for (std::size_t chapter = 1; chapter <= t.chapters.size(); ++chapter)
      EXPECT_TRUE(reached.contains("title " + std::to_string(t.number) + " chapter " +
                                   std::to_string(chapter)))
          << "title " << t.number << " chapter " << chapter;
}

void expect_proportions(const made_project& made, const made_disc& of) {
  for (const std::string& row : made.p.menulist) {
    const file_facts facts = read_file_head(native_from_stored(parse_menu_row(row).video));
    ASSERT_TRUE(facts.video && facts.video->shape) << row;
    EXPECT_EQ(facts.video->shape->aspect_code, of.wide ? 3 : 2);
    EXPECT_EQ(facts.video->shape->height, of.pal ? 576 : 480);
  }
}

void expect_right_disc(const made_disc& of) {
  SCOPED_TRACE(text_of_case(of));
  const studio s;
  project p;
  p.globalregion = of.pal ? "PAL" : "NTSC";
  add_titles(s, of, p);
  const made_project made = make_menus(s, p, {of.design});
  ASSERT_FALSE(made.p.menulist.empty()) << made.done.out;
  EXPECT_THAT(made.done.out, testing::Not(HasSubstr("There is no picture")));
  expect_proportions(made, of);
  contents disc = s.authored(made.p);
  expect_disc_shows_what_was_drawn(s, disc, of.pal ? 576 : 480);
  press_all_buttons(s.out(), disc);
  expect_ways(made, disc);
}

std::vector<std::string> eight_designs() {
  std::vector<std::string> ids;
  for (const found_design& found : designs_in(CORVANE_DESIGNS, {}))
    if (found.design && !std::holds_alternative<video_background>(found.design->background))
      ids.push_back(found.id);
  EXPECT_GE(ids.size(), 8u);
  return ids;
}

/// Of sixteen discs so many have these titles, the large ones seldom, until there are no more.
constexpr std::array<std::pair<titles_of, int>, 5> mixture{{{titles_of::one, 5},
                                                            {titles_of::seven, 5},
                                                            {titles_of::odd_names, 4},
                                                            {titles_of::forty, 1},
                                                            {titles_of::chapters, 1}}};

/// In an order of chance that is always the same.
std::vector<made_disc> all_made_discs() {
  std::mt19937 random(20261124);
  std::vector<std::vector<made_disc>> by_size;
  for (const auto& [size, share] : mixture) {
    by_size.emplace_back();
    for (const std::string& design : eight_designs())
      for (const int form : {0, 1, 2, 3})
        by_size.back().push_back({design, form % 2 == 1, form / 2 == 1, size});
    std::shuffle(by_size.back().begin(), by_size.back().end(), random);
  }
  std::vector<made_disc> all;
  const auto take = [&all](std::vector<made_disc>& from, int count) {
    for (; count > 0 && !from.empty(); --count) {
      all.push_back(from.back());
      from.pop_back();
    }
    return !from.empty();
  };
  for (bool has_more = true; has_more;) {
    has_more = false;
    for (std::size_t i = 0; i < mixture.size(); ++i)
      has_more = take(by_size[i], mixture[i].second) || has_more;
  }
  return all;
}

// In parts that can run side by side.
constexpr int set_parts = 4;

class MadeMenusOnDisc : public testing::TestWithParam<int> {};

TEST_P(MadeMenusOnDisc, LeadWhereTheySayAndCanBeSeen) {
  const std::vector<made_disc> all = all_made_discs();
  const int count = part_of_set(static_cast<int>(all.size()));
  for (int i = GetParam(); i < count; i += set_parts)
    expect_right_disc(all[static_cast<std::size_t>(i)]);
}

INSTANTIATE_TEST_SUITE_P(Parts, MadeMenusOnDisc, testing::Range(0, set_parts));

// To the pixel -----------------------------------------------------------------------------------

int grey_at(const picture& shown, int x, int y) {
  const auto at = 3 * static_cast<std::size_t>(y * shown.width + x);
  return (shown.rgb[at] + shown.rgb[at + 1] + shown.rgb[at + 2]) / 3;
}

/// Black pages on which each button stands on a white panel of just its size.
constexpr const char* plain_panels =
    "name = Panels\n"
    "[background]\ncolours = #000000\n"
    "[heading]\nsize = 30\ncolour = #000000\n"
    "[entries]\narrangement = list\nrows = 4\n"
    "[entry]\ncolour = #ffffff\npanel colour = #ffffff\nhighlight = magenta\n"
    "[way]\ncolour = #ffffff\npanel colour = #ffffff\nhighlight = magenta\n"
    "[buttons]\nframe = 2\n";

TEST(MadeMenuButtons, StandOnWhatIsDrawnBeneathThemToThePixel) {
  for (const bool pal : {false, true}) {
    SCOPED_TRACE(pal ? "PAL" : "NTSC");
    const studio s;
    project p;
    p.globalregion = pal ? "PAL" : "NTSC";
    add_titles(s, {"", pal, false, titles_of::seven}, p);
    const std::string design = s.folder().add("work/panels.design", plain_panels);
    const made_project made = make_menus(s, p, {design});
    const contents disc = s.authored(made.p);
    for (const menu& m : disc.menus) {
      if (m.chain.seconds == 0)
        continue;
      const std::string row = made.p.menulist.at(static_cast<std::size_t>(m.number) - 1);
      const auto video = video_file::open(native_from_stored(parse_menu_row(row).video));
      ASSERT_TRUE(video) << video.error;
      const auto shown = (*video)->first_picture();
      ASSERT_TRUE(shown && m.shown);
      for (const button& b : m.buttons) {
        SCOPED_TRACE("menu " + std::to_string(m.number) + ", button at " + std::to_string(b.x0) +
                     "," + std::to_string(b.y0));
        int first_x = 720, last_x = -1, first_y = 576, last_y = -1;
        for (int y = b.y0; y <= b.y1; ++y)
          for (int x = b.x0; x <= b.x1; ++x)
            if (m.shown->at(x, y, &b, button_state::highlighted).opacity != 0) {
              first_x = std::min(first_x, x);
              last_x = std::max(last_x, x);
              first_y = std::min(first_y, y);
              last_y = std::max(last_y, y);
            }
        ASSERT_GE(last_x, 0);
        const int middle_x = (first_x + last_x) / 2, middle_y = (first_y + last_y) / 2;
        constexpr int half = 128;
        // Within the frame it is white, beside it black.
        EXPECT_GT(grey_at(*shown, first_x, middle_y), half);
        EXPECT_LT(grey_at(*shown, first_x - 1, middle_y), half);
        EXPECT_GT(grey_at(*shown, last_x, middle_y), half);
        EXPECT_LT(grey_at(*shown, last_x + 1, middle_y), half);
        EXPECT_GT(grey_at(*shown, middle_x, first_y), half);
        EXPECT_LT(grey_at(*shown, middle_x, first_y - 1), half);
        EXPECT_GT(grey_at(*shown, middle_x, last_y), half);
        EXPECT_LT(grey_at(*shown, middle_x, last_y + 1), half);
      }
    }
  }
}

// Over a film ------------------------------------------------------------------------------------

TEST(MenusOverAFilm, MoveSoundLoopAndLeadWhereTheySay) {
  for (const bool wide : {false, true}) {
    const made_disc of{"video", !wide, wide, titles_of::seven};
    SCOPED_TRACE(text_of_case(of));
    const studio s;
    project p;
    p.globalregion = of.pal ? "PAL" : "NTSC";
    add_titles(s, of, p);
    const std::string film = kept_clip(
        "ffmpeg -nostdin -v error -f lavfi -i mandelbrot=s=640x360:r=24 -f lavfi -i "
        "sine=r=44100 -t 3 -c:v mpeg4 -q:v 4 -c:a aac",
        "behind.mp4");
    const made_project made = make_menus(s, p, {"video", "--film", film});
    expect_proportions(made, of);
    ASSERT_FALSE(made.p.menulist.empty());
    for (const std::string& row : made.p.menulist) {
      EXPECT_TRUE(row.ends_with("titles-1.ac3")) << row;
      const file_facts facts = read_file_head(native_from_stored(parse_menu_row(row).audio));
      EXPECT_EQ(facts.kind, file_kind::audio);
    }
    contents disc = s.authored(made.p);
    expect_disc_shows_what_was_drawn(s, disc, of.pal ? 576 : 480);
    for (const menu& m : disc.menus)
      if (m.chain.seconds > 0) {
        EXPECT_NEAR(m.chain.seconds, 3, 0.2);
        EXPECT_NE(m.chain.still_seconds, 255);
        EXPECT_THAT(m.sounds, testing::ElementsAre("ac3"));
      }
    press_all_buttons(s.out(), disc);
    expect_ways(made, disc);
  }
}

// Made again -------------------------------------------------------------------------------------

TEST(MadeMenusAgain, AreInThePlaceOfThoseBefore) {
  const studio s;
  project p;
  add_titles(s, {"", false, false, titles_of::seven}, p);
  made_project made = make_menus(s, p, {"amber"});
  const std::vector<std::string> before = made.p.menulist;
  add_title(p = made.p,
            {film_named(s, tiny_film(false, false, "1.2"), "one more"), tiny_sound("1.2")});
  made = make_menus(s, p, {"harbour", "--play-all"});
  EXPECT_EQ(made.p.menulist.size(), before.size());
  for (const std::string& row : before)
    EXPECT_EQ(std::ranges::count(made.p.menulist, row), 0) << row;
  contents disc = s.authored(made.p);
  press_all_buttons(s.out(), disc);
  EXPECT_EQ(disc.begins_with, "menu 1");
  EXPECT_THAT(made.p.postinfo.at(0), HasSubstr("jump title 2"));
  EXPECT_THAT(made.p.postinfo.at(7), HasSubstr("call menu"));
}

}  // namespace
}  // namespace corvane::disc
