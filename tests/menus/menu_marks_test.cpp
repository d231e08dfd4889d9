// What the editor's picture says about buttons.
#include "menus/menu_marks.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string record(int x0, int y0, int x1, int y1, const std::string& action = "exit") {
  const auto text = [](int n) { return " " + std::to_string(n) + "/"; };
  return text(x0) + text(y0) + text(x1) + text(y1) + action + "/white/yellow";
}

std::vector<button_mark> marks(const std::vector<std::string>& records) {
  return marks_of(records, [](const disc_command& c) { return "does " + c.text; });
}

TEST(MenuMarks, SayNumberAndWhatIsDone) {
  const auto all = marks({record(0, 0, 50, 20, "jump menu 2"), record(0, 100, 50, 120)});
  ASSERT_EQ(all.size(), 2u);
  EXPECT_EQ(all[0].words, "1: does jump menu 2");
  EXPECT_EQ(all[1].words, "2: does exit");
  EXPECT_TRUE(all[0].is_reached);
  EXPECT_THAT(all[0].overlaps, IsEmpty());
}

TEST(MenuMarks, BlankRecordIsNoButtonAndTheOthersKeepTheirNumbers) {
  const auto all = marks({record(0, 0, 50, 20), " ", record(0, 100, 50, 120)});
  ASSERT_EQ(all.size(), 2u);
  EXPECT_EQ(all[1].index, 2);
  EXPECT_EQ(all[1].words, "3: does exit");
  EXPECT_THAT(ways_of({record(0, 0, 50, 20), " ", record(0, 100, 50, 120)}),
              ElementsAre(key_way{arrow_key::down, 0, 2}, key_way{arrow_key::up, 2, 0}));
}

TEST(MenuMarks, OverlappingButtonsNameEachOtherAsAcceptDoes) {
  // The third only touches the first.
  const auto all = marks({record(100, 100, 200, 150), record(150, 120, 250, 180),
                          record(0, 100, 100, 150), record(400, 400, 450, 420)});
  EXPECT_THAT(all[0].overlaps, ElementsAre(1, 2));
  EXPECT_THAT(all[1].overlaps, ElementsAre(0));
  EXPECT_THAT(all[2].overlaps, ElementsAre(0));
  EXPECT_THAT(all[3].overlaps, IsEmpty());
}

TEST(MenuMarks, ButtonThatNoKeyLeadsToIsTold) {
  // Right over the first: neither is beside the other.
  const auto all =
      marks({record(100, 100, 200, 150), record(100, 200, 200, 250), record(100, 100, 200, 150)});
  EXPECT_TRUE(all[0].is_reached);
  EXPECT_TRUE(all[1].is_reached);
  EXPECT_FALSE(all[2].is_reached);
}

TEST(MenuMarks, WaysOfOneButtonAreItsFourKeys) {
  const std::vector<std::string> cross = {record(300, 200, 400, 240), record(300, 100, 400, 140),
                                          record(300, 300, 400, 340), record(100, 200, 200, 240),
                                          record(500, 200, 600, 240)};
  EXPECT_THAT(ways_of(cross, 0),
              ElementsAre(key_way{arrow_key::up, 0, 1}, key_way{arrow_key::down, 0, 2},
                          key_way{arrow_key::left, 0, 3}, key_way{arrow_key::right, 0, 4}));
  EXPECT_GT(ways_of(cross).size(), 8u);
}

TEST(MenuMarks, AKeyThatStaysLeadsNowhere) {
  EXPECT_THAT(ways_of({record(300, 200, 400, 240)}), IsEmpty());
  EXPECT_THAT(ways_of({}), IsEmpty());
}

TEST(MenuMarks, ThousandsOfButtonsAreNotHeldAgainstEachOther) {
  const std::vector<std::string> many(5000, record(0, 0, 100, 100));
  const auto all = marks(many);
  EXPECT_EQ(all.size(), 5000u);
  EXPECT_THAT(all.back().overlaps, IsEmpty());
  EXPECT_THAT(ways_of(many), IsEmpty());
  std::vector<std::string> column;
  for (int i = 0; i < 101; ++i)
    column.push_back(record(0, i * 4, 100, i * 4 + 3));
  EXPECT_THAT(ways_of(column), IsEmpty());
  column.pop_back();
  EXPECT_EQ(ways_of(column).size(), 198u);  // up and down, but at the ends
}

}  // namespace
}  // namespace corvane
