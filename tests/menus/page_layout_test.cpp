// What stands where on a menu's page, for all designs that come with the program.
#include "menus/maker/page_layout.h"

#include "examine/button_neighbours.h"
#include "formats/numbers.h"
#include "made_pages.h"
#include "menus/button_overlaps.h"
#include "menus/maker/design_folder.h"
#include "menus/maker/text_fit.h"
#include "project/menu_rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <set>
#include <string>
#include <variant>
#include <vector>

namespace corvane {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using testing_support::disc_of_titles;
using testing_support::measured_text;
using testing_support::title_named;

bool is_within(const page_box& inner, const page_box& outer) {
  return inner.left >= outer.left && inner.top >= outer.top && inner.right() <= outer.right() &&
         inner.bottom() <= outer.bottom() && inner.width > 0 && inner.height > 0;
}

page_box box_of_button(const menu_rectangle& r) {
  return {r.x0, r.y0, r.x1 - r.x0, r.y1 - r.y0};
}

template <typename Shape>
std::vector<Shape> shapes_of(const drawn_page& page) {
  std::vector<Shape> shapes;
  for (const page_shape& shape : page.shapes)
    if (const auto* const one = std::get_if<Shape>(&shape))
      shapes.push_back(*one);
  return shapes;
}

/// As it will be drawn: with the lines as they were broken.
bool fits_its_box(const page_text& text, double pixel_aspect) {
  const text_extent extent = measured_text(text.text, text.style, 0, pixel_aspect);
  return extent.width <= text.box.width && extent.height <= text.box.height;
}

void expect_right_buttons(const laid_out_menu& laid_out) {
  const page_box safe = title_safe_area(laid_out.page.height);
  std::vector<std::string> records;
  std::vector<button_edges> edges;
  for (const menu_rectangle& r : laid_out.buttons) {
    EXPECT_TRUE(is_within(box_of_button(r), safe)) << r.x0 << "," << r.y0;
    EXPECT_EQ(r.y0 % 2, 0);
    EXPECT_EQ(r.y1 % 2, 0);
    records.push_back(button_text(button_with_edges(r.x0, r.y0, r.x1, r.y1)));
    edges.push_back({r.x0, r.y0, r.x1, r.y1});
  }
  EXPECT_LE(records.size(), 36u);
  EXPECT_THAT(overlapping_buttons(records, 1), IsEmpty());
  EXPECT_THAT(buttons_out_of_reach(edges), IsEmpty());
}

void expect_right_shapes(const laid_out_menu& laid_out) {
  const drawn_page& page = laid_out.page;
  const page_box safe = title_safe_area(page.height);
  const auto pictures = shapes_of<page_thumbnail>(page);
  for (const page_text& text : shapes_of<page_text>(page)) {
    EXPECT_TRUE(is_within(text.box, safe)) << text.text;
    EXPECT_TRUE(fits_its_box(text, page.pixel_aspect)) << text.text << text.box.height;
    EXPECT_FALSE(text.text.empty());
    for (const page_thumbnail& picture : pictures)
      EXPECT_TRUE(picture.box.right() <= text.box.left || picture.box.left >= text.box.right() ||
                  picture.box.bottom() <= text.box.top || picture.box.top >= text.box.bottom())
          << text.text;
  }
  for (const page_thumbnail& picture : pictures) {
    EXPECT_TRUE(is_within(picture.box, safe));
    EXPECT_GE(picture.box.height, 24);
    const double shown = picture.box.width * page.pixel_aspect / picture.box.height;
    EXPECT_NEAR(shown, page.is_wide ? 16.0 / 9 : 4.0 / 3, 0.12);
  }
}

menu_choices with_all_chapters(const disc_description& d) {
  menu_choices choices;
  choices.chapters_of = titles_with_chapters(d);
  choices.play_all = true;
  return choices;
}

class AllDesigns : public testing::Test {
 protected:
  AllDesigns() : designs(designs_in(CORVANE_DESIGNS, "")) {}

  /// Each with NTSC and PAL, 4:3 and 16:9.
  template <typename Look>
  void for_each(const Look& look) {
    for (const found_design& d : designs)
      for (const video_standard standard : {video_standard::ntsc, video_standard::pal})
        for (const bool is_wide : {false, true}) {
          SCOPED_TRACE(d.id + (standard == video_standard::pal ? " PAL" : " NTSC") +
                       (is_wide ? " 16:9" : " 4:3"));
          look(*d.design, page_form{standard, is_wide});
        }
  }

