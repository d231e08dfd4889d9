// Program streams of other programs' multiplexers, against what ffprobe says of them.
#include "examine/made_packs.h"
#include "examine/program_stream_facts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::string file(const std::string& name) {
  std::ifstream in(std::string(CORVANE_PROGRAM_STREAMS) + "/" + name, std::ios::binary);
  EXPECT_TRUE(in) << name;
  return {std::istreambuf_iterator<char>(in), {}};
}

const program_stream_facts& program_facts_of(const std::string& name) {
  static std::map<std::string, program_stream_facts> known;
  if (!known.contains(name)) {
    const std::string bytes = file(name);
    known[name] = examine_test::facts_in_slices(bytes, bytes.size());
    EXPECT_TRUE(examine_test::facts_in_slices(bytes, 4097) == known[name]) << name;
  }
  return known[name];
}

/// A line of what ffprobe says.
struct probed {
  int id = 0;
  std::uint64_t packets = 0, bytes = 0, stamps = 0, first = 0, last = 0;
};

std::vector<probed> probe_of(const std::string& name) {
  std::ifstream in(std::string(CORVANE_PROGRAM_STREAMS) + "/" + name + ".probe");
  std::vector<probed> all;
  for (probed one; in >> std::hex >> one.id >> std::dec >> one.packets >> one.bytes >> one.stamps >>
                   one.first >> one.last;)
    all.push_back(one);
  EXPECT_FALSE(all.empty()) << name;
  return all;
}

const inner_stream* find(const program_stream_facts& facts, int id) {
  if (id >= 0x1E0)
    return facts.find(inner_kind::video, id - 0x1E0);
  if (id >= 0x1C0)
    return facts.find(inner_kind::mpeg_audio, id - 0x1C0);
  if (id >= 0xA0)
    return facts.find(inner_kind::lpcm, id - 0xA0);
  if (id >= 0x88)
    return facts.find(inner_kind::dts, id - 0x88);
  return id >= 0x80 ? facts.find(inner_kind::ac3, id - 0x80)
                    : facts.find(inner_kind::subpicture, id - 0x20);
}

const std::vector<std::string> streams = {
    "dvdauthor.vob", "ffmpeg-dvd.vob",    "ffmpeg-one.mpg", "ffmpeg-vob.vob",
    "mplex-dvd.mpg", "mplex-generic.mpg", "mplex-vcd.mpg",  "spumux.mpg",
};

TEST(RealProgramStreams, FfprobeFindsTheSameStreamsAndTimes) {
  constexpr int navigation = 0x1BF;
  for (const std::string& name : streams) {
    SCOPED_TRACE(name);
    const auto facts = program_facts_of(name);
    std::size_t found = 0;
    for (const probed& expected : probe_of(name)) {
      if (expected.id == navigation) {
        EXPECT_EQ(2 * facts.nav_packs, expected.packets);
        continue;
      }
      SCOPED_TRACE(expected.id);
      const inner_stream* const one = find(facts, expected.id);
      ASSERT_NE(one, nullptr);
      ++found;
      EXPECT_EQ(one->packets, expected.packets);
      // ffprobe was told to leave packets as they are, and so these begin with three bytes of
      // header.
      const std::uint64_t headers = one->kind == inner_kind::lpcm ? 3 * one->packets : 0;
      EXPECT_EQ(one->payload_bytes + headers, expected.bytes);
      EXPECT_EQ(one->stamps, expected.stamps);
      if (one->breaks.count == 0) {
        EXPECT_EQ(one->first, expected.first);
        EXPECT_EQ(one->last, expected.last);
        EXPECT_EQ(one->length, expected.last - expected.first);
      }
    }
    EXPECT_EQ(found, facts.streams.size());
  }
}

