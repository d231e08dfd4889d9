// The dialog "chapters" with a real pointer and real keys.
#include "ui/gtk_sight.h"
#include "ui/main_window.h"
#include "ui/widgets/wx_text.h"
#include "ui/window_fixture.h"

#include <gmock/gmock.h>
#include <wx/control.h>
#include <wx/textctrl.h>

namespace corvane::testing_support {
namespace {

using testing::ElementsAre;

constexpr const char* dialog = "chapter";
constexpr const char* typo = "There appears to be a typo in the chapters list, please correct.";

class Chapters : public window_test {
 protected:
  const project& shown_project() const { return window_->shown_project(); }

  /// Two titles; the second one, with these chapters, is selected.
  void load_two(const std::string& second = "00:00:00.00,00:05:10.25") {
    project p = project_with_menus(2);
    p.chapters[1] = second;
    load(p);
    click_row(1);
  }
  static void open() {
    click_tool("chapters");
    ASSERT_TRUE(window_comes(dialog));
  }
  static wxTextCtrl& text() { return *dynamic_cast<wxTextCtrl*>(control("RichTextBox1", dialog)); }
  static std::string typed() {
    return ask_ui([] { return utf8_of(text().GetValue()); });
  }
  /// As if pasted.
  static void set_text(const std::string& value) {
    on_ui([&] { text().SetValue(wx_text(value)); });
  }
  /// Without the mark of its key.
  static std::string caption_of(const char* name) {
    return utf8_of(wxControl::GetLabelText(control(name, dialog)->GetLabel()));
  }
  static bool gone() { return window_goes(dialog); }
  bool main_is_enabled() {
    return ask_ui([this] { return window_->IsEnabled(); });
  }
};

TEST_F(Chapters, WithoutASelectedTitleNothingOpens) {
  load(project_with_menus(1));
  click_tool("chapters");
  const seen_dialog seen = answer_message("Please select a title to add chapters to.", "OK");
  EXPECT_EQ(seen.picture, "warning");
  EXPECT_EQ(seen.title, "Corvane");
  EXPECT_THAT(seen.buttons, ElementsAre("OK"));
  EXPECT_FALSE(ask_ui([] { return wxWindow::FindWindowByName(dialog) != nullptr; }));
  EXPECT_TRUE(main_is_enabled());
}

TEST_F(Chapters, DialogShowsTheTitleAndItsTimesOneALine) {
  load_two();
  open();
  screenshot("chapters");
  EXPECT_EQ(ask_ui([] { return utf8_of(control(dialog)->GetLabel()); }), "chapters");
  const auto caption = [](const char* name) { return ask_ui([=] { return caption_of(name); }); };
  EXPECT_EQ(caption("Frame1"), "add chapters for:");
  EXPECT_EQ(caption("Label2"), "2");
  EXPECT_EQ(caption("Label3"), "title2:b.m2v/b.ac3");
  EXPECT_EQ(caption("Label4"), "the format is HH:MM:SS");
  EXPECT_EQ(typed(), "00:00:00.00\n00:05:10.25\n");
  on_ui([] {
    for (const char* name :
         {"Frame1", "Label2", "Label3", "RichTextBox1", "Label4", "vedit", "Command2"})
      EXPECT_EQ(accessible_name(*control(name, dialog)), name);
    EXPECT_EQ(caption_of("vedit"), "visual editor");
    EXPECT_TRUE(text().IsMultiLine());
    EXPECT_TRUE(text().GetFont().IsFixedWidth());
    EXPECT_TRUE(text().HasFocus());
  });
  EXPECT_FALSE(main_is_enabled());
  press("Escape");
  EXPECT_TRUE(gone());
  EXPECT_TRUE(main_is_enabled());
}

TEST_F(Chapters, AllOfItGoesWithTheKeysAlone) {
  load_two("");
  press("ctrl+h");
  ASSERT_TRUE(window_comes(dialog));
  type_text("00:00:00.00");
  press("Return");
  type_text("00:07:00.00");
  press("ctrl+Return");
  EXPECT_TRUE(gone());
  EXPECT_EQ(shown_project().chapters[1], "00:00:00.00,00:07:00.00");
  press("ctrl+h");
  ASSERT_TRUE(window_comes(dialog));
  press("ctrl+End");
  type_text("00:08:00.00");
  press("Tab");  // leaves the text
  press("alt+a");
  EXPECT_TRUE(gone());
  EXPECT_EQ(shown_project().chapters[1], "00:00:00.00,00:07:00.00,00:08:00.00");
}

TEST_F(Chapters, AcceptingStoresTheTimesOfThisTitleAndEnablesTheMainWindow) {
  load_two();
  open();
  set_text("00:12:30.50\n00:00:00.00\n00:12:30.50\n");
  click_control("Command2", dialog);
  EXPECT_TRUE(gone());
  EXPECT_THAT(shown_project().chapters,
              ElementsAre("00:00:00.00", "00:12:30.50,00:00:00.00,00:12:30.50"));
  EXPECT_EQ(shown_project().saved, 0);
  EXPECT_TRUE(main_is_enabled());
  EXPECT_EQ(selection(), 1);
}

struct accepted_text {
  const char* name;
  const char* typed;
  const char* stored;
};

class AcceptedChapters : public Chapters, public testing::WithParamInterface<accepted_text> {};

TEST_P(AcceptedChapters, AreStored) {
  load_two();
  open();
  set_text(GetParam().typed);
  click_control("Command2", dialog);
  EXPECT_TRUE(gone());
  EXPECT_EQ(shown_project().chapters[1], GetParam().stored);
}

INSTANTIATE_TEST_SUITE_P(
    Chapters, AcceptedChapters,
    testing::Values(accepted_text{"BlanksAroundATimeAreCut", " 00:05:00.00\n00:05:00.00   ",
                                  "00:05:00.00,00:05:00.00"},
                    accepted_text{"OnlyTheFirst12CharactersCount", "00:05:00.0099", "00:05:00.009"},
                    accepted_text{"OnlyTheSeparatorsAreChecked", "ab:cd:ef.gh", "ab:cd:ef.gh"},
                    accepted_text{"BlankLinesVanish", "00:00:00.00\n\n00:10:00.00",
                                  "00:00:00.00,00:10:00.00"},
                    accepted_text{"LinesOfFewerThan9CharactersAreDropped",
                                  "0:05:00\n00:10:00.00\nxyz", "00:10:00.00"},
                    accepted_text{"AnEmptyTextClearsTheChapters", "", ""}),
    [](const auto& test) { return std::string(test.param.name); });

TEST_F(Chapters, OneHourDigitIsATypoThatCanBeCorrected) {
  load_two();
  open();
  set_text("00:00:00.00\n0:05:00.00\n0:06:00.00\n");
  click_control("Command2", dialog);
  const seen_dialog seen = answer_message(typo, "OK");
  EXPECT_EQ(seen.picture, "warning");
  EXPECT_EQ(seen.title, "Corvane");
  EXPECT_THAT(seen.buttons, ElementsAre("OK"));
  EXPECT_TRUE(window_comes(dialog));
  EXPECT_EQ(typed(), "00:00:00.00\n0:05:00.00\n0:06:00.00\n");
  EXPECT_EQ(shown_project().chapters[1], "00:00:00.00,00:05:10.25");
  EXPECT_EQ(shown_project().saved, 1);
  EXPECT_FALSE(main_is_enabled());
  set_text("00:00:00.00\n00:05:00.00\n");
  click_control("Command2", dialog);
  EXPECT_TRUE(gone());
  EXPECT_EQ(shown_project().chapters[1], "00:00:00.00,00:05:00.00");
}

TEST_F(Chapters, ClosingStoresNothingAndEnablesTheMainWindow) {
  load_two();
  for (const std::string way : {"Escape", "cancel", "close"}) {
    open();
    EXPECT_EQ(typed(), "00:00:00.00\n00:05:10.25\n") << way;
    set_text("00:09:00.00");
    if (way == "close")
      close(dialog);
    else if (way == "cancel")
      click_button("cancel");
    else
      press("Escape");
    EXPECT_TRUE(gone()) << way;
    EXPECT_EQ(shown_project().chapters[1], "00:00:00.00,00:05:10.25") << way;
    EXPECT_EQ(shown_project().saved, 1) << way;
    EXPECT_TRUE(main_is_enabled()) << way;
  }
}

TEST_F(Chapters, MainWindowRestsWhileTheDialogIsOpen) {
  load_two();
  open();
  on_ui([this] {
    window_->author();
    window_->drop({folder_.path("x.m2v")});
  });
  press("F5");
  press("ctrl+h");
  close("main");
  EXPECT_TRUE(window_comes("main"));
  EXPECT_TRUE(window_comes(dialog));
  close(dialog);
  EXPECT_TRUE(gone());
  EXPECT_TRUE(no_dialog());
}

TEST_F(Chapters, EndOfTheSessionClosesTheDialogToo) {
  load_two();
  open();
  on_ui([this] { window_->CallAfter([this] { window_->Close(true); }); });
  EXPECT_TRUE(window_goes("main"));
  EXPECT_TRUE(gone());
}

TEST_F(Chapters, EndOfTheSessionWaitsForTheMessageOfTheDialog) {
  load_two();
  open();
  set_text("0:05:00.00");
  click_control("Command2", dialog);
  ASSERT_TRUE(wait_until([] { return look_at_dialog() && look_at_dialog()->text == typo; }));
  end_session();
  answer_message(typo, "OK");
  EXPECT_TRUE(window_goes("main"));
  EXPECT_TRUE(gone());
}

TEST_F(Chapters, DialogDoesNotCloseUnderItsMessage) {
  load_two();
  open();
  set_text("0:05:00.00");
  click_control("Command2", dialog);
  ASSERT_TRUE(wait_until([] { return look_at_dialog() && look_at_dialog()->text == typo; }));
  close(dialog);
  answer_message(typo, "OK");
  EXPECT_TRUE(window_comes(dialog));
  EXPECT_EQ(typed(), "0:05:00.00");
  close(dialog);
  EXPECT_TRUE(gone());
}

TEST_F(Chapters, HandEditedXmlIsKeptWhenTheUserSaysSo) {
  project p = project_with_menus(1);
  p.customxml = "<dvdauthor>\r\n</dvdauthor>\r\n";
  load(p);
  click_row(0);
  click_tool("chapters");
  answer_message("You have edited the XML manually, do you want to discard these changes?",
                 "Cancel");
  EXPECT_FALSE(ask_ui([] { return wxWindow::FindWindowByName(dialog) != nullptr; }));
  EXPECT_FALSE(shown_project().customxml.empty());
}

// What becomes of the lines ----------------------------------------------------------------------

class ChapterFates : public Chapters {
 protected:
  static std::string notes() {
    return ask_ui([] {
      wxString all = control("chapternotes", dialog)->GetLabel();
      all.Replace("\n", " ");
      return utf8_of(all);
    });
  }
  static bool notes_become(const std::string& text) {
    return wait_until([&] {
      wxString all = control("chapternotes", dialog)->GetLabel();
      all.Replace("\n", " ");
      return utf8_of(all) == text;
    });
  }
  /// The colour in which a line (0-based) stands; no colour: the field's own.
  static wxColour colour_of_line(int line) {
    return ask_ui([line] {
      wxTextAttr attr;
      text().GetStyle(text().XYToPosition(1, line), attr);
      return attr.GetTextColour() == text().GetForegroundColour() ? wxColour()
                                                                  : attr.GetTextColour();
    });
  }
  static bool completes() {
    return ask_ui([] { return control("completetimes", dialog)->IsEnabled(); });
  }
};

TEST_F(ChapterFates, LinesThatWillBeLeftOutAreToldWhileTheyAreTyped) {
  load_two();
  open();
  EXPECT_EQ(notes(), "2 chapters.");
  EXPECT_FALSE(completes());
  press("ctrl+End");
  type_text("00:12:30");
  EXPECT_TRUE(notes_become(
      "2 chapters. 1 line is too short for a time (00:12:30.50) and will be left out."))
      << notes();
  EXPECT_TRUE(completes());
  type_text(".50");
  EXPECT_TRUE(notes_become("3 chapters.")) << notes();
  EXPECT_FALSE(completes());
  press("Return");
  type_text("0:05:00.00");
  EXPECT_TRUE(
      notes_become("3 chapters. 1 line is no time (00:12:30.50) and must be corrected first."))
      << notes();
  press("Escape");
  EXPECT_TRUE(gone());
}

TEST_F(ChapterFates, SuchLinesAreMarked) {
  load_two();
  open();
  set_text("00:00:00.00\n00:05:00\n0:06:00.00\n00:07:00.00 song\n00:08:00.00");
  screenshot("chapters-marked");
  const wxColour left_out = colour_of_line(1), wrong = colour_of_line(2);
  EXPECT_TRUE(left_out.IsOk());
  EXPECT_TRUE(wrong.IsOk());
  EXPECT_NE(left_out, wrong);
  EXPECT_TRUE(colour_of_line(3).IsOk());
  for (const int line : {0, 4})
    EXPECT_FALSE(colour_of_line(line).IsOk()) << line;
  click_control("RichTextBox1", dialog);
  press("ctrl+Home");
  press("Down");
  press("End");
  type_text(".00");
  EXPECT_TRUE(wait_until([] { return text().GetLineText(1) == "00:05:00.00"; }));
  screenshot("chapters-mended");
  EXPECT_FALSE(colour_of_line(1).IsOk());  // mended
  EXPECT_EQ(colour_of_line(2), wrong);
  press("Escape");
  EXPECT_TRUE(gone());
}

TEST_F(ChapterFates, TimesTypedAsTheLabelSaysAreCompletedWithOneKeyAndStored) {
  load_two("");
  open();
  type_text("00:00:00");
  press("Return");
  type_text("00:05:00");
  press("alt+t");
  EXPECT_TRUE(wait_until([] { return text().GetValue() == "00:00:00.00\n00:05:00.00"; }))
      << typed();
  EXPECT_TRUE(notes_become("2 chapters."));
  EXPECT_FALSE(completes());
  press("ctrl+Return");
  EXPECT_TRUE(gone());
  EXPECT_EQ(shown_project().chapters[1], "00:00:00.00,00:05:00.00");
}

TEST_F(ChapterFates, WithoutCompletingTheyAreStillLeftOut) {
  load_two();
  open();
  set_text("00:00:00.00\n00:05:00");
  click_control("Command2", dialog);
  EXPECT_TRUE(gone());
  EXPECT_EQ(shown_project().chapters[1], "00:00:00.00");
}

TEST_F(ChapterFates, ManyNotesHaveRoomInTheSmallestWindow) {
  load_two();
  open();
  set_text("00:05:00\n0:06:00.00\n00:07:00.00 song");
  EXPECT_TRUE(wait_until([] {
    wxWindow* notes = control("chapternotes", dialog);
    const wxSize needs = notes->GetTextExtent("x");
    const int lines = 1 + notes->GetLabel().Freq('\n');
    return lines >= 4 && notes->GetSize().y >= needs.y * lines;
  }));
  screenshot("chapters-notes");
  press("Escape");
  EXPECT_TRUE(gone());
}

}  // namespace
}  // namespace corvane::testing_support
