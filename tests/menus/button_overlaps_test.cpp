// Which buttons overlap, and what is said about them.
#include "menus/button_overlaps.h"

#include "editor_test.h"

namespace corvane {
namespace {

using testing_support::record_at;
using testing_support::rows;
using pairs = std::vector<button_pair>;

pairs overlaps(const rows& records) {
  return overlapping_buttons(records, 1000);
}

TEST(ButtonOverlaps, ButtonsApartDoNotOverlap) {
  EXPECT_EQ(overlaps({}), pairs{});
  EXPECT_EQ(overlaps({record_at(0, 0, 100, 3)}), pairs{});
  EXPECT_EQ(overlaps({record_at(0, 0, 100, 3), record_at(0, 4, 100, 7)}), pairs{});
  EXPECT_EQ(overlaps({record_at(0, 0, 100, 3), record_at(101, 0, 200, 3)}), pairs{});
}

TEST(ButtonOverlaps, CopyOverlapsItsOriginal) {
  EXPECT_EQ(overlaps({first_button, first_button}), (pairs{{1, 2}}));
}

TEST(ButtonOverlaps, ButtonsThatTouchAtAnEdgeOverlap) {
  EXPECT_EQ(overlaps({record_at(0, 0, 100, 40), record_at(100, 20, 200, 60)}), (pairs{{1, 2}}));
  EXPECT_EQ(overlaps({record_at(100, 20, 200, 60), record_at(0, 0, 100, 40)}), (pairs{{1, 2}}));
  EXPECT_EQ(overlaps({record_at(0, 0, 100, 40), record_at(50, 40, 60, 80)}), (pairs{{2, 1}}));
}

TEST(ButtonOverlaps, ButtonsThatTouchAtACornerOverlap) {
  const std::string middle = record_at(100, 100, 200, 200);
  for (const std::string& other : {record_at(0, 0, 100, 100), record_at(200, 0, 300, 100),
                                   record_at(0, 200, 100, 300), record_at(200, 200, 300, 300)})
    EXPECT_EQ(overlaps({middle, other}), (pairs{{1, 2}})) << other;
}

TEST(ButtonOverlaps, ButtonInsideAnotherIsFoundFromWhicheverItIs) {
  const std::string outer = record_at(0, 0, 100, 100), inner = record_at(10, 10, 20, 20);
  EXPECT_EQ(overlaps({inner, outer}), (pairs{{1, 2}}));
  EXPECT_EQ(overlaps({outer, inner}), (pairs{{2, 1}}));
}

TEST(ButtonOverlaps, CrossingWithoutACornerInsideIsNotFound) {
  EXPECT_EQ(overlaps({record_at(0, 40, 100, 60), record_at(40, 0, 60, 100)}), pairs{});
}

TEST(ButtonOverlaps, EachPairIsFoundOnce) {
  EXPECT_EQ(overlaps({first_button, first_button, first_button}), (pairs{{1, 2}, {1, 3}, {2, 3}}));
}

TEST(ButtonOverlaps, CoordinatesAreReadAsWholeNumbers) {
  EXPECT_EQ(overlaps({"0/0/100.9/3/exit/black/black", "101/0/200/3/exit/black/black"}), pairs{});
}

class Checkbuttons_ : public testing_support::command_test {};

TEST_F(Checkbuttons_, ButtonsApartSayNothing) {
  EXPECT_EQ(Checkbuttons(doc, {record_at(0, 0, 100, 3), record_at(0, 4, 100, 7)}), "");
}

TEST_F(Checkbuttons_, EachPairGetsAMessage) {
  expect_refusal("button1 intersects with button3");
  expect_refusal("button2 intersects with button1");
  EXPECT_EQ(Checkbuttons(doc, {record_at(0, 0, 100, 100), record_at(10, 10, 20, 20),
                               record_at(90, 90, 200, 200)}),
            "button1 intersects with button3\nbutton2 intersects with button1\n");
}

TEST_F(Checkbuttons_, AfterAHundredMessagesOneStandsForTheRest) {
  const rows records(36, first_button);  // 630 pairs
  int told = 0;
  for (int a = 1; a <= 36; ++a)
    for (int b = a + 1; b <= 36; ++b)
      if (++told <= 100)
        expect_refusal("button" + std::to_string(a) + " intersects with button" +
                       std::to_string(b));
  expect_refusal("More buttons intersect");
  EXPECT_NE(Checkbuttons(doc, records), "");
}

}  // namespace
}  // namespace corvane
