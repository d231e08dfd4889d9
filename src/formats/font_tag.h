// The names of tables and of kinds of fonts in font files, as the numbers that stand there.
#pragma once

#include <cstdint>

namespace corvane {

constexpr std::uint32_t font_tag(const char (&name)[5]) {
  std::uint32_t number = 0;
  for (int i = 0; i < 4; ++i)
    number = number << 8 | static_cast<unsigned char>(name[i]);
  return number;
}

}  // namespace corvane
