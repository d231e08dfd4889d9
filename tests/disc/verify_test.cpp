// The look at finished discs: real ones are as foreseen, damaged ones are told.
#include "command.h"
#include "disc/finding.h"
#include "examine/examination.h"
#include "examine/read_disc.h"
#include "examine/verification.h"
#include "formats/disc_files.h"
#include "formats/disc_image.h"
#include "formats/ifo.h"
#include "formats/navigation_pack.h"
#include "judge.h"
#include "large_sets.h"
#include "platform/files/files.h"
#include "platform/files/paths.h"
#include "project/disc_of.h"
#include "project/project_file.h"
#include "project/subtitle_rows.h"
#include "studio.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace corvane::disc {
namespace {

namespace fs = std::filesystem;
using testing::AllOf;
using testing::Contains;
using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

std::vector<finding> verified(const std::string& folder, const std::string& image = {}) {
  verification look({folder, image}, nullptr);
  while (look.step(1000)) {
  }
  return look.findings();
}

std::vector<std::string> rules_of(const std::vector<finding>& findings) {
  std::vector<std::string> rules;
  for (const finding& f : findings)
    rules.push_back(f.rule);
  return rules;
}

/// Changes one byte of a file to another value.
void flip(const std::string& path, std::uint64_t at) {
  std::fstream file(path_of(path), std::ios::binary | std::ios::in | std::ios::out);
  file.seekg(static_cast<std::streamoff>(at));
  const char before = static_cast<char>(file.get());
  file.seekp(static_cast<std::streamoff>(at));
  file.put(static_cast<char>(before ^ 0x55));
}

class Verify : public ::testing::Test {
 protected:
  Verify() { home_.authored(small_project()); }

  std::string file(const std::string& name) const { return home_.out() + "/VIDEO_TS/" + name; }
  std::vector<std::string> found() const { return rules_of(verified(home_.out())); }
  std::vector<std::string> found_with_image() const {
    return rules_of(verified(home_.out(), home_.image()));
  }

  finished console(const std::vector<std::string>& words) const {
    command c;
    c.words = {CORVANE_AUTHOR, "--verify"};
    c.words.insert(c.words.end(), words.begin(), words.end());
    c.environment["CORVANE_HOME"] = home_.app();
    return run(c);
  }

