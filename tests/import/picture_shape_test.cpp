#include "import/picture_shape.h"

#include "made_source.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ostream>

namespace corvane {

// For messages of failed tests.
void PrintTo(const picture_size& size, std::ostream* out) {
  *out << size.width << "x" << size.height;
}

namespace {

using import_test::made_video;

constexpr picture_size ntsc{704, 480}, pal{704, 576};
constexpr disc_aspect narrow = disc_aspect::four_three, wide = disc_aspect::sixteen_nine;

picture_geometry bars(const source_stream& video, picture_size disc, disc_aspect aspect) {
  return fit_picture(shown_picture_of(video.video), disc, aspect, picture_fit::bars);
}

picture_geometry cropped(const source_stream& video, picture_size disc, disc_aspect aspect) {
  return fit_picture(shown_picture_of(video.video), disc, aspect, picture_fit::cropped);
}

/// How much wider than high a circle of the source is shown by the disc.
double circle(const source_stream& video, const picture_geometry& g) {
  const double pixel = shown_picture_of(video.video).pixel_aspect.value();
  const double disc_pixel = ratio_of(g.aspect).value() * g.disc.height / g.disc.width;
  return (1.0 * g.scaled.width / g.cropped.width * disc_pixel) /
         (1.0 * g.scaled.height / g.cropped.height * pixel);
}

TEST(PictureShape, AWidePictureFillsAWideDisc) {
  const picture_geometry g = bars(made_video(1920, 1080, {25, 1}), pal, wide);
  EXPECT_EQ(g.scaled, pal);
  EXPECT_FALSE(g.has_bars());
  EXPECT_FALSE(g.is_cropped(shown_picture_of(made_video(1920, 1080, {25, 1}).video)));
}

TEST(PictureShape, AWidePictureHasBarsAboveAndBelowIn43) {
  const picture_geometry g = bars(made_video(1280, 720, {30, 1}), ntsc, narrow);
  EXPECT_EQ(g.scaled, (picture_size{704, 360}));
  EXPECT_EQ(g.left, 0);
  EXPECT_EQ(g.top, 60);
}

TEST(PictureShape, ANarrowPictureHasBarsAtTheSidesIn169) {
  const picture_geometry g = bars(made_video(640, 480, {30, 1}), ntsc, wide);
  EXPECT_EQ(g.scaled, (picture_size{528, 480}));
  EXPECT_EQ(g.left, 88);
}

TEST(PictureShape, CinemaHasBarsInWideDiscs) {
  const picture_geometry g = bars(made_video(1920, 800, {24, 1}), pal, wide);
  EXPECT_EQ(g.scaled, (picture_size{704, 426}));  // 576 * 16:9 / 2.4 = 426.7
  EXPECT_EQ(g.top, 74);
}

TEST(PictureShape, CroppedLosesItsSides) {
  const source_stream video = made_video(1920, 1080, {25, 1});
  const picture_geometry g = cropped(video, pal, narrow);
  EXPECT_EQ(g.cropped, (picture_size{1440, 1080}));
  EXPECT_EQ(g.crop_left, 240);
  EXPECT_EQ(g.scaled, pal);
  const picture_geometry up = cropped(made_video(640, 480, {25, 1}), pal, wide);
  EXPECT_EQ(up.cropped, (picture_size{640, 360}));
  EXPECT_EQ(up.crop_top, 60);
}

TEST(PictureShape, AnUprightPhoneIsTurned) {
  source_stream video = made_video(1920, 1080, {30, 1});
  video.video.turned = 90;
  const picture_geometry g = bars(video, ntsc, narrow);
  EXPECT_EQ(shown_picture_of(video.video).size, (picture_size{1080, 1920}));
  EXPECT_EQ(g.scaled, (picture_size{298, 480}));  // 704 * 9:16 / 4:3 = 297
  EXPECT_EQ(g.left, 202);
}

// Turned by a quarter, a pixel that was wide is high.
TEST(PictureShape, PixelsAreTurnedToo) {
  source_stream video = made_video(1440, 1080, {30, 1}, source_ratio{4, 3});
  EXPECT_EQ(shown_picture_of(video.video).shape(), (source_ratio{16, 9}));
  video.video.turned = 270;
  EXPECT_EQ(shown_picture_of(video.video).shape(), (source_ratio{9, 16}));
}

TEST(PictureShape, OddSizesBecomeEvenOnes) {
  for (const auto& [width, height] :
       {picture_size{1919, 1081}, {1, 1}, {3, 4001}, {7680, 4320}, {4001, 3}}) {
    const source_stream video = made_video(width, height, {25, 1});
    for (const picture_fit fit : {picture_fit::bars, picture_fit::cropped})
      for (const disc_aspect aspect : {narrow, wide}) {
        const picture_geometry g = fit_picture(shown_picture_of(video.video), ntsc, aspect, fit);
        EXPECT_EQ((g.scaled.width | g.scaled.height | g.left | g.top) & 1, 0);
        EXPECT_GE(g.scaled.width, 2);
        EXPECT_GE(g.scaled.height, 2);
        EXPECT_LE(g.left + g.scaled.width, 704);
        EXPECT_LE(g.top + g.scaled.height, 480);
        EXPECT_LE(g.crop_left + g.cropped.width, width);
        EXPECT_LE(g.crop_top + g.cropped.height, height);
      }
  }
}

TEST(PictureShape, ACircleStaysACircle) {
  const source_stream sources[] = {made_video(1920, 1080, {25, 1}),
                                   made_video(1280, 534, {24, 1}),
                                   made_video(640, 480, {30, 1}),
                                   made_video(720, 480, {30000, 1001}, source_ratio{32, 27}),
                                   made_video(720, 576, {25, 1}, source_ratio{59, 54}),
                                   made_video(720, 576, {25, 1}, source_ratio{118, 81}),
                                   made_video(720, 480, {30000, 1001}, source_ratio{10, 11}),
                                   made_video(1440, 1080, {25, 1}, source_ratio{4, 3}),
                                   made_video(1080, 1080, {30, 1})};
  for (const source_stream& video : sources)
    for (const picture_size disc : {ntsc, pal, picture_size{720, 480}, picture_size{352, 288}})
      for (const disc_aspect aspect : {narrow, wide}) {
        EXPECT_NEAR(circle(video, bars(video, disc, aspect)), 1, 0.005);
        EXPECT_NEAR(circle(video, cropped(video, disc, aspect)), 1, 0.005);
      }
}

// Nothing need be scaled, so that fields stay fields.
TEST(PictureShape, WhatHasMarginsIsOnlyCut) {
  for (const auto& [height, pixel] : {std::pair{480, source_ratio{10, 11}},
                                      {576, source_ratio{12, 11}},
                                      {576, source_ratio{59, 54}}}) {
    const picture_geometry g = bars(made_video(720, height, {25, 1}, pixel), {704, height}, narrow);
    EXPECT_EQ(g.crop_left, 8);
    EXPECT_EQ(g.cropped, (picture_size{704, height}));
    EXPECT_FALSE(g.is_scaled());
    EXPECT_FALSE(g.has_bars());
    EXPECT_TRUE(g.keeps_lines());
  }
}

TEST(PictureShape, WhatHas720PixelsOfTheDiscsShapeStaysAsItIs) {
  const shown_picture source =
      shown_picture_of(made_video(720, 480, {30000, 1001}, source_ratio{8, 9}).video);
  const picture_size disc = disc_size_for(source, video_standard::ntsc, narrow, std::nullopt);
  EXPECT_EQ(disc, (picture_size{720, 480}));
  const picture_geometry g = fit_picture(source, disc, narrow, picture_fit::bars);
  EXPECT_FALSE(g.is_scaled() || g.has_bars() || g.is_cropped(source));
  EXPECT_EQ(disc_size_for(source, video_standard::ntsc, wide, std::nullopt), ntsc);
  EXPECT_EQ(disc_size_for(source, video_standard::ntsc, narrow, picture_size{352, 480}),
            (picture_size{352, 480}));
}

TEST(PictureShape, TelevisionsSizeWithoutAPixelShapeIs43) {
  EXPECT_EQ(shown_picture_of(made_video(720, 576, {25, 1}, std::nullopt).video).shape(),
            (source_ratio{4, 3}));
  EXPECT_EQ(shown_picture_of(made_video(640, 360, {25, 1}, std::nullopt).video).shape(),
            (source_ratio{16, 9}));
}

TEST(PictureShape, TheNearestProportions) {
  EXPECT_EQ(nearest_aspect({4, 3}), narrow);
  EXPECT_EQ(nearest_aspect({153, 100}), narrow);
  EXPECT_EQ(nearest_aspect({155, 100}), wide);
  EXPECT_EQ(nearest_aspect({9, 16}), narrow);
  EXPECT_EQ(nearest_aspect({239, 100}), wide);
}

TEST(PictureShape, FractionsOfAnySizeDoNotOverflow) {
  source_stream video =
      made_video(16384, 16384, {25, 1}, source_ratio{2'147'483'647, 2'147'483'646});
  EXPECT_EQ(bars(video, ntsc, narrow).scaled, (picture_size{528, 480}));
  video.video.pixel_aspect = source_ratio{1, 2'147'483'647};
  EXPECT_EQ(bars(video, ntsc, narrow).scaled, (picture_size{2, 480}));
}

}  // namespace
}  // namespace corvane
