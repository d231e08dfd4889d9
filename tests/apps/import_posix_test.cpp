// "corvane-author --import" with the real program, conspawn and ffmpeg.
#include "apps/author_fixture_posix.h"
#include "platform/files/files.h"
#include "support/small_streams.h"

#include <gmock/gmock.h>

#include <csignal>
#include <cstdlib>

namespace corvane {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing_support::AuthorProgram;
using testing_support::endless;
using testing_support::process_runs;
using testing_support::running_program;
using testing_support::wait_until;

class ImportProgram : public AuthorProgram {
 protected:
  ImportProgram() { add_tool("ffmpeg", real("ffmpeg")); }

  /// A film that ffmpeg makes of these arguments.
  std::string film(const std::string& name, const std::string& arguments) {
    const std::string path = folder_.path(name);
    const std::string command = "ffmpeg -nostdin -v error -y " + arguments + " '" + path + "'";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    return path;
  }
  std::string phone() {
    return film("phone.mp4",
                "-f lavfi -i testsrc2=s=640x360:r=25 -f lavfi -i sine=r=44100 -t 2 -c:v mpeg4 -c:a "
                "aac");
  }
  std::string to() const { return folder_.path("streams"); }
  std::string made(const std::string& name) const { return folder_.path("streams/" + name); }
  std::string new_project() const { return folder_.path("new.cvp"); }
};

TEST_F(ImportProgram, MakesTheProjectWhereThereIsNone) {
  EXPECT_EQ(run({"--import", phone(), "--to", to(), new_project()}), 0) << stderr_;
  EXPECT_EQ(stderr_, "");
  EXPECT_THAT(
      stdout_,
      AllOf(HasSubstr("phone.mp4\n  video: MPEG-4, 640x360, 25 a second - encoded: it is MPEG-4"),
            HasSubstr("\n  audio: AAC, mono, 44.1 kHz - encoded: it is AAC"),
            HasSubstr("\n1 file, 0:02 of film: about "),
            HasSubstr("\nimporting phone.mp4, first pass\nimporting phone.mp4\n"),
            HasSubstr("\n" + made("phone.m2v") + "\n" + made("phone.ac3") + "\n"),
            HasSubstr("\nlog: " + app("CorvaneIMPORT.txt") + "\n")));
  const std::string text = folder_.read("new.cvp");
  EXPECT_THAT(text, HasSubstr("phone.m2v/"));
  EXPECT_THAT(text, HasSubstr("\r\nPAL\r\n"));
  EXPECT_EQ(run({"--check", new_project()}), 0) << stdout_;
  EXPECT_EQ(run({new_project(), out()}), 0) << stderr_;
  expect_a_disc();
}

TEST_F(ImportProgram, AddsToAProjectAndGoesByItsFirstTitle) {
  EXPECT_EQ(run({"--import", phone(), "--to", to(), "--constant", "8", project_}), 0) << stderr_;
  const std::string text = folder_.read("film.cvp");
  EXPECT_THAT(text, HasSubstr("movie.ac3\r\n"));
  EXPECT_THAT(text, HasSubstr("phone.m2v/"));
  EXPECT_THAT(text, HasSubstr("\r\nNTSC\r\n"));
  EXPECT_THAT(stdout_, Not(HasSubstr("first pass")));
}

TEST_F(ImportProgram, WhatIsNoFilmIsNamedAndTheOthersAreImported) {
  const std::string text = folder_.add("notes.mp4", "no film");
  EXPECT_EQ(run({"--import", text, phone(), "--to", to(), "--constant", "8", new_project()}), 1);
  EXPECT_THAT(stderr_, HasSubstr("\"" + text + "\" is left out: it is not a file with video"));
  EXPECT_TRUE(file_exists(made("phone.m2v")));
  EXPECT_TRUE(file_exists(new_project()));
}

TEST_F(ImportProgram, WithoutAnyFilmNoProjectIsMade) {
  EXPECT_EQ(run({"--import", folder_.path("absent.mp4"), "--to", to(), new_project()}), 2);
  EXPECT_THAT(stderr_, HasSubstr("absent.mp4"));
  EXPECT_FALSE(file_exists(new_project()));
}

TEST_F(ImportProgram, WhatIsThereKeepsItsName) {
  folder_.add("streams/phone.m2v", "mine");
  EXPECT_EQ(run({"--import", phone(), "--to", to(), "--constant", "8", new_project()}), 0);
  EXPECT_EQ(folder_.read("streams/phone.m2v"), "mine");
  EXPECT_TRUE(file_exists(made("phone (2).m2v")));
}

TEST_F(ImportProgram, AFailureNamesFileAndReasonAndLeavesNothing) {
  add_tool("ffmpeg", "for last; do :; done\necho half >\"$last\"\nexit 1\n");
  EXPECT_EQ(run({"--import", phone(), "--to", to(), new_project()}), 1);
  EXPECT_THAT(stderr_, HasSubstr("phone.mp4\" was not imported: ffmpeg.exe ended with status 1"));
  EXPECT_THAT(files_in(to()), IsEmpty());
  EXPECT_FALSE(file_exists(new_project()));
}

TEST_F(ImportProgram, CtrlCEndsTheToolAndLeavesNothing) {
  const std::string file = phone();
  add_tool("ffmpeg", "for last; do :; done\necho half >\"$last\"\n" + std::string(endless));
  running_program program(start({"--import", file, "--to", to(), project_}));
  const std::string before = folder_.read("film.cvp");
  ASSERT_TRUE(started("ffmpeg"));
  const pid_t tool = tool_process("ffmpeg");
  program.send(SIGINT);
  EXPECT_EQ(program.wait(), 130);
  EXPECT_TRUE(wait_until([&] { return !process_runs(tool); }));
  EXPECT_THAT(files_in(to()), IsEmpty());
  EXPECT_EQ(folder_.read("film.cvp"), before);
}

TEST_F(ImportProgram, WithoutFfmpegItIsSaidHowToGetIt) {
  remove_tool("ffmpeg");
  EXPECT_EQ(run({"--import", folder_.path("a.mp4"), "--to", to(), new_project()}), 3);
  EXPECT_EQ(stderr_,
            "corvane-author: ffmpeg is not installed.  It comes with the package "
            "ffmpeg.\n");
  EXPECT_FALSE(folder_exists(to()));
}

TEST_F(ImportProgram, EditedXmlStopsItBeforeAnythingIsDone) {
  project p = one_title(folder_);
  p.customxml = "<dvdauthor/>";
  EXPECT_EQ(run({"--import", phone(), "--to", to(), save(p)}), 2);
  EXPECT_THAT(stderr_, HasSubstr("edited the XML manually"));
  EXPECT_FALSE(folder_exists(to()));
}

}  // namespace
}  // namespace corvane
