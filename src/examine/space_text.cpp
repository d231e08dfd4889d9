#include "examine/space_text.h"

#include "examine/space_rules.h"
#include "formats/numbers.h"

#include <algorithm>

namespace corvane {
namespace {

/// "3.17". Room is rounded down and what is too much up, so that neither promises too much.
std::string gigs(std::uint64_t bytes, bool round_up) {
  constexpr std::uint64_t gig = std::uint64_t{1} << 30;
  bytes = std::min(bytes, std::uint64_t{1} << 56);  // no disk holds more
  const std::uint64_t hundredths = (bytes * 100 + (round_up ? gig - 1 : 0)) / gig;
  const std::string decimals = trimmed(static_cast<std::int64_t>(hundredths % 100));
  return trimmed(static_cast<std::int64_t>(hundredths / 100)) + (decimals.size() < 2 ? ".0" : ".") +
         decimals;
}

std::string free_on(std::uint64_t capacity, std::uint64_t bytes) {
  return gigs(capacity - bytes, false);
}

std::string too_much_for(std::uint64_t capacity, std::uint64_t bytes) {
  return gigs(bytes - capacity, true) + " gig too much for a ";
}

}  // namespace

std::string space_text(std::uint64_t bytes) {
  if (bytes > double_layer_bytes)
    return too_much_for(double_layer_bytes, bytes) + "DVD-9, the largest disc";
  const std::string on_double = free_on(double_layer_bytes, bytes);
  if (bytes > single_layer_bytes)
    return too_much_for(single_layer_bytes, bytes) + "DVD-5, " + on_double + " free on a DVD-9";
  return free_on(single_layer_bytes, bytes) + " gig free on a DVD-5, " + on_double + " on a DVD-9";
}

}  // namespace corvane
