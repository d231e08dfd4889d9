#include "runner/run_files.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

TEST(RunFiles, NumbersStandInTheNames) {
  EXPECT_EQ(run_file::menu_control(12), "menu12.xml");
  EXPECT_EQ(run_file::highlight_picture(1), "highlight1.png");
  EXPECT_EQ(run_file::select_picture(2), "select2.png");
  EXPECT_EQ(run_file::subtitle_control(3, 14), "sub3-14.xml");
  EXPECT_EQ(run_file::title_stream(5), "title5.mpg");
  EXPECT_EQ(run_file::menu_stream(6), "menu6.mpg");
  EXPECT_EQ(run_file::menu_with_buttons(7), "menusub7.mpg");
}

TEST(RunFiles, ControlFileOfAMenuGivesItsNumber) {
  EXPECT_EQ(run_file::menu_of_control("menu12.xml"), "12");
  for (const char* other : {"menu.xml", "menu1.xm", "xmenu1.xml", "menu1a.xml", "menusub1.xml",
                            "menu1.mpg", "menu-1.xml", "", "menu"})
    EXPECT_FALSE(run_file::menu_of_control(other)) << other;
}

TEST(RunFiles, ControlFileOfASubtitleGivesItsNumbers) {
  const auto found = run_file::subtitle_of_control(run_file::subtitle_control(12, 3));
  ASSERT_TRUE(found);
  EXPECT_EQ(found->title, "12");
  EXPECT_EQ(found->number, "3");
  for (const char* other :
       {"sub7.xml", "sub-1.xml", "sub1-.xml", "sub1-2-3.xml", "sub1-a.xml", "menu1.xml", "sub.xml"})
    EXPECT_FALSE(run_file::subtitle_of_control(other)) << other;
}

TEST(RunFiles, StreamsOfARunAreKnownAgainAndNoOthers) {
  for (const char* own : {"presub.mpg", "title1.mpg", "menu12.mpg", "menusub3.mpg"})
    EXPECT_TRUE(run_file::is_stream(own)) << own;
  for (const char* other : {"title.mpg", "title1.mpeg", "menu.mpg", "menu1a.mpg", "mytitle1.mpg",
                            "title1.mpg.mpg", "menusub.mpg", "presub1.mpg", "presub.mpg ", ""})
    EXPECT_FALSE(run_file::is_stream(other)) << other;
}

}  // namespace
}  // namespace corvane
