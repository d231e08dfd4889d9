// Menus that were made of titles, as menus of the project; and made again.
#include "menus/maker/made_menus.h"

#include "examine/button_rules.h"
#include "examine/navigation_rules.h"
#include "made_pages.h"
#include "menus/maker/design_folder.h"
#include "project/disc_of.h"
#include "project/menu_order.h"
#include "project/menu_rows.h"
#include "project/post_rows.h"
#include "project/title_commands.h"
#include "support/two_titles_test.h"

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

namespace corvane {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing_support::measured_text;
using testing_support::rows;

class MadeMenus : public testing_support::two_titles_test {
 protected:
  MadeMenus() {
    wishes.design_id = "slate";
    wishes.design = *design_at(join_path(CORVANE_DESIGNS, "slate.design")).design;
    wishes.choices.chapters_of = {1};
    wishes.folder = folder.path();
  }

  std::vector<std::string> make() {
    const auto notes = make_menus(doc, wishes, measured_text, maker);
    EXPECT_TRUE(notes) << notes.error;
    return notes ? *notes : std::vector<std::string>();
  }

  /// As somebody does who makes the menus again: with what is remembered.
  std::vector<std::string> make_again() {
    const remembered_menus before = menus_made_before(p);
    wishes.choices = before.choices;
    wishes.texts = before.texts;
    wishes.moves = before.moves;
    return make();
  }

  std::string own_menu(const std::string& name, const std::string& action) {
    add_own_menu(name);
    button_record record = button_with_edges(80, 60, 200, 100);
    record.action = action;
    record.highlight = record.select = "white";
    return p.menubuttons.back() = button_text(record);
  }

  std::vector<std::string> actions_of(int menu) const {
    std::vector<std::string> actions;
    for (const std::string& record : button_records(p, menu))
      actions.push_back(parse_button(record).action);
    return actions;
  }
  std::string video_of(int menu) const {
    return parse_menu_row(row_of(p.menulist, menu, {})).video;
  }

