// The user guide: F1 opens the page about the window in which it is pressed, the page of keys says
// what the program does, and no page leads to one that is not there.
#include "ui/guide.h"

#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "support/environment_variable.h"
#include "ui/commands.h"
#include "ui/gtk_sight.h"
#include "ui/import/import_window.h"
#include "ui/main_window.h"
#include "ui/still/still_window.h"
#include "ui/widgets/wx_text.h"
#include "ui/window_fixture.h"

#include <wx/menuitem.h>
#include <wx/statusbr.h>

#include <cctype>
#include <cstdlib>
#include <filesystem>
#include <regex>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace corvane::testing_support {
namespace {

namespace fs = std::filesystem;

std::string page_text(const std::string& page) {
  const auto text = read_file(join_path(guide_folder(), page), 1 << 20);
  EXPECT_TRUE(text) << page;
  return text ? *text : std::string();
}

std::vector<std::string> found_in(const std::string& text, const char* pattern) {
  const std::regex wanted(pattern);
  std::vector<std::string> found;
  for (std::sregex_iterator at(text.begin(), text.end(), wanted), end; at != end; ++at)
    found.push_back((*at)[1]);
  return found;
}

/// What stands between the tag with this id and the end of its table.
std::string table_of(const std::string& text, const std::string& id) {
  const std::size_t begin = text.find("<table id=\"" + id + "\">");
  EXPECT_NE(begin, std::string::npos) << id;
  return begin == std::string::npos ? "" : text.substr(begin, text.find("</table>", begin) - begin);
}

using keys_and_meaning = std::set<std::pair<std::string, std::string>>;

keys_and_meaning rows_of_keys(const std::string& table) {
  const std::regex row(R"(<tr><td><kbd>([^<]*)</kbd></td><td>([^<]*)</td></tr>)");
  keys_and_meaning rows;
  for (std::sregex_iterator at(table.begin(), table.end(), row), end; at != end; ++at)
    rows.emplace((*at)[1], (*at)[2]);
  return rows;
}

std::string without_mnemonic(const char* caption) {
  return utf8_of(wxMenuItem::GetLabelText(caption));
}

char mnemonic_of(std::string_view caption) {
  const std::size_t at = caption.find('&');
  return at + 1 < caption.size() ? static_cast<char>(std::tolower(caption[at + 1])) : '\0';
}

class Guide : public window_test {
 protected:
  void install_browser() {
    const std::string program =
        folder_.add("bin/xdg-open", "#!/bin/sh\necho \"$1\" >'" + folder_.path("opened") + "'\n");
    fs::permissions(program, fs::perms::owner_all);
  }
  /// Presses F1 and sees which page is opened.
  void expect_page(const char* page) {
    fs::remove(folder_.path("opened"));
    press("F1");
    const std::string wanted = join_path(guide_folder(), page) + "\n";
    EXPECT_TRUE(wait_until([&] {
      return file_exists(folder_.path("opened")) && folder_.read("opened") == wanted;
    })) << page;
  }
  void expect_page_in(const char* window, const char* page) {
    SCOPED_TRACE(window);
    ASSERT_TRUE(window_comes(window));
    expect_page(page);
    close(window);
    EXPECT_TRUE(window_goes(window));
  }

