// The window "chapters editor" with a real pointer and real keys, on real streams.
#include "formats/time_text.h"
#include "media/video_file.h"
#include "platform/files/files.h"
#include "ui/gtk_sight.h"
#include "ui/main_window.h"
#include "ui/video/time_line.h"
#include "ui/video/video_picture.h"
#include "ui/widgets/wx_text.h"
#include "ui/window_fixture.h"

#include <gmock/gmock.h>
#include <wx/control.h>
#include <wx/textctrl.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <random>
#include <thread>

namespace corvane::testing_support {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

constexpr const char* dialog = "chapter";
constexpr const char* editor = "vchapters";
constexpr const char* note =
    "This visual editor uses the same method that Windows Media Player uses to determine time.  "
    "If WMP reports time incorrectly, then this visual editor will not be accurate.";

class ChaptersEditor : public window_test {
 protected:
  /// A project of one title, whose video this file is.
  void load_title(const std::string& video, const std::string& chapters = "00:00:00.00") {
    project p = project_with_menus(1);
    p.menulist.clear();
    p.moremenuoptions.clear();
    p.menubuttons.assign(1, "");
    std::filesystem::copy_file(video, path_of(folder_.path("a.m2v")),
                               std::filesystem::copy_options::overwrite_existing);
    p.chapters[0] = chapters;
    load(p);
    click_row(0);
  }

  static void start() {
    click_tool("chapters");
    ASSERT_TRUE(window_comes(dialog));
    click_control("vedit", dialog);
    answer_message(note, "OK");
    ASSERT_TRUE(window_comes(editor));
  }
  /// The same, and the video can be played.
  static void open() {
    start();
    ASSERT_TRUE(wait_until([] { return control("play", editor)->IsEnabled(); }));
  }
  static void accept() {
    click_control("accept", editor);
    EXPECT_TRUE(window_goes(editor));
  }
  static void leave_all() {
    for (const char* window : {editor, dialog}) {
      close(window);
      EXPECT_TRUE(window_goes(window));
    }
  }

