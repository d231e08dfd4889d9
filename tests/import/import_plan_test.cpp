#include "import/import_plan.h"

#include "made_source.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using import_test::made_disc_video;
using import_test::made_sound;
using import_test::made_source;
using import_test::made_text;
using import_test::made_video;

constexpr source_ratio rate_ntsc{30000, 1001};

import_plan planned(const source_facts& file, const titleset_demands& demands = {},
                    const import_choices& choices = {}) {
  return import_plan_for(file, {}, demands, choices, video_standard::ntsc);
}

titleset_demands demands_for(video_standard standard, disc_aspect aspect,
                             std::vector<titleset_sound> sounds = {}) {
  titleset_demands d;
  d.standard = standard;
  d.aspect = aspect;
  d.sounds = std::move(sounds);
  return d;
}

picture_work work_of(const source_stream& video, video_standard standard,
                     const import_choices& choices = {}) {
  titleset_demands d;
  d.standard = standard;
  return planned(made_source(video), d, choices).video.work;
}

// Video
// ---------------------------------------------------------------------------------------------

TEST(ImportPlan, VideoThatADiscTakesIsCopied) {
  for (const bool pal : {false, true}) {
    const import_plan plan = planned(made_source(made_disc_video(pal)));
    EXPECT_EQ(plan.video.fate, stream_fate::copied);
    EXPECT_EQ(plan.streams.at(0).reason, "MPEG-2 that a disc takes as it is");
    EXPECT_EQ(plan.demands.standard, pal ? video_standard::pal : video_standard::ntsc);
  }
}

TEST(ImportPlan, EachSizeOfADiscIsCopied) {
  for (const picture_size size : {picture_size{720, 480}, {704, 480}, {352, 480}, {352, 240}}) {
    source_stream video = made_disc_video();
    video.video.width = size.width;
    video.video.height = size.height;
    video.video.pixel_aspect =
        source_ratio{std::int64_t{4} * size.height, std::int64_t{3} * size.width};
    EXPECT_EQ(planned(made_source(video)).video.fate, stream_fate::copied) << size.width;
  }
}

struct not_copied {
  const char* name;
  void (*change)(source_stream&);
  const char* why;
};

class NotCopied : public testing::TestWithParam<not_copied> {};

TEST_P(NotCopied, ForThisReason) {
  source_stream video = made_disc_video();
  GetParam().change(video);
  const titleset_demands d = demands_for(video_standard::ntsc, disc_aspect::four_three);
  EXPECT_EQ(why_not_copied(video, d), GetParam().why);
  const import_plan plan = planned(made_source(video), d);
  EXPECT_EQ(plan.video.fate, stream_fate::encoded);
  EXPECT_TRUE(plan.streams.at(0).reason.starts_with(std::string(GetParam().why) + "; "));
}

INSTANTIATE_TEST_SUITE_P(
    ImportPlan, NotCopied,
    testing::Values(
        not_copied{"Codec", [](source_stream& v) { v.codec = "h264"; }, "it is H.264"},
        not_copied{"Mpeg1", [](source_stream& v) { v.codec = "mpeg1video"; }, "it is MPEG-1"},
        not_copied{"Chroma", [](source_stream& v) { v.video.pixels = "yuv422p"; },
                   "its colours are stored in another way than a disc's (4:2:0)"},
        not_copied{"Profile", [](source_stream& v) { v.profile = "High"; },
                   "its profile is High, a disc's Main"},
        not_copied{"Turned", [](source_stream& v) { v.video.turned = 90; }, "it is to be turned"},
        not_copied{"Size", [](source_stream& v) { v.video.width = 480; },
                   "its size, 480x480, is none that a disc of NTSC takes"},
        not_copied{"Standard", [](source_stream& v) { v.video.height = 576; },
                   "its size, 720x576, is none that a disc of NTSC takes"},
        not_copied{"Rate",
                   [](source_stream& v) {
                     v.video.rate = {25, 1};
                   },
                   "it has 25 pictures a second, a disc of NTSC 29.97"},
        not_copied{"Rate30",
                   [](source_stream& v) {
                     v.video.rate = {30, 1};
                   },
                   "it has 30 pictures a second, a disc of NTSC 29.97"},
        not_copied{"Wide",
                   [](source_stream& v) {
                     v.video.pixel_aspect = {32, 27};
                   },
                   "its picture is not 4:3"},
        not_copied{"Square",
                   [](source_stream& v) {
                     v.video.pixel_aspect = {1, 1};
                   },
                   "its picture is not 4:3"},
        not_copied{"BitRate", [](source_stream& v) { v.bit_rate = 9'800'001; },
                   "it has more than the 9.8 Mb/s of a disc"}),
    [](const testing::TestParamInfo<not_copied>& tested) { return tested.param.name; });

