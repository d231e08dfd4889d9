// Pictures as people have them become stills: looked into by the media library, run by the
// interpreter of work scripts with the tools of this system, and the video's picture looked at.
#include "formats/aspect_code.h"
#include "import/picture_still.h"
#include "media/source_probe.h"
#include "media/video_file.h"
#include "platform/files/files.h"
#include "runner/script_interpreter.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace corvane {
namespace {

namespace fs = std::filesystem;

using colour = std::array<int, 3>;
using testing::AllOf;
using testing::Each;
using testing::ElementsAre;
using testing::Ge;
using testing::Le;

constexpr auto ntsc = video_standard::ntsc, pal = video_standard::pal;
constexpr auto narrow = disc_aspect::four_three, wide = disc_aspect::sixteen_nine;
constexpr auto bars = picture_fit::bars, cropped = picture_fit::cropped;

class unseen_host final : public system_script_host {
 public:
  using system_script_host::system_script_host;
  void print(std::string_view text) override { printed += text; }
  std::string printed;
};

testing::Matcher<colour> is_about(colour wanted, int tolerance) {
  const auto one = [=](std::size_t i) {
    return AllOf(Ge(wanted[i] - tolerance), Le(wanted[i] + tolerance));
  };
  return ElementsAre(one(0), one(1), one(2));
}

/// The mean of a small square; places are parts of width and height.
colour colour_at(const picture& p, double x, double y) {
  constexpr int half = 6;
  const int middle_x = static_cast<int>(x * p.width), middle_y = static_cast<int>(y * p.height);
  std::array<double, 3> sum{};
  int count = 0;
  for (int row = std::max(0, middle_y - half); row < std::min(p.height, middle_y + half); ++row)
    for (int at = std::max(0, middle_x - half); at < std::min(p.width, middle_x + half); ++at) {
      for (std::size_t i = 0; i < 3; ++i)
        sum[i] += p.rgb[static_cast<std::size_t>(row * p.width + at) * 3 + i];
      ++count;
    }
  colour mean{};
  for (std::size_t i = 0; i < 3; ++i)
    mean[i] = static_cast<int>(std::lround(sum[i] / std::max(1, count)));
  return mean;
}

/// Width over height of what is green enough, on a screen of this shape.
double roundness(const picture& p, double shape) {
  int left = p.width, right = 0, top = p.height, bottom = 0;
  for (int y = 0; y < p.height; ++y)
    for (int x = 0; x < p.width; ++x)
      if (p.rgb[static_cast<std::size_t>(y * p.width + x) * 3 + 1] > 128) {
        left = std::min(left, x);
        right = std::max(right, x + 1);
        top = std::min(top, y);
        bottom = std::max(bottom, y + 1);
      }
  return shape * p.height / p.width * (right - left) / std::max(1, bottom - top);
}

/// The codes in all sequence headers of a video.
std::vector<int> codes_in(const std::string& bytes) {
  const std::string mark("\0\0\1\xB3", 4);
  std::vector<int> codes;
  for (auto at = bytes.find(mark); at != std::string::npos; at = bytes.find(mark, at + 1))
    codes.push_back(static_cast<unsigned char>(bytes[at + 7]) >> 4);
  return codes;
}

class RealPicture : public testing::Test {
 protected:
  RealPicture() {
    fs::create_directories(path_of(folder_.path("app/bin")));
    for (const char* const tool : {"gm", "jpeg2yuv", "mpeg2enc"})
      fs::create_symlink("/usr/bin/" + std::string(tool),
                         path_of(folder_.path("app/bin/" + std::string(tool) + ".exe")));
  }

  void shell(const std::string& command) {
    EXPECT_EQ(std::system(("cd '" + folder_.path("") + "' && " + command).c_str()), 0) << command;
  }
  /// Draws with ImageMagick; gives the native path.
  std::string draw(const std::string& name, const std::string& what) {
    shell("/usr/bin/convert " + what + " '" + name + "'");
    return folder_.path(name);
  }

  picture_still still_for(const std::string& file, const still_choices& choices) {
    const auto source = still_source_at(file, probe_source);
    EXPECT_TRUE(source) << source.error;
    return {source ? *source : still_source(), choices, folder_.path("still.m2v"), true};
  }

  bool run(const picture_still& still) {
    unseen_host host(folder_.path("app/bin"));
    const std::string app = folder_.path("app");
    const bool well = run_script(picture_still_script(app, still), host);
    printed_ = host.printed;
    const auto settled =
        settle_picture_still(app, still, well ? run_outcome::success : run_outcome::failed);
    EXPECT_THAT(settled.warnings, testing::IsEmpty());
    return well;
  }

