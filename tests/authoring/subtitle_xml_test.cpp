#include "authoring/subtitle_xml.h"

#include "authoring/sample_projects.h"
#include "authoring/texts_of_project.h"
#include "authoring/work_script.h"
#include "formats/text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane::testing_support {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

TEST(SubtitleXml, TitleWithoutSubtitlesHasNoFilesAndNoLines) {
  const sample s = elementary_titles(posix);
  EXPECT_EQ(subtitle_count(s.p, 1), 0);
  EXPECT_THAT(work_script(s.p, s.where), Not(HasSubstr("spumux")));
  EXPECT_EQ(subtitle_count(s.p, 99), 0);
}

TEST(SubtitleXml, SecondSubtitleReadsTheOutputOfTheFirst) {
  const run_paths where = {"C:\\app", "D:\\dvd", windows};
  const char* const lines[] = {
      "echo *processing subtitles for title: 2 sub 2...",
      R"(rename "D:\dvd\title2.mpg" presub.mpg)",
      R"("C:\app\bin\spumux.exe" -s 1 "C:\app\sub2-2.xml" <"D:\dvd\presub.mpg" > "D:\dvd\title2.mpg")",
      R"(erase "D:\dvd\presub.mpg")"};
  std::string expected;
  for (const char* line : lines)
    expected += std::string(line) + "\r\n";
  EXPECT_EQ(subtitle_commands(where, 2, 2), expected);

  const sample s = subtitles(posix);
  const std::string script = work_script(s.p, s.where);
  EXPECT_LT(script.find(" -s 0 "), script.find(" -s 1 "));
  EXPECT_NE(script.find(" -s 1 "), std::string::npos);
}

TEST(SubtitleXml, DefaultRowGivesItsFields) {
  sample s = subtitles(windows);
  s.p.subtitleoptions[1] = "center,bottom,60,60,30,30,28.0,arial.ttf,720,478,29.97,ISO-8859-1|";
  EXPECT_EQ(subtitle_xml(s.p, s.where, 2, 1),
            "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n"
            "<subpictures>\r\n"
            "  <stream>\r\n"
            "    <textsub filename=\"C:\\media\\english.srt\"\r\n"
            "         fontsize=\"28.0\" font=\"arial.ttf\" characterset=\"ISO-8859-1\"\r\n"
            "         horizontal-alignment=\"center\" vertical-alignment=\"bottom\"\r\n"
            "         left-margin=\"60\" right-margin=\"60\"\r\n"
            "         top-margin=\"30\" bottom-margin=\"30\"\r\n"
            "         movie-fps=\"29.97\" subtitle-fps=\"29.97\"\r\n"
            "         movie-width=\"720\" movie-height=\"478\"\r\n"
            "    />\r\n"
            "  </stream>\r\n"
            "</subpictures>\r\n");
}

TEST(SubtitleXml, OnLinuxAnInstalledFontIsNamedByItsPathWhateverItsCaseOnDisk) {
  sample s = subtitles(posix);
  s.where.fonts = font_list({{"Times & Co", "TIMES.ttf", "/fonts/a & b/TIMES.ttf"}}, posix);
  s.p.subtitleoptions[1] = "a,b,1,2,3,4,5,times.ttf,6,7,8,c|";
  EXPECT_THAT(subtitle_xml(s.p, s.where, 2, 1), HasSubstr("font=\"/fonts/a &amp; b/TIMES.ttf\""));
}

TEST(SubtitleXml, OnLinuxAFontThatIsNotInstalledIsNamedAsItIsStored) {
  sample s = subtitles(posix);
  for (const char* const font : {"arial.ttf", "DejaVu Sans", "/opt/fonts/my.ttf"}) {
    s.p.subtitleoptions[1] = std::string("a,b,1,2,3,4,5,") + font + ",6,7,8,c|";
    EXPECT_THAT(subtitle_xml(s.p, s.where, 2, 1), HasSubstr(std::string("font=\"") + font + "\""));
  }
}

TEST(SubtitleXml, OnWindowsAFontIsNamedAsItIsStored) {
  sample s = subtitles(windows);
  s.where.fonts = font_list({{"Times", "TIMES.ttf", "C:\\own\\TIMES.ttf"}}, windows);
  s.p.subtitleoptions[1] = "a,b,1,2,3,4,5,times.ttf,6,7,8,c|";
  EXPECT_THAT(subtitle_xml(s.p, s.where, 2, 1), HasSubstr("font=\"times.ttf\""));
}

TEST(SubtitleXml, EachSubtitleHasItsOwnSettingsAndTheLastRowServesTheRest) {
  sample s = subtitles(posix);
  s.p.subtitledata[1] += "/\\third.srt";
  s.p.subtitleoptions[1] = "a,b,1,2,3,4,5,f1,6,7,8,c1|a,b,1,2,3,4,5,f2,6,7,8,c2|";
  EXPECT_THAT(subtitle_xml(s.p, s.where, 2, 1), HasSubstr("font=\"f1\""));
  EXPECT_THAT(subtitle_xml(s.p, s.where, 2, 2), HasSubstr("font=\"f2\""));
  EXPECT_THAT(subtitle_xml(s.p, s.where, 2, 3), HasSubstr("font=\"f2\""));
}

TEST(SubtitleXml, WithoutSettingsTheRegionsDefaultsServe) {
  sample s = subtitles(posix);
  s.p.subtitleoptions.clear();
  EXPECT_THAT(subtitle_xml(s.p, s.where, 2, 1), HasSubstr("movie-height=\"478\""));
  s.p.globalregion = "PAL";
  EXPECT_THAT(subtitle_xml(s.p, s.where, 2, 1), HasSubstr("movie-height=\"574\""));
  EXPECT_THAT(subtitle_xml(s.p, s.where, 2, 1),
              HasSubstr("movie-fps=\"25\" subtitle-fps=\"25\"\r\n"));
}

TEST(SubtitleXml, AmpersandInANameIsEscaped) {
  const sample s = subtitles(posix);
  EXPECT_THAT(subtitle_xml(s.p, s.where, 2, 2),
              HasSubstr("filename=\"/media/deutsch &amp; mehr.sub\"\r\n"));
}

}  // namespace
}  // namespace corvane::testing_support
