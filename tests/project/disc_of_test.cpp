// What the project's rows say of the disc: also where rows are missing, uneven or odd.
#include "project/disc_of.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing::SizeIs;

project with_title(const std::string& List11_row) {
  project p;
  p.List11 = {List11_row};
  rebuild_List1(p);
  return p;
}

project with_menu(const std::string& menulist_row, const std::string& buttons = {}) {
  project p;
  p.menulist = {menulist_row};
  p.moremenuoptions = {"0\t00:00:00.0\t00:00:00.0\t1"};
  p.menubuttons = {buttons};
  return p;
}

TEST(DiscOf, TitleHasItsStreamsChaptersDelayAndSubtitles) {
  project p = with_title("\\m\\a.m2v/\\m\\a.ac3/\\m\\b.mp2");
  p.chapters = {"00:00:00.00,00:05:10.25"};
  p.delay = {"-250"};
  p.subtitledata = {"\\m\\a.srt"};
  p.subtitleoptions = {"left,top,1,2,3,4,24.5,x.ttf,352,238,23.976,CP1252|"};
  p.postinfo = {"call menu 2              "};
  const disc_title title = disc_of(p).title(1);
  EXPECT_EQ(title.name, "title1:a.m2v/a.ac3/b.mp2");
  EXPECT_THAT(title.streams, ElementsAre("\\m\\a.m2v", "\\m\\a.ac3", "\\m\\b.mp2"));
  EXPECT_TRUE(title.is_multiplexed_here);
  EXPECT_EQ(title.delay, (text_number{"-250", -250, true}));
  EXPECT_EQ(title.chapters_text, "00:00:00.00,00:05:10.25");
  EXPECT_THAT(title.chapters,
              ElementsAre(text_time{"00:00:00.00", 0.0}, text_time{"00:05:10.25", 310.25}));
  ASSERT_THAT(title.subtitles, SizeIs(1));
  EXPECT_EQ(title.subtitles[0].file, "\\m\\a.srt");
  EXPECT_EQ((*title.subtitles[0].settings)[subtitle_field::character_set], "CP1252");
  EXPECT_EQ(title.subtitles[0].field_count, 12u);
  EXPECT_EQ(title.post, (disc_command{"call menu 2", {verb::call_menu, 2, {}}}));
}

TEST(DiscOf, ReadyFileIsOneStreamThatIsUsedAsItStands) {
  const disc_title title = disc_of(with_title("\\m\\one.vob")).title(1);
  EXPECT_THAT(title.streams, ElementsAre("\\m\\one.vob"));
  EXPECT_FALSE(title.is_multiplexed_here);
}

TEST(DiscOf, EmptyStreamStaysAStream) {
  EXPECT_THAT(disc_of(with_title("\\m\\a.m2v//\\m\\b.mp2")).title(1).streams,
              ElementsAre("\\m\\a.m2v", "", "\\m\\b.mp2"));
}

TEST(DiscOf, EmptyTitleRowHasNoStreams) {
  const disc_title title = disc_of(with_title("")).title(1);
  EXPECT_THAT(title.streams, IsEmpty());
  EXPECT_EQ(title.video(), "");
  EXPECT_FALSE(title.is_multiplexed_here);
}

TEST(DiscOf, MissingRowsOfATitleReadAsThoseOfANewOne) {
  const disc_title title = disc_of(with_title("\\a.m2v/\\a.ac3")).title(1);
  EXPECT_EQ(title.delay, (text_number{"0", 0, true}));
  EXPECT_EQ(title.chapters_text, "");
  EXPECT_THAT(title.chapters, IsEmpty());
  EXPECT_THAT(title.subtitles, IsEmpty());
  EXPECT_EQ(title.post, std::nullopt);
}

TEST(DiscOf, DelayThatIsNoPlainNumberSaysSo) {
  project p = with_title("\\a.m2v/\\a.ac3");
  for (const char* row : {"12 ms", "1 5", "abc", "", "1.50"}) {
    p.delay = {row};
    EXPECT_EQ(disc_of(p).title(1).delay.text, row);
    EXPECT_FALSE(disc_of(p).title(1).delay.is_number) << row;
  }
}

TEST(DiscOf, BlanksAroundADelayAreNoPartOfIt) {
  project p = with_title("\\a.m2v/\\a.ac3");
  p.delay = {" -200 "};
  EXPECT_EQ(disc_of(p).title(1).delay, (text_number{"-200", -200, true}));
}

