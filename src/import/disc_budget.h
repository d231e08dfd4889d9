// "Fill the disc": how many bits a second of video its room allows, and what an import takes.
//
// What multiplexing adds is counted as the most that it is: packs of 2048 bytes with their headers,
// and a navigation pack for each unit, of which there are two a second and more where scenes
// change.
#pragma once

#include <cstdint>
#include <optional>
#include <span>

namespace corvane {

/// A title that is to be on the disc.
struct budget_title {
  double seconds = 0;
  std::int64_t sound_rate = 0;  ///< of all its sound streams, bits a second
  /// Of video that is copied, in bytes; not set: it is encoded, and shares the room.
  std::optional<std::int64_t> video_bytes{};
};

/// The bits a second that encoded video of these titles may have on average, together with what is
/// on the disc already (`used`: bytes of a disc, as space_wanted_by counts them). At most
/// `most_mean_rate`. Nullopt when there is no room even for `least_rate`.
std::optional<std::int64_t> video_rate_to_fill(std::uint64_t capacity, std::uint64_t used,
                                               std::span<const budget_title> titles);

/// Bytes that they take on the disc with video of that rate.
std::uint64_t bytes_on_disc(std::span<const budget_title> titles, std::int64_t video_rate);

/// The highest rate that video may have for a moment, beside so much sound: players read 10.08 Mb/s
/// in all, packs included.
std::int64_t peak_rate_beside(std::int64_t sound_rate);

/// More than this mean is not used: it leaves room for moments that need more.
inline constexpr std::int64_t most_mean_rate = 8'500'000;
/// With less, pictures fall to pieces.
inline constexpr std::int64_t least_rate = 700'000;
/// Of the capacity, so much is left free: encoders miss their mean by a little.
inline constexpr double budget_reserve = 0.01;

}  // namespace corvane
