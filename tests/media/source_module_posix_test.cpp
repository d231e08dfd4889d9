// The module that reads people's files: loaded with the first of them, and by nothing else. Shown
// with the programs probed_file and first_picture, put there.
#include "media/streams.h"
#include "platform/files/program_folder.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdio>
#include <filesystem>
#include <string>

namespace corvane {
namespace {

namespace fs = std::filesystem;
using media_test::stream;
using testing::HasSubstr;
using testing_support::temporary_folder;

const std::string sources_module = "corvane-sources.so";

class SourceModule : public testing::Test {
 protected:
  /// Copies a file that was built into a folder, and gives its path there.
  std::string place(const std::string& file, const std::string& folder = "usr/bin") const {
    const fs::path to = path_of(folder_.path(folder));
    fs::create_directories(to);
    fs::copy_file(path_of(own_executable()).parent_path() / file, to / file);
    return text_of(to / file);
  }

  /// What a command prints.
  static std::string printed_by(const std::string& command) {
    std::string output;
    std::FILE* const pipe = ::popen((command + " 2>&1").c_str(), "r");
    EXPECT_NE(pipe, nullptr) << command;
    if (pipe == nullptr)
      return output;
    for (int c = 0; (c = std::fgetc(pipe)) != EOF;)
      output += static_cast<char>(c);
    ::pclose(pipe);
    return output;
  }

  std::string told(const std::string& file) const {
    return printed_by("'" + place("probed_file") + "' '" + file + "'");
  }

  temporary_folder folder_;
};

TEST_F(SourceModule, BesideTheProgramIsLoadedWithTheFirstFile) {
  place(sources_module);
  EXPECT_EQ(told(stream("one.mpg")), "without FFmpeg; mpeg mpeg1video mp2; with FFmpeg\n");
}

TEST_F(SourceModule, IsFoundInTheLibraryFolderOfAnInstalledProgram) {
  place(sources_module, "usr/" CORVANE_LIBRARY_FOLDER "/corvane/modules");
  EXPECT_EQ(told(stream("one.mpg")), "without FFmpeg; mpeg mpeg1video mp2; with FFmpeg\n");
}

TEST_F(SourceModule, IsNotLoadedForWhatIsRefusedBefore) {
  place(sources_module);
  EXPECT_EQ(told(folder_.add("empty.mp4", "")),
            "without FFmpeg; the file is empty; without FFmpeg\n");
}

TEST_F(SourceModule, IsToldWhenItIsMissing) {
  EXPECT_EQ(told(stream("one.mpg")),
            "without FFmpeg; a file of the program is missing, \"corvane-sources.so\"; "
            "without FFmpeg\n");
}

TEST_F(SourceModule, IsToldWithItsPathWhenItCannotBeLoaded) {
  const std::string damaged = folder_.add("usr/bin/" + sources_module, "no library");
  EXPECT_THAT(told(stream("one.mpg")),
              HasSubstr("without FFmpeg; a file of the program cannot be loaded: " + damaged));
}

TEST_F(SourceModule, IsNotNeededForPicturesOfStreams) {
  const std::string decoders = place("corvane-decoders.so");
  EXPECT_EQ(printed_by("'" + place("first_picture") + "' '" + stream("still.m2v") + "'"),
            "without FFmpeg; 720 x 480; with FFmpeg\n");
  // What takes files apart, and all that it brings along, is the other module's.
  EXPECT_EQ(printed_by("readelf -d '" + decoders + "' | grep -c libavformat"), "0\n");
}

}  // namespace
}  // namespace corvane