TEST(DiscOf, BlankAndOddChapterTimesStayInTheirPlaces) {
  project p = with_title("\\a.vob");
  p.chapters = {"00:00:00.00,,x"};
  EXPECT_THAT(disc_of(p).title(1).chapters,
              ElementsAre(text_time{"00:00:00.00", 0.0}, text_time{"", std::nullopt},
                          text_time{"x", std::nullopt}));
}

TEST(DiscOf, SettingsOfTheLastRowServeSubtitlesWithoutOne) {
  project p = with_title("\\a.m2v/\\a.ac3");
  p.subtitledata = {"\\1.srt/\\2.srt/\\3.srt"};
  p.subtitleoptions = {"left|right|"};
  const auto subtitles = disc_of(p).title(1).subtitles;
  ASSERT_THAT(subtitles, SizeIs(3));
  EXPECT_EQ(subtitles[1].settings->fields[0], "right");
  EXPECT_EQ(subtitles[2].settings->fields[0], "right");
  EXPECT_EQ(subtitles[2].field_count, 1u);
}

TEST(DiscOf, WithoutAnySettingsThoseOfTheRegionServe) {
  project p = with_title("\\a.m2v/\\a.ac3");
  p.subtitledata = {"\\1.srt"};
  p.globalregion = "PAL";
  EXPECT_EQ(*disc_of(p).title(1).subtitles[0].settings, default_subtitle_settings("PAL"));
}

TEST(DiscOf, BlankPostCommandIsNone) {
  project p = with_title("\\a.vob");
  p.postinfo = {"                         "};
  EXPECT_EQ(disc_of(p).title(1).post, std::nullopt);
}

TEST(DiscOf, PostCommandsOfTitlesThatAreGoneAreLeftOut) {
  project p = with_title("\\a.vob");
  p.postinfo = {"exit", "jump title 9"};
  EXPECT_THAT(disc_of(p).titles, SizeIs(1));
}

TEST(DiscOf, MenuHasItsStreamsOptionsAndButtons) {
  project p = with_menu("\\m\\menu.m2v/\\m\\menu.ac3",
                        " 40/ 99/ 240/ 140/jump title 1 chapter 2/blue/\\m\\on.bmp");
  p.moremenuoptions = {" 1\t00:00:00.5\t00:00:10.0\t 3"};
  const disc_menu menu = disc_of(p).menu(1);
  EXPECT_EQ(menu.video(), "\\m\\menu.m2v");
  EXPECT_EQ(menu.audio(), "\\m\\menu.ac3");
  EXPECT_TRUE(menu.loop);
  EXPECT_EQ(menu.spu_begin, (text_time{"00:00:00.5", 0.5}));
  EXPECT_EQ(menu.spu_end, (text_time{"00:00:10.0", 10.0}));
  EXPECT_EQ(menu.thickness, (text_number{" 3", 3, true}));
  ASSERT_THAT(menu.buttons, SizeIs(1));
  const disc_button& b = menu.buttons[0];
  EXPECT_EQ(b.x0, (text_number{" 40", 40, true}));
  EXPECT_EQ(b.y1, (text_number{" 140", 140, true}));
  EXPECT_EQ(b.action, (disc_command{"jump title 1 chapter 2", {verb::jump_title, 1, 2}}));
  EXPECT_EQ(b.highlight, (disc_look{"blue", false}));
  EXPECT_EQ(b.select, (disc_look{"\\m\\on.bmp", true}));
}

TEST(DiscOf, ThirdFileOfAMenuIsKeptAndNeverItsAudio) {
  const disc_menu menu = disc_of(with_menu("\\a.m2v//\\c.ac3")).menu(1);
  EXPECT_THAT(menu.files, ElementsAre("\\a.m2v", "", "\\c.ac3"));
  EXPECT_EQ(menu.audio(), "");
}

TEST(DiscOf, MissingRowsOfAMenuReadAsThoseOfANewOne) {
  project p;
  p.menulist = {"\\a.m2v/"};
  const disc_menu menu = disc_of(p).menu(1);
  EXPECT_FALSE(menu.loop);
  EXPECT_EQ(menu.spu_begin.text, "00:00:00.0");
  EXPECT_EQ(menu.thickness, (text_number{"1", 1, true}));
  EXPECT_THAT(menu.buttons, IsEmpty());
}