  studio home_;
};

TEST_F(Verify, WhoeverWaitsMayLeaveWhileTheTablesAreRead) {
  for (int i = 0; i < 20; ++i) {
    verification look({home_.out(), home_.image()}, nullptr);
    EXPECT_TRUE(look.step(0));
    EXPECT_GT(look.bytes_to_read(), 0u);
    EXPECT_EQ(look.bytes_read(), 0u);
  }
}

TEST_F(Verify, ADiscAsItWasAuthoredHasNothing) {
  EXPECT_THAT(found_with_image(), IsEmpty());
  EXPECT_THAT(rules_of(verified({}, home_.image())), IsEmpty());
}

TEST_F(Verify, TheConsoleShowsTheDiscBesideItsProject) {
  const finished told = console({home_.project_file(), home_.out()});
  EXPECT_EQ(told.status, 0) << told.out;
  EXPECT_THAT(told.out, HasSubstr("asked for"));
  EXPECT_THAT(told.out, HasSubstr("leads to"));
  EXPECT_THAT(told.out, HasSubstr("title 2 chapter 1"));
}

TEST_F(Verify, TheConsoleLooksAtADiscByItself) {
  const finished told = console({home_.image()});
  EXPECT_EQ(told.status, 0) << told.out;
  EXPECT_THAT(told.out, AllOf(HasSubstr("on the disc"), Not(HasSubstr("asked for"))));
  const finished json = console({"--json", home_.image()});
  EXPECT_EQ(json.status, 0);
  EXPECT_THAT(json.out, HasSubstr("[]"));
}

TEST_F(Verify, AnotherProjectsDiscIsToldWithWhatDiffers) {
  project other = small_project();
  other.menubuttons[0] =
      "100/100/200/150/jump title 2/cyan/white|100/200/200/252/jump title 2/yellow/white";
  const std::string path = home_.folder().add("other.cvp", project_text(other));
  const finished told = console({path, home_.out()});
  EXPECT_EQ(told.status, 2) << told.out;
  EXPECT_THAT(told.out, HasSubstr("error: menu 1, button 1: leads to: title 1 chapter 1"));
  EXPECT_THAT(told.out, HasSubstr("must be: title 2 chapter 1"));
  EXPECT_THAT(told.out, HasSubstr("error: menu 1, button 2: edges: 100,200 to 200,250"));
  EXPECT_THAT(told.out, HasSubstr("error: menu 1, button 1: highlighted: yellow"));
}

/// The disc's menu has black in the place of yellow.
void take_the_yellow(const studio& home) {
  for (const char* const name : {"VTS_01_0.IFO", "VTS_01_0.BUP"}) {
    const std::string file = home.out() + "/VIDEO_TS/" + name;
    std::string tables = *read_file(file, 1u << 30);
    const std::string yellow("\x00\xD2\x92\x10", 4), black("\x00\x10\x80\x80", 4);
    const std::size_t at = tables.find(yellow);
    ASSERT_NE(at, std::string::npos) << "no such entry in the menu's palette";
    ASSERT_FALSE(write_file(file, tables.replace(at, yellow.size(), black)));
  }
}

const auto says_that_yellow_is_lost =
    AllOf(HasSubstr("error: menu 1, button 1: highlighted: black"),
          HasSubstr("error: menu 1, button 2: highlighted: black"), HasSubstr("must be: yellow"),
          Not(HasSubstr(": selected: ")));

TEST_F(Verify, ButtonsThatHaveLostTheirColourAreTold) {
  take_the_yellow(home_);
  const finished told = console({home_.project_file(), home_.out()});
  EXPECT_EQ(told.status, 2) << told.out;
  EXPECT_THAT(told.out, says_that_yellow_is_lost);
}

TEST_F(Verify, ButtonsOfEditedXmlThatHaveLostTheirColourAreTold) {
  project p = small_project();
  p.customxml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<dvdauthor dest=\"" + home_.out() +
                "\">\r\n<!-- DO NOT edit the 2 lines above -->\r\n<titleset><menus><pgc pause="
                "\"inf\"><vob file=\"" +
                home_.out() +
                "/menusub1.mpg\"/><button>jump title 1;</button><button>jump title 2;</button>"
                "</pgc></menus><titles><pgc><vob file=\"" +
                home_.out() + "/title1.mpg\"/><post>jump title 2;</post></pgc><pgc><vob file=\"" +
                home_.out() +
                "/title2.mpg\" chapters=\"0,0:01\"/></pgc></titles></titleset></dvdauthor>\r\n";
  const std::string edited = home_.folder().add("edited.cvp", project_text(p));
  const finished right = console({edited, home_.out()});
  EXPECT_EQ(right.status, 0) << right.out;
  take_the_yellow(home_);
  const finished wrong = console({edited, home_.out()});
  EXPECT_EQ(wrong.status, 2) << wrong.out;
  EXPECT_THAT(wrong.out, says_that_yellow_is_lost);
}

std::size_t byte_of(const std::string& bytes, std::size_t at) {
  return static_cast<std::uint8_t>(bytes.at(at));
}

/// Where the first subpicture unit of a menu begins in its first packet.
std::size_t place_of_overlay(const std::string& menus) {
  constexpr std::size_t substream = 0x20;
  const std::string start("\0\0\1\xBD", 4);
  std::size_t at = menus.find(start);
  while (at != std::string::npos && byte_of(menus, at + 9 + byte_of(menus, at + 8)) != substream)
    at = menus.find(start, at + 1);
  return at == std::string::npos ? at : at + 9 + byte_of(menus, at + 8) + 1;
}

TEST_F(Verify, ButtonsThatAreSeenElsewhereAreTold) {
  std::string menus = *read_file(file("VTS_01_0.VOB"), 1u << 30);
  const std::size_t unit = place_of_overlay(menus);
  ASSERT_NE(unit, std::string::npos);
  // The area stands among the commands, behind the looks of the codes.
  std::size_t area = unit + (byte_of(menus, unit + 2) << 8 | byte_of(menus, unit + 3)) + 4;
  for (std::size_t command = byte_of(menus, area); command != 5; command = byte_of(menus, area))
    area += command == 3 || command == 4 ? 3 : command == 6 ? 5 : 1;
  const std::size_t lines =
      byte_of(menus, area + 4) << 16 | byte_of(menus, area + 5) << 8 | byte_of(menus, area + 6);
  const std::size_t moved = lines + (10 << 12 | 10);
  for (std::size_t i = 0; i < 3; ++i)
    menus[area + 4 + i] = static_cast<char>(moved >> 8 * (2 - i) & 255);
  ASSERT_FALSE(write_file(file("VTS_01_0.VOB"), menus));
  const finished told = console({home_.project_file(), home_.out()});
  EXPECT_EQ(told.status, 2) << told.out;
  EXPECT_THAT(told.out, AllOf(ContainsRegex("error: menu 1, button 1: drawn: .* within 100,110 to"),
                              ContainsRegex("error: menu 1, button 2: drawn: .* within 100,210 to"),
                              Not(HasSubstr(": highlighted: "))));
}

TEST_F(Verify, AMenuWhosePictureIsBrokenIsTold) {
  const std::size_t unit = place_of_overlay(*read_file(file("VTS_01_0.VOB"), 1u << 30));
  ASSERT_NE(unit, std::string::npos);
  flip(file("VTS_01_0.VOB"), unit + 2);
  EXPECT_THAT(found(), ElementsAre("disc-no-overlay"));
}

TEST_F(Verify, PicturesThatEndBeforeTheirStreamAreTold) {
  std::string vobs = *read_file(file("VTS_01_1.VOB"), 1u << 30);
  const std::size_t pack_header = 14, sectors = vobs.size() / disc_sector_size;
  const std::string video("\0\0\1\xE0", 4), padding("\0\0\1\xBE", 4);
  for (std::size_t sector = sectors * 7 / 10; sector < sectors; ++sector)
    if (const std::size_t at = sector * disc_sector_size + pack_header;
        vobs.compare(at, video.size(), video) == 0)
      vobs.replace(at, padding.size(), padding);
  ASSERT_FALSE(write_file(file("VTS_01_1.VOB"), vobs));
  const finished told = console({home_.project_file(), home_.out()});
  EXPECT_EQ(told.status, 2) << told.out;
  EXPECT_THAT(told.out, AllOf(HasSubstr("error: title 2, video: shows until: "),
                              Not(HasSubstr("error: title 1, video: shows until: "))));
}

/// mplex leaves it out where the stream has no end code.
TEST_F(Verify, ALastPictureThatIsNotThereIsANote) {
  const std::string end_code("\0\0\1\xB7", 4);
  const std::string video = *read_file(media("clip-ntsc.m2v"), 1u << 30);
  ASSERT_NE(video.substr(video.size() - 4), end_code);
  // The title ends with its picture.
  constexpr std::size_t frame = 768, frames = 180;
  const std::string sound = home_.folder().add(
      "short.ac3", read_file(media("clip.ac3"), 1u << 30)->substr(0, frame * frames));
  const auto noted = [&](const std::string& stream) {
    project p;
    add_title(p, {stored_from_native(stream), stored_from_native(sound)});
    const finished done = home_.author(p, {"--replace"});
    EXPECT_EQ(done.status, 0) << done.out;
    return read_file(home_.app() + "/CorvaneLOG.txt", 1u << 24)
               ->find("INFO: title 1: its last picture is not there; rule: disc-last-picture") !=
           std::string::npos;
  };
  EXPECT_FALSE(noted(home_.folder().add("whole.m2v", video + end_code)));
  EXPECT_TRUE(noted(media("clip-ntsc.m2v")));
}

TEST_F(Verify, WhatMissingFilesWouldTellIsNotHeldAgainstTheDisc) {
  // Copies: other tests read the files, too.
  std::string text = project_text(small_project());
  std::set<std::string> files;
  for (const std::string& original : files_of(disc_of(small_project()))) {
    const std::string copy = home_.folder().path(text_of(path_of(original).filename()));
    fs::copy_file(path_of(original), path_of(copy));
    files.insert(copy);
    const std::string from = stored_from_native(original), to = stored_from_native(copy);
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
      text.replace(at, from.size(), to);
  }
  ASSERT_FALSE(files.empty());
  const std::string own = home_.folder().add("own.cvp", text);
  for (const std::string& file : files) {
    fs::rename(path_of(file), path_of(file + ".away"));
    const finished told = console({own, home_.out()});
    fs::rename(path_of(file + ".away"), path_of(file));
    EXPECT_EQ(told.status, 0) << file << "\n" << told.out;
    const std::string line =
        "\"" + file + "\" cannot be read.  What it would tell of the disc is not known.\n";
    EXPECT_THAT(told.out, HasSubstr(line));
    EXPECT_EQ(told.out.find(line), told.out.rfind(line)) << "each file is named once";
  }
}

TEST_F(Verify, AMissingFolderIsTold) {
  const finished told = console({home_.folder().path("nowhere")});
  EXPECT_EQ(told.status, 2);
  EXPECT_THAT(told.out, HasSubstr("image-missing"));
  const finished empty = console({home_.folder().path("work")});
  EXPECT_EQ(empty.status, 2);
  EXPECT_THAT(empty.out, HasSubstr("disc-missing"));
}

TEST_F(Verify, ImageBesideTheFolderIsReadIfItIsThere) {
  const std::string tables = home_.out() + "/VIDEO_TS";
  EXPECT_EQ(console({home_.project_file(), tables}).status, 0);
  flip(home_.image(), 3 * fs::file_size(path_of(home_.image())) / 4);
  for (const std::string& disc : {home_.out(), home_.out() + "/", tables, tables + "/"}) {
    const finished told = console({home_.project_file(), disc});
    EXPECT_EQ(told.status, 2) << disc;
    EXPECT_THAT(told.out, HasSubstr("rule: image-")) << disc;
  }
  // As after a run that was told to make none.
  fs::remove(path_of(home_.image()));
  for (const std::string& disc : {home_.out(), tables})
    EXPECT_EQ(console({home_.project_file(), disc}).status, 0) << disc;
}

TEST_F(Verify, ACopyOfTheTablesThatDiffersIsFound) {
  flip(file("VTS_01_0.BUP"), 5000);
  EXPECT_THAT(found(), ElementsAre("disc-tables"));
}

TEST_F(Verify, AMissingFileIsFound) {
  fs::remove(path_of(file("VTS_01_1.VOB")));
  EXPECT_THAT(found(), Contains("disc-tables"));
}

TEST_F(Verify, ATitleThatIsCutIsFound) {
  fs::resize_file(path_of(file("VTS_01_1.VOB")), fs::file_size(path_of(file("VTS_01_1.VOB"))) / 2);
  EXPECT_THAT(found(), Contains("disc-tables"));
}

TEST_F(Verify, AnImageOfAnotherDiscIsFound) {
  flip(file("VTS_01_1.VOB"), 3 * 2048 + 1000);
  EXPECT_THAT(found_with_image(), Contains("image-files"));
}

// All of the folder goes into its image.
TEST_F(Verify, AnImageThatLacksAnotherFileOfTheFolderIsFound) {
  const auto add = [&](const std::string& name, const std::string& text, int hours_older) {
    const std::string path = home_.folder().add("work/disc/" + name, text);
    fs::last_write_time(path_of(path), fs::last_write_time(path_of(home_.image())) -
                                           std::chrono::hours(hours_older));
  };
  add("notes.txt", "came after the image", -1);
  EXPECT_THAT(found_with_image(), IsEmpty());
  add("extras/letter.txt", "was there before", 1);
  const std::vector<finding> all = verified(home_.out(), home_.image());
  EXPECT_THAT(rules_of(all), ElementsAre("image-files"));
  EXPECT_EQ(all.at(0).file, "extras/letter.txt");
  EXPECT_THAT(all.at(0).found, HasSubstr("is not in the image"));
  EXPECT_THAT(rules_of(verified(home_.out() + "/VIDEO_TS", home_.image())), IsEmpty());
}

TEST(VerifyImage, AnotherFileThatDiffersIsFound) {
  const studio home;
  const std::string text = "a letter that stands once in the image";
  home.folder().add("work/disc/letter.txt", text);
  home.authored(small_project(), {"--iso"});
  EXPECT_THAT(rules_of(verified(home.out(), home.image())), IsEmpty());
  const std::string image = home.folder().read("work/disc.iso");
  const std::size_t at = image.find(text);
  ASSERT_NE(at, std::string::npos);
  flip(home.image(), at);
  const std::vector<finding> all = verified(home.out(), home.image());
  EXPECT_THAT(rules_of(all), ElementsAre("image-files"));
  EXPECT_EQ(all.at(0).file, "letter.txt");
}

TEST_F(Verify, AnImageThatIsCutIsFound) {
  fs::resize_file(path_of(home_.image()), fs::file_size(path_of(home_.image())) / 2);
  EXPECT_THAT(found_with_image(), Not(IsEmpty()));
}

// Edited XML of two titlesets, whose commands were typed.
TEST(VerifyXml, WaysThroughSeveralTitlesetsAreComparedAndShown) {
  const studio home;
  project p = short_project();
  add_title(p, {stored_media("muxed-ntsc.vob")});
  const auto xml = [&](const std::string& post) {
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<dvdauthor dest=\"" + home.out() +
           "\">\r\n<!-- DO NOT edit the 2 lines above -->\r\n<vmgm><fpc>jump title 2;"
           "</fpc></vmgm>\r\n<titleset><titles><pgc><vob file=\"" +
           home.out() + "/title1.mpg\"/><post>g3=7; if (g3 eq 7) " + post +
           "; exit;</post></pgc></titles></titleset>\r\n<titleset><titles><pgc><vob file=\"" +
           media("muxed-ntsc.vob") +
           "\"/><post>jump title 1;</post></pgc></titles></titleset></dvdauthor>\r\n";
  };
  p.customxml = xml("jump title 1");
  home.authored(p);
  const auto look = [&](const std::string& project_file) {
    command c;
    c.words = {CORVANE_AUTHOR, "--verify", project_file, home.out()};
    c.environment["CORVANE_HOME"] = home.app();
    return run(c);
  };
  const finished right = look(home.project_file());
  EXPECT_EQ(right.status, 0) << right.out;
  EXPECT_THAT(right.out, AllOf(ContainsRegex("first play +title 2 chapter 1 +title 2 chapter 1"),
                               ContainsRegex("then +title 2 chapter 1 +title 2 chapter 1"),
                               ContainsRegex("then +title 1 chapter 1 or stop +title 1 chapter 1"),
                               ContainsRegex("does +g3 = 7; ")));
  p.customxml = xml("exit");
  const finished wrong = look(home.folder().add("other.cvp", project_text(p)));
  EXPECT_EQ(wrong.status, 2) << wrong.out;
  EXPECT_THAT(wrong.out, AllOf(HasSubstr("error: title 1: then: title 1 chapter 1"),
                               HasSubstr("must be: stop")));
}

// Ready streams of several multiplexers, whose own NAV packs say where chapters can begin.
class VerifyReady : public ::testing::Test {
 protected:
  std::string path(const std::string& name) const { return home_.folder().path(name); }

