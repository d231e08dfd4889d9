// The disc reader, on discs made by calling the tools directly, and on what is no disc.
#include "command.h"
#include "disc.h"
#include "iso_volume.h"
#include "media.h"
#include "report.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

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

TEST(disc_reader, disc_in_a_folder_is_read) {
  const temporary_folder folder;
  make_disc(folder);
  const auto disc = read_disc(folder.path("disc"));
  ASSERT_TRUE(disc) << disc.error;
  expect_the_disc(*disc);
}

TEST(disc_reader, disc_in_an_image_is_read_with_its_volume) {
  const temporary_folder folder;
  make_disc(folder);
  make_image(folder);
  const auto disc = read_disc(folder.path("disc.iso"));
  ASSERT_TRUE(disc) << disc.error;
  expect_the_disc(*disc);
  const auto volume = read_iso_volume(folder.path("disc.iso"));
  ASSERT_TRUE(volume) << volume.error;
  EXPECT_EQ(volume->name, "A NAME");
  EXPECT_TRUE(volume->udf());
  EXPECT_GT(volume->sectors, 1000u);
}

TEST(disc_reader, image_without_udf_is_told_from_one_with_it) {
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

TEST(disc_reader, folder_without_a_disc_fails_with_a_reason) {
  const temporary_folder folder;
  EXPECT_NE(read_disc(folder.path()).error, "");
  EXPECT_NE(read_disc(folder.path("nowhere")).error, "");
}

TEST(disc_reader, file_that_is_no_image_fails_with_a_reason) {
  const temporary_folder folder;
  for (const std::size_t size : {0u, 10u, 32768u, 40000u, 700000u}) {
    const std::string file = folder.add("f" + std::to_string(size), std::string(size, 'x'));
    EXPECT_EQ(read_iso_volume(file).error, "not an ISO 9660 image") << size;
    EXPECT_NE(read_disc(file).error, "") << size;
  }
}

TEST(disc_reader, cut_off_tables_fail_with_a_reason) {
  const temporary_folder folder;
  make_disc(folder);
  for (const char* name : {"VTS_01_0.IFO", "VTS_01_0.BUP"})
    std::filesystem::resize_file(folder.path(std::string("disc/VIDEO_TS/") + name), 100);
  EXPECT_THAT(read_disc(folder.path("disc")).error, HasSubstr("titleset 1"));
}

TEST(disc_reader, lengths_of_streams_are_measured) {
  EXPECT_NEAR(measured_seconds(media("clip-ntsc.m2v")), 180 * 1001 / 30000.0, 0.001);
  EXPECT_NEAR(measured_seconds(media("clip-pal.m2v")), 6, 0.001);
  EXPECT_NEAR(measured_seconds(media("muxed-ntsc.vob")), 6, 0.1);
  EXPECT_EQ(measured_seconds(media("clip.ac3")), 0);
}

TEST(disc_reader, chapter_times_are_read_as_seconds) {
  EXPECT_DOUBLE_EQ(seconds_of_chapter("00:00:00.00"), 0);
  EXPECT_DOUBLE_EQ(seconds_of_chapter("01:02:03.50"), 3723.5);
}

TEST(disc_report, disc_as_asked_agrees_and_any_other_does_not) {
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
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.menus = 1; })));
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.titles.push_back(a.titles[0]); })));
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.titles[0].chapters = {0, 2}; })));
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.titles[0].chapters = {0, 3, 4}; })));
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.titles[0].post = "exit"; })));
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.titles[0].delay_ms = 80; })));
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.titles[0].seconds = 7; })));
  EXPECT_FALSE(
      agrees(with([](asked_disc& a) { std::swap(a.titles[0].files[1], a.titles[0].files[2]); })));
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.audio_languages = {"en", "de"}; })));
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.titles[0].files.push_back("x.ac3"); })));
  EXPECT_FALSE(agrees(with([](asked_disc& a) { a.firstplay = "jump title 2"; })));
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

TEST(disc_report, program_ends_with_what_it_found) {
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

TEST(disc_report, image_of_another_name_differs) {
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

TEST(disc_report, post_commands_as_the_machine_has_them) {
  EXPECT_EQ(machine_command("exit"), "Exit");
  EXPECT_EQ(machine_command("jump title 12"), "JumpVTS_TT 12");
  EXPECT_EQ(machine_command("jump title 2 chapter 3"), "JumpVTS_PTT 2:3");
  EXPECT_FALSE(machine_command("call menu"));
  EXPECT_FALSE(machine_command("jump title 1; exit"));
}

TEST(disc_report, column_of_names_stays_straight_under_letters_of_several_bytes) {
  const std::string text =
      table({{"a", "\u00fc", "x", verdict::agrees}, {"b", "u", "x", verdict::agrees}}, true);
  EXPECT_THAT(text, HasSubstr("a   \u00fc           x"));
  EXPECT_THAT(text, HasSubstr("b   u           x"));
}

}  // namespace
}  // namespace corvane::disc
