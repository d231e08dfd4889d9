#include "examine/setting_rules.h"

#include "authoring/sample_projects.h"
#include "disc/read_navigation.h"
#include "made_disc.h"
#include "project/disc_of.h"
#include "project/language_rows.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace corvane::testing_support {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> told_of_settings(const disc_description& d) {
  return told(setting_findings(d));
}

disc_description with_delay(const std::string& text) {
  disc_description d = made_disc({made_title()});
  d.titles[0].delay = number_of(text);
  return d;
}

disc_description with_tags(const std::vector<std::string>& rows) {
  disc_description d = made_disc({made_title()});
  for (const std::string& row : rows)
    d.languages.push_back(parse_language_row(row).value());
  return d;
}

TEST(SettingRules, DelayOfASecondIsAnError) {
  EXPECT_THAT(told_of_settings(with_delay("1000")), ElementsAre("delay-too-long @ title 1"));
  EXPECT_THAT(told_of_settings(with_delay("999.9")), IsEmpty());
  EXPECT_THAT(told_of_settings(with_delay("-4000")), IsEmpty()) << "which delays the sound";
}

TEST(SettingRules, SoundThatBeginsBehindItsPictureIsAWarning) {
  const std::vector<std::optional<double>> three_seconds = {3.0};
  const auto findings = setting_findings(with_delay("-3000"), three_seconds);
  ASSERT_THAT(told(findings), ElementsAre("delay-beyond-title @ title 1"));
  EXPECT_EQ(findings[0].severity, finding_severity::warning);
  EXPECT_EQ(findings[0].found,
            "the A/V delay is \"-3000\" ms, so that sound begins after 3 s; the video lasts 3 s");
  EXPECT_THAT(told(setting_findings(with_delay("-2999"), three_seconds)), IsEmpty());
  disc_description silent = with_delay("-3000");
  silent.titles[0].streams.resize(1);
  EXPECT_THAT(told(setting_findings(silent, three_seconds)), IsEmpty());
}

TEST(SettingRules, DelayThatIsNoNumberIsAnError) {
  for (const char* const text : {"", "12,5", "100ms", "x"})
    EXPECT_THAT(told_of_settings(with_delay(text)), ElementsAre("delay-not-number @ title 1"))
        << text;
}

TEST(SettingRules, DelayOfAReadyFileIsNotUsed) {
  disc_description d = with_delay("x");
  d.titles[0].is_multiplexed_here = false;
  d.titles[0].streams = {"\\m\\a.vob"};
  EXPECT_THAT(told_of_settings(d), IsEmpty());
}

TEST(SettingRules, LanguageWithoutAStreamIsAWarning) {
  const auto findings = setting_findings(
      with_tags({"Audio tag:\tENGLISH EN", "Audio tag:\tGERMAN DE", "Subtitle tag:\tFRENCH FR"}));
  EXPECT_THAT(told(findings),
              ElementsAre("language-without-stream @ disc", "language-without-stream @ disc"));
  EXPECT_EQ(findings[0].found,
            "audio tag 2, \"GERMAN DE\", labels a stream that no title has: there is one audio "
            "stream");
  EXPECT_EQ(findings[1].found,
            "subtitle tag 1, \"FRENCH FR\", labels a stream that no title has: there is no "
            "subtitle");
  EXPECT_EQ(findings[0].severity, finding_severity::warning);
}

TEST(SettingRules, LanguageHasAStreamIfOneTitleHasIt) {
  disc_description d = with_tags({"Audio tag:\tENGLISH EN", "Audio tag:\tGERMAN DE"});
  d.titles.push_back(made_title());
  d.titles[1].streams.push_back("\\m\\german.ac3");
  EXPECT_THAT(told_of_settings(d), IsEmpty());
}

TEST(SettingRules, ReadyFileMayHaveAnyStream) {
  disc_description d = with_tags({"Audio tag:\tENGLISH EN", "Audio tag:\tGERMAN DE"});
  d.titles[0].is_multiplexed_here = false;
  EXPECT_THAT(told_of_settings(d), IsEmpty());
}

TEST(SettingRules, TagWithoutACodeIsAnError) {
  disc_description d = with_tags({"Audio tag:\tENGLISH EN"});
  d.languages[0].code = "E1";
  EXPECT_THAT(told_of_settings(d), ElementsAre("language-code @ disc"));
}

