// Commands by pointing: from a button, a title's end or first play to a title, a chapter or a menu.
#include "menus/lead_commands.h"

#include "project/disc_of.h"
#include "project/menu_rows.h"
#include "project/post_rows.h"
#include "project/project_file.h"
#include "support/command_test.h"

namespace corvane {
namespace {

using testing_support::rows;
using lead_kind = map_place::kind;

lead_target title(int number, int chapter = 0) {
  return {{lead_kind::title, number}, chapter};
}
lead_target menu(int number) {
  return {{lead_kind::menu, number}, 0};
}
const lead_source first_play{{lead_kind::first_play, 0}, 0};
lead_source end_of(int number) {
  return {{lead_kind::title, number}, 0};
}
lead_source button(int of_menu, int number) {
  return {{lead_kind::menu, of_menu}, number};
}

class LeadCommands : public testing_support::command_test {
 protected:
  LeadCommands() {
    for (const char* const name : {"a.vob", "b.vob", "c.vob"})
      add_files_and_title({name});
    p.chapters[1] = "00:00:00.00,00:00:05.00,00:00:10.00";
    folder.add("m.m2v");
    p.menulist.assign(2, folder.stored("m.m2v") + "/");
    p.moremenuoptions = {" 1\t00:00:00.0\t00:00:00.0\t 2", new_menu_options};
    p.menubuttons = {" 0/ 0/ 100/ 30/exit/black/white| 0/ 50/ 100/ 80/jump title 1/red/blue", ""};
  }
  bool lead(const lead_source& from, const lead_target& to) { return lead_command(doc, from, to); }
  std::string text_of(const lead_source& from, const lead_target& to) {
    const result<std::string> command = command_to(disc_of(p), from, to);
    return command ? *command : "refused: " + command.error;
  }
};

TEST_F(LeadCommands, ButtonGetsTheTextThatTheMenuEditorOffers) {
  p.saved = 1;
  EXPECT_TRUE(lead(button(1, 2), title(2, 3)));
  EXPECT_EQ(p.menubuttons[0],
            " 0/ 0/ 100/ 30/exit/black/white| 0/ 50/ 100/ 80/jump title 2 chapter  3/red/blue");
  EXPECT_EQ(p.moremenuoptions[0], " 1\t00:00:00.0\t00:00:00.0\t 2");
  EXPECT_EQ(p.saved, 0);
  EXPECT_TRUE(lead(button(1, 1), menu(2)));
  EXPECT_EQ(p.menubuttons[0],
            " 0/ 0/ 100/ 30/jump menu 2/black/white| 0/ 50/ 100/ 80/jump title 2 chapter "
            " 3/red/blue");
}

TEST_F(LeadCommands, IsOneStepThatIsUndone) {
  const std::string before = p.menubuttons[0];
  {
    const document::step step(doc, "change a command");
    EXPECT_TRUE(lead(button(1, 2), menu(2)));
  }
  EXPECT_EQ(doc.undo_name(), "change a command");
  doc.undo();
  EXPECT_EQ(p.menubuttons[0], before);
}

TEST_F(LeadCommands, EndOfATitleLeadsToTitlesChaptersAndTheFirstMenu) {
  EXPECT_TRUE(lead(end_of(1), title(3)));
  EXPECT_EQ(p.postinfo,
            (rows{post_row("jump title 3"), post_row("jump title 3"), post_row("exit")}));
  EXPECT_TRUE(lead(end_of(1), title(2, 3)));
  EXPECT_EQ(p.postinfo[0], post_row("jump title 2 chapter 3"));
  EXPECT_TRUE(lead(end_of(3), menu(1)));
  EXPECT_EQ(p.postinfo[2], post_row("call menu"));
}

TEST_F(LeadCommands, EndOfATitleLeadsToOtherMenusOnlyWithTheJumpTable) {
  EXPECT_TRUE(text_of(end_of(1), menu(2)).starts_with("refused: Without the jump table a title"));
  p.jumptable = true;
  EXPECT_EQ(text_of(end_of(1), menu(2)), "call menu 2");
  EXPECT_TRUE(lead(end_of(1), menu(2)));
  EXPECT_EQ(p.postinfo[0], post_row("call menu 2"));
}

TEST_F(LeadCommands, DiscBeginsWithATitleOrTheFirstMenu) {
  EXPECT_TRUE(lead(first_play, title(2)));
  EXPECT_EQ(p.firstplay, "jump title 2");
  EXPECT_TRUE(lead(first_play, menu(1)));
  EXPECT_EQ(p.firstplay, "jump titleset 1 menu");
  const project before = p;
  expect_refusal("A disc can begin with menu 1 or with a title, but not with another menu.");
  EXPECT_FALSE(lead(first_play, menu(2)));
  expect_refusal("A disc can only begin with a whole title, not with a chapter of one.");
  EXPECT_FALSE(lead(first_play, title(2, 2)));
  EXPECT_EQ(project_text(p), project_text(before));
}

TEST_F(LeadCommands, WhatIsNotThereIsRefused) {
  EXPECT_EQ(text_of(button(1, 1), title(9)), "refused: The project has no title 9.");
  EXPECT_EQ(text_of(button(1, 1), title(2, 4)), "refused: Title 2 has no chapter 4.");
  EXPECT_TRUE(
      text_of(button(1, 1), {{lead_kind::first_play, 0}, 0}).starts_with("refused: Nothing"));
  EXPECT_FALSE(lead(button(2, 1), title(1))) << "the menu has no button";
}

TEST_F(LeadCommands, HandEditedXmlIsLeftAlone) {
  p.customxml = "<dvdauthor/>";
  expect_refusal(
      "The project has hand-edited navigation XML, which says where things lead.  Please change it "
      "there (\"edit xml before authoring\").");
  EXPECT_FALSE(lead(button(1, 1), title(1)));
  EXPECT_EQ(p.customxml, "<dvdauthor/>");
}

// A command that is offered leads where it was pointed at, as the map then says.
TEST_F(LeadCommands, EachTargetThatIsOfferedIsLedTo) {
  for (const bool jump_table : {false, true}) {
    p.jumptable = jump_table;
    for (const lead_source& from : {first_play, end_of(1), end_of(2), button(1, 1), button(1, 2)})
      for (const lead_target& to : targets_from(disc_of(p), from)) {
        ASSERT_TRUE(lead(from, to));
        const disc_map map = map_of(disc_of(p), false);
        bool leads = false;
        for (const map_arrow& arrow : map.arrows)
          leads =
              leads ||
              (arrow.from == from.place && arrow.button == from.button && arrow.to == to.place &&
               (to.place.what == lead_kind::menu || arrow.chapter == std::max(1, to.chapter)));
        EXPECT_TRUE(leads) << name_of(from.place) << " to " << name_of(to.place) << "\n"
                           << map_text(map);
      }
  }
  EXPECT_EQ(targets_from(disc_of(p), button(1, 1)).size(), 2u + 3u + 2u);
}

}  // namespace
}  // namespace corvane
