// A test with the real main window on the display, in folders of its own.
#pragma once

#include "project/project.h"
#include "support/temporary_folder.h"
#include "ui/robot.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane {
class main_window;
}

namespace corvane::testing_support {

class window_test : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  /// Adds a title through the dialogs.
  void add_title(const std::string& video, const std::string& audio);

  /// A project of `titles` titles ("a.m2v" with "a.ac3", "b.m2v", ...) and two menus: "intro.m2v"
  /// with audio and two buttons, "second.m2v" with neither. Its files are there; those of the menus
  /// are real.
  project project_with_menus(int titles);

  /// Saves a project as it is and loads it into the window.
  void load(const project& p);

  /// Asks a window to close, as its close box does.
  static void close(const std::string& name);

  /// The same, and waits until it is gone.
  static void close_and_wait(const std::string& name);

  /// Chooses an entry (0-based) of a drop-down list of a window at once, as a user does.
  static void choose_entry(const std::string& list, int entry, const std::string& window);

  /// Closes the main window as the end of the session does, while a dialog stands, and sees that
  /// the window waits for that dialog.
  void end_session();

  /// Puts a shell script of the test's own in a tool's place; returns when it is there.
  void replace_tool(const std::string& name, const std::string& script);

  /// Answers the question where missing files are now: the user does not know, or it is this
  /// folder.
  static void leave_missing_files();
  static void find_missing_files(const std::string& folder);

  /// Rows of the title list as they are shown.
  static std::vector<std::string> rows();
  static int selection();

  /// Path of a file that is there before the test, with "x" in it or real media.
  std::string file(const std::string& name) { return folder_.add(name); }

  /// Names of the files in the test's folder, not of those in folders of it, sorted.
  std::vector<std::string> files_here() const;

  temporary_folder folder_;
  std::string app_;  ///< the program folder
  main_window* window_ = nullptr;
};

/// Short real videos, NTSC and PAL, and AC-3 audio for them, made once by ffmpeg.
std::string real_video();
std::string real_pal_video();
std::string real_wide_video();  ///< NTSC, 16:9
std::string real_audio();

/// An NTSC video of ten seconds, and audio for it: a tone of 440 Hz that becomes one of 880 Hz
/// after three.
std::string real_long_video();
std::string real_changing_audio();

}  // namespace corvane::testing_support
