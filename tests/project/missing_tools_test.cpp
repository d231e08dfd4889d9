// What is told of tools that are not there, in the words of both systems.
#include "project/missing_tools.h"

#include "platform/files/program_folder.h"
#include "support/command_test.h"

#include <filesystem>

namespace corvane {
namespace {

class MissingTools : public testing_support::command_test {
 protected:
  MissingTools() {
    for (const outside_tool& tool : outside_tools())
      put(tool.name);
  }
  void put(const std::string& tool) {
    const std::string file = folder.add("bin/" + tool + ".exe");
    std::filesystem::permissions(path_of(file), std::filesystem::perms::owner_all);
  }
  void take(const std::string& tool) {
    std::filesystem::remove(path_of(tool_path(folder.path(), tool)));
  }
  std::string bin(path_style style) const { return join_path(folder.path(), "bin", style); }
};

TEST_F(MissingTools, NothingIsToldWhenAllAreThere) {
  EXPECT_EQ(missing_tools_notice(folder.path(), path_style::posix), "");
  EXPECT_EQ(missing_tools_notice(folder.path(), path_style::windows), "");
  tell_missing_tools(doc, folder.path());
}

// Only import needs it.
TEST_F(MissingTools, FfmpegIsToldWhereItIsNeededAndNotAtTheStart) {
  EXPECT_EQ(missing_tools_notice(folder.path(), path_style::posix), "");
  EXPECT_EQ(missing_tools(folder.path(), {"ffmpeg"}, path_style::posix),
            "ffmpeg is not installed.  It comes with the package ffmpeg.");
  put("ffmpeg");
  EXPECT_EQ(missing_tools(folder.path(), {"ffmpeg"}, path_style::posix), "");
}

TEST_F(MissingTools, OnLinuxThePackagesAreNamedOnce) {
  take("mplex");
  take("jpeg2yuv");
  take("mkisofs");
  ask.expect(
      box("Corvane runs tools that are not installed:\n\n"
          "mplex, jpeg2yuv: package mjpegtools\n"
          "mkisofs: package genisoimage\n\n"
          "Install these packages (the tools must be on the PATH), and start Corvane again.  "
          "Until then, what needs one of them is refused; everything else works.",
          icon::exclamation));
  tell_missing_tools(doc, folder.path(), path_style::posix);
}

TEST_F(MissingTools, OnWindowsTheFilesTheirProjectsAndTheFullInstallerAreNamed) {
  take("gm");
  take("spumux");
  take("dvdauthor");
  ask.expect(
      box("Corvane runs tools that are not in its folder \"" + bin(path_style::windows) +
              "\":\n\n"
              "gm.exe: http://www.graphicsmagick.org\n"
              "spumux.exe, dvdauthor.exe: https://dvdauthor.sourceforge.net\n\n"
              "The full installer of Corvane has all of them.  Until they are there, what needs "
              "one of them is refused; everything else works.",
          icon::exclamation));
  tell_missing_tools(doc, folder.path(), path_style::windows);
}

TEST_F(MissingTools, AllOfThemAreToldInOneBox) {
  for (const outside_tool& tool : outside_tools())
    take(tool.name);
  const std::string notice = missing_tools_notice(folder.path(), path_style::windows);
  EXPECT_NE(notice.find("mplex.exe, mpeg2enc.exe, jpeg2yuv.exe: https://mjpeg.sourceforge.io\n"
                        "gm.exe: http://www.graphicsmagick.org\n"
                        "spumux.exe, dvdauthor.exe: https://dvdauthor.sourceforge.net\n"
                        "mkisofs.exe: http://cdrtools.sourceforge.net\n"),
            std::string::npos)
      << notice;
}

TEST_F(MissingTools, ACommandIsToldOfThoseItNeedsOnly) {
  take("mplex");
  take("gm");
  take("mkisofs");
  EXPECT_EQ(missing_tools(folder.path(), {"mplex", "dvdauthor"}, path_style::posix),
            "mplex is not installed.  It comes with the package mjpegtools.");
  EXPECT_EQ(missing_tools(folder.path(), {"mplex", "mkisofs"}, path_style::windows),
            "mplex.exe is not in the folder \"" + bin(path_style::windows) +
                "\".  It comes from https://mjpeg.sourceforge.io and with the full installer of "
                "Corvane.\n"
                "mkisofs.exe is not in the folder \"" +
                bin(path_style::windows) +
                "\".  It comes from http://cdrtools.sourceforge.net and with the full installer "
                "of Corvane.");
  EXPECT_EQ(missing_tools(folder.path(), {"dvdauthor"}), "");
}

}  // namespace
}  // namespace corvane
