// Still menu videos from the window: a JPEG becomes a video with the real tools, or a message says
// why not.
#include "media/video_file.h"
#include "platform/settings/settings.h"
#include "ui/findings_fixture.h"
#include "ui/gtk_sight.h"
#include "ui/main_window.h"
#include "ui/window_fixture.h"

#include <gmock/gmock.h>
#include <wx/frame.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>

namespace corvane::testing_support {
namespace {

constexpr const char* open_title = "select a 720x480 or 720x576 jpeg image";
constexpr const char* compliant_text =
    "image appears to be compliant.  Please select where to save the m2v still";
constexpr const char* save_title = "save the mpeg2 still";
constexpr const char* frames_title = "m2v still framecount";
constexpr const char* success_text =
    "Process complete.  Please review the log for more information (recommended).";
constexpr const char* failure_text = "There was an error.  Please review the log.";

bool stands(const std::string& title) {
  const auto dialog = look_at_dialog();
  return dialog && dialog->title == title;
}

/// As answer_input; the outcome of a short run may stand before one has looked.
void answer_frames(const std::string& text) {
  ASSERT_TRUE(wait_until([] { return stands(frames_title); }));
  press("ctrl+a");
  type_text(text);
  press("Return");
  EXPECT_TRUE(wait_until([] { return !stands(frames_title); }));
}

class Stills : public window_test {
 protected:
  /// Draws a JPEG, its left half red and its right half blue; `options` are those of the program
  /// that writes it.
  std::string draw(const std::string& name, int width, int height,
                   const std::string& options = "-sampling-factor 2x2") {
    const std::string plain = folder_.path("drawn.jpg");
    const std::string half = std::to_string(width / 2) + "x" + std::to_string(height);
    const std::string command =
        "convert -size " + half + " xc:red xc:blue +append " + options + " '" + plain + "'";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    std::filesystem::rename(plain, path_of(folder_.path(name)));
    return folder_.path(name);
  }

  void choose(const std::string& jpeg) {
    click_menu("menus", "create m2v still");
    answer_file(open_title, jpeg);
  }

  /// The whole conversation up to the run.
  void make(const std::string& jpeg, const std::string& m2v, const std::string& frames) {
    choose(jpeg);
    EXPECT_EQ(answer_message(compliant_text, "OK").picture, "info");
    answer_file(save_title, m2v);
    answer_frames(frames);
  }

  /// The window that offers to make a refused picture right comes, and is closed.
  static void leave_offer() {
    ASSERT_TRUE(window_comes("still"));
    press("Escape");
    EXPECT_TRUE(window_goes("still"));
    EXPECT_TRUE(no_dialog());
  }

  bool script_written() { return file_exists(folder_.path("program/process.bat")); }

