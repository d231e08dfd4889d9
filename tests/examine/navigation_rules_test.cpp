#include "examine/navigation_rules.h"

#include "authoring/navigation_xml.h"
#include "authoring/sample_projects.h"
#include "disc/read_navigation.h"
#include "made_disc.h"
#include "platform/files/paths.h"
#include "project/disc_of.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace corvane::testing_support {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::SizeIs;

std::vector<std::string> told_of_navigation(const disc_description& d) {
  return told(navigation_findings(d));
}

disc_description with_action(const std::string& action) {
  return made_disc({made_title()}, {made_menu({"jump title 1", action})});
}
disc_description with_post(const std::string& post) {
  return made_disc({made_title(post)}, {made_menu({"jump title 1"})});
}
disc_description with_first_play(const std::string& command) {
  return made_disc({made_title()}, {made_menu({"jump title 1"})}, command);
}

std::string found_about(const disc_description& d) {
  const std::vector<finding> findings = navigation_findings(d);
  return findings.size() == 1 ? findings[0].found : std::to_string(findings.size()) + " findings";
}

// Moved -----------------------------------------------------------------------------------------

disc_description two_titles(const std::string& first, const std::string& second) {
  disc_description d =
      made_disc({made_title(), made_title()}, {made_menu({"jump title 1", "exit"})});
  d.titles[0].streams = {first};
  d.titles[1].streams = {second};
  return d;
}

TEST(NavigationRules, CommandThatLeadsElsewhereThanBeforeIsAWarning) {
  const auto led_to = command_targets(two_titles("\\a\\tour.m2v", "\\a\\beach.m2v"));
  const auto findings =
      moved_command_findings(two_titles("\\a\\beach.m2v", "\\a\\tour.m2v"), led_to);
  EXPECT_THAT(told(findings), ElementsAre("command-moved @ menu 1, button 1"));
  EXPECT_EQ(findings[0].severity, finding_severity::warning);
  EXPECT_EQ(findings[0].found,
            "the command \"jump title 1\" led to \"tour.m2v\", it leads to \"beach.m2v\" now");
}

TEST(NavigationRules, CommandThatLeadsToItsFileAgainOrWasChangedIsNot) {
  const disc_description before = two_titles("\\a\\tour.m2v", "\\a\\beach.m2v");
  const auto led_to = command_targets(before);
  EXPECT_THAT(moved_command_findings(before, led_to), IsEmpty());
  EXPECT_THAT(moved_command_findings(before, {}), IsEmpty());
  disc_description now = two_titles("\\a\\beach.m2v", "\\a\\tour.m2v");
  now.menus[0].buttons[0].action = command_of("jump title 2");
  EXPECT_THAT(moved_command_findings(now, led_to), IsEmpty());
  now.menus[0].buttons[0].action = command_of("jump title 1");
  now.titles.clear();
  EXPECT_THAT(moved_command_findings(now, led_to), IsEmpty()) << "told by another rule";
}

TEST(NavigationRules, FilesOfTheSameNameAreToldWithTheirFolders) {
  const auto led_to = command_targets(two_titles("\\a\\film.m2v", "\\b\\film.m2v"));
  const auto findings =
      moved_command_findings(two_titles("\\b\\film.m2v", "\\a\\film.m2v"), led_to);
  ASSERT_THAT(findings, SizeIs(1));
  EXPECT_THAT(findings[0].found,
              HasSubstr("led to \"" + native_from_stored("\\a\\film.m2v") + "\""));
}

// Targets ---------------------------------------------------------------------------------------

TEST(NavigationRules, CommandsOfferedByTheEditorsGiveNothing) {
  EXPECT_THAT(told_of_navigation(with_action("exit")), IsEmpty());
  EXPECT_THAT(told_of_navigation(with_action("jump title 1")), IsEmpty());
  EXPECT_THAT(told_of_navigation(with_action("jump title 1 chapter 1")), IsEmpty());
  EXPECT_THAT(told_of_navigation(with_action("jump menu 1")), IsEmpty());
  EXPECT_THAT(told_of_navigation(with_post("jump title 1")), IsEmpty());
  EXPECT_THAT(told_of_navigation(with_post("call menu")), IsEmpty());
  EXPECT_THAT(told_of_navigation(with_post("exit")), IsEmpty());
  EXPECT_THAT(told_of_navigation(with_first_play("jump title 1")), IsEmpty());
  EXPECT_THAT(told_of_navigation(with_first_play("jump titleset 1 menu")), IsEmpty());
}

