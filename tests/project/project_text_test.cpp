// The project file's text: golden texts, and what is not a project file and why.
#include "project/project_text.h"

#include "formats/text.h"
#include "project/project_file.h"
#include "sample_project.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using testing_support::contents_of;
using testing_support::random_project;
using testing_support::sample_project;
using testing_support::sample_project_text;

const std::string windows_root = "C:\\Users\\u\\dvd";
const std::string posix_root = "\\home\\u\\dvd";

/// The project that a text holds, as a project again.
project reloaded(const std::string& text) {
  const auto loaded = parse_project(text);
  EXPECT_TRUE(loaded) << loaded.error;
  project p;
  if (!loaded)
    return p;
  p.List11 = loaded->List11;
  p.chapters = loaded->chapters;
  p.delay = loaded->delay;
  p.languagetags = loaded->languagetags;
  p.menulist = loaded->menulist;
  p.moremenuoptions = loaded->moremenuoptions;
  p.menubuttons = loaded->menubuttons;
  p.postinfo = loaded->postinfo;
  p.subtitledata = loaded->subtitledata;
  p.subtitleoptions = loaded->subtitleoptions;
  p.firstplay = loaded->firstplay;
  p.globalregion = loaded->globalregion;
  p.isocreate = loaded->isocreate;
  p.jumptable = loaded->jumptable;
  p.customxml = loaded->customxml;
  return p;
}

std::string why_not(const std::string& text) {
  const auto loaded = parse_project(text);
  EXPECT_FALSE(loaded);
  return loaded.error;
}

/// The sample's text with its first `what` replaced.
std::string sample_with(std::string_view what, std::string_view with) {
  std::string text = sample_project_text(posix_root);
  const auto at = text.find(what);
  EXPECT_NE(at, std::string::npos) << what;
  return text.replace(at, what.size(), with);
}

TEST(ProjectText, GoldenInWindowsForm) {
  EXPECT_EQ(project_text(sample_project(windows_root)), sample_project_text(windows_root));
}

TEST(ProjectText, GoldenInPosixForm) {
  EXPECT_EQ(project_text(sample_project(posix_root)), sample_project_text(posix_root));
}

TEST(ProjectText, EmptyProjectIsTheVersionLineTenSectionEndsAndFourLines) {
  EXPECT_EQ(project_text(project()),
            "Corvane 0.997 - 1/2/2005\r\n***\r\n***\r\n***\r\n***\r\n***\r\n***\r\n***\r\n***\r\n"
            "***\r\n***\r\n<default>\r\nNTSC\r\nFalse\r\nFalse\r\n");
}

TEST(ProjectText, GoldenTextReadsBackAsTheProject) {
  for (const std::string& root : {windows_root, posix_root}) {
    const auto loaded = parse_project(sample_project_text(root));
    ASSERT_TRUE(loaded) << loaded.error;
    EXPECT_EQ(*loaded, contents_of(sample_project(root)));
  }
}

TEST(ProjectText, LoadThenSaveGivesTheSameBytes) {
  for (std::uint32_t seed = 1; seed <= 500; ++seed) {
    const std::string text = project_text(random_project(seed));
    EXPECT_EQ(project_text(reloaded(text)), text) << "seed " << seed;
  }
}

TEST(ProjectText, AMenuWithoutButtonsIsOneLineWithOneBlank) {
  project p;
  p.menulist = {"C:\\m.m2v/"};
  p.moremenuoptions = {"0\t00:00:00.0\t00:00:00.0\t1"};
  p.menubuttons = {" "};
  const std::string text = project_text(p);
  EXPECT_NE(text.find("\r\nmenu01: \r\n***\r\n"), std::string::npos);
  EXPECT_EQ(reloaded(text).menubuttons, std::vector<std::string>{" "});
}

TEST(ProjectText, AMenuWhoseButtonsWereNeverStoredWritesNoLine) {
  project p;
  p.menulist = {"C:\\m.m2v/", "C:\\n.m2v/"};
  p.moremenuoptions.assign(2, "0\t00:00:00.0\t00:00:00.0\t1");
  p.menubuttons = {"", " 1/ 2/ 3/ 4/exit/black/black"};
  const std::string text = project_text(p);
  EXPECT_EQ(text.find("menu01:"), std::string::npos);
  EXPECT_EQ(reloaded(text).menubuttons, p.menubuttons);
}

