// The menu editor without a pointer, and how little a menu of ten buttons takes with one.
#include "formats/text.h"
#include "menus/menu_geometry.h"
#include "platform/files/paths.h"
#include "project/menu_rows.h"
#include "project/title_rows.h"
#include "ui/menu_editor_fixture.h"

#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/dataview.h>

#include <algorithm>
#include <iterator>

namespace corvane::testing_support {
namespace {

class MenuEditorHands : public menu_editor_test {
 protected:
  /// Ten titles of one chapter each, and a menu without buttons.
  void open_for_titles() {
    p_.chapters.clear();
    for (int i = 0; i < titles; ++i) {
      corvane::add_title(p_, stored_from_native(file("film" + std::to_string(i) + ".vob")));
      p_.chapters.back() = "00:00:00.00";
    }
    add_menu(real_video());
    open();
  }
  static int colour_index(const std::string& colour) {
    const auto at = std::find(button_colours.begin(), button_colours.end(), colour);
    return static_cast<int>(at - button_colours.begin());
  }
  static constexpr int titles = 10;
};

// With keys alone
// ----------------------------------------------------------------------------------

class MenuEditorByKeys : public MenuEditorHands {
 protected:
  /// Goes to a field by the key of its label, replaces its text and leaves it.
  static void type_by(const std::string& key, const std::string& text) {
    press(key);
    press("ctrl+a");
    type_text(text);
    press("Return");
  }
  /// Goes to a list of choices by the key of its label and chooses the entry so far below.
  static void choose_by(const std::string& key, int below) {
    press(key);
    for (int i = 0; i < below; ++i)
      press("Down");
  }
  static bool has_keyboard(const std::string& name) {
    return ask_ui([&] {
      const wxWindow* focus = wxWindow::FindFocus();
      return focus == control(name) || (focus != nullptr && focus->GetParent() == control(name));
    });
  }
  /// F6 until that part of the window has the keyboard.
  static void go_to(const std::string& name) {
    for (int i = 0; i < 3 && !has_keyboard(name); ++i)
      press("F6");
    ASSERT_TRUE(has_keyboard(name)) << name;
  }
  /// Picks an item of the menu bar's second menu by its letter.
  static void place_by(const std::string& letter) {
    press("alt+j");
    press(letter);
  }
  static bool is_checked(const std::string& name) {
    return ask_ui([&] { return dynamic_cast<wxCheckBox*>(control(name))->GetValue(); });
  }
  static int choice(const std::string& name) {
    return ask_ui([&] { return dynamic_cast<wxChoice*>(control(name))->GetSelection(); });
  }
  static std::vector<int> selected() {
    return ask_ui([] {
      const auto* list = dynamic_cast<wxDataViewListCtrl*>(control("buttonlist"));
      std::vector<int> rows;
      for (unsigned i = 0; i < static_cast<unsigned>(list->GetItemCount()); ++i)
        if (list->IsRowSelected(i))
          rows.push_back(static_cast<int>(i));
      return rows;
    });
  }
  static std::string cell(int row, int column) {
    return ask_ui([=] {
      auto* list = dynamic_cast<wxDataViewListCtrl*>(control("buttonlist"));
      return std::string(
          list->GetTextValue(static_cast<unsigned>(row), static_cast<unsigned>(column)).utf8_str());
    });
  }
  void make_first_button() {
    press("alt+a");
    press("F4");
    type_by("alt+w", "200");
    type_by("alt+h", "60");
    type_by("alt+l", "100");
    type_by("alt+y", "60");
    type_by("alt+t", "jump title 1");
    choose_by("alt+i", colour_index("cyan"));
    choose_by("alt+s", colour_index("white"));
    EXPECT_EQ(place(), "100 60 200 60");
    EXPECT_EQ(text_of("Combo1"), "jump title 1");
    EXPECT_EQ(text_of("Colorhighlight"), "cyan");
    EXPECT_EQ(text_of("ColorSelect"), "white");
  }
  /// Two rows of two.
  void repeat_it() {
    press("ctrl+r");
    ASSERT_TRUE(wait_for_dialog("repeat button 1"));
    type_by_in_dialog("alt+a", "2");
    type_by_in_dialog("alt+d", "2");
    type_by_in_dialog("alt+g", "40");
    press("Return");
    EXPECT_TRUE(no_dialog());
    EXPECT_EQ(selected(), (std::vector<int>{0, 1, 2, 3}));
  }
  static void type_by_in_dialog(const std::string& key, const std::string& text) {
    press(key);
    press("ctrl+a");
    type_text(text);
  }
};

TEST_F(MenuEditorByKeys, ButtonsAreMadePlacedOrderedAndAccepted) {
  open_for_titles();
  make_first_button();
  repeat_it();
  EXPECT_EQ(cell(3, 2), "title 4");
  EXPECT_EQ(cell(3, 3), "340, 130  200 x 60");

  // One after the other in the picture, several with Shift.
  go_to("MediaPlayer1");
  press("Next");
  EXPECT_EQ(selected(), (std::vector<int>{1}));
  press("Right");
  press("Down");
  press("ctrl+Up");
  EXPECT_EQ(place(), "341 51 200 60");
  press("shift+Right");
  press("ctrl+shift+Right");
  EXPECT_EQ(place(), "341 51 211 60");
  press("shift+Next");
  press("shift+Next");
  EXPECT_EQ(selected(), (std::vector<int>{1, 2, 3}));
  place_by("w");
  EXPECT_EQ(cell(1, 3), "341, 51  200 x 60");
  press("shift+Prior");  // leaves the selection, as a press does
  EXPECT_EQ(selected(), (std::vector<int>{1, 3}));
  place_by("r");
  EXPECT_EQ(cell(3, 3), "341, 130  200 x 60");
  place_by("e");
  EXPECT_EQ(cell(1, 3), "341, 50  200 x 62");

  // The list: one of them, several, all; their order.
  go_to("buttonlist");
  press("Home");
  EXPECT_EQ(selected(), (std::vector<int>{0}));
  press("shift+Down");
  EXPECT_EQ(selected(), (std::vector<int>{0, 1}));
  press("Home");
  press("ctrl+Down");
  EXPECT_EQ(cell(0, 2), "title 2");
  EXPECT_EQ(cell(1, 2), "title 1");
  press("ctrl+z");
  EXPECT_EQ(cell(0, 2), "title 1");
  press("ctrl+y");
  EXPECT_EQ(cell(1, 2), "title 1");
  press("ctrl+Up");
  EXPECT_EQ(cell(0, 2), "title 1");
  press("End");
  press("ctrl+d");
  EXPECT_EQ(cell(4, 3), "341, 200  200 x 60");
  press("Delete");
  EXPECT_EQ(ask_ui([] {
              return dynamic_cast<wxDataViewListCtrl*>(control("buttonlist"))->GetItemCount();
            }),
            4);

  // The menu's own options.
  press("alt+m");
  EXPECT_TRUE(is_checked("Check1"));
  press("alt+v");
  EXPECT_TRUE(is_checked("Check2"));
  type_by("alt+g", "00:00:00.5");
  type_by("alt+n", "00:00:01.0");
  press("alt+b");
  press("Right");
  EXPECT_EQ(slider("thickness"), 2);
  press("alt+u");
  cancel_dialog("select a 4 bit bitmap image");
  EXPECT_TRUE(no_dialog());
  screenshot("menu-editor-by-keys");
  press("alt+e");
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("tsmenu") == nullptr; }));
  EXPECT_EQ(stored(),
            " 100/ 60/ 300/ 120/jump title 1/cyan/white| 341/ 50/ 541/ 112/jump title 2/cyan/white|"
            " 100/ 130/ 300/ 190/jump title 3/cyan/white| 341/ 130/ 541/ 190/jump title "
            "4/cyan/white");
  EXPECT_EQ(p_.moremenuoptions.back(), " 1\t00:00:00.5\t00:00:01.0\t 2");
}

