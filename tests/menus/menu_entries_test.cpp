// The commands on menus: adding, the way to the picker, the jump table.
#include "menus/menu_entries.h"

#include "menus/menu_picker.h"
#include "project/menu_rows.h"
#include "project/project_file.h"
#include "project/title_commands.h"
#include "support/command_test.h"

namespace corvane {
namespace {

using testing_support::rows;

const char* const menu_video_filter = "mpeg elementry stream(*.m2v, *.mpv)|*.m2v;*.mpv";
const char* const menu_audio_title =
    "select audio stream (If no audio is needed for the menu, press cancel)";

class MenuEntries : public testing_support::command_test {
 protected:
  void expect_menu_video(const std::string& native) {
    ask.expect_open({"select video stream", menu_video_filter, ""}, native);
  }
  void expect_menu_audio(const std::string& native) {
    ask.expect_open({menu_audio_title, testing_support::audio_filter, ""}, native);
  }
  bool add(const std::string& video, const std::string& audio = {}) {
    expect_menu_video(folder.add(video));
    expect_menu_audio(audio.empty() ? audio : folder.add(audio));
    return addmenu_command(doc);
  }
};

// Adding -----------------------------------------------------------------------------------------

TEST_F(MenuEntries, AddingAsksForVideoAndAudioAndAddsTheMenuWithoutButtons) {
  p.saved = 1;
  EXPECT_TRUE(add("m.m2v", "m.ac3"));
  EXPECT_EQ(p.menulist, rows{folder.stored("m.m2v") + "/" + folder.stored("m.ac3")});
  EXPECT_EQ(p.moremenuoptions, rows{"0\t00:00:00.0\t00:00:00.0\t1"});
  EXPECT_EQ(buttoncount(p, 1), 0);
  EXPECT_EQ(p.indexer, 1);
  EXPECT_FALSE(p.Comboregion_enabled);
  EXPECT_EQ(p.saved, 0);
  EXPECT_EQ(p.dvdsizetext, "0 titles\r\n1 menus\r\n0.000 gig total");
}

TEST_F(MenuEntries, CancelledAudioDialogMeansNoAudio) {
  EXPECT_TRUE(add("m.m2v"));
  EXPECT_EQ(p.menulist, rows{folder.stored("m.m2v") + "/"});
}

TEST_F(MenuEntries, AudioDialogOfTitlesHasItsOwnTitleAfterwards) {
  add("m.m2v");
  expect_video(folder.add("t.m2v"));
  expect_audio(folder.add("t.ac3"));
  open_command(doc);
  EXPECT_EQ(p.List1, rows{"title1:t.m2v/t.ac3"});
}

TEST_F(MenuEntries, CancelledVideoDialogChangesNothing) {
  p.saved = 1;
  expect_menu_video("");
  EXPECT_FALSE(addmenu_command(doc));
  EXPECT_TRUE(p.menulist.empty());
  EXPECT_TRUE(p.moremenuoptions.empty());
  EXPECT_EQ(p.menubuttons, rows{""});
  EXPECT_EQ(p.indexer, 0);
  EXPECT_TRUE(p.Comboregion_enabled);
  EXPECT_EQ(p.saved, 1);
}

TEST_F(MenuEntries, SecondMenuGetsTheNextNumber) {
  add("one.m2v");
  add("two.mpv", "two.mp2");
  EXPECT_EQ(p.indexer, 2);
  EXPECT_EQ(p.menulist.size(), 2u);
  EXPECT_EQ(p.moremenuoptions.size(), 2u);
  EXPECT_GE(p.menubuttons.size(), 2u);
}

TEST_F(MenuEntries, AddingGrowsTheButtonArrayByOneAndUsesElement0ForTheFirstMenu) {
  add("one.m2v");
  EXPECT_EQ(p.menubuttons, (rows{"", ""}));
  p.menubuttons[0] = "1/a";
  add("two.m2v");
  EXPECT_EQ(p.menubuttons, (rows{"1/a", "", ""}));
}

TEST_F(MenuEntries, AddingAfterTheOnlyMenuWasErasedUsesElement0OfTwo) {
  add("one.m2v");
  p.menubuttons[0] = "1/a";
  menu_picker(doc, picker_erase_caption).confirm(0);
  EXPECT_EQ(p.menubuttons, rows{""});
  add("two.m2v");
  EXPECT_EQ(p.menubuttons, (rows{"", ""}));
  EXPECT_EQ(p.indexer, 1);
}

TEST_F(MenuEntries, MenuThatWasNeverAcceptedIsListedWithNoButtons) {
  add("m.m2v");
  EXPECT_EQ(menu_picker(doc).entries(), rows{"menu 1:m.m2v(no audio) (0 buttons)"});
}

TEST_F(MenuEntries, NewMenuDoesNotInheritButtonsThatARolledBackLoadLeft) {
  p.menubuttons = {"1/a|2/b", "3/c"};
  add("m.m2v");
  EXPECT_EQ(buttoncount(p, 1), 0);
  EXPECT_EQ(p.menubuttons, (rows{"", "", ""}));
}

TEST_F(MenuEntries, NewMenuGetsItsRowsWhereALoadedProjectHadTooFewOrTooMany) {
  p.menulist = {folder.stored("a.m2v") + "/", folder.stored("a.m2v") + "/"};
  folder.add("a.m2v");
  p.menubuttons.clear();
  add("c.m2v");
  EXPECT_EQ(p.moremenuoptions, rows(3, new_menu_options));
  EXPECT_EQ(p.menubuttons, (rows{"", "", ""}));
  p.moremenuoptions.resize(9, "surplus");
  add("d.m2v");
  EXPECT_EQ(p.moremenuoptions, rows(4, new_menu_options));
}

TEST_F(MenuEntries, GuardRefusesEveryCommandOnMenus) {
  add("m.m2v");
  for (auto* const command : {addmenu_command, editmenu_command, remove_menu_command}) {
    p.customxml = "<dvdauthor/>";
    p.saved = 1;
    expect_guard(answer::cancel);
    EXPECT_FALSE(command(doc));
    EXPECT_EQ(p.menulist.size(), 1u);
    EXPECT_EQ(p.customxml, "<dvdauthor/>");
    EXPECT_EQ(p.saved, 1);
  }
}

TEST_F(MenuEntries, GuardThatIsAgreedToLetsTheCommandsGoOn) {
  p.customxml = "<dvdauthor/>";
  expect_guard(answer::ok);
  EXPECT_TRUE(add("m.m2v"));
  EXPECT_EQ(p.customxml, "");
  for (auto* const command : {editmenu_command, remove_menu_command}) {
    p.customxml = "<dvdauthor/>";
    expect_guard(answer::ok);
    EXPECT_TRUE(command(doc));
    EXPECT_EQ(p.customxml, "");
  }
}

TEST_F(MenuEntries, VideoWhoseNameCannotBeStoredIsRefused) {
  const std::string name = folder.path("a|b.m2v");
  expect_menu_video(name);
  expect_refusal("\"" + name +
                 "\" cannot be used: its name contains a vertical bar (|).  Please rename it.");
  EXPECT_FALSE(addmenu_command(doc));
  EXPECT_TRUE(p.menulist.empty());
}

TEST_F(MenuEntries, AudioWhoseNameCannotBeStoredIsAskedForAgain) {
  expect_menu_video(folder.add("m.m2v"));
  const std::string name = folder.path("a|b.ac3");
  expect_menu_audio(name);
  expect_refusal("\"" + name +
                 "\" cannot be used: its name contains a vertical bar (|).  Please rename it.");
  expect_menu_audio(folder.add("good.ac3"));
  EXPECT_TRUE(addmenu_command(doc));
  EXPECT_EQ(p.menulist, rows{folder.stored("m.m2v") + "/" + folder.stored("good.ac3")});
}

TEST_F(MenuEntries, HundredthMenuIsRefused) {
  folder.add("m.m2v");
  p.menulist.assign(99, folder.stored("m.m2v") + "/");
  expect_refusal("A project holds at most 99 menus.  Please remove one first.");
  EXPECT_FALSE(addmenu_command(doc));
  EXPECT_EQ(p.menulist.size(), 99u);
}

TEST_F(MenuEntries, MissingFileOfAnotherMenuIsToldButTheMenuIsAdded) {
  p.menulist = {folder.stored("gone.m2v") + "/"};
  p.moremenuoptions = {new_menu_options};
  expect_menu_video(folder.add("m.m2v"));
  expect_menu_audio("");
  expect_missing(folder.path("gone.m2v"));
  EXPECT_TRUE(addmenu_command(doc));
  EXPECT_EQ(p.menulist.size(), 2u);
}

TEST_F(MenuEntries, AddedMenusSurviveTheProjectFile) {
  add("one.m2v", "one.ac3");
  add("two.m2v");
  p.menubuttons[1] = " 0/ 0/ 100/ 3/jump menu 1/black/black";
  const project before = p;
  EXPECT_TRUE(loadprojectf(doc, folder.add("menus.cvp", project_text(p))));
  EXPECT_EQ(p.menulist, before.menulist);
  EXPECT_EQ(p.moremenuoptions, before.moremenuoptions);
  EXPECT_EQ(p.menubuttons[0], "");
  EXPECT_EQ(p.menubuttons[1], before.menubuttons[1]);
}

// To the picker ----------------------------------------------------------------------------------

TEST_F(MenuEntries, WithoutMenusEditAndRemoveDoNothingAndShowNothing) {
  p.saved = 1;
  EXPECT_FALSE(editmenu_command(doc));
  EXPECT_FALSE(remove_menu_command(doc));
  EXPECT_EQ(p.saved, 1);
}

TEST_F(MenuEntries, WithMenusEditAndRemoveLeadToThePickerAndChangeNothing) {
  add("m.m2v");
  p.saved = 1;
  EXPECT_TRUE(editmenu_command(doc));
  EXPECT_TRUE(remove_menu_command(doc));
  EXPECT_EQ(p.menulist.size(), 1u);
  EXPECT_EQ(p.saved, 1);
}

// The jump table ---------------------------------------------------------------------------------

class JumpTable : public MenuEntries {
 protected:
  void expect_explanation() {
    ask.expect(
        box("This will allow titles to jump to any menu, instead of just the first menu.  "
            "It uses virtual machine scripting in the XML(instead of using jumppad)",
            icon::information));
  }
};

TEST_F(JumpTable, IsExplainedAndRememberedWhenItIsTurnedOn) {
  p.saved = 1;
  expect_explanation();
  jumptable_command(doc);
  EXPECT_TRUE(p.jumptable);
  EXPECT_EQ(prefs.get("jumptable"), "True");
  EXPECT_EQ(p.saved, 0);
}

TEST_F(JumpTable, IsTurnedOffWithoutAWord) {
  p.jumptable = true;
  prefs.set("jumptable", "True");
  jumptable_command(doc);
  EXPECT_FALSE(p.jumptable);
  EXPECT_EQ(prefs.get("jumptable"), "False");
}

TEST_F(JumpTable, CannotBeSwitchedWhileThereAreMenus) {
  add("m.m2v");
  for (const bool on : {false, true}) {
    p.jumptable = on;
    p.saved = 1;
    expect_refusal("Jumptable cannot be enabled/disabled, since menus have already been created");
    jumptable_command(doc);
    EXPECT_EQ(p.jumptable, on);
    EXPECT_EQ(prefs.get("jumptable"), "");
    EXPECT_EQ(p.saved, 1);
  }
}

TEST_F(JumpTable, CanBeSwitchedAgainOnceTheMenusAreGone) {
  add("m.m2v");
  menu_picker(doc, picker_erase_caption).confirm(0);
  expect_explanation();
  jumptable_command(doc);
  EXPECT_TRUE(p.jumptable);
}

}  // namespace
}  // namespace corvane
