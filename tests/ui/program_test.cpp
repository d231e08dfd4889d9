// The program itself, started as a user starts it.
#include "platform/files/program_folder.h"
#include "support/temporary_folder.h"
#include "ui/robot.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

namespace corvane::testing_support {
namespace {

bool wait_for(const std::function<bool()>& condition) {
  for (int i = 0; i < 200; ++i) {
    if (condition())
      return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(100));
  }
  return false;
}

/// Whether a window with this title is on the screen, waited for. (Not one of this process.)
bool window_comes(const std::string& title) {
  const std::string command =
      "xdotool search --onlyvisible --name '^" + title + "$' >/dev/null 2>&1";
  return wait_for([&] { return std::system(command.c_str()) == 0; });
}

/// Whether no such window is left, waited for.
bool window_goes(const std::string& title) {
  const std::string command = "xdotool search --name '^" + title + "$' >/dev/null 2>&1";
  return wait_for([&] { return std::system(command.c_str()) != 0; });
}

class Program : public testing::Test {
 protected:
  /// Variables, as the shell sets them, that keep what is started in the test's folder.
  std::string surroundings() const {
    return "CORVANE_HOME='" + folder_.path("program") + "' XDG_CONFIG_HOME='" +
           folder_.path("config") + "' XDG_DATA_HOME='" + folder_.path("data") + "' ";
  }

  /// Starts corvane in the test's folder with these arguments (as the shell reads them).
  void start(const std::string& arguments, const std::string& locale = "C.UTF-8",
             const std::string& standard_files = ">output 2>&1") {
    const std::string own = own_executable();
    const std::string corvane = own.substr(0, own.rfind('/')) + "/corvane";
    const std::string command = "cd '" + folder_.path() + "' && " + surroundings() +
                                "LC_ALL=" + locale + " '" + corvane + "' " + arguments + " " +
                                standard_files + " & echo $! >'" + folder_.path("pid") + "'";
    ASSERT_EQ(std::system(command.c_str()), 0);
    ASSERT_TRUE(window_comes("Corvane 0.997 - 1/2/2005"))
        << (file_exists(folder_.path("output")) ? folder_.read("output") : "");
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
  }

  void TearDown() override {
    if (file_exists(folder_.path("pid")) && runs())
      kill(pid(), SIGKILL);
  }

  int pid() { return std::stoi(folder_.read("pid")); }
  bool runs() { return kill(pid(), 0) == 0; }
  bool ends() {
    return wait_for([this] { return !runs(); });
  }

  /// A project with one title, as the program writes it.
  std::string project_text() {
    folder_.add("a.m2v");
    folder_.add("a.ac3");
    std::string text = "Corvane 0.997 - 1/2/2005\n" + folder_.stored("a.m2v") + "/" +
                       folder_.stored("a.ac3") +
                       "\n***\n00:00:00.00\n***\n0\n***\n***\n***\n***\n***\n***\n<none>\n***\n"
                       "center,bottom,60,60,30,30,28.0,arial.ttf,720,574,25,ISO-8859-1|\n***\n"
                       "<default>\nPAL\nTrue\nFalse\n";
    for (std::size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 2)
      text.insert(at, "\r");
    return text;
  }

  /// Saves what the program has loaded under another name, and gives the bytes.
  std::string saved_again() {
    press("ctrl+shift+s");
    EXPECT_TRUE(window_comes("save corvane project"));
    std::this_thread::sleep_for(std::chrono::milliseconds(700));
    press("ctrl+a");
    type_text(folder_.path("again.cvp"));
    std::this_thread::sleep_for(std::chrono::milliseconds(700));
    press("Return");
    EXPECT_TRUE(wait_for([this] { return file_exists(folder_.path("again.cvp")); }));
    return folder_.read("again.cvp");
  }

