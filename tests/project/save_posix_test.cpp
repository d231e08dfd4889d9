// Saving where the disk is full, over links and over what is not a file.
#include "project/project_file.h"
#include "sample_project.h"
#include "support/command_test.h"
#include "support/ordinary_user_posix.h"

#include <csignal>
#include <cstring>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>

namespace corvane {
namespace {

/// No file may grow beyond `bytes` while this lives: a write then fails as on a full disk.
class small_disk {
 public:
  explicit small_disk(rlim_t bytes) : old_handler_(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &old_);
    rlimit small = old_;
    small.rlim_cur = bytes;
    setrlimit(RLIMIT_FSIZE, &small);
  }
  ~small_disk() {
    setrlimit(RLIMIT_FSIZE, &old_);
    std::signal(SIGXFSZ, old_handler_);
  }
  small_disk(const small_disk&) = delete;
  small_disk& operator=(const small_disk&) = delete;

 private:
  rlimit old_{};
  void (*old_handler_)(int);
};

class SaveProjectPosix : public testing_support::command_test {
 protected:
  void expect_save_over(const std::string& native) {
    ask.expect_save({"save corvane project", testing_support::cvp_filter, ""}, native);
    if (file_exists(native))
      ask.expect(box("File exists.  Overwrite?", icon::exclamation, buttons::yes_no), answer::yes);
  }
  void expect_failure(const std::string& target, const std::string& why) {
    expect_error("The project could not be saved to \"" + target + "\": " + why +
                 ".  The file is as it was.");
  }
};

TEST_F(SaveProjectPosix, AFullDiskLeavesTheOldFileWholeAndNothingBesideIt) {
  const std::string old(5000, 'o');
  const std::string target = folder.add("disc.cvp", old);
  p.customxml = std::string(100000, 'x');
  expect_save_over(target);
  expect_failure(target, std::strerror(EFBIG));
  {
    const small_disk disk(8192);
    EXPECT_EQ(save_project(doc), save_outcome::failed);
  }
  EXPECT_EQ(folder.read("disc.cvp"), old);
  EXPECT_EQ(files_in(folder.path()), std::vector<std::string>{"disc.cvp"});
  EXPECT_EQ(p.saved, 0);
}

TEST_F(SaveProjectPosix, ADeviceIsNotReplaced) {
  // A pipe stands for it: nothing is lost should the save go wrong.
  const std::string target = folder.path("pipe");
  ASSERT_EQ(mkfifo(target.c_str(), 0600), 0);
  expect_save_over(target);
  expect_failure(target, "it is not a file");
  EXPECT_EQ(save_project(doc), save_outcome::failed);
  EXPECT_TRUE(std::filesystem::is_fifo(target));
}

TEST_F(SaveProjectPosix, ALinkStaysALink) {
  const std::string target = folder.add("real.cvp", "old");
  const std::string link = folder.path("link.cvp");
  std::filesystem::create_symlink(target, link);
  expect_save_over(link);
  EXPECT_EQ(save_project(doc), save_outcome::saved);
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_EQ(folder.read("real.cvp"), project_text(p));
}

TEST_F(SaveProjectPosix, AWriteProtectedProjectIsNotReplacedAndTheReasonIsTold) {
  const std::string target = folder.add("disc.cvp", "old");
  std::filesystem::permissions(target, std::filesystem::perms::owner_read);
  ask.expect_save({"save corvane project", testing_support::cvp_filter, ""}, target);
  ask.expect(box("\"" + target +
                     "\" is write-protected.  Nothing was saved: please choose another name with "
                     "\"save project...\", or let "
                     "the file be written.",
                 icon::exclamation));
  EXPECT_EQ(save_project(doc), save_outcome::failed);
  EXPECT_EQ(folder.read("disc.cvp"), "old");
  EXPECT_EQ(p.saved, 0);
}

TEST_F(SaveProjectPosix, AProjectIsSavedWhereOnlyItsFileMayBeWritten) {
  const std::string target = folder.add("closed/disc.cvp", "old");
  const testing_support::ordinary_user user(folder);
  std::filesystem::permissions(folder.path("closed"), std::filesystem::perms::owner_read |
                                                          std::filesystem::perms::owner_exec);
  expect_save_over(target);
  EXPECT_EQ(save_project(doc), save_outcome::saved);
  EXPECT_EQ(folder.read("closed/disc.cvp"), project_text(p));
  std::filesystem::permissions(folder.path("closed"), std::filesystem::perms::owner_all);
}

TEST_F(SaveProjectPosix, ALinkThatLeadsToNoFileYetStaysOne) {
  const std::string link = folder.path("link.cvp");
  std::filesystem::create_symlink("real.cvp", link);
  expect_save_over(link);
  EXPECT_EQ(save_project(doc), save_outcome::saved);
  EXPECT_TRUE(std::filesystem::is_symlink(link));
  EXPECT_EQ(folder.read("real.cvp"), project_text(p));
}

TEST_F(SaveProjectPosix, AMenuWithoutSoundIsNotMissingWhereNothingCanBeWritten) {
  const std::string here = absolute_path(".");
  std::filesystem::create_directory(folder.path("closed"));
  project silent;
  silent.menulist = {folder.stored("menu.m2v") + "/"};
  silent.moremenuoptions = {""};
  folder.add("menu.m2v");
  const std::string file = folder.add("disc.cvp", project_text(silent));
  const testing_support::ordinary_user user(folder);
  std::filesystem::permissions(folder.path("closed"), std::filesystem::perms::owner_read |
                                                          std::filesystem::perms::owner_exec);
  std::filesystem::current_path(folder.path("closed"));
  EXPECT_TRUE(loadprojectf(doc, file));
  std::filesystem::current_path(here);
  std::filesystem::permissions(folder.path("closed"), std::filesystem::perms::owner_all);
}

TEST_F(SaveProjectPosix, NamesThatARowCannotHoldAreFineForProjectFiles) {
  const std::string target = folder.path("a|b\\c\".cvp");
  expect_save_over(target);
  EXPECT_EQ(save_project(doc), save_outcome::saved);
  EXPECT_TRUE(loadprojectf(doc, target));
}

}  // namespace
}  // namespace corvane
