// Actions to pick from by name, the search among them, and what is said of a typed one.
#include "menus/action_choices.h"

#include "editor_test.h"
#include "examine/navigation_map.h"
#include "menus/menu_problems.h"
#include "menus/navcommands.h"
#include "project/disc_of.h"
#include "project/post_rows.h"

#include <gmock/gmock.h>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing_support::rows;
using kind = action_verdict::kind;

class ActionChoices : public testing_support::editor_test {
 protected:
  ActionChoices() {
    add_files_and_title({"my_tour-01.m2v", "t.ac3"});
    add_files_and_title({"Garten im M\xC3\xA4rz.vob"});
    add_files_and_title({"last.vob"});
    p.chapters = {"00:00:00.00,00:12:30.00,00:20:00.50", "00:01:00.00", ""};
    p.menulist.push_back(folder.stored("extras.m2v") + "/");
  }
  std::vector<action_choice> choices() const {
    return action_choices(
        disc_of(p), [](int title) { return title == 1 ? std::string("24:10") : std::string(); });
  }
  rows lines(const choice_filter& filter) const {
    const std::vector<action_choice> all = choices();
    return choice_lines(all, shown_choices(all, filter));
  }
  rows commands(const choice_filter& filter) const {
    const std::vector<action_choice> all = choices();
    rows found;
    for (const std::size_t i : shown_choices(all, filter))
      found.push_back(all[i].command);
    return found;
  }
  action_verdict verdict(const std::string& text) const {
    return verdict_on_action(disc_of(p), 1, text);
  }
};

TEST_F(ActionChoices, HaveNamesLengthsAndTimes) {
  EXPECT_THAT(lines({"", 0, true}),
              ElementsAre("title 1: my tour 01 (24:10, 3 chapters)", "      chapter 1, 00:00:00",
                          "      chapter 2, 00:12:30", "      chapter 3, 00:20:00.50",
                          "title 2: Garten im M\xC3\xA4rz (2 chapters)",
                          "      chapter 1, 00:00:00", "      chapter 2, 00:01:00", "title 3: last",
                          "menu 1: menu", "menu 2: extras", "exit: the disc stops"));
}

TEST_F(ActionChoices, AreInTheWordsOfTheEditorsOwnList) {
  const rows offered = menu_editor(doc, pictures).controls().Combo1_items;
  const rows picked = commands({"", 0, true});
  for (const std::string& action : offered)
    EXPECT_THAT(picked, testing::Contains(action));
  EXPECT_EQ(picked[3], "jump title 1 chapter  3");
  EXPECT_EQ(picked[0], "jump title 1 chapter  1");
}

TEST_F(ActionChoices, ChaptersAreShownOfTheTitleThatIsOpenAlone) {
  EXPECT_THAT(lines({}), SizeIs(6));
  EXPECT_THAT(lines({"", 2, false}),
              ElementsAre("title 1: my tour 01 (24:10, 3 chapters)",
                          "title 2: Garten im M\xC3\xA4rz (2 chapters)",
                          "      chapter 1, 00:00:00", "      chapter 2, 00:01:00", "title 3: last",
                          "menu 1: menu", "menu 2: extras", "exit: the disc stops"));
}

TEST_F(ActionChoices, FortyFiveChaptersDoNotHideTheNextTitle) {
  std::string row = "00:00:00.00";
  for (int chapter = 2; chapter <= 45; ++chapter)
    row += ",00:" + std::string(chapter < 10 ? "0" : "") + std::to_string(chapter) + ":00.00";
  p.chapters[0] = row;
  EXPECT_EQ(lines({})[0], "title 1: my tour 01 (24:10, 45 chapters)");
  EXPECT_THAT(lines({}), SizeIs(6));
  EXPECT_EQ(commands({"chapter 45", 0, false})[0], "jump title 1 chapter  45");
}

TEST_F(ActionChoices, SearchWantsEachWordSomewhereInTheLine) {
  EXPECT_THAT(lines({"12:30", 0, false}), ElementsAre("title 1: my tour 01, chapter 2, 00:12:30"));
  EXPECT_THAT(commands({"TOUR chapter 3,", 0, false}), ElementsAre("jump title 1 chapter  3"));
  EXPECT_THAT(commands({"12:3", 0, false}), ElementsAre("jump title 1 chapter  2"));
  EXPECT_THAT(lines({"  menu  ", 0, false}), ElementsAre("menu 1: menu", "menu 2: extras"));
  EXPECT_THAT(lines({"tour extras", 0, false}), IsEmpty());
}

