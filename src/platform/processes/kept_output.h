// What is kept of an output of any length: its beginning, where a tool says what it does, and its
// end, where it says why it gave up.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace corvane {

class kept_output {
 public:
  static constexpr std::size_t first = std::size_t{1} << 20;
  static constexpr std::size_t last = std::size_t{64} << 10;

  void add(std::string_view piece);

  /// Everything; of more than `first` bytes, these and the whole lines within the `last` ones of
  /// the rest, after a line break.
  std::string text() const;

 private:
  std::string beginning_, end_;
  bool is_cut_ = false;  ///< something between the two is gone
};

}  // namespace corvane