TEST(ImportPlan, OfAnotherSizeThanTheFirstTitleIsEncodedInIts) {
  titleset_demands d = demands_for(video_standard::ntsc, disc_aspect::four_three);
  d.size = picture_size{704, 480};
  const import_plan plan = planned(made_source(made_disc_video()), d);
  EXPECT_EQ(plan.video.fate, stream_fate::encoded);
  EXPECT_EQ(plan.video.work.geometry.disc, (picture_size{704, 480}));
  d.size = picture_size{720, 480};
  EXPECT_EQ(planned(made_source(made_disc_video()), d).video.fate, stream_fate::copied);
}

TEST(ImportPlan, FilmOnAnNtscDiscIsCopiedAndFinished) {
  source_stream video = made_disc_video();
  video.video.rate = {24000, 1001};
  const import_plan plan = planned(made_source(video));
  EXPECT_EQ(plan.video.fate, stream_fate::copied);
  EXPECT_TRUE(plan.video.may_need_pulldown);
  EXPECT_FALSE(planned(made_source(made_disc_video())).video.may_need_pulldown);
  video.video.rate = {27, 1};  // a mean: some pictures have repeated fields
  video.video.variable_rate = true;
  EXPECT_EQ(planned(made_source(video)).video.fate, stream_fate::copied);
}

TEST(ImportPlan, RatesThatFitStayWholePictures) {
  for (const source_ratio rate : {source_ratio{30, 1}, rate_ntsc, {15, 1}, {10, 1}})
    EXPECT_EQ(work_of(made_video(640, 480, rate), video_standard::ntsc).motion,
              picture_motion::progressive)
        << rate.value();
  for (const source_ratio rate : {source_ratio{25, 1}, {25, 2}, {5, 1}})
    EXPECT_EQ(work_of(made_video(640, 480, rate), video_standard::pal).motion,
              picture_motion::progressive)
        << rate.value();
}

TEST(ImportPlan, OtherRatesBecomeFields) {
  for (const source_ratio rate : {source_ratio{50, 1}, {60, 1}, {25, 1}, {18, 1}}) {
    const picture_work work = work_of(made_video(640, 480, rate), video_standard::ntsc);
    EXPECT_EQ(work.motion, picture_motion::made_fields) << rate.value();
    EXPECT_EQ(work.rate, rate_ntsc);
    EXPECT_TRUE(work.has_fields());
  }
  for (const source_ratio rate : {source_ratio{50, 1}, {60, 1}, {30, 1}, {24, 1}})
    EXPECT_EQ(work_of(made_video(640, 480, rate), video_standard::pal).motion,
              picture_motion::made_fields)
        << rate.value();
}

TEST(ImportPlan, FilmBecomesNtscByPulldown) {
  for (const source_ratio rate : {source_ratio{24, 1}, {24000, 1001}}) {
    const picture_work work = work_of(made_video(1920, 1080, rate), video_standard::ntsc);
    EXPECT_EQ(work.motion, picture_motion::film);
    EXPECT_EQ(work.rate, rate);
    EXPECT_EQ(work.group(), 12);
  }
  source_stream uneven = made_video(640, 480, {24, 1});
  uneven.video.variable_rate = true;
  EXPECT_EQ(work_of(uneven, video_standard::ntsc).rate, (source_ratio{24000, 1001}));
}

