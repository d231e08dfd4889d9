// Names that shells, scripts, XML and the tools' own patterns take for something else must reach
// the disc unharmed, wherever they stand.
#include "iso_volume.h"
#include "studio.h"

#include <gtest/gtest.h>

namespace corvane::disc {
namespace {

/// Authors with `name` in every place: folders, files, output folder and program folder.
void expect_disc_under(const std::string& name) {
  const studio s(name + " work", name + " disc", name + " home");
  project p;
  p.isocreate = true;
  add_title(p, {s.copy_media("clip-ntsc.m2v", name + "/" + name + ".m2v"),
                s.copy_media("clip.ac3", name + "/" + name + ".ac3")});
  add_title(p, {s.copy_media("muxed-ntsc.vob", name + "/" + name + ".vob")});
  add_menu(p, s.copy_media("menu-ntsc.m2v", name + "/" + name + " menu.m2v"),
           s.copy_media("menu.ac3", name + "/" + name + " menu.ac3"),
           {" 100/ 100/ 300/ 140/jump title 1/yellow/magenta"});
  const contents disc = s.authored(p);
  EXPECT_EQ(disc.titlesets, 1);
  EXPECT_EQ(disc.titles.size(), 2u);
  ASSERT_FALSE(disc.menus.empty());
  ASSERT_EQ(disc.menus[0].buttons.size(), 1u);
  EXPECT_NE(disc.menus[0].buttons[0].command.text(), "Nop");
  const auto volume = read_iso_volume(s.image());
  EXPECT_TRUE(volume) << volume.error;
  // Nothing but what was put there: a name that went astray would leave a file elsewhere.
  EXPECT_EQ(files_in(s.out()), std::vector<std::string>());
  EXPECT_EQ(files_in(s.folder().path()), std::vector<std::string>());
}

TEST(OddNames, BlanksAuthorADisc) {
  expect_disc_under("my  holiday film");
}
TEST(OddNames, AmpersandsAuthorADisc) {
  expect_disc_under("Tom & Jerry &amp; co");
}
TEST(OddNames, ApostrophesAuthorADisc) {
  expect_disc_under("it's a 'film'");
}
TEST(OddNames, PerCentSignsAuthorADisc) {
  expect_disc_under("50% of %d %s %PATH% 100%");
}
TEST(OddNames, ExclamationMarksAuthorADisc) {
  expect_disc_under("wow! !PATH! !!");
}
TEST(OddNames, HashMarksAuthorADisc) {
  expect_disc_under("#1 film #2");
}
TEST(OddNames, CaretsAuthorADisc) {
  expect_disc_under("2^10 ^^");
}
TEST(OddNames, DollarSignsAuthorADisc) {
  expect_disc_under("$HOME $(id) ${x}");
}
TEST(OddNames, BackquotesAuthorADisc) {
  expect_disc_under("`id` film`");
}
TEST(OddNames, UmlautsAuthorADisc) {
  expect_disc_under("\u00c4\u00e4\u00f6\u00fc\u00df \u00e9t\u00e9");
}
TEST(OddNames, ChineseJapaneseAndKoreanAuthorADisc) {
  expect_disc_under("\u6f22\u5b57 \u304b\u306a \ud55c\uad6d");
}
TEST(OddNames, BracketsAndTheRestAuthorADisc) {
  expect_disc_under("a (1) [2] {3} ~ * ? , ; = + @ - .x");
}
TEST(OddNames, EverythingAtOnceAuthorsADisc) {
  expect_disc_under("-a & 'b' 50%d !c #1 ^2 $HOME `id` \u00fc\u6f22");
}

}  // namespace
}  // namespace corvane::disc
