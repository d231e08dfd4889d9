// Pictures of films and files, for pages: those that a player shows at that time.
#include "drawing/page_pictures.h"

#include "media/source_probe.h"
#include "media/sources.h"
#include "media/streams.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

namespace corvane {
namespace {

using media_test::source;
using media_test::stream;

picture at(page_pictures& pictures, const std::string& file, double seconds) {
  const auto shown = pictures.at(file, seconds);
  EXPECT_TRUE(shown) << file << ": " << shown.error;
  return shown ? (*shown)->pixels : picture();
}

/// By the index of the whole film.
picture by_index(const std::string& file, double seconds) {
  auto video = video_file::open(file);
  EXPECT_TRUE(video) << video.error;
  for (auto done = (*video)->scan(1000); done && !done->finished;)
    done = (*video)->scan(1000);
  const auto shown = (*video)->picture_at(seconds);
  EXPECT_TRUE(shown) << shown.error;
  return shown ? *shown : picture();
}

TEST(PagePictures, AreThoseOnTheScreenAtTheirTime) {
  for (const char* const name : {"closed.m2v", "open.m2v", "open.vob", "pal.mpg", "disc.vob"}) {
    page_pictures pictures;
    for (const double seconds : {0.0, 0.51, 1.23, 0.9, 99.0})
      EXPECT_TRUE(
          media_test::same(at(pictures, stream(name), seconds), by_index(stream(name), seconds)))
          << name << " " << seconds;
  }
}

TEST(PagePictures, OfOtherFilmsAreTold) {
  page_pictures pictures;
  const std::string film = source("colours.mkv");
  const auto is_red = [](const picture& p) { return p.rgb.at(0) > 200 && p.rgb.at(1) < 60; };
  const auto is_blue = [](const picture& p) { return p.rgb.at(2) > 200 && p.rgb.at(1) < 60; };
  EXPECT_TRUE(is_red(at(pictures, film, 0.5)));
  EXPECT_TRUE(is_blue(at(pictures, film, 2.5)));
  EXPECT_TRUE(is_red(at(pictures, film, -1)));
}

TEST(PagePictures, AreKept) {
  page_pictures pictures;
  const auto once = pictures.at(stream("closed.m2v"), 1),
             other = pictures.at(stream("open.m2v"), 1);
  const auto again = pictures.at(stream("closed.m2v"), 1);
  ASSERT_TRUE(once && other && again);
  EXPECT_EQ(once->get(), again->get());
  EXPECT_NE(once->get(), other->get());
}

TEST(PagePictures, HaveTheShapeThatTheStreamStates) {
  page_pictures pictures;
  const auto wide = pictures.at(stream("pal.m2v"), 0);
  ASSERT_TRUE(wide) << wide.error;
  EXPECT_NEAR((*wide)->pixel_aspect, 16.0 / 11, 1e-9) << "704 of 720 pixels are 16:9";
}

TEST(PagePictures, ThatCannotBeHadAreTold) {
  page_pictures pictures;
  EXPECT_FALSE(pictures.at("/no/such/file.m2v", 0));
  const auto text = pictures.at(stream("foreign/text.m2v"), 0);
  EXPECT_FALSE(text);
  EXPECT_FALSE(text.error.empty());
  EXPECT_TRUE(pictures.at(stream("closed.m2v"), 0)) << "and hinder no others";
}

TEST(PagePictures, BecomeThumbnailsOfTheBoxesSize) {
  page_pictures pictures;
  const auto made = thumbnail(pictures, stream("pal.m2v"), 0.5, 96, 54, 12.0 / 11);
  ASSERT_TRUE(made) << made.error;
  EXPECT_EQ(made->pixels.width, 96);
  EXPECT_EQ(made->pixels.height, 54);
  const auto whole = thumbnail(pictures, stream("pal.m2v"), 0.5, 96, 96, 12.0 / 11, page_fit::fit);
  ASSERT_TRUE(whole);
  EXPECT_EQ(whole->pixels.width, 96);
  EXPECT_EQ(whole->pixels.height, 58);
}

}  // namespace
}  // namespace corvane
