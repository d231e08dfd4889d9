// The program folder of Windows, and what other programs do to files there.
#include "platform/files/program_folder.h"
#include "platform/text/utf16_windows.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <thread>
#include <windows.h>

namespace corvane {
namespace {

using namespace std::chrono_literals;
using testing::HasSubstr;
using testing_support::temporary_folder;

TEST(ProgramFolderOfWindows, WhereNothingCanBeWrittenIsTold) {
  const std::filesystem::path before = std::filesystem::current_path();
  {
    const temporary_folder folder;
    // In place of a folder without rights, which this user may have everywhere.
    ASSERT_FALSE(make_folders(folder.path("corvane.lock")));
    const failure why = enter_program_folder(folder.path());
    std::filesystem::current_path(before);
    ASSERT_TRUE(why);
    EXPECT_THAT(*why, HasSubstr("nothing can be written into the program folder \"" +
                                folder.path() + "\": "));
  }
}

/// Opens the file as a virus scanner does, so that it cannot be replaced.
HANDLE open_alone(const std::string& file) {
  return ::CreateFileW(utf16(file).c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                       0, nullptr);
}

TEST(WritingOnWindows, WaitsForAProgramThatLooksAtTheFile) {
  const temporary_folder folder;
  const std::string file = folder.add("a", "old");
  const HANDLE used = open_alone(file);
  ASSERT_NE(used, INVALID_HANDLE_VALUE);
  std::thread scanner([used] {
    std::this_thread::sleep_for(150ms);
    ::CloseHandle(used);
  });
  EXPECT_EQ(write_file(file, "new"), std::nullopt);
  scanner.join();
  EXPECT_EQ(folder.read("a"), "new");
}

TEST(WritingOnWindows, GivesUpOnAFileThatStaysOpen) {
  const temporary_folder folder;
  const std::string file = folder.add("a", "old");
  const HANDLE used = open_alone(file);
  ASSERT_NE(used, INVALID_HANDLE_VALUE);
  EXPECT_TRUE(write_file(file, "new"));
  ::CloseHandle(used);
  EXPECT_EQ(folder.read("a"), "old");
  EXPECT_EQ(files_in(folder.path()), (std::vector<std::string>{"a"}));
}

TEST(WritingOnWindows, DoesNotReplaceAReadOnlyFile) {
  const temporary_folder folder;
  const std::string file = folder.add("a", "old");
  ASSERT_NE(::SetFileAttributesW(utf16(file).c_str(), FILE_ATTRIBUTE_READONLY), 0);
  EXPECT_EQ(write_file(file, "new"), "it is write-protected");
  ::SetFileAttributesW(utf16(file).c_str(), FILE_ATTRIBUTE_NORMAL);
  EXPECT_EQ(folder.read("a"), "old");
}

}  // namespace
}  // namespace corvane
