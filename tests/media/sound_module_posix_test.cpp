// The module that plays sound: loaded with the first one, and by nothing else. Shown with the
// program opened_sound, put there.
#include "support/environment_variable.h"
#include "support/installed_programs_posix.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

using testing::HasSubstr;

const std::string sound_module = "corvane-sound.so";

class SoundModule : public testing_support::installed_programs {
 protected:
  std::string told() const { return printed_by("'" + place("opened_sound") + "'"); }

  testing_support::environment_variable driver_{"SDL_AUDIODRIVER", "dummy"};
};

TEST_F(SoundModule, BesideTheProgramIsLoadedWithTheFirstSound) {
  place(sound_module);
  EXPECT_EQ(told(), "without SDL; it is open; with SDL\n");
}

TEST_F(SoundModule, IsFoundInTheLibraryFolderOfAnInstalledProgram) {
  place(sound_module, "usr/" CORVANE_LIBRARY_FOLDER "/corvane/modules");
  EXPECT_EQ(told(), "without SDL; it is open; with SDL\n");
}

TEST_F(SoundModule, IsToldWhenItIsMissing) {
  EXPECT_EQ(told(),
            "without SDL; a file of the program is missing, \"corvane-sound.so\"; without SDL\n");
}

TEST_F(SoundModule, IsToldWithItsPathWhenItCannotBeLoaded) {
  const std::string damaged = folder_.add("usr/bin/" + sound_module, "no library");
  EXPECT_THAT(told(), HasSubstr("without SDL; a file of the program cannot be loaded: " + damaged));
}

}  // namespace
}  // namespace corvane
