// Bytes written as numbers.
#pragma once

#include <initializer_list>
#include <string>

namespace corvane::testing_support {

/// A text of these bytes, each from 0 to 255.
inline std::string bytes(std::initializer_list<int> values) {
  std::string text;
  for (const int value : values)
    text += static_cast<char>(value);
  return text;
}

}  // namespace corvane::testing_support
