#include "examine/button_rules.h"

#include "authoring/sample_projects.h"
#include "disc/read_navigation.h"
#include "examine/button_neighbours.h"
#include "made_disc.h"
#include "made_facts.h"
#include "project/disc_of.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace corvane::testing_support {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

disc_description with_buttons(std::vector<disc_button> buttons) {
  disc_menu m = made_menu({});
  m.buttons = std::move(buttons);
  return made_disc({made_title()}, {m});
}

std::vector<std::string> told_of_buttons(const disc_description& d) {
  return told(button_findings(d));
}
std::vector<std::string> told_of_buttons(const disc_button& b) {
  return told_of_buttons(with_buttons({b}));
}

// One button ------------------------------------------------------------------------------------

TEST(ButtonRules, ButtonsInTheSafeAreaOnEvenLinesGiveNothing) {
  EXPECT_THAT(told_of_buttons(with_buttons({made_button("36", "24", "684", "100"),
                                            made_button(" 36", " 356", " 684", " 456")})),
              IsEmpty());
}

TEST(ButtonRules, EdgeThatIsNoNumberIsAnError) {
  EXPECT_THAT(told_of_buttons(made_button("x", "50", "100", "60")),
              ElementsAre("button-edge-not-number @ menu 1, button 1"));
  EXPECT_THAT(told_of_buttons(made_button("50", "", "100", "60px")),
              ElementsAre("button-edge-not-number @ menu 1, button 1",
                          "button-edge-not-number @ menu 1, button 1"));
}

TEST(ButtonRules, EdgeWithAFractionIsAnError) {
  for (const char* const edge : {"60.5", "60 ", "+60"})
    EXPECT_THAT(told_of_buttons(made_button("50", "50", edge, "60")),
                ElementsAre("button-edge-not-whole @ menu 1, button 1"))
        << edge;
  EXPECT_THAT(told_of_buttons(made_button("-50", "50", "60", "60")),
              ElementsAre("button-edge-not-whole @ menu 1, button 1"));
}

TEST(ButtonRules, UpperEdgeIsRoundedBeforeSpumuxGetsIt) {
  EXPECT_THAT(told_of_buttons(made_button("50", "50.4", "100", "60")), IsEmpty());
}

TEST(ButtonRules, EdgesTheWrongWayRoundAreAnError) {
  EXPECT_THAT(told_of_buttons(made_button("100", "50", "100", "60")),
              ElementsAre("button-without-area @ menu 1, button 1"));
  EXPECT_THAT(told_of_buttons(made_button("100", "60", "200", "50")),
              ElementsAre("button-without-area @ menu 1, button 1"));
}

TEST(ButtonRules, ButtonOutOfThePictureIsAnError) {
  EXPECT_THAT(told_of_buttons(made_button("100", "50", "721", "60")),
              ElementsAre("button-outside-picture @ menu 1, button 1"));
  disc_description d = with_buttons({made_button("100", "50", "200", "500")});
  EXPECT_THAT(told_of_buttons(d), ElementsAre("button-outside-picture @ menu 1, button 1"));
  d.standard = video_standard::pal;
  EXPECT_THAT(told_of_buttons(d), IsEmpty());
  EXPECT_THAT(told_of_buttons(made_button("100", "50", "999999", "99999999999999999999")),
              Contains("button-edge-not-whole @ menu 1, button 1"));
}

TEST(ButtonRules, ButtonTooSmallToBeDrawnIsAnErrorUnlessItIsABitmap) {
  EXPECT_THAT(told_of_buttons(made_button("100", "50", "105", "52")),
              ElementsAre("button-too-small @ menu 1, button 1"));
  EXPECT_THAT(told_of_buttons(made_button("100", "50", "106", "52")), IsEmpty());
  EXPECT_THAT(told_of_buttons(made_button("100", "50", "105", "52", "exit", "\\a.bmp", "\\b.bmp")),
              IsEmpty());
}

