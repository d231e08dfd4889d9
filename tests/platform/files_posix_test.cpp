// Writing files on POSIX systems: links, access rights, a disk that is full.
#include "platform/files/files.h"
#include "support/ordinary_user_posix.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <string>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

namespace corvane {
namespace {

namespace fs = std::filesystem;
using testing_support::ordinary_user;
using testing_support::temporary_folder;

/// Files of this process cannot grow beyond a size, as on a full disk.
class small_disk {
 public:
  explicit small_disk(rlim_t bytes) : old_handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    ::getrlimit(RLIMIT_FSIZE, &old_);
    rlimit limit = old_;
    limit.rlim_cur = bytes;
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~small_disk() {
    ::setrlimit(RLIMIT_FSIZE, &old_);
    std::signal(SIGXFSZ, old_handler_);
  }
  small_disk(const small_disk&) = delete;
  small_disk& operator=(const small_disk&) = delete;

 private:
  rlimit old_{};
  void (*old_handler_)(int);
};

TEST(WritingFiles, AFullDiskLeavesTheOldFileWhole) {
  const temporary_folder folder;
  const std::string file = folder.add("project.cvp", "the old project");
  failure why;
  {
    const small_disk disk(4096);
    why = write_file(file, std::string(100'000, 'x'));
  }
  ASSERT_TRUE(why);
  EXPECT_FALSE(why->empty());
  EXPECT_EQ(folder.read("project.cvp"), "the old project");
  EXPECT_EQ(files_in(folder.path()).size(), 1u) << "the unfinished text is removed";
}

TEST(WritingFiles, ALinkKeepsBeingOne) {
  const temporary_folder folder;
  const std::string file = folder.add("real/project.cvp", "old");
  fs::create_symlink("real/project.cvp", folder.path("near"));
  fs::create_symlink("near", folder.path("far"));
  EXPECT_EQ(write_file(folder.path("far"), "new"), std::nullopt);
  EXPECT_TRUE(fs::is_symlink(folder.path("far")));
  EXPECT_TRUE(fs::is_symlink(folder.path("near")));
  EXPECT_EQ(folder.read("real/project.cvp"), "new");
}

TEST(WritingFiles, ALinkIsReplacedItselfWhereThatIsWanted) {
  const temporary_folder folder;
  folder.add("real", "old");
  fs::permissions(folder.path("real"), fs::perms::all);
  fs::create_symlink("real", folder.path("link"));
  fs::create_symlink("nowhere", folder.path("broken"));
  for (const char* const name : {"link", "broken"}) {
    EXPECT_EQ(replace_file(folder.path(name), "new"), std::nullopt);
    EXPECT_FALSE(fs::is_symlink(folder.path(name)));
    EXPECT_EQ(folder.read(name), "new");
  }
  EXPECT_EQ(folder.read("real"), "old");
  EXPECT_FALSE(entry_exists(folder.path("nowhere")));
  EXPECT_NE(fs::status(folder.path("link")).permissions(), fs::perms::all) << "those of the other";
}

TEST(WritingFiles, ALinkPutWhereTheTextIsWrittenFirstIsNotFollowed) {
  const temporary_folder folder;
  folder.add("a", "old");
  folder.add("mine", "mine");
  fs::create_symlink("mine", folder.path("a.corvane-part" + std::to_string(::getpid())));
  EXPECT_EQ(write_file(folder.path("a"), "new"), std::nullopt);
  EXPECT_EQ(folder.read("a"), "new");
  EXPECT_EQ(folder.read("mine"), "mine");
  EXPECT_EQ(files_in(folder.path()), (std::vector<std::string>{"a", "mine"}));
}

TEST(WritingFiles, WhatALinkNamesExistsWhereverItLeads) {
  const temporary_folder folder;
  fs::create_symlink("nowhere", folder.path("broken"));
  EXPECT_TRUE(entry_exists(folder.path("broken")));
  EXPECT_TRUE(move_entry(folder.path("broken"), folder.path("broken")));
  EXPECT_EQ(move_entry(folder.path("broken"), folder.path("moved")), std::nullopt);
  EXPECT_TRUE(fs::is_symlink(folder.path("moved")));
}

TEST(WritingFiles, WhereALinkLeadsThereIsAFileAfterwardsAndTheLinkStays) {
  const temporary_folder folder;
  fs::create_directory(folder.path("real"));
  fs::create_symlink("real/project.cvp", folder.path("near"));
  fs::create_symlink(folder.path("near"), folder.path("far"));
  EXPECT_EQ(write_file(folder.path("far"), "new"), std::nullopt);
  EXPECT_TRUE(fs::is_symlink(folder.path("far")));
  EXPECT_TRUE(fs::is_symlink(folder.path("near")));
  EXPECT_EQ(folder.read("real/project.cvp"), "new");
}

TEST(WritingFiles, LinksThatLeadNowhereAreTold) {
  const temporary_folder folder;
  fs::create_symlink("b", folder.path("a"));
  fs::create_symlink("a", folder.path("b"));
  EXPECT_TRUE(write_file(folder.path("a"), "new"));
  fs::create_symlink("gone/file", folder.path("c"));
  EXPECT_TRUE(write_file(folder.path("c"), "new"));
  EXPECT_EQ(files_in(folder.path()).size(), 3u);
}

TEST(WritingFiles, AFileIsWrittenIntoWhereItsFolderLetsItNotBeReplaced) {
  const temporary_folder folder;
  const std::string file = folder.add("closed/project.cvp", "old");
  const auto before = fs::hard_link_count(file);
  fs::create_hard_link(file, folder.path("same"));
  const ordinary_user user(folder);
  fs::permissions(folder.path("closed"), fs::perms::owner_read | fs::perms::owner_exec);
  const std::string longer(100'000, 'x');
  for (const std::string& text : {longer, std::string("short")}) {
    EXPECT_EQ(write_file(file, text), std::nullopt);
    EXPECT_EQ(folder.read("closed/project.cvp"), text);
    EXPECT_EQ(folder.read("same"), text);
  }
  EXPECT_EQ(fs::hard_link_count(file), before + 1);
  EXPECT_TRUE(write_file(folder.path("closed/other.cvp"), "new"));
  fs::permissions(folder.path("closed"), fs::perms::owner_all);
}

TEST(WritingFiles, AFullDiskLeavesAFileWholeThatCannotBeReplaced) {
  const temporary_folder folder;
  const std::string file = folder.add("closed/project.cvp", "old");
  const ordinary_user user(folder);
  fs::permissions(folder.path("closed"), fs::perms::owner_read | fs::perms::owner_exec);
  failure why;
  {
    const small_disk disk(4096);
    why = write_file(file, std::string(100'000, 'x'));
  }
  EXPECT_EQ(why, failure(std::strerror(EFBIG)));
  EXPECT_EQ(folder.read("closed/project.cvp"), "old");
  fs::permissions(folder.path("closed"), fs::perms::owner_all);
}

TEST(WritingFiles, AWriteProtectedFileIsNeitherReplacedNorWrittenInto) {
  const temporary_folder folder;
  const std::string file = folder.add("a", "old");
  fs::permissions(file, fs::perms::owner_read);
  EXPECT_EQ(write_file(file, "new"), failure("it is write-protected")) << "for root, too";
  const ordinary_user user(folder);
  EXPECT_EQ(write_file(file, "new"), failure("it is write-protected"));
  EXPECT_EQ(why_not_writable_file(file), failure("is write-protected"));
  EXPECT_EQ(why_not_writable_file(folder.path("gone")), std::nullopt);
  EXPECT_EQ(folder.read("a"), "old");
}

TEST(WritingFiles, AccessRightsStay) {
  const temporary_folder folder;
  const std::string file = folder.add("a", "old");
  for (const auto mode : {fs::perms::owner_read | fs::perms::owner_write,
                          fs::perms::all & ~fs::perms::others_write}) {
    fs::permissions(file, mode);
    EXPECT_EQ(write_file(file, "new"), std::nullopt);
    EXPECT_EQ(fs::status(file).permissions(), mode);
  }
}

}  // namespace
}  // namespace corvane
