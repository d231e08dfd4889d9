// The disc reader, on discs made by calling the tools directly, and on what is no disc.
#include "command.h"
#include "disc.h"
#include "iso_volume.h"
#include "judge.h"
#include "media.h"
#include "menu_report.h"
#include "report.h"
#include "support/temporary_folder.h"
#include "walk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

namespace corvane::disc {
namespace {

using testing::DoubleNear;
using testing::ElementsAre;
using testing::HasSubstr;
using testing_support::temporary_folder;

/// Makes a disc of one title with two audio streams: three chapters, German first.
void make_disc(const temporary_folder& folder) {
  const finished mux = run({{"mplex", "-v", "0", "-f", "8", "-o", folder.path("t.mpg"),
                             media("clip-ntsc.m2v"), media("clip.ac3"), media("clip.mp2")}});
  ASSERT_EQ(mux.status, 0) << mux.out;
  folder.add("c.xml", "<dvdauthor dest=\"" + folder.path("disc") +
                          "\"><vmgm/><titleset><titles><audio lang=\"de\"/><audio lang=\"en\"/>"
                          "<pgc><vob file=\"" +
                          folder.path("t.mpg") +
                          "\" chapters=\"0,0:02,0:04\"/><post>jump title 1 chapter 2;</post></pgc>"
                          "</titles></titleset></dvdauthor>");
  const finished author =
      run({{"dvdauthor", "-x", folder.path("c.xml")}, {{"VIDEO_FORMAT", "NTSC"}}});
  ASSERT_EQ(author.status, 0) << author.out;
}

void make_image(const temporary_folder& folder) {
  const finished image = run({{"genisoimage", "-quiet", "-dvd-video", "-V", "A NAME", "-udf", "-o",
                               folder.path("disc.iso"), folder.path("disc")}});
  ASSERT_EQ(image.status, 0) << image.out;
}

void expect_the_disc(const contents& disc) {
  EXPECT_EQ(disc.titlesets, 1);
  EXPECT_EQ(disc.forbidden_regions, 0);
  ASSERT_TRUE(disc.first_play);
  ASSERT_EQ(disc.titles.size(), 1u);
  const title& t = disc.titles[0];
  EXPECT_EQ(t.picture.standard, "NTSC");
  EXPECT_EQ(t.picture.aspect, "4:3");
  EXPECT_EQ(t.picture.size, "720x480");
  EXPECT_NEAR(t.chain.seconds, 6, 0.1);
  EXPECT_THAT(t.chapters,
              ElementsAre(0.0, DoubleNear(2, chapter_tolerance), DoubleNear(4, chapter_tolerance)));
  ASSERT_EQ(t.audio.size(), 2u);
  EXPECT_EQ(t.audio[0].format, "ac3");
  EXPECT_EQ(t.audio[0].language, "de");
  EXPECT_EQ(t.audio[0].channels, 2);
  EXPECT_GT(t.audio[0].packets, 0);
  EXPECT_EQ(t.audio[1].format, "mp2");
  EXPECT_EQ(t.audio[1].language, "en");
  ASSERT_EQ(t.chain.post.size(), 1u);
  EXPECT_EQ(t.chain.post[0].text(), "JumpVTS_PTT 1:2");
  EXPECT_TRUE(disc.menus.empty());
}

TEST(DiscReader, DiscInAFolderIsRead) {
  const temporary_folder folder;
  make_disc(folder);
  const auto disc = read_disc(folder.path("disc"));
  ASSERT_TRUE(disc) << disc.error;
  expect_the_disc(*disc);
  EXPECT_EQ(disagreement_text(folder.path("disc")), "");
}

TEST(DiscReader, DiscInAnImageIsReadWithItsVolume) {
  const temporary_folder folder;
  make_disc(folder);
  make_image(folder);
  const auto disc = read_disc(folder.path("disc.iso"));
  ASSERT_TRUE(disc) << disc.error;
  expect_the_disc(*disc);
  EXPECT_EQ(disagreement_text(folder.path("disc.iso")), "");
  const auto volume = read_iso_volume(folder.path("disc.iso"));
  ASSERT_TRUE(volume) << volume.error;
  EXPECT_EQ(volume->name, "A NAME");
  EXPECT_TRUE(volume->udf());
  EXPECT_GT(volume->sectors, 1000u);
}

TEST(DiscReader, ImageWithoutUdfIsToldFromOneWithIt) {
  const temporary_folder folder;
  folder.add("content/file");
  const finished image = run({{"genisoimage", "-quiet", "-V", "PLAIN", "-o",
                               folder.path("plain.iso"), folder.path("content")}});
  ASSERT_EQ(image.status, 0) << image.out;
  const auto volume = read_iso_volume(folder.path("plain.iso"));
  ASSERT_TRUE(volume) << volume.error;
  EXPECT_EQ(volume->name, "PLAIN");
  EXPECT_FALSE(volume->udf());
}

TEST(DiscReader, FolderWithoutADiscFailsWithAReason) {
  const temporary_folder folder;
  EXPECT_NE(read_disc(folder.path()).error, "");
  EXPECT_NE(read_disc(folder.path("nowhere")).error, "");
}

TEST(DiscReader, FileThatIsNoImageFailsWithAReason) {
  const temporary_folder folder;
  for (const std::size_t size : {0u, 10u, 32768u, 40000u, 700000u}) {
    const std::string file = folder.add("f" + std::to_string(size), std::string(size, 'x'));
    EXPECT_EQ(read_iso_volume(file).error, "not an ISO 9660 image") << size;
    EXPECT_NE(read_disc(file).error, "") << size;
  }
}

TEST(DiscReader, CutOffTablesFailWithAReason) {
  const temporary_folder folder;
  make_disc(folder);
  for (const char* name : {"VTS_01_0.IFO", "VTS_01_0.BUP"})
    std::filesystem::resize_file(folder.path(std::string("disc/VIDEO_TS/") + name), 100);
  EXPECT_THAT(read_disc(folder.path("disc")).error, HasSubstr("titleset 1"));
}

TEST(DiscReader, LengthsOfStreamsAreMeasured) {
  EXPECT_NEAR(measured_seconds(media("clip-ntsc.m2v")), 180 * 1001 / 30000.0, 0.001);
  EXPECT_NEAR(measured_seconds(media("clip-pal.m2v")), 6, 0.001);
  EXPECT_NEAR(measured_seconds(media("muxed-ntsc.vob")), 6, 0.1);
  EXPECT_EQ(measured_seconds(media("clip.ac3")), 0);
}

TEST(DiscReader, ChapterTimesAreReadAsSeconds) {
  EXPECT_DOUBLE_EQ(seconds_of_chapter("00:00:00.00"), 0);
  EXPECT_DOUBLE_EQ(seconds_of_chapter("01:02:03.50"), 3723.5);
}

TEST(DiscReport, DiscAsAskedAgreesAndAnyOtherDoesNot) {
  const temporary_folder folder;
  make_disc(folder);
  const auto disc = read_disc(folder.path("disc"));
  ASSERT_TRUE(disc) << disc.error;
  asked_disc asked;
  asked.region = "NTSC";
  asked.firstplay = "<default>";
  asked.audio_languages = {"de", "en"};
  asked.titles.resize(1);
  asked.titles[0].files = {media("clip-ntsc.m2v"), media("clip.ac3"), media("clip.mp2")};
  asked.titles[0].chapters = {0, 2, 4};
  asked.titles[0].seconds = 6;
  asked.titles[0].post = "jump title 1 chapter 2";
  const auto agrees = [&](const asked_disc& a) { return all_agree(report(*disc, &a, nullptr)); };
  EXPECT_TRUE(agrees(asked)) << table(report(*disc, &asked, nullptr), true);

  const auto with = [&](auto change) {
    asked_disc other = asked;
    change(other);
    return other;
  };
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.region = "PAL"; })));
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.menus.resize(1); })));
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.titles.push_back(a.titles[0]); })));
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.titles[0].chapters = {0, 2}; })));
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.titles[0].chapters = {0, 3, 4}; })));
  // The next unit but one is no longer the nearest.
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.titles[0].chapters = {0, 2.5, 4}; })));
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.titles[0].subtitles.resize(1); })));
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.titles[0].post = "exit"; })));
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.titles[0].delay_ms = 80; })));
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.titles[0].seconds = 7; })));
  EXPECT_FALSE(
      agrees(with([](asked_disc& a) { std::swap(a.titles[0].files[1], a.titles[0].files[2]); })));
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.audio_languages = {"en", "de"}; })));
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.titles[0].files.push_back("x.ac3"); })));
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.firstplay = "jump title 2"; })));
}