TEST(ButtonRules, ButtonOnAnOddLineIsANote) {
  const disc_description d = with_buttons({made_button("100", "51", "200", "60")});
  EXPECT_THAT(told_of_buttons(d), ElementsAre("button-odd-line @ menu 1, button 1"));
  EXPECT_EQ(button_findings(d)[0].severity, finding_severity::note);
}

TEST(ButtonRules, ButtonInTheMarginIsANote) {
  for (const disc_button& b :
       {made_button("35", "50", "200", "60"), made_button("100", "22", "200", "60"),
        made_button("100", "50", "685", "60"), made_button("100", "50", "200", "458")})
    EXPECT_THAT(told_of_buttons(b), ElementsAre("button-outside-safe-area @ menu 1, button 1"))
        << b.x0.text;
}

TEST(ButtonRules, ColourThatTheEditorDoesNotOfferIsAnError) {
  EXPECT_THAT(told_of_buttons(made_button("100", "50", "200", "60", "exit", "pink", "")),
              ElementsAre("button-colour-unknown @ menu 1, button 1",
                          "button-colour-unknown @ menu 1, button 1"));
}

// All of them -------------------------------------------------------------------------------------

TEST(ButtonRules, OverlappingButtonsAreAWarning) {
  std::vector<finding> findings = button_findings(
      with_buttons({made_button("100", "50", "200", "60"), made_button("200", "50", "300", "60"),
                    made_button("150", "50", "170", "60"), made_button("190", "54", "250", "64")}));
  std::erase_if(findings, [](const finding& f) { return f.rule != "button-overlap"; });
  EXPECT_THAT(told(findings), ElementsAre("button-overlap @ menu 1, button 1",
                                          "button-overlap @ menu 1, button 2"));
  EXPECT_EQ(findings[0].found, "the button overlaps with buttons 3 and 4");
  EXPECT_EQ(findings[1].found, "the button overlaps with button 4");
  EXPECT_EQ(findings[0].severity, finding_severity::warning);
}

TEST(ButtonRules, ButtonsThatCrossWithoutACornerInTheOtherOverlap) {
  EXPECT_THAT(told_of_buttons(with_buttons({made_button("100", "100", "300", "120"),
                                            made_button("190", "50", "210", "200")})),
              Contains("button-overlap @ menu 1, button 1"));
}

TEST(ButtonRules, ButtonThatNoArrowKeyLeadsToIsAWarning) {
  const disc_description d =
      with_buttons({made_button("100", "50", "200", "60"), made_button("110", "54", "120", "58")});
  EXPECT_THAT(told_of_buttons(d), ElementsAre("button-overlap @ menu 1, button 1",
                                              "button-not-reachable @ menu 1, button 2"));
}

/// So many buttons, six in a row.
std::vector<disc_button> many_buttons(int count) {
  std::vector<disc_button> buttons;
  for (int i = 0; i < count; ++i)
    buttons.push_back(made_button(std::to_string(40 + i % 6 * 100), std::to_string(40 + i / 6 * 40),
                                  std::to_string(120 + i % 6 * 100),
                                  std::to_string(60 + i / 6 * 40)));
  return buttons;
}

TEST(ButtonRules, ThirtySevenButtonsAreAnError) {
  std::vector<disc_button> buttons = many_buttons(37);
  EXPECT_THAT(told_of_buttons(with_buttons(buttons)),
              ElementsAre("menu-too-many-buttons @ menu 1"));
  buttons.pop_back();
  EXPECT_THAT(told_of_buttons(with_buttons(buttons)), IsEmpty());
}

constexpr menu_facts wide{{}, true}, narrow{{}, false}, unknown{};

/// Menus of so many buttons and what is told of them, whose streams are of these proportions.
std::vector<std::string> told_of_counts(const std::vector<int>& counts,
                                        const std::vector<menu_facts>& facts) {
  disc_description d = made_disc({made_title()}, {});
  for (const int count : counts) {
    d.menus.push_back(made_menu({}));
    d.menus.back().buttons = many_buttons(count);
  }
  return told(button_findings(d, facts));
}

