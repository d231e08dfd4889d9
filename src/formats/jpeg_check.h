// Which JPEG files jpeg2yuv turns into video. What it cannot take it does not refuse: it crashes,
// or ends well and gives a green or a half grey picture.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace corvane {

/// Why jpeg2yuv cannot take a JPEG file (all of its bytes, or enough to hold its frame header), as
/// a clause for a message ("has CMYK colours"); nullopt if it can. It takes baseline and
/// progressive pictures of 8 bits: grey ones, and YCbCr ones whose colour is sampled 1x1 and whose
/// brightness 1 or 2 times each way.
std::optional<std::string> why_not_for_jpeg2yuv(std::string_view jpeg);

/// Whether the end is missing of a JPEG file (all of its bytes). Decoders fill up what is missing
/// with grey and call it well done.
bool is_cut_off_jpeg(std::string_view jpeg);

}  // namespace corvane
