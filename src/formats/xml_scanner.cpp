#include "formats/xml_scanner.h"

#include "formats/sanitized.h"
#include "formats/xml_characters.h"
#include "platform/text/utf8.h"

#include <algorithm>
#include <utility>

namespace corvane {
namespace {

constexpr std::pair<std::string_view, char> own_entities[] = {
    {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}};

}  // namespace

std::string in_quotes(std::string_view text) {
  return "\"" + sanitized_short(text, 40) + "\"";
}

void add_with_line_breaks(std::string& text, std::string_view raw, char line_break) {
  for (std::size_t i = 0; i < raw.size(); ++i) {
    if (raw[i] == '\r' && raw.substr(i + 1, 1) == "\n")
      ++i;
    text += raw[i] == '\r' || raw[i] == '\n' ? line_break : raw[i];
  }
}

xml_fault xml_scanner::fault_at(std::size_t at, std::string what) const {
  xml_fault fault;
  fault.what = std::move(what);
  std::size_t i = 0;
  if (text_.starts_with(byte_order_mark) && at >= byte_order_mark.size())
    i = byte_order_mark.size();  // it is no character of the first line
  for (; i < at; ++i) {
    const bool line_end = text_[i] == '\n' || (text_[i] == '\r' && text_.substr(i + 1, 1) != "\n");
    if (line_end) {
      ++fault.line;
      fault.column = 1;
    } else if (text_[i] != '\r' && !continues_character(text_[i])) {
      ++fault.column;
    }
  }
  return fault;
}

bool xml_scanner::fail(std::size_t at, std::string what) {
  fault_at_ = at;
  what_ = std::move(what);
  return false;
}

std::string xml_scanner::line_of(std::size_t at) const {
  return std::to_string(fault_at(at, {}).line);
}

bool xml_scanner::take(std::string_view what) {
  if (!rest().starts_with(what))
    return false;
  at_ += what.size();
  return true;
}

std::optional<std::string_view> xml_scanner::take_until(std::string_view end, std::size_t begin,
                                                        const char* otherwise) {
  const auto found = text_.find(end, at_);
  if (found == std::string_view::npos) {
    fail(begin, otherwise);
    return std::nullopt;
  }
  const std::string_view before = text_.substr(at_, found - at_);
  at_ = found + end.size();
  return before;
}

std::string_view xml_scanner::take_up_to(std::string_view characters) {
  const std::size_t begin = at_;
  at_ = std::min(text_.find_first_of(characters, at_), text_.size());
  return text_.substr(begin, at_ - begin);
}

std::string_view xml_scanner::take_all_of(std::string_view characters) {
  const std::size_t begin = at_;
  at_ = std::min(text_.find_first_not_of(characters, at_), text_.size());
  return text_.substr(begin, at_ - begin);
}

std::string_view xml_scanner::take_name() {
  const std::size_t begin = at_;
  for (utf8_character c = first_character(rest());
       at_ == begin ? begins_name(c.code) : continues_name(c.code); c = first_character(rest()))
    at_ += c.length;
  return text_.substr(begin, at_ - begin);
}

bool xml_scanner::skip_white() {
  return !take_all_of(xml_white).empty();
}

bool xml_scanner::read_reference(std::string& text) {
  const std::size_t begin = at_++;
  if (take("#"))
    return read_number(begin, text);
  const std::string_view known = take_name();
  if (known.empty() || !take(";"))
    return fail(begin, "a \"&\" begins no reference; a plain one is written \"&amp;\"");
  for (const auto& [name, character] : own_entities)
    if (known == name) {
      text += character;
      return true;
    }
  return fail(begin, "the entity " + in_quotes(known) + " is not defined");
}

bool xml_scanner::read_number(std::size_t begin, std::string& text) {
  const bool hexadecimal = take("x");
  const std::string_view digits =
      take_all_of(hexadecimal ? "0123456789abcdefABCDEF" : "0123456789");
  const auto code = character_numbered(digits, hexadecimal ? 16 : 10);
  if (!code || !take(";"))
    return fail(begin, "the character reference is not that of a character");
  text += utf8_text(*code);
  return true;
}

}  // namespace corvane
