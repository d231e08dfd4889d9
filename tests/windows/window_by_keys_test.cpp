// corvane.exe used by the keys alone, and what the screen shows of videos.
//
// Variables: CORVANE_SAMPLE_VIDEO, a PAL video; CORVANE_FIRST_PICTURE and CORVANE_LATER_PICTURE,
// two of its pictures as ffmpeg gives them (PPM).
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/project_file.h"
#include "project/subtitle_rows.h"
#include "support/small_streams.h"
#include "windows/keys_and_screen.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace corvane::testing_support {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;

constexpr const char* video_question = "select video stream";
constexpr const char* menu_audio_question =
    "select audio stream (If no audio is needed for the menu, press cancel)";
constexpr int least_picture = 150;   ///< pixels a side
constexpr double like_enough = 8.0;  ///< of 255: what scaling makes of edges

class CorvaneUse : public testing::Test {
 protected:
  const temporary_folder& folder() const { return program_.folder(); }
  std::vector<std::string> titles() const {
    return rows_of(find_control(program_.main(), "ListBox"));
  }
  std::string status() const {
    return text_of_window(find_control(program_.main(), "msctls_statusbar32"));
  }

  /// As long as the sample video: 24 s in frames of 24 ms.
  static std::string sound_of_sample() {
    std::string sound;
    for (int frame = 0; frame < 1000; ++frame)
      sound += small_sound();
    return sound;
  }

  /// Opens a project of two titles, the first a real video, and selects that one.
  void start_with_project() {
    const char* video = std::getenv("CORVANE_SAMPLE_VIDEO");
    ASSERT_NE(video, nullptr) << "start these tests with window_test.sh";
    std::filesystem::copy_file(path_of(video), path_of(folder().path("garden.m2v")));
    folder().add("garden.ac3", sound_of_sample());
    folder().add("wüste 字.m2v", small_video(video_standard::pal));
    folder().add("wüste 字.ac3", small_sound());
    project p;
    for (const std::string name : {"garden", "wüste 字"}) {
      p.List11.push_back(folder().stored(name + ".m2v") + "/" + folder().stored(name + ".ac3"));
      p.chapters.emplace_back("00:00:00.00");
      p.delay.emplace_back("0");
      p.subtitledata.emplace_back("<none>");
      p.subtitleoptions.push_back(default_subtitleoptions("PAL"));
    }
    p.globalregion = "PAL";
    rebuild_List1(p);
    program_.start("\"" + folder().add("film.cvp", project_text(p)) + "\"");
    wait_until([&] { return titles() == p.List1; }, "the titles");
    press({VK_HOME});
  }

  /// Presses the keys, waits for the window of that title, and closes it with Escape.
  void opens_and_closes(std::initializer_list<WORD> keys, const std::string& title) {
    program_.window("Corvane 0.997 - 1/2/2005");
    press(keys);
    program_.window(title);
    screenshot("use-" + title);
    press({VK_ESCAPE});
    goes(title);
  }
  void goes(const std::string& title) {
    wait_until([&] { return !program_.has_window(title); }, "the end of \"" + title + '"');
  }

  /// Whether one of the window's parts that the program draws itself shows this picture.
  static bool shows_picture(HWND window, const char* variable) {
    const char* path = std::getenv(variable);
    const pixels wanted = picture_file(path == nullptr ? std::string() : path);
    std::vector<HWND> all = shown_controls(window, "wxWindow");
    for (HWND control : shown_controls(window, "wxWindowNR"))
      all.push_back(control);
    return std::any_of(all.begin(), all.end(), [&](HWND control) {
      const pixels seen = pixels_of(control);
      return seen.width >= least_picture && seen.height >= least_picture &&
             difference(seen, wanted) < like_enough;
    });
  }

  window_program program_;
};

