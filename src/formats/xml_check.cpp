#include "formats/xml_check.h"

#include "formats/sanitized.h"
#include "formats/text.h"
#include "formats/xml_characters.h"
#include "platform/text/utf8.h"

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

namespace corvane {
namespace {

constexpr std::string_view white = " \t\r\n";
constexpr auto none = std::string_view::npos;

std::string in_quotes(std::string_view text) {
  return "\"" + sanitized_short(text, 40) + "\"";
}

/// Line and column of a byte.
xml_fault fault_at(std::string_view text, std::size_t at, std::string what) {
  xml_fault fault;
  fault.what = std::move(what);
  std::size_t i = 0;
  const std::string_view mark = "\xEF\xBB\xBF";
  if (text.starts_with(mark) && at >= mark.size())
    i = mark.size();  // the byte order mark is no character of the first line
  for (; i < at; ++i) {
    const bool line_end = text[i] == '\n' || (text[i] == '\r' && text.substr(i + 1, 1) != "\n");
    if (line_end) {
      ++fault.line;
      fault.column = 1;
    } else if (text[i] != '\r' && (static_cast<unsigned char>(text[i]) & 0xC0) != 0x80) {
      ++fault.column;
    }
  }
  return fault;
}

class xml_reader {
 public:
  explicit xml_reader(std::string_view text) : text_(text) {}

  /// False: `at` and `what` tell the fault.
  bool read() {
    if (text_.starts_with("\xEF\xBB\xBF"))
      at_ = 3;
    if (declaration_begins() && !read_declaration())
      return false;
    while (at_ < text_.size())
      if (!read_piece())
        return false;
    if (!open_.empty())
      return fail(at_, "the element " + in_quotes(open_.back().name) + ", opened in line " +
                           line_of(open_.back().at) + ", is not closed");
    return had_root_ || fail(at_, "there is no element");
  }

  std::size_t at() const { return fault_at_; }
  const std::string& what() const { return what_; }

 private:
  struct open_element {
    std::string_view name;
    std::size_t at;
  };

  bool fail(std::size_t at, std::string what) {
    fault_at_ = at;
    what_ = std::move(what);
    return false;
  }

  std::string line_of(std::size_t at) const { return std::to_string(fault_at(text_, at, {}).line); }
  std::string_view rest() const { return text_.substr(at_); }
  char next() const { return at_ < text_.size() ? text_[at_] : '\0'; }
  bool take(std::string_view what) {
    if (!rest().starts_with(what))
      return false;
    at_ += what.size();
    return true;
  }
  bool skip_white() {
    const std::size_t before = at_;
    at_ = std::min(text_.find_first_not_of(white, at_), text_.size());
    return at_ != before;
  }

  std::string_view name() {
    const std::size_t begin = at_;
    for (xml_character c = character_at(text_, at_);
         at_ < text_.size() && (at_ == begin ? begins_name(c.code) : continues_name(c.code));
         c = character_at(text_, at_))
      at_ += c.length;
    return text_.substr(begin, at_ - begin);
  }

  // "<?xml" and not "<?xml-stylesheet".
  bool declaration_begins() const {
    return rest().starts_with("<?xml") && white.find(text_.substr(at_ + 5, 1)) != none &&
           at_ + 5 < text_.size();
  }

  /// One pseudo-attribute of the declaration: its value, unquoted. Nothing: it is not this one.
  std::optional<std::string_view> declared(std::string_view wanted) {
    const std::size_t before = at_;
    if (skip_white() && take(wanted)) {
      skip_white();
      if (take("=")) {
        skip_white();
        const char quote = next();
        const auto end = quote == '"' || quote == '\'' ? text_.find(quote, at_ + 1) : none;
        if (end != none) {
          const std::string_view value = text_.substr(at_ + 1, end - at_ - 1);
          at_ = end + 1;
          return value;
        }
      }
    }
    at_ = before;
    return std::nullopt;
  }

  bool read_declaration() {
    at_ += 5;
    const std::size_t after_name = at_;
    const auto version = declared("version");
    if (!version || version->size() < 3 || !version->starts_with("1.") ||
        version->find_first_not_of("0123456789", 2) != none)
      return fail(after_name, "the XML declaration does not name version 1.0");
    const std::size_t before = at_;
    if (const auto encoding = declared("encoding"); encoding && lower(*encoding) != "utf-8")
      return fail(before, "the encoding is not UTF-8");
    const auto standalone = declared("standalone");
    if (standalone && *standalone != "yes" && *standalone != "no")
      return fail(before, "\"standalone\" is neither \"yes\" nor \"no\"");
    skip_white();
    return take("?>") || fail(at_, "the XML declaration is not well formed");
  }

  bool read_piece() {
    if (next() == '<')
      return read_markup();
    return open_.empty() ? read_outside() : read_text();
  }

  bool read_outside() {
    skip_white();
    if (at_ == text_.size() || next() == '<')
      return true;
    return fail(at_, had_root_ ? "there is text after the end of the document"
                               : "there is text before the first element");
  }

  bool read_text() {
    if (next() == '&')
      return read_reference();
    const std::size_t end = std::min(text_.find_first_of("<&", at_), text_.size());
    const auto bad = text_.substr(at_, end - at_).find("]]>");
    if (bad != none)
      return fail(at_ + bad, "\"]]>\" stands in the text");
    at_ = end;
    return true;
  }

