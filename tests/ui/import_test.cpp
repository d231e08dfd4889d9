// The window of "import..." with a real pointer, real keys, and films that ffmpeg reads.
#include "platform/files/files.h"
#include "platform/files/program_folder.h"
#include "project/project.h"
#include "support/environment_variable.h"
#include "ui/command_bars.h"
#include "ui/gtk_sight.h"
#include "ui/guide.h"
#include "ui/main_window.h"
#include "ui/video/video_picture.h"
#include "ui/widgets/wx_text.h"
#include "ui/window_fixture.h"

#include <gmock/gmock.h>
#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/dataview.h>
#include <wx/menuitem.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace corvane::testing_support {
namespace {

namespace fs = std::filesystem;

using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

constexpr const char* dialog = "import";

class ImportWindow : public window_test {
 protected:
  const project& shown() const { return window_->shown_project(); }

  /// A film of two seconds in the test's folder; its native path.
  std::string film(const std::string& name, const std::string& options = "", int seconds = 2) {
    const std::string length = std::to_string(seconds);
    const std::string path = folder_.path(name);
    const std::string command =
        "ffmpeg -v error -nostdin -y -f lavfi -i testsrc=size=320x180:rate=25:duration=" + length +
        " -f lavfi -i sine=440:duration=" + length +
        " -c:v libx264 -preset ultrafast -c:a aac -metadata:s:a:0 language=deu " + options + " '" +
        path + "' </dev/null";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    return path;
  }

  /// Opens the window with a file of the test's folder, chosen in its dialog.
  void open(const std::string& name) {
    click_menu("file", "import...");
    answer_file("import films", folder_.path(name));
    ASSERT_TRUE(window_comes(dialog));
  }
  void add(const std::string& name) {
    click_control("addfiles", dialog);
    answer_file("import films", folder_.path(name));
  }