TEST(SettingRules, NinthAudioTagIsAnError) {
  disc_description d = with_tags(std::vector<std::string>(9, "Audio tag:\tENGLISH EN"));
  d.titles[0].streams.resize(9, "\\m\\a.ac3");
  EXPECT_THAT(told_of_settings(d), ElementsAre("language-too-many @ disc"));
}

TEST(SettingRules, TagsOfTheXmlBelongToTheirTitleset) {
  const std::string set =
      "<titleset><titles><audio lang=\"en\"/><audio lang=\"de\"/><pgc><vob "
      "file=\"/a.vob\"/></pgc></titles></titleset>";
  std::string xml = "<dvdauthor>";
  for (int i = 0; i < 5; ++i)
    xml += set;
  const auto d = read_navigation(xml + "</dvdauthor>", path_style::posix);
  ASSERT_TRUE(d);
  EXPECT_THAT(told_of_settings(*d), IsEmpty());
}

TEST(SettingRules, ChapterTimeThatCannotBeReadIsAnError) {
  disc_description d = made_disc({made_title()});
  d.titles[0].chapters = {time_of("0"), time_of("5min"), time_of(" "), time_of("1.2.3")};
  EXPECT_THAT(told_of_settings(d), ElementsAre("chapter-time-unreadable @ title 1, chapter 2",
                                               "chapter-time-unreadable @ title 1, chapter 3"));
}

TEST(SettingRules, ChapterTimesThatDvdauthorTakesHaveNoFinding) {
  disc_description d = made_disc({made_title()});
  for (const char* const text : {".5", ":1", "1:", "1:2:3:4", "1:30 2:00", "00:00:60.00"}) {
    d.titles[0].chapters = {time_of("0"), time_of(text)};
    EXPECT_THAT(told_of_settings(d), IsEmpty()) << text;
  }
  d.titles[0].chapters = {time_of("1.5:30")};
  EXPECT_THAT(told_of_settings(d), ElementsAre("chapter-time-unreadable @ title 1, chapter 1"));
}

TEST(SettingRules, HundredthChapterIsAnError) {
  disc_description d = made_disc({made_title()});
  d.titles[0].chapters.clear();
  for (int second = 0; second < 99; ++second)
    d.titles[0].chapters.push_back(time_of(std::to_string(second)));
  EXPECT_THAT(told_of_settings(d), IsEmpty());
  d.titles[0].chapters.insert(d.titles[0].chapters.end(), 9, time_of("98"));
  EXPECT_THAT(told_of_settings(d), IsEmpty()) << "chapters of one time are one";
  d.titles[0].chapters[0] = time_of("0.5");
  EXPECT_THAT(told_of_settings(d), ElementsAre("title-too-many-chapters @ title 1"))
      << "with the one that is added at the beginning";
}

TEST(SettingRules, MoreThanADiscOrTitleHoldsIsAnError) {
  EXPECT_THAT(told_of_settings(made_disc(std::vector<disc_title>(100, made_title()))),
              ElementsAre("disc-too-many-titles @ disc"));
  EXPECT_THAT(
      told_of_settings(made_disc({made_title()}, std::vector<disc_menu>(100, made_menu({"exit"})))),
      ElementsAre("disc-too-many-menus @ disc"));
  disc_description d = made_disc({made_title()});
  d.titles[0].streams.resize(10, "\\m\\a.ac3");
  d.titles[0].subtitles.resize(33);
  EXPECT_THAT(told_of_settings(d),
              ElementsAre("title-too-many-sounds @ title 1", "title-too-many-subtitles @ title 1"));
}

TEST(SettingRules, SampleProjectsHaveNoError) {
  for (const sample& s : all_samples(path_style::posix))
    for (const finding& f : setting_findings(disc_of(s.p)))
      EXPECT_NE(f.severity, finding_severity::error) << s.name << ": " << line_of(f);
}

TEST(SettingRules, CleanProjectsGiveNothing) {
  for (const sample& s :
       {elementary_titles(path_style::posix), muxed_titles(path_style::posix),
        jump_table(path_style::posix), one_menu(path_style::posix), subtitles(path_style::posix)})
    EXPECT_THAT(told_of_settings(disc_of(s.p)), IsEmpty()) << s.name;
}

}  // namespace
}  // namespace corvane::testing_support
