#include "formats/video_finish.h"

#include "formats/video_headers.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <initializer_list>
#include <string>
#include <vector>

namespace corvane {
namespace {

std::string raw(std::initializer_list<unsigned> values) {
  std::string bytes;
  for (const unsigned value : values)
    bytes += static_cast<char>(value);
  return bytes;
}

std::string sequence(unsigned rate_code = 1, unsigned aspect_code = 2, bool progressive = true) {
  return raw({0,    0,    1, 0xB3, 0x2C, 0x01, 0xE0, aspect_code << 4 | rate_code, 0x13, 0x88,
              0x23, 0x80, 0, 0,    1,    0xB5, 0x14, progressive ? 0x8Au : 0x82u,  0,    1,
              0,    0});
}

const std::string group = raw({0, 0, 1, 0xB8, 0, 8, 0, 0x40});

/// `number`: in the order of display, in its group.
std::string picture(unsigned number, unsigned structure = 3, bool progressive = true) {
  return raw({0,
              0,
              1,
              0,
              number >> 2,
              (number & 3) << 6 | 8,
              0xFF,
              0xF8,
              0,
              0,
              1,
              0xB5,
              0x8F,
              0xFF,
              0xF8 | structure,
              0x41,
              progressive ? 0x80u : 0u,
              0,
              0,
              1,
              1,
              0x22,
              0xFE});
}

const std::string ending = raw({0, 0, 1, 0xB7});

/// The numbers of the pictures in the order in which they are coded; "top first" and "repeated" of
/// each as digits.
std::vector<std::string> fields_of(const std::string& stream) {
  std::vector<std::string> all;
  for (std::size_t at = 0; at + 12 < stream.size(); ++at)
    if (stream.compare(at, 4, raw({0, 0, 1, 0xB5})) == 0)
      if (const auto e =
              read_picture_extension(reinterpret_cast<const std::uint8_t*>(stream.data()) + at + 4))
        all.push_back(std::string(e->top_field_first ? "1" : "0") +
                      (e->repeat_first_field ? "1" : "0"));
  return all;
}

const std::uint8_t* behind(const std::string& stream, const std::string& code) {
  return reinterpret_cast<const std::uint8_t*>(stream.data()) + stream.find(code) + 4;
}

TEST(VideoFinish, NothingAskedForChangesNothing) {
  const std::string before = sequence() + group + picture(0);
  std::string stream = before;
  EXPECT_FALSE(finish_video(stream, {}));
  EXPECT_EQ(stream, before);
}

TEST(VideoFinish, AnEndCodeIsAppendedOnce) {
  const std::string before = sequence() + group + picture(0);
  std::string stream = before;
  EXPECT_FALSE(finish_video(stream, {.end_code = true}));
  EXPECT_EQ(stream, before + ending);
  EXPECT_FALSE(finish_video(stream, {.end_code = true}));
  EXPECT_EQ(stream, before + ending);
  std::string padded = before + ending + raw({0, 0, 0, 0});
  EXPECT_FALSE(finish_video(padded, {.end_code = true}));
  EXPECT_EQ(padded, before + ending + raw({0, 0, 0, 0}));
}

TEST(VideoFinish, AnEndCodeInTheMiddleIsNoEnd) {
  std::string stream = sequence() + group + picture(0) + ending + sequence() + group + picture(0);
  const std::string before = stream;
  EXPECT_FALSE(finish_video(stream, {.end_code = true}));
  EXPECT_EQ(stream, before + ending);
}

TEST(VideoFinish, WhatIsNoVideoGetsNoEndCode) {
  std::string nothing;
  EXPECT_FALSE(finish_video(nothing, {.end_code = true}));
  EXPECT_EQ(nothing, "");
}

TEST(VideoFinish, PulldownRepeatsAFieldOfEachSecondPicture) {
  std::string stream = sequence() + group;
  for (unsigned n = 0; n < 6; ++n)
    stream += picture(n);
  EXPECT_FALSE(finish_video(stream, {.pulldown = true}));
  EXPECT_EQ(fields_of(stream), (std::vector<std::string>{"11", "00", "01", "10", "11", "00"}));
  video_shape shape = *read_sequence_header(behind(stream, raw({0, 0, 1, 0xB3})));
  ASSERT_TRUE(read_sequence_extension(behind(stream, raw({0, 0, 1, 0xB5})), shape));
  EXPECT_EQ(shape.rate_numerator, 30000);
  EXPECT_EQ(shape.rate_denominator, 1001);
  EXPECT_FALSE(shape.progressive_sequence);
  EXPECT_EQ(shape.aspect_code, 2);
}

// Pictures are coded in another order than they are shown in, and groups number theirs anew.
TEST(VideoFinish, PulldownGoesByTheOrderOfDisplay) {
  std::string stream = sequence() + group + picture(0) + picture(3) + picture(1) + picture(2) +
                       sequence() + group + picture(2) + picture(0) + picture(1) + group +
                       picture(0);
  EXPECT_FALSE(finish_video(stream, {.pulldown = true}));
  EXPECT_EQ(fields_of(stream), (std::vector<std::string>{"11", "10", "00", "01",  // 0 3 1 2
                                                         "01", "11", "00",        // 6 4 5
                                                         "10"}));                 // 7
}

// 24 pictures a second take 2.4975 fields each: after a thousand of them a field less than 2.5.
TEST(VideoFinish, PulldownOfWholeFilmKeepsItsTimes) {
  std::string stream = sequence(2);
  for (unsigned n = 0; n < 1001; ++n)
    stream += (n % 10 == 0 ? group : std::string()) + picture(n % 10);
  EXPECT_FALSE(finish_video(stream, {.pulldown = true}));
  const std::vector<std::string> pictures = fields_of(stream);
  ASSERT_EQ(pictures.size(), 1001u);
  unsigned fields = 0;
  for (std::size_t n = 0; n < pictures.size(); ++n) {
    EXPECT_NEAR(fields * 1001.0 / 60000, static_cast<double>(n) / 24, 1001.0 / 60000) << n;
    EXPECT_EQ(pictures[n][0], fields % 2 == 0 ? '1' : '0') << n;
    fields += pictures[n][1] == '1' ? 3 : 2;
  }
  EXPECT_EQ(fields, 2500u);
  EXPECT_EQ(read_sequence_header(behind(stream, raw({0, 0, 1, 0xB3})))->rate_numerator, 30000);
}

TEST(VideoFinish, PulldownLeavesOtherRatesAlone) {
  for (const unsigned rate : {3u, 4u}) {
    const std::string before = sequence(rate) + group + picture(0) + picture(1);
    std::string stream = before;
    EXPECT_FALSE(finish_video(stream, {.pulldown = true}));
    EXPECT_EQ(stream, before);
  }
}

TEST(VideoFinish, PulldownTwiceIsPulldownOnce) {
  std::string stream = sequence() + group + picture(0) + picture(1);
  EXPECT_FALSE(finish_video(stream, {.pulldown = true}));
  const std::string once = stream;
  EXPECT_FALSE(finish_video(stream, {.pulldown = true}));
  EXPECT_EQ(stream, once);
}

TEST(VideoFinish, InterlacedPicturesGetNoPulldown) {
  for (const std::string& odd : {picture(0, 1), picture(0, 3, false)}) {
    std::string stream = sequence() + group + odd;
    const std::string before = stream;
    EXPECT_EQ(finish_video(stream, {.pulldown = true}),
              "it has pictures whose fields are of different moments");
    EXPECT_EQ(stream, before);
  }
}

TEST(VideoFinish, ARateThatChangesGetsNoPulldown) {
  std::string stream = sequence(1) + group + picture(0) + sequence(4) + group + picture(0);
  EXPECT_EQ(finish_video(stream, {.pulldown = true}), "the rate of the pictures changes");
}

TEST(VideoFinish, SlicesMakeNoDifference) {
  std::string whole =
      sequence() + group + picture(0) + picture(1) + sequence() + group + picture(0);
  const std::string before = whole;
  const video_finish what{.end_code = true, .pulldown = true};
  ASSERT_FALSE(finish_video(whole, what));
  for (std::size_t slice = 1; slice < 30; ++slice) {
    std::string stream = before;
    video_finisher finisher(what);
    const auto apply = [&](std::size_t fed) {
      for (const byte_change& one : finisher.take_changes()) {
        ASSERT_LT(one.position, fed);
        stream[one.position] = static_cast<char>(one.value);
      }
    };
    for (std::size_t at = 0; at < before.size(); at += slice) {
      const std::size_t size = std::min(slice, before.size() - at);
      finisher.feed(reinterpret_cast<const std::uint8_t*>(before.data()) + at, size);
      apply(at + size);
    }
    finisher.finish();
    apply(before.size());
    EXPECT_EQ(stream + finisher.ending(), whole) << slice;
  }
}

}  // namespace
}  // namespace corvane
