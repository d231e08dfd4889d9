// The dialog of the text subtitles with a real pointer and real keys.
#include "media/video_file.h"
#include "project/subtitle_rows.h"
#include "support/environment_variable.h"
#include "tools/subtitles.h"
#include "ui/editor/file_pictures.h"
#include "ui/gtk_sight.h"
#include "ui/main_window.h"
#include "ui/video/video_picture.h"
#include "ui/widgets/search_list.h"
#include "ui/widgets/wrapped_text.h"
#include "ui/widgets/wx_text.h"
#include "ui/window_fixture.h"

#include <gmock/gmock.h>
#include <wx/arrstr.h>
#include <wx/control.h>
#include <wx/dcclient.h>
#include <wx/listbox.h>
#include <wx/spinctrl.h>
#include <wx/textctrl.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace corvane::testing_support {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::Not;

constexpr const char* dialog = "Subtitles";
constexpr const char* chooser = "open compatible text subtitles";
constexpr const char* fresh = "center,bottom,60,60,30,30,28.0,arial.ttf,720,478,29.97,ISO-8859-1|";
constexpr const char* installed_font = "/usr/share/fonts/truetype/dejavu/DejaVuSerif.ttf";

/// A system without fonts for the length of a test. Programs that are started see it.
class no_fonts {
 public:
  explicit no_fonts(const std::string& configuration) {
    setenv("FONTCONFIG_FILE", configuration.c_str(), 1);
  }
  ~no_fonts() { unsetenv("FONTCONFIG_FILE"); }  // an empty one would count
  no_fonts(const no_fonts&) = delete;
  no_fonts& operator=(const no_fonts&) = delete;
};

class SubtitlesDialog : public window_test {
 protected:
  const project& shown() const { return window_->shown_project(); }
  const std::string& files(std::size_t title = 0) const { return shown().subtitledata[title]; }
  const std::string& options(std::size_t title = 0) const { return shown().subtitleoptions[title]; }

  project titles_only(int titles) {
    project p = project_with_menus(titles);
    p.menulist.clear();
    p.moremenuoptions.clear();
    p.menubuttons.assign(1, "");
    return p;
  }

  /// A project of one title with these subtitle files, which are there.
  project with_files(const std::vector<std::string>& names, const std::string& settings) {
    project p = titles_only(1);
    p.subtitledata = {"<none>"};
    for (const std::string& name : names) {
      file(name);
      p.subtitledata[0] = with_subtitle(p.subtitledata[0], folder_.stored(name));
    }
    p.subtitleoptions = {settings};
    return p;
  }

  /// Opens the dialog for a title (0-based).
  static void open(int title = 0) {
    click_row(title);
    click_menu("extras", "add/edit subtitles");
    ASSERT_TRUE(window_comes(dialog));
  }
  static void accept() {
    click_button("accept");
    EXPECT_TRUE(window_goes(dialog));
  }
  static void leave() {
    close(dialog);
    EXPECT_TRUE(window_goes(dialog));
  }
  void add(const std::string& name) {
    click_control("Command1", dialog);
    answer_file(chooser, file(name));
    EXPECT_TRUE(wait_until([] { return !look_at_dialog()->chooses_file; }));
  }

  static wxListBox& list1() { return *dynamic_cast<wxListBox*>(control("list1", dialog)); }
  static std::vector<std::string> names() {
    return ask_ui([] {
      std::vector<std::string> all;
      for (const wxString& row : list1().GetStrings())
        all.push_back(utf8_of(row));
      return all;
    });
  }
  static int row() {
    return ask_ui([] { return list1().GetSelection(); });
  }
  static void click_file(int row) {
    const wxRect place = ask_ui([] { return list1().GetScreenRect(); });
    const int height = ask_ui([] { return list_row_height(list1()); });
    click_at({place.x + 40, place.y + 3 + height * row + height / 2});
  }

  static std::string value(const char* name) {
    return ask_ui([name] {
      wxWindow* window = control(name, dialog);
      if (const auto* list = dynamic_cast<search_list*>(window))
        return utf8_of(list->GetValue());
      return utf8_of(dynamic_cast<wxTextEntry*>(window)->GetValue());
    });
  }
  static bool value_becomes(const char* name, const std::string& text) {
    return wait_until([&] { return value_now(name) == text; });
  }
  static std::string value_now(const char* name) {
    wxWindow* window = control(name, dialog);
    if (const auto* list = dynamic_cast<search_list*>(window))
      return utf8_of(list->GetValue());
    return utf8_of(dynamic_cast<wxTextEntry*>(window)->GetValue());
  }
  /// The twelve fields as a settings row.
  static std::string fields() {
    std::string row;
    for (const char* name : {"halign", "valign", "lmargin", "rmargin", "tmargin", "bmargin",
                             "fontsiz", "fontfac", "mwidth", "mheight", "mfps", "charact"})
      row += (row.empty() ? "" : ",") + value(name);
    return row;
  }
  static std::vector<std::string> entries(const char* name) {
    return ask_ui([name] {
      std::vector<std::string> all;
      for (const wxString& entry :
           dynamic_cast<wxItemContainer*>(control(name, dialog))->GetStrings())
        all.push_back(utf8_of(entry));
      return all;
    });
  }
  static void type_into(const char* name, const std::string& text) {
    on_ui([name] { control(name, dialog)->SetFocus(); });
    press("ctrl+a");
    type_text(text);
  }
  /// As if pasted: a key cannot type every text.
  static void set_value(const char* name, const char* text) {
    on_ui([=] {
      control(name, dialog)->CallAfter([=] {
        dynamic_cast<wxTextEntry*>(control(name, dialog))->SetValue(wxString::FromUTF8(text));
      });
    });
  }
  static void pick(const char* name, const std::string& typed, const std::string& becomes) {
    on_ui([name] { control(name, dialog)->SetFocus(); });
    type_text(typed);
    EXPECT_TRUE(value_becomes(name, becomes)) << value(name);
  }
};