  bool read_reference() {
    const std::size_t begin = at_++;
    if (take("#")) {
      const bool hexadecimal = take("x");
      const std::size_t digits = at_;
      at_ = std::min(
          text_.find_first_not_of(hexadecimal ? "0123456789abcdefABCDEF" : "0123456789", at_),
          text_.size());
      const bool allowed =
          is_allowed_number(text_.substr(digits, at_ - digits), hexadecimal ? 16 : 10);
      return (allowed && take(";")) ||
             fail(begin, "the character reference is not that of a character");
    }
    const std::string_view known = name();
    if (known.empty() || !take(";"))
      return fail(begin, "a \"&\" begins no reference; a plain one is written \"&amp;\"");
    for (const std::string_view own : {"amp", "lt", "gt", "quot", "apos"})
      if (known == own)
        return true;
    return fail(begin, "the entity " + in_quotes(known) + " is not defined");
  }

  bool read_markup() {
    const std::size_t begin = at_;
    if (take("<!--"))
      return read_comment(begin);
    if (take("<![CDATA["))
      return open_.empty() ? fail(begin, "a CDATA section stands outside of the document's element")
                           : pass(begin, "]]>", "the CDATA section is not closed");
    if (take("<!"))
      return fail(begin, "declarations such as \"<!DOCTYPE\" cannot be authored");
    if (take("<?"))
      return read_instruction(begin);
    if (take("</"))
      return read_end_tag(begin);
    ++at_;
    return read_start_tag(begin);
  }

  bool pass(std::size_t begin, std::string_view end, const char* otherwise) {
    const auto close = text_.find(end, at_);
    if (close == none)
      return fail(begin, otherwise);
    at_ = close + end.size();
    return true;
  }

  bool read_comment(std::size_t begin) {
    if (!pass(begin, "--", "the comment is not closed"))
      return false;
    return take(">") || fail(at_ - 2, "\"--\" stands in a comment");
  }

  bool read_instruction(std::size_t begin) {
    const std::string_view target = name();
    if (target.empty())
      return fail(begin, "the processing instruction has no name");
    if (lower(target) == "xml")
      return fail(begin, "the XML declaration does not stand at the very beginning");
    if (!rest().starts_with("?>") && !skip_white())
      return fail(at_, "the processing instruction is not well formed");
    return pass(begin, "?>", "the processing instruction is not closed");
  }

  bool read_end_tag(std::size_t begin) {
    const std::string_view closed = name();
    skip_white();
    if (closed.empty() || !take(">"))
      return fail(begin, "the end tag is not well formed");
    if (open_.empty())
      return fail(begin, "nothing is open that " + in_quotes(closed) + " could close");
    if (open_.back().name != closed)
      return fail(begin, "the end tag is that of " + in_quotes(closed) + ", but " +
                             in_quotes(open_.back().name) + ", opened in line " +
                             line_of(open_.back().at) + ", is still open");
    open_.pop_back();
    return true;
  }

  bool read_start_tag(std::size_t begin) {
    const std::string_view element = name();
    if (element.empty())
      return fail(begin, "a \"<\" begins no tag; a plain one is written \"&lt;\"");
    if (open_.empty() && had_root_)
      return fail(begin, "there is a second element outside of the first");
    had_root_ = true;
    std::set<std::string_view> known;
    for (;;) {
      const bool apart = skip_white();
      if (take("/>"))
        return true;
      if (take(">")) {
        open_.push_back({element, begin});
        return true;
      }
      if (at_ >= text_.size())
        return fail(begin, "the tag of " + in_quotes(element) + " is not closed");
      if (!apart || !read_attribute(known))
        return apart ? false
                     : fail(at_, "the tag of " + in_quotes(element) + " is not well formed");
    }
  }

  bool read_attribute(std::set<std::string_view>& known) {
    const std::size_t begin = at_;
    const std::string_view attribute = name();
    if (attribute.empty())
      return fail(at_, "there is no attribute where one should be");
    if (!known.insert(attribute).second)
      return fail(begin, "the attribute " + in_quotes(attribute) + " stands twice");
    skip_white();
    if (!take("="))
      return fail(at_, "the attribute " + in_quotes(attribute) + " has no value");
    skip_white();
    return read_value(attribute);
  }

  bool read_value(std::string_view attribute) {
    const std::size_t begin = at_;
    const char quote = next();
    if (quote != '"' && quote != '\'')
      return fail(at_, "the value of " + in_quotes(attribute) + " does not stand in quotes");
    const char ends[] = {quote, '<', '&', '\0'};
    ++at_;
    for (;;) {
      at_ = std::min(text_.find_first_of(ends, at_), text_.size());
      if (at_ == text_.size())
        return fail(begin, "the value of " + in_quotes(attribute) + " is not closed");
      if (next() == '<')
        return fail(at_, "a \"<\" stands in the value of " + in_quotes(attribute));
      if (next() == quote) {
        ++at_;
        return true;
      }
      if (!read_reference())
        return false;
    }
  }

  std::string_view text_;
  std::size_t at_ = 0;
  std::vector<open_element> open_;
  bool had_root_ = false;
  std::size_t fault_at_ = 0;
  std::string what_;
};

}  // namespace

std::optional<xml_fault> first_xml_fault(std::string_view text) {
  const std::size_t bad = first_character_not_allowed(text);
  xml_reader reader(text);
  const bool well_formed = reader.read();
  if (bad != none && (well_formed || bad <= reader.at()))
    return fault_at(text, bad, "there is a character or byte that XML does not allow");
  if (!well_formed)
    return fault_at(text, reader.at(), reader.what());
  return std::nullopt;
}

}  // namespace corvane
