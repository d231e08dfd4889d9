// The stores' own operations.
#include "project/project.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using rows = std::vector<std::string>;

TEST(Project, StartsEmpty) {
  const project p;
  EXPECT_EQ(p.menubuttons, rows{""});
  EXPECT_EQ(p.firstplay, "<default>");
  EXPECT_EQ(p.Frame1, "0 titles loaded");
  EXPECT_TRUE(p.Comboregion_enabled);
}

TEST(Project, UUBoundOfAnArrayNeverDimensionedIsMinusOne) {
  EXPECT_EQ(UUBound({}), -1);
  EXPECT_EQ(UUBound({""}), 0);
  EXPECT_EQ(UUBound({"a", "b", "c"}), 2);
}

TEST(Project, ArrayRemoveItemMovesLaterElementsDown) {
  project p;
  p.menubuttons = {"a", "b", "c"};
  ArrayRemoveItem(p, 1);
  EXPECT_EQ(p.menubuttons, (rows{"a", "c"}));
  ArrayRemoveItem(p, 0);
  EXPECT_EQ(p.menubuttons, rows{"c"});
}

TEST(Project, ArrayRemoveItemOfTheOnlyElementLeavesOneEmpty) {
  project p;
  p.menubuttons = {"a"};
  ArrayRemoveItem(p, 0);
  EXPECT_EQ(p.menubuttons, rows{""});
}

TEST(Project, ArrayRemoveItemPastTheEndWipesTheArray) {
  for (const int index : {2, 3, 1000, -1}) {
    project p;
    p.menubuttons = {"a", "b"};
    ArrayRemoveItem(p, index);
    EXPECT_EQ(p.menubuttons, rows{""}) << index;
  }
  project none;
  none.menubuttons.clear();
  ArrayRemoveItem(none, 0);
  EXPECT_EQ(none.menubuttons, rows{""});
}

TEST(Project, List1RowNumbersTheTitleAndNamesItsFiles) {
  EXPECT_EQ(List1_row(1, "C:\\dvd\\movie.m2v/C:\\dvd\\movie.ac3"), "title1:movie.m2v/movie.ac3");
  EXPECT_EQ(List1_row(2, "\\home\\u\\movie.m2v/\\home\\u\\english.ac3/\\srv\\french.mp2"),
            "title2:movie.m2v/english.ac3/french.mp2");
  EXPECT_EQ(List1_row(3, "D:\\vts_01_1.vob"), "title3:vts_01_1.vob");
  EXPECT_EQ(List1_row(12, "plain.vob"), "title12:plain.vob");
}

TEST(Project, RebuildingList1FollowsList11) {
  project p;
  p.List1 = {"old", "rows", "and", "more"};
  p.List11 = {"C:\\b.m2v/C:\\b.ac3", "C:\\a.vob"};
  rebuild_List1(p);
  EXPECT_EQ(p.List1, (rows{"title1:b.m2v/b.ac3", "title2:a.vob"}));
}

TEST(Project, ARowWithoutASlashIsMuxedWhateverItsExtension) {
  EXPECT_TRUE(is_muxed("C:\\movie.m2v"));
  EXPECT_TRUE(is_muxed("title1:movie.m2v"));
  EXPECT_FALSE(is_muxed("C:\\movie.vob/C:\\movie.ac3"));
}

TEST(Project, TitleCountIsWrittenWithoutBlanks) {
  project p;
  p.List1 = {"a", "b", "c"};
  show_title_count(p);
  EXPECT_EQ(p.Frame1, "3 titles loaded");
}

}  // namespace
}  // namespace corvane
