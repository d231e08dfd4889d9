// The header fields, from bytes as the standards lay them out.
#include "formats/video_headers.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>

namespace corvane {
namespace {

using bytes8 = std::array<std::uint8_t, header_bytes>;

// 720 x 480, aspect and rate as given.
bytes8 sequence(int aspect, int rate) {
  return {0x2D, 0x01, 0xE0, static_cast<std::uint8_t>(aspect << 4 | rate), 0xFF, 0xFF, 0xE0, 0};
}

TEST(VideoHeaders, SequenceHeaderTellsSizeAndRate) {
  const auto shape = read_sequence_header(sequence(1, 4).data());
  ASSERT_TRUE(shape);
  EXPECT_EQ(shape->width, 720);
  EXPECT_EQ(shape->height, 480);
  EXPECT_EQ(shape->rate_numerator, 30000);
  EXPECT_EQ(shape->rate_denominator, 1001);
  EXPECT_FALSE(shape->mpeg2);
}

TEST(VideoHeaders, AllEightRates) {
  const double rates[] = {24000.0 / 1001, 24, 25, 30000.0 / 1001, 30, 50, 60000.0 / 1001, 60};
  for (int code = 1; code <= 8; ++code) {
    const auto shape = read_sequence_header(sequence(2, code).data());
    ASSERT_TRUE(shape) << code;
    EXPECT_DOUBLE_EQ(double(shape->rate_numerator) / shape->rate_denominator, rates[code - 1]);
  }
}

TEST(VideoHeaders, ForbiddenValuesAreNoSequenceHeader) {
  for (const int rate : {0, 9, 15})
    EXPECT_FALSE(read_sequence_header(sequence(2, rate).data())) << rate;
  for (const int aspect : {0, 15})
    EXPECT_FALSE(read_sequence_header(sequence(aspect, 4).data())) << aspect;
  bytes8 no_marker = sequence(2, 4);
  no_marker[6] = 0xC0;
  EXPECT_FALSE(read_sequence_header(no_marker.data()));
  bytes8 no_width = sequence(2, 4);
  no_width[0] = no_width[1] = 0;
  EXPECT_FALSE(read_sequence_header(no_width.data()));
  bytes8 no_height = sequence(2, 4);
  no_height[1] = no_height[2] = 0;
  EXPECT_FALSE(read_sequence_header(no_height.data()));
}

TEST(VideoHeaders, SequenceExtensionCompletesTheShape) {
  auto shape = read_sequence_header(sequence(3, 4).data());
  ASSERT_TRUE(shape);
  // Interlaced; sizes 4096 and 8192 larger; rate x 2 / 3.
  const bytes8 extension{0x14, 0x82, 0xC0, 0x01, 0x00, 0x22, 0, 0};
  ASSERT_TRUE(read_sequence_extension(extension.data(), *shape));
  EXPECT_TRUE(shape->mpeg2);
  EXPECT_FALSE(shape->progressive_sequence);
  EXPECT_EQ(shape->width, 720 + 4096);
  EXPECT_EQ(shape->height, 480 + 8192);
  EXPECT_EQ(shape->rate_numerator, 60000);
  EXPECT_EQ(shape->rate_denominator, 3003);
  EXPECT_EQ(shape->aspect_width, 16);
  EXPECT_EQ(shape->aspect_height, 9);
}

TEST(VideoHeaders, AnotherExtensionIsNoSequenceExtension) {
  auto shape = read_sequence_header(sequence(3, 4).data());
  const video_shape before = *shape;
  const bytes8 display_extension{0x23, 0x82, 0xC0, 0x01, 0x00, 0x22, 0, 0};
  EXPECT_FALSE(read_sequence_extension(display_extension.data(), *shape));
  EXPECT_EQ(*shape, before);
}

TEST(VideoHeaders, ProportionsOfBothStandards) {
  struct {
    int code;
    bool mpeg2;
    int width, height;
  } const rows[] = {{1, true, 0, 0},   {2, true, 4, 3},   {3, true, 16, 9}, {4, true, 221, 100},
                    {1, false, 0, 0},  {12, false, 4, 3}, {8, false, 4, 3}, {3, false, 16, 9},
                    {6, false, 16, 9}, {2, false, 0, 0}};
  const bytes8 extension{0x14, 0x82, 0, 0, 0, 0, 0, 0};
  for (const auto& row : rows) {
    auto shape = read_sequence_header(sequence(row.code, 4).data());
    ASSERT_TRUE(shape);
    if (row.mpeg2)
      read_sequence_extension(extension.data(), *shape);
    EXPECT_EQ(shape->aspect_width, row.width) << row.code << row.mpeg2;
    EXPECT_EQ(shape->aspect_height, row.height) << row.code << row.mpeg2;
  }
}

TEST(VideoHeaders, PictureKinds) {
  const picture_kind kinds[] = {picture_kind::other,     picture_kind::intra,
                                picture_kind::predicted, picture_kind::bidirectional,
                                picture_kind::other,     picture_kind::other,
                                picture_kind::other,     picture_kind::other};
  for (int type = 0; type < 8; ++type) {
    const bytes8 header{0xFF, static_cast<std::uint8_t>(0xC7 | type << 3), 0, 0, 0, 0, 0, 0};
    EXPECT_EQ(read_picture_kind(header.data()), kinds[type]) << type;
  }
}

TEST(VideoHeaders, GroupHeader) {
  const bytes8 closed{0, 8, 0, 0x40, 0, 0, 0, 0}, open{0xFF, 0xFF, 0xFF, 0x9F, 0, 0, 0, 0},
      broken{0, 8, 0, 0x20, 0, 0, 0, 0};
  EXPECT_TRUE(read_group_header(closed.data()).closed);
  EXPECT_FALSE(read_group_header(closed.data()).broken_link);
  EXPECT_FALSE(read_group_header(open.data()).closed);
  EXPECT_FALSE(read_group_header(open.data()).broken_link);
  EXPECT_FALSE(read_group_header(broken.data()).closed);
  EXPECT_TRUE(read_group_header(broken.data()).broken_link);
}

TEST(VideoHeaders, DemandsOfASequenceHeader) {
  // Bit rate 0x12345 and buffer 0x2AB, around the marker bit.
  const bytes8 header{0x2D, 0x01, 0xE0, 0x24, 0x48, 0xD1, 0x40 | 0x20 | 0x15, 0x58};
  const video_demands demands = read_video_demands(header.data());
  EXPECT_EQ(demands.bit_rate_value, 0x12345u);
  EXPECT_EQ(demands.bit_rate(), 0x12345u * 400u);
  EXPECT_EQ(demands.vbv_value, 0x2ABu);
  EXPECT_EQ(demands.vbv_bytes(), 0x2ABu * 2048u);
  EXPECT_EQ(demands.profile_and_level, 0);
  EXPECT_EQ(demands.chroma_format, 1);
  EXPECT_FALSE(demands.mpeg2);
  EXPECT_FALSE(demands.low_delay);
}

TEST(VideoHeaders, OnlyMpeg1HasAValueForAVariableBitRate) {
  const bytes8 header{0x2D, 0x01, 0xE0, 0x24, 0xFF, 0xFF, 0xE0, 0};
  video_demands demands = read_video_demands(header.data());
  EXPECT_EQ(demands.bit_rate(), std::nullopt);
  const bytes8 extension{0x14, 0x82, 0, 0x01, 0, 0, 0, 0};
  ASSERT_TRUE(read_demands_extension(extension.data(), demands));
  EXPECT_EQ(demands.bit_rate(), 0x3FFFFu * 400u);
}

TEST(VideoHeaders, SequenceExtensionCompletesTheDemands) {
  const bytes8 header{0x2D, 0x01, 0xE0, 0x24, 0x48, 0xD1, 0x75, 0x58};
  video_demands demands = read_video_demands(header.data());
  // Profile 4:2:2 at main level (0x85), chroma 4:2:2, bit rate 0xABC << 18, buffer 0x5A << 10, low
  // delay.
  const bytes8 extension{0x18, 0x54, 0x15, 0x79, 0x5A, 0x80, 0, 0};
  ASSERT_TRUE(read_demands_extension(extension.data(), demands));
  EXPECT_TRUE(demands.mpeg2);
  EXPECT_EQ(demands.profile_and_level, 0x85);
  EXPECT_EQ(demands.chroma_format, 2);
  EXPECT_EQ(demands.bit_rate(), ((std::uint64_t{0xABC} << 18) + 0x12345) * 400);
  EXPECT_EQ(demands.vbv_bytes(), ((std::uint64_t{0x5A} << 10) + 0x2AB) * 2048);
  EXPECT_TRUE(demands.low_delay);
  const video_demands before = demands;
  const bytes8 display_extension{0x23, 0x82, 0xC0, 0x01, 0x00, 0x22, 0, 0};
  EXPECT_FALSE(read_demands_extension(display_extension.data(), demands));
  EXPECT_EQ(demands, before);
}

TEST(VideoHeaders, DisplaySizeWithAndWithoutColours) {
  // 720 x 576 behind a byte, and 540 x 480 behind four.
  const bytes8 plain{0x2A, 0x0B, 0x42, 0x12, 0x00, 0, 0, 0};
  EXPECT_EQ(read_display_size(plain.data()), (stored_size{720, 576}));
  const bytes8 coloured{0x2B, 0x05, 0x05, 0x05, 0x08, 0x72, 0x0F, 0x00};
  EXPECT_EQ(read_display_size(coloured.data()), (stored_size{540, 480}));
  const bytes8 another{0x14, 0x82, 0, 0x01, 0, 0, 0, 0};
  EXPECT_EQ(read_display_size(another.data()), std::nullopt);
}

TEST(VideoHeaders, DelayInTheBuffer) {
  const bytes8 variable{0xFF, 0xCF, 0xFF, 0xF8, 0, 0, 0, 0},
      some{0xFF, 0xF9, 0x23, 0x47, 0, 0, 0, 0};
  EXPECT_EQ(read_vbv_delay(variable.data()), variable_vbv_delay);
  EXPECT_EQ(read_vbv_delay(some.data()), 1 << 13 | 0x23 << 5 | 0x47 >> 3);
}

TEST(VideoHeaders, PictureCodingExtension) {
  const bytes8 repeated{0x8F, 0xFF, 0xF3, 0xC2, 0x80, 0, 0, 0};
  const auto extension = read_picture_extension(repeated.data());
  ASSERT_TRUE(extension);
  EXPECT_EQ(extension->structure, picture_extension::frame);
  EXPECT_TRUE(extension->top_field_first);
  EXPECT_TRUE(extension->repeat_first_field);
  const bytes8 bottom{0x8F, 0xFF, 0xF2, 0x40, 0x00, 0, 0, 0};
  EXPECT_EQ(read_picture_extension(bottom.data())->structure, picture_extension::bottom_field);
  EXPECT_FALSE(read_picture_extension(bottom.data())->repeat_first_field);
  const bytes8 quantiser{0x3F, 0xFF, 0xF3, 0xC2, 0x80, 0, 0, 0};
  EXPECT_FALSE(read_picture_extension(quantiser.data()));
}

TEST(VideoHeaders, ARepeatedFieldIsShownHalfAPictureLonger) {
  video_shape interlaced, progressive;
  progressive.progressive_sequence = true;
  picture_extension once, twice{picture_extension::frame, false, true},
      top{picture_extension::frame, true, true};
  EXPECT_EQ(shown_fields(interlaced, once), 2);
  EXPECT_EQ(shown_fields(interlaced, twice), 3);
  EXPECT_EQ(shown_fields(interlaced, top), 3);
  EXPECT_EQ(shown_fields(progressive, once), 2);
  EXPECT_EQ(shown_fields(progressive, twice), 4);
  EXPECT_EQ(shown_fields(progressive, top), 6);
}

}  // namespace
}  // namespace corvane
