// Every item of menu bar, toolbar and drop-downs, clicked one after the other, over a project with
// a title and two menus and over an empty one: what it opens is seen, and closed again.
#include "menus/menu_picker.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "support/environment_variable.h"
#include "ui/command_bars.h"
#include "ui/commands.h"
#include "ui/gtk_sight.h"
#include "ui/guide.h"
#include "ui/main_window.h"
#include "ui/widgets/wx_text.h"
#include "ui/window_fixture.h"

#include <wx/menuitem.h>
#include <wx/textctrl.h>

#include <cstdlib>
#include <filesystem>
#include <functional>
#include <map>
#include <string_view>

namespace corvane::testing_support {
namespace {

class Walk : public window_test {
 protected:
  void SetUp() override {
    window_test::SetUp();
    const std::string program =
        folder_.add("bin/xdg-open", "#!/bin/sh\necho \"$1\" >>'" + folder_.path("opened") + "'\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
  }

  static void expect_window(const char* name) {
    EXPECT_TRUE(window_comes(name)) << name;
    close(name);
    EXPECT_TRUE(window_goes(name)) << name;
  }
  static void expect_message(const std::string& begin) {
    ASSERT_TRUE(wait_until([&] {
      const auto dialog = look_at_dialog();
      return dialog && dialog->text.starts_with(begin);
    })) << begin;
    press("Return");
    EXPECT_TRUE(wait_until([&] {
      const auto dialog = look_at_dialog();
      return !dialog || !dialog->text.starts_with(begin);
    })) << begin;
  }
  void expect_check(const char* item, bool project::*flag) {
    EXPECT_TRUE(wait_until([&] { return window_->shown_project().*flag; })) << item;
    EXPECT_TRUE(ask_ui([&] { return window_->bars().item(item)->IsChecked(); })) << item;
  }
  static wxTextCtrl* log_text() { return dynamic_cast<wxTextCtrl*>(control("Text1", "log")); }

  static void expect_nothing() {
    EXPECT_FALSE(top_dialog());
    EXPECT_TRUE(ask_ui([] { return control("main")->IsEnabled(); }));
  }

  using effect_map = std::map<std::string, std::function<void()>>;

  /// What an item does to a project, by its name, its caption or its key in the tables.
  effect_map effects() {
    const auto file = [](const char* title) { return [title] { cancel_dialog(title); }; };
    const auto opens = [](const char* name) { return [name] { expect_window(name); }; };
    const auto says = [](const char* begin) { return [begin] { expect_message(begin); }; };
    const auto opens_page = [this](const char* page) {
      return [this, page] {
        EXPECT_TRUE(wait_until([&] {
          return file_exists(folder_.path("opened")) &&
                 folder_.read("opened").ends_with(join_path(guide_folder(), page) + "\n");
        })) << page;
      };
    };
    effect_map all = {
        {"open", file("select video stream")},
        {"author", file("enter a folder name to create the dvd")},
        {"loadproject",
         [] {
           answer_message("overwrite currect project?", "OK");
           cancel_dialog("load corvane project");
         }},
        {"saveproject", file("save corvane project")},
        {"showlog",
         [] {
           EXPECT_TRUE(window_comes("log"));
           on_ui([] {
             log_text()->ChangeValue("of an earlier run");
             control("log")->Hide();  // it may lie over the menus
           });
         }},
        {"clearlog",
         [] {
           EXPECT_TRUE(
               wait_until([] { return log_text()->GetValue() == "Corvane 0.997 - 1/2/2005\n"; }));
         }},
        {"isocreate", [this] { expect_check("isocreate", &project::isocreate); }},
        {"editxml",
         [this] {
           expect_message("This will allow you to customize the config.xml file");
           expect_check("editxml", &project::editxml);
         }},
        {"cleanup", [this] { expect_check("cleanup", &project::cleanup); }},
        {"newproject",
         [] {
           expect_message("Do you want to save project?");
           cancel_dialog("save corvane project");
         }},
        {"savefile",
         [this] {
           EXPECT_TRUE(wait_until([this] { return window_->shown_project().saved == 1; }));
         }},
        {"import", file("import films")},
        {"undo", [this] { EXPECT_FALSE(window_->shown_project().isocreate); }},
        {"redo", [this] { EXPECT_TRUE(window_->shown_project().isocreate); }},
        {"addmenu", file("select video stream")},
        {"editmenu", file(picker_edit_caption)},
        {"remove", file(picker_erase_caption)},
        {"still", file("select a 720x480 or 720x576 jpeg image")},
        {"framecount", file("m2v still framecount")},
        {"avisynth",
         [] {
           expect_message("This will generate a simple avisynth script");
           cancel_dialog("save the avisynth script");
         }},
        {"makemenus", opens("menumaker")},
        {"menuup", file("Please select menu to move up")},
        {"menudown", file("Please select menu to move down")},
        {"copymenu", file("Please select menu to copy")},
        {"menuvideo", file("Please select menu to change the video of")},
        {"menuaudio", file("Please select menu to change the audio of")},
        {"addaudiostream", file("select audio stream")},
        {"addsubs", opens("Subtitles")},
        {"edittags", opens("language")},
        {"editdelay", file("A/V sync delay")},
        {"jumptable", says("Jumptable cannot be enabled/disabled")},
        {"layoutprint",
         [this] {
           EXPECT_TRUE(wait_until([this] { return file_exists(folder_.path("opened")); }));
           EXPECT_EQ(folder_.read("opened"), app_ + "/layout.html\n");
         }},
        {"guide", opens_page("main.html")},
        {"keys", opens_page("keys.html")},
        {"register", says("Project files (.cvp) are now opened with Corvane.")},
        {"mnuabout", says("This is a simple graphical front end written for the dvdauthor")},
        {"check", opens("findings")},
        {"verify", file("choose the VIDEO_TS.IFO or the image of a disc")},
        {"lastrun", says("No disc has been authored since the program was started")},
        {"discmap", opens("discmap")},
        {"chapters", opens("chapter")},
        {"nav cmds", opens("navcommands")},
        {"extras",
         [] {
           click_menu_item("add/edit subtitles");
           expect_window("Subtitles");
         }},
        {"remove title",
         [this] {
           EXPECT_TRUE(wait_until([this] { return window_->shown_project().List1.empty(); }));
         }},
    };
    all["menus"] = all["editmenu"];
    return all;
  }

  /// The same without a title and a menu.
  effect_map effects_on_nothing() {
    const auto says = [](const char* begin) { return [begin] { expect_message(begin); }; };
    effect_map all = effects();
    all["author"] = all["avisynth"] = says("please add more titles");
    all["loadproject"] = [] { cancel_dialog("load corvane project"); };
    for (const char* const of_menus :
         {"editmenu", "remove", "menuup", "menudown", "copymenu", "menuvideo", "menuaudio"})
      all[of_menus] = expect_nothing;
    all["check"] = says("Please add a title first: there is nothing to check yet.");
    all["makemenus"] = says("Please add a title first: menus are made of the titles.");
    all["addaudiostream"] = says("Please select a title to add an audio stream to.");
    all["addsubs"] = says("Please select a title to add a subtitle to.");
    all["editdelay"] = says("Please select a title to adjust delays.");
    all["jumptable"] = [this] {
      expect_message("This will allow titles to jump to any menu");
      expect_check("jumptable", &project::jumptable);
    };
    all["chapters"] = says("Please select a title to add chapters to.");
    all["newproject"] = [this] { EXPECT_FALSE(window_->shown_project().isocreate); };
    all["savefile"] = [] { cancel_dialog("save corvane project"); };
    all["undo"] = [this] { EXPECT_FALSE(window_->shown_project().jumptable); };
    all["redo"] = [this] { EXPECT_TRUE(window_->shown_project().jumptable); };
    all["remove title"] = says("Please select a title first to remove.");
    all["menus"] = all["addmenu"];
    all["extras"] = [] {
      click_menu_item("edit language tags");
      expect_window("language");
    };
    return all;
  }

  /// Adds what goes by several names.
  static effect_map with_namesakes(effect_map all) {
    for (const auto& [other, name] :
         std::map<std::string, std::string>{{"add title", "open"},
                                            {"author dvd", "author"},
                                            {"add", "addmenu"},
                                            {"edit", "editmenu"},
                                            {"addaudio", "addaudiostream"},
                                            {"subtitles", "addsubs"}})
      all[other] = all.at(name);
    return all;
  }

  void load_project() {
    load(project_with_menus(1));
    click_row(0, "main");
  }

  /// "undo" names what it undoes.
  wxString label_of_item(const char* name) const {
    return window_->bars().item(name)->GetItemLabelText();
  }

  /// Clicks on every item of the menu bar but "quit".
  void click_menu_bar(const effect_map& all) {
    for (const menu& m : main_menus())
      for (const menu_item& item : m.items) {
        if (item.kind == item_kind::label || item.kind == item_kind::separator ||
            item.kind == item_kind::submenu || std::string_view(item.name) == "quit")
          continue;
        SCOPED_TRACE(item.name);
        ASSERT_TRUE(all.contains(item.name));
        ASSERT_NE(item.run, nullptr);
        click_menu(utf8_of(wxMenuItem::GetLabelText(m.caption)),
                   utf8_of(ask_ui([&] { return label_of_item(item.name); })));
        all.at(item.name)();
        ASSERT_TRUE(no_dialog());
      }
  }

  /// Clicks on every button and every item of its drop-down; "remove title" comes last.
  static void click_toolbar(const effect_map& all) {
    constexpr std::string_view last = "remove title";
    for (const tool& t : main_tools()) {
      SCOPED_TRACE(t.caption);
      ASSERT_TRUE(all.contains(t.caption));
      if (t.caption != last) {
        click_tool(t.caption);
        all.at(t.caption)();
        ASSERT_TRUE(no_dialog());
      }
      for (const drop_item& item : t.drop) {
        SCOPED_TRACE(item.key);
        ASSERT_TRUE(all.contains(item.key));
        click_tool_arrow(t.caption);
        click_menu_item(item.caption);
        all.at(item.key)();
        ASSERT_TRUE(no_dialog());
      }
    }
    click_tool(std::string(last));
    all.at(std::string(last))();
  }

  environment_variable path_{"PATH", folder_.path("bin") + ":" + std::getenv("PATH")};
  environment_variable data_{"XDG_DATA_HOME", folder_.path("data")};
};

TEST_F(Walk, OverTheMenuBar) {
  load_project();
  click_menu_bar(with_namesakes(effects()));
}

TEST_F(Walk, TheLineOfTheLastDiscOpensItsFolder) {
  add_title(real_video(), real_audio());
  click_tool("author dvd");
  answer_file("enter a folder name to create the dvd", folder_.path("disc"));
  EXPECT_TRUE(wait_until([] { return look_at_dialog().has_value(); }, 60));
  press("Escape");
  ASSERT_TRUE(wait_until([] { return is_seen("lastdisc"); }));
  click_button("open folder");
  EXPECT_TRUE(wait_until([this] { return file_exists(folder_.path("opened")); }));
  EXPECT_EQ(folder_.read("opened"), folder_.path("disc") + "\n");
}

// The line of findings is made after that of the disc.
TEST_F(Walk, TheLinesHaveTheKeysFromAboveWhicheverCameFirst) {
  add_title(real_video(), real_audio());
  click_tool("author dvd");
  answer_file("enter a folder name to create the dvd", folder_.path("disc"));
  EXPECT_TRUE(wait_until([] { return look_at_dialog().has_value(); }, 60));
  press("Escape");
  ASSERT_TRUE(wait_until([] { return is_seen("lastdisc"); }));
  add_title(real_pal_video(), real_audio());
  ASSERT_TRUE(wait_until([] { return is_seen("showfindings"); }));
  const bool in_order = ask_ui([] {
    const wxWindowList& all = control("lastdisc")->GetParent()->GetChildren();
    return all.IndexOf(control("showfindings")) < all.IndexOf(control("openfolder"));
  });
  EXPECT_TRUE(in_order);
}

TEST_F(Walk, OverTheMenuBarWithoutAProject) {
  click_menu_bar(with_namesakes(effects_on_nothing()));
}

TEST_F(Walk, OverTheToolbarAndItsDropDowns) {
  load_project();
  click_toolbar(with_namesakes(effects()));
}

TEST_F(Walk, OverTheToolbarAndItsDropDownsWithoutAProject) {
  click_toolbar(with_namesakes(effects_on_nothing()));
}

}  // namespace
}  // namespace corvane::testing_support
