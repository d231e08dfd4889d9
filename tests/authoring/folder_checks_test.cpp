// Output folders in which a run would destroy something.
#include "authoring/checks.h"
#include "authoring/sample_projects.h"
#include "authoring/texts_of_project.h"
#include "platform/files/files.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <system_error>

namespace corvane::testing_support {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;

/// A program folder and media of its own, and an output folder that need not be there.
class FolderChecks : public ::testing::Test {
 protected:
  FolderChecks() {
    folder.add("app/bin/x");
    add("media/a.m2v");
    add("media/a.ac3");
    p.List11 = {folder.stored(native("media/a.m2v")) + "/" + folder.stored(native("media/a.ac3"))};
    where = {folder.path("app"), folder.path("dvd"), native_style()};
  }

  static std::string native(std::string name) {
    if (native_style() == path_style::windows)
      std::replace(name.begin(), name.end(), '/', '\\');
    return name;
  }
  std::string add(const std::string& name) { return folder.add(native(name)); }
  std::string stored(const std::string& name) { return folder.stored(native(name)); }
  std::string refusal() { return why_not_this_folder(p, where).value_or("(fine)"); }

  void link(const std::string& at, const std::string& to) {
    std::filesystem::create_symlink(path_of(folder.path(native(to))),
                                    path_of(folder.path(native(at))));
  }

