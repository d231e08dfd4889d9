// Dropped files with names that only this system allows.
#include "project/dropped_files.h"
#include "support/command_test.h"

namespace corvane {
namespace {

class DroppedFilesPosix : public testing_support::command_test {};

TEST_F(DroppedFilesPosix, NameThatCannotBeStoredIsRefusedByTheCommand) {
  const std::string video = folder.add("a|b.m2v");
  expect_refusal("\"" + video +
                 "\" cannot be used: its name contains a vertical bar (|).  Please rename it.");
  drop_files(doc, {video});
  EXPECT_TRUE(p.List1.empty());
}

}  // namespace
}  // namespace corvane