/// Adds a text subtitle stream to a program stream; gives the path of what comes out.
std::string with_text(const temporary_folder& folder, const std::string& stream, int number,
                      const std::string& subtitles, const std::string& place) {
  const std::string text = folder.add("text.srt", subtitles);
  const std::string control = folder.add(
      "text.xml",
      "<subpictures><stream><textsub filename=\"" + text +
          "\" fontsize=\"28.0\" font=\"/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf\" "
          "characterset=\"UTF-8\" " +
          place +
          " movie-fps=\"29.97\" subtitle-fps=\"29.97\" movie-width=\"720\" "
          "movie-height=\"478\"/></stream></subpictures>");
  command add{{"spumux", "-s", std::to_string(number), control}, {{"VIDEO_FORMAT", "NTSC"}}};
  add.input_file = stream;
  add.output_file = folder.path("text" + std::to_string(number) + ".mpg");
  const finished added = run(add);
  EXPECT_EQ(added.status, 0) << added.out;
  return add.output_file;
}

/// Makes a disc of one title with two subtitle streams: German at the bottom, French at the top
/// left.
void make_subtitle_disc(const temporary_folder& folder) {
  const std::string plain = folder.path("plain.mpg");
  const finished mux = run(
      {{"mplex", "-v", "0", "-f", "8", "-o", plain, media("clip-ntsc.m2v"), media("clip.ac3")}});
  ASSERT_EQ(mux.status, 0) << mux.out;
  const std::string margins =
      "\" left-margin=\"60\" right-margin=\"60\" top-margin=\"30\" bottom-margin=\"30\"";
  const std::string one =
      with_text(folder, plain, 0, "1\n00:00:01,500 --> 00:00:03,000\nÄpfel\n\n",
                "horizontal-alignment=\"center\" vertical-alignment=\"bottom" + margins);
  const std::string two =
      with_text(folder, one, 1, "1\n00:00:02,000 --> 00:00:04,000\nÉté\n\n",
                "horizontal-alignment=\"left\" vertical-alignment=\"top" + margins);
  folder.add("c.xml", "<dvdauthor dest=\"" + folder.path("disc") +
                          "\"><vmgm/><titleset><titles><subpicture lang=\"de\"/>"
                          "<subpicture lang=\"fr\"/><pgc><vob file=\"" +
                          two + "\"/><post>exit;</post></pgc></titles></titleset></dvdauthor>");
  const finished author =
      run({{"dvdauthor", "-x", folder.path("c.xml")}, {{"VIDEO_FORMAT", "NTSC"}}});
  ASSERT_EQ(author.status, 0) << author.out;
}

