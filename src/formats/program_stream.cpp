#include "formats/program_stream.h"

#include <cstring>

namespace corvane {

namespace {

constexpr std::uint8_t program_end = 0xB9, extended_stream = 0xFD;
constexpr std::size_t presentation_control = 0x03D4, data_search = 0x03FA;  // lengths of packets

using state = stream_packet::state;

/// The 33 bits in five bytes, with a marker bit behind the third, the 18th and the last.
stream_time stream_time_at(const std::uint8_t* data) {
  const auto bits = [data](int at, unsigned mask) { return stream_time{data[at] & mask}; };
  return bits(0, 0x0E) << 29 | bits(1, 0xFF) << 22 | bits(2, 0xFE) << 14 | bits(3, 0xFF) << 7 |
         bits(4, 0xFE) >> 1;
}

/// Of MPEG-2's pack header: 33 bits at 90 kHz and the rest in 9 bits, in six bytes.
std::uint64_t clock_at(const std::uint8_t* data) {
  const auto bits = [data](int at, unsigned mask) { return std::uint64_t{data[at] & mask}; };
  const std::uint64_t base = bits(0, 0x38) << 27 | bits(0, 0x03) << 28 | bits(1, 0xFF) << 20 |
                             bits(2, 0xF8) << 12 | bits(2, 0x03) << 13 | bits(3, 0xFF) << 5 |
                             bits(4, 0xF8) >> 3;
  return base * 300 + (bits(4, 0x03) << 7 | bits(5, 0xFE) >> 1);
}

void read_pack_header(stream_packet& packet, const std::uint8_t* data, std::size_t size) {
  if (size < 5)
    return;
  const bool mpeg2 = (data[4] & 0xC0) == 0x40;
  if (!mpeg2 && (data[4] & 0xF0) != 0x20) {
    packet = {};
    return;
  }
  const std::size_t fixed = mpeg2 ? 14 : 12;
  if (size < fixed)
    return;
  packet.clock = mpeg2 ? clock_at(data + 4) : stream_time_at(data + 4) * 300;
  packet.size = fixed + (mpeg2 ? data[13] & 7u : 0u);
  packet.payload = std::min(size, packet.size);
  packet.found = size < packet.size ? state::cut : state::whole;
}

/// Whether time stamps may stand before the payload, as in all streams but those of the system.
bool has_stamps(std::uint8_t stream) {
  return stream == private_stream_1 || stream == extended_stream ||
         (stream >= first_sound_stream && stream <= last_video_stream);
}

/// Sets the time stamps, if their bytes are there.
void read_stamps(stream_packet& packet, const std::uint8_t* data, std::size_t size, std::size_t at,
                 int count) {
  if (count > 0 && at + 5 <= size)
    packet.shown = stream_time_at(data + at);
  if (count > 1 && at + 10 <= size)
    packet.decoded = stream_time_at(data + at + 5);
}

// MPEG-2's header, which tells its length, or MPEG-1's stuffing, buffer size and time stamps.
void read_header(stream_packet& packet, const std::uint8_t* data, std::size_t size) {
  std::size_t at = 6;
  if (at < size && (data[at] & 0xC0) == 0x80) {
    packet.payload = at + 3 <= size ? std::min(size, at + 3 + data[at + 2]) : size;
    const unsigned stamps = at + 1 < size ? data[at + 1] >> 6 : 0u;
    read_stamps(packet, data, size, at + 3, stamps == 3 ? 2 : stamps == 2 ? 1 : 0);
    return;
  }
  while (at < size && data[at] == 0xFF)
    ++at;
  if (at < size && (data[at] & 0xC0) == 0x40)
    at += 2;
  if (at < size) {
    const int stamps = data[at] >> 4 == 3 ? 2 : data[at] >> 4 == 2 ? 1 : 0;
    read_stamps(packet, data, size, at, stamps);
    at += stamps > 0 ? 5u * static_cast<unsigned>(stamps) : 1u;
  }
  packet.payload = std::min(size, at);
}

}  // namespace

// One object in all paths, which is built where the caller wants it: files have millions of
// packets.
stream_packet read_packet(const std::uint8_t* data, std::size_t size) {
  stream_packet packet;
  const auto is = [&](std::size_t at, std::uint8_t byte) { return at >= size || data[at] == byte; };
  if (!is(0, 0) || !is(1, 0) || !is(2, 1) || (size > 3 && data[3] < program_end))
    return packet;
  packet.found = state::cut;
  if (size < 4)
    return packet;
  packet.stream = data[3];
  if (packet.stream == pack_header) {
    read_pack_header(packet, data, size);
    return packet;
  }
  if (packet.stream == program_end) {
    packet.found = state::whole;
    packet.size = packet.payload = 4;
    return packet;
  }
  if (size < 6)
    return packet;
  packet.size = 6u + (static_cast<std::size_t>(data[4]) << 8 | data[5]);
  packet.found = size < packet.size ? state::cut : state::whole;
  packet.payload = 6;
  const std::size_t there = std::min(size, packet.size);
  if (has_stamps(packet.stream))
    read_header(packet, data, there);
  if (packet.stream == private_stream_1 && packet.payload < there)
    packet.substream = data[packet.payload];
  return packet;
}

bool is_navigation(const stream_packet& packet) {
  return packet.stream == private_stream_2 && packet.size == 6 + presentation_control;
}

std::size_t bytes_to_packet(const std::uint8_t* data, std::size_t size) {
  for (std::size_t at = 2; at < size; ++at) {
    const auto* one = static_cast<const std::uint8_t*>(std::memchr(data + at, 1, size - at));
    if (one == nullptr)
      break;
    at = static_cast<std::size_t>(one - data);
    if (read_packet(one - 2, size - at + 2).found != state::none)
      return at - 2;
  }
  // The first bytes of a packet may be the last ones here.
  std::size_t zeros = 0;
  while (zeros < std::min<std::size_t>(2, size) && data[size - zeros - 1] == 0)
    ++zeros;
  return size - zeros;
}

bool carries_nav_packets(std::string_view block) {
  const auto holds = [block](std::size_t length) {
    const char header[] = {0,
                           0,
                           1,
                           static_cast<char>(private_stream_2),
                           static_cast<char>(length >> 8),
                           static_cast<char>(length & 0xFF)};
    return block.find({header, sizeof header}) != std::string_view::npos;
  };
  return holds(presentation_control) && holds(data_search);
}

}  // namespace corvane
