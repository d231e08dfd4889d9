// The dialog of the language tags with a real pointer and real keys.
#include "tools/language_tags.h"
#include "ui/gtk_sight.h"
#include "ui/main_window.h"
#include "ui/widgets/search_list.h"
#include "ui/widgets/wx_text.h"
#include "ui/window_fixture.h"

#include <gmock/gmock.h>
#include <wx/control.h>
#include <wx/listbox.h>

namespace corvane::testing_support {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* dialog = "language";

class LanguageDialog : public window_test {
 protected:
  const project& shown() const { return window_->shown_project(); }

  /// A project of one title with these tags.
  project tagged(std::vector<std::string> tags) {
    project p = project_with_menus(1);
    p.languagetags = std::move(tags);
    return p;
  }

  static void open() {
    click_menu("extras", "edit language tags");
    ASSERT_TRUE(window_comes(dialog));
  }
  static void accept() {
    click_button("accept");
    EXPECT_TRUE(window_goes(dialog));
  }

  static search_list& combo() { return *dynamic_cast<search_list*>(control("Combo1", dialog)); }
  static std::string language_shown() {
    return ask_ui([] { return utf8_of(combo().GetValue()); });
  }
  static bool language_becomes(const std::string& text) {
    return wait_until([&] { return utf8_of(combo().GetValue()) == text; });
  }
  static int row() {
    return ask_ui(
        [] { return dynamic_cast<wxListBox*>(control("List1", dialog))->GetSelection(); });
  }
  static std::string stream() {
    return ask_ui([] { return utf8_of(control("stream", dialog)->GetLabel()); });
  }
  static bool has_focus(const char* name) {
    return wait_until([name] { return control(name, dialog)->HasFocus(); });
  }
};

TEST_F(LanguageDialog, AudioTagAddedToAnEmptyListIsOneEnglishRowSelected) {
  open();
  EXPECT_THAT(list_rows(dialog), IsEmpty());
  EXPECT_EQ(row(), -1);
  click_control("Command1", dialog);
  EXPECT_TRUE(language_becomes("ENGLISH EN"));
  EXPECT_THAT(list_rows(dialog), ElementsAre("Audio tag:\tENGLISH EN"));
  EXPECT_EQ(row(), 0);
  accept();
  EXPECT_THAT(shown().languagetags, ElementsAre("Audio tag:\tENGLISH EN"));
}

TEST_F(LanguageDialog, ControlsHaveTheirNamesAndCaptions) {
  load(tagged({"Audio tag:\tENGLISH EN", "Subtitle tag:\tGERMAN DE ", "Audio tag:\tFRENCH FR"}));
  open();
  click_row(1, dialog);
  EXPECT_TRUE(language_becomes("GERMAN DE "));
  screenshot("language");
  on_ui([] {
    EXPECT_EQ(utf8_of(control(dialog)->GetLabel()), "language tags");
    for (const char* name :
         {"Frame1", "List1", "Combo1", "Command1", "Command2", "Command3", "Command4"})
      EXPECT_EQ(accessible_name(*control(name, dialog)), name);
    const std::pair<const char*, const char*> labels[] = {{"Frame1", "edit language tags"},
                                                          {"Command1", "add audio tag"},
                                                          {"Command2", "add sub tag"},
                                                          {"Command4", "accept"}};
    for (const auto& [name, label] : labels)
      EXPECT_EQ(utf8_of(wxControl::RemoveMnemonics(control(name, dialog)->GetLabel())), label);
    EXPECT_EQ(utf8_of(control("Command3", dialog)->GetToolTipText()), "remove the selected tag");
  });
  close(dialog);
  EXPECT_TRUE(window_goes(dialog));
}

TEST_F(LanguageDialog, OffersThe139LanguagesWithTheirBlanks) {
  open();
  on_ui([] {
    ASSERT_EQ(combo().GetCount(), language_entries.size());
    for (unsigned i = 0; i < combo().GetCount(); ++i)
      EXPECT_EQ(utf8_of(combo().GetString(i)), language_entries[i]);
  });
  press("Escape");
  EXPECT_TRUE(window_goes(dialog));
}

TEST_F(LanguageDialog, LanguagePickedWithNoRowSelectedChangesNothing) {
  load(tagged({"Audio tag:\tFRENCH FR"}));
  open();
  EXPECT_EQ(row(), -1);
  on_ui([] { combo().SetFocus(); });
  type_text("ger");
  EXPECT_TRUE(language_becomes("GERMAN DE "));
  EXPECT_THAT(list_rows(dialog), ElementsAre("Audio tag:\tFRENCH FR"));
  accept();
  EXPECT_THAT(shown().languagetags, ElementsAre("Audio tag:\tFRENCH FR"));
}

TEST_F(LanguageDialog, SelectedRowShowsItsLanguageAndItsStream) {
  load(tagged({"Audio tag:\tENGLISH EN", "Subtitle tag:\tGERMAN DE ", "Audio tag:\tSPANISH ES"}));
  open();
  EXPECT_EQ(stream(), "");
  click_row(1, dialog);
  EXPECT_TRUE(language_becomes("GERMAN DE "));
  EXPECT_EQ(stream(), "subtitle stream 1 of each title");
  click_row(2, dialog);
  EXPECT_TRUE(language_becomes("SPANISH ES"));
  EXPECT_EQ(stream(), "audio stream 2 of each title");
  press("Up");
  EXPECT_TRUE(language_becomes("GERMAN DE "));
  close(dialog);
  EXPECT_TRUE(window_goes(dialog));
}

TEST_F(LanguageDialog, RemovingTheOnlyRowLeavesAnEmptyListWithoutSelection) {
  open();
  click_control("Command2", dialog);
  EXPECT_TRUE(wait_until([] { return control("Command3", dialog)->IsEnabled(); }));
  EXPECT_THAT(list_rows(dialog), ElementsAre("Subtitle tag:\tENGLISH EN"));
  click_control("Command3", dialog);
  EXPECT_THAT(list_rows(dialog), IsEmpty());
  EXPECT_EQ(row(), -1);
  EXPECT_FALSE(ask_ui([] { return control("Command3", dialog)->IsEnabled(); }));
  accept();
  EXPECT_THAT(shown().languagetags, IsEmpty());
}

TEST_F(LanguageDialog, RemovingAMiddleRowSelectsTheLastOne) {
  load(tagged({"Audio tag:\tENGLISH EN", "Audio tag:\tFRENCH FR", "Audio tag:\tLATIN LA",
               "Audio tag:\tZULU ZU"}));
  open();
  click_row(1, dialog);
  click_control("Command3", dialog);
  EXPECT_THAT(list_rows(dialog),
              ElementsAre("Audio tag:\tENGLISH EN", "Audio tag:\tLATIN LA", "Audio tag:\tZULU ZU"));
  EXPECT_EQ(row(), 2);
  EXPECT_EQ(language_shown(), "ZULU ZU");
  click_row(0, dialog);
  press("Delete");
  EXPECT_THAT(list_rows(dialog), ElementsAre("Audio tag:\tLATIN LA", "Audio tag:\tZULU ZU"));
  EXPECT_EQ(row(), 1);
  accept();
  EXPECT_THAT(shown().languagetags, ElementsAre("Audio tag:\tLATIN LA", "Audio tag:\tZULU ZU"));
}

TEST_F(LanguageDialog, AcceptingAnEmptiedListClearsTheTagsOfTheProject) {
  load(tagged({"Audio tag:\tENGLISH EN", "Subtitle tag:\tGERMAN DE "}));
  open();
  click_row(0, dialog);
  press("Delete");
  press("Delete");
  EXPECT_THAT(list_rows(dialog), IsEmpty());
  press("Delete");  // nothing left
  accept();
  EXPECT_THAT(shown().languagetags, IsEmpty());
  EXPECT_EQ(shown().saved, 0);
}

TEST_F(LanguageDialog, PickedLanguageIsStoredWithItsTrailingBlank) {
  open();
  click_control("Command1", dialog);
  click_control("Combo1", dialog);
  type_text("afri");
  screenshot("language-list");
  press("Return");
  EXPECT_TRUE(language_becomes("AFRIKAANS AF "));
  EXPECT_THAT(list_rows(dialog), ElementsAre("Audio tag:\tAFRIKAANS AF "));
  accept();
  EXPECT_THAT(shown().languagetags, ElementsAre("Audio tag:\tAFRIKAANS AF "));
}

TEST_F(LanguageDialog, TypingGoesToTheFirstLanguageThatBeginsSo) {
  open();
  click_control("Command1", dialog);
  on_ui([] { combo().SetFocus(); });
  type_text("ger");
  EXPECT_TRUE(language_becomes("GERMAN DE "));
  EXPECT_THAT(list_rows(dialog), ElementsAre("Audio tag:\tGERMAN DE "));
  press("Down");
  EXPECT_TRUE(language_becomes("GREEK EL "));
  EXPECT_THAT(list_rows(dialog), ElementsAre("Audio tag:\tGREEK EL "));
  accept();
}

TEST_F(LanguageDialog, AllOfItGoesWithTheKeysAlone) {
  press("ctrl+g");
  ASSERT_TRUE(window_comes(dialog));
  press("alt+a");
  EXPECT_TRUE(language_becomes("ENGLISH EN"));
  press("alt+l");
  EXPECT_TRUE(has_focus("Combo1"));
  type_text("swe");
  EXPECT_TRUE(language_becomes("SWEDISH SV"));
  press("alt+s");
  EXPECT_TRUE(language_becomes("ENGLISH EN"));
  press("alt+l");
  type_text("fin");
  EXPECT_TRUE(language_becomes("FINNISH FI"));
  press("alt+e");
  EXPECT_TRUE(window_goes(dialog));
  EXPECT_THAT(shown().languagetags,
              ElementsAre("Audio tag:\tSWEDISH SV", "Subtitle tag:\tFINNISH FI"));
}

TEST_F(LanguageDialog, LanguageOfAProjectThatIsNoneOfTheListIsShownAndKept) {
  load(tagged({"Audio tag:\tKLINGON XX", "Audio tag:\tENGLISH EN"}));
  open();
  click_row(0, dialog);
  EXPECT_TRUE(language_becomes("KLINGON XX"));
  click_row(1, dialog);
  EXPECT_TRUE(language_becomes("ENGLISH EN"));
  click_row(0, dialog);
  EXPECT_TRUE(language_becomes("KLINGON XX"));
  accept();
  EXPECT_THAT(shown().languagetags,
              ElementsAre("Audio tag:\tKLINGON XX", "Audio tag:\tENGLISH EN"));
}

TEST_F(LanguageDialog, ClosingWithoutAcceptChangesNothing) {
  load(tagged({"Audio tag:\tFRENCH FR"}));
  for (const char* way : {"Escape", "cancel", "close"}) {
    open();
    click_control("Command2", dialog);
    EXPECT_EQ(list_rows(dialog).size(), 2u) << way;
    if (way == std::string("close"))
      close(dialog);
    else if (way == std::string("cancel"))
      click_button("cancel");
    else
      press("Escape");
    EXPECT_TRUE(window_goes(dialog)) << way;
    EXPECT_THAT(shown().languagetags, ElementsAre("Audio tag:\tFRENCH FR")) << way;
    EXPECT_EQ(shown().saved, 1) << way;
  }
}

TEST_F(LanguageDialog, MainWindowRestsWhileTheDialogIsOpen) {
  click_tool_arrow("extras");
  click_menu_item("edit language tags");
  ASSERT_TRUE(window_comes(dialog));
  EXPECT_FALSE(ask_ui([this] { return window_->IsEnabled(); }));
  close("main");
  EXPECT_TRUE(window_comes("main"));
  EXPECT_TRUE(window_comes(dialog));
  close(dialog);
  EXPECT_TRUE(window_goes(dialog));
  EXPECT_TRUE(ask_ui([this] { return window_->IsEnabled(); }));
}

TEST_F(LanguageDialog, EndOfTheSessionClosesTheDialogToo) {
  open();
  on_ui([this] { window_->CallAfter([this] { window_->Close(true); }); });
  EXPECT_TRUE(window_goes("main"));
  EXPECT_TRUE(window_goes(dialog));
}

TEST_F(LanguageDialog, HandEditedXmlIsKeptWhenTheUserSaysSo) {
  project p = tagged({"Audio tag:\tFRENCH FR"});
  p.customxml = "<dvdauthor>\r\n</dvdauthor>\r\n";
  load(p);
  click_menu("extras", "edit language tags");
  answer_message("You have edited the XML manually, do you want to discard these changes?",
                 "Cancel");
  EXPECT_FALSE(ask_ui([] { return wxWindow::FindWindowByName(dialog) != nullptr; }));
  EXPECT_FALSE(shown().customxml.empty());
}

TEST_F(LanguageDialog, EscapeInTheOpenListClosesTheListAloneAndTheNextOneTheDialog) {
  load(tagged({"Audio tag:\tFRENCH FR"}));
  open();
  click_row(0, dialog);
  EXPECT_TRUE(language_becomes("FRENCH FR"));
  click_control("Combo1", dialog);
  ASSERT_TRUE(wait_until([] { return combo().IsPopupShown(); }));
  press("Down");
  press("Escape");
  EXPECT_TRUE(wait_until([] { return !combo().IsPopupShown(); }));
  ASSERT_TRUE(window_comes(dialog));
  EXPECT_EQ(language_shown(), "FRENCH FR");  // what was not picked is not taken
  EXPECT_THAT(list_rows(dialog), ElementsAre("Audio tag:\tFRENCH FR"));
  press("Escape");
  EXPECT_TRUE(window_goes(dialog));
}

TEST_F(LanguageDialog, WheelOverTheLanguageThatWasNotClickedChangesNothing) {
  load(tagged({"Audio tag:\tFRENCH FR"}));
  open();
  click_row(0, dialog);
  EXPECT_TRUE(language_becomes("FRENCH FR"));
  turn_wheel_over("Combo1", wheel::down, dialog);
  on_ui([] { combo().SetFocus(); });  // by the keyboard: still not clicked
  turn_wheel_over("Combo1", wheel::down, dialog);
  EXPECT_EQ(language_shown(), "FRENCH FR");
  press("Escape");
  EXPECT_TRUE(window_goes(dialog));
}

}  // namespace
}  // namespace corvane::testing_support