  std::string make(const std::string& line, const std::string& name) const {
    const finished done = run({{"sh", "-c", line + " '" + path(name) + "'"}});
    EXPECT_EQ(done.status, 0) << line << "\n" << done.out;
    return path(name);
  }

  /// FFmpeg's line for six seconds, up to the file's name.
  static std::string encode(const std::string& options) {
    return "ffmpeg -nostdin -v error -y -f lavfi -i testsrc2=size=720x480:rate=30000/1001 -i '" +
           media("clip.ac3") +
           "' -t 6 -c:v mpeg2video -pix_fmt yuv420p -sc_threshold 1000000000 -b:v 2500k "
           "-maxrate 6000k -bufsize 1835k -aspect 4:3 -c:a copy " +
           options;
  }
  std::string by_mplex(const std::string& video, const std::string& name) const {
    return make("mplex -v 0 -f 8 '" + video + "' '" + media("clip.ac3") + "' -o", name);
  }

  /// A disc of this stream alone; how many chapters were foreseen by its units.
  int landed(const std::string& stream, const std::string& chapters) const {
    project p;
    add_title(p, {stored_from_native(stream)}, chapters);
    home_.authored(p, {"--replace"});
    const auto text = read_file(join_path(home_.app(), "foreseen.xml"), 1u << 24);
    const auto foreseen = text ? parse_foreseen(*text) : result<foreseen_run>::fail(text.error);
    EXPECT_TRUE(foreseen) << foreseen.error;
    int count = 0;
    if (foreseen)
      for (const disc_trait& trait : foreseen->disc.all())
        count += trait.kind == disc_trait_kind::lands ? 1 : 0;
    return count;
  }

