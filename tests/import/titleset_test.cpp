#include "import/titleset.h"

#include "made_source.h"
#include "platform/files/paths.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using import_test::made_source;
using import_test::made_video;

file_facts video_file(int width, int height, int aspect_width, bool mpeg2 = true) {
  file_facts f;
  f.kind = file_kind::video;
  f.video.emplace();
  f.video->shape = video_shape{.width = width,
                               .height = height,
                               .aspect_width = aspect_width,
                               .aspect_height = 3,
                               .mpeg2 = mpeg2};
  return f;
}

file_facts sound_file(audio_kind kind, int channels) {
  file_facts f;
  f.kind = file_kind::audio;
  f.audio.emplace();
  f.audio->kind = kind;
  f.audio->first = audio_frame{.kind = kind, .channels = channels};
  return f;
}

struct made_project {
  disc_description d;
  facts_by_path facts;

  explicit made_project(video_standard standard = video_standard::pal) { d.standard = standard; }

  made_project& title(std::vector<std::string> streams, bool multiplexed = true) {
    disc_title t;
    t.streams = std::move(streams);
    t.is_multiplexed_here = multiplexed;
    d.titles.push_back(t);
    return *this;
  }
  made_project& file(const std::string& name, file_facts f) {
    facts[native_from_stored(name)] = std::make_shared<file_facts>(std::move(f));
    return *this;
  }
  made_project& tag(disc_language::stream_kind kind, const std::string& code) {
    d.languages.push_back({kind, "", code, 1});
    return *this;
  }
  titleset_demands demands() const { return demands_of(d, facts); }
};

constexpr auto audio = disc_language::stream_kind::audio;
constexpr auto subpicture = disc_language::stream_kind::subpicture;

TEST(Titleset, OfAnEmptyProjectAsksForNothing) {
  EXPECT_EQ(made_project().demands(), titleset_demands{});
}

TEST(Titleset, MenusAloneAskForTheirStandard) {
  made_project p;
  p.d.menus.emplace_back();
  EXPECT_EQ(p.demands().standard, video_standard::pal);
  EXPECT_FALSE(p.demands().aspect);
}

TEST(Titleset, AsksForWhatTheFirstTitleHas) {
  const titleset_demands demands = made_project()
                                       .title({"c:\\a.m2v", "c:\\a.ac3", "c:\\a.mp2"})
                                       .title({"c:\\b.m2v"})
                                       .file("c:\\a.m2v", video_file(720, 576, 16))
                                       .file("c:\\b.m2v", video_file(352, 288, 4))
                                       .file("c:\\a.ac3", sound_file(audio_kind::ac3, 6))
                                       .file("c:\\a.mp2", sound_file(audio_kind::mpeg_layer_2, 2))
                                       .tag(audio, "DE")
                                       .tag(subpicture, "FR")
                                       .tag(audio, "IW")
                                       .demands();
  EXPECT_EQ(demands.standard, video_standard::pal);
  EXPECT_EQ(demands.size, (picture_size{720, 576}));
  EXPECT_EQ(demands.aspect, disc_aspect::sixteen_nine);
  EXPECT_EQ(demands.sounds,
            (std::vector<titleset_sound>{{disc_sound::ac3, 6, "de"}, {disc_sound::mp2, 2, "he"}}));
  EXPECT_EQ(demands.subtitle_languages, std::vector<std::string>{"fr"});
  EXPECT_EQ(demands.problem, "");
}

