// What of a disc is foreseen, from what is asked for and from the facts of its streams.
#include "examine/foreseen_disc.h"

#include "examine/inner_stream_scan.h"
#include "platform/files/paths.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace corvane {
namespace {

using kind = disc_trait_kind;
using part = finding_item::part_kind;
using whole = finding_item::whole_kind;

finding_item title_item(int number, part what = part::whole, int part_number = 0) {
  return {whole::title, number, what, part_number};
}
finding_item menu_item(int number, part what = part::whole, int part_number = 0) {
  return {whole::menu, number, what, part_number};
}

std::shared_ptr<const file_facts> video_of(double seconds, int aspect_code,
                                           bool whole_file = true) {
  file_facts f;
  f.kind = file_kind::video;
  f.whole = whole_file;
  f.video.emplace();
  f.video->shape = video_shape{720, 576, 25, 1, aspect_code, 4, 3, true, false};
  f.video->standard = video_standard::pal;
  f.video->seconds = seconds;
  return std::make_shared<const file_facts>(f);
}

std::shared_ptr<const file_facts> known_sound(double seconds, audio_kind what = audio_kind::ac3) {
  file_facts f;
  f.kind = file_kind::audio;
  f.whole = true;
  f.audio.emplace();
  f.audio->kind = what;
  f.audio->length = static_cast<audio_time>(seconds * audio_clock);
  return std::make_shared<const file_facts>(f);
}

std::string native(const std::string& stored) {
  return native_from_stored(stored, native_style());
}

class ForeseenDisc : public ::testing::Test {
 protected:
  ForeseenDisc() {
    for (const char* const name : {"a", "b"}) {
      disc_title t;
      t.streams = {std::string("\\") + name + ".m2v", std::string("\\") + name + ".ac3"};
      t.is_multiplexed_here = true;
      d_.titles.push_back(t);
    }
    disc_menu m;
    m.files = {"\\m.m2v", ""};
    m.buttons.push_back(button("jump title 2 chapter 3"));
    d_.menus.push_back(m);
    facts_ = {{native("\\a.m2v"), video_of(20, 3)}, {native("\\a.ac3"), known_sound(15)}};
  }

  static disc_button button(const std::string& command) {
    disc_button b;
    b.x0 = number_of("10");
    b.y0 = number_of("20");
    b.x1 = number_of("109");
    b.y1 = number_of("59");
    b.action = command_of(command);
    return b;
  }

  /// "(nothing)" if nothing is said.
  std::string said(const finding_item& item, kind what, bool hand_edited = false) const {
    const disc_traits all = foreseen_disc(d_, facts_, hand_edited);
    const disc_trait* const one = all.find(item, what);
    return one == nullptr ? "(nothing)" : one->value;
  }
  std::string leads(const std::string& command) {
    d_.menus[0].buttons[0] = button(command);
    return said(menu_item(1, part::button, 1), kind::leads_to);
  }

