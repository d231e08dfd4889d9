// The program folder, what holds on every system.
#include "platform/files/program_folder.h"

#include "support/environment_variable.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

namespace corvane {
namespace {

using testing::HasSubstr;
using testing_support::temporary_folder;

TEST(ProgramFolder, EveryToolHasANameAPackageAndAPage) {
  EXPECT_EQ(outside_tools().size(), 7u);
  for (const outside_tool& tool : outside_tools()) {
    EXPECT_FALSE(tool.name.empty());
    EXPECT_FALSE(tool.installed.empty()) << tool.name;
    EXPECT_FALSE(tool.package.empty()) << tool.name;
    EXPECT_FALSE(tool.page.empty()) << tool.name;
  }
}

TEST(ProgramFolder, ToolsStandInItsBin) {
  EXPECT_EQ(tool_path("app", "mplex"), join_path(join_path("app", "bin"), "mplex.exe"));
}

TEST(ProgramFolder, IsAbsolute) {
  EXPECT_TRUE(is_absolute(program_folder())) << program_folder();
}

TEST(ProgramFolder, TheRunningProgramKnowsItself) {
  EXPECT_TRUE(file_exists(own_executable()));
  EXPECT_THAT(own_executable(), HasSubstr("test_platform"));
}

TEST(ProgramFolder, BecomesTheCurrentFolder) {
  const std::filesystem::path before = std::filesystem::current_path();
  {
    const temporary_folder folder;
    EXPECT_EQ(enter_program_folder(folder.path()), std::nullopt);
    EXPECT_TRUE(same_place(".", folder.path()));
    std::filesystem::current_path(before);
  }
}

TEST(ProgramFolder, ThatCannotBeEnteredIsNamed) {
  const temporary_folder folder;
  const std::string file = folder.add("file");
  const failure why = enter_program_folder(file);
  ASSERT_TRUE(why);
  EXPECT_THAT(*why, HasSubstr(file));
  EXPECT_FALSE(same_place(".", folder.path()));
}

TEST(ProgramFolder, ANameThatScriptsCannotHoldIsRefused) {
  const failure why = enter_program_folder("a|b");
  ASSERT_TRUE(why);
  EXPECT_THAT(*why, HasSubstr("contains a vertical bar"));
}

TEST(ProgramFolder, AnAbsentToolIsNotThere) {
  const temporary_folder folder;
  EXPECT_FALSE(tool_is_there(folder.path(), "mplex"));
  std::filesystem::create_directories(path_of(folder.path("bin/mplex.exe")));
  EXPECT_FALSE(tool_is_there(folder.path(), "mplex"));
}

TEST(ProgramFolder, TheCommandLineGoesOnAfterTheProgram) {
  EXPECT_EQ(after_program("\"C:\\my programs\\corvane.exe\" C:\\my  films\\a   b.cvp"),
            "C:\\my  films\\a   b.cvp");
  EXPECT_EQ(after_program("corvane.exe \t\"C:\\a b.cvp\" "), "\"C:\\a b.cvp\"");
  EXPECT_EQ(after_program("corvane.exe"), "");
  EXPECT_EQ(after_program("corvane.exe  "), "");
  EXPECT_EQ(after_program("\"corvane.exe\""), "");
  EXPECT_EQ(after_program("\"corvane.exe\""
                          "a.cvp"),
            "a.cvp");
  EXPECT_EQ(after_program(""), "");
}

TEST(Environment, WhatIsSetIsReadBack) {
  const testing_support::environment_variable set("CORVANE_TEST_VALUE", "PAL");
  ASSERT_NE(std::getenv("CORVANE_TEST_VALUE"), nullptr);
  EXPECT_STREQ(std::getenv("CORVANE_TEST_VALUE"), "PAL");
}

}  // namespace
}  // namespace corvane