  /// What a control reads, for use in the main thread.
  static std::string read(const char* name) {
    const wxWindow* window = control(name, editor);
    const auto* field = dynamic_cast<const wxTextCtrl*>(window);
    return utf8_of(field != nullptr ? field->GetValue()
                                    : wxControl::GetLabelText(window->GetLabel()));
  }
  static std::string text_of(const char* name) {
    return ask_ui([=] { return read(name); });
  }
  static bool comes_to(const char* name, const std::string& text) {
    const bool seen = wait_until([&] { return read(name) == text; }, 5);
    EXPECT_TRUE(seen) << name << " is " << text_of(name);
    return seen;
  }
  static void go_to(const std::string& time) {
    click_control("time", editor);
    press("ctrl+a");
    type_text(time);
    press("Return");
  }
  static std::vector<std::string> rows() { return list_rows(editor); }
  static bool is_enabled(const char* name, const char* window = editor) {
    return ask_ui([=] { return control(name, window)->IsEnabled(); });
  }
  static std::string typed() {
    return ask_ui([] {
      return utf8_of(dynamic_cast<wxTextCtrl*>(control("RichTextBox1", dialog))->GetValue());
    });
  }
  /// The picture that was handed to the picture area last.
  static picture shown_picture() {
    return ask_ui([] {
      const wxImage& image =
          dynamic_cast<video_picture*>(control("MediaPlayer1", editor))->shown_picture();
      picture p{image.GetWidth(), image.GetHeight(), {}};
      if (image.IsOk())
        p.rgb.assign(image.GetData(), image.GetData() + 3 * p.width * p.height);
      return p;
    });
  }
};

/// Picture n (from 0) of a video, extracted by the ffmpeg program.
picture by_ffmpeg(const std::string& video, std::int64_t number, int width, int height) {
  const std::string command = "ffmpeg -nostdin -v error -i '" + video + "' -vf 'select=eq(n\\," +
                              std::to_string(number) +
                              ")' -frames:v 1 -fps_mode passthrough -pix_fmt rgb24 -f rawvideo -";
  picture p{width, height, {}};
  p.rgb.resize(std::size_t{3} * static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
  std::FILE* pipe = ::popen(command.c_str(), "r");
  const std::size_t read = pipe != nullptr ? std::fread(p.rgb.data(), 1, p.rgb.size(), pipe) : 0;
  EXPECT_EQ(read, p.rgb.size()) << command;
  if (pipe != nullptr)
    ::pclose(pipe);
  return p;
}

std::unique_ptr<video_file> scanned(const std::string& path) {
  auto video = video_file::open(path);
  EXPECT_TRUE(video && (*video)->scan(60'000)) << video.error;
  return video ? std::move(*video) : nullptr;
}

// Opening and closing ----------------------------------------------------------------------------

TEST_F(ChaptersEditor, OpensWithANoteOverTheDialogWhichRests) {
  load_title(real_video(), "00:00:00.00,00:00:01.50");
  click_tool("chapters");
  ASSERT_TRUE(window_comes(dialog));
  click_control("vedit", dialog);
  const seen_dialog seen = answer_message(note, "OK");
  EXPECT_EQ(seen.picture, "info");
  EXPECT_THAT(seen.buttons, ElementsAre("OK"));
  ASSERT_TRUE(window_comes(editor));
  EXPECT_EQ(ask_ui([] { return utf8_of(control(editor)->GetLabel()); }), "chapters editor");
  EXPECT_EQ(text_of("Frame1"), "visual chapters editor");
  EXPECT_EQ(text_of("Command1"), "add chapter");
  EXPECT_EQ(text_of("remove"), "remove");
  EXPECT_EQ(text_of("accept"), "accept");
  EXPECT_THAT(rows(), ElementsAre("00:00:00.00", "00:00:01.50"));
  on_ui([] {
    for (const char* name : {"Frame1", "MediaPlayer1", "List1", "Command1", "remove", "accept",
                             "position", "play", "time", "landing"})
      EXPECT_EQ(accessible_name(*control(name, editor)), name);
    EXPECT_FALSE(control(dialog)->IsEnabled());
  });
  leave_all();
}

TEST_F(ChaptersEditor, ClosingDiscardsItsListAndEnablesTheDialog) {
  load_title(real_video());
  open();
  press("Insert");
  EXPECT_EQ(rows().size(), 2u);
  close(editor);
  EXPECT_TRUE(window_goes(editor));
  EXPECT_TRUE(ask_ui([] { return control(dialog)->IsEnabled(); }));
  EXPECT_EQ(typed(), "00:00:00.00\n");
  press("Escape");
  EXPECT_TRUE(window_goes(dialog));
  EXPECT_TRUE(ask_ui([this] { return window_->IsEnabled(); }));
}

TEST_F(ChaptersEditor, LinesOf3CharactersOrFewerAreNotListed) {
  load_title(real_video());
  click_tool("chapters");
  ASSERT_TRUE(window_comes(dialog));
  on_ui([] {
    dynamic_cast<wxTextCtrl*>(control("RichTextBox1", dialog))
        ->SetValue("00:00:00.00\nabc\n\n0:5:1\n");
  });
  click_control("vedit", dialog);
  answer_message(note, "OK");
  ASSERT_TRUE(window_comes(editor));
  EXPECT_THAT(rows(), ElementsAre("00:00:00.00", "0:5:1"));
  leave_all();
}

TEST_F(ChaptersEditor, DialogStaysAsLongAsTheEditorDoes) {
  load_title(real_video());
  open();
  close(dialog);
  close("main");
  EXPECT_TRUE(window_comes(dialog));
  EXPECT_TRUE(window_comes(editor));
  leave_all();
}

TEST_F(ChaptersEditor, EndOfTheSessionClosesBothWindowsEvenWhileItPlays) {
  load_title(real_video());
  open();
  press("space");
  on_ui([this] { window_->CallAfter([this] { window_->Close(true); }); });
  EXPECT_TRUE(window_goes("main"));
  EXPECT_TRUE(window_goes(editor));
  EXPECT_TRUE(window_goes(dialog));
}

TEST_F(ChaptersEditor, EndOfTheSessionWaitsForTheNote) {
  load_title(real_video());
  click_tool("chapters");
  ASSERT_TRUE(window_comes(dialog));
  click_control("vedit", dialog);
  ASSERT_TRUE(wait_until([] { return look_at_dialog() && look_at_dialog()->text == note; }));
  close(dialog);
  end_session();
  answer_message(note, "OK");
  EXPECT_TRUE(window_goes("main"));
  EXPECT_TRUE(window_goes(editor));
}

TEST_F(ChaptersEditor, EndOfTheSessionClosesBothWindowsWhileATimeIsTyped) {
  load_title(real_video());
  open();
  click_control("time", editor);
  type_text("00:0");
  on_ui([this] { window_->CallAfter([this] { window_->Close(true); }); });
  EXPECT_TRUE(window_goes("main"));
  EXPECT_TRUE(window_goes(editor));
}

TEST_F(ChaptersEditor, TimeBeingTypedStaysWhileItPlaysAndIsForgottenWhenLeft) {
  load_title(real_video());
  open();
  press("space");
  click_control("time", editor);
  press("ctrl+a");
  type_text("0:0");
  EXPECT_TRUE(comes_to("play", "play"));  // it has reached the end
  EXPECT_EQ(text_of("time"), "0:0");
  click_row(0, editor);
  EXPECT_TRUE(comes_to("time", "00:00:02.97"));
  leave_all();
}

// The list ---------------------------------------------------------------------------------------

TEST_F(ChaptersEditor, ChaptersAreAddedAtThePositionAndStoredByTheDialog) {
  load_title(real_video());
  open();
  go_to("00:00:01.5");
  click_control("Command1", editor);
  go_to("2");
  click_control("Command1", editor);
  // Pictures 45 and 60 at 30000/1001 a second.
  EXPECT_THAT(rows(), ElementsAre("00:00:00.00", "00:00:01.50", "00:00:02.00"));
  EXPECT_TRUE(ask_ui([] {
    return dynamic_cast<time_line*>(control("position", editor))->marks() ==
           std::vector<double>{0, 1.5, 2};
  }));
  screenshot("chapters-editor");
  accept();
  EXPECT_EQ(typed(), "00:00:00.00\n00:00:01.50\n00:00:02.00\n");
  EXPECT_TRUE(ask_ui([] { return control(dialog)->IsEnabled(); }));
  EXPECT_EQ(window_->shown_project().chapters[0], "00:00:00.00");
  click_control("Command2", dialog);
  EXPECT_TRUE(window_goes(dialog));
  EXPECT_EQ(window_->shown_project().chapters[0], "00:00:00.00,00:00:01.50,00:00:02.00");
}

TEST_F(ChaptersEditor, ChapterThatADiscWillLeaveOutIsTold) {
  load_title(real_video(), "00:00:00.00,00:00:02.00");
  open();
  go_to("1");
  ASSERT_TRUE(comes_to("time", "00:00:01.00"));
  click_control("Command1", editor);
  EXPECT_TRUE(comes_to(
      "note", "A disc leaves it out: a later time stands above. Sort the dialog's lines."));
  screenshot("chapters-editor-order");
  EXPECT_THAT(rows(), ElementsAre("00:00:00.00", "00:00:02.00", "00:00:01.00"));
  go_to("2.5");
  EXPECT_TRUE(comes_to("note", ""));
  click_control("Command1", editor);
  EXPECT_EQ(rows().size(), 4u);
  EXPECT_EQ(text_of("note"), "");
  leave_all();
}

TEST_F(ChaptersEditor, FirstRowStaysAndAnotherSelectedOneIsRemoved) {
  load_title(real_video(), "00:00:00.00,00:00:01.00,00:00:02.00");
  open();
  click_row(0, editor);
  click_control("remove", editor);
  press("Delete");
  EXPECT_EQ(rows().size(), 3u);
  click_row(1, editor);
  click_control("remove", editor);
  EXPECT_THAT(rows(), ElementsAre("00:00:00.00", "00:00:02.00"));
  click_control("remove", editor);  // nothing is selected now
  EXPECT_THAT(rows(), ElementsAre("00:00:00.00", "00:00:02.00"));
  click_row(1, editor);
  press("Delete");
  EXPECT_THAT(rows(), ElementsAre("00:00:00.00"));
  accept();
  EXPECT_EQ(typed(), "00:00:00.00\n");
  close(dialog);
  EXPECT_TRUE(window_goes(dialog));
}

TEST_F(ChaptersEditor, DoubleClickOnARowShowsTheVeryPictureItWasTakenFrom) {
  load_title(real_video());
  open();
  for (int i = 0; i < 7; ++i)
    press("Right");
  ASSERT_TRUE(comes_to("time", "00:00:00.23"));
  press("Insert");
  press("End");
  ASSERT_TRUE(comes_to("time", "00:00:02.97"));
  double_click_row(1, editor);
  EXPECT_TRUE(comes_to("time", "00:00:00.23"));
  const picture expected = by_ffmpeg(real_video(), 7, 720, 480);
  EXPECT_TRUE(shown_picture().rgb == expected.rgb);
  click_row(0, editor);
  press("Return");
  EXPECT_TRUE(comes_to("time", "00:00:00.00"));
  leave_all();
}

TEST_F(ChaptersEditor, RowsThatAreNoTimesLeadNowhere) {
  load_title(real_video(), "00:00:00.00,ab:cd:ef.gh");
  open();
  press("End");
  ASSERT_TRUE(comes_to("time", "00:00:02.97"));
  double_click_row(1, editor);
  EXPECT_EQ(text_of("time"), "00:00:02.97");
  accept();
  EXPECT_EQ(typed(), "00:00:00.00\nab:cd:ef.gh\n");
  close(dialog);
  EXPECT_TRUE(window_goes(dialog));
}

// The player -------------------------------------------------------------------------------------

TEST_F(ChaptersEditor, PlaysByTheClockAndPauses) {
  load_title(real_video());
  open();
  click_control("play", editor);
  const auto began = std::chrono::steady_clock::now();
  EXPECT_TRUE(comes_to("play", "pause"));
  std::this_thread::sleep_for(std::chrono::milliseconds(1300));
  const double position =
      ask_ui([] { return dynamic_cast<time_line*>(control("position", editor))->position(); });
  const double gone =
      std::chrono::duration<double>(std::chrono::steady_clock::now() - began).count();
  EXPECT_NEAR(position, gone, 0.4);
  EXPECT_GT(position, 1);
  click_control("play", editor);
  EXPECT_TRUE(comes_to("play", "play"));
  const std::string paused = text_of("time");
  std::this_thread::sleep_for(std::chrono::milliseconds(300));
  EXPECT_EQ(text_of("time"), paused);
  const auto video = scanned(real_video());
  const std::int64_t number = video->number_at(typed_time(paused).value_or(0) + 0.005);
  EXPECT_TRUE(shown_picture().rgb == by_ffmpeg(real_video(), number, 720, 480).rgb) << number;
  press("space");                                // the focus is still on the button
  EXPECT_TRUE(comes_to("time", "00:00:02.97"));  // it stops at the end
  EXPECT_TRUE(comes_to("play", "play"));
  leave_all();
}

TEST_F(ChaptersEditor, StepsByPictureAndByGroup) {
  load_title(real_video());
  const auto video = scanned(real_video());
  ASSERT_TRUE(video);
  const auto time = [&](std::int64_t number) { return time_text(video->time_of(number)); };
  open();
  press("Right");
  EXPECT_TRUE(comes_to("time", time(1)));
  click_control("pictureforward", editor);
  EXPECT_TRUE(comes_to("time", time(2)));
  click_control("pictureback", editor);
  EXPECT_TRUE(comes_to("time", time(1)));
  press("Left");
  press("Left");
  EXPECT_TRUE(comes_to("time", time(0)));
  press("ctrl+Right");
  EXPECT_TRUE(comes_to("time", time(video->begin_of_gop(1))));
  click_control("gopforward", editor);
  EXPECT_TRUE(comes_to("time", time(video->begin_of_gop(2))));
  press("Next");
  EXPECT_TRUE(comes_to("time", time(video->begin_of_gop(3))));
  press("Right");
  press("ctrl+Left");
  EXPECT_TRUE(comes_to("time", time(video->begin_of_gop(3))));
  press("shift+Left");
  EXPECT_TRUE(comes_to("time", time(video->begin_of_gop(2))));
  click_control("gopback", editor);
  press("Prior");
  EXPECT_TRUE(comes_to("time", time(0)));
  press("End");
  EXPECT_TRUE(comes_to("time", time(video->pictures() - 1)));
  press("Home");
  EXPECT_TRUE(comes_to("time", time(0)));
  leave_all();
}

TEST_F(ChaptersEditor, TypedTimeThatIsNoneIsTold) {
  load_title(real_video());
  open();
  go_to("00:00:01.00");
  EXPECT_TRUE(comes_to("time", "00:00:01.00"));
  go_to("soon");
  EXPECT_TRUE(comes_to("note", "\"soon\" is no time; the format is HH:MM:SS.ss"));
  EXPECT_EQ(text_of("time"), "soon");
  screenshot("chapters-editor-typo");
  click_control("pictureforward", editor);
  EXPECT_TRUE(comes_to("note", ""));
  EXPECT_TRUE(comes_to("time", "00:00:01.03"));
  go_to("1:00:00");
  EXPECT_TRUE(comes_to("note", "The video ends at 00:00:03.00."));
  EXPECT_TRUE(comes_to("time", "00:00:02.97"));
  leave_all();
}

TEST_F(ChaptersEditor, LandingIsToldAndSteppedTo) {
  load_title(real_video());
  const auto video = scanned(real_video());
  ASSERT_TRUE(video);
  const std::int64_t second = video->begin_of_gop(1);
  open();
  for (std::int64_t i = 0; i < second - 1; ++i)
    press("Right");
  const std::string lands = time_text(video->time_of(second));
  EXPECT_TRUE(comes_to("landing", "A player lands at " + lands));
  click_control("gotolanding", editor);
  EXPECT_TRUE(comes_to("time", lands));
  EXPECT_EQ(text_of("landing"), "A player lands at " + lands);
  leave_all();
}

TEST_F(ChaptersEditor, TimeLineIsClickedAndDragged) {
  load_title(real_video());
  open();
  const auto place = [](double seconds) {
    return ask_ui([=] {
      const auto* line = dynamic_cast<time_line*>(control("position", editor));
      return line->ClientToScreen(wxPoint(line->place_of(seconds), line->GetSize().y / 2));
    });
  };
  const auto position = [] {
    return ask_ui([] { return dynamic_cast<time_line*>(control("position", editor))->position(); });
  };
  click_at(place(1));
  EXPECT_TRUE(wait_until([&] { return read("time") != "00:00:00.00"; }));
  EXPECT_NEAR(position(), 1, 0.05);
  drag(place(1), place(2.5));
  EXPECT_NEAR(position(), 2.5, 0.05);
  EXPECT_EQ(ask_ui([] { return control("position", editor)->HasFocus(); }), true);
  leave_all();
}

TEST_F(ChaptersEditor, TwentyRandomPicturesAreExactlyThoseOfTheStream) {
  load_title(real_video());
  const auto video = scanned(real_video());
  ASSERT_TRUE(video);
  open();
  std::mt19937 random(20);
  std::uniform_int_distribution<std::int64_t> any(0, video->pictures() - 1);
  for (int i = 0; i < 20; ++i) {
    const std::int64_t number = any(random);
    const std::string time = time_text(video->time_of(number));
    go_to(time);
    ASSERT_TRUE(comes_to("time", time));
    const picture expected = by_ffmpeg(real_video(), number, 720, 480);
    EXPECT_TRUE(shown_picture().rgb == expected.rgb) << "picture " << number;
  }
  leave_all();
}

TEST_F(ChaptersEditor, PictureHasTheProportionsThatTheVideoTells) {
  const auto wide = [this] {  // the same video, its sequence headers changed to 16:9
    std::string bytes = read_file(real_video(), 1u << 30).value.value_or("");
    const std::string start("\0\0\1\xb3", 4);
    for (std::size_t at = bytes.find(start); at != std::string::npos;
         at = bytes.find(start, at + 4))
      bytes[at + 7] = static_cast<char>((bytes[at + 7] & 0x0f) | 0x30);
    return folder_.add("wide", bytes);
  };
  const std::pair<std::string, wxSize> videos[] = {
      {real_video(), {640, 480}}, {real_pal_video(), {768, 576}}, {wide(), {853, 480}}};
  for (const auto& [video, size] : videos) {
    load_title(video);
    open();
    EXPECT_EQ(ask_ui([] { return control("MediaPlayer1", editor)->GetSize(); }), size) << video;
    leave_all();
  }
}

TEST_F(ChaptersEditor, TabGoesFromTheTimeLineToTheButtonsAndPastThePicture) {
  load_title(real_video());
  open();
  const auto has_focus = [](const char* name) {
    return wait_until([=] { return control(name, editor)->HasFocus(); }, 5);
  };
  EXPECT_TRUE(has_focus("position"));
  press("Tab");
  EXPECT_TRUE(has_focus("gopback"));
  press("shift+Tab");
  EXPECT_TRUE(has_focus("position"));
  press("shift+Tab");
  EXPECT_TRUE(has_focus("accept"));
  leave_all();
}

TEST_F(ChaptersEditor, SmallestWindowCutsNothingBelowThePicture) {
  load_title(real_video());
  open();
  on_ui([] {
    auto* window = dynamic_cast<wxTopLevelWindow*>(control(editor));
    window->SetSize(window->GetMinSize());
  });
  const auto fits = [] {
    const wxWindow* length = control("length", editor);
    const wxWindow* time = control("time", editor);
    const int width = control("MediaPlayer1", editor)->GetSize().x;
    return width < 640 && time->GetSize().x >= time->GetMinSize().x &&
           length->GetSize().x >= length->GetBestSize().x &&
           length->GetRect().GetRight() <= length->GetParent()->GetClientSize().x;
  };
  EXPECT_TRUE(wait_until(fits, 5));
  screenshot("chapters-editor-small");
  leave_all();
}

// Videos that cannot be shown --------------------------------------------------------------------

TEST_F(ChaptersEditor, MissingVideoIsToldInItsPlaceAndTheListCanBeEdited) {
  load_title(real_video(), "00:00:00.00,00:00:01.00");
  std::filesystem::remove(path_of(folder_.path("a.m2v")));
  start();
  screenshot("chapters-editor-missing");
  EXPECT_THAT(
      ask_ui([] {
        return utf8_of(dynamic_cast<video_picture*>(control("MediaPlayer1", editor))->reason());
      }),
      testing::AllOf(StartsWith("The video cannot be shown."), HasSubstr(folder_.path("a.m2v"))));
  for (const char* name : {"play", "time", "Command1", "gotolanding", "position"})
    EXPECT_FALSE(is_enabled(name)) << name;
  press("space");
  press("Insert");
  EXPECT_EQ(rows().size(), 2u);
  click_row(1, editor);
  double_click_row(1, editor);
  click_control("remove", editor);
  accept();
  EXPECT_EQ(typed(), "00:00:00.00\n");
  close(dialog);
  EXPECT_TRUE(window_goes(dialog));
}

TEST_F(ChaptersEditor, FileThatIsNoVideoIsToldToo) {
  load_title(folder_.add("text", "no video at all"));
  start();
  EXPECT_FALSE(is_enabled("play"));
  EXPECT_TRUE(ask_ui([] {
    return dynamic_cast<video_picture*>(control("MediaPlayer1", editor))->reason().Contains("MPEG");
  })) << ask_ui([] {
    return utf8_of(dynamic_cast<video_picture*>(control("MediaPlayer1", editor))->reason());
  });
  leave_all();
}

TEST_F(ChaptersEditor, ListKeepsTheKeysOfAUserWhoWorksWithItMeanwhile) {
  load_title(real_video(), "00:00:00.00,00:00:01.00");
  std::filesystem::resize_file(path_of(folder_.path("a.m2v")), 1'500'000'000);  // a hole
  start();
  click_row(1, editor);
  ASSERT_FALSE(is_enabled("play"));
  ASSERT_TRUE(wait_until([] { return control("play", editor)->IsEnabled(); }, 120));
  EXPECT_TRUE(ask_ui([] { return control("List1", editor)->HasFocus(); }));
  leave_all();
}

TEST_F(ChaptersEditor, VideoThatIsCutOffMeanwhileIsToldAndKeepsTheLastPicture) {
  load_title(real_video());
  open();
  std::filesystem::resize_file(path_of(folder_.path("a.m2v")), 1000);
  press("End");
  EXPECT_TRUE(comes_to("note",
                       "This picture cannot be shown: the file has become shorter since it was "
                       "opened"));
  EXPECT_EQ(shown_picture().width, 720);
  press("Insert");
  EXPECT_THAT(rows(), ElementsAre("00:00:00.00", "00:00:02.97"));
  leave_all();
}

TEST_F(ChaptersEditor, ClosingWhileTheVideoIsLookedThroughIsClean) {
  load_title(real_video(), "00:00:00.00,00:00:01.00");
  std::filesystem::resize_file(path_of(folder_.path("a.m2v")), 400'000'000'000);  // a hole
  start();
  EXPECT_TRUE(wait_until([] { return control("videoprogress", editor)->IsShownOnScreen(); }));
  screenshot("chapters-editor-scan");
  EXPECT_FALSE(is_enabled("play"));
  click_row(1, editor);  // it works meanwhile
  click_control("remove", editor);
  EXPECT_EQ(rows().size(), 1u);
  close(editor);
  EXPECT_TRUE(window_goes(editor));
  close(dialog);
  EXPECT_TRUE(window_goes(dialog));
}

}  // namespace
}  // namespace corvane::testing_support
