// A menu's program stream, as far as anybody looks at it: packs of one packet each.
#pragma once

#include <cstdint>
#include <string>

namespace corvane::testing_support {

inline constexpr int no_time = -1;

/// A pack of 2048 bytes with one packet of the stream (0xE0 video, 0xBD private), presented at
/// `seconds`; its first byte of content is `first_byte` (0x20: subpicture).
inline std::string pack_of(unsigned stream, double seconds, unsigned first_byte = 0,
                           unsigned stuffing = 0) {
  const auto byte = [](std::uint64_t value) { return static_cast<char>(value & 0xFF); };
  std::string p("\0\0\1\xBA", 4);
  p.append(9, 'h');
  p += byte(0xF8 | stuffing);
  p.append(stuffing, '\xFF');
  const std::size_t length = 2048 - p.size() - 6;
  p += std::string("\0\0\1", 3) + byte(stream) + byte(length >> 8) + byte(length);
  p += byte(0x80);
  if (seconds >= 0) {
    const auto t = static_cast<std::uint64_t>(seconds * 90000);
    p += byte(0x80);
    p += byte(5);
    p += byte(0x21 | (t >> 29 & 0x0E));
    p += byte(t >> 22);
    p += byte(t >> 14 | 1);
    p += byte(t >> 7);
    p += byte(t << 1 | 1);
  } else {
    p += byte(0);
    p += byte(0);
  }
  p += byte(first_byte);
  p.resize(2048, '.');
  return p;
}

inline std::string picture_at(double seconds) {
  return pack_of(0xE0, seconds);
}
inline std::string sound_at(double seconds) {
  return pack_of(0xBD, seconds, 0x80);
}
inline std::string buttons_at(double seconds, unsigned stuffing = 0) {
  return pack_of(0xBD, seconds, 0x20, stuffing);
}

}  // namespace corvane::testing_support
