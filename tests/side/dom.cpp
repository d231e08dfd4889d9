#include "side/dom.h"

#include <algorithm>
#include <utility>

namespace corvane::side {
namespace {

constexpr std::string_view blanks = " \n";

/// The five characters that a browser writes as entities.
std::string decoded(std::string_view text) {
  static const std::pair<std::string_view, std::string_view> entities[] = {
      {"&amp;", "&"}, {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&nbsp;", "\xC2\xA0"}};
  std::string plain;
  while (!text.empty()) {
    const auto* const entity = std::find_if(std::begin(entities), std::end(entities),
                                            [&](auto& e) { return text.starts_with(e.first); });
    const bool found = entity != std::end(entities);
    plain += found ? entity->second : text.substr(0, 1);
    text.remove_prefix(found ? entity->first.size() : 1);
  }
  return plain;
}

bool is_void(std::string_view name) {
  static const std::set<std::string_view> names = {"area",  "base",   "br",    "col",  "embed",
                                                   "hr",    "img",    "input", "link", "meta",
                                                   "param", "source", "track", "wbr"};
  return names.contains(name);
}

class parser {
 public:
  parser(std::string_view html, std::string& why) : rest_(html), why_(why) {}

  std::optional<element> whole() {
    if (rest_.starts_with("<!DOCTYPE"))
      take_to(">");
    take_while(blanks);
    element root;
    if (!take("<") || !inside(root))
      return std::nullopt;
    take_while(blanks);
    if (!rest_.empty())
      return fail("text after the page"), std::nullopt;
    return root;
  }

 private:
  bool fail(const std::string& what) {
    if (why_.empty())
      why_ = what + " before \"" + std::string(rest_.substr(0, 60)) + "\"";
    return false;
  }
  bool take(std::string_view text) {
    if (!rest_.starts_with(text))
      return fail("no \"" + std::string(text) + "\"");
    rest_.remove_prefix(text.size());
    return true;
  }
  std::string take_to(std::string_view end) {
    const auto at = std::min(rest_.find(end), rest_.size());
    std::string taken(rest_.substr(0, at));
    rest_.remove_prefix(std::min(at + end.size(), rest_.size()));
    return taken;
  }
  std::string take_while(std::string_view characters) {
    const auto at = std::min(rest_.find_first_not_of(characters), rest_.size());
    std::string taken(rest_.substr(0, at));
    rest_.remove_prefix(at);
    return taken;
  }
  std::string take_name() {
    const auto at = std::min(rest_.find_first_of(" \n=></"), rest_.size());
    std::string taken(rest_.substr(0, at));
    rest_.remove_prefix(at);
    return taken;
  }

  /// What follows the "<" of a start tag, up to the element's end.
  bool inside(element& made) {
    made.name = take_name();
    if (made.name.empty())
      return fail("a tag without a name");
    while (!take_while(blanks).empty() && !rest_.starts_with('>')) {
      const std::string attribute = take_name();
      if (attribute.empty() || !take("=\""))
        return fail("an attribute without a value");
      made.attributes[attribute] = decoded(take_to("\""));
    }
    return take(">") && (is_void(made.name) || contents(made));
  }

  bool contents(element& parent) {
    while (!rest_.empty()) {
      const auto at = std::min(rest_.find('<'), rest_.size());
      parent.text += decoded(rest_.substr(0, at));
      rest_.remove_prefix(at);
      if (rest_.starts_with("</"))
        return take("</" + parent.name + ">");
      if (!take("<") || !inside(parent.children.emplace_back()))
        return false;
    }
    return fail("no end of <" + parent.name + ">");
  }

  std::string_view rest_;
  std::string& why_;
};

}  // namespace

std::vector<const element*> element::all(std::string_view child) const {
  std::vector<const element*> found;
  for (const element& c : children)
    if (c.name == child)
      found.push_back(&c);
  return found;
}

std::optional<element> parse_dom(std::string_view html, std::string& why) {
  why.clear();
  return parser(html, why).whole();
}

const element* find(const element& root, std::string_view name) {
  if (root.name == name)
    return &root;
  for (const element& child : root.children)
    if (const element* found = find(child, name))
      return found;
  return nullptr;
}

std::set<std::string> names_in(const element& root) {
  std::set<std::string> names = {root.name};
  for (const element& child : root.children)
    names.merge(names_in(child));
  return names;
}

}  // namespace corvane::side
