// Dropped files with names that only this system allows.
#include "project/dropped_files.h"
#include "support/command_test.h"

#include <sys/stat.h>

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

TEST_F(DroppedFilesPosix, APipeIsNotWaitedFor) {
  const std::string pipe = folder.path("pipe.mp4");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  expect_refusal(
      "These files are neither streams nor a project:\r\n" + pipe +
      "\r\nVideo (*.m2v, *.m1v, *.mpv), video with NAV packets (*.vob, *.mpg, *.mpeg), audio "
      "(*.ac3, *.mp2, *.mpa) and one project file (*.cvp) can be dropped here.  How other films "
      "and sounds are made into those, the user guide (F1) says under \"What Corvane takes\".");
  drop_files(doc, {pipe});
}

}  // namespace
}  // namespace corvane