TEST(DiscReader, SubtitlesAreReadWithTheirLanguageTimeAndPlace) {
  const temporary_folder folder;
  make_subtitle_disc(folder);
  const auto disc = read_disc(folder.path("disc"));
  ASSERT_TRUE(disc) << disc.error;
  ASSERT_EQ(disc->titles.size(), 1u);
  const std::vector<subpicture_stream>& streams = disc->titles[0].subpictures;
  ASSERT_EQ(streams.size(), 2u);
  EXPECT_EQ(streams[0].language, "de");
  EXPECT_EQ(streams[1].language, "fr");
  ASSERT_TRUE(streams[0].first && streams[1].first);
  constexpr double picture = 1001 / 30000.0;
  EXPECT_NEAR(streams[0].first->begins, 1.5, picture);
  EXPECT_NEAR(streams[0].first->ends, 3, picture);
  EXPECT_NEAR(streams[1].first->begins, 2, picture);
  EXPECT_NEAR(streams[1].first->ends, 4, picture);
  const auto german = seen_at_rest(streams[0].first->picture);
  const auto french = seen_at_rest(streams[1].first->picture);
  ASSERT_TRUE(german && french);
  EXPECT_GT(german->y0, 320);
  EXPECT_LT(german->y1, 480);
  EXPECT_GT(german->x0, 240);
  EXPECT_LT(german->x1, 480);
  EXPECT_LT(french->y1, 160);
  EXPECT_LT(french->x1, 240);
}

