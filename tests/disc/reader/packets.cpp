#include "packets.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <dvdread/nav_read.h>

namespace corvane::disc {

namespace {

using sector_bytes = std::array<unsigned char, DVD_VIDEO_LB_LEN>;

constexpr std::size_t pci_at = 0x2d, dsi_at = 0x407;
constexpr unsigned char pack_start[] = {0, 0, 1, 0xba};
constexpr unsigned char private_2_start[] = {0, 0, 1, 0xbf};

bool starts_with(const sector_bytes& s, std::size_t at, const unsigned char (&mark)[4]) {
  return std::memcmp(s.data() + at, mark, sizeof mark) == 0;
}

/// The 33 bits of a time stamp in five bytes, cut to 32 as navigation packets hold them.
std::uint32_t time_stamp(const unsigned char* p) {
  const auto bits = [p](int at, unsigned mask) { return std::uint32_t{p[at]} & mask; };
  return bits(0, 0x0e) << 29 | bits(1, 0xff) << 22 | bits(2, 0xfe) << 14 | bits(3, 0xff) << 7 |
         bits(4, 0xfe) >> 1;
}

/// Calls `take` with the place of each packet of one pack, which follow its 14-byte header and
/// stuffing, and with the place behind it.
template <typename Take>
void each_packet(const sector_bytes& s, Take take) {
  if (!starts_with(s, 0, pack_start))
    return;
  std::size_t at = 14 + (s[13] & 7u);
  while (at + 9 < s.size() && s[at] == 0 && s[at + 1] == 0 && s[at + 2] == 1) {
    const std::size_t end = at + 6 + s[at + 4] * 256u + s[at + 5];
    take(at, std::min(end, s.size()));
    at = end;
  }
}

void add_packets(const sector_bytes& s, std::map<int, stream_start>& found) {
  each_packet(s, [&](std::size_t at, std::size_t /*end*/) {
    const int id = s[at + 3];
    const bool carries_stream = id == 0xbd || (id >= 0xc0 && id <= 0xef);
    if (!carries_stream)
      return;
    const std::size_t payload = at + 9 + s[at + 8];
    const bool timed = (s[at + 7] & 0x80) != 0 && at + 14 < s.size();
    int key = id;
    if (id == 0xbd)
      key = payload < s.size() ? 0xbd00 + s[payload] : 0xbd00;
    stream_start& stream = found[key];
    ++stream.packets;
    if (timed && !stream.timed) {
      stream.timed = true;
      stream.first = time_stamp(s.data() + at + 9);
    }
  });
}

}  // namespace

streams_of::streams_of(dvd_reader_t* disc, int titleset, dvd_read_domain_t domain)
    : file_(DVDOpenFile(disc, titleset, domain)) {}

std::optional<navigation_packet> streams_of::navigation(std::uint32_t sector) const {
  sector_bytes s{};
  if (!file_ || DVDReadBlocks(file_.get(), static_cast<int>(sector), 1, s.data()) != 1)
    return std::nullopt;
  if (!starts_with(s, 0, pack_start) || !starts_with(s, pci_at - 7, private_2_start))
    return std::nullopt;
  navigation_packet packet{};
  navRead_PCI(&packet.pci, s.data() + pci_at);
  navRead_DSI(&packet.dsi, s.data() + dsi_at);
  return packet;
}

std::map<int, stream_start> streams_of::starts(std::uint32_t first, int count) const {
  std::map<int, stream_start> found;
  sector_bytes s{};
  for (int i = 0; file_ && i < count; ++i) {
    if (DVDReadBlocks(file_.get(), static_cast<int>(first) + i, 1, s.data()) != 1)
      break;
    add_packets(s, found);
  }
  return found;
}

std::optional<timed_unit> streams_of::first_subpicture(std::uint8_t substream, std::uint32_t first,
                                                       std::uint32_t last) const {
  std::optional<timed_unit> found;
  const auto whole = [&found] {
    return found && found->bytes.size() >= 2 &&
           found->bytes.size() >= found->bytes[0] * std::size_t{256} + found->bytes[1];
  };
  sector_bytes s{};
  for (std::uint32_t sector = first; file_ && sector <= last && !whole(); ++sector) {
    if (DVDReadBlocks(file_.get(), static_cast<int>(sector), 1, s.data()) != 1)
      break;
    each_packet(s, [&](std::size_t at, std::size_t end) {
      const std::size_t payload = at + 9 + s[at + 8];
      if (s[at + 3] != 0xbd || payload >= end || s[payload] != substream)
        return;
      const bool timed = (s[at + 7] & 0x80) != 0;  // a unit begins here
      if (!found && timed)
        found = timed_unit{time_stamp(s.data() + at + 9), {}};
      if (found && !whole())
        found->bytes.insert(found->bytes.end(), s.data() + payload + 1, s.data() + end);
    });
  }
  return whole() ? found : std::nullopt;
}

std::vector<std::uint8_t> streams_of::private_bytes(std::uint8_t substream, std::uint32_t first,
                                                    std::uint32_t last, std::size_t enough) const {
  std::vector<std::uint8_t> found;
  sector_bytes s{};
  for (std::uint32_t sector = first; file_ && sector <= last && found.size() < enough; ++sector) {
    if (DVDReadBlocks(file_.get(), static_cast<int>(sector), 1, s.data()) != 1)
      break;
    each_packet(s, [&](std::size_t at, std::size_t end) {
      const std::size_t payload = at + 9 + s[at + 8];
      if (s[at + 3] == 0xbd && payload < end && s[payload] == substream)
        found.insert(found.end(), s.data() + payload + 1, s.data() + end);
    });
  }
  return found;
}

}  // namespace corvane::disc
