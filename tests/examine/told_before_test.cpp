// What of a disc follows from errors of its material that the user was told of.
#include "examine/told_before.h"

#include "made_disc.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvane {
namespace {

using trait = disc_trait_kind;
using part = finding_item::part_kind;
using whole = finding_item::whole_kind;
using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::made_disc;
using testing_support::made_menu;
using testing_support::made_title;

finding_item of_title(int number, part what = part::whole, int part_number = 0) {
  return {whole::title, number, what, part_number};
}
finding_item of_menu(int number, part what = part::whole, int part_number = 0) {
  return {whole::menu, number, what, part_number};
}

finding error_of(const std::string& rule, const finding_item& item) {
  finding f;
  f.rule = rule;
  f.item = item;
  return f;
}

/// Three titles, of which the last one has a titleset of its own, and two menus.
disc_description disc_of_three() {
  disc_description d =
      made_disc({made_title(), made_title(), made_title()}, {made_menu({}), made_menu({})});
  for (disc_title& title : d.titles)
    title.titleset = 1;
  d.titles[2].titleset = 2;
  for (disc_menu& menu : d.menus)
    menu.titleset = 1;
  return d;
}

std::vector<told_item> after(const std::vector<finding>& accepted) {
  return told_of(accepted, disc_of_three());
}

TEST(ToldBefore, AnErrorIsOfItsTitleAndThoseOfItsTitleset) {
  EXPECT_THAT(after({error_of("video-standard", of_title(2, part::video))}),
              ElementsAre(told_item{of_title(2, part::video), false},
                          told_item{of_title(1, part::video), true}));
  EXPECT_THAT(after({error_of("video-standard", of_title(3, part::video))}),
              ElementsAre(told_item{of_title(3, part::video), false}));
  EXPECT_THAT(after({error_of("menus-video", of_menu(2, part::video))}),
              ElementsAre(told_item{of_menu(2, part::video), false},
                          told_item{of_menu(1, part::video), true}));
  EXPECT_THAT(after({error_of("delay-too-long", of_title(1))}),
              ElementsAre(told_item{of_title(1), false}))
      << "the tables say nothing of it";
}

TEST(ToldBefore, EachIsTakenOnce) {
  EXPECT_THAT(after({error_of("video-standard", of_title(3, part::video)),
                     error_of("video-size", of_title(3, part::video))}),
              testing::SizeIs(1));
}

TEST(ToldBefore, ErrorsOfCommandsAndRoomAreNotOfMaterial) {
  EXPECT_THAT(after({error_of("menu-not-left", of_menu(1)), error_of("command-syntax", of_title(1)),
                     error_of("button-overlap", of_menu(1, part::button, 2)),
                     error_of("space-output", {})}),
              IsEmpty());
}

TEST(ToldBefore, MixedKindsOfSoundAreOfAllSoundsOfTheTitle) {
  EXPECT_THAT(after({error_of("titleset-audio-kind", of_title(2, part::audio, 2))}),
              ElementsAre(told_item{of_title(2, part::audio), false},
                          told_item{of_title(1, part::audio), true}));
}

TEST(ToldBefore, AWrongPictureSaysNothingOfAnotherTitlesSound) {
  const auto told = after({error_of("video-standard", of_title(2, part::video))});
  EXPECT_TRUE(follows_from(told, of_title(2, part::video), trait::standard));
  EXPECT_TRUE(follows_from(told, of_title(2), trait::length));
  EXPECT_TRUE(follows_from(told, of_title(2, part::audio, 1), trait::sounds_until));
  EXPECT_FALSE(follows_from(told, of_title(2), trait::audio_streams));
  EXPECT_FALSE(follows_from(told, of_title(2, part::audio, 1), trait::format));
  EXPECT_FALSE(follows_from(told, of_title(1), trait::audio_streams));
  EXPECT_FALSE(follows_from(told, of_title(1, part::audio, 1), trait::sounds_until));
  EXPECT_FALSE(follows_from(told, of_title(1), trait::length));
  EXPECT_FALSE(follows_from(told, of_title(1, part::video), trait::shows_until));
}

TEST(ToldBefore, WhatTheTitlesetStatesOnceFollowsFromAnyOfItsTitles) {
  const auto told = after({error_of("titleset-aspect", of_title(2, part::video)),
                           error_of("titleset-audio-kind", of_title(2, part::audio, 1))});
  EXPECT_TRUE(follows_from(told, of_title(1, part::video), trait::aspect));
  EXPECT_TRUE(follows_from(told, of_title(1, part::audio, 1), trait::format));
  EXPECT_FALSE(follows_from(told, of_title(3, part::video), trait::aspect)) << "another titleset";
  EXPECT_FALSE(follows_from(told, of_menu(1, part::video), trait::aspect));
}

TEST(ToldBefore, EachSoundAndSubtitleStandsForItself) {
  const auto told = after({error_of("audio-damage", of_title(1, part::audio, 1)),
                           error_of("audio-short", of_title(1, part::audio, 1)),
                           error_of("subtitle-text-lost", of_title(1, part::subtitle, 2))});
  EXPECT_TRUE(follows_from(told, of_title(1, part::audio, 1), trait::sounds_until));
  EXPECT_FALSE(follows_from(told, of_title(1, part::audio, 2), trait::sounds_until));
  EXPECT_TRUE(follows_from(told, of_title(1), trait::audio_streams));
  EXPECT_FALSE(follows_from(told, of_title(1, part::video), trait::shows_until));
  EXPECT_TRUE(follows_from(told, of_title(1, part::subtitle, 2), trait::cues));
  EXPECT_FALSE(follows_from(told, of_title(1, part::subtitle, 1), trait::shown));
}

TEST(ToldBefore, AnErrorOfAWholeTitleIsOfAllOfIt) {
  const auto told = after({error_of("ready-bytes", of_title(1))});
  EXPECT_TRUE(follows_from(told, of_title(1, part::audio, 2), trait::sounds_until));
  EXPECT_TRUE(follows_from(told, of_title(1, part::video), trait::size));
  EXPECT_FALSE(follows_from(told, of_title(2, part::video), trait::size));
  EXPECT_FALSE(follows_from(told, of_title(1), trait::then)) << "commands are not of material";
  EXPECT_FALSE(follows_from(told, {}, trait::titles));
}

TEST(ToldBefore, WhatADiscMustBeByItselfIsSoftenedTheSameWay) {
  foreseen_run run;
  run.told = after({error_of("video-standard", of_title(2, part::video))});
  const auto severity = [&](const std::string& rule, const finding_item& item) {
    std::vector<finding> all = {error_of(rule, item)};
    soften_what_was_told(all, run);
    return all[0].severity;
  };
  const auto error = finding_severity::error, warning = finding_severity::warning;
  EXPECT_EQ(severity("disc-picture-stated", of_title(2, part::video)), warning);
  EXPECT_EQ(severity("disc-picture-stated", of_title(1, part::video)), warning);
  EXPECT_EQ(severity("disc-picture-stated", of_title(3, part::video)), error);
  EXPECT_EQ(severity("disc-sound-stated", of_title(2, part::audio, 1)), error);
  EXPECT_EQ(severity("disc-clock", of_title(2)), warning);
  EXPECT_EQ(severity("disc-clock", of_title(1)), error);
  EXPECT_EQ(severity("disc-times", of_title(2, part::audio, 1)), warning);
  EXPECT_EQ(severity("disc-times", of_title(1, part::audio, 1)), error);
  EXPECT_EQ(severity("disc-navigation", of_title(2)), error);
}

}  // namespace
}  // namespace corvane
