// Where the chapters of a title really begin on the disc: at the groups of pictures that the visual
// chapter editor tells.
#include "examine/chapter_rules.h"
#include "examine/file_facts.h"
#include "formats/time_text.h"
#include "media/playback.h"
#include "media/video_file.h"
#include "platform/files/files.h"
#include "studio.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::disc {
namespace {

using testing::DoubleNear;
using testing::Pointwise;

constexpr double clock_rounding = 0.0005;  // of the 90 kHz clock, twice

std::unique_ptr<video_file> scanned(const std::string& path) {
  auto video = video_file::open(path);
  EXPECT_TRUE(video && (*video)->scan(60'000)) << video.error;
  return video ? std::move(*video) : nullptr;
}

/// A time in every other unit, so that no two lead to the same one: behind the middle, before
/// it, the middle itself, the very beginning, and so on.
std::vector<double> telling_times(const video_file& video) {
  std::vector<double> times{0};
  std::size_t kind = 0;
  for (std::int64_t unit = 0; unit + 1 < video.units() && times.size() < 60; unit += 2, ++kind) {
    const std::int64_t begin = video.begin_of_unit(unit), next = video.begin_of_unit(unit + 1);
    const double middle = (video.time_of(begin) + video.time_of(next)) / 2;
    const double each[] = {middle + 0.02, middle - 0.02, middle, video.time_of(begin)};
    times.push_back(each[kind % std::size(each)]);
  }
  return times;
}

/// What the editor tells of chapters at these times, each beginning once.
std::vector<double> landings(const video_file& video, const std::vector<double>& times) {
  const playback editor(video);
  std::vector<double> begins;
  for (const double time : times) {
    const double begin = video.time_of(editor.landing_of(time));
    if (begins.empty() || begin > begins.back())
      begins.push_back(begin);
  }
  return begins;
}

std::string read_all(const std::string& path) {
  const auto bytes = read_file(path, std::uintmax_t{1} << 30);
  EXPECT_TRUE(bytes) << bytes.error;
  return bytes ? *bytes : std::string();
}

/// A video stream without the headers of groups, and without those of sequences but the first.
std::string without_headers(const std::string& stream) {
  constexpr char sequence = '\xB3', group = '\xB8', picture = '\0';
  std::string bytes;
  std::size_t begin = 0;
  while (begin < stream.size()) {
    std::size_t end = stream.find(std::string_view("\0\0\1", 3), begin + 3);
    while (end != std::string::npos && end + 3 < stream.size() && stream[end + 3] != sequence &&
           stream[end + 3] != group && stream[end + 3] != picture)
      end = stream.find(std::string_view("\0\0\1", 3), end + 3);
    end = std::min(end, stream.size());
    if (begin == 0 || stream[begin + 3] == picture)
      bytes.append(stream, begin, end - begin);
    begin = end;
  }
  return bytes;
}

/// A program stream of packs without every other one of its navigation packs.
std::string with_half_the_units(const std::string& stream) {
  constexpr std::size_t pack = 2048, at_packet = 0x26;
  std::string bytes;
  bool drop = true;
  for (std::size_t at = 0; at + pack <= stream.size(); at += pack) {
    if (stream.compare(at + at_packet, 6, std::string_view("\0\0\1\xBF\x03\xD4", 6)) == 0) {
      drop = !drop;
      if (drop)
        continue;
    }
    bytes.append(stream, at, pack);
  }
  return bytes;
}

/// Where the units of a title's video begin, as the examination before a run has them.
std::vector<double> units_examined(const std::string& path) {
  file_scan scan(path);
  while (scan.read_slice()) {
  }
  if (scan.facts().program)
    return scan.facts().program->unit_begins;
  return scan.facts().video ? scan.facts().video->unit_begins : std::vector<double>();
}

std::vector<double> units_of(const video_file& video) {
  std::vector<double> begins;
  for (std::int64_t unit = 0; unit < video.units(); ++unit)
    begins.push_back(video.time_of(video.begin_of_unit(unit)));
  return begins;
}

/// Authors a title with chapters at telling times, and expects them on the disc where the editor
/// says. `streams` are native paths, video first.
void expect_landings(const std::vector<std::string>& streams, const std::string& region = "NTSC",
                     const std::string& delay = "0") {
  const auto video = scanned(streams.front());
  ASSERT_TRUE(video);
  ASSERT_GT(video->gops(), 3);
  EXPECT_THAT(units_examined(streams.front()),
              Pointwise(DoubleNear(clock_rounding), units_of(*video)));
  const std::vector<double> asked = telling_times(*video);
  std::string chapters;
  for (const double time : asked)
    chapters += (chapters.empty() ? "" : ",") + time_text(time);
  std::vector<std::string> stored;
  for (const std::string& stream : streams)
    stored.push_back(stored_from_native(stream));
  project p;
  p.globalregion = region;
  add_title(p, stored, chapters, delay);
  const studio s;
  const contents disc = s.authored(p);
  ASSERT_EQ(disc.titles.size(), 1u);
  EXPECT_THAT(disc.titles[0].chapters,
              Pointwise(DoubleNear(clock_rounding), landings(*video, asked)))
      << chapters;
}

/// A test with streams of its own kinds.
class DiscChapters : public testing::Test {
 protected:
  /// Makes a video of five seconds with FFmpeg's encoder.
  std::string encoded(const std::string& rate_and_size, const std::string& options) {
    const std::string path = folder_.path("video.m2v");
    make("ffmpeg -nostdin -v error -y -f lavfi -i testsrc2=" + rate_and_size +
         " -t 5 -c:v mpeg2video -pix_fmt yuv420p -threads 1 -sc_threshold 1000000000 -b:v 2500k "
         "-maxrate 6000k -bufsize 1835k -aspect 4:3 " +
         options + " -f mpeg2video '" + path + "'");
    return path;
  }
  /// A shorter one with mpeg2enc, which is slow.
  std::string by_mpeg2enc(const std::string& rate_and_size, const std::string& options) {
    const std::string path = folder_.path("video.m2v");
    make("ffmpeg -nostdin -v error -f lavfi -i testsrc2=" + rate_and_size +
         " -t 3.5 -vf setfield=prog,setsar=1 -pix_fmt yuv420p -f yuv4mpegpipe - | mpeg2enc -v 0 " +
         options + " -o '" + path + "'");
    return path;
  }
  static void make(const std::string& line) {
    const finished done = run({{"sh", "-c", line}});
    EXPECT_EQ(done.status, 0) << line << "\n" << done.out;
  }

  testing_support::temporary_folder folder_;
};

TEST_F(DiscChapters, BeginWhereTheEditorSaysInClosedGroups) {
  expect_landings({media("clip-ntsc.m2v"), media("clip.ac3")});
}

TEST_F(DiscChapters, BeginWhereTheEditorSaysOnAPalDisc) {
  expect_landings({media("clip-pal.m2v"), media("clip.mp2")}, "PAL");
}

TEST_F(DiscChapters, BeginWhereTheEditorSaysInOpenGroups) {
  expect_landings({encoded("size=720x480:rate=30000/1001", "-g 15 -bf 2"), media("clip.ac3")});
}

TEST_F(DiscChapters, BeginWhereTheEditorSaysWhenHalfWayIsAHundredth) {
  expect_landings({encoded("size=720x576:rate=25", "-g 12 -bf 2 -flags +cgop"), media("clip.ac3")},
                  "PAL");
}

TEST_F(DiscChapters, BeginWhereTheEditorSaysWithOneSequenceHeader) {
  expect_landings({by_mpeg2enc("size=352x240:rate=30000/1001", "-f 3 -b 2500 -g 15 -G 15 -R 2"),
                   media("clip.ac3")});
}

TEST_F(DiscChapters, BeginWhereTheEditorSaysInAFilmWithRepeatedFields) {
  expect_landings({by_mpeg2enc("size=352x240:rate=24000/1001", "-f 8 -p -b 2500 -g 12 -G 12 -R 2"),
                   media("clip.ac3")});
}

TEST_F(DiscChapters, BeginWhereTheEditorSaysWithADelay) {
  expect_landings({media("clip-ntsc.m2v"), media("clip.ac3")}, "NTSC", "200");
  expect_landings({media("clip-ntsc.m2v"), media("clip.ac3")}, "NTSC", "-150");
}

TEST_F(DiscChapters, BeginWhereTheEditorSaysInAReadyStream) {
  expect_landings({media("muxed-ntsc.vob")});
}

TEST_F(DiscChapters, BeginWhereTheEditorSaysWithoutHeadersOfGroups) {
  const std::string stream =
      folder_.add("bare.m2v", without_headers(read_all(media("clip-ntsc.m2v"))));
  EXPECT_EQ(scanned(stream)->gops(), scanned(media("clip-ntsc.m2v"))->gops());
  expect_landings({stream, media("clip.ac3")});
}

TEST_F(DiscChapters, BeginWhereTheEditorSaysInAReadyStreamOfLongUnits) {
  expect_landings(
      {folder_.add("long.vob", with_half_the_units(read_all(media("muxed-ntsc.vob"))))});
}

/// Where the chapters of a list are on a disc that dvdauthor made of a ready stream of six seconds;
/// nothing if it did not make one.
std::optional<std::vector<double>> chapters_by_dvdauthor(const std::string& list) {
  const testing_support::temporary_folder folder;
  const std::string out = folder.path("disc");
  const std::string xml = folder.add(
      "config.xml", "<dvdauthor dest=\"" + out + "\"><vmgm/><titleset><titles><pgc><vob file=\"" +
                        media("muxed-ntsc.vob") + "\" chapters=\"" + list +
                        "\"/></pgc></titles></titleset></dvdauthor>");
  if (run({{"dvdauthor", "-x", xml}, {{"VIDEO_FORMAT", "NTSC"}}}).status != 0)
    return std::nullopt;
  const result<contents> made = read_disc(out);
  EXPECT_TRUE(made && made->titles.size() == 1) << list;
  return made && !made->titles.empty() ? made->titles[0].chapters : std::vector<double>();
}

/// Where the rules say that they will be; nothing if one of the times cannot be read.
std::optional<std::vector<double>> chapters_foretold(const std::string& list,
                                                     const video_file& video) {
  disc_title title;
  title.chapters = {time_of(list)};
  for (const text_time& time : chapters_read(title))
    if (!time.seconds)
      return std::nullopt;
  return chapters_on_disc(title, {video.length(), units_of(video), {}}).begins;
}

TEST_F(DiscChapters, TimesAreReadByTheRulesAsByDvdauthor) {
  const auto video = scanned(media("muxed-ntsc.vob"));
  ASSERT_TRUE(video);
  for (const char* const list :
       {"0,.5", "0,:1", "0,0::1", "0,0:0:0:1.5", "0,1:-58", "0,1e0", "0,+2", "0,3.", "0 1 2",
        " 0,  2,", ",1,,2", ":,4", "0,-1,2", "0,3,1,5", "0,2,2,00:00:02.00", "0,1:,3", ""}) {
    const auto made = chapters_by_dvdauthor(list), foretold = chapters_foretold(list, *video);
    ASSERT_TRUE(made) << list;
    ASSERT_TRUE(foretold) << list;
    EXPECT_THAT(*made, Pointwise(DoubleNear(clock_rounding), *foretold)) << list;
  }
  for (const char* const list :
       {"0,5min", "0,1.5:0", "0,1.2.3", "0,.", "0,1;2", "0,+-1", "0,1e", "0,x:1"}) {
    EXPECT_FALSE(chapters_by_dvdauthor(list)) << list;
    EXPECT_FALSE(chapters_foretold(list, *video)) << list;
  }
}

}  // namespace
}  // namespace corvane::disc
