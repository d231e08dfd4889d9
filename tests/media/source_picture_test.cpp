// Pictures of files such as people have, as a viewer would see them.
#include "media/source_probe.h"
#include "media/sources.h"
#include "platform/files/files.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdlib>
#include <limits>
#include <string>
#include <vector>

namespace corvane {
namespace {

using namespace std::string_literals;
using media_test::source;
using testing_support::temporary_folder;

using colour = std::array<int, 3>;
constexpr colour of_red{254, 0, 0}, of_lime{0, 255, 0}, of_blue{0, 0, 255}, of_white{255, 255, 255};

colour colour_at(const picture& shown, int x, int y) {
  const auto row = static_cast<std::size_t>(y) * static_cast<std::size_t>(shown.width);
  const std::size_t at = 3 * (row + static_cast<std::size_t>(x));
  return {shown.rgb.at(at), shown.rgb.at(at + 1), shown.rgb.at(at + 2)};
}

void expect_colour(const picture& shown, int x, int y, colour wanted, int off = 12) {
  const colour there = colour_at(shown, x, y);
  for (std::size_t i = 0; i < wanted.size(); ++i)
    EXPECT_NEAR(there[i], wanted[i], off) << "component " << i << " at " << x << ", " << y;
}

picture shown(const std::string& path, double seconds, int width, int height) {
  auto made = source_picture(path, seconds, width, height);
  EXPECT_TRUE(made) << path << ": " << made.error;
  if (!made)
    return {1, 1, {0, 0, 0}};
  EXPECT_EQ(made->rgb.size(), static_cast<std::size_t>(3 * made->width * made->height));
  return *made;
}

void expect_size(const picture& made, int width, int height) {
  EXPECT_EQ(made.width, width);
  EXPECT_EQ(made.height, height);
}

/// The colours of the four corners, from the top left one in rows.
void expect_corners(const picture& made, const std::array<colour, 4>& wanted) {
  const int right = made.width - 4, bottom = made.height - 4;
  expect_colour(made, 3, 3, wanted[0]);
  expect_colour(made, right, 3, wanted[1]);
  expect_colour(made, 3, bottom, wanted[2]);
  expect_colour(made, right, bottom, wanted[3]);
}

TEST(SourcePicture, IsThatOfTheTimeAskedFor) {
  const std::string film = source("colours.mkv");
  expect_colour(shown(film, 0, 64, 48), 10, 10, of_red);
  expect_colour(shown(film, 0.9, 64, 48), 10, 10, of_red);
  expect_colour(shown(film, 1.5, 64, 48), 10, 10, of_lime);
  expect_colour(shown(film, 2.5, 64, 48), 10, 10, of_blue);
}

TEST(SourcePicture, OutsideOfTheFilmIsTheNearestOne) {
  const std::string film = source("colours.mkv");
  expect_colour(shown(film, 99, 64, 48), 10, 10, of_blue);
  expect_colour(shown(film, 1e300, 64, 48), 10, 10, of_blue);
  expect_colour(shown(film, -5, 64, 48), 10, 10, of_red);
  expect_colour(shown(film, std::numeric_limits<double>::quiet_NaN(), 64, 48), 10, 10, of_red);
}

TEST(SourcePicture, CountsTimeFromTheBeginningOfTheFile) {
  EXPECT_EQ(shown(source("start-7.mkv"), 0.2, 64, 48).rgb,
            shown(source("h264-ac3.mkv"), 0.2, 64, 48).rgb);
  EXPECT_NE(shown(source("start-7.mkv"), 0.2, 64, 48).rgb,
            shown(source("h264-ac3.mkv"), 0.4, 64, 48).rgb);
}

TEST(SourcePicture, FitsIntoTheBox) {
  const std::string film = source("quadrants.mp4");
  expect_size(shown(film, 0, 32, 32), 32, 24);
  expect_size(shown(film, 0, 500, 12), 16, 12);
  expect_size(shown(film, 0, 1, 1), 1, 1);
  expect_size(shown(film, 0, 0, -3), 1, 1);
  expect_corners(shown(film, 0, 32, 32), {of_red, of_lime, of_blue, of_white});
}

TEST(SourcePicture, IsNotLargerThanItWas) {
  expect_size(shown(source("quadrants.mp4"), 0, 1000, 1000), 64, 48);
  expect_size(shown(source("one-pixel.mkv"), 0, 1000, 1000), 1, 1);
}

TEST(SourcePicture, HasSquarePixels) {
  expect_size(shown(source("anamorphic.mp4"), 0, 1000, 1000), 102, 58);
  expect_size(shown(source("dv.dv"), 0, 160, 160), 160, 120);
}

TEST(SourcePicture, IsTurned) {
  const picture made = shown(source("quadrants-90.mp4"), 0, 64, 64);
  expect_size(made, 48, 64);
  expect_corners(made, {of_lime, of_white, of_red, of_blue});
}

// The film of quadrants with this matrix in its head, which is for the places of pixels.
std::string film_with(int a, int b, int c, int d) {
  const auto film = read_file(source("quadrants.mp4"), 1 << 20);
  EXPECT_TRUE(film);
  const auto number = [](int sign) {
    return sign > 0 ? "\0\1\0\0"s : sign < 0 ? "\xFF\xFF\0\0"s : "\0\0\0\0"s;
  };
  const std::string end = "\0\0\0\0\0\0\0\0\x40\0\0\0"s;
  const std::string none = number(0);
  const std::string upright = number(1) + none + none + none + number(1) + none + end;
  const std::string wanted = number(a) + number(b) + none + number(c) + number(d) + none + end;
  std::string made = *film;
  const std::size_t at = made.find(upright, made.find("tkhd"));
  EXPECT_NE(at, std::string::npos);
  return at == std::string::npos ? made : made.replace(at, upright.size(), wanted);
}

struct matrix {
  int a, b, c, d;
  int turned;
  bool mirrored;
  std::array<colour, 4> corners;
};

TEST(SourcePicture, OfAFilmIsTurnedAndMirroredAsItsMatrixSays) {
  const std::vector<matrix> all = {
      {1, 0, 0, 1, 0, false, {of_red, of_lime, of_blue, of_white}},
      {-1, 0, 0, 1, 0, true, {of_lime, of_red, of_white, of_blue}},
      {-1, 0, 0, -1, 180, false, {of_white, of_blue, of_lime, of_red}},
      {1, 0, 0, -1, 180, true, {of_blue, of_white, of_red, of_lime}},
      {0, 1, -1, 0, 90, false, {of_blue, of_red, of_white, of_lime}},
      {0, -1, 1, 0, 270, false, {of_lime, of_white, of_red, of_blue}},
      {0, 1, 1, 0, 270, true, {of_red, of_blue, of_lime, of_white}},
      {0, -1, -1, 0, 90, true, {of_white, of_lime, of_blue, of_red}},
  };
  const temporary_folder folder;
  for (const matrix& wanted : all) {
    const std::string path = folder.add("a.mp4", film_with(wanted.a, wanted.b, wanted.c, wanted.d));
    const auto facts = probe_source(path);
    ASSERT_TRUE(facts) << facts.error;
    EXPECT_EQ(facts->streams.at(0).video.turned, wanted.turned);
    EXPECT_EQ(facts->streams[0].video.mirrored, wanted.mirrored) << wanted.turned;
    expect_corners(shown(path, 0, 100, 100), wanted.corners);
  }
}

TEST(SourcePicture, OfEveryKindOfFilmCanBeHad) {
  for (const char* const name :
       {"h264-aac.mp4",   "h264-pcm.mov",      "h264-ac3.mkv",    "h264-aac.ts",   "h264-aac.flv",
        "hevc-aac.mp4",   "vp9-opus.webm",     "vp8-vorbis.webm", "mpeg4-mp3.avi", "mjpeg-pcm.avi",
        "prores-pcm.mov", "prores4444.mov",    "mpeg1-mp2.mpg",   "mpeg2-mp2.mpg", "mpeg2-ac3.ts",
        "wmv2-wma.asf",   "theora-vorbis.ogv", "ffv1-flac.mkv",   "h264.264",      "ten-bit.mkv",
        "444.mkv",        "gif.gif",           "large-start.ts"})
    expect_size(shown(source(name), 0.3, 32, 32), 32, 24);
}

TEST(SourcePicture, OfAStillIsTheStill) {
  for (const char* const name : {"still.png", "still.jpg", "still.bmp", "still.tiff", "one.gif"})
    expect_size(shown(source(name), 3, 100, 100), 65, 47);
}

TEST(SourcePicture, OfASoundFileIsItsCover) {
  expect_size(shown(source("cover.mp3"), 3, 100, 100), 65, 47);
}

TEST(SourcePicture, StandsOnBlackWhereItCanBeSeenThrough) {
  const picture made = shown(source("half.png"), 0, 64, 48);
  expect_colour(made, 60, 44, {128, 128, 128});
  expect_colour(made, 4, 4, {127, 0, 0});
}

// A photograph with this orientation in its head.
std::string photograph(int orientation) {
  const auto picture = read_file(source("quadrants.jpg"), 1 << 20);
  EXPECT_TRUE(picture);
  const std::string head = "Exif\0\0II*\0\x08\0\0\0\1\0\x12\1\3\0\1\0\0\0"s +
                           static_cast<char>(orientation) + "\0\0\0\0\0\0\0"s;
  return picture->substr(0, 2) + "\xFF\xE1\0"s + static_cast<char>(head.size() + 2) + head +
         picture->substr(2);
}

struct orientation {
  int number;
  int turned;
  bool mirrored;
  std::array<colour, 4> corners;
};

TEST(SourcePicture, OfAPhotographIsTurnedAsItsHeadSays) {
  const std::vector<orientation> all = {
      {1, 0, false, {of_red, of_lime, of_blue, of_white}},
      {2, 0, true, {of_lime, of_red, of_white, of_blue}},
      {3, 180, false, {of_white, of_blue, of_lime, of_red}},
      {4, 180, true, {of_blue, of_white, of_red, of_lime}},
      {5, 270, true, {of_red, of_blue, of_lime, of_white}},
      {6, 90, false, {of_blue, of_red, of_white, of_lime}},
      {7, 90, true, {of_white, of_lime, of_blue, of_red}},
      {8, 270, false, {of_lime, of_white, of_red, of_blue}},
  };
  const temporary_folder folder;
  for (const orientation& wanted : all) {
    const std::string path = folder.add("a.jpg", photograph(wanted.number));
    const auto facts = probe_source(path);
    ASSERT_TRUE(facts) << facts.error;
    EXPECT_EQ(facts->streams.at(0).video.turned, wanted.turned) << wanted.number;
    EXPECT_EQ(facts->streams[0].video.mirrored, wanted.mirrored) << wanted.number;
    const bool sideways = wanted.turned % 180 != 0;
    const picture made = shown(path, 0, 100, 100);
    expect_size(made, sideways ? 48 : 64, sideways ? 64 : 48);
    expect_corners(made, wanted.corners);
  }
}

}  // namespace
}  // namespace corvane
