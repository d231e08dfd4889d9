#include "runner/tools/dvdauthor.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

std::string title_element(const std::string& chapters) {
  return "        <pgc>\r\n          <vob file=\"/o/title1.mpg\" chapters=\"" + chapters +
         "\" />\r\n        </pgc>\r\n";
}

std::vector<std::string> left_out(const std::string& xml) {
  std::vector<std::string> texts;
  for (const left_out_chapter& chapter : chapters_left_out(xml))
    texts.push_back(std::to_string(chapter.title) + " " + chapter.time + " " + chapter.after);
  return texts;
}

using rows = std::vector<std::string>;

TEST(ChapterOrder, ChaptersInOrderAreAllThere) {
  EXPECT_EQ(left_out(title_element("00:00:00.00,00:05:00.00,01:00:00.00")), rows{});
  EXPECT_EQ(left_out(title_element("")), rows{});
  EXPECT_EQ(left_out(""), rows{});
}

TEST(ChapterOrder, ChapterBehindALaterOneIsLeftOut) {
  EXPECT_EQ(left_out(title_element("00:00:00.00,00:02:00.00,00:00:30.00,00:01:00.00,00:03:00.00")),
            (rows{"1 00:00:30.00 00:02:00.00", "1 00:01:00.00 00:02:00.00"}));
}

TEST(ChapterOrder, TwoOfOneTimeAreOneChapter) {
  EXPECT_EQ(left_out(title_element("00:00:00.00,00:01:00.00,00:01:00.00,00:00:60.00")), rows{});
}

TEST(ChapterOrder, TimesAreReadAsTheToolReadsThem) {
  EXPECT_EQ(left_out(title_element("0,:5 .5,0:0:0:1,6")), (rows{"1 .5 :5", "1 0:0:0:1 :5"}));
}

TEST(ChapterOrder, EachTitleHasItsOwnOrder) {
  EXPECT_EQ(left_out(title_element("0,10") + title_element("0,5") + title_element("0,7,6")),
            rows{"3 6 7"});
}

TEST(ChapterOrder, WhatIsNoTimeIsPassedOver) {
  EXPECT_EQ(left_out(title_element("00:02:00.00,ab:cd:ef.gh,,1.5:0:0, 00:01:00.00 ")),
            rows{"1 00:01:00.00 00:02:00.00"});
  EXPECT_EQ(left_out(" chapters=\"0,9,8"), rows{"1 8 9"});  // cut off
}

}  // namespace
}  // namespace corvane
