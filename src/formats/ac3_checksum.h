// The checksum of a frame of AC-3 or E-AC-3.
#pragma once

#include <cstdint>
#include <span>

namespace corvane {

/// Whether the frame's bytes fit the checksums that it carries. `frame` is all of it, of at most
/// `largest_audio_frame` bytes. One random change in 32,768 stays unseen, since the factor x + 1 of
/// the checksum's polynomial is not looked at; every change of one or two bits is seen.
bool checksum_fits(std::span<const std::uint8_t> frame);

}  // namespace corvane