TEST_F(MenuEditorByKeys, WhatThePictureShowsIsChosenAndPlayed) {
  open_for_titles();
  make_first_button();
  press("alt+r");
  EXPECT_TRUE(is_checked("showpressed"));
  press("alt+f");
  EXPECT_TRUE(is_checked("safearea"));
  press("alt+x");
  EXPECT_TRUE(is_checked("trueshape"));
  choose_by("alt+k", 2);
  EXPECT_EQ(choice("showways"), 2);
  choose_by("alt+z", 2);
  EXPECT_EQ(choice("zoom"), 2);
  press("ctrl+plus");
  EXPECT_EQ(choice("zoom"), 3);
  press("ctrl+0");
  EXPECT_EQ(choice("zoom"), 0);
  go_to("MediaPlayer1");
  press("space");
  EXPECT_TRUE(
      wait_until([] { return !control("positiontime")->GetLabel().StartsWith("0:00:00.0"); }));
  press("space");
  press("shift+F6");
  EXPECT_TRUE(has_keyboard("Command1"));
  press("Escape");
  answer_keep_question("No");
}

// With few gestures
// --------------------------------------------------------------------------------

/// What a hand does, counted: each is one click, drag, key or typed entry.
class counted_gestures {
 public:
  void key(const std::string& keys) {
    press(keys);
    done("key " + keys);
  }
  void type(const std::string& text) {
    type_text(text);
    done("type \"" + text + "\"");
  }
  void click(wxPoint at, const std::string& what) {
    click_at(at);
    done("click " + what);
  }
  void drag_it(wxPoint from, wxPoint to, const std::string& what) {
    drag(from, to);
    done("drag " + what);
  }
  const std::vector<std::string>& list() const { return all_; }

