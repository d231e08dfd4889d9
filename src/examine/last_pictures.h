// When the pictures of a VOB end, by its last packs.
//
// A multiplexer stamps each picture, or the first of a group alone: from the last stamps on,
// pictures are counted, each for as long as its header says.
#pragma once

#include "formats/program_stream.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

namespace corvane {

/// So many sectors last for three seconds at the highest rate of a disc: longer than any group of
/// pictures should.
inline constexpr std::size_t sectors_of_last_pictures = 2048;

/// The time stamp up to which the last picture is shown. `packs`: sectors of a VOB, in their order;
/// only the first video stream (E0) is looked at. Nullopt if none of its packets has a stamp there,
/// or no sequence header tells how long a picture lasts.
std::optional<stream_time> end_of_pictures(std::span<const std::uint8_t> packs);

}  // namespace corvane