TEST_F(CorvaneUse, WithoutAProjectSaysHowToBeginAndEndsWithoutAsking) {
  program_.start();
  EXPECT_THAT(titles(), IsEmpty());
  EXPECT_EQ(status(), "Click \"add title\" or drop video and audio streams here to begin.");
  screenshot("use-empty");
  press({VK_CONTROL, 'Q'});
  goes("Corvane 0.997 - 1/2/2005");
}

TEST_F(CorvaneUse, AddsATitleAndSavesTheProjectByTheKeys) {
  const std::string video = folder().add("größe 字.m2v");
  const std::string audio = folder().add("größe 字.ac3");
  program_.start();
  press({VK_CONTROL, 'T'});
  answer_file(program_, video_question, video);
  answer_file(program_, "select audio stream", audio);
  wait_until([this] { return titles().size() == 1; }, "the title");
  EXPECT_THAT(titles().front(), HasSubstr("größe 字.m2v"));
  EXPECT_EQ(status(), "");
  program_.window("Corvane 0.997 - 1/2/2005");
  press({VK_CONTROL, 'S'});
  const std::string saved = folder().path("saved 字.cvp");
  answer_file(program_, "save corvane project", saved);
  wait_until([&] { return file_exists(saved); }, "the file");
  EXPECT_THAT(folder().read("saved 字.cvp"), HasSubstr(folder().stored("größe 字.m2v") + "/" +
                                                       folder().stored("größe 字.ac3") + "\r\n"));
}

TEST_F(CorvaneUse, AuthorsWithStandInsForTheToolsUntilTheProcessIsComplete) {
  start_with_project();
  press({VK_F5});
  answer_file(program_, "enter a folder name to create the dvd", folder().path("disc 字"));
  const HWND message = program_.window("Corvane");
  EXPECT_NE(find_control(message, "Static",
                         "Process complete.  Please review the log for more information "
                         "(recommended)."),
            nullptr);
  screenshot("use-complete");
  EXPECT_THAT(folder().read("program\\bin\\calls"), HasSubstr("dvdauthor"));
  EXPECT_TRUE(folder_exists(folder().path("disc 字")));
}

TEST_F(CorvaneUse, WindowsOpenWithTheirKeysAndCloseWithEscape) {
  start_with_project();
  opens_and_closes({VK_CONTROL, 'H'}, "chapters");
  opens_and_closes({VK_CONTROL, 'J'}, "navigation commands editor");
  opens_and_closes({VK_CONTROL, 'G'}, "language tags");
  opens_and_closes({VK_CONTROL, 'B'}, "Corvane - subtitles");
  opens_and_closes({VK_CONTROL, VK_SHIFT, 'S'}, "save corvane project");
  EXPECT_EQ(titles().size(), 2u);
}

TEST_F(CorvaneUse, MenuEditorShowsTheVideoOfANewMenu) {
  start_with_project();
  press({VK_CONTROL, 'M'});
  answer_file(program_, video_question, folder().path("garden.m2v"));
  program_.window(menu_audio_question);
  press({VK_ESCAPE});
  const HWND editor = program_.window("titleset menu");
  wait_until([&] { return shows_picture(editor, "CORVANE_FIRST_PICTURE"); }, "the picture");
  EXPECT_FALSE(shows_picture(editor, "CORVANE_LATER_PICTURE"));
  screenshot("use-menu-editor");
  ::PostMessageW(editor, WM_SYSCOMMAND, SC_CLOSE, 0);
  goes("titleset menu");
}

TEST_F(CorvaneUse, ChaptersEditorShowsThePictureThatFfmpegGives) {
  start_with_project();
  press({VK_CONTROL, 'H'});
  program_.window("chapters");
  press({VK_MENU, 'V'});
  program_.window("Corvane");
  press({VK_RETURN});
  const HWND editor = program_.window("chapters editor");
  wait_until([&] { return shows_picture(editor, "CORVANE_FIRST_PICTURE"); }, "the picture");
  EXPECT_FALSE(shows_picture(editor, "CORVANE_LATER_PICTURE"));
  screenshot("use-chapters-editor");
}

}  // namespace
}  // namespace corvane::testing_support
