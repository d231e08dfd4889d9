// What the XML reader's rules are made of: a place in a text, what stands there, and the fault.
#pragma once

#include "formats/xml_reader.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace corvane {

inline constexpr std::string_view xml_white = " \t\r\n";
inline constexpr std::string_view byte_order_mark = "\xEF\xBB\xBF";

/// A text for a fault's clause.
std::string in_quotes(std::string_view text);

/// Adds `raw` with each line break (LF, CR LF or CR) as `line_break`.
void add_with_line_breaks(std::string& text, std::string_view raw, char line_break);

class xml_scanner {
 public:
  explicit xml_scanner(std::string_view text) : text_(text) {}

  /// Line and column of the fault.
  xml_fault fault() const { return fault_at(fault_at_, what_); }
  xml_fault fault_at(std::size_t at, std::string what) const;
  std::size_t place_of_fault() const { return fault_at_; }

 protected:
  /// Notes the fault; false, so that a rule can end with it.
  bool fail(std::size_t at, std::string what);

  std::string line_of(std::size_t at) const;

  bool at_end() const { return at_ >= text_.size(); }
  std::string_view rest() const { return text_.substr(at_); }
  char next() const { return at_end() ? '\0' : text_[at_]; }

  /// Moves behind `what` if it stands here.
  bool take(std::string_view what);
  /// Moves behind the next `end` and gives what stood before it; else fails at `begin`.
  std::optional<std::string_view> take_until(std::string_view end, std::size_t begin,
                                             const char* otherwise);
  /// Moves up to the first of `characters`, or to the end, and gives what stood before it.
  std::string_view take_up_to(std::string_view characters);
  /// Moves behind those of `characters` that stand here, and gives them.
  std::string_view take_all_of(std::string_view characters);
  std::string_view take_name();
  /// False when no white space stands here.
  bool skip_white();
  /// Reads the reference whose "&" stands here, and adds its character.
  bool read_reference(std::string& text);

  std::string_view text_;
  std::size_t at_ = 0;

 private:
  bool read_number(std::size_t begin, std::string& text);

  std::size_t fault_at_ = 0;
  std::string what_;
};

}  // namespace corvane