// Opening ----------------------------------------------------------------------------------------

TEST_F(SubtitlesDialog, TitleMustBeSelected) {
  load(titles_only(1));
  click_menu("extras", "add/edit subtitles");
  EXPECT_EQ(answer_message("Please select a title to add a subtitle to.", "OK").picture, "warning");
  EXPECT_FALSE(ask_ui([] { return wxWindow::FindWindowByName(dialog) != nullptr; }));
}

TEST_F(SubtitlesDialog, MultiplexedTitleIsRefused) {
  project p = titles_only(1);
  file("film.vob");
  p.List11 = {folder_.stored("film.vob")};
  load(p);
  click_row(0);
  press("ctrl+b");
  EXPECT_EQ(answer_message("Unable to add subtitles to already muxed files, please de-mux if you "
                           "wish to add subtitles.",
                           "OK")
                .picture,
            "warning");
  EXPECT_FALSE(ask_ui([] { return wxWindow::FindWindowByName(dialog) != nullptr; }));
}

TEST_F(SubtitlesDialog, HandEditedXmlIsKeptWhenTheUserSaysSo) {
  project p = titles_only(1);
  p.customxml = "<dvdauthor>\r\n</dvdauthor>\r\n";
  load(p);
  click_row(0);
  click_tool("extras");
  click_menu_item("add/edit subtitles");
  answer_message("You have edited the XML manually, do you want to discard these changes?",
                 "Cancel");
  EXPECT_FALSE(ask_ui([] { return wxWindow::FindWindowByName(dialog) != nullptr; }));
  EXPECT_FALSE(shown().customxml.empty());
}

TEST_F(SubtitlesDialog, ControlsHaveTheirNamesAndCaptions) {
  load(titles_only(2));
  open(1);
  screenshot("subtitles");
  on_ui([] {
    EXPECT_EQ(utf8_of(control(dialog)->GetLabel()), "Corvane - subtitles");
    for (const char* name : {"list1", "halign", "valign", "lmargin", "rmargin", "tmargin",
                             "bmargin", "fontsiz", "fontfac", "fontface", "mwidth", "mheight",
                             "mfps", "charact", "Command1", "Command2", "accept"})
      EXPECT_EQ(accessible_name(*control(name, dialog)), name);
    const std::pair<const char*, const char*> labels[] = {
        {"Label1", "Subtitles for: title2:b.m2v/b.ac3"},
        {"Command1", "add text subtitle"},
        {"Command2", "reset subtitles to none"},
        {"accept", "accept"}};
    for (const auto& [name, label] : labels)
      EXPECT_EQ(utf8_of(wxControl::RemoveMnemonics(control(name, dialog)->GetLabel())), label);
    for (const char* label : {"subtitle options", "horizontal alignment", "vertical alignment",
                              "left margin", "right margin", "top margin", "bottom margin",
                              "font size", "font face", "width", "height", "character set"})
      EXPECT_TRUE(find_label(label, label_place::anywhere)) << label;
  });
  EXPECT_THAT(names(), ElementsAre("<none>"));
  EXPECT_EQ(row(), 0);
  leave();
}

TEST_F(SubtitlesDialog, ListsOfferWhatTheyShould) {
  load(titles_only(1));
  open();
  EXPECT_THAT(entries("halign"), ElementsAre("left", "center", "right"));
  EXPECT_THAT(entries("valign"), ElementsAre("top", "center", "bottom"));
  EXPECT_THAT(entries("mfps"), ElementsAre("23.976", "25", "29.97"));
  EXPECT_THAT(entries("charact"), testing::ElementsAreArray(charact_items));
  leave();
}

TEST_F(SubtitlesDialog, PalTitleStartsWithTheValuesOfPal) {
  project p = titles_only(1);
  p.subtitleoptions = {default_subtitleoptions("PAL")};
  load(p);
  open();
  EXPECT_EQ(fields(), "center,bottom,60,60,30,30,28.0,arial.ttf,720,574,25,ISO-8859-1");
  leave();
}

// Files ------------------------------------------------------------------------------------------

