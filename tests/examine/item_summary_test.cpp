// What is told of a title or menu in the main window: from facts of its files, without them, and
// gathered from files.
#include "examine/item_summary.h"

#include "made_audio.h"
#include "made_facts.h"
#include "platform/files/paths.h"
#include "support/small_streams.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace corvane {
namespace {

using namespace examine_test;
using testing::Contains;
using testing::HasSubstr;
using testing::Not;
using whole = finding_item::whole_kind;

std::string native(const std::string& stored) {
  return native_from_stored(stored, native_style());
}

/// Of a file of which only the beginning was read.
std::shared_ptr<const file_facts> beginning_of(const std::shared_ptr<const file_facts>& known,
                                               std::uint64_t size) {
  file_facts f = *known;
  f.whole = false;
  f.size = size;
  if (f.video)
    f.video->whole = false;
  return std::make_shared<const file_facts>(f);
}

class ItemSummary : public ::testing::Test {
 protected:
  ItemSummary() {
    for (const char* const name : {"a", "b", "c"}) {
      disc_title t;
      t.streams = {std::string("\\") + name + ".m2v", std::string("\\") + name + ".ac3"};
      t.is_multiplexed_here = true;
      t.delay = number_of("0");
      d_.titles.push_back(t);
    }
    disc_menu m;
    m.files = {"\\m.m2v", ""};
    d_.menus = {m, m};
    known_.files = {{native("\\a.m2v"), file_of(ntsc_video())},
                    {native("\\a.ac3"), file_of(sound(audio_kind::ac3))},
                    {native("\\m.m2v"), file_of(ntsc_video())}};
  }

  void label(disc_language::stream_kind kind, const std::string& language,
             const std::string& code) {
    d_.languages.push_back({kind, "tag:\t" + language + " " + code + " ", code, 1});
  }
  void add_button(const std::string& command) {
    disc_button b;
    b.action = command_of(command);
    d_.menus[0].buttons.push_back(b);
  }

  static std::string line(const item_summary& all, const std::string& name) {
    for (const summary_line& line : all.lines)
      if (line.name == name)
        return line.text;
    return "(nothing)";
  }
  std::string of_title(const std::string& name, int title = 1) const {
    return line(title_summary(d_, title, known_, hand_edited_), name);
  }
  /// Without the size behind it.
  std::string length_of_title(int title = 1) const {
    const std::string text = of_title("length", title);
    return text.substr(0, text.rfind(", "));
  }
  std::string of_menu(const std::string& name) const {
    return line(menu_summary(d_, 1, known_, hand_edited_), name);
  }
  std::string after(const std::string& command) {
    d_.titles[0].post = command_of(command);
    return of_title("then");
  }

