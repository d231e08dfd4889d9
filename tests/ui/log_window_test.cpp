// The log window around a run: its two bars, how it is put away, the log of the last run, and how a
// run's end is noticed from elsewhere.
#include "support/environment_variable.h"
#include "ui/gtk_sight.h"
#include "ui/main_window.h"
#include "ui/toolkit_complaints.h"
#include "ui/widgets/wx_text.h"
#include "ui/window_fixture.h"

#include <gmock/gmock.h>
#include <wx/clipbrd.h>
#include <wx/frame.h>
#include <wx/gauge.h>
#include <wx/notebook.h>
#include <wx/textctrl.h>

#include <X11/Xlib.h>
#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <gtk/gtk.h>
#include <thread>
#include <vector>

namespace corvane::testing_support {
namespace {

constexpr const char* done_text =
    "Process complete.  Please review the log for more information (recommended).";
constexpr const char* failed_text = "There was an error.  Please review the log.";
constexpr const char* stop_it_text = "Stop authoring?  The disc will not be complete.";

wxTextCtrl* last_log_text() {
  return dynamic_cast<wxTextCtrl*>(control("lastlog", "log"));
}

/// How much of a bar is painted in its colour, 0 to 1, as it stands on the screen.
double painted_share(const char* name) {
  return ask_ui([name] {
    const wxRect place = control(name, "log")->GetScreenRect();
    GdkPixbuf* seen = gdk_pixbuf_get_from_window(gdk_get_default_root_window(), place.x, place.y,
                                                 place.width, place.height);
    const int width = gdk_pixbuf_get_width(seen), height = gdk_pixbuf_get_height(seen);
    const int channels = gdk_pixbuf_get_n_channels(seen), row = gdk_pixbuf_get_rowstride(seen);
    const guchar* bytes = gdk_pixbuf_read_pixels(seen);
    int painted = 0;
    for (int x = 0; x < width; ++x) {
      bool blue = false;
      for (int y = 0; y < height; ++y) {
        const guchar* pixel = bytes + y * row + x * channels;
        blue = blue || pixel[2] > pixel[0] + 40;
      }
      painted += blue ? 1 : 0;
    }
    g_object_unref(seen);
    return static_cast<double>(painted) / width;
  });
}

/// It exists also while it is hidden.
bool log_goes() {
  return wait_until([] { return !control("log")->IsShown(); });
}

/// A window of another program, which has the keyboard while it is there.
class other_program {
 public:
  other_program() : display_(XOpenDisplay(nullptr)) {
    window_ = XCreateSimpleWindow(display_, DefaultRootWindow(display_), 0, 0, 200, 100, 0, 0, 0);
    XMapWindow(display_, window_);
    XFlush(display_);
  }
  ~other_program() {
    XDestroyWindow(display_, window_);
    XCloseDisplay(display_);
  }
  other_program(const other_program&) = delete;
  other_program& operator=(const other_program&) = delete;

 private:
  Display* display_;
  Window window_ = 0;
};

class LogWindow : public window_test {
 protected:
  /// A window that is put away while its text glides must not be complained of.
  void TearDown() override {
    window_test::TearDown();
    EXPECT_EQ(toolkit_complaints::count(), 0);
  }
  void start_run() {
    add_title(real_video(), real_audio());
    click_tool("author dvd");
    answer_file("enter a folder name to create the dvd", folder_.path("disc"));
  }
  /// A run that fails at once.
  void fail_run() {
    replace_tool("dvdauthor", "echo 'ERR:  no luck' >&2\nexit 1\n");
    start_run();
  }
  void close_findings() {
    ASSERT_TRUE(window_comes("findings"));
    close("findings");
    EXPECT_TRUE(window_goes("findings"));
  }
  void show_log() {
    press("ctrl+l");
    ASSERT_TRUE(window_comes("log"));
  }
  /// The colour of these words in a text of the log window.
  static wxColour colour_of(const char* name, const char* words) {
    return ask_ui([=] {
      auto* text = dynamic_cast<wxTextCtrl*>(control(name, "log"));
      wxTextAttr look;
      if (text->GetValue().Find(words) == wxNOT_FOUND)
        ADD_FAILURE() << words << " is not in " << text->GetValue();
      else
        text->GetStyle(text->GetValue().Find(words), look);
      return look.HasTextColour() ? look.GetTextColour() : text->GetForegroundColour();
    });
  }
  static int page() {
    return ask_ui(
        [] { return dynamic_cast<wxNotebook*>(control("pages", "log"))->GetSelection(); });
  }
  static std::string where() {
    return ask_ui([] { return utf8_of(control("where", "log")->GetLabel()); });
  }
  static int whole() {
    return ask_ui([] { return dynamic_cast<wxGauge*>(control("wholerun", "log"))->GetValue(); });
  }

