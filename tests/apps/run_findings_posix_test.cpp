// What corvane-author says at the end of a run of what was found in it.
#include "apps/author_fixture_posix.h"
#include "runner/run_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing_support::AuthorProgram;

class RunFindings : public AuthorProgram {
 protected:
  std::string log_line() const { return "log: " + app(run_file::log) + "\n"; }
};

TEST_F(RunFindings, MessageOfAToolIsToldWithItemAndRemedy) {
  add_tool("dvdauthor",
           "echo \"STAT: Processing $TEST_OUT/title1.mpg...\"\n"
           "echo 'WARN: attempt to update tv format from ntsc to pal; skipping'\n");
  EXPECT_EQ(run({project_, out()}), 1);
  EXPECT_THAT(stdout_,
              EndsWith("error: title 1, video: its video is PAL, but the disc is declared NTSC.\n"
                       "    a viewer would see: Players show no picture or a wrong one\n"
                       "    what to do: Encode it in the video standard of the project, or choose "
                       "the other standard\n"
                       "    rule: dvdauthor-mixed-standards\n"
                       "\n" +
                       log_line()));
}

TEST_F(RunFindings, WarningsOfADiscThatIsCompleteAreTold) {
  add_tool("dvdauthor",
           "echo \"STAT: Processing $TEST_OUT/title1.mpg...\"\n"
           "echo 'WARN: attempt to update aspect ratio from 4:3 to 16:9; skipping'\n"
           "echo 'WARN: unknown mpeg2 aspect ratio 1'\n" +
               real("dvdauthor"));
  EXPECT_EQ(run({project_, out()}), 0) << stderr_;
  EXPECT_THAT(stdout_, HasSubstr("\nwarning: title 1, video: its video is 16:9, but its titleset "
                                 "is declared 4:3.\n"));
  EXPECT_THAT(stdout_, Not(HasSubstr("note: "))) << "the log has it";
  EXPECT_THAT(stdout_, HasSubstr("Process complete."));
}

TEST_F(RunFindings, ToolThatEndsWithoutAWordIsToldWithItsItem) {
  add_tool("mplex", "exit 7\n");
  EXPECT_EQ(run({project_, out()}), 1);
  EXPECT_THAT(stdout_, HasSubstr("\nerror: title 1: mplex.exe ended with status 7.\n"));
}

TEST_F(RunFindings, ScriptRunnerThatDiesLeavesTheRunsOwn) {
  // The shell's parent is conspawn.
  add_tool("mplex", "kill -KILL $PPID\n");
  EXPECT_EQ(run({project_, out()}), 1);
  EXPECT_THAT(stdout_, HasSubstr("\nerror: disc: the run has failed.\n"));
}

TEST_F(RunFindings, TheyAreOfThisRunAndGoWithItsFiles) {
  add_tool("dvdauthor", "echo 'ERR:  no luck'\n");
  EXPECT_EQ(run({project_, out()}), 1);
  EXPECT_THAT(stdout_, HasSubstr("\nerror: disc: dvdauthor says \"ERR:  no luck\".\n"));
  EXPECT_THAT(folder_.read("app/findings.xml"), HasSubstr("no luck"));
  add_tool("dvdauthor", real("dvdauthor"));
  EXPECT_EQ(run({"--cleanup", project_, out()}), 0) << stderr_;
  EXPECT_THAT(stdout_, Not(HasSubstr("error: ")));
  EXPECT_FALSE(file_exists(app("findings.xml")));
}

}  // namespace
}  // namespace corvane
