// The map of a disc as text of an SVG picture, and what its cards say.
#include "authoring/map_svg.h"

#include "authoring/random_maps.h"
#include "authoring/sample_projects.h"
#include "formats/xml_reader.h"
#include "project/disc_of.h"
#include "support/golden.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace corvane::testing_support {
namespace {

using testing::HasSubstr;

std::string svg_of_disc(const disc_description& d,
                        const std::map<map_place, std::string>& lengths = {},
                        const std::map<map_place, std::string>& pictures = {}) {
  const disc_map map = map_of(d, false);
  return svg_of(map, cards_of(d, map, lengths), lay_out(map), pictures);
}

TEST(MapSvg, IsTheExpectedText) {
  const map_place title_1{map_place::kind::title, 1}, menu_1{map_place::kind::menu, 1};
  expect_golden(std::string(CORVANE_GOLDEN_FOLDER) + "/map",
                {{"plain-menus.svg", svg_of_disc(disc_of(plain_menus(posix).p),
                                                 {{title_1, "24:10 min"}}, {{menu_1, "PNG"}})},
                 {"jump-table.svg", svg_of_disc(disc_of(jump_table(posix).p))}});
}

TEST(MapSvg, IsXmlWhateverNamesAreLike) {
  disc_description d = random_disc(3);
  d.titles[0].streams = {"\\v\\<b>&\"]]> \xC3\xA9 \xFF \x01.m2v"};
  d.titles[0].post = command_of("<a>&\x02");
  const std::string text = svg_of_disc(d);
  const auto fault = first_xml_fault(text);
  EXPECT_FALSE(fault) << fault->what << " in line " << fault->line;
  EXPECT_THAT(text, HasSubstr("&lt;b&gt;&amp;&quot;]]&gt;"));
}

TEST(MapSvg, TextsAreCutToTheirRoom) {
  EXPECT_EQ(cut_to_columns("abcdef", 6), "abcdef");
  EXPECT_EQ(cut_to_columns("abcdefg", 6), "abcde\xE2\x80\xA6");
  EXPECT_EQ(cut_to_columns("\xE6\x97\xA5\xE6\x9C\xAC", 4), "\xE6\x97\xA5\xE6\x9C\xAC");
  EXPECT_EQ(cut_to_columns("\xE6\x97\xA5\xE6\x9C\xAC", 3), "\xE6\x97\xA5\xE2\x80\xA6");
  EXPECT_EQ(cut_to_columns("\xC3\xA9\xC3\xA9\xC3\xA9", 2), "\xC3\xA9\xE2\x80\xA6");
  EXPECT_EQ(cut_to_columns("", 3), "");
}

TEST(MapCards, SayWhatATitleIsAndWhereItLeads) {
  const disc_description d = disc_of(plain_menus(posix).p);
  const disc_map map = map_of(d, false);
  const auto cards = cards_of(d, map, {{{map_place::kind::title, 1}, "24:10 min"}});
  ASSERT_EQ(cards.size(), map.nodes.size());
  EXPECT_EQ(cards.front().heading, "first play");
  const auto title = std::find_if(cards.begin(), cards.end(), [](const map_card& card) {
    return card.place == map_place{map_place::kind::title, 1};
  });
  ASSERT_NE(title, cards.end());
  EXPECT_THAT(title->detail, testing::StartsWith("24:10 min, "));
  ASSERT_EQ(title->rows.size(), 1u);
  EXPECT_THAT(title->rows[0].text, testing::StartsWith("then "));
}

TEST(MapCards, NameWhatNothingLeadsToAndWhatLeadsNowhere) {
  disc_description d;
  d.titles.resize(2);
  d.titles[0].post = command_of("jump title 9");
  const disc_map map = map_of(d, false);
  const auto cards = cards_of(d, map, {});
  ASSERT_EQ(cards.size(), 3u);
  EXPECT_EQ(cards[2].trouble, "nothing leads here");
  EXPECT_TRUE(cards[1].rows[0].is_wrong);
  EXPECT_TRUE(is_wrong(cards[1]));
  EXPECT_TRUE(is_wrong(cards[2]));
  EXPECT_FALSE(is_wrong(cards[0]));
  EXPECT_EQ(cards[1].rows[0].text, "then nowhere: leads to title 9, but there are 2 titles");
  EXPECT_TRUE(holds_text(cards[1], "TITLE 9"));
  EXPECT_FALSE(holds_text(cards[1], "menu"));
}

}  // namespace
}  // namespace corvane::testing_support
