// The window with the map of the disc: what it shows, and all that can be done there, by pointer
// and by keys.
#include "formats/xml_reader.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/menu_rows.h"
#include "project/post_rows.h"
#include "project/title_commands.h"
#include "ui/main_window.h"
#include "ui/map/map_canvas.h"
#include "ui/widgets/wx_text.h"
#include "ui/window_fixture.h"

#include <gmock/gmock.h>
#include <wx/image.h>
#include <wx/imagpng.h>
#include <wx/textctrl.h>

#include <cstdlib>
#include <random>
#include <tuple>

namespace corvane::testing_support {
namespace {

using testing::HasSubstr;
using node_kind = map_place::kind;

const map_place first_play{node_kind::first_play, 0};
map_place title(int number) {
  return {node_kind::title, number};
}
map_place menu(int number) {
  return {node_kind::menu, number};
}

class DiscMapWindow : public window_test {
 protected:
  static constexpr const char* map_name = "discmap";

  void open(const project& p) {
    load(p);
    click_menu("disc", "disc map...");
    ASSERT_TRUE(window_comes(map_name));
    ASSERT_TRUE(wait_until([] { return canvas().HasFocus(); }));
  }
  void TearDown() override {
    if (ask_ui([] { return wxWindow::FindWindowByName(map_name) != nullptr; }))
      close(map_name);
    EXPECT_TRUE(window_goes(map_name));
    window_test::TearDown();
  }