TEST(Titleset, OfAReadyFirstTitleAsksForWhatIsInside) {
  file_facts ready;
  ready.kind = file_kind::program_stream;
  ready.program.emplace();
  inner_stream video, lpcm, sound;
  video.kind = inner_kind::video;
  lpcm.kind = inner_kind::lpcm;
  sound.kind = inner_kind::ac3;
  video.video = video_file(704, 480, 4).video;
  sound.audio = sound_file(audio_kind::ac3, 2).audio;
  ready.program->streams = {video, sound, lpcm};
  const titleset_demands demands = made_project(video_standard::ntsc)
                                       .title({"c:\\a.vob"}, false)
                                       .file("c:\\a.vob", ready)
                                       .demands();
  EXPECT_EQ(demands.size, (picture_size{704, 480}));
  EXPECT_EQ(demands.aspect, disc_aspect::four_three);
  ASSERT_TRUE(demands.sounds);
  ASSERT_EQ(demands.sounds->size(), 2u);
  EXPECT_EQ((*demands.sounds)[0], (titleset_sound{disc_sound::ac3, 2, ""}));
  EXPECT_EQ((*demands.sounds)[1].kind, disc_sound::other);
}

TEST(Titleset, AFirstTitleThatCannotBeReadAsksForItsStreamsAlone) {
  const titleset_demands demands = made_project().title({"c:\\gone.m2v", "c:\\gone.ac3"}).demands();
  EXPECT_FALSE(demands.size || demands.aspect);
  EXPECT_EQ(demands.sounds, (std::vector<titleset_sound>{{disc_sound::ac3, 0, ""}}));
  EXPECT_FALSE(made_project().title({"c:\\gone.vob"}, false).demands().sounds);
}

TEST(Titleset, OfMpeg1TakesNothingThatIsEncoded) {
  const titleset_demands demands = made_project()
                                       .title({"c:\\a.m1v"})
                                       .file("c:\\a.m1v", video_file(352, 288, 4, false))
                                       .demands();
  EXPECT_EQ(demands.problem,
            "the first title's video is MPEG-1, which all titles of the disc would have to be");
}

TEST(Titleset, TheRateDecidesTheStandard) {
  const auto decided = [](source_ratio rate, bool variable = false) {
    source_stream video = made_video(640, 480, rate);
    video.video.variable_rate = variable;
    const source_facts file = made_source(video);
    const video_standard a = standard_for(file, video_standard::ntsc);
    return a == standard_for(file, video_standard::pal) ? a : video_standard::other;
  };
  for (const source_ratio rate : {source_ratio{25, 1}, {50, 1}, {100, 1}, {25, 2}})
    EXPECT_EQ(decided(rate), video_standard::pal) << rate.value();
  for (const source_ratio rate : {source_ratio{24, 1},
                                  {24000, 1001},
                                  {30, 1},
                                  {30000, 1001},
                                  {60, 1},
                                  {60000, 1001},
                                  {15, 1},
                                  {120, 1},
                                  {48, 1}})
    EXPECT_EQ(decided(rate), video_standard::ntsc) << rate.value();
  EXPECT_EQ(decided({297, 10}, true), video_standard::ntsc);
  EXPECT_EQ(decided({253, 10}, true), video_standard::pal);
  // Of neither, of both, or none at all.
  for (const source_ratio rate : {source_ratio{18, 1}, {27, 1}, {150, 1}, {0, 1}})
    EXPECT_EQ(decided(rate), video_standard::other) << rate.value();
}

TEST(Titleset, WhatIsOpenTheFirstFileDecides) {
  const source_facts wide = made_source(made_video(1920, 1080, {50, 1}));
  const titleset_demands demands = decided_by(wide, {}, video_standard::ntsc);
  EXPECT_EQ(demands.standard, video_standard::pal);
  EXPECT_EQ(demands.aspect, disc_aspect::sixteen_nine);
  titleset_demands settled;
  settled.standard = video_standard::ntsc;
  settled.aspect = disc_aspect::four_three;
  EXPECT_EQ(decided_by(wide, settled, video_standard::pal), settled);
}

TEST(Titleset, TheVideoThatIsToBeShownIsTheTitles) {
  source_stream second = made_video(640, 480, {25, 1});
  source_facts file = made_source(import_test::made_sound("aac"), second, second);
  EXPECT_EQ(video_of(file)->index, 1);
  file.streams[2].is_default = true;
  EXPECT_EQ(video_of(file)->index, 2);
  EXPECT_EQ(video_of(made_source()), nullptr);
}

}  // namespace
}  // namespace corvane
