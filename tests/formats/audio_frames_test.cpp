// Headers of audio frames, against values of the standards' tables.
#include "formats/audio_frames.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvane {
namespace {

using namespace std::string_literals;

std::span<const std::uint8_t> bytes_of(std::string_view text) {
  return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

std::optional<audio_frame> frame_of(const std::string& text) {
  return read_audio_frame(bytes_of(text));
}

std::string header(const std::vector<int>& bytes) {
  std::string text;
  for (const int byte : bytes)
    text += static_cast<char>(byte);
  return text;
}

// Sampling rate and size by their codes, bsid 8, two channels.
std::string ac3(int rate, int size, int bsid = 8) {
  return header({0x0B, 0x77, 0x12, 0x34, rate << 6 | size, bsid << 3, 2 << 5});
}

TEST(AudioFrames, SizesOfAc3AreThoseOfTheTable) {
  struct {
    int size_code, kilobits;
    std::size_t words_48, words_44, words_32;
  } const rows[] = {
      {0, 32, 64, 69, 96},         {1, 32, 64, 70, 96},         {2, 40, 80, 87, 120},
      {4, 48, 96, 104, 144},       {7, 56, 112, 122, 168},      {8, 64, 128, 139, 192},
      {11, 80, 160, 175, 240},     {12, 96, 192, 208, 288},     {15, 112, 224, 244, 336},
      {16, 128, 256, 278, 384},    {18, 160, 320, 348, 480},    {20, 192, 384, 417, 576},
      {21, 192, 384, 418, 576},    {23, 224, 448, 488, 672},    {24, 256, 512, 557, 768},
      {27, 320, 640, 697, 960},    {28, 384, 768, 835, 1152},   {30, 448, 896, 975, 1344},
      {33, 512, 1024, 1115, 1536}, {35, 576, 1152, 1254, 1728}, {37, 640, 1280, 1394, 1920},
  };
  for (const auto& row : rows) {
    const int rates[] = {48000, 44100, 32000};
    const std::size_t words[] = {row.words_48, row.words_44, row.words_32};
    for (int rate = 0; rate < 3; ++rate) {
      const auto frame = frame_of(ac3(rate, row.size_code));
      ASSERT_TRUE(frame) << row.size_code;
      EXPECT_EQ(frame->kind, audio_kind::ac3);
      EXPECT_EQ(frame->size, 2 * words[rate]) << row.size_code << ", rate " << rate;
      EXPECT_EQ(frame->bit_rate, 1000 * row.kilobits);
      EXPECT_EQ(frame->sample_rate, rates[rate]);
      EXPECT_EQ(frame->samples, 1536);
      EXPECT_LE(frame->size, largest_audio_frame);
    }
  }
}

TEST(AudioFrames, ChannelsOfAc3AndTheOneForLowFrequencies) {
  struct {
    int mode, channels, bits_before_flag;
  } const rows[] = {{0, 2, 3}, {1, 1, 3}, {2, 2, 5}, {3, 3, 5},
                    {4, 3, 5}, {5, 4, 7}, {6, 4, 5}, {7, 5, 7}};
  for (const auto& row : rows) {
    const int flag = 0x80 >> row.bits_before_flag;
    const int mode = row.mode << 5;
    // What stands between them must not be taken for the flag.
    const int between = 0x1F & ~(2 * flag - 1);
    for (const int filler : {0, between}) {
      const auto without = frame_of(header({0x0B, 0x77, 0, 0, 20, 0x40 | 3, mode | filler}));
      const auto with = frame_of(header({0x0B, 0x77, 0, 0, 20, 0x40 | 3, mode | filler | flag}));
      ASSERT_TRUE(without && with);
      EXPECT_EQ(without->mode, row.mode);
      EXPECT_EQ(without->channels, row.channels) << row.mode;
      EXPECT_FALSE(without->low_frequency) << row.mode;
      EXPECT_EQ(with->channels, row.channels + 1) << row.mode;
      EXPECT_TRUE(with->low_frequency) << row.mode;
      EXPECT_EQ(with->service, 3);
    }
  }
}

TEST(AudioFrames, HalfAndQuarterRatesOfAc3) {
  const auto half = frame_of(ac3(0, 20, 9));
  const auto quarter = frame_of(ac3(1, 20, 10));
  ASSERT_TRUE(half && quarter);
  EXPECT_EQ(half->kind, audio_kind::ac3);
  EXPECT_EQ(half->sample_rate, 24000);
  EXPECT_EQ(half->bit_rate, 96000);
  EXPECT_EQ(half->size, 768u);
  EXPECT_EQ(quarter->sample_rate, 11025);
  EXPECT_EQ(quarter->bit_rate, 48000);
}

TEST(AudioFrames, WhatIsNoAc3) {
  EXPECT_TRUE(frame_of(ac3(0, 37)));
  EXPECT_FALSE(frame_of(ac3(0, 38))) << "a size beyond the table";
  EXPECT_FALSE(frame_of(ac3(3, 20))) << "the reserved rate";
  EXPECT_FALSE(frame_of(ac3(0, 20, 17))) << "a format to come";
  EXPECT_FALSE(frame_of(ac3(0, 20).substr(0, 6))) << "a part of the header";
  EXPECT_FALSE(frame_of(""));
  EXPECT_FALSE(frame_of("\x77\x0B\x34\x12\x40\x14\x40\x43"s)) << "bytes exchanged";
}

TEST(AudioFrames, Eac3TellsItsSizeInWords) {
  // Type 0, stream 0, 768 bytes; 48 kHz, six blocks, 3/2 with low frequencies; bsid 16.
  const auto six = frame_of(header({0x0B, 0x77, 0x01, 0x7F, 0x3F, 0x80, 0}));
  ASSERT_TRUE(six);
  EXPECT_EQ(six->kind, audio_kind::eac3);
  EXPECT_EQ(six->size, 768u);
  EXPECT_EQ(six->sample_rate, 48000);
  EXPECT_EQ(six->samples, 1536);
  EXPECT_EQ(six->bit_rate, 192000);
  EXPECT_EQ(six->channels, 6);
  EXPECT_TRUE(six->low_frequency);
  const int blocks[] = {1, 2, 3, 6};
  for (int code = 0; code < 4; ++code)
    EXPECT_EQ(frame_of(header({0x0B, 0x77, 1, 0x7F, code << 4 | 4, 0x80, 0}))->samples,
              256 * blocks[code]);
}

TEST(AudioFrames, Eac3OfOtherKinds) {
  const auto half = frame_of(header({0x0B, 0x77, 1, 0x7F, 0xC0 | 1 << 4 | 4, 0x80, 0}));
  ASSERT_TRUE(half);
  EXPECT_EQ(half->sample_rate, 22050);
  EXPECT_EQ(half->samples, 1536);
  EXPECT_EQ(frame_of(header({0x0B, 0x77, 0x41, 0x7F, 0x34, 0x80, 0}))->samples, 0) << "dependent";
  EXPECT_EQ(frame_of(header({0x0B, 0x77, 0x09, 0x7F, 0x34, 0x80, 0}))->samples, 0) << "second";
  EXPECT_TRUE(frame_of(header({0x0B, 0x77, 1, 0x7F, 0x34, 11 << 3, 0})));
  EXPECT_FALSE(frame_of(header({0x0B, 0x77, 1, 0x7F, 0xF4, 0x80, 0}))) << "reserved rate";
  EXPECT_FALSE(frame_of(header({0x0B, 0x77, 0xC1, 0x7F, 0x34, 0x80, 0}))) << "reserved type";
  EXPECT_FALSE(frame_of(header({0x0B, 0x77, 0, 2, 0x34, 0x80, 0}))) << "shorter than its header";
}

TEST(AudioFrames, MpegAudioOfEachLayer) {
  struct {
    const char* what;
    std::vector<int> bytes;
    audio_kind kind;
    int sample_rate, kilobits, channels, samples;
    std::size_t size;
  } const rows[] = {
      {"layer I", {0xFF, 0xFF, 0xC4, 0}, audio_kind::mpeg_layer_1, 48000, 384, 2, 384, 384},
      {"layer I, padded", {0xFF, 0xFF, 0xC2, 0}, audio_kind::mpeg_layer_1, 44100, 384, 2, 384, 420},
      {"layer II", {0xFF, 0xFD, 0xA4, 0}, audio_kind::mpeg_layer_2, 48000, 192, 2, 1152, 576},
      {"layer II, checked",
       {0xFF, 0xFC, 0xA4, 0},
       audio_kind::mpeg_layer_2,
       48000,
       192,
       2,
       1152,
       576},
      {"layer II, mono",
       {0xFF, 0xFD, 0x14, 0xC0},
       audio_kind::mpeg_layer_2,
       48000,
       32,
       1,
       1152,
       96},
      {"layer II, 44.1",
       {0xFF, 0xFD, 0xD0, 0},
       audio_kind::mpeg_layer_2,
       44100,
       320,
       2,
       1152,
       1044},
      {"layer II, padded",
       {0xFF, 0xFD, 0xD2, 0},
       audio_kind::mpeg_layer_2,
       44100,
       320,
       2,
       1152,
       1045},
      {"layer II, largest",
       {0xFF, 0xFD, 0xE8, 0},
       audio_kind::mpeg_layer_2,
       32000,
       384,
       2,
       1152,
       1728},
      {"layer III", {0xFF, 0xFB, 0x94, 0x40}, audio_kind::mpeg_layer_3, 48000, 128, 2, 1152, 384},
      {"MPEG-2, layer I", {0xFF, 0xF7, 0xE4, 0}, audio_kind::mpeg_layer_1, 24000, 256, 2, 384, 512},
      {"MPEG-2, layer II",
       {0xFF, 0xF5, 0x84, 0},
       audio_kind::mpeg_layer_2,
       24000,
       64,
       2,
       1152,
       384},
      {"MPEG-2, layer III",
       {0xFF, 0xF3, 0x80, 0},
       audio_kind::mpeg_layer_3,
       22050,
       64,
       2,
       576,
       208},
  };
  for (const auto& row : rows) {
    const auto frame = frame_of(header(row.bytes));
    ASSERT_TRUE(frame) << row.what;
    EXPECT_EQ(frame->kind, row.kind) << row.what;
    EXPECT_EQ(frame->mpeg2, row.sample_rate < 32000) << row.what;
    EXPECT_EQ(frame->sample_rate, row.sample_rate) << row.what;
    EXPECT_EQ(frame->bit_rate, 1000 * row.kilobits) << row.what;
    EXPECT_EQ(frame->channels, row.channels) << row.what;
    EXPECT_EQ(frame->samples, row.samples) << row.what;
    EXPECT_EQ(frame->size, row.size) << row.what;
    EXPECT_FALSE(frame->low_frequency) << row.what;
  }
}

TEST(AudioFrames, WhatIsNoMpegAudio) {
  EXPECT_TRUE(frame_of("\xFF\xFD\xA4\x00"s));
  EXPECT_FALSE(frame_of("\xFF\xFD\x04\x00"s)) << "free format";
  EXPECT_FALSE(frame_of("\xFF\xFD\xF4\x00"s)) << "no rate";
  EXPECT_FALSE(frame_of("\xFF\xFD\xAC\x00"s)) << "no sampling rate";
  EXPECT_FALSE(frame_of("\xFF\xF9\xA4\x00"s)) << "layer 0";
  EXPECT_FALSE(frame_of("\xFF\xFD\xA4\x02"s)) << "the reserved emphasis";
  EXPECT_FALSE(frame_of("\xFF\xED\xA4\x00"s)) << "a sync word of eleven bits";
  EXPECT_FALSE(frame_of("\xFF\xFD\xA4"s)) << "a part of the header";
  EXPECT_FALSE(frame_of("\xFF"s));
}

TEST(AudioFrames, OtherFormatsAreKnownByTheirFirstBytes) {
  struct {
    std::string bytes;
    audio_kind kind;
  } const rows[] = {
      {"RIFF\x24\x01\0\0WAVEfmt "s, audio_kind::wav},
      {"RF64\xFF\xFF\xFF\xFFWAVEds64"s, audio_kind::wav},
      {"RIFF\x24\x01\0\0AVI LIST"s, audio_kind::unknown},
      {"RIFF"s, audio_kind::unknown},
      {"\x7F\xFE\x80\x01\xFC\x3C"s, audio_kind::dts},
      {"\xFE\x7F\x01\x80\x3C\xFC"s, audio_kind::dts},
      {"\x1F\xFF\xE8\x00\x07\xF0"s, audio_kind::dts},
      {"\xFF\x1F\x00\xE8\xF0\x07"s, audio_kind::dts},
      {"\x77\x0B\x34\x12\x40\x14\x40\x43"s, audio_kind::ac3_swapped},
      {"\xFF\xF1\x4C\x80\x05\xBF\xFC"s, audio_kind::aac},
      {"\xFF\xF9\x4C\x80\x05\xBF\xFC"s, audio_kind::aac},
      {"\xFF\xF1\x7C\x80"s, audio_kind::unknown},
      {"\xFF\xFD\xA4\x00"s, audio_kind::unknown},
      {""s, audio_kind::unknown},
  };
  for (const auto& row : rows)
    EXPECT_EQ(kind_of_first_bytes(bytes_of(row.bytes)), row.kind) << row.bytes;
}

TEST(AudioFrames, KindsHaveNames) {
  EXPECT_EQ(name_of(audio_kind::ac3), "AC-3");
  EXPECT_EQ(name_of(audio_kind::mpeg_layer_2), "MPEG audio layer II");
  EXPECT_EQ(name_of(audio_kind::unknown), "unknown");
  EXPECT_EQ(name_of(audio_kind::wav), "WAV");
}

}  // namespace
}  // namespace corvane