  studio home_;
};

TEST_F(VerifyReady, ChaptersOfEachLandWhereExaminationSaid) {
  const std::string chapters = "0,00:00:00.70,00:00:02.10,00:00:02.90,00:00:04.40";
  const std::string open = make(encode("-map 0 -g 15 -bf 2 -f mpeg2video"), "open.m2v");
  for (const std::string& stream :
       {media("muxed-ntsc.vob"), by_mplex(media("clip-ntsc.m2v"), "mplex.vob"),
        by_mplex(open, "open.vob"), make(encode("-g 12 -f dvd"), "ffmpeg.vob"),
        make(encode("-g 15 -bf 2 -f dvd"), "ffmpeg-open.vob")})
    EXPECT_EQ(landed(stream, chapters), 5) << stream;
  // Of a disc.
  const std::string again = path("again.vob");
  fs::rename(path_of(home_.out() + "/VIDEO_TS/VTS_01_1.VOB"), path_of(again));
  EXPECT_EQ(landed(again, chapters), 5);
}

/// dvdauthor is not asked for other chapters than those of the project; so another stream takes the
/// place of the one that the disc was made of.
TEST_F(VerifyReady, ChaptersElsewhereAreTold) {
  const std::string stream =
      by_mplex(make(encode("-map 0 -g 18 -f mpeg2video"), "long.m2v"), "stream.vob");
  const std::string other =
      by_mplex(make(encode("-map 0 -g 3 -f mpeg2video"), "short.m2v"), "other.vob");
  EXPECT_EQ(landed(stream, "0,00:00:02.00"), 2);
  fs::rename(path_of(other), path_of(stream));
  command c;
  c.words = {CORVANE_AUTHOR, "--verify", home_.project_file(), home_.out()};
  c.environment["CORVANE_HOME"] = home_.app();
  const finished told = run(c);
  EXPECT_EQ(told.status, 2) << told.out;
  EXPECT_THAT(told.out, HasSubstr("error: title 1, chapter 2: lands at: "));
}

/// Discs of edited XML: made of one text and held against another.
class VerifyEdited : public ::testing::Test {
 protected:
  VerifyEdited() {
    add_title(p_, {stored_media("clip-ntsc.m2v"), stored_media("clip.ac3")});
    for (int menu = 0; menu < 2; ++menu)
      add_menu(p_, stored_media("menu-ntsc.m2v"), stored_media("menu.ac3"),
               {"100/100/200/150/exit/yellow/white", "100/200/200/250/exit/yellow/white"});
  }

  std::string file(const std::string& name) const {
    return "<vob file=\"" + home_.out() + "/" + name + "\"";
  }
  static std::string ready() { return "<vob file=\"" + media("muxed-ntsc.vob") + "\""; }

  project with_xml(const std::string& elements) const {
    project p = p_;
    p.customxml = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\r\n<dvdauthor dest=\"" + home_.out() +
                  "\">\r\n<!-- DO NOT edit the 2 lines above -->\r\n" + elements +
                  "</dvdauthor>\r\n";
    return p;
  }

  /// The whole run, with its own look at the disc.
  std::string run_of(const std::string& elements) const {
    std::filesystem::remove_all(path_of(home_.out()));
    const finished done = home_.author(with_xml(elements));
    EXPECT_EQ(done.status, 0) << elements << "\n" << done.out;
    return done.out;
  }

  finished held_against(const std::string& elements) const {
    command c;
    c.words = {CORVANE_AUTHOR, "--verify",
               home_.folder().add("other.cvp", project_text(with_xml(elements))), home_.out()};
    c.environment["CORVANE_HOME"] = home_.app();
    return run(c);
  }