  static wxDataViewListCtrl& list() {
    return *dynamic_cast<wxDataViewListCtrl*>(control("importfiles", dialog));
  }
  /// "film.mkv|0:02|encoded".
  static std::vector<std::string> shown_rows() {
    return ask_ui([] {
      std::vector<std::string> all;
      for (unsigned row = 0; row < static_cast<unsigned>(list().GetItemCount()); ++row)
        all.push_back(utf8_of(list().GetTextValue(row, 0) + "|" + list().GetTextValue(row, 1) +
                              "|" + list().GetTextValue(row, 2)));
      return all;
    });
  }
  static std::string text_of_label(const std::string& name) {
    return ask_ui([&] {
      return utf8_of(dynamic_cast<wxStaticText*>(control(name, dialog))->GetLabelText());
    });
  }
  static std::string details() {
    return ask_ui([] {
      return utf8_of(dynamic_cast<wxTextCtrl*>(control("itemdetails", dialog))->GetValue());
    });
  }
  static bool is_enabled(const std::string& name) {
    return ask_ui([&] { return control(name, dialog)->IsEnabled(); });
  }
  static bool rows_become(const std::vector<std::string>& wanted) {
    if (eventually([&] { return shown_rows() == wanted; }))
      return true;
    EXPECT_EQ(shown_rows(), wanted);
    return false;
  }
  static bool said_becomes(const std::string& wanted) {
    if (eventually([&] { return text_of_label("said") == wanted; }))
      return true;
    EXPECT_EQ(text_of_label("said"), wanted);
    return false;
  }
  /// One that goes on for some seconds; gives the files that were there before.
  std::vector<std::string> begin_a_long_import() {
    film("film.mkv", "-vf scale=1280:720", 40);
    const std::vector<std::string> before = files_here();
    open("film.mkv");
    EXPECT_TRUE(rows_become({"film.mkv|0:40|encoded"}));
    click_control("begin", dialog);
    EXPECT_TRUE(eventually(
        [] { return text_of_label("step").find("pictures a second") != std::string::npos; }));
    return before;
  }
  /// "plain.mpg", which holds a film as a disc has it, but no navigation packets.
  void make_plain_stream() {
    const std::string whole =
        film("whole.mpg", "-s 720x576 -aspect 4:3 -c:v mpeg2video -b:v 4M -c:a ac3 -f dvd");
    const std::string command = "ffmpeg -v error -nostdin -y -i '" + whole + "' -c copy -f vob '" +
                                folder_.path("plain.mpg") + "' </dev/null";
    EXPECT_EQ(std::system(command.c_str()), 0);
  }
  static void expect_plain_is_taken_apart() {
    EXPECT_TRUE(rows_become({"plain.mpg|0:02|copied"}));
    EXPECT_THAT(details(), HasSubstr("becomes: plain.m2v, plain.ac3"));
    close_window();
  }
  static void close_window() { close_and_wait(dialog); }
};

TEST_F(ImportWindow, FilmsBecomeTitlesWithTheirLanguageAndOneStepTakesThemBack) {
  film("film.mkv");
  film("other.mp4");
  open("film.mkv");
  add("other.mp4");
  EXPECT_TRUE(rows_become({"film.mkv|0:02|encoded", "other.mp4|0:02|encoded"}));
  EXPECT_THAT(text_of_label("estimate"), StartsWith("2 files, 0:04 of film: about "));
  EXPECT_TRUE(wait_until([] { return control("begin", dialog)->IsEnabled(); }));
  screenshot("import");
  click_control("begin", dialog);
  EXPECT_TRUE(said_becomes("2 titles added."));
  EXPECT_TRUE(rows_become(
      {"film.mkv|0:02|done, the title is added", "other.mp4|0:02|done, the title is added"}));
  screenshot("import-done");
  EXPECT_FALSE(is_enabled("begin"));
  close_window();
  EXPECT_THAT(shown().List11,
              ElementsAre(folder_.stored("film.m2v") + "/" + folder_.stored("film.ac3"),
                          folder_.stored("other.m2v") + "/" + folder_.stored("other.ac3")));
  EXPECT_THAT(shown().languagetags, ElementsAre("Audio tag:\tGERMAN DE "));
  EXPECT_EQ(rows().size(), 2u);
  EXPECT_EQ(ask_ui([this] { return utf8_of(window_->bars().item("undo")->GetItemLabelText()); }),
            "undo import");
  press("ctrl+z");
  EXPECT_TRUE(eventually([] { return rows().empty(); }));
  EXPECT_THAT(shown().languagetags, IsEmpty());
}

TEST_F(ImportWindow, FileThatIsNoFilmIsNamedAndTheOthersGoOn) {
  film("film.mkv");
  folder_.add("letter.txt", "Dear reader,\r\n");
  open("film.mkv");
  add("letter.txt");
  EXPECT_TRUE(eventually([] {
    return shown_rows().size() == 2 && shown_rows()[1].find("left out: ") != std::string::npos;
  }));
  EXPECT_THAT(shown_rows()[1], StartsWith("letter.txt||left out: "));
  EXPECT_THAT(details(), StartsWith("letter.txt\nleft out: "));
  click_control("begin", dialog);
  EXPECT_TRUE(said_becomes("1 title added."));
  close_window();
  EXPECT_THAT(shown().List11, SizeIs(1));
}

TEST_F(ImportWindow, SelectedFileIsShownWithItsPictureAndStreams) {
  film("film.mkv");
  open("film.mkv");
  EXPECT_TRUE(rows_become({"film.mkv|0:02|encoded"}));
  EXPECT_TRUE(wait_until([] {
    return dynamic_cast<video_picture*>(control("itempicture", dialog))->shown_picture().IsOk();
  }));
  EXPECT_THAT(details(), HasSubstr("video: H.264, 320x180, 25 a second - encoded: "));
  EXPECT_THAT(details(), HasSubstr("German - encoded: it is AAC; it becomes AC-3, "));
  EXPECT_THAT(details(), HasSubstr("becomes: film.m2v, film.ac3"));
  close_window();
}

TEST_F(ImportWindow, TellsTheTimeByThatOfEarlierImports) {
  folder_.add("program/import-speeds.txt", "h264 2.5e-05\n");
  film("film.mkv");
  open("film.mkv");
  EXPECT_TRUE(rows_become({"film.mkv|0:02|encoded"}));
  EXPECT_THAT(text_of_label("estimate"), HasSubstr(", about 17 min; video of "));
  close_window();
}

TEST_F(ImportWindow, StreamsCanBeLeftOutByKeyboard) {
  film("film.mkv");
  folder_.add("film.fr.srt", "1\n00:00:00,500 --> 00:00:01,000\nbonjour\n");
  open("film.mkv");
  EXPECT_TRUE(rows_become({"film.mkv|0:02|encoded"}));
  EXPECT_THAT(details(), HasSubstr("beside it: film.fr.srt, French - becomes subtitles"));
  press("alt+s");
  ASSERT_TRUE(window_comes("streams"));
  screenshot("import-streams");
  press("space");
  press("Return");
  ASSERT_TRUE(window_goes("streams"));
  EXPECT_TRUE(eventually(
      [] { return details().find("German - left out: as you chose") != std::string::npos; }));
  EXPECT_THAT(details(), HasSubstr("becomes: film.m2v, film.ac3, film (2).fr.srt"));
  EXPECT_THAT(details(), HasSubstr("silence: made"));
  click_control("choosestreams", dialog);
  ASSERT_TRUE(window_comes("streams"));
  press("Escape");
  ASSERT_TRUE(window_goes("streams"));
  EXPECT_THAT(details(), HasSubstr("German - left out: as you chose"));
  close_window();
}

TEST_F(ImportWindow, SoundBecomesWhatIsChosen) {
  film("film.mkv");
  open("film.mkv");
  EXPECT_TRUE(rows_become({"film.mkv|0:02|encoded"}));
  press("alt+u");
  press("Down");
  EXPECT_TRUE(
      eventually([] { return details().find("it becomes MPEG audio") != std::string::npos; }));
  EXPECT_THAT(details(), HasSubstr("becomes: film.m2v, film.mp2"));
  EXPECT_FALSE(
      ask_ui([] { return dynamic_cast<wxCheckBox*>(control("allsounds", dialog))->GetValue(); }));
  press("alt+e");
  EXPECT_TRUE(eventually([] {
    return ask_ui(
        [] { return dynamic_cast<wxCheckBox*>(control("allsounds", dialog))->GetValue(); });
  }));
  close_window();
}

TEST_F(ImportWindow, ChoicesChangeWhatIsSaidAtOnce) {
  film("film.mkv", "-an");
  open("film.mkv");
  EXPECT_TRUE(rows_become({"film.mkv|0:02|encoded"}));
  EXPECT_THAT(details(), HasSubstr("silence: made"));
  click_control("silence", dialog);
  EXPECT_TRUE(eventually([] { return details().find("sound: none") != std::string::npos; }));
  EXPECT_FALSE(ask_ui([] { return control("rate", dialog)->IsShown(); }));
  on_ui([] { control("quality", dialog)->SetFocus(); });
  press("Down");
  press("Down");
  EXPECT_TRUE(wait_until([] { return control("rate", dialog)->IsShown(); }));
  EXPECT_THAT(text_of_label("estimate"), EndsWith("; video of 6 Mb/s"));
  press("Down");
  EXPECT_TRUE(wait_until([] { return control("quantizer", dialog)->IsShown(); }));
  EXPECT_THAT(text_of_label("estimate"), HasSubstr("with constant quality"));
  close_window();
  EXPECT_THAT(shown().List11, IsEmpty());
}

TEST_F(ImportWindow, StopLeavesNothingAndTheFilmCanBeImportedAgain) {
  const std::vector<std::string> before = begin_a_long_import();
  EXPECT_FALSE(is_enabled("quality"));
  EXPECT_FALSE(is_enabled("begin"));
  EXPECT_TRUE(ask_ui([] { return is_seen("progress", dialog); }));
  EXPECT_FALSE(ask_ui([] { return is_seen("said", dialog) || is_seen("mark", dialog); }));
  screenshot("import-runs");
  click_control("stop", dialog);
  answer_message("Stop importing?  What is complete stays.", "No");
  EXPECT_TRUE(ask_ui([] { return control("stop", dialog)->IsShownOnScreen(); }));
  click_control("stop", dialog);
  answer_message("Stop importing?  What is complete stays.", "Yes");
  EXPECT_TRUE(
      said_becomes("The import was stopped.  No title was added; 1 file was not imported."));
  EXPECT_TRUE(ask_ui([] { return is_seen("said", dialog) && is_seen("mark", dialog); }));
  EXPECT_FALSE(ask_ui([] { return is_seen("progress", dialog) || is_seen("stop", dialog); }));
  EXPECT_EQ(files_here(), before);
  EXPECT_TRUE(rows_become({"film.mkv|0:40|encoded"}));
  EXPECT_TRUE(is_enabled("begin"));
  close_window();
  EXPECT_THAT(shown().List11, IsEmpty());
}

TEST_F(ImportWindow, ClosingWhileItRunsAsksAndLeavesNothing) {
  const std::vector<std::string> before = begin_a_long_import();
  press("Escape");
  answer_message("Stop importing?  What is complete stays.", "Yes");
  EXPECT_TRUE(window_goes(dialog));
  EXPECT_EQ(files_here(), before);
  EXPECT_THAT(shown().List11, IsEmpty());
}

TEST_F(ImportWindow, FailureStaysWithItsReasonAndTheLogIsShown) {
  film("film.mkv");
  open("film.mkv");
  EXPECT_TRUE(rows_become({"film.mkv|0:02|encoded"}));
  replace_tool("ffmpeg", "echo 'film.mkv: Something is broken' >&2\nexit 1\n");
  click_control("begin", dialog);
  EXPECT_TRUE(said_becomes("No title was added; 1 file was not imported."));
  EXPECT_THAT(shown_rows()[0], StartsWith("film.mkv|0:02|not imported: "));
  click_control("showlog", dialog);
  ASSERT_TRUE(window_comes("importlog"));
  EXPECT_THAT(
      ask_ui([] {
        return utf8_of(dynamic_cast<wxTextCtrl*>(control("lastlog", "importlog"))->GetValue());
      }),
      HasSubstr("Something is broken"));
  screenshot("import-log");
  press("Escape");
  EXPECT_TRUE(window_goes("importlog"));
  close_window();
}

TEST_F(ImportWindow, AllOfItGoesWithTheKeysAlone) {
  film("film.mkv");
  film("other.mkv");
  press("ctrl+shift+t");
  answer_file("import films", folder_.path("film.mkv"));
  ASSERT_TRUE(window_comes(dialog));
  press("alt+a");
  answer_file("import films", folder_.path("other.mkv"));
  EXPECT_TRUE(rows_become({"film.mkv|0:02|encoded", "other.mkv|0:02|encoded"}));
  on_ui([] { list().SetFocus(); });
  press("Delete");
  EXPECT_TRUE(rows_become({"film.mkv|0:02|encoded"}));
  press("alt+t");
  press("ctrl+a");
  type_text(folder_.path("made"));
  EXPECT_TRUE(eventually([] { return is_enabled("begin"); }));
  press("alt+i");
  EXPECT_TRUE(said_becomes("1 title added."));
  press("Escape");
  EXPECT_TRUE(window_goes(dialog));
  EXPECT_THAT(shown().List11,
              ElementsAre(folder_.stored("made/film.m2v") + "/" + folder_.stored("made/film.ac3")));
}

TEST_F(ImportWindow, FilmThatAddTitleRefusesOpensIt) {
  film("film.mp4");
  click_tool("add title");
  answer_file("select video stream", folder_.path("film.mp4"));
  answer_message_with("Do you want to take it nonetheless?", "Cancel");
  ASSERT_TRUE(window_comes(dialog));
  EXPECT_TRUE(rows_become({"film.mp4|0:02|encoded"}));
  close_window();
  EXPECT_THAT(shown().List11, IsEmpty());
}

TEST_F(ImportWindow, StreamWithoutNavigationPacketsOpensItAndIsTakenApart) {
  make_plain_stream();
  click_menu("file", "add new title...");
  answer_file("select video stream", folder_.path("plain.mpg"));
  answer_message("NAV packets are not detected in plain.mpg.  Please demultiplex.", "OK");
  ASSERT_TRUE(window_comes(dialog));
  expect_plain_is_taken_apart();
}

TEST_F(ImportWindow, DroppedStreamWithoutNavigationPacketsOpensItToo) {
  make_plain_stream();
  const std::string dropped = folder_.path("plain.mpg");
  on_ui([&] { window_->CallAfter([=, this] { window_->drop({dropped}); }); });
  answer_message("NAV packets are not detected in plain.mpg.  Please demultiplex.", "OK");
  ASSERT_TRUE(window_comes(dialog));
  expect_plain_is_taken_apart();
}

TEST_F(ImportWindow, WithoutTheToolItSaysHowToGetIt) {
  fs::remove(path_of(tool_path(app_, "ffmpeg")));
  click_menu("file", "import...");
  answer_message_with("ffmpeg", "OK");
  EXPECT_TRUE(no_dialog());
}

TEST_F(ImportWindow, HandEditedXmlIsAskedAboutFirst) {
  project p = project_with_menus(1);
  p.customxml = "<dvdauthor>\r\n</dvdauthor>\r\n";
  load(p);
  click_menu("file", "import...");
  answer_message("You have edited the XML manually, do you want to discard these changes?",
                 "Cancel");
  EXPECT_TRUE(no_dialog());
  EXPECT_FALSE(shown().customxml.empty());
}

TEST_F(ImportWindow, DroppedFilmsOpenItAndStreamsAreAddedBeforeThat) {
  const std::string dropped = film("film.mkv");
  const std::string video = file("a.m2v"), audio = file("a.ac3");
  on_ui([&] { window_->CallAfter([=, this] { window_->drop({dropped, video, audio}); }); });
  ASSERT_TRUE(window_comes(dialog));
  EXPECT_TRUE(eventually([] { return shown_rows().size() == 1; }));
  EXPECT_THAT(shown_rows()[0], StartsWith("film.mkv|"));
  EXPECT_EQ(rows().size(), 1u);
  close_window();
}

// However it comes: GIF is a form of pictures, too.
TEST_F(ImportWindow, PictureThatMovesIsAFilm) {
  const std::string gif = folder_.path("dance.gif");
  const std::string command =
      "ffmpeg -v error -nostdin -y -f lavfi -i testsrc=size=320x180:rate=10:duration=2 '" + gif +
      "' </dev/null";
  ASSERT_EQ(std::system(command.c_str()), 0);
  open("dance.gif");
  EXPECT_TRUE(rows_become({"dance.gif|0:02|encoded"}));
  close_window();
  on_ui([&] { window_->CallAfter([=, this] { window_->drop({gif}); }); });
  ASSERT_TRUE(window_comes(dialog));
  EXPECT_TRUE(rows_become({"dance.gif|0:02|encoded"}));
  close_window();
}

TEST_F(ImportWindow, WithoutTheToolDroppedFilmsAreNamed) {
  const std::string dropped = film("film.mkv");
  fs::remove(path_of(tool_path(app_, "ffmpeg")));
  on_ui([&] { window_->CallAfter([=, this] { window_->drop({dropped}); }); });
  answer_message_with("film.mkv: a Matroska or WebM film", "OK");
  EXPECT_TRUE(no_dialog());
}

TEST_F(ImportWindow, EndOfTheSessionEndsARunThatIsOn) {
  const std::vector<std::string> before = begin_a_long_import();
  on_ui([this] { window_->CallAfter([this] { window_->Close(true); }); });
  EXPECT_TRUE(window_goes("main"));
  EXPECT_EQ(files_here(), before);
}

}  // namespace
}  // namespace corvane::testing_support
