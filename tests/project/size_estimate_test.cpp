// The status text: counts and size of all files, its colour, and files that are missing.
#include "support/command_test.h"

#include <filesystem>

namespace corvane {
namespace {

class SizeEstimate : public testing_support::command_test {
 protected:
  /// A file of that many bytes which takes no room on the disk.
  std::string add_sized(const std::string& name, std::uintmax_t bytes) {
    folder.add(name, "");
    std::filesystem::resize_file(path_of(folder.path(name)), bytes);
    return folder.stored(name);
  }
};

TEST_F(SizeEstimate, EmptyProjectHasNoTitlesNoMenusAndNoSize) {
  p.dvdsizetext = start_up_dvdsizetext;
  EXPECT_EQ(p.dvdsizetext, "0 titles\r\n0 menus\r\n0 gig total");
  dvdsize(doc);
  EXPECT_EQ(p.dvdsizetext, "0 titles\r\n0 menus\r\n0.000 gig total");
}

TEST_F(SizeEstimate, CountsTheFilesOfTitlesAndMenusInBinaryGigs) {
  const std::uintmax_t gig = 1073741824;
  p.List11 = {add_sized("a.m2v", gig) + "/" + add_sized("a.ac3", gig / 2), add_sized("b.vob", gig)};
  p.List1 = {"title1:a.m2v/a.ac3", "title2:b.vob"};
  p.menulist = {add_sized("m.m2v", gig / 4) + "/" + add_sized("m.ac3", gig / 4)};
  dvdsize(doc);
  EXPECT_EQ(p.dvdsizetext, "2 titles\r\n1 menus\r\n3.000 gig total");
  EXPECT_FALSE(p.dvdsizetext_red);
}

TEST_F(SizeEstimate, ThreeDecimalsAreRoundedHalfUp) {
  const std::pair<std::uintmax_t, const char*> table[] = {
      {1, "0.000"},          {536870, "0.000"},     {536871, "0.001"},      {67108864, "0.063"},
      {1073204953, "0.999"}, {1073204954, "1.000"}, {10737418240, "10.000"}};
  for (const auto& [bytes, gigs] : table) {
    p.List11 = {add_sized("a.vob", bytes)};
    dvdsize(doc);
    EXPECT_EQ(p.dvdsizetext, "0 titles\r\n0 menus\r\n" + std::string(gigs) + " gig total") << bytes;
  }
}

TEST_F(SizeEstimate, MoreThanADiscTurnsRedAndBackToBlack) {
  p.List11 = {add_sized("a.vob", 4700000000)};
  dvdsize(doc);
  EXPECT_FALSE(p.dvdsizetext_red);
  add_sized("a.vob", 4700000001);
  dvdsize(doc);
  EXPECT_TRUE(p.dvdsizetext_red);
  EXPECT_EQ(p.dvdsizetext, "0 titles\r\n0 menus\r\n4.377 gig total");
  add_sized("a.vob", 1);
  dvdsize(doc);
  EXPECT_FALSE(p.dvdsizetext_red);
}

TEST_F(SizeEstimate, MenuWithoutAudioMissesNothing) {
  p.menulist = {add_sized("m.m2v", 5) + "/"};
  dvdsize(doc);
  EXPECT_EQ(p.dvdsizetext, "0 titles\r\n1 menus\r\n0.000 gig total");
}

TEST_F(SizeEstimate, EveryMissingFileGetsAMessageEachTimeAndTheStatusStays) {
  p.List11 = {folder.stored("gone.m2v") + "/" + add_sized("a.ac3", 1)};
  p.menulist = {folder.stored("gone menu.m2v") + "/" + folder.stored("gone menu.ac3")};
  p.dvdsizetext = "as it was";
  p.dvdsizetext_red = true;
  for (int refresh = 0; refresh < 2; ++refresh) {
    expect_missing(folder.path("gone.m2v"));
    expect_missing(folder.path("gone menu.m2v"));
    expect_missing(folder.path("gone menu.ac3"));
    dvdsize(doc);
    EXPECT_EQ(p.dvdsizetext, "as it was");
    EXPECT_TRUE(p.dvdsizetext_red);
  }
}

TEST_F(SizeEstimate, AFolderIsNoFile) {
  std::filesystem::create_directories(path_of(folder.path("folder.vob")));
  p.List11 = {folder.stored("folder.vob")};
  expect_missing(folder.path("folder.vob"));
  dvdsize(doc);
}

TEST_F(SizeEstimate, AnEmptyStreamPathIsMissing) {
  p.List11 = {add_sized("a.m2v", 1) + "/"};
  expect_missing("");
  dvdsize(doc);
}

}  // namespace
}  // namespace corvane