  std::vector<found_design> designs;
};

TEST_F(AllDesigns, NothingIsCutOffOutsideOrOutOfReach) {
  struct {
    int titles, chapters;
  } const discs[] = {{1, 1}, {7, 1}, {40, 3}, {1, 99}};
  for_each([&](const menu_design& design, const page_form& form) {
    for (const auto& [titles, chapters] : discs) {
      const disc_description d = disc_of_titles(titles, chapters, form.standard);
      const menu_plan plan = plan_menus(d, with_all_chapters(d), {design.most_entries(), 99});
      for (const planned_menu& menu : plan.menus) {
        // Titles' odd names come again and again; a few pages have them all.
        if (titles == 40 && menu.title > 7)
          continue;
        const laid_out_menu laid_out = lay_out(design, menu, form, measured_text);
        EXPECT_EQ(laid_out.buttons.size(), menu.entries.size() + menu.ways.size());
        expect_right_buttons(laid_out);
        expect_right_shapes(laid_out);
      }
    }
  });
}

TEST_F(AllDesigns, ShortTextsHaveTheSizesThatTheDesignStates) {
  for_each([&](const menu_design& design, const page_form& form) {
    disc_description d = disc_of_titles(0, 1, form.standard);
    for (int i = 0; i < design.most_entries() + 1; ++i)
      d.titles.push_back(title_named("f", 1));
    const menu_plan plan = plan_menus(d, {}, {design.most_entries(), 99});
    const laid_out_menu laid_out = lay_out(design, plan.menus[0], form, measured_text);
    EXPECT_THAT(laid_out.notes, IsEmpty());
    std::set<std::string> others;
    const menu_design scaled = in_lines(design, form.height());
    for (const page_text& text : shapes_of<page_text>(laid_out.page)) {
      const design_text& how = text.text == "Titles" ? scaled.heading
                               : text.text == "f"    ? scaled.entry
                                                     : scaled.way;
      if (text.style.size != how.style.size)
        others.insert(text.text + " has " + trimmed(text.style.size) + " lines");
    }
    EXPECT_THAT(others, IsEmpty());
  });
}

TEST_F(AllDesigns, PagesStateTheirFormAndBackground) {
  for_each([&](const menu_design& design, const page_form& form) {
    const menu_plan plan = plan_menus(disc_of_titles(1, 1, form.standard), {}, {});
    const drawn_page page = lay_out(design, plan.menus[0], form, measured_text).page;
    EXPECT_EQ(page.height, form.standard == video_standard::pal ? 576 : 480);
    EXPECT_EQ(page.background, design.background);
    EXPECT_NEAR(704 * page.pixel_aspect / page.height, form.is_wide ? 16.0 / 9 : 4.0 / 3, 1e-9);
  });
}

// One design ------------------------------------------------------------------------------------

menu_design plain_design(const std::string& more = {}) {
  const auto design = read_design("name = A\n[entries]\narrangement = list\n" + more);
  EXPECT_TRUE(design) << design.error;
  return *design;
}

planned_menu one_page(int titles) {
  disc_description d = disc_of_titles(0, 1);
  for (int title = 1; title <= titles; ++title)
    d.titles.push_back(title_named("f" + trimmed(title), 1));
  return plan_menus(d, {}, {}).menus[0];
}

TEST(PageLayout, ThumbnailsAreOfTheirTitlesAndChapters) {
  const disc_description d = disc_of_titles(1, 3);
  const menu_plan plan = plan_menus(d, with_all_chapters(d), {});
  const menu_design design = *read_design(
      "name = A\n[entries]\narrangement = grid\nrows = 2\n"
      "columns = 2\n");
  const auto first = shapes_of<page_thumbnail>(
      lay_out(design, plan.menus[0], {}, measured_text, {}, path_style::posix).page);
  ASSERT_EQ(first.size(), 1u);
  EXPECT_EQ(first[0].file, "/films/a_1.m2v");
  EXPECT_EQ(first[0].title, 1);
  EXPECT_EQ(first[0].chapter, 0);
  const auto chapters =
      shapes_of<page_thumbnail>(lay_out(design, plan.menus[1], {}, measured_text).page);
  ASSERT_EQ(chapters.size(), 3u);
  EXPECT_EQ(chapters[2].seconds, 20);
  EXPECT_EQ(chapters[2].chapter, 3);
}

TEST(PageLayout, AMoveTakesTheTextAlong) {
  const planned_menu menu = one_page(2);
  const menu_design design = plain_design();
  const laid_out_menu before = lay_out(design, menu, {}, measured_text);
  const menu_rectangle place{100, before.buttons[1].y1 + 40, 400, before.buttons[1].y1 + 80};
  const laid_out_menu after =
      lay_out(design, menu, {}, measured_text, {{move_key(menu, 1), place}});
  EXPECT_EQ(after.buttons[0], before.buttons[0]);
  EXPECT_EQ(after.buttons[1], place);
  EXPECT_THAT(after.notes, IsEmpty());
  EXPECT_TRUE(is_within(shapes_of<page_text>(after.page).back().box, box_of_button(place)));
}

TEST(PageLayout, ButtonsThatWereExchangedStaySo) {
  const planned_menu menu = one_page(2);
  const menu_design design = plain_design();
  const auto before = lay_out(design, menu, {}, measured_text).buttons;
  const laid_out_menu after =
      lay_out(design, menu, {}, measured_text,
              {{move_key(menu, 0), before[1]}, {move_key(menu, 1), before[0]}});
  EXPECT_THAT(after.buttons, ElementsAre(before[1], before[0]));
}

TEST(PageLayout, AMoveOntoSomethingElseOrOutOfThePictureIsNotKeptAndSaid) {
  const planned_menu menu = one_page(2);
  const menu_design design = plain_design();
  const auto before = lay_out(design, menu, {}, measured_text).buttons;
  menu_rectangle onto = before[0];
  onto.y0 += 4;
  for (const menu_rectangle& place :
       {onto, menu_rectangle{600, 400, 730, 440}, menu_rectangle{10, 10, 5, 5}}) {
    const laid_out_menu after =
        lay_out(design, menu, {}, measured_text, {{move_key(menu, 1), place}});
    EXPECT_EQ(after.buttons, before);
    EXPECT_THAT(after.notes, ElementsAre(HasSubstr("is not kept")));
  }
}

TEST(PageLayout, AShortenedTextIsNoted) {
  planned_menu menu = one_page(1);
  menu.entries[0].text = std::string(300, 'W');
  const laid_out_menu laid_out = lay_out(plain_design(), menu, {}, measured_text);
  EXPECT_THAT(laid_out.notes, ElementsAre(HasSubstr("too long for its place")));
  EXPECT_TRUE(shapes_of<page_text>(laid_out.page)[1].text.ends_with("W\xE2\x80\xA6"));
}

TEST(PageLayout, AllEntriesHaveTheSizeOfTheLongestButNoMuchSmallerOne) {
  planned_menu menu = one_page(3);
  menu.entries[1].text = std::string(44, 'b');
  const auto sizes = [&] {
    std::vector<int> all;
    for (const page_text& text :
         shapes_of<page_text>(lay_out(plain_design(), menu, {}, measured_text).page))
      all.push_back(text.style.size);
    return std::vector<int>(all.begin() + 1, all.begin() + 4);
  };
  const std::vector<int> alike = sizes();
  EXPECT_LT(alike[0], 26);
  EXPECT_THAT(alike, ElementsAre(alike[0], alike[0], alike[0]));
  menu.entries[1].text = std::string(300, 'b');
  EXPECT_THAT(sizes(), ElementsAre(20, 16, 20));
}

TEST(PageLayout, FewPicturesAreLargerUnlessOtherPagesFollow) {
  const menu_design design = *read_design(
      "name = A\n[entries]\narrangement = grid\nrows = 3\ncolumns = 4\n"
      "[entry]\nsize = 16\n");
  planned_menu menu = one_page(2);
  const auto width = [&] {
    return shapes_of<page_thumbnail>(lay_out(design, menu, {}, measured_text).page)[0].box.width;
  };
  const int alone = width();
  menu.pages = 2;
  EXPECT_GT(alone, width() * 5 / 4);
}

TEST(PageLayout, WaysAreAsWideAsTheirTexts) {
  planned_menu menu = one_page(1);
  planned_entry way;
  for (const char* const text : {"A", "Previous pages"}) {
    way.text = text;
    menu.ways.push_back(way);
  }
  const laid_out_menu laid_out = lay_out(plain_design(), menu, {}, measured_text);
  const menu_rectangle &first = laid_out.buttons[1], &last = laid_out.buttons[2];
  EXPECT_GT(last.x1 - last.x0, first.x1 - first.x0);
  EXPECT_EQ(first.x0, 72);
  EXPECT_EQ(last.x1, 648);
}

TEST(PageLayout, RulesBandsAndShadowsAreDrawnAsTheDesignSays) {
  const menu_design design = *read_design(
      "name = A\n[background]\nupper band = 30 #ff0000\nlower band = 20 #00ff00\n"
      "[heading]\nrule = 2 #0000ff\n[entries]\narrangement = grid\nrows = 2\n"
      "[thumbnail]\nshadow = 4 #101010\n");
  const drawn_page page = lay_out(design, one_page(1), {}, measured_text).page;
  const auto boxes = shapes_of<page_rectangle>(page);
  ASSERT_EQ(boxes.size(), 4u);
  EXPECT_EQ(boxes[0].box, (page_box{0, 0, 720, 30}));
  EXPECT_EQ(boxes[1].box, (page_box{0, 460, 720, 20}));
  const page_text heading = shapes_of<page_text>(page)[0];
  EXPECT_GE(boxes[2].box.top, heading.box.bottom());
  EXPECT_EQ(boxes[2].box.height, 2);
  const page_box picture = shapes_of<page_thumbnail>(page)[0].box;
  EXPECT_EQ(boxes[3].box,
            (page_box{picture.left + 4, picture.top + 4, picture.width, picture.height}));
}

TEST(PageLayout, OnPalEverythingIsAsLongOnTheScreen) {
  const menu_design design = plain_design("gap = 10\n[entry]\nsize = 25\npanel radius = 10\n");
  const menu_design scaled = in_lines(design, 576);
  EXPECT_EQ(scaled.entry.style.size, 30);
  EXPECT_EQ(scaled.entry_panel.radius, 12);
  EXPECT_EQ(scaled.gap, 12);
  EXPECT_EQ(in_lines(design, 480), design);
}

// Texts -----------------------------------------------------------------------------------------

class TextFit : public testing::Test {
 protected:
  TextFit() {
    how.style.size = 30;
    how.least_size = 20;
    how.most_lines = 2;
  }
  fitted_text fit(const std::string& text, int width, int height = 60) {
    return fit_text(text, how, {0, 0, width, height}, 1.0, measured_text);
  }
  design_text how;
};

TEST_F(TextFit, WhatFitsStays) {
  EXPECT_EQ(fit("abcd", 66), (fitted_text{"abcd", 30, false}));
}
TEST_F(TextFit, FirstItIsMadeSmaller) {
  EXPECT_EQ(fit("abcd ef", 96), (fitted_text{"abcd ef", 24, false}));
}
TEST_F(TextFit, ThenItIsBrokenIntoLines) {
  EXPECT_EQ(fit("abcd efgh", 66), (fitted_text{"abcd\nefgh", 25, false}));
  EXPECT_EQ(fit("abcd efgh", 66, 100), (fitted_text{"abcd\nefgh", 30, false}));
}
TEST_F(TextFit, TwoLinesAreBetterThanOneThatIsMuchSmaller) {
  EXPECT_EQ(fit("abcd efgh", 120, 80), (fitted_text{"abcd efgh", 24, false}));
  EXPECT_EQ(fit("abcd efgh", 110, 80), (fitted_text{"abcd\nefgh", 30, false}));
}
TEST_F(TextFit, WordsAreBrokenOnlyWhereNothingElseHelps) {
  EXPECT_EQ(fit("abcdefg hi", 90, 80), (fitted_text{"abcdefg\nhi", 23, false}));
  EXPECT_EQ(fit("abcdefghij", 90, 80), (fitted_text{"abcde\nfghij", 30, false}));
  const std::string asia = "\xE6\x97\xA5\xE6\x9C\xAC\xE8\xAA\x9E\xE5\xAD\x97";
  EXPECT_EQ(fit(asia, 61, 80), (fitted_text{asia.substr(0, 6) + "\n" + asia.substr(6), 30, false}));
}
TEST_F(TextFit, ThenItIsShortened) {
  EXPECT_EQ(fit("abcd efgh ijkl", 50), (fitted_text{"abcd\nefg\xE2\x80\xA6", 20, true}));
  how.most_lines = 1;
  EXPECT_EQ(fit("abcd efgh ijkl", 66), (fitted_text{"abcd\xE2\x80\xA6", 20, true}));
}
TEST_F(TextFit, AccentsAreNotCutOff) {
  how.most_lines = 1;
  EXPECT_EQ(fit("e\xCC\x81"
                "e\xCC\x81"
                "e\xCC\x81"
                "e\xCC\x81",
                40),
            (fitted_text{"e\xCC\x81"
                         "e\xCC\x81\xE2\x80\xA6",
                         20, true}));
}
TEST_F(TextFit, VowelSignsStayWithTheirLetters) {
  how.most_lines = 1;
  const std::string letter = "\xE0\xA4\x95\xE0\xA4\xBF";
  EXPECT_EQ(fit(letter + letter + letter + letter, 45),
            (fitted_text{letter + "\xE2\x80\xA6", 20, true}));
}
TEST_F(TextFit, WithoutAnyRoomThereIsNothing) {
  EXPECT_EQ(fit("abc", 1).text, "");
  EXPECT_EQ(fit("", 100), (fitted_text{"", 30, false}));
}
TEST_F(TextFit, OddBytesAreMadeText) {
  EXPECT_EQ(fit("a\tb\x01", 300).text, "a b");
  EXPECT_EQ(fit("a\xFF", 300).text, "a\xEF\xBF\xBD");
  const fitted_text huge = fit(std::string(1 << 20, 'a'), 300);
  EXPECT_TRUE(huge.is_shortened);
}

}  // namespace
}  // namespace corvane