TEST(NavigationRules, ButtonToWhatThereIsNotIsAnError) {
  EXPECT_THAT(told_of_navigation(with_action("jump title 2")),
              ElementsAre("command-target-missing @ menu 1, button 2"));
  EXPECT_EQ(found_about(with_action("jump title 2")),
            "the command \"jump title 2\" leads to title 2, but there is only title 1");
  EXPECT_EQ(found_about(with_action("jump menu  7")),
            "the command \"jump menu  7\" leads to menu 7, but there is only menu 1");
  EXPECT_EQ(found_about(with_action("jump title 1 chapter 2")),
            "the command \"jump title 1 chapter 2\" leads to chapter 2 of title 1, which has only "
            "one chapter");
  EXPECT_EQ(navigation_findings(with_action("jump title 2"))[0].severity, finding_severity::error);
}

TEST(NavigationRules, ChapterThatDvdauthorAddsAtTheBeginningCounts) {
  disc_description d = with_action("jump title 1 chapter 3");
  d.titles[0].chapters = {time_of("00:00:05.00"), time_of("00:00:10.00")};
  EXPECT_THAT(told_of_navigation(d), IsEmpty());
  d.titles[0].chapters[0] = time_of("00:00:00.00");
  EXPECT_THAT(told_of_navigation(d), SizeIs(1));
}

TEST(NavigationRules, PostCommandToWhatThereIsNotIsAnError) {
  EXPECT_THAT(told_of_navigation(with_post("jump title 3")),
              ElementsAre("command-target-missing @ title 1, command"));
  disc_description d = with_post("call menu");
  d.menus.clear();
  EXPECT_THAT(told_of_navigation(d), ElementsAre("command-target-missing @ title 1, command"));
}

TEST(NavigationRules, FirstPlayToWhatThereIsNotIsAnError) {
  EXPECT_THAT(told_of_navigation(with_first_play("jump title 2")),
              ElementsAre("command-target-missing @ disc, command"));
  EXPECT_THAT(told_of_navigation(with_first_play("jump titleset 2 menu")),
              ElementsAre("command-target-missing @ disc, command"));
}

TEST(NavigationRules, AllFaultsAreToldAtOnce) {
  const disc_description d =
      made_disc({made_title("jump menu 1"), made_title("jump title 8")},
                {made_menu({"jump title 9", "call menu", "jump menu 2"})}, "call menu");
  EXPECT_THAT(told_of_navigation(d), ElementsAre("command-not-allowed @ disc, command",
                                                 "command-not-allowed @ title 1, command",
                                                 "command-target-missing @ title 2, command",
                                                 "command-target-missing @ menu 1, button 1",
                                                 "command-not-allowed @ menu 1, button 2",
                                                 "command-target-missing @ menu 1, button 3"));
}

// What is allowed where
// -----------------------------------------------------------------------------

TEST(NavigationRules, MenuCallsNothing) {
  EXPECT_THAT(told_of_navigation(with_action("call menu")),
              ElementsAre("command-not-allowed @ menu 1, button 2"));
}

TEST(NavigationRules, MenusHaveNoChapters) {
  for (const char* const action : {"jump menu 1 chapter 2", "jump menu chapter 1"})
    EXPECT_THAT(told_of_navigation(with_action(action)),
                ElementsAre("command-not-allowed @ menu 1, button 2"))
        << action;
}

TEST(NavigationRules, TitleDoesNotJumpToAMenu) {
  for (const char* const post : {"jump menu 1", "jump titleset 1 menu", "jump vmgm menu"})
    EXPECT_THAT(told_of_navigation(with_post(post)),
                ElementsAre("command-not-allowed @ title 1, command"))
        << post;
}

