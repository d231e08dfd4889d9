// The navigation commands dialog: what it is prepared with, its rows, what accept writes.
#include "menus/navcommands.h"

#include "project/menu_rows.h"
#include "project/moved_commands.h"
#include "project/post_rows.h"
#include "project/project_file.h"
#include "support/command_test.h"

namespace corvane {
namespace {

using testing_support::rows;

const std::string blank25(25, ' ');

/// A command as it is stored.
std::string stored(const std::string& command) {
  return (command + blank25).substr(0, 25);
}

class Navcommands : public testing_support::command_test {
 protected:
  void add_titles(int count) {
    for (int i = 1; i <= count; ++i)
      add_files_and_title({"t" + std::to_string(i) + ".vob"});
    p.saved = 1;
  }
  void add_menus(int count) {
    folder.add("m.m2v");
    p.menulist.assign(static_cast<std::size_t>(count), folder.stored("m.m2v") + "/");
    p.moremenuoptions.assign(static_cast<std::size_t>(count), new_menu_options);
  }
  navcommands open() {
    auto dialog = navcommands::prepare(doc);
    EXPECT_TRUE(dialog);
    return *dialog;
  }
};

// Preparing --------------------------------------------------------------------------------------

TEST_F(Navcommands, ThreeTitlesWithoutCommandsShowTheDefaults) {
  add_titles(3);
  EXPECT_EQ(open().List1(), (rows{"title1:t1.vob       \tjump title 2             ",
                                  "title2:t2.vob       \tjump title 3             ",
                                  "title3:t3.vob       \texit                     "}));
  EXPECT_TRUE(p.postinfo.empty());
}

TEST_F(Navcommands, SetCommandsAreShown) {
  add_titles(2);
  p.postinfo = {stored("exit"), stored("call menu")};
  EXPECT_EQ(open().List1(), (rows{"title1:t1.vob       \texit                     ",
                                  "title2:t2.vob       \tcall menu                "}));
}

TEST_F(Navcommands, TitleWithoutItsRowShowsWhatItWillDo) {
  add_titles(3);
  p.postinfo = {stored("exit")};
  navcommands dialog = open();
  dialog.select(1);
  EXPECT_EQ(dialog.Combo1(), "jump title 3");
  dialog.select(2);
  EXPECT_EQ(dialog.Combo1(), "exit");
}

TEST_F(Navcommands, LongTitleEntryIsCutTo20Characters) {
  add_files_and_title({"a very long file name.m2v", "b.ac3"});
  const std::string row = open().List1()[0];
  EXPECT_EQ(row, "title1:a very long f\texit                     ");
}

TEST_F(Navcommands, TitleEntryIsCutBetweenCharacters) {
  add_files_and_title(
      {"\xC3\xA4\xC3\xB6\xC3\xBC\xC3\xA4\xC3\xB6\xC3\xBC\xC3\xA4\xC3\xB6\xC3\xBC"
       "\xC3\xA4\xC3\xB6\xC3\xBC\xE2\x82\xAC\xE2\x82\xAC.vob"});
  navcommands dialog = open();
  dialog.select(0);
  EXPECT_EQ(dialog.Text1(),
            "title1:\xC3\xA4\xC3\xB6\xC3\xBC\xC3\xA4\xC3\xB6\xC3\xBC\xC3\xA4\xC3\xB6\xC3\xBC"
            "\xC3\xA4\xC3\xB6\xC3\xBC\xE2\x82\xAC");
}

TEST_F(Navcommands, CommandsOfferedWithoutMenusAreTheTitlesAndExit) {
  add_titles(2);
  const navcommands dialog = open();
  EXPECT_EQ(dialog.Combo1_items(), (rows{"jump title 1", "jump title 2", "exit"}));
  EXPECT_EQ(dialog.Combo1(), "exit");
  EXPECT_EQ(dialog.firstplay_items(), (rows{"jump title 1", "jump title 2", "<default>"}));
  EXPECT_EQ(dialog.selected(), -1);
  EXPECT_EQ(dialog.Text1(), "");
}

TEST_F(Navcommands, CommandsOfferedWithMenusEndWithCallMenu) {
  add_titles(1);
  add_menus(2);
  const navcommands dialog = open();
  EXPECT_EQ(dialog.Combo1_items(), (rows{"jump title 1", "exit", "call menu"}));
  EXPECT_EQ(dialog.firstplay_items(), (rows{"jump title 1", "jump titleset 1 menu", "<default>"}));
}

TEST_F(Navcommands, CommandsOfferedWithTheJumpTableCallEachMenuAndTheLast) {
  add_titles(1);
  add_menus(2);
  p.jumptable = true;
  EXPECT_EQ(open().Combo1_items(),
            (rows{"jump title 1", "exit", "call menu 1", "call menu 2", "call last menu"}));
}

TEST_F(Navcommands, JumpTableWithoutMenusOffersNoCall) {
  add_titles(1);
  p.jumptable = true;
  EXPECT_EQ(open().Combo1_items(), (rows{"jump title 1", "exit"}));
}

TEST_F(Navcommands, ProjectWithoutTitlesOffersExitAndDefault) {
  navcommands dialog = open();
  EXPECT_TRUE(dialog.List1().empty());
  EXPECT_EQ(dialog.Combo1_items(), rows{"exit"});
  EXPECT_EQ(dialog.firstplay_items(), rows{"<default>"});
  dialog.accept();
  EXPECT_TRUE(p.postinfo.empty());
}

TEST_F(Navcommands, WhatItsCommandsLedToIsForgottenWhenItIsAccepted) {
  add_titles(2);
  p.firstplay = "jump title 2";
  note_command_targets(p);
  ASSERT_FALSE(p.led_to.empty());
  navcommands dialog = open();
  EXPECT_FALSE(p.led_to.empty());
  dialog.accept();
  EXPECT_TRUE(p.led_to.empty());
}

TEST_F(Navcommands, FirstPlayOfTheProjectIsShown) {
  p.firstplay = "jump title 7";
  EXPECT_EQ(open().firstplay(), "jump title 7");
}

TEST_F(Navcommands, GuardDecidesWhetherTheDialogOpens) {
  add_titles(1);
  p.customxml = "<dvdauthor/>";
  expect_guard(answer::cancel);
  EXPECT_FALSE(navcommands::prepare(doc));
  EXPECT_EQ(p.customxml, "<dvdauthor/>");
  expect_guard(answer::ok);
  EXPECT_TRUE(navcommands::prepare(doc));
  EXPECT_EQ(p.customxml, "");
}

TEST_F(Navcommands, DialogThatIsShownAlreadyIsNotPreparedAgain) {
  add_titles(1);
  EXPECT_FALSE(navcommands::prepare(doc, true));
}

// In the dialog ----------------------------------------------------------------------------------

TEST_F(Navcommands, SelectingShowsNameAndCommandWithoutTheirPadding) {
  add_titles(2);
  p.postinfo = {stored("jump title 2"), stored("call menu")};
  navcommands dialog = open();
  dialog.select(1);
  EXPECT_EQ(dialog.selected(), 1);
  EXPECT_EQ(dialog.Text1(), "title2:t2.vob");
  EXPECT_EQ(dialog.Combo1(), "call menu");
}

TEST_F(Navcommands, ChangedCommandRewritesTheSelectedRowOnly) {
  add_titles(2);
  navcommands dialog = open();
  dialog.select(0);
  dialog.set_command("call menu");
  EXPECT_EQ(dialog.List1(), (rows{"title1:t1.vob       \tcall menu                ",
                                  "title2:t2.vob       \texit                     "}));
  EXPECT_EQ(dialog.Combo1(), "call menu");
}

TEST_F(Navcommands, CommandWithoutASelectedRowRewritesNone) {
  add_titles(1);
  navcommands dialog = open();
  const rows before = dialog.List1();
  dialog.set_command("call menu");
  EXPECT_EQ(dialog.List1(), before);
}

TEST_F(Navcommands, TypedCommandOf30CharactersIsStoredCutTo25) {
  add_titles(1);
  navcommands dialog = open();
  dialog.select(0);
  dialog.set_command("123456789012345678901234567890");
  EXPECT_EQ(dialog.List1()[0], "title1:t1.vob       \t1234567890123456789012345");
  dialog.accept();
  EXPECT_EQ(p.postinfo, rows{"1234567890123456789012345"});
}

TEST_F(Navcommands, CommandIsCutBetweenCharacters) {
  add_titles(1);
  navcommands dialog = open();
  dialog.select(0);
  dialog.set_command("123456789012345678901234\xE2\x82\xAC\xE2\x82\xAC");
  dialog.accept();
  EXPECT_EQ(p.postinfo, rows{"123456789012345678901234\xE2\x82\xAC"});
}

TEST_F(Navcommands, RowThatIsNotThereIsNoChange) {
  add_titles(1);
  navcommands dialog = open();
  dialog.select(0);
  for (const int row : {-1, 1, 100}) {
    dialog.select(row);
    EXPECT_EQ(dialog.selected(), 0) << row;
  }
}

TEST_F(Navcommands, CommandWithControlCharactersIsRefused) {
  add_titles(1);
  p.firstplay = "jump title 1";
  navcommands dialog = open();
  dialog.select(0);
  const rows before = dialog.List1();
  for (const std::string text : {"a\tb", "a\nb", "a\rb"}) {
    const std::string message =
        "The command \"a?b\" cannot be used: it contains a line break, a tab or another control "
        "character.";
    expect_refusal(message);
    dialog.set_command(text);
    expect_refusal(message);
    dialog.set_firstplay(text);
  }
  EXPECT_EQ(dialog.List1(), before);
  EXPECT_EQ(dialog.Combo1(), "exit");
  EXPECT_EQ(dialog.firstplay(), "jump title 1");
}

// Accept -----------------------------------------------------------------------------------------

TEST_F(Navcommands, AcceptStoresCommandsWithTheirPadding) {
  add_titles(3);
  navcommands dialog = open();
  dialog.select(1);
  dialog.set_command("call menu");
  dialog.set_firstplay("jump title 2");
  dialog.accept();
  EXPECT_EQ(p.postinfo, (rows{"jump title 2             ", "call menu                ",
                              "exit                     "}));
  EXPECT_EQ(p.firstplay, "jump title 2");
  EXPECT_EQ(p.saved, 0);
}

TEST_F(Navcommands, AcceptTurnsAnEmptyFirstPlayIntoTheDefault) {
  add_titles(1);
  navcommands dialog = open();
  dialog.set_firstplay("");
  dialog.accept();
  EXPECT_EQ(p.firstplay, "<default>");
}

TEST_F(Navcommands, ClosingWithoutAcceptChangesNothing) {
  add_titles(2);
  {
    navcommands dialog = open();
    dialog.select(0);
    dialog.set_command("exit");
    dialog.set_firstplay("jump title 2");
  }
  EXPECT_TRUE(p.postinfo.empty());
  EXPECT_EQ(p.firstplay, "<default>");
  EXPECT_EQ(p.saved, 1);
  EXPECT_EQ(open().List1()[0], "title1:t1.vob       \tjump title 2             ");
}

TEST_F(Navcommands, AcceptKeepsRowsBeyondTheTitles) {
  add_titles(1);
  p.postinfo = {stored("exit"), stored("jump title 1")};
  navcommands dialog = open();
  dialog.select(0);
  dialog.set_command("call menu");
  dialog.accept();
  EXPECT_EQ(p.postinfo, (rows{stored("call menu"), stored("jump title 1")}));
}

TEST_F(Navcommands, AcceptedCommandsSurviveTheProjectFile) {
  add_titles(2);
  navcommands dialog = open();
  dialog.select(0);
  dialog.set_command("***");
  dialog.accept();
  const rows before = p.postinfo;
  p.List1.clear();
  EXPECT_TRUE(loadprojectf(doc, folder.add("nav.cvp", project_text(p))));
  EXPECT_EQ(p.postinfo, before);
}

TEST_F(Navcommands, HostileRowsAreShownOnOneLineAndKeptWhenAccepted) {
  add_titles(3);
  p.postinfo = {stored("exit\there"), stored("\xFF\xFE"), stored("")};
  p.List1[0] = "title1:a\tb";
  navcommands dialog = open();
  EXPECT_EQ(dialog.List1(), (rows{"title1:a?b          \texit?here                ",
                                  "title2:t2.vob       \t??                       ",
                                  "title3:t3.vob       \t" + blank25}));
  const rows before = p.postinfo;
  for (int row = 0; row < 3; ++row)
    dialog.select(row);
  dialog.accept();
  EXPECT_EQ(p.postinfo, before);
}

TEST(Padded, TextIsFilledOrCutToItsWidthInCharacters) {
  EXPECT_EQ(padded("", 3), "   ");
  EXPECT_EQ(padded("ab", 3), "ab ");
  EXPECT_EQ(padded("abc", 3), "abc");
  EXPECT_EQ(padded("abcd", 3), "abc");
  EXPECT_EQ(padded("\xC3\xA4", 3), "\xC3\xA4  ");
  EXPECT_EQ(padded("a\xF0\x9F\x8E\xACz", 2), "a\xF0\x9F\x8E\xAC");
  EXPECT_EQ(padded("abc", 0), "");
}

}  // namespace
}  // namespace corvane
