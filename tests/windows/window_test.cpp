// The windows of corvane.exe, as far as they are the system's own: what the controls show, boxes,
// keys, the registry. What the windows do is tested where they were written first (tests/ui).
#include "media/tiny_stream.h"
#include "platform/settings/settings.h"
#include "project/project_file.h"
#include "project/subtitle_rows.h"
#include "windows/keys_and_screen.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <windows.h>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing_support::entries_of;
using testing_support::find_control;
using testing_support::press;
using testing_support::rows_of;
using testing_support::text_of_window;
using testing_support::wait_until;
using testing_support::window_program;

/// Two seconds of grey, in groups of half a second.
std::string short_video() {
  media_test::tiny_stream stream;
  for (int group = 0; group < 4; ++group) {
    stream.sequence().group();
    for (int i = 0; i < 13; ++i)
      stream.add(i == 0 ? 'I' : 'P', 60 + 10 * i, i);
  }
  return stream.end().bytes;
}

class CorvaneWindow : public testing::Test {
 protected:
  /// Opens a project with one title, whose name no 8-bit code page can write.
  void start_with_title(const std::string& name = "projekt ü 電影.cvp",
                        const std::string& quote = "\"") {
    const testing_support::temporary_folder& folder = program_.folder();
    folder.add("film ü 電影.m2v", short_video());
    folder.add("film ü 電影.ac3");
    project p;
    p.List11 = {folder.stored("film ü 電影.m2v") + "/" + folder.stored("film ü 電影.ac3")};
    p.chapters = {"00:00:00.00,00:00:01.00"};
    p.delay = {"0"};
    p.subtitledata = {"<none>"};
    p.subtitleoptions = {default_subtitleoptions("NTSC")};
    p.postinfo = {};
    rebuild_List1(p);
    row_ = p.List1[0];
    const std::string file = folder.add(name, project_text(p));
    program_.start(quote + file + quote);
    titles_ = find_control(program_.main(), "ListBox");
    wait_until([this] { return !rows_of(titles_).empty(); }, "the title");
  }

  /// Selects the title as a click does.
  void select_title() const {
    ::PostMessageW(titles_, WM_LBUTTONDOWN, MK_LBUTTON, MAKELPARAM(20, 6));
    ::PostMessageW(titles_, WM_LBUTTONUP, 0, MAKELPARAM(20, 6));
    wait_until([this] { return ::SendMessageW(titles_, LB_GETCURSEL, 0, 0) == 0; }, "a selection");
  }

  window_program program_;
  HWND titles_ = nullptr;
  std::string row_;
};

TEST_F(CorvaneWindow, OpensTheProjectOfTheCommandLineUnderANameOfAnyLanguage) {
  start_with_title();
  EXPECT_THAT(rows_of(titles_), ElementsAre(row_));
  EXPECT_THAT(row_, HasSubstr("film ü 電影.m2v"));
  EXPECT_NE(find_control(program_.main(), "Button", "1 titles loaded"), nullptr);
  EXPECT_TRUE(program_.close());
}

TEST_F(CorvaneWindow, OpensAProjectGivenWithoutQuotesHoweverManyBlanksItsNameHas) {
  start_with_title("mein   projekt.cvp", "");
  EXPECT_THAT(rows_of(titles_), ElementsAre(row_));
  EXPECT_TRUE(program_.close());
}

TEST_F(CorvaneWindow, BeginsWithTheFocusInTheListOfTitles) {
  program_.start();
  GUITHREADINFO keys{};
  keys.cbSize = sizeof keys;
  const DWORD thread = ::GetWindowThreadProcessId(program_.main(), nullptr);
  wait_until([&] { return ::GetGUIThreadInfo(thread, &keys) != 0 && keys.hwndFocus != nullptr; },
             "a focus");
  EXPECT_EQ(keys.hwndFocus, find_control(program_.main(), "ListBox"));
  EXPECT_TRUE(program_.close());
}

TEST_F(CorvaneWindow, TellsInTheSystemsOwnBoxWhatItRefuses) {
  program_.start();
  press({VK_CONTROL, 'H'});
  const HWND box = program_.window("Corvane");
  EXPECT_NE(find_control(box, "Static", "Please select a title to add chapters to."), nullptr);
  const HWND ok = find_control(box, "Button", "OK");
  ASSERT_NE(ok, nullptr);
  program_.click(ok);
  wait_until([this] { return !program_.has_window("Corvane"); }, "the end of the box");
  EXPECT_TRUE(program_.close());
}