TEST(ProjectText, MenuNumbersHaveTwoDigits) {
  project p;
  p.menulist.assign(99, "C:\\m.m2v/");
  p.moremenuoptions.assign(99, "0\t00:00:00.0\t00:00:00.0\t1");
  for (int menu = 1; menu <= 99; ++menu) {
    p.menubuttons.resize(static_cast<std::size_t>(menu));
    p.menubuttons.back() = " " + std::to_string(menu) + "/0/0/0/exit/black/black";
  }
  const std::string text = project_text(p);
  EXPECT_NE(text.find("\r\nmenu09: 9/"), std::string::npos);
  EXPECT_NE(text.find("\r\nmenu10: 10/"), std::string::npos);
  EXPECT_NE(text.find("\r\nmenu99: 99/"), std::string::npos);
  EXPECT_EQ(reloaded(text).menubuttons, p.menubuttons);
}

TEST(ProjectText, WhatATakenBackLoadLeavesIsWrittenAndReadAgain) {
  project p;  // delays and buttons of titles and menus that are gone
  p.delay = {"10", "20"};
  p.menubuttons = {"", " 1/ 2/ 3/ 4/exit/black/black"};
  p.firstplay = "";
  const std::string text = project_text(p);
  EXPECT_EQ(project_text(reloaded(text)), text);
  EXPECT_EQ(menus_in_file(p), 2u);
}

TEST(ProjectText, SurplusEmptyElementsAreNoMenus) {
  project p;
  p.menulist = {"C:\\m.m2v/"};
  p.menubuttons.assign(120, "");
  EXPECT_EQ(menus_in_file(p), 1u);
}

TEST(ProjectText, SeveralLinesOfXmlComeBackWithALineEndAfterTheLast) {
  project p;
  p.customxml = "<a>\r\n  <b/>\r\n</a>";
  const project again = reloaded(project_text(p));
  EXPECT_EQ(again.customxml, "<a>\r\n  <b/>\r\n</a>\r\n");
  EXPECT_EQ(project_text(again), project_text(p));
}

TEST(ProjectText, XmlWithOtherLineEndsIsWrittenWithTheFilesOwn) {
  const std::pair<const char*, const char*> table[] = {{"<a>\n</a>", "<a>\r\n</a>\r\n"},
                                                       {"<a>\n</a>\n", "<a>\r\n</a>\r\n"},
                                                       {"<a>\r\n\n</a>\n", "<a>\r\n\r\n</a>\r\n"},
                                                       {"\n", "\r\n"},
                                                       {"<a>\r", "<a>\r\n"}};
  for (const auto& [xml, written] : table) {
    project p;
    p.customxml = xml;
    const std::string text = project_text(p);
    EXPECT_TRUE(text.ends_with(std::string("False\r\nFalse\r\n") + written)) << xml;
    EXPECT_EQ(project_text(reloaded(text)), text) << xml;
  }
}

TEST(ProjectText, BareLineFeedsAreAcceptedAsLineEnds) {
  const auto loaded = parse_project(replace_all(sample_project_text(posix_root), "\r\n", "\n"));
  ASSERT_TRUE(loaded) << loaded.error;
  EXPECT_EQ(*loaded, contents_of(sample_project(posix_root)));
}

TEST(ProjectText, TheLastLineNeedsNoLineEnd) {
  std::string text = project_text(project());
  text.resize(text.size() - 2);
  EXPECT_EQ(project_text(reloaded(text)), text + "\r\n");
}

TEST(ProjectText, LinesOfTheButtonSectionThatNameNoMenuAreSkipped) {
  const auto loaded = parse_project(sample_with("menu02: ", "a remark"));
  ASSERT_TRUE(loaded) << loaded.error;
  EXPECT_EQ(loaded->menubuttons[1], "");
}

TEST(ProjectText, TruncatedAnywhereItLoadsOrNamesTheSection) {
  const std::string text = sample_project_text(posix_root);
  const std::size_t xml = text.find("<dvdauthor");
  for (std::size_t length = 0; length < text.size(); ++length) {
    const auto loaded = parse_project(std::string_view(text).substr(0, length));
    if (loaded) {
      EXPECT_GE(length, xml - 2) << "only the last line end and the XML may be cut";
    } else {
      EXPECT_NE(loaded.error, "") << length;
    }
  }
}

