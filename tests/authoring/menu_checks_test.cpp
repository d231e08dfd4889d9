// What of the menus is refused before a run: files that have gone or do not fit, and colours that
// would keep spumux busy for hours.
#include "authoring/checks.h"
#include "authoring/sample_projects.h"
#include "authoring/texts_of_project.h"
#include "formats/video_standard.h"
#include "project/menu_rows.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane::testing_support {
namespace {

using ::testing::HasSubstr;

TEST(BitmapChecks, TwoBitsAPixelAreNotReadByGm) {
  const temporary_folder folder;
  for (const int bits : {1, 2, 4, 8}) {
    std::string bitmap = "BM" + std::string(60, '\0');
    bitmap[28] = static_cast<char>(bits);
    folder.add("b.bmp", bitmap);
    project p;
    add_menu(p, native_style(), "a.m2v", "", "0\t00:00:00.0\t00:00:00.0\t1",
             " 0/0/100/3/exit/black/" + folder.stored("b.bmp"));
    const std::string why = why_not_these_bitmaps(p, native_style()).value_or("(fine)");
    if (bits == 2) {
      EXPECT_THAT(why, HasSubstr("Button 1 of menu 1 cannot be authored: the bitmap \"" +
                                 folder.path("b.bmp") + "\" has 2 bits a pixel"));
    } else {
      EXPECT_EQ(why, "(fine)") << bits;
    }
  }
}

std::string sequence_header(int height) {
  std::string stream("\0\0\1\xB3\x2D", 5);
  stream += static_cast<char>(height >> 8);
  stream += static_cast<char>(height & 255);
  return stream + '\x23';
}

TEST(MenuStreamChecks, VideoOfTheOtherStandardIsRefused) {
  const temporary_folder folder;
  const auto with = [&](const std::string& stream, const char* region) {
    folder.add("a.m2v", stream);
    project p;
    p.globalregion = region;
    p.menulist = {folder.stored("a.m2v") + "/"};
    return why_not_these_menu_streams(p, native_style()).value_or("(fine)");
  };
  EXPECT_EQ(with(sequence_header(480), "NTSC"), "(fine)");
  EXPECT_EQ(with(sequence_header(240), "NTSC"), "(fine)");
  EXPECT_EQ(with(sequence_header(576), "PAL"), "(fine)");
  EXPECT_EQ(with(sequence_header(288), "PAL"), "(fine)");
  EXPECT_THAT(with(sequence_header(576), "NTSC"), HasSubstr("is PAL, but the project is NTSC"));
  EXPECT_THAT(with(sequence_header(480), "PAL"), HasSubstr("is NTSC, but the project is PAL"));
  EXPECT_THAT(with(std::string(1000, 'x') + sequence_header(288), "NTSC"), HasSubstr("is PAL"));
}

/// What it is, mplex will say.
TEST(MenuStreamChecks, VideoWithoutAHeaderIsLeftToMplex) {
  for (const std::string& stream :
       {std::string(), std::string("x"), sequence_header(576).substr(0, 6), sequence_header(512)})
    EXPECT_EQ(video_standard_of(stream), "");
}

TEST(MenuStreamChecks, FilesThatHaveGoneAreNamed) {
  const temporary_folder folder;
  folder.add("a.m2v");
  folder.add("b.m2v");
  folder.add("a.ac3");
  const auto with = [&](const std::string& second) {
    project p;
    p.menulist = {folder.stored("a.m2v") + "/" + folder.stored("a.ac3"), second};
    return why_not_these_menu_streams(p, native_style()).value_or("(fine)");
  };
  EXPECT_EQ(with(folder.stored("b.m2v") + "/"), "(fine)");
  const auto missing = [&](const char* name) {
    return "Menu 2 cannot be authored: the file \"" + folder.path(name) +
           "\" is missing.  Please put it back, or remove the menu and add it again.";
  };
  EXPECT_EQ(with(folder.stored("c.m2v") + "/"), missing("c.m2v"));
  EXPECT_EQ(with(folder.stored("b.m2v") + "/" + folder.stored("c.ac3")), missing("c.ac3"));
}

}  // namespace
}  // namespace corvane::testing_support
