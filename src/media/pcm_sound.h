// Sound as the system plays it: two channels of 16 bits, 48 kHz.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace corvane {

inline constexpr int sound_rate = 48'000;  ///< frames a second
inline constexpr int sound_channels = 2;   ///< samples a frame

struct pcm_sound {
  std::vector<std::int16_t> samples;  ///< left and right in turns
  bool cut = false;                   ///< there was more

  std::size_t frames() const { return samples.size() / sound_channels; }
  double seconds() const { return static_cast<double>(frames()) / sound_rate; }
};

}  // namespace corvane
