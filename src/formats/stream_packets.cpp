#include "formats/stream_packets.h"

#include <algorithm>
#include <cstring>

namespace corvane {

namespace {

constexpr std::uint8_t program_end = 0xB9;

using state = stream_packet::state;

stream_packet read_pack_header(const std::uint8_t* data, std::size_t size) {
  stream_packet packet{state::cut, pack_header, 0, 0};
  if (size < 5)
    return packet;
  const bool mpeg2 = (data[4] & 0xC0) == 0x40;
  if (!mpeg2 && (data[4] & 0xF0) != 0x20)
    return {};
  const std::size_t fixed = mpeg2 ? 14 : 12;
  if (size < fixed)
    return packet;
  packet.size = fixed + (mpeg2 ? data[13] & 7u : 0u);
  packet.payload = packet.size;
  packet.found = size < packet.size ? state::cut : state::whole;
  return packet;
}

// Where the payload of a whole video packet begins: behind MPEG-2's header, which tells its
// length, or behind MPEG-1's stuffing, buffer size and time stamps.
std::size_t payload_begin(const std::uint8_t* data, std::size_t size) {
  std::size_t at = 6;
  if (at < size && (data[at] & 0xC0) == 0x80)
    return at + 3 <= size ? std::min(size, at + 3 + data[at + 2]) : size;
  while (at < size && data[at] == 0xFF)
    ++at;
  if (at < size && (data[at] & 0xC0) == 0x40)
    at += 2;
  if (at < size) {
    const int stamps = data[at] >> 4;
    at += stamps == 3 ? 10u : stamps == 2 ? 5u : 1u;
  }
  return std::min(size, at);
}

}  // namespace

stream_packet read_packet(const std::uint8_t* data, std::size_t size) {
  constexpr std::uint8_t prefix[] = {0, 0, 1};
  if (std::memcmp(data, prefix, std::min<std::size_t>(size, 3)) != 0 ||
      (size > 3 && data[3] < program_end))
    return {};
  if (size < 4)
    return {state::cut, 0, 0, 0};
  if (data[3] == program_end)
    return {state::whole, program_end, 4, 4};
  if (data[3] == pack_header)
    return read_pack_header(data, size);
  stream_packet packet{state::cut, data[3], 0, 0};
  if (size < 6)
    return packet;
  packet.size = 6u + (static_cast<std::size_t>(data[4]) << 8 | data[5]);
  if (size < packet.size)
    return packet;
  packet.found = state::whole;
  const bool video = packet.stream >= first_video_stream && packet.stream <= last_video_stream;
  packet.payload = video ? payload_begin(data, packet.size) : packet.size;
  return packet;
}

bool is_navigation(const stream_packet& packet) {
  constexpr std::uint8_t private_stream_2 = 0xBF;
  constexpr std::size_t presentation_control = 6 + 0x03D4;
  return packet.stream == private_stream_2 && packet.size == presentation_control;
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

}  // namespace corvane
