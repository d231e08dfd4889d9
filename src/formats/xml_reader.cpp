#include "formats/xml_reader.h"

#include "formats/text.h"
#include "formats/xml_characters.h"
#include "formats/xml_scanner.h"

#include <algorithm>
#include <set>
#include <utility>

namespace corvane {
namespace {

constexpr auto none = std::string_view::npos;

class xml_reader : public xml_scanner {
 public:
  /// `elements`: nullptr when only the fault is wanted.
  xml_reader(std::string_view text, std::vector<xml_element>* elements)
      : xml_scanner(text), elements_(elements) {}

  /// False: there is a fault.
  bool read() {
    take(byte_order_mark);
    if (declaration_begins() && !read_declaration())
      return false;
    while (!at_end())
      if (!read_piece())
        return false;
    if (!open_.empty())
      return fail(at_, "the element " + in_quotes(open_.back().name) + ", opened in line " +
                           line_of(open_.back().at) + ", is not closed");
    return had_root_ || fail(at_, "there is no element");
  }

 private:
  struct open_element {
    std::string_view name;
    std::size_t at;
    std::size_t index;
  };

  // "<?xml" and not "<?xml-stylesheet".
  bool declaration_begins() const {
    return rest().starts_with("<?xml") && rest().size() > 5 && xml_white.find(rest()[5]) != none;
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
    if (at_end() || next() == '<')
      return true;
    return fail(at_, had_root_ ? "there is text after the end of the document"
                               : "there is text before the first element");
  }

  bool read_text() {
    if (next() == '&') {
      std::string character;
      if (!read_reference(character))
        return false;
      if (elements_ != nullptr)
        (*elements_)[open_.back().index].text += character;
      return true;
    }
    const std::size_t begin = at_;
    const std::string_view raw = take_up_to("<&");
    if (const auto bad = raw.find("]]>"); bad != none)
      return fail(begin + bad, "\"]]>\" stands in the text");
    add_text(raw);
    return true;
  }

  void add_text(std::string_view raw) {
    if (elements_ != nullptr)
      add_with_line_breaks((*elements_)[open_.back().index].text, raw, '\n');
  }

  bool read_markup() {
    const std::size_t begin = at_;
    if (take("<!--"))
      return read_comment(begin);
    if (take("<![CDATA["))
      return read_cdata(begin);
    if (take("<!"))
      return fail(begin, "declarations such as \"<!DOCTYPE\" cannot be authored");
    if (take("<?"))
      return read_instruction(begin);
    if (take("</"))
      return read_end_tag(begin);
    ++at_;
    return read_start_tag(begin);
  }

  bool read_comment(std::size_t begin) {
    if (!take_until("--", begin, "the comment is not closed"))
      return false;
    return take(">") || fail(at_ - 2, "\"--\" stands in a comment");
  }

  bool read_cdata(std::size_t begin) {
    if (open_.empty())
      return fail(begin, "a CDATA section stands outside of the document's element");
    const auto raw = take_until("]]>", begin, "the CDATA section is not closed");
    if (!raw)
      return false;
    add_text(*raw);
    return true;
  }

  bool read_instruction(std::size_t begin) {
    const std::string_view target = take_name();
    if (target.empty())
      return fail(begin, "the processing instruction has no name");
    if (lower(target) == "xml")
      return fail(begin, "the XML declaration does not stand at the very beginning");
    if (!rest().starts_with("?>") && !skip_white())
      return fail(at_, "the processing instruction is not well formed");
    return take_until("?>", begin, "the processing instruction is not closed").has_value();
  }

  bool read_end_tag(std::size_t begin) {
    const std::string_view closed = take_name();
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
    const std::string_view name = take_name();
    if (name.empty())
      return fail(begin, "a \"<\" begins no tag; a plain one is written \"&lt;\"");
    if (open_.empty() && had_root_)
      return fail(begin, "there is a second element outside of the first");
    had_root_ = true;
    std::vector<xml_attribute> attributes;
    std::set<std::string_view> known;
    for (;;) {
      const bool apart = skip_white();
      if (take("/>"))
        return add_element(begin, name, std::move(attributes), false);
      if (take(">"))
        return add_element(begin, name, std::move(attributes), true);
      if (at_end())
        return fail(begin, "the tag of " + in_quotes(name) + " is not closed");
      if (!apart)
        return fail(at_, "the tag of " + in_quotes(name) + " is not well formed");
      if (!read_attribute(attributes, known))
        return false;
    }
  }

