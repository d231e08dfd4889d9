// "corvane-author --import" with the real program, conspawn and ffmpeg.
#include "apps/author_fixture_posix.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "support/full_disk_posix.h"
#include "support/small_streams.h"

#include <gmock/gmock.h>

#include <chrono>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <dirent.h>
#include <map>
#include <set>
#include <thread>

namespace corvane {
namespace {

using testing::AllOf;
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

// 200 pictures of 704x576, and a fifth of the source's pixels, at 2.5e-5 s each.
TEST_F(ImportProgram, TellsTheTimeByThatOfEarlierImports) {
  folder_.add("app/import-speeds.txt", "mpeg4 2.5e-05\n");
  EXPECT_EQ(run({"--import", phone(), "--to", to(), new_project()}), 0) << stderr_;
  EXPECT_THAT(stdout_, HasSubstr("\n1 file, 0:02 of film: about "));
  EXPECT_THAT(stdout_, HasSubstr(", about 19 min; video of "));
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

TEST_F(ImportProgram, NamesTheFilesThatAreThereAndTheTextsThatAreNot) {
  const std::string file = phone();
  folder_.add("phone.de.srt", "there are no times in this\n");
  folder_.add("phone.fr.srt", "1\n00:00:00,500 --> 00:00:01,000\nbonjour\n");
  EXPECT_EQ(run({"--import", file, "--to", to(), "--constant", "20", new_project()}), 0) << stderr_;
  EXPECT_THAT(stdout_,
              HasSubstr("\n" + made("phone.m2v") + "\n" + made("phone.ac3") +
                        "\nthere is no text for phone.de.srt\n" + made("phone.fr.srt") + "\n"));
  EXPECT_FALSE(file_exists(made("phone.de.srt")));
}

// As of a source that states more than can be read of it: ffmpeg takes that for the end.
TEST_F(ImportProgram, AFilmWhoseEndIsMissingIsAddedWithAWord) {
  add_tool("ffmpeg",
           "left=$#\nwhile [ $left -gt 0 ]; do\n"
           "  [ \"$1\" != -i ] || set -- \"$@\" -t 2\n"
           "  set -- \"$@\" \"$1\"\n  shift\n  left=$((left - 1))\ndone\n" +
               real("ffmpeg"));
  const std::string file =
      film("long.mp4", "-f lavfi -i testsrc2=s=352x288:r=25 -f lavfi -i sine -t 6 -c:v mpeg4");
  EXPECT_EQ(run({"--import", file, "--to", to(), "--constant", "20", new_project()}), 1);
  EXPECT_THAT(stderr_, HasSubstr("\"" + file +
                                 "\" was imported, but the last 0:04 of it could not be read and "
                                 "are missing."));
  EXPECT_THAT(stdout_, HasSubstr("\n" + made("long.m2v") + "\n" + made("long.ac3") + "\n"));
  EXPECT_THAT(folder_.read("new.cvp"), HasSubstr("long.m2v/"));
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

/// Also what was written to see whether anything can be.
bool is_temporary(const std::string& name) {
  return name.ends_with(".part") || name.ends_with(".log") ||
         name.find(".corvane-part") != std::string::npos;
}

/// Files of an import that are not under their own names.
std::vector<std::string> temporary_ones(const std::string& folder) {
  std::vector<std::string> left;
  for (const std::string& name : files_in(folder))
    if (is_temporary(name))
      left.push_back(name);
  return left;
}

/// Stops imports of two files, which go on for about so long, at moments all over that time.
class StoppedImport : public ImportProgram {
 protected:
  static constexpr int moments = 36;
  StoppedImport()
      : file_(film("phone.mp4",
                   "-f lavfi -i testsrc2=s=352x288:r=25 -f lavfi -i sine=r=44100 -t 1 -c:v mpeg4 "
                   "-c:a aac")),
        other_(folder_.path("other.mp4")) {
    EXPECT_EQ(std::system(("cp '" + file_ + "' '" + other_ + "'").c_str()), 0);
    const auto began = std::chrono::steady_clock::now();
    EXPECT_EQ(run_as(import_to("whole")), 0) << stderr_;
    takes_ = std::chrono::steady_clock::now() - began;
    whole_ = sizes("whole");
  }

  program_start import_to(const std::string& name) const {
    return start({"--import", file_, other_, "--to", folder_.path(name), "--rate", "4000",
                  folder_.path(name + ".cvp")});
  }
  std::map<std::string, std::uintmax_t> sizes(const std::string& name) const {
    std::map<std::string, std::uintmax_t> all;
    for (const std::string& file : files_in(folder_.path(name)))
      all[file] = file_size(folder_.path(name + "/" + file)).value_or(0);
    return all;
  }
  void wait_until_moment(int number) const {
    std::this_thread::sleep_for(takes_ * number / moments);
  }
  std::string project_text(const std::string& name) const {
    const std::string file = folder_.path(name + ".cvp");
    return file_exists(file) ? folder_.read(name + ".cvp") : "";
  }

  /// Whatever has a name of its own is whole.
  void expect_whole_files(const std::string& name) const {
    for (const auto& [file, size] : sizes(name)) {
      if (is_temporary(file))
        continue;
      ASSERT_TRUE(whole_.contains(file)) << file;
      EXPECT_EQ(size, whole_.at(file)) << file;
    }
  }
  /// Each title is there with both of its files, and no file is without its title.
  void expect_titles_of_files(const std::string& name) const {
    const std::string project = project_text(name);
    for (const char* const stem : {"phone", "other"}) {
      const bool is_title = project.find(std::string(stem) + ".m2v/") != std::string::npos;
      for (const char* const ending : {".m2v", ".ac3"})
        EXPECT_EQ(file_exists(folder_.path(name + "/" + stem + ending)), is_title) << stem;
    }
  }

  std::string file_, other_;
  std::chrono::duration<double> takes_{};
  std::map<std::string, std::uintmax_t> whole_;
};

TEST_F(StoppedImport, LeavesNoHalfFileAtAnyMoment) {
  std::set<int> statuses;
  for (int moment = 0; moment < moments; ++moment) {
    const std::string name = "to" + std::to_string(moment);
    SCOPED_TRACE(name);
    running_program program(import_to(name));
    wait_until_moment(moment);
    program.send(moment % 2 == 0 ? SIGINT : SIGTERM);
    statuses.insert(program.wait());
    EXPECT_THAT(temporary_ones(folder_.path(name)), IsEmpty());
    expect_whole_files(name);
    expect_titles_of_files(name);
  }
  EXPECT_THAT(statuses, IsSupersetOf({128 + SIGINT, 128 + SIGTERM}));
}

TEST_F(StoppedImport, AKilledToolFailsItsFileAlone) {
  int killed = 0;
  for (int moment = 0; moment < moments; moment += 4) {
    const std::string name = "to" + std::to_string(moment);
    SCOPED_TRACE(name);
    const pid_t before = tool_process("ffmpeg");
    running_program program(import_to(name));
    pid_t tool = -1;
    ASSERT_TRUE(wait_until([&] {
      tool = tool_process("ffmpeg");
      return tool > 0 && tool != before;
    }));
    wait_until_moment(moment / 4);  // a quarter of the time at most: the first file's
    const bool was_there = process_runs(tool) && ::kill(tool, SIGKILL) == 0;
    const int status = program.wait();
    EXPECT_THAT(temporary_ones(folder_.path(name)), IsEmpty());
    expect_whole_files(name);
    expect_titles_of_files(name);
    // What was about to end by itself is whole.
    const bool is_lost = project_text(name).find("phone.m2v/") == std::string::npos;
    EXPECT_EQ(status, is_lost ? 1 : 0);
    EXPECT_THAT(project_text(name), HasSubstr("other.m2v/"));
    EXPECT_TRUE(was_there || !is_lost);
    killed += is_lost ? 1 : 0;
  }
  EXPECT_GE(killed, 1);
}

TEST_F(StoppedImport, WhatTheKilledProgramHasLeftGoesWithTheNext) {
  bool was_left = false;
  for (int moment = 0; moment < moments; moment += 3) {
    const std::string name = "to" + std::to_string(moment);
    SCOPED_TRACE(name);
    {
      running_program program(import_to(name));
      wait_until_moment(moment);
      program.send(SIGKILL);
      program.wait();
    }
    expect_whole_files(name);
    const bool is_free = !file_exists(folder_.path(name + "/phone.m2v"));
    was_left = was_left || !temporary_ones(folder_.path(name)).empty();
    EXPECT_EQ(run({"--import", file_, "--to", folder_.path(name), "--constant", "20",
                   folder_.path("next" + std::to_string(moment) + ".cvp")}),
              0)
        << stderr_;
    EXPECT_THAT(temporary_ones(folder_.path(name)), IsEmpty());
    // Nothing that was left has taken the name.
    EXPECT_TRUE(file_exists(folder_.path(name + (is_free ? "/phone.m2v" : "/phone (2).m2v"))));
  }
  EXPECT_TRUE(was_left);
}

/// Folders that go away in the middle of an import.
class LostFolder : public ImportProgram {
 protected:
  /// A film in a folder of its own.
  std::string film_in(const std::string& name) {
    make_folders(folder_.path(name));
    return film(name + "/film.mp4",
                "-f lavfi -i testsrc2=s=352x288:r=25 -f lavfi -i sine=r=44100 -t 1 -c:v mpeg4 -c:a "
                "aac");
  }
  /// ffmpeg, which does this when it has read a film of that folder.
  void add_ffmpeg(const std::string& folder, const std::string& then) {
    add_tool("ffmpeg", "PATH=/bin:/usr/bin\n(" + real("ffmpeg") + ")\nstatus=$?\ncase \"$*\" in *" +
                           folder + "/film.mp4*)\n" + then + " ;; esac\nexit $status\n");
  }
  std::string not_there(const std::string& file, const std::string& lost) const {
    return "\"" + file + "\" was not imported: the folder \"" + lost +
           "\" is not there any more; it was renamed or moved, or its disk was taken out.\n";
  }
};

TEST_F(LostFolder, FilesThatWereBeingMadeGoFromOneThatIsRenamed) {
  const std::string one = film_in("one"), two = film_in("two");
  add_ffmpeg("one", "mv '" + to() + "' '" + folder_.path("renamed") + "'");
  EXPECT_EQ(run({"--import", one, two, "--to", to(), "--constant", "20", new_project()}), 1);
  EXPECT_THAT(stderr_, AllOf(HasSubstr(not_there(one, to())), HasSubstr(not_there(two, to()))));
  EXPECT_THAT(files_in(folder_.path("renamed")), IsEmpty());
  EXPECT_FALSE(entry_exists(to()));
  EXPECT_FALSE(file_exists(new_project()));
}

TEST_F(LostFolder, AFolderThatHasComeInItsPlaceIsNotTakenForIt) {
  const std::string one = film_in("one");
  add_ffmpeg("one", "mv '" + to() + "' '" + folder_.path("renamed") + "'\nmkdir '" + to() + "'");
  EXPECT_EQ(run({"--import", one, "--to", to(), "--constant", "20", project_}), 1);
  EXPECT_THAT(stderr_, HasSubstr(not_there(one, to())));
  EXPECT_THAT(files_in(folder_.path("renamed")), IsEmpty());
  EXPECT_THAT(files_in(to()), IsEmpty());
}

TEST_F(LostFolder, AFilmWhoseFolderIsRenamedBetweenThePassesIsLeftOutAndTheNextGoesOn) {
  const std::string one = film_in("one"), two = film_in("two");
  add_ffmpeg("one", "mv '" + folder_.path("one") + "' '" + folder_.path("renamed") + "'");
  EXPECT_EQ(run({"--import", one, two, "--to", to(), "--rate", "2000", new_project()}), 1);
  EXPECT_THAT(stderr_,
              HasSubstr("\"" + one + "\" was not imported: the file is not there any more.\n"));
  EXPECT_THAT(files_in(to()), testing::ElementsAre("film (2).ac3", "film (2).m2v"));
  EXPECT_THAT(folder_.read("new.cvp"), HasSubstr("film (2).m2v/"));
  EXPECT_EQ(run({"--check", new_project()}), 0) << stdout_;
}

TEST_F(LostFolder, ADiskThatIsTakenOutKeepsNoHalfFile) {
  const std::string one = film_in("one");
  const testing_support::temporary_folder place;
  const testing_support::disk_of_its_own disk(place, 8192);
  if (!disk.is_there())
    GTEST_SKIP() << "no disk of its own can be mounted for the test";
  DIR* const inside = ::opendir(place.path().c_str());
  ASSERT_NE(inside, nullptr);
  add_ffmpeg("one", "umount -l '" + place.path() + "'");
  EXPECT_EQ(run({"--import", one, "--to", place.path(), "--constant", "20", new_project()}), 1);
  EXPECT_THAT(stderr_, HasSubstr(not_there(one, place.path())));
  EXPECT_THAT(files_in(place.path()), IsEmpty());
  std::vector<std::string> left;
  while (const dirent* const entry = ::readdir(inside))
    if (entry->d_name[0] != '.')
      left.emplace_back(entry->d_name);
  ::closedir(inside);
  EXPECT_THAT(left, IsEmpty());
  EXPECT_FALSE(file_exists(new_project()));
}

TEST_F(LostFolder, AFilmOnADiskThatIsTakenOutIsLeftOut) {
  const std::string one = film_in("one"), two = film_in("two");
  const testing_support::temporary_folder place;
  const testing_support::disk_of_its_own disk(place, 8192);
  if (!disk.is_there())
    GTEST_SKIP() << "no disk of its own can be mounted for the test";
  const std::string away = place.add("film.mp4", folder_.read("one/film.mp4"));
  add_ffmpeg(native_file_name(place.path()), "umount -l '" + place.path() + "'");
  EXPECT_EQ(run({"--import", away, two, "--to", to(), "--rate", "2000", new_project()}), 1);
  EXPECT_THAT(stderr_,
              HasSubstr("\"" + away + "\" was not imported: the file is not there any more.\n"));
  EXPECT_THAT(temporary_ones(to()), IsEmpty());
  EXPECT_THAT(folder_.read("new.cvp"), HasSubstr("film (2).m2v/"));
}

// The titles cannot be kept, what was made for them can.
TEST_F(LostFolder, AProjectWhoseDiskIsFullStaysAsItWasAndTheFilesStay) {
  const std::string one = film_in("one");
  const testing_support::temporary_folder place;
  const testing_support::disk_of_its_own disk(place, 256);
  if (!disk.is_there())
    GTEST_SKIP() << "no disk of its own can be mounted for the test";
  const std::string before = folder_.read("film.cvp");
  const std::string full = place.add("film.cvp", before);
  disk.fill();
  EXPECT_EQ(run({"--import", one, "--to", to(), "--constant", "20", full}), 1);
  EXPECT_EQ(place.read("film.cvp"), before);
  EXPECT_THAT(files_in(to()), testing::ElementsAre("film.m2v", "film.mp2"));
  EXPECT_THAT(stdout_, HasSubstr("\n" + made("film.m2v") + "\n" + made("film.mp2") + "\n"));
  EXPECT_THAT(stderr_, HasSubstr("The title is not in \"" + full +
                                 "\"; the files that were made for it stay.\n"));
}

TEST_F(LostFolder, OneThatNothingCanBeWrittenIntoIsNamedBeforeAnythingIsRun) {
  const std::string one = film_in("one");
  EXPECT_EQ(run({"--import", one, "--to", one + "/in", "--constant", "20", new_project()}), 2);
  EXPECT_THAT(stderr_, HasSubstr("The folder \"" + one + "/in\" cannot be made: "));
  const testing_support::temporary_folder place;
  if (::mount("none", place.path().c_str(), "tmpfs", MS_RDONLY, "size=64m") != 0)
    GTEST_SKIP() << "no disk of its own can be mounted for the test";
  EXPECT_EQ(run({"--import", one, "--to", place.path(), "--constant", "20", new_project()}), 2);
  ::umount2(place.path().c_str(), MNT_DETACH);
  EXPECT_THAT(stderr_, HasSubstr("Nothing can be written into the folder \"" + place.path() +
                                 "\": Read-only file system.  Choose another folder.\n"));
  EXPECT_THAT(stdout_, Not(HasSubstr("importing")));
  EXPECT_FALSE(file_exists(new_project()));
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
