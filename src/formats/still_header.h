// What must be known of a still picture file before it is decoded.
#pragma once

#include "platform/result.h"

#include <cstdint>
#include <vector>

namespace corvane {

/// The largest sides and the most pixels of any picture made here. What claims to have more is
/// damage, and would cost memory.
inline constexpr int largest_side = 16'384;
inline constexpr std::int64_t most_pixels = 40'000'000;

enum class still_kind { unknown, bitmap, jpeg };

still_kind kind_of_still(const std::vector<std::uint8_t>& bytes);

/// Looks through a Windows bitmap file's header, so that no decoder takes a lie for a size, and
/// turns pixels of 2 bits, which FFmpeg does not read, into pixels of 8. Fails on damaged headers,
/// on too large pictures and on pixels that are not all there.
failure prepare_bitmap(std::vector<std::uint8_t>& bytes);

}  // namespace corvane
