// Still menu videos made with the real tools, and the menu that one becomes.
#include "formats/jpeg_check.h"
#include "platform/files/program_folder.h"
#include "studio.h"
#include "tools/still_video.h"
#include "walk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace corvane::disc {
namespace {

using testing::AllOf;
using testing::Each;
using testing::Gt;
using testing::HasSubstr;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;

/// A program folder with the script runner and the tools.
std::string program_folder_in(const testing_support::temporary_folder& folder) {
  const std::string app = folder.path("app");
  const std::filesystem::path before = std::filesystem::current_path();
  EXPECT_FALSE(enter_program_folder(app));
  std::filesystem::current_path(before);
  return app;
}

/// Draws a JPEG: left half red, right half blue.
std::string draw_jpeg(const testing_support::temporary_folder& folder, const std::string& name,
                      int height) {
  const std::string file = folder.path(name);
  const std::string half = "s=360x" + std::to_string(height);
  const std::string both = "color=red:" + half + "[l];color=blue:" + half + "[r];[l][r]hstack";
  const finished drawn = run({{"/usr/bin/ffmpeg", "-loglevel", "error", "-f", "lavfi", "-i", both,
                               "-frames:v", "1", "-pix_fmt", "yuvj420p", "-update", "1", file}});
  EXPECT_EQ(drawn.status, 0) << drawn.out;
  return file;
}

/// Runs the script of a still; gives what the tools said, and the script runner of them.
std::string make_still(const std::string& app, const still_video& still) {
  EXPECT_FALSE(write_file(join_path(app, "process.bat"), still_script(app, still)));
  return run({{tool_path(app, "conspawn"), join_path(app, "process.bat")}}).out;
}

/// Coding, width, height, frame rate and number of pictures of a video, a line each.
std::string stream_of(const std::string& file) {
  return run({{"/usr/bin/ffprobe", "-v", "error", "-count_frames", "-show_entries",
               "stream=codec_name,width,height,r_frame_rate,nb_read_frames", "-of",
               "default=nw=1:nk=1", file}})
      .out;
}

/// The mean colour of a column of the first picture, "r g b".
std::vector<int> colour_at(const std::string& file, int x) {
  const std::string crop = "crop=16:400:" + std::to_string(x) + ":40,scale=1:1";
  const finished done = run({{"/usr/bin/ffmpeg", "-loglevel", "error", "-i", file, "-frames:v", "1",
                              "-vf", crop, "-pix_fmt", "rgb24", "-f", "rawvideo", "-"}});
  EXPECT_EQ(done.status, 0) << done.out;
  std::vector<int> colour;
  for (const char c : done.out)
    colour.push_back(static_cast<unsigned char>(c));
  return colour;
}

void expect_red_and_blue(const std::string& m2v) {
  const std::vector<int> left = colour_at(m2v, 100), right = colour_at(m2v, 600);
  ASSERT_EQ(left.size(), 3u);
  ASSERT_EQ(right.size(), 3u);
  EXPECT_GT(left[0], 200);
  EXPECT_LT(left[2], 60);
  EXPECT_LT(right[0], 60);
  EXPECT_GT(right[2], 200);
}

TEST(StillOnDisc, NtscPictureBecomesAVideoOfItsColours) {
  const testing_support::temporary_folder folder;
  const std::string out = folder.path("men\xC3\xBC 100%d.m2v");
  const std::string log = make_still(program_folder_in(folder),
                                     {draw_jpeg(folder, "50% of a picture.jpg", 480), out, 480, 1});
  EXPECT_THAT(log, Not(HasSubstr("ERR")));
  EXPECT_THAT(stream_of(out), StartsWith("mpeg2video\n720\n480\n30000/1001\n1\n"));
  expect_red_and_blue(out);
}

TEST(StillOnDisc, PalPictureBecomesAVideoOf15Frames) {
  const testing_support::temporary_folder folder;
  const std::string out = folder.path("menu.m2v");
  const std::string log =
      make_still(program_folder_in(folder), {draw_jpeg(folder, "menu.jpg", 576), out, 576, 15});
  EXPECT_THAT(log, Not(HasSubstr("ERR")));
  EXPECT_THAT(stream_of(out), StartsWith("mpeg2video\n720\n576\n25/1\n15\n"));
  expect_red_and_blue(out);
}

/// The codes in all sequence headers of a video.
std::vector<int> aspect_codes(const std::string& bytes) {
  const std::string mark("\0\0\1\xB3", 4);
  std::vector<int> codes;
  for (auto at = bytes.find(mark); at != std::string::npos; at = bytes.find(mark, at + 1))
    codes.push_back(static_cast<unsigned char>(bytes[at + 7]) >> 4);
  return codes;
}

/// As mpeg2enc writes them for this standard, but for the proportions.
TEST(StillOnDisc, StillSaysThatItIs4By3AndIsElseAsTheToolsMakeIt) {
  const testing_support::temporary_folder folder;
  const std::string app = program_folder_in(folder);
  for (const int height : {480, 576}) {
    const std::string norm = height == 480 ? "n" : "p", rate = height == 480 ? "29.97" : "25";
    const std::string jpeg = draw_jpeg(folder, norm + ".jpg", height),
                      out = folder.path("menu.m2v");
    const std::string log = make_still(app, {jpeg, out, height, 40});
    EXPECT_THAT(log, Not(HasSubstr("ERR")));
    const std::string plain = folder.path("plain.m2v");
    const std::string by_hand = "jpeg2yuv -v 0 -n 40 -I p -f " + rate + " -j '" + jpeg +
                                "' | mpeg2enc -v 0 -f 8 -n " + norm + " -o '" + plain + "'";
    ASSERT_EQ(run({{"/bin/sh", "-c", by_hand}}).status, 0);
    std::string expected = folder.read("plain.m2v");
    EXPECT_THAT(aspect_codes(expected), AllOf(SizeIs(Gt(1)), Each(1)));
    const std::string mark("\0\0\1\xB3", 4);
    for (auto at = expected.find(mark); at != std::string::npos; at = expected.find(mark, at + 1))
      expected[at + 7] = static_cast<char>((expected[at + 7] & 0x0F) | 0x20);
    EXPECT_TRUE(folder.read("menu.m2v") == expected) << height;
  }
}

/// Both ways: nothing is refused that would work, and nothing run that would not.
TEST(StillOnDisc, JpegCheckAgreesWithJpeg2yuv) {
  const testing_support::temporary_folder folder;
  const std::string app = program_folder_in(folder), drawn = draw_jpeg(folder, "drawn.jpg", 480);
  const std::pair<std::vector<std::string>, bool> kinds[] = {
      {{"-sampling-factor", "1x1,1x1,1x1"}, true},
      {{"-sampling-factor", "2x1,1x1,1x1"}, true},
      {{"-sampling-factor", "1x2,1x1,1x1"}, true},
      {{"-sampling-factor", "2x2,1x1,1x1"}, true},
      {{"-interlace", "JPEG"}, true},
      {{"-sampling-factor", "4x1,1x1,1x1"}, false},
      {{"-sampling-factor", "2x2,1x2,1x2"}, false},
      {{"-colorspace", "CMYK"}, false}};
  for (const auto& [options, works] : kinds) {
    const std::string jpeg = folder.path("kind.jpg"), out = folder.path("kind.m2v");
    std::vector<std::string> words = {"/usr/bin/convert", drawn};
    words.insert(words.end(), options.begin(), options.end());
    words.push_back(jpeg);
    ASSERT_EQ(run({words}).status, 0);
    const std::string log = make_still(app, {jpeg, out, 480, 1});
    const auto why = why_not_for_jpeg2yuv(*read_file(jpeg, 1u << 24));
    EXPECT_EQ(!why, works) << options[1] << ": " << why.value_or("taken");
    EXPECT_EQ(log.find("ERR") == std::string::npos, works) << options[1] << "\n" << log;
    if (works)
      expect_red_and_blue(out);
  }
}

TEST(StillOnDisc, GreyPictureStaysAsBrightAsItWas) {
  const testing_support::temporary_folder folder;
  const std::string jpeg = folder.path("grey.jpg"), out = folder.path("grey.m2v");
  const finished drawn = run({{"/usr/bin/convert", "-size", "360x480", "xc:gray(50)",
                               "xc:gray(200)", "+append", "-colorspace", "Gray", jpeg}});
  ASSERT_EQ(drawn.status, 0) << drawn.out;
  EXPECT_EQ(why_not_for_jpeg2yuv(*read_file(jpeg, 1u << 24)), std::nullopt);
  const std::string log = make_still(program_folder_in(folder), {jpeg, out, 480, 1});
  EXPECT_THAT(log, Not(HasSubstr("ERR")));
  EXPECT_THAT(colour_at(out, 100), Each(AllOf(Gt(42), testing::Lt(58))));
  EXPECT_THAT(colour_at(out, 600), Each(AllOf(Gt(192), testing::Lt(208))));
}

/// The sample script has the tools' command line a second time.
TEST(StillOnDisc, StillsOfTheSamplesAreWhatTheProgramMakes) {
  const testing_support::temporary_folder folder;
  const std::string app = program_folder_in(folder);
  for (const auto& [name, height] : {std::pair<std::string, int>{"chapter-menu", 480},
                                     std::pair<std::string, int>{"chapter-menu-pal", 576}}) {
    const std::string out = folder.path(name + ".m2v");
    make_still(app, {media(name + ".jpg"), out, height, 1});
    const auto made = read_file(out, 1u << 24), sample = read_file(media(name + ".m2v"), 1u << 24);
    ASSERT_TRUE(made && sample) << name;
    EXPECT_TRUE(*made == *sample) << name;
  }
}

/// A project whose one menu is a still of so many pictures, which is made.
project project_with_still(const studio& s, int height, int frames, const std::string& audio) {
  const std::string out = s.folder().path("work/menu.m2v");
  make_still(program_folder_in(s.folder()),
             {draw_jpeg(s.folder(), "work/menu.jpg", height), out, height, frames});
  project p;
  p.globalregion = height == 480 ? "NTSC" : "PAL";
  add_title(p, {stored_media(height == 480 ? "muxed-ntsc.vob" : "muxed-pal.vob")});
  add_menu(
      p, stored_from_native(out), audio.empty() ? "" : stored_media(audio),
      {" 100/ 100/ 300/ 140/jump title 1/yellow/green", " 100/ 200/ 300/ 240/exit/cyan/white"});
  return p;
}

/// A disc whose one menu it is.
contents disc_with_still(const studio& s, int height, int frames, const std::string& audio) {
  contents disc = s.authored(project_with_still(s, height, frames, audio));
  press_all_buttons(s.out(), disc);
  return disc;
}

void expect_menu_works(const contents& disc) {
  ASSERT_FALSE(disc.menus.empty());
  const menu& m = disc.menus[0];
  ASSERT_EQ(m.buttons.size(), 2u);
  EXPECT_EQ(m.buttons[0].leads_to, "title 1 chapter 1");
  EXPECT_EQ(m.buttons[1].leads_to, "stopped");
  EXPECT_EQ(m.chain.still_seconds, 255);
  ASSERT_TRUE(m.shown) << "no picture of the buttons";
  const dot lit = m.shown->at(101, 101, m.buttons.data(), button_state::highlighted);
  EXPECT_GT(lit.opacity, 0);
  EXPECT_GT(lit.red, 200);
  EXPECT_GT(lit.green, 200);
  EXPECT_LT(lit.blue, 60);
}

/// Neither the examination nor dvdauthor, nor the look at the finished disc.
TEST(StillOnDisc, NobodySaysAnythingOfTheProportionsOfAStill) {
  for (const int height : {480, 576}) {
    const studio s;
    const finished done = s.author(project_with_still(s, height, 1, ""));
    EXPECT_EQ(done.status, 0) << done.out;
    EXPECT_THAT(done.out, AllOf(Not(HasSubstr("aspect")), Not(HasSubstr("proportions")),
                                Not(HasSubstr("square"))));
    const result<std::string> log = read_file(join_path(s.app(), "CorvaneLOG.txt"), 1u << 24);
    ASSERT_TRUE(log) << log.error;
    EXPECT_THAT(*log, AllOf(HasSubstr("dvdauthor"), Not(HasSubstr("unknown mpeg2 aspect"))));
  }
}

TEST(StillOnDisc, OnePictureIsEnoughForAMenu) {
  for (const int height : {480, 576}) {
    const studio s;
    expect_menu_works(disc_with_still(s, height, 1, ""));
  }
}

TEST(StillOnDisc, OnePictureIsEnoughForAMenuWithSound) {
  for (const int height : {480, 576}) {
    const studio s;
    const contents disc = disc_with_still(s, height, 1, "menu.ac3");
    expect_menu_works(disc);
    EXPECT_THAT(disc.menus[0].sounds, testing::ElementsAre("ac3"));
  }
}

TEST(StillOnDisc, ManyPicturesAreAMenuToo) {
  for (const int height : {480, 576}) {
    const studio s;
    const contents disc = disc_with_still(s, height, 15, "");
    expect_menu_works(disc);
    EXPECT_NEAR(disc.menus[0].chain.seconds, height == 480 ? 0.5 : 0.6, 0.01);
  }
}

}  // namespace
}  // namespace corvane::disc