  project p_ = short_project();
  studio home_;
};

// Of a title of several files all have to be there.
TEST_F(VerifyEdited, ATitleOfSeveralFilesIsAsLongAsAllOfThem) {
  const auto title = [](int files) {
    std::string text = "<vmgm><fpc>jump title 1;</fpc></vmgm><titleset><titles><pgc>";
    for (int i = 0; i < files; ++i)
      text += ready() + "/>";
    return text + "</pgc></titles></titleset>";
  };
  run_of(title(2));
  const finished right = held_against(title(2));
  EXPECT_EQ(right.status, 0) << right.out;
  EXPECT_THAT(right.out, ContainsRegex("length +[0-9:.]+ +[0-9:.]+")) << right.out;
  const finished wrong = held_against(title(3));
  EXPECT_EQ(wrong.status, 2) << wrong.out;
  EXPECT_THAT(wrong.out, HasSubstr("title 1: length"));
}

TEST_F(VerifyEdited, TitlesOfSeveralFilesHaveTheirChapters) {
  const auto title = [this](const std::string& first, const std::string& second,
                            const std::string& third) {
    return "<vmgm/><titleset><titles><video format=\"ntsc\"/><pgc>" + file("title1.mpg") + first +
           "/>" + file("title2.mpg") + second + "/>" + third + "</pgc></titles></titleset>";
  };
  const std::string listed = title(" chapters=\"0:01\"", " chapters=\"0:01,0:03.3,9\"", ""),
                    plain = title("", "", ready() + " chapters=\"0.1,2\"/>");
  run_of(plain);
  const finished right = held_against(plain);
  EXPECT_EQ(right.status, 0) << right.out;
  EXPECT_THAT(right.out, AllOf(ContainsRegex("chapters +4 +4"),
                               ContainsRegex("length +00:00:18.* +00:00:18")));
  run_of(listed);
  EXPECT_EQ(held_against(listed).status, 0);
  const finished elsewhere =
      held_against(title(" chapters=\"0:01\"", " chapters=\"0:02,0:03.3,9\"", ""));
  EXPECT_EQ(elsewhere.status, 2);
  EXPECT_THAT(elsewhere.out, HasSubstr("error: title 1, chapter 3: begins: 00:00:07"));
  const finished fewer = held_against(title(" chapters=\"0:01\"", " chapters=\"0:01\"", ""));
  EXPECT_THAT(fewer.out, HasSubstr("error: title 1: chapters: 4"));
  const finished longer = held_against(plain);
  EXPECT_THAT(longer.out, HasSubstr("error: title 1: length: 00:00:12"));
}

// What edited XML may have besides: nothing of it is told of a disc that is right.
TEST_F(VerifyEdited, RightDiscsHaveNoFinding) {
  const std::string title = "<pgc>" + file("title1.mpg") + "/></pgc>",
                    titles = "<titles><video format=\"ntsc\"/>" + title + title + "</titles>",
                    shown = ready() + "/>", buttons = "<button>jump title 1;</button><button>";
  const auto set = [&](const std::string& menus) {
    return "<titleset>" + menus + titles + "</titleset>";
  };
  const std::string elements[] = {
      // A menu that never shows, under two entries, and programs before another.
      "<vmgm/>" + set("<menus><pgc entry=\"root,audio\" pause=\"3\"><pre>jump menu 2;</pre>" +
                      shown + "</pgc><pgc><pre>{ g1=1; if (g1 gt 2) { jump menu 1; } }</pre>" +
                      shown + "<post>g2=1;</post></pgc></menus>"),
      // Several languages.
      "<vmgm/>" + set("<menus lang=\"fr\"><pgc pause=\"3\">" + shown +
                      "</pgc></menus><menus lang=\"de\"><pgc>" + shown + "</pgc><pgc>" + shown +
                      "</pgc></menus>"),
      // Buttons that choose, several commands of a button, menus that only lead on.
      "<vmgm><menus><pgc><post>if (g1 == 0) jump titleset 1 menu; jump menu 2;</post></pgc><pgc "
      "entry=\"title\" pause=\"inf\"><pre>button=2048;</pre>" +
          buttons + "jump menu 1;</button>" + file("menusub1.mpg") + "/></pgc></menus></vmgm>" +
          set("<menus><pgc pause=\"9\"><pre>g3=s8; button=1024;</pre>" + buttons +
              "g2=1; jump vmgm menu 2;</button>" + file("menusub2.mpg") +
              "/><post>jump menu 1;</post></pgc></menus>"),
      // Several files and cells of a menu; cells of titles.
      "<vmgm><fpc>{ g1=5; jump vmgm menu 1; }</fpc><menus><pgc>" + shown + shown +
          "<post>jump title 2;</post></pgc></menus></vmgm><titleset><titles><video "
          "format=\"ntsc\"/><pgc><pre>g1=1;</pre>" +
          file("title1.mpg") +
          "><cell start=\"0\" end=\"1\"/><cell start=\"3\" end=\"4\" "
          "chapter=\"1\">g1=2;</cell></vob>" +
          file("title2.mpg") +
          " pause=\"2\" chapters=\"1\"/><post>if (g1 == 1) call vmgm menu; "
          "else jump title 1 chapter 2;</post></pgc><pgc>" +
          file("title2.mpg") + "/></pgc></titles></titleset>",
      // Titlesets, and every way between them.
      "<vmgm><menus><pgc><pre>if (g1 == 1) jump title 2;</pre>" + shown +
          "<post>jump titleset 2 menu entry root;</post></pgc></menus></vmgm>" +
          set("<menus><pgc>" + shown + "<post>jump vmgm menu;</post></pgc></menus>") +
          set("<menus><pgc entry=\"subtitle\">" + shown +
              "<post>jump title 2;</post></pgc><pgc "
              "entry=\"root\">" +
              shown + "<post>jump menu entry subtitle;</post></pgc></menus>"),
  };
  for (const std::string& one : elements) {
    std::filesystem::remove_all(path_of(home_.out()));
    const finished done = home_.author(with_xml(one), {"--force"});
    EXPECT_THAT(done.out, Not(HasSubstr("ERR:"))) << one;
    const finished right = held_against(one);
    EXPECT_EQ(right.status, 0) << one << "\n" << done.out << right.out;
  }
}

class VerifyXmlNavigation : public VerifyEdited {
 protected:
  /// A disc with all that XML has and the editors have not; parts of it by their names.
  struct parts {
    std::string fpc = "<fpc>if (g4 == 0) jump vmgm menu 1; else jump title 1;</fpc>";
    std::string disc_pre = "<pre>g5=1;</pre>", disc_button = "jump title 1;", disc_pause = "inf";
    std::string menu_pre = "<pre>if (g5 == 7) jump title 2;</pre>", menu_post = "jump title 2;",
                menu_pause = "4", audio_entry = "audio";
    std::string title_pre = "<pre>g6=1;</pre>", title_pause = "3", title_post = "call menu;",
                cell = "g7=1;", aspect = "16:9";
    bool has_disc_menu = true;
  };