TEST(DiscReader, UnitsOfVideoAreThoseOfTheGroupsOfPictures) {
  const temporary_folder folder;
  make_disc(folder);
  const auto disc = read_disc(folder.path("disc"));
  ASSERT_TRUE(disc) << disc.error;
  const std::vector<double>& units = disc->titles.at(0).units;
  ASSERT_EQ(units.size(), 12u);  // 180 pictures in groups of 16
  for (std::size_t i = 0; i < units.size(); ++i)
    EXPECT_NEAR(units[i], static_cast<double>(i) * 16 * 1001 / 30000, 0.001);
}

TEST(DiscReport, SubtitlesAsAskedAgreeAndAnyOthersDoNot) {
  const temporary_folder folder;
  make_subtitle_disc(folder);
  const auto disc = read_disc(folder.path("disc"));
  ASSERT_TRUE(disc) << disc.error;
  asked_disc asked;
  asked.region = "NTSC";
  asked.firstplay = "<default>";
  asked.subtitle_languages = {"de", "fr"};
  asked.titles.resize(1);
  asked_title& title = asked.titles[0];
  title.files = {media("clip-ntsc.m2v"), media("clip.ac3")};
  title.chapters = {0};
  title.seconds = 6;
  title.post = "exit";
  title.subtitles = {{"de.srt", "center", "bottom", 1.5, 3}, {"fr.srt", "left", "top", 2, 4}};
  const auto agrees = [&](const asked_disc& a) { return all_agree(report(*disc, &a, nullptr)); };
  EXPECT_TRUE(agrees(asked)) << table(report(*disc, &asked, nullptr), true);

  const auto with = [&](auto change) {
    asked_disc other = asked;
    change(other, other.titles[0].subtitles);
    return other;
  };
  using subtitles = std::vector<asked_subtitle>;
  EXPECT_FALSE(agrees(with([](asked_disc& a, subtitles&) { a.subtitle_languages[0] = "en"; })));
  EXPECT_FALSE(agrees(with([](asked_disc& a, subtitles&) { a.subtitle_languages.clear(); })));
  EXPECT_FALSE(agrees(with([](asked_disc&, subtitles& s) { std::swap(s[0], s[1]); })));
  EXPECT_FALSE(agrees(with([](asked_disc&, subtitles& s) { s.pop_back(); })));
  EXPECT_FALSE(agrees(with([](asked_disc&, subtitles& s) { s.push_back(s[1]); })));
  EXPECT_FALSE(agrees(with([](asked_disc&, subtitles& s) { s[0].begins += 0.05; })));
  EXPECT_FALSE(agrees(with([](asked_disc&, subtitles& s) { s[1].ends += 0.05; })));
  EXPECT_FALSE(agrees(with([](asked_disc&, subtitles& s) { s[0].vertical = "top"; })));
  EXPECT_FALSE(agrees(with([](asked_disc&, subtitles& s) { s[0].vertical = "center"; })));
  EXPECT_FALSE(agrees(with([](asked_disc&, subtitles& s) { s[0].horizontal = "left"; })));
  EXPECT_FALSE(agrees(with([](asked_disc&, subtitles& s) { s[1].horizontal = "right"; })));
}