  environment_variable path_{"PATH", folder_.path("bin") + ":" + std::getenv("PATH")};
};

TEST_F(Guide, EveryPageOfAWindowIsThere) {
  for (const guide_place& place : guide_places())
    EXPECT_TRUE(file_exists(join_path(guide_folder(), place.page))) << place.window;
}

TEST_F(Guide, NoPageLeadsToOneThatIsNotThere) {
  std::set<std::string> reached;
  for (const auto& entry : fs::directory_iterator(path_of(guide_folder()))) {
    const std::string page = text_of(entry.path().filename());
    if (!page.ends_with(".html"))
      continue;
    for (const std::string& link : found_in(page_text(page), "(?:href|src)=\"([^\"]*)\"")) {
      const std::string to = link.substr(0, link.find('#'));
      EXPECT_TRUE(to.empty() || file_exists(join_path(guide_folder(), to))) << page << ": " << link;
      const std::string place = link.find('#') == std::string::npos
                                    ? std::string()
                                    : " id=\"" + link.substr(link.find('#') + 1) + "\"";
      EXPECT_NE(page_text(to.empty() ? page : to).find(place), std::string::npos)
          << page << ": " << link;
      if (page == "index.html")
        reached.insert(to);
    }
  }
  for (const guide_place& place : guide_places())
    EXPECT_TRUE(reached.contains(place.page)) << place.page << " does not stand in the contents";
  EXPECT_TRUE(reached.contains("keys.html"));
}

TEST_F(Guide, ThePageOfKeysNamesEachKeyOfTheMenusAndNoOther) {
  keys_and_meaning expected;
  for (const menu& m : main_menus())
    for (const menu_item& item : m.items)
      if (*item.keys != '\0')
        expected.emplace(item.keys, without_mnemonic(item.caption));
  EXPECT_EQ(rows_of_keys(table_of(page_text("keys.html"), "menus")), expected);
}

TEST_F(Guide, ThePageOfKeysNamesTheFurtherKeysOfTheMainWindow) {
  keys_and_meaning expected;
  for (const command_key& key : main_keys())
    expected.emplace(key.keys, key.does);
  EXPECT_EQ(rows_of_keys(table_of(page_text("keys.html"), "further")), expected);
}

TEST_F(Guide, NoKeyAndNoMnemonicOfAMenuStandsForTwoThings) {
  std::set<std::string> keys;
  std::set<char> of_menus;
  for (const command_key& key : main_keys())
    EXPECT_TRUE(keys.insert(key.keys).second) << key.keys;
  for (const menu& m : main_menus()) {
    EXPECT_TRUE(of_menus.insert(mnemonic_of(m.caption)).second) << m.caption;
    EXPECT_NE(mnemonic_of(m.caption), '\0') << m.caption;
    std::set<char> of_items;
    for (const menu_item& item : m.items) {
      EXPECT_TRUE(*item.keys == '\0' || keys.insert(item.keys).second) << item.keys;
      if (item.kind == item_kind::separator || item.kind == item_kind::label)
        continue;
      EXPECT_NE(mnemonic_of(item.caption), '\0') << item.caption;
      EXPECT_TRUE(of_items.insert(mnemonic_of(item.caption)).second) << item.caption;
    }
  }
}

TEST_F(Guide, AnItemIsChosenByItsMnemonics) {
  install_browser();
  press("alt+h");
  ASSERT_TRUE(wait_until([] { return find_label("user guide", label_place::menu).has_value(); }));
  screenshot("help-menu");
  press("k");
  EXPECT_TRUE(wait_until([&] {
    return file_exists(folder_.path("opened")) &&
           folder_.read("opened") == join_path(guide_folder(), "keys.html") + "\n";
  }));
  press("alt+t");
  press("a");
  ASSERT_TRUE(wait_until([] { return look_at_dialog().has_value(); }));
  EXPECT_EQ(top_dialog()->text.find("This is a simple graphical front end"), 0U);
  press("Return");
  EXPECT_TRUE(no_dialog());
}

TEST_F(Guide, F1OpensThePageOfTheWindow) {
  install_browser();
  load(project_with_menus(1));
  click_row(0, "main");
  expect_page("main.html");
  EXPECT_TRUE(wait_until([this] {
    return utf8_of(window_->GetStatusBar()->GetStatusText()) ==
           "User guide: " + join_path(guide_folder(), "main.html");
  }));
  EXPECT_FALSE(top_dialog()) << "about is without a key";
  press("ctrl+h");
  expect_page_in("chapter", "chapters.html");
  press("ctrl+b");
  expect_page_in("Subtitles", "subtitles.html");
  press("ctrl+g");
  expect_page_in("language", "languages.html");
  on_ui([this] { window_->CallAfter([this] { open_import(*window_, {real_video()}); }); });
  expect_page_in("import", "import.html");
  press("ctrl+shift+e");
  expect_page_in("menumaker", "menu-maker.html");
  const std::string picture = folder_.path("still.png");
  ASSERT_EQ(std::system(("convert -size 120x90 xc:red '" + picture + "'").c_str()), 0);
  on_ui([&, this] {
    window_->CallAfter([=, this] { open_still_window(*window_, picture, false); });
  });
  expect_page_in("still", "stills.html");
  press("ctrl+j");
  expect_page_in("navcommands", "nav-commands.html");
  press("ctrl+k");
  expect_page_in("findings", "findings.html");
  press("ctrl+l");
  ASSERT_TRUE(window_comes("log"));
  expect_page("log.html");
}

TEST_F(Guide, IsThereDuringARunToo) {
  install_browser();
  on_ui([this] { window_->let_commands(false); });
  expect_page("main.html");
  fs::remove(folder_.path("opened"));
  click_menu("help", "keys");
  EXPECT_TRUE(wait_until([&] { return file_exists(folder_.path("opened")); }));
  on_ui([this] { window_->let_commands(true); });
}

TEST_F(Guide, F1OpensThePageOfAWindowOverAnother) {
  install_browser();
  load(project_with_menus(1));
  click_row(0, "main");
  press("ctrl+h");
  ASSERT_TRUE(window_comes("chapter"));
  press("alt+v");
  ASSERT_TRUE(wait_until([] { return look_at_dialog().has_value(); }));
  press("Return");
  ASSERT_TRUE(no_dialog());
  expect_page_in("vchapters", "chapters-editor.html");
  expect_page_in("chapter", "chapters.html");
}

TEST_F(Guide, F1OpensThePageOfTheMenuEditor) {
  install_browser();
  load(project_with_menus(1));
  press("ctrl+e");
  ASSERT_TRUE(window_comes("menuselect"));
  expect_page("menu-editor.html");
  double_click_row(0, "menuselect");
  expect_page_in("tsmenu", "menu-editor.html");
}

TEST_F(Guide, WithoutABrowserTheFileIsNamed) {
  for (const std::string folder : {"/usr/bin/", "/usr/local/bin/"})  // the robot's own
    if (file_exists(folder + "xdotool")) {
      fs::create_directories(folder_.path("bin"));
      fs::create_symlink(folder + "xdotool", folder_.path("bin/xdotool"));
    }
  const environment_variable nowhere("PATH", folder_.path("bin"));
  press("F1");
  ASSERT_TRUE(wait_until([] { return look_at_dialog().has_value(); }));
  const auto told = top_dialog();
  EXPECT_EQ(told->text,
            "The user guide could not be opened: xdg-open is not installed\n\nPlease "
            "open this file in a web browser:\n" +
                join_path(guide_folder(), "main.html"));
  EXPECT_EQ(told->over, "main");
  press("Return");
  EXPECT_TRUE(no_dialog());
}

}  // namespace
}  // namespace corvane::testing_support