  disc_description d_;
  facts_by_path facts_;
};

TEST_F(ForeseenDisc, PicturesAreThoseOfTheirStreams) {
  EXPECT_EQ(said(title_item(1, part::video), kind::standard), "PAL");
  EXPECT_EQ(said(title_item(1, part::video), kind::size), "720x576");
  EXPECT_EQ(said(title_item(1, part::video), kind::aspect), "16:9");
  EXPECT_EQ(said(title_item(1, part::video), kind::coding), "MPEG-2");
  EXPECT_EQ(said(title_item(1), kind::length), "20");
}

TEST_F(ForeseenDisc, WhatHasNotBeenReadIsNotForeseen) {
  EXPECT_EQ(said(title_item(2, part::video), kind::size), "(nothing)");
  EXPECT_EQ(said(title_item(2, part::audio, 1), kind::format), "(nothing)");
  EXPECT_EQ(said(title_item(2), kind::audio_streams), "1");
  facts_[native("\\a.m2v")] = video_of(20, 3, false);
  EXPECT_EQ(said(title_item(1), kind::length), "(nothing)") << "only its beginning is known";
  EXPECT_EQ(said(title_item(1, part::video), kind::size), "720x576");
}

/// Of a file of which only the beginning was read.
template <typename Facts>
std::shared_ptr<const file_facts> beginning_of(const Facts& known, std::uint64_t size) {
  file_facts f = *known;
  f.whole = false;
  f.size = size;
  return std::make_shared<const file_facts>(f);
}

TEST_F(ForeseenDisc, OfAFileThatWasNotReadItsBytesAreForeseen) {
  const finding_item picture = title_item(1, part::video), sound = title_item(1, part::audio, 1);
  EXPECT_EQ(said(picture, kind::bytes), "(nothing)") << "its pictures tell more";
  facts_[native("\\a.m2v")] = beginning_of(video_of(20, 3), 1'000'000);
  facts_[native("\\a.ac3")] = beginning_of(known_sound(15), 100'000);
  EXPECT_EQ(said(picture, kind::bytes), "770624") << "less the largest picture";
  EXPECT_EQ(said(sound, kind::bytes), "83616") << "less the last frame, and tags";
  EXPECT_EQ(said(title_item(1), kind::bytes), "(nothing)");
  facts_[native("\\a.m2v")] = beginning_of(video_of(20, 3), 200'000);
  EXPECT_EQ(said(picture, kind::bytes), "(nothing)");
  facts_[native("\\a.ac3")] = beginning_of(known_sound(15, audio_kind::mpeg_layer_3), 100'000);
  EXPECT_EQ(said(sound, kind::bytes), "(nothing)") << "mplex does not take it";
  facts_[native("\\m.m2v")] = beginning_of(video_of(20, 3), 1'000'000);
  EXPECT_EQ(said(menu_item(1, part::video), kind::bytes), "770624");
  d_.menus[0].has_parts = true;
  EXPECT_EQ(said(menu_item(1, part::video), kind::bytes), "(nothing)") << "a cell may leave it out";
}

TEST_F(ForeseenDisc, OfAReadyFileThatWasNotReadAllPacksAreForeseen) {
  file_facts ready;
  ready.kind = file_kind::program_stream;
  ready.size = 4'096'000;
  ready.program.emplace();
  ready.program->begins_with_nav_pack = true;
  d_.titles[0].streams = {"\\ready.vob"};
  d_.titles[0].is_multiplexed_here = false;
  const auto with = [&](bool nav, std::size_t uneven, bool whole_file) {
    ready.program->begins_with_nav_pack = nav;
    ready.program->uneven_packs.count = uneven;
    ready.whole = whole_file;
    facts_[native("\\ready.vob")] = std::make_shared<const file_facts>(ready);
    return said(title_item(1), kind::bytes);
  };
  EXPECT_EQ(said(title_item(1), kind::bytes), "(nothing)") << "nothing is known of it";
  EXPECT_EQ(with(true, 0, false), "4030464");
  EXPECT_EQ(with(false, 0, false), "(nothing)") << "dvdauthor leaves out what comes before";
  EXPECT_EQ(with(true, 1, false), "(nothing)");
  EXPECT_EQ(with(true, 0, true), "(nothing)") << "its length says more";
}

TEST_F(ForeseenDisc, SoundEndsWithItsStreamOrThePicture) {
  EXPECT_EQ(said(title_item(1, part::audio, 1), kind::format), "AC-3");
  EXPECT_EQ(said(title_item(1, part::audio, 1), kind::sounds_until), "15");
  d_.titles[0].delay = number_of("500");
  EXPECT_EQ(said(title_item(1, part::audio, 1), kind::sounds_until), "14.5")
      << "the picture comes later";
  facts_[native("\\a.ac3")] = known_sound(40, audio_kind::mpeg_layer_2);
  EXPECT_EQ(said(title_item(1), kind::length), "39.5") << "a title is as long as its last sound";
  EXPECT_EQ(said(title_item(1, part::audio, 1), kind::sounds_until), "20");
  EXPECT_EQ(said(title_item(1, part::audio, 1), kind::format), "MPEG audio");
}

std::shared_ptr<const file_facts> grouped_video(double seconds, std::uint64_t longest_group) {
  file_facts f = *video_of(seconds, 3);
  f.video->longest_group = video_group{{}, longest_group / 2, longest_group};
  f.video->unit_begins = {0, 0.5, 1, 1.75};
  return std::make_shared<const file_facts>(f);
}

TEST_F(ForeseenDisc, PicturesEndWithTheirStream) {
  EXPECT_EQ(said(title_item(1, part::video), kind::shows_until), "(nothing)");
  facts_[native("\\a.m2v")] = grouped_video(20, 30);
  EXPECT_EQ(said(title_item(1, part::video), kind::shows_until), "20");
  facts_[native("\\a.m2v")] = grouped_video(20, 200);
  EXPECT_EQ(said(title_item(1, part::video), kind::shows_until), "(nothing)")
      << "the disc's stamps may be further apart than what is missing";
}

TEST_F(ForeseenDisc, ChaptersLandOnTheUnitsOfTheirVideo) {
  facts_[native("\\a.m2v")] = grouped_video(2, 30);
  d_.titles[0].chapters = {time_of("0"), time_of("0:00:01.2")};
  EXPECT_EQ(said(title_item(1, part::chapter, 1), kind::lands), "0");
  EXPECT_EQ(said(title_item(1, part::chapter, 2), kind::lands), "1");
  EXPECT_EQ(said(title_item(1, part::chapter, 3), kind::lands), "(nothing)");
  EXPECT_EQ(said(title_item(1), kind::unit), "0.75");
}

TEST_F(ForeseenDisc, AChapterRightBeforeTheEndMayBeLeftOut) {
  facts_[native("\\a.m2v")] = grouped_video(2, 30);
  d_.titles[0].chapters = {time_of("0"), time_of("0:00:01.97")};
  EXPECT_EQ(said(title_item(1, part::chapter, 1), kind::lands), "0");
  EXPECT_EQ(said(title_item(1, part::chapter, 2), kind::lands), "(nothing)");
}

TEST_F(ForeseenDisc, ChaptersOfAReadyFileLandOnItsUnits) {
  file_facts f;
  f.kind = file_kind::program_stream;
  f.whole = true;
  f.program.emplace();
  inner_stream video;
  video.kind = inner_kind::video;
  video.video = grouped_video(2, 30)->video;
  video.first = 90'000;
  f.program->streams = {video};
  f.program->begins_with_nav_pack = true;
  f.program->seconds = 2;
  f.program->unit_begins = {0, 0.6, 1.5};
  f.program->shown_until = 2;
  d_.titles[0].streams = {"\\ready.vob"};
  d_.titles[0].is_multiplexed_here = false;
  d_.titles[0].chapters = {time_of("0"), time_of("0:00:01.2")};
  const auto lands = [&] {
    facts_[native("\\ready.vob")] = std::make_shared<const file_facts>(f);
    return said(title_item(1, part::chapter, 2), kind::lands);
  };
  EXPECT_EQ(lands(), "1.5") << "not where an I picture without a NAV pack is";
  EXPECT_EQ(said(title_item(1), kind::unit), "0.9");
  f.program->begins_with_nav_pack = false;
  EXPECT_EQ(lands(), "(nothing)") << "dvdauthor leaves out what is before the first one";
  f.program->begins_with_nav_pack = true;
  f.program->clock_breaks.add({});
  EXPECT_EQ(lands(), "(nothing)") << "dvdauthor moves the times behind it";
  f.program->clock_breaks = {};
  f.program->unit_begins.clear();
  EXPECT_EQ(lands(), "(nothing)");
  f.program->unit_begins = {0, 0.6, 1.5};
  f.whole = false;
  EXPECT_EQ(lands(), "(nothing)");
  f.whole = true;
  d_.titles[0].further.emplace_back().streams = {"\\more.vob"};
  EXPECT_EQ(lands(), "(nothing)") << "its files come one behind the other";
}

TEST_F(ForeseenDisc, LanguagesAreThoseOfTheirTitleset) {
  d_.languages = {{disc_language::stream_kind::audio, {}, "EN", 1},
                  {disc_language::stream_kind::audio, {}, "de", 2}};
  EXPECT_EQ(said(title_item(1, part::audio, 1), kind::language), "en");
  d_.titles[1].titleset = 2;
  EXPECT_EQ(said(title_item(2, part::audio, 1), kind::language), "de");
  d_.languages.clear();
  EXPECT_EQ(said(title_item(1, part::audio, 1), kind::language), "none");
}

TEST_F(ForeseenDisc, CommandsLeadToPlaces) {
  EXPECT_EQ(leads("jump title 2 chapter 3"), "title 2 chapter 3");
  EXPECT_EQ(leads("jump title 2"), "title 2 chapter 1");
  EXPECT_EQ(leads("jump menu 1"), "menu 1");
  EXPECT_EQ(leads("jump titleset 1 menu"), "menu 1");
  EXPECT_EQ(leads("exit"), "stop");
  EXPECT_EQ(leads("jump title 9"), "(nothing)") << "another rule tells it";
  EXPECT_EQ(leads("if (g3 == 2) jump title 1"), "title 1 chapter 1");
  EXPECT_EQ(leads("g3 = 1; if (g2 == 1) jump title 2 chapter 3; else exit"),
            "title 2 chapter 3 or stop");
  EXPECT_EQ(leads("g3 = 1; jump vmgm menu 1"), "(nothing)")
      << "menus of the disc are not described";
  EXPECT_EQ(leads("g3 = 1; jump title 1; resume"), "(nothing)");
  EXPECT_EQ(leads("g3 = 1"), "(nothing)");
}

TEST_F(ForeseenDisc, BehindATitleWhoseTypedCommandMayNotLeadAnywhereTheDiscStops) {
  const auto then = [&](const std::string& command) {
    d_.titles[0].post = command_of(command);
    return said(title_item(1), kind::then);
  };
  EXPECT_EQ(then("if (g3 == 2) jump title 1"), "title 1 chapter 1 or stop");
  EXPECT_EQ(then("if (g3 == 2) jump title 1; else jump title 2"),
            "title 1 chapter 1 or title 2 chapter 1");
  EXPECT_EQ(then("g3 = 1; jump title 2"), "title 2 chapter 1");
  EXPECT_EQ(then("if (g3 == 2) break; jump title 2"), "title 2 chapter 1 or stop");
  d_.first_play = command_of("if (g3 == 2) jump title 1");
  EXPECT_EQ(said({}, kind::first_play), "title 1 chapter 1") << "there is nothing behind it";
}

TEST_F(ForeseenDisc, WithTheJumpTableTheMenuIsComeBackTo) {
  d_.jump_table = true;
  d_.menus.push_back(d_.menus[0]);
  d_.menus[1].buttons[0] = button("jump titleset 1 menu");
  EXPECT_EQ(said(menu_item(2, part::button, 1), kind::leads_to), "menu 2");
  d_.titles[0].post = command_of("call menu 2");
  EXPECT_EQ(said(title_item(1), kind::then), "menu 2");
}

TEST_F(ForeseenDisc, TitlesFollowEachOtherUnlessXmlSaysSo) {
  EXPECT_EQ(said(title_item(1), kind::then), "title 2 chapter 1");
  EXPECT_EQ(said(title_item(2), kind::then), "stop");
  EXPECT_EQ(said({}, kind::first_play), "menu 1");
  EXPECT_EQ(said(title_item(1), kind::then, true), "stop") << "dvdauthor puts an exit there";
  EXPECT_EQ(said({}, kind::first_play, true), "menu 1");
  d_.menus.clear();
  EXPECT_EQ(said({}, kind::first_play), "title 1 chapter 1");
}

TEST_F(ForeseenDisc, CommandsNameTheTitlesAndMenusOfTheirOwnTitleset) {
  disc_title third = d_.titles[1];
  third.titleset = d_.titles[1].titleset = 2;
  third.post = command_of("jump title 1");
  d_.titles.push_back(third);
  d_.menus.push_back(d_.menus[0]);
  d_.menus[1].titleset = 2;
  d_.menus[1].buttons[0] = button("jump title 2 chapter 4");
  EXPECT_EQ(said(title_item(3), kind::then, true), "title 2 chapter 1");
  EXPECT_EQ(said(menu_item(2, part::button, 1), kind::leads_to, true), "title 3 chapter 4");
  EXPECT_EQ(leads("jump title 2"), "(nothing)") << "its titleset has one title";
  EXPECT_EQ(leads("jump titleset 2 menu"), "menu 2");
  EXPECT_EQ(leads("jump titleset 2 title 2"), "title 3 chapter 1");
  d_.first_play = command_of("jump titleset 2 title 1");
  EXPECT_EQ(said({}, kind::first_play, true), "title 2 chapter 1");
  d_.first_play = command_of("jump title 3");
  EXPECT_EQ(said({}, kind::first_play, true), "title 3 chapter 1");
  d_.titles[0].post = command_of("call menu");
  d_.titles[1].post = command_of("call menu");
  EXPECT_EQ(said(title_item(1), kind::then, true), "menu 1");
  EXPECT_EQ(said(title_item(2), kind::then, true), "menu 2");
}

TEST_F(ForeseenDisc, WhatCellsLeaveOfATitleIsNotForeseen) {
  EXPECT_EQ(said(title_item(1), kind::length), "20");
  d_.titles[0].has_cells = true;
  EXPECT_EQ(said(title_item(1), kind::length), "(nothing)") << "cells may leave parts out";
  EXPECT_EQ(said(title_item(1, part::audio, 1), kind::sounds_until), "(nothing)");
  EXPECT_EQ(said(title_item(1, part::audio, 1), kind::format), "AC-3");
  EXPECT_EQ(said({}, kind::titles), "2");
  d_.titles[1].chapters_text = "0|1";
  EXPECT_EQ(chapters_asked(d_), (std::vector<std::string>{unknown_chapters, unknown_chapters}));
}

TEST_F(ForeseenDisc, WaysPastAJumpPadAreNotForeseen) {
  d_.has_jump_pad = true;
  EXPECT_EQ(said(menu_item(1, part::button, 1), kind::leads_to, true), "(nothing)");
  EXPECT_EQ(said(title_item(1), kind::then, true), "(nothing)");
  EXPECT_EQ(said({}, kind::first_play, true), "(nothing)");
}

TEST_F(ForeseenDisc, ProportionsOfEditedXmlAreItsOwn) {
  EXPECT_EQ(said(title_item(1, part::video), kind::aspect), "16:9");
  EXPECT_EQ(said(title_item(1, part::video), kind::aspect, true), "(nothing)");
  EXPECT_EQ(said(title_item(1, part::video), kind::size, true), "720x576");
  d_.titles[0].aspect = "4:3";
  EXPECT_EQ(said(title_item(1, part::video), kind::aspect, true), "4:3");
  d_.titles[0].aspect = "2.21:1";
  EXPECT_EQ(said(title_item(1, part::video), kind::aspect, true), "(nothing)");
  d_.menus[0].aspect = "16:9";
  EXPECT_EQ(said(menu_item(1, part::video), kind::aspect, true), "16:9");
}

TEST_F(ForeseenDisc, PausesOfEditedXmlAreThoseThatItStates) {
  const auto pauses = [this](const std::string& pause) {
    d_.titles[0].pause = d_.menus[0].pause = pause;
    return said(title_item(1), kind::stays, true) + "; " + said(menu_item(1), kind::stays, true);
  };
  EXPECT_EQ(pauses(""), "(nothing); (nothing)");
  EXPECT_EQ(pauses("7"), "7 s; 7 s");
  EXPECT_EQ(pauses("inf"), "for ever; for ever");
  EXPECT_EQ(pauses("0"), "(nothing); 0 s");
  EXPECT_EQ(pauses("300"), "(nothing); (nothing)") << "dvdauthor makes 44 of it";
}

// Titles of several files -------------------------------------------------------------------------

class JoinedTitle : public ForeseenDisc {
 protected:
  JoinedTitle() {
    facts_[native("\\a.m2v")] = units_of(20);
    facts_[native("\\b.m2v")] = units_of(10);
    facts_[native("\\a.ac3")] = known_sound(20.5);
    facts_[native("\\b.ac3")] = known_sound(9);
    d_.titles[0].further.push_back(static_cast<const title_file&>(d_.titles[1]));
    d_.titles[0].subtitles.emplace_back();
    list(d_.titles[0], "0:05");
  }

  /// A unit each half second.
  static std::shared_ptr<const file_facts> units_of(double seconds) {
    file_facts f = *grouped_video(seconds, 30);
    f.video->unit_begins.clear();
    for (double at = 0; at < seconds; at += 0.5)
      f.video->unit_begins.push_back(at);
    return std::make_shared<const file_facts>(f);
  }

  static void list(title_file& file, const std::string& chapters) {
    file.chapters_text = chapters;
    file.chapters = {time_of(chapters)};
  }

  std::string lands() const {
    std::string all;
    for (int chapter = 1;; ++chapter) {
      const std::string at = said(title_item(1, part::chapter, chapter), kind::lands, true);
      if (at == "(nothing)")
        return all;
      all += at + " ";
    }
  }
};

TEST_F(JoinedTitle, IsAsLongAsItsFiles) {
  EXPECT_EQ(said(title_item(1), kind::length, true), "30.5");
  EXPECT_EQ(said(title_item(1), kind::audio_streams, true), "1");
  EXPECT_EQ(said(title_item(1), kind::subtitles, true), "1");
  EXPECT_EQ(said(title_item(1, part::audio, 1), kind::format, true), "AC-3");
  EXPECT_EQ(said(title_item(1, part::audio, 1), kind::sounds_until, true), "28.5")
      << "what comes behind the first file's last stamp is not known";
  EXPECT_EQ(said(title_item(1, part::video), kind::shows_until, true), "(nothing)");
  facts_[native("\\b.ac3")] = known_sound(9, audio_kind::mpeg_layer_2);
  EXPECT_EQ(said(title_item(1), kind::audio_streams, true), "(nothing)");
  EXPECT_EQ(said(title_item(1, part::audio, 1), kind::sounds_until, true), "(nothing)");
  facts_.erase(native("\\b.m2v"));
  EXPECT_EQ(said(title_item(1), kind::length, true), "(nothing)");
}

TEST_F(JoinedTitle, HasTheChaptersOfEachFile) {
  EXPECT_EQ(lands(), "0 5 20.5 ") << "a file without a list has a chapter at its beginning";
  EXPECT_EQ(chapters_asked(d_).front(), "0:05|");
  list(d_.titles[0].further[0], "0:02.3");
  EXPECT_EQ(lands(), "0 5 23 ") << "and one with a list has only those";
  EXPECT_EQ(said(title_item(1), kind::unit, true), "0.5");
  EXPECT_EQ(chapters_asked(d_).front(), "0:05|0:02.3");
  list(d_.titles[0].further[0], "0:11");
  EXPECT_EQ(lands(), "0 5 ") << "it ends before";
  d_.titles[0].further[0].has_cells = true;
  EXPECT_EQ(lands(), "");
  EXPECT_EQ(chapters_asked(d_).front(), unknown_chapters);
}

// Commands of edited XML --------------------------------------------------------------------------

class XmlWays : public ForeseenDisc {
 protected:
  XmlWays() {
    d_.menus[0].buttons[0] = button("jump title 1");
    d_.menus.push_back(d_.menus[0]);
  }

  std::string first() const { return said({}, kind::first_play, true); }
  std::string pressed() const { return said(menu_item(1, part::button, 1), kind::leads_to, true); }
};

TEST_F(XmlWays, GoThroughWhatTitlesAndMenusBeginWith) {
  EXPECT_EQ(pressed(), "title 1 chapter 1");
  d_.titles[0].pre = command_of("if (g1 == 1) jump title 2");
  EXPECT_EQ(pressed(), "title 2 chapter 1 or title 1 chapter 1");
  EXPECT_EQ(said(title_item(1), kind::before, true), "title 2 chapter 1 or goes on");
  d_.titles[0].pre = command_of("{ g1 = 2; call menu; }");
  EXPECT_EQ(pressed(), "menu 1");
  d_.menus[0].pre = command_of("jump menu 2");
  EXPECT_EQ(pressed(), "menu 2");
  EXPECT_EQ(said(menu_item(1), kind::before, true), "menu 2");
  d_.menus[1].pre = command_of("jump menu 1");
  EXPECT_EQ(pressed(), "(nothing)") << "round and round";
  d_.menus[1].pre = command_of("resume");
  EXPECT_EQ(pressed(), "(nothing)");
  d_.menus[0].pre = command_of("");
  EXPECT_EQ(pressed(), "menu 1");
  EXPECT_EQ(said(menu_item(1), kind::before, true), "(nothing)");
}

TEST_F(XmlWays, EndWhereNothingFollows) {
  EXPECT_EQ(said(title_item(1), kind::then, true), "stop");
  EXPECT_EQ(said(menu_item(1), kind::then, true), "(nothing)");
  d_.titles[0].post = command_of("g1 = 2");
  EXPECT_EQ(said(title_item(1), kind::then, true), "stop");
  d_.menus[0].post = command_of("if (g1 == 2) jump title 2");
  EXPECT_EQ(said(menu_item(1), kind::then, true), "title 2 chapter 1 or goes on");
  d_.menus[0].buttons[0] = button("g3 = 1; jump title 2");
  EXPECT_EQ(said(menu_item(1), kind::then, true), "(nothing)")
      << "dvdauthor puts the button's commands there";
  d_.titles[0].cell_commands = {command_of("g1 = 2"), command_of("jump title 2")};
  EXPECT_EQ(said(title_item(1, part::command, 1), kind::then, true), "goes on");
  EXPECT_EQ(said(title_item(1, part::command, 2), kind::then, true), "title 2 chapter 1");
}

TEST_F(XmlWays, FindMenusByTheirEntries) {
  d_.first_play = command_of("jump titleset 1 menu");
  EXPECT_EQ(first(), "menu 1");
  d_.menus[1].entries = {"root", "subtitle"};
  EXPECT_EQ(first(), "menu 2");
  EXPECT_EQ(said(menu_item(2), kind::entries, true), "root, subtitle");
  EXPECT_EQ(said(menu_item(1), kind::entries, true), "(nothing)");
  d_.first_play = command_of("jump titleset 1 menu entry ptt");
  EXPECT_EQ(first(), "menu 1");
  d_.first_play = command_of("jump titleset 1 menu entry audio");
  EXPECT_EQ(first(), "(nothing)");
  d_.first_play = command_of("");
  EXPECT_EQ(first(), "menu 2");
}

TEST_F(XmlWays, LeadThroughMenusOfTheWholeDisc) {
  const finding_item disc_menu_1{whole::disc_menu, 1, part::whole, 0};
  EXPECT_EQ(said({}, kind::disc_menus), "0");
  d_.disc_menus = {d_.menus[0], d_.menus[0]};
  for (disc_menu& menu : d_.disc_menus)
    menu.titleset = 0;
  d_.disc_menus[0].buttons[0] = button("jump menu 2");
  d_.disc_menus[1].buttons[0] = button("jump titleset 1 menu");
  EXPECT_EQ(said({}, kind::disc_menus, true), "2");
  EXPECT_EQ(said({}, kind::menus, true), "2");
  EXPECT_EQ(first(), "disc menu 1");
  EXPECT_EQ(said(part_of(disc_menu_1, part::button, 1), kind::leads_to, true), "disc menu 2");
  d_.disc_menus[1].files.clear();
  EXPECT_EQ(said({}, kind::disc_menus, true), "1") << "one without a picture only leads on";
  EXPECT_EQ(said(part_of(disc_menu_1, part::button, 1), kind::leads_to, true), "stop");
  d_.disc_menus[1].post = command_of("jump titleset 1 menu");
  EXPECT_EQ(said(part_of(disc_menu_1, part::button, 1), kind::leads_to, true), "menu 1");
  d_.disc_menus[1].entries = {"title"};
  d_.titles[0].post = command_of("call vmgm menu");
  EXPECT_EQ(said(title_item(1), kind::then, true), "menu 1");
  d_.menus[0].language = 1;
  EXPECT_EQ(said({}, kind::menus, true), "1");
}

TEST_F(ForeseenDisc, ButtonsStandWhereTheyWerePlaced) {
  EXPECT_EQ(said(menu_item(1), kind::buttons), "1");
  EXPECT_EQ(said(menu_item(1, part::button, 1), kind::edges), "10,20 to 109,59");
  for (const char* const none : {"10.5", "-10", "99999999999", "1e300"}) {
    d_.menus[0].buttons[0].x0 = number_of(none);
    EXPECT_EQ(said(menu_item(1, part::button, 1), kind::edges), "(nothing)") << none;
  }
  EXPECT_EQ(said(menu_item(1), kind::stays), "for ever");
  d_.menus[0].loop = true;
  EXPECT_EQ(said(menu_item(1), kind::stays), "5 s");
  EXPECT_EQ(said(menu_item(1), kind::stays, true), "(nothing)") << "edited XML may say others";
}

TEST_F(ForeseenDisc, StreamsOfAReadyFileAreThoseInside) {
  file_facts f;
  f.kind = file_kind::program_stream;
  f.whole = true;
  f.program.emplace();
  inner_stream sound;
  sound.kind = inner_kind::ac3;
  sound.audio = known_sound(9)->audio;
  f.program->streams = {sound};
  d_.titles[0].streams = {"\\ready.vob"};
  d_.titles[0].is_multiplexed_here = false;
  facts_[native("\\ready.vob")] = std::make_shared<const file_facts>(f);
  EXPECT_EQ(said(title_item(1), kind::audio_streams), "1");
  EXPECT_EQ(said(title_item(1, part::audio, 1), kind::format), "AC-3");
  EXPECT_EQ(said(title_item(1), kind::subtitles), "(nothing)") << "it may have some of its own";
}

/// A ready file of so many seconds of video, and of a sound of this kind.
std::shared_ptr<const file_facts> ready_of(double seconds, inner_kind sound_kind, double of_sound) {
  file_facts f;
  f.kind = file_kind::program_stream;
  f.whole = true;
  f.program.emplace();
  inner_stream video, sound;
  video.kind = inner_kind::video;
  video.video = video_of(seconds, 3)->video;
  video.first = sound.first = 90'000;
  sound.kind = sound_kind;
  sound.length = static_cast<stream_time>(of_sound * stamps_a_second);
  if (sound_kind == inner_kind::ac3)
    sound.audio = known_sound(of_sound)->audio;
  f.program->streams = {video, sound};
  f.program->begins_with_nav_pack = true;
  f.program->seconds = seconds;
  return std::make_shared<const file_facts>(f);
}

TEST_F(ForeseenDisc, LpcmAndDtsAreForeseenByTheirPackets) {
  d_.titles[0].streams = {"\\ready.vob"};
  d_.titles[0].is_multiplexed_here = false;
  for (const auto& [what, format] :
       {std::pair(inner_kind::lpcm, "LPCM"), {inner_kind::dts, "DTS"}}) {
    facts_[native("\\ready.vob")] = ready_of(10, what, 12);
    EXPECT_EQ(said(title_item(1), kind::length), "12");
    EXPECT_EQ(said(title_item(1), kind::audio_streams), "1");
    EXPECT_EQ(said(title_item(1, part::audio, 1), kind::format), format);
    EXPECT_EQ(said(title_item(1, part::audio, 1), kind::sounds_until), "10");
  }
  file_facts mixed = *ready_of(10, inner_kind::lpcm, 12);
  mixed.program->streams.push_back(ready_of(10, inner_kind::ac3, 13)->program->streams[1]);
  facts_[native("\\ready.vob")] = std::make_shared<const file_facts>(mixed);
  EXPECT_EQ(said(title_item(1), kind::length), "13");
  EXPECT_EQ(said(title_item(1), kind::audio_streams), "(nothing)") << "their order is not known";
}

TEST_F(ForeseenDisc, FilesOfAReadyTitleFollowEachOther) {
  d_.titles[0].streams = {"\\one.vob"};
  d_.titles[0].is_multiplexed_here = false;
  d_.titles[0].further.emplace_back().streams = {"\\two.vob"};
  d_.titles[0].further[0].is_multiplexed_here = false;
  const auto length = [&](double of_first_sound, double of_second_sound) {
    facts_[native("\\one.vob")] = ready_of(10, inner_kind::ac3, of_first_sound);
    facts_[native("\\two.vob")] = ready_of(5, inner_kind::ac3, of_second_sound);
    return said(title_item(1), kind::length);
  };
  EXPECT_EQ(length(10, 5), "15");
  EXPECT_EQ(length(10, 6), "16");
  EXPECT_EQ(length(11, 5), "(nothing)") << "what follows the first file is not known";
  file_facts broken = *ready_of(5, inner_kind::ac3, 5);
  broken.program->clock_breaks.add({});
  length(10, 5);
  facts_[native("\\two.vob")] = std::make_shared<const file_facts>(broken);
  EXPECT_EQ(said(title_item(1), kind::length), "(nothing)");
}

TEST_F(ForeseenDisc, AReadyFileEndsByItsOwnStamps) {
  file_facts f;
  f.kind = file_kind::program_stream;
  f.whole = true;
  f.program.emplace();
  inner_stream video, sound;
  video.kind = inner_kind::video;
  video.video = grouped_video(20, 30)->video;
  video.first = 90'000;
  sound.kind = inner_kind::ac3;
  sound.audio = known_sound(9)->audio;
  sound.first = 180'000;
  sound.length = 900'000;
  f.program->streams = {video, sound};
  f.program->begins_with_nav_pack = true;
  f.program->seconds = 19.5;
  d_.titles[0].streams = {"\\ready.vob"};
  d_.titles[0].is_multiplexed_here = false;
  const auto length = [&](double of_video, double of_sound) {
    f.program->streams[0].video->seconds = of_video;
    f.program->seconds = of_video - 0.5;
    f.program->streams[1].audio = known_sound(of_sound)->audio;
    facts_[native("\\ready.vob")] = std::make_shared<const file_facts>(f);
    return said(title_item(1), kind::length);
  };
  EXPECT_EQ(length(10, 9), "11") << "its sound begins a second late, and lacks one";
  EXPECT_EQ(length(10, 10.5), "11.5");
  EXPECT_EQ(length(20, 9), "20");
  const auto with = [&](const char* name) {
    facts_[native("\\ready.vob")] = std::make_shared<const file_facts>(f);
    return std::string(name) == "sound" ? said(title_item(1, part::audio, 1), kind::sounds_until)
                                        : said(title_item(1, part::video), kind::shows_until);
  };
  EXPECT_EQ(with("sound"), "11");
  f.program->streams[0].first = stamp_turn - 45'000;
  f.program->streams[1].first = 45'000;
  EXPECT_EQ(with("sound"), "11") << "stamps begin again between the two";
  EXPECT_EQ(with("video"), "20");
  EXPECT_EQ(said(title_item(1), kind::breaks), "(nothing)");
  f.program->seconds = 3;
  EXPECT_EQ(with("video"), "(nothing)") << "few of its pictures have stamps";
  f.program->streams[1].breaks.add({});
  EXPECT_EQ(with("sound"), "(nothing)");
  EXPECT_EQ(said(title_item(1), kind::breaks), "1");
  EXPECT_EQ(length(10, 9), "(nothing)");
  f.program->clock_breaks.add({});
  facts_[native("\\ready2.vob")] = std::make_shared<const file_facts>(f);
  d_.titles[0].further.emplace_back().streams = {"\\ready2.vob"};
  EXPECT_EQ(said(title_item(1), kind::breaks), "3") << "of all its files";
}

}  // namespace
}  // namespace corvane
