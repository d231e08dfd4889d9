#include "tools/cue_stream.h"

#include "support/bytes.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <string>

namespace corvane {
namespace {

using testing_support::bytes;
using testing_support::temporary_folder;

/// A pack of 2048 bytes that holds one packet.
std::string pack(int stream, std::string packet) {
  packet.resize(2048 - 14 - 6, '\xFF');
  return bytes({0, 0, 1, 0xBA, 0x44, 0, 4, 0, 4, 1, 1, 0x89, 0xC3, 0xF8}) +
         bytes({0, 0, 1, stream, static_cast<int>(packet.size() >> 8),
                static_cast<int>(packet.size() & 255)}) +
         packet;
}

/// What tells dvdauthor a cue's times (at 90 kHz, below 65536) and its two colours.
std::string data_pack(int begin, int end) {
  return pack(0xBE,
              std::string("dvdauthor-data") +
                  bytes({0,         2, 1, 0x20, 0,   0,   begin >> 8, begin & 255, 0,  0, end >> 8,
                         end & 255, 1, 2, 16,   128, 128, 235,        128,         128}));
}

std::string subpicture_pack(const std::string& part, int substream = 0x20) {
  return pack(0xBD, bytes({0x81, 0, 0, substream}) + part);
}

TEST(CueStream, GivesEachCueWithItsTimesColoursAndUnit) {
  const temporary_folder folder;
  const std::string unit = bytes({0, 6, 1, 2, 3, 4});
  const std::string file =
      folder.add("a.mpg", pack(0xE0, "picture") + data_pack(9000, 18000) + subpicture_pack(unit) +
                              pack(0xBE, "") + data_pack(27000, 36000) + subpicture_pack(unit));
  cue_stream stream;
  EXPECT_TRUE(stream.read(file));
  ASSERT_EQ(stream.cues().size(), 2u);
  EXPECT_EQ(stream.cues()[0].begin, 9000u);
  EXPECT_EQ(stream.cues()[0].end, 18000u);
  EXPECT_EQ(stream.cues()[0].palette, (std::vector<disc_colour>{{16, 128, 128}, {235, 128, 128}}));
  EXPECT_EQ(stream.cues()[0].unit, unit);
  EXPECT_EQ(stream.cues()[1].begin, 27000u);
  EXPECT_FALSE(stream.read(file));
}

TEST(CueStream, JoinsAUnitThatGoesOnOverPacksAndReadsTheStreamAsItGrows) {
  const temporary_folder folder;
  std::string unit = bytes({0x10, 0});  // 4096 bytes
  for (int i = 2; i < 4096; ++i)
    unit += static_cast<char>(i % 251);
  const std::string whole = data_pack(1, 2) + subpicture_pack(unit.substr(0, 2024)) +
                            subpicture_pack(unit.substr(2024, 2024)) +
                            subpicture_pack(unit.substr(4048));
  cue_stream stream;
  EXPECT_FALSE(stream.read(folder.path("a.mpg")));  // is not there yet
  for (std::size_t size : {std::size_t{1000}, std::size_t{5000}, whole.size() - 1}) {
    stream.read(folder.add("a.mpg", whole.substr(0, size)));
    EXPECT_TRUE(stream.cues().empty()) << size;
  }
  EXPECT_TRUE(stream.read(folder.add("a.mpg", whole)));
  ASSERT_EQ(stream.cues().size(), 1u);
  EXPECT_TRUE(stream.cues()[0].unit == unit);
}

TEST(CueStream, LooksAtNoOtherSubstreamAndAtNoBytesThatAreNoPacks) {
  const temporary_folder folder;
  cue_stream stream;
  stream.read(folder.add("a.mpg", subpicture_pack(bytes({0, 6, 1, 2, 3, 4}), 0x21) +
                                      std::string(4096, '\xBD') + pack(0xBE, "dvdauthor-data")));
  EXPECT_TRUE(stream.cues().empty());
}

TEST(CueStream, ToPutCuesIntoIsTwoPacks) {
  const std::string stream = stream_for_cues();
  EXPECT_EQ(stream.size(), 4096u);
  EXPECT_EQ(stream.substr(0, 4), bytes({0, 0, 1, 0xBA}));
  EXPECT_EQ(stream.substr(2048, 4), bytes({0, 0, 1, 0xBA}));
}

}  // namespace
}  // namespace corvane
