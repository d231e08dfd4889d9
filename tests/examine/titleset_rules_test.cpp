// What the titles of a titleset must share, and the menus; files that are not there.
#include "examine/titleset_rules.h"

#include "made_facts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace corvane {
namespace {

using namespace examine_test;
using testing::ElementsAre;
using testing::IsEmpty;

// A disc whose files are in one table: "1.m2v" is the video of title 1.
class TitlesetRules : public ::testing::Test {
 protected:
  TitlesetRules() {
    d.standard = video_standard::ntsc;
    d.standard_text = "NTSC";
  }

  void add_title(const video_facts& video, const std::vector<audio_facts>& sounds) {
    disc_title t;
    t.is_multiplexed_here = true;
    const std::string name = std::to_string(d.titles.size() + 1);
    t.streams.push_back(name + ".m2v");
    facts[name + ".m2v"] = file_of(video);
    for (const audio_facts& one : sounds) {
      t.streams.push_back(name + "-" + std::to_string(t.streams.size()) + ".ac3");
      facts[t.streams.back()] = file_of(one);
    }
    d.titles.push_back(t);
  }

  void add_ready_title(const file_facts& file) {
    disc_title t;
    t.streams.push_back(std::to_string(d.titles.size() + 1) + ".vob");
    facts[t.streams.back()] = std::make_shared<const file_facts>(file);
    d.titles.push_back(t);
  }

  void add_menu(const video_facts& video, const audio_facts& audio) {
    const std::string name = "menu" + std::to_string(d.menus.size() + 1);
    disc_menu m;
    m.files = {name + ".m2v", name + ".ac3"};
    facts[m.files[0]] = file_of(video);
    facts[m.files[1]] = file_of(audio);
    d.menus.push_back(m);
  }

  // "rule at place" of each finding.
  std::vector<std::string> found() const {
    std::vector<std::string> texts;
    for (const finding& f : stream_findings(d, facts))
      texts.push_back(f.rule + " at " + place_text(f));
    return texts;
  }

