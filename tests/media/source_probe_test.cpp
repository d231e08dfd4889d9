// What is told of files such as people have (make_sources.sh), and that nothing but them is opened.
#include "media/source_probe.h"

#include "media/sources.h"
#include "platform/files/files.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace corvane {
namespace {

using media_test::probed;
using media_test::source;
using media_test::stream_of;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing_support::temporary_folder;

std::vector<std::string> codecs_of(const source_facts& facts) {
  std::vector<std::string> codecs;
  for (const source_stream& stream : facts.streams)
    codecs.push_back(stream.codec);
  return codecs;
}

struct kind_of_file {
  const char* name;
  const char* container;
  std::vector<std::string> codecs;
};

// Each lasts 0.6 seconds, but for what its kind of sound fills up.
const std::vector<kind_of_file> films = {
    {"h264-aac.mp4", "mov,mp4,m4a,3gp,3g2,mj2", {"h264", "aac"}},
    {"h264-pcm.mov", "mov,mp4,m4a,3gp,3g2,mj2", {"h264", "pcm_s16le"}},
    {"h264-ac3.mkv", "matroska,webm", {"h264", "ac3"}},
    {"h264-dts.mkv", "matroska,webm", {"h264", "dts"}},
    {"h264-aac.ts", "mpegts", {"h264", "aac"}},
    {"h264-aac.flv", "flv", {"h264", "aac"}},
    {"hevc-aac.mp4", "mov,mp4,m4a,3gp,3g2,mj2", {"hevc", "aac"}},
    {"vp9-opus.webm", "matroska,webm", {"vp9", "opus"}},
    {"vp8-vorbis.webm", "matroska,webm", {"vp8", "vorbis"}},
    {"av1-opus.webm", "matroska,webm", {"av1", "opus"}},
    {"mpeg4-mp3.avi", "avi", {"mpeg4", "mp3"}},
    {"mjpeg-pcm.avi", "avi", {"mjpeg", "pcm_s16le"}},
    {"prores-pcm.mov", "mov,mp4,m4a,3gp,3g2,mj2", {"prores", "pcm_s24le"}},
    {"mpeg1-mp2.mpg", "mpeg", {"mpeg1video", "mp2"}},
    {"mpeg2-mp2.mpg", "mpeg", {"mpeg2video", "mp2"}},
    {"mpeg2-ac3.ts", "mpegts", {"mpeg2video", "ac3"}},
    {"wmv2-wma.asf", "asf", {"wmv2", "wmav2"}},
    {"theora-vorbis.ogv", "ogg", {"theora", "vorbis"}},
    {"ffv1-flac.mkv", "matroska,webm", {"ffv1", "flac"}},
};

TEST(ProbeSource, TellsContainerAndCodecsOfFilms) {
  for (const kind_of_file& film : films) {
    const source_facts facts = probed(film.name);
    EXPECT_EQ(facts.container, film.container) << film.name;
    EXPECT_EQ(codecs_of(facts), film.codecs) << film.name;
    EXPECT_FALSE(facts.cut_short) << film.name;
    EXPECT_EQ(facts.bytes, static_cast<std::int64_t>(*file_size(source(film.name))));
  }
}

TEST(ProbeSource, TellsKindSizeAndRateOfTheVideoInFilms) {
  for (const kind_of_file& film : films) {
    const source_stream video = stream_of(film.name, 0);
    EXPECT_EQ(video.kind, source_kind::video) << film.name;
    EXPECT_EQ(video.video.width, 64) << film.name;
    EXPECT_EQ(video.video.height, 48) << film.name;
    EXPECT_EQ(video.video.rate, (source_ratio{25, 1})) << film.name;
    EXPECT_EQ(video.video.turned, 0) << film.name;
    EXPECT_TRUE(video.decodes) << film.name;
  }
}

TEST(ProbeSource, TellsChannelsAndRateOfTheSoundInFilms) {
  for (const kind_of_file& film : films) {
    const source_stream audio = stream_of(film.name, 1);
    EXPECT_EQ(audio.index, 1) << film.name;
    EXPECT_EQ(audio.kind, source_kind::audio) << film.name;
    EXPECT_EQ(audio.audio.channels, 1) << film.name;
    EXPECT_EQ(audio.audio.sample_rate, film.container == std::string("flv") ? 44100 : 48000);
    EXPECT_TRUE(audio.decodes) << film.name;
  }
}

TEST(ProbeSource, TellsHowLongFilmsAndTheirStreamsLast) {
  for (const kind_of_file& film : films) {
    const source_facts facts = probed(film.name);
    ASSERT_TRUE(facts.length) << film.name;
    EXPECT_NEAR(*facts.length, 0.62, 0.07) << film.name;
    for (const source_stream& stream : facts.streams) {
      ASSERT_TRUE(stream.start && stream.length) << film.name;
      EXPECT_NEAR(*stream.length, 0.62, 0.045) << film.name << " " << stream.codec;
    }
  }
}

TEST(ProbeSource, TellsWhichLengthsAreThoseOfTheFile) {
  for (const source_stream& stream : probed("h264-aac.flv").streams)
    EXPECT_TRUE(stream.length_is_files) << stream.codec;
  for (const char* const own : {"h264-aac.mp4", "h264-ac3.mkv"})
    for (const source_stream& stream : probed(own).streams)
      EXPECT_FALSE(stream.length_is_files) << own << " " << stream.codec;
}

TEST(ProbeSource, TellsSoundFiles) {
  const std::vector<kind_of_file> sounds = {
      {"sound.mp3", "mp3", {"mp3"}},
      {"sound.flac", "flac", {"flac"}},
      {"sound.wav", "wav", {"pcm_s16le"}},
      {"sound.aiff", "aiff", {"pcm_s16be"}},
      {"sound.ogg", "ogg", {"vorbis"}},
      {"sound.opus", "ogg", {"opus"}},
      {"sound.m4a", "mov,mp4,m4a,3gp,3g2,mj2", {"aac"}},
      {"sound.aac", "aac", {"aac"}},
      {"sound.ac3", "ac3", {"ac3"}},
      {"sound.dts", "dts", {"dts"}},
  };
  for (const kind_of_file& sound : sounds) {
    const source_facts facts = probed(sound.name);
    EXPECT_EQ(facts.container, sound.container);
    EXPECT_EQ(codecs_of(facts), sound.codecs);
    ASSERT_TRUE(facts.length) << sound.name;
    EXPECT_NEAR(*facts.length, 0.62, 0.025) << sound.name;
  }
}

TEST(ProbeSource, TellsHowChannelsStand) {
  const source_stream surround = stream_of("sound.ac3", 0);
  EXPECT_EQ(surround.audio.channels, 6);
  EXPECT_EQ(surround.audio.layout, "5.1(side)");
  EXPECT_EQ(surround.bit_rate, 448'000);
  EXPECT_EQ(stream_of("sound.mp3", 0).audio.layout, "mono");
  EXPECT_EQ(stream_of("sound.wav", 0).audio.layout, "");
}

TEST(ProbeSource, LooksIntoStreamsWithoutAContainer) {
  const source_facts facts = probed("h264.264");
  ASSERT_EQ(facts.streams.size(), 1u);
  EXPECT_EQ(facts.streams[0].video.width, 64);
  ASSERT_TRUE(facts.length);
  EXPECT_NEAR(*facts.length, 0.6, 0.001);
}

TEST(ProbeSource, TellsTapes) {
  const source_video video = stream_of("dv.dv", 0).video;
  EXPECT_EQ(video.width, 720);
  EXPECT_EQ(video.height, 576);
  EXPECT_EQ(video.pixel_aspect, (source_ratio{16, 15}));
  EXPECT_EQ(video.fields, source_fields::bottom_first);
}

TEST(ProbeSource, TellsDepthAndColoursOfTenBits) {
  const source_video video = stream_of("ten-bit.mkv", 0).video;
  EXPECT_EQ(video.pixels, "yuv420p10le");
  EXPECT_EQ(video.bits, 10);
  EXPECT_EQ(video.colours.primaries, "bt2020");
  EXPECT_EQ(video.colours.transfer, "smpte2084");
  EXPECT_EQ(video.colours.matrix, "bt2020nc");
  EXPECT_FALSE(video.colours.full_range);
}

TEST(ProbeSource, TellsFullRange) {
  const source_colours colours = stream_of("full-range.mp4", 0).video.colours;
  EXPECT_TRUE(colours.full_range);
  EXPECT_EQ(colours.matrix, "bt709");
  const source_colours unsaid = stream_of("h264-aac.mp4", 0).video.colours;
  EXPECT_FALSE(unsaid.full_range);
  EXPECT_EQ(unsaid.primaries + unsaid.transfer + unsaid.matrix, "");
}

TEST(ProbeSource, TellsFullChroma) {
  EXPECT_EQ(stream_of("444.mkv", 0).video.pixels, "yuv444p");
  EXPECT_EQ(stream_of("444.mkv", 0).profile, "High 4:4:4 Predictive");
}

TEST(ProbeSource, TellsWhatCanBeSeenThrough) {
  EXPECT_TRUE(stream_of("alpha.webm", 0).video.alpha);
  EXPECT_TRUE(stream_of("prores4444.mov", 0).video.alpha);
  EXPECT_EQ(stream_of("prores4444.mov", 0).video.bits, 12);
  EXPECT_TRUE(stream_of("still.png", 0).video.alpha);
  EXPECT_FALSE(stream_of("h264-aac.mp4", 0).video.alpha);
  EXPECT_FALSE(stream_of("still.jpg", 0).video.alpha);
}

TEST(ProbeSource, TellsOddSizes) {
  EXPECT_EQ(stream_of("one-pixel.mkv", 0).video.width, 1);
  EXPECT_EQ(stream_of("one-pixel.mkv", 0).video.height, 1);
  EXPECT_EQ(stream_of("odd.mkv", 0).video.width, 1919);
  EXPECT_EQ(stream_of("odd.mkv", 0).video.height, 1081);
}

TEST(ProbeSource, TellsTheShapeOfPixels) {
  EXPECT_EQ(stream_of("anamorphic.mp4", 0).video.pixel_aspect, (source_ratio{64, 45}));
  EXPECT_EQ(stream_of("h264-aac.mp4", 0).video.pixel_aspect, (source_ratio{1, 1}));
}

TEST(ProbeSource, TellsHowItIsTurned) {
  // The encoder's option turns the other way.
  EXPECT_EQ(stream_of("turned-90.mp4", 0).video.turned, 270);
  EXPECT_EQ(stream_of("turned-180.mp4", 0).video.turned, 180);
  EXPECT_EQ(stream_of("turned-270.mp4", 0).video.turned, 90);
  EXPECT_FALSE(stream_of("turned-90.mp4", 0).video.mirrored);
}

TEST(ProbeSource, TellsWhichFieldComesFirst) {
  EXPECT_EQ(stream_of("h264-top.ts", 0).video.fields, source_fields::top_first);
  EXPECT_EQ(stream_of("h264-bottom.mkv", 0).video.fields, source_fields::bottom_first);
  EXPECT_EQ(stream_of("mpeg2-top.mpg", 0).video.fields, source_fields::top_first);
  EXPECT_EQ(stream_of("mpeg2-bottom.mpg", 0).video.fields, source_fields::bottom_first);
}

TEST(ProbeSource, TellsThatThereAreNoFields) {
  for (const char* const name : {"h264-aac.mp4", "mpeg2-mp2.mpg", "mpeg1-mp2.mpg", "vp9-opus.webm",
                                 "hevc-aac.mp4", "mpeg4-mp3.avi", "mjpeg-pcm.avi"})
    EXPECT_EQ(stream_of(name, 0).video.fields, source_fields::progressive) << name;
}

TEST(ProbeSource, TellsRatesAsFractions) {
  EXPECT_EQ(stream_of("ntsc.mp4", 0).video.rate, (source_ratio{30000, 1001}));
  EXPECT_EQ(stream_of("film.mkv", 0).video.rate, (source_ratio{24000, 1001}));
}

TEST(ProbeSource, TellsThatPicturesComeUnevenly) {
  EXPECT_TRUE(stream_of("variable.mp4", 0).video.variable_rate);
  EXPECT_TRUE(stream_of("variable.mkv", 0).video.variable_rate);
}

TEST(ProbeSource, TellsThatPicturesComeUnevenlyFarBehindTheBeginning) {
  EXPECT_TRUE(stream_of("late-variable.mp4", 0).video.variable_rate);
  // A gap that changes the average by a hundredth.
  EXPECT_TRUE(stream_of("late-gap.mp4", 0).video.variable_rate);
}

TEST(ProbeSource, TellsThatPicturesComeEvenly) {
  // Among them reordered ones, and such whose times are rounded to milliseconds.
  for (const char* const name : {"h264-aac.mp4", "h264-ac3.mkv", "film.mkv", "ntsc.mp4", "dv.dv",
                                 "h264-aac.ts", "mpeg2-mp2.mpg", "mpeg4-mp3.avi", "h264-top.ts",
                                 "mpeg2-top.mpg", "wmv2-wma.asf", "h264-aac.flv", "h264.264"})
    EXPECT_FALSE(stream_of(name, 0).video.variable_rate) << name;
}

TEST(ProbeSource, TellsLargeStartTimes) {
  const source_facts facts = probed("large-start.ts");
  ASSERT_TRUE(facts.start && facts.length);
  EXPECT_NEAR(*facts.start, 40'002.8, 0.1);
  EXPECT_NEAR(*facts.length, 0.62, 0.03);
}

TEST(ProbeSource, TellsNegativeStartTimes) {
  const source_facts facts = probed("vp9-opus.webm");
  ASSERT_TRUE(facts.start && facts.streams.at(1).start);
  EXPECT_NEAR(*facts.start, -0.007, 0.0001);
  EXPECT_NEAR(*facts.streams[1].start, -0.007, 0.0001);
}

TEST(ProbeSource, TellsLengthsFromTheBeginningAndNotFromZero) {
  // Matroska files state when they end.
  const source_facts facts = probed("start-7.mkv");
  ASSERT_TRUE(facts.start && facts.length);
  EXPECT_NEAR(*facts.start, 7, 0.001);
  EXPECT_NEAR(*facts.length, 0.608, 0.001);
}

TEST(ProbeSource, TellsWhenTheStreamsOfLargeFilesEnd) {
  for (const char* const name : {"large.mkv", "large.ts"}) {
    const source_facts facts = probed(name);
    EXPECT_GT(facts.bytes, 16 << 20);
    ASSERT_TRUE(facts.length && facts.streams.at(0).length && facts.streams.at(1).length);
    EXPECT_NEAR(*facts.length, 24, 0.05) << name;
    EXPECT_NEAR(*facts.streams[0].length, 24, 0.05) << name;
    EXPECT_NEAR(*facts.streams[1].length, 22.5, 0.05) << name;
  }
}

TEST(ProbeSource, TellsSoundThatBeginsLater) {
  const source_facts facts = probed("late-sound.mkv");
  ASSERT_TRUE(facts.streams.at(0).start && facts.streams.at(1).start && facts.length);
  EXPECT_NEAR(*facts.streams[1].start - *facts.streams[0].start, 0.245, 0.001);
  EXPECT_NEAR(*facts.streams[0].length, 0.6, 0.001);
  EXPECT_NEAR(*facts.streams[1].length, 0.608, 0.001);
  EXPECT_NEAR(*facts.length, 0.853, 0.001);
}

TEST(ProbeSource, HeedsWhatAnEditListCutsOff) {
  const source_facts facts = probed("trimmed.mp4");
  ASSERT_TRUE(facts.start && facts.length);
  EXPECT_NEAR(*facts.start, 0, 0.001);
  EXPECT_NEAR(*facts.length, 0.3, 0.001);
}

TEST(ProbeSource, TellsThatThereIsNoSound) {
  EXPECT_EQ(codecs_of(probed("silent.mp4")), std::vector<std::string>{"h264"});
}

TEST(ProbeSource, TellsSixteenStreamsOfSound) {
  const source_facts facts = probed("sixteen.mkv");
  ASSERT_EQ(facts.streams.size(), 17u);
  for (std::size_t i = 1; i < facts.streams.size(); ++i)
    EXPECT_EQ(facts.streams[i].kind, source_kind::audio);
  EXPECT_TRUE(facts.streams[1].is_default);
  EXPECT_FALSE(facts.streams[2].is_default);
}

TEST(ProbeSource, TellsLanguagesAndNames) {
  const source_stream audio = stream_of("h264-ac3.mkv", 1);
  EXPECT_EQ(audio.language, "eng");
  EXPECT_EQ(audio.title, "Director");
  EXPECT_EQ(audio.bit_rate, 96'000);
  EXPECT_EQ(stream_of("h264-aac.mp4", 1).language, "deu");
  // "und" is none.
  EXPECT_EQ(stream_of("h264-aac.mp4", 0).language, "");
}

TEST(ProbeSource, TellsSubtitlesThatAreText) {
  const source_stream text = stream_of("named.mkv", 2);
  EXPECT_EQ(text.kind, source_kind::text);
  EXPECT_EQ(text.codec, "subrip");
  EXPECT_EQ(text.language, "ger");
  EXPECT_TRUE(text.is_forced);
  EXPECT_EQ(stream_of("named.mp4", 2).kind, source_kind::text);
  EXPECT_EQ(stream_of("named.mp4", 2).codec, "mov_text");
}

TEST(ProbeSource, TellsSubtitlesThatArePictures) {
  EXPECT_EQ(stream_of("bitmap-text.mkv", 1).kind, source_kind::bitmap_text);
}

TEST(ProbeSource, TellsWhatIsNoneOfThese) {
  // The container keeps the names of its chapters in a stream.
  const source_stream data = stream_of("named.mp4", 3);
  EXPECT_EQ(data.kind, source_kind::other);
  EXPECT_FALSE(data.decodes);
}

void expect_two_chapters(const source_facts& facts) {
  ASSERT_EQ(facts.chapters.size(), 2u);
  EXPECT_NEAR(facts.chapters[0].start, 0, 0.001);
  EXPECT_NEAR(facts.chapters[0].end, 0.2, 0.001);
  EXPECT_EQ(facts.chapters[0].title, "First");
  EXPECT_NEAR(facts.chapters[1].start, 0.2, 0.001);
  EXPECT_NEAR(facts.chapters[1].end, 0.6, 0.001);
  EXPECT_EQ(facts.chapters[1].title, "Zweites \u2013 \u00df");
}

TEST(ProbeSource, TellsChapters) {
  expect_two_chapters(probed("named.mkv"));
  expect_two_chapters(probed("named.mp4"));
}

TEST(ProbeSource, CountsChaptersFromTheBeginningOfTheFile) {
  const source_facts facts = probed("late-chapters.mkv");
  ASSERT_TRUE(facts.start);
  EXPECT_NEAR(*facts.start, 5, 0.001);
  expect_two_chapters(facts);
}

TEST(ProbeSource, TellsStills) {
  for (const char* const name : {"still.png", "still.jpg", "still.bmp", "still.tiff", "one.gif"}) {
    const source_facts facts = probed(name);
    ASSERT_EQ(facts.streams.size(), 1u) << name;
    const source_stream& still = facts.streams[0];
    EXPECT_EQ(still.kind, source_kind::picture) << name;
    EXPECT_EQ(still.video.width, 65) << name;
    EXPECT_EQ(still.video.height, 47) << name;
    EXPECT_EQ(still.video.rate.over, 0) << name;
    EXPECT_FALSE(facts.start || facts.length || still.start || still.length) << name;
  }
}

TEST(ProbeSource, TellsAnimationsFromStills) {
  const source_stream video = stream_of("gif.gif", 0);
  EXPECT_EQ(video.kind, source_kind::video);
  EXPECT_EQ(video.video.rate, (source_ratio{10, 1}));
}

TEST(ProbeSource, TellsCoversFromFilms) {
  const source_facts facts = probed("cover.mp3");
  ASSERT_EQ(facts.streams.size(), 2u);
  EXPECT_EQ(facts.streams[0].kind, source_kind::audio);
  EXPECT_EQ(facts.streams[1].kind, source_kind::picture);
  EXPECT_EQ(facts.streams[1].video.width, 65);
  ASSERT_TRUE(facts.length);
  EXPECT_NEAR(*facts.length, 0.62, 0.02);
}

TEST(ProbeSource, FindsSoundBehindALargeCover) {
  const temporary_folder folder;
  // An unknown frame of the tag, two million bytes long.
  std::string tag = "ID3\x03";
  tag += std::string("\0\0\0\x7A\x09\x0A", 6);
  tag += std::string("XXXX\0\x1E\x84\x80\0\0", 10);
  tag += std::string(2'000'010 - 10, 'x');
  const auto sound = read_file(source("sound.aac"), 1 << 20);
  ASSERT_TRUE(sound);
  const auto facts = probe_source(folder.add("a.aac", tag + *sound));
  ASSERT_TRUE(facts) << facts.error;
  EXPECT_EQ(facts->container, "aac");
}

TEST(ProbeSource, GoesByTheContentAndNotByTheName) {
  const temporary_folder folder;
  const std::string renamed = folder.path("film.txt");
  ASSERT_FALSE(copy_file(source("h264-ac3.mkv"), renamed));
  const auto facts = probe_source(renamed);
  ASSERT_TRUE(facts) << facts.error;
  EXPECT_EQ(facts->container, "matroska,webm");
}

TEST(ProbeSource, TakesNamesThatMeanSomethingToFfmpeg) {
  const temporary_folder folder;
#ifdef _WIN32  // where some of these cannot be names
  const std::vector<std::string> names = {"%d.mkv", "a,b#c.mkv"};
#else
  const std::vector<std::string> names = {"%d.mkv", "concat:a|b.mkv", "http:x.mkv", "*?.mkv",
                                          "-i.mkv"};
#endif
  for (const std::string& name : names) {
    ASSERT_FALSE(copy_file(source("h264-ac3.mkv"), folder.path(name)));
    EXPECT_TRUE(probe_source(folder.path(name))) << name;
  }
}

}  // namespace
}  // namespace corvane
