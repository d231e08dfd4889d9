// The links in the program folder's bin.
#include "platform/files/program_folder.h"
#include "support/environment_variable.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace corvane {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;
using testing_support::environment_variable;
using testing_support::set_environment;
using testing_support::temporary_folder;

/// A folder with tools that PATH leads to, and a program folder to enter.
class BinLinks : public testing::Test {
 protected:
  BinLinks() : path_("PATH", folder_.path("tools")) {}
  ~BinLinks() override { fs::current_path(before_); }

  std::string add_tool(const std::string& name, bool executable = true) const {
    std::string tool = folder_.add(name, "#!/bin/sh\n");
    fs::permissions(tool, fs::perms::owner_all,
                    executable ? fs::perm_options::add : fs::perm_options::remove);
    if (!executable)
      fs::permissions(tool, fs::perms::owner_read, fs::perm_options::replace);
    return tool;
  }
  std::string app() const { return folder_.path("app"); }
  fs::path link(const std::string& name) const { return path_of(tool_path(app(), name)); }
  std::string target(const std::string& name) const {
    std::error_code error;
    return text_of(fs::read_symlink(link(name), error));
  }
  void enter() const { EXPECT_EQ(enter_program_folder(app()), std::nullopt); }

  const fs::path before_ = fs::current_path();
  temporary_folder folder_;
  environment_variable path_;
};

TEST_F(BinLinks, LeadToTheToolsOnThePath) {
  const std::string mplex = add_tool("tools/mplex");
  enter();
  EXPECT_EQ(target("mplex"), mplex);
  EXPECT_TRUE(tool_is_there(app(), "mplex"));
  EXPECT_FALSE(tool_is_there(app(), "gm"));
  EXPECT_FALSE(fs::exists(fs::symlink_status(link("gm"))));
}

TEST_F(BinLinks, LeadToFfmpegWhereItIsInstalled) {
  const std::string ffmpeg = add_tool("tools/ffmpeg");
  enter();
  EXPECT_EQ(target("ffmpeg"), ffmpeg);
  EXPECT_TRUE(tool_is_there(app(), "ffmpeg"));
}

TEST_F(BinLinks, MkisofsMayBeGenisoimage) {
  const std::string fork = add_tool("tools/genisoimage");
  enter();
  EXPECT_EQ(target("mkisofs"), fork);
  const std::string original = add_tool("tools/mkisofs");
  enter();
  EXPECT_EQ(target("mkisofs"), original);
}

TEST_F(BinLinks, TheFirstFolderOfThePathWinsAndRelativeOnesDoNotCount) {
  const std::string first = add_tool("first/gm");
  add_tool("tools/gm");
  fs::current_path(folder_.path("tools"));
  const environment_variable path("PATH", "::.:" + folder_.path("none") + ":" +
                                              folder_.path("first") + ":" + folder_.path("tools"));
  enter();
  EXPECT_EQ(target("gm"), first);
}

TEST_F(BinLinks, AFileThatCannotBeStartedIsNoTool) {
  add_tool("tools/gm", false);
  fs::create_directories(folder_.path("tools/mplex"));
  enter();
  EXPECT_FALSE(tool_is_there(app(), "gm"));
  EXPECT_FALSE(tool_is_there(app(), "mplex"));
}

TEST_F(BinLinks, OneThatLeadsElsewhereIsSetAnew) {
  const std::string old = add_tool("old/mplex");
  const std::string now = add_tool("tools/mplex");
  fs::create_directories(link("mplex").parent_path());
  fs::create_symlink(old, link("mplex"));
  enter();
  EXPECT_EQ(target("mplex"), now);
  for (const std::string& name : files_in(folder_.path("app/bin")))
    EXPECT_TRUE(name.ends_with(".exe")) << name;
}

TEST_F(BinLinks, OneThatLeadsNowhereIsRemovedWhenItsToolIsGone) {
  const std::string mplex = add_tool("tools/mplex");
  enter();
  fs::remove(mplex);
  enter();
  EXPECT_FALSE(fs::exists(fs::symlink_status(link("mplex"))));
  EXPECT_FALSE(tool_is_there(app(), "mplex"));
}

TEST_F(BinLinks, OneThatTheUserMadeToAToolOffThePathIsKept) {
  const std::string own = add_tool("own build/mplex");
  fs::create_directories(link("mplex").parent_path());
  fs::create_symlink(own, link("mplex"));
  enter();
  EXPECT_EQ(target("mplex"), own);
}

TEST_F(BinLinks, ARealFileIsLeftAlone) {
  add_tool("tools/mplex");
  const std::string real = add_tool("app/bin/mplex.exe");
  enter();
  EXPECT_FALSE(fs::is_symlink(link("mplex")));
  EXPECT_TRUE(tool_is_there(app(), "mplex"));
}

TEST_F(BinLinks, ABinThatIsAFileIsNamed) {
  folder_.add("app/bin");
  const failure why = enter_program_folder(app());
  ASSERT_TRUE(why);
  EXPECT_THAT(*why, HasSubstr(folder_.path("app/bin")));
}

TEST_F(BinLinks, TheFolderMayHaveAnyNameAScriptCanHold) {
  const std::string odd = folder_.path("50% & Müller's #1 ! ^ $HOME `x` 字");
  add_tool("tools/mplex");
  EXPECT_EQ(enter_program_folder(odd), std::nullopt);
  EXPECT_TRUE(tool_is_there(odd, "mplex"));
  EXPECT_TRUE(same_place(".", odd));
}

TEST(ProgramFolderPlace, IsTheNamedOneThenTheDataFolderThenBelowHome) {
  const environment_variable home("HOME", "/home/u");
  const environment_variable data("XDG_DATA_HOME", "/data");
  const environment_variable own("CORVANE_HOME", "/dvd/corvane/");
  EXPECT_EQ(program_folder(), "/dvd/corvane");
  set_environment("CORVANE_HOME", "");
  EXPECT_EQ(program_folder(), "/data/corvane");
  set_environment("XDG_DATA_HOME", "not/absolute");
  EXPECT_EQ(program_folder(), "/home/u/.local/share/corvane");
}

TEST(ProgramFolderPlace, ARelativeNameCountsFromTheCurrentFolder) {
  const environment_variable own("CORVANE_HOME", "x/../here");
  EXPECT_EQ(program_folder(), absolute_path("here"));
}

}  // namespace
}  // namespace corvane
