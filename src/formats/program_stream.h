// The packets of an MPEG-1 or MPEG-2 program stream: pack headers, system headers and PES packets.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace corvane {

/// Last byte of the start code of a pack header, with which a program stream begins.
inline constexpr std::uint8_t pack_header = 0xBA;

/// Stream numbers of PES packets. Private stream 1 carries subpictures and most kinds of sound; the
/// first byte of a payload tells which (substream).
inline constexpr std::uint8_t private_stream_1 = 0xBD;
inline constexpr std::uint8_t padding_stream = 0xBE;
inline constexpr std::uint8_t private_stream_2 = 0xBF;
inline constexpr std::uint8_t first_sound_stream = 0xC0;
inline constexpr std::uint8_t first_video_stream = 0xE0;
inline constexpr std::uint8_t last_video_stream = 0xEF;

/// Substreams of private stream 1: the 32 subpicture streams of a disc.
inline constexpr std::uint8_t first_subpicture = 0x20;
inline constexpr std::uint8_t last_subpicture = 0x3F;

/// No packet is longer.
inline constexpr std::size_t largest_packet = 6 + 0xFFFF;

/// A pack of a disc has as many bytes as a sector.
inline constexpr std::size_t disc_pack_size = 2048;

/// A time of 33 bits at 90 kHz.
using stream_time = std::uint64_t;

struct stream_packet {
  enum class state { none, cut, whole };
  state found = state::none;
  std::uint8_t stream = 0;  ///< last byte of its start code
  std::size_t size = 0;     ///< in bytes, header included; 0 when not even that is known
  /// Where the payload begins; it ends with the packet. Of a cut packet, no further than the bytes
  /// that are there.
  std::size_t payload = 0;
  std::optional<std::uint64_t> clock;     ///< of a pack header: its clock reference, at 27 MHz
  std::optional<stream_time> shown;       ///< presentation time stamp
  std::optional<stream_time> decoded;     ///< decoding time stamp, where it is another one
  std::optional<std::uint8_t> substream;  ///< of private stream 1, when there is a payload
};

/// The packet that begins with the first of `size` bytes: `none` when no packet can begin so, `cut`
/// when more bytes are needed; then only what these bytes tell is set.
stream_packet read_packet(const std::uint8_t* data, std::size_t size);

/// Whether a packet is the first one of those that a unit (VOBU) of a disc begins with: the
/// presentation control packet (PCI), which is known by its length.
bool is_navigation(const stream_packet& packet);

/// How many bytes to skip to reach one with which a packet may begin; `size` when none does.
std::size_t bytes_to_packet(const std::uint8_t* data, std::size_t size);

/// Whether headers of both navigation packets, presentation control (PCI) and data search (DSI),
/// stand somewhere in the block.
bool carries_nav_packets(std::string_view block);

/// Calls `take` with each packet behind the header of a pack and with what of its payload lies in
/// the pack: the last packet may be cut. Bytes that do not begin with a pack header hold none.
template <typename Take>
void each_packet_in_pack(std::span<const std::uint8_t> pack, Take take) {
  const stream_packet header = read_packet(pack.data(), pack.size());
  if (header.found != stream_packet::state::whole || header.stream != pack_header)
    return;
  for (std::size_t at = header.size; at < pack.size();) {
    const std::span<const std::uint8_t> rest = pack.subspan(at);
    const stream_packet packet = read_packet(rest.data(), rest.size());
    if (packet.found == stream_packet::state::none || packet.size == 0)
      return;
    take(packet, rest.first(std::min(packet.size, rest.size())).subspan(packet.payload));
    at += packet.size;
  }
}

}  // namespace corvane