 private:
  void done(std::string what) { all_.push_back(std::move(what)); }
  std::vector<std::string> all_;
};

class MenuEditorGestures : public MenuEditorHands {};

// A column of ten, one for each title, in colours of its own, from an empty menu to a kept one.
TEST_F(MenuEditorGestures, TenButtonsTakeFourteen) {
  open_for_titles();
  counted_gestures hand;
  hand.key("alt+a");
  hand.drag_it(on_picture(50, 1), on_picture(200, 30), "the new button to its place");
  hand.drag_it(on_picture(250, 33), on_picture(500, 60), "its corner");
  hand.key("alt+t");
  hand.type("jump title 1");
  hand.key("alt+i");
  hand.key("y");
  hand.key("alt+s");
  hand.key("w");
  hand.key("ctrl+r");
  ASSERT_TRUE(wait_for_dialog("repeat button 1"));
  hand.key("alt+d");
  hand.type("10");
  hand.key("Return");
  EXPECT_TRUE(no_dialog());
  screenshot("menu-editor-ten-buttons");
  hand.key("alt+e");
  EXPECT_TRUE(wait_until([] { return wxWindow::FindWindowByName("tsmenu") == nullptr; }));

  std::string list;
  for (const std::string& gesture : hand.list())
    list += gesture + "\n";
  EXPECT_LE(hand.list().size(), 15u) << list;
  RecordProperty("gestures", static_cast<int>(hand.list().size()));
  const std::vector<std::string> records = pieces_of(stored());
  ASSERT_EQ(records.size(), 10u) << stored();
  for (std::size_t i = 0; i < records.size(); ++i) {
    const button_record b = parse_button(records[i]);
    EXPECT_EQ(b.action, "jump title " + std::to_string(i + 1));
    EXPECT_EQ(b.highlight, "yellow");
    EXPECT_EQ(b.select, "white");
    EXPECT_EQ(edges_of(records[i]).x0, edges_of(records[0]).x0);
    EXPECT_EQ(edges_of(records[i]).y0 % 2, 0);
  }
}

}  // namespace
}  // namespace corvane::testing_support