TEST(DiscOf, OptionsRowThatIsCutOffReadsAsThatOfANewMenu) {
  project p = with_menu("\\a.m2v/");
  p.moremenuoptions = {"1"};
  const disc_menu menu = disc_of(p).menu(1);
  EXPECT_TRUE(menu.loop);
  EXPECT_EQ(menu.spu_end.text, "00:00:00.0");
  EXPECT_EQ(menu.thickness.value, 1);
}

TEST(DiscOf, BlankRecordIsNoButton) {
  EXPECT_THAT(disc_of(with_menu("\\a.m2v/", " ")).menu(1).buttons, IsEmpty());
  EXPECT_THAT(disc_of(with_menu("\\a.m2v/", "| 1/ 2/ 9/ 9/exit/blue/blue|  |")).menu(1).buttons,
              ElementsAre(Field(&disc_button::x0, (text_number{" 1", 1, true}))));
}

TEST(DiscOf, EdgeKeepsItsTextBesideTheNumberItBeginsWith) {
  const auto buttons =
      disc_of(with_menu("\\a.m2v/", "  10.5/12px/x/ 9/exit/blue/blue")).menu(1).buttons;
  EXPECT_EQ(buttons[0].x0, (text_number{"  10.5", 10.5, true}));
  EXPECT_EQ(buttons[0].y0, (text_number{"12px", 12, false}));
  EXPECT_EQ(buttons[0].x1, (text_number{"x", 0, false}));
}

TEST(DiscOf, RecordThatIsCutOffHasEmptyFields) {
  const auto buttons = disc_of(with_menu("\\a.m2v/", " 1/ 2")).menu(1).buttons;
  ASSERT_THAT(buttons, SizeIs(1));
  EXPECT_EQ(buttons[0].action.text, "");
  EXPECT_EQ(buttons[0].select, (disc_look{"", false}));
}

TEST(DiscOf, ButtonsOfMenusThatAreGoneAreLeftOut) {
  project p = with_menu("\\a.m2v/", " 1/ 2/ 9/ 9/exit/blue/blue");
  p.menubuttons.emplace_back(" 3/ 4/ 9/ 9/exit/blue/blue");
  EXPECT_THAT(disc_of(p).menus, SizeIs(1));
}

TEST(DiscOf, TagsAreLanguagesByTheirFirstThreeLetters) {
  project p;
  p.languagetags = {"Audio tag:\tENGLISH EN", "Subtitle tag:\tGERMAN DE ", "tag:\tFRENCH FR", "Aud",
                    "Subtitle tag:\tX"};
  const disc_description d = disc_of(p);
  using kind = disc_language::stream_kind;
  EXPECT_THAT(d.languages,
              ElementsAre(disc_language{kind::audio, "Audio tag:\tENGLISH EN", "EN"},
                          disc_language{kind::subpicture, "Subtitle tag:\tGERMAN DE ", "DE"},
                          disc_language{kind::audio, "Aud", ""},
                          disc_language{kind::subpicture, "Subtitle tag:\tX", ""}));
}

TEST(DiscOf, FirstPlayIsACommandUnlessItIsTheDefaultOrEmpty) {
  project p;
  EXPECT_EQ(disc_of(p).first_play, std::nullopt);
  EXPECT_EQ(disc_of(p).first_play_text, "<default>");
  p.firstplay.clear();
  EXPECT_EQ(disc_of(p).first_play, std::nullopt);
  p.firstplay = "jump title  2";
  EXPECT_EQ(disc_of(p).first_play, (disc_command{"jump title  2", {verb::jump_title, 2, {}}}));
}

TEST(DiscOf, StandardIsThatOfTheRegion) {
  project p;
  EXPECT_EQ(disc_of(p).standard, video_standard::ntsc);
  EXPECT_EQ(disc_of(p).picture_height(), 480);
  p.globalregion = "PAL";
  EXPECT_EQ(disc_of(p).standard, video_standard::pal);
  EXPECT_EQ(disc_of(p).picture_height(), 576);
  p.globalregion = "SECAM";
  EXPECT_EQ(disc_of(p).standard, video_standard::other);
  EXPECT_EQ(disc_of(p).standard_text, "SECAM");
}

TEST(DiscOf, SwitchesAreThoseOfTheProject) {
  project p;
  EXPECT_FALSE(disc_of(p).image);
  EXPECT_FALSE(disc_of(p).jump_table);
  p.isocreate = p.jumptable = true;
  EXPECT_TRUE(disc_of(p).image);
  EXPECT_TRUE(disc_of(p).jump_table);
}

}  // namespace
}  // namespace corvane