  bool add_element(std::size_t begin, std::string_view name, std::vector<xml_attribute> attributes,
                   bool stays_open) {
    const std::size_t index = elements_ != nullptr ? elements_->size() : 0;
    if (elements_ != nullptr)
      elements_->push_back({std::string(name), std::move(attributes), "",
                            open_.empty() ? no_xml_parent : open_.back().index, begin,
                            line_up_to(begin)});
    if (stays_open)
      open_.push_back({name, begin, index});
    return true;
  }

  /// The line of a place, counted from the last one asked for.
  int line_up_to(std::size_t at) {
    for (; counted_ < at; ++counted_)
      if (text_[counted_] == '\n' ||
          (text_[counted_] == '\r' && text_.substr(counted_ + 1, 1) != "\n"))
        ++line_;
    return line_;
  }

  bool read_attribute(std::vector<xml_attribute>& attributes, std::set<std::string_view>& known) {
    const std::size_t begin = at_;
    const std::string_view name = take_name();
    if (name.empty())
      return fail(at_, "there is no attribute where one should be");
    if (!known.insert(name).second)
      return fail(begin, "the attribute " + in_quotes(name) + " stands twice");
    skip_white();
    if (!take("="))
      return fail(at_, "the attribute " + in_quotes(name) + " has no value");
    skip_white();
    attributes.push_back({std::string(name), ""});
    return read_value(attributes.back());
  }

  bool read_value(xml_attribute& attribute) {
    const std::size_t begin = at_;
    const char quote = next();
    if (quote != '"' && quote != '\'')
      return fail(at_, "the value of " + in_quotes(attribute.name) + " does not stand in quotes");
    const char ends[] = {quote, '<', '&'};
    ++at_;
    for (;;) {
      std::string raw(take_up_to({ends, sizeof ends}));
      std::replace(raw.begin(), raw.end(), '\t', ' ');
      add_with_line_breaks(attribute.value, raw, ' ');
      if (at_end())
        return fail(begin, "the value of " + in_quotes(attribute.name) + " is not closed");
      if (next() == '<')
        return fail(at_, "a \"<\" stands in the value of " + in_quotes(attribute.name));
      if (next() == quote) {
        ++at_;
        return true;
      }
      if (!read_reference(attribute.value))
        return false;
    }
  }

  std::vector<xml_element>* elements_;
  std::vector<open_element> open_;
  bool had_root_ = false;
  std::size_t counted_ = 0;
  int line_ = 1;
};

std::optional<xml_fault> read_into(std::string_view text, std::vector<xml_element>* elements) {
  const std::size_t bad = first_character_not_allowed(text);
  xml_reader reader(text, elements);
  const bool well_formed = reader.read();
  if (bad != none && (well_formed || bad <= reader.place_of_fault()))
    return reader.fault_at(bad, "there is a character or byte that XML does not allow");
  if (!well_formed)
    return reader.fault();
  return std::nullopt;
}

}  // namespace

xml_reading read_xml(std::string_view text) {
  xml_reading reading;
  reading.fault = read_into(text, &reading.elements);
  if (reading.fault)
    reading.elements.clear();
  return reading;
}

std::optional<xml_fault> first_xml_fault(std::string_view text) {
  return read_into(text, nullptr);
}

const std::string* attribute_of(const xml_element& element, std::string_view name) {
  const auto found = std::find_if(element.attributes.begin(), element.attributes.end(),
                                  [name](const xml_attribute& a) { return a.name == name; });
  return found != element.attributes.end() ? &found->value : nullptr;
}

std::string attribute_text(const xml_element& element, std::string_view name) {
  const std::string* const value = attribute_of(element, name);
  return value == nullptr ? std::string() : *value;
}

}  // namespace corvane
