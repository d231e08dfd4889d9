// What somebody chooses for menus, and the pages that come of it.
#include "authoring/menus_draft.h"

#include "menus/made_pages.h"
#include "menus/maker/design_writer.h"
#include "project/menu_rows.h"
#include "support/small_streams.h"
#include "support/two_titles_test.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <vector>

namespace corvane {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using testing_support::measured_text;

class MenusDraft : public testing_support::two_titles_test {
 protected:
  MenusDraft() { open(); }

  /// As the window opens, with what is remembered.
  void open() {
    std::vector<found_design> designs = designs_in(CORVANE_DESIGNS, {});
    making_wishes preset;
    preset.menus.design_id = "slate";
    preset.menus.folder = folder.path();
    const remembered_menus before = menus_made_before(p);
    if (before.made.empty()) {
      preset.menus.choices.chapters_of = {1};
    } else {
      preset.menus.choices = before.choices;
      preset.menus.texts = before.texts;
      preset.menus.moves = before.moves;
      preset.menus.is_wide = before.is_wide;
    }
    draft =
        std::make_unique<menus_draft>(p, std::move(designs), preset, measured_text, entry_exists);
  }

  void make() {
    const making_wishes wishes = draft->wishes();
    const auto notes = make_menus(doc, wishes.menus, measured_text,
                                  [](const std::vector<menu_background>& all) -> failure {
                                    for (const menu_background& one : all)
                                      EXPECT_EQ(write_file(one.m2v, "video"), std::nullopt);
                                    return std::nullopt;
                                  });
    EXPECT_TRUE(notes) << notes.error;
  }

  std::size_t index_of(const std::string& id) const {
    for (std::size_t i = 0; i < draft->designs().size(); ++i)
      if (draft->designs()[i].id == id)
        return i;
    ADD_FAILURE() << id;
    return 0;
  }

