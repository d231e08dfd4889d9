#include "formats/jpeg_check.h"

#include <gtest/gtest.h>

#include <vector>

namespace corvane {
namespace {

/// A segment: marker, length, data.
std::string segment(int marker, const std::string& data) {
  const std::size_t length = data.size() + 2;
  return std::string("\xFF") + static_cast<char>(marker) + static_cast<char>(length >> 8) +
         static_cast<char>(length & 255) + data;
}

std::string jfif() {
  return segment(0xE0, std::string("JFIF\0\1\1\0\0\1\0\1\0\0", 14));
}

std::string adobe(int transform) {
  return segment(0xEE, std::string("Adobe\0\x64\0\0\0\0", 11) + static_cast<char>(transform));
}

/// A frame header of a 720x480 picture; a component is its number and its two factors.
std::string frame(const std::vector<std::pair<int, int>>& components, int coding = 0,
                  int bits = 8) {
  std::string data = {static_cast<char>(bits),
                      '\x01',
                      '\xE0',
                      '\x02',
                      '\xD0',
                      static_cast<char>(components.size())};
  for (const auto& [id, factors] : components)
    data += {static_cast<char>(id), static_cast<char>(factors), '\0'};
  return segment(0xC0 + coding, data);
}

std::string jpeg(const std::string& segments) {
  return "\xFF\xD8" + segments + "\xFF\xDA";
}

const std::vector<std::pair<int, int>> plain = {{1, 0x22}, {2, 0x11}, {3, 0x11}};

TEST(JpegCheck, PlainPicturesAreTaken) {
  for (const int brightness : {0x11, 0x21, 0x12, 0x22})
    EXPECT_EQ(why_not_for_jpeg2yuv(jpeg(jfif() + frame({{1, brightness}, {2, 0x11}, {3, 0x11}}))),
              std::nullopt)
        << brightness;
  EXPECT_EQ(why_not_for_jpeg2yuv(jpeg(jfif() + frame({{1, 0x11}}))), std::nullopt);
  EXPECT_EQ(why_not_for_jpeg2yuv(jpeg(frame(plain))), std::nullopt);
}

TEST(JpegCheck, ProgressiveAndExtendedPicturesAreTaken) {
  EXPECT_EQ(why_not_for_jpeg2yuv(jpeg(jfif() + frame(plain, 1))), std::nullopt);
  EXPECT_EQ(why_not_for_jpeg2yuv(jpeg(jfif() + frame(plain, 2))), std::nullopt);
}

TEST(JpegCheck, CmykIsRefused) {
  const std::vector<std::pair<int, int>> four = {{1, 0x11}, {2, 0x11}, {3, 0x11}, {4, 0x11}};
  for (const int transform : {0, 2})
    EXPECT_EQ(why_not_for_jpeg2yuv(jpeg(adobe(transform) + frame(four))), "has CMYK colours");
}

TEST(JpegCheck, RgbIsRefused) {
  EXPECT_EQ(why_not_for_jpeg2yuv(jpeg(adobe(0) + frame(plain))),
            "has RGB colours instead of YCbCr");
  EXPECT_EQ(why_not_for_jpeg2yuv(jpeg(frame({{'R', 0x11}, {'G', 0x11}, {'B', 0x11}}))),
            "has RGB colours instead of YCbCr");
  // What says otherwise counts more than the components' numbers.
  EXPECT_EQ(why_not_for_jpeg2yuv(jpeg(adobe(1) + frame(plain))), std::nullopt);
  EXPECT_EQ(why_not_for_jpeg2yuv(jpeg(jfif() + adobe(0) + frame(plain))), std::nullopt);
}

TEST(JpegCheck, OddSamplingFactorsAreRefusedAndNamed) {
  EXPECT_EQ(why_not_for_jpeg2yuv(jpeg(jfif() + frame({{1, 0x41}, {2, 0x11}, {3, 0x11}}))),
            "has the sampling factors 4x1, 1x1, 1x1");
  EXPECT_EQ(why_not_for_jpeg2yuv(jpeg(jfif() + frame({{1, 0x22}, {2, 0x12}, {3, 0x12}}))),
            "has the sampling factors 2x2, 1x2, 1x2");
  EXPECT_EQ(why_not_for_jpeg2yuv(jpeg(jfif() + frame({{1, 0x22}}))),
            "has the sampling factors 2x2");
}

TEST(JpegCheck, RareKindsAreRefused) {
  const char* const why =
      "is of a kind of JPEG that is neither baseline nor progressive with 8 bits";
  EXPECT_EQ(why_not_for_jpeg2yuv(jpeg(jfif() + frame(plain, 0, 12))), why);
  for (const int coding : {3, 5, 9, 15})
    EXPECT_EQ(why_not_for_jpeg2yuv(jpeg(jfif() + frame(plain, coding))), why) << coding;
}

TEST(JpegCheck, TheFrameIsFoundBehindOtherSegments) {
  const std::string thumbnail =
      segment(0xE1, "Exif" + frame({{1, 0x41}}) + std::string(60000, 'x'));
  const std::string tables = segment(0xC4, "x") + segment(0xCC, "x") + segment(0xDB, "x");
  EXPECT_EQ(why_not_for_jpeg2yuv(
                jpeg(jfif() + thumbnail + thumbnail + tables + "\xFF\xFF" + frame(plain))),
            std::nullopt);
}

TEST(JpegCheck, AFileWithoutItsEndIsCutOff) {
  const std::string thumbnail = segment(0xE1, "Exif\xFF\xD8\xFF\xD9");
  const std::string head = "\xFF\xD8" + jfif() + thumbnail + frame(plain);
  const std::string scan = segment(0xDA, "x") + std::string("\x12\xFF\x00\x34\xFF\xD0\x56", 7);
  const std::string whole = head + scan + "\xFF\xD9";
  EXPECT_FALSE(is_cut_off_jpeg(whole));
  EXPECT_FALSE(is_cut_off_jpeg(whole + "and more"));
  for (std::size_t length = 0; length < whole.size(); ++length)
    EXPECT_TRUE(is_cut_off_jpeg(whole.substr(0, length))) << length;
}

TEST(JpegCheck, WhatIsNoJpegOrCutOffIsRefused) {
  EXPECT_EQ(why_not_for_jpeg2yuv(""), "is not a JPEG file");
  EXPECT_EQ(why_not_for_jpeg2yuv("BM6"), "is not a JPEG file");
  const std::string whole = "\xFF\xD8" + jfif() + frame(plain);
  for (std::size_t length = 2; length < whole.size(); ++length)
    EXPECT_EQ(why_not_for_jpeg2yuv(whole.substr(0, length)), "is a damaged JPEG file") << length;
  EXPECT_EQ(why_not_for_jpeg2yuv(whole), std::nullopt);
  EXPECT_EQ(why_not_for_jpeg2yuv(jpeg(jfif())), "is a damaged JPEG file");
  EXPECT_EQ(why_not_for_jpeg2yuv(jpeg(jfif() + frame({}))), "is a damaged JPEG file");
  EXPECT_EQ(why_not_for_jpeg2yuv(jpeg(jfif() + frame({{1, 0x11}, {2, 0x11}}))),
            "is a damaged JPEG file");
  EXPECT_EQ(why_not_for_jpeg2yuv(std::string("\xFF\xD8\xFF\xE0\0\1", 6)), "is a damaged JPEG file");
  EXPECT_EQ(why_not_for_jpeg2yuv(std::string("\xFF\xD8\xFF\xC0\0\2", 6)),
            "is of a kind of JPEG that is neither baseline nor progressive with 8 bits");
}

}  // namespace
}  // namespace corvane
