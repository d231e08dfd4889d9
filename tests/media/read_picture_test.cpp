// Still picture files, written byte by byte.
#include "media/picture.h"
#include "media/streams.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

namespace corvane {
namespace {

using namespace std::string_literals;
using testing_support::temporary_folder;

constexpr std::uint32_t uncompressed = 0, run_length_8 = 1, run_length_4 = 2;

std::string little(std::uint64_t n, int bytes) {
  std::string text;
  for (int i = 0; i < bytes; ++i)
    text += static_cast<char>(n >> 8 * i & 0xFF);
  return text;
}

struct bitmap {
  std::int32_t width = 0;
  std::int32_t height = 0;
  int bits = 0;
  std::uint32_t compression = uncompressed;
  std::vector<std::uint32_t> palette;  // 0xRRGGBB
  std::string pixels;

  std::string bytes() const {
    std::string colours;
    for (const std::uint32_t colour : palette)
      colours += little(colour, 4);
    const auto begin = static_cast<std::uint32_t>(14 + 40 + colours.size());
    const auto size = static_cast<std::uint32_t>(pixels.size());
    return "BM" + little(begin + size, 4) + little(0, 4) + little(begin, 4) + little(40, 4) +
           little(static_cast<std::uint32_t>(width), 4) +
           little(static_cast<std::uint32_t>(height), 4) + little(1, 2) +
           little(static_cast<std::uint32_t>(bits), 2) + little(compression, 4) + little(size, 4) +
           little(0, 8) + little(static_cast<std::uint32_t>(palette.size()), 4) + little(0, 4) +
           colours + pixels;
  }
};

// Rows of colours, from the top.
std::vector<std::vector<std::uint32_t>> colours(const result<picture>& p) {
  std::vector<std::vector<std::uint32_t>> rows;
  EXPECT_TRUE(p) << p.error;
  if (!p)
    return rows;
  std::size_t at = 0;
  for (int y = 0; y < p->height; ++y) {
    rows.emplace_back();
    for (int x = 0; x < p->width; ++x, at += 3)
      rows.back().push_back(static_cast<std::uint32_t>(p->rgb.at(at) << 16 |
                                                       p->rgb.at(at + 1) << 8 | p->rgb.at(at + 2)));
  }
  EXPECT_EQ(at, p->rgb.size());
  return rows;
}

using rows = std::vector<std::vector<std::uint32_t>>;
constexpr std::uint32_t black = 0, white = 0xFFFFFF, red = 0xFF0000, green = 0x00FF00,
                        blue = 0x0000FF;

class ReadPicture : public testing::Test {
 protected:
  void SetUp() override { testing::internal::CaptureStderr(); }
  void TearDown() override { EXPECT_EQ(testing::internal::GetCapturedStderr(), ""); }