/// What the reader makes of a project file with two subtitle files, one of which is SubRip.
TEST(DiscReport, SubtitlesThatAProjectAsksForAreRead) {
  const temporary_folder folder;
  folder.add("de.srt", "1\r\n00:00:02,500 --> 00:01:05,250\r\nText\r\n");
  folder.add("fr.sub", "{10}{20}Texte");
  const std::string project = folder.add(
      "p.cvp", "Corvane 0.997 - 1/2/2005\r\n" + stored_media("clip-ntsc.m2v") + "/" +
                   stored_media("clip.ac3") +
                   "\r\n***\r\n00:00:00.00\r\n***\r\n0\r\n***\r\n"
                   "Subtitle tag:\tGERMAN DE \r\nAudio tag:\tENGLISH EN\r\n"
                   "Subtitle tag:\tFRENCH FR\r\n***\r\n***\r\n***\r\n***\r\n***\r\n" +
                   folder.stored("de.srt") + "/" + folder.stored("fr.sub") +
                   "\r\n***\r\nleft,top,1,2,3,4,5,6,7,8,9,10|\r\n***\r\n<default>\r\nNTSC\r\n"
                   "False\r\nFalse\r\n");
  const auto asked = read_asked(project);
  ASSERT_TRUE(asked) << asked.error;
  EXPECT_THAT(asked->audio_languages, ElementsAre("en"));
  EXPECT_THAT(asked->subtitle_languages, ElementsAre("de", "fr"));
  ASSERT_EQ(asked->titles.size(), 1u);
  const std::vector<asked_subtitle>& subtitles = asked->titles[0].subtitles;
  ASSERT_EQ(subtitles.size(), 2u);
  EXPECT_EQ(subtitles[0].file, folder.path("de.srt"));
  EXPECT_EQ(subtitles[0].vertical, "top");
  EXPECT_DOUBLE_EQ(subtitles[0].begins, 2.5);
  EXPECT_DOUBLE_EQ(subtitles[0].ends, 65.25);
  EXPECT_EQ(subtitles[1].horizontal, "left") << "the last settings serve";
  EXPECT_EQ(subtitles[1].ends, 0) << "its times are not known";
}

/// A project of the disc that make_disc makes, as a file.
std::string project_file(const temporary_folder& folder, const std::string& chapters,
                         const std::string& iso) {
  const std::string title = stored_media("clip-ntsc.m2v") + "/" + stored_media("clip.ac3") + "/" +
                            stored_media("clip.mp2");
  return folder.add("p.cvp", "Corvane 0.997 - 1/2/2005\r\n" + title + "\r\n***\r\n" + chapters +
                                 "\r\n***\r\n0\r\n***\r\nAudio tag:\tGERMAN DE \r\n"
                                 "Audio tag:\tENGLISH EN\r\n***\r\n***\r\n***\r\n***\r\n"
                                 "jump title 1 chapter 2   \r\n***\r\n<none>\r\n***\r\nx|\r\n***"
                                 "\r\n<default>\r\nNTSC\r\n" +
                                 iso + "\r\nFalse\r\n");
}

TEST(DiscReport, ProgramEndsWithWhatItFound) {
  const temporary_folder folder;
  make_disc(folder);
  const auto status = [](const std::string& project, const std::string& place) {
    return run({{CORVANE_DISC_REPORT, "--project", project, place}}).status;
  };
  const std::string chapters = "00:00:00.00,00:00:02.00,00:00:04.00", disc = folder.path("disc");
  EXPECT_EQ(status(project_file(folder, chapters, "False"), disc), 0);
  EXPECT_EQ(status(project_file(folder, "00:00:00.00", "False"), disc), 1);
  EXPECT_EQ(status(project_file(folder, chapters, "True"), disc), 1) << "no image was given";
  EXPECT_EQ(status(folder.path("missing.cvp"), disc), 2);
  EXPECT_EQ(status(project_file(folder, chapters, "False"), folder.path("nowhere")), 2);
  EXPECT_EQ(run({{CORVANE_DISC_REPORT, disc}}).status, 0);
  EXPECT_EQ(run({{CORVANE_DISC_REPORT}}).status, 2);
}