TEST(ButtonRules, ThirteenButtonsInAMenuOf16To9AreAnError) {
  EXPECT_THAT(told_of_counts({12}, {wide}), IsEmpty());
  EXPECT_THAT(told_of_counts({13}, {wide}), ElementsAre("menu-too-many-wide-buttons @ menu 1"));
  EXPECT_THAT(told_of_counts({36}, {wide}), ElementsAre("menu-too-many-wide-buttons @ menu 1"));
  EXPECT_THAT(told_of_counts({37}, {wide}), ElementsAre("menu-too-many-buttons @ menu 1"));
  for (const menu_facts& other : {narrow, unknown})
    EXPECT_THAT(told_of_counts({36}, {other}), IsEmpty());
  EXPECT_THAT(told_of_counts({36}, {}), IsEmpty());
}

TEST(ButtonRules, TooManyWideButtonsAreCountedAndSaidWhatToDoAbout) {
  const disc_description d = with_buttons(many_buttons(13));
  const std::vector<finding> found = button_findings(d, std::vector{wide});
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].severity, finding_severity::error);
  EXPECT_EQ(found[0].found, "the menu has 13 buttons and is 16:9 on the disc");
  EXPECT_EQ(found[0].remedy,
            "spread the buttons over two menus, or give the menus pictures of 4:3");
}

TEST(ButtonRules, FirstMenuThatNamesItsProportionsDecidesForAllOfItsTitleset) {
  const std::vector<std::string> second{"menu-too-many-wide-buttons @ menu 2"};
  EXPECT_EQ(told_of_counts({12, 13}, {wide, narrow}), second);
  EXPECT_THAT(told_of_counts({13, 13}, {narrow, wide}), IsEmpty());
  EXPECT_THAT(
      told_of_counts({13, 13}, {unknown, wide}),
      ElementsAre("menu-too-many-wide-buttons @ menu 1", "menu-too-many-wide-buttons @ menu 2"));
  disc_description d = made_disc({made_title()}, {made_menu({}), made_menu({})});
  d.menus[0].buttons = d.menus[1].buttons = many_buttons(13);
  d.menus[1].titleset = 2;
  EXPECT_EQ(told(button_findings(d, std::vector{narrow, wide})), second);
}

/// What hand-edited XML states of the menus of a titleset.
TEST(ButtonRules, StatedProportionsCountMoreThanThoseOfTheStream) {
  const auto told_of = [](const std::string& video, int count, const menu_facts& stream) {
    std::string buttons;
    for (int i = 0; i < count; ++i)
      buttons += "<button>exit;</button>";
    const auto d =
        read_navigation("<dvdauthor><titleset><menus>" + video + "<pgc pause=\"inf\">" + buttons +
                            "<vob file=\"m.vob\"/></pgc></menus></titleset></dvdauthor>",
                        path_style::posix);
    EXPECT_TRUE(d) << d.error;
    return told(button_findings(*d, std::vector{stream}));
  };
  const auto is_too_many = ElementsAre("menu-too-many-wide-buttons @ menu 1");
  EXPECT_THAT(told_of("<video aspect=\"4:3\"/>", 13, wide), IsEmpty());
  EXPECT_THAT(told_of("<video aspect=\"16:9\"/>", 13, narrow), is_too_many);
  EXPECT_THAT(told_of("<video format=\"ntsc\"/>", 13, wide), is_too_many);
}

