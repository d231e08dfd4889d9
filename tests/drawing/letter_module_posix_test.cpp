// The module with the toolkit's letters: loaded with the first text, found beside the program or in
// the library folder, needing no display, and told when it is not there. Shown with the program
// measured_text, put there.
#include "support/installed_programs_posix.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

using testing::HasSubstr;
using testing::StartsWith;

const std::string letters_module = "corvane-letters.so";

class LetterModule : public testing_support::installed_programs {
 protected:
  LetterModule() : program_(place("measured_text")) {}

  std::string told() const {
    return printed_by("env -u DISPLAY -u WAYLAND_DISPLAY '" + program_ + "' Hello");
  }

  std::string program_;
};

TEST_F(LetterModule, ProgramsNameNoLibraryOfTheToolkit) {
  const std::string needed = printed_by("readelf -d '" + program_ + "'");
  EXPECT_THAT(needed, HasSubstr("libstdc++"));
  for (const char* const library : {"libwx", "libgtk", "libpango", "libcairo"})
    EXPECT_EQ(needed.find(library), std::string::npos) << needed;
}

TEST_F(LetterModule, NeedsNoLibraryOfTheToolkitThatDoesNotDraw) {
  const std::string needed = printed_by("readelf -d '" + place(letters_module, "other") + "'");
  EXPECT_THAT(needed, HasSubstr("_core-"));
  EXPECT_EQ(needed.find("_stc-"), std::string::npos);
}

TEST_F(LetterModule, BesideTheProgramIsLoadedWithTheFirstTextWithoutADisplay) {
  place(letters_module);
  EXPECT_THAT(told(), testing::MatchesRegex("without toolkit; 5[0-9] x 2[0-9]; with toolkit\n"));
}

TEST_F(LetterModule, IsFoundInTheLibraryFolderOfAnInstalledProgram) {
  place(letters_module, "usr/" CORVANE_LIBRARY_FOLDER "/corvane/modules");
  EXPECT_THAT(told(), testing::EndsWith("; with toolkit\n"));
}

TEST_F(LetterModule, IsToldWhenItIsMissing) {
  EXPECT_EQ(told(),
            "without toolkit; a file of the program is missing, \"corvane-letters.so\"; without "
            "toolkit\n");
}

TEST_F(LetterModule, IsToldWithItsPathWhenItCannotBeLoaded) {
  const std::string damaged = folder_.add("usr/bin/" + letters_module, "no library");
  EXPECT_THAT(told(),
              StartsWith("without toolkit; a file of the program cannot be loaded: " + damaged));
}

}  // namespace
}  // namespace corvane