TEST_F(SubtitlesDialog, FileAddedToAFreshTitleAndAccepted) {
  load(titles_only(1));
  open();
  EXPECT_EQ(fields() + "|", fresh);
  add("film.srt");
  EXPECT_THAT(names(), ElementsAre("film.srt"));
  accept();
  EXPECT_EQ(files(), folder_.stored("film.srt"));
  EXPECT_EQ(options(), fresh);
  EXPECT_EQ(shown().saved, 0);
}

TEST_F(SubtitlesDialog, FileInUnicodeIsReadSoWhenTheUserAgrees) {
  load(titles_only(1));
  folder_.add("uml.srt", "1\n00:00:01,000 --> 00:00:02,000\nf\xC3\xBCnf\n");
  const std::string question =
      "\"" + folder_.path("uml.srt") + "\" is UTF-8 text.  Read it as UTF-8 instead of ISO-8859-1?";
  open();
  click_control("Command1", dialog);
  answer_file(chooser, folder_.path("uml.srt"));
  answer_message(question, "No");
  EXPECT_TRUE(value_becomes("charact", "ISO-8859-1"));
  click_control("Command2", dialog);
  click_control("Command1", dialog);
  answer_file(chooser, folder_.path("uml.srt"));
  answer_message(question, "Yes");
  EXPECT_TRUE(value_becomes("charact", "UTF-8"));
  accept();
  EXPECT_EQ(options(), "center,bottom,60,60,30,30,28.0,arial.ttf,720,478,29.97,UTF-8|");
}

TEST_F(SubtitlesDialog, SetThatAFileTellsIsOfferedBelowTheOthersWheneverItIsSelected) {
  load(with_files({"plain.srt"}, fresh));
  folder_.add("uml.srt", "1\n00:00:01,000 --> 00:00:02,000\nf\xC3\xBCnf\n");
  const std::string question =
      "\"" + folder_.path("uml.srt") + "\" is UTF-8 text.  Read it as UTF-8 instead of ISO-8859-1?";
  open();
  EXPECT_EQ(entries("charact").size(), 23u);
  click_control("Command1", dialog);
  answer_file(chooser, folder_.path("uml.srt"));
  answer_message(question, "No");
  EXPECT_EQ(row(), 1);
  ASSERT_EQ(entries("charact").size(), 24u);
  EXPECT_EQ(entries("charact").back(), "UTF-8");
  click_file(0);
  EXPECT_EQ(entries("charact").size(), 23u);
  EXPECT_EQ(value("charact"), "ISO-8859-1");
  click_button("close, keep files");
  EXPECT_TRUE(window_goes(dialog));
  open();
  click_file(1);
  EXPECT_EQ(value("charact"), "ISO-8859-1");
  pick("charact", "utf", "UTF-8");
  screenshot("subtitles-utf8");
  accept();
  EXPECT_EQ(options(),
            std::string(fresh) + "center,bottom,60,60,30,30,28.0,arial.ttf,720,478,29.97,UTF-8|");
}

TEST_F(SubtitlesDialog, EnterReadsAFileInUnicodeAsWhatItIs) {
  load(titles_only(1));
  folder_.add("uml.srt", "1\n00:00:01,000 --> 00:00:02,000\nf\xC3\xBCnf\n");
  open();
  click_control("Command1", dialog);
  answer_file(chooser, folder_.path("uml.srt"));
  ASSERT_TRUE(wait_until([] {
    return look_at_dialog() && look_at_dialog()->text.find("Read it as UTF-8") != std::string::npos;
  }));
  press("Return");
  EXPECT_TRUE(value_becomes("charact", "UTF-8"));
  leave();
}

TEST_F(SubtitlesDialog, ChooserOffersTheSubtitleFilesOnly) {
  load(titles_only(1));
  open();
  click_control("Command1", dialog);
  ASSERT_TRUE(wait_until([] { return look_at_dialog() && look_at_dialog()->title == chooser; }));
  on_ui([] {
    for (const char* name :
         {"a.sub", "a.srt", "a.ssa", "a.smi", "a.rt", "a.txt", "a.aqt", "a.jss", "a.js"})
      EXPECT_TRUE(filter_offers(name)) << name;
    EXPECT_FALSE(filter_offers("a.m2v"));
  });
  cancel_dialog(chooser);
  EXPECT_THAT(names(), ElementsAre("<none>"));
  leave();
  EXPECT_EQ(files(), "<none>");
  EXPECT_EQ(shown().saved, 1);
}

TEST_F(SubtitlesDialog, SecondFileStartsWithTheCurrentSettingsOfTheFirst) {
  load(titles_only(1));
  open();
  add("one.srt");
  type_into("lmargin", "80");
  pick("valign", "top", "top");
  add("two.srt");
  EXPECT_THAT(names(), ElementsAre("one.srt", "two.srt"));
  EXPECT_EQ(row(), 1);  // what is set next is the added file's
  EXPECT_EQ(fields(), "center,top,80,60,30,30,28.0,arial.ttf,720,478,29.97,ISO-8859-1");
  type_into("lmargin", "10");
  click_file(0);
  EXPECT_TRUE(value_becomes("lmargin", "80"));
  accept();
  EXPECT_EQ(files(), folder_.stored("one.srt") + "/" + folder_.stored("two.srt"));
  EXPECT_EQ(options(),
            "center,top,80,60,30,30,28.0,arial.ttf,720,478,29.97,ISO-8859-1|"
            "center,top,10,60,30,30,28.0,arial.ttf,720,478,29.97,ISO-8859-1|");
}