  temporary_folder folder;
  project p;
  run_paths where;
};

TEST_F(FolderChecks, AFolderThatIsNotThereYetIsFine) {
  EXPECT_EQ(refusal(), "(fine)");
}

TEST_F(FolderChecks, OtherFilesInTheFolderAreFine) {
  add("dvd/notes.txt");
  add("dvd/movie.mpeg");
  add("dvd/mpg");
  add("dvd/folder.mpg/movie.mpg");
  EXPECT_EQ(refusal(), "(fine)");
}

TEST_F(FolderChecks, SomebodysOwnMpgFilesAreNamedAndKept) {
  for (const char* name : {"dvd/holiday.mpg", "dvd/title.mpg", "dvd/titleA.mpg", "dvd/menusub.mpg",
                           "dvd/title1 copy.mpg", "dvd/.mpg", "dvd/title7.mpg", "dvd/menu1.mpg",
                           "dvd/menusub12.mpg", "dvd/presub.mpg"}) {
    const std::string file = add(name);
    EXPECT_THAT(refusal(), HasSubstr("holds the file \"" + file + "\"")) << name;
    std::filesystem::remove(path_of(file));
  }
}

TEST_F(FolderChecks, TheProjectsOwnStreamsAreNotErased) {
  const std::string muxed = add("dvd/title7.mpg");
  p.List11.push_back(stored("dvd/title7.mpg"));
  EXPECT_THAT(refusal(), HasSubstr("The project uses the file \"" + muxed + "\""));
  EXPECT_THAT(refusal(), HasSubstr("erases all .mpg files"));
  p.List11.back() = folder.stored(native("dvd/./x/../title7.mpg"));
  EXPECT_THAT(refusal(), HasSubstr("erases all .mpg files"));
}

TEST_F(FolderChecks, EveryFileOfTheProjectCounts) {
  add("dvd/title1.mpg");
  const std::string file = stored("dvd/title1.mpg");
  const project clean = p;
  p.List11[0] += "/" + file;
  EXPECT_THAT(refusal(), HasSubstr("The project uses"));
  p = clean;
  p.subtitledata = {file};
  EXPECT_THAT(refusal(), HasSubstr("The project uses"));
  p = clean;
  p.menulist = {file + "/"};
  EXPECT_THAT(refusal(), HasSubstr("The project uses"));
  p = clean;
  p.menulist = {stored("media/a.m2v") + "/" + file};
  EXPECT_THAT(refusal(), HasSubstr("The project uses"));
  p = clean;
  p.menulist = {stored("media/a.m2v") + "/"};
  p.menubuttons = {" 0/0/9/9/exit/black/" + file};
  EXPECT_THAT(refusal(), HasSubstr("The project uses"));
}

TEST_F(FolderChecks, StreamsOfOtherKindsMayLieInTheFolder) {
  add("dvd/a.vob");
  p.List11 = {stored("dvd/a.vob")};
  EXPECT_EQ(refusal(), "(fine)");
}

TEST_F(FolderChecks, StreamsInsideTheEarlierDiscAreNotReplaced) {
  for (const char* name : {"dvd/VIDEO_TS/VTS_01_1.VOB", "dvd/AUDIO_TS/deep/x.vob"}) {
    const std::string file = add(name);
    p.List11 = {stored(name)};
    EXPECT_THAT(refusal(), HasSubstr("The project uses the file \"" + file + "\"")) << name;
    EXPECT_THAT(refusal(), HasSubstr("would be lost")) << name;
  }
}

TEST_F(FolderChecks, AStreamNamedLikeTheImageIsNotReplaced) {
  add("dvd.iso");
  p.List11 = {stored("dvd.iso")};
  EXPECT_EQ(refusal(), "(fine)") << "no image is made";
  p.isocreate = true;
  EXPECT_THAT(refusal(), HasSubstr("which the disc image would replace"));
}

TEST_F(FolderChecks, AFileIsNoFolder) {
  add("dvd");
  EXPECT_THAT(refusal(), HasSubstr("is a file, not a folder"));
}

TEST_F(FolderChecks, TheProgramFolderAndWhatHoldsItAreNotWrittenInto) {
  where.out = where.app;
  EXPECT_THAT(refusal(), HasSubstr("holds the program's own folder"));
  where.out = folder.path();
  EXPECT_THAT(refusal(), HasSubstr("holds the program's own folder"));
  where.out = folder.path(native("media/../app"));
  EXPECT_THAT(refusal(), HasSubstr("holds the program's own folder"));
  where.out = folder.path(native("app/dvd"));
  EXPECT_EQ(refusal(), "(fine)");
  where.out = folder.path("ap");
  EXPECT_EQ(refusal(), "(fine)");
}

// Making links needs a privilege on Windows.
#ifndef _WIN32
TEST_F(FolderChecks, LinksAreFollowedAndNotWrittenThrough) {
  add("dvd/x.txt");
  const std::string stream = add("other/a.vob");
  link("dvd/title1.mpg", "other/a.vob");
  EXPECT_THAT(refusal(), HasSubstr("holds the file"));
  p.List11 = {stored("dvd/title1.mpg")};
  EXPECT_THAT(refusal(), HasSubstr("erases all .mpg files")) << "the link would be erased";
  link("also", "dvd");
  std::filesystem::remove(path_of(folder.path(native("dvd/title1.mpg"))));
  add("dvd/title1.mpg");
  p.List11 = {stored("also/title1.mpg")};
  EXPECT_THAT(refusal(), HasSubstr("erases all .mpg files")) << "the same folder by another name";
  p.List11 = {stored("media/a.m2v")};
  link("app-link", "app");
  where.out = folder.path("app-link");
  EXPECT_THAT(refusal(), HasSubstr("holds the program's own folder"));
}

TEST_F(FolderChecks, ALinkIntoTheEarlierDiscIsAsGoodAsTheFileThere) {
  add("dvd/VIDEO_TS/VTS_01_1.VOB");
  link("media/holiday.vob", "dvd/VIDEO_TS/VTS_01_1.VOB");
  p.List11 = {stored("media/holiday.vob")};
  EXPECT_THAT(refusal(), HasSubstr("would be lost"));
  add("other/b.vob");
  link("dvd/VIDEO_TS/b.vob", "other/b.vob");
  p.List11 = {stored("dvd/VIDEO_TS/b.vob")};
  EXPECT_THAT(refusal(), HasSubstr("would be lost")) << "the link goes with the disc";
}

TEST_F(FolderChecks, ALinkToAnMpgFileInTheFolderIsAsGoodAsTheFileThere) {
  add("dvd/title1.mpg");
  link("media/holiday.vob", "dvd/title1.mpg");
  p.List11 = {stored("media/holiday.vob")};
  EXPECT_THAT(refusal(), HasSubstr("erases all .mpg files"));
}

TEST_F(FolderChecks, AnImageThatIsALinkIsReplacedTooAndSoAskedFor) {
  p.isocreate = true;
  add("other/x.iso");
  link("dvd.iso", "other/x.iso");
  EXPECT_THAT(earlier_disc(p, where), ElementsAre(folder.path("dvd.iso")));
  std::filesystem::remove(path_of(folder.path(native("other/x.iso"))));
  EXPECT_THAT(earlier_disc(p, where), ElementsAre(folder.path("dvd.iso"))) << "leads nowhere";
}
#endif

TEST_F(FolderChecks, ASecondNameOfAStreamIsNotOverwritten) {
  add("dvd/x.txt");
  std::error_code error;
  std::filesystem::create_hard_link(path_of(folder.path(native("media/a.m2v"))),
                                    path_of(folder.path(native("dvd/title1.mpg"))), error);
  ASSERT_FALSE(error) << error.message();
  EXPECT_THAT(refusal(), HasSubstr("holds the file"));
}

TEST_F(FolderChecks, PathsThatCannotBeWrittenAreRefused) {
  for (const char* out : {"dvd", "@x", "-o"}) {
    where.out = out;
    EXPECT_THAT(refusal(), HasSubstr("is not a full path")) << out;
  }
  for (const char* name : {"a\"b", "a|b", "a<b", "a\nb", "a\xff"}) {
    where.out = folder.path(name);
    EXPECT_THAT(refusal(), HasSubstr("cannot be used: it contains")) << name;
  }
  where.out = "";
  EXPECT_THAT(refusal(), HasSubstr("The top folder of a disk"));
}

TEST_F(FolderChecks, PathsThatOnlyLookHostileAreFine) {
  for (const char* name : {"50% of", "a & b", "it's", "#1!", "$HOME `x` ^", "äöü 中文", "%d"}) {
    where.out = folder.path(name);
    EXPECT_EQ(refusal(), "(fine)") << name;
  }
}

TEST_F(FolderChecks, TheProgramFolderMustBeWritableIntoScriptsToo) {
  where.app = "relative";
  EXPECT_THAT(refusal(), HasSubstr("The program folder \"relative\" cannot be used"));
}

TEST(FolderChecksOfWindows, CompareWithoutRegardToCase) {
  project p;
  p.isocreate = true;
  const run_paths where = {"C:\\Corvane", "D:\\Dvd", path_style::windows};
  const std::pair<const char*, const char*> table[] = {
      {"D:\\media\\a.vob", "(fine)"},
      {"d:\\dvd\\A.MPG", "erases all .mpg files"},
      {"D:\\DVD\\.\\a.mpg", "erases all .mpg files"},
      {"D:\\DVD\\Sub\\a.mpg", "(fine)"},
      {"D:\\dvd\\video_ts\\VTS_01_1.VOB", "would be lost"},
      {"D:\\DVD.ISO", "disc image would replace"},
      {"D:\\dvd2\\VIDEO_TS\\a.vob", "(fine)"}};
  for (const auto& [file, expected] : table) {
    p.List11 = {file};
    EXPECT_THAT(why_not_this_folder(p, where).value_or("(fine)"), HasSubstr(expected)) << file;
  }
}

TEST(FolderChecksOfWindows, RefuseWhatNamesThereCannotHold) {
  const project p;
  for (const char* out : {"D:", "D:\\a*b", "D:\\a?b", "D:\\a:b", "D:\\a>b", "D:/a", "\\a", "D:a"})
    EXPECT_TRUE(why_not_this_folder(p, {"C:\\Corvane", out, path_style::windows})) << out;
  for (const char* out : {"D:\\a", "\\\\server\\share\\dvd", "D:\\a b & c%"})
    EXPECT_FALSE(why_not_this_folder(p, {"C:\\Corvane", out, path_style::windows})) << out;
  EXPECT_TRUE(why_not_this_folder(p, {"C:\\Users\\Corvane", "c:\\users", path_style::windows}));
}

TEST_F(FolderChecks, EarlierDiscIsWhatARunWouldReplace) {
  EXPECT_THAT(earlier_disc(p, where), IsEmpty());
  add("dvd.iso");
  EXPECT_THAT(earlier_disc(p, where), IsEmpty()) << "no image is made";
  p.isocreate = true;
  EXPECT_THAT(earlier_disc(p, where), ElementsAre(folder.path("dvd.iso")));
  add("dvd/VIDEO_TS/VIDEO_TS.IFO");
  make_folders(folder.path(native("dvd/AUDIO_TS")));
  EXPECT_THAT(earlier_disc(p, where),
              ElementsAre(folder.path(native("dvd/VIDEO_TS")), folder.path(native("dvd/AUDIO_TS")),
                          folder.path("dvd.iso")));
}

TEST_F(FolderChecks, AFolderNamedLikeTheImageIsSomebodysOwn) {
  p.isocreate = true;
  add("dvd.iso/keep.txt");
  EXPECT_THAT(earlier_disc(p, where), IsEmpty());
}

}  // namespace
}  // namespace corvane::testing_support