TEST(ProjectText, EndInsideASectionNamesTheSection) {
  EXPECT_EQ(why_not(""), "it ends before the version line");
  EXPECT_EQ(why_not("Corvane 0.997 - 1/2/2005\r\n"), "it ends inside section 2 (titles)");
  const char* const names[] = {"titles",    "chapters",        "delays",  "language tags",
                               "menus",     "menu options",    "buttons", "post commands",
                               "subtitles", "subtitle options"};
  std::string text = "Corvane 0.997 - 1/2/2005\r\n";
  int number = 2;
  for (const char* const name : names) {
    EXPECT_EQ(why_not(text),
              "it ends inside section " + std::to_string(number++) + " (" + name + ")");
    text += "***\r\n";
  }
  EXPECT_EQ(why_not(text), "it ends before the first-play command");
  EXPECT_EQ(why_not(text += "<default>\r\n"), "it ends before the region");
  EXPECT_EQ(why_not(text += "NTSC\r\n"), "it ends before the ISO switch");
  EXPECT_EQ(why_not(text += "True\r\n"), "it ends before the JumpTable switch");
}

TEST(ProjectText, WithoutSectionEndsItEndsInsideTheTitles) {
  EXPECT_EQ(why_not(replace_all(sample_project_text(posix_root), "***", "")),
            "it ends inside section 2 (titles)");
}

TEST(ProjectText, MenuNumbersThatAreNoneAreNamedWithTheirLine) {
  EXPECT_EQ(why_not(sample_with("menu02:", "menu00:")), "line 24 names menu \"00\"");
  EXPECT_EQ(why_not(sample_with("menu02:", "menuxx:")), "line 24 names menu \"xx\"");
  EXPECT_EQ(why_not(sample_with("menu02:", "menu:")), "line 24 names menu \"\"");
  EXPECT_EQ(why_not(sample_with("menu02:", "menu100:")), "line 24 names menu \"100\"");
  EXPECT_EQ(why_not(sample_with("menu02:", "menu-1:")), "line 24 names menu \"-1\"");
  EXPECT_EQ(why_not(sample_with("menu02: ", "menu02")), "line 24 names menu \"02\"");
  EXPECT_EQ(why_not(sample_with("menu02: ", "menu")), "line 24 names menu \"\"");
}

TEST(ProjectText, RowCountsMustMatchTheTitles) {
  EXPECT_EQ(why_not(sample_with("00:00:00.00,00:05:00.00\r\n", "")),
            "it has 1 rows of chapters for 2 titles");
  EXPECT_EQ(why_not(sample_with("-120\r\n", "")), "it has 1 rows of delays for 2 titles");
  EXPECT_EQ(why_not(sample_with("<none>\r\n", "")), "it has 1 rows of subtitles for 2 titles");
  EXPECT_EQ(why_not(sample_with("<none>\r\n", "<none>\r\n<none>\r\n")),
            "it has 3 rows of subtitles for 2 titles");
  EXPECT_EQ(why_not(sample_with("center", "x\r\ncenter")),
            "it has 3 rows of subtitle options for 2 titles");
}

TEST(ProjectText, RowCountOfMenuOptionsMustMatchTheMenus) {
  EXPECT_EQ(why_not(sample_with(" 1\t00:00:00.0\t00:00:30.0\t 3\r\n", "")),
            "it has 2 rows of menu options for 3 menus");
}

TEST(ProjectText, PostCommandsAndLanguageTagsAreFree) {
  const auto loaded = parse_project(sample_with("exit                     \r\n", ""));
  ASSERT_TRUE(loaded) << loaded.error;
  EXPECT_EQ(loaded->postinfo.size(), 1u);
}

TEST(ProjectText, NinetyNineMenusAreTheMost) {
  project p;
  p.menulist.assign(99, "C:\\m.m2v/");
  p.moremenuoptions.assign(99, "0\t00:00:00.0\t00:00:00.0\t1");
  EXPECT_TRUE(parse_project(project_text(p)));
  p.menulist.emplace_back("C:\\m.m2v/");
  p.moremenuoptions.emplace_back("0\t00:00:00.0\t00:00:00.0\t1");
  EXPECT_EQ(why_not(project_text(p)), "it has 100 menus, and a project holds at most 99");
  p.menulist.assign(5000, "C:\\m.m2v/");
  p.moremenuoptions.assign(5000, "");
  EXPECT_EQ(why_not(project_text(p)), "it has 5000 menus, and a project holds at most 99");
}

