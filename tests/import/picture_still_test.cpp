// What becomes of a picture of any size as a still: its script, its geometry, its names.
#include "import/picture_still.h"

#include "platform/files/files.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

namespace corvane {
namespace {

using testing_support::temporary_folder;

source_facts picture_facts(const std::string& codec, int width, int height, int turned = 0,
                           bool mirrored = false) {
  source_facts facts;
  facts.container = codec + "_pipe";
  source_stream stream;
  stream.kind = source_kind::picture;
  stream.codec = codec;
  stream.decodes = true;
  stream.video.width = width;
  stream.video.height = height;
  stream.video.turned = turned;
  stream.video.mirrored = mirrored;
  facts.streams.push_back(stream);
  return facts;
}

still_source made_picture(const std::string& file, int width, int height, int turned = 0,
                          bool mirrored = false, const std::string& codec = "mjpeg") {
  const auto source = still_source_of(file, picture_facts(codec, width, height, turned, mirrored));
  EXPECT_TRUE(source) << source.error;
  return source ? *source : still_source();
}

constexpr auto ntsc_still = video_standard::ntsc, pal_still = video_standard::pal;
constexpr auto narrow_still = disc_aspect::four_three, wide_still = disc_aspect::sixteen_nine;
constexpr auto barred = picture_fit::bars, filled = picture_fit::cropped;

// The script -------------------------------------------------------------------------------------

TEST(PictureStillScript, OfAPhotoBetweenBarsOnWindows) {
  const picture_still still{made_picture("D:\\my pictures\\menu.jpg", 4000, 3000, 90),
                            {pal_still, wide_still, barred, 15},
                            "D:\\out\\100%.m2v"};
  EXPECT_EQ(picture_still_script("C:\\Program Files\\Corvane 50%", still, path_style::windows),
            "@echo off\r\n"
            "echo *creating m2v still\r\n"
            "\"C:\\Program Files\\Corvane 50%\\bin\\gm.exe\" convert \"JPEG:-[0]\" -rotate 90 "
            "-colorspace RGB -background black -flatten -filter Lanczos -resize 304x576! "
            "-extent 720x576-208-0 -depth 8 -type TrueColor +profile \"*\" -sampling-factor 2x2 "
            "-quality 100 JPEG:- < \"D:\\my pictures\\menu.jpg\" > "
            "\"C:\\Program Files\\Corvane 50%\\still.jpg\"\r\n"
            "\"C:\\Program Files\\Corvane 50%\\bin\\jpeg2yuv.exe\" -n 15 -I p -f 25 -j "
            "\"C:\\Program Files\\Corvane 50%%\\still.jpg\" | "
            "\"C:\\Program Files\\Corvane 50%\\bin\\mpeg2enc.exe\" -f 8 -n p -a 3 -o "
            "\"D:\\out\\100%.m2v.part\"\r\n"
            "erase \"C:\\Program Files\\Corvane 50%\\still.jpg\"\r\n"
            "echo *process complete\r\n");
}

TEST(PictureStillScript, OfACroppedMirroredPngOnLinux) {
  const picture_still still{
      made_picture("/home/anna/men\xC3\xBC %d.png", 1920, 1080, 180, true, "png"),
      {ntsc_still, narrow_still, filled, 1},
      "/home/anna/men\xC3\xBC %d.m2v"};
  EXPECT_EQ(picture_still_script("/home/anna/corvane", still, path_style::posix),
            "@echo off\r\n"
            "echo *creating m2v still\r\n"
            "\"/home/anna/corvane/bin/gm.exe\" convert \"PNG:-[0]\" -flop -rotate 180 "
            "-colorspace RGB -background black -flatten -crop 1440x1080+240+0 +page "
            "-filter Lanczos -resize 720x480! -extent 720x480-0-0 -depth 8 -type TrueColor "
            "+profile \"*\" -sampling-factor 2x2 -quality 100 JPEG:- < "
            "\"/home/anna/men\xC3\xBC %d.png\" > \"/home/anna/corvane/still.jpg\"\r\n"
            "\"/home/anna/corvane/bin/jpeg2yuv.exe\" -n 1 -I p -f 29.97 -j "
            "\"/home/anna/corvane/still.jpg\" | \"/home/anna/corvane/bin/mpeg2enc.exe\" -f 8 "
            "-n n -a 2 -o \"/home/anna/men\xC3\xBC %d.m2v.part\"\r\n"
            "erase \"/home/anna/corvane/still.jpg\"\r\n"
            "echo *process complete\r\n");
}

// Which pictures ---------------------------------------------------------------------------------

TEST(PictureStill, FormsThatGmReadsAreTakenAndOthersNamed) {
  const std::pair<std::string, std::string> forms[] = {
      {"mjpeg", "JPEG"}, {"png", "PNG"}, {"bmp", "BMP"},   {"ppm", "PNM"},
      {"pgm", "PNM"},    {"pcx", "PCX"}, {"tiff", "TIFF"}, {"webp", "WEBP"}};
  for (const auto& [codec, form] : forms) {
    const auto source = still_source_of("/x", picture_facts(codec, 640, 480), path_style::posix);
    ASSERT_TRUE(source) << codec;
    EXPECT_EQ(source->form, form);
  }
  EXPECT_EQ(still_source_of("/x", picture_facts("psd", 640, 480), path_style::posix).error,
            "a still cannot be made of a picture in this form; please save it as PNG, JPEG, TIFF, "
            "BMP, GIF or WebP");
}

/// It is built without those libraries.
TEST(PictureStill, TiffAndWebpAreRefusedOnWindows) {
  for (const char* const codec : {"tiff", "webp"})
    EXPECT_EQ(still_source_of("C:\\x", picture_facts(codec, 640, 480), path_style::windows).error,
              "a still cannot be made of a picture in this form; please save it as PNG, JPEG, BMP "
              "or GIF");
  EXPECT_TRUE(still_source_of("C:\\x", picture_facts("png", 640, 480), path_style::windows));
}

TEST(PictureStill, GifIsTakenWhetherItMovesOrNot) {
  source_facts facts = picture_facts("gif", 320, 240);
  facts.container = "gif";
  EXPECT_TRUE(still_source_of("/x.gif", facts));
  facts.streams[0].kind = source_kind::video;
  EXPECT_TRUE(still_source_of("/x.gif", facts));
}

TEST(PictureStill, CoverOfASongAndAFilmAreNoPictures) {
  source_facts song = picture_facts("mjpeg", 500, 500);
  song.container = "mp3";
  EXPECT_EQ(still_source_of("/x.mp3", song).error, "it is not a file with one picture");
  EXPECT_EQ(still_source_of("/x", {}).error, "it is not a file with one picture");
}

TEST(PictureStill, PictureThatIsCutOffIsRefused) {
  source_facts facts = picture_facts("png", 640, 480);
  facts.cut_short = true;
  EXPECT_EQ(still_source_of("/x.png", facts).error,
            "it is cut off; the rest of the picture is missing");
}

// Choices ----------------------------------------------------------------------------------------

TEST(PictureStill, ChoicesFollowTheFirstTitle) {
  titleset_demands demands;
  demands.standard = pal_still;
  demands.aspect = wide_still;
  const still_choices choices =
      preset_choices(made_picture("/x.jpg", 3000, 4000), demands, ntsc_still);
  EXPECT_EQ(choices.standard, pal_still);
  EXPECT_EQ(choices.aspect, wide_still);
  EXPECT_EQ(choices.fit, barred);
}

TEST(PictureStill, WithoutATitleThePictureAndThePreferenceDecide) {
  const still_choices photo = preset_choices(made_picture("/x.jpg", 4000, 3000), {}, pal_still);
  EXPECT_EQ(photo.standard, pal_still);
  EXPECT_EQ(photo.aspect, narrow_still);
  const still_choices screen = preset_choices(made_picture("/x.png", 1920, 1080), {}, ntsc_still);
  EXPECT_EQ(screen.standard, ntsc_still);
  EXPECT_EQ(screen.aspect, wide_still);
  // Turned upright.
  EXPECT_EQ(preset_choices(made_picture("/x.jpg", 1920, 1080, 90), {}, ntsc_still).aspect,
            narrow_still);
}

TEST(PictureStill, PictureOfADiscsSizeDecidesTheStandard) {
  EXPECT_EQ(preset_choices(made_picture("/x.jpg", 720, 576), {}, ntsc_still).standard, pal_still);
  EXPECT_EQ(preset_choices(made_picture("/x.jpg", 720, 480), {}, pal_still).standard, ntsc_still);
}

// Geometry ---------------------------------------------------------------------------------------

/// Width over height of a circle on the screen: 1 if it stays one.
double roundness(const still_source& source, const picture_geometry& g) {
  const double pixel = ratio_of(g.aspect).value() * g.disc.height / g.disc.width;
  const double across = static_cast<double>(g.scaled.width) / g.cropped.width;
  const double down = static_cast<double>(g.scaled.height) / g.cropped.height;
  return across / down * pixel / source.shown.pixel_aspect.value();
}

TEST(PictureStill, ACircleStaysACircleInEveryFit) {
  for (const auto& [width, height] :
       {std::pair{4000, 3000}, {3000, 4000}, {1920, 1080}, {800, 800}, {10000, 500}, {721, 480}})
    for (const video_standard standard : {ntsc_still, pal_still})
      for (const disc_aspect aspect : {narrow_still, wide_still})
        for (const picture_fit fit : {barred, filled}) {
          const still_source source = made_picture("/x.jpg", width, height);
          const picture_geometry g = geometry_of(source, {standard, aspect, fit, 1});
          EXPECT_EQ(g.disc, (picture_size{720, standard == pal_still ? 576 : 480}));
          EXPECT_NEAR(roundness(source, g), 1, 0.03) << width << "x" << height;
          if (fit == barred)
            EXPECT_FALSE(g.is_cropped(source.shown));
          else
            EXPECT_FALSE(g.has_bars());
        }
}

TEST(PictureStill, PictureOfADiscsSizeFillsEitherShapeAsItIs) {
  for (const int height : {480, 576})
    for (const disc_aspect aspect : {narrow_still, wide_still})
      for (const picture_fit fit : {barred, filled}) {
        const still_source source = made_picture("/x.jpg", 720, height);
        const picture_geometry g =
            geometry_of(source, {height == 576 ? pal_still : ntsc_still, aspect, fit, 1});
        EXPECT_FALSE(g.has_bars() || g.is_scaled() || g.is_cropped(source.shown)) << height;
        EXPECT_EQ(described(source, g), "it fills the whole picture");
      }
}

TEST(PictureStill, WhatBecomesOfItIsSaid) {
  const auto said = [](int width, int height, disc_aspect aspect, picture_fit fit) {
    const still_source source = made_picture("/x.jpg", width, height);
    return described(source, geometry_of(source, {ntsc_still, aspect, fit, 1}));
  };
  EXPECT_EQ(said(3000, 4000, narrow_still, barred), "black bars at the sides");
  EXPECT_EQ(said(1920, 1080, narrow_still, barred), "black bars above and below");
  EXPECT_EQ(said(1920, 1080, narrow_still, filled), "about 25 % are cut off at the sides");
  EXPECT_EQ(said(4000, 3000, wide_still, filled), "about 25 % are cut off above and below");
  EXPECT_EQ(said(1920, 1080, wide_still, barred), "it fills the whole picture");
}

// Names ------------------------------------------------------------------------------------------

TEST(PictureStill, NameIsThePicturesAndIsNobodyElses) {
  std::set<std::string> there;
  const auto name = [&](const std::string& picture, path_style style) {
    return still_name(
        picture, [&](const std::string& file) { return there.contains(file); }, style);
  };
  EXPECT_EQ(name("/a.b/menu.png", path_style::posix), "/a.b/menu.m2v");
  EXPECT_EQ(name("/a.b/menu", path_style::posix), "/a.b/menu.m2v");
  EXPECT_EQ(name("C:\\a.b\\menu", path_style::windows), "C:\\a.b\\menu.m2v");
  there = {"/a.b/menu.m2v", "/a.b/menu (2).m2v.part"};
  EXPECT_EQ(name("/a.b/menu.png", path_style::posix), "/a.b/menu (3).m2v");
}

class SettledStill : public testing::Test {
 protected:
  run_settled settle(run_outcome outcome, bool replaces = false) {
    return settle_picture_still(folder_.path("app"),
                                {made_picture("/x.jpg", 640, 480), {}, m2v_, replaces}, outcome);
  }
  bool is_there(const std::string& name) { return entry_exists(folder_.path(name)); }

