// The desktop's programs, with stand-ins on PATH that write down how they were called.
#include "platform/processes/desktop.h"
#include "support/environment_variable.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <thread>

namespace corvane {
namespace {

using testing_support::environment_variable;
using testing_support::temporary_folder;

class Desktop : public testing::Test {
 protected:
  void add_program(const std::string& name, const std::string& body) {
    const std::string file = folder.add("bin/" + name, "#!/bin/sh\n" + body + "\n");
    std::filesystem::permissions(file, std::filesystem::perms::owner_all);
  }
  /// A program that notes its arguments, a line each, and appears as a whole.
  void add_noting(const std::string& name) {
    add_program(name, "printf '%s\\n' " + name + " \"$@\" >'" + folder.path("part") + "'\n" +
                          "/bin/mv '" + folder.path("part") + "' '" + folder.path("noted") + "'");
  }
  std::string noted() {
    for (int i = 0; i < 1000 && !file_exists(folder.path("noted")); ++i)
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    return folder.read("noted");
  }

  temporary_folder folder;
  environment_variable path{"PATH", folder.path("bin")};
  std::unique_ptr<desktop> user_desktop = make_desktop();
};

TEST_F(Desktop, ShowsAPageWithXdgOpen) {
  add_noting("xdg-open");
  EXPECT_EQ(user_desktop->show_page("/a b/$c;'d'.html"), std::nullopt);
  EXPECT_EQ(noted(), "xdg-open\n/a b/$c;'d'.html\n");
}

TEST_F(Desktop, DoesNotWaitForTheBrowser) {
  add_program("xdg-open", "exec /bin/sleep 5");
  const auto begin = std::chrono::steady_clock::now();
  EXPECT_EQ(user_desktop->show_page("/a.html"), std::nullopt);
  user_desktop.reset();
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(4));
}

TEST_F(Desktop, TellsThatThereIsNoBrowser) {
  EXPECT_EQ(user_desktop->show_page("/a.html"), "xdg-open is not installed");
}

TEST_F(Desktop, EditsATextWithWhatOpensPlainText) {
  add_program("xdg-mime", "[ \"$*\" = 'query default text/plain' ] && echo editor.desktop");
  add_noting("gtk-launch");
  EXPECT_EQ(user_desktop->edit_text("/a b/menu.avs"), std::nullopt);
  EXPECT_EQ(noted(), "gtk-launch\neditor.desktop\n/a b/menu.avs\n");
}

TEST_F(Desktop, EditsATextWithXdgOpenWhenNothingOpensPlainText) {
  add_program("xdg-mime", "echo");
  add_noting("gtk-launch");
  add_noting("xdg-open");
  EXPECT_EQ(user_desktop->edit_text("/menu.avs"), std::nullopt);
  EXPECT_EQ(noted(), "xdg-open\n/menu.avs\n");
}

// The default may name an entry of a program that is no longer installed.
TEST_F(Desktop, EditsATextWithXdgOpenWhenTheEditorCannotBeStarted) {
  add_program("xdg-mime", "echo gone.desktop");
  add_program("gtk-launch", "exit 1");
  add_noting("xdg-open");
  EXPECT_EQ(user_desktop->edit_text("/a b/$m;'e'.avs"), std::nullopt);
  EXPECT_EQ(noted(), "xdg-open\n/a b/$m;'e'.avs\n");
}

TEST_F(Desktop, RunsAProgramAndWaits) {
  add_noting("update-mime-database");
  EXPECT_EQ(user_desktop->run({"update-mime-database", "/my data/mime"}), std::nullopt);
  EXPECT_EQ(folder.read("noted"), "update-mime-database\n/my data/mime\n");
}

TEST_F(Desktop, TellsHowAProgramFailed) {
  add_program("xdg-mime", "exit 3");
  EXPECT_EQ(user_desktop->run({"xdg-mime", "default"}), "xdg-mime ended with status 3");
  EXPECT_EQ(user_desktop->run({"update-mime-database"}), "update-mime-database is not installed");
}

TEST_F(Desktop, HasNoRegistryHere) {
  EXPECT_EQ(user_desktop->import_registry("/a.reg"), "this system has no registry");
}

TEST(DesktopFolders, AreThoseOfTheEnvironmentOrBelowHome) {
  const environment_variable home("HOME", "/home/anna");
  {
    const environment_variable data("XDG_DATA_HOME", "/data");
    const environment_variable config("XDG_CONFIG_HOME", "/config");
    EXPECT_EQ(user_desktop_folders().data, "/data");
    EXPECT_EQ(user_desktop_folders().config, "/config");
  }
  const environment_variable data("XDG_DATA_HOME", "relative");
  const environment_variable config("XDG_CONFIG_HOME", "");
  EXPECT_EQ(user_desktop_folders().data, "/home/anna/.local/share");
  EXPECT_EQ(user_desktop_folders().config, "/home/anna/.config");
}

}  // namespace
}  // namespace corvane
