// Where file dialogs open.
#include "project/dialog_folders.h"

#include "project/stream_dialogs.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace corvane {
namespace {

class DialogFolders : public ::testing::Test {
 protected:
  /// A folder that is there (native path).
  std::string made(const char* name) {
    std::filesystem::create_directories(path_of(folder_.path(name)));
    return folder_.path(name);
  }
  static std::string in(const std::string& folder) { return join_path(folder, "file.m2v"); }

  testing_support::temporary_folder folder_;
  memory_settings prefs_;
};

TEST_F(DialogFolders, OpenInTheFirstOneAtFirst) {
  dialog_folders folders(prefs_, made("first"));
  EXPECT_EQ(folders.folder_for(audio_dialog()), made("first"));
}

TEST_F(DialogFolders, OpenWhereTheUserIsNowWhenNoneOfTheirKindWasLeft) {
  dialog_folders folders(prefs_, made("first"));
  folders.left_at(video_dialog(true), in(made("films")));
  EXPECT_EQ(folders.folder_for(audio_dialog()), made("films"));
}

TEST_F(DialogFolders, EachKindOpensWhereItWasLeft) {
  dialog_folders folders(prefs_, made("first"));
  folders.left_at(video_dialog(true), in(made("films")));
  folders.left_at(audio_dialog(), in(made("sounds")));
  EXPECT_EQ(folders.folder_for(video_dialog(true)), made("films"));
  EXPECT_EQ(folders.folder_for(audio_dialog()), made("sounds"));
}

TEST_F(DialogFolders, WordsInBracketsMakeNoOtherKind) {
  dialog_folders folders(prefs_, made("first"));
  folders.left_at(audio_dialog(), in(made("sounds")));
  folders.left_at(video_dialog(true), in(made("films")));
  file_dialog of_menu = audio_dialog();
  of_menu.title += " (If no audio is needed for the menu, press cancel)";
  EXPECT_EQ(folders.folder_for(of_menu), made("sounds"));
}

TEST_F(DialogFolders, TheFolderThatADialogAsksForComesFirst) {
  dialog_folders folders(prefs_, made("first"));
  file_dialog dialog = video_dialog(true);
  folders.left_at(dialog, in(made("films")));
  dialog.folder = made("project");
  EXPECT_EQ(folders.folder_for(dialog), made("project"));
}

TEST_F(DialogFolders, AreRememberedForTheNextProgram) {
  {
    dialog_folders folders(prefs_, made("first"));
    folders.left_at(video_dialog(true), in(made("films")));
    folders.left_at(audio_dialog(), in(made("sounds")));
  }
  dialog_folders next(prefs_, made("first"));
  EXPECT_EQ(next.folder_for(video_dialog(true)), made("films"));
  EXPECT_EQ(next.folder_for(audio_dialog()), made("sounds"));
  // Where the user is now comes before where he was another day.
  next.left_at(video_dialog(true), in(made("new")));
  EXPECT_EQ(next.folder_for(audio_dialog()), made("new"));
}

TEST_F(DialogFolders, AFolderThatIsGoneIsPassedOver) {
  dialog_folders folders(prefs_, made("first"));
  folders.left_at(audio_dialog(), in(made("sounds")));
  folders.left_at(video_dialog(true), in(made("films")));
  std::filesystem::remove(made("sounds"));
  EXPECT_EQ(folders.folder_for(audio_dialog()), made("films"));
}

}  // namespace
}  // namespace corvane