TEST(NavigationRules, TitleCallsAMenuByNumberWithTheJumpTableOnly) {
  EXPECT_THAT(told_of_navigation(with_post("call menu 1")),
              ElementsAre("command-not-allowed @ title 1, command"));
  EXPECT_THAT(told_of_navigation(with_post("call last menu")),
              ElementsAre("command-not-allowed @ title 1, command"));
  for (const char* const post : {"call menu 1", "call last menu"}) {
    disc_description d = with_post(post);
    d.jump_table = true;
    EXPECT_THAT(told_of_navigation(d), IsEmpty()) << post;
  }
  disc_description d = with_post("call menu");
  d.jump_table = true;
  EXPECT_THAT(told_of_navigation(d), ElementsAre("command-syntax @ title 1, command"));
}

TEST(NavigationRules, DiscBeginsWithAWholeTitleOrAMenu) {
  for (const char* const command :
       {"jump title 1 chapter 1", "jump menu 1", "call menu", "jump titleset 1 title 1"})
    EXPECT_THAT(told_of_navigation(with_first_play(command)),
                ElementsAre("command-not-allowed @ disc, command"))
        << command;
}

// Typed commands
// --------------------------------------------------------------------------------------

TEST(NavigationRules, TypedCommandIsANote) {
  const std::vector<finding> findings = navigation_findings(with_action("g2=5; jump title 1"));
  EXPECT_THAT(told(findings), ElementsAre("command-typed @ menu 1, button 2"));
  EXPECT_EQ(findings[0].severity, finding_severity::note);
}

TEST(NavigationRules, TargetsOfATypedCommandAreLookedAt) {
  EXPECT_THAT(told_of_navigation(with_action("if (g2 == 1) jump title 1; else jump menu 4")),
              ElementsAre("command-target-missing @ menu 1, button 2"));
  EXPECT_THAT(told_of_navigation(with_post("g2=1; jump menu 1")),
              ElementsAre("command-not-allowed @ title 1, command"));
}

TEST(NavigationRules, CommandThatDvdauthorCannotReadIsAnError) {
  for (const char* const action :
       {"jump title1", "jump title 1;", "jump", "exit 1", "jump titel 1", "jump title 1 chapter"})
    EXPECT_THAT(told_of_navigation(with_action(action)),
                ElementsAre("command-syntax @ menu 1, button 2"))
        << action;
  EXPECT_THAT(found_about(with_action("Jump Title 1")), HasSubstr("in small letters"));
  EXPECT_THAT(told_of_navigation(with_action("  ")),
              ElementsAre("command-empty @ menu 1, button 2"));
}

TEST(NavigationRules, JumpTableTakesWhatStandsBehindJumpMenuForANumber) {
  disc_description d = with_action("jump menu entry root");
  EXPECT_THAT(told_of_navigation(d), ElementsAre("command-typed @ menu 1, button 2"));
  d.jump_table = true;
  EXPECT_THAT(told_of_navigation(d), ElementsAre("command-syntax @ menu 1, button 2"));
}

// Ways ------------------------------------------------------------------------------------------

TEST(NavigationRules, TitleThatNothingLeadsToIsAWarning) {
  const std::vector<finding> findings = navigation_findings(
      made_disc({made_title("call menu"), made_title()}, {made_menu({"jump title 1"})}));
  EXPECT_THAT(told(findings), ElementsAre("title-not-reachable @ title 2"));
  EXPECT_EQ(findings[0].severity, finding_severity::warning);
}

TEST(NavigationRules, TitleFollowsTheOneBeforeItUnlessThatHasACommand) {
  EXPECT_THAT(told_of_navigation(made_disc({made_title(), made_title()})), IsEmpty());
  EXPECT_THAT(told_of_navigation(made_disc({made_title("exit"), made_title()})),
              ElementsAre("title-not-reachable @ title 2"));
}

TEST(NavigationRules, MenuThatNothingLeadsToIsAWarning) {
  EXPECT_THAT(told_of_navigation(
                  made_disc({made_title()}, {made_menu({"jump title 1"}), made_menu({"exit"})})),
              ElementsAre("menu-not-reachable @ menu 2"));
}

