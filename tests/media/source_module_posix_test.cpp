// The module that reads people's files: loaded with the first of them, and by nothing else. Shown
// with the programs probed_file and first_picture, put there.
#include "media/streams.h"
#include "support/installed_programs_posix.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

using media_test::stream;
using testing::HasSubstr;

const std::string sources_module = "corvane-sources.so";

class SourceModule : public testing_support::installed_programs {
 protected:
  std::string told(const std::string& file) const {
    return printed_by("'" + place("probed_file") + "' '" + file + "'");
  }
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