  /// The first picture of the still of a file.
  picture made(const std::string& file, const still_choices& choices) {
    EXPECT_TRUE(run(still_for(file, choices))) << printed_;
    auto video = video_file::open(folder_.path("still.m2v"));
    EXPECT_TRUE(video) << video.error;
    if (!video)
      return {};
    for (auto read = (*video)->scan(100); read && !read->finished;)
      read = (*video)->scan(100);
    EXPECT_EQ((*video)->pictures(), choices.frames);
    EXPECT_NEAR((*video)->frame_rate(), choices.standard == pal ? 25 : 29.97, 0.01);
    const auto first = (*video)->picture_number(0);
    EXPECT_TRUE(first) << first.error;
    return first ? *first : picture();
  }

  testing_support::temporary_folder folder_;
  std::string printed_;
};

/// Upright: red and green above, blue and white below.
constexpr const char* four_corners =
    "-size 300x200 xc:red xc:lime +append \\( xc:blue xc:white +append \\) -append "
    "-sampling-factor 1x1 -quality 100";

void expect_upright(const picture& p, const std::string& what) {
  EXPECT_THAT(colour_at(p, 0.25, 0.3), is_about({255, 0, 0}, 20)) << what;
  EXPECT_THAT(colour_at(p, 0.75, 0.3), is_about({0, 255, 0}, 20)) << what;
  EXPECT_THAT(colour_at(p, 0.25, 0.7), is_about({0, 0, 255}, 20)) << what;
  EXPECT_THAT(colour_at(p, 0.75, 0.7), is_about({255, 255, 255}, 20)) << what;
}

/// A JPEG with what a camera notes about how it was held.
void note_orientation(const std::string& jpeg, int orientation) {
  const auto bytes = read_file(jpeg, 1u << 24);
  ASSERT_TRUE(bytes);
  std::string exif(
      "\xFF\xE1\0\x22"
      "Exif\0\0MM\0*\0\0\0\x08\0\1\x01\x12\0\3\0\0\0\1\0\0\0\0\0\0\0\0",
      36);
  exif[29] = static_cast<char>(orientation);
  ASSERT_FALSE(write_file(jpeg, bytes->substr(0, 2) + exif + bytes->substr(2)));
}

TEST_F(RealPicture, PhotosStandUprightHoweverTheCameraWasHeld) {
  const std::pair<int, const char*> held[] = {
      {1, ""},           {2, "-flop"},       {3, "-rotate 180"}, {4, "-flip"},
      {5, "-transpose"}, {6, "-rotate 270"}, {7, "-transverse"}, {8, "-rotate 90"}};
  for (const auto& [orientation, stored] : held) {
    const std::string photo =
        draw("photo.jpg", std::string(four_corners) + " " + stored + " +repage");
    note_orientation(photo, orientation);
    const std::string what = "orientation " + std::to_string(orientation);
    const still_source source = still_for(photo, {}).source;
    EXPECT_EQ(source.shown.size, (picture_size{600, 400})) << what;
    expect_upright(made(photo, {ntsc, narrow, bars, 1}), what);
    const auto preview = source_picture(photo, 0, 600, 400);
    ASSERT_TRUE(preview) << what;
    expect_upright(*preview, what + ", preview");
  }
}

constexpr const char* patches =
    "-size 90x80 'xc:rgb(200,30,60)' 'xc:rgb(10,128,0)' 'xc:rgb(90,140,220)' 'xc:rgb(128,128,128)' "
    "'xc:rgb(255,255,255)' 'xc:rgb(0,0,0)' 'xc:rgb(240,200,10)' 'xc:rgb(120,60,200)' +append "
    "-sampling-factor 1x1 -quality 100";

std::vector<colour> patches_of(const picture& p) {
  std::vector<colour> colours;
  for (int i = 0; i < 8; ++i)
    colours.push_back(colour_at(p, (i + 0.5) / 8, 0.5));
  return colours;
}

/// Printers' JPEGs are coded in one of two ways (Adobe's transform 2 and 0).
TEST_F(RealPicture, CmykPicturesHaveTheColoursOfTheirRgb) {
  const still_choices choices{ntsc, narrow, bars, 1};
  const auto wanted = patches_of(made(draw("rgb.png", patches), choices));
  const std::string coded_2 = draw("2.jpg", std::string(patches) + " -colorspace CMYK");
  draw("cmyk.tif", std::string(patches) + " -colorspace CMYK");
  shell("gm convert cmyk.tif -quality 100 -sampling-factor 1x1 0.jpg");
  for (const std::string& jpeg : {coded_2, folder_.path("0.jpg")}) {
    const auto bytes = read_file(jpeg, 1u << 24);
    ASSERT_TRUE(bytes && bytes->find("Adobe") != std::string::npos);
    EXPECT_EQ((*bytes)[bytes->find("Adobe") + 11], jpeg == coded_2 ? 2 : 0);
    const auto colours = patches_of(made(jpeg, choices));
    const auto preview = source_picture(jpeg, 0, 720, 80);
    ASSERT_TRUE(preview);
    const auto previewed = patches_of(*preview);
    for (std::size_t i = 0; i < wanted.size(); ++i) {
      EXPECT_THAT(colours[i], is_about(wanted[i], 3)) << jpeg << " " << i;
      EXPECT_THAT(previewed[i], is_about(wanted[i], 5)) << jpeg << " " << i;
    }
  }
}

TEST_F(RealPicture, ACircleStaysOneAndTheStillStatesItsShape) {
  const std::string drawn =
      draw("circle.png", "-size 900x600 xc:red -fill white -draw 'circle 450,300 450,150'");
  for (const video_standard standard : {ntsc, pal})
    for (const disc_aspect aspect : {narrow, wide})
      for (const picture_fit fit : {bars, cropped}) {
        const picture still = made(drawn, {standard, aspect, fit, 20});
        EXPECT_EQ(still.width, 720);
        EXPECT_EQ(still.height, standard == pal ? 576 : 480);
        EXPECT_NEAR(roundness(still, ratio_of(aspect).value()), 1, 0.02);
        // 3:2 is wider than 4:3 and narrower than 16:9.
        const colour black{16, 16, 16}, red{254, 0, 0};
        const colour edge =
            aspect == narrow ? colour_at(still, 0.5, 0.01) : colour_at(still, 0.01, 0.5);
        EXPECT_THAT(edge, is_about(fit == bars ? black : red, 20));
        const auto bytes = read_file(folder_.path("still.m2v"), 1u << 24);
        ASSERT_TRUE(bytes);
        EXPECT_THAT(codes_in(*bytes),
                    AllOf(testing::SizeIs(Ge(1u)),
                          Each(aspect == wide ? aspect_code::wide : aspect_code::narrow)));
      }
}

TEST_F(RealPicture, FormsOfPicturesAreReadAndTheFileStaysAsItIs) {
  for (const char* const name :
       {"a.png", "a.bmp", "a.gif", "a.tif", "a.webp", "a.ppm", "a.pcx", "50% of %d [1] *?.jpg"}) {
    const std::string ending = std::string(name).substr(std::string(name).rfind('.'));
    const std::string file = folder_.path(name);
    fs::rename(path_of(draw("drawn" + ending, four_corners)), path_of(file));
    const auto before = read_file(file, 1u << 24);
    ASSERT_TRUE(before);
    expect_upright(made(file, {pal, wide, cropped, 1}), name);
    EXPECT_TRUE(*read_file(file, 1u << 24) == *before) << name;
  }
}

TEST_F(RealPicture, GreyPicturesAndThoseOfOnePixelAreMade) {
  const picture grey = made(draw("grey.jpg", "-size 300x200 'xc:gray(100)' -colorspace Gray"),
                            {ntsc, narrow, cropped, 1});
  EXPECT_THAT(colour_at(grey, 0.5, 0.5), is_about({100, 100, 100}, 4));
  const picture dot = made(draw("dot.png", "-size 1x1 xc:lime"), {ntsc, narrow, cropped, 1});
  EXPECT_THAT(colour_at(dot, 0.5, 0.5), is_about({0, 255, 0}, 12));
}

TEST_F(RealPicture, WhatCanBeSeenThroughIsBlack) {
  const picture still =
      made(draw("glass.png", "-size 200x150 'xc:rgba(255,255,255,0)' xc:red +append"),
           {ntsc, narrow, cropped, 1});
  EXPECT_THAT(colour_at(still, 0.2, 0.5), is_about({0, 0, 0}, 20));
  EXPECT_THAT(colour_at(still, 0.8, 0.5), is_about({254, 0, 0}, 20));
}

TEST_F(RealPicture, PictureThatIsCutOffLeavesNoStillAndAReason) {
  const char* const cut_off = "it is cut off; the rest of the picture is missing";
  const char* const nothing =
      "nothing in it can be shown or played: it is damaged, or there is neither video nor sound in "
      "it";
  // Where nothing is refused, gm does.
  const std::pair<const char*, const char*> expected[] = {
      {"noise.png", ""}, {"noise.bmp", ""}, {"noise.jpg", cut_off}, {"noise.webp", nothing}};
  for (const auto& [name, refusal] : expected) {
    const std::string file = draw(name, "-size 300x200 plasma:red-blue");
    fs::resize_file(path_of(file), fs::file_size(path_of(file)) / 2);
    const auto source = still_source_at(file, probe_source);
    EXPECT_EQ(source.error, refusal) << name;
    if (!source)
      continue;
    EXPECT_FALSE(run({*source, {}, folder_.path("still.m2v")})) << name;
    EXPECT_THAT(printed_, testing::HasSubstr("ERR:")) << name;
    EXPECT_FALSE(entry_exists(folder_.path("still.m2v"))) << name;
    EXPECT_FALSE(entry_exists(folder_.path("still.m2v.part"))) << name;
  }
}

}  // namespace
}  // namespace corvane