TEST(NavigationRules, MenuKeyLeadsToTheFirstMenu) {
  EXPECT_THAT(
      told_of_navigation(made_disc({made_title()}, {made_menu({"jump title 1"})}, "jump title 1")),
      IsEmpty());
}

TEST(NavigationRules, CommandThatMayLeadAnywhereLeavesNothingUnreachable) {
  EXPECT_THAT(told_of_navigation(
                  made_disc({made_title("resume"), made_title()}, {made_menu({"jump title 1"})})),
              ElementsAre("command-typed @ title 1, command"));
}

TEST(NavigationRules, MenusThatLeadOnlyToEachOtherHoldTheirViewer) {
  EXPECT_THAT(told_of_navigation(made_disc({made_title()},
                                           {made_menu({"jump menu 2"}), made_menu({"jump menu 1"})},
                                           "jump title 1")),
              ElementsAre("menu-not-left @ menu 1", "menu-not-left @ menu 2"));
}

TEST(NavigationRules, MenuIsLeftThroughAnother) {
  EXPECT_THAT(told_of_navigation(
                  made_disc({made_title()}, {made_menu({"jump menu 2"}), made_menu({"jump menu 3"}),
                                             made_menu({"jump title 1"})})),
              IsEmpty());
}

TEST(NavigationRules, MenuWithoutButtonsStaysForEver) {
  disc_description d = made_disc({made_title()}, {made_menu({})}, "jump title 1");
  EXPECT_THAT(told_of_navigation(d), ElementsAre("menu-without-buttons @ menu 1"));
  EXPECT_EQ(found_about(d), "the menu has no buttons and stays for ever");
  d.menus[0].loop = true;
  EXPECT_EQ(found_about(d), "the menu has no buttons and begins again for ever");
}

TEST(NavigationRules, CommandsOfTheJumpTableAreCounted) {
  const auto disc_with = [](int titles_buttons, int menus) {
    std::vector<std::string> actions(static_cast<std::size_t>(titles_buttons), "jump title 1");
    for (int menu = 2; menu <= menus; ++menu)
      actions.push_back("jump menu " + std::to_string(menu));
    std::vector<disc_menu> all{made_menu(actions)};
    for (int menu = 2; menu <= menus; ++menu)
      all.push_back(made_menu({"jump menu 1"}));
    disc_description d = made_disc({made_title()}, all);
    d.jump_table = true;
    return d;
  };
  EXPECT_THAT(told_of_navigation(disc_with(32, 30)), IsEmpty());
  EXPECT_THAT(told_of_navigation(disc_with(32, 31)),
              ElementsAre("menu-too-many-commands @ menu 1"));
}

TEST(NavigationRules, ThousandsOfMenusInARowAreLookedAtAtOnce) {
  std::vector<disc_menu> menus;
  for (int menu = 2; menu <= 2000; ++menu)
    menus.push_back(made_menu({"jump menu " + std::to_string(menu)}));
  menus.push_back(made_menu({"jump title 1"}));
  EXPECT_THAT(told_of_navigation(made_disc({made_title()}, menus)), IsEmpty());
}

// Hand-edited XML ---------------------------------------------------------------------------------

std::vector<std::string> told_about_xml(const std::string& elements) {
  const std::string xml = "<dvdauthor dest=\"/dvd\">" + elements + "</dvdauthor>";
  const auto d = read_navigation(xml, path_style::posix);
  EXPECT_TRUE(d) << d.error;
  return d ? told(navigation_findings(*d, xml)) : std::vector<std::string>();
}

const std::string vob = "<vob file=\"/m/a.vob\"/>";