TEST(ImportPlan, FilmBecomesPalBySpeedWhereThatIsChosen) {
  import_choices choices;
  choices.film_by_speed = true;
  source_facts file = made_source(made_video(1920, 1080, {24000, 1001}), made_sound("ac3"));
  file.chapters = {{0, 25.025, ""}, {25.025, 60, ""}, {70, 80, ""}};
  titleset_demands d;
  d.standard = video_standard::pal;
  const import_plan plan = planned(file, d, choices);
  EXPECT_EQ(plan.video.work.motion, picture_motion::progressive);
  EXPECT_EQ(plan.video.work.speed, (source_ratio{25025, 24000}));
  EXPECT_NEAR(plan.seconds, 57.5425, 1e-4);
  ASSERT_EQ(plan.chapters.size(), 2u);
  EXPECT_NEAR(plan.chapters[1], 24, 1e-9);
  EXPECT_EQ(plan.sound.streams.at(0).reason, "it is made faster with the picture");
  EXPECT_EQ(work_of(made_video(640, 480, {24, 1}), video_standard::pal, choices).speed,
            (source_ratio{25, 24}));
  EXPECT_EQ(work_of(made_video(640, 480, {24, 1}), video_standard::ntsc, choices).speed,
            (source_ratio{1, 1}));
}

TEST(ImportPlan, FieldsStayWhereNoLineIsMoved) {
  source_stream dv = made_video(720, 480, rate_ntsc, source_ratio{8, 9});
  dv.codec = "dvvideo";
  dv.video.fields = source_fields::bottom_first;
  const picture_work kept = work_of(dv, video_standard::ntsc);
  EXPECT_EQ(kept.motion, picture_motion::kept_fields);
  EXPECT_FALSE(kept.top_first);
  EXPECT_EQ(kept.deinterlace, deinterlacing::none);
  dv.video.pixel_aspect = source_ratio{10, 11};  // 8 pixels are cut at each side
  EXPECT_EQ(work_of(dv, video_standard::ntsc).motion, picture_motion::kept_fields);

  source_stream hd = made_video(1920, 1080, {25, 1});
  hd.video.fields = source_fields::top_first;
  const picture_work scaled = work_of(hd, video_standard::pal);
  EXPECT_EQ(scaled.motion, picture_motion::made_fields);
  EXPECT_EQ(scaled.deinterlace, deinterlacing::to_fields);
  import_choices whole;
  whole.deinterlace = true;
  EXPECT_EQ(work_of(hd, video_standard::pal, whole).motion, picture_motion::progressive);
  EXPECT_EQ(work_of(hd, video_standard::pal, whole).deinterlace, deinterlacing::to_pictures);
  dv.video.turned = 180;  // the other field is first then
  EXPECT_EQ(work_of(dv, video_standard::ntsc).motion, picture_motion::made_fields);
}

TEST(ImportPlan, TimesThatVaryMakeNoOtherRate) {
  source_stream phone = made_video(1920, 1080, {2957, 100});
  phone.video.variable_rate = true;
  EXPECT_EQ(work_of(phone, video_standard::ntsc).motion, picture_motion::progressive);
  phone.video.variable_rate = false;
  EXPECT_EQ(work_of(phone, video_standard::ntsc).motion, picture_motion::made_fields);
}

TEST(ImportPlan, ColoursAreTelevisionsOrThoseOfLargerPictures) {
  EXPECT_EQ(work_of(made_video(640, 480, {25, 1}), video_standard::pal).matrix, "smpte170m");
  EXPECT_EQ(work_of(made_video(1280, 720, {25, 1}), video_standard::pal).matrix, "bt709");
  // A phone's, held upright.
  EXPECT_EQ(work_of(made_video(360, 640, {25, 1}), video_standard::pal).matrix, "smpte170m");
  EXPECT_EQ(work_of(made_video(720, 1280, {25, 1}), video_standard::pal).matrix, "bt709");
  source_stream video = made_video(640, 480, {25, 1});
  video.video.pixels = "gbrp";
  EXPECT_EQ(work_of(video, video_standard::pal).matrix, "rgb");
  for (const char* const transfer : {"smpte2084", "arib-std-b67"}) {
    video = made_video(3840, 2160, {50, 1});
    video.video.colours = {"bt2020", transfer, "bt2020nc", false};
    const picture_work work = work_of(video, video_standard::pal);
    EXPECT_EQ(work.colours, colour_work::tone_map);
    EXPECT_EQ(work.matrix, "bt2020nc");
  }
}

