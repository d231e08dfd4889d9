// The items of a page's lists as a reader sees them.
#pragma once

#include "formats/text.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::testing_support {

inline std::string utf8_character(std::uint32_t code) {
  const auto byte = [](std::uint32_t b) { return static_cast<char>(b); };
  if (code < 0x80)
    return {byte(code)};
  if (code < 0x800)
    return {byte(0xC0 | code >> 6), byte(0x80 | (code & 0x3F))};
  if (code < 0x10000)
    return {byte(0xE0 | code >> 12), byte(0x80 | (code >> 6 & 0x3F)), byte(0x80 | (code & 0x3F))};
  return {byte(0xF0 | code >> 18), byte(0x80 | (code >> 12 & 0x3F)),
          byte(0x80 | (code >> 6 & 0x3F)), byte(0x80 | (code & 0x3F))};
}

/// Text of a page with its entities replaced.
inline std::string decoded_html(std::string_view html) {
  std::string text;
  while (!html.empty()) {
    const auto end = html.front() == '&' ? html.find(';') : std::string_view::npos;
    if (end == std::string_view::npos) {
      text += html.front();
      html.remove_prefix(1);
      continue;
    }
    const std::string name(html.substr(1, end - 1));
    if (name.starts_with('#'))
      text += utf8_character(static_cast<std::uint32_t>(std::stoul(name.substr(1))));
    else
      text += name == "lt" ? "<" : name == "gt" ? ">" : name == "amp" ? "&" : "\"";
    html.remove_prefix(end + 1);
  }
  return text;
}

/// What follows each "<li", up to the next tag, line breaks removed.
inline std::vector<std::string> list_items(std::string_view html) {
  std::vector<std::string> items;
  for (auto at = html.find("<li"); at != std::string_view::npos; at = html.find("<li", at + 1)) {
    const auto begin = html.find('>', at) + 1;
    const auto text = html.substr(begin, html.find('<', begin) - begin);
    items.push_back(replace_all(decoded_html(text), "\r\n", ""));
  }
  return items;
}

}  // namespace corvane::testing_support