TEST_F(SubtitlesDialog, ResetAfterThreeFilesLeavesTheLastSettings) {
  load(with_files({"a.srt", "b.srt", "c.srt"},
                  "left,top,1,1,1,1,20.0,a.ttf,720,478,29.97,CP850|"
                  "left,top,2,2,2,2,20.0,b.ttf,720,478,29.97,CP850|"
                  "right,center,3,3,3,3,30.0,c.ttf,640,470,25,KOI8-R|"));
  open();
  EXPECT_THAT(names(), ElementsAre("a.srt", "b.srt", "c.srt"));
  EXPECT_EQ(fields(), "left,top,1,1,1,1,20.0,a.ttf,720,478,29.97,CP850");
  click_control("Command2", dialog);
  EXPECT_THAT(names(), ElementsAre("<none>"));
  EXPECT_EQ(fields(), "right,center,3,3,3,3,30.0,c.ttf,640,470,25,KOI8-R");
  accept();
  EXPECT_EQ(files(), "<none>");
  EXPECT_EQ(options(), "right,center,3,3,3,3,30.0,c.ttf,640,470,25,KOI8-R|");
}

TEST_F(SubtitlesDialog, ClosingKeepsTheFilesAndDropsTheSettings) {
  load(titles_only(1));
  for (const char* way : {"Escape", "cancel", "close"}) {
    open();
    add(std::string(way) + ".srt");
    type_into("bmargin", "99");
    if (way == std::string("close"))
      close(dialog);
    else if (way == std::string("cancel"))
      click_button("close, keep files");
    else
      press("Escape");
    EXPECT_TRUE(window_goes(dialog)) << way;
    EXPECT_EQ(options(), fresh) << way;
  }
  EXPECT_EQ(files(), folder_.stored("Escape.srt") + "/" + folder_.stored("cancel.srt") + "/" +
                         folder_.stored("close.srt"));
  EXPECT_EQ(shown().saved, 0);
  open();  // fewer settings than files: the last ones serve
  EXPECT_EQ(names().size(), 3u);
  click_file(2);
  EXPECT_EQ(fields() + "|", fresh);
  leave();
}

// Fields -----------------------------------------------------------------------------------------

TEST_F(SubtitlesDialog, FieldsAreStoredAsTheyAreTyped) {
  load(titles_only(1));
  open();
  add("film.srt");
  const std::pair<const char*, const char*> typed[] = {
      {"lmargin", "1"},      {"rmargin", "two"}, {"tmargin", " 3"},  {"bmargin", "4.5"},
      {"fontsiz", "twelve"}, {"mwidth", "704"},  {"mheight", "470"}, {"mfps", "15"}};
  for (const auto& [name, text] : typed)
    type_into(name, text);
  pick("halign", "l", "left");
  pick("valign", "c", "center");
  pick("charact", "koi", "KOI8-R");
  accept();
  EXPECT_EQ(options(), "left,center,1,two, 3,4.5,twelve,arial.ttf,704,470,15,KOI8-R|");
}

TEST_F(SubtitlesDialog, EmptiedFieldIsStoredEmpty) {
  load(titles_only(1));
  open();
  type_into("fontsiz", "");
  press("Delete");
  EXPECT_TRUE(value_becomes("fontsiz", ""));
  accept();
  EXPECT_EQ(options(), "center,bottom,60,60,30,30,,arial.ttf,720,478,29.97,ISO-8859-1|");
}

TEST_F(SubtitlesDialog, FrameRateIsPickedFromItsList) {
  load(titles_only(1));
  open();
  click_control("mfps", dialog);
  press("alt+Down");
  press("Home");
  press("Return");
  EXPECT_TRUE(value_becomes("mfps", "23.976"));
  accept();
  EXPECT_EQ(options(), "center,bottom,60,60,30,30,28.0,arial.ttf,720,478,23.976,ISO-8859-1|");
}

TEST_F(SubtitlesDialog, TextThatWouldCutTheRowIsRefused) {
  load(titles_only(1));
  open();
  set_value("lmargin", "6,0");
  EXPECT_EQ(
      answer_message("The left margin \"6,0\" cannot be used: it contains \",\".", "OK").picture,
      "warning");
  EXPECT_TRUE(value_becomes("lmargin", "60"));
  set_value("mfps", "25|");
  answer_message("The frame rate \"25|\" cannot be used: it contains \"|\".", "OK");
  EXPECT_TRUE(value_becomes("mfps", "29.97"));
  accept();
  EXPECT_EQ(options(), fresh);
}

