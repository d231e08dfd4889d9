// "corvane-author --make-menus" with the real program, conspawn and tools.
#include "apps/author_fixture_posix.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "support/full_disk_posix.h"
#include "support/small_streams.h"

#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace corvane {
namespace {

using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::Not;
using testing_support::AuthorProgram;
using testing_support::endless;
using testing_support::process_runs;
using testing_support::program_start;
using testing_support::running_program;
using testing_support::wait_until;

class MakeMenusProgram : public AuthorProgram {
 protected:
  MakeMenusProgram() {
    for (const char* const tool : {"gm", "mpeg2enc", "jpeg2yuv", "ffmpeg", "spumux"})
      add_tool(tool, real(tool));
    before_ = folder_.read("film.cvp");
  }

  std::string menus() const { return folder_.path("menus"); }
  std::vector<std::string> arguments(const std::string& design = "amber") const {
    return {"--make-menus", design, "--to", menus(), project_};
  }
  /// But for what the other test programs' folders hold.
  void expect_nothing_made() const {
    EXPECT_THAT(files_in(menus()), IsEmpty());
    EXPECT_EQ(folder_.read("film.cvp"), before_);
    EXPECT_FALSE(entry_exists(app("menu-pages")));
    EXPECT_FALSE(entry_exists(app("unfinished-import.txt")));
    EXPECT_FALSE(entry_exists(app("still.jpg")));
  }