TEST_F(CorvaneWindow, KeepsTheRegionInTheRegistryAndShowsItAfterARestart) {
  const std::string before = user_settings()->get("dvdregion");
  user_settings()->set("dvdregion", "NTSC");
  program_.start();
  HWND region = find_control(program_.main(), "ComboBox");
  ASSERT_NE(region, nullptr);
  EXPECT_THAT(entries_of(region), ElementsAre("NTSC", "PAL"));
  EXPECT_EQ(text_of_window(region), "NTSC");
  ::PostMessageW(region, WM_KEYDOWN, VK_DOWN, 0);
  ::PostMessageW(region, WM_KEYUP, VK_DOWN, 0);
  wait_until([] { return user_settings()->get("dvdregion") == "PAL"; }, "the preference");
  EXPECT_TRUE(program_.close());

  program_.start();
  region = find_control(program_.main(), "ComboBox");
  EXPECT_EQ(text_of_window(region), "PAL");
  EXPECT_NE(find_control(program_.main(), "Static", "PAL"), nullptr);
  EXPECT_TRUE(program_.close());
  user_settings()->set("dvdregion", before);
}

TEST_F(CorvaneWindow, RegionThatIsShownIsThePreferenceOnceItIsChosenAgain) {
  const std::string before = user_settings()->get("dvdregion");
  user_settings()->set("dvdregion", "NTSC");
  program_.start();
  const HWND region = find_control(program_.main(), "ComboBox");
  ASSERT_NE(region, nullptr);
  EXPECT_EQ(text_of_window(region), "NTSC");
  user_settings()->set("dvdregion", "PAL");  // that of another window, say
  const auto key = [region](WPARAM code) {
    ::PostMessageW(region, WM_KEYDOWN, code, 0);
    ::PostMessageW(region, WM_KEYUP, code, 0);
  };
  const auto is_open = [region] { return ::SendMessageW(region, CB_GETDROPPEDSTATE, 0, 0) != 0; };
  key(VK_F4);
  wait_until(is_open, "the open list");
  key(VK_ESCAPE);
  wait_until([&] { return !is_open(); }, "the closed list");
  EXPECT_EQ(user_settings()->get("dvdregion"), "PAL") << "nothing was chosen";
  key(VK_F4);
  wait_until(is_open, "the open list");
  key(VK_RETURN);
  wait_until([] { return user_settings()->get("dvdregion") == "NTSC"; }, "the preference");
  EXPECT_TRUE(program_.close());
  user_settings()->set("dvdregion", before);
}

/// The field of the chapters dialog, in which lines are coloured.
HWND times_of(HWND chapters) {
  return find_control(chapters, "RichEdit50W");
}

TEST_F(CorvaneWindow, TakesAChapterFromTheVideoAndStoresItWithTheOthers) {
  start_with_title();
  select_title();
  press({VK_CONTROL, 'H'});
  const HWND chapters = program_.window("chapters");
  EXPECT_EQ(text_of_window(times_of(chapters)), "00:00:00.00\r\n00:00:01.00\r\n");

  program_.click(find_control(chapters, "Button", "&visual editor"));
  const HWND note = program_.window("Corvane");
  program_.click(find_control(note, "Button", "OK"));
  const HWND editor = program_.window("chapters editor");
  wait_until([&] { return find_control(editor, "Static", "of 00:00:02.08") != nullptr; },
             "the video's length");
  const HWND add = find_control(editor, "Button", "a&dd chapter");
  wait_until([&] { return ::IsWindowEnabled(add) != 0; }, "a picture");
  program_.click(add);
  const HWND times = find_control(editor, "ListBox");
  wait_until([&] { return rows_of(times).size() == 3; }, "the chapter");
  EXPECT_THAT(rows_of(times), ElementsAre("00:00:00.00", "00:00:01.00", "00:00:00.00"));
  program_.click(find_control(editor, "Button", "&accept"));
  wait_until([this] { return !program_.has_window("chapters editor"); }, "the editor's end");
  EXPECT_EQ(text_of_window(times_of(chapters)), "00:00:00.00\r\n00:00:01.00\r\n00:00:00.00\r\n");
}

TEST_F(CorvaneWindow, AsksToSaveAndStaysWhenTheAnswerIsCancel) {
  start_with_title();
  select_title();
  press({VK_CONTROL, 'D'});
  const HWND delay = program_.window("A/V sync delay");
  program_.click(find_control(delay, "Button", "OK"));
  wait_until([this] { return !program_.has_window("A/V sync delay"); }, "the end of the box");
  ::PostMessageW(program_.main(), WM_CLOSE, 0, 0);
  const HWND question = program_.window("Corvane");
  EXPECT_NE(find_control(question, "Static", "Do you want to save project?"), nullptr);
  program_.click(find_control(question, "Button", "Cancel"));
  wait_until([this] { return !program_.has_window("Corvane"); }, "the end of the question");
  EXPECT_THAT(rows_of(titles_), ElementsAre(row_));
}

}  // namespace
}  // namespace corvane
