// What is heard in samples: tones, and silence.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <span>
#include <vector>

namespace corvane::testing_support {

/// One channel (0-based) of samples that come in turns.
inline std::vector<std::int16_t> channel_of(std::span<const std::int16_t> samples,
                                            std::size_t channel, std::size_t channels = 2) {
  std::vector<std::int16_t> one;
  one.reserve(samples.size() / channels);
  for (std::size_t i = channel; i < samples.size(); i += channels)
    one.push_back(samples[i]);
  return one;
}

/// The largest sample, without its sign.
inline int loudest(std::span<const std::int16_t> samples) {
  int most = 0;
  for (const std::int16_t sample : samples)
    most = std::max(most, std::abs(int{sample}));
  return most;
}

/// Hertz of a pure tone, by where it crosses zero upwards, which must be two times at least; 0
/// where it does not. What is quieter than `threshold` is no crossing.
inline double frequency_of(std::span<const std::int16_t> samples, int rate = 48'000,
                           int threshold = 500) {
  std::optional<double> first;
  double last = 0;
  int periods = 0;
  bool was_low = false;
  double crossing = 0;
  for (std::size_t i = 1; i < samples.size(); ++i) {
    const double before = samples[i - 1], now = samples[i];
    if (now < -threshold)
      was_low = true;
    if (before < 0 && now >= 0)
      crossing = static_cast<double>(i) - now / (now - before);
    if (!was_low || now < threshold)
      continue;
    was_low = false;
    periods += first ? 1 : 0;
    first = first.value_or(crossing);
    last = crossing;
  }
  return periods > 0 ? periods * rate / (last - *first) : 0;
}

/// The first sample that is as loud as that; their number where none is.
inline std::size_t first_loud(std::span<const std::int16_t> samples, int threshold = 500) {
  for (std::size_t i = 0; i < samples.size(); ++i)
    if (std::abs(int{samples[i]}) >= threshold)
      return i;
  return samples.size();
}

}  // namespace corvane::testing_support