/// As dvdauthor takes them.
TEST(MenuFacts, ProportionsAreThoseThatTheStreamNames) {
  const auto named = [](bool mpeg2, int code) {
    file_facts file;
    file.kind = file_kind::video;
    file.video = examine_test::ntsc_video();
    file.video->shape->mpeg2 = mpeg2;
    file.video->shape->aspect_code = code;
    return menu_facts_of(file).is_wide;
  };
  for (int code = 1; code < 15; ++code) {
    const auto expected = [code](std::set<int> wide_codes, std::set<int> narrow_codes) {
      return wide_codes.contains(code)     ? std::optional(true)
             : narrow_codes.contains(code) ? std::optional(false)
                                           : std::nullopt;
    };
    EXPECT_EQ(named(true, code), expected({3}, {2})) << code;
    EXPECT_EQ(named(false, code), expected({3, 6}, {8, 12})) << code;
  }
  EXPECT_FALSE(menu_facts_of({}).is_wide);
}

TEST(MenuFacts, LengthIsThatOfAFileReadWhole) {
  file_facts file;
  file.video = examine_test::ntsc_video();
  EXPECT_FALSE(menu_facts_of(file).seconds);
  file.whole = true;
  EXPECT_EQ(menu_facts_of(file).seconds, file.video->seconds);
}

TEST(ButtonRules, TenPairsOfColoursAreAnError) {
  const char* const colours[] = {"black", "brown", "orange", "yellow",  "green",
                                 "blue",  "white", "grey",   "magenta", "cyan"};
  std::vector<disc_button> buttons;
  for (int i = 0; i < 10; ++i)
    buttons.push_back(made_button("100", std::to_string(40 + i * 40), "200",
                                  std::to_string(60 + i * 40), "exit", colours[i], "white"));
  EXPECT_THAT(told_of_buttons(with_buttons(buttons)),
              ElementsAre("menu-too-many-colours @ menu 1"));
  buttons.pop_back();
  EXPECT_THAT(told_of_buttons(with_buttons(buttons)), IsEmpty());
}

TEST(ButtonRules, ColoursThatSpumuxNeedsHoursForAreAnError) {
  const char* const colours[] = {"black", "brown", "orange", "yellow", "green",
                                 "blue",  "white", "grey",   "magenta"};
  std::vector<disc_button> buttons;
  for (int i = 0; i < 36; ++i)
    buttons.push_back(made_button(std::to_string(40 + i % 6 * 100), std::to_string(40 + i / 6 * 40),
                                  std::to_string(120 + i % 6 * 100),
                                  std::to_string(60 + i / 6 * 40), "exit", colours[i % 9],
                                  "white"));
  EXPECT_THAT(told_of_buttons(with_buttons(buttons)),
              ElementsAre("menu-colours-too-slow @ menu 1"));
}

