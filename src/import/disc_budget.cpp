#include "import/disc_budget.h"

#include <algorithm>
#include <cmath>

namespace corvane {
namespace {

constexpr double pack_bytes = 2048;
// A pack header of 14 bytes, a packet header of up to 23 with two time stamps.
constexpr double payload_of_pack = 2048 - 14 - 23;
constexpr double overhead = pack_bytes / payload_of_pack;
constexpr double units_a_second = 2.5;
constexpr double tables_bytes = 2'000'000;  // and the image's own

double fixed_bytes(const budget_title& title) {
  const double sound = static_cast<double>(title.sound_rate) / 8 * title.seconds;
  const double video = static_cast<double>(title.video_bytes.value_or(0));
  return (sound + video) * overhead + title.seconds * units_a_second * pack_bytes;
}

double seconds_to_encode(std::span<const budget_title> titles) {
  double seconds = 0;
  for (const budget_title& title : titles)
    if (!title.video_bytes)
      seconds += title.seconds;
  return seconds;
}

double fixed_bytes(std::span<const budget_title> titles) {
  double bytes = 0;
  for (const budget_title& title : titles)
    bytes += fixed_bytes(title);
  return bytes;
}

std::int64_t loudest(std::span<const budget_title> titles) {
  std::int64_t rate = 0;
  for (const budget_title& title : titles)
    if (!title.video_bytes)
      rate = std::max(rate, title.sound_rate);
  return rate;
}

}  // namespace

std::int64_t peak_rate_beside(std::int64_t sound_rate) {
  return std::clamp<std::int64_t>(9'800'000 - sound_rate, least_rate, 9'000'000);
}

std::optional<std::int64_t> video_rate_to_fill(std::uint64_t capacity, std::uint64_t used,
                                               std::span<const budget_title> titles) {
  const double room = static_cast<double>(capacity) * (1 - budget_reserve) - tables_bytes -
                      static_cast<double>(used) - fixed_bytes(titles);
  const double seconds = seconds_to_encode(titles);
  const std::int64_t most = std::min(most_mean_rate, peak_rate_beside(loudest(titles)));
  if (seconds <= 0)
    return room >= 0 ? std::optional(most) : std::nullopt;
  const double rate = room * 8 / overhead / seconds;
  if (rate < static_cast<double>(least_rate))
    return std::nullopt;
  return static_cast<std::int64_t>(std::min(std::floor(rate), static_cast<double>(most)));
}

std::uint64_t bytes_on_disc(std::span<const budget_title> titles, std::int64_t video_rate) {
  const double video = static_cast<double>(video_rate) / 8 * seconds_to_encode(titles) * overhead;
  return static_cast<std::uint64_t>(std::ceil(fixed_bytes(titles) + video + tables_bytes));
}

}  // namespace corvane
