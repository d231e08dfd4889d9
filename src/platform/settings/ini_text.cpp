#include "platform/settings/ini_text.h"

#include "platform/text/utf8.h"

#include <algorithm>
#include <cstddef>

namespace corvane {
namespace {

constexpr std::string_view hex_digits = "0123456789abcdef";
constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

char lower_letter(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool same_word(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return lower_letter(x) == lower_letter(y); });
}

std::string_view trimmed_blanks(std::string_view text) {
  constexpr std::string_view blanks = " \t\r";
  const auto first = text.find_first_not_of(blanks);
  if (first == std::string_view::npos)
    return {};
  return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// One line without its end: what it is, and its place in the text.
struct ini_line {
  enum class kind { other, section, pair } what = kind::other;
  std::string_view name;   ///< of the section or key
  std::string_view value;  ///< as written
  std::size_t begin = 0;   ///< of the line
  std::size_t end = 0;     ///< of the line, before its line feed (and carriage return)
  std::size_t next = 0;    ///< beginning of the next line
};

ini_line line_at(std::string_view text, std::size_t begin) {
  ini_line line;
  line.begin = begin;
  const auto feed = text.find('\n', begin);
  line.end = feed == std::string_view::npos ? text.size() : feed;
  line.next = feed == std::string_view::npos ? text.size() : feed + 1;
  if (line.end > begin && text[line.end - 1] == '\r')
    --line.end;
  std::string_view body = text.substr(begin, line.end - begin);
  if (begin == 0 && body.starts_with(byte_order_mark))
    body.remove_prefix(byte_order_mark.size());
  body = trimmed_blanks(body);
  if (body.empty() || body[0] == '#' || body[0] == ';')
    return line;
  if (body[0] == '[' && body.back() == ']') {
    line.what = ini_line::kind::section;
    line.name = trimmed_blanks(body.substr(1, body.size() - 2));
  } else if (const auto equals = body.find('='); equals != std::string_view::npos) {
    line.what = ini_line::kind::pair;
    line.name = trimmed_blanks(body.substr(0, equals));
    line.value = trimmed_blanks(body.substr(equals + 1));
  }
  return line;
}

/// Where a key stands and where one would be added.
struct ini_place {
  std::optional<ini_line> key;
  std::optional<std::size_t> end_of_section;  ///< after the last line of it that says something
};

ini_place find_key(std::string_view text, std::string_view section, std::string_view key) {
  ini_place place;
  bool inside = false;
  for (std::size_t at = 0; at < text.size();) {
    const ini_line line = line_at(text, at);
    at = line.next;
    if (line.what == ini_line::kind::section)
      inside = same_word(line.name, section);
    if (!inside)
      continue;
    if (line.what != ini_line::kind::other)
      place.end_of_section = line.next;
    if (line.what == ini_line::kind::pair && same_word(line.name, key))
      place.key = line;
  }
  return place;
}

void append_hex(std::string& out, char c) {
  const auto byte = static_cast<unsigned char>(c);
  out += "\\x";
  out += hex_digits[byte >> 4];
  out += hex_digits[byte & 15];
}

/// The byte that "xHH" at the text's beginning stands for.
std::optional<char> hex_escape(std::string_view text) {
  if (text.size() < 3 || text[0] != 'x')
    return std::nullopt;
  const auto high = hex_digits.find(lower_letter(text[1]));
  const auto low = hex_digits.find(lower_letter(text[2]));
  if (high == std::string_view::npos || low == std::string_view::npos)
    return std::nullopt;
  return static_cast<char>(high * 16 + low);
}

}  // namespace

std::string escape_ini(std::string_view value) {
  std::string out;
  for (std::size_t i = 0; i < value.size(); ++i) {
    const char c = value[i];
    const bool edge_blank = c == ' ' && (i == 0 || i + 1 == value.size());
    if (c == '\\')
      out += "\\\\";
    else if (c == '\n')
      out += "\\n";
    else if (c == '\r')
      out += "\\r";
    else if (c == '\t')
      out += "\\t";
    else if (edge_blank || is_control_character(c))
      append_hex(out, c);
    else
      out += c;
  }
  return out;
}

std::string unescape_ini(std::string_view written) {
  std::string out;
  while (!written.empty()) {
    const char c = written[0];
    written.remove_prefix(1);
    constexpr std::string_view letters = "nrt\\";
    constexpr std::string_view meanings = "\n\r\t\\";
    const auto which =
        c != '\\' || written.empty() ? std::string_view::npos : letters.find(written[0]);
    if (which != std::string_view::npos) {
      out += meanings[which];
      written.remove_prefix(1);
    } else if (const auto byte = c == '\\' ? hex_escape(written) : std::nullopt) {
      out += *byte;
      written.remove_prefix(3);
    } else {
      out += c;
    }
  }
  return out;
}

std::optional<std::string> ini_value(std::string_view text, std::string_view section,
                                     std::string_view key) {
  const ini_place place = find_key(text, section, key);
  if (!place.key)
    return std::nullopt;
  return unescape_ini(place.key->value);
}

std::string with_ini_value(std::string_view text, std::string_view section, std::string_view key,
                           std::string_view value) {
  const ini_place place = find_key(text, section, key);
  const std::string pair = std::string(key) + " = " + escape_ini(value);
  std::string out;
  if (place.key) {
    out = text.substr(0, place.key->begin);
    if (place.key->begin == 0 && text.starts_with(byte_order_mark))
      out += byte_order_mark;
    return out.append(pair).append(text.substr(place.key->end));
  }
  const std::size_t at = place.end_of_section.value_or(text.size());
  out = text.substr(0, at);
  if (!out.empty() && out.back() != '\n')
    out += '\n';
  if (!place.end_of_section)
    out.append(out.empty() ? "" : "\n").append("[").append(section).append("]\n");
  return out.append(pair).append("\n").append(text.substr(at));
}

}  // namespace corvane
