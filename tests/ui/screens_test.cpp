// Every window on a screen that may be small, or of high resolution (tests/ui/CMakeLists.txt runs
// these on several): it lies on the screen with all of its controls, or its columns scroll to them,
// and the buttons that end it are in sight at once.
#include "project/title_commands.h"
#include "ui/editor/menu_windows.h"
#include "ui/gtk_sight.h"
#include "ui/import/import_window.h"
#include "ui/main_window.h"
#include "ui/maker/maker_picture.h"
#include "ui/maker/maker_window.h"
#include "ui/still/still_window.h"
#include "ui/subtitles/clean_subtitles_window.h"
#include "ui/subtitles/language_window.h"
#include "ui/subtitles/subtitles_window.h"
#include "ui/video/chapter_window.h"
#include "ui/video/video_picture.h"
#include "ui/window_fixture.h"

#include <wx/button.h>
#include <wx/checkbox.h>
#include <wx/display.h>
#include <wx/notebook.h>
#include <wx/scrolwin.h>
#include <wx/statbox.h>
#include <wx/stattext.h>
#include <wx/statusbr.h>
#include <wx/toolbar.h>

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <string>
#include <utility>

namespace corvane::testing_support {
namespace {

/// What is wrong with a window's place and that of its controls; empty: nothing.
class look_at_window {
 public:
  explicit look_at_window(const wxWindow& window) : window_(window) {
    const wxRect screen = wxDisplay(&window).GetClientArea();
    const wxRect place = window.GetScreenRect();
    if (!screen.Contains(place))
      tell(window, "lies at " + text_of(place) + " on a screen of " + text_of(screen));
    look_inside(window, wxRect(window.ClientToScreen(wxPoint(0, 0)), window.GetClientSize()),
                false);
  }
  const std::string& wrong() const { return wrong_; }

 private:
  static std::string text_of(const wxRect& r) {
    return std::to_string(r.x) + "," + std::to_string(r.y) + " " + std::to_string(r.width) + "x" +
           std::to_string(r.height);
  }
  void tell(const wxWindow& control, const std::string& what) {
    wrong_ += control.GetName().ToStdString() + " \"" + control.GetLabel().ToStdString() + "\" " +
              what + "\n";
  }
  /// `in_sight`: the part of the screen in which what stands in `window` can be seen.
  void look_inside(const wxWindow& window, const wxRect& in_sight, bool scrolls) {
    for (const wxWindow* child : window.GetChildren())
      if (child->IsShown() && !child->IsTopLevel())
        look_at(*child, in_sight, scrolls);
  }
  void look_at(const wxWindow& child, const wxRect& in_sight, bool scrolls) {
    const wxRect place = child.GetScreenRect();
    // The toolkit gives a box the place of what is inside, and bars stand outside.
    const bool bounds = dynamic_cast<const wxStaticBox*>(&child) == nullptr &&
                        dynamic_cast<const wxToolBar*>(&child) == nullptr &&
                        dynamic_cast<const wxStatusBar*>(&child) == nullptr;
    if (bounds && !in_sight.Contains(place) && place.width > 0 && place.height > 0)
      tell(child, "lies at " + text_of(place) + " and is seen within " + text_of(in_sight));
    if (dynamic_cast<const wxButton*>(&child) != nullptr ||
        dynamic_cast<const wxCheckBox*>(&child) != nullptr) {
      const wxSize least = child.GetBestSize();
      if (place.width < least.x || place.height < least.y)
        tell(child, "is squeezed to " + text_of(place));
      const int id = child.GetId();
      if (scrolls && (id == wxID_OK || id == wxID_CANCEL ||
                      wxControl::GetLabelText(child.GetLabel()) == "accept"))
        tell(child, "ends the window and can be scrolled out of sight");
    }
    const auto* column = dynamic_cast<const wxScrolledWindow*>(&child);
    if (column == nullptr) {
      look_inside(child, in_sight, scrolls);
      return;
    }
    if (column->GetVirtualSize().y > column->GetClientSize().y &&
        column->GetClientSize().x >= column->GetSize().x)
      tell(child, "shows no scroll bar");
    // All of it can be scrolled to; a good part of it is seen.
    constexpr int useful = 120;
    if (place.height < column->FromDIP(useful))
      tell(child, "shows too little: " + text_of(place));
    wxSize all = column->GetVirtualSize();
    const wxPoint begin = column->CalcScrolledPosition(wxPoint(0, 0));
    look_inside(child, wxRect(column->ClientToScreen(begin), all), true);
  }