 private:
  toolkit_complaints heard_;
};

TEST_F(LogWindow, BarIsPaintedAsTheToolPrintedLast) {
  replace_tool("mplex", "for p in 30 60 90; do sleep 0.7; echo \" $p% done\"; sleep 1.5; done\n");
  start_run();
  ASSERT_TRUE(window_comes("log"));
  for (const int percent : {30, 60, 90}) {
    ASSERT_TRUE(wait_until([&] {
      return dynamic_cast<wxGauge*>(control("ProgressBar1", "log"))->GetValue() == percent * 10;
    }));
    std::this_thread::sleep_for(std::chrono::milliseconds(700));
    EXPECT_NEAR(painted_share("ProgressBar1"), percent / 100.0, 0.03);
  }
  answer_message(failed_text, "Cancel");
  close_findings();
}

TEST_F(LogWindow, SecondBarShowsTheWholeRunWithItsStepAndTheTimeLeft) {
  const std::string size = "head -c 60000 /dev/zero";
  replace_tool("mplex", "while [ \"$1\" != -o ]; do shift; done\nfor i in 1 2 3 4 5 6 7 8; do " +
                            size + " >>\"$2\"; sleep 0.5; done\n");
  start_run();
  ASSERT_TRUE(window_comes("log"));
  EXPECT_TRUE(wait_until([] {
    return utf8_of(control("where", "log")->GetLabel())
        .starts_with("step 1 of 3: multiplexing title: 1, ");
  })) << where();
  EXPECT_THAT(where(), testing::EndsWith(" left"));
  screenshot("run-whole");
  std::vector<int> seen;
  wait_until([&] {
    if (control("log")->IsShown())
      seen.push_back(dynamic_cast<wxGauge*>(control("wholerun", "log"))->GetValue());
    return !control("log")->IsShown();
  });
  EXPECT_TRUE(std::is_sorted(seen.begin(), seen.end()));
  EXPECT_GT(seen.back(), 200);
  EXPECT_LT(seen.back(), 1000) << "though the run has not succeeded";
  answer_message(failed_text, "Cancel");
  close_findings();
}

TEST_F(LogWindow, HideAndEscapePutItAwayWhenNothingRuns) {
  show_log();
  click_control("hide", "log");
  EXPECT_TRUE(log_goes());
  show_log();
  press("Escape");
  EXPECT_TRUE(log_goes());
  show_log();
  close("log");
  EXPECT_TRUE(ask_ui([] { return control("log")->IsShown(); })) << "its close box stays refused";
}

TEST_F(LogWindow, StaysWhileARunIsOn) {
  replace_tool("mplex", "exec sleep 300\n");
  start_run();
  ASSERT_TRUE(window_comes("log"));
  EXPECT_FALSE(ask_ui([] { return control("hide", "log")->IsEnabled(); }));
  click_control("Text1", "log");
  press("Escape");
  EXPECT_TRUE(ask_ui([] { return control("log")->IsShown(); }));
  click_control("stop");
  answer_message(stop_it_text, "Yes");
  EXPECT_TRUE(log_goes());
}

TEST_F(LogWindow, RunIsStoppedByKeys) {
  replace_tool("mplex", "exec sleep 300\n");
  start_run();
  ASSERT_TRUE(window_comes("log"));
  press("alt+s");
  ASSERT_TRUE(wait_until([] {
    const auto question = look_at_dialog();
    return question && question->text == stop_it_text && dialog_has_the_keys();
  }));
  press("alt+y");
  EXPECT_TRUE(log_goes());
}

TEST_F(LogWindow, LastRunsLogIsShownWhenThereIsNothingElse) {
  show_log();
  EXPECT_EQ(page(), 0) << "there is no log yet";
  press("Escape");
  fail_run();
  answer_message(failed_text, "Cancel");
  close_findings();
  show_log();
  EXPECT_EQ(page(), 1);
  EXPECT_THAT(ask_ui([] { return utf8_of(last_log_text()->GetValue()); }),
              testing::AllOf(testing::StartsWith("Corvane 0.997 - 1/2/2005\n"),
                             testing::HasSubstr("\nERR:  no luck\n")));
  screenshot("last-log");
  click_menu("file", "clear log");
  EXPECT_EQ(page(), 0) << "so that it is seen to be cleared";
}

TEST_F(LogWindow, LinesOfErrorsAreInColour) {
  fail_run();
  answer_message(failed_text, "Cancel");
  close_findings();
  show_log();
  const wxColour error = colour_of("lastlog", "ERR:  no luck");
  EXPECT_NE(error, colour_of("lastlog", "INFO: [mplex"));
  EXPECT_GT(error.Red(), error.Green() + 100);
}

TEST_F(LogWindow, LinesOfErrorsAreInColourWhileTheRunIsOn) {
  replace_tool(
      "mplex",
      "echo 'all is well'\necho '**ERROR: [mplex] no luck'\necho 'a later line'\nsleep 3\n");
  start_run();
  ASSERT_TRUE(window_comes("log"));
  ASSERT_TRUE(wait_until([] {
    return dynamic_cast<wxTextCtrl*>(control("Text1", "log"))->GetValue().Contains("a later line");
  }));
  screenshot("run-error");
  const wxColour error = colour_of("Text1", "**ERROR: [mplex] no luck");
  EXPECT_GT(error.Red(), error.Green() + 100);
  EXPECT_EQ(colour_of("Text1", "all is well"), colour_of("Text1", "a later line"));
  EXPECT_NE(colour_of("Text1", "a later line"), error);
  EXPECT_NE(colour_of("Text1", "*multiplexing title: 1"), error);
  answer_message(failed_text, "Cancel");
  close_findings();
}

TEST_F(LogWindow, LastRunsLogIsSearchedAndCopied) {
  fail_run();
  answer_message(failed_text, "Cancel");
  close_findings();
  show_log();
  press("ctrl+f");
  type_text("NO LUCK");
  press("Return");
  const auto selected = [] {
    return ask_ui([] { return utf8_of(last_log_text()->GetStringSelection()); });
  };
  EXPECT_TRUE(wait_until([] { return last_log_text()->GetStringSelection() == "no luck"; }));
  press("Escape");  // leaves the bar, not the window
  EXPECT_TRUE(ask_ui([] { return control("log")->IsShown(); }));
  EXPECT_EQ(selected(), "no luck");
  click_control("copylog", "log");
  EXPECT_TRUE(wait_until([] {
    wxTextDataObject held;
    const wxClipboardLocker lock;
    return wxTheClipboard->GetData(held) && held.GetText() == "no luck";
  }));
}

TEST_F(LogWindow, OkAtTheEndOpensTheLastRunsLogWhereThereIsNoEditor) {
  const std::string program = folder_.add("bin/xdg-open", "#!/bin/sh\nexit 3\n");
  std::filesystem::permissions(program, std::filesystem::perms::owner_all);
  const char* const before = std::getenv("PATH");
  const environment_variable path("PATH", folder_.path("bin") + ":" + before);
  fail_run();
  answer_message(failed_text, "OK");
  ASSERT_TRUE(window_comes("log"));
  EXPECT_EQ(page(), 1);
  EXPECT_THAT(ask_ui([] { return utf8_of(last_log_text()->GetValue()); }),
              testing::HasSubstr("\nERR:  no luck\n"));
  close_findings();
}

TEST_F(LogWindow, EndOfARunAsksForAttentionWhenNoWindowIsInFront) {
  // Noted as it happens: the window manager may give the window the keyboard a moment later.
  bool asked = false;
  on_ui([&] {
    const auto note = +[](GObject* window, GParamSpec*, gpointer to) {
      *static_cast<bool*>(to) |= gtk_window_get_urgency_hint(GTK_WINDOW(window)) != FALSE;
    };
    g_signal_connect(window_->GetHandle(), "notify::urgency-hint", G_CALLBACK(note), &asked);
  });
  replace_tool("mplex", "sleep 3\n");
  start_run();
  ASSERT_TRUE(window_comes("log"));
  const other_program other;
  ASSERT_TRUE(wait_until([this] {
    return !window_->IsActive() && !dynamic_cast<wxFrame*>(control("log"))->IsActive();
  }));
  EXPECT_FALSE(ask_ui([&] { return asked; }));
  EXPECT_TRUE(wait_until([&] { return asked; }));
  answer_message(failed_text, "Cancel");
  on_ui([&] { g_signal_handlers_disconnect_by_data(window_->GetHandle(), &asked); });
  close_findings();
}

}  // namespace
}  // namespace corvane::testing_support
