// A menu without audio in a loaded project: its empty path stands for any file of the current
// folder.
#include "project/project_file.h"
#include "support/command_test.h"

#include <filesystem>

namespace corvane {
namespace {

/// Makes a folder the current one for the length of a test.
class current_folder {
 public:
  explicit current_folder(const std::string& native) : old_(std::filesystem::current_path()) {
    std::filesystem::current_path(path_of(native));
  }
  ~current_folder() { std::filesystem::current_path(old_); }
  current_folder(const current_folder&) = delete;
  current_folder& operator=(const current_folder&) = delete;

 private:
  std::filesystem::path old_;
};

class MenuAudio : public testing_support::command_test {
 protected:
  std::string add_menu_without_audio() {
    folder.add("m.m2v");
    project menus;
    menus.menulist = {folder.stored("m.m2v") + "/"};
    menus.moremenuoptions = {"0\t00:00:00.0\t00:00:00.0\t1"};
    return folder.add("menus.cvp", project_text(menus));
  }
};

TEST_F(MenuAudio, IsNotMissedWhileTheCurrentFolderHoldsAFile) {
  const std::string file = add_menu_without_audio();
  const current_folder here(folder.path());
  EXPECT_TRUE(loadprojectf(doc, file));
  EXPECT_EQ(p.menulist.size(), 1u);
}

TEST_F(MenuAudio, IsMissedWhereTheCurrentFolderHoldsNone) {
  const std::string file = add_menu_without_audio();
  ASSERT_FALSE(make_folders(folder.path("none")));
  const current_folder here(folder.path("none"));
  expect_missing("");
  EXPECT_FALSE(loadprojectf(doc, file));
  EXPECT_TRUE(p.menulist.empty());
}

}  // namespace
}  // namespace corvane
