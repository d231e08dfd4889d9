#include "formats/xml_tags.h"

#include "formats/text.h"
#include "platform/text/utf8.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <utility>

namespace corvane {
namespace {

constexpr std::string_view white = " \t\r\n";

std::optional<std::string> utf8_of(std::uint32_t code) {
  const auto byte = [](std::uint32_t b) { return static_cast<char>(b); };
  if (code == 0 || code > 0x10ffff || (code >= 0xd800 && code <= 0xdfff))
    return std::nullopt;
  if (code < 0x80)
    return std::string{byte(code)};
  if (code < 0x800)
    return std::string{byte(0xc0 | code >> 6), byte(0x80 | (code & 0x3f))};
  if (code < 0x10000)
    return std::string{byte(0xe0 | code >> 12), byte(0x80 | (code >> 6 & 0x3f)),
                       byte(0x80 | (code & 0x3f))};
  return std::string{byte(0xf0 | code >> 18), byte(0x80 | (code >> 12 & 0x3f)),
                     byte(0x80 | (code >> 6 & 0x3f)), byte(0x80 | (code & 0x3f))};
}

// `name` is what stands between "&" and ";".
std::optional<std::string> entity(std::string_view name) {
  static constexpr std::pair<std::string_view, const char*> own[] = {
      {"amp", "&"}, {"lt", "<"}, {"gt", ">"}, {"quot", "\""}, {"apos", "'"}};
  for (const auto& [known, value] : own)
    if (name == known)
      return value;
  if (!name.starts_with('#'))
    return std::nullopt;
  name.remove_prefix(1);
  const int base = name.starts_with('x') ? 16 : 10;
  if (base == 16)
    name.remove_prefix(1);
  std::uint32_t code = 0;
  const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), code, base);
  if (error != std::errc() || end != name.data() + name.size())
    return std::nullopt;
  return utf8_of(code);
}

std::optional<std::string> decoded(std::string_view value) {
  std::string text;
  while (!value.empty()) {
    const auto ampersand = value.find('&');
    text += value.substr(0, ampersand);
    if (ampersand == std::string_view::npos)
      break;
    value.remove_prefix(ampersand + 1);
    const auto end = value.find(';');
    if (end == std::string_view::npos)
      return std::nullopt;
    const std::optional<std::string> character = entity(value.substr(0, end));
    if (!character)
      return std::nullopt;
    text += *character;
    value.remove_prefix(end + 1);
  }
  return text;
}

class tag_reader {
 public:
  explicit tag_reader(std::string_view text) : text_(text) {}

  result<std::vector<xml_tag>> read() {
    const bool fine = read_all();
    if (fine)
      return result<std::vector<xml_tag>>::ok(std::move(tags_));
    const auto lines =
        std::count(text_.begin(), text_.begin() + static_cast<std::ptrdiff_t>(at_), '\n');
    return result<std::vector<xml_tag>>::fail(why_ + " in line " + std::to_string(lines + 1));
  }

 private:
  bool fail(std::string why) {
    why_ = std::move(why);
    return false;
  }

  bool read_all() {
    if (!is_utf8(text_))
      return fail("it contains bytes that are not UTF-8 text");
    for (const char c : text_)
      if (static_cast<unsigned char>(c) < 0x20 && white.find(c) == std::string_view::npos)
        return fail("it contains a control character");
    while ((at_ = text_.find('<', at_)) != std::string_view::npos) {
      if (!read_markup())
        return false;
    }
    at_ = text_.size();
    return true;
  }

  bool read_markup() {
    const std::string_view rest = text_.substr(at_);
    if (rest.starts_with("<!--"))
      return pass(4, "-->");
    if (rest.starts_with("<![CDATA["))
      return pass(9, "]]>");
    if (rest.starts_with("<!"))
      return fail("it has a declaration");
    if (rest.starts_with("<?"))
      return read_instruction();
    if (rest.starts_with("</"))
      return pass(2, ">");
    return read_tag();
  }

  // Moves behind `end`, which stands at least `opening` characters on.
  bool pass(std::size_t opening, std::string_view end) {
    const auto close = text_.find(end, at_ + opening);
    if (close == std::string_view::npos)
      return fail("something is not closed");
    at_ = close + end.size();
    return true;
  }

  // Other encodings can hide any character from a reader of ASCII (UTF-7, UTF-16).
  bool read_instruction() {
    const auto close = text_.find("?>", at_);
    const std::string text = lower(text_.substr(at_, close - at_));
    const auto encoding = text.find("encoding");
    if (text.starts_with("<?xml") && encoding != std::string::npos) {
      const auto value = text.find_first_of("\"'", encoding);
      const std::string_view named = value == std::string::npos
                                         ? std::string_view()
                                         : std::string_view(text).substr(value + 1);
      const bool once = text.find("encoding", encoding + 1) == std::string::npos;
      if (!once || (!named.starts_with("utf-8\"") && !named.starts_with("utf-8'")))
        return fail("its encoding is not UTF-8");
    }
    return pass(2, "?>");
  }

  bool read_tag() {
    xml_tag tag;
    tag.at = at_;
    ++at_;
    tag.name = name();
    if (tag.name.empty())
      return fail("a tag has no name");
    for (;;) {
      const std::size_t before = at_;
      skip_white();
      if (next() == '/')
        ++at_;
      if (next() == '>')
        break;
      if (at_ == before || text_[at_ - 1] == '/' || !read_attribute(tag))
        return why_.empty() ? fail("a tag is not well formed") : false;
    }
    ++at_;
    tags_.push_back(std::move(tag));
    return true;
  }

  bool read_attribute(xml_tag& tag) {
    xml_attribute attribute;
    attribute.name = name();
    skip_white();
    if (attribute.name.empty() || next() != '=')
      return fail("a tag is not well formed");
    ++at_;
    skip_white();
    const char quote = next();
    const auto end =
        quote == '"' || quote == '\'' ? text_.find(quote, at_ + 1) : std::string_view::npos;
    if (end == std::string_view::npos)
      return fail("an attribute is not in quotes");
    const std::string_view raw = text_.substr(at_ + 1, end - at_ - 1);
    const std::optional<std::string> value = decoded(raw);
    if (!value || raw.find('<') != std::string_view::npos)
      return fail("an attribute has a character or entity that is not allowed");
    attribute.value = *value;
    tag.attributes.push_back(std::move(attribute));
    at_ = end + 1;
    return true;
  }

  std::string name() {
    const std::size_t begin = at_;
    at_ = std::min(text_.find_first_of(" \t\r\n=/<>\"'&", at_), text_.size());
    return std::string(text_.substr(begin, at_ - begin));
  }
  void skip_white() { at_ = std::min(text_.find_first_not_of(white, at_), text_.size()); }
  char next() const { return at_ < text_.size() ? text_[at_] : '\0'; }

  std::string_view text_;
  std::size_t at_ = 0;
  std::vector<xml_tag> tags_;
  std::string why_;
};

}  // namespace

result<std::vector<xml_tag>> xml_start_tags(std::string_view text) {
  return tag_reader(text).read();
}

}  // namespace corvane