/// Makes a disc of one title and one menu of two buttons; with `picture`, spumux has added the
/// picture of them.
void make_menu_disc(const temporary_folder& folder, bool picture) {
  const std::string plain = folder.path("menu.mpg"), shown = folder.path("menusub.mpg");
  const finished mux = run(
      {{"mplex", "-v", "0", "-f", "8", "-o", plain, media("menu-ntsc.m2v"), media("menu.ac3")}});
  ASSERT_EQ(mux.status, 0) << mux.out;
  folder.add("m.xml", "<subpictures><stream><spu force=\"yes\" start=\"00:00:00.0\" highlight=\"" +
                          folder.path("h.png") + "\" select=\"" + folder.path("h.png") +
                          "\" transparent=\"010101\" autoorder=\"rows\">"
                          "<button x0=\"100\" y0=\"100\" x1=\"200\" y1=\"120\"/>"
                          "<button x0=\"100\" y0=\"200\" x1=\"200\" y1=\"220\"/>"
                          "</spu></stream></subpictures>");
  const finished drawn =
      run({{"gm", "convert", "-size", "720x480", "xc:#010101", "-fill", "yellow", "-draw",
            "rectangle 100,100 199,119", "-draw", "rectangle 100,200 199,219",
            folder.path(picture ? "h.png" : "elsewhere.png")}});
  ASSERT_EQ(drawn.status, 0) << drawn.out;
  command add{{"spumux", folder.path("m.xml")}, {{"VIDEO_FORMAT", "NTSC"}}};
  add.input_file = plain;
  add.output_file = shown;
  const finished added = run(add);
  ASSERT_EQ(added.status, 0) << "not even a missing picture is a failure to spumux\n" << added.out;
  folder.add("c.xml", "<dvdauthor dest=\"" + folder.path("disc") +
                          "\"><vmgm/><titleset><menus><pgc pause=\"inf\">"
                          "<button>jump title 1;</button><button>exit;</button><vob file=\"" +
                          shown + "\"/></pgc></menus><titles><pgc><vob file=\"" +
                          media("muxed-ntsc.vob") +
                          "\"/><post>call menu;</post></pgc></titles></titleset></dvdauthor>");
  const finished author =
      run({{"dvdauthor", "-x", folder.path("c.xml")}, {{"VIDEO_FORMAT", "NTSC"}}});
  ASSERT_EQ(author.status, 0) << author.out;
}

asked_disc asked_of_menu_disc() {
  asked_disc asked;
  asked.region = "NTSC";
  asked.firstplay = "<default>";
  asked.titles.resize(1);
  asked.titles[0].files = {media("muxed-ntsc.vob")};
  asked.titles[0].chapters = {0};
  asked.titles[0].seconds = 6;
  asked.titles[0].post = "call menu";
  asked.menus.resize(1);
  asked.menus[0] = {media("menu-ntsc.m2v"),
                    media("menu.ac3"),
                    false,
                    {{100, 100, 200, 120, "jump title 1", "yellow", "yellow"},
                     {100, 200, 200, 220, "exit", "yellow", "yellow"}}};
  return asked;
}

