// Bytes of which none stands where another one should without being seen.
#pragma once

#include <cstddef>
#include <string>

namespace corvane {

inline std::string pattern(std::size_t size) {
  std::string bytes(size, '\0');
  for (std::size_t i = 0; i < size; ++i)
    bytes[i] = static_cast<char>(i * 7 + i / 251);
  return bytes;
}

}  // namespace corvane
