// The headers of packs, as a scanner of files looks at them: what they tell of the stream, and
// where one may begin.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace corvane {

/// The longest fixed part of a pack header; that of MPEG-1 has 12 bytes.
inline constexpr std::size_t longest_pack_header = 14;

/// Of a pack header that is there as far as its fifth byte.
bool is_mpeg2_pack(std::span<const std::uint8_t> header);

/// Whether a pack header begins here, or ends the bytes as far as it is there (4 bytes of it).
/// Looks at more of its bits than a reader of packets does, for use where one is searched for.
bool is_pack_header(std::span<const std::uint8_t> bytes);

/// What the header declares, in bits a second.
std::uint64_t mux_rate(std::span<const std::uint8_t> header);

/// How many bytes of what begins here tell the length of the packet, or of the pack header.
std::size_t bytes_to_length(std::span<const std::uint8_t> beginning);

/// Up to the next bytes that a pack header may begin with; all of them if there are none.
std::size_t bytes_to_pack(std::span<const std::uint8_t> bytes);

/// Of a pack of a disc, which fills a sector: the stream of its first packet; of private stream 1
/// the substream, which no stream has for its number. 0: none, or no such pack. Quick enough to be
/// asked of every sector of a disc.
std::uint8_t stream_of_sector(std::span<const std::uint8_t> sector);

}  // namespace corvane