  const wxWindow& window_;
  std::string wrong_;
};

double luminance(const wxColour& c) {
  const auto linear = [](int channel) {
    const double v = channel / 255.0;
    return v <= 0.04045 ? v / 12.92 : std::pow((v + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(c.Red()) + 0.7152 * linear(c.Green()) + 0.0722 * linear(c.Blue());
}

/// How well a text is read on a ground: 1 not at all, 21 best; 3 is enough for what is short.
double contrast(const wxColour& a, const wxColour& b) {
  const double brighter = std::max(luminance(a), luminance(b));
  return (brighter + 0.05) / (std::min(luminance(a), luminance(b)) + 0.05);
}

class Screens : public window_test {
 protected:
  void SetUp() override {
    window_test::SetUp();
    project p = project_with_menus(2);
    p.subtitledata[0] = "<none>";
    load(p);
    on_ui([this] { window_->select_title(0); });
  }

  /// Runs a command of the main window; it may ask, so nobody waits for it.
  void start(const std::function<void(main_window&)>& command) {
    on_ui([&] { window_->CallAfter([this, command] { command(*window_); }); });
  }
  static void look_at(const char* name) {
    ASSERT_TRUE(window_comes(name)) << name;
    screenshot(std::string("screen-") + name);
    // Windows that fill themselves take their place again after they have come.
    wait_until([name] { return look_at_window(*control(name)).wrong().empty(); });
    EXPECT_EQ(ask_ui([name] { return look_at_window(*control(name)).wrong(); }), "") << name;
  }
  static void look_at_and_close(const char* name) {
    look_at(name);
    close(name);
    EXPECT_TRUE(window_goes(name)) << name;
  }
};

TEST_F(Screens, HoldTheMainWindow) {
  look_at("main");
}

TEST_F(Screens, HoldTheSubtitles) {
  start(edit_subtitles);
  look_at_and_close("Subtitles");
}

TEST_F(Screens, HoldTheCleanedSubtitles) {
  project p = project_with_menus(1);
  p.subtitledata[0] = folder_.stored("film.srt");
  std::string cues;
  for (int i = 10; i < 60; ++i)
    cues += std::to_string(i) + "\n00:00:" + std::to_string(i) +
            ",000 --> 00:00:" + std::to_string(i) +
            ",900\n{\\an8}- Tom &amp; <Jerry>, is it you?\n- It is, and I have "
            "come a long way.\n\n";
  folder_.add("film.srt", cues);
  load(p);
  start([](main_window& main) { clean_subtitles_of(main, 1, 1); });
  look_at_and_close("cleansubtitles");
}

TEST_F(Screens, HoldTheLanguageTags) {
  start(edit_languages);
  look_at_and_close("language");
}

TEST_F(Screens, HoldTheChaptersAndTheirEditor) {
  start(edit_chapters);
  look_at("chapter");
  press("alt+v");
  ASSERT_TRUE(wait_until([] { return look_at_dialog().has_value(); }));
  press("Return");
  look_at_and_close("vchapters");
  close("chapter");
  EXPECT_TRUE(window_goes("chapter"));
}

TEST_F(Screens, HoldThePickerOfActions) {
  start([](main_window& main) { edit_menu_at(main, 1, 1); });
  ASSERT_TRUE(window_comes("tsmenu"));
  press("ctrl+p");
  look_at_and_close("actionpicker");
  close("tsmenu");
  EXPECT_TRUE(window_goes("tsmenu"));
}

TEST_F(Screens, HoldTheNavigationCommands) {
  start(edit_navcommands);
  look_at_and_close("navcommands");
}

TEST_F(Screens, HoldTheImport) {
  for (const auto& [from, to] : {std::pair(real_video(), "a.m2v"), {real_audio(), "a.ac3"}})
    std::filesystem::copy_file(from, folder_.path(to),
                               std::filesystem::copy_options::overwrite_existing);
  start([](main_window& main) { open_import(main, {real_pal_video(), real_audio()}); });
  ASSERT_TRUE(window_comes("import"));
  EXPECT_TRUE(wait_until([] {
    return !dynamic_cast<wxStaticText*>(control("estimate", "import"))->GetLabelText().empty();
  }));
  EXPECT_TRUE(wait_until([] {
    return dynamic_cast<video_picture*>(control("itempicture", "import"))->shown_picture().IsOk();
  }));
  look_at("import");
  constexpr int mean_rate = 2;  // has a field beside it
  choose_entry("quality", mean_rate, "import");
  ASSERT_TRUE(wait_until([] { return control("rate", "import")->IsShownOnScreen(); }));
  look_at_and_close("import");
}

TEST_F(Screens, HoldTheStillOfAPicture) {
  const std::string picture = folder_.path("still.png");
  ASSERT_EQ(std::system(("convert -size 1200x900 plasma:red-blue '" + picture + "'").c_str()), 0);
  start([&](main_window& main) { open_still_window(main, picture, false); });
  ASSERT_TRUE(window_comes("still"));
  EXPECT_TRUE(wait_until([] {
    return dynamic_cast<video_picture*>(control("preview", "still"))->shown_picture().IsOk();
  }));
  look_at_and_close("still");
}

TEST_F(Screens, HoldTheMenuEditorWithAllItsControls) {
  start([](main_window& main) { edit_menu_at(main, 1, 1); });
  look_at("tsmenu");
  on_ui([] {
    auto* advanced = dynamic_cast<wxCheckBox*>(control("Check2"));
    advanced->SetValue(true);
    wxCommandEvent clicked(wxEVT_CHECKBOX, advanced->GetId());
    clicked.SetInt(1);
    clicked.SetEventObject(advanced);
    advanced->ProcessWindowEvent(clicked);
  });
  ASSERT_TRUE(wait_until([] { return control("bmphighlight")->IsShownOnScreen(); }));
  screenshot("screen-tsmenu-advanced");
  look_at_and_close("tsmenu");
}

TEST_F(Screens, HoldTheMenuMakerWithAllItsPages) {
  start(open_menu_maker);
  ASSERT_TRUE(window_comes("menumaker"));
  ASSERT_TRUE(wait_until([] {
    return dynamic_cast<maker_picture*>(control("page", "menumaker"))->shown_page().IsOk();
  }));
  look_at("menumaker");
  const auto turn_to = [](std::size_t page) {
    on_ui([&] {
      dynamic_cast<wxNotebook*>(control("makerchoices", "menumaker"))->SetSelection(page);
    });
  };
  turn_to(2);
  screenshot("screen-menumaker-letters");
  look_at("menumaker");
  turn_to(1);
  for (int background = 1; background <= 3; ++background) {
    choose_entry("background", background, "menumaker");
    screenshot("screen-menumaker-background" + std::to_string(background));
    look_at("menumaker");
  }
  look_at_and_close("menumaker");
}

TEST_F(Screens, HoldTheListOfMenus) {
  start(edit_menu);
  look_at("menuselect");
  press("Escape");
  EXPECT_TRUE(no_dialog());
}

TEST_F(Screens, HoldTheFindings) {
  start([](main_window& main) { main.check_project(); });
  look_at_and_close("findings");
}

TEST_F(Screens, HoldTheMapOfTheDisc) {
  start([](main_window& main) { main.show_disc_map(); });
  look_at_and_close("discmap");
}

TEST_F(Screens, HoldTheLog) {
  start([](main_window& main) { main.show_log(); });
  look_at("log");
}

TEST_F(Screens, PicturesOnButtonsAreSeenOnTheirGround) {
  for (const char* name : {"titleup", "titledown"})
    EXPECT_TRUE(wait_until(
        [name] {
          const wxRect place = control(name)->GetScreenRect();
          const int begin = place.x + place.width / 4, middle = place.y + place.height / 2;
          const wxColour ground = colour_at({begin, middle});
          double best = 1;
          for (int x = begin; x < place.GetRight() - place.width / 4; ++x)
            best = std::max(best, contrast(colour_at({x, middle}), ground));
          return best >= 3;
        },
        5))
        << name;
}

TEST_F(Screens, ChoicesHaveTheirArrow) {
  EXPECT_TRUE(wait_until(
      [] {
        const wxRect place = control("Comboregion")->GetScreenRect();
        const int arrow = control("Comboregion")->FromDIP(24), border = arrow / 3;
        const int middle = place.y + place.height / 2;
        const wxColour ground = colour_at({place.GetRight() - border, middle});
        double best = 1;
        for (int x = place.GetRight() - arrow; x < place.GetRight() - border; ++x)
          best = std::max(best, contrast(colour_at({x, middle}), ground));
        return best >= 1.5;  // it is grey as long as nothing can be chosen
      },
      5));
}

// Their colours are black and red, whatever the theme.
TEST_F(Screens, StatisticsAreReadInBothTheirColours) {
  const auto is_read_in = [](const wxColour& colour) {
    return wait_until([&colour] {
      const wxWindow* text = control("dvdsizetext");
      const wxRect place = text->GetScreenRect();
      const wxColour ground = colour_at({place.GetRight() - 2, place.y + 2});
      return text->GetForegroundColour() == colour && contrast(colour, ground) >= 3;
    });
  };
  EXPECT_TRUE(is_read_in(*wxBLACK));
  screenshot("screen-statistics");
  std::filesystem::resize_file(folder_.path("a.m2v"), 4'900'000'000);  // takes no room on the disk
  start([](main_window& main) { main.run("move title down", titledown_command); });
  EXPECT_TRUE(is_read_in(*wxRED));
  screenshot("screen-statistics-red");
}

}  // namespace
}  // namespace corvane::testing_support
