#include "platform/files/files.h"
#include "platform/text/utf16_windows.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>
#include <windows.h>

namespace corvane {
namespace {

using testing_support::temporary_folder;

TEST(FoldersOfWindows, APlaceOnAServerStaysThere) {
  EXPECT_EQ(absolute_path("\\\\server\\share\\films\\..\\dvd\\"), "\\\\server\\share\\dvd");
  EXPECT_EQ(absolute_path("\\\\server\\share\\a.cvp"), "\\\\server\\share\\a.cvp");
  EXPECT_EQ(text_of(path_of("\\\\server\\share\\corvane.exe").parent_path()), "\\\\server\\share");
}

TEST(FoldersOfWindows, ARootStaysARoot) {
  EXPECT_EQ(absolute_path("C:\\"), "C:\\");
  EXPECT_EQ(absolute_path("C:\\films\\.."), "C:\\");
}

TEST(FoldersOfWindows, ADriveAloneIsItsCurrentFolder) {
  const std::string here = absolute_path(".");
  EXPECT_EQ(absolute_path(here.substr(0, 2)), here);
  EXPECT_EQ(absolute_path(here.substr(0, 2) + "film.cvp"), join_path(here, "film.cvp"));
  EXPECT_EQ(absolute_path("\\film.cvp"), here.substr(0, 2) + "\\film.cvp");
}

TEST(FoldersOfWindows, SlashesAreTurned) {
  EXPECT_EQ(absolute_path("C:/films/a.cvp"), "C:\\films\\a.cvp");
}

// 380 characters: more than the system's old limit of 260.
std::string long_folder(const temporary_folder& in) {
  std::string path = in.path();
  for (const char c : std::string("abcdef"))
    path = join_path(path, std::string(60, c));
  EXPECT_FALSE(make_folders(path));
  return path;
}

TEST(FoldersOfWindows, AFolderWithALongPathIsListedAndRemoved) {
  const temporary_folder folder;
  const std::string deep = long_folder(folder);
  ASSERT_FALSE(write_file(join_path(deep, "b"), "x"));
  ASSERT_FALSE(write_file(join_path(deep, "a"), "x"));
  EXPECT_EQ(files_in(deep), (std::vector<std::string>{"a", "b"}));
  EXPECT_FALSE(remove_all(folder.path(std::string(60, 'a'))));
  EXPECT_FALSE(folder_exists(folder.path(std::string(60, 'a'))));
}

TEST(FoldersOfWindows, WhatIsInUseIsNotRemovedAndSaysSo) {
  const temporary_folder folder;
  const std::string file = folder.add("disc\\a");
  const HANDLE used = ::CreateFileW(utf16(file).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, 0, nullptr);
  ASSERT_NE(used, INVALID_HANDLE_VALUE);
  EXPECT_TRUE(remove_all(folder.path("disc")));
  EXPECT_TRUE(file_exists(file));
  ::CloseHandle(used);
  EXPECT_FALSE(remove_all(folder.path("disc")));
  EXPECT_FALSE(folder_exists(folder.path("disc")));
  EXPECT_FALSE(remove_all(folder.path("disc"))) << "missing is success";
}

}  // namespace
}  // namespace corvane
