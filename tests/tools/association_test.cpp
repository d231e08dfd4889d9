// The association of project files: the texts that make it, and the command's conversation on
// either system.
#include "tools/association.h"

#include "support/command_test.h"
#include "support/recorded_desktop.h"

#include <filesystem>

namespace corvane {
namespace {

using testing_support::recorded_desktop;
using testing_support::rows;

bool holds(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

// The registry script ----------------------------------------------------------------------------

TEST(RegistryScript, HoldsTheKeysAndValuesInOrder) {
  EXPECT_EQ(registry_script("C:\\Tools\\Author"),
            "REGEDIT4\r\n"
            "\r\n"
            "[HKEY_CLASSES_ROOT\\.cvp]\r\n"
            "@=\"cvp_auto_file\"\r\n"
            "\r\n"
            "[HKEY_CLASSES_ROOT\\cvp_auto_file]\r\n"
            "@=\"corvane project\"\r\n"
            "\"EditFlags\"=dword:00000000\r\n"
            "\"BrowserFlags\"=dword:00000008\r\n"
            "\r\n"
            "[HKEY_CLASSES_ROOT\\cvp_auto_file\\DefaultIcon]\r\n"
            "@=\"C:\\\\Tools\\\\Author\\\\corvane.exe,0\"\r\n"
            "\r\n"
            "[HKEY_CLASSES_ROOT\\cvp_auto_file\\shell]\r\n"
            "@=\"\"\r\n"
            "\r\n"
            "[HKEY_CLASSES_ROOT\\cvp_auto_file\\shell\\open]\r\n"
            "\r\n"
            "[HKEY_CLASSES_ROOT\\cvp_auto_file\\shell\\open\\command]\r\n"
            "@=\"\\\"C:\\\\Tools\\\\Author\\\\corvane.exe\\\" %1\"\r\n");
}

TEST(RegistryScript, OfAProgramAtADriveRootHasOneSeparator) {
  const std::string text = registry_script("C:\\");
  EXPECT_TRUE(holds(text, "@=\"C:\\\\corvane.exe,0\"\r\n"));
  EXPECT_TRUE(holds(text, "@=\"\\\"C:\\\\corvane.exe\\\" %1\"\r\n"));
}

TEST(RegistryScript, OfAProgramOnANetworkShareDoublesBothSeparators) {
  EXPECT_TRUE(holds(registry_script("\\\\server\\share"),
                    "@=\"\\\\\\\\server\\\\share\\\\corvane.exe,0\"\r\n"));
}

// The Linux texts --------------------------------------------------------------------------------

TEST(DesktopEntry, StartsTheProgramWithTheFileAsFirstArgument) {
  EXPECT_TRUE(
      holds(desktop_entry("/opt/my programs/corvane"), "\nExec=\"/opt/my programs/corvane\" %f\n"));
}

// xdg-open of a plain window manager would look for a program whose name has quotes in it.
TEST(DesktopEntry, HasNoQuotesWhereTheProgramNeedsNone) {
  EXPECT_TRUE(holds(desktop_entry("/opt/corvane-0.997/bin/corvane"),
                    "\nExec=/opt/corvane-0.997/bin/corvane %f\n"));
  for (const char special : std::string_view(" \t\n\"'\\><~|&;$*?#()`%"))
    EXPECT_TRUE(holds(desktop_entry(std::string("/a") + special + "b"), "\nExec=\"/a")) << special;
}

TEST(DesktopEntry, QuotesWhatIsSpecialInACommand) {
  EXPECT_TRUE(holds(desktop_entry("/a$b/`c`/\"d\"/e\\f/50%/corvane"),
                    "\nExec=\"/a\\\\$b/\\\\`c\\\\`/\\\\\"d\\\\\"/e\\\\\\\\f/50%%/corvane\" %f\n"));
}

TEST(Mimeapps, NamesCorvaneOnlyAsFirstDefault) {
  const std::string line = "application/x-corvane-project=corvane.desktop\n";
  EXPECT_FALSE(is_default_in(""));
  EXPECT_FALSE(is_default_in(line));
  EXPECT_TRUE(is_default_in("[Default Applications]\n" + line));
  EXPECT_TRUE(is_default_in("[Default Applications]\nimage/png=x.desktop\n" + line));
  EXPECT_FALSE(is_default_in("[Added Associations]\n" + line));
  EXPECT_FALSE(is_default_in("[Default Applications]\n[Added Associations]\n" + line));
  EXPECT_FALSE(is_default_in(
      "[Default Applications]\napplication/x-corvane-project=other.desktop;corvane.desktop;\n"));
}

TEST(Mimeapps, WithoutCorvaneKeepsEverythingElse) {
  EXPECT_EQ(without_corvane(""), "");
  EXPECT_EQ(without_corvane("[Default Applications]\n"
                            "image/png=x.desktop\n"
                            "application/x-corvane-project=corvane.desktop\n"
                            "text/plain=corvane.desktop\n"
                            "\n"
                            "[Added Associations]\n"
                            "application/x-corvane-project=corvane.desktop;other.desktop;\n"),
            "[Default Applications]\n"
            "image/png=x.desktop\n"
            "text/plain=corvane.desktop\n"
            "\n"
            "[Added Associations]\n"
            "application/x-corvane-project=other.desktop;\n");
}

// The command on Windows -------------------------------------------------------------------------

class Association : public testing_support::command_test {
 protected:
  Association() {
    user_desktop.effects["xdg-mime"] = [this] { set_default(); };
  }
  association_equipment equipment(path_style style) {
    return {app,          "/opt/corvane/corvane",
            "<svg/>",     {folder.path("data"), folder.path("config")},
            user_desktop, style};
  }
  association_result on_windows() { return register_command(doc, equipment(path_style::windows)); }
  association_result on_linux() { return register_command(doc, equipment(path_style::posix)); }

  void expect_note(const std::string& text) { ask.expect(box(text, icon::information)); }
  void expect_done() { expect_note("Project files (.cvp) are now opened with Corvane."); }
  void expect_remove_question(answer reply) {
    ask.expect(
        box("Project files (.cvp) are opened with Corvane already.  Remove this association?",
            icon::information, buttons::yes_no),
        reply);
  }
  /// What xdg-mime does.
  void set_default() {
    folder.add("config/mimeapps.list",
               "[Default Applications]\nimage/png=x.desktop\n"
               "application/x-corvane-project=corvane.desktop\n");
  }
  bool there(const std::string& name) { return file_exists(folder.path("data/" + name)); }

  std::string app = folder.path("app");
  bool made = (make_folders(app), true);
  recorded_desktop user_desktop;
  const rows linux_files = {"applications/corvane.desktop", "mime/packages/corvane.xml",
                            "icons/hicolor/scalable/apps/corvane.svg",
                            "icons/hicolor/scalable/mimetypes/application-x-corvane-project.svg"};
  const rows refreshed = {"update-mime-database " + folder.path("data") + "/mime",
                          "update-desktop-database " + folder.path("data") + "/applications"};
};

TEST_F(Association, OnWindowsHandsTheScriptToTheRegistryEditor) {
  EXPECT_EQ(on_windows(), association_result::associated);
  EXPECT_EQ(folder.read("app/extension.reg"), registry_script(app));
  EXPECT_EQ(folder.read("app/removeextension.reg"), registry_removal_script());
  EXPECT_EQ(user_desktop.asked, rows{"import " + join_path(app, "extension.reg")});
}

TEST_F(Association, OnWindowsTwiceOverwritesTheScriptAndImportsTheSameAgain) {
  folder.add("app/extension.reg", std::string(10000, 'x'));
  EXPECT_EQ(on_windows(), association_result::associated);
  const std::string first = folder.read("app/extension.reg");
  EXPECT_EQ(on_windows(), association_result::associated);
  EXPECT_EQ(first, registry_script(app));
  EXPECT_EQ(folder.read("app/extension.reg"), first);
  EXPECT_EQ(user_desktop.asked, rows(2, "import " + join_path(app, "extension.reg")));
}

TEST_F(Association, OnWindowsAnEditorThatDoesNotStartIsTold) {
  user_desktop.fails = "regedit.exe: not found";
  expect_error(
      "Project files could not be associated with Corvane: the registry editor could not be "
      "started: regedit.exe: not found.");
  EXPECT_EQ(on_windows(), association_result::incomplete);
}

TEST_F(Association, OnWindowsAScriptThatCannotBeWrittenIsTold) {
  const std::string file = join_path(app, "extension.reg");
  make_folders(file + "/in the way");
  const failure why = write_file(file, "x");
  ASSERT_TRUE(why);
  expect_error("Project files could not be associated with Corvane: the file \"" + file +
               "\" could not be written: " + *why + ".");
  EXPECT_EQ(on_windows(), association_result::incomplete);
  EXPECT_TRUE(user_desktop.asked.empty());
}

// The command on Linux ---------------------------------------------------------------------------

TEST_F(Association, OnLinuxWritesTheFilesOfTheUserAndTellsTheDesktop) {
  expect_done();
  EXPECT_EQ(on_linux(), association_result::associated);
  EXPECT_EQ(folder.read("data/applications/corvane.desktop"),
            desktop_entry("/opt/corvane/corvane"));
  EXPECT_EQ(folder.read("data/mime/packages/corvane.xml"), mime_type_xml());
  EXPECT_EQ(folder.read("data/icons/hicolor/scalable/apps/corvane.svg"), "<svg/>");
  EXPECT_EQ(folder.read("data/icons/hicolor/scalable/mimetypes/application-x-corvane-project.svg"),
            "<svg/>");
  EXPECT_EQ(user_desktop.asked,
            (rows{refreshed[0], refreshed[1],
                  "xdg-mime default corvane.desktop application/x-corvane-project"}));
}

TEST_F(Association, OnLinuxAgainOffersToRemoveItAndNoKeepsAll) {
  expect_done();
  on_linux();
  set_default();
  user_desktop.asked.clear();
  expect_remove_question(answer::no);
  EXPECT_EQ(on_linux(), association_result::kept);
  EXPECT_TRUE(user_desktop.asked.empty());
  for (const std::string& file : linux_files)
    EXPECT_TRUE(there(file)) << file;
}

TEST_F(Association, OnLinuxYesTakesEverythingBack) {
  expect_done();
  on_linux();
  set_default();
  user_desktop.asked.clear();
  expect_remove_question(answer::yes);
  expect_note("Project files (.cvp) are no longer opened with Corvane.");
  EXPECT_EQ(on_linux(), association_result::removed);
  for (const std::string& file : linux_files)
    EXPECT_FALSE(there(file)) << file;
  EXPECT_EQ(folder.read("config/mimeapps.list"), "[Default Applications]\nimage/png=x.desktop\n");
  EXPECT_EQ(user_desktop.asked, refreshed);
}

TEST_F(Association, OnLinuxWhatIsNotWholeIsMadeAnewWithoutAQuestion) {
  for (const std::string& file : linux_files) {
    expect_done();
    on_linux();
    set_default();
    folder.add("data/" + file, "of an earlier version");
    expect_done();
    EXPECT_EQ(on_linux(), association_result::associated) << file;
    EXPECT_NE(folder.read("data/" + file), "of an earlier version");
    folder.add("config/mimeapps.list", "");
  }
}

TEST_F(Association, OnLinuxAnotherDefaultProgramIsReplaced) {
  expect_done();
  on_linux();
  folder.add("config/mimeapps.list",
             "[Default Applications]\napplication/x-corvane-project=other.desktop\n");
  expect_done();
  EXPECT_EQ(on_linux(), association_result::associated);
}

TEST_F(Association, OnLinuxProgramsThatFailAreAllTold) {
  user_desktop.broken = {{"update-mime-database", "update-mime-database ended with status 1"},
                         {"xdg-mime", "xdg-mime is not installed"}};
  expect_refusal(
      "The association of project files is not complete:\r\n"
      "update-mime-database ended with status 1\r\n"
      "xdg-mime is not installed");
  EXPECT_EQ(on_linux(), association_result::incomplete);
}

// xdg-mime ends with status 0 also when it could not write its list.
TEST_F(Association, OnLinuxADefaultThatWasNotNotedIsTold) {
  user_desktop.effects.clear();
  expect_refusal("The association of project files is not complete:\r\nthe file \"" +
                 folder.path("config/mimeapps.list") +
                 "\" does not name Corvane: xdg-mime did not write it");
  EXPECT_EQ(on_linux(), association_result::incomplete);
}

TEST_F(Association, OnLinuxAFileThatCannotBeWrittenIsToldAndNothingIsRun) {
  const std::string file = folder.path("data/mime/packages/corvane.xml");
  make_folders(file + "/in the way");
  const failure why = write_file(file, "x");
  ASSERT_TRUE(why);
  expect_refusal("The association of project files is not complete:\r\nthe file \"" + file +
                 "\" could not be written: " + *why);
  EXPECT_EQ(on_linux(), association_result::incomplete);
  EXPECT_TRUE(user_desktop.asked.empty());
}

}  // namespace
}  // namespace corvane
