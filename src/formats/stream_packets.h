// The packets of an MPEG-1 or MPEG-2 program stream: pack headers, system headers and PES packets.
#pragma once

#include <cstddef>
#include <cstdint>

namespace corvane {

/// Last byte of the start code of a pack header, with which a program stream begins.
inline constexpr std::uint8_t pack_header = 0xBA;

/// Stream numbers of PES packets that carry video.
inline constexpr std::uint8_t first_video_stream = 0xE0;
inline constexpr std::uint8_t last_video_stream = 0xEF;

/// No packet is longer.
inline constexpr std::size_t largest_packet = 6 + 0xFFFF;

struct stream_packet {
  enum class state { none, cut, whole };
  state found = state::none;
  std::uint8_t stream = 0;  // last byte of its start code
  std::size_t size = 0;     // in bytes, header included; 0 when not even that is known
  std::size_t payload = 0;  // where the payload begins; its end is that of the packet
};

/// The packet that begins with the first of `size` bytes: `none` when no packet can begin so, `cut`
/// when more bytes are needed.
stream_packet read_packet(const std::uint8_t* data, std::size_t size);

/// Whether a whole packet is the first one of those that a unit (VOBU) of a disc begins with: the
/// presentation control packet, which is known by its length.
bool is_navigation(const stream_packet& packet);

/// How many bytes to skip to reach one with which a packet may begin; `size` when none does.
std::size_t bytes_to_packet(const std::uint8_t* data, std::size_t size);

}  // namespace corvane
