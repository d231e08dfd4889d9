// Paths longer than the 259 characters that Windows takes by itself: refused by corvane-author.exe
// before anything is done, and used when long paths are enabled in Windows. (Wine always takes
// them; only what our programs make of the setting shows here.)
#include "platform/files/long_paths.h"

#include "apps/program_windows.h"
#include "authoring/checks.h"
#include "authoring/texts_of_project.h"
#include "disc/disc_description.h"
#include "platform/files/files.h"
#include "project/project_file.h"
#include "project/subtitle_rows.h"
#include "support/small_streams.h"

#include <gmock/gmock.h>

#include <string>

namespace corvane::testing_support {
namespace {

using testing::AllOf;
using testing::HasSubstr;

constexpr const wchar_t* key = L"SYSTEM\\CurrentControlSet\\Control\\FileSystem";
constexpr const wchar_t* setting = L"LongPathsEnabled";

/// Long by more than the limit, of short names.
const std::string deep =
    "ü字" + std::string(100, 'a') + "\\" + std::string(100, 'b') + "\\" + std::string(100, 'c');
const std::string limit = " characters, but this Windows takes 259 (long paths are not enabled";

class LongPaths : public testing::Test {
 protected:
  LongPaths() {
    ::RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, key, setting);
    install_author(home_.path("app"), "stand_in_disc_tool.exe");
  }
  ~LongPaths() override { ::RegDeleteKeyValueW(HKEY_LOCAL_MACHINE, key, setting); }

  static void enable() {
    const DWORD on = 1;
    ::RegSetKeyValueW(HKEY_LOCAL_MACHINE, key, setting, REG_DWORD, &on, sizeof on);
  }

  /// Runs it on a project of one title, all in the folders named.
  DWORD author(const std::string& project, const std::string& media, const std::string& out) {
    home_.add(media + "\\movie.m2v", small_video());
    home_.add(media + "\\movie.ac3", small_sound());
    corvane::project p;
    p.List11 = {home_.stored(media + "\\movie.m2v") + "/" + home_.stored(media + "\\movie.ac3")};
    p.chapters = {"0"};
    p.delay = {"0"};
    p.subtitledata = {"<none>"};
    p.subtitleoptions = {default_subtitleoptions("NTSC")};
    rebuild_List1(p);
    const std::string file = home_.add(project + "\\film.cvp", project_text(p));
    return run_program({home_.path("app\\corvane-author.exe"),
                        "\"" + file + "\" \"" + home_.path(out) + "\"", home_.path()},
                       nullptr, &err_);
  }
  bool script_was_written() const { return file_exists(home_.path("app\\process.bat")); }

  temporary_folder home_;
  std::string err_;
};

TEST_F(LongPaths, OfAStreamIsRefusedAndItsTitleNamed) {
  EXPECT_EQ(author("p", deep, "disc"), 2u);
  EXPECT_THAT(err_, HasSubstr("Title 1 cannot be authored: the file name"));
  EXPECT_THAT(
      err_,
      HasSubstr("has " + std::to_string(windows_length(home_.path(deep + "\\movie.m2v"))) + limit));
  EXPECT_FALSE(script_was_written());
}

TEST_F(LongPaths, OfTheOutputFolderIsRefused) {
  EXPECT_EQ(author("p", "m", deep), 2u);
  EXPECT_THAT(err_, HasSubstr("The output folder"));
  EXPECT_THAT(err_, HasSubstr(limit));
  EXPECT_FALSE(script_was_written());
  EXPECT_FALSE(folder_exists(home_.path(deep)));
}

TEST_F(LongPaths, OfTheDiscsFilesCountsNotOnlyThatOfItsFolder) {
  const std::size_t taken = windows_length(home_.path()) + 1;
  const std::size_t inside = std::string("\\VIDEO_TS\\VTS_01_0.IFO").size();
  EXPECT_EQ(author("p", "m", std::string(259 - taken - inside + 1, 'x')), 2u);
  EXPECT_THAT(err_, HasSubstr("the path of VTS_01_0.IFO in it has 260" + limit));
  EXPECT_EQ(author("p", "m", std::string(259 - taken - inside, 'x')), 0u) << err_;
}

// Where it is so deep that the tools in it could not be started, though the program was.
TEST_F(LongPaths, OfTheProgramFolderIsRefused) {
  run_paths where{home_.path(), home_.path("disc")};
  where.app += "\\" + std::string(259 - windows_length(home_.path("\\bin\\dvdauthor.exe")), 'p');
  EXPECT_EQ(why_not_this_folder(disc_description{}, where), std::nullopt);
  where.app += "p";
  EXPECT_THAT(why_not_this_folder(disc_description{}, where).value_or(""),
              AllOf(HasSubstr("The program folder"),
                    HasSubstr("the path of dvdauthor.exe in it has 260" + limit)));
}

TEST_F(LongPaths, WorkWhenTheyAreEnabled) {
  enable();
  EXPECT_EQ(author(deep, "m " + deep, "o " + deep), 0u) << err_;
  EXPECT_TRUE(file_exists(home_.path("o " + deep + "\\VIDEO_TS\\VTS_01_1.VOB")));
}

TEST(WindowsLength, CountsAsWindowsDoes) {
  EXPECT_EQ(windows_length("aü字"), 3u);
  EXPECT_EQ(windows_length("\xF0\x9F\x8E\xAC"), 2u);
}

}  // namespace
}  // namespace corvane::testing_support
