// "Repeat": where the buttons stand and what they do.
#include "menus/repeated_buttons.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvane {
namespace {

using places = std::vector<menu_rectangle>;
using texts = std::vector<std::string>;

TEST(RepeatedButtons, RowColumnAndGridStandByRows) {
  const menu_rectangle first{100, 50, 200, 80};
  EXPECT_EQ(repeated_places(first, {.across = 3, .gap_across = 10}, 479),
            (places{{100, 50, 200, 80}, {210, 50, 310, 80}, {320, 50, 420, 80}}));
  EXPECT_EQ(repeated_places(first, {.down = 2, .gap_down = 20}, 479),
            (places{{100, 50, 200, 80}, {100, 100, 200, 130}}));
  EXPECT_EQ(
      repeated_places(first, {.across = 2, .down = 2, .gap_across = 5, .gap_down = 6}, 479),
      (places{{100, 50, 200, 80}, {205, 50, 305, 80}, {100, 86, 200, 116}, {205, 86, 305, 116}}));
}

TEST(RepeatedButtons, OnEvenLinesAllStay) {
  EXPECT_EQ(repeated_places({0, 50, 9, 80}, {.down = 3, .gap_down = 5}, 479),
            (places{{0, 50, 9, 80}, {0, 86, 9, 116}, {0, 122, 9, 152}}));
  EXPECT_EQ(repeated_places({0, 51, 9, 80}, {.down = 2, .gap_down = 6}, 479),
            (places{{0, 51, 9, 80}, {0, 86, 9, 115}}));
}

TEST(RepeatedButtons, ThoseThatReachOutOfThePictureAreLeftOut) {
  EXPECT_EQ(repeated_places({600, 50, 700, 80}, {.across = 3, .gap_across = 10}, 479).size(), 1u);
  EXPECT_EQ(repeated_places({0, 400, 9, 430}, {.down = 9, .gap_down = 10}, 479).size(), 2u);
  EXPECT_EQ(repeated_places({0, 400, 9, 430}, {.down = 9, .gap_down = 10}, 575).size(), 4u);
  EXPECT_EQ(repeated_places({100, 100, 200, 130}, {.down = 9, .gap_down = -80}, 479).size(), 3u);
}

TEST(RepeatedButtons, EachDoesTheNextThingAsLongAsThereIsOne) {
  const std::vector<int> chapters = {3, 1, 2};
  const struct {
    const char* first;
    action_count how;
    texts wanted;
  } table[] = {
      {"jump title 1", action_count::titles, {"jump title 1", "jump title 2", "jump title 3"}},
      {"jump title  1", action_count::titles, {"jump title  1", "jump title 2", "jump title 3"}},
      {"jump title 2 chapter  1",
       action_count::titles,
       {"jump title 2 chapter  1", "jump title 3 chapter  1"}},
      {"jump title 1 chapter  2",
       action_count::chapters,
       {"jump title 1 chapter  2", "jump title 1 chapter  3", "jump title 2 chapter  1",
        "jump title 3 chapter  1", "jump title 3 chapter  2"}},
      {"jump title 1",
       action_count::chapters,
       {"jump title 1", "jump title 1 chapter  2", "jump title 1 chapter  3",
        "jump title 2 chapter  1", "jump title 3 chapter  1", "jump title 3 chapter  2"}},
      {"jump title 9", action_count::titles, {"jump title 9"}},
      {"jump title 3 chapter  2", action_count::same, texts(6, "jump title 3 chapter  2")},
      {"exit", action_count::chapters, texts(6, "exit")},
      {"jump titles", action_count::chapters, texts(6, "jump titles")},
      {"jump title 1 chapter x", action_count::titles, texts(6, "jump title 1 chapter x")},
  };
  for (const auto& row : table)
    EXPECT_EQ(repeated_actions(row.first, row.how, chapters, 6), row.wanted) << row.first;
  EXPECT_EQ(repeated_actions("jump title 1", action_count::titles, chapters, 2).size(), 2u);
}

TEST(RepeatedButtons, TitlesAreOfferedWhereAChapterIsNotWhatGoesOn) {
  const std::vector<int> chapters = {3, 1, 2};
  const struct {
    const char* first;
    action_count usual;
  } table[] = {
      {"jump title 1", action_count::titles},
      {"jump title 1 chapter  1", action_count::chapters},
      {"jump title 2 chapter  1", action_count::titles},
      {"jump title 3 chapter  2", action_count::chapters},
      {"jump title 9 chapter  1", action_count::titles},
      {"jump title 2 chapter  3", action_count::chapters},
      {"exit", action_count::chapters},
  };
  for (const auto& row : table)
    EXPECT_EQ(usual_count(row.first, chapters), row.usual) << row.first;
}

}  // namespace
}  // namespace corvane
