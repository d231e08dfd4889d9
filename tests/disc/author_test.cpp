// Discs authored with the real tools by corvane-author, read back.
#include "iso_volume.h"
#include "report.h"
#include "runner/run_files.h"
#include "studio.h"
#include "walk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <map>

namespace corvane::disc {
namespace {

using testing::ContainsRegex;
using testing::DoubleNear;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

/// Chapter times on the disc, each within one unit of video of the one asked for.
void expect_chapters(const title& t, const std::vector<double>& asked) {
  ASSERT_EQ(t.chapters.size(), asked.size());
  for (std::size_t i = 0; i < asked.size(); ++i)
    EXPECT_NEAR(t.chapters[i], asked[i], chapter_tolerance) << "chapter " << i + 1;
}

/// Authors a sample project as it stands; disc and image must be what it asks for.
void expect_sample(const std::string& name) {
  const studio s;
  const finished done = run({{CORVANE_AUTHOR, media(name), s.out()}, {{"CORVANE_HOME", s.app()}}});
  ASSERT_EQ(done.status, 0) << done.out;
  const auto asked = read_asked(media(name));
  ASSERT_TRUE(asked) << asked.error;
  for (const std::string& place : {s.out(), s.image()}) {
    auto disc = read_disc(place);
    ASSERT_TRUE(disc) << disc.error;
    press_all_buttons(place, *disc);
    EXPECT_TRUE(all_agree(report(*disc, &*asked, nullptr)))
        << place << "\n"
        << table(report(*disc, &*asked, nullptr), true);
  }
  const auto volume = read_iso_volume(s.image());
  ASSERT_TRUE(volume) << volume.error;
  EXPECT_EQ(volume->name, "DVDVideo");
  EXPECT_TRUE(volume->udf());
}

TEST(AuthoredDisc, SampleIsWhatItsProjectAsksFor) {
  expect_sample("sample.cvp");
}

TEST(AuthoredDisc, PalSampleIsWhatItsProjectAsksFor) {
  expect_sample("sample-pal.cvp");
}

TEST(AuthoredDisc, PalDiscHasPalPictures) {
  project p;
  p.globalregion = "PAL";
  add_title(p, {stored_media("clip-pal.m2v"), stored_media("clip.mp2")}, "00:00:00.00,00:00:03.00");
  const studio s;
  const contents disc = s.authored(p);
  ASSERT_EQ(disc.titles.size(), 1u);
  EXPECT_EQ(disc.titles[0].picture.standard, "PAL");
  EXPECT_EQ(disc.titles[0].picture.size, "720x576");
  expect_chapters(disc.titles[0], {0, 3});
}

TEST(AuthoredDisc, ChaptersBeginWithinOneUnitOfVideoOfTheTimesAskedFor) {
  project p;
  const std::vector<std::string> streams{stored_media("clip-ntsc.m2v"), stored_media("clip.ac3")};
  add_title(p, streams, "00:00:00.00,00:00:01.50,00:00:03.25,00:00:05.00");
  add_title(p, streams, "00:00:00.00");
  add_title(p, streams, "00:00:00.00,00:00:04.99");
  const studio s;
  const contents disc = s.authored(p);
  ASSERT_EQ(disc.titles.size(), 3u);
  expect_chapters(disc.titles[0], {0, 1.5, 3.25, 5});
  expect_chapters(disc.titles[1], {0});
  expect_chapters(disc.titles[2], {0, 4.99});
  for (const title& t : disc.titles)
    EXPECT_NEAR(t.chain.seconds, 6, 0.1);
}

TEST(AuthoredDisc, AudioStreamsKeepTheirFormatsChannelsAndLanguages) {
  project p;
  p.languagetags = {"Audio tag:\tENGLISH EN", "Audio tag:\tGERMAN DE ", "Audio tag:\tFRENCH FR"};
  add_title(p, {stored_media("clip-ntsc.m2v"), stored_media("clip.ac3"),
                stored_media("clip-six-channels.ac3"), stored_media("clip.mp2")});
  const studio s;
  const contents disc = s.authored(p);
  ASSERT_EQ(disc.titles.size(), 1u);
  const std::vector<audio_stream>& audio = disc.titles[0].audio;
  ASSERT_EQ(audio.size(), 3u);
  EXPECT_EQ(audio[0].format, "ac3");
  EXPECT_EQ(audio[0].channels, 2);
  EXPECT_EQ(audio[0].language, "en");
  EXPECT_EQ(audio[1].format, "ac3");
  EXPECT_EQ(audio[1].channels, 6);
  EXPECT_EQ(audio[1].language, "de");
  EXPECT_EQ(audio[2].format, "mp2");
  EXPECT_EQ(audio[2].channels, 2);
  EXPECT_EQ(audio[2].language, "fr");
  for (const audio_stream& stream : audio)
    EXPECT_GT(stream.packets, 0) << stream.language;
}

TEST(AuthoredDisc, EightAudioStreamsAreAllThere) {
  project p;
  add_title(p, {stored_media("clip-ntsc.m2v"), stored_media("clip.ac3"), stored_media("clip.ac3"),
                stored_media("clip.ac3"), stored_media("clip.ac3"), stored_media("clip.ac3"),
                stored_media("clip.ac3"), stored_media("clip.ac3"), stored_media("clip.ac3")});
  const studio s;
  const contents disc = s.authored(p);
  ASSERT_EQ(disc.titles.size(), 1u);
  ASSERT_EQ(disc.titles[0].audio.size(), 8u);
  for (const audio_stream& stream : disc.titles[0].audio)
    EXPECT_GT(stream.packets, 0);
}

TEST(AuthoredDisc, DelayMovesThePictureAgainstTheSound) {
  for (const int delay : {0, 200, -150}) {
    project p;
    add_title(p, {stored_media("clip-ntsc.m2v"), stored_media("clip.ac3")}, "00:00:00.00",
              std::to_string(delay));
    const studio s;
    const contents disc = s.authored(p);
    ASSERT_EQ(disc.titles.size(), 1u);
    ASSERT_EQ(disc.titles[0].audio.size(), 1u);
    EXPECT_NEAR(disc.titles[0].audio[0].begins, -delay / 1000.0, 0.035) << delay;
  }
}

TEST(AuthoredDisc, MuxedTitleAloneIsUsedAsItStands) {
  project p;
  add_title(p, {stored_media("muxed-ntsc.vob")}, "00:00:00.00,00:00:02.00");
  const studio s;
  const contents disc = s.authored(p);
  ASSERT_EQ(disc.titles.size(), 1u);
  expect_chapters(disc.titles[0], {0, 2});
  ASSERT_EQ(disc.titles[0].audio.size(), 1u);
  EXPECT_EQ(disc.titles[0].audio[0].format, "ac3");
  EXPECT_TRUE(file_exists(media("muxed-ntsc.vob")));
}

/// mplex writes navigation packets too, though empty ones.
TEST(AuthoredDisc, StreamStraightFromMplexIsAReadyTitle) {
  const studio s;
  const std::string stream = s.folder().path("ready.mpg");
  const finished mux = run(
      {{"mplex", "-v", "0", "-f", "8", "-o", stream, media("clip-ntsc.m2v"), media("clip.mp2")}});
  ASSERT_EQ(mux.status, 0) << mux.out;
  project p;
  add_title(p, {stored_from_native(stream)}, "00:00:00.00,00:00:04.00");
  const contents disc = s.authored(p);
  ASSERT_EQ(disc.titles.size(), 1u);
  expect_chapters(disc.titles[0], {0, 4});
  EXPECT_TRUE(file_exists(stream));
}

TEST(AuthoredDisc, NinetyNineTitlesAreAllThere) {
  project p;
  for (int i = 0; i < 99; ++i)
    add_title(p, {stored_media("short-ntsc.vob")});
  const studio s;
  const contents disc = s.authored(p);
  ASSERT_EQ(disc.titles.size(), 99u);
  EXPECT_EQ(disc.titlesets, 1);
  EXPECT_THAT(texts(disc.titles[97].chain.post), ElementsAre("JumpVTS_TT 99"));
  EXPECT_THAT(texts(disc.titles[98].chain.post), ElementsAre("Exit"));
}

TEST(AuthoredDisc, CleanUpLeavesDiscAndLogAndNoControlFiles) {
  const studio s;
  const contents disc = s.authored(short_project(), {"--cleanup"});
  EXPECT_EQ(disc.titles.size(), 1u);
  const std::vector<std::string> left = files_in(s.app());
  EXPECT_THAT(left, testing::Contains("CorvaneLOG.txt"));
  for (const std::string& name : left)
    EXPECT_FALSE(name.ends_with(".xml") || name.ends_with(".bat") || name.ends_with(".png"))
        << name;
}

TEST(AuthoredDisc, WithoutPostCommandsTitlesFollowEachOtherAndTheLastOneEnds) {
  project p = short_project();
  add_title(p, {stored_media("muxed-ntsc.vob")});
  add_title(p, {stored_media("clip-ntsc.m2v"), stored_media("clip.ac3")});
  const studio s;
  const contents disc = s.authored(p);
  ASSERT_EQ(disc.titles.size(), 3u);
  EXPECT_THAT(texts(disc.titles[0].chain.post), ElementsAre("JumpVTS_TT 2"));
  EXPECT_THAT(texts(disc.titles[1].chain.post), ElementsAre("JumpVTS_TT 3"));
  EXPECT_THAT(texts(disc.titles[2].chain.post), ElementsAre("Exit"));
}

TEST(AuthoredDisc, PostCommandsStandOnTheDiscAsTheProjectHasThem) {
  project p = short_project();
  add_title(p, {stored_media("muxed-ntsc.vob")}, "00:00:00.00,00:00:02.00,00:00:04.00");
  add_title(p, {stored_media("muxed-ntsc.vob")});
  p.postinfo = {"exit                     ", "jump title 2 chapter 3   ",
                "jump title 1             "};
  const studio s;
  const contents disc = s.authored(p);
  ASSERT_EQ(disc.titles.size(), 3u);
  EXPECT_THAT(texts(disc.titles[0].chain.post), ElementsAre("Exit"));
  EXPECT_THAT(texts(disc.titles[1].chain.post), ElementsAre("JumpVTS_PTT 2:3"));
  EXPECT_THAT(texts(disc.titles[2].chain.post), ElementsAre("JumpVTS_TT 1"));
}

TEST(AuthoredDisc, FirstPlayIsTitleOneByDefaultAndWhatIsAskedForOtherwise) {
  project p = short_project();
  add_title(p, {stored_media("muxed-ntsc.vob")});
  const studio by_default;
  contents disc = by_default.authored(p);
  ASSERT_TRUE(disc.first_play);
  EXPECT_THAT(texts(disc.first_play->pre), ElementsAre("JumpTT 1"));

  p.firstplay = "jump title 2";
  const studio asked;
  disc = asked.authored(p);
  ASSERT_TRUE(disc.first_play);
  EXPECT_THAT(texts(disc.first_play->pre), ElementsAre("JumpTT 2"));
}

TEST(AuthoredDisc, ImageIsMadeWhenTheProjectOrTheCommandLineAsksForIt) {
  project p = short_project();
  const studio without;
  without.authored(p);
  EXPECT_FALSE(file_exists(without.image()));

  const studio asked;
  asked.authored(p, {"--iso"});
  const auto disc = read_disc(asked.image());
  ASSERT_TRUE(disc) << disc.error;
  EXPECT_EQ(disc->titles.size(), 1u);

  p.isocreate = true;
  const studio by_project;
  by_project.authored(p);
  EXPECT_TRUE(file_exists(by_project.image()));

  const studio refused;
  refused.authored(p, {"--no-iso"});
  EXPECT_FALSE(file_exists(refused.image()));
}

// mplex gives up there, and what it has written becomes a disc of half the film.
TEST(AuthoredDisc, VideoWithAnEndCodeInItsMiddleFailsAndMakesNoImage) {
  const studio s;
  const std::string whole = *read_file(media("garden.m2v"), 1u << 30);
  const std::size_t group = whole.find(std::string("\0\0\1\xb3", 4), whole.size() / 2);
  ASSERT_NE(group, std::string::npos);
  s.folder().add("work/cut.m2v",
                 whole.substr(0, group) + std::string("\0\0\1\xb7", 4) + whole.substr(group));
  project p;
  add_title(p, {s.folder().stored("work/cut.m2v"), stored_media("garden-english.ac3")});
  const finished done = s.author(p, {"--iso", "--force"});
  EXPECT_EQ(done.status, 1) << done.out;
  EXPECT_THAT(done.out, HasSubstr("mplex.exe ended with status 1"));
  EXPECT_THAT(s.folder().read("work/home/CorvaneLOG.txt"), HasSubstr("INFO: no image is made"));
  EXPECT_FALSE(file_exists(s.image()));
}

TEST(AuthoredDisc, MultiplexedStreamsDoNotStayBesideTheDisc) {
  const studio s;
  s.authored(short_project());
  EXPECT_THAT(files_in(s.out()), ElementsAre());
  EXPECT_TRUE(folder_exists(s.out() + "/VIDEO_TS"));
}

/// Every file under a folder with its bytes.
std::map<std::string, std::string> everything_in(const std::string& folder) {
  std::map<std::string, std::string> files;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(path_of(folder)))
    if (entry.is_regular_file())
      files[text_of(entry.path())] = read_file(text_of(entry.path()), 1u << 30).value.value_or("?");
  return files;
}

TEST(AuthoredDisc, FolderThatHoldsADiscIsRefusedAndLeftAsItWas) {
  const studio s;
  s.authored(short_project(), {"--iso"});
  project other = short_project();
  add_title(other, {stored_media("muxed-ntsc.vob")});
  const auto before = everything_in(s.out());
  const auto image_before = s.folder().read("work/disc.iso");
  ASSERT_GT(before.size(), 4u);
  const finished done = s.author(other, {"--iso"});
  EXPECT_EQ(done.status, 2) << done.out;
  EXPECT_TRUE(everything_in(s.out()) == before);
  EXPECT_TRUE(s.folder().read("work/disc.iso") == image_before);
  const auto disc = s.disc();
  ASSERT_TRUE(disc) << disc.error;
  EXPECT_EQ(disc->titles.size(), 1u);
}

TEST(AuthoredDisc, ReplacedDiscHasOneTitlesetAndOtherFilesOfTheFolderStay) {
  const studio s;
  s.authored(short_project(), {"--iso"});
  s.folder().add("work/disc/notes.txt", "keep me");
  project other = short_project();
  add_title(other, {stored_media("muxed-ntsc.vob")});
  const contents disc = s.authored(other, {"--replace", "--iso"});
  EXPECT_EQ(disc.titlesets, 1);
  EXPECT_EQ(disc.titles.size(), 2u);
  EXPECT_EQ(s.folder().read("work/disc/notes.txt"), "keep me");
  const auto image = read_disc(s.image());
  ASSERT_TRUE(image) << image.error;
  EXPECT_EQ(image->titles.size(), 2u);
}

TEST(AuthoredDisc, HandEditedXmlIsWhatIsAuthored) {
  const studio s;
  project p = short_project();
  add_title(p, {stored_media("muxed-ntsc.vob")});
  p.customxml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<dvdauthor dest=\"" + s.out() +
                "\">\r\n<!-- DO NOT edit the 2 lines above -->\r\n<vmgm><fpc>jump title 2;</fpc>"
                "</vmgm>\r\n<titleset><titles><audio lang=\"FR\"/>\r\n<pgc><vob file=\"" +
                s.out() +
                "/title1.mpg\" chapters=\"0,0:03\"/><post>g3=7; jump title 2;</post></pgc>" +
                "\r\n<pgc><vob file=\"" + media("muxed-ntsc.vob") +
                "\"/><post>exit;</post></pgc></titles></titleset></dvdauthor>\r\n";
  const contents disc = s.authored(p);
  ASSERT_EQ(disc.titles.size(), 2u);
  expect_chapters(disc.titles[0], {0, 3});
  EXPECT_THAT(texts(disc.titles[0].chain.post), ElementsAre("g3 = 7", "JumpVTS_TT 2"));
  ASSERT_EQ(disc.titles[0].audio.size(), 1u);
  EXPECT_EQ(disc.titles[0].audio[0].language, "fr");
  ASSERT_TRUE(disc.first_play);
  EXPECT_THAT(texts(disc.first_play->pre), ElementsAre("JumpTT 2"));
}

// mkisofs writes names in its own way: other letters, shorter ones.
TEST(AuthoredDisc, WhateverElseStandsInTheFolderGoesIntoTheImage) {
  const studio s;
  for (const char* name :
       {"notes.txt", "Grüße für Oma.txt", "no extension", "empty.txt", ".hidden", "two.dots.txt",
        "a name that is far longer than any name of such a disc may be, with an ending.jpeg",
        "extras/more/pictures/one.jpg", "extras/more/pictures/two.jpg", "семья.txt", "UPPER.TXT",
        "a;b+c=d[e].txt"})
    s.folder().add(std::string("work/disc/") + name,
                   std::string(name) == "empty.txt" ? "" : std::string("text of ") + name);
  s.authored(short_project(), {"--iso"});
}

// dvdauthor keeps one copy of a file, so that the title goes back on the disc.
TEST(AuthoredDisc, ATitleMayPlayAFileTwice) {
  const studio s;
  project p = short_project();
  const std::string ready = "<vob file=\"" + media("muxed-ntsc.vob") + "\"/>";
  p.customxml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<dvdauthor dest=\"" + s.out() +
                "\">\r\n<!-- DO NOT edit the 2 lines above -->\r\n<vmgm><fpc>jump title 1;</fpc>"
                "</vmgm>\r\n<titleset><titles><pgc>" +
                ready + ready + "<post>exit;</post></pgc></titles></titleset></dvdauthor>\r\n";
  const contents disc = s.authored(p);
  ASSERT_EQ(disc.titles.size(), 1u);
  EXPECT_NEAR(disc.titles[0].chain.seconds, 12, 0.5);
}

TEST(AuthoredDisc, TextSubtitlesBecomeASubpictureWithItsLanguage) {
  const studio s;
  s.folder().add("work/subtitles.srt", "1\n00:00:01,000 --> 00:00:03,000\nHello\n");
  project p = short_project();
  p.languagetags = {"Subtitle tag:\tFRENCH FR"};
  p.subtitledata[0] = s.folder().stored("work/subtitles.srt");
  p.subtitleoptions[0] = "center,bottom,60,60,30,30,28.0,DejaVu Sans,720,478,29.97,UTF-8|";
  const contents disc = s.authored(p);
  ASSERT_EQ(disc.titles.size(), 1u);
  EXPECT_THAT(disc.titles[0].subpictures,
              ElementsAre(testing::Field(&subpicture_stream::language, "fr")));
  EXPECT_NEAR(disc.titles[0].chain.seconds, 6, 0.1);
}

/// A project whose text subtitle has this font.
project with_font(const studio& s, const std::string& font) {
  s.folder().add("work/subtitles.srt", "1\n00:00:01,000 --> 00:00:03,000\nHello\n");
  project p = short_project();
  p.subtitledata[0] = s.folder().stored("work/subtitles.srt");
  p.subtitleoptions[0] = "center,bottom,60,60,30,30,28.0," + font + ",720,478,29.97,UTF-8|";
  return p;
}

TEST(AuthoredDisc, TextSubtitlesAreDrawnInTheFontWhoseFileIsStoredInLowerCase) {
  const studio s;
  s.authored(with_font(s, "dejavusans.ttf"));
  const std::string log = *read_file(s.app() + "/" + run_file::log, 1u << 20);
  EXPECT_THAT(log, ContainsRegex("display height of the font /[^ ]*/DejaVuSans\\.ttf was"));
  EXPECT_THAT(log, Not(HasSubstr("matches font file")));
}

TEST(AuthoredDisc, LogSaysWhichFontServesForOneThatIsNotInstalled) {
  const studio s;
  s.authored(with_font(s, "no such font.ttf"));
  EXPECT_THAT(*read_file(s.app() + "/" + run_file::log, 1u << 20),
              ContainsRegex("font name \"no such font\\.ttf\" matches font file /[^ ]+"));
}

}  // namespace
}  // namespace corvane::disc
