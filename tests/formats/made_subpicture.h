// Subpicture units made for tests.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace corvane::testing_support {

/// Run lengths of a line of codes, "00110", as nibbles.
inline std::vector<unsigned> nibbles_of_line(const std::string& line) {
  std::vector<unsigned> nibbles;
  for (std::size_t at = 0; at < line.size();) {
    const std::size_t other = std::min(line.find_first_not_of(line[at], at), line.size());
    const std::size_t dots = std::min<std::size_t>(other - at, 255);
    const unsigned run = static_cast<unsigned>(dots << 2) | static_cast<unsigned>(line[at] - '0');
    const int count = run < 0x10 ? 1 : run < 0x40 ? 2 : run < 0x100 ? 3 : 4;
    for (int nibble = count - 1; nibble >= 0; --nibble)
      nibbles.push_back(run >> 4 * nibble & 15);
    at += dots;
  }
  if (nibbles.size() % 2 != 0)
    nibbles.push_back(0);
  return nibbles;
}

/// A picture of these lines of codes, all of one length, with its left upper dot at (x0, y0).
/// `at_rest`: as highlight information has looks, 32 bits.
inline std::vector<std::uint8_t> made_overlay(int x0, int y0, const std::vector<std::string>& lines,
                                              std::uint32_t at_rest = 0) {
  std::vector<std::uint8_t> unit(4);
  const auto put = [&unit](std::size_t value, int bytes) {
    for (int byte = bytes - 1; byte >= 0; --byte)
      unit.push_back(static_cast<std::uint8_t>(value >> 8 * byte & 0xFF));
  };
  const auto set = [&unit](std::size_t at, std::size_t value) {
    unit[at] = static_cast<std::uint8_t>(value >> 8);
    unit[at + 1] = static_cast<std::uint8_t>(value & 0xFF);
  };
  std::size_t fields[2] = {};
  for (std::size_t field = 0; field < 2; ++field) {
    fields[field] = unit.size();
    for (std::size_t y = field; y < lines.size(); y += 2) {
      const std::vector<unsigned> nibbles = nibbles_of_line(lines[y]);
      for (std::size_t i = 0; i < nibbles.size(); i += 2)
        put(nibbles[i] << 4 | nibbles[i + 1], 1);
    }
  }
  const std::size_t list = unit.size();
  const auto left = static_cast<std::size_t>(x0), top = static_cast<std::size_t>(y0);
  put(0, 2);
  put(list, 2);
  put(0, 1);  // shown, whether subpictures are or not
  put(3, 1);
  put(at_rest >> 16, 2);
  put(4, 1);
  put(at_rest & 0xFFFF, 2);
  put(5, 1);
  put(left << 12 | (left + lines.front().size() - 1), 3);
  put(top << 12 | (top + lines.size() - 1), 3);
  put(6, 1);
  put(fields[0], 2);
  put(fields[1], 2);
  put(0xFF, 1);
  set(0, unit.size());
  set(2, list);
  return unit;
}

}  // namespace corvane::testing_support
