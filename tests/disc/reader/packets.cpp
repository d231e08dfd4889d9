#include "packets.h"

#include "formats/program_stream.h"

#include <algorithm>
#include <array>
#include <dvdread/nav_read.h>
#include <span>

namespace corvane::disc {

namespace {

using sector_bytes = std::array<std::uint8_t, DVD_VIDEO_LB_LEN>;
static_assert(DVD_VIDEO_LB_LEN == disc_pack_size);

/// Where the control and search data stand in a navigation pack.
constexpr std::size_t pci_at = 0x2d, dsi_at = 0x407;

using payload_bytes = std::span<const std::uint8_t>;

/// Time stamps have 33 bits; navigation packets hold 32 of them.
std::uint32_t cut_time(stream_time time) {
  return static_cast<std::uint32_t>(time);
}

bool carries_stream(const stream_packet& packet) {
  return packet.stream == private_stream_1 ||
         (packet.stream >= first_sound_stream && packet.stream <= last_video_stream);
}

void add_packets(const sector_bytes& s, std::map<int, stream_start>& found) {
  each_packet_in_pack(s, [&](const stream_packet& packet, payload_bytes /*payload*/) {
    if (!carries_stream(packet))
      return;
    int key = packet.stream;
    if (packet.stream == private_stream_1)
      key = 0xbd00 + packet.substream.value_or(0);
    stream_start& stream = found[key];
    ++stream.packets;
    if (packet.shown && !stream.timed) {
      stream.timed = true;
      stream.first = cut_time(*packet.shown);
    }
  });
}

bool holds_navigation(const sector_bytes& s) {
  bool found = false;
  each_packet_in_pack(s, [&found](const stream_packet& packet, payload_bytes /*payload*/) {
    found = found || is_navigation(packet);
  });
  return found;
}

}  // namespace

streams_of::streams_of(dvd_reader_t* disc, int titleset, dvd_read_domain_t domain)
    : file_(DVDOpenFile(disc, titleset, domain)) {}

std::optional<navigation_packet> streams_of::navigation(std::uint32_t sector) const {
  sector_bytes s{};
  if (!file_ || DVDReadBlocks(file_.get(), static_cast<int>(sector), 1, s.data()) != 1)
    return std::nullopt;
  if (!holds_navigation(s))
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
    each_packet_in_pack(s, [&](const stream_packet& packet, payload_bytes payload) {
      if (packet.substream != substream)
        return;
      if (!found && packet.shown)  // a unit begins here
        found = timed_unit{cut_time(*packet.shown), {}};
      if (found && !whole())
        found->bytes.insert(found->bytes.end(), payload.begin() + 1, payload.end());
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
    each_packet_in_pack(s, [&](const stream_packet& packet, payload_bytes payload) {
      if (packet.substream == substream)
        found.insert(found.end(), payload.begin() + 1, payload.end());
    });
  }
  return found;
}

}  // namespace corvane::disc