TEST(DiscReport, MenuAsAskedAgreesAndAnyOtherDoesNot) {
  const temporary_folder folder;
  make_menu_disc(folder, true);
  auto disc = read_disc(folder.path("disc"));
  ASSERT_TRUE(disc) << disc.error;
  press_all_buttons(folder.path("disc"), *disc);
  const asked_disc asked = asked_of_menu_disc();
  const auto agrees = [&](const asked_disc& a) { return all_agree(report(*disc, &a, nullptr)); };
  EXPECT_TRUE(agrees(asked)) << table(report(*disc, &asked, nullptr), true);

  const auto with = [&](auto change) {
    asked_disc other = asked;
    change(other, other.menus[0]);
    return other;
  };
  EXPECT_FALSE(agrees(with([](asked_disc&, asked_menu& m) { m.loop = true; })));
  EXPECT_FALSE(agrees(with([](asked_disc&, asked_menu& m) { m.audio.clear(); })));
  EXPECT_FALSE(agrees(with([](asked_disc&, asked_menu& m) { m.video = media("clip-ntsc.m2v"); })));
  EXPECT_FALSE(agrees(with([](asked_disc&, asked_menu& m) { m.buttons.pop_back(); })));
  EXPECT_FALSE(agrees(with([](asked_disc&, asked_menu& m) { m.buttons[1].x0 = 102; })));
  EXPECT_FALSE(agrees(with([](asked_disc&, asked_menu& m) { m.buttons[1].y1 = 222; })));
  EXPECT_FALSE(agrees(with([](asked_disc&, asked_menu& m) { m.buttons[0].highlight = "cyan"; })));
  EXPECT_FALSE(agrees(with([](asked_disc&, asked_menu& m) { m.buttons[0].select = "white"; })));
  EXPECT_FALSE(agrees(with([](asked_disc&, asked_menu& m) { m.buttons[0].action = "exit"; })));
  EXPECT_FALSE(
      agrees(with([](asked_disc&, asked_menu& m) { m.buttons[1].action = "jump title 1"; })));
  EXPECT_FALSE(agrees(with([](asked_disc& a, asked_menu&) { a.titles[0].post = "exit"; })));
  EXPECT_FALSE(agrees(with([](asked_disc& a, asked_menu&) { a.firstplay = "jump title 1"; })));
}

/// The count of its buttons would not show it: they are all there.
TEST(DiscReport, MenuToWhichNoPictureOfItsButtonsWasAddedIsFoundOut) {
  const temporary_folder folder;
  make_menu_disc(folder, false);
  auto disc = read_disc(folder.path("disc"));
  ASSERT_TRUE(disc) << disc.error;
  ASSERT_EQ(disc->menus.size(), 2u);
  EXPECT_FALSE(disc->menus[0].shown);
  const asked_disc asked = asked_of_menu_disc();
  EXPECT_FALSE(all_agree(report(*disc, &asked, nullptr)))
      << table(report(*disc, &asked, nullptr), true);
  const auto rows = report(*disc, &asked, nullptr);
  const auto row = std::find_if(rows.begin(), rows.end(),
                                [](const report_row& r) { return r.name == "    picture"; });
  ASSERT_NE(row, rows.end()) << table(rows, true);
  EXPECT_EQ(row->found, "none");
  EXPECT_EQ(row->says, verdict::differs);
}

TEST(DiscReport, CommandsLeadWhereTheNavigationModeHasThemLead) {
  asked_disc plain = asked_of_menu_disc();
  plain.menus.push_back(plain.menus[0]);
  plain.menus.emplace_back();
  asked_disc jump = plain;
  jump.jumptable = true;
  for (const asked_disc* asked : {&plain, &jump}) {
    EXPECT_EQ(place_after("exit", 2, *asked), "stopped");
    EXPECT_EQ(place_after("jump title 12", 2, *asked), "title 12 chapter 1");
    EXPECT_EQ(place_after("jump title 1 chapter  2", 2, *asked), "title 1 chapter 2");
    EXPECT_EQ(place_after("jump menu 1", 2, *asked), "menu 1");
    EXPECT_EQ(place_after("jump menu 3", 2, *asked), std::nullopt) << "it has no buttons";
    EXPECT_EQ(place_after("jump menu 4", 2, *asked), std::nullopt);
    EXPECT_EQ(place_after("jump title 1; exit", 2, *asked), std::nullopt);
  }
  EXPECT_EQ(place_after("call menu", 2, plain), "menu 1");
  EXPECT_EQ(place_after("jump titleset 1 menu", 2, plain), "menu 1");
  EXPECT_EQ(place_after("call last menu", 2, plain), std::nullopt);
  EXPECT_EQ(place_after("call menu 2", 1, jump), "menu 2");
  EXPECT_EQ(place_after("call last menu", 2, jump), "menu 2");
  EXPECT_EQ(place_after("jump titleset 1 menu", 2, jump), "menu 2");
}