  result<picture> read(const std::string& bytes) {
    return read_picture(folder.add("a.bmp", bytes));
  }
  temporary_folder folder;
};

TEST_F(ReadPicture, OneBit) {
  const bitmap b{3, 2, 1, uncompressed, {black, white}, "\xA0\0\0\0\x40\0\0\0"s};
  EXPECT_EQ(colours(read(b.bytes())), (rows{{black, white, black}, {white, black, white}}));
}

TEST_F(ReadPicture, TwoBits) {
  // 0 1 2 3 1 and 3 2 1 0 2, the lower row first.
  const bitmap b{5, 2, 2, uncompressed, {black, red, green, blue}, "\x1B\x40\0\0\xE4\x80\0\0"s};
  EXPECT_EQ(colours(read(b.bytes())),
            (rows{{blue, green, red, black, green}, {black, red, green, blue, red}}));
}

TEST_F(ReadPicture, TwoBitsFromTheTop) {
  const bitmap b{5, -2, 2, uncompressed, {black, red, green, blue}, "\x1B\x40\0\0\xE4\x80\0\0"s};
  EXPECT_EQ(colours(read(b.bytes())),
            (rows{{black, red, green, blue, red}, {blue, green, red, black, green}}));
}

TEST_F(ReadPicture, TwoBitsWithFewerColours) {
  const bitmap b{4, 1, 2, uncompressed, {red, green}, "\x10\0\0\0"s};
  EXPECT_EQ(colours(read(b.bytes())), (rows{{red, green, red, red}}));
}

TEST_F(ReadPicture, FourBits) {
  const bitmap b{3, 2, 4, uncompressed, {black, red, green, blue}, "\x12\x30\0\0\x32\x10\0\0"s};
  EXPECT_EQ(colours(read(b.bytes())), (rows{{blue, green, red}, {red, green, blue}}));
}

TEST_F(ReadPicture, FourBitsRunLengthCoded) {
  // A run of 5 pixels 1 2 1 2 1; then four pixels 3 2 1 0 as they are, and one 2.
  const bitmap b{5,
                 2,
                 4,
                 run_length_4,
                 {black, red, green, blue},
                 "\x05\x12\0\0"s + "\0\x04\x32\x10\x01\x20\0\0\0\1"s};
  EXPECT_EQ(colours(read(b.bytes())),
            (rows{{blue, green, red, black, green}, {red, green, red, green, red}}));
}

TEST_F(ReadPicture, EightBits) {
  const bitmap b{2, 2, 8, uncompressed, {black, red, green, blue}, "\0\1\0\0\2\3\0\0"s};
  EXPECT_EQ(colours(read(b.bytes())), (rows{{green, blue}, {black, red}}));
}

TEST_F(ReadPicture, EightBitsRunLengthCoded) {
  const bitmap b{
      4, 2, 8, run_length_8, {black, red, green, blue}, "\4\2\0\0"s + "\0\3\1\2\3\0\1\1\0\0\0\1"s};
  EXPECT_EQ(colours(read(b.bytes())),
            (rows{{red, green, blue, red}, {green, green, green, green}}));
}

TEST_F(ReadPicture, TwentyFourBits) {
  const bitmap b{2, 2, 24, uncompressed, {}, "\0\0\xFF\0\xFF\0\0\0"s + "\xFF\0\0\xFF\xFF\xFF\0\0"s};
  EXPECT_EQ(colours(read(b.bytes())), (rows{{blue, white}, {red, green}}));
}

TEST_F(ReadPicture, RowsFromTheTop) {
  const bitmap b{
      2, -2, 24, uncompressed, {}, "\0\0\xFF\0\xFF\0\0\0"s + "\xFF\0\0\xFF\xFF\xFF\0\0"s};
  EXPECT_EQ(colours(read(b.bytes())), (rows{{red, green}, {blue, white}}));
}

TEST_F(ReadPicture, EveryWidthKeepsItsLastColumn) {
  for (std::int32_t width = 1; width <= 40; ++width) {
    bitmap b{width, 1, 24, uncompressed, {}, {}};
    for (std::int32_t x = 0; x < width; ++x)
      b.pixels += little(0x010203u * static_cast<std::uint32_t>(x + 1), 3);
    b.pixels.resize((b.pixels.size() + 3) / 4 * 4);
    const auto row = colours(read(b.bytes())).at(0);
    for (std::int32_t x = 0; x < width; ++x)
      ASSERT_EQ(row.at(static_cast<std::size_t>(x)), 0x010203u * static_cast<std::uint32_t>(x + 1));
  }
}

#ifndef _WIN32  // FFmpeg's program, which tells what is right, is this machine's
TEST_F(ReadPicture, Jpeg) {
  const auto p = read_picture(media_test::stream("foreign/picture.jpg"));
  ASSERT_TRUE(p) << p.error;
  const auto expected =
      media_test::pictures_by_ffmpeg(media_test::stream("foreign/picture.jpg"), 720, 480);
  ASSERT_EQ(expected.size(), 1u);
  EXPECT_TRUE(media_test::same(*p, expected[0]));
}
#endif

TEST_F(ReadPicture, PicturesTooLargeForAButtonStillHaveTheirSize) {
  const bitmap b{5000, 3000, 4, run_length_4, {red}, "\0\1"s};
  const auto p = read(b.bytes());
  ASSERT_TRUE(p) << p.error;
  EXPECT_EQ(p->width, 5000);
  EXPECT_EQ(p->height, 3000);
}

TEST_F(ReadPicture, HostileSizesAreRefused) {
  for (const std::int32_t side : {16'385, 65'535, 0x7FFFFFFF, -16'385, INT32_MIN}) {
    for (const int bits : {1, 2, 4, 8, 24}) {
      for (const std::uint32_t compression : {uncompressed, run_length_8, run_length_4}) {
        const bitmap tall{10, side, bits, compression, {black, white}, "\0\1"s};
        EXPECT_EQ(read(tall.bytes()).error, "the picture is too large");
        const bitmap wide{side, 10, bits, compression, {black, white}, "\0\1"s};
        EXPECT_EQ(read(wide.bytes()).error,
                  side < 0 ? "the bitmap's header is damaged" : "the picture is too large");
      }
    }
  }
  EXPECT_EQ(read(bitmap{10'000, 10'000, 4, run_length_4, {black}, "\0\1"s}.bytes()).error,
            "the picture is too large");
  for (const auto& [width, height] : {std::pair(0, 5), std::pair(5, 0), std::pair(-5, 5)})
    EXPECT_EQ(read(bitmap{width, height, 24, 0, {}, "\0\0\0\0"s}.bytes()).error,
              "the bitmap's header is damaged");
}

TEST_F(ReadPicture, BitmapsCutAnywhereAreRefused) {
  const bitmap two{5, 2, 2, uncompressed, {black, red, green, blue}, "\x1B\x40\0\0\xE4\x80\0\0"s};
  const bitmap four{3, 2, 4, uncompressed, {black, red, green, blue}, "\x12\x30\0\0\x32\x10\0\0"s};
  for (const std::string& bytes : {two.bytes(), four.bytes()}) {
    const std::size_t needed = bytes.size() - 2;  // what fills up the last row does not matter
    for (std::size_t size = 0; size < needed; ++size) {
      const auto p = read(bytes.substr(0, size));
      EXPECT_FALSE(p) << size;
      EXPECT_FALSE(p.error.empty());
    }
    EXPECT_EQ(colours(read(bytes.substr(0, needed))), colours(read(bytes)));
  }
}

TEST_F(ReadPicture, RunsBeyondThePictureAreNoCrash) {
  for (const std::string& pixels : {"\xFF\x12\xFF\x12\xFF\x12\0\1"s, "\0\2\xFF\xFF\4\x11\0\1"s,
                                    "\0\xFF\x11"s, "\0\0\0\0\0\0\0\0"s, ""s, "\0"s}) {
    const auto p = read(bitmap{5, 2, 4, run_length_4, {black, red, green, blue}, pixels}.bytes());
    EXPECT_TRUE(p || !p.error.empty());
    const auto q = read(bitmap{5, 2, 8, run_length_8, {black, red, green, blue}, pixels}.bytes());
    EXPECT_TRUE(q || !q.error.empty());
  }
}

TEST_F(ReadPicture, OtherFilesAreRefused) {
  EXPECT_EQ(read_picture(media_test::stream("foreign/picture.png")).error,
            "it is neither a bitmap nor a JPEG picture");
  EXPECT_EQ(read("an ordinary text").error, "it is neither a bitmap nor a JPEG picture");
  EXPECT_EQ(read("").error, "it is neither a bitmap nor a JPEG picture");
  EXPECT_EQ(read("BM").error, "the bitmap's header is damaged");
  EXPECT_EQ(read("\xFF\xD8\xFF\xE0 and no more").error, "the picture cannot be decoded");
  EXPECT_EQ(read_picture(folder.path("missing.bmp")).error, "the file does not exist");
  EXPECT_EQ(read_picture(folder.path()).error, "it is a folder, not a file");
}

}  // namespace
}  // namespace corvane
