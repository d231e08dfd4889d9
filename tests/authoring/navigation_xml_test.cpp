#include "authoring/navigation_xml.h"

#include "authoring/sample_projects.h"
#include "authoring/texts_of_project.h"
#include "formats/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane::testing_support {
namespace {

using ::testing::Contains;
using ::testing::HasSubstr;
using ::testing::Not;

std::vector<std::string> xml_lines(const sample& s) {
  return split(navigation_xml(s.p, s.where), crlf);
}

TEST(NavigationXml, ProjectWithoutMenusChainsItsTitlesAndEnds) {
  const std::string text =
      navigation_xml(elementary_titles(posix).p, elementary_titles(posix).where);
  EXPECT_THAT(text, Not(HasSubstr("menus>")));
  EXPECT_THAT(text, HasSubstr("          <post>jump title 2;</post>\r\n"));
  EXPECT_THAT(text, HasSubstr("          <post>jump title 3;</post>\r\n"));
  EXPECT_THAT(text, HasSubstr("          <post>exit; </post>\r\n"));
}

TEST(NavigationXml, DefaultFirstPlayWritesAnEmptyManager) {
  sample s = elementary_titles(posix);
  EXPECT_THAT(navigation_xml(s.p, s.where), HasSubstr("  <vmgm>  \r\n  </vmgm>\r\n"));
  s.p.firstplay = "";
  EXPECT_THAT(navigation_xml(s.p, s.where), HasSubstr("  <vmgm>  \r\n  </vmgm>\r\n"));
}

TEST(NavigationXml, FirstPlayCommandStandsInTheManager) {
  EXPECT_THAT(xml_lines(plain_menus(posix)), Contains("     <fpc> jump titleset 1 menu; </fpc>"));
}

TEST(NavigationXml, JumpTableForwardsFromTheFirstMenu) {
  EXPECT_THAT(navigation_xml(jump_table(posix).p, jump_table(posix).where),
              HasSubstr("      <pgc pause=\"inf\">\r\n"
                        "        <pre>\r\n"
                        "          if (g1==2) jump menu 2;\r\n"
                        "          if (g1==3) jump menu 3;\r\n"
                        "        </pre>\r\n"));
}

TEST(NavigationXml, JumpTableWithOneMenuHasNothingToForward) {
  EXPECT_THAT(navigation_xml(one_menu(posix).p, one_menu(posix).where), Not(HasSubstr("<pre>")));
}

TEST(NavigationXml, PlainModeForwardsNothing) {
  EXPECT_THAT(navigation_xml(plain_menus(posix).p, plain_menus(posix).where),
              Not(HasSubstr("<pre>")));
}

TEST(NavigationXml, LoopFlagDecidesPauseAndSelfJump) {
  const std::string text = navigation_xml(plain_menus(posix).p, plain_menus(posix).where);
  EXPECT_THAT(text, HasSubstr("<menus>\r\n      <pgc pause=\"5\">\r\n"));
  EXPECT_THAT(text, HasSubstr("       <post> jump menu 1; </post>\r\n      </pgc>\r\n"
                              "      <pgc pause=\"inf\">\r\n"));
  EXPECT_THAT(text, Not(HasSubstr("<post> jump menu 2;")));
}

struct rewrite {
  const char* stored;
  const char* plain;
  const char* with_jump_table;
};

TEST(NavigationXml, ButtonCommandsInBothModes) {
  const rewrite table[] = {
      {"jump menu 3", "jump menu 3", "g1=3; jump menu 3"},
      {"jump title 4", "jump title 4", "g1=2; jump title 4"},
      {"jump title 1 chapter  2", "jump title 1 chapter  2", "g1=2; jump title 1 chapter  2"},
      {"jump titleset 1 menu", "jump titleset 1 menu", "g1=2; jump titleset 1 menu"},
      {"exit", "exit", "exit"},
      {"jump  menu 3", "jump  menu 3", "g1=3; jump menu 3"},
      {" jump menu  3 ", " jump menu  3 ", "g1=3; jump menu 3"},
      {"jump menu  3", "jump menu  3", "g1= 3; jump menu  3"},
      {"  jump   title 4", "  jump   title 4", "g1=2; jump title 4"},
      {"jump  title 1  chapter  2", "jump  title 1  chapter  2", "g1=2; jump title 1 chapter 2"},
      {"jump  titleset 1 menu", "jump  titleset 1 menu", "g1=2; jump titleset 1 menu"},
      {"g3=1;  jump  menu 1", "g3=1;  jump  menu 1", "g3=1;  jump  menu 1"},
      {"g3=1; jump menu 1", "g3=1; jump menu 1", "g3=1; jump menu 1"}};
  for (const rewrite& row : table) {
    sample s{"", {}, sample_run_paths(posix)};
    add_title(s.p, posix, {"a.m2v", "a.ac3"});
    add_menu(s.p, posix, "1.m2v", "", "0\t00:00:00.0\t00:00:00.0\t1", "");
    add_menu(s.p, posix, "2.m2v", "", "0\t00:00:00.0\t00:00:00.0\t1",
             std::string(" 0/0/100/3/") + row.stored + "/black/black");
    EXPECT_THAT(xml_lines(s),
                Contains(std::string("        <button> ") + row.plain + "; </button>"));
    s.p.jumptable = true;
    EXPECT_THAT(xml_lines(s),
                Contains(std::string("        <button> ") + row.with_jump_table + "; </button>"));
  }
}

TEST(NavigationXml, ButtonJumpToTheTitlesetMenuRemembersItsMenuToo) {
  EXPECT_THAT(xml_lines(jump_table(posix)),
              Contains("        <button> g1=1; jump titleset 1 menu; </button>"));
}

TEST(NavigationXml, PostCommandsInBothModes) {
  const rewrite table[] = {{"call menu 2              ", "call menu 2", "g1=2; call menu"},
                           {"call menu 12", "call menu 12", "g1=12; call menu"},
                           {"call  menu 2", "call  menu 2", "g1=2; call menu"},
                           {"  call   menu  2  ", "call   menu  2", "g1=2; call menu"},
                           {"call last menu           ", "call last menu", "call menu"},
                           {" call  last  menu", "call  last  menu", "call menu"},
                           {"jump title 1             ", "jump title 1", "jump title 1"},
                           {"exit                     ", "exit", "exit"},
                           {"call menu", "call menu", "g1=; call menu"}};
  for (const rewrite& row : table) {
    sample s{"", {}, sample_run_paths(posix)};
    add_title(s.p, posix, {"a.m2v", "a.ac3"});
    s.p.postinfo = {row.stored};
    EXPECT_THAT(xml_lines(s), Contains(std::string("          <post>") + row.plain + ";</post>"));
    s.p.jumptable = true;
    EXPECT_THAT(xml_lines(s),
                Contains(std::string("          <post>") + row.with_jump_table + ";</post>"));
  }
}

TEST(NavigationXml, PlainModeWritesCallLastMenuUnchanged) {
  sample s = plain_menus(posix);
  s.p.postinfo[0] = "call last menu           ";
  EXPECT_THAT(xml_lines(s), Contains("          <post>call last menu;</post>"));
}

TEST(NavigationXml, TitlesBeyondThePostCommandsAndBlankOnesChain) {
  sample s = elementary_titles(posix);
  s.p.postinfo = {"                         ", "exit"};
  const std::string text = navigation_xml(s.p, s.where);
  EXPECT_THAT(text, HasSubstr("<post>jump title 2;</post>"));
  EXPECT_THAT(text, HasSubstr("<post>exit;</post>"));
  EXPECT_THAT(text, HasSubstr("<post>exit; </post>"));
}

TEST(NavigationXml, LanguageCodeIsTheSecondWordWhateverFollows) {
  const auto lines = xml_lines(plain_menus(posix));
  EXPECT_THAT(lines, Contains("       <audio lang=\"AF\" />"));
  EXPECT_THAT(lines, Contains("       <subpicture lang=\"DE\" />"));
}

TEST(NavigationXml, MenuWithoutButtonsHasNone) {
  sample s = one_menu(posix);
  for (const char* element : {"", " "}) {
    s.p.menubuttons = {element};
    EXPECT_THAT(navigation_xml(s.p, s.where), Not(HasSubstr("<button>")));
  }
}

TEST(NavigationXml, EveryAmpersandIsEscapedOnceAndOnlyInTheFile) {
  const sample s = jump_table(posix);
  EXPECT_THAT(navigation_xml(s.p, s.where),
              HasSubstr("<dvdauthor dest=\"/home/anna/discs/my dvd & more\">\r\n"));
  EXPECT_THAT(config_xml(s.p, s.where),
              HasSubstr("<dvdauthor dest=\"/home/anna/discs/my dvd &amp; more\">\r\n"));
  EXPECT_EQ(escape_ampersands("a&b&amp;"), "a&amp;b&amp;amp;");
}

TEST(NavigationXml, FolderWithAmpersandComesBackFromItsOwnFile) {
  for (const path_style style : {path_style::windows, path_style::posix}) {
    sample s = jump_table(style);
    s.where.out += "&amp;&&quot;";
    EXPECT_EQ(folder_of_custom_xml(config_xml(s.p, s.where)), s.where.out);
  }
}

TEST(NavigationXml, FolderIsTheTextBetweenTheFirstQuotesOfTheSecondLine) {
  EXPECT_EQ(folder_of_custom_xml("a\r\n<dvdauthor dest=\"C:\\dvd\" x=\"y\">\r\n"), "C:\\dvd");
  EXPECT_EQ(folder_of_custom_xml("a\n<dvdauthor dest=\"/dvd\">"), "/dvd");
  for (const char* none : {"", "<dvdauthor dest=\"/dvd\">", "a\r\n\r\n<dvdauthor dest=\"/dvd\">",
                           "a\n<dvdauthor dest=\"/dvd>\n\"", "a\n<dvdauthor dest=''>"})
    EXPECT_EQ(folder_of_custom_xml(none), "") << none;
}

TEST(NavigationXml, HandEditedTextIsWrittenAsItStands) {
  sample s = jump_table(posix);
  s.p.customxml = "<?xml?>\n<dvdauthor dest=\"/a&amp;b\"> & no line end";
  EXPECT_EQ(config_xml(s.p, s.where), s.p.customxml);
}

}  // namespace
}  // namespace corvane::testing_support
