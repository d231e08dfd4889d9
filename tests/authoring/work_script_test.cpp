#include "authoring/work_script.h"

#include "authoring/sample_projects.h"
#include "authoring/texts_of_project.h"
#include "formats/text.h"
#include "runner/run_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

namespace corvane::testing_support {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::EndsWith;
using ::testing::HasSubstr;
using ::testing::Not;
using ::testing::StartsWith;

std::vector<std::string> script_lines(const sample& s) {
  std::string text = work_script(s.p, s.where);
  EXPECT_THAT(text, EndsWith("\r\n"));
  text.resize(text.size() - 2);
  return split(text, crlf);
}

TEST(WorkScript, MuxedTitlesAreNotMultiplexedAgain) {
  EXPECT_THAT(script_lines(muxed_titles(windows)),
              ElementsAre("@echo off",
                          "echo Send problems with Corvane to whoever gave it to you, see Problems "
                          "in its README.md",
                          "mkdir \"D:\\discs\\my dvd\"",
                          "echo ***please wait while the titles are multiplexed.",
                          "echo *authoring title(s).....", "",
                          "\"C:\\Program Files\\Corvane\\bin\\dvdauthor.exe\" -x "
                          "\"C:\\Program Files\\Corvane\\config.xml\"",
                          "erase \"D:\\discs\\my dvd\"\\*.mpg", "echo *process complete"));
}

TEST(WorkScript, TwoBlanksSeparateTheStreamsAndOneEndsTheLine) {
  EXPECT_THAT(script_lines(elementary_titles(windows)),
              Contains("\"C:\\Program Files\\Corvane\\bin\\mplex.exe\" -f 8 -O 0ms -o "
                       "\"D:\\discs\\my dvd\\title1.mpg\"  \"C:\\media\\movie.m2v\"  "
                       "\"C:\\media\\english.ac3\"  \"C:\\media\\french.mp2\" "));
  EXPECT_THAT(script_lines(elementary_titles(posix)),
              Contains("\"/home/anna/.local/share/corvane/bin/mplex.exe\" -f 8 -O -250ms -o "
                       "\"/home/anna/discs/my dvd/title3.mpg\"  \"/media/extra.mpv\"  "
                       "\"/media/extra.mpa\" "));
}

TEST(WorkScript, TitlesAreAnnouncedWithOneBlankBeforeTheNumber) {
  const auto lines = script_lines(elementary_titles(posix));
  EXPECT_THAT(lines, Contains("echo *multiplexing title: 1....."));
  EXPECT_THAT(lines, Not(Contains("echo *multiplexing title: 2.....")));
  EXPECT_THAT(lines, Contains("echo *multiplexing title: 3....."));
}

TEST(WorkScript, AmpersandStandsUnescapedInTheFolder) {
  const auto lines = script_lines(jump_table(posix));
  EXPECT_THAT(lines, Contains("mkdir \"/home/anna/discs/my dvd & more\""));
  EXPECT_THAT(work_script(jump_table(posix).p, jump_table(posix).where), Not(HasSubstr("&amp;")));
}

TEST(WorkScript, WithoutAnImageItEndsWithEraseAndTheMarker) {
  sample s = elementary_titles(posix);
  s.p.isocreate = false;
  const auto lines = script_lines(s);
  EXPECT_EQ(lines[lines.size() - 2], "erase \"/home/anna/discs/my dvd\"/*.mpg");
  EXPECT_EQ(lines.back(), "echo *process complete");
}

TEST(WorkScript, TheImageIsMadeLast) {
  const auto lines = script_lines(elementary_titles(windows));
  ASSERT_GE(lines.size(), 4u);
  EXPECT_EQ(lines[lines.size() - 4], "erase \"D:\\discs\\my dvd\"\\*.mpg");
  EXPECT_EQ(lines[lines.size() - 3], "echo *generating udf iso.....");
  EXPECT_EQ(lines[lines.size() - 2],
            "\"C:\\Program Files\\Corvane\\bin\\mkisofs.exe\" -dvd-video -V DVDVideo -udf -o "
            "\"D:\\discs\\my dvd.iso\" \"D:\\discs\\my dvd\"");
  EXPECT_EQ(lines.back(), "echo *process complete");
}

TEST(WorkScript, AMenuIsMultiplexedGivenItsButtonsAndErased) {
  const auto lines = script_lines(plain_menus(windows));
  const auto at = std::find(lines.begin(), lines.end(), "echo *multiplexing menu 1.....");
  ASSERT_GE(lines.end() - at, 8);
  EXPECT_EQ(at[1],
            "\"C:\\Program Files\\Corvane\\bin\\mplex.exe\" -f 8 -o "
            "\"D:\\discs\\my dvd\\menu1.mpg\" \"C:\\media\\main.m2v\" \"C:\\media\\main.ac3\"");
  EXPECT_EQ(at[2],
            "\"C:\\Program Files\\Corvane\\bin\\spumux.exe\" "
            "\"C:\\Program Files\\Corvane\\menu1.xml\" <\"D:\\discs\\my dvd\\menu1.mpg\" > "
            "\"D:\\discs\\my dvd\\menusub1.mpg\"");
  EXPECT_EQ(at[3], "erase \"D:\\discs\\my dvd\\menu1.mpg\"");
  EXPECT_EQ(at[4], "echo *multiplexing menu 2.....");
}

TEST(WorkScript, AMenuWithoutAudioNamesOnlyItsVideo) {
  EXPECT_THAT(script_lines(plain_menus(posix)),
              Contains("\"/home/anna/.local/share/corvane/bin/mplex.exe\" -f 8 -o "
                       "\"/home/anna/discs/my dvd/menu2.mpg\" \"/media/still.m2v\""));
}

TEST(WorkScript, MultiplexOutputIsAPatternInWhichPercentIsDoubled) {
  EXPECT_EQ(mplex_pattern("/dvd/50% of"), "/dvd/50%% of");
  EXPECT_EQ(mplex_pattern("/dvd/%d%%"), "/dvd/%%d%%%%");
  sample s = plain_menus(posix);
  s.where.out = "/dvd/50% of";
  const auto lines = script_lines(s);
  EXPECT_THAT(lines, Contains(HasSubstr("-o \"/dvd/50%% of/title1.mpg\"")));
  EXPECT_THAT(lines, Contains(HasSubstr("-o \"/dvd/50%% of/menu1.mpg\"")));
  EXPECT_THAT(lines, Contains("mkdir \"/dvd/50% of\""));
  EXPECT_THAT(lines, Contains(HasSubstr("<\"/dvd/50% of/menu1.mpg\" > ")));
}

TEST(WorkScript, PercentInAnOutputFolderIsDoubledForMultiplexingOnWindowsToo) {
  sample s = plain_menus(windows);
  s.where.out = "D:\\50% of";
  const auto lines = script_lines(s);
  EXPECT_THAT(lines, Contains(HasSubstr("-o \"D:\\50%% of\\title1.mpg\"")));
  EXPECT_THAT(lines, Contains("mkdir \"D:\\50% of\""));
}

TEST(WorkScript, EveryLineEndsInCarriageReturnAndLineFeed) {
  for (const sample& s : all_samples(posix)) {
    const std::string text = work_script(s.p, s.where);
    for (std::size_t at = text.find('\n'); at != std::string::npos; at = text.find('\n', at + 1))
      EXPECT_EQ(text[at - 1], '\r');
    EXPECT_THAT(text, EndsWith("echo *process complete\r\n"));
  }
}

TEST(WorkScript, AProjectWithShortStoresStillHasAText) {
  sample s{"", {}, sample_run_paths(posix)};
  s.p.List11 = {"\\a.m2v/\\a.ac3"};
  EXPECT_THAT(script_lines(s), Contains(HasSubstr(" -O 0ms -o ")));
}

TEST(WorkScript, MakesTheStreamsThatAreToldAndNoOthers) {
  for (const sample& s : all_samples(path_style::posix)) {
    const disc_description d = disc_of(s.p);
    const std::string script = corvane::work_script(d, s.where);
    const std::vector<std::string> told = streams_of_run(d);
    for (const std::string& name : told)
      EXPECT_NE(script.find(name), std::string::npos) << s.name << ": " << name;
    for (int number = 1; number <= 9; ++number)
      for (const std::string& name :
           {run_file::title_stream(number), run_file::menu_stream(number),
            run_file::menu_with_buttons(number), std::string(run_file::before_subtitle)})
        EXPECT_EQ(script.find("/" + name) != std::string::npos,
                  std::find(told.begin(), told.end(), name) != told.end())
            << s.name << ": " << name;
  }
}

}  // namespace
}  // namespace corvane::testing_support
