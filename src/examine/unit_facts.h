// What the parts of unit_checks share. Used within the room only.
#pragma once

#include "examine/unit_checks.h"

#include <string>

namespace corvane {

enum class unit_checks::fact : int {
  headers,
  clock,
  identity,
  elapsed_twice,
  pictures,
  sequence_end,
  highlight,
  highlight_times,
  highlight_content,
  interleaving,
  angle,
  subpicture,
  step,
  step_order,
  step_video,
  neighbour,
  video_neighbour,
  times,
  elapsed,
  vob_times,
  constants,  // and one more for each constant
};

/// No such unit: the low 30 bits of a pointer, whatever its flags.
inline constexpr std::uint32_t no_unit = 0x3FFFFFFF;

inline constexpr double clocks_of_units = 90'000;

/// Seconds from one time to the other, of clocks that turn over.
inline double seconds_between_units(std::uint32_t from, std::uint32_t to) {
  return static_cast<double>(static_cast<std::int32_t>(to - from)) / clocks_of_units;
}

inline std::string sector_text(std::uint64_t sector) {
  return "sector " + std::to_string(sector);
}

}  // namespace corvane
