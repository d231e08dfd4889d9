// The report, the script for a menu and the association of project files, from the window.
#include "platform/files/program_folder.h"
#include "support/environment_variable.h"
#include "tools/association.h"
#include "ui/main_window.h"
#include "ui/window_fixture.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <filesystem>

namespace corvane::testing_support {
namespace {

class SideDocuments : public window_test {
 protected:
  /// A program on PATH that notes its arguments, a line each, and appears as a whole.
  void add_noting(const std::string& name) {
    const std::string part = folder_.path("part"), noted = folder_.path("noted");
    const std::string program =
        folder_.add("bin/" + name, "#!/bin/sh\nprintf '%s\\n' " + name + " \"$@\" >'" + part +
                                       "'\nmv '" + part + "' '" + noted + "'\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
  }
  std::string noted() {
    EXPECT_TRUE(wait_until([this] { return file_exists(folder_.path("noted")); }));
    return folder_.read("noted");
  }
  std::string output_of(const std::string& command) {
    const std::string file = folder_.path("output");
    EXPECT_EQ(std::system((command + " >'" + file + "' 2>&1").c_str()), 0) << command;
    return folder_.read("output");
  }

  environment_variable path_{"PATH", folder_.path("bin") + ":" + std::getenv("PATH")};
  environment_variable data_{"XDG_DATA_HOME", folder_.path("data")};
};

TEST_F(SideDocuments, ReportOpensInTheBrowser) {
  add_noting("xdg-open");
  load(project_with_menus(2));
  press("ctrl+r");
  EXPECT_EQ(noted(), "xdg-open\n" + app_ + "/layout.html\n");
  EXPECT_THAT(folder_.read("program/layout.html"),
              testing::AllOf(
                  testing::HasSubstr("This DVD contains:2 titles\r\n2 menus\r\n"),
                  testing::HasSubstr("<li type=disc>menu1:intro.m2v/intro.ac3  (2 buttons)\r\n")));
  EXPECT_TRUE(no_dialog());
}

TEST_F(SideDocuments, MenuScriptOpensInTheEditor) {
  add_noting("gtk-launch");
  const std::string answers = folder_.add("bin/xdg-mime", "#!/bin/sh\necho editor.desktop\n");
  std::filesystem::permissions(answers, std::filesystem::perms::owner_all);
  add_title(file("our summer.m2v"), file("a.ac3"));
  click_menu("menus", "create motion menu script");
  EXPECT_EQ(answer_message("This will generate a simple avisynth script based on the titles that "
                           "are loaded.  Be sure to edit this script for your needs, then encode "
                           "in an mpeg encoder to an mpeg2 elementry stream.",
                           "OK")
                .picture,
            "info");
  answer_file("save the avisynth script", folder_.path("menu"));
  const seen_dialog told = answer_message(
      "Script created.  Make sure that the latest Avisynth (2.5.5 or greater) is installed and "
      "that mpegdecoder.dll is in the plugins directory to use this script.  Mpegdecoder.dll can "
      "be downloaded at http://avisynth.nl/index.php/External_filters. \nIf you choose to use "
      "rectangular buttons for the menu, the coordinates needed are located at the bottom of the "
      "script.\n   Edit script now?",
      "OK");
  EXPECT_THAT(told.buttons, testing::UnorderedElementsAre("OK", "Cancel"));
  EXPECT_EQ(noted(), "gtk-launch\neditor.desktop\n" + folder_.path("menu.avs") + "\n");
  EXPECT_THAT(folder_.read("menu.avs"), testing::HasSubstr("TitleText1=\"our summer\"\r\n"));
}

TEST_F(SideDocuments, MenuScriptWithoutATitleIsRefused) {
  press("ctrl+shift+y");
  EXPECT_EQ(answer_message("please add more titles", "OK").picture, "warning");
}

TEST_F(SideDocuments, ProjectFilesAreAssociatedAndTakenBack) {
  const std::string ask_default = "xdg-mime query default application/x-corvane-project";
  click_menu("tools", "register .cvp extension");
  answer_message("Project files (.cvp) are now opened with Corvane.", "OK");
  EXPECT_EQ(output_of(ask_default), "corvane.desktop\n");
  const std::string entry = folder_.path("data/applications/corvane.desktop");
  EXPECT_EQ(output_of("desktop-file-validate '" + entry + "'"), "");
  EXPECT_EQ(folder_.read("data/applications/corvane.desktop"), desktop_entry(own_executable()));
  const std::string picture = folder_.read("data/icons/hicolor/scalable/apps/corvane.svg");
  EXPECT_THAT(picture, testing::HasSubstr("<svg"));
  const std::string project = folder_.add("my disc.cvp");
  EXPECT_THAT(output_of("gio info -a standard::content-type '" + project + "'"),
              testing::HasSubstr("standard::content-type: application/x-corvane-project\n"));

  click_menu("tools", "register .cvp extension");
  const std::string question =
      "Project files (.cvp) are opened with Corvane already.  Remove this association?";
  answer_message(question, "No");
  EXPECT_EQ(output_of(ask_default), "corvane.desktop\n");
  click_menu("tools", "register .cvp extension");
  answer_message(question, "Yes");
  answer_message("Project files (.cvp) are no longer opened with Corvane.", "OK");
  EXPECT_EQ(output_of(ask_default), "");
  EXPECT_FALSE(file_exists(entry));
}

}  // namespace
}  // namespace corvane::testing_support