  std::vector<std::string> made_files;
  background_maker maker = [this](const std::vector<menu_background>& backgrounds) -> failure {
    for (const menu_background& background : backgrounds) {
      EXPECT_FALSE(entry_exists(background.m2v)) << background.m2v;
      made_files.push_back(native_file_name(background.m2v));
      EXPECT_EQ(write_file(background.m2v, "video"), std::nullopt);
    }
    return std::nullopt;
  };
  menu_wishes wishes;
};

TEST_F(MadeMenus, TheyAreOrdinaryMenusOfTheProject) {
  p.saved = 1;
  EXPECT_THAT(make(), IsEmpty());
  EXPECT_THAT(made_files, ElementsAre("titles-1.m2v", "my-film-1-1.m2v"));
  EXPECT_EQ(p.menulist,
            (rows{folder.stored("titles-1.m2v") + "/", folder.stored("my-film-1-1.m2v") + "/"}));
  EXPECT_EQ(p.moremenuoptions[0], " 0\t00:00:00.0\t00:00:00.0\t 2");
  EXPECT_THAT(actions_of(1), ElementsAre("jump menu 2", "jump title 2"));
  EXPECT_THAT(actions_of(2), ElementsAre("jump title 1 chapter  1", "jump title 1 chapter  2",
                                         "jump title 1 chapter  3", "jump title 1", "jump menu 1"));
  const button_record entry = parse_button(button_records(p, 1)[0]);
  EXPECT_EQ(entry.highlight, "cyan");
  EXPECT_EQ(entry.select, "white");
  EXPECT_EQ(entry.x0, " 72");
  EXPECT_EQ(p.postinfo, (rows{padded("call menu", 25), padded("call menu", 25)}));
  EXPECT_FALSE(p.Comboregion_enabled);
  EXPECT_EQ(p.saved, 0);
  const disc_description d = disc_of(p);
  EXPECT_THAT(navigation_findings(d), IsEmpty());
  EXPECT_THAT(button_findings(d, {}), IsEmpty());
}

TEST_F(MadeMenus, ItIsOneStepThatCanBeUndone) {
  const rows ends = p.postinfo;
  make();
  EXPECT_EQ(doc.undo_name(), "make menus");
  doc.undo();
  EXPECT_THAT(p.menulist, IsEmpty());
  EXPECT_EQ(p.postinfo, ends);
  EXPECT_TRUE(p.Comboregion_enabled);
  doc.redo();
  EXPECT_EQ(p.menulist.size(), 2u);
}

TEST_F(MadeMenus, WithoutBackgroundsNothingChanges) {
  p.customxml = "<dvdauthor/>";
  expect_guard(answer::ok);
  maker = [](const std::vector<menu_background>&) -> failure { return "The disk is full"; };
  EXPECT_EQ(make_menus(doc, wishes, measured_text, maker).error, "The disk is full");
  EXPECT_THAT(p.menulist, IsEmpty());
  EXPECT_EQ(p.customxml, "<dvdauthor/>");
  EXPECT_EQ(doc.undo_name(), std::nullopt);
}

TEST_F(MadeMenus, HandEditedXmlIsAskedAbout) {
  p.customxml = "<dvdauthor/>";
  expect_guard(answer::cancel);
  EXPECT_EQ(make_menus(doc, wishes, measured_text, maker).error, "");
  EXPECT_THAT(made_files, IsEmpty());
}

TEST_F(MadeMenus, PlayAllIsTheEndsOfTitlesAndSaid) {
  wishes.choices.play_all = true;
  EXPECT_THAT(make(), ElementsAre(HasSubstr("lets each title go on with the next one")));
  EXPECT_EQ(p.postinfo, (rows{padded("jump title 2", 25), padded("call menu", 25)}));
  EXPECT_EQ(actions_of(1)[2], "jump title 1");
}

TEST_F(MadeMenus, EndsStayWhenTheyAreNotToBeSet) {
  p.postinfo = {padded("exit", 25), padded("exit", 25)};
  wishes.sets_ends = false;
  make();
  EXPECT_EQ(p.postinfo, (rows{padded("exit", 25), padded("exit", 25)}));
}

TEST_F(MadeMenus, ADiscThatBeginsElsewhereIsSaid) {
  p.firstplay = "jump title 2";
  EXPECT_THAT(make(), ElementsAre(HasSubstr("begins with \"jump title 2\"")));
}

TEST_F(MadeMenus, TheDiscBeginsWithTheMenusWhereThatIsChosen) {
  p.firstplay = "jump title 2";
  wishes.begins_with_menus = true;
  EXPECT_THAT(make(), IsEmpty());
  EXPECT_EQ(p.firstplay, no_first_play);
  EXPECT_FALSE(begins_elsewhere(p));
  doc.undo();
  EXPECT_EQ(p.firstplay, "jump title 2") << "with the menus";
  EXPECT_TRUE(begins_elsewhere(p));
}

TEST_F(MadeMenus, WithTheJumpTableTitlesCallTheLastMenu) {
  wishes.jump_table = true;
  make();
  EXPECT_TRUE(p.jumptable);
  EXPECT_EQ(p.postinfo[0], padded("call last menu", 25));
  EXPECT_THAT(navigation_findings(disc_of(p)), IsEmpty());
  doc.undo();
  EXPECT_FALSE(p.jumptable);
}

TEST_F(MadeMenus, TheJumpTableDoesNotChangeWhereOwnMenusStay) {
  own_menu("own.m2v", "exit");
  wishes.jump_table = true;
  const auto refused = make_menus(doc, wishes, measured_text, maker);
  EXPECT_THAT(refused.error, HasSubstr("only without menus"));
  wishes.replaces_own = true;
  EXPECT_THAT(make(), IsEmpty());
  EXPECT_TRUE(p.jumptable);
  EXPECT_EQ(p.menulist.size(), 2u);
}

TEST_F(MadeMenus, OwnMenusStayAndKeepWhatTheyLeadTo) {
  own_menu("own.m2v", "jump menu 2");
  own_menu("own2.m2v", "jump menu 1");
  EXPECT_THAT(make(), ElementsAre(HasSubstr("stay before the new ones")));
  EXPECT_EQ(video_of(1), folder.stored("own.m2v"));
  EXPECT_EQ(video_of(3), folder.stored("titles-1.m2v"));
  EXPECT_THAT(actions_of(1), ElementsAre("jump menu 2"));
  EXPECT_THAT(actions_of(3), ElementsAre("jump menu 4", "jump title 2"));
}

TEST_F(MadeMenus, MadeAgainTheyStandWhereTheyStood) {
  make();
  own_menu("own.m2v", "jump menu 2");
  p.chapters[1] = "0,10";
  wishes.choices.chapters_of = {1, 2};
  EXPECT_THAT(make(), IsEmpty());
  ASSERT_EQ(p.menulist.size(), 4u);
  EXPECT_EQ(video_of(1), folder.stored("titles-1 (2).m2v"));
  EXPECT_EQ(video_of(3), folder.stored("other-1.m2v"));
  EXPECT_EQ(video_of(4), folder.stored("own.m2v"));
  EXPECT_THAT(actions_of(4), ElementsAre("jump menu 2"));
  EXPECT_THAT(actions_of(1), ElementsAre("jump menu 2", "jump menu 3"));
}

TEST_F(MadeMenus, CommandsToMadeMenusGoAlongWhenTheseGetOtherNumbers) {
  p.chapters[1] = "0,10";
  wishes.choices.chapters_of = {1, 2};
  make();
  own_menu("own.m2v", "jump menu 3");
  wishes.choices.chapters_of = {2};
  make();
  ASSERT_EQ(p.menulist.size(), 3u);
  EXPECT_THAT(actions_of(3), ElementsAre("jump menu 2"));
}

TEST_F(MadeMenus, MadeAgainTextsAndPlacesStayWithTheirTitles) {
  const menu_plan plan = plan_menus(disc_of(p), wishes.choices, {});
  wishes.texts[plan.menus[0].entries[1].key] = "The\tother\none";
  make();
  std::vector<std::string> records = button_records(p, 1);
  button_record moved = parse_button(records[1]);
  moved.x0 = " 300";
  moved.y0 = " 340";
  moved.x1 = " 500";
  moved.y1 = " 380";
  p.menubuttons[0] = records[0] + "|" + button_text(moved);
  // A new first title, and the others change places.
  add_files_and_title({"new.m2v", "c.ac3"});
  swap_titles(p, 0, 2);
  for (int time = 0; time < 2; ++time) {
    make_again();
    EXPECT_EQ(wishes.choices.chapters_of, std::vector<int>{3});
    EXPECT_THAT(actions_of(1), ElementsAre("jump title 1", "jump title 2", "jump menu 2"));
    const button_record now = parse_button(button_records(p, 1)[1]);
    EXPECT_EQ(now.x0 + now.y0 + now.x1 + now.y1, " 300 340 500 380") << time;
    EXPECT_EQ(menus_made_before(p).texts, wishes.texts);
  }
}

TEST_F(MadeMenus, OtherChangesOfButtonsAreToldBeforeTheyAreLost) {
  make();
  EXPECT_THAT(menus_made_before(p).notes, IsEmpty());
  std::vector<std::string> records = button_records(p, 1);
  button_record changed = parse_button(records[1]);
  changed.action = "exit";
  p.menubuttons[0] = records[0] + "|" + button_text(changed);
  EXPECT_THAT(menus_made_before(p).notes, ElementsAre(HasSubstr("Menu 1 has other buttons")));
}

TEST_F(MadeMenus, AfterUndoWhatWasMadeBeforeIsRememberedAgain) {
  make();
  const auto first = menus_made_before(p);
  wishes.choices.chapters_of.clear();
  make();
  EXPECT_EQ(menus_made_before(p).made.size(), 1u);
  doc.undo();
  EXPECT_EQ(menus_made_before(p).made, first.made);
}

TEST_F(MadeMenus, MenusWithoutTheirMemoryAreTheUsersOwn) {
  make();
  EXPECT_EQ(remove_all(folder.path("titles-1.menu")), std::nullopt);
  folder.add("my-film-1-1.menu", "something else");
  EXPECT_THAT(menus_made_before(p).made, IsEmpty());
}

TEST_F(MadeMenus, ACopyOfAMadeMenuIsTheUsersOwnAndStays) {
  make();
  copy_menu(p, 2);
  EXPECT_EQ(menus_made_before(p).made.size(), 2u);
  make_again();
  ASSERT_EQ(p.menulist.size(), 3u);
  EXPECT_EQ(video_of(3), folder.stored("my-film-1-1.m2v"));
}

TEST_F(MadeMenus, AFolderThatNoProjectCanNameIsRefused) {
  wishes.folder = "/a|b";
  EXPECT_THAT(make_menus(doc, wishes, measured_text, maker).error,
              HasSubstr("The folder \"/a|b\""));
}

TEST_F(MadeMenus, TheJumpTableThatIsWantedBoundsTheFirstMenu) {
  wishes.design = *design_at(join_path(CORVANE_DESIGNS, "blackboard.design")).design;
  wishes.jump_table = true;
  wishes.choices.chapters_of.clear();
  for (int title = 3; title <= 99; ++title) {
    add_files_and_title({"film" + trimmed(title) + ".m2v", "x.ac3"});
    p.chapters.back() = "0,10";
    if (title > 14)
      wishes.choices.chapters_of.push_back(title);
  }
  EXPECT_THAT(make(), Contains(HasSubstr("With the jump table the first menu has ")));
  EXPECT_THAT(navigation_findings(disc_of(p)), IsEmpty());
}

TEST_F(MadeMenus, FortyTitlesOfManyChaptersFillTheDiscAndItIsSaid) {
  for (int title = 3; title <= 40; ++title)
    add_files_and_title({"film" + trimmed(title) + ".m2v", "x.ac3"});
  wishes.choices.chapters_of.clear();
  for (int title = 1; title <= 40; ++title) {
    wishes.choices.chapters_of.push_back(title);
    std::string& times = p.chapters[static_cast<std::size_t>(title) - 1];
    times = "0";
    for (int chapter = 1; chapter < 20; ++chapter)
      times += "," + trimmed(std::int64_t{chapter} * 10);
  }
  EXPECT_THAT(make(), ElementsAre(HasSubstr("room for 99 menus")));
  EXPECT_LE(p.menulist.size(), 99u);
  EXPECT_GE(p.menulist.size(), 95u);
  const disc_description d = disc_of(p);
  EXPECT_THAT(navigation_findings(d), IsEmpty());
  EXPECT_THAT(button_findings(d, {}), IsEmpty());
}

// A disc has the buttons of such a menu three times.
TEST_F(MadeMenus, MenusOf16To9HaveNoMoreThanTwelveButtons) {
  for (int title = 3; title <= 40; ++title)
    add_files_and_title({"film" + trimmed(title) + ".m2v", "x.ac3"});
  p.chapters[0] = "0";
  for (int chapter = 1; chapter < 99; ++chapter)
    p.chapters[0] += "," + trimmed(std::int64_t{chapter} * 10);
  wishes.is_wide = true;
  wishes.choices.play_all = true;
  for (const found_design& found : designs_in(CORVANE_DESIGNS, {})) {
    ASSERT_TRUE(found.design) << found.id;
    wishes.design = *found.design;
    make();
    for (int menu = 1; menu <= menu_count(p); ++menu)
      EXPECT_LE(button_records(p, menu).size(), 12u) << found.id << ", menu " << menu;
    EXPECT_GT(button_records(p, 1).size(), 4u) << found.id;
  }
}

TEST(MenuMemory, TextAndBack) {
  menu_memory memory;
  memory.menu = "titles 1";
  memory.design = "a\\b";
  memory.is_wide = true;
  memory.choices.play_all = true;
  memory.choices.picture_after = 1.25;
  memory.choices.words.next = "Weiter\t>";
  memory.chapters_of = {"\\films\\new.m2v"};
  memory.texts["title \\x"] = "a\nb\\n\t\r";
  memory.moves["k"] = {1, 2, 3, 4};
  memory.buttons = {{"k", " 1/ 2/ 3/ 4/exit/white/white"}};
  const auto read = read_memory(memory_text(memory));
  ASSERT_TRUE(read) << read.error;
  EXPECT_EQ(*read, memory);
}

TEST(MenuMemory, OtherTextsAreRefused) {
  const std::string first = memory_text({}).substr(0, memory_text({}).find('\n') + 1);
  EXPECT_FALSE(read_memory(""));
  EXPECT_EQ(read_memory("hello").error, "the file is not of a menu that was made");
  EXPECT_EQ(read_memory(first + "menu\ta\tb\tc\n").error, "line 2 is not understood");
  EXPECT_EQ(read_memory(first + "place\tk\t1 2\n").error, "line 2 is not understood");
  EXPECT_TRUE(read_memory(first));
}

TEST(MenuMemory, ItStandsBesideTheBackground) {
  const std::string folder = native_style() == path_style::windows ? "C:\\a.b" : "/a.b";
  EXPECT_EQ(memory_file(join_path(folder, "titles-1.m2v")), join_path(folder, "titles-1.menu"));
  EXPECT_EQ(memory_file(join_path(folder, "titles")), join_path(folder, "titles.menu"));
}

}  // namespace
}  // namespace corvane
