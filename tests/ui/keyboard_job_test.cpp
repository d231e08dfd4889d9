// The whole job with keys alone, as a person does it who has no pointer: three titles, chapters,
// subtitles, a menu with five buttons, navigation commands, saving, authoring. No pointer is moved,
// and nothing is done for the windows: they are looked at, and keys are pressed. The disc is read
// back. tests/ui/CMakeLists.txt runs it on a screen of high resolution, too.
#include "disc/finding.h"
#include "examine/disc_traits.h"
#include "examine/verification.h"
#include "ui/gtk_sight.h"
#include "ui/main_window.h"
#include "ui/widgets/wx_text.h"
#include "ui/window_fixture.h"

#include <gmock/gmock.h>
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/combobox.h>
#include <wx/listbox.h>
#include <wx/textentry.h>
#include <wx/utils.h>

#include <string>
#include <vector>

namespace corvane::testing_support {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using part = finding_item::part_kind;
using whole = finding_item::whole_kind;

constexpr const char* run_succeeded =
    "Process complete.  Please review the log for more information (recommended).";
constexpr const char* which_disc =
    "Is this the disc of the project that is open?\n\nYes: it is held against what the project "
    "asks for.\nNo: only what a disc must be by itself is looked at.";
/// Of the project's authoring: some seconds, on a busy machine many.
constexpr double run_seconds = 120;

std::string media(const std::string& name) {
  return std::string(CORVANE_SAMPLE_MEDIA) + "/" + name;
}

std::string text_in(const std::string& name, const std::string& window) {
  return ask_ui([&] {
    wxWindow* const found = control(name, window);
    const auto* entry = dynamic_cast<wxTextEntry*>(found);
    const auto* choice = dynamic_cast<wxChoice*>(found);
    return utf8_of(entry    ? entry->GetValue()
                   : choice ? choice->GetStringSelection()
                            : found->GetLabel());
  });
}

bool becomes(const std::string& name, const std::string& window, const std::string& text) {
  const bool became = wait_until([&] {
    const auto* entry = dynamic_cast<wxTextEntry*>(control(name, window));
    const auto* choice = dynamic_cast<wxChoice*>(control(name, window));
    return utf8_of(entry ? entry->GetValue() : choice->GetStringSelection()) == text;
  });
  EXPECT_TRUE(became) << name << " is \"" << text_in(name, window) << '"';
  return became;
}

bool has_keys(const std::string& name, const std::string& window) {
  const bool has = wait_until([&] {
    const wxWindow* const focus = wxWindow::FindFocus();
    return focus != nullptr && focus == control(name, window);
  });
  EXPECT_TRUE(has) << name << " of " << window << " has not the keys, but " << ask_ui([] {
    const wxWindow* const focus = wxWindow::FindFocus();
    return focus == nullptr ? std::string("nothing") : utf8_of(focus->GetName());
  });
  return has;
}

/// A button of a menu, and what is typed for it.
struct wanted_button {
  const char *left, *y, *width, *height, *action;
};

const std::vector<wanted_button>& five_buttons() {
  static const std::vector<wanted_button> buttons = {
      {"200", "190", "200", "6", "jump title 1"},
      {"200", "230", "200", "6", "jump title 1 chapter  2"},
      {"200", "270", "200", "6", "jump title 2"},
      {"200", "310", "200", "6", "jump title 3"},
      {"200", "350", "120", "6", "exit"}};
  return buttons;
}

class KeyboardJob : public window_test {
 protected:
  const project& shown() const { return window_->shown_project(); }

  static void expect_rows(const std::vector<std::string>& wanted) {
    EXPECT_TRUE(wait_until([&] {
      const auto* list = dynamic_cast<wxListBox*>(control("List1", "main"));
      return list->GetCount() == wanted.size();
    }));
    EXPECT_EQ(rows(), wanted);
  }

  /// Opens a menu by its letter and chooses an item by its own.
  static void choose(const std::string& menu, const std::string& item) {
    press("alt+" + menu);
    press(item);
  }

  /// Answers a message with keys.
  static void answer_with(const std::string& keys, const std::string& text, double seconds = 15) {
    ASSERT_TRUE(wait_until(
        [&] {
          const auto dialog = look_at_dialog();
          return dialog && dialog->text == text;
        },
        seconds))
        << "no message \"" << text << '"';
    EXPECT_TRUE(wait_until(dialog_has_the_keys));
    press(keys);
    EXPECT_TRUE(wait_until([&] {
      const auto dialog = look_at_dialog();
      return !dialog || dialog->text != text;
    }));
  }