TEST(NavigationRules, TitlesetsOfTheXmlAreKeptApart) {
  const std::string one = "<titleset><titles><pgc>" + vob + "</pgc></titles></titleset>";
  const std::string menu =
      "<menus><pgc pause=\"inf\"><button>jump title 2;</button>" + vob + "</pgc></menus>";
  const std::string two = "<titleset>" + menu + "<titles><pgc>" + vob + "</pgc><pgc>" + vob +
                          "<post>call menu;</post></pgc></titles></titleset>";
  EXPECT_THAT(told_about_xml(one + two), IsEmpty());
  EXPECT_THAT(told_about_xml(two + one),
              ElementsAre("title-not-reachable @ title 1", "title-not-reachable @ title 3"));
  EXPECT_THAT(told_about_xml("<titleset>" + menu + "<titles><pgc>" + vob +
                             "</pgc></titles></titleset>" + two),
              ElementsAre("command-target-missing @ menu 1, button 1"));
}

TEST(NavigationRules, CommandOfTheXmlWithoutItsEndIsAnError) {
  const std::string titles = "<titles><pgc>" + vob + "<post>exit</post></pgc></titles>";
  EXPECT_THAT(told_about_xml("<titleset>" + titles + "</titleset>"),
              ElementsAre("command-syntax @ title 1, command"));
  EXPECT_THAT(told_about_xml("<vmgm><fpc>{ jump title 1; }</fpc></vmgm><titleset><titles><pgc>" +
                             vob + "</pgc></titles></titleset>"),
              ElementsAre("command-typed @ disc, command"));
  EXPECT_THAT(told_about_xml("<titleset><menus><pgc pause=\"inf\"><pre>g1==3</pre><button>exit;;"
                             "</button>" +
                             vob + "</pgc></menus></titleset>"),
              ElementsAre("command-syntax @ menu 1, command", "command-syntax @ menu 1, button 1"));
}

TEST(NavigationRules, WaysThatTheDescriptionDoesNotHoldLeaveNothingUnreachable) {
  const std::string titles =
      "<titles><pgc>" + vob + "<post>exit;</post></pgc><pgc>" + vob + "</pgc></titles>";
  const auto set = [&titles](const std::string& menus) {
    return "<titleset>" + menus + titles + "</titleset>";
  };
  EXPECT_THAT(told_about_xml(set("")), ElementsAre("title-not-reachable @ title 2"));
  EXPECT_THAT(told_about_xml("<vmgm><menus><pgc>" + vob + "</pgc></menus></vmgm>" + set("")),
              IsEmpty());
  for (const std::string& pgc :
       {"<pgc>" + vob + "<post>jump title 2;</post></pgc>",
        "<pgc pause=\"inf\"><pre>jump title 2;</pre>" + vob + "</pgc>",
        "<pgc pause=\"inf\" entry=\"root\">" + vob + "</pgc>",
        "<pgc pause=\"5\" entry=\"root\">" + vob + "<post>jump menu 1;</post></pgc>",
        std::string("<pgc pause=\"inf\"><vob file=\"a\"><cell>jump title 2;</cell></vob></pgc>")})
    EXPECT_THAT(told_about_xml(set("<menus>" + pgc + "</menus>")), IsEmpty()) << pgc;
}

TEST(NavigationRules, ProjectWhoseXmlNobodyChangedGivesTheSame) {
  for (const sample& s : all_samples(path_style::posix)) {
    const disc_description rows = disc_of(s.p);
    const std::string xml = config_xml(rows, {}, s.where);
    const auto read = read_navigation(xml, path_style::posix);
    ASSERT_TRUE(read);
    EXPECT_EQ(told(navigation_findings(*read, xml)), told(navigation_findings(rows))) << s.name;
  }
}

// Projects
// ------------------------------------------------------------------------------------------

TEST(NavigationRules, SampleProjectsHaveNoError) {
  for (const sample& s : all_samples(path_style::posix))
    for (const finding& f : navigation_findings(disc_of(s.p)))
      EXPECT_NE(f.severity, finding_severity::error) << s.name << ": " << line_of(f);
}

TEST(NavigationRules, CleanProjectsGiveNothing) {
  for (const sample& s : {elementary_titles(path_style::posix), muxed_titles(path_style::posix),
                          one_menu(path_style::posix), subtitles(path_style::posix)})
    EXPECT_THAT(told(navigation_findings(disc_of(s.p))), IsEmpty()) << s.name;
}

}  // namespace
}  // namespace corvane::testing_support
