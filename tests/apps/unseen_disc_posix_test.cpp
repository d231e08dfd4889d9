// No disc of ours is called complete unseen, whatever becomes of the file that says what it should
// be.
#include "apps/author_fixture_posix.h"
#include "platform/files/program_folder.h"
#include "runner/run_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing_support::AuthorProgram;
using testing_support::program_start;

class UnseenDisc : public AuthorProgram {
 protected:
  /// dvdauthor that takes away what its disc is to be held against, and then does this.
  void taking_dvdauthor(const std::string& then) const {
    add_tool("dvdauthor",
             "/bin/rm '" + app(run_file::foreseen) + "'\n(" + real("dvdauthor") + ")\n" + then);
  }

  /// conspawn on a script of one step in the program folder; gives its exit status.
  int run_script(const std::string& makes_disc) {
    program_start how;
    how.program = text_of(path_of(own_executable()).parent_path() / "conspawn");
    how.arguments = {
        folder_.add("app/process.bat", "echo *one step\r\necho *process complete\r\n")};
    how.environment = {{run_file::makes_disc_variable, makes_disc}};
    return run_as(how);
  }

  std::string log() const { return folder_.read("app/CorvaneLOG.txt"); }
};

TEST_F(UnseenDisc, DiscIsHeldAgainstAFileThatWentMeanwhile) {
  taking_dvdauthor("");
  EXPECT_EQ(run({project_, out()}), 0) << stderr_;
  EXPECT_THAT(log(), HasSubstr("the disc is read back and held against what was asked for"));
  EXPECT_THAT(log(), HasSubstr("the disc is as it should be"));
  expect_a_disc();
}

TEST_F(UnseenDisc, WrongDiscIsFoundOutThoughTheFileWent) {
  taking_dvdauthor("echo no >\"$TEST_OUT/VIDEO_TS/VTS_01_0.BUP\"\n");
  EXPECT_EQ(run({project_, out()}), 1);
  EXPECT_THAT(stdout_, Not(HasSubstr("Process complete.")));
  EXPECT_THAT(log(), HasSubstr("ERR:  VIDEO_TS/VTS_01_0.BUP: "));
  EXPECT_THAT(log(),
              HasSubstr("; a viewer would see a player that refuses the disc, stops or shows "
                        "something else; what to do: author the disc again; if it comes "
                        "again, look at the log; rule: disc-tables \r\n"));
  EXPECT_THAT(stdout_, HasSubstr("\n    file: VIDEO_TS/VTS_01_0.BUP\n"));
  EXPECT_THAT(stdout_, HasSubstr("\n    what to do: author the disc again"));
  EXPECT_THAT(stdout_, HasSubstr("\n    rule: disc-tables\n"));
  EXPECT_THAT(stderr_, Not(HasSubstr("ERR:"))) << "each is said once";
  EXPECT_FALSE(folder_exists(out() + "/VIDEO_TS"));
}

TEST_F(UnseenDisc, NothingIsRunWhenTheFileIsNotThere) {
  EXPECT_EQ(run_script("yes"), 1);
  EXPECT_THAT(stdout_, HasSubstr("ERR:  the disc could not be looked at, so nothing is run: \"" +
                                 app(run_file::foreseen) + "\" cannot be read: "));
  EXPECT_THAT(stdout_, Not(HasSubstr("one step")));
  EXPECT_THAT(stdout_, Not(HasSubstr("process complete")));
}

TEST_F(UnseenDisc, NothingIsRunWhenTheFileSaysNothing) {
  folder_.add("app/foreseen.xml", "<foreseen/>");
  EXPECT_EQ(run_script("yes"), 1);
  EXPECT_THAT(stdout_, HasSubstr("cannot be read: it names no output folder"));
  EXPECT_THAT(stdout_, Not(HasSubstr("one step")));
}

/// What an earlier run has left there says nothing of it.
TEST_F(UnseenDisc, ScriptThatMakesNoneIsRunWithoutALook) {
  folder_.add("app/foreseen.xml", "<foreseen folder=\"/of/an/earlier/disc\"/>");
  EXPECT_EQ(run_script(""), 0);
  EXPECT_EQ(stdout_, "*one step\n*process complete\n");
}

}  // namespace
}  // namespace corvane