  static std::string stored_frames() { return user_settings()->get("framecount"); }
};

/// Size, rate, number of pictures, and the colours of both halves of the last one.
void expect_video(const std::string& file, int height, double rate, int pictures) {
  auto video = video_file::open(file);
  ASSERT_TRUE(video) << file << ": " << video.error;
  for (auto read = (*video)->scan(100); read && !read->finished;)
    read = (*video)->scan(100);
  EXPECT_EQ((*video)->pictures(), pictures);
  EXPECT_NEAR((*video)->frame_rate(), rate, 0.001);
  const auto last = (*video)->picture_number(pictures - 1);
  ASSERT_TRUE(last) << last.error;
  EXPECT_EQ(last->width, 720);
  EXPECT_EQ(last->height, height);
  const auto channel = [&](int x, std::size_t which) {
    const auto dot = static_cast<std::size_t>(last->height / 2 * last->width + x);
    return static_cast<int>(last->rgb[dot * 3 + which]);
  };
  EXPECT_GT(channel(100, 0), 200) << file;
  EXPECT_LT(channel(100, 2), 60) << file;
  EXPECT_LT(channel(600, 0), 60) << file;
  EXPECT_GT(channel(600, 2), 200) << file;
}

TEST_F(Stills, NtscPictureBecomesAVideo) {
  const std::string jpeg = draw("menu.jpg", 720, 480), out = folder_.path("menu.m2v");
  make(jpeg, out, "15");
  const seen_dialog told = answer_message(success_text, "Cancel");
  EXPECT_EQ(told.picture, "info");
  expect_video(out, 480, 30000 / 1001.0, 15);
  EXPECT_EQ(stored_frames(), "15");
  EXPECT_THAT(folder_.read("program/CorvaneLOG.txt"),
              testing::AllOf(testing::HasSubstr("*creating m2v still"),
                             testing::HasSubstr("*process complete")));
  EXPECT_TRUE(ask_ui([] { return control("List1")->IsEnabled(); }));
}

TEST_F(Stills, PalPictureBecomesAVideoByTheKeyboard) {
  const std::string jpeg = draw("menu.jpeg", 720, 576), out = folder_.path("menu.m2v");
  press("ctrl+i");
  answer_file(open_title, jpeg);
  ASSERT_TRUE(wait_until([] { return look_at_dialog().has_value(); }));
  press("Return");
  answer_file(save_title, folder_.path("menu"));
  answer_frames("2");
  answer_message(success_text, "Cancel");
  expect_video(out, 576, 25, 2);
}

TEST_F(Stills, FileDialogsOfferTheirKindOfFile) {
  click_menu("menus", "create m2v still");
  ASSERT_TRUE(wait_until([] { return stands(open_title); }));
  EXPECT_FALSE(top_dialog()->saves);
  on_ui([] {
    EXPECT_TRUE(filter_offers("menu.jpg"));
    EXPECT_TRUE(filter_offers("MENU.JPEG"));
    EXPECT_FALSE(filter_offers("menu.png"));
  });
  answer_file(open_title, draw("menu.jpg", 720, 480));
  answer_message(compliant_text, "OK");
  ASSERT_TRUE(wait_until([] { return stands(save_title); }));
  EXPECT_TRUE(top_dialog()->saves);
  on_ui([] {
    EXPECT_TRUE(filter_offers("menu.m2v"));
    EXPECT_FALSE(filter_offers("menu.mpg"));
  });
  cancel_dialog(save_title);
  answer_frames("1");
  EXPECT_TRUE(no_dialog());
}

TEST_F(Stills, PictureOfAnotherSizeIsRefused) {
  choose(draw("menu.jpg", 704, 480));
  EXPECT_EQ(answer_message("jpg is not 720x480 or 720x576", "OK").picture, "warning");
  leave_offer();
  EXPECT_FALSE(script_written());
}

TEST_F(Stills, CancelledSaveDialogStillAsksForTheFrameCount) {
  choose(draw("menu.jpg", 720, 480));
  answer_message(compliant_text, "OK");
  cancel_dialog(save_title);
  answer_frames("12");
  EXPECT_TRUE(no_dialog());
  EXPECT_EQ(stored_frames(), "12");
  EXPECT_FALSE(script_written());
}

TEST_F(Stills, CancelledFrameCountIsAskedForAgain) {
  choose(draw("menu.jpg", 720, 480));
  answer_message(compliant_text, "OK");
  cancel_dialog(save_title);
  ASSERT_TRUE(wait_until([] { return stands(frames_title); }));
  press("Escape");
  answer_frames("3");
  EXPECT_TRUE(no_dialog());
  EXPECT_EQ(stored_frames(), "3");
}

TEST_F(Stills, CmykPictureIsRefusedAndNotCalledASuccess) {
  const std::string jpeg = draw("print.jpg", 720, 480, "-colorspace CMYK");
  choose(jpeg);
  answer_message("\"" + jpeg +
                     "\" cannot be used: it has CMYK colours, which jpeg2yuv cannot take.  Please "
                     "save it as a plain JPEG (YCbCr colours, 4:2:0).",
                 "OK");
  leave_offer();
  EXPECT_FALSE(script_written());
}

TEST_F(Stills, OtherSamplingsBecomeVideosOfTheRightColours) {
  for (const char* const sampling : {"2x1", "1x1", "1x2"}) {
    const std::string name(sampling), out = folder_.path(name + ".m2v");
    make(draw(name + ".jpg", 720, 480, "-sampling-factor " + name), out, "1");
    answer_message(success_text, "Cancel");
    expect_video(out, 480, 30000 / 1001.0, 1);
  }
}

TEST_F(Stills, SamplingThatWouldGiveAGreenVideoIsRefused) {
  const std::string jpeg = draw("odd.jpg", 720, 480, "-sampling-factor 4x1");
  choose(jpeg);
  answer_message("\"" + jpeg +
                     "\" cannot be used: it has the sampling factors 4x1, 1x1, 1x1, which jpeg2yuv "
                     "cannot take.  Please save it as a plain JPEG (YCbCr colours, 4:2:0).",
                 "OK");
  leave_offer();
  EXPECT_FALSE(script_written());
}

TEST_F(Stills, NamesWithPercentSignsBlanksAccentsAndQuotesWork) {
  const std::string jpeg = draw("50% of d\xC3\xA9j\xC3\xA0 'vu' %d.jpg", 720, 480);
  const std::string out = folder_.path("m\xC3\xBCll's 100% & more.m2v");
  make(jpeg, out, "1");
  answer_message(success_text, "Cancel");
  expect_video(out, 480, 30000 / 1001.0, 1);
}

TEST_F(Stills, NameThatScriptsCannotHoldIsTold) {
  const std::string jpeg = draw("the \"garden\".jpg", 720, 480);
  choose(jpeg);
  answer_message(
      "\"" + jpeg + "\" cannot be used: its name contains a double quote (\").  Please rename it.",
      "OK");
  EXPECT_TRUE(no_dialog());
}

TEST_F(Stills, FileThatIsNoPictureIsTold) {
  choose(file("notes.jpg"));
  answer_message("\"" + folder_.path("notes.jpg") +
                     "\" cannot be used: it is neither a bitmap nor a JPEG picture.",
                 "OK");
  EXPECT_TRUE(no_dialog());
}

TEST_F(Stills, PictureThatIsCutOffIsRefused) {
  const std::string jpeg = draw("menu.jpg", 720, 480);
  std::filesystem::resize_file(path_of(jpeg), *file_size(jpeg) / 2);
  choose(jpeg);
  answer_message(
      "\"" + jpeg + "\" cannot be used: it is cut off; the rest of the picture is missing.", "OK");
  EXPECT_TRUE(no_dialog());
}

TEST_F(Stills, RunCleansUpAndLeavesTheVideo) {
  click_menu("file", "clean up files after authoring");
  const std::string out = folder_.path("menu.m2v");
  make(draw("menu.jpg", 720, 480), out, "1");
  answer_message(success_text, "Cancel");
  EXPECT_FALSE(script_written());
  EXPECT_TRUE(file_exists(out));
}

TEST_F(Stills, VideoOfOnePictureBecomesAMenuOfTheDisc) {
  const std::string out = folder_.path("menu.m2v");
  make(draw("menu.jpg", 720, 480), out, "1");
  answer_message(success_text, "Cancel");
  add_title(real_video(), real_audio());
  press("ctrl+m");
  answer_file("select video stream", out);
  cancel_dialog("select audio stream (If no audio is needed for the menu, press cancel)");
  ASSERT_TRUE(window_comes("tsmenu"));
  click_control("Command1", "tsmenu");
  screenshot("still-menu");
  click_control("Command2", "tsmenu");
  ASSERT_TRUE(window_goes("tsmenu"));
  press("F5");
  answer_file("enter a folder name to create the dvd", folder_.path("disc"));
  // Nothing of the still: it says that it is 4:3.
  answer_findings({"warning|title 1|no button and no end of another title leads to title 1"},
                  "author anyway");
  EXPECT_TRUE(wait_until([] { return look_at_dialog().has_value(); }, 60));
  answer_message(success_text, "Cancel");
  EXPECT_TRUE(file_exists(folder_.path("disc/VIDEO_TS/VTS_01_0.VOB")));  // the titleset's menus
}

TEST_F(Stills, ToolThatCrashesIsToldAsAnError) {
  replace_tool("jpeg2yuv", "kill -SEGV $$\n");
  make(draw("menu.jpg", 720, 480), folder_.path("menu.m2v"), "1");
  EXPECT_EQ(answer_message(failure_text, "Cancel").picture, "error");
  EXPECT_THAT(folder_.read("program/CorvaneLOG.txt"), testing::HasSubstr("jpeg2yuv"));
}

TEST_F(Stills, VideoThatCannotBeWrittenIsToldAsAnError) {
  const std::filesystem::path gone = path_of(folder_.path("gone"));
  std::filesystem::create_directory(gone);
  choose(draw("menu.jpg", 720, 480));
  answer_message(compliant_text, "OK");
  answer_file(save_title, folder_.path("gone/menu.m2v"));
  ASSERT_TRUE(wait_until([] { return stands(frames_title); }));
  std::filesystem::remove_all(gone);
  answer_frames("1");
  EXPECT_EQ(answer_message(failure_text, "Cancel").picture, "error");
  EXPECT_THAT(folder_.read("program/CorvaneLOG.txt"),
              testing::HasSubstr("ERR:  mpeg2enc.exe ended with status 1"));
}

TEST_F(Stills, StoppingAsksAndLeavesNoProcess) {
  replace_tool("jpeg2yuv", "echo $$ > '" + folder_.path("pid") + "'\nexec sleep 300\n");
  make(draw("menu.jpg", 720, 480), folder_.path("menu.m2v"), "1");
  ASSERT_TRUE(wait_until([this] { return file_size(folder_.path("pid")).value_or(0) > 0; }));
  EXPECT_TRUE(wait_until([] {
    const auto* log = dynamic_cast<wxFrame*>(wxWindow::FindWindowByName("log"));
    return log != nullptr && log->IsShown() &&
           log->GetTitle().StartsWith("Corvane log - creating m2v still");
  }));
  EXPECT_FALSE(ask_ui([] { return control("List1")->IsEnabled(); }));
  click_control("stop");
  EXPECT_EQ(
      answer_message("Stop making the still?  The video will not be complete.", "Yes").picture,
      "warning");
  const int tool = std::stoi(folder_.read("pid"));
  EXPECT_TRUE(wait_until([=] { return kill(tool, 0) != 0; }));
  EXPECT_TRUE(ask_ui([] { return control("List1")->IsEnabled(); }));
}

/// The question that is asked until it has an answer must not hold the end of the session up.
TEST_F(Stills, EndOfTheSessionEndsTheQuestionForTheFrameCount) {
  choose(draw("menu.jpg", 720, 480));
  answer_message(compliant_text, "OK");
  cancel_dialog(save_title);
  ASSERT_TRUE(wait_until([] { return stands(frames_title); }));
  end_session();
  press("Escape");
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("main") == nullptr; }));
}

TEST_F(Stills, FrameCountAloneIsAskedForAndKept) {
  click_menu("menus", "set m2v framecount");
  answer_frames("ten");
  answer_message("The frame count \"ten\" is not a whole number from 1 to 99999.", "OK");
  answer_frames("24");
  EXPECT_TRUE(no_dialog());
  EXPECT_EQ(stored_frames(), "24");
  click_menu("menus", "set m2v framecount");
  cancel_dialog(frames_title);
  EXPECT_TRUE(no_dialog());
  EXPECT_EQ(stored_frames(), "24");
}

}  // namespace
}  // namespace corvane::testing_support