  std::string before_;  ///< the project's file
};

TEST_F(MakeMenusProgram, SaysWhatItDoesAndSavesTheProject) {
  EXPECT_EQ(run({"--make-menus", "amber", project_}), 0) << stderr_;
  EXPECT_EQ(stderr_, "");
  EXPECT_EQ(stdout_, "drawing menu 1 of 1\nmaking the background of menu 1 of 1\n" +
                         folder_.path("titles-1.m2v") + "\n1 menu was made\n");
  EXPECT_THAT(folder_.read("film.cvp"),
              AllOf(HasSubstr("titles-1.m2v/"), HasSubstr("jump title 1"), HasSubstr("call menu")));
  EXPECT_TRUE(file_exists(folder_.path("titles-1.menu")));
  EXPECT_THAT(folder_.read("app/CorvaneMENUS.txt"), HasSubstr("*process complete"));
  EXPECT_FALSE(entry_exists(app("menu-pages")));
  EXPECT_EQ(run({project_, out()}), 0) << stderr_;
  expect_a_disc();
}

TEST_F(MakeMenusProgram, MadeAgainTheyAreInThePlaceOfThoseBefore) {
  EXPECT_EQ(run({"--make-menus", "amber", project_}), 0) << stderr_;
  EXPECT_EQ(run({"--make-menus", "Harbour", project_}), 0) << stderr_;
  EXPECT_THAT(stdout_, HasSubstr(folder_.path("titles-1 (2).m2v")));
  const std::string text = folder_.read("film.cvp");
  EXPECT_THAT(text, HasSubstr("titles-1 (2).m2v/"));
  EXPECT_THAT(text, Not(HasSubstr("titles-1.m2v/")));
}

TEST_F(MakeMenusProgram, ADesignMayBeAFileOrOneOfTheUsersOwn) {
  const std::string text =
      "name = Mine\n[background]\ncolours = #203040\n[entries]\narrangement = list\n";
  running_program there([&] {
    auto how = start({"--make-menus", "mine.design", "--to", "menus", "film.cvp"});
    how.folder = folder_.path();
    folder_.add("mine.design", text);
    return how;
  }());
  EXPECT_EQ(there.wait(), 0) << there.err();
  EXPECT_TRUE(file_exists(folder_.path("menus/titles-1.m2v")));
  folder_.add("app/my designs/home.design", text);
  EXPECT_EQ(run(arguments("home")), 0) << stderr_;
  EXPECT_TRUE(file_exists(folder_.path("menus/titles-1 (2).m2v")));
}

TEST_F(MakeMenusProgram, AnUnknownDesignIsToldWithThoseThatThereAre) {
  EXPECT_EQ(run(arguments("no such one")), 2);
  EXPECT_THAT(stderr_, AllOf(HasSubstr("There is no design \"no such one\"; there are "),
                             HasSubstr("amber"), HasSubstr("slate")));
  expect_nothing_made();
}

TEST_F(MakeMenusProgram, ADesignWithAnErrorIsToldWithItsLine) {
  const std::string file = folder_.add("bad.design", "name = Bad\n[entry]\nsiez = 3\n");
  EXPECT_EQ(run(arguments(file)), 2);
  EXPECT_THAT(stderr_, AllOf(HasSubstr("bad.design\" cannot be used: line 3"), HasSubstr("siez")));
  expect_nothing_made();
}

TEST_F(MakeMenusProgram, AFilmBehindThemNeedsFfmpegAlone) {
  const std::string film = folder_.path("behind.mp4");
  ASSERT_EQ(std::system(("ffmpeg -nostdin -v error -f lavfi -i testsrc2=s=320x240 -f lavfi -i sine "
                         "-t 1 -c:v mpeg4 -c:a aac '" +
                         film + "'")
                            .c_str()),
            0);
  remove_tool("gm");
  EXPECT_EQ(run({"--make-menus", "video", "--film", film, project_}), 0) << stderr_;
  EXPECT_THAT(stdout_, HasSubstr(folder_.path("titles-1.m2v") + "\n" +
                                 folder_.path("titles-1.ac3") + "\n1 menu was made\n"));
  EXPECT_THAT(folder_.read("film.cvp"), HasSubstr("titles-1.ac3"));
  remove_tool("ffmpeg");
  EXPECT_EQ(run({"--make-menus", "video", "--film", film, project_}), 3);
  EXPECT_EQ(stderr_,
            "corvane-author: ffmpeg is not installed.  It comes with the package ffmpeg.\n");
}

TEST_F(MakeMenusProgram, ADesignThatShowsAFilmWantsOne) {
  EXPECT_EQ(run(arguments("video")), 2);
  EXPECT_THAT(stderr_, HasSubstr("shows a film behind the menus.  Please choose one"));
  expect_nothing_made();
}

TEST_F(MakeMenusProgram, WithoutTheModuleThatDrawsItIsSaidHowToGetIt) {
  program_start alone = start(arguments());
  const std::string copy = folder_.path("corvane-author");
  std::filesystem::copy_file(path_of(alone.program), path_of(copy));
  std::filesystem::create_directory_symlink(path_of(alone.program).parent_path() / "designs",
                                            path_of(folder_.path("designs")));
  alone.program = copy;
  running_program there(alone);
  EXPECT_EQ(there.wait(), 2);
  EXPECT_EQ(there.err(),
            "corvane-author: The menus cannot be drawn: a file of the program is missing, "
            "\"corvane-letters.so\".  Installing Corvane again brings back what is missing.\n");
  expect_nothing_made();
}

TEST_F(MakeMenusProgram, AToolThatIsNotThereIsNamed) {
  remove_tool("jpeg2yuv");
  EXPECT_EQ(run(arguments()), 3);
  EXPECT_THAT(stderr_, HasSubstr("jpeg2yuv is not installed"));
  expect_nothing_made();
}

TEST_F(MakeMenusProgram, AToolThatFailsIsNamedAndNothingStays) {
  add_tool("mpeg2enc", "for last; do :; done\necho half >\"$last\"\nexit 1\n");
  EXPECT_EQ(run(arguments()), 1);
  EXPECT_THAT(stderr_, HasSubstr("The backgrounds of the menus could not be made: "));
  EXPECT_THAT(stdout_, HasSubstr("\nlog: " + app("CorvaneMENUS.txt") + "\n"));
  expect_nothing_made();
}

TEST_F(MakeMenusProgram, AToolThatMakesHalfAFileInSilenceIsNoticed) {
  add_tool("mpeg2enc", "for last; do :; done\ncat >/dev/null\necho half >\"$last\"\n");
  EXPECT_EQ(run(arguments()), 1);
  EXPECT_THAT(stderr_, HasSubstr("The backgrounds of the menus could not be made: "));
  expect_nothing_made();
}

TEST_F(MakeMenusProgram, AProjectWithoutTitlesGetsNoMenus) {
  before_ = folder_.read("film.cvp");
  const std::string empty = save({}, "empty.cvp");
  EXPECT_EQ(run({"--make-menus", "amber", "--to", menus(), empty}), 2);
  EXPECT_NE(stderr_, "");
  EXPECT_THAT(files_in(menus()), IsEmpty());
}

TEST_F(MakeMenusProgram, EditedXmlStopsItBeforeAnythingIsDone) {
  project p = one_title(folder_);
  p.customxml = "<dvdauthor/>";
  save(p);
  before_ = folder_.read("film.cvp");
  EXPECT_EQ(run(arguments()), 2);
  EXPECT_THAT(stderr_, HasSubstr("edited the XML manually"));
  expect_nothing_made();
}

TEST_F(MakeMenusProgram, AFullDiskLeavesNothing) {
  const testing_support::temporary_folder place;
  const testing_support::disk_of_its_own disk(place, 512);
  if (!disk.is_there())
    GTEST_SKIP() << "no disk of its own can be mounted for the test";
  disk.fill(8);
  EXPECT_EQ(run({"--make-menus", "amber", "--to", place.path(), project_}), 1) << stderr_;
  EXPECT_THAT(stderr_, HasSubstr("could not be made"));
  EXPECT_THAT(files_in(place.path()), ElementsAre("fills the disk"));
  EXPECT_EQ(folder_.read("film.cvp"), before_);
}

TEST_F(MakeMenusProgram, AProgramFolderOnAFullDiskLeavesNothing) {
  const testing_support::temporary_folder place;
  const testing_support::disk_of_its_own disk(place, 1024);
  if (!disk.is_there())
    GTEST_SKIP() << "no disk of its own can be mounted for the test";
  disk.fill(128);
  auto how = start(arguments());
  how.environment.emplace_back("CORVANE_HOME", place.path());
  EXPECT_EQ(run_as(how), 1) << stderr_;
  EXPECT_THAT(stderr_, HasSubstr("cannot be written; the disk may be full"));
  expect_nothing_made();
  EXPECT_FALSE(entry_exists(place.path("menu-pages")));
}

TEST_F(MakeMenusProgram, CtrlCEndsTheToolAndLeavesNothing) {
  add_tool("mpeg2enc", "for last; do :; done\necho half >\"$last\"\n" + std::string(endless));
  running_program program(start(arguments()));
  ASSERT_TRUE(started("mpeg2enc"));
  const pid_t tool = tool_process("mpeg2enc");
  program.send(SIGINT);
  EXPECT_EQ(program.wait(), 130);
  EXPECT_THAT(program.err(), HasSubstr("stopped; the project is as it was"));
  EXPECT_TRUE(wait_until([&] { return !process_runs(tool); }));
  expect_nothing_made();
}

/// Stops it at moments all over the time that it takes.
class StoppedMenus : public MakeMenusProgram {
 protected:
  static constexpr int moments = 24;
  StoppedMenus() {
    project p = one_title(folder_);
    p.chapters = {"0,0.1,0.2,0.3,0.4,0.5,0.6"};
    save(p);
    before_ = folder_.read("film.cvp");
    const auto began = std::chrono::steady_clock::now();
    EXPECT_EQ(run(arguments()), 0) << stderr_;
    takes_ = std::chrono::steady_clock::now() - began;
    for (const std::string& name : files_in(menus()))
      whole_[name] = folder_.read("menus/" + name).size();
    start_anew();
  }
  void start_anew() const {
    EXPECT_EQ(remove_all(menus()), std::nullopt);
    folder_.add("film.cvp", before_);
  }
  void wait_until_moment(int number) const {
    std::this_thread::sleep_for(takes_ * number / moments);
  }
  std::vector<std::string> parts() const {
    std::vector<std::string> left;
    for (const std::string& name : files_in(menus()))
      if (!whole_.contains(name))
        left.push_back(name);
    return left;
  }

