// The module with the decoders: loaded with the first picture, found beside the program or in the
// library folder, and told when it is not there. Shown with the program first_picture, put there.
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

const std::string module_file = "corvane-decoders.so";
const std::string still_picture = stream("still.m2v");

/// What a command prints.
std::string output_of(const std::string& command) {
  std::string output;
  std::FILE* const pipe = ::popen(command.c_str(), "r");
  EXPECT_NE(pipe, nullptr) << command;
  if (pipe == nullptr)
    return output;
  for (int c = 0; (c = std::fgetc(pipe)) != EOF;)
    output += static_cast<char>(c);
  ::pclose(pipe);
  return output;
}

class DecoderModule : public testing::Test {
 protected:
  DecoderModule() : program_(place("first_picture", "usr/bin")) {}

  /// Copies a file that was built into a folder, and gives its path there.
  std::string place(const std::string& file, const std::string& folder) const {
    const fs::path to = path_of(folder_.path(folder));
    fs::create_directories(to);
    fs::copy_file(path_of(own_executable()).parent_path() / file, to / file);
    return text_of(to / file);
  }

  std::string told(const std::string& file) const {
    return output_of("'" + program_ + "' '" + file + "' 2>&1");
  }

  temporary_folder folder_;
  std::string program_;
};

TEST_F(DecoderModule, TheProgramItselfNamesNoLibraryOfFfmpeg) {
  const std::string needed = output_of("readelf -d '" + program_ + "'");
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
  ASSERT_EQ(output_of("ffmpeg -nostdin -v error -i '" + still_picture + "' -frames:v 1 '" + bitmap +
                      "' 2>&1"),
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
  ASSERT_EQ(output_of("ffmpeg -nostdin -v error -y -i '" + still_picture + "' -frames:v 1 '" +
                      bitmap + "' 2>&1"),
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