  void add_titles();
  void type_chapters();
  void add_subtitles();
  void make_menu();
  static void make_button(const wanted_button& button);
  static void type_into(const std::string& key, const std::string& name, const std::string& text);
  static void pick(const std::string& key, const std::string& name, const std::string& entry);
  void set_commands();
  void save();
  void author();
  void look_at_disc_in_window();
  void look_at_disc();
  void do_all();
};

void KeyboardJob::add_titles() {
  has_keys("List1", "main");
  choose("f", "n");
  answer_file("select video stream", media("garden.m2v"));
  answer_file("select audio stream", media("garden-english.ac3"));
  EXPECT_TRUE(no_dialog());
  expect_rows({"title1:garden.m2v/garden-english.ac3"});
  for (const char* keys : {"Insert", "ctrl+t"}) {
    press(keys);
    answer_file("select video stream", media("clip-ntsc.m2v"));
    answer_file("select audio stream", media("clip.ac3"));
    EXPECT_TRUE(no_dialog());
  }
  expect_rows({"title1:garden.m2v/garden-english.ac3", "title2:clip-ntsc.m2v/clip.ac3",
               "title3:clip-ntsc.m2v/clip.ac3"});
}

void KeyboardJob::type_chapters() {
  has_keys("List1", "main");
  press("Down");
  EXPECT_TRUE(wait_until([this] { return shown().selected == 0; })) << selection();
  press("ctrl+h");
  ASSERT_TRUE(window_comes("chapter"));
  has_keys("RichTextBox1", "chapter");
  press("ctrl+a");
  type_text("00:00:00");
  press("Return");
  type_text("00:00:08");
  press("Return");
  type_text("00:00:16");
  screenshot("keys-chapters");
  press("alt+t");
  becomes("RichTextBox1", "chapter", "00:00:00.00\n00:00:08.00\n00:00:16.00");
  press("ctrl+Return");
  ASSERT_TRUE(window_goes("chapter"));
  EXPECT_EQ(shown().chapters.front(), "00:00:00.00,00:00:08.00,00:00:16.00");
}

void KeyboardJob::add_subtitles() {
  has_keys("List1", "main");
  choose("x", "s");
  ASSERT_TRUE(window_comes("Subtitles"));
  press("alt+a");
  answer_file("open compatible text subtitles", media("garden-german.srt"));
  EXPECT_TRUE(no_dialog());
  press("alt+f");
  has_keys("fontface", "Subtitles");
  type_text("DejaVu Sans");
  becomes("fontfac", "Subtitles", "dejavusans.ttf");
  screenshot("keys-subtitles");
  press("alt+e");
  ASSERT_TRUE(window_goes("Subtitles"));
  EXPECT_THAT(shown().subtitledata.front(), HasSubstr("garden-german.srt"));
}

void KeyboardJob::type_into(const std::string& key, const std::string& name,
                            const std::string& text) {
  press(key);
  has_keys(name, "tsmenu");
  press("ctrl+a");
  type_text(text);
  press("Return");
}

/// Goes down a list, as it stands closed, until it shows that entry.
void KeyboardJob::pick(const std::string& key, const std::string& name, const std::string& entry) {
  press(key);
  const auto entries =
      ask_ui([&] { return dynamic_cast<wxChoice*>(control(name, "tsmenu"))->GetCount(); });
  for (unsigned i = 1; i < entries && text_in(name, "tsmenu") != entry; ++i)
    press("Down");
  EXPECT_EQ(text_in(name, "tsmenu"), entry);
}

void KeyboardJob::make_button(const wanted_button& button) {
  press("alt+a");
  press("F4");
  type_into("alt+w", "widthpos", button.width);
  type_into("alt+h", "heightpos", button.height);
  type_into("alt+l", "leftpos", button.left);
  type_into("alt+y", "ypos", button.y);
  type_into("alt+t", "Combo1", button.action);
}

void KeyboardJob::make_menu() {
  has_keys("List1", "main");
  choose("m", "a");
  answer_file("select video stream", media("main-menu.m2v"));
  answer_file("select audio stream (If no audio is needed for the menu, press cancel)",
              media("main-menu.ac3"));
  ASSERT_TRUE(window_comes("tsmenu"));
  ASSERT_TRUE(wait_until([] { return control("position", "tsmenu")->IsEnabled(); }));
  for (const wanted_button& button : five_buttons()) {
    make_button(button);
    pick("alt+i", "Colorhighlight", "yellow");
    pick("alt+s", "ColorSelect", "white");
  }
  press("alt+m");
  EXPECT_TRUE(wait_until(
      [] { return dynamic_cast<wxCheckBox*>(control("Check1", "tsmenu"))->GetValue(); }));
  screenshot("keys-menu");
  press("alt+e");
  ASSERT_TRUE(window_goes("tsmenu"));
}

void KeyboardJob::set_commands() {
  has_keys("List1", "main");
  press("ctrl+j");
  ASSERT_TRUE(window_comes("navcommands"));
  has_keys("List1", "navcommands");
  for (const char* command : {"jump title 3", "call menu", "exit"}) {
    press("Down");
    press("Return");
    has_keys("Combo1", "navcommands");
    type_text(command);
    press("Return");
    has_keys("List1", "navcommands");
  }
  screenshot("keys-commands");
  press("alt+a");
  ASSERT_TRUE(window_goes("navcommands"));
}

void KeyboardJob::save() {
  press("ctrl+shift+s");
  answer_file("save corvane project", folder_.path("three.cvp"));
  EXPECT_TRUE(no_dialog());
  EXPECT_TRUE(file_exists(folder_.path("three.cvp")));
}

void KeyboardJob::author() {
  has_keys("List1", "main");
  press("F5");
  answer_file("enter a folder name to create the dvd", folder_.path("disc"));
  answer_with("Escape", run_succeeded, run_seconds);
}

void KeyboardJob::look_at_disc_in_window() {
  has_keys("List1", "main");
  press("ctrl+shift+k");
  answer_file("choose the VIDEO_TS.IFO or the image of a disc",
              folder_.path("disc/VIDEO_TS/VIDEO_TS.IFO"));
  answer_with("alt+y", which_disc);
  ASSERT_TRUE(window_comes("disc"));
  screenshot("keys-verified");
  EXPECT_EQ(text_in("summary", "disc"), "Nothing was found that would spoil this disc.");
  EXPECT_THAT(text_in("text", "disc"), HasSubstr("asked for"));
  press("Escape");
  EXPECT_TRUE(window_goes("disc"));
}

// As it is by itself, whatever was asked for.
void KeyboardJob::look_at_disc() {
  verification look(place_of_disc(folder_.path("disc")), nullptr);
  while (look.step(100)) {
  }
  EXPECT_THAT(look.findings(), IsEmpty());
  const auto says = [&look](const finding_item& item, disc_trait_kind kind) {
    const disc_trait* const found = look.found().find(item, kind);
    return found == nullptr ? std::string("nothing") : found->value;
  };
  using enum disc_trait_kind;
  EXPECT_EQ(says({}, titles), "3");
  EXPECT_EQ(says({}, menus), "1");
  EXPECT_EQ(says({}, first_play), "menu 1");
  const auto title = [](int number) { return finding_item{whole::title, number}; };
  EXPECT_EQ(says(title(1), chapters), "3");
  EXPECT_EQ(says(part_of(title(1), part::chapter, 2), begins), "8.008");
  EXPECT_EQ(says(part_of(title(1), part::chapter, 3), begins), "16.016");
  EXPECT_EQ(says(title(1), subtitles), "1");
  EXPECT_EQ(says(part_of(title(1), part::subtitle, 1), cues), "3");
  EXPECT_EQ(says(title(1), then), "title 3 chapter 1");
  EXPECT_EQ(says(title(2), then), "menu 1");
  EXPECT_EQ(says(title(3), then), "stop");
  const finding_item menu{whole::menu, 1};
  EXPECT_EQ(says(menu, buttons), "5");
  EXPECT_EQ(says(menu, then), "menu 1") << "it loops";
  const char* const leads[] = {"title 1 chapter 1", "title 1 chapter 2", "title 2 chapter 1",
                               "title 3 chapter 1", "stop"};
  const char* const stands[] = {"200,190 to 400,196", "200,230 to 400,236", "200,270 to 400,276",
                                "200,310 to 400,316", "200,350 to 320,356"};
  for (int number = 1; number <= 5; ++number) {
    const finding_item button = part_of(menu, part::button, number);
    EXPECT_EQ(says(button, leads_to), leads[number - 1]);
    EXPECT_EQ(says(button, edges), stands[number - 1]);
    EXPECT_EQ(says(button, highlighted), "yellow");
    EXPECT_EQ(says(button, selected), "white");
  }
}

void KeyboardJob::do_all() {
  for (const auto step :
       {&KeyboardJob::add_titles, &KeyboardJob::type_chapters, &KeyboardJob::add_subtitles,
        &KeyboardJob::make_menu, &KeyboardJob::set_commands, &KeyboardJob::save,
        &KeyboardJob::author, &KeyboardJob::look_at_disc_in_window, &KeyboardJob::look_at_disc}) {
    (this->*step)();
    ASSERT_FALSE(HasFailure());
  }
}

TEST_F(KeyboardJob, MakesADiscOfThreeTitlesWithAMenuOfFiveButtons) {
  const wxPoint pointer = ask_ui([] { return wxGetMousePosition(); });
  do_all();
  EXPECT_EQ(ask_ui([] { return wxGetMousePosition(); }), pointer) << "nobody has touched it";
}

}  // namespace
}  // namespace corvane::testing_support
