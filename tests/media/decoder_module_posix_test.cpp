// The module with the decoders: loaded with the first picture, found beside the program or in the
// library folder, and told when it is not there. Shown with the program first_picture, put there.
#include "media/streams.h"
#include "support/installed_programs_posix.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

using media_test::stream;
using testing::HasSubstr;

const std::string module_file = "corvane-decoders.so";
const std::string still_picture = stream("still.m2v");

class DecoderModule : public testing_support::installed_programs {
 protected:
  DecoderModule() : program_(place("first_picture", "usr/bin")) {}

  std::string told(const std::string& file) const {
    return printed_by("'" + program_ + "' '" + file + "'");
  }

  std::string program_;
};

TEST_F(DecoderModule, TheProgramItselfNamesNoLibraryOfFfmpeg) {
  const std::string needed = printed_by("readelf -d '" + program_ + "'");
  EXPECT_THAT(needed, HasSubstr("libstdc++"));
  for (const char* const library : {"libav", "libsw"})
    EXPECT_EQ(needed.find(library), std::string::npos) << needed;
}

TEST_F(DecoderModule, BesideTheProgramIsLoadedWithTheFirstPicture) {
  place(module_file, "usr/bin");
  EXPECT_EQ(told(still_picture), "without FFmpeg; 720 x 480; with FFmpeg\n");
}

TEST_F(DecoderModule, IsFoundInTheLibraryFolderOfAnInstalledProgram) {
  place(module_file, "usr/" CORVANE_LIBRARY_FOLDER "/corvane/modules");
  EXPECT_EQ(told(still_picture), "without FFmpeg; 720 x 480; with FFmpeg\n");
}

TEST_F(DecoderModule, DecodesStillPicturesToo) {
  place(module_file, "usr/bin");
  const std::string bitmap = folder_.path("a.bmp");
  ASSERT_EQ(printed_by("ffmpeg -nostdin -v error -i '" + still_picture + "' -frames:v 1 '" +
                       bitmap + "'"),
            "");
  EXPECT_EQ(told(bitmap), "without FFmpeg; 720 x 480; with FFmpeg\n");
}

TEST_F(DecoderModule, AFileThatIsRefusedBeforeDecodingDoesNotLoadIt) {
  place(module_file, "usr/bin");
  EXPECT_EQ(told(folder_.add("empty.m2v", "")),
            "without FFmpeg; the file is empty; without FFmpeg\n");
}

TEST_F(DecoderModule, IsToldWhenItIsMissing) {
  const std::string missing =
      "without FFmpeg; a file of the program is missing, \"corvane-decoders.so\"; without FFmpeg\n";
  EXPECT_EQ(told(still_picture), missing);
  const std::string bitmap = folder_.add("a.bmp");
  ASSERT_EQ(printed_by("ffmpeg -nostdin -v error -y -i '" + still_picture + "' -frames:v 1 '" +
                       bitmap + "'"),
            "");
  EXPECT_EQ(told(bitmap), missing);
}

TEST_F(DecoderModule, IsToldWithItsPathWhenItCannotBeLoaded) {
  const std::string damaged = folder_.add("usr/bin/" + module_file, "no library");
  EXPECT_THAT(told(still_picture),
              HasSubstr("without FFmpeg; a file of the program cannot be loaded: " + damaged));
}

}  // namespace
}  // namespace corvane
