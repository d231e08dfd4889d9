// The user's settings store, in a place of the test's own.
#include "platform/settings/settings_store.h"
#include "support/settings_place.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

TEST(Settings, AnAbsentKeyReadsAsTheEmptyText) {
  const testing_support::settings_place place;
  EXPECT_EQ(settings_at(place.name())->get("framecount"), "");
}

TEST(Settings, WhatIsSetIsThereTheNextTime) {
  const testing_support::settings_place place;
  settings_at(place.name())->set("dvdregion", "PAL");
  settings_at(place.name())->set("framecount", "25");
  const auto again = settings_at(place.name());
  EXPECT_EQ(again->get("dvdregion"), "PAL");
  EXPECT_EQ(again->get("framecount"), "25");
  again->set("dvdregion", "NTSC");
  EXPECT_EQ(settings_at(place.name())->get("dvdregion"), "NTSC");
  EXPECT_EQ(settings_at(place.name())->get("framecount"), "25");
}

TEST(Settings, AValueCanBeEmptied) {
  const testing_support::settings_place place;
  const auto store = settings_at(place.name());
  store->set("cleanup", "yes");
  store->set("cleanup", "");
  EXPECT_EQ(settings_at(place.name())->get("cleanup"), "");
}

TEST(Settings, AnyTextComesBack) {
  const testing_support::settings_place place;
  for (const std::string value : {" ", " a ", "a\r\nb = c\n[preferences]\ncleanup = yes", "\\n",
                                  "Grüße, 字幕 \xF0\x9F\x8E\xAC", "# x"}) {
    settings_at(place.name())->set("key", value);
    EXPECT_EQ(settings_at(place.name())->get("key"), value);
    EXPECT_EQ(settings_at(place.name())->get("cleanup"), "");
  }
}

TEST(Settings, TwoWindowsDoNotUndoEachOther) {
  const testing_support::settings_place place;
  const auto one = settings_at(place.name());
  const auto two = settings_at(place.name());
  one->set("dvdregion", "PAL");
  two->set("jumptable", "True");
  one->set("framecount", "3");
  const auto third = settings_at(place.name());
  EXPECT_EQ(third->get("dvdregion"), "PAL");
  EXPECT_EQ(third->get("jumptable"), "True");
  EXPECT_EQ(third->get("framecount"), "3");
}

}  // namespace
}  // namespace corvane
