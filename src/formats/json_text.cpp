#include "formats/json_text.h"

#include "formats/sanitized.h"
#include "formats/time_text.h"
#include "platform/text/utf8.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace corvane {

std::string json_string(std::string_view value) {
  std::string text = "\"";
  for (const char c : repaired_utf8(value)) {
    if (c == '"' || c == '\\') {
      text += '\\';
      text += c;
    } else if (is_control_character(c)) {
      std::array<char, 8> escape{};
      std::snprintf(escape.data(), escape.size(), "\\u%04x", static_cast<unsigned>(c));
      text += escape.data();
    } else {
      text += c;
    }
  }
  return text + '"';
}

std::string json_number(double value) {
  const auto thousandths = std::llround(std::clamp(value, 0.0, latest_time) * 1000);
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%lld.%03lld", thousandths / 1000, thousandths % 1000);
  return text.data();
}

void json_object::add(std::string_view name, const std::string& value) {
  text_ += text_.size() == 1 ? "" : ", ";
  text_ += json_string(name) + ": " + value;
}

void json_object::add_text(std::string_view name, std::string_view value) {
  if (!value.empty())
    add(name, json_string(value));
}

void json_lines::add(const std::string& value) {
  text_ += (text_.empty() ? "\n  " : ",\n  ") + value;
}

std::string json_lines::text() const {
  return "[" + text_ + (text_.empty() ? "]" : "\n]");
}

}  // namespace corvane