  std::unique_ptr<menus_draft> draft;
};

TEST_F(MenusDraft, ShowsTheMenuOfTitlesAndThenThoseOfChapters) {
  EXPECT_EQ(draft->trouble(), "");
  EXPECT_EQ(draft->pages(), 2);
  EXPECT_EQ(draft->page_words(), "menu 1 of 2: Titles");
  EXPECT_EQ(draft->summary(), "2 menus: 1 page of titles, 1 page of chapters");
  EXPECT_EQ(draft->text_of(0), "Titles");
  EXPECT_EQ(draft->text_of(1), "my film 1");
  EXPECT_EQ(draft->leads_to(1), "menu 2: my film 1");
  EXPECT_EQ(draft->leads_to(2), "title 2");
  EXPECT_EQ(draft->leads_to(0), "");
  draft->turn_to(2);
  EXPECT_EQ(draft->page_words(), "menu 2 of 2: my film 1");
  EXPECT_EQ(draft->text_of(2), "Chapter 2");
  EXPECT_EQ(draft->leads_to(2), "title 1, chapter 2");
  draft->turn_to(99);
  EXPECT_EQ(draft->page(), 2);
  draft->turn_to(0);
  EXPECT_EQ(draft->page(), 1);
}

TEST_F(MenusDraft, ThePageThatIsShownStaysWhenThereAreOthersBefore) {
  draft->turn_to(2);
  for (const char* const name : {"c", "d", "e", "f", "g", "h", "i", "j", "k", "l"})
    add_files_and_title({std::string(name) + ".m2v", std::string(name) + ".ac3"});
  draft->plan();
  EXPECT_GT(draft->page(), 2);
  EXPECT_THAT(draft->page_words(), HasSubstr(": my film 1"));
  draft->let_have_menu(1, false);
  EXPECT_EQ(draft->page(), draft->pages());
}

TEST_F(MenusDraft, TitlesWithChaptersCanHaveAMenuOfThem) {
  ASSERT_EQ(draft->titles().size(), 1u);
  EXPECT_EQ(draft->titles()[0].text, "1: my film 1 (3 chapters)");
  EXPECT_TRUE(draft->titles()[0].has_menu);
  draft->let_all_have_menus(false);
  EXPECT_FALSE(draft->titles()[0].has_menu);
  EXPECT_EQ(draft->pages(), 1);
  draft->let_have_menu(1, true);
  draft->let_have_menu(1, true);
  EXPECT_THAT(draft->chosen().choices.chapters_of, ElementsAre(1));
  EXPECT_EQ(draft->pages(), 2);
}

TEST_F(MenusDraft, TextsAreEditedWhereverTheyStandAndAnEmptyOneIsTakenBack) {
  draft->set_text(0, "Our films");
  draft->set_text(1, "The long journey");
  EXPECT_EQ(draft->text_of(0), "Our films");
  EXPECT_EQ(draft->text_of(1), "The long journey");
  EXPECT_TRUE(draft->has_own_text(1));
  EXPECT_FALSE(draft->has_own_text(2));
  EXPECT_TRUE(draft->has_new_texts());
  draft->turn_to(2);
  EXPECT_EQ(draft->text_of(0), "The long journey") << "the heading of its chapters";
  draft->turn_to(1);
  draft->set_text(1, "  ");
  EXPECT_EQ(draft->text_of(1), "my film 1");
  draft->set_text(0, "");
  EXPECT_FALSE(draft->has_new_texts());
}

TEST_F(MenusDraft, WhatLiesAtAPlaceIsSelectedThere) {
  for (int item = 0; item < draft->items(); ++item) {
    const page_box box = draft->place(item);
    EXPECT_EQ(draft->item_at(box.left + box.width / 2, box.top + box.height / 2), item);
    const page_box text = draft->text_place(item);
    EXPECT_GE(text.left, box.left);
    EXPECT_LE(text.right(), box.right());
    EXPECT_GT(text.width, 0);
  }
  EXPECT_EQ(draft->item_at(1, 1), -1);
  draft->select(99);
  EXPECT_EQ(draft->selected(), draft->items() - 1);
  EXPECT_EQ(&draft->button_look(1), &draft->look().entry_look);
}

TEST_F(MenusDraft, AnotherDesignKeepsTheBackgroundThatWasChosenAndTheTexts) {
  draft->set_text(1, "mine");
  picture_background picture;
  picture.file = folder.add("photo.jpg");
  draft->choose_background(chosen_background::picture);
  EXPECT_EQ(draft->trouble(), "Please choose the picture behind the menus.");
  EXPECT_GT(draft->page(), 0) << "the page is shown nonetheless";
  draft->set_picture(picture);
  EXPECT_EQ(draft->trouble(), "");
  draft->choose_design(index_of("album"));
  EXPECT_EQ(draft->text_of(1), "mine");
  const making_wishes wishes = draft->wishes();
  EXPECT_EQ(wishes.menus.design_id, "album");
  EXPECT_EQ(wishes.menus.design.arrangement, menu_arrangement::grid);
  EXPECT_EQ(wishes.menus.design.background, page_background(picture));
  EXPECT_FALSE(wishes.motion);
  draft->choose_background(chosen_background::of_design);
  EXPECT_EQ(draft->wishes().menus.design, *draft->designs()[draft->design()].design);
}

TEST_F(MenusDraft, AFilmBehindTheMenusLetsThemBeginAgain) {
  draft->choose_background(chosen_background::film);
  EXPECT_EQ(draft->trouble(), "Please choose the video that plays behind the menus.");
  menu_motion film;
  film.film = folder.add("sea.mp4");
  film.begin = 2.5;
  film.length = 12;
  film.with_sound = false;
  draft->set_film(film);
  EXPECT_EQ(draft->trouble(), "");
  const making_wishes wishes = draft->wishes();
  EXPECT_TRUE(wishes.menus.loops);
  ASSERT_TRUE(wishes.motion);
  EXPECT_EQ(wishes.motion->film, film.film);
  EXPECT_EQ(draft->shown().page.background, page_background(video_background{}));
}

TEST_F(MenusDraft, ADesignForAVideoAsksForOne) {
  draft->choose_design(index_of("video"));
  EXPECT_THAT(draft->trouble(), HasSubstr("please choose one as background"));
  draft->choose_background(chosen_background::colours);
  EXPECT_EQ(draft->trouble(), "");
}

TEST_F(MenusDraft, LayoutAndLettersAreChangedWithinTheRoomOfAPage) {
  draft->arrange(menu_arrangement::grid);
  EXPECT_EQ(draft->look().columns, 3);
  EXPECT_EQ(draft->look().rows, 2);
  draft->set_entries(6, 12);
  EXPECT_EQ(why_no_room(draft->look()), std::nullopt);
  EXPECT_LE(draft->look().most_entries(), 32);
  draft->arrange(menu_arrangement::list);
  EXPECT_EQ(draft->look(), *draft->designs()[draft->design()].design) << "as the design has it";
  draft->change_look([](menu_design& look) { look.entry.style.size = look.entry.least_size = 90; });
  EXPECT_EQ(why_no_room(draft->look()), std::nullopt);
  EXPECT_LT(draft->look().rows, 5);
  EXPECT_TRUE(read_design(written_design(draft->look())));
}

TEST_F(MenusDraft, AWideMenuHasFewerEntriesAndItIsSaid) {
  draft->choose_design(index_of("album"));
  EXPECT_THAT(draft->notes(), IsEmpty());
  draft->change([](menu_wishes& w) { w.is_wide = true; });
  EXPECT_THAT(draft->notes(), ElementsAre(HasSubstr("8 entries at most")));
}

TEST_F(MenusDraft, MadeAgainItBeginsWithAllThatWasChosen) {
  draft->choose_design(index_of("amber"));
  draft->set_text(1, "The long journey");
  draft->change_look([](menu_design& look) { look.heading.style.italic = true; });
  colour_background colours;
  colours.from = {1, 2, 3, 255};
  colours.to = {4, 5, 6, 255};
  draft->choose_background(chosen_background::colours);
  draft->set_colours(colours);
  draft->change([](menu_wishes& w) { w.choices.play_all = true; });
  const menu_wishes before = draft->wishes().menus;
  make();
  add_files_and_title({"third.m2v", "c.ac3"});
  open();
  EXPECT_EQ(draft->wishes().menus.design_id, "amber");
  EXPECT_EQ(draft->wishes().menus.design, before.design);
  EXPECT_EQ(draft->background(), chosen_background::colours);
  EXPECT_TRUE(draft->chosen().choices.play_all);
  EXPECT_EQ(draft->text_of(1), "The long journey");
  EXPECT_EQ(draft->text_of(3), "third");
  EXPECT_FALSE(draft->has_new_texts());
  EXPECT_EQ(draft->own_menus(), 0);
}

TEST_F(MenusDraft, MadeAgainItBeginsWithTheFilm) {
  menu_motion film;
  film.film = folder.add("sea.mp4");
  film.begin = 2.5;
  film.length = 12;
  film.with_sound = false;
  draft->choose_background(chosen_background::film);
  draft->set_film(film);
  make();
  open();
  EXPECT_EQ(draft->background(), chosen_background::film);
  EXPECT_EQ(draft->film().film, film.film);
  EXPECT_EQ(draft->film().begin, 2.5);
  EXPECT_EQ(draft->film().length, 12);
  EXPECT_FALSE(draft->film().with_sound);
}

TEST_F(MenusDraft, TheJumpTableTakesAllMenusAlong) {
  EXPECT_FALSE(draft->uses_jump_table());
  draft->change([](menu_wishes& w) { w.jump_table = true; });
  EXPECT_FALSE(draft->erases_menus()) << "there is none";
  draft->change([](menu_wishes& w) { w.jump_table.reset(); });
  add_own_menu("own.m2v");
  draft->plan();
  EXPECT_EQ(draft->own_menus(), 1);
  draft->change([](menu_wishes& w) { w.jump_table = true; });
  EXPECT_TRUE(draft->erases_menus());
  EXPECT_EQ(draft->trouble(), "");
  EXPECT_THAT(draft->notes(), Contains(HasSubstr("those that are there are erased")));
  make();
  EXPECT_TRUE(p.jumptable);
  EXPECT_EQ(p.menulist.size(), 2u);
  doc.undo();
  EXPECT_FALSE(p.jumptable);
  EXPECT_EQ(p.menulist.size(), 1u);
}

TEST_F(MenusDraft, OwnMenusStayOrGoAndTheShapeOfThoseThatStayDecides) {
  add_own_menu("own.m2v");
  folder.add("own.m2v", testing_support::small_video(video_standard::ntsc, 3));
  draft->plan();
  EXPECT_FALSE(draft->may_choose_shape());
  EXPECT_TRUE(draft->chosen().is_wide);
  EXPECT_THAT(draft->notes(), Contains(HasSubstr("stay before the new ones")));
  draft->change([](menu_wishes& w) {
    w.replaces_own = true;
    w.is_wide = false;
  });
  EXPECT_TRUE(draft->may_choose_shape());
  EXPECT_FALSE(draft->chosen().is_wide);
}

TEST_F(MenusDraft, WhichShapeTheMenusThatStayDemandIsSaid) {
  add_own_menu("own.m2v");
  folder.add("own.m2v", testing_support::small_video(video_standard::ntsc, 3));
  draft->plan();
  EXPECT_THAT(draft->notes(),
              Contains(HasSubstr("The new menus are 16:9, as those are that stay")));
  draft->change([](menu_wishes& w) { w.replaces_own = true; });
  EXPECT_THAT(draft->notes(), Not(Contains(HasSubstr("as those are that stay"))));
}

TEST_F(MenusDraft, MenusOfBothShapesCannotStay) {
  add_own_menu("own.m2v");
  folder.add("own.m2v", testing_support::small_video(video_standard::ntsc, 3));
  folder.add("other menu.m2v", testing_support::small_video(video_standard::ntsc, 2));
  p.menulist.push_back(menu_row_text({folder.stored("other menu.m2v"), {}}));
  p.moremenuoptions.emplace_back(new_menu_options);
  p.menubuttons.resize(p.menulist.size());
  draft->plan();
  EXPECT_EQ(draft->trouble(),
            "The menus that stay are 4:3 and 16:9: let them be replaced, or change some of them.");
  draft->change([](menu_wishes& w) { w.replaces_own = true; });
  EXPECT_EQ(draft->trouble(), "");
}

TEST_F(MenusDraft, ThatTheDiscBeginsElsewhereIsSaidUnlessItIsToBeginWithTheMenus) {
  EXPECT_FALSE(draft->disc_begins_elsewhere());
  p.firstplay = "jump title 2";
  draft->plan();
  EXPECT_TRUE(draft->disc_begins_elsewhere());
  EXPECT_THAT(draft->notes(), Contains(HasSubstr("begins with \"jump title 2\"")));
  draft->change([](menu_wishes& w) { w.begins_with_menus = true; });
  EXPECT_THAT(draft->notes(), Not(Contains(HasSubstr("begins with"))));
}

TEST_F(MenusDraft, SamplesShowTheFirstPageInEachDesign) {
  for (std::size_t i = 0; i < draft->designs().size(); ++i) {
    const drawn_page page = draft->sample_of(i);
    EXPECT_FALSE(page.shapes.empty()) << draft->designs()[i].id;
    EXPECT_EQ(page.background, draft->designs()[i].design->background);
  }
  EXPECT_TRUE(draft->sample_of(99).shapes.empty());
}

TEST_F(MenusDraft, WithoutAFolderItSaysSo) {
  draft->change([](menu_wishes& w) { w.folder.clear(); });
  EXPECT_NE(draft->trouble(), "");
}

}  // namespace
}  // namespace corvane