TEST_F(ActionChoices, ANumberIsSoughtByItselfAndWordsAsTypedComeFirst) {
  EXPECT_THAT(
      lines({"title 2", 0, false}),
      ElementsAre("title 2: Garten im M\xC3\xA4rz (2 chapters)", "      chapter 1, 00:00:00",
                  "      chapter 2, 00:01:00", "title 1: my tour 01, chapter 2, 00:12:30"));
  EXPECT_THAT(commands({"chapter 2", 0, false}),
              ElementsAre("jump title 1 chapter  2", "jump title 2 chapter  2",
                          "jump title 2 chapter  1", "jump title 2 chapter  1"));
  EXPECT_THAT(commands({"30", 0, false}), IsEmpty()) << "a part of a time is no number";
}

TEST_F(ActionChoices, TheOneOfACommandIsKnownWhateverItsBlanks) {
  const std::vector<action_choice> all = choices();
  const auto line_of = [&all](const char* command) {
    const auto at = choice_of_command(all, command);
    return at ? all[*at].line : "none";
  };
  EXPECT_EQ(line_of("jump title  1 chapter 2 "), "title 1: my tour 01, chapter 2, 00:12:30");
  EXPECT_EQ(line_of("jump title 1 chapter  1"), "title 1: my tour 01 (24:10, 3 chapters)");
  EXPECT_EQ(line_of("jump title 3"), "title 3: last");
  EXPECT_EQ(line_of("jump menu 2"), "menu 2: extras");
  EXPECT_EQ(line_of(" exit"), "exit: the disc stops");
  EXPECT_EQ(line_of("jump title 9"), "none");
  EXPECT_EQ(line_of("g4 = 1"), "none");
}

TEST_F(ActionChoices, ForeignNamesAreOneLineEach) {
  p.List11[0] = "\\films\\a\nb\x1b[31m.m2v/\\films\\a.ac3";
  for (const std::string& line : lines({"", 0, true}))
    EXPECT_EQ(line.find_first_of("\n\x1b"), std::string::npos) << line;
}

// What is typed ----------------------------------------------------------------------------------

TEST_F(ActionChoices, WhatAnActionDoesIsSaid) {
  EXPECT_EQ(verdict("jump title 1 chapter  2"),
            (action_verdict{kind::fine, "plays title 1: my tour 01, from chapter 2"}));
  EXPECT_EQ(verdict("jump menu 2"), (action_verdict{kind::fine, "shows menu 2: extras"}));
  EXPECT_EQ(verdict("exit"), (action_verdict{kind::fine, "stops the disc"}));
}

TEST_F(ActionChoices, WhatIsWrongWithAnActionIsSaidAsTheCheckSaysIt) {
  EXPECT_EQ(verdict("jump title 4"),
            (action_verdict{kind::wrong, "leads to title 4, but there are 3 titles"}));
  EXPECT_EQ(verdict("jump title 1 chapter 9").what, kind::wrong);
  EXPECT_EQ(verdict("jump menu 3"),
            (action_verdict{kind::wrong, "leads to menu 3, but there are 2 menus"}));
  EXPECT_EQ(verdict("call menu 1").what, kind::wrong);
  EXPECT_EQ(verdict("Jump title 1").what, kind::wrong);
  EXPECT_EQ(verdict(""), (action_verdict{kind::wrong, "does nothing"}));
  EXPECT_EQ(verdict("jump title 1/2"), (action_verdict{kind::wrong, "contains \"/\""}));
}

TEST_F(ActionChoices, ATypedProgramIsSaidToBeOne) {
  EXPECT_EQ(verdict("if (g4 == 1) jump menu 2; else jump title 1").what, kind::typed);
}

TEST_F(ActionChoices, VerdictsAreThoseOfTheProblemsOfTheMenu) {
  for (const char* const action :
       {"jump title 1", "jump title 4", "jump menu 2", "jump menu 7", "exit", "resume", "call menu",
        "jump title 1 chapter 4", "g1 = 2; jump menu 2", "jump", "jump next cell"}) {
    for (const bool jump_table : {false, true}) {
      p.jumptable = jump_table;
      p.menubuttons[0] = " 100/ 100/ 200/ 120/" + std::string(action) + "/black/white";
      bool refused = false;
      for (const finding& f : menu_problems(p, 1))
        refused = refused || (f.severity == finding_severity::error &&
                              f.rule.starts_with("command-") && f.item.part_number == 1);
      EXPECT_EQ(verdict(action).what == kind::wrong, refused) << action;
    }
  }
}

