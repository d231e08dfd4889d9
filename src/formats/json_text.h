// JSON, as programs of others read it.
#pragma once

#include <string>
#include <string_view>

namespace corvane {

/// A JSON string, in UTF-8; what is not stands as U+FFFD.
std::string json_string(std::string_view value);

/// A JSON number, with up to three places behind the point whatever the locale. Times only: below 0
/// it is 0.
std::string json_number(double value);

class json_object {
 public:
  /// `value` is JSON.
  void add(std::string_view name, const std::string& value);
  /// Nothing, if `value` is empty.
  void add_text(std::string_view name, std::string_view value);
  std::string text() const { return text_ + "}"; }

 private:
  std::string text_ = "{";
};

/// An array whose elements stand in a line each.
class json_lines {
 public:
  void add(const std::string& value);
  std::string text() const;

 private:
  std::string text_;
};

}  // namespace corvane
