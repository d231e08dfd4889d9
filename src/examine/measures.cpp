#include "examine/measures.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace corvane {

std::string decimal_text(double value, int places) {
  std::array<char, 64> buffer{};
  std::snprintf(buffer.data(), buffer.size(), "%.*f", places, std::clamp(value, -1e15, 1e15));
  std::string text = buffer.data();
  std::replace(text.begin(), text.end(), ',', '.');
  if (text.find('.') == std::string::npos)
    return text;
  text.erase(text.find_last_not_of('0') + 1);
  if (text.back() == '.')
    text.pop_back();
  return text;
}

std::string size_text(const video_shape& shape) {
  return std::to_string(shape.width) + "x" + std::to_string(shape.height);
}

std::string aspect_text(const video_shape& shape) {
  if (shape.aspect_width == 0)
    return "square pixels";
  if (shape.aspect_height == 100)
    return decimal_text(shape.aspect_width / 100.0, 2) + ":1";
  return std::to_string(shape.aspect_width) + ":" + std::to_string(shape.aspect_height);
}

std::string rate_text(double bits_a_second) {
  if (bits_a_second < 1e6)
    return decimal_text(bits_a_second / 1e3, 1) + " kb/s";
  return decimal_text(bits_a_second / 1e6, 2) + " Mb/s";
}

std::string seconds_text(double seconds) {
  return decimal_text(seconds, 2) + " s";
}

std::string count_text(std::uint64_t count, const std::string& one, const std::string& several) {
  return std::to_string(count) + " " + (count == 1 ? one : several);
}

}  // namespace corvane