  disc_description d_;
  known_material known_;
  bool hand_edited_ = false;
};

TEST_F(ItemSummary, TitleTellsLengthSizePictureSoundAndWhatFollows) {
  label(disc_language::stream_kind::audio, "ENGLISH", "EN");
  d_.titles[0].chapters = {time_of("00:00:00.00"), time_of("00:00:08.00")};
  const item_summary all = title_summary(d_, 1, known_, false);
  EXPECT_EQ(all.heading, "title 1");
  EXPECT_EQ(all.video, native("\\a.m2v"));
  const std::vector<summary_line> lines = {{"length", "24 s, 577 kB"},
                                           {"picture", "720x480, NTSC, 4:3"},
                                           {"audio", "English, AC-3, 48 kHz, 2 channels, 192 kb/s"},
                                           {"chapters", "2"},
                                           {"then", "title 2"}};
  EXPECT_EQ(all.lines, lines);
}

TEST_F(ItemSummary, LengthsAreMinutesOrHours) {
  const auto of_seconds = [this](double seconds) {
    video_facts video = ntsc_video();
    video.seconds = seconds;
    known_.files[native("\\a.m2v")] = file_of(video);
    return length_of_title();
  };
  EXPECT_EQ(of_seconds(59.96), "1:00 min");
  EXPECT_EQ(of_seconds(754.2), "12:34 min");
  EXPECT_EQ(of_seconds(3599.7), "1:00:00 h");
  EXPECT_EQ(of_seconds(5023), "1:23:43 h");
}

TEST_F(ItemSummary, TitleIsAsLongAsItsLastSound) {
  audio_facts longer = sound(audio_kind::ac3);
  longer.length = 90 * audio_clock;
  known_.files[native("\\a.ac3")] = file_of(longer);
  EXPECT_EQ(length_of_title(), "1:30 min");
  d_.titles[0].delay = number_of("-30000");
  EXPECT_EQ(length_of_title(), "2:00 min") << "the sound comes later";
  EXPECT_EQ(of_title("A/V delay"), "-30000 ms");
}

TEST_F(ItemSummary, DelayIsToldOnlyWhenThereIsOne) {
  EXPECT_EQ(of_title("A/V delay"), "(nothing)");
  d_.titles[0].delay = number_of("120");
  EXPECT_EQ(of_title("A/V delay"), "120 ms");
}

TEST_F(ItemSummary, PictureOfPalAndOfWideScreen) {
  video_facts video = pal_video();
  video.shape->aspect_width = 16;
  video.shape->aspect_height = 9;
  video.average_rate = 4'500'000;
  known_.files[native("\\a.m2v")] = file_of(video);
  EXPECT_EQ(of_title("picture"), "720x576, PAL, 16:9, 4.5 Mb/s on average");
  video.shape->width = 640;
  video.shape->mpeg2 = false;
  video.standard = video_standard::other;
  video.whole = false;
  known_.files[native("\\a.m2v")] = file_of(video);
  EXPECT_EQ(of_title("picture"), "640x576, neither NTSC nor PAL, 16:9, MPEG-1");
}

TEST_F(ItemSummary, PictureOfTheWidestScreenAsItsHeadersSay) {
  const testing_support::temporary_folder folder;
  const std::string file =
      folder.add("wide.m2v", testing_support::small_video(video_standard::pal, 4));
  d_.titles[0].streams = {stored_from_native(file)};
  known_.files[file] = std::make_shared<const file_facts>(read_file_head(file));
  EXPECT_THAT(of_title("picture"), HasSubstr("PAL, 2.21:1"));
}

TEST_F(ItemSummary, OfBeginningsTheLengthIsAnEstimate) {
  known_.files[native("\\a.m2v")] = beginning_of(file_of(ntsc_video()), 500'000'000);
  known_.files[native("\\a.ac3")] = beginning_of(file_of(sound(audio_kind::ac3)), 17'600'000);
  EXPECT_EQ(of_title("length"), "about 12 min, 517.6 MB") << "by the sound, which has one rate";
  d_.titles[0].streams.pop_back();
  EXPECT_EQ(of_title("length"), "about 8:20 min, 500 MB") << "by the rate that the video states";
  video_facts varies = ntsc_video();
  varies.variable_bit_rate = true;
  known_.files[native("\\a.m2v")] = beginning_of(file_of(varies), 4'500'000'000);
  EXPECT_EQ(of_title("length"), "at least 1:15 h, 4.5 GB") << "a rate that varies is the highest";
}

TEST_F(ItemSummary, LengthOfAReadyFileIsKnownOnceItWasRead) {
  file_facts ready;
  ready.kind = file_kind::program_stream;
  ready.size = 1'250'000'000;
  ready.program.emplace();
  inner_stream video, first, second, subpicture;
  video.kind = inner_kind::video;
  video.video = ntsc_video();
  first.kind = inner_kind::ac3;
  first.audio = sound(audio_kind::ac3);
  second.kind = inner_kind::lpcm;
  second.lpcm = lpcm_format{96'000, 24, 2};
  subpicture.kind = inner_kind::subpicture;
  ready.program->streams = {video, first, second, subpicture, subpicture};
  d_.titles[0].streams = {"\\ready.vob"};
  d_.titles[0].is_multiplexed_here = false;
  const auto know = [&] {
    known_.files[native("\\ready.vob")] = std::make_shared<const file_facts>(ready);
  };
  know();
  label(disc_language::stream_kind::audio, "GERMAN", "DE");
  EXPECT_EQ(of_title("length"), "known after \"check project...\", which reads the file");
  EXPECT_EQ(of_title("size"), "1.25 GB");
  EXPECT_EQ(of_title("picture"), "720x480, NTSC, 4:3");
  EXPECT_EQ(of_title("audio 1"), "German, AC-3, 48 kHz, 2 channels, 192 kb/s");
  EXPECT_EQ(of_title("audio 2"), "LPCM, 96 kHz, 24 bits, 2 channels");
  EXPECT_EQ(of_title("subtitles"), "2 in the file");
  ready.whole = true;
  ready.program->seconds = 3600;
  ready.program->shown_until = 3601;
  know();
  EXPECT_EQ(of_title("length"), "1:00:01 h, 1.25 GB");
}

TEST_F(ItemSummary, EightSoundsEachHaveALine) {
  for (int i = 2; i <= 8; ++i)
    d_.titles[0].streams.push_back("\\a.ac3");
  audio_facts surround = sound(audio_kind::ac3);
  surround.first->channels = 6;
  surround.first->low_frequency = true;
  surround.bit_rate_varies = true;
  surround.highest_bit_rate = 448'000;
  known_.files[native("\\six.ac3")] = file_of(surround);
  d_.titles[0].streams[8] = "\\six.ac3";
  label(disc_language::stream_kind::audio, "ENGLISH", "EN");
  EXPECT_EQ(of_title("audio 1"), "English, AC-3, 48 kHz, 2 channels, 192 kb/s");
  EXPECT_EQ(of_title("audio 7"), "AC-3, 48 kHz, 2 channels, 192 kb/s");
  EXPECT_EQ(of_title("audio 8"), "AC-3, 48 kHz, 5.1 channels, up to 448 kb/s");
  EXPECT_EQ(of_title("audio 9"), "(nothing)");
}

TEST_F(ItemSummary, MoreSoundsAndButtonsThanADiscHoldsAreCounted) {
  d_.titles[0].streams.resize(5000, "\\a.ac3");
  const item_summary title = title_summary(d_, 1, known_, false);
  EXPECT_LT(title.lines.size(), 20u);
  EXPECT_THAT(title.lines,
              Contains(summary_line{"audio", "4991 more, which a disc has no room for"}));
  for (int i = 0; i < 5000; ++i)
    add_button("jump title 1");
  const std::string buttons = line(menu_summary(d_, 1, known_, false), "buttons");
  EXPECT_THAT(buttons, testing::StartsWith("5000: title 1; title 1;"));
  EXPECT_THAT(buttons, testing::EndsWith("; ..."));
  EXPECT_LT(buttons.size(), 500u);
}

TEST_F(ItemSummary, KindsOfSoundAreNamed) {
  const auto told = [this](const audio_facts& facts) {
    known_.files[native("\\a.ac3")] = file_of(facts);
    return of_title("audio");
  };
  EXPECT_EQ(told(sound(audio_kind::mpeg_layer_2)),
            "MPEG audio layer II, 48 kHz, 2 channels, 192 kb/s");
  audio_facts mono = sound(audio_kind::mpeg_layer_2);
  mono.first->channels = 1;
  mono.first->sample_rate = 44'100;
  EXPECT_EQ(told(mono), "MPEG audio layer II, 44.1 kHz, 1 channel, 192 kb/s");
  audio_facts foreign;
  foreign.kind = audio_kind::wav;
  EXPECT_THAT(told(foreign), HasSubstr("WAV"));
}

TEST_F(ItemSummary, TitleWithoutSoundSaysSo) {
  d_.titles[0].streams.pop_back();
  EXPECT_EQ(of_title("audio"), "none");
}

TEST_F(ItemSummary, MissingAndUnreadableFilesAreToldInWords) {
  EXPECT_EQ(of_title("picture", 2), "the file b.m2v has not been looked at yet");
  EXPECT_EQ(of_title("audio", 2), "the file b.ac3 has not been looked at yet");
  EXPECT_EQ(of_title("length", 2), "(nothing)");
  EXPECT_EQ(of_title("size", 2), "(nothing)");
  known_.missing = {native("\\b.m2v")};
  EXPECT_EQ(of_title("picture", 2), "the file b.m2v is missing");
  file_facts unreadable;
  unreadable.why_unreadable = "Permission denied";
  known_.files[native("\\b.ac3")] = std::make_shared<const file_facts>(unreadable);
  EXPECT_EQ(of_title("audio", 2), "the file b.ac3 cannot be read: Permission denied");
  file_facts empty;
  empty.kind = file_kind::empty;
  known_.files[native("\\b.ac3")] = std::make_shared<const file_facts>(empty);
  EXPECT_EQ(of_title("audio", 2), "the file b.ac3 is empty");
  known_.files[native("\\b.ac3")] = file_of(ntsc_video());
  EXPECT_EQ(of_title("audio", 2), "the file b.ac3 is a video");
}

TEST_F(ItemSummary, SubtitlesHaveLanguageFileAndTexts) {
  label(disc_language::stream_kind::subpicture, "GERMAN", "DE");
  disc_subtitle german, french, gone;
  german.file = "\\films\\garden.de.srt";
  french.file = "\\films\\garden.fr.srt";
  gone.file = "\\gone.srt";
  d_.titles[0].subtitles = {german};
  EXPECT_EQ(of_title("subtitles"), "German, garden.de.srt") << "not counted yet";
  known_.texts[native("\\films\\garden.de.srt")] = 34;
  EXPECT_EQ(of_title("subtitles"), "German, garden.de.srt, 34 texts");
  known_.texts[native("\\films\\garden.fr.srt")] = std::nullopt;
  known_.missing = {native("\\gone.srt")};
  d_.titles[0].subtitles = {german, french, gone};
  EXPECT_EQ(of_title("subtitles 1"), "German, garden.de.srt, 34 texts");
  EXPECT_EQ(of_title("subtitles 2"), "garden.fr.srt");
  EXPECT_EQ(of_title("subtitles 3"), "the file gone.srt is missing");
}

TEST_F(ItemSummary, MoreSubtitlesThanADiscHoldsAreCounted) {
  d_.titles[0].subtitles.resize(40);
  EXPECT_EQ(of_title("subtitles"), "8 more, which a disc has no room for");
}

TEST_F(ItemSummary, ChaptersAreCounted) {
  EXPECT_EQ(of_title("chapters"), "none but the beginning");
  for (int i = 0; i < 99; ++i)
    d_.titles[0].chapters.push_back(
        time_of("00:" + std::to_string(i / 60) + ":" + std::to_string(i % 60)));
  EXPECT_EQ(of_title("chapters"), "99");
  d_.titles[0].chapters = {time_of("00:00:05"), time_of(""), time_of("what")};
  EXPECT_EQ(of_title("chapters"), "2") << "the beginning is one";
}

TEST_F(ItemSummary, WhatFollowsIsToldInWords) {
  EXPECT_EQ(of_title("then"), "title 2");
  EXPECT_EQ(of_title("then", 3), "the disc stops");
  EXPECT_EQ(after("call menu"), "the menu");
  EXPECT_EQ(after("call menu 2"), "menu 2");
  EXPECT_EQ(after("call last menu"), "the menu shown last");
  EXPECT_EQ(after("jump title 3 chapter 2"), "title 3, chapter 2");
  EXPECT_EQ(after("jump title 9"), "title 9 (there is none)");
  EXPECT_EQ(after("g1 = 3; exit"), "g1 = 3; exit");
}

TEST_F(ItemSummary, EditedXmlSaysItself) {
  label(disc_language::stream_kind::audio, "ENGLISH", "EN");
  add_button("jump title 1");
  hand_edited_ = true;
  EXPECT_EQ(of_title("edited XML"),
            "it says which chapters and languages there are, and what follows");
  EXPECT_EQ(of_title("then"), "(nothing)");
  EXPECT_EQ(of_title("chapters"), "(nothing)");
  EXPECT_EQ(of_title("audio"), "AC-3, 48 kHz, 2 channels, 192 kb/s");
  EXPECT_EQ(of_menu("buttons"), "1");
  EXPECT_EQ(of_menu("edited XML"), "it says what the buttons do");
}

TEST_F(ItemSummary, MenuTellsItsKindSoundAndButtons) {
  EXPECT_EQ(of_menu("length"), "24 s, 1 kB");
  EXPECT_EQ(of_menu("kind"), "plays and stays until a button is chosen");
  EXPECT_EQ(of_menu("audio"), "none");
  EXPECT_EQ(of_menu("buttons"), "none");
  for (const char* const command : {"jump title 1", "jump title 2 chapter 3", "jump menu 2", ""})
    add_button(command);
  EXPECT_EQ(of_menu("buttons"), "4: title 1; title 2, chapter 3; menu 2; nothing");
  d_.menus[0].loop = true;
  d_.menus[0].files[1] = "\\a.ac3";
  d_.menus[0].spu_begin = time_of("00:00:02.5");
  d_.menus[0].spu_end = time_of("00:01:20");
  EXPECT_EQ(of_menu("kind"), "plays again and again, with a pause of five seconds");
  EXPECT_EQ(of_menu("audio"), "AC-3, 48 kHz, 2 channels, 192 kb/s");
  EXPECT_EQ(of_menu("buttons come"), "after 2.5 s");
  EXPECT_EQ(of_menu("buttons go"), "after 1:20 min");
}

TEST_F(ItemSummary, StillMenuIsCalledSo) {
  video_facts still = ntsc_video();
  still.pictures = 1;
  known_.files[native("\\m.m2v")] = file_of(still);
  EXPECT_EQ(of_menu("kind"), "a still picture, shown until a button is chosen");
  EXPECT_EQ(of_menu("length"), "(nothing)");
  EXPECT_EQ(of_menu("size"), "1 kB");
}

TEST_F(ItemSummary, MenuWithoutItsVideoDoesNotPlay) {
  for (const bool loop : {false, true}) {
    d_.menus[0].loop = loop;
    known_.files.erase(native("\\m.m2v"));
    known_.missing = {native("\\m.m2v")};
    EXPECT_EQ(of_menu("kind"), "not known: the video is missing");
    EXPECT_EQ(of_menu("picture"), "the file m.m2v is missing");
    known_.missing.clear();
    EXPECT_EQ(of_menu("kind"), "not known: the file m.m2v has not been looked at yet");
    known_.files[native("\\m.m2v")] = file_of(sound(audio_kind::ac3));
    EXPECT_EQ(of_menu("kind"), "not known: the file m.m2v is sound");
  }
  d_.menus[0].files = {"", ""};
  EXPECT_EQ(of_menu("kind"), "not known: there is no video");
}

TEST_F(ItemSummary, ListsShowMenusWithTheirFileAndButtons) {
  d_.menus[0].files[0] = "\\films\\intro.m2v";
  EXPECT_EQ(menu_line(d_, 1), "menu 1: intro.m2v, no buttons");
  add_button("jump title 1");
  EXPECT_EQ(menu_line(d_, 1), "menu 1: intro.m2v, 1 button");
  add_button("jump title 2");
  EXPECT_EQ(menu_line(d_, 1), "menu 1: intro.m2v, 2 buttons");
}

// From files --------------------------------------------------------------------------------------

class SummaryLook : public ::testing::Test {
 protected:
  SummaryLook() {
    disc_title t;
    t.is_multiplexed_here = true;
    t.streams = {folder_.stored("a.m2v"), folder_.stored("a.mp2")};
    disc_subtitle subtitle;
    subtitle.file = folder_.stored("a.srt");
    subtitle.settings = std::make_shared<subtitle_settings>(default_subtitle_settings("NTSC"));
    t.subtitles = {subtitle};
    d_.titles = {t};
    disc_menu m;
    m.files = {folder_.stored("m.m2v"), ""};
    d_.menus = {m};
  }
  known_material looked(finding_item item) {
    summary_look look(d_, item, store_, counts_);
    steps_ = 0;
    while (!look.is_done()) {
      look.step();
      ++steps_;
    }
    return look.known();
  }
  std::string native_path(const std::string& name) const { return folder_.path(name); }

  testing_support::temporary_folder folder_;
  disc_description d_;
  fact_store store_;
  text_counts counts_;
  int steps_ = 0;
};

TEST_F(SummaryLook, GathersBeginningsAndTextsOnce) {
  folder_.add("a.mp2", times(100, mpeg_frame({})));
  folder_.add("a.srt",
              "1\n00:00:01,000 --> 00:00:02,000\none\n\n2\n00:00:03,000 --> 00:00:04,000\ntwo\n");
  known_material known = looked({whole::title, 1});
  EXPECT_EQ(steps_, 2);
  EXPECT_TRUE(known.missing.contains(native_path("a.m2v")));
  ASSERT_TRUE(known.files.contains(native_path("a.mp2")));
  EXPECT_EQ(known.files[native_path("a.mp2")]->kind, file_kind::audio);
  EXPECT_EQ(known.texts[native_path("a.srt")], 2u);
  known = looked({whole::title, 1});
  EXPECT_EQ(steps_, 0) << "nothing has changed";
  EXPECT_EQ(known.texts[native_path("a.srt")], 2u);
  folder_.add("a.srt", "1\n00:00:01,000 --> 00:00:02,000\nonly one now\n");
  EXPECT_EQ(looked({whole::title, 1}).texts[native_path("a.srt")], 1u);
  EXPECT_EQ(steps_, 1);
}

TEST_F(SummaryLook, ReadsNoMoreThanTheBeginningOfAFile) {
  folder_.add("a.mp2", times(20'000, mpeg_frame({})));
  const known_material known = looked({whole::title, 1});
  const file_facts& sound = *known.files.at(native_path("a.mp2"));
  EXPECT_FALSE(sound.whole);
  EXPECT_GT(sound.size, 1'000'000u);
  EXPECT_LT(sound.audio->bytes, 100'000u);
}

TEST_F(SummaryLook, AFileThatIsNamedOftenIsLookedAtOnce) {
  folder_.add("a.ac3", "no sound");
  d_.titles[0].streams.assign(5000, folder_.stored("a.ac3"));
  d_.titles[0].subtitles.clear();
  summary_look look(d_, {whole::title, 1}, store_, counts_);
  EXPECT_FALSE(look.step());
  EXPECT_TRUE(look.is_done());
}

TEST_F(SummaryLook, OfAnotherTextNothingIsCounted) {
  folder_.add("a.srt", "no subtitles at all\n");
  const known_material known = looked({whole::title, 1});
  EXPECT_EQ(known.texts.at(native_path("a.srt")), std::nullopt);
  EXPECT_EQ(title_summary(d_, 1, known, false).lines[2].text, "a.srt");
}

TEST_F(SummaryLook, MenusHaveTheirVideoAndPerhapsSound) {
  EXPECT_TRUE(looked({whole::menu, 1}).missing.contains(native_path("m.m2v")));
  EXPECT_TRUE(looked({whole::menu, 2}).missing.empty()) << "there is no such menu";
  EXPECT_TRUE(looked({}).missing.empty());
}

}  // namespace
}  // namespace corvane
