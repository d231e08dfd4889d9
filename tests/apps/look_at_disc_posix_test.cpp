// What conspawn says while it looks at a finished disc, and of what it found.
#include "apps/author_fixture_posix.h"
#include "apps/conspawn/look_at_disc.h"
#include "platform/files/files.h"
#include "runner/run_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;
using testing_support::AuthorProgram;

class LookAtDisc : public AuthorProgram {
 protected:
  /// A disc of one title, and what was foreseen of it.
  void SetUp() override {
    ASSERT_EQ(run({project_, out()}), 0) << stderr_;
    const auto foreseen = read_foreseen(app(run_file::foreseen));
    ASSERT_TRUE(foreseen) << foreseen.error;
    foreseen_ = **foreseen;
  }

  /// The lines that are printed, steps with "*"; `pause` as look_at_disc has it.
  std::vector<std::string> look(int pause = 1000, bool all_well = true) {
    std::vector<std::string> lines;
    const look_output notes{
        [&](std::string_view line) { lines.emplace_back(line); },
        [&](std::string_view step) { lines.push_back("*" + std::string(step)); }};
    found_ = look_at_disc(std::make_shared<const foreseen_run>(foreseen_), all_well, notes, pause);
    return lines;
  }

  static constexpr finding_item picture{finding_item::whole_kind::title, 1,
                                        finding_item::part_kind::video, 0};
  foreseen_run foreseen_;
  std::vector<finding> found_;
};

TEST_F(LookAtDisc, ThatIsRightSaysSoAndHowMuchWasRead) {
  EXPECT_THAT(look(), ElementsAre("*reading the disc back",
                                  "INFO: the disc is read back and held against what was asked for",
                                  StartsWith("INFO: the disc is as it should be: ")));
  EXPECT_THAT(found_, IsEmpty());
}

TEST_F(LookAtDisc, WarningsMakeItCompleteAndAreToLookAt) {
  foreseen_.disc.say(picture, disc_trait_kind::coding, "MPEG-1");
  foreseen_.told = {{picture}};
  const std::vector<std::string> lines = look();
  ASSERT_THAT(lines, SizeIs(4));
  EXPECT_THAT(lines[2], StartsWith("WARN: title 1, video: coding: MPEG-2; it must be MPEG-1; "));
  EXPECT_THAT(lines[3], StartsWith("INFO: the disc is complete, but look at the warnings above: "));
  EXPECT_THAT(found_, SizeIs(1));
}

TEST_F(LookAtDisc, ErrorsDoNot) {
  foreseen_.disc.say(picture, disc_trait_kind::coding, "MPEG-1");
  const std::vector<std::string> lines = look();
  ASSERT_THAT(lines, SizeIs(3));
  EXPECT_THAT(lines[2], StartsWith("ERR:  title 1, video: coding: MPEG-2"));
}

TEST_F(LookAtDisc, OfARunThatWentWrongIsNotTaken) {
  EXPECT_THAT(look(1000, false), IsEmpty());
}

TEST_F(LookAtDisc, TellsHowFarItIsWithEachNumberOnce) {
  // Takes a while to read, and no room.
  std::filesystem::resize_file(path_of(folder_.add("disc/VIDEO_TS/VTS_09_1.VOB")),
                               std::uintmax_t{1} << 30);
  const std::string before = "INFO: reading the disc back: ";
  std::vector<int> percents;
  for (const std::string& line : look(1))
    if (line.starts_with(before)) {
      EXPECT_EQ(line.back(), '%');
      percents.push_back(std::stoi(line.substr(before.size())));
    }
  EXPECT_THAT(percents, testing::Not(IsEmpty()));
  EXPECT_TRUE(std::ranges::is_sorted(percents));
  EXPECT_EQ(std::ranges::adjacent_find(percents), percents.end());
  EXPECT_GE(percents.front(), 0);
  EXPECT_LE(percents.back(), 100);
}

}  // namespace
}  // namespace corvane
