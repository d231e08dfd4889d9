// Preferences at start and the commands that change them.
#include "project/preferences.h"

#include "support/command_test.h"

namespace corvane {
namespace {

class Preferences : public testing_support::command_test {};

TEST_F(Preferences, StartWithAnEmptyStoreWritesTheDefaults) {
  start_up(doc);
  EXPECT_EQ(prefs.get("framecount"), "1");
  EXPECT_EQ(prefs.get("jumptable"), "False");
  EXPECT_EQ(prefs.get("dvdregion"), "NTSC");
  EXPECT_EQ(prefs.get("cleanup"), "");
  EXPECT_FALSE(p.cleanup);
  EXPECT_FALSE(p.jumptable);
  EXPECT_EQ(p.globalregion, "NTSC");
  EXPECT_EQ(p.dvdsizetext, "0 titles\r\n0 menus\r\n0 gig total");
}

TEST_F(Preferences, StartTakesWhatIsStored) {
  prefs.set("framecount", "25");
  prefs.set("jumptable", "True");
  prefs.set("cleanup", "yes");
  prefs.set("dvdregion", "PAL");
  start_up(doc);
  EXPECT_EQ(prefs.get("framecount"), "25");
  EXPECT_TRUE(p.jumptable);
  EXPECT_TRUE(p.cleanup);
  EXPECT_EQ(p.globalregion, "PAL");
}

TEST_F(Preferences, CleanupIsCheckedOnlyForYes) {
  for (const std::string value : {"no", "True", "1", "YES", " yes"}) {
    prefs.set("cleanup", value);
    start_up(doc);
    EXPECT_FALSE(p.cleanup) << value;
  }
}

TEST_F(Preferences, JumptableIsCheckedOnlyForTrue) {
  for (const std::string value : {"true", "yes", "1"}) {
    prefs.set("jumptable", value);
    start_up(doc);
    EXPECT_FALSE(p.jumptable) << value;
  }
}

TEST_F(Preferences, AStoredRegionThatIsNoneBecomesTheDefault) {
  for (const std::string value : {"SECAM", "pal", "", "NTSC "}) {
    prefs.set("dvdregion", value);
    start_up(doc);
    EXPECT_EQ(p.globalregion, "NTSC") << value;
    EXPECT_EQ(prefs.get("dvdregion"), "NTSC") << value;
  }
}

TEST_F(Preferences, AStoreThatKeepsNothingStillLeavesARegion) {
  class deaf_settings : public settings {
   public:
    std::string get(std::string_view) const override { return {}; }
    void set(std::string_view, std::string_view) override {}
  } deaf;
  document without_store(ask, deaf);
  without_store.p.globalregion = "";
  start_up(without_store);
  EXPECT_EQ(without_store.p.globalregion, "NTSC");
}

TEST_F(Preferences, CleanupTogglesMarkAndPreference) {
  cleanup_command(doc);
  EXPECT_TRUE(p.cleanup);
  EXPECT_EQ(prefs.get("cleanup"), "yes");
  cleanup_command(doc);
  EXPECT_FALSE(p.cleanup);
  EXPECT_EQ(prefs.get("cleanup"), "");
}

TEST_F(Preferences, IsocreateTogglesTheMarkAlone) {
  isocreate_command(doc);
  EXPECT_TRUE(p.isocreate);
  isocreate_command(doc);
  EXPECT_FALSE(p.isocreate);
  EXPECT_EQ(prefs.get("isocreate"), "");
}

TEST_F(Preferences, RegionIsSetInTheProjectAndRemembered) {
  region_command(doc, "PAL");
  EXPECT_EQ(p.globalregion, "PAL");
  EXPECT_EQ(prefs.get("dvdregion"), "PAL");
  region_command(doc, "NTSC");
  EXPECT_EQ(p.globalregion, "NTSC");
  EXPECT_EQ(prefs.get("dvdregion"), "NTSC");
}

TEST_F(Preferences, RegionCannotChangeUnderTitles) {
  p.Comboregion_enabled = false;
  region_command(doc, "PAL");
  EXPECT_EQ(p.globalregion, "NTSC");
  EXPECT_EQ(prefs.get("dvdregion"), "");
}

TEST_F(Preferences, ATextThatIsNoRegionIsIgnored) {
  region_command(doc, "SECAM");
  EXPECT_EQ(p.globalregion, "NTSC");
  EXPECT_EQ(prefs.get("dvdregion"), "");
}

TEST_F(Preferences, SoundOfMenusIsHeardUnlessItWasTurnedOff) {
  EXPECT_TRUE(plays_menu_sound(prefs));
  keep_menu_sound(prefs, false);
  EXPECT_EQ(prefs.get("menusound"), "no");
  EXPECT_FALSE(plays_menu_sound(prefs));
  keep_menu_sound(prefs, true);
  EXPECT_TRUE(plays_menu_sound(prefs));
}

}  // namespace
}  // namespace corvane
