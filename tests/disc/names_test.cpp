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

TEST(odd_names, blanks_author_a_disc) {
  expect_disc_under("my  holiday film");
}
TEST(odd_names, ampersands_author_a_disc) {
  expect_disc_under("Tom & Jerry &amp; co");
}
TEST(odd_names, apostrophes_author_a_disc) {
  expect_disc_under("it's a 'film'");
}
TEST(odd_names, per_cent_signs_author_a_disc) {
  expect_disc_under("50% of %d %s %PATH% 100%");
}
TEST(odd_names, exclamation_marks_author_a_disc) {
  expect_disc_under("wow! !PATH! !!");
}
TEST(odd_names, hash_marks_author_a_disc) {
  expect_disc_under("#1 film #2");
}
TEST(odd_names, carets_author_a_disc) {
  expect_disc_under("2^10 ^^");
}
TEST(odd_names, dollar_signs_author_a_disc) {
  expect_disc_under("$HOME $(id) ${x}");
}
TEST(odd_names, backquotes_author_a_disc) {
  expect_disc_under("`id` film`");
}
TEST(odd_names, umlauts_author_a_disc) {
  expect_disc_under("\u00c4\u00e4\u00f6\u00fc\u00df \u00e9t\u00e9");
}
TEST(odd_names, chinese_japanese_and_korean_author_a_disc) {
  expect_disc_under("\u6f22\u5b57 \u304b\u306a \ud55c\uad6d");
}
TEST(odd_names, brackets_and_the_rest_author_a_disc) {
  expect_disc_under("a (1) [2] {3} ~ * ? , ; = + @ - .x");
}
TEST(odd_names, everything_at_once_authors_a_disc) {
  expect_disc_under("-a & 'b' 50%d !c #1 ^2 $HOME `id` \u00fc\u6f22");
}

}  // namespace
}  // namespace corvane::disc