TEST(ImportPlan, WhatBecomesOfVideoIsSaid) {
  source_stream video = made_video(1920, 800, {50, 1});
  video.video.turned = 180;
  const import_plan plan = planned(made_source(video));
  EXPECT_EQ(plan.streams.at(0).reason,
            "it is H.264; it becomes MPEG-2, 704x576, 16:9, turned as the file says, with black "
            "bars, interlaced, fields made of 50 pictures a second");
}

// Sound
// ---------------------------------------------------------------------------------------------

TEST(ImportPlan, SoundThatADiscTakesIsCopied) {
  const import_plan plan = planned(
      made_source(made_disc_video(), made_sound("ac3", 6, "eng"), made_sound("mp2", 2, "deu")));
  ASSERT_EQ(plan.sound.streams.size(), 2u);
  for (const sound_work& work : plan.sound.streams)
    EXPECT_EQ(work.fate, stream_fate::copied);
  EXPECT_EQ(plan.sound.streams[0].kind, disc_sound::ac3);
  EXPECT_EQ(plan.sound.streams[1].kind, disc_sound::mp2);
  EXPECT_EQ(plan.streams.at(1).reason, "AC-3 that a disc takes as it is");
  EXPECT_EQ(plan.sound_tags, (std::vector<std::string>{"en", "de"}));
}

TEST(ImportPlan, OtherSoundIsEncoded) {
  source_stream loud = made_sound("ac3");
  loud.bit_rate = 640'000;
  source_stream loud_mpeg = made_sound("mp2");
  loud_mpeg.bit_rate = 400'000;
  const import_plan plan = planned(made_source(made_disc_video(), made_sound("aac", 6),
                                               made_sound("ac3", 2, "", 44100), loud, loud_mpeg));
  const std::vector<std::string> reasons = {"it is AAC", "it has 44.1 kHz, a disc 48 kHz",
                                            "it has 640 kb/s, a disc at most 448 kb/s",
                                            "it has 400 kb/s, a disc at most 384 kb/s"};
  ASSERT_EQ(plan.sound.streams.size(), 4u);
  for (std::size_t i = 0; i < reasons.size(); ++i) {
    EXPECT_EQ(plan.sound.streams[i].fate, stream_fate::encoded);
    EXPECT_EQ(plan.sound.streams[i].reason, reasons[i]);
  }
  EXPECT_EQ(plan.streams.at(1).reason, "it is AAC; it becomes AC-3, 5.1, 448 kb/s");
  EXPECT_EQ(plan.streams.at(4).reason,
            "it has 400 kb/s, a disc at most 384 kb/s; it becomes MPEG audio layer II, stereo, "
            "224 kb/s");
}

TEST(ImportPlan, SoundFollowsTheFirstTitle) {
  const titleset_demands d = demands_for(video_standard::ntsc, disc_aspect::four_three,
                                         {{disc_sound::mp2, 2, "de"}, {disc_sound::ac3, 6, "en"}});
  const import_plan plan =
      planned(made_source(made_disc_video(), made_sound("ac3", 2, "eng"),
                          made_sound("ac3", 6, "fra"), made_sound("aac", 6, "ger")),
              d);
  ASSERT_EQ(plan.sound.streams.size(), 2u);
  EXPECT_EQ(plan.sound.streams[0].stream, 3);
  EXPECT_EQ(plan.sound.streams[0].kind, disc_sound::mp2);
  EXPECT_EQ(plan.sound.streams[0].channels, 2);
  EXPECT_EQ(plan.sound.streams[1].stream, 1);
  EXPECT_EQ(plan.sound.streams[1].fate, stream_fate::copied);
  EXPECT_EQ(plan.sound.beyond, std::vector<int>{2});
  EXPECT_EQ(plan.streams.at(2).fate, stream_fate::left_out);
  EXPECT_EQ(plan.streams.at(2).reason, "the first title has no such sound stream");
  import_choices more;
  more.more_sounds = true;
  EXPECT_EQ(planned(made_source(made_disc_video(), made_sound("ac3"), made_sound("ac3"),
                                made_sound("ac3")),
                    d, more)
                .sound.streams.size(),
            3u);
}

