// The packets of program streams.
#include "formats/program_stream.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <span>
#include <string>
#include <vector>

namespace corvane {
namespace {

using namespace std::string_literals;

const std::uint8_t* bytes_of(const std::string& text) {
  return reinterpret_cast<const std::uint8_t*>(text.data());
}

stream_packet packet_of(const std::string& bytes) {
  return read_packet(bytes_of(bytes), bytes.size());
}

TEST(ProgramStream, PackHeadersOfBothStandards) {
  const auto two = packet_of("\0\0\1\xBA\x44\0\4\0\4\1\0\0\3\xFA\xFF\xFF"s);
  EXPECT_EQ(two.found, stream_packet::state::whole);
  EXPECT_EQ(two.size, 16u);
  const auto one = packet_of("\0\0\1\xBA\x21\0\1\0\1\x80\0\1"s);
  EXPECT_EQ(one.found, stream_packet::state::whole);
  EXPECT_EQ(one.size, 12u);
  EXPECT_EQ(packet_of("\0\0\1\xBA\x81\0\1\0\1\x80\0\1\0\0"s).found, stream_packet::state::none);
}

TEST(ProgramStream, VideoPayloadBeginsBehindTheHeader) {
  struct {
    const char* what;
    std::string header;
  } const rows[] = {
      {"MPEG-2, no fields", "\x81\0\0"s},
      {"MPEG-2, time stamp and stuffing", "\x81\x80\x07\x21\0\1\0\1\xFF\xFF"s},
      {"MPEG-1, nothing", "\x0F"s},
      {"MPEG-1, stuffing", "\xFF\xFF\xFF\x0F"s},
      {"MPEG-1, buffer size", "\x60\x20\x0F"s},
      {"MPEG-1, one time stamp", "\x21\0\1\0\1"s},
      {"MPEG-1, stuffing, buffer size, two time stamps", "\xFF\x60\x20\x31\0\1\0\1\x11\0\1\0\1"s},
  };
  for (const auto& row : rows) {
    const std::string body = row.header + "payload";
    const auto p = packet_of("\0\0\1\xE0\0"s + static_cast<char>(body.size()) + body + "next");
    EXPECT_EQ(p.found, stream_packet::state::whole) << row.what;
    EXPECT_EQ(p.size, 6 + body.size()) << row.what;
    EXPECT_EQ(p.payload, 6 + row.header.size()) << row.what;
  }
}

TEST(ProgramStream, AHeaderLongerThanItsPacketLeavesNoPayload) {
  for (const std::string& body : {"\x81\0\xFF..."s, "\xFF\xFF\xFF\xFF"s, "\x60"s, "\x31\0"s, ""s}) {
    const auto p = packet_of("\0\0\1\xE0\0"s + static_cast<char>(body.size()) + body + "next....");
    EXPECT_EQ(p.found, stream_packet::state::whole);
    EXPECT_EQ(p.payload, p.size);
  }
}

TEST(ProgramStream, EveryBeginningOfAPacketIsCut) {
  const std::string packet = "\0\0\1\xE0\0\x08\x81\0\0video"s;
  for (std::size_t size = 0; size < packet.size(); ++size)
    EXPECT_EQ(packet_of(packet.substr(0, size)).found, stream_packet::state::cut) << size;
  EXPECT_EQ(packet_of(packet).found, stream_packet::state::whole);
}

TEST(ProgramStream, StartCodesOfVideoAreNoPackets) {
  EXPECT_EQ(packet_of("\0\0\1\xB3\0\x08\x81\0\0video"s).found, stream_packet::state::none);
  EXPECT_EQ(packet_of("\0\0\2\xE0\0\x08\x81\0\0video"s).found, stream_packet::state::none);
}

TEST(ProgramStream, PackHeadersTellTheClock) {
  EXPECT_EQ(packet_of("\0\0\1\xBA\x44\0\4\0\4\1\1\x89\xC3\xF8"s).clock, 0u);
  EXPECT_EQ(packet_of("\0\0\1\xBA\x44\0\x16\xFC\x84\1\1\x89\xC3\xF8"s).clock, 27'000'000u);
  EXPECT_EQ(packet_of("\0\0\1\xBA\x44\0\4\0\5\3\1\x89\xC3\xF8"s).clock, 129u);
  EXPECT_EQ(packet_of("\0\0\1\xBA\x7F\xFF\xFF\xFF\xFC\1\1\x89\xC3\xF8"s).clock,
            ((std::uint64_t{1} << 33) - 1) * 300);
  EXPECT_EQ(packet_of("\0\0\1\xBA\x21\0\5\xBF\x21\x80\0\1"s).clock, 27'000'000u);
  EXPECT_FALSE(packet_of("\0\0\1\xE0\0\3\x81\0\0"s).clock);
}

TEST(ProgramStream, TimeStampsStandBeforeThePayload) {
  const auto told = [](const std::string& start, const std::string& body) {
    const auto p =
        packet_of("\0\0\1"s + start + '\0' + static_cast<char>(body.size()) + body + "next");
    return (p.shown ? std::to_string(*p.shown) : "-") + " " +
           (p.decoded ? std::to_string(*p.decoded) : "-");
  };
  const std::string one = "\x21\0\5\xBF\x21"s, most = "\x2F\xFF\xFF\xFF\xFF"s;
  EXPECT_EQ(told("\xE0", "\x81\x80\5"s + one + "x"), "90000 -");
  EXPECT_EQ(told("\xEF", "\x81\x80\5"s + most), "8589934591 -");
  EXPECT_EQ(told("\xC0", "\x81\xC0\x0A"s + most + one + "x"), "8589934591 90000");
  EXPECT_EQ(told("\xBD", "\x81\x80\5"s + one + "x"), "90000 -");
  EXPECT_EQ(told("\xE0", "\x81\0\5"s + one + "x"), "- -");
  EXPECT_EQ(told("\xE0", "\x81\x80\5\x21\0\5"s), "- -");
  EXPECT_EQ(told("\xE0", one), "90000 -");
  EXPECT_EQ(told("\xE0", "\xFF\x60\x20\x31\0\5\xBF\x21\x11\0\1\0\1x"s), "90000 0");
  EXPECT_EQ(told("\xE0", "\x0F"), "- -");
  for (const char* const system : {"\xBB", "\xBC", "\xBE", "\xBF", "\xF0", "\xFF"})
    EXPECT_EQ(told(system, "\x81\x80\5"s + one + "x"), "- -");
}

TEST(ProgramStream, PrivateStream1TellsItsSubstream) {
  EXPECT_EQ(packet_of("\0\0\1\xBD\0\5\x81\0\1\xFF\x21"s).substream, first_subpicture + 1);
  EXPECT_FALSE(packet_of("\0\0\1\xBD\0\4\x81\0\1\xFF\x21"s).substream);
  EXPECT_FALSE(packet_of("\0\0\1\xBF\0\5\x81\0\1\xFF\x21"s).substream);
}

TEST(ProgramStream, ACutPacketTellsWhatItsBytesTell) {
  const std::string packet = "\0\0\1\xBD\4\0\x81\x80\5\x21\0\5\xBF\x21\x20more"s;
  const auto p = packet_of(packet);
  EXPECT_EQ(p.found, stream_packet::state::cut);
  EXPECT_EQ(p.size, 6u + 1024);
  EXPECT_EQ(p.shown, 90'000u);
  EXPECT_EQ(p.substream, first_subpicture);
  for (std::size_t size = 0; size < packet.size(); ++size)
    EXPECT_LE(packet_of(packet.substr(0, size)).payload, size);
}

TEST(ProgramStream, TheFirstNavigationPacketIsKnownByItsLength) {
  EXPECT_TRUE(is_navigation(packet_of("\0\0\1\xBF\3\xD4"s)));
  EXPECT_FALSE(is_navigation(packet_of("\0\0\1\xBF\3\xFA"s)));
  EXPECT_FALSE(is_navigation(packet_of("\0\0\1\xBE\3\xD4"s)));
}

/// "STREAM:PAYLOAD" of each packet in a pack, as texts.
std::vector<std::string> packets_in(const std::string& pack) {
  std::vector<std::string> told;
  each_packet_in_pack({bytes_of(pack), pack.size()}, [&](const stream_packet& p,
                                                         std::span<const std::uint8_t> payload) {
    told.push_back(std::to_string(p.stream) + ":" + std::string(payload.begin(), payload.end()));
  });
  return told;
}

TEST(ProgramStream, PacketsStandBehindThePackHeaderAndItsStuffing) {
  using testing::ElementsAre;
  using testing::IsEmpty;
  const std::string header = "\0\0\1\xBA\x44\0\4\0\4\1\1\x89\xC3\xFA\xFF\xFF"s;
  const std::string system = "\0\0\1\xBB\0\2ab"s, video = "\0\0\1\xE0\0\5\x81\0\0cd"s,
                    padding = "\0\0\1\xBE\0\2ef"s;
  EXPECT_THAT(packets_in(header + system + video + padding),
              ElementsAre("187:ab", "224:cd", "190:ef"));
  EXPECT_THAT(packets_in(header + system + video.substr(0, 10)), ElementsAre("187:ab", "224:c"));
  EXPECT_THAT(packets_in(header + system + video.substr(0, 5)), ElementsAre("187:ab"));
  EXPECT_THAT(packets_in(header + system + "..." + video), ElementsAre("187:ab"));
  EXPECT_THAT(packets_in(system + video), IsEmpty());
  EXPECT_THAT(packets_in(header), IsEmpty());
  EXPECT_THAT(packets_in(""), IsEmpty());
}

TEST(ProgramStream, AfterDamageTheNextPacketIsFound) {
  const auto skip = [](const std::string& bytes) {
    return bytes_to_packet(bytes_of(bytes), bytes.size());
  };
  EXPECT_EQ(skip("damage\0\0\1\xE0\0\x01"s), 6u);
  EXPECT_EQ(skip("damage\0\0\1\x12..\0\0\1\xE0\0\x01"s), 12u);
  EXPECT_EQ(skip("damage\0\0\1"s), 6u);
  EXPECT_EQ(skip("damage\0\0"s), 6u);
  EXPECT_EQ(skip("damage\0"s), 6u);
  EXPECT_EQ(skip("damage"s), 6u);
}

TEST(ProgramStream, BothNavigationPacketsMustBeThere) {
  using namespace std::string_view_literals;
  const auto pci = "\x00\x00\x01\xBF\x03\xD4"sv;
  const auto dsi = "\x00\x00\x01\xBF\x03\xFA"sv;
  EXPECT_FALSE(carries_nav_packets(""));
  EXPECT_FALSE(carries_nav_packets(pci));
  EXPECT_FALSE(carries_nav_packets(dsi));
  EXPECT_TRUE(carries_nav_packets(std::string(pci) + std::string(dsi)));
  EXPECT_TRUE(carries_nav_packets(std::string(dsi) + "x" + std::string(pci)));
  EXPECT_FALSE(carries_nav_packets(std::string(pci.substr(0, 5)) + std::string(dsi)));
}

}  // namespace
}  // namespace corvane