TEST(RealProgramStreams, AreWhole) {
  for (const std::string& name : streams) {
    SCOPED_TRACE(name);
    const auto facts = program_facts_of(name);
    // A VCD's packs end with 20 zeros.
    EXPECT_EQ(facts.loose.count > 0, name == "mplex-vcd.mpg");
    EXPECT_TRUE(std::ranges::all_of(facts.loose.kept, &loose_bytes::zeros));
    EXPECT_FALSE(facts.cut);
    EXPECT_EQ(facts.packs_of_the_other, 0u);
    EXPECT_EQ(facts.middle_end_codes.count, 0u);
    const bool joined = name == "dvdauthor.vob";
    EXPECT_EQ(facts.clock_breaks.count, joined ? 1u : 0u);
    for (const inner_stream& one : facts.streams) {
      EXPECT_EQ(one.breaks.count, joined && one.kind != inner_kind::subpicture ? 1u : 0u)
          << static_cast<int>(one.kind);
      if (one.video) {
        EXPECT_EQ(one.video->damage.count, 0u);
      }
      if (one.audio) {
        EXPECT_EQ(one.audio->gap_count, 0u);
        EXPECT_FALSE(one.audio->cut);
        EXPECT_EQ(one.audio->damaged_frames, 0u);
      }
    }
    const auto counted = examine_test::facts_in_slices(file(name), 100'000, inner_streams::counted);
    EXPECT_EQ(counted.video()->breaks.count, joined ? 1u : 0u);
  }
}

TEST(RealProgramStreams, SystemsAndPacks) {
  struct {
    const char* name;
    bool mpeg2, even;
    std::uint64_t nav_packs;
  } const rows[] = {
      {"mplex-dvd.mpg", true, true, 6},   {"mplex-generic.mpg", true, true, 0},
      {"mplex-vcd.mpg", false, false, 0}, {"ffmpeg-dvd.vob", true, true, 1},
      {"ffmpeg-vob.vob", true, true, 0},  {"ffmpeg-one.mpg", false, false, 0},
      {"dvdauthor.vob", true, true, 12},
  };
  for (const auto& row : rows) {
    const auto facts = program_facts_of(row.name);
    EXPECT_EQ(facts.mpeg2, row.mpeg2) << row.name;
    EXPECT_EQ(facts.uneven_packs.count == 0, row.even) << row.name;
    EXPECT_EQ(facts.nav_packs, row.nav_packs) << row.name;
    EXPECT_EQ(facts.begins_with_nav_pack, row.nav_packs > 0) << row.name;
  }
}

TEST(RealProgramStreams, LengthIsThatOfTheVideo) {
  // mplex and dvdauthor stamp only the first picture of each group of 15.
  EXPECT_NEAR(program_facts_of("ffmpeg-dvd.vob").seconds, 75 * 1001 / 30000.0, 0.07);
  EXPECT_NEAR(program_facts_of("mplex-generic.mpg").seconds, 75 * 1001 / 30000.0, 0.07);
  EXPECT_NEAR(program_facts_of("ffmpeg-one.mpg").seconds, 2, 0.07);
  EXPECT_EQ(program_facts_of("ffmpeg-dvd.vob").video()->video->pictures, 75u);
  EXPECT_EQ(program_facts_of("mplex-dvd.mpg").find(inner_kind::ac3)->audio->bytes,
            file("sound.ac3").size());
  EXPECT_EQ(program_facts_of("ffmpeg-vob.vob").find(inner_kind::lpcm)->lpcm,
            (lpcm_format{48'000, 16, 2}));
}

TEST(RealProgramStreams, ADiscsCells) {
  const auto facts = program_facts_of("dvdauthor.vob");
  std::vector<std::pair<int, int>> cells;
  for (const cell_begin& one : facts.cells.kept)
    cells.emplace_back(one.vob, one.cell);
  ASSERT_EQ(facts.clock_breaks.count, 1u);
  EXPECT_TRUE(facts.clock_breaks.kept[0].new_vob);
  EXPECT_THAT(cells, ElementsAre(std::pair(1, 1), std::pair(1, 2), std::pair(2, 1)));
}

TEST(RealProgramStreams, TheBeginningTellsWhatIsInside) {
  for (const std::string& name : streams) {
    const std::string bytes = file(name);
    const auto head = read_program_stream_head(
        std::span(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()));
    ASSERT_TRUE(head) << name;
    const auto facts = program_facts_of(name);
    ASSERT_NE(head->video(), nullptr) << name;
    EXPECT_EQ(head->video()->video->shape, facts.video()->video->shape) << name;
    for (const inner_stream& one : facts.streams) {
      const inner_stream* const early = head->find(one.kind, one.number);
      ASSERT_TRUE(early != nullptr || one.kind == inner_kind::subpicture) << name;
      if (one.audio) {
        EXPECT_EQ(early->audio->first, one.audio->first) << name;
      }
    }
  }
}

}  // namespace
}  // namespace corvane
