// A page's elements as a browser wrote them down: every element closed, texts with their entities.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace corvane::side {

struct element {
  std::string name;
  std::map<std::string, std::string> attributes;
  std::string text;  ///< its own, without that of its children
  std::vector<element> children;

  /// Children of that name.
  std::vector<const element*> all(std::string_view child) const;
};

/// The outermost element; nothing, with `why`, for what no browser would have written.
std::optional<element> parse_dom(std::string_view html, std::string& why);

/// The first element of that name, itself or below; null when there is none.
const element* find(const element& root, std::string_view name);

/// The names of all elements.
std::set<std::string> names_in(const element& root);

}  // namespace corvane::side