TEST(ImportPlan, TheFirstSoundIsRepeatedWhereTheDiscHasMore) {
  const titleset_demands d = demands_for(video_standard::ntsc, disc_aspect::four_three,
                                         {{disc_sound::ac3, 2, "de"}, {disc_sound::ac3, 2, "en"}});
  const import_plan plan = planned(made_source(made_disc_video(), made_sound("ac3", 2, "en")), d);
  ASSERT_EQ(plan.sound.streams.size(), 2u);
  EXPECT_EQ(plan.sound.streams[0].stream, 1);
  EXPECT_EQ(plan.sound.streams[1].stream, 1);
  // "de" would be wrong for this title, and nothing else is right for both.
  EXPECT_EQ(plan.sound_tags, (std::vector<std::string>{"", "en"}));
}

TEST(ImportPlan, ATagStaysWhereNobodyKnowsBetter) {
  const titleset_demands d = demands_for(video_standard::ntsc, disc_aspect::four_three,
                                         {{disc_sound::ac3, 2, "de"}, {disc_sound::ac3, 2, ""}});
  const import_plan plan = planned(
      made_source(made_disc_video(), made_sound("ac3", 2, "und"), made_sound("ac3", 2, "fr")), d);
  EXPECT_EQ(plan.sound_tags, (std::vector<std::string>{"de", ""}));
}