// At a title's end and at the beginning -----------------------------------------------------------

class CommandChoices : public ActionChoices {
 protected:
  static constexpr lead_source first_play{{map_place::kind::first_play, 0}, 0};
  static lead_source end_of(int title) { return {{map_place::kind::title, title}, 0}; }
  rows offered(const lead_source& from) const {
    rows commands;
    for (const action_choice& choice : command_choices(
             disc_of(p), [](int) { return std::string(); }, from))
      commands.push_back(choice.command);
    return commands;
  }
  action_verdict verdict(const lead_source& from, const std::string& text) const {
    return verdict_on_command(disc_of(p), from, text);
  }
};

TEST_F(CommandChoices, OfATitlesEndAreWhatATitleCanDo) {
  EXPECT_THAT(offered(end_of(1)),
              ElementsAre("jump title 1", "jump title 1", "jump title 1 chapter 2",
                          "jump title 1 chapter 3", "jump title 2", "jump title 2",
                          "jump title 2 chapter 2", "jump title 3", "call menu", "exit"));
  p.jumptable = true;
  const rows with_table = offered(end_of(1));
  EXPECT_THAT(rows(with_table.end() - 4, with_table.end()),
              ElementsAre("call menu 1", "call menu 2", "call last menu", "exit"));
}

TEST_F(CommandChoices, OfFirstPlayAreWhatADiscCanBeginWith) {
  EXPECT_THAT(offered(first_play), ElementsAre("jump title 1", "jump title 2", "jump title 3",
                                               "jump titleset 1 menu", "<default>"));
}

TEST_F(CommandChoices, AreInTheWordsOfTheDialogsOwnLists) {
  for (const bool jump_table : {false, true}) {
    p.jumptable = jump_table;
    const navcommands dialog = *navcommands::prepare(doc);
    for (const std::string& item : dialog.Combo1_items())
      EXPECT_THAT(offered(end_of(2)), testing::Contains(item));
    for (const std::string& item : dialog.firstplay_items())
      EXPECT_THAT(offered(first_play), testing::Contains(item));
  }
}

TEST_F(CommandChoices, AreAllRightThemselves) {
  for (const bool jump_table : {false, true}) {
    p.jumptable = jump_table;
    for (const lead_source& from : {first_play, end_of(1), end_of(3)})
      for (const std::string& command : offered(from))
        EXPECT_EQ(verdict(from, command).what, kind::fine) << command;
  }
}

TEST_F(CommandChoices, WhatACommandDoesIsSaid) {
  EXPECT_EQ(verdict(end_of(1), "jump title 1 chapter 2").text,
            "plays title 1: my tour 01, from chapter 2");
  EXPECT_EQ(verdict(end_of(1), "call menu").text, "shows menu 1: menu");
  EXPECT_EQ(verdict(end_of(1), "exit").text, "stops the disc");
  EXPECT_EQ(verdict(first_play, "jump titleset 1 menu").text, "shows menu 1: menu");
  p.jumptable = true;
  EXPECT_EQ(verdict(end_of(1), "call menu 2").text, "shows menu 2: extras");
  EXPECT_EQ(verdict(end_of(1), "call last menu").text, "shows the menu that was shown last");
}

TEST_F(CommandChoices, WithoutACommandWhatFollowsThenIsSaid) {
  EXPECT_EQ(verdict(end_of(2), " ").text, "plays title 3: last");
  EXPECT_EQ(verdict(end_of(3), "").text, "stops the disc");
  EXPECT_EQ(verdict(first_play, "<default>").text, "shows menu 1: menu");
  p.menulist.clear();
  EXPECT_EQ(verdict(first_play, "").text, "plays title 1: my tour 01");
  EXPECT_EQ(verdict_on_command({}, first_play, "").text, "");
}

