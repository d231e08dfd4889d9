// What is known of A/V delays.
#pragma once

namespace corvane {

/// From this delay of the video on, in milliseconds, mplex ends with buffer under-runs (2.1.0,
/// measured).
inline constexpr double too_long_a_delay = 1000;

}  // namespace corvane