TEST_F(SubtitlesDialog, TextsOfTheProjectThatNoListOffersAreShownAndKept) {
  const std::string row = "middle,bottom,60,60,30,30,28.0,nowhere.ttf,720,478,30,UTF-8";
  load(with_files({"a.srt"}, row + "|"));
  open();
  EXPECT_EQ(fields(), row);
  EXPECT_EQ(value("fontface"), "");
  EXPECT_EQ(ask_ui([] {
              return utf8_of(dynamic_cast<search_list*>(control("fontface", dialog))->hint());
            }),
            "nowhere.ttf is not installed");
  accept();
  EXPECT_EQ(options(), row + "|");
}

TEST_F(SubtitlesDialog, RowOfThreeSettingsShowsTheOthersEmptyAndIsKept) {
  load(with_files({"a.srt"}, "left,top,3|"));
  open();
  EXPECT_EQ(fields(), "left,top,3,,,,,,,,,");
  EXPECT_EQ(value("fontface"), "");
  EXPECT_EQ(ask_ui([] {
              return utf8_of(dynamic_cast<search_list*>(control("fontface", dialog))->hint());
            }),
            "");  // no font is named that could be missing
  accept();
  EXPECT_EQ(options(), "left,top,3|");
}

// Fonts ------------------------------------------------------------------------------------------

TEST_F(SubtitlesDialog, FontWhoseFileIsInCapitalsIsStoredInLowerCase) {
  const environment_variable data("XDG_DATA_HOME", folder_.path("data"));
  std::filesystem::create_directories(folder_.path("data/fonts"));
  std::filesystem::copy_file(installed_font, folder_.path("data/fonts/times.TTF"));
  load(titles_only(1));
  open();
  pick("fontface", "dejavu serif", "DejaVu Serif");
  EXPECT_TRUE(value_becomes("fontfac", "dejavuserif.ttf"));
  press("Down");  // the other file of that name
  EXPECT_TRUE(value_becomes("fontfac", "times.ttf"));
  accept();
  EXPECT_EQ(options(), "center,bottom,60,60,30,30,28.0,times.ttf,720,478,29.97,ISO-8859-1|");
  open();
  EXPECT_EQ(value("fontface"), "DejaVu Serif");
  leave();
}

TEST_F(SubtitlesDialog, OnlyTruetypeFontsAreOffered) {
  load(titles_only(1));
  open();
  const std::vector<std::string> fonts = entries("fontface");
  EXPECT_THAT(fonts, Contains("DejaVu Sans"));
  EXPECT_THAT(fonts, Not(Contains("URW Bookman Light")));  // .otf and .t1
  leave();
}

TEST_F(SubtitlesDialog, SystemWithoutFontsOffersNoneAndKeepsTheStoredOne) {
  const no_fonts none(folder_.add("fonts.conf", "<fontconfig></fontconfig>"));
  load(titles_only(1));
  open();
  EXPECT_TRUE(entries("fontface").empty());
  EXPECT_EQ(value("fontface"), "");
  EXPECT_EQ(value("fontfac"), "arial.ttf");
  type_into("tmargin", "31");
  accept();
  EXPECT_EQ(options(), "center,bottom,60,60,31,30,28.0,arial.ttf,720,478,29.97,ISO-8859-1|");
}

// The preview ------------------------------------------------------------------------------------

constexpr const char* two_cues =
    "1\n00:00:00,500 --> 00:00:01,500\nF\xEDrst\n\n2\n00:00:02,000 --> 00:00:02,800\nSecond\n";

class SubtitlesPreview : public SubtitlesDialog {
 protected:
  /// A project of one title with a real video and a subtitle file.
  project previewed(const std::string& subtitles,
                    const std::string& settings = default_subtitleoptions("NTSC")) {
    project p = with_files({}, settings);
    std::filesystem::copy_file(real_video(), folder_.path("a.m2v"),
                               std::filesystem::copy_options::overwrite_existing);
    folder_.add("film.srt", subtitles);
    p.subtitledata = {folder_.stored("film.srt")};
    return p;
  }

  static const video_picture& view() {
    return *dynamic_cast<video_picture*>(control("preview", dialog));
  }
  static wxImage picture() {
    return ask_ui([] { return view().shown_picture().Copy(); });
  }
  static std::string note() {
    return ask_ui([] { return utf8_of(control("cuetime", dialog)->GetLabel()); });
  }
  static bool note_becomes(const std::string& text) {
    return wait_until([&] { return utf8_of(control("cuetime", dialog)->GetLabel()) == text; });
  }
  static bool reason_comes() {
    return wait_until([] { return !view().reason().empty(); });
  }
  static std::string reason() {
    return ask_ui([] { return utf8_of(view().reason()); });
  }
  /// Waits until the picture is no longer that one.
  static bool picture_changes(const wxImage& from) {
    return wait_until([&] {
      const wxImage& now = view().shown_picture();
      return now.IsOk() && !same(now, from);
    });
  }
  static bool same(const wxImage& a, const wxImage& b) {
    return a.GetSize() == b.GetSize() &&
           std::equal(a.GetData(), a.GetData() + 3 * a.GetWidth() * a.GetHeight(), b.GetData());
  }

