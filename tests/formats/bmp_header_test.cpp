// The headers of bitmap files.
#include "formats/bmp_header.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

using namespace std::string_literals;

const std::string file_header = "BM\x46\0\0\0\0\0\0\0\x3E\1\0\0"s;

/// 300 x -200, 4 bits, run-length encoded, 5 colours.
const std::string windows = file_header + "\x28\0\0\0\x2C\1\0\0\x38\xFF\xFF\xFF\1\0\4\0"s +
                            "\2\0\0\0"s + std::string(12, 'x') + "\5\0\0\0\0\0\0\0"s;

/// 300 x 200, 8 bits.
const std::string os2 = file_header + "\x0C\0\0\0\x2C\1\xC8\0\1\0\x08\0"s;

TEST(BmpHeader, OfWindowsTellsSizeBitsAndColours) {
  const auto header = read_bmp_header(windows);
  ASSERT_TRUE(header);
  EXPECT_FALSE(header->is_core());
  EXPECT_EQ(header->pixels, 318u);
  EXPECT_EQ(header->header_size, 40u);
  EXPECT_EQ(header->width, 300);
  EXPECT_EQ(header->height, -200);
  EXPECT_EQ(header->bits, 4u);
  EXPECT_EQ(header->compression, 2u);
  EXPECT_EQ(header->colours, 5u);
}

TEST(BmpHeader, OfOs2IsShorter) {
  const auto header = read_bmp_header(os2);
  ASSERT_TRUE(header);
  EXPECT_TRUE(header->is_core());
  EXPECT_EQ(header->width, 300);
  EXPECT_EQ(header->height, 200);
  EXPECT_EQ(header->bits, 8u);
  EXPECT_EQ(header->compression, 0u);
}

TEST(BmpHeader, CutOffOrOfAnUnknownSizeIsNone) {
  for (std::size_t size = 0; size < windows.size(); ++size)
    EXPECT_FALSE(read_bmp_header(windows.substr(0, size))) << size;
  for (std::size_t size = 0; size < os2.size(); ++size)
    EXPECT_FALSE(read_bmp_header(os2.substr(0, size))) << size;
  std::string other = windows;
  other[14] = 39;
  EXPECT_FALSE(read_bmp_header(other));
  other[14] = 124;
  EXPECT_TRUE(read_bmp_header(other));
}

TEST(BmpHeader, BitsStandAtOnePlaceForWindows) {
  EXPECT_EQ(windows_bmp_bits(windows), 4);
  EXPECT_EQ(windows_bmp_bits(std::string(28, 'x') + '\xFF'), 255);
  EXPECT_EQ(windows_bmp_bits(windows.substr(0, enough_for_bmp_bits)), 4);
  EXPECT_FALSE(windows_bmp_bits(windows.substr(0, enough_for_bmp_bits - 1)));
}

TEST(BmpHeader, AFileCallsItselfABitmapByTwoLetters) {
  EXPECT_TRUE(begins_bitmap("BM"));
  EXPECT_FALSE(begins_bitmap("B"));
  EXPECT_FALSE(begins_bitmap("bm.."));
}

}  // namespace
}  // namespace corvane