TEST(ProjectText, RegionMustBeOneOfTheTwo) {
  EXPECT_EQ(why_not(sample_with("PAL\r\n", "SECAM\r\n")), "the region is \"SECAM\"");
  EXPECT_EQ(why_not(sample_with("PAL\r\n", "pal\r\n")), "the region is \"pal\"");
}

TEST(ProjectText, CheckMarksMustBeTrueOrFalse) {
  EXPECT_EQ(why_not(sample_with("True\r\n", "Maybe\r\n")),
            "line 37 reads \"Maybe\" instead of True or False");
  EXPECT_EQ(why_not(sample_with("False\r\n", "false\r\n")),
            "line 38 reads \"false\" instead of True or False");
}

TEST(ProjectText, ControlCharactersInRowsAreNamedWithTheirLine) {
  EXPECT_EQ(why_not(sample_with("-120",
                                "-1\x01"
                                "20")),
            "line 8 contains a control character");
  EXPECT_EQ(why_not(sample_with("-120", "-1\r20")), "line 8 contains a control character");
  EXPECT_EQ(why_not(sample_with("-120", "-120\x7f")), "line 8 contains a control character");
  EXPECT_EQ(why_not(sample_with("-120", std::string_view("-1\0", 3))),
            "line 8 contains a control character");
  EXPECT_EQ(why_not(sample_with("by hand", std::string_view("\0", 1))),
            "line 40 contains a control character");
}

TEST(ProjectText, TabsInRowsAreKept) {
  const auto loaded = parse_project(sample_with("-120", "-1\t20"));
  ASSERT_TRUE(loaded) << loaded.error;
  EXPECT_EQ(loaded->delay[0], "-1\t20");
}

TEST(ProjectText, BytesThatAreNotUtf8AreNamedWithTheirLine) {
  EXPECT_EQ(why_not(sample_with("\xC3\xA7", "\xE7")), "line 2 is not UTF-8 text");
  EXPECT_EQ(why_not(sample_with("by hand", "\xC3")), "line 40 is not UTF-8 text");
}

TEST(ProjectText, ReasonsDoNotCarryEndlessText) {
  const std::string endless(1u << 20, 'x');
  EXPECT_LT(why_not(sample_with("PAL\r\n", endless + "\r\n")).size(), 200u);
  EXPECT_LT(why_not(sample_with("True\r\n", endless + "\r\n")).size(), 200u);
  EXPECT_LT(why_not(sample_with("menu02: ", "menu" + endless)).size(), 200u);
}

TEST(VersionNumber, IsWhatFollowsTheName) {
  const std::pair<std::string, const char*> table[] = {{"Corvane 0.997 - 1/2/2005\r\n***", "0.997"},
                                                       {"Corvane 0.996", "0.996"},
                                                       {"Corvane 0.995\n", "0.995"},
                                                       {"Corvane 0 . 9 9 9 x", "0.999"},
                                                       {"Corvane 1.5, 0.1", "1.5"},
                                                       {"Corvane ,0.997", "0"},
                                                       {"Corvane -3", "-3"},
                                                       {"Corvane nan", "0"},
                                                       {"Corvane inf", "0"},
                                                       {"Corvane 1e9", "1"},
                                                       {"Corvane", "0"},
                                                       {"Corvane \r\n0.997", "0"},
                                                       {"corvane 0.997", "0"},
                                                       {"Other 0.997", "0"},
                                                       {"0.997", "0"},
                                                       {"", "0"},
                                                       {std::string("Corvane \0"
                                                                    "0.997",
                                                                    14),
                                                        "0"},
                                                       {"\xEF\xBB\xBF"
                                                        "Corvane 0.997",
                                                        "0"},
                                                       {"MZ\x90", "0"}};
  for (const auto& [text, number] : table)
    EXPECT_EQ(version_number(text), number) << text;
}

TEST(VersionNumber, HasNoEndlessDigits) {
  EXPECT_LE(version_number("Corvane -" + std::string(1u << 20, '9')).size(), 100u);
}

}  // namespace
}  // namespace corvane