  std::chrono::duration<double> takes_{};
  std::map<std::string, std::size_t> whole_;
};

TEST_F(StoppedMenus, AreAllThereOrNotAtAll) {
  EXPECT_GE(whole_.size(), 4u);
  std::set<int> statuses;
  for (int moment = 0; moment < moments; ++moment) {
    SCOPED_TRACE(moment);
    running_program program(start(arguments()));
    wait_until_moment(moment);
    program.send(moment % 2 == 0 ? SIGINT : SIGTERM);
    const int status = program.wait();
    statuses.insert(status);
    if (status == 0) {
      EXPECT_EQ(files_in(menus()).size(), whole_.size());
      EXPECT_NE(folder_.read("film.cvp"), before_);
    } else {
      expect_nothing_made();
    }
    start_anew();
  }
  EXPECT_THAT(statuses, IsSupersetOf({128 + SIGINT, 128 + SIGTERM}));
}

TEST_F(StoppedMenus, WhatTheKilledProgramHasLeftGoesWithTheNext) {
  bool was_left = false;
  for (int moment = 0; moment < moments; moment += 2) {
    SCOPED_TRACE(moment);
    {
      running_program program(start(arguments()));
      wait_until_moment(moment);
      program.send(SIGKILL);
      program.wait();
    }
    was_left = was_left || !parts().empty() || entry_exists(app("menu-pages"));
    for (const std::string& name : files_in(menus()))
      if (whole_.contains(name)) {
        EXPECT_EQ(folder_.read("menus/" + name).size(), whole_.at(name)) << name;
      }
    // Its tools end with it; the next one may have to wait for that.
    EXPECT_TRUE(wait_until([&] { return run(arguments()) == 0; })) << stderr_;
    EXPECT_FALSE(entry_exists(app("menu-pages")));
    for (const std::string& name : parts())
      EXPECT_FALSE(name.ends_with(".part")) << name;
    start_anew();
  }
  EXPECT_TRUE(was_left);
}

}  // namespace
}  // namespace corvane