TEST_F(CommandChoices, WhatIsWrongIsSaidAsTheCheckSaysIt) {
  for (const bool jump_table : {false, true}) {
    p.jumptable = jump_table;
    for (const char* const command :
         {"jump title 1", "jump title 4", "jump menu 2", "call menu", "call menu 2", "call menu 3",
          "call last menu", "exit", "jump title 1 chapter 4", "Call menu",
          "jump titleset 1 menu"}) {
      p.postinfo = {post_row(command), post_row("exit"), post_row("exit")};
      p.firstplay = command;
      const disc_description d = disc_of(p);
      for (const bool of_title : {true, false}) {
        const navigation_map map(d, false);
        const command_outcome outcome = of_title ? map.after_title(1) : map.beginning();
        const action_verdict said = verdict(of_title ? end_of(1) : first_play, command);
        EXPECT_EQ(said.what == kind::wrong, !outcome.problems.empty()) << command;
        if (!outcome.problems.empty()) {
          EXPECT_EQ(said.text, outcome.problems.front().clause);
        }
      }
    }
  }
  EXPECT_EQ(verdict(end_of(1), "jump title 9"),
            (action_verdict{kind::wrong, "leads to title 9, but there are 3 titles"}));
}

// Of several buttons -----------------------------------------------------------------------------

class ActionsOfSeveral : public ActionChoices {
 protected:
  rows actions() const {
    rows all;
    for (const std::string& record : shown().List1)
      all.push_back(parse_button(record).action);
    return all;
  }
  menu_editor& edit_four() {
    rows records;
    for (int i = 0; i < 4; ++i)
      records.push_back(testing_support::record_at(100, 100 + 40 * i, 200, 120 + 40 * i));
    menu_editor& e = edit(records[0] + "|" + records[1] + "|" + records[2] + "|" + records[3]);
    e.select({0, 1, 3}, 1);
    return e;
  }
};

TEST_F(ActionsOfSeveral, AllDoTheSameInOneStep) {
  menu_editor& e = edit_four();
  e.set_actions("jump menu 2", action_count::same);
  EXPECT_THAT(actions(), ElementsAre("jump menu 2", "jump menu 2", "exit", "jump menu 2"));
  EXPECT_EQ(shown().Combo1, "jump menu 2");
  EXPECT_EQ(e.undo_name(), "action of 3 buttons");
  e.undo();
  EXPECT_THAT(actions(), ElementsAre("exit", "exit", "exit", "exit"));
  e.redo();
  EXPECT_THAT(actions(), ElementsAre("jump menu 2", "jump menu 2", "exit", "jump menu 2"));
}

TEST_F(ActionsOfSeveral, CountOnFromTheFirst) {
  menu_editor& e = edit_four();
  e.set_actions("jump title 1 chapter  2", action_count::chapters);
  EXPECT_THAT(actions(), ElementsAre("jump title 1 chapter  2", "jump title 1 chapter  3", "exit",
                                     "jump title 2 chapter  1"));
  EXPECT_EQ(shown().Combo1, "jump title 1 chapter  3") << "the chosen one is the second of them";
  e.set_actions("jump title 1 chapter  1", action_count::titles);
  EXPECT_THAT(actions(), ElementsAre("jump title 1 chapter  1", "jump title 2 chapter  1", "exit",
                                     "jump title 3 chapter  1"));
}

TEST_F(ActionsOfSeveral, WithoutANextOneAButtonKeepsItsAction) {
  menu_editor& e = edit_four();
  EXPECT_EQ(e.outlook_of_actions("jump title 2 chapter  1", action_count::titles), 2);
  e.set_actions("jump title 2 chapter  1", action_count::titles);
  EXPECT_THAT(actions(),
              ElementsAre("jump title 2 chapter  1", "jump title 3 chapter  1", "exit", "exit"));
}

TEST_F(ActionsOfSeveral, OneButtonGetsItAsIfItWasTyped) {
  menu_editor& e = edit_first(testing_support::record_at(100, 100, 200, 120));
  e.set_actions("jump menu 2", action_count::chapters);
  EXPECT_THAT(actions(), ElementsAre("jump menu 2"));
  EXPECT_EQ(e.undo_name(), "action of button 1");
  EXPECT_EQ(record(), " 100/ 100/ 200/ 120/jump menu 2/black/black");
}

TEST_F(ActionsOfSeveral, NoneIsRefusedLikeAnyEventWithoutAButton) {
  menu_editor& e = edit(testing_support::record_at(100, 100, 200, 120));
  expect_choose_first();
  e.set_actions("jump menu 2", action_count::same);
  EXPECT_THAT(actions(), ElementsAre("exit"));
}

}  // namespace
}  // namespace corvane
