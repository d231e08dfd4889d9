// Rows that break no text: which ones are refused before a run, and that the message names the
// title, menu or button.
#include "authoring/row_checks.h"

#include "authoring/checks.h"
#include "authoring/sample_projects.h"
#include "authoring/texts_of_project.h"
#include "formats/sanitized.h"
#include "platform/files/files.h"
#include "project/menu_rows.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>

namespace corvane::testing_support {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::string refusal_of(const project& p, path_style style = posix) {
  return why_not_authorable(p, style).value_or("(authorable)");
}

/// A project that uses every store, and that is authorable.
project full_project() {
  project p = jump_table(posix).p;
  p.subtitledata[0] = "\\media\\a.srt/\\media\\b.srt";
  p.languagetags = {"Audio tag:\tENGLISH EN", "Subtitle tag:\tGERMAN DE "};
  return p;
}

TEST(RowChecks, TheSampleProjectsAreAuthorableInBothStyles) {
  for (const path_style style : {windows, posix})
    for (const sample& s : all_samples(style))
      EXPECT_EQ(refusal_of(s.p, style), "(authorable)") << s.name;
  EXPECT_EQ(refusal_of(full_project()), "(authorable)");
}

TEST(RowChecks, PathsOfTheOtherStyleAreNotFullPathsHere) {
  EXPECT_THAT(refusal_of(muxed_titles(posix).p, windows), HasSubstr("is not a full path"));
  EXPECT_THAT(refusal_of(muxed_titles(windows).p, posix), HasSubstr("is not a full path"));
}

/// A name that must not reach a script or an XML file, as a row would hold it.
struct bad_name {
  const char* stored;
  const char* clause;
};
const bad_name bad_names[] = {
    {"\\m\\a\" -o \"\\etc\\x.m2v", "contains a double quote"},
    {"\\m\\touch x|", "contains a vertical bar"},
    {"\\m\\a<b.m2v", "contains a less-than sign"},
    {"\\m\\a\r\nerase x", "contains a control character"},
    {"\\m\\a\tb", "contains a control character"},
    {"\\m\\a\x7f", "contains a control character"},
    {"\\m\\a\xff.m2v", "not UTF-8"},
    {"a.m2v", "is not a full path"},
    {"@list.m2v", "is not a full path"},
    {"msl:\\a.m2v", "is not a full path"},
    {"..\\a.m2v", "is not a full path"},
};

TEST(RowChecks, BadFileNamesAreRefusedWhereverTheyStand) {
  for (const auto& [stored, clause] : bad_names) {
    SCOPED_TRACE(stored);
    project p = full_project();
    p.List11[1] = stored;
    EXPECT_THAT(refusal_of(p), HasSubstr(clause));
    EXPECT_THAT(refusal_of(p), HasSubstr("Title 2 "));
    p = full_project();
    p.List11[0] = std::string("\\m\\a.m2v/\\m\\a.ac3/") + stored;
    EXPECT_THAT(refusal_of(p), HasSubstr(clause));
    EXPECT_THAT(refusal_of(p), HasSubstr("Title 1 "));
    p = full_project();
    p.subtitledata[0] = std::string("\\m\\a.srt/") + stored;
    EXPECT_THAT(refusal_of(p), HasSubstr(clause));
    EXPECT_THAT(refusal_of(p), HasSubstr("Subtitle 2 of title 1 "));
    p = full_project();
    p.menulist[2] = std::string(stored) + "/";
    EXPECT_THAT(refusal_of(p), HasSubstr(clause));
    EXPECT_THAT(refusal_of(p), HasSubstr("Menu 3 "));
    p = full_project();
    p.menulist[0] = std::string("\\m\\a.m2v/") + stored;
    EXPECT_THAT(refusal_of(p), HasSubstr(clause));
    EXPECT_THAT(refusal_of(p), HasSubstr("Menu 1 "));
  }
}

TEST(RowChecks, BitmapNamesMustBeFullPathsThatEndInBmp) {
  const bad_name table[] = {
      {"a\\b.bmp", "is not a full path"},        {"msl:\\b.bmp", "is not a full path"},
      {"\\b\"c.bmp", "contains a double quote"}, {"\\b<c.bmp", "contains a less-than sign"},
      {"\\b.msl", "does not end in .bmp"},       {"\\b.mvg", "does not end in .bmp"},
      {"\\b.bmp[0]", "does not end in .bmp"},    {"\\b", "does not end in .bmp"}};
  for (const auto& [stored, clause] : table) {
    SCOPED_TRACE(stored);
    project p = full_project();
    p.menubuttons[1] = std::string(" 0/0/100/3/exit/black/") + stored;
    EXPECT_THAT(refusal_of(p), HasSubstr(clause));
    EXPECT_THAT(refusal_of(p), HasSubstr("Button 1 of menu 2 "));
    p.menubuttons[1] = std::string(" 0/0/100/3/exit/") + stored + "/black";
    EXPECT_THAT(refusal_of(p), HasSubstr(clause));
  }
}

TEST(RowChecks, UpperCaseBitmapNamesAreFine) {
  project p = full_project();
  p.menubuttons[1] = " 0/0/100/3/exit/\\B.BMP/\\B.Bmp";
  EXPECT_EQ(refusal_of(p), "(authorable)");
}

TEST(RowChecks, TitlesWithoutAnyFile) {
  project p = full_project();
  p.List11[3] = "";
  EXPECT_THAT(refusal_of(p), HasSubstr("Title 4 names no file"));
  p.List11[3] = "/";
  EXPECT_THAT(refusal_of(p), HasSubstr("Title 4 cannot be authored"));
}

TEST(RowChecks, DelayMustBeANumberAndNothingElse) {
  for (const char* good : {"0", "250", "-250", "12.5", "-0.5", " 1", "1 "}) {
    project p = full_project();
    p.delay[0] = good;
    EXPECT_EQ(refusal_of(p), "(authorable)") << good;
  }
  for (const char* bad : {"", "0 & calc", "1;2", "0ms -o /etc/passwd", "1 1", "+5", "1e3", "12,5",
                          "0x10", "-", "1\n2", "\"", "00"}) {
    project p = full_project();
    p.delay[0] = bad;
    EXPECT_THAT(refusal_of(p), HasSubstr("Title 1 has the A/V delay \"")) << bad;
  }
}

TEST(RowChecks, DelayOfAMuxedTitleIsNeverWritten) {
  project p = full_project();
  p.delay[1] = "nonsense";
  EXPECT_EQ(refusal_of(p), "(authorable)");
}

TEST(RowChecks, ChapterTimesHoldOnlyNumbers) {
  for (const char* good :
       {"", "00:00:00.00", "00:00:00.00,00:05:10.25", "5", "1:30, 2:00", "0,,9,"}) {
    project p = full_project();
    p.chapters[2] = good;
    EXPECT_EQ(refusal_of(p), "(authorable)") << good;
  }
  for (const char* bad : {"ab:cd:ef.gh", "00:00:00.00,00:0x:00.00", "\"", "00:00:00.00.5",
                          "::", "00:00:00\t", "1<2", "-5"}) {
    project p = full_project();
    p.chapters[2] = bad;
    EXPECT_THAT(refusal_of(p), HasSubstr("Title 3 has the chapter time \"")) << bad;
  }
}

TEST(RowChecks, SubtitleSettingsAreNumbersAndPlainTexts) {
  struct row {
    const char* settings;
    const char* message;
  };
  const row table[] = {
      {"center,bottom,60,60,30,30,28.0,Deja Vu,720,478,29.97,ISO-8859-1|", "(authorable)"},
      {"center,bottom, 60,60,30,30,28,/f/a.ttf,720,478,25,UTF-8|", "(authorable)"},
      {"center,bottom,60,60,30,30,28.0,a\"x,720,478,29.97,U|", "the font"},
      {"center,bottom,60,60,30,30,28.0,a<x,720,478,29.97,U|", "less-than"},
      {"center,bottom,60,60,30,30,big,a,720,478,29.97,U|", "the font size"},
      {"center,bottom,x,60,30,30,28,a,720,478,29.97,U|", "the left margin"},
      {"center,bottom,60,60,30,30,28,a,720,478,,U|", "the frame rate"},
      {"ce\x01nter,bottom,60,60,30,30,28,a,720,478,25,U|", "the horizontal alignment"},
      {"center,bottom,60,60,30,30,28,a,720,478,25,'U|", "the character set"},
      {"center,bottom,60|", "3 settings instead of 12"},
      {"center,bottom,60,60,30,30,28,a,b,720,478,25,U|", "13 settings instead of 12"},
  };
  for (const auto& [settings, message] : table) {
    project p = full_project();
    p.subtitleoptions[0] = settings;
    EXPECT_THAT(refusal_of(p), HasSubstr(message)) << settings;
  }
}

TEST(RowChecks, SubtitlesOfAMuxedTitleAreRefused) {
  project p = full_project();
  p.subtitledata[1] = "\\media\\a.srt";
  EXPECT_THAT(refusal_of(p), HasSubstr("Title 2 is an already multiplexed file"));
}

TEST(RowChecks, RegionIsOneOfTwo) {
  for (const char* bad : {"", "ntsc", "SECAM", "NTSC\" x=\""}) {
    project p = full_project();
    p.globalregion = bad;
    EXPECT_THAT(refusal_of(p), HasSubstr("neither NTSC nor PAL")) << bad;
  }
}

TEST(RowChecks, ButtonsHaveNumbersInsideThePicture) {
  struct row {
    const char* edges;
    const char* message;
  };
  const row table[] = {{" 0/0/ 720/ 480", "(authorable)"},
                       {" 0/ 478/ 6/ 480", "(authorable)"},
                       {" 0/ 477/ 4/ 480", "(authorable)"},
                       {"a/0/100/3", "has the position \"a\""},
                       {"0//100/3", "has the position \"\""},
                       {"0\" onload=\"/0/100/3", "has the position"},
                       {"0/0/1e9/3", "has the position \"1e9\""},
                       {"-1/0/100/3", "reaches out of the picture of 720 by 480"},
                       {"0/0/721/3", "reaches out of the picture"},
                       {"0/478/100/481", "reaches out of the picture"},
                       {"100/0/0/3", "is too small"},
                       {"0/3/100/3", "is too small"},
                       {"0/3/100/4", "is too small"},
                       {"0/0/3/9", "is too small"},
                       {"0/0/5/2", "is too small"},
                       {"0/0/99999999999999999999999/3", "reaches out of the picture"}};
  for (const auto& [edges, message] : table) {
    project p = full_project();
    p.menubuttons[0] = std::string(" 0/0/100/3/exit/black/black|") + edges + "/exit/black/black";
    EXPECT_THAT(refusal_of(p), HasSubstr(message)) << edges;
    if (std::string(message) != "(authorable)") {
      EXPECT_THAT(refusal_of(p), HasSubstr("Button 2 of menu 1 "));
    }
  }
  project p = full_project();
  p.globalregion = "PAL";
  p.menubuttons[0] = " 0/ 570/100/ 576/exit/black/black";
  EXPECT_EQ(refusal_of(p), "(authorable)");
}

TEST(RowChecks, ButtonsOfBitmapsMayBeSmaller) {
  project p = full_project();
  p.menubuttons[0] = "0/0/1/1/exit/\\m\\a.bmp/\\m\\a.bmp";
  EXPECT_EQ(refusal_of(p), "(authorable)");
  p.menubuttons[0] = "0/0/1/1/exit/\\m\\a.bmp/black";
  EXPECT_THAT(refusal_of(p), HasSubstr("Button 1 of menu 1 is too small"));
  p.menubuttons[0] = "0/0/0/1/exit/\\m\\a.bmp/\\m\\a.bmp";
  EXPECT_THAT(refusal_of(p), HasSubstr("Button 1 of menu 1 is too small"));
}

TEST(RowChecks, BoxesAreNoThinnerThanNothing) {
  project p = full_project();
  p.moremenuoptions[1] = " 0\t00:00:00.0\t00:00:00.0\t 0";
  EXPECT_EQ(refusal_of(p), "(authorable)");
  p.moremenuoptions[1] = " 0\t00:00:00.0\t00:00:00.0\t-1";
  EXPECT_THAT(refusal_of(p), HasSubstr("Menu 2 has the box thickness -1"));
}

TEST(RowChecks, ColoursAreTheTenNames) {
  for (const char* bad : {"", "red", "Black", "black -draw x", "#010101", "none"}) {
    project p = full_project();
    p.menubuttons[0] = std::string(" 0/0/100/3/exit/black/") + bad;
    EXPECT_THAT(refusal_of(p), HasSubstr("Button 1 of menu 1 has the colour \"")) << bad;
  }
}

TEST(RowChecks, MoreColoursThanAMenuCanShow) {
  const std::vector<std::string> names = {"black", "brown", "orange", "yellow",  "green",
                                          "blue",  "white", "grey",   "magenta", "cyan"};
  project p = full_project();
  p.menubuttons[0] = "";
  for (int i = 0; i < 9; ++i)
    p.menubuttons[0] += (i == 0 ? " 0/" : "| 0/") + std::to_string(i * 9) + "/100/" +
                        std::to_string(i * 9 + 3) + "/exit/" + names[std::size_t(i)] + "/black";
  EXPECT_EQ(refusal_of(p), "(authorable)");
  p.menubuttons[0] += "| 0/200/100/203/exit/cyan/black| 0/220/100/223/exit/cyan/cyan";
  EXPECT_EQ(refusal_of(p),
            "Button 10 of menu 1 cannot be shown: with it the menu uses 10 combinations of "
            "highlight and select colour, but a DVD menu can show 9.  Please edit the menu.");
}

/// A bitmap brings its own colours: only what is drawn needs one of the nine pairs.
TEST(RowChecks, BitmapButtonsNeedNoneOfTheNinePairs) {
  project p = full_project();
  p.menubuttons[0] = "0/0/9/9/exit/\\m\\a.bmp/\\m\\a.bmp|0/9/9/18/exit/\\m\\b.bmp/\\m\\c.bmp";
  for (int i = 0; i < 9; ++i)
    p.menubuttons[0] += "|9/9/90/20/exit/" + button_colours[static_cast<std::size_t>(i)] + "/black";
  EXPECT_EQ(refusal_of(p), "(authorable)");
  p.menubuttons[0] += "|9/9/90/20/exit/white/cyan";
  EXPECT_THAT(refusal_of(p), HasSubstr("Button 12 of menu 1 cannot be shown: with it the menu uses "
                                       "10 combinations"));
}

TEST(RowChecks, MenuThatSpumuxWouldWorkOnForHours) {
  const auto menu_of = [](int buttons, int combinations) {
    project p = full_project();
    p.menubuttons[1] = "";
    for (int i = 0; i < buttons; ++i)
      p.menubuttons[1] += (i == 0 ? "" : "|") + std::string(" 0/ 9/ 90/ 20/exit/") +
                          button_colours[static_cast<std::size_t>(i % combinations)] + "/white";
    return p;
  };
  EXPECT_EQ(refusal_of(menu_of(36, 3)), "(authorable)");
  EXPECT_EQ(refusal_of(menu_of(30, 6)), "(authorable)");
  EXPECT_EQ(refusal_of(menu_of(19, 9)), "(authorable)");
  const std::string refused = refusal_of(menu_of(36, 7));
  EXPECT_THAT(refused, HasSubstr("Menu 2 has 36 buttons in 7 combinations"));
  EXPECT_THAT(refused, HasSubstr("in an order in which the tool spumux would look too long"));
}

TEST(RowChecks, ButtonTimesAreTimes) {
  for (const char* bad : {"", "x", "00:00:00.0\" end=\"", "1 2"}) {
    project p = full_project();
    p.moremenuoptions[1] = std::string("0\t00:00:00.0\t") + bad + "\t1";
    EXPECT_THAT(refusal_of(p), HasSubstr("Menu 2 has the button time")) << bad;
  }
}

// How many --------------------------------------------------------------------------------------

TEST(RowChecks, NinetyNineTitlesAndNoMore) {
  project p;
  for (int i = 0; i < 99; ++i)
    add_title(p, posix, {"a.vob"});
  EXPECT_EQ(refusal_of(p), "(authorable)");
  add_title(p, posix, {"a.vob"});
  EXPECT_THAT(refusal_of(p), HasSubstr("has 100 titles"));
}

TEST(RowChecks, EightAudioStreamsAndNoMore) {
  project p;
  add_title(p, posix, {"a.m2v", "1", "2", "3", "4", "5", "6", "7", "8"});
  EXPECT_EQ(refusal_of(p), "(authorable)");
  p.List11[0] += "/\\9.ac3";
  EXPECT_THAT(refusal_of(p), HasSubstr("Title 1 has 9 audio streams"));
}

TEST(RowChecks, NinetyNineChaptersAndNoMore) {
  project p = muxed_titles(posix).p;
  std::string times = "00:00:00.00";
  for (int i = 1; i < 99; ++i)
    times += ",00:" + std::to_string(i / 60) + ":" + std::to_string(i % 60) + ".00";
  p.chapters[1] = times;
  EXPECT_EQ(refusal_of(p), "(authorable)");
  p.chapters[1] = times + ",01:00:00.00";
  EXPECT_THAT(refusal_of(p), HasSubstr("Title 2 has 100 chapters"));
  p.chapters[1] = "00:00:00.50" + times.substr(11);
  EXPECT_THAT(refusal_of(p), HasSubstr("Title 2 has 100 chapters"))
      << "dvdauthor adds the chapter at the beginning";
}

TEST(RowChecks, ThirtySixButtonsAndNoMore) {
  project p = full_project();
  p.menubuttons[2] = " 0/0/100/3/exit/black/black";
  for (int i = 1; i < 36; ++i)
    p.menubuttons[2] += "| 0/0/100/3/exit/black/black";
  EXPECT_EQ(refusal_of(p), "(authorable)");
  p.menubuttons[2] += "| 0/0/100/3/exit/black/black";
  EXPECT_EQ(refusal_of(p),
            "Button 37 of menu 3 is one too many: the menu has 37 buttons, but a DVD menu holds at "
            "most 36.  Please edit the menu and delete some.");
  p.menubuttons[2] += "| 0/0/100/3/exit/black/black";
  EXPECT_THAT(refusal_of(p), HasSubstr("Button 37 of menu 3 is one too many: the menu has 38"));
}

TEST(RowChecks, NinetyNineMenusAndNoMore) {
  project p = muxed_titles(posix).p;
  for (int i = 0; i < 99; ++i)
    add_menu(p, posix, "a.m2v", "", "0\t00:00:00.0\t00:00:00.0\t1", "");
  EXPECT_EQ(refusal_of(p), "(authorable)");
  add_menu(p, posix, "a.m2v", "", "0\t00:00:00.0\t00:00:00.0\t1", "");
  EXPECT_THAT(refusal_of(p), HasSubstr("has 100 menus"));
}

TEST(RowChecks, ThirtyTwoSubtitlesAndNoMore) {
  project p = full_project();
  p.subtitledata[0] = "\\m\\a.srt";
  for (int i = 1; i < 32; ++i)
    p.subtitledata[0] += "/\\m\\a.srt";
  EXPECT_EQ(refusal_of(p), "(authorable)");
  p.subtitledata[0] += "/\\m\\a.srt";
  EXPECT_THAT(refusal_of(p), HasSubstr("Title 1 has 33 subtitles"));
}

TEST(RowChecks, LanguageTagsHaveCodesOfTwoLetters) {
  for (const char* bad : {"Audio tag:", "Audio tag:\tENGLISH", "Subtitle tag:\tX ENG",
                          "Audio tag:\tX E\"", "Audio tag:\tX 12", "Subtitle tag:\tX <x"}) {
    project p = full_project();
    p.languagetags = {bad};
    EXPECT_THAT(refusal_of(p), HasSubstr("The language tag \"")) << bad;
  }
  project p = full_project();
  p.languagetags.assign(8, "Audio tag:\tENGLISH EN");
  EXPECT_EQ(refusal_of(p), "(authorable)");
  p.languagetags.emplace_back("Audio tag:\tFRENCH FR");
  EXPECT_THAT(refusal_of(p), HasSubstr("There are 9 audio tags"));
}

TEST(RowChecks, ADiscHoldsTagsFor32SubtitleStreams) {
  project p = full_project();
  p.languagetags.assign(32, "Subtitle tag:\tENGLISH EN");
  EXPECT_EQ(refusal_of(p), "(authorable)");
  p.languagetags.emplace_back("Subtitle tag:\tFRENCH FR");
  EXPECT_THAT(refusal_of(p), HasSubstr("There are 0 audio tags and 33 subtitle tags"));
}

// Where commands lead ---------------------------------------------------------------------------

struct command_row {
  const char* command;
  const char* plain;       ///< what the message holds without the jump table
  const char* jump_table;  ///< and with it
};
constexpr const char* fine = "(authorable)";

/// Four titles (the first with two chapters), three menus.
void expect_messages(const std::vector<command_row>& table,
                     const std::function<void(project&, const char*)>& set, const char* subject) {
  for (const auto& [command, plain, with_table] : table) {
    for (const bool jumptable : {false, true}) {
      SCOPED_TRACE(std::string(command) + (jumptable ? " with jump table" : ""));
      project p = full_project();
      p.postinfo.clear();
      p.jumptable = jumptable;
      set(p, command);
      const std::string expected = jumptable ? with_table : plain;
      EXPECT_THAT(refusal_of(p), HasSubstr(expected));
      if (expected != fine) {
        EXPECT_THAT(refusal_of(p), HasSubstr(subject));
      }
    }
  }
}

TEST(NavigationChecks, FirstPlayLeadsToATitleOrTheTitlesetMenu) {
  expect_messages(
      {{"<default>", fine, fine},
       {"", fine, fine},
       {"jump title 1", fine, fine},
       {"jump title 4", fine, fine},
       {"jump title 5", "title 5, which does not exist", "title 5, which does not"},
       {"jump title 0", "title 0, which does not exist", "title 0, which does not"},
       {"jump title 99999999999", "which does not exist", "which does not exist"},
       {"jump title 1 chapter 1", "only begin with a whole", "only begin with a whole"},
       {"jump titleset 1 menu", fine, fine},
       {"jump menu 1", "cannot begin a disc", "cannot begin a disc"},
       {"call menu", "cannot begin a disc", "cannot begin a disc"},
       {"call menu 1", "cannot begin a disc", "cannot begin a disc"},
       {"call last menu", "cannot begin a disc", "cannot begin a disc"},
       {"exit", fine, fine},
       {"  jump   title  4 ", fine, fine},
       {"jump  title 5", "title 5, which does not exist", "title 5, which does not"},
       {"Jump title 1", "in small letters, as in \"jump", "in small letters, as in \"jump"},
       {"jump titleset 1 MENU", "in small letters, as in \"jump", "in small letters, as in \"jump"},
       {" EXIT", "in small letters, as in \"exit\"", "in small letters, as in \"exit\""},
       {"  ", "does nothing", "does nothing"},
       {"g1=3; jump title 99", fine, fine},
       {"if (g1 > 2 && g2 == 1 || g3 == 4) jump title 1", fine, fine},
       {"exit; </fpc><pre>", "less-than", "less-than"},
       {"exit\"", "quote", "quote"},
       {"exit ]]>", "\"]]>\", which XML does", "\"]]>\", which XML does"},
       {"exit ]] >", fine, fine},
       {"exit\x01", "control character", "control character"}},
      [](project& p, const char* command) { p.firstplay = command; }, "The first-play command, \"");
}

TEST(NavigationChecks, PostCommandsLeadWhereATitleCanGo) {
  expect_messages(
      {{"jump title 4             ", fine, fine},
       {"jump title 5             ", "title 5, which does not", "title 5, which does not"},
       {"exit ]]>                 ", "\"]]>\", which XML does", "\"]]>\", which XML does"},
       {"jump title 1 chapter  2  ", fine, fine},
       {"jump title 1 chapter  3  ", "chapter 3 of title 1, which", "chapter 3 of title 1, which"},
       {"exit                     ", fine, fine},
       {"                         ", fine, fine},
       {"call menu                ", fine, "names no menu"},
       {"call menu 3              ", "needs the jump table", fine},
       {"call menu 4              ", "needs the jump table", "menu 4, which does not exist"},
       {"call menu 0              ", "needs the jump table", "menu 0, which does not exist"},
       {"call last menu           ", "needs the jump table", fine},
       {"call menu entry root     ", fine, "must name a menu by its number"},
       {"call menux               ", fine, "must name a menu by its number"},
       {"jump menu 1              ", "can only call one", "can only call one"},
       {"jump titleset 1 menu     ", "can only call one", "can only call one"},
       {" call menu 3             ", "needs the jump table", fine},
       {"call  menu  3            ", "needs the jump table", fine},
       {"  call   menu 4          ", "needs the jump table", "menu 4, which does not exist"},
       {"call  menu               ", fine, "names no menu"},
       {"call  last  menu         ", "needs the jump table", fine},
       {"call  menux              ", fine, "must name a menu by its number"},
       {"jump  menu 1             ", "can only call one", "can only call one"},
       {"jump  title  5           ", "title 5, which does not", "title 5, which does not"},
       {"Call menu 3              ", "in small letters, as in \"call menu 3\"", "in small letters"},
       {"call  MENU entry root    ", "in small letters", "in small letters"},
       {"g1=2; call menu          ", fine, fine},
       {"g1=2 & 1                 ", fine, fine},
       {"exit;</post><post>       ", "less-than", "less-than"}},
      [](project& p, const char* command) {
        p.postinfo = {"exit", command};
      },
      "The command after title 2, \"");
}

TEST(NavigationChecks, ButtonsLeadWhereAMenuCanGo) {
  expect_messages(
      {{"jump title 4", fine, fine},
       {"jump title 5", "title 5, which does not", "title 5, which does not"},
       {"jump title 1 chapter  2", fine, fine},
       {"jump title 1 chapter  3", "chapter 3 of title 1, which", "chapter 3 of title 1, which"},
       {"jump title 1 chapter 0", "chapter 0 of title 1, which", "chapter 0 of title 1, which"},
       {"jump menu 3", fine, fine},
       {"jump menu 4", "menu 4, which does not exist", "menu 4, which does not exist"},
       {"jump titleset 1 menu", fine, fine},
       {"call menu", "one can only jump", "one can only jump"},
       {"call menu 1", "one can only jump", "one can only jump"},
       {"call last menu", "one can only jump", "one can only jump"},
       {"exit", fine, fine},
       {"", "does nothing", "does nothing"},
       {"jump menu entry root", fine, "must name a menu by its number"},
       {"jump  menu 1", fine, fine},
       {" jump menu 1 ", fine, fine},
       {"  jump   menu   4", "menu 4, which does not exist", "menu 4, which does not exist"},
       {"jump  menu entry root", fine, "must name a menu by its number"},
       {"jump menu 1;exit", fine, "must name a menu by its number"},
       {"jump menux", fine, "must name a menu by its number"},
       {"jump  title 1", fine, fine},
       {"  jump title 5", "title 5, which does not", "title 5, which does not"},
       {"jump  titleset  1  menu ", fine, fine},
       {"JUMP MENU 1", "in small letters, as in \"jump menu 1\"", "in small letters"},
       {" Jump  title 1", "in small letters, as in \"jump  title 1\"", "in small letters"},
       {"jump title 1 Chapter 2", "in small letters", "in small letters"},
       {"Exit", "in small letters, as in \"exit\"", "in small letters, as in \"exit\""},
       {"jump title 1; Lab: exit", fine, fine},
       {"call  menu 1", "one can only jump", "one can only jump"},
       {"g3=1; jump menu 9", fine, fine},
       {"exit; <x>", "less-than", "less-than"}},
      [](project& p, const char* command) {
        p.menubuttons[1] =
            std::string(" 0/0/100/3/exit/black/black| 0/9/100/12/") + command + "/black/black";
      },
      "The action of button 2 of menu 2, \"");
}

TEST(NavigationChecks, WithoutMenusNothingLeadsToOne) {
  for (const bool jumptable : {false, true}) {
    project p = muxed_titles(posix).p;
    p.jumptable = jumptable;
    p.firstplay = "jump titleset 1 menu";
    EXPECT_THAT(refusal_of(p), HasSubstr("the project has none"));
    p.firstplay = "<default>";
    for (const char* call : {"call menu", "call menu 1", "call last menu"}) {
      p.postinfo = {call};
      EXPECT_THAT(refusal_of(p), HasSubstr("the project has none")) << call;
    }
  }
}

TEST(NavigationChecks, PostCommandsBeyondTheTitlesAreNeverWritten) {
  project p = muxed_titles(posix).p;
  p.postinfo = {"exit", "exit", "jump title 9"};
  EXPECT_EQ(refusal_of(p), "(authorable)");
}

TEST(NavigationChecks, HandEditedXmlHasCommandsOfItsOwn) {
  project p = muxed_titles(posix).p;
  p.postinfo = {"jump title 9"};
  p.chapters[0] = "ab:cd:ef.gh";
  p.customxml = "<?xml version=\"1.0\"?>\r\n<dvdauthor dest=\"/dvd\">\r\n</dvdauthor>\r\n";
  EXPECT_EQ(refusal_of(p), "(authorable)");
  p.customxml.insert(p.customxml.find("</dvdauthor>"), "<vob file=\"touch x|\"/>");
  EXPECT_THAT(refusal_of(p), HasSubstr("vertical bar"));
}

// Messages, bitmaps, tools ----------------------------------------------------------------------

TEST(RowChecks, MessagesShowHostileTextHarmlessly) {
  EXPECT_EQ(sanitized_quoted("a\r\nb\x1b[0m\x7f"), "\"a??b?[0m?\"");
  EXPECT_EQ(sanitized_quoted("\xff\xfe"), "\"??\"");
  EXPECT_EQ(sanitized_quoted("äöü"), "\"äöü\"");
  EXPECT_EQ(sanitized_quoted(std::string(500, 'x')), "\"" + std::string(200, 'x') + "...\"");
}

TEST(BitmapChecks, OnlyBitmapFilesAreGivenToGm) {
  const temporary_folder folder;
  folder.add("good.bmp", "BM\x01\x02");
  folder.add("script.bmp", "%!PS\n(x) run\n");
  folder.add("empty.bmp", "");
  const auto with = [&](const char* name) {
    project p;
    add_menu(p, native_style(), "a.m2v", "", "0\t00:00:00.0\t00:00:00.0\t1",
             " 0/0/100/3/exit/black/black| 0/0/100/3/exit/" + folder.stored("good.bmp") + "/" +
                 folder.stored(name));
    return why_not_these_bitmaps(p, native_style()).value_or("(fine)");
  };
  EXPECT_EQ(with("good.bmp"), "(fine)");
  EXPECT_THAT(with("script.bmp"), HasSubstr("is not a bitmap"));
  EXPECT_THAT(with("script.bmp"), HasSubstr("Button 2 of menu 1 "));
  EXPECT_THAT(with("script.bmp"), HasSubstr(folder.path("script.bmp")));
  EXPECT_THAT(with("empty.bmp"), HasSubstr("is not a bitmap"));
  EXPECT_EQ(with("missing.bmp"), "Button 2 of menu 1 cannot be authored: the bitmap \"" +
                                     folder.path("missing.bmp") +
                                     "\" is missing.  Please put it back, or edit the menu.");
}

TEST(NeededTools, AreThoseThatTheScriptStarts) {
  EXPECT_THAT(needed_tools(muxed_titles(posix).p), ElementsAre("dvdauthor"));
  EXPECT_THAT(needed_tools(elementary_titles(posix).p),
              ElementsAre("mplex", "dvdauthor", "mkisofs"));
  EXPECT_THAT(needed_tools(plain_menus(posix).p),
              ElementsAre("mplex", "gm", "spumux", "dvdauthor"));
  EXPECT_THAT(needed_tools(subtitles(posix).p), ElementsAre("mplex", "spumux", "dvdauthor"));
  project menus_only = muxed_titles(posix).p;
  add_menu(menus_only, posix, "a.m2v", "", "0\t00:00:00.0\t00:00:00.0\t1", "");
  EXPECT_THAT(needed_tools(menus_only), ElementsAre("mplex", "gm", "spumux", "dvdauthor"));
}

}  // namespace
}  // namespace corvane::testing_support
