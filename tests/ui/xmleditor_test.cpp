// The navigation XML editor: from the switch in the menu to the disc that shows the edit.
#include "ui/command_bars.h"
#include "ui/findings_fixture.h"
#include "ui/gtk_sight.h"
#include "ui/main_window.h"
#include "ui/widgets/wx_text.h"
#include "ui/window_fixture.h"

#include <gmock/gmock.h>
#include <wx/frame.h>
#include <wx/menu.h>
#include <wx/statusbr.h>
#include <wx/stc/stc.h>

#include <algorithm>

namespace corvane::testing_support {
namespace {

using testing::HasSubstr;

constexpr const char* switch_text =
    "This will allow you to customize the config.xml file, before the authoring process begins.  "
    "(This is useful if you wish to label the audio/subtitle streams, move titles to different "
    "titlesets, etc.)  For more information on the tags, read the DVDAuthor documentation, found "
    "here:  https://dvdauthor.sourceforge.net/doc/dvdauthor.html";
constexpr const char* success_text =
    "Process complete.  Please review the log for more information (recommended).";

class XmlEditors : public window_test {
 protected:
  void switch_on() {
    click_menu("file", "edit xml before authoring");
    EXPECT_EQ(answer_message(switch_text, "OK").picture, "info");
  }
  /// A project of one title whose sound is tagged, switched to edit, and authored up to the editor.
  void open_editor() {
    project p;
    p.List11 = {stored_from_native(real_video()) + "/" + stored_from_native(real_audio())};
    p.chapters = {"00:00:00.00"};
    p.delay = {"0"};
    p.subtitledata = {"<none>"};
    p.subtitleoptions = {""};
    p.languagetags = {"Audio tag:\tENGLISH EN"};
    rebuild_List1(p);
    load(p);
    switch_on();
    author();
  }
  void author() {
    press("F5");
    answer_file("enter a folder name to create the dvd", folder_.path("disc"));
    EXPECT_TRUE(window_comes("xmleditor"));
  }
  void replace(const std::string& words, const std::string& by) {
    press("ctrl+f");
    type_text(words);
    press("Return");
    press("Escape");
    type_text(by);
  }
  static std::string shown_xml() {
    return ask_ui([] {
      return utf8_of(dynamic_cast<wxStyledTextCtrl*>(control("Text1", "xmleditor"))->GetText());
    });
  }
  static std::string status(int pane) {
    return ask_ui([pane] {
      return utf8_of(
          dynamic_cast<wxFrame*>(control("xmleditor"))->GetStatusBar()->GetStatusText(pane));
    });
  }
  void close_editor(const char* save, const char* proceed) {
    close("xmleditor");
    const seen_dialog asked = answer_message("Save changes?", save);
    EXPECT_EQ(asked.picture, "info");
    EXPECT_THAT(asked.buttons, testing::UnorderedElementsAre("Yes", "No"));
    answer_message("Proceed with Authoring?", proceed);
    EXPECT_TRUE(window_goes("xmleditor"));
  }
  /// The language of the disc's first audio stream.
  std::string language_on_disc() {
    const std::string ifo = folder_.read("disc/VIDEO_TS/VTS_01_0.IFO");
    return ifo.size() < 0x208 ? "(no disc)" : ifo.substr(0x206, 2);
  }
  std::string customxml() {
    return ask_ui([this] { return window_->shown_project().customxml; });
  }
  std::string config() { return folder_.read("program/config.xml"); }
};

TEST_F(XmlEditors, SwitchIsCheckedAndUnchecked) {
  const auto checked = [this] {
    return ask_ui([this] { return window_->bars().item("editxml")->IsChecked(); });
  };
  EXPECT_FALSE(checked());
  switch_on();
  EXPECT_TRUE(checked());
  click_menu("file", "edit xml before authoring");
  EXPECT_TRUE(no_dialog());
  EXPECT_FALSE(checked());
}

TEST_F(XmlEditors, EditedLanguageIsOnTheDisc) {
  open_editor();
  EXPECT_EQ(shown_xml(), config());
  EXPECT_FALSE(ask_ui([this] { return window_->IsEnabled(); }));
  EXPECT_EQ(status(1), "well formed");
  replace("\"EN\"", "\"fr\"");
  EXPECT_THAT(shown_xml(), HasSubstr("<audio lang=\"fr\" />\r\n"));
  screenshot("xmleditor");
  const std::string edited = shown_xml();
  close_editor("Yes", "Yes");
  answer_message(success_text, "Cancel");
  EXPECT_EQ(language_on_disc(), "fr");
  EXPECT_EQ(config(), edited + "\r\n");
  EXPECT_EQ(customxml(), edited);
}

TEST_F(XmlEditors, EditThatLeadsNowhereIsAskedAboutBeforeTheRun) {
  open_editor();
  replace("exit;", "jump title 7;");
  const std::string edited = shown_xml();
  EXPECT_THAT(edited, HasSubstr("jump title 7"));
  close_editor("Yes", "Yes");
  ASSERT_TRUE(window_comes(findings_question_name));
  screenshot("xmleditor-question");
  press("alt+g");
  EXPECT_TRUE(window_goes(findings_question_name));
  ASSERT_TRUE(window_comes("findings"));
  EXPECT_TRUE(wait_until([this] { return window_->may_command(); }));
  EXPECT_FALSE(file_exists(folder_.path("disc/VIDEO_TS/VTS_01_0.IFO")));
  EXPECT_EQ(customxml(), edited);
  close("findings");
  EXPECT_TRUE(window_goes("findings"));
}

TEST_F(XmlEditors, UnsavedEditIsNotOnTheDisc) {
  open_editor();
  const std::string generated = config();
  replace("\"EN\"", "\"fr\"");
  close_editor("No", "Yes");
  answer_message(success_text, "Cancel");
  EXPECT_EQ(language_on_disc(), "en");
  EXPECT_EQ(config(), generated);
  EXPECT_EQ(customxml(), "");
}

TEST_F(XmlEditors, SavedEditStaysWhenAuthoringIsDeclinedAndComesBack) {
  open_editor();
  replace("\"EN\"", "\"fr\"");
  const std::string edited = shown_xml();
  close_editor("Yes", "No");
  EXPECT_TRUE(ask_ui([this] { return window_->IsEnabled(); }));
  EXPECT_FALSE(file_exists(folder_.path("disc/VIDEO_TS/VTS_01_0.IFO")));
  EXPECT_EQ(config(), edited + "\r\n");
  EXPECT_EQ(customxml(), edited);

  press("F5");
  EXPECT_TRUE(window_comes("xmleditor"));
  EXPECT_EQ(shown_xml(), edited);
  close_editor("No", "Yes");
  answer_message(success_text, "Cancel");
  EXPECT_EQ(language_on_disc(), "fr");
}

TEST_F(XmlEditors, SavedEditIsKeptInTheProjectFileAndAuthoredFromThere) {
  open_editor();
  replace("\"EN\"", "\"fr\"");
  const std::string edited = shown_xml();
  close_editor("Yes", "No");
  press("ctrl+shift+s");
  answer_file("save corvane project", folder_.path("edited.cvp"));
  load(project());
  EXPECT_EQ(customxml(), "");

  press("ctrl+o");
  answer_file("load corvane project", folder_.path("edited.cvp"));
  EXPECT_TRUE(wait_until([&] { return window_->shown_project().customxml == edited; }));
  press("F5");
  EXPECT_TRUE(window_comes("xmleditor"));
  EXPECT_EQ(shown_xml(), edited);
  close_editor("No", "Yes");
  answer_message(success_text, "Cancel");
  EXPECT_EQ(language_on_disc(), "fr");
}

TEST_F(XmlEditors, ChangeOfTheProjectAsksBeforeItDiscardsTheEdit) {
  open_editor();
  replace("\"EN\"", "\"fr\"");
  const std::string edited = shown_xml();
  close_editor("Yes", "No");
  const char* const guard =
      "You have edited the XML manually, do you want to discard these changes?";
  click_tool("add title");
  const seen_dialog asked = answer_message(guard, "Cancel");
  EXPECT_EQ(asked.picture, "warning");
  EXPECT_THAT(asked.buttons, testing::UnorderedElementsAre("OK", "Cancel"));
  EXPECT_TRUE(no_dialog());
  EXPECT_EQ(customxml(), edited);

  click_tool("add title");
  answer_message(guard, "OK");
  cancel_dialog("select video stream");
  EXPECT_EQ(customxml(), "");
  author();
  EXPECT_THAT(shown_xml(), HasSubstr("<audio lang=\"EN\" />\r\n"));
  close_editor("No", "No");
}

TEST_F(XmlEditors, FaultIsToldWithItsPlaceAndTheCaretGoesThere) {
  open_editor();
  press("ctrl+End");
  type_text("<");
  EXPECT_TRUE(wait_until([] {
    return dynamic_cast<wxFrame*>(control("xmleditor"))->GetStatusBar()->GetStatusText(1) !=
           "well formed";
  }));
  press("ctrl+Home");
  close("xmleditor");
  const std::string text = config();
  const std::string lines = std::to_string(std::count(text.begin(), text.end(), '\n') + 1);
  answer_message("The XML is not well formed.  Line " + lines +
                     ", column 1: a \"<\" begins no tag; a plain one is written \"&lt;\"."
                     "\n\nClose the editor nevertheless?",
                 "Cancel");
  EXPECT_EQ(status(0), "line " + lines + ", column 1");
  press("ctrl+z");
  EXPECT_EQ(shown_xml(), config());
  close_editor("No", "No");
}

// Neither key loses what was typed.
TEST_F(XmlEditors, EscapeAtTheSaveQuestionLeadsBackAndEnterSaves) {
  open_editor();
  replace("\"EN\"", "\"fr\"");
  const std::string edited = shown_xml();
  const auto asks = [](const std::string& text) {
    return wait_until([&text] {
      const auto dialog = look_at_dialog();
      return dialog && dialog->text == text;
    });
  };
  close("xmleditor");
  ASSERT_TRUE(asks("Save changes?"));
  press("Escape");
  EXPECT_TRUE(no_dialog());
  EXPECT_EQ(shown_xml(), edited);
  EXPECT_EQ(customxml(), "");

  close("xmleditor");
  ASSERT_TRUE(asks("Save changes?"));
  press("Return");
  ASSERT_TRUE(asks("Proceed with Authoring?"));
  press("Escape");
  EXPECT_TRUE(window_goes("xmleditor"));
  EXPECT_EQ(customxml(), edited);
}

TEST_F(XmlEditors, FindsOnwardsBackwardsAndAroundTheEnd) {
  open_editor();
  const auto selected_from = [] {
    return ask_ui([] {
      return dynamic_cast<wxStyledTextCtrl*>(control("Text1", "xmleditor"))->GetSelectionStart();
    });
  };
  const std::string text = config();
  const auto first = static_cast<int>(text.find("vmgm"));
  const auto second = static_cast<int>(text.find("vmgm", text.find("vmgm") + 1));
  press("ctrl+f");
  type_text("VMGM");
  press("Return");
  EXPECT_EQ(selected_from(), first);
  press("F3");
  EXPECT_EQ(selected_from(), second);
  press("F3");
  EXPECT_EQ(selected_from(), first);
  press("shift+F3");
  EXPECT_EQ(selected_from(), second);
  press("Escape");
  close_editor("No", "No");
}

TEST_F(XmlEditors, EndOfTheSessionWhileItAsksEndsTheProgram) {
  open_editor();
  close("xmleditor");
  ASSERT_TRUE(wait_until([] { return look_at_dialog().has_value(); }));
  end_session();
  answer_message("Save changes?", "No");
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("main") == nullptr; }));
}

TEST_F(XmlEditors, EndOfTheSessionWithTheEditorOpenAsksNothing) {
  open_editor();
  press("ctrl+Home");
  type_text("<");
  // As the toolkit does it: every window, the main one first.
  on_ui([this] {
    window_->CallAfter([] {
      const std::vector<wxWindow*> all(wxTopLevelWindows.begin(), wxTopLevelWindows.end());
      for (wxWindow* const w : all)
        w->Close(true);
    });
  });
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("main") == nullptr; }));
  EXPECT_FALSE(file_exists(folder_.path("disc/VIDEO_TS/VTS_01_0.IFO")));
}

}  // namespace
}  // namespace corvane::testing_support