  temporary_folder folder_;
};

TEST_F(Program, StartsWithoutAProjectAndEndsWithoutAsking) {
  start("");
  press("ctrl+q");
  EXPECT_TRUE(ends());
  EXPECT_EQ(folder_.read("output"), "");
  EXPECT_NE(folder_.read("config/corvane/preferences").find("dvdregion = NTSC"), std::string::npos);
}

// What the toolkit prints would else go into whatever file is opened first.
TEST_F(Program, StartsWithItsStandardFilesClosed) {
  start("", "C.UTF-8", "<&- >&- 2>&-");
  for (const char* const number : {"0", "1", "2"})
    EXPECT_EQ(std::filesystem::read_symlink("/proc/" + std::to_string(pid()) + "/fd/" + number),
              "/dev/null");
  press("ctrl+q");
  EXPECT_TRUE(ends());
}

// The libraries are many, and most sessions start without a picture.
TEST_F(Program, StartsWithoutTheLibrariesThatDecodePictures) {
  start("");
  std::ifstream maps("/proc/" + std::to_string(pid()) + "/maps");
  const std::string in_memory((std::istreambuf_iterator<char>(maps)), {});
  EXPECT_NE(in_memory.find("libwx_baseu"), std::string::npos);
  EXPECT_EQ(in_memory.find("libavcodec"), std::string::npos);
  EXPECT_EQ(in_memory.find("libswscale"), std::string::npos);
  press("ctrl+q");
  EXPECT_TRUE(ends());
}

TEST_F(Program, OpensTheProjectNamedOnTheCommandLine) {
  folder_.add("my disc.cvp", project_text());
  start("'my disc.cvp'");
  EXPECT_EQ(saved_again(), project_text());
  press("ctrl+q");
  EXPECT_TRUE(ends());
}

TEST_F(Program, OpensAProjectWithQuotesAroundItsNameAndUnquotedBlanks) {
  folder_.add("my disc.cvp", project_text());
  start("'\"my' 'disc.cvp\"'");
  EXPECT_EQ(saved_again(), project_text());
  press("ctrl+q");
  EXPECT_TRUE(ends());
}

TEST_F(Program, OpensANameBeyondAsciiInALocaleWithoutIt) {
  folder_.add("größe 漢.cvp", project_text());
  start("'größe 漢.cvp'", "C");
  EXPECT_EQ(saved_again(), project_text());
  press("ctrl+q");
  EXPECT_TRUE(ends());
}

/// The program where the desktop's own programs know what opens its projects.
class AssociatedProgram : public Program {
 protected:
  /// Chooses "register .cvp extension" by the keys and accepts what it says.
  void register_extension() {
    for (const char* const key :
         {"F10", "Right", "Right", "Right", "Down", "Down", "Down", "Return"})
      press(key);
    EXPECT_TRUE(window_comes("Corvane"));
    press("Return");
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
  }
  /// Runs a command (as the shell reads it) in the test's folder.
  std::string output_of(const std::string& command) {
    const std::string whole = "cd '" + folder_.path() +
                              "' && exec >answer 2>&1 </dev/null && env -u DESKTOP_SESSION -u "
                              "KDE_FULL_SESSION BROWSER=false " +
                              surroundings() + command;
    EXPECT_EQ(std::system(whole.c_str()), 0) << whole;
    return folder_.read("answer");
  }
  void associate() {
    start("");
    register_extension();
    press("ctrl+q");
    EXPECT_TRUE(ends());
    EXPECT_EQ(folder_.read("output"), "");
    EXPECT_EQ(output_of("xdg-mime query default application/x-corvane-project"),
              "corvane.desktop\n");
  }
  /// Has the desktop open the project, and sees it in the program's window.
  void expect_opened(const std::string& desktop) {
    folder_.add("my disc.cvp", project_text());
    EXPECT_EQ(output_of(desktop + " xdg-mime query filetype 'my disc.cvp'"),
              "application/x-corvane-project\n");
    output_of(desktop + " xdg-open '" + folder_.path("my disc.cvp") + "' &");
    ASSERT_TRUE(window_comes("Corvane 0.997 - 1/2/2005")) << folder_.read("answer");
    std::this_thread::sleep_for(std::chrono::milliseconds(500));
    EXPECT_EQ(saved_again(), project_text());
    press("ctrl+q");
    EXPECT_TRUE(window_goes("Corvane 0.997 - 1/2/2005"));
  }
};

TEST_F(AssociatedProgram, OpensAProjectFromTheFileManager) {
  associate();
  expect_opened("XDG_CURRENT_DESKTOP=GNOME");
}

TEST_F(AssociatedProgram, OpensAProjectOnAPlainWindowManager) {
  associate();
  expect_opened("XDG_CURRENT_DESKTOP=X-Generic");
}

TEST_F(Program, NamesAProgramFolderThatCannotBeUsed) {
  folder_.add("program", "a file, not a folder");
  start("");
  EXPECT_TRUE(window_comes("Corvane"));
  press("Return");
  press("ctrl+q");
  EXPECT_TRUE(ends());
}

}  // namespace
}  // namespace corvane::testing_support