  std::string elements(const parts& x) const {
    const std::string disc_menus = "<menus><pgc pause=\"" + x.disc_pause + "\">" + x.disc_pre +
                                   "<button>" + x.disc_button +
                                   "</button><button>jump titleset 1 menu;</button>" +
                                   file("menusub1.mpg") + "/></pgc></menus>";
    return "<vmgm>" + x.fpc + (x.has_disc_menu ? disc_menus : "") +
           "</vmgm><titleset><menus><pgc pause=\"" + x.menu_pause + "\">" + x.menu_pre +
           "<button>jump title 1;</button><button>jump title 2;</button>" + file("menusub2.mpg") +
           "/><post>" + x.menu_post + "</post></pgc><pgc entry=\"" + x.audio_entry +
           "\" pause=\"1\">" + ready() +
           "/><post>jump menu 1;</post></pgc></menus><titles><video format=\"ntsc\" aspect=\"" +
           x.aspect + "\"/><pgc pause=\"" + x.title_pause + "\">" + x.title_pre +
           file("title1.mpg") + " chapters=\"0,0:02\"/><post>" + x.title_post +
           "</post></pgc><pgc>" + ready() + "><cell start=\"0\" end=\"3\" chapter=\"1\">" + x.cell +
           "</cell></vob></pgc></titles></titleset>";
  }
};

TEST_F(VerifyXmlNavigation, IsAsForeseen) {
  const std::string xml = elements({});
  EXPECT_THAT(run_of(xml), Not(HasSubstr("ERR:")));
  const finished right = held_against(xml);
  EXPECT_EQ(right.status, 0) << right.out;
  for (const char* const row :
       {"first play +disc menu 1 or title 1 chapter 1 +disc menu 1", "disc menus +1 +1",
        "button 1: leads to +title 1 chapter 1 +title 1 chapter 1",
        "button 2: leads to +title 2 chapter 1 or menu 1 +menu 1", "stays +for ever +for ever",
        "stays +4 s +4 s", "stays +3 s +3 s", "then +title 2 chapter 1 +title 2 chapter 1",
        "before +title 2 chapter 1 or goes on +goes on", "before +goes on +goes on",
        "entries +audio +audio", "command 1: then +goes on +goes on", "video: aspect +16:9 +16:9",
        "then +title 2 chapter 1 or menu 1 +menu 1", "then +stop +stop", "chapters +2 +2"})
    EXPECT_THAT(right.out, ContainsRegex(row)) << row;
}

TEST_F(VerifyXmlNavigation, IsToldWhereItIsAnother) {
  parts made;
  made.disc_pre = made.menu_pre = made.title_pre = "";
  made.disc_button = "jump title 2;";
  made.disc_pause = "9";
  made.menu_post = "jump title 1;";
  made.menu_pause = "5";
  made.audio_entry = "angle";
  made.title_pause = "2";
  made.title_post = "exit;";
  made.cell = "jump title 1;";
  made.aspect = "4:3";
  made.fpc = "<fpc>jump titleset 1 menu;</fpc>";
  run_of(elements(made));
  const finished wrong = held_against(elements({}));
  EXPECT_EQ(wrong.status, 2);
  for (const char* const told :
       {"error: disc: first play: menu 1.", "error: disc menu 1: before: there is none.",
        "error: disc menu 1, button 1: leads to: title 2 chapter 1.",
        "error: disc menu 1: stays: 9 s.", "error: menu 1: before: there is none.",
        "error: menu 1: then: title 1 chapter 1.", "error: menu 1: stays: 5 s.",
        "error: menu 2: entries: angle.", "error: title 1: before: there is none.",
        "error: title 1: stays: 2 s.", "error: title 1: then: stop.",
        "error: title 2, command 1: then: title 1 chapter 1.",
        "error: title 1, video: aspect: 4:3."})
    EXPECT_THAT(wrong.out, HasSubstr(told)) << wrong.out;
}

TEST_F(VerifyXmlNavigation, MissesMenusOfTheWholeDisc) {
  parts made;
  made.has_disc_menu = false;
  made.fpc = "<fpc>jump title 1;</fpc>";
  run_of(elements(made));
  const finished wrong = held_against(elements({}));
  EXPECT_EQ(wrong.status, 2);
  EXPECT_THAT(wrong.out, HasSubstr("error: disc: disc menus: 0."));
}

// What becomes of cues that are out of order, overlap, have no end, or come behind the title's.
class VerifySubtitles : public ::testing::Test {
 protected:
  project with_text(const std::string& name, const std::string& text) {
    project p = short_project();
    p.subtitledata[0] =
        with_subtitle("<none>", stored_from_native(home_.folder().add("work/" + name, text)));
    p.subtitleoptions[0] =
        "center,bottom,60,60,30,30,28.0,dejavusans.ttf,720,478,29.97,ISO-8859-1|";
    return p;
  }

