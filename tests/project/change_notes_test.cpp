// What the status bar tells about what a command has changed beside.
#include "project/change_notes.h"

#include "project/post_rows.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

project with_commands(std::vector<std::string> commands) {
  project p;
  p.List11 = {"\\a.vob", "\\b.vob"};
  for (const std::string& command : commands)
    p.postinfo.push_back(post_row(command));
  return p;
}

TEST(ChangeNotes, AddingATitleTellsOfTheCommandsThatItRemoves) {
  project after = with_commands({});
  after.List11.emplace_back("\\c.vob");
  EXPECT_EQ(
      change_note(with_commands({"call menu", "", "call menu"}), after),
      "The commands after 2 titles were removed, as adding a title does; \"undo\" brings back "
      "what was.");
  EXPECT_EQ(change_note(with_commands({"call menu"}), after).substr(0, 33),
            "The command after a title was rem");
  EXPECT_EQ(change_note(with_commands({""}), after), "");
  after.List11.front() = "\\other.vob";
  EXPECT_EQ(change_note(with_commands({"call menu"}), after), "") << "another project";
}

TEST(ChangeNotes, ALockedRegionWithNothingLoadedIsTold) {
  project locked;
  locked.Comboregion_enabled = false;
  EXPECT_EQ(change_note({}, locked),
            "The DVD format stays locked although nothing is loaded; \"new project\" frees it.");
  EXPECT_EQ(change_note(locked, locked), "") << "once";
  locked.menulist = {"\\m.m2v/"};
  EXPECT_EQ(change_note({}, locked), "");
}

}  // namespace
}  // namespace corvane