  /// The picture of the video at a time.
  static wxImage video_at(double seconds) {
    const auto video = video_file::open(real_video());
    EXPECT_TRUE(video);
    while (!(*video)->scan(100)->finished) {
    }
    return image_of(*(*video)->picture_at(seconds));
  }
  /// The rectangle of all pixels that differ; empty when none does.
  static wxRect difference(const wxImage& a, const wxImage& b) {
    wxRect all;
    EXPECT_EQ(a.GetSize(), b.GetSize());
    for (int y = 0; y < a.GetHeight(); ++y)
      for (int x = 0; x < a.GetWidth(); ++x)
        if (a.GetRed(x, y) != b.GetRed(x, y) || a.GetGreen(x, y) != b.GetGreen(x, y) ||
            a.GetBlue(x, y) != b.GetBlue(x, y))
          all.Union(wxRect(x, y, 1, 1));
    return all;
  }
};

TEST_F(SubtitlesPreview, FirstCueStandsOverThePictureOfItsTime) {
  load(previewed(two_cues));
  open();
  EXPECT_TRUE(note_becomes("0:00:00.500 - 0:00:01.500")) << note() << reason();
  const wxImage video = video_at(0.5);
  ASSERT_TRUE(wait_until([&] {  // the video's first picture serves until this one is found
    return difference(view().shown_picture(), video).y > 320;
  }));
  screenshot("subtitles-preview");
  const wxRect text = difference(picture(), video);
  EXPECT_GT(text.width, 20);
  EXPECT_GT(text.height, 10);
  EXPECT_NEAR(text.x + text.width / 2, 360, 20);  // centred
  leave();
}

TEST_F(SubtitlesPreview, FollowsTheAlignment) {
  load(previewed(two_cues));
  open();
  EXPECT_TRUE(note_becomes("0:00:00.500 - 0:00:01.500")) << note() << reason();
  const wxImage video = video_at(0.5);
  ASSERT_TRUE(wait_until([&] { return difference(view().shown_picture(), video).y > 320; }));
  pick("valign", "top", "top");
  EXPECT_TRUE(wait_until([&] {
    const wxRect text = difference(view().shown_picture(), video);
    return !text.IsEmpty() && text.GetBottom() < 160;
  }));
  pick("halign", "left", "left");
  EXPECT_TRUE(wait_until([&] {
    const wxRect text = difference(view().shown_picture(), video);
    return !text.IsEmpty() && text.GetRight() < 300;
  }));
  leave();
}

TEST_F(SubtitlesPreview, StepsToTheNextCueAndTellsItsTime) {
  load(previewed(two_cues));
  open();
  EXPECT_TRUE(note_becomes("0:00:00.500 - 0:00:01.500")) << note() << reason();
  const wxImage first = picture();
  press("alt+u");
  press("Up");
  EXPECT_TRUE(note_becomes("0:00:02.000 - 0:00:02.800")) << note() << reason();
  EXPECT_TRUE(picture_changes(first));
  press("Up");
  EXPECT_TRUE(reason_comes());
  EXPECT_EQ(reason(), "\"film.srt\" cannot be shown: it has 2 subtitles, no number 3.");
  press("Down");
  EXPECT_TRUE(note_becomes("0:00:02.000 - 0:00:02.800"));
  leave();
}

TEST_F(SubtitlesPreview, FileThatIsNoneTellsItsReasonAndAnotherOneRecovers) {
  project p = previewed("no subtitles at all\n");
  folder_.add("good.srt", two_cues);
  p.subtitledata[0] = with_subtitle(p.subtitledata[0], folder_.stored("good.srt"));
  load(p);
  open();
  ASSERT_TRUE(reason_comes());
  screenshot("subtitles-reason");
  EXPECT_THAT(reason(), testing::HasSubstr("\"film.srt\" cannot be shown: "));
  EXPECT_EQ(note(), "");
  click_file(1);
  EXPECT_TRUE(note_becomes("0:00:00.500 - 0:00:01.500")) << reason();
  EXPECT_EQ(reason(), "");
  leave();
}

TEST_F(SubtitlesPreview, SettingsThatCannotBeDrawnTellTheirReason) {
  load(previewed(two_cues));
  open();
  EXPECT_TRUE(note_becomes("0:00:00.500 - 0:00:01.500"));
  type_into("fontsiz", "big");
  ASSERT_TRUE(reason_comes());
  EXPECT_THAT(reason(), testing::HasSubstr("film.srt"));
  type_into("fontsiz", "40");
  EXPECT_TRUE(wait_until([] { return view().shown_picture().IsOk(); }));
  leave();
}

TEST_F(SubtitlesPreview, TextThatWillBeMissingIsToldBelowThePicture) {
  load(previewed("1\n00:00:00,500 --> 00:00:01,500\nLetters that get lost\n\n"));
  open();
  EXPECT_TRUE(note_becomes("0:00:00.500 - 0:00:01.500")) << note() << reason();
  EXPECT_FALSE(ask_ui([] { return control("cuemissing", dialog)->IsShown(); }));
  pick("halign", "r", "right");
  EXPECT_TRUE(wait_until([] { return control("cuemissing", dialog)->IsShown(); }));
  std::string told = ask_ui([] { return utf8_of(control("cuemissing", dialog)->GetLabel()); });
  std::replace(told.begin(), told.end(), '\n', ' ');
  EXPECT_THAT(told, testing::StartsWith("On the disc letters of its text are missing"));
  EXPECT_THAT(told, testing::HasSubstr("align it left"));
  screenshot("subtitles-missing");
  press("Up");
  EXPECT_TRUE(value_becomes("halign", "center"));
  EXPECT_TRUE(wait_until([] { return !control("cuemissing", dialog)->IsShown(); }));
  leave();
}

