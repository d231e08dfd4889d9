#include "examine/space_rules.h"

#include "examine/examination.h"
#include "made_disc.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <string>

namespace corvane::testing_support {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr std::uint64_t payload = 2'025'000;  // of a thousand packs
constexpr std::uint64_t packs = 2'048'000;

/// Every file has this size.
space_wanted wanted_by(const disc_description& d, std::uintmax_t size) {
  return space_wanted_by(d, [size](const std::string&) { return std::optional(size); });
}

TEST(SpaceRules, StreamsAndDiscAreThereAtOnce) {
  const space_wanted wanted = wanted_by(made_disc({made_title()}), payload / 2);
  EXPECT_EQ(wanted.disc, packs);
  EXPECT_EQ(wanted.output, 2 * packs);
}

TEST(SpaceRules, ReadyFileIsNotCopiedBeforeItIsOnTheDisc) {
  disc_description d = made_disc({made_title()});
  d.titles[0].is_multiplexed_here = false;
  d.titles[0].streams = {"\\m\\a.vob"};
  const space_wanted wanted = wanted_by(d, 1000);
  EXPECT_EQ(wanted.disc, 1000u);
  EXPECT_EQ(wanted.output, 1000u);
  d.image = true;
  EXPECT_EQ(wanted_by(d, 1000).output, 1000u);
  EXPECT_EQ(wanted_by(d, 1000).image, 1000u);
}

TEST(SpaceRules, MenusCountAndTakeRoomInTheProgramFolder) {
  const disc_description with = made_disc({made_title()}, {made_menu({"exit"})});
  EXPECT_EQ(wanted_by(with, payload).disc, 3 * packs) << "whose sound is none";
  EXPECT_GT(wanted_by(with, 0).program, wanted_by(made_disc({made_title()}), 0).program);
}

TEST(SpaceRules, FileThatIsNotThereIsCountedAsEmpty) {
  const space_wanted wanted =
      space_wanted_by(made_disc({made_title()}), [](const std::string&) { return std::nullopt; });
  EXPECT_EQ(wanted.disc, 0u);
}

TEST(SpaceRules, SumsOfHugeFilesDoNotWrap) {
  disc_description d = made_disc(std::vector<disc_title>(10'000, made_title()));
  d.image = true;
  EXPECT_GT(wanted_by(d, UINTMAX_MAX).output, std::uint64_t{1} << 50);
}

std::vector<std::string> told_of(std::uint64_t disc) {
  return told(space_findings({disc, 0, 0}, {}));
}

TEST(SpaceRules, DiscIsHeldAgainstWhatDiscsHold) {
  EXPECT_THAT(told_of(4'700'372'992), IsEmpty());
  EXPECT_THAT(told_of(4'700'372'993), ElementsAre("disc-over-single-layer @ disc"));
  EXPECT_THAT(told_of(8'543'666'176), ElementsAre("disc-over-single-layer @ disc"));
  EXPECT_THAT(told_of(8'543'666'177), ElementsAre("disc-over-double-layer @ disc"));
  EXPECT_EQ(space_findings({4'800'000'000, 0, 0}, {})[0].found,
            "the disc has at least 4,800,000,000 bytes");
}

TEST(SpaceRules, DiskThatIsTooSmallIsAnError) {
  const space_wanted wanted{100, 1000, 10};
  EXPECT_THAT(space_findings(wanted, {disk_room{1000, 5000}, disk_room{10, 6000}, {}}), IsEmpty());
  const auto findings = space_findings(wanted, {disk_room{999, 5000}, disk_room{9, 6000}, {}});
  EXPECT_THAT(told(findings), ElementsAre("space-output @ disc", "space-program @ disc"));
  EXPECT_EQ(findings[0].found,
            "the disk of the output folder has 999 bytes free, but the run needs 1,000");
}

TEST(SpaceRules, OneDiskMustHoldBothFolders) {
  const space_wanted wanted{100, 1000, 10};
  EXPECT_THAT(told(space_findings(wanted, {disk_room{1009, 5000}, disk_room{1009, 5000}, {}})),
              ElementsAre("space-output @ disc"));
  EXPECT_THAT(space_findings(wanted, {disk_room{1010, 5000}, disk_room{1010, 5000}, {}}),
              IsEmpty());
}

TEST(SpaceRules, TheImageNeedsRoomWhereItIs) {
  const space_wanted wanted{900, 1000, 10, 900};
  const disk_room small{1799, 5000}, enough{1800, 5000}, other{899, 4000};
  EXPECT_THAT(told(space_findings(wanted, {small, {}, small})), ElementsAre("space-output @ disc"));
  EXPECT_THAT(space_findings(wanted, {enough, {}, enough}), IsEmpty());
  // The output folder is a disk of its own: the image lies beside it, on another one.
  const auto findings = space_findings(wanted, {small, {}, other});
  EXPECT_THAT(told(findings), ElementsAre("space-output @ disc"));
  EXPECT_EQ(findings[0].found,
            "the disk of the folder of the image has 899 bytes free, but the run needs 900");
  EXPECT_THAT(space_findings(wanted, {small, {}, disk_room{900, 4000}}), IsEmpty());
}

TEST(SpaceRules, FilesAndFoldersAreLookedAt) {
  const temporary_folder folder;
  disc_description d = made_disc({made_title()});
  d.titles[0].streams = {stored_from_native(folder.add("a.m2v", std::string(10'000, 'x')))};
  EXPECT_THAT(space_findings(d, folder.path("not/there/yet"), folder.path("")), IsEmpty());
  EXPECT_THAT(space_findings(d, "", ""), IsEmpty());
}

// On Windows a file of this size would be written.
#ifndef _WIN32
TEST(SpaceRules, CheckTellsThemWhateverFoldersAreKnown) {
  const temporary_folder folder;
  const std::string huge = folder.add("a.m2v");
  std::filesystem::resize_file(path_of(huge), std::uintmax_t{1} << 40);
  disc_description d = made_disc({made_title()});
  d.titles[0].streams = {stored_from_native(huge)};
  fact_store facts;
  const auto found = [&](const std::string& output, const std::string& program) {
    const examination e(d, examination::depth::beginnings, facts, {"", output, program, {}});
    std::vector<std::string> rules;
    for (const finding& f : e.findings())
      if (f.rule.starts_with("space-") || f.rule.starts_with("disc-over-"))
        rules.push_back(f.rule + " " + f.file);
    return rules;
  };
  EXPECT_THAT(found("", ""), ElementsAre("disc-over-double-layer "));
  EXPECT_THAT(found("", folder.path()), ElementsAre("disc-over-double-layer "));
  const std::string out = folder.path("dvd");
  EXPECT_THAT(found(out, ""), ElementsAre("disc-over-double-layer ", "space-output " + out));
}
#endif

TEST(DiskRoom, OfAFolderThatIsNotThereIsThatOfTheOneAround) {
  const temporary_folder folder;
  const auto here = room_at(folder.path("")), there = room_at(folder.path("a/b/c"));
  ASSERT_TRUE(here);
  ASSERT_TRUE(there);
  EXPECT_EQ(here->size, there->size);
  EXPECT_GT(here->size, 0u);
  EXPECT_LE(here->free, here->size);
}

}  // namespace
}  // namespace corvane::testing_support
