#include "platform/files/files.h"

#include "platform/files/durable_write.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

namespace corvane {
namespace {

namespace fs = std::filesystem;
using testing_support::temporary_folder;

const std::string odd_name = "50% & Müller's #1 ! ^ $HOME `x` 字";

TEST(Files, ExistAndHaveASize) {
  const temporary_folder folder;
  const std::string file = folder.add(odd_name, "12345");
  EXPECT_TRUE(file_exists(file));
  EXPECT_FALSE(folder_exists(file));
  EXPECT_EQ(file_size(file), 5u);
  EXPECT_FALSE(file_exists(folder.path()));
  EXPECT_TRUE(folder_exists(folder.path()));
  EXPECT_EQ(file_size(folder.path()), std::nullopt);
  EXPECT_EQ(file_size(folder.path("absent")), std::nullopt);
}

TEST(Files, FirstBytesAreAsManyAsThereAre) {
  const temporary_folder folder;
  const std::string file = folder.add("a", std::string("a\r\n\0b", 5));
  EXPECT_EQ(*first_bytes(file, 3), "a\r\n");
  EXPECT_EQ(first_bytes(file, 100)->size(), 5u);
  EXPECT_FALSE(first_bytes(folder.path("absent"), 3));
}

TEST(Files, ReadingSaysWhyNot) {
  const temporary_folder folder;
  const std::string file = folder.add("a", "12345");
  EXPECT_EQ(*read_file(file, 5), "12345");
  EXPECT_EQ(read_file(file, 4).error, "the file is too large");
  EXPECT_EQ(read_file(folder.path("absent"), 5).error, "the file does not exist");
  EXPECT_EQ(read_file(folder.path(), 5).error, "it is a folder, not a file");
}

TEST(Files, WritingReplacesTheWholeText) {
  const temporary_folder folder;
  const std::string file = folder.path(odd_name);
  EXPECT_EQ(write_file(file, "a longer text\r\n"), std::nullopt);
  EXPECT_EQ(write_file(file, std::string("\0\n", 2)), std::nullopt);
  EXPECT_EQ(folder.read(odd_name), std::string("\0\n", 2));
  EXPECT_EQ(files_in(folder.path()), std::vector<std::string>{odd_name});
}

TEST(Files, WritingIntoAMissingFolderLeavesNothing) {
  const temporary_folder folder;
  EXPECT_TRUE(write_file(folder.path("none/a"), "x"));
  EXPECT_FALSE(folder_exists(folder.path("none")));
}

TEST(Files, WritingOverAFolderFailsAndLeavesNothingBeside) {
  const temporary_folder folder;
  folder.add("sub/a", "kept");
  EXPECT_TRUE(write_file(folder.path("sub"), "x"));
  EXPECT_EQ(folder.read("sub/a"), "kept");
  EXPECT_TRUE(files_in(folder.path()).empty());
}

TEST(Files, CopyingReplacesTheWholeTextAndSaysWhyNot) {
  const temporary_folder folder;
  const std::string from = folder.add(odd_name, "new");
  folder.add("to", "longer than before");
  EXPECT_FALSE(copy_file(from, folder.path("to")));
  EXPECT_EQ(folder.read("to"), "new");
  EXPECT_FALSE(copy_file(from, folder.path("a new one")));
  EXPECT_EQ(folder.read("a new one"), "new");
  EXPECT_NE(copy_file(folder.path("absent"), folder.path("to")).value_or(""), "");
  EXPECT_EQ(folder.read("to"), "new");
}

TEST(Files, RemovingTakesAFolderWithAllItHoldsAndAMissingOneIsDone) {
  const temporary_folder folder;
  folder.add("sub/deep/a");
  EXPECT_EQ(remove_all(folder.path("sub")), std::nullopt);
  EXPECT_FALSE(folder_exists(folder.path("sub")));
  EXPECT_EQ(remove_all(folder.path("sub")), std::nullopt);
}

TEST(Files, MovingGivesAFileOrFolderAnotherNameAndReplacesNothing) {
  const temporary_folder folder;
  folder.add("sub/deep/a", "a");
  folder.add("b", "b");
  EXPECT_EQ(move_entry(folder.path("sub"), folder.path("moved")), std::nullopt);
  EXPECT_FALSE(entry_exists(folder.path("sub")));
  EXPECT_EQ(folder.read("moved/deep/a"), "a");
  folder.add("c/b", "c");
  EXPECT_EQ(move_entry(folder.path("b"), folder.path("c/moved")), std::nullopt);
  EXPECT_EQ(folder.read("c/moved"), "b");
  EXPECT_TRUE(move_entry(folder.path("c/moved"), folder.path("c/b")));
  EXPECT_TRUE(move_entry(folder.path("c"), folder.path("moved")));
  EXPECT_TRUE(move_entry(folder.path("absent"), folder.path("x")));
  EXPECT_EQ(folder.read("c/b"), "c");
  EXPECT_EQ(folder.read("c/moved"), "b");
  EXPECT_EQ(folder.read("moved/deep/a"), "a");
}

TEST(Files, ReplacingGivesAFileItsNewTextAndNoFolder) {
  const temporary_folder folder;
  folder.add("a", "old");
  folder.add("sub/a", "kept");
  EXPECT_EQ(replace_file(folder.path("a"), "new"), std::nullopt);
  EXPECT_EQ(folder.read("a"), "new");
  EXPECT_EQ(replace_file(folder.path("b"), "new"), std::nullopt);
  EXPECT_EQ(folder.read("b"), "new");
  EXPECT_TRUE(replace_file(folder.path("sub"), "new"));
  EXPECT_EQ(folder.read("sub/a"), "kept");
  EXPECT_EQ(files_in(folder.path()), (std::vector<std::string>{"a", "b"}));
}

TEST(Files, FoldersAreMadeWithTheOnesAbove) {
  const temporary_folder folder;
  EXPECT_EQ(make_folders(folder.path("a/b/" + odd_name)), std::nullopt);
  EXPECT_EQ(make_folders(folder.path("a/b/" + odd_name)), std::nullopt);
  EXPECT_TRUE(folder_exists(folder.path("a/b/" + odd_name)));
  folder.add("file");
  EXPECT_TRUE(make_folders(folder.path("file/a")));
}

TEST(Files, AnAbsolutePathIsTidy) {
  const std::string here = text_of(fs::current_path());
  EXPECT_EQ(absolute_path("a/../b/./c/"), join_path(join_path(here, "b"), "c"));
  EXPECT_EQ(absolute_path("."), here);
  EXPECT_TRUE(is_absolute(absolute_path("/")));
}

TEST(Files, OnePlaceHasManyNames) {
  const temporary_folder folder;
  const std::string file = folder.add("a");
  EXPECT_TRUE(same_place(file, folder.path("./a")));
  EXPECT_FALSE(same_place(file, folder.add("b")));
  EXPECT_FALSE(same_place(file, folder.path("absent")));
}

TEST(Files, TheCurrentFolderMayHoldOne) {
  const fs::path before = fs::current_path();
  const temporary_folder folder;
  fs::create_directories(path_of(folder.path("sub")));
  fs::current_path(path_of(folder.path()));
  EXPECT_FALSE(current_folder_holds_a_file());
  folder.add("a");
  EXPECT_TRUE(current_folder_holds_a_file());
  fs::current_path(before);
}

TEST(WritingFiles, ANameMayBeAsLongAsTheSystemTakes) {
  const testing_support::temporary_folder folder;
  const std::string ascii = std::string(246, 'a') + ".cvp";
  std::string accents = "a";  // so that a cut at an even place falls between two bytes
  for (int i = 0; i < 60; ++i)
    accents += "\xC3\xA9";
  for (const std::string& name : {ascii, accents}) {
    EXPECT_EQ(write_file(folder.path(name), "old"), std::nullopt);
    EXPECT_EQ(write_file(folder.path(name), "new"), std::nullopt);
    EXPECT_EQ(folder.read(name), "new");
  }
  EXPECT_EQ(files_in(folder.path()).size(), 2u);
}

// No process has this number: systems give none that is so large.
constexpr const char* ended_process = "999999999";

TEST(LeftParts, GoWithTheNextTextWhereTheirProgramIsGone) {
  const testing_support::temporary_folder folder;
  folder.add("a.cvp.corvane-part" + std::string(ended_process));
  folder.add("b.cvp.corvane-part" + std::string(ended_process));
  folder.add("a.cvp.corvane-part1x");
  folder.add("a.cvp.corvane-part");
  EXPECT_EQ(write_file(folder.path("a.cvp"), "new"), std::nullopt);
  EXPECT_EQ(files_in(folder.path()),
            (std::vector<std::string>{"a.cvp", "a.cvp.corvane-part", "a.cvp.corvane-part1x",
                                      "b.cvp.corvane-part" + std::string(ended_process)}));
}

TEST(LeftParts, OfOtherProgramsStay) {
  const testing_support::temporary_folder folder;
  const std::vector<std::string> theirs = {"film.cvp.part" + std::string(ended_process),
                                           "film.part" + std::string(ended_process)};
  for (const std::string& name : theirs)
    folder.add(name);
  remove_left_parts(folder.path());
  EXPECT_EQ(files_in(folder.path()), theirs);
  EXPECT_EQ(write_file(folder.path("film.cvp"), "new"), std::nullopt);
  EXPECT_EQ(files_in(folder.path()), (std::vector<std::string>{"film.cvp", theirs[0], theirs[1]}));
}

TEST(LeftParts, OfAFolderOfOurOwnGoButForThoseOfProgramsThatRun) {
  const testing_support::temporary_folder folder;
  const std::string ours = "a.corvane-part" + std::to_string(process_number());
  folder.add(ours);
  folder.add("a.corvane-part" + std::string(ended_process));
  folder.add(std::string(100, 'n') + ".corvane-part" + ended_process);
  folder.add("CorvaneLOG.txt.part");
  remove_left_parts(folder.path());
  EXPECT_EQ(files_in(folder.path()), (std::vector<std::string>{"CorvaneLOG.txt.part", ours}));
}

}  // namespace
}  // namespace corvane
