// Which menus are made of titles: pages, entries, ways between them, what does not fit.
#include "menus/maker/menu_plan.h"

#include "examine/navigation_rules.h"
#include "formats/numbers.h"
#include "project/post_rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <numeric>
#include <string>
#include <vector>

namespace corvane {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

disc_title planned_title(const std::string& video, int chapters) {
  disc_title title;
  title.streams = {video, "\\a.ac3"};
  for (int i = 0; i < chapters; ++i)
    title.chapters.push_back(time_of(trimmed(std::int64_t{i} * 10)));
  return title;
}

disc_description disc_with(int titles, int chapters) {
  disc_description d;
  d.standard = video_standard::ntsc;
  for (int t = 1; t <= titles; ++t)
    d.titles.push_back(planned_title("\\films\\film_" + trimmed(t) + ".m2v", chapters));
  return d;
}

std::vector<int> all_titles(int count) {
  std::vector<int> titles(static_cast<std::size_t>(count));
  std::iota(titles.begin(), titles.end(), 1);
  return titles;
}

std::vector<std::string> texts_of(const std::vector<planned_entry>& entries) {
  std::vector<std::string> texts;
  texts.reserve(entries.size());
  for (const planned_entry& e : entries)
    texts.push_back(e.text + ">" + action_of(e));
  return texts;
}

/// The plan's menus as the disc would have them, to be looked at by the rules of a run.
disc_description with_menus_of(disc_description d, const menu_plan& plan,
                               const menu_choices& choices) {
  for (const planned_menu& planned : plan.menus) {
    disc_menu menu;
    menu.files = {"\\m.m2v", ""};
    for (const auto* const entries : {&planned.entries, &planned.ways})
      for (const planned_entry& e : *entries) {
        disc_button button;
        button.action = command_of(action_of(e));
        menu.buttons.push_back(button);
      }
    d.menus.push_back(menu);
  }
  const std::vector<std::string> ends = ends_of_titles(d, choices);
  for (std::size_t i = 0; i < ends.size(); ++i)
    d.titles[i].post = command_of(ends[i]);
  return d;
}

std::vector<std::string> navigation_told(const disc_description& d) {
  std::vector<std::string> told;
  for (const finding& f : navigation_findings(d))
    told.push_back(line_of(f));
  return told;
}

TEST(MenuPlan, OnePageOfTitles) {
  const menu_plan plan = plan_menus(disc_with(3, 1), {}, {});
  ASSERT_EQ(plan.menus.size(), 1u);
  EXPECT_EQ(plan.menus[0].heading, "Titles");
  EXPECT_THAT(texts_of(plan.menus[0].entries),
              ElementsAre("film 1>jump title 1", "film 2>jump title 2", "film 3>jump title 3"));
  EXPECT_THAT(plan.menus[0].ways, IsEmpty());
  EXPECT_THAT(plan.notes, IsEmpty());
}

TEST(MenuPlan, FurtherTitlesStandOnFurtherPages) {
  const menu_plan plan = plan_menus(disc_with(7, 1), {}, {3, 99});
  ASSERT_EQ(plan.menus.size(), 3u);
  EXPECT_THAT(texts_of(plan.menus[0].ways), ElementsAre("Next>jump menu 2"));
  EXPECT_THAT(texts_of(plan.menus[1].ways),
              ElementsAre("Previous>jump menu 1", "Next>jump menu 3"));
  EXPECT_THAT(texts_of(plan.menus[2].entries), ElementsAre("film 7>jump title 7"));
  EXPECT_THAT(texts_of(plan.menus[2].ways), ElementsAre("Previous>jump menu 2"));
}

TEST(MenuPlan, AMenuOfChaptersPlaysAndLeadsBackToThePageOfItsTitle) {
  menu_choices choices;
  choices.chapters_of = {2};
  const menu_plan plan = plan_menus(disc_with(2, 3), choices, {1, 99});
  ASSERT_EQ(plan.menus.size(), 5u);
  EXPECT_THAT(texts_of(plan.menus[0].entries), ElementsAre("film 1>jump title 1"));
  EXPECT_THAT(texts_of(plan.menus[1].entries), ElementsAre("film 2>jump menu 3"));
  EXPECT_EQ(plan.menus[2].heading, "film 2");
  EXPECT_THAT(texts_of(plan.menus[3].entries), ElementsAre("Chapter 2>jump title 2 chapter  2"));
  EXPECT_THAT(texts_of(plan.menus[3].ways),
              ElementsAre("Play>jump title 2", "Back>jump menu 2", "Previous>jump menu 3",
                          "Next>jump menu 5"));
  EXPECT_EQ(plan.menus[3].entries[0].seconds, 10);
  EXPECT_EQ(plan.menus[3].entries[0].film, "\\films\\film_2.m2v");
}

TEST(MenuPlan, NumbersOfMenusBeforeAreCounted) {
  planned_entry entry;
  entry.menu = 2;
  EXPECT_EQ(action_of(entry, 3), "jump menu 5");
}

TEST(MenuPlan, PlayAllLetsTitlesRunOnInCommandsThatFitTheirRow) {
  menu_choices choices;
  choices.play_all = true;
  disc_description d = disc_with(99, 1);
  const menu_plan plan = plan_menus(d, choices, {6, 99});
  EXPECT_THAT(texts_of(plan.menus[0].ways),
              ElementsAre("Play all>jump title 1", "Next>jump menu 2"));
  EXPECT_THAT(texts_of(plan.menus[1].ways),
              ElementsAre("Previous>jump menu 1", "Next>jump menu 3"));
  const auto ends = ends_of_titles(d, choices);
  EXPECT_EQ(ends[0], "jump title 2");
  EXPECT_EQ(ends[98], "call menu");
  for (const std::string& end : ends)
    EXPECT_EQ(post_command_of(post_row(end)), end);
  d.jump_table = true;
  EXPECT_EQ(ends_of_titles(d, choices)[98], "call last menu");
}

TEST(MenuPlan, PlayAllOfOneTitleIsNoWay) {
  menu_choices choices;
  choices.play_all = true;
  EXPECT_THAT(plan_menus(disc_with(1, 1), choices, {}).menus[0].ways, IsEmpty());
}

TEST(MenuPlan, TitlesWithoutTwoChaptersGetNoMenuOfThemAndItIsSaid) {
  menu_choices choices;
  choices.chapters_of = {1, 2, 7};
  disc_description d = disc_with(2, 1);
  d.titles[1].chapters = {time_of("0"), time_of("x")};
  const menu_plan plan = plan_menus(d, choices, {});
  EXPECT_EQ(plan.menus.size(), 1u);
  EXPECT_THAT(plan.notes, ElementsAre("No menu of chapters is made for titles 1 and 2: they have "
                                      "no two chapters."));
  EXPECT_THAT(titles_with_chapters(disc_with(2, 2)), ElementsAre(1, 2));
  EXPECT_THAT(titles_with_chapters(d), IsEmpty());
}

TEST(MenuPlan, AChapterKeepsItsNumberWhereAnotherHasNoTime) {
  menu_choices choices;
  choices.chapters_of = {1};
  disc_description d = disc_with(1, 3);
  d.titles[0].chapters[1] = time_of("");
  const menu_plan plan = plan_menus(d, choices, {});
  EXPECT_THAT(texts_of(plan.menus[1].entries), ElementsAre("Chapter 1>jump title 1 chapter  1",
                                                           "Chapter 3>jump title 1 chapter  3"));
}

TEST(MenuPlan, At99MenusItSaysWhatIsLeftOut) {
  menu_choices choices;
  choices.chapters_of = all_titles(40);
  const menu_plan plan = plan_menus(disc_with(40, 13), choices, {4, 99});
  EXPECT_EQ(plan.menus.size(), 98u);
  ASSERT_EQ(plan.notes.size(), 1u);
  EXPECT_THAT(plan.notes[0], HasSubstr("room for 99 menus: no menu of chapters is made for titles "
                                       "23, 24,"));
  EXPECT_THAT(texts_of(plan.menus[5].entries)[1], "film 22>jump menu 95");
  EXPECT_THAT(texts_of(plan.menus[5].entries)[2], "film 23>jump title 23");
}

// A menu's program chain holds 128 commands, among them the ways to all menus, and three for each
// title that the first menu leads to.
TEST(MenuPlan, WithTheJumpTableTheFirstMenuHasRoomForItsCommands) {
  disc_description d = disc_with(99, 2);
  d.jump_table = true;
  for (const int first_ticked : {33, 2}) {
    menu_choices choices;
    choices.play_all = true;
    for (int title = first_ticked; title <= 99; ++title)
      choices.chapters_of.push_back(title);
    const menu_plan plan = plan_menus(d, choices, {32, 99});
    EXPECT_THAT(navigation_told(with_menus_of(d, plan, choices)), IsEmpty());
    EXPECT_FALSE(plan.notes.empty());
  }
  menu_choices ticked;
  for (int title = 33; title <= 99; ++title)
    ticked.chapters_of.push_back(title);
  EXPECT_THAT(plan_menus(d, ticked, {32, 99}).notes,
              Contains(HasSubstr("With the jump table the first menu has room for ")));
}

TEST(MenuPlan, WithMenusOfTheUsersThereIsLessRoom) {
  const menu_plan none = plan_menus(disc_with(1, 1), {}, {6, 0});
  EXPECT_THAT(none.menus, IsEmpty());
  EXPECT_EQ(none.notes.size(), 1u);
  const menu_plan few = plan_menus(disc_with(20, 1), {}, {6, 2});
  EXPECT_EQ(few.menus.size(), 2u);
  EXPECT_THAT(texts_of(few.menus[1].ways), ElementsAre("Previous>jump menu 1"));
  EXPECT_THAT(few.notes, ElementsAre(HasSubstr("not all titles have an entry")));
}

TEST(MenuPlan, WithoutTitlesThereAreNoMenus) {
  const menu_plan plan = plan_menus({}, {}, {});
  EXPECT_THAT(plan.menus, IsEmpty());
  EXPECT_THAT(plan.notes, ElementsAre("There are no titles to make menus of."));
}

TEST(MenuPlan, TextsOfTheUserStayWithWhatTheyNameWhenTitlesMove) {
  menu_choices choices;
  choices.chapters_of = {1, 2};
  disc_description d = disc_with(2, 2);
  const menu_plan before = plan_menus(d, choices, {});
  menu_texts texts;
  texts[before.menus[0].entries[1].key] = "The wedding";
  texts[before.menus[2].entries[1].key] = "The cake";
  texts["heading of titles"] = "Our films";
  texts["way back"] = "Home";
  std::swap(d.titles[0], d.titles[1]);
  d.titles.insert(d.titles.begin(), planned_title("\\new.m2v", 1));
  choices.chapters_of = {2, 3};
  const menu_plan after = plan_menus(d, choices, {}, texts);
  EXPECT_EQ(after.menus[0].heading, "Our films");
  EXPECT_THAT(texts_of(after.menus[0].entries),
              ElementsAre("new>jump title 1", "The wedding>jump menu 2", "film 1>jump menu 3"));
  EXPECT_EQ(after.menus[1].heading, "The wedding");
  EXPECT_EQ(after.menus[1].entries[1].text, "The cake");
  EXPECT_EQ(after.menus[1].ways[1].text, "Home");
}

TEST(MenuPlan, TitlesOfTheSameVideoAreToldApart) {
  disc_description d = disc_with(2, 1);
  d.titles[1] = d.titles[0];
  const menu_plan plan = plan_menus(d, {}, {});
  EXPECT_NE(plan.menus[0].entries[0].key, plan.menus[0].entries[1].key);
}

TEST(MenuPlan, NamesAreCleaned) {
  EXPECT_EQ(cleaned_name("\\films\\my_holiday-01.m2v"), "my holiday 01");
  EXPECT_EQ(cleaned_name("C:\\a.b\\My film - part 1.mpg"), "My film - part 1");
  EXPECT_EQ(cleaned_name("\\__a__b.c.m2v"), "a b c");
  EXPECT_EQ(cleaned_name("\\\xE6\x97\x85\xE8\xA1\x8C_1.m2v"), "\xE6\x97\x85\xE8\xA1\x8C 1");
  EXPECT_EQ(cleaned_name("\\.m2v"), "m2v");
  EXPECT_EQ(cleaned_name("\\_.m2v"), "");
}

// The rules of a run find nothing but that titles of a menu are commands that nobody offers.
TEST(MenuPlan, EveryPlanLeadsEverywhereAndBack) {
  for (const int titles : {1, 7, 99})
    for (const int chapters : {1, 2, 99})
      for (const bool jump_table : {false, true})
        for (const int entries : {2, 32})
          for (const bool ticked : {false, true}) {
            disc_description d = disc_with(titles, chapters);
            d.jump_table = jump_table;
            menu_choices choices;
            choices.play_all = titles % 2 == 1;
            if (ticked)
              choices.chapters_of = all_titles(titles);
            const menu_plan plan = plan_menus(d, choices, {entries, 99});
            ASSERT_LE(plan.menus.size(), 99u);
            for (const planned_menu& menu : plan.menus)
              EXPECT_LE(menu.entries.size() + menu.ways.size(), 36u);
            EXPECT_THAT(navigation_told(with_menus_of(d, plan, choices)), IsEmpty())
                << titles << " titles, " << chapters << " chapters, " << entries << " entries, "
                << jump_table << ticked;
          }
}

}  // namespace
}  // namespace corvane
