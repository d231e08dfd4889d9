// corvane-author as a person starts it: exit statuses, what it says and what it leaves alone.
#include "apps/author_fixture_posix.h"
#include "platform/files/program_folder.h"
#include "runner/run_files.h"
#include "support/small_streams.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <sstream>

namespace corvane {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;
using testing_support::AuthorProgram;
using testing_support::program_start;

std::vector<std::string> lines_of(const std::string& text) {
  std::istringstream in(text);
  std::vector<std::string> lines;
  for (std::string line; std::getline(in, line);)
    lines.push_back(line);
  return lines;
}

TEST_F(AuthorProgram, ADiscIsAuthored) {
  EXPECT_EQ(run({project_, out()}), 0) << stderr_;
  expect_a_disc();
  EXPECT_THAT(calls(), ElementsAre("mplex", "dvdauthor"));
  EXPECT_THAT(lines_of(stdout_),
              ElementsAre("please wait while the titles are multiplexed", "multiplexing title: 1",
                          "authoring title(s)", "reading the disc back", "process complete",
                          "Process complete.  Please review the log for more information "
                          "(recommended).",
                          "log: " + app(run_file::log)));
  EXPECT_EQ(stderr_, "");
  const std::string log = folder_.read("app/CorvaneLOG.txt");
  EXPECT_THAT(log, StartsWith("Corvane 0.997 - 1/2/2005\r\n"));
  EXPECT_THAT(log, HasSubstr("VIDEO_FORMAT=NTSC"));
  EXPECT_FALSE(file_exists(out() + ".iso"));
}

TEST_F(AuthorProgram, OnATerminalThereIsOneLineWithThePercentage) {
  add_tool("mkisofs",
           "/bin/sleep 0.5\nprintf ' 67.9%% done\\n' >&2\n"
           "/bin/sleep 0.3\n" +
               real("mkisofs"));
  program_start how = start({"--iso", project_, out()});
  how.on_terminal = true;
  EXPECT_EQ(run_as(how), 0) << stderr_;
  EXPECT_THAT(stdout_, HasSubstr("\rmultiplexing title: 1"));
  EXPECT_THAT(stdout_, HasSubstr("\rgenerating udf iso  67 %"));
  EXPECT_THAT(stdout_, HasSubstr("\r\nlog: " + app(run_file::log) + "\r\n"));
  const std::string first = stdout_.substr(0, stdout_.find("\r\n"));
  EXPECT_THAT(first, HasSubstr("\rprocess complete"));
  std::istringstream in(first);
  for (std::string drawn; std::getline(in, drawn, '\r');)
    EXPECT_LT(drawn.size(), 40u) << "cut to the terminal's width";
}

TEST_F(AuthorProgram, TheImageIsMadeAsTheOptionsSayAndElseAsTheProjectSays) {
  project p = one_title(folder_);
  p.isocreate = true;
  const std::string with = save(p, "with.cvp");
  EXPECT_EQ(run({"--iso", project_, out()}), 0) << stderr_;
  EXPECT_TRUE(file_exists(out() + ".iso"));
  EXPECT_EQ(run({"--replace", with, out()}), 0) << stderr_;
  EXPECT_TRUE(file_exists(out() + ".iso"));
  fs::remove(out() + ".iso");
  EXPECT_EQ(run({"--replace", "--no-iso", with, out()}), 0) << stderr_;
  EXPECT_FALSE(file_exists(out() + ".iso"));
}

TEST_F(AuthorProgram, CleanUpHappensWhenItIsAskedFor) {
  EXPECT_EQ(run({project_, out()}), 0) << stderr_;
  EXPECT_TRUE(file_exists(app("process.bat")));
  EXPECT_TRUE(file_exists(app("config.xml")));
  EXPECT_EQ(run({"--replace", "--cleanup", project_, out()}), 0) << stderr_;
  EXPECT_FALSE(file_exists(app("process.bat")));
  EXPECT_FALSE(file_exists(app("config.xml")));
  EXPECT_TRUE(file_exists(app(run_file::log)));
}

TEST_F(AuthorProgram, AToolsErrorIsToldAndGivesStatusOne) {
  add_tool("dvdauthor", "echo 'ERR:  no VOBUs found.' >&2\n");
  EXPECT_EQ(run({project_, out()}), 1);
  EXPECT_THAT(stderr_, HasSubstr("There was an error.  Please review the log.\n"));
  EXPECT_THAT(stderr_, HasSubstr("corvane-author: ERR:  no VOBUs found.\n"));
  EXPECT_THAT(stdout_, EndsWith("log: " + app(run_file::log) + "\n"));
  EXPECT_THAT(folder_.read("app/CorvaneLOG.txt"), HasSubstr("ERR:  no VOBUs found."));
}

TEST_F(AuthorProgram, AToolThatFailsWithoutAWordGivesStatusOne) {
  add_tool("mplex", "exit 7\n");
  EXPECT_EQ(run({project_, out()}), 1);
  EXPECT_THAT(stdout_, HasSubstr("\nerror: title 1: mplex.exe ended with status 7.\n"));
}

TEST_F(AuthorProgram, AToolThatCrashesGivesStatusOne) {
  add_tool("mplex", "kill -SEGV $$\n");
  EXPECT_EQ(run({project_, out()}), 1);
  EXPECT_THAT(stdout_, HasSubstr("\nerror: title 1: mplex.exe was ended by signal 11 "));
}

TEST_F(AuthorProgram, BadArgumentsGiveStatusTwo) {
  EXPECT_EQ(run(std::vector<std::string>{}), 2);
  EXPECT_EQ(stderr_, "corvane-author: PROJECT.cvp is missing.\nTry \"corvane-author --help\".\n");
  EXPECT_EQ(run({"--no-such", project_, out()}), 2);
  EXPECT_THAT(stderr_, HasSubstr("--no-such"));
  EXPECT_EQ(stdout_, "");
  EXPECT_FALSE(folder_exists(folder_.path("app"))) << "nothing is made for them";
}

TEST_F(AuthorProgram, HelpAndVersionGoToStandardOutput) {
  EXPECT_EQ(run({"--help"}), 0);
  EXPECT_THAT(stdout_, StartsWith("Usage: corvane-author "));
  EXPECT_EQ(stderr_, "");
  EXPECT_EQ(run({"--version"}), 0);
  EXPECT_THAT(stdout_, HasSubstr("0.997"));
  EXPECT_FALSE(folder_exists(folder_.path("app")));
}

TEST_F(AuthorProgram, AProjectThatCannotBeReadGivesStatusTwo) {
  EXPECT_EQ(run({folder_.path("absent.cvp"), out()}), 2);
  EXPECT_THAT(stderr_, HasSubstr(folder_.path("absent.cvp")));
  EXPECT_EQ(run({folder_.add("torn.cvp", "Corvane 0.997 - 1/2/2005\r\n/x\r\n"), out()}), 2);
  EXPECT_THAT(stderr_, HasSubstr("torn.cvp"));
  EXPECT_EQ(run({folder_.path(), out()}), 2);
  EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(AuthorProgram, AProjectThatIsTooOldGivesStatusTwo) {
  EXPECT_EQ(run({folder_.add("old.cvp", "Corvane 0.995 - 1/1/2004\r\n"), out()}), 2);
  EXPECT_THAT(stderr_, HasSubstr("this project file is from Corvane 0.995 and is incompatible"));
}

TEST_F(AuthorProgram, AProjectWhoseFilesAreMissingGivesStatusTwo) {
  fs::remove(folder_.path("movie.ac3"));
  EXPECT_EQ(run({project_, out()}), 2);
  EXPECT_EQ(stderr_, "corvane-author: " + folder_.path("movie.ac3") + " appears to be missing\n");
  EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(AuthorProgram, AProjectThatCannotBeAuthoredAsItStandsGivesStatusTwo) {
  project p = one_title(folder_);
  p.delay = {"0 & calc"};
  EXPECT_EQ(run({save(p, "odd.cvp"), out()}), 2);
  EXPECT_THAT(stderr_, HasSubstr("Title 1 has the A/V delay \"0 & calc\""));
  EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(AuthorProgram, AnOutputFolderThatCannotBeUsedGivesStatusTwo) {
  folder_.add("disc", "a file");
  EXPECT_EQ(run({project_, out()}), 2);
  EXPECT_THAT(stderr_, HasSubstr("\"" + out() + "\" is a file, not a folder."));
  EXPECT_EQ(folder_.read("disc"), "a file");
  EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(AuthorProgram, AFileOfTheRunThatCannotBeWrittenGivesStatusTwo) {
  folder_.add("app/config.xml/in the way");
  EXPECT_EQ(run({project_, out()}), 2);
  EXPECT_THAT(stderr_, HasSubstr("The file \"" + app("config.xml") + "\" could not be written: "));
  EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(AuthorProgram, AFilmNamedAsARunNamesItsOwnIsNotErased) {
  folder_.add("disc/title7.mpg", "a film");
  EXPECT_EQ(run({"--replace", project_, out()}), 2);
  EXPECT_THAT(stderr_, HasSubstr("holds the file \"" + out() + "/title7.mpg\""));
  EXPECT_EQ(folder_.read("disc/title7.mpg"), "a film");
  EXPECT_THAT(calls(), IsEmpty());
}

TEST_F(AuthorProgram, NothingToAuthorGivesStatusTwo) {
  EXPECT_EQ(run({save(project(), "empty.cvp"), out()}), 2);
  EXPECT_EQ(stderr_, "corvane-author: please add more titles\n");
}

TEST_F(AuthorProgram, AFolderThatHoldsADiscGivesStatusTwoAndIsNotTouched) {
  folder_.add("disc/VIDEO_TS/old.vob", "old");
  EXPECT_EQ(run({project_, out()}), 2);
  EXPECT_THAT(stderr_, HasSubstr(out()));
  EXPECT_THAT(stderr_, HasSubstr("--replace"));
  EXPECT_EQ(folder_.read("disc/VIDEO_TS/old.vob"), "old");
  EXPECT_THAT(calls(), IsEmpty());
  EXPECT_FALSE(file_exists(app("process.bat")));
}

// The program works in its own folder by then.
TEST_F(AuthorProgram, AFolderGivenRelativeIsNamedAsTheUserMeantIt) {
  folder_.add("disc/VIDEO_TS/old.vob", "old");
  program_start how = start({"film.cvp", "disc"});
  how.folder = folder_.path();
  EXPECT_EQ(run_as(how), 2);
  EXPECT_THAT(stderr_, HasSubstr("\"" + out() + "\" already holds a DVD"));
}

TEST_F(AuthorProgram, ReplaceRemovesTheEarlierDiscAndNothingElse) {
  folder_.add("disc/VIDEO_TS/old.vob", "old");
  folder_.add("disc/AUDIO_TS/old", "old");
  folder_.add("disc/cover.jpg", "mine");
  EXPECT_EQ(run({"--replace", project_, out()}), 0) << stderr_;
  EXPECT_FALSE(file_exists(folder_.path("disc/VIDEO_TS/old.vob")));
  EXPECT_FALSE(file_exists(folder_.path("disc/AUDIO_TS/old")));
  EXPECT_EQ(folder_.read("disc/cover.jpg"), "mine");
  expect_a_disc();
}

TEST_F(AuthorProgram, AToolThatIsNotInstalledGivesStatusThreeBeforeAnythingRuns) {
  remove_tool("dvdauthor");
  remove_tool("mkisofs");
  EXPECT_EQ(run({"--iso", project_, out()}), 3);
  EXPECT_THAT(stderr_,
              HasSubstr("dvdauthor is not installed.  It comes with the package dvdauthor."));
  EXPECT_THAT(stderr_,
              HasSubstr("mkisofs is not installed.  It comes with the package genisoimage."));
  EXPECT_THAT(stderr_, Not(HasSubstr("mplex")));
  EXPECT_THAT(calls(), IsEmpty());
  EXPECT_FALSE(folder_exists(out()));
  EXPECT_EQ(run({"--no-iso", "--prepare", project_, out()}), 3);
}

TEST_F(AuthorProgram, AToolThatTheProjectDoesNotNeedMayBeMissing) {
  remove_tool("mkisofs");
  EXPECT_EQ(run({project_, out()}), 0) << stderr_;
}

TEST_F(AuthorProgram, MissingToolsAreToldOnceAndBeforeAnythingElse) {
  remove_tool("gm");
  remove_tool("mpeg2enc");
  remove_tool("jpeg2yuv");
  EXPECT_EQ(run({project_, out()}), 0) << stderr_;
  const std::string notice =
      "Corvane runs tools that are not installed:\n\n"
      "mpeg2enc, jpeg2yuv: package mjpegtools\n"
      "gm: package graphicsmagick\n";
  EXPECT_THAT(stderr_, HasSubstr(notice));
  EXPECT_EQ(stderr_.find("Corvane runs tools"), stderr_.rfind("Corvane runs tools"));
  EXPECT_THAT(stdout_, HasSubstr("Process complete."));
}

TEST_F(AuthorProgram, NothingIsToldOfToolsWhenAllAreThere) {
  EXPECT_EQ(run({project_, out()}), 0) << stderr_;
  EXPECT_THAT(stderr_, Not(HasSubstr("not installed")));
}

TEST_F(AuthorProgram, PrepareWritesAndNamesTheFilesAndRunsNothing) {
  folder_.add("disc/VIDEO_TS/old.vob", "old");
  EXPECT_EQ(run({"--prepare", "--replace", project_, out()}), 0) << stderr_;
  EXPECT_THAT(lines_of(stdout_), ElementsAre(app("process.bat"), app("config.xml")));
  for (const std::string& file : lines_of(stdout_))
    EXPECT_TRUE(file_exists(file)) << file;
  EXPECT_EQ(stderr_, "");
  EXPECT_THAT(calls(), IsEmpty());
  EXPECT_EQ(folder_.read("disc/VIDEO_TS/old.vob"), "old");
  EXPECT_FALSE(file_exists(app(run_file::log)));
}

TEST_F(AuthorProgram, HandEditedXmlNamesTheFolderItself) {
  project p = one_title(folder_);
  p.customxml = "<!-- mine -->\r\n<dvdauthor dest=\"" + out() +
                "\">\r\n<vmgm/>\r\n<titleset><titles><pgc><vob file=\"" + out() +
                "/title1.mpg\"/></pgc></titles></titleset>\r\n</dvdauthor>\r\n";
  const std::string edited = save(p, "edited.cvp");
  EXPECT_EQ(run({edited, folder_.path("elsewhere")}), 2);
  EXPECT_THAT(stderr_, HasSubstr("\"" + out() + "\""));
  EXPECT_THAT(stderr_, HasSubstr("\"" + folder_.path("elsewhere") + "\""));
  EXPECT_THAT(calls(), IsEmpty());
  EXPECT_EQ(run({edited, out() + "/"}), 0) << stderr_;
  EXPECT_EQ(folder_.read("app/config.xml"), p.customxml);
}

TEST_F(AuthorProgram, AProgramFolderThatCannotBeMadeGivesStatusTwo) {
  folder_.add("file");
  program_start how = start({project_, out()});
  how.environment.emplace_back("CORVANE_HOME", folder_.path("file/app"));
  EXPECT_EQ(run_as(how), 2);
  EXPECT_THAT(stderr_, HasSubstr(folder_.path("file/app")));
}

TEST_F(AuthorProgram, PathsCountFromWhereItWasStarted) {
  program_start how = start({"./film.cvp", "sub/../disc"});
  how.folder = folder_.path();
  EXPECT_EQ(run_as(how), 0) << stderr_;
  EXPECT_TRUE(file_exists(folder_.path("disc/VIDEO_TS/VIDEO_TS.IFO")));
}

TEST_F(AuthorProgram, NamesMayHoldWhatShellsAndPrintfTakeForTheirOwn) {
  const std::string odd = "50% & Müller's #1 ! ^ $HOME `x` 字 %d";
  folder_.add(odd + "/movie.m2v", testing_support::small_video());
  folder_.add(odd + "/movie.ac3", testing_support::small_sound());
  project p = one_title(folder_);
  p.List11 = {folder_.stored(odd + "/movie.m2v") + "/" + folder_.stored(odd + "/movie.ac3")};
  program_start how = start({save(p, odd + "/film & more.cvp"), folder_.path(odd + "/disc")});
  how.environment.emplace_back("TEST_OUT", folder_.path(odd + "/disc"));
  how.environment.emplace_back("CORVANE_HOME", folder_.path(odd + "/app"));
  EXPECT_EQ(run_as(how), 0) << stderr_;
  EXPECT_THAT(calls(), ElementsAre("mplex", "dvdauthor"));
  EXPECT_TRUE(file_exists(folder_.path(odd + "/disc/VIDEO_TS/VIDEO_TS.IFO")));
}

TEST_F(AuthorProgram, ThePreferencesAreNeitherReadNorChanged) {
  folder_.add("config/corvane/preferences", "[preferences]\ncleanup = yes\ndvdregion = PAL\n");
  EXPECT_EQ(run({project_, out()}), 0) << stderr_;
  EXPECT_EQ(folder_.read("config/corvane/preferences"),
            "[preferences]\ncleanup = yes\ndvdregion = PAL\n");
  EXPECT_TRUE(file_exists(app("process.bat"))) << "cleaned up, as the window would";
}

TEST_F(AuthorProgram, AnInstalledProgramFindsItsScriptRunner) {
  const fs::path built = path_of(own_executable()).parent_path();
  fs::create_directories(folder_.path("usr/bin"));
  fs::create_directories(folder_.path("usr/libexec/corvane"));
  fs::copy_file(built / "corvane-author", folder_.path("usr/bin/corvane-author"));
  fs::copy_file(built / "conspawn", folder_.path("usr/libexec/corvane/conspawn"));
  program_start how = start({project_, out()});
  how.program = folder_.path("usr/bin/corvane-author");
  EXPECT_EQ(run_as(how), 0) << stderr_;
  EXPECT_EQ(fs::read_symlink(app("bin/conspawn.exe")),
            folder_.path("usr/libexec/corvane/conspawn"));
}

TEST_F(AuthorProgram, WithoutItsScriptRunnerTheRunDoesNotStart) {
  fs::create_directories(folder_.path("usr/bin"));
  fs::copy_file(path_of(own_executable()).parent_path() / "corvane-author",
                folder_.path("usr/bin/corvane-author"));
  program_start how = start({project_, out()});
  how.program = folder_.path("usr/bin/corvane-author");
  EXPECT_EQ(run_as(how), 1);
  EXPECT_THAT(stderr_, HasSubstr("Binaries not found, please reinstall the program."));
  EXPECT_THAT(calls(), IsEmpty());
  folder_.add("disc/VIDEO_TS/old.vob", "old");
  how.arguments = {"--replace", project_, out()};
  EXPECT_EQ(run_as(how), 1);
  EXPECT_THAT(stderr_, HasSubstr("Binaries not found, please reinstall the program."));
  EXPECT_EQ(folder_.read("disc/VIDEO_TS/old.vob"), "old");
}

}  // namespace
}  // namespace corvane