  /// Only for use in the main thread.
  static map_canvas& canvas() { return *dynamic_cast<map_canvas*>(control("map", map_name)); }
  static wxPoint place_of(const map_place& place, int exit = 0) {
    return ask_ui([&] { return canvas().ClientToScreen(canvas().place_on_window(place, exit)); });
  }
  static std::string selected() {
    return ask_ui([] { return canvas().selected_card() ? canvas().selected_card()->heading : ""; });
  }
  static bool selected_becomes(const std::string& heading) {
    return wait_until([&] {
      return canvas().selected_card() != nullptr && canvas().selected_card()->heading == heading;
    });
  }
  static std::string told() { return label_of("selected"); }
  static std::string map_lines() {
    return ask_ui([] { return map_text(canvas().shown_map().map); });
  }
  bool buttons_become(std::size_t of_menu, const std::string& element) {
    return wait_until([&] { return window_->shown_project().menubuttons[of_menu - 1] == element; });
  }
};

TEST_F(DiscMapWindow, ShowsMenusTitlesAndArrowsOfTheProject) {
  open(project_with_menus(2));
  EXPECT_EQ(map_lines(),
            "button 1 of menu 1 -> stop\n"
            "button 2 of menu 1 -> title 1 chapter 1\n"
            "end of title 1 -> title 2 chapter 1\n"
            "end of title 2 -> stop\n"
            "first play -> menu 1\n"
            "nothing -> menu 2\n"
            "menu 2 -> nothing\n");
  EXPECT_EQ(selected(), "first play");
  EXPECT_TRUE(wait_until([] { return canvas().shown_map().pictures.size() == 2; }))
      << "the menus have pictures";
  screenshot("disc-map");
}

TEST_F(DiscMapWindow, TitlesHaveTheirPictureLengthAndChapters) {
  project p = project_with_menus(2);
  const std::string streams =
      stored_from_native(real_video()) + "/" + stored_from_native(real_audio());
  p.List11 = {streams, streams};
  p.chapters = {"00:00:00.00,00:00:01.50", "00:00:00.00"};
  rebuild_List1(p);
  open(p);
  EXPECT_TRUE(wait_until([] { return canvas().shown_map().pictures.size() == 4; }));
  const auto detail_becomes = [](const map_place& place, const std::string& detail) {
    return wait_until([&] {
      for (const map_card& card : canvas().shown_map().cards)
        if (card.place == place)
          return card.detail == detail;
      return false;
    });
  };
  EXPECT_TRUE(detail_becomes(title(1), "about 3 s, 2 chapters"));
  EXPECT_TRUE(detail_becomes(title(2), "about 3 s, 1 chapter"));
  screenshot("disc-map-lengths");
}

TEST_F(DiscMapWindow, OpensAsLargeAsItsMap) {
  open(project_with_menus(1));
  const auto size = [] { return ask_ui([] { return canvas().GetClientSize(); }); };
  const wxSize small = size();
  close(map_name);
  ASSERT_TRUE(window_goes(map_name));
  project p = project_with_menus(12);
  for (int t = 0; t < 12; ++t)
    p.postinfo.push_back(post_row("call menu"));
  open(p);
  EXPECT_GT(size().y, small.y) << "twelve titles below each other";
  EXPECT_EQ(size().x, small.x);
}

TEST_F(DiscMapWindow, FollowsTheProjectWhileItIsOpen) {
  open(project_with_menus(2));
  on_ui([this] {
    window_->CallAfter([this] {
      window_->run("remove title", [](document& doc) {
        doc.p.selected = 1;
        remove_title_command(doc);
      });
    });
  });
  EXPECT_TRUE(wait_until([] { return canvas().shown_map().cards.size() == 4; }));
  on_ui([this] { window_->CallAfter([this] { window_->undo(); }); });
  EXPECT_TRUE(wait_until([] { return canvas().shown_map().cards.size() == 5; }));
}

TEST_F(DiscMapWindow, TabGoesFromNodeToNodeAndEnterOpensTheEditor) {
  open(project_with_menus(1));
  press("Tab");
  EXPECT_TRUE(selected_becomes("menu 1"));
  EXPECT_THAT(told(), HasSubstr("menu 1; intro.m2v"));
  press("ctrl+Down");
  EXPECT_TRUE(wait_until([] { return canvas().selected_exit() == 1; }));
  EXPECT_EQ(told(), "menu 1: 1: the disc ends");
  press("ctrl+Down");
  EXPECT_TRUE(wait_until([] { return canvas().selected_exit() == 2; }));
  press("Return");
  ASSERT_TRUE(window_comes("tsmenu"));
  close("tsmenu");
  EXPECT_TRUE(window_goes("tsmenu"));
  EXPECT_TRUE(wait_until([] { return canvas().HasFocus(); })) << "back to the map";
  press("shift+Tab");
  EXPECT_TRUE(selected_becomes("first play"));
  press("Return");
  ASSERT_TRUE(window_comes("navcommands"));
  press("Escape");
  EXPECT_TRUE(window_goes("navcommands"));
}

TEST_F(DiscMapWindow, DoubleClickEditsWhatIsThere) {
  open(project_with_menus(1));
  double_click_at(place_of(title(1)));
  ASSERT_TRUE(window_comes("navcommands"));
  press("Escape");
  EXPECT_TRUE(window_goes("navcommands"));
  double_click_at(place_of(menu(1)));
  ASSERT_TRUE(window_comes("tsmenu"));
  close("tsmenu");
  EXPECT_TRUE(window_goes("tsmenu"));
}

TEST_F(DiscMapWindow, ArrowDraggedFromAButtonSetsItsActionAndIsUndone) {
  open(project_with_menus(2));
  const std::string before = window_->shown_project().menubuttons[0];
  drag(place_of(menu(1), 1), place_of(title(2)));
  EXPECT_TRUE(buttons_become(1,
                             " 0/ 0/ 100/ 3/jump title 2 chapter  1/black/black| 0/ 50/ 100/ "
                             "53/jump title 1/black/black"));
  EXPECT_TRUE(wait_until([] {
    return map_text(canvas().shown_map().map).find("button 1 of menu 1 -> title 2 chapter 1") !=
           std::string::npos;
  }));
  screenshot("disc-map-led");
  on_ui([this] { window_->CallAfter([this] { window_->undo(); }); });
  EXPECT_TRUE(buttons_become(1, before));
}

TEST_F(DiscMapWindow, ArrowDraggedFromATitlesEndAndFromFirstPlaySetsTheirCommands) {
  open(project_with_menus(2));
  drag(place_of(title(2), 1), place_of(menu(1)));
  EXPECT_TRUE(wait_until([this] {
    const project& p = window_->shown_project();
    return p.postinfo.size() == 2 && p.postinfo[1] == post_row("call menu");
  }));
  EXPECT_TRUE(wait_until([] {
    return map_text(canvas().shown_map().map).find("end of title 2 -> menu 1") != std::string::npos;
  })) << "the map stands in its new order";
  drag(place_of(first_play), place_of(title(2)));
  EXPECT_TRUE(wait_until([this] { return window_->shown_project().firstplay == "jump title 2"; }));
}

TEST_F(DiscMapWindow, ArrowThatCannotBeIsRefusedWithAWord) {
  open(project_with_menus(1));
  drag(place_of(title(1), 1), place_of(menu(2)));
  answer_message(
      "Without the jump table a title can only lead to menu 1.  \"use JumpTable\" in the menu "
      "\"tools\" allows any menu; it can be switched on only while the project has no menus.",
      "OK");
  EXPECT_TRUE(window_->shown_project().postinfo.empty());
}

TEST_F(DiscMapWindow, TitleOfSeveralChaptersAsksForOne) {
  project p = project_with_menus(2);
  p.chapters[1] = "00:00:00.00,00:00:00.50";
  open(p);
  drag(place_of(menu(1), 1), place_of(title(2)));
  ASSERT_TRUE(window_comes("leadto"));
  press("Down");
  press("Return");
  EXPECT_TRUE(buttons_become(1,
                             " 0/ 0/ 100/ 3/jump title 2 chapter  2/black/black| 0/ 50/ 100/ "
                             "53/jump title 1/black/black"));
}

TEST_F(DiscMapWindow, KeysAloneLeadAButtonElsewhere) {
  open(project_with_menus(2));
  press("Tab");
  ASSERT_TRUE(selected_becomes("menu 1"));
  press("ctrl+Down");
  EXPECT_TRUE(wait_until([] { return canvas().selected_exit() == 1; }));
  press("shift+F10");
  click_menu_item("lead button 1 elsewhere...");
  ASSERT_TRUE(window_comes("leadto"));
  screenshot("disc-map-pick");
  press("Home");
  press("Return");
  EXPECT_TRUE(buttons_become(1,
                             " 0/ 0/ 100/ 3/jump menu 1/black/black| 0/ 50/ 100/ "
                             "53/jump title 1/black/black"));
}

TEST_F(DiscMapWindow, ZoomsAndMovesByKeysAndWheel) {
  open(project_with_menus(2));
  const double before = ask_ui([] { return canvas().zoom(); });
  press("plus");
  EXPECT_TRUE(wait_until([before] { return canvas().zoom() > before; }));
  press("minus");
  EXPECT_TRUE(wait_until([before] { return canvas().zoom() < before * 1.01; }));
  for (int i = 0; i < 8; ++i)
    press("plus");
  const wxPoint at = place_of(first_play);
  press("Right");
  EXPECT_TRUE(wait_until(
      [at] { return canvas().ClientToScreen(canvas().place_on_window(first_play, 0)).x < at.x; }));
  press("0");
  EXPECT_TRUE(wait_until([before] { return canvas().zoom() <= before * 1.01; }));
  EXPECT_NE(label_of("zoom"), "");
}

TEST_F(DiscMapWindow, DragOfTheBackgroundMovesTheMap) {
  open(project_with_menus(2));
  for (int i = 0; i < 8; ++i)
    press("plus");
  press("Home");
  EXPECT_TRUE(wait_until([] { return canvas().zoom() > 1.5; }));
  const wxPoint node = place_of(first_play);
  const wxPoint free =
      ask_ui([] { return canvas().ClientToScreen(wxPoint(canvas().GetClientSize().x - 8, 8)); });
  drag(free, free - wxPoint(100, 0));
  EXPECT_NE(place_of(first_play).x, node.x);
}

TEST_F(DiscMapWindow, FindsATitleByItsName) {
  open(project_with_menus(2));
  press("ctrl+f");
  EXPECT_TRUE(wait_until([] { return control("words", map_name)->HasFocus(); }));
  type_text("b.m2v");
  EXPECT_TRUE(selected_becomes("title 2"));
  press("Escape");
  EXPECT_TRUE(wait_until([] { return canvas().HasFocus(); }));
  EXPECT_EQ(selected(), "title 2");
}

TEST_F(DiscMapWindow, IsSavedAsSvgAndPng) {
  open(project_with_menus(2));
  EXPECT_TRUE(wait_until([] { return canvas().shown_map().pictures.size() == 2; }));
  click_button("save as SVG...");
  answer_file("save the map of the disc", folder_.path("map.svg"));
  ASSERT_TRUE(wait_until([this] { return file_exists(folder_.path("map.svg")); }));
  const std::string svg = folder_.read("map.svg");
  EXPECT_FALSE(first_xml_fault(svg));
  EXPECT_THAT(svg, HasSubstr("data:image/png;base64,"));
  click_button("save as PNG...");
  answer_file("save the map of the disc", folder_.path("map.png"));
  ASSERT_TRUE(wait_until([this] { return file_exists(folder_.path("map.png")); }));
  const wxSize size = ask_ui([this] {
    wxImage image;
    wxImage::AddHandler(new wxPNGHandler);
    image.LoadFile(wx_text(folder_.path("map.png")), wxBITMAP_TYPE_PNG);
    return image.IsOk() ? image.GetSize() : wxSize();
  });
  const wxSize wanted = ask_ui([] {
    const map_layout& layout = canvas().shown_map().layout;
    return wxSize(static_cast<int>(2 * layout.width + 0.5),
                  static_cast<int>(2 * layout.height + 0.5));
  });
  EXPECT_EQ(size.x, wanted.x);
  EXPECT_EQ(size.y, wanted.y);
}

TEST_F(DiscMapWindow, RestsWhileAnEditorHasTheProject) {
  open(project_with_menus(1));
  double_click_at(place_of(menu(1)));
  ASSERT_TRUE(window_comes("tsmenu"));
  EXPECT_FALSE(ask_ui([] { return control("svg", map_name)->IsEnabled(); }));
  close("tsmenu");
  EXPECT_TRUE(window_goes("tsmenu"));
  EXPECT_TRUE(wait_until([] { return control("svg", map_name)->IsEnabled(); }));
}

TEST_F(DiscMapWindow, ProjectWithoutAnythingIsFirstPlayAlone) {
  click_menu("disc", "disc map...");
  ASSERT_TRUE(window_comes(map_name));
  EXPECT_EQ(map_lines(), "first play -> not told\n");
}

/// For looking at: projects made up at random, of sizes up to twelve menus and thirty titles.
TEST_F(DiscMapWindow, ShowsLargeProjects) {
  for (const auto& [menus, titles, seed] :
       {std::tuple(12, 30, 1U), std::tuple(0, 30, 2U), std::tuple(3, 8, 3U), std::tuple(6, 15, 4U),
        std::tuple(1, 20, 5U)}) {
    std::mt19937 random(seed);
    const auto pick = [&random](int most) {
      return std::to_string(random() % static_cast<unsigned>(most) + 1);
    };
    project p = project_with_menus(std::min(titles, 26));
    while (static_cast<int>(p.List11.size()) < titles) {
      p.List11.push_back(p.List11[0]);
      p.chapters.emplace_back("00:00:00.00,00:00:01.00");
      p.delay.emplace_back("0");
      p.subtitledata.emplace_back("<none>");
      p.subtitleoptions.push_back(p.subtitleoptions[0]);
    }
    for (int t = 0; t < titles; ++t)
      p.List11[static_cast<std::size_t>(t)] =
          folder_.stored(t % 2 == 0 ? "intro.m2v" : "second.m2v") + "/" + folder_.stored("a.ac3");
    const std::string row = p.menulist[0];
    p.menulist.assign(static_cast<std::size_t>(menus), row);
    p.moremenuoptions.assign(static_cast<std::size_t>(menus), new_menu_options);
    p.menubuttons.assign(static_cast<std::size_t>(menus), "");
    p.jumptable = seed % 2 == 1 && menus > 0;
    for (std::string& element : p.menubuttons)
      for (unsigned long b = 0, count = 2 + random() % 7; b < count; ++b)
        element += (b == 0 ? "" : "|") + std::string(" 0/ 0/ 100/ 30/jump ") +
                   (random() % 3 == 0 ? "menu " + pick(menus) : "title " + pick(titles)) +
                   "/black/black";
    if (menus > 0)
      for (int t = 0; t < titles; ++t)
        p.postinfo.push_back(post_row(!p.jumptable ? "call menu" : "call last menu"));
    rebuild_List1(p);
    open(p);
    EXPECT_TRUE(wait_until([&] {
      return canvas().shown_map().pictures.size() == static_cast<std::size_t>(menus + titles);
    }));
    screenshot("disc-map-" + std::to_string(seed));
    press("0");
    screenshot("disc-map-" + std::to_string(seed) + "-fit");
    close(map_name);
    EXPECT_TRUE(window_goes(map_name));
  }
}

}  // namespace
}  // namespace corvane::testing_support