TEST(ButtonRules, ThousandsOfButtonsAreLookedAtAtOnce) {
  const std::vector<disc_button> buttons(5'000, made_button("100", "50", "200", "60"));
  EXPECT_THAT(told_of_buttons(with_buttons(buttons)),
              ElementsAre("menu-too-many-buttons @ menu 1"));
}

// The menu ----------------------------------------------------------------------------------------

disc_description with_times(const std::string& begin, const std::string& end) {
  disc_description d = with_buttons({made_button("100", "50", "200", "60")});
  d.menus[0].loop = true;
  d.menus[0].spu_begin = time_of(begin);
  d.menus[0].spu_end = time_of(end);
  return d;
}

TEST(ButtonRules, TimesThatCannotBeReadAreAnError) {
  EXPECT_THAT(told_of_buttons(with_times("00:00:00.0", "5s")),
              ElementsAre("menu-button-time @ menu 1"));
  EXPECT_THAT(told_of_buttons(with_times("", "00:00:00.0")),
              ElementsAre("menu-button-time @ menu 1"));
  EXPECT_THAT(told_of_buttons(with_times("00:00:01.0", "00:00:05.0")), IsEmpty());
}

TEST(ButtonRules, ButtonsThatEndBeforeTheyBeginAreAnError) {
  EXPECT_THAT(told_of_buttons(with_times("00:00:05.0", "00:00:05.0")),
              ElementsAre("menu-button-time-order @ menu 1"));
  EXPECT_THAT(told_of_buttons(with_times("00:00:05.0", "00:00:00.0")), IsEmpty());
}

TEST(ButtonRules, ButtonsThatBeginAfterTheEndOfTheMenuAreAnError) {
  const disc_description d = with_times("00:00:10.0", "00:00:00.0");
  const menu_facts short_menu[] = {{10.0, {}}}, long_menu[] = {{10.5, {}}};
  EXPECT_THAT(told(button_findings(d, short_menu)), ElementsAre("menu-button-time-late @ menu 1"));
  EXPECT_THAT(told(button_findings(d, long_menu)), IsEmpty());
  EXPECT_THAT(told(button_findings(d)), IsEmpty());
}

TEST(ButtonRules, ButtonsThatGoWhileTheMenuStaysAreAWarning) {
  disc_description d = with_times("00:00:00.0", "00:00:05.0");
  d.menus[0].loop = false;
  EXPECT_THAT(told_of_buttons(d), ElementsAre("menu-buttons-vanish @ menu 1"));
}

TEST(ButtonRules, FrameThinnerThanNothingIsAnError) {
  disc_description d = with_times("0", "0");
  d.menus[0].thickness = number_of("-1");
  EXPECT_THAT(told_of_buttons(d), ElementsAre("menu-frame-thickness @ menu 1"));
}

TEST(ButtonRules, SoundOfAMenuThatDoesNotLoopEnds) {
  disc_description d = with_times("0", "0");
  d.menus[0].files = {"\\m\\menu.m2v", "\\m\\menu.ac3"};
  EXPECT_THAT(told_of_buttons(d), IsEmpty());
  d.menus[0].loop = false;
  EXPECT_THAT(told_of_buttons(d), ElementsAre("menu-sound-ends @ menu 1"));
}

TEST(ButtonRules, MenuOfAnotherProgramIsPassedOver) {
  disc_menu m;
  m.files = {"\\m\\menu.vob"};
  m.buttons = {made_button("", "", "", "", "exit", "", "")};
  EXPECT_THAT(told_of_buttons(made_disc({made_title()}, {m})), IsEmpty());
}

// Neighbours
// ----------------------------------------------------------------------------------------

TEST(ButtonNeighbours, ColumnIsGoneUpAndDown) {
  const button_edges column[] = {{100, 50, 200, 60}, {100, 80, 200, 90}, {100, 110, 200, 120}};
  EXPECT_THAT(neighbours_of(column),
              ElementsAre(button_neighbours{1, 2, 1, 1}, button_neighbours{1, 3, 2, 2},
                          button_neighbours{2, 3, 3, 3}));
}

TEST(ButtonNeighbours, RowIsGoneLeftAndRight) {
  const button_edges row[] = {{100, 50, 150, 60}, {200, 50, 250, 60}};
  EXPECT_THAT(neighbours_of(row),
              ElementsAre(button_neighbours{1, 1, 1, 2}, button_neighbours{2, 2, 1, 2}));
}

TEST(ButtonNeighbours, LeftKeyDoesNotLeadToAButtonToTheLeftAndAbove) {
  const button_edges diagonal[] = {{100, 50, 150, 60}, {200, 100, 250, 110}};
  EXPECT_THAT(neighbours_of(diagonal),
              ElementsAre(button_neighbours{1, 2, 1, 2}, button_neighbours{1, 2, 2, 2}));
}

TEST(ButtonNeighbours, NoButtonHasNone) {
  EXPECT_THAT(neighbours_of({}), IsEmpty());
  EXPECT_THAT(buttons_out_of_reach({}), IsEmpty());
}

// Projects
// ------------------------------------------------------------------------------------------

TEST(ButtonRules, SampleProjectsHaveNoError) {
  for (const sample& s : all_samples(path_style::posix))
    for (const finding& f : button_findings(disc_of(s.p)))
      EXPECT_NE(f.severity, finding_severity::error) << s.name << ": " << line_of(f);
}

}  // namespace
}  // namespace corvane::testing_support
