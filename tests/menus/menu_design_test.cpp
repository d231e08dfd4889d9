// Designs of menus: what their files may hold, what is refused and how that is told.
#include "menus/maker/menu_design.h"

#include "menus/maker/design_folder.h"
#include "menus/maker/page_rows.h"
#include "platform/files/files.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <variant>

namespace corvane {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::StartsWith;

const std::string least = "name = A\n[entries]\narrangement = list\n";

std::string why_refused(const std::string& text) {
  const result<menu_design> design = read_design(text);
  EXPECT_FALSE(design) << text;
  return design.error;
}

TEST(MenuDesign, ADesignOfTwoLinesHasUsualValues) {
  const result<menu_design> design = read_design(least);
  ASSERT_TRUE(design) << design.error;
  EXPECT_EQ(design->name, "A");
  EXPECT_EQ(design->most_entries(), 6);
  EXPECT_EQ(design->heading.style.size, 40);
  EXPECT_EQ(design->entry.style.families, std::vector<std::string>{"sans"});
  EXPECT_EQ(design->way.align, page_align::middle);
  EXPECT_FALSE(design->sheet.is_seen());
}

TEST(MenuDesign, EachKeyIsTaken) {
  const result<menu_design> design = read_design(
      "\xEF\xBB\xBF# remark\r\nname = Caf\xC3\xA9\r\nabout = x = y\r\n[background]\r\n"
      "colours = #010203 #FFfe0480\r\ndirection = outward\r\n"
      "upper band = 120 #666666\r\nlower band = 7 #777777\r\n"
      "[heading]\r\nrule = 2 #888888\r\nfont = A B , C\r\nsize = 50\r\nleast size = 30\r\nbold = "
      "yes\r\nitalic = "
      "yes\r\n"
      "colour = #0a0b0c\r\noutline = 3 #111111\r\nshadow = 0\r\nalign = right\r\nlines = 2\r\n"
      "panel colour = #22222280\r\npanel radius = 4\r\npanel border = 1 #333333\r\n"
      "[entries]\r\narrangement = grid\r\ncolumns = 2\r\nrows = 2\r\ngap = 11\r\n"
      "sheet colour = #444444\r\n[entry]\r\nhighlight = cyan\r\nselect = black\r\n"
      "[thumbnail]\r\nborder = 2 #555555\r\nshadow = 5 #999999\r\n[buttons]\r\nframe = 4\r\n");
  ASSERT_TRUE(design) << design.error;
  EXPECT_EQ(design->name, "Caf\xC3\xA9");
  EXPECT_EQ(design->about, "x = y");
  const auto& colours = std::get<colour_background>(design->background);
  EXPECT_EQ(colours.from, (page_colour{1, 2, 3, 255}));
  EXPECT_EQ(colours.to, (page_colour{255, 254, 4, 128}));
  EXPECT_EQ(colours.towards, colour_background::direction::outward);
  EXPECT_EQ(design->upper_band, (design_edge{120, {0x66, 0x66, 0x66, 255}}));
  EXPECT_EQ(design->lower_band.lines, 7);
  EXPECT_EQ(design->heading_rule, (design_edge{2, {0x88, 0x88, 0x88, 255}}));
  EXPECT_EQ(design->thumbnail_shadow.lines, 5);
  const design_text& heading = design->heading;
  EXPECT_THAT(heading.style.families, ElementsAre("A B", "C"));
  EXPECT_EQ(heading.style.size, 50);
  EXPECT_EQ(heading.least_size, 30);
  EXPECT_TRUE(heading.style.bold && heading.style.italic);
  EXPECT_EQ(heading.style.colour, (page_colour{10, 11, 12, 255}));
  EXPECT_EQ(heading.style.outline, 3);
  EXPECT_EQ(heading.style.shadow, 0);
  EXPECT_EQ(heading.align, page_align::end);
  EXPECT_EQ(heading.most_lines, 2);
  EXPECT_EQ(design->heading_panel.radius, 4);
  EXPECT_EQ(design->heading_panel.border, 1);
  EXPECT_EQ(design->arrangement, menu_arrangement::grid);
  EXPECT_EQ(design->most_entries(), 4);
  EXPECT_EQ(design->gap, 12);
  EXPECT_EQ(design->sheet.colour, (page_colour{0x44, 0x44, 0x44, 255}));
  EXPECT_EQ(design->entry_look, (design_look{"cyan", "black"}));
  EXPECT_EQ(design->thumbnail_border, 2);
  EXPECT_EQ(design->frame, 4);
}

TEST(MenuDesign, ABackgroundIsColoursAPictureOrAVideo) {
  EXPECT_TRUE(std::holds_alternative<colour_background>(read_design(least)->background));
  EXPECT_TRUE(std::holds_alternative<video_background>(
      read_design(least + "[background]\nvideo = yes\n")->background));
  const std::string folder = native_style() == path_style::windows ? "C:\\d" : "/d";
  const auto design = read_design(
      least + "[background]\npicture = a.jpg\nfit = whole\nshade = #00000080\n", folder);
  ASSERT_TRUE(design) << design.error;
  const auto& picture = std::get<picture_background>(design->background);
  EXPECT_EQ(picture.file, join_path(folder, "a.jpg"));
  EXPECT_EQ(picture.fit, page_fit::fit);
  EXPECT_EQ(picture.shade.alpha, 0x80);
}

TEST(MenuDesign, WhatIsRefusedNamesItsLineAndWhatIsExpected) {
  EXPECT_THAT(
      why_refused(least + "siez = 3\n"),
      StartsWith("line 4: \"siez\" is none of the keys of [entries]: arrangement, columns,"));
  EXPECT_THAT(
      why_refused("nme = 3\n"),
      StartsWith("line 1: \"nme\" is none of the keys before the first section: name, about"));
  EXPECT_THAT(why_refused(least + "\n[entri]\n"),
              StartsWith("line 5: \"[entri]\" is none of the sections: [background], [buttons],"));
  EXPECT_EQ(why_refused(least + "rows = 13\n"),
            "line 4: \"rows\" must be a whole number from 1 to 12, and is \"13\"");
  EXPECT_EQ(why_refused(least + "rows = 3\nrows = 3\n"),
            "line 5: \"rows\" stands in line 4 already");
  EXPECT_THAT(why_refused(least + "[heading]\ncolour = red\n"),
              StartsWith("line 5: \"colour\" must be a colour such as #ffd080,"));
  EXPECT_THAT(why_refused(least + "[heading]\nbold = true\n"), HasSubstr("yes or no"));
  EXPECT_THAT(why_refused(least + "[heading]\nshadow = #000000\n"),
              HasSubstr("a thickness from 0"));
  EXPECT_THAT(why_refused(least + "[heading]\nfont = A,,B\n"),
              HasSubstr("up to ten names of fonts"));
  EXPECT_THAT(why_refused(least + "[entry]\nselect = pink\n"), HasSubstr("one of: black, brown,"));
  EXPECT_THAT(why_refused(least + "hello\n"), HasSubstr("line 4: expected is \"key = value\""));
  EXPECT_THAT(why_refused(least + "a\x01 = 3\n"),
              HasSubstr("line 4: it holds a control character"));
}

TEST(MenuDesign, WithoutNameOrArrangementItIsRefused) {
  EXPECT_THAT(why_refused("[entries]\narrangement = list\n"), HasSubstr("does not say its name"));
  EXPECT_THAT(why_refused("name = A\n"), HasSubstr("how its entries stand"));
  EXPECT_THAT(why_refused(""), HasSubstr("does not say its name"));
}

TEST(MenuDesign, OtherFilesAreNoDesigns) {
  EXPECT_THAT(why_refused(std::string(70000, '#')), HasSubstr("more than 64 kilobytes"));
  EXPECT_THAT(why_refused("name = \xFF\n"), HasSubstr("not a text in UTF-8"));
}

TEST(MenuDesign, EntriesWithoutRoomAreRefused) {
  EXPECT_THAT(why_refused(least + "rows = 12\n"), HasSubstr("take fewer rows"));
  EXPECT_THAT(why_refused("name = A\n[entries]\narrangement = list with thumbnails\ncolumns = 4\n"
                          "rows = 2\n"),
              HasSubstr("take fewer columns"));
  EXPECT_THAT(why_refused(least + "columns = 6\nrows = 6\n"),
              HasSubstr("a page has room for 32, and the ways to other pages"));
}

TEST(MenuDesign, EveryValueThatMayBeLargeIsRefusedOrLeavesRoom) {
  for (const char* const key :
       {"size = 120", "least size = 120", "lines = 4", "outline = 20 #000000"})
    for (const char* const section : {"heading", "entry", "way"}) {
      const auto design =
          read_design(least + "[" + section + "]\nsize = 120\n" + (key[0] == 's' ? "" : key));
      if (design) {
        EXPECT_EQ(why_no_room(*design), std::nullopt);
      } else {
        EXPECT_THAT(design.error, HasSubstr("smaller texts"));
      }
    }
}

// Folders ----------------------------------------------------------------------------------------

TEST(DesignFolder, AllDesignsThatComeWithTheProgramCanBeUsed) {
  const auto designs = designs_in(CORVANE_DESIGNS, "");
  EXPECT_GE(designs.size(), 8u);
  std::set<menu_arrangement> arrangements;
  std::set<std::string> names;
  for (const found_design& d : designs) {
    ASSERT_TRUE(d.design) << d.file << ": " << d.design.error;
    EXPECT_FALSE(d.is_own);
    EXPECT_FALSE(d.design->about.empty()) << d.file;
    arrangements.insert(d.design->arrangement);
    names.insert(d.design->name);
    for (const design_text* text : {&d.design->heading, &d.design->entry, &d.design->way})
      EXPECT_GE(text->style.families.size(), 3u) << d.file;
  }
  EXPECT_EQ(arrangements.size(), 3u);
  EXPECT_EQ(names.size(), designs.size());
}

TEST(DesignFolder, TheUsersTakeThePlaceOfTheProgramsAndFaultsAreTold) {
  const testing_support::temporary_folder folder;
  folder.add("shipped/a.design", "name = Zebra\n[entries]\narrangement = list\n");
  folder.add("shipped/b.design", "name = Bear\n[entries]\narrangement = list\n");
  folder.add("own/a.design", "name = Ape\n[entries]\narrangement = grid\nrows = 2\n");
  folder.add("own/c.design", "name =\n");
  folder.add("own/notes.txt", "none");
  const auto designs = designs_in(folder.path("shipped"), folder.path("own"));
  ASSERT_EQ(designs.size(), 3u);
  EXPECT_EQ(designs[0].design->name, "Ape");
  EXPECT_TRUE(designs[0].is_own);
  EXPECT_EQ(designs[1].design->name, "Bear");
  EXPECT_FALSE(designs[1].is_own);
  EXPECT_THAT(designs[2].design.error, StartsWith("line 1: \"name\" must be a text"));

  EXPECT_EQ(design_named(designs, "BEAR")->id, "b");
  EXPECT_EQ(design_named(designs, "a")->design->name, "Ape");
  EXPECT_EQ(design_named(designs, folder.path("shipped/a.design"))->design->name, "Zebra");
  EXPECT_THAT(design_named(designs, "c").error, HasSubstr("cannot be used: line 1"));
  EXPECT_EQ(design_named(designs, "x").error, "There is no design \"x\"; there are a, b");
  EXPECT_TRUE(designs_in("", folder.path("nowhere")).empty());
}

}  // namespace
}  // namespace corvane