TEST_F(SubtitlesPreview, TitleWithoutSubtitlesShowsTheVideoAlone) {
  project p = previewed(two_cues);
  p.subtitledata = {"<none>"};
  load(p);
  open();
  EXPECT_TRUE(note_becomes("no subtitles"));
  EXPECT_TRUE(same(picture(), video_at(0)));
  EXPECT_FALSE(ask_ui([] { return control("cuenumber", dialog)->IsEnabled(); }));
  click_control("Command1", dialog);
  answer_file(chooser, folder_.path("film.srt"));
  EXPECT_TRUE(note_becomes("0:00:00.500 - 0:00:01.500")) << reason();
  click_control("Command2", dialog);
  EXPECT_TRUE(note_becomes("no subtitles"));
  EXPECT_TRUE(same(picture(), video_at(0)));
  leave();
}

TEST_F(SubtitlesPreview, FrameOfAPalDiscHas576Lines) {
  project p = previewed(two_cues, default_subtitleoptions("PAL"));
  p.globalregion = "PAL";
  std::filesystem::copy_file(real_pal_video(), folder_.path("a.m2v"),
                             std::filesystem::copy_options::overwrite_existing);
  load(p);
  open();
  EXPECT_TRUE(note_becomes("0:00:00.500 - 0:00:01.500")) << note() << reason();
  EXPECT_EQ(picture().GetSize(), wxSize(720, 576));
  leave();
}

TEST_F(SubtitlesPreview, PickedFontChangesTheText) {
  load(previewed(two_cues));
  open();
  EXPECT_TRUE(note_becomes("0:00:00.500 - 0:00:01.500")) << note() << reason();
  const wxImage video = video_at(0.5);
  ASSERT_TRUE(wait_until([&] { return difference(view().shown_picture(), video).y > 320; }));
  const wxImage before = picture();
  pick("fontface", "dejavu serif bold", "DejaVu Serif Bold");
  EXPECT_TRUE(picture_changes(before));
  EXPECT_GT(difference(picture(), video).y, 320);
  screenshot("subtitles-font");
  leave();
}

TEST_F(SubtitlesPreview, TextStandsOverGreyWhenTheVideoCannotBeRead) {
  project p = previewed(two_cues);
  folder_.add("a.m2v", "x");
  load(p);
  open();
  EXPECT_TRUE(note_becomes("0:00:00.500 - 0:00:01.500")) << reason();
  const wxImage shown = picture();
  wxImage grey(720, 480);
  std::fill_n(grey.GetData(), 720 * 480 * 3, static_cast<unsigned char>(shown.GetRed(0, 0)));
  EXPECT_GT(difference(shown, grey).y, 320);
  leave();
}

TEST_F(SubtitlesPreview, WindowCanBeLeftWhileTheCueIsBeingDrawn) {
  std::string many;
  for (int i = 1; i <= 2000; ++i)
    many += std::to_string(i) + "\n00:" + std::to_string(10 + i / 60) + ":" +
            std::to_string(10 + i % 50) + ",000 --> 00:59:00,500\ncue\n\n";
  load(previewed(many));
  open();
  leave();
  open();
  press("alt+u");
  press("ctrl+a");
  type_text("1999");
  press("Return");
  EXPECT_TRUE(note_becomes("drawing ...")) << note() << reason();
  leave();
  EXPECT_TRUE(ask_ui([this] { return window_->IsEnabled(); }));
}

TEST_F(SubtitlesPreview, LongReasonsAreWrappedAndLongNamesCut) {
  on_ui([this] {
    wxClientDC dc(window_);
    dc.SetFont(window_->GetFont());
    const wxString text = "one two " + wxString('x', 200) + " three\nfour";
    const wxString lines = wrapped(dc, text, 150);
    for (const wxString& line : wxSplit(lines, '\n', '\0'))
      EXPECT_LE(dc.GetTextExtent(line).x, 150) << line;
    wxString joined = lines;
    joined.Replace("\n", "");
    wxString all = text;
    all.Replace("\n", "");
    joined.Replace(" ", "");
    all.Replace(" ", "");
    EXPECT_EQ(joined, all);  // nothing is lost
    EXPECT_EQ(utf8_of(wrapped(dc, "short", 150)), "short");
    EXPECT_EQ(utf8_of(wrapped(dc, "", 150)), "");
    EXPECT_EQ(wrapped(dc, "wide", 1).Freq('\n'), 3u);  // ends even where nothing fits
  });
}

