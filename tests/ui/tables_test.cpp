// Every item of the menu bar and the toolbar, as it stands in the window.
#include "ui/command_bars.h"
#include "ui/gtk_sight.h"
#include "ui/main_window.h"
#include "ui/widgets/wx_text.h"
#include "ui/window_fixture.h"

#include <wx/menu.h>
#include <wx/statusbr.h>
#include <wx/toolbar.h>

namespace corvane::testing_support {
namespace {

struct expected_item {
  const char* name;
  const char* caption;
  bool enabled;
  bool check;
};

const expected_item separator{"", "", true, false};

struct expected_menu {
  const char* caption;
  std::vector<expected_item> items;
};

const std::vector<expected_menu> expected_menus = {
    {"file",
     {{"open", "add new title...", true, false},
      {"author", "author dvd...", true, false},
      {"loadproject", "load project...", true, false},
      {"saveproject", "save project...", true, false},
      {"showlog", "show log", true, false},
      {"clearlog", "clear log", true, false},
      {"empty", "---settings----", false, false},
      {"isocreate", "create iso after authoring", true, true},
      {"editxml", "edit xml before authoring", true, true},
      {"cleanup", "clean up files after authoring", true, true},
      separator,
      {"newproject", "new project", true, false},
      {"savefile", "save", true, false},
      {"recent", "recent projects", false, false},
      {"import", "import...", true, false},
      separator,
      {"quit", "quit", true, false}}},
    {"menus",
     {{"addmenu", "add new titleset menu", true, false},
      {"editmenu", "edit existing titleset menu", true, false},
      {"remove", "remove titleset menu", true, false},
      {"still", "create m2v still", true, false},
      {"framecount", "set m2v framecount", true, false},
      {"avisynth", "create motion menu script", true, false},
      separator,
      {"makemenus", "make menus...", true, false},
      separator,
      {"menuup", "move menu up", true, false},
      {"menudown", "move menu down", true, false},
      {"copymenu", "copy menu", true, false},
      {"menuvideo", "change video of menu...", true, false},
      {"menuaudio", "change audio of menu...", true, false}}},
    {"extras",
     {{"notice", "--highlight a title before selecting these options", false, false},
      {"addaudiostream", "add audio stream", true, false},
      {"addsubs", "add/edit subtitles", true, false},
      {"edittags", "edit language tags", true, false},
      {"editdelay", "edit A/V delay", true, false}}},
    {"tools",
     {{"jumptable", "use JumpTable", true, true},
      {"layoutprint", "generate layout report", true, false},
      {"register", "register .cvp extension", true, false},
      {"mnuabout", "about", true, false}}},
    {"edit", {{"undo", "undo", false, false}, {"redo", "redo", false, false}}},
    {"disc",
     {{"check", "check project...", true, false},
      {"verify", "verify disc...", true, false},
      {"lastrun", "what the last run found...", true, false},
      separator,
      {"discmap", "disc map...", true, false}}},
    {"help", {{"guide", "user guide", true, false}, {"keys", "keys", true, false}}},
};

struct expected_tool {
  const char* caption;
  const char* tip;
  const char* description;
  bool enabled;
  std::vector<std::pair<const char*, bool>> drop;
};

const std::vector<expected_tool> expected_tools = {
    {"add title",
     "add a basic mpeg video stream, and the complimentry audio stream",
     "add a basic video and audio stream",
     true,
     {}},
    {"remove title", "remove title", "highlight a title in the list and click remove.", true, {}},
    {"chapters",
     "add chapter points to the selected title",
     "add chapter points to the selected title",
     true,
     {}},
    {"nav cmds",
     "change the command executed after the selected title has finished",
     "edit the post cmds of the titles on the dvd",
     true,
     {}},
    {"menus",
     "add/edit menus",
     "add/edit menus",
     true,
     {{"add titleset menu", true}, {"edit titleset menu", true}, {"remove titleset menu", true}}},
    {"extras",
     "add extra audio streams, or subtitles",
     "add extra audio streams, or subtitles",
     true,
     {{"add additional audio track", true},
      {"add/edit subtitles", true},
      {"edit language tags", true},
      {"edit A/V delay", true}}},
    {"author dvd", "author the dvd", "begin the authoring process", true, {}},
};

class Tables : public window_test {};

TEST_F(Tables, MenuBarHoldsEveryItemInOrder) {
  on_ui([this] {
    const wxMenuBar* bar = window_->GetMenuBar();
    ASSERT_EQ(bar->GetMenuCount(), expected_menus.size());
    for (std::size_t m = 0; m < expected_menus.size(); ++m) {
      EXPECT_EQ(utf8_of(bar->GetMenuLabelText(m)), expected_menus[m].caption);
      const wxMenuItemList& items = bar->GetMenu(m)->GetMenuItems();
      ASSERT_EQ(items.GetCount(), expected_menus[m].items.size());
      for (std::size_t i = 0; i < items.GetCount(); ++i) {
        const expected_item& expected = expected_menus[m].items[i];
        const wxMenuItem* item = items[i];
        EXPECT_EQ(item->IsSeparator(), *expected.name == '\0');
        if (item->IsSeparator())
          continue;
        EXPECT_EQ(utf8_of(item->GetItemLabelText()), expected.caption);
        EXPECT_EQ(item->IsEnabled(), expected.enabled) << expected.caption;
        EXPECT_EQ(item->IsCheckable(), expected.check) << expected.caption;
        EXPECT_EQ(window_->bars().item(expected.name), item) << expected.name;
      }
    }
  });
}

TEST_F(Tables, ToolbarHoldsEveryButtonInOrder) {
  on_ui([this] {
    const wxToolBar* bar = window_->GetToolBar();
    EXPECT_EQ(utf8_of(bar->GetName()), "Toolbar1");
    ASSERT_EQ(bar->GetToolsCount(), expected_tools.size());
    for (std::size_t i = 0; i < expected_tools.size(); ++i) {
      const expected_tool& expected = expected_tools[i];
      const wxToolBarToolBase* made = bar->GetToolByPos(static_cast<int>(i));
      EXPECT_EQ(utf8_of(made->GetLabel()), expected.caption);
      EXPECT_EQ(utf8_of(made->GetShortHelp()), expected.tip);
      EXPECT_EQ(utf8_of(made->GetLongHelp()), expected.description);
      EXPECT_EQ(made->IsEnabled(), expected.enabled) << expected.caption;
      EXPECT_TRUE(made->GetNormalBitmap().IsOk()) << expected.caption;
      const wxMenu* drop = made->GetDropdownMenu();
      ASSERT_EQ(drop == nullptr ? 0 : drop->GetMenuItemCount(), expected.drop.size());
      for (std::size_t d = 0; d < expected.drop.size(); ++d) {
        const wxMenuItem* item = drop->FindItemByPosition(d);
        EXPECT_EQ(utf8_of(item->GetItemLabelText()), expected.drop[d].first);
        EXPECT_EQ(item->IsEnabled(), expected.drop[d].second) << expected.drop[d].first;
      }
    }
  });
}

TEST_F(Tables, EveryControlHasItsNameForAccessibilityToolsToo) {
  on_ui([] {
    for (const char* name : {"main", "List1", "titleup", "titledown", "Frame1", "Frame2",
                             "dvdsizetext", "Label1", "globalregion", "Comboregion", "Toolbar1"})
      EXPECT_EQ(accessible_name(*control(name)), name);
  });
}

TEST_F(Tables, WindowStartsAsAnEmptyProject) {
  EXPECT_EQ(ask_ui([this] { return utf8_of(window_->GetTitle()); }), "Corvane 0.997 - 1/2/2005");
  EXPECT_EQ(label_of("Frame1"), "0 titles loaded");
  EXPECT_EQ(label_of("Frame2"), "statistics");
  EXPECT_EQ(label_of("dvdsizetext"), "0 titles\n0 menus\n0 gig total");
  EXPECT_EQ(label_of("Label1"), "DVD format:");
  EXPECT_EQ(label_of("globalregion"), "NTSC");
  EXPECT_EQ(ask_ui([] { return utf8_of(control("Comboregion")->GetToolTipText()); }),
            "click to change preference");
  EXPECT_TRUE(rows().empty());
}

TEST_F(Tables, DescriptionOfAToolIsShownInTheStatusBar) {
  std::optional<wxPoint> tool;
  ASSERT_TRUE(wait_until([&] {
    tool = find_label("author dvd", label_place::toolbar);
    return tool.has_value();
  }));
  hover_at(wxPoint(tool->x, tool->y + 150));
  hover_at(*tool);
  EXPECT_TRUE(wait_until([this] {
    return utf8_of(window_->GetStatusBar()->GetStatusText()) == "begin the authoring process";
  }));
}

TEST_F(Tables, TipOfAToolStandsBelowTheToolBar) {
  for (const char* const caption : {"add title", "menus"}) {
    std::optional<wxPoint> label;
    ASSERT_TRUE(wait_until([&] {
      label = find_label(caption, label_place::toolbar);
      return label.has_value();
    }));
    hover_at(wxPoint(label->x, label->y + 150));
    ASSERT_TRUE(wait_until([] { return !tip_on_screen(); }));
    hover_at(wxPoint(label->x, label->y - 25));  // on its picture
    ASSERT_TRUE(wait_until([] { return tip_on_screen().has_value(); })) << caption;
    const wxRect tip = *ask_ui([] { return tip_on_screen(); });
    const wxRect bar = ask_ui([this] { return window_->GetToolBar()->GetScreenRect(); });
    EXPECT_GT(tip.GetTop(), bar.GetBottom()) << caption;
    EXPECT_LT(tip.GetTop(), bar.GetBottom() + 40) << caption;
  }
}

TEST_F(Tables, AboutNamesTheProjectsThatAreUsed) {
  click_menu("tools", "about");
  ASSERT_TRUE(wait_until([] { return look_at_dialog().has_value(); }));
  const auto about = top_dialog();
  EXPECT_NE(about->text.find("dvdauthor package"), std::string::npos) << about->text;
  for (const char* credit :
       {"\n-dvdauthor http", "\n-mjpegtools http", "\n-graphicsmagick http", "\n-mkisofs http"})
    EXPECT_NE(about->text.find(credit), std::string::npos) << about->text;
  press("Return");
  EXPECT_TRUE(no_dialog());
}

TEST_F(Tables, CheckMarksFollowTheProject) {
  const auto checked = [this](const char* name) {
    return ask_ui([&] { return window_->bars().item(name)->IsChecked(); });
  };
  EXPECT_FALSE(checked("isocreate"));
  click_menu("file", "create iso after authoring");
  EXPECT_TRUE(wait_until([this] { return window_->shown_project().isocreate; }));
  EXPECT_TRUE(checked("isocreate"));
  click_menu("file", "clean up files after authoring");
  EXPECT_TRUE(wait_until([this] { return window_->shown_project().cleanup; }));
  EXPECT_TRUE(checked("cleanup"));
  click_menu("file", "clean up files after authoring");
  EXPECT_TRUE(wait_until([this] { return !window_->shown_project().cleanup; }));
  EXPECT_FALSE(checked("cleanup"));
}

}  // namespace
}  // namespace corvane::testing_support
