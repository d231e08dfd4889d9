// A design written and read is the same; one that is arranged otherwise has room for its entries.
#include "menus/maker/design_writer.h"

#include "menus/maker/design_folder.h"
#include "menus/maker/page_rows.h"
#include "platform/files/files.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace corvane {
namespace {

std::vector<found_design> own_designs() {
  return designs_in(CORVANE_DESIGNS, {});
}

TEST(DesignWriter, EveryDesignIsReadBackAsItIs) {
  const std::vector<found_design> all = own_designs();
  ASSERT_GE(all.size(), 8u);
  for (const found_design& found : all) {
    ASSERT_TRUE(found.design) << found.id << ": " << found.design.error;
    const result<menu_design> again = read_design(written_design(*found.design));
    ASSERT_TRUE(again) << found.id << ": " << again.error;
    EXPECT_EQ(*again, *found.design) << found.id;
  }
}

TEST(DesignWriter, EveryValueIsKept) {
  std::mt19937 random(20);
  const auto up_to = [&](int most) { return static_cast<int>(random() % (most + 1U)); };
  const auto colour = [&] {
    const auto part = [&] { return static_cast<std::uint8_t>(up_to(255)); };
    return page_colour{part(), part(), part(), part()};
  };
  for (int round = 0; round < 500; ++round) {
    menu_design design = *own_designs()[static_cast<std::size_t>(up_to(3))].design;
    design.name = "a name";
    design.background =
        colour_background{colour(), colour(), static_cast<colour_background::direction>(up_to(4))};
    if (round % 3 == 0)
      design.background =
          picture_background{absolute_path("my # picture.jpg"),
                             up_to(1) == 0 ? page_fit::fill : page_fit::fit, colour(), colour()};
    for (design_text* const text : {&design.heading, &design.entry, &design.way}) {
      text->style.bold = up_to(1) == 1;
      text->style.italic = up_to(1) == 1;
      text->style.colour = colour();
      text->style.outline = up_to(4);
      text->style.outline_colour = colour();
      text->style.shadow = up_to(4);
      text->style.shadow_colour = colour();
      text->align = static_cast<page_align>(up_to(2));
    }
    design.sheet = {colour(), up_to(60), up_to(4), colour()};
    for (design_edge* const edge :
         {&design.heading_rule, &design.upper_band, &design.lower_band, &design.thumbnail_shadow})
      *edge = {up_to(4), colour()};
    design.thumbnail_border = up_to(4);
    design.thumbnail_border_colour = colour();
    design.frame = 1 + up_to(3);
    const result<menu_design> again = read_design(written_design(design));
    // A design that has no room for its entries is not read, whoever wrote it.
    if (why_no_room(design))
      continue;
    ASSERT_TRUE(again) << again.error << "\n" << written_design(design);
    EXPECT_EQ(*again, design);
  }
}

TEST(DesignWriter, ArrangedOtherwiseItHasRoomForItsEntries) {
  for (const found_design& found : own_designs())
    for (const menu_arrangement arrangement :
         {menu_arrangement::list, menu_arrangement::thumbnails_list, menu_arrangement::grid}) {
      const menu_design made = arranged(*found.design, arrangement);
      EXPECT_EQ(made.arrangement, arrangement);
      EXPECT_EQ(why_no_room(made), std::nullopt) << found.id;
      EXPECT_TRUE(read_design(written_design(made))) << found.id;
      if (arrangement == found.design->arrangement) {
        EXPECT_EQ(made, *found.design);
      }
    }
}

TEST(DesignWriter, NoPageGetsMoreEntriesThanItHasRoomFor) {
  for (const found_design& found : own_designs())
    for (int columns = 1; columns <= 6; ++columns)
      for (int rows = 1; rows <= 12; ++rows) {
        const menu_design made = with_entries(*found.design, columns, rows);
        EXPECT_EQ(why_no_room(made), std::nullopt) << found.id << columns << rows;
        EXPECT_LE(made.most_entries(), 36 - most_ways);
        EXPECT_LE(made.rows, rows);
      }
}

}  // namespace
}  // namespace corvane