  disc_description d;
  facts_by_path facts;
};

video_facts wide() {
  video_facts v = ntsc_video();
  v.shape->aspect_code = 3;
  v.shape->aspect_width = 16;
  v.shape->aspect_height = 9;
  return v;
}

const audio_facts ac3 = sound(audio_kind::ac3);
const audio_facts mp2 = sound(audio_kind::mpeg_layer_2);

TEST_F(TitlesetRules, AlikeTitlesAndMenusHaveNoFinding) {
  add_title(ntsc_video(), {ac3, mp2});
  add_title(ntsc_video(), {ac3, mp2});
  add_menu(ntsc_video(), mp2);
  add_menu(ntsc_video(), mp2);
  EXPECT_THAT(found(), IsEmpty());
}

TEST_F(TitlesetRules, SecondTitleWithOtherSoundIsNamedByStream) {
  add_title(ntsc_video(), {ac3});
  add_title(ntsc_video(), {mp2});
  EXPECT_THAT(found(), ElementsAre("titleset-audio-kind at title 2, audio 1"));
  EXPECT_EQ(stream_findings(d, facts)[0].found,
            "the sound is MPEG audio layer II, that of title 1 AC-3");
}

TEST_F(TitlesetRules, WideTitleBesideANarrowOne) {
  add_title(ntsc_video(), {ac3});
  add_title(wide(), {ac3});
  EXPECT_THAT(found(), ElementsAre("titleset-aspect at title 2, video"));
}

TEST_F(TitlesetRules, WideTitleInATitlesetOfItsOwnIsRight) {
  add_title(ntsc_video(), {ac3});
  add_title(wide(), {ac3});
  d.titles[1].titleset = 2;
  EXPECT_THAT(found(), IsEmpty());
}

TEST_F(TitlesetRules, OtherSizeAndCodingThanTheFirstTitle) {
  add_title(ntsc_video(), {ac3});
  video_facts small = ntsc_video();
  small.shape = video_shape{352, 240, 30000, 1001, 12, 4, 3, false, false};
  small.peak_rate = 1e6;
  small.vbv_bytes = 40'000;
  add_title(small, {ac3});
  EXPECT_THAT(found(),
              ElementsAre("titleset-size at title 2, video", "titleset-coding at title 2, video"));
}

TEST_F(TitlesetRules, OtherChannelsThanTheFirstTitleAreANote) {
  const auto with_channels = [](audio_facts a, int channels) {
    a.first->channels = channels;
    return a;
  };
  add_title(ntsc_video(), {with_channels(ac3, 2), with_channels(mp2, 2)});
  add_title(ntsc_video(), {with_channels(ac3, 6), with_channels(mp2, 1)});
  ASSERT_THAT(found(), ElementsAre("titleset-audio-channels at title 2, audio 1"))
      << "of MPEG audio the tables say two channels, whatever it has";
  EXPECT_EQ(stream_findings(d, facts)[0].found,
            "the sound has 6 channels, that of title 1 2 channels");
  EXPECT_EQ(stream_findings(d, facts)[0].severity, finding_severity::note);
  d.titles[1].titleset = 2;
  EXPECT_THAT(found(), IsEmpty());
}

TEST_F(TitlesetRules, FewerSoundStreamsThanTheFirstTitle) {
  add_title(ntsc_video(), {ac3, ac3});
  add_title(ntsc_video(), {ac3});
  EXPECT_THAT(found(), ElementsAre("titleset-audio-count at title 2"));
}

TEST_F(TitlesetRules, MenusOfDifferentProportionsAndSound) {
  add_title(ntsc_video(), {ac3});
  add_menu(ntsc_video(), mp2);
  add_menu(wide(), ac3);
  EXPECT_THAT(found(),
              ElementsAre("menus-video at menu 2, video", "menus-audio-kind at menu 2, audio"));
}

TEST_F(TitlesetRules, MissingAndEmptyFilesAreNamed) {
  add_title(ntsc_video(), {ac3});
  file_facts gone;
  gone.why_unreadable = "No such file or directory";
  facts["1.m2v"] = std::make_shared<const file_facts>(gone);
  file_facts empty;
  empty.kind = file_kind::empty;
  facts["1-1.ac3"] = std::make_shared<const file_facts>(empty);
  EXPECT_THAT(found(),
              ElementsAre("file-missing at title 1, video", "file-empty at title 1, audio 1"));
  EXPECT_EQ(stream_findings(d, facts)[0].found,
            "the file cannot be read: No such file or directory");
}

TEST_F(TitlesetRules, FilesThatWereNotReadHaveNoFinding) {
  add_title(pal_video(), {ac3});
  facts.clear();
  EXPECT_THAT(found(), IsEmpty());
}

TEST_F(TitlesetRules, SoundIsComparedWithTheLengthOfItsPicture) {
  audio_facts half = ac3;
  half.length = 12 * audio_clock;
  add_title(ntsc_video(), {half});
  EXPECT_THAT(found(), ElementsAre("audio-short at title 1, audio 1, 00:00:12"));
}

TEST_F(TitlesetRules, SoundFileThatIsVideoIsNoSound) {
  add_title(ntsc_video(), {ac3});
  facts["1-1.ac3"] = file_of(ntsc_video());
  EXPECT_THAT(found(), ElementsAre("audio-kind at title 1, audio 1"));
}

file_facts ready(bool with_nav, const std::optional<video_facts>& video, audio_kind kind) {
  file_facts f;
  f.kind = file_kind::program_stream;
  f.whole = true;
  f.size = 2048;
  f.program.emplace();
  f.program->nav_packs = with_nav ? 48 : 0;
  if (with_nav)
    f.program->first_nav_pack = 0;
  if (video) {
    inner_stream one;
    one.kind = inner_kind::video;
    one.video = video;
    f.program->streams.push_back(one);
  }
  inner_stream heard;
  heard.kind = kind == audio_kind::ac3 ? inner_kind::ac3 : inner_kind::mpeg_audio;
  heard.audio = sound(kind);
  if (video)
    heard.audio->length = static_cast<audio_time>(video->seconds * audio_clock);
  f.program->streams.push_back(heard);
  return f;
}

TEST_F(TitlesetRules, CleanReadyTitleHasNoFinding) {
  add_ready_title(ready(true, ntsc_video(), audio_kind::ac3));
  EXPECT_THAT(found(), IsEmpty());
}

TEST_F(TitlesetRules, ReadyTitleOfTheOtherStandard) {
  add_ready_title(ready(true, pal_video(), audio_kind::ac3));
  EXPECT_THAT(found(), ElementsAre("video-standard at title 1, video"));
}

TEST_F(TitlesetRules, ReadyTitleWithoutNavPacksOrVideo) {
  add_ready_title(ready(false, std::nullopt, audio_kind::ac3));
  EXPECT_THAT(found(),
              ElementsAre("ready-without-nav-packs at title 1", "ready-without-video at title 1"));
}

TEST_F(TitlesetRules, ReadyTitleIsComparedWithOneThatIsMultiplexed) {
  add_title(ntsc_video(), {ac3});
  add_ready_title(ready(true, wide(), audio_kind::mpeg_layer_2));
  EXPECT_THAT(found(), ElementsAre("titleset-aspect at title 2, video",
                                   "titleset-audio-kind at title 2, audio 1"));
}

TEST_F(TitlesetRules, ElementaryVideoAsReadyTitle) {
  file_facts video;
  video.kind = file_kind::video;
  video.video = ntsc_video();
  add_ready_title(video);
  EXPECT_THAT(found(), ElementsAre("ready-not-program-stream at title 1"));
}

inner_stream inner_sound(inner_kind kind, int number = 0) {
  inner_stream one;
  one.kind = kind;
  one.number = number;
  if (kind == inner_kind::lpcm)
    one.lpcm = lpcm_format{48'000, 16, 2};
  else if (kind != inner_kind::dts)
    one.audio = sound(kind == inner_kind::ac3 ? audio_kind::ac3 : audio_kind::mpeg_layer_2);
  return one;
}

// A ready file with these sound streams.
file_facts ready_with(const std::vector<inner_stream>& sounds) {
  file_facts f = ready(true, ntsc_video(), audio_kind::ac3);
  f.program->streams.resize(1);
  for (const inner_stream& one : sounds)
    f.program->streams.push_back(one);
  return f;
}

TEST_F(TitlesetRules, LpcmAndDtsAreComparedWithOtherSound) {
  add_title(ntsc_video(), {ac3});
  add_ready_title(ready_with({inner_sound(inner_kind::lpcm)}));
  add_ready_title(ready_with({inner_sound(inner_kind::dts)}));
  ASSERT_THAT(found(), ElementsAre("audio-optional-kind at title 3, audio 1",
                                   "titleset-audio-kind at title 2, audio 1",
                                   "titleset-audio-kind at title 3, audio 1"));
  EXPECT_EQ(stream_findings(d, facts)[1].found, "the sound is LPCM, that of title 1 AC-3");
}

TEST_F(TitlesetRules, AnMp2TitleBesideALpcmTitle) {
  add_ready_title(ready_with({inner_sound(inner_kind::lpcm)}));
  add_title(ntsc_video(), {mp2});
  EXPECT_THAT(found(), ElementsAre("titleset-audio-kind at title 2, audio 1"));
}

TEST_F(TitlesetRules, LpcmOfOtherSamplesThanTheFirstTitle) {
  add_ready_title(ready_with({inner_sound(inner_kind::lpcm)}));
  inner_stream fine = inner_sound(inner_kind::lpcm);
  fine.lpcm = lpcm_format{48'000, 24, 2};
  add_ready_title(ready_with({fine}));
  ASSERT_THAT(found(), ElementsAre("titleset-audio-samples at title 2, audio 1"));
  EXPECT_EQ(stream_findings(d, facts)[0].found,
            "the sound is LPCM of 48 kHz, 24 bits, 2 channels, that of title 1 LPCM of 48 kHz, 16 "
            "bits, 2 channels");
}

// As ffmpeg numbers streams: each kind from 0.
TEST_F(TitlesetRules, TwoKindsOfOneNumberAreTwoStreams) {
  const auto both = ready_with({inner_sound(inner_kind::mpeg_audio), inner_sound(inner_kind::ac3)});
  add_ready_title(both);
  add_ready_title(both);
  EXPECT_THAT(found(), IsEmpty());
  add_ready_title(ready_with({inner_sound(inner_kind::ac3)}));
  EXPECT_THAT(found(), ElementsAre("titleset-audio-count at title 3"));
}

TEST_F(TitlesetRules, SoundOfAnotherNumberIsAnotherStream) {
  add_ready_title(ready_with({inner_sound(inner_kind::ac3)}));
  add_ready_title(ready_with({inner_sound(inner_kind::ac3, 1)}));
  ASSERT_THAT(found(), ElementsAre("titleset-audio-number at title 2"));
  EXPECT_EQ(stream_findings(d, facts)[0].found,
            "its sound has the number 2 inside, that of title 1 1");
}

TEST_F(TitlesetRules, SoundInsideIsComparedWithTheLengthOfItsPicture) {
  file_facts f = ready(true, ntsc_video(), audio_kind::ac3);
  f.program->streams[1].audio->length = 12 * audio_clock;
  add_ready_title(f);
  EXPECT_THAT(found(), ElementsAre("audio-short at title 1, audio 1, 00:00:12"));
}

TEST_F(TitlesetRules, PictureAndSoundInsideAreTooManyBits) {
  file_facts f = ready_with({inner_sound(inner_kind::lpcm)});
  f.program->streams[0].video->peak_rate = 11e6;
  f.program->streams[1].length = 24 * stamps_a_second;
  add_ready_title(f);
  EXPECT_THAT(found(), ElementsAre("video-high-rate at title 1, video, 00:00:00",
                                   "total-rate at title 1, 00:00:00"));
}

// As edited XML may have them.
TEST_F(TitlesetRules, EachFileOfATitleIsExamined) {
  add_ready_title(ready(true, ntsc_video(), audio_kind::ac3));
  const auto add_file = [this](const std::string& name, const file_facts& file) {
    d.titles[0].further.emplace_back().streams = {name};
    facts[name] = std::make_shared<const file_facts>(file);
  };
  add_file("alike.vob", ready(true, ntsc_video(), audio_kind::ac3));
  EXPECT_THAT(found(), IsEmpty());
  add_file("wide.vob", ready(true, wide(), audio_kind::ac3));
  add_file("bare.vob", ready(false, ntsc_video(), audio_kind::ac3));
  add_file("pal.vob", ready(true, pal_video(), audio_kind::mpeg_layer_2));
  file_facts gone;
  gone.why_unreadable = "No such file or directory";
  add_file("gone.vob", gone);
  ASSERT_THAT(
      found(),
      ElementsAre("ready-without-nav-packs at title 1", "video-standard at title 1, video",
                  "file-missing at title 1", "titleset-aspect at title 1, video",
                  "titleset-size at title 1, video", "titleset-audio-kind at title 1, audio 1"));
  const auto findings = stream_findings(d, facts);
  EXPECT_EQ(findings[3].file, "wide.vob");
  EXPECT_EQ(findings[3].found, "the picture is 16:9, that of its first file 4:3");
}

TEST_F(TitlesetRules, BrokenClockOfAReadyTitleHasItsPlace) {
  file_facts f = ready(true, ntsc_video(), audio_kind::ac3);
  f.program->clock_breaks.add({4096, 0, 0, 12 * clocks_a_second});
  add_ready_title(f);
  EXPECT_THAT(found(), ElementsAre("ready-clock at title 1, 00:00:12"));
}

}  // namespace
}  // namespace corvane