  temporary_folder folder_;
  std::string part_ = folder_.add("menu.m2v.part", "new");
  std::string jpeg_ = folder_.add("app/still.jpg", "made right");
  std::string m2v_ = folder_.path("menu.m2v");
};

TEST_F(SettledStill, WholeOneGetsItsName) {
  EXPECT_TRUE(settle(run_outcome::success).warnings.empty());
  EXPECT_EQ(folder_.read("menu.m2v"), "new");
  EXPECT_FALSE(is_there("menu.m2v.part") || is_there("app/still.jpg"));
}

TEST_F(SettledStill, OneThatFailedOrWasStoppedLeavesNothingAndTheEarlierOne) {
  for (const run_outcome outcome : {run_outcome::failed, run_outcome::stopped, run_outcome::none}) {
    folder_.add("menu.m2v.part", "half");
    folder_.add("app/still.jpg", "half");
    folder_.add("menu.m2v", "earlier");
    EXPECT_TRUE(settle(outcome, true).warnings.empty());
    EXPECT_EQ(folder_.read("menu.m2v"), "earlier");
    EXPECT_FALSE(is_there("menu.m2v.part") || is_there("app/still.jpg"));
  }
}

TEST_F(SettledStill, EarlierFileIsReplacedOnlyWhenTheUserAgreed) {
  folder_.add("menu.m2v", "earlier");
  const run_settled refused = settle(run_outcome::success);
  ASSERT_EQ(refused.warnings.size(), 1u);
  EXPECT_NE(refused.warnings[0].find("could not be named"), std::string::npos);
  EXPECT_EQ(folder_.read("menu.m2v"), "earlier");
  EXPECT_EQ(folder_.read("menu.m2v.part"), "new");
  EXPECT_TRUE(settle(run_outcome::success, true).warnings.empty());
  EXPECT_EQ(folder_.read("menu.m2v"), "new");
  EXPECT_FALSE(is_there("menu.m2v.part"));
}

TEST_F(SettledStill, EarlierFileStaysWhereTheNewOneCannotTakeItsName) {
  folder_.add("menu.m2v", "earlier");
  ASSERT_FALSE(remove_all(part_));
  EXPECT_EQ(settle(run_outcome::success, true).warnings.size(), 1u);
  EXPECT_EQ(folder_.read("menu.m2v"), "earlier");
  EXPECT_EQ(files_in(folder_.path("")), std::vector<std::string>{"menu.m2v"});
}

}  // namespace
}  // namespace corvane
