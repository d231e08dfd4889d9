// What commands led to before titles and menus moved: when it is noted, and when forgotten.
#include "project/moved_commands.h"

#include "platform/files/paths.h"
#include "project/button_data.h"
#include "project/menu_rows.h"
#include "project/project_file.h"
#include "project/title_commands.h"
#include "project/title_rows.h"
#include "support/command_test.h"

#include <gmock/gmock.h>

namespace corvane {
namespace {

using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using whole = finding_item::whole_kind;
using part = finding_item::part_kind;

class MovedCommands : public testing_support::command_test {
 protected:
  MovedCommands() {
    add_files_and_title({"one.m2v", "one.ac3"});
    add_files_and_title({"two.m2v", "two.ac3"});
    for (const char* const menu : {"first.m2v", "second.m2v"})
      folder.add(menu);
    p.firstplay = "jump title 2";
    p.postinfo = {"jump title 1"};
    p.menulist = {folder.stored("first.m2v") + "/", folder.stored("second.m2v") + "/"};
    p.moremenuoptions = {new_menu_options, new_menu_options};
    p.menubuttons = {"0/0/9/9/jump menu 2/black/black|0/0/9/9/exit/black/black",
                     "0/0/9/9/jump title 2 chapter 1/black/black"};
  }
  /// "menu 2, button 1: jump title 2 chapter 1 -> two.m2v".
  std::vector<std::string> noted() const {
    std::vector<std::string> lines;
    for (const command_target& target : p.led_to) {
      finding f;
      f.item = target.item;
      lines.push_back(place_text(f) + ": " + target.text + " -> " +
                      std::string(file_name_of(target.video)));
    }
    return lines;
  }
};

TEST_F(MovedCommands, AreNotedWhenATitleIsRemovedOrMoved) {
  EXPECT_THAT(noted(), IsEmpty());
  p.selected = 0;
  titledown_command(doc);
  const std::vector<std::string> all = {"disc, command: jump title 2 -> two.m2v",
                                        "title 1, command: jump title 1 -> one.m2v",
                                        "menu 1, button 1: jump menu 2 -> second.m2v",
                                        "menu 2, button 1: jump title 2 chapter 1 -> two.m2v"};
  EXPECT_EQ(noted(), all);
  p.selected = 0;
  remove_title_command(doc);
  EXPECT_EQ(noted(), all) << "where they led first";
}

TEST_F(MovedCommands, ATitleThatGoesOnWithTheNextOneAlwaysDoes) {
  add_files_and_title({"three.m2v", "three.ac3"});
  p.postinfo = {"jump title 2", "jump title 3 chapter 1", "jump title 1"};
  note_command_targets(p);
  EXPECT_THAT(noted(), AllOf(Not(Contains(StartsWith("title 1, command"))),
                             Contains("title 2, command: jump title 3 chapter 1 -> three.m2v"),
                             Contains("title 3, command: jump title 1 -> one.m2v")));
}

TEST_F(MovedCommands, ThatLeadNowhereForAWhileAreStillKnown) {
  note_command_targets(p);
  remove_title(p, 1);
  note_command_targets(p);
  EXPECT_EQ(noted()[0], "disc, command: jump title 2 -> two.m2v");
  EXPECT_EQ(noted().size(), 4u);
}

TEST_F(MovedCommands, AreNotHeldAgainstXmlThatWasWrittenAfterwards) {
  note_command_targets(p);
  EXPECT_EQ(noted_command_targets(p), p.led_to);
  p.customxml = "<dvdauthor/>";
  EXPECT_THAT(noted_command_targets(p), IsEmpty());
}

TEST_F(MovedCommands, WithAnotherTextAreNotedAnew) {
  note_command_targets(p);
  p.firstplay = "jump title 1";
  note_command_targets(p);
  EXPECT_EQ(noted()[0], "disc, command: jump title 1 -> one.m2v");
}

TEST_F(MovedCommands, OfARemovedMenuAreForgottenAndOthersMoveUpWithTheirMenu) {
  note_command_targets(p);
  forget_removed_menu(p, 1);
  EXPECT_THAT(noted(), ElementsAre("disc, command: jump title 2 -> two.m2v",
                                   "title 1, command: jump title 1 -> one.m2v",
                                   "menu 1, button 1: jump title 2 chapter 1 -> two.m2v"));
}

TEST_F(MovedCommands, AreForgottenWhenTheirEditorIsAccepted) {
  note_command_targets(p);
  store_edited_menu(p, 2, {"0/0/9/9/jump title 2 chapter 1/black/black"}, "");
  EXPECT_THAT(noted(), ElementsAre("disc, command: jump title 2 -> two.m2v",
                                   "title 1, command: jump title 1 -> one.m2v",
                                   "menu 1, button 1: jump menu 2 -> second.m2v"));
  forget_targets_of_titles(p);
  EXPECT_THAT(noted(), ElementsAre("menu 1, button 1: jump menu 2 -> second.m2v"));
}

TEST_F(MovedCommands, AreThoseOfTheProjectThatIsOpen) {
  const std::string file = folder.add("film.cvp", project_text(p));
  note_command_targets(p);
  ASSERT_TRUE(loadprojectf(doc, file));
  EXPECT_THAT(noted(), IsEmpty());
}

TEST_F(MovedCommands, AreNamedAndCarriedAlongByOneCommand) {
  p.selected = 0;
  titledown_command(doc);
  const auto moved = moved_commands(p);
  EXPECT_EQ(moved_commands_note(moved),
            "First play, the command after title 1 and button 1 of menu 2 lead elsewhere than "
            "before.");
  p.saved = 1;
  carry_commands_along(doc);
  EXPECT_EQ(p.firstplay, "jump title 1");
  EXPECT_THAT(p.postinfo, ElementsAre(StartsWith("jump title 2 ")));
  EXPECT_THAT(p.menubuttons, ElementsAre("0/0/9/9/jump menu 2/black/black|0/0/9/9/exit/black/black",
                                         "0/0/9/9/jump title 1 chapter 1/black/black"));
  EXPECT_THAT(moved_commands(p), IsEmpty());
  EXPECT_EQ(moved_commands_note({}), "");
  EXPECT_EQ(p.saved, 0);
  titledown_command(doc);
}

TEST_F(MovedCommands, OfOneMenuAreNamedTogether) {
  std::vector<moved_command> moved;
  const auto button = [&](int menu, int number) {
    moved.push_back({{{whole::menu, menu, part::button, number}, "jump title 1", "\\a.m2v"}, {}});
  };
  button(1, 2);
  EXPECT_EQ(moved_commands_note(moved), "Button 2 of menu 1 leads elsewhere than before.");
  button(1, 3);
  button(1, 5);
  EXPECT_EQ(moved_commands_note(moved), "Buttons 2, 3 and 5 of menu 1 lead elsewhere than before.");
  for (int menu = 2; menu < 7; ++menu)
    button(menu, 1);
  EXPECT_EQ(moved_commands_note(moved),
            "Buttons 2, 3 and 5 of menu 1, button 1 of menu 2, button 1 of menu 3 and 3 more lead "
            "elsewhere than before.");
}

TEST_F(MovedCommands, AreNotCarriedToATitleThatIsGone) {
  p.selected = 1;
  remove_title_command(doc);
  add_files_and_title({"three.m2v", "three.ac3"});
  const auto moved = moved_commands(p);
  ASSERT_EQ(moved.size(), 2u);
  EXPECT_EQ(moved[0].now, std::nullopt);
  carry_commands_along(doc);
  EXPECT_EQ(p.firstplay, "jump title 2");
  EXPECT_EQ(moved_commands(p).size(), 2u) << "they stay named";
}

TEST_F(MovedCommands, AreNotCarriedWhereTheProjectHasTheTitleTwice) {
  add_title(p, p.List11[1]);
  p.selected = 1;
  titleup_command(doc);
  ASSERT_FALSE(moved_commands(p).empty());
  carry_commands_along(doc);
  EXPECT_EQ(p.firstplay, "jump title 2");
}

}  // namespace
}  // namespace corvane