TEST(ImportPlan, AFileWithoutSoundGetsSilenceOrNone) {
  const source_facts file = made_source(made_disc_video());
  const import_plan silent = planned(file);
  ASSERT_EQ(silent.sound.streams.size(), 1u);
  EXPECT_FALSE(silent.sound.streams[0].stream);
  EXPECT_EQ(silent.sound.streams[0].bit_rate, 192'000);
  import_choices none;
  none.silence = false;
  EXPECT_TRUE(planned(file, {}, none).sound.streams.empty());
  const titleset_demands two = demands_for(video_standard::ntsc, disc_aspect::four_three,
                                           {{disc_sound::mp2, 2, ""}, {disc_sound::ac3, 6, ""}});
  const import_plan both = planned(file, two);
  ASSERT_EQ(both.sound.streams.size(), 2u);
  EXPECT_EQ(both.sound.streams[0].kind, disc_sound::mp2);
  EXPECT_TRUE(planned(file, two, none).sound.streams.empty());
  EXPECT_TRUE(planned(file, demands_for(video_standard::ntsc, disc_aspect::four_three))
                  .sound.streams.empty());
}

TEST(ImportPlan, AFirstTitleWithoutSoundSilencesNobody) {
  const import_plan plan = planned(made_source(made_disc_video(), made_sound("ac3")),
                                   demands_for(video_standard::ntsc, disc_aspect::four_three));
  EXPECT_EQ(plan.sound.streams.size(), 1u);
}

TEST(ImportPlan, NoMoreThanEightSounds) {
  source_facts file = made_source(made_disc_video());
  for (int i = 1; i <= 16; ++i) {
    file.streams.push_back(made_sound("ac3"));
    file.streams.back().index = i;
  }
  const import_plan plan = planned(file);
  EXPECT_EQ(plan.sound.streams.size(), 8u);
  EXPECT_EQ(plan.streams.at(9).reason, "a title has at most eight sound streams");
}

TEST(ImportPlan, CopiedSoundKeepsItsDistanceToThePicture) {
  source_facts file = made_source(made_disc_video(), made_sound("ac3"), made_sound("ac3"),
                                  made_sound("ac3"), made_sound("aac"));
  file.start = 0.5;
  file.streams[0].start = 0.7;
  file.streams[1].start = 0.5;
  file.streams[2].start = 0.505;
  file.streams[3].start = 0.7;
  file.streams[4].start = 0.9;
  const import_plan plan = planned(file);
  EXPECT_NEAR(plan.begin, 0.2, 1e-9);
  EXPECT_NEAR(plan.sound.begin, -0.2, 1e-9);
  EXPECT_EQ(plan.sound.delay(), 200);  // the picture comes later
  EXPECT_EQ(plan.sound.streams[1].fate, stream_fate::copied);
  EXPECT_EQ(plan.sound.streams[2].fate, stream_fate::encoded);
  EXPECT_EQ(plan.sound.streams[2].reason, "it begins at another time than the first one");
}

TEST(ImportPlan, SoundThatIsASecondOffIsEncoded) {
  source_facts file = made_source(made_disc_video(), made_sound("ac3"));
  file.streams[1].start = 1;
  const import_plan plan = planned(file);
  EXPECT_EQ(plan.sound.streams[0].fate, stream_fate::encoded);
  EXPECT_EQ(plan.sound.streams[0].reason, "it begins 1 s after the picture");
  EXPECT_EQ(plan.sound.delay(), 0);
}

TEST(ImportPlan, SoundOfADiscThatNobodyCanMakeIsAProblem) {
  const titleset_demands d =
      demands_for(video_standard::ntsc, disc_aspect::four_three, {{disc_sound::other, 2, ""}});
  EXPECT_EQ(planned(made_source(made_disc_video(), made_sound("ac3")), d).problem,
            "sound stream 1 of the first title is neither AC-3 nor MPEG audio, and no other kind "
            "can be made for the new one");
}

// The rest
// ------------------------------------------------------------------------------------------

TEST(ImportPlan, TextBecomesFilesAndPicturesOfTextAreLeftOut) {
  source_stream bitmap = made_text("hdmv_pgs_subtitle"), cover = made_video(600, 600, {0, 1});
  bitmap.kind = source_kind::bitmap_text;
  cover.kind = source_kind::picture;
  source_stream font;
  const source_facts file = made_source(made_disc_video(), made_text("subrip", "fra"), bitmap,
                                        cover, font, made_disc_video(), made_text("ass", "eng"));
  titleset_demands d;
  d.subtitle_languages = {"de", "en"};
  const import_plan plan =
      import_plan_for(file, {{"film.de.srt", "de"}}, d, {}, video_standard::ntsc);
  ASSERT_EQ(plan.texts.size(), 3u);
  EXPECT_EQ(plan.texts[0].file.file, "film.de.srt");
  EXPECT_EQ(plan.texts[1].stream, 6);
  EXPECT_EQ(plan.texts[2].stream, 1);
  EXPECT_EQ(plan.subtitle_tags, (std::vector<std::string>{"de", "en", "fr"}));
  EXPECT_EQ(plan.streams.at(2).reason,
            "its subtitles are pictures (Blu-ray subtitles), and a title's are made of text");
  EXPECT_EQ(plan.streams.at(3).reason, "it is a picture, as covers are");
  EXPECT_EQ(plan.streams.at(4).reason, "it is neither picture nor sound nor text");
  EXPECT_EQ(plan.streams.at(5).reason, "a title has one video");
}

TEST(ImportPlan, ChaptersAreThoseOfThePicture) {
  source_facts file = made_source(made_disc_video());
  file.streams[0].start = 2;
  file.streams[0].length = 30;
  file.chapters = {{0, 1, ""}, {1, 10, ""}, {10, 20, ""}, {32, 40, ""}};
  EXPECT_EQ(planned(file).chapters, (std::vector<double>{0, 8}));
  file.chapters.assign(150, {1, 2, ""});
  for (std::size_t i = 0; i < file.chapters.size(); ++i)
    file.chapters[i].start = 2 + 0.1 * static_cast<double>(i);
  EXPECT_EQ(planned(file).chapters.size(), 99u);
}

TEST(ImportPlan, WhatHasNoVideoThatCanBeReadIsNoTitle) {
  EXPECT_EQ(planned(made_source(made_sound("mp3"))).problem, "there is no video in it");
  source_stream photo;
  photo.kind = source_kind::picture;
  EXPECT_EQ(planned(made_source(photo)).problem,
            "it is a picture; \"create m2v still\" in the menu \"menus\" makes a still of it");
  source_stream video = made_video(640, 480, {25, 1});
  video.decodes = false;
  EXPECT_EQ(planned(made_source(video)).problem, "its video, H.264, cannot be decoded");
  titleset_demands d;
  d.problem = "no title fits";
  EXPECT_EQ(planned(made_source(made_disc_video()), d).problem, "no title fits");
}

TEST(Sidecars, AreNamedAsTheFilm) {
  const std::vector<std::string> listing = {
      "Film.srt",    "film.de.srt", "film.mp4",  "film.forced.pt-BR.ass", "film.txt",
      "filmtwo.srt", "film2.srt",   "other.srt", "film.English.vtt",      "film.en.vtt"};
  EXPECT_EQ(sidecars_of("film.mp4", listing), (std::vector<sidecar>{{"Film.srt", ""},
                                                                    {"film.de.srt", "de"},
                                                                    {"film.forced.pt-BR.ass", "pt"},
                                                                    {"film.English.vtt", ""},
                                                                    {"film.en.vtt", "en"}}));
  EXPECT_EQ(sidecars_of("a.b.mkv", {"a.srt", "a.b.srt", "a.b.fr.srt"}),
            (std::vector<sidecar>{{"a.b.srt", ""}, {"a.b.fr.srt", "fr"}}));
}

// Where the picture ends before the sound
// ---------------------------------------------------------------------------------------------

import_plan with_picture_of(source_stream video, double seconds, const import_choices& choices = {},
                            const titleset_demands& demands = {}) {
  video.length = seconds;
  return planned(made_source(video, made_sound("aac")), demands, choices);
}

TEST(ImportPlan, TheLastPictureIsHeldUntilTheSoundEnds) {
  source_facts film = made_source(made_video(640, 480, {25, 1}), made_sound("aac"));
  film.streams[0].length = 48;
  film.streams[0].start = 0.5;
  film.chapters = {{0, 55, ""}, {55, 60, ""}, {61, 62, ""}};
  const import_plan plan = planned(film);
  EXPECT_DOUBLE_EQ(plan.seconds, 59.5);
  EXPECT_DOUBLE_EQ(plan.video.work.held, 11.5);
  EXPECT_DOUBLE_EQ(plan.video.work.shown, 48);
  EXPECT_EQ(plan.sound.left_out, 0);
  EXPECT_EQ(plan.chapters, (std::vector<double>{0, 54.5}));
  EXPECT_EQ(end_text(plan), "the picture ends 11.5 s before the sound: its last picture is held");
}

TEST(ImportPlan, HalfASecondOfSoundIsNotWaitedFor) {
  const import_plan plan = with_picture_of(made_video(640, 480, {25, 1}), 59.5);
  EXPECT_EQ(plan.seconds, 59.5);
  EXPECT_EQ(plan.video.work.held, 0);
  EXPECT_EQ(end_text(plan), "");
  EXPECT_GT(with_picture_of(made_video(640, 480, {25, 1}), 59.4).video.work.held, 0.59);
}

TEST(ImportPlan, APictureIsHeldAsLongAsTheFasterSoundLasts) {
  import_choices fast;
  fast.film_by_speed = true;
  const import_plan plan =
      with_picture_of(made_video(640, 480, {24, 1}), 48, fast,
                      demands_for(video_standard::pal, disc_aspect::four_three));
  EXPECT_DOUBLE_EQ(plan.seconds, 60 * 0.96);
  EXPECT_DOUBLE_EQ(plan.video.work.held, 12 * 0.96);
  EXPECT_DOUBLE_EQ(plan.video.work.shown, 48 * 0.96);
}

TEST(ImportPlan, NothingIsPutBehindACopyAndWhatIsLeftOutIsTold) {
  import_plan plan = with_picture_of(made_disc_video(), 48);
  EXPECT_EQ(plan.video.fate, stream_fate::copied);
  EXPECT_EQ(plan.seconds, 48);
  EXPECT_EQ(plan.video.work.held, 0);
  EXPECT_EQ(end_text(plan), "the sound goes on for 12 s after the picture, which is left out");
  // It may have to be encoded after all.
  hold_for_what_is_left_out(plan);
  EXPECT_EQ(plan.seconds, 60);
  EXPECT_EQ(plan.video.work.held, 12);
  EXPECT_EQ(plan.sound.left_out, 0);
}

TEST(ImportPlan, SoundThatIsNotWantedHoldsNoPicture) {
  source_facts film =
      made_source(made_video(640, 480, {25, 1}), made_sound("aac"), made_sound("aac"));
  film.streams[0].length = 48;
  film.streams[1].length = 48;
  const titleset_demands one =
      demands_for(video_standard::pal, disc_aspect::four_three, {{disc_sound::ac3, 2, ""}});
  EXPECT_EQ(planned(film, one).seconds, 48);
  EXPECT_EQ(planned(film).seconds, 60);
}

}  // namespace
}  // namespace corvane
