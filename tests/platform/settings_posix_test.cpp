// The settings file: where it stands, and what happens to one that is not as we wrote it.
#include "platform/settings/settings_store.h"
#include "support/environment_variable.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace corvane {
namespace {

using testing_support::environment_variable;
using testing_support::temporary_folder;

TEST(SettingsFile, StandsInTheUsersConfigurationFolder) {
  const temporary_folder folder;
  const environment_variable config("XDG_CONFIG_HOME", folder.path("config"));
  user_settings()->set("dvdregion", "PAL");
  EXPECT_EQ(folder.read("config/corvane/preferences"), "[preferences]\ndvdregion = PAL\n");
}

TEST(SettingsFile, StandsBelowHomeWhenNoConfigurationFolderIsNamed) {
  const temporary_folder folder;
  const environment_variable home("HOME", folder.path());
  for (const char* const config : {"", "relative/place"}) {
    const environment_variable named("XDG_CONFIG_HOME", config);
    EXPECT_EQ(user_settings_place(), folder.path(".config/corvane/preferences"));
  }
}

TEST(SettingsFile, KeepsWhatOthersWroteThere) {
  const temporary_folder folder;
  const std::string file =
      folder.add("preferences", "# kept\n[window]\nwidth = 9\n[preferences]\ncleanup = yes\n");
  settings_at(file)->set("cleanup", "");
  EXPECT_EQ(folder.read("preferences"), "# kept\n[window]\nwidth = 9\n[preferences]\ncleanup = \n");
}

TEST(SettingsFile, IsNotTouchedBySettingWhatItSaysAlready) {
  const temporary_folder folder;
  const std::string file = folder.add("preferences", "[preferences]\ncleanup=yes");
  settings_at(file)->set("cleanup", "yes");
  EXPECT_EQ(folder.read("preferences"), "[preferences]\ncleanup=yes");
}

TEST(SettingsFile, ThatCannotBeWrittenIsRememberedUntilTheEnd) {
  const temporary_folder folder;
  folder.add("file");
  const auto store = settings_at(folder.path("file/preferences"));
  store->set("dvdregion", "PAL");
  EXPECT_EQ(store->get("dvdregion"), "PAL");
  EXPECT_EQ(settings_at(folder.path("file/preferences"))->get("dvdregion"), "");
}

TEST(SettingsFile, ThatCannotBeReadIsNotReplaced) {
  const temporary_folder folder;
  const std::string file = folder.add("preferences", "[preferences]\ncleanup = yes\n");
  std::filesystem::resize_file(file, 2u << 20);
  const auto store = settings_at(file);
  EXPECT_EQ(store->get("cleanup"), "");
  store->set("cleanup", "yes");
  EXPECT_EQ(store->get("cleanup"), "yes");
  EXPECT_EQ(std::filesystem::file_size(file), 2u << 20);
}

}  // namespace
}  // namespace corvane
