#include "formats/xml_text.h"

#include "formats/xml_characters.h"

#include <cstddef>

namespace corvane {
namespace {

void add_escaped(std::string& all, std::string_view text) {
  for (const char c : text)
    switch (c) {
      case '&':
        all += "&amp;";
        break;
      case '<':
        all += "&lt;";
        break;
      case '"':
        all += "&quot;";
        break;
      case '\t':
      case '\n':
      case '\r':
        all += "&#" + std::to_string(static_cast<int>(c)) + ";";
        break;
      default:
        all += c;
    }
}

}  // namespace

std::string xml_attribute_text(std::string_view text) {
  std::string all;
  for (;;) {
    const std::size_t bad = first_character_not_allowed(text);
    add_escaped(all, text.substr(0, bad));
    if (bad == std::string_view::npos)
      return all;
    all += '?';
    text.remove_prefix(bad + 1);
  }
}

}  // namespace corvane