  studio home_;
};

TEST_F(VerifySubtitles, ComeAndGoAsForeseenWhateverTheirFileHolds) {
  const std::pair<const char*, const char*> files[] = {
      {"overlaps.srt",
       "1\n00:00:02,000 --> 00:00:02,500\nC\n\n"
       "2\n00:00:00,100 --> 00:00:01,000\nA\n\n"
       "3\n00:00:00,500 --> 00:00:00,500\nB\n\n"
       "4\n00:00:02,400 --> 00:00:02,900\nshared\n\n"
       "5\n00:00:03,200 --> 00:00:03,300\nhidden\n\n"
       "6\n00:00:03,200 --> 00:00:04,500\nshown\n\n"
       "7\n00:00:30,000 --> 00:00:31,000\nlate\n\n"},
      {"pictures.sub", "{3}{30}A\n{15}{15}B\n{60}{}C\n{45}{50}D\n"},
      {"long.srt",
       "1\n00:00:00,000 --> 00:20:00,000\nA\n\n2\n00:00:02,000 --> 00:20:00,000\nB\n\n"},
      {"plain.ass",
       "[Script Info]\n[Events]\n"
       "Dialogue: 0,0:00:02.00,0:00:02.50,D,,0,0,0,,B\n"
       "Dialogue: 0,0:00:00.50,0:00:01.50,D,,0,0,0,,A\n"},
      {"viewer.sub", "00:00:00.10,00:00:01.00\nA\n\n00:00:00.50,00:00:02.00\nB\n\n"},
      {"player.txt", "00:00:01:A\n00:00:03:B\n00:00:02:C\n"}};
  for (const auto& [name, text] : files) {
    const project p = with_text(name, text);
    const finished done = home_.author(p, {"--force"});
    EXPECT_EQ(done.status, 0) << name << "\n" << done.out;
    EXPECT_THAT(done.out, Not(HasSubstr("disc-subtitle"))) << name;
    const std::string foreseen = *read_file(home_.app() + "/foreseen.xml", 1u << 20);
    EXPECT_THAT(foreseen, HasSubstr("what=\"shown\"")) << name;
    fs::remove_all(path_of(home_.out()));
  }
}

TEST_F(VerifySubtitles, KeepToThePictureWhenTheSoundIsMoved) {
  for (const char* const delay : {"400", "-400"}) {
    project p = with_text("two.srt",
                          "1\n00:00:00,500 --> 00:00:01,500\nA\n\n"
                          "2\n00:00:02,000 --> 00:00:02,500\nB\n\n");
    p.delay[0] = delay;
    const finished done = home_.author(p);
    EXPECT_EQ(done.status, 0) << delay << "\n" << done.out;
    fs::remove_all(path_of(home_.out()));
  }
}

TEST_F(VerifySubtitles, ThatComeAtAnotherTimeAreTold) {
  home_.authored(with_text("two.srt",
                           "1\n00:00:01,000 --> 00:00:01,500\nA\n\n"
                           "2\n00:00:02,000 --> 00:00:02,500\nB\n\n"));
  const std::string path = home_.out() + "/VIDEO_TS/VTS_01_1.VOB";
  std::string vobs = *read_file(path, 1u << 30);
  // The second packet of the subtitle's stream comes four clocks of 2^15 later.
  const std::string packet("\0\0\1\xBD", 4);
  std::vector<std::size_t> times;
  for (std::size_t at = vobs.find(packet); at != std::string::npos; at = vobs.find(packet, at + 1))
    if (byte_of(vobs, at + 9 + byte_of(vobs, at + 8)) == 0x20 && byte_of(vobs, at + 7) >= 0x80)
      times.push_back(at + 9);
  ASSERT_EQ(times.size(), 2u);
  vobs[times[1] + 2] = static_cast<char>(byte_of(vobs, times[1] + 2) ^ 0x02);
  vobs[times[1] + 3] = static_cast<char>(byte_of(vobs, times[1] + 3) ^ 0x80);
  ASSERT_FALSE(write_file(path, vobs));
  command c;
  c.words = {CORVANE_AUTHOR, "--verify", home_.project_file(), home_.out()};
  c.environment["CORVANE_HOME"] = home_.app();
  const finished told = run(c);
  EXPECT_EQ(told.status, 2) << told.out;
  EXPECT_THAT(told.out, HasSubstr("error: title 1, subtitle 1, 00:00:02: cue 2 is shown from"));
}

// One byte of tables, copies or navigation packs.
TEST_F(Verify, OneWrongByteIsFoundWithTheImageBesideIt) {
  std::mt19937 random(20260101);
  const std::string names[] = {"VIDEO_TS.IFO", "VTS_01_0.IFO", "VIDEO_TS.BUP", "VTS_01_0.BUP"};
  const auto pick = [&](std::uint64_t most) {
    return std::uniform_int_distribution<std::uint64_t>(0, most - 1)(random);
  };
  for (int i = 0; i < part_of_set(100); ++i) {
    const bool pack = i % 2 == 1;
    const std::string name = pack ? "VTS_01_1.VOB" : names[pick(4)];
    const std::uint64_t at = pick(pack ? disc_sector_size : fs::file_size(path_of(file(name))));
    const std::string before = *read_file(file(name), 1u << 30);
    flip(file(name), at);
    EXPECT_THAT(found_with_image(), Not(IsEmpty())) << name << " byte " << at;
    EXPECT_FALSE(write_file(file(name), before));
  }
}

/// Whether no player looks at this byte of a navigation pack, by what the pack holds.
bool is_without_effect(std::uint64_t at, const navigation_pack& pack) {
  constexpr std::uint64_t pci = 0x2D, dsi = 0x407, highlight = pci + 96, buttons = highlight + 46,
                          behind_buttons = highlight + 694, button_size = 18, angles = dsi + 180;
  const auto in = [at](std::uint64_t first, std::uint64_t end) { return at >= first && at < end; };
  // What is said of the recording, and what is reserved.
  if (in(pci + 6, pci + 8) || in(pci + 28, pci + 60) || in(behind_buttons, 0x400) ||
      at == dsi + 26 || at == dsi + 33 || in(dsi + 546, disc_sector_size))
    return true;
  // Less than a millisecond at the edges of a VOB, where no other unit has the time again.
  if (at == pci + 15 || at == pci + 19)
    return true;
  // Interleaved pieces and angles that are not there: only their addresses are looked at.
  if ((pack.interleaving & 0x4000) == 0 && in(dsi + 34, dsi + 44))
    return true;
  if (in(angles, angles + 54) && (at - angles) % 6 >= 4)
    return true;
  // Buttons that are not there; the higher half of the word that says whether there are any.
  if (at == highlight || at == highlight + 19)
    return true;
  if (pack.highlight.status == 0)
    return in(highlight + 2, behind_buttons);
  return in(buttons + button_size * pack.highlight.buttons.size(), behind_buttons);
}

/// A unit of these VOBs, and the file that it is in.
struct place_of_unit {
  std::string file;
  std::uint32_t sector = 0;
};

std::vector<place_of_unit> units_of(const std::string& folder) {
  auto files = open_folder(folder);
  const auto disc = files ? corvane::read_disc(**files) : result<disc_contents>::fail(files.error);
  EXPECT_TRUE(disc) << disc.error;
  std::vector<place_of_unit> places;
  if (disc)
    for (const disc_vobs& vobs : disc->vobs)
      for (const disc_unit& unit : vobs.units)
        places.push_back({folder + "/" + vobs.files.front(), unit.sector});
  return places;
}

// Bytes of navigation packs, wherever they are, of the folder alone.
TEST_F(Verify, OneWrongByteOfANavigationPackIsFoundOrWithoutEffect) {
  std::mt19937 random(20260102);
  const auto pick = [&](std::uint64_t most) {
    return std::uniform_int_distribution<std::uint64_t>(0, most - 1)(random);
  };
  const std::vector<place_of_unit> places = units_of(home_.out());
  ASSERT_FALSE(places.empty());
  int found = 0, without_effect = 0;
  for (int i = 0; i < part_of_set(600); ++i) {
    const place_of_unit& unit = places[pick(places.size())];
    const std::uint64_t at = pick(disc_sector_size);
    const std::string before = *read_file(unit.file, 1u << 30);
    const auto* const bytes = reinterpret_cast<const std::uint8_t*>(before.data());
    const auto pack = read_navigation_pack(
        {bytes + std::size_t{unit.sector} * disc_sector_size, disc_sector_size});
    ASSERT_TRUE(pack) << pack.error;
    flip(unit.file, unit.sector * disc_sector_size + at);
    if (!verified(home_.out()).empty()) {
      ++found;
    } else {
      ++without_effect;
      EXPECT_TRUE(is_without_effect(at, *pack))
          << unit.file << ", unit at sector " << unit.sector << ", byte " << at;
      EXPECT_EQ(disagreement_text(home_.out()), "") << at;
    }
    EXPECT_FALSE(write_file(unit.file, before));
  }
  EXPECT_GT(found, 0);
  EXPECT_GT(without_effect, 0);
}

/// What both volumes of an image list.
disc_image volumes_of(const std::string& image) {
  auto source = open_bytes(image);
  EXPECT_TRUE(source) << source.error;
  return source ? read_disc_image(**source) : disc_image();
}

/// How many sectors are in front of the first file of an image: its descriptors, path tables and
/// directories.
std::uint64_t table_sectors(const std::string& image) {
  std::uint64_t first = ~std::uint64_t{0};
  for (const disc_file& one : volumes_of(image).iso9660.files)
    first = std::min<std::uint64_t>(first, one.first_sector);
  return first;
}

/// Whether the byte at `place` of the image's tables is one that no reader needs. `tables`: all
/// sectors in front of the first file, as they were written.
bool is_without_effect(const std::string& tables, std::uint64_t place) {
  const std::uint64_t number = place / disc_sector_size, at = place % disc_sector_size;
  const std::string sector = tables.substr(number * disc_sector_size, disc_sector_size);
  const auto in = [at](std::uint64_t first, std::uint64_t end) { return at >= first && at < end; };
  const auto byte = [&sector](std::uint64_t i) { return byte_of(sector, i); };
  const auto of_primary = [&tables](std::uint64_t i) {
    return byte_of(tables, 16 * disc_sector_size + i);
  };
  if (sector.find_first_not_of('\0') == std::string::npos)
    return true;     // nothing is there
  if (number == 16)  // names, dates and what is for a system's own use
    return at == 7 || in(8, 80) || in(88, 120) || in(144, 148) || in(152, 156) ||
           in(156 + 18, 156 + 25) || in(190, disc_sector_size);
  if (number > 16 && number < 32)  // what ends the descriptors, and those that announce UDF
    return at >= 7;
  // Behind what their checksums are of; what stands behind the description of all files.
  constexpr std::uint64_t tag = 16, terminator = 8;
  if (byte(1) <= 2 && byte(2) == 2 && byte(3) == 0)
    return byte(0) == terminator || at >= tag + (byte(10) | byte(11) << 8);
  // Path tables, lowest and highest byte first: what is behind them.
  const std::uint64_t low = of_primary(140) | of_primary(141) << 8,
                      high = of_primary(151) | of_primary(150) << 8;
  if (number == low || number == high)
    return at >= (of_primary(132) | of_primary(133) << 8);
  // Folders of ISO 9660: the date of an entry; how long the last one is.
  for (std::uint64_t record = 0; record < disc_sector_size && byte(record) != 0;
       record += byte(record))
    if (in(record, record + byte(record)))
      return in(record + 18, record + 25) || at >= record + 33 + byte(record + 32) ||
             (at == record && byte(record + byte(record)) == 0);
  return false;
}

// Bytes of an image's own tables, and of the room between them.
TEST_F(Verify, OneWrongByteOfAnImagesTablesIsFoundOrWithoutEffect) {
  std::mt19937 random(20260104);
  const auto pick = [&](std::uint64_t most) {
    return std::uniform_int_distribution<std::uint64_t>(0, most - 1)(random);
  };
  const std::uint64_t sectors = table_sectors(home_.image());
  const std::string before =
      read_file(home_.image(), 1u << 30)->substr(0, sectors * disc_sector_size);
  std::vector<std::uint64_t> said;  // bytes that are not 0
  for (std::uint64_t at = 16 * disc_sector_size; at < before.size(); ++at)
    if (before[at] != 0)
      said.push_back(at);
  ASSERT_GT(said.size(), 1000u);
  const disc_image whole = volumes_of(home_.image());
  int found = 0, without_effect = 0;
  for (int i = 0; i < part_of_set(300); ++i) {
    const std::uint64_t place = i % 3 == 0 ? pick(before.size()) : said[pick(said.size())];
    const std::uint64_t sector = place / disc_sector_size, at = place % disc_sector_size;
    flip(home_.image(), place);
    if (!verified({}, home_.image()).empty()) {
      ++found;
    } else {
      ++without_effect;
      EXPECT_TRUE(is_without_effect(before, place)) << "sector " << sector << ", byte " << at;
      EXPECT_EQ(disagreement_text(home_.image()), "") << sector << " " << at;
    }
    flip(home_.image(), place);
  }
  EXPECT_GT(found, 0);
  EXPECT_GT(without_effect, 0);
  EXPECT_EQ(volumes_of(home_.image()).udf.files.size(), whole.udf.files.size());
}

// Tables and their copies, of the folder alone.
TEST_F(Verify, OneWrongByteOfATableIsFound) {
  std::mt19937 random(20260103);
  const std::string names[] = {"VIDEO_TS.IFO", "VTS_01_0.IFO", "VIDEO_TS.BUP", "VTS_01_0.BUP"};
  for (int i = 0; i < part_of_set(100); ++i) {
    const std::string& name = names[i % 4];
    const std::uint64_t size = fs::file_size(path_of(file(name)));
    const auto at = std::uniform_int_distribution<std::uint64_t>(0, size - 1)(random);
    flip(file(name), at);
    EXPECT_THAT(found(), Not(IsEmpty())) << name << " byte " << at;
    flip(file(name), at);
  }
}

}  // namespace
}  // namespace corvane::disc