TEST_F(SubtitlesPreview, WindowFitsASmallScreen) {
  load(previewed(two_cues));
  open();
  on_ui([] {
    const wxSize least = control(dialog)->GetMinSize();
    EXPECT_LE(least.x, 1000) << least.x;
    EXPECT_LE(least.y, 600) << least.y;
  });
  leave();
}

// Keys and wheel in lists ------------------------------------------------------------------------

TEST_F(SubtitlesDialog, EscapeInAnOpenListClosesTheListAlone) {
  load(with_files({"a.srt"}, fresh));
  open();
  type_into("lmargin", "77");
  for (const char* name : {"halign", "valign", "fontface", "charact"}) {
    const auto shown = [name] {
      return dynamic_cast<search_list*>(control(name, dialog))->IsPopupShown();
    };
    const std::string before = value(name);
    click_control(name, dialog);
    ASSERT_TRUE(wait_until(shown)) << name;
    press("Up");
    press("Escape");
    EXPECT_TRUE(wait_until([&] { return !shown(); })) << name;
    ASSERT_TRUE(window_comes(dialog)) << name;
    EXPECT_EQ(value(name), before) << name;
  }
  click_control("halign", dialog);  // and with the keys
  press("Escape");
  press("alt+Down");
  press("Escape");
  ASSERT_TRUE(window_comes(dialog));
  EXPECT_EQ(value("lmargin"), "77");
  press("Escape");
  EXPECT_TRUE(window_goes(dialog));
}

TEST_F(SubtitlesDialog, EscapeInTheOpenListOfRatesClosesTheListAlone) {
  load(with_files({"a.srt"}, fresh));
  open();
  const wxRect place = ask_ui([] { return control("mfps", dialog)->GetScreenRect(); });
  click_at({place.GetRight() - 8, place.y + place.height / 2});
  press("Down");
  press("Escape");
  ASSERT_TRUE(window_comes(dialog));
  EXPECT_EQ(value("mfps"), "29.97");
  press("Escape");
  EXPECT_TRUE(window_goes(dialog));
}

TEST_F(SubtitlesDialog, WheelOverControlsThatWereNotClickedChangesNothing) {
  load(with_files({"a.srt"}, fresh));
  open();
  const std::string before = fields();
  const auto number = [] {
    return ask_ui(
        [] { return dynamic_cast<wxSpinCtrl*>(control("cuenumber", dialog))->GetValue(); });
  };
  for (const char* name : {"halign", "valign", "fontface", "mfps", "charact", "cuenumber"})
    for (const wheel way : {wheel::down, wheel::up, wheel::up}) {
      turn_wheel_over(name, way, dialog);
      EXPECT_EQ(fields(), before) << name;
      EXPECT_EQ(number(), 1) << name;
    }
  click_control("cuenumber", dialog);  // what was clicked follows the wheel
  turn_wheel_over("cuenumber", wheel::up, dialog);
  EXPECT_EQ(number(), 2);
  leave();
}

// The window among the others --------------------------------------------------------------------

TEST_F(SubtitlesDialog, MainWindowRestsWhileTheDialogIsOpen) {
  load(titles_only(1));
  open();
  EXPECT_FALSE(ask_ui([this] { return window_->IsEnabled(); }));
  close("main");
  EXPECT_TRUE(window_comes("main"));
  EXPECT_TRUE(window_comes(dialog));
  leave();
  EXPECT_TRUE(ask_ui([this] { return window_->IsEnabled(); }));
}

TEST_F(SubtitlesDialog, EndOfTheSessionClosesTheDialogToo) {
  load(titles_only(1));
  open();
  on_ui([this] { window_->CallAfter([this] { window_->Close(true); }); });
  EXPECT_TRUE(window_goes("main"));
  EXPECT_TRUE(window_goes(dialog));
}

TEST_F(SubtitlesDialog, EndOfTheSessionWaitsForTheMessageOfTheDialog) {
  load(titles_only(1));
  open();
  set_value("lmargin", "6,0");
  const char* refusal = "The left margin \"6,0\" cannot be used: it contains \",\".";
  ASSERT_TRUE(wait_until([&] { return look_at_dialog() && look_at_dialog()->text == refusal; }));
  close(dialog);
  EXPECT_TRUE(window_comes(dialog));
  end_session();
  answer_message(refusal, "OK");
  EXPECT_TRUE(window_goes("main"));
  EXPECT_TRUE(window_goes(dialog));
}

TEST_F(SubtitlesDialog, AllOfItGoesWithTheKeysAlone) {
  load(titles_only(1));
  click_row(0);
  press("ctrl+b");
  ASSERT_TRUE(window_comes(dialog));
  press("alt+a");
  answer_file(chooser, file("film.srt"));
  press("alt+h");
  type_text("left");
  press("alt+l");
  press("ctrl+a");
  type_text("70");
  press("alt+r");
  type_text("cp1252");
  press("alt+e");
  EXPECT_TRUE(window_goes(dialog));
  EXPECT_EQ(files(), folder_.stored("film.srt"));
  EXPECT_EQ(options(), "left,bottom,70,60,30,30,28.0,arial.ttf,720,478,29.97,CP1252|");
}

}  // namespace
}  // namespace corvane::testing_support