/// A subpicture of 4 by 2 dots, by hand: codes 0 1 2 3, each a run of one, and 3 to the line's end.
std::vector<std::uint8_t> small_subpicture() {
  return {0,    32,   0,    8,                       // size, place of the commands
          0x45, 0x67, 0x00, 0x03,                    // first and second line
          0,    0,    0,    8,                       // at time 0, and the last list
          0x00,                                      // forced
          0x03, 0x32, 0x10,                          // colours of codes 3 2 1 0
          0x04, 0xf7, 0x30,                          // their opacities
          0x05, 0x00, 0xa0, 0x0d, 0x01, 0x40, 0x15,  // 10 to 13, 20 to 21
          0x06, 0,    4,    0,    6,    0xff};       // places of the lines
}

TEST(Subpicture, RunsAndCommandsAreRead) {
  const auto picture = decode_subpicture(small_subpicture());
  ASSERT_TRUE(picture) << picture.error;
  EXPECT_TRUE(picture->forced);
  EXPECT_EQ(picture->x0, 10);
  EXPECT_EQ(picture->x1, 13);
  EXPECT_EQ(picture->y0, 20);
  EXPECT_EQ(picture->y1, 21);
  EXPECT_THAT(picture->codes, ElementsAre(0, 1, 2, 3, 3, 3, 3, 3));
  EXPECT_THAT(picture->at_rest.colour, ElementsAre(0, 1, 2, 3));
  EXPECT_THAT(picture->at_rest.opacity, ElementsAre(0, 3, 7, 15));
  EXPECT_EQ(picture->code_at(11, 20), 1);
  EXPECT_EQ(picture->code_at(9, 20), -1);
  EXPECT_EQ(picture->code_at(13, 22), -1);
}

TEST(Subpicture, CutOffUnitsFailWithAReason) {
  std::vector<std::uint8_t> unit = small_subpicture();
  ASSERT_TRUE(decode_subpicture(unit));
  for (std::size_t size = 0; size < unit.size(); ++size)
    EXPECT_NE(
        decode_subpicture({unit.begin(), unit.begin() + static_cast<std::ptrdiff_t>(size)}).error,
        "")
        << size;
  unit[12] = 0x0e;  // no command
  EXPECT_EQ(decode_subpicture(unit).error, "the subpicture's commands cannot be read");
}

TEST(Subpicture, PaletteIsTurnedIntoColours) {
  const auto text = [](std::uint32_t entry) {
    const dot d = colour_of(entry);
    return std::to_string(d.red) + " " + std::to_string(d.green) + " " + std::to_string(d.blue);
  };
  EXPECT_EQ(text(0x00108080), "0 0 0");
  EXPECT_EQ(text(0x00eb8080), "255 255 255");
  EXPECT_EQ(text(0x00d29210), "255 255 0");
}

TEST(DiscReport, ImageOfAnotherNameDiffers) {
  iso_volume image;
  image.udf_anchor = image.udf_recognised = true;
  image.name = "OTHER";
  asked_disc asked;
  EXPECT_EQ(report({}, &asked, &image).back().says, verdict::differs);
  image.name = "DVDVideo";
  EXPECT_EQ(report({}, &asked, &image).back().says, verdict::agrees);
  image.udf_anchor = false;
  EXPECT_EQ(report({}, &asked, &image).back().says, verdict::differs);
}

TEST(DiscReport, PostCommandsAsTheMachineHasThem) {
  EXPECT_EQ(machine_command("exit"), "Exit");
  EXPECT_EQ(machine_command("jump title 12"), "JumpVTS_TT 12");
  EXPECT_EQ(machine_command("jump title 2 chapter 3"), "JumpVTS_PTT 2:3");
  EXPECT_FALSE(machine_command("call menu"));
  EXPECT_FALSE(machine_command("jump title 1; exit"));
}

TEST(DiscReport, ColumnOfNamesStaysStraightUnderLettersOfSeveralBytes) {
  const std::string text =
      table({{"a", "\u00fc", "x", verdict::agrees}, {"b", "u", "x", verdict::agrees}}, true);
  EXPECT_THAT(text, HasSubstr("a   \u00fc           x"));
  EXPECT_THAT(text, HasSubstr("b   u           x"));
}

}  // namespace
}  // namespace corvane::disc
