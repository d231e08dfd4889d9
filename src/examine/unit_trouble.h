// What is wrong with the navigation pack of a unit (VOBU): a place in the VOBs, and what it is.
//
// A tool that is wrong once is wrong in thousands of units: of each kind of trouble the first of a
// cell is kept, with the count of the others.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <vector>

namespace corvane {

struct unit_trouble {
  int titleset = 0;  ///< 0: the video manager
  bool menus = false;
  std::uint32_t sector = 0;  ///< of the unit, in the VOBs, 0-based
  int vob = 0, cell = 0;     ///< where the unit lies
  std::uint32_t clocks = 0;  ///< from the beginning of the cell to the unit, at 90 kHz
  bool harmless = false;     ///< players do without what is wrong, or it is only unusual
  std::string what;          ///< "the next unit is said to be at sector 12; it is at sector 14"
  bool operator==(const unit_trouble&) const = default;
};

/// For `clocks`, from the two units' times; 0 if one of them cannot be right.
inline std::uint32_t clocks_since(std::uint32_t cell_begins, std::uint32_t unit_begins) {
  constexpr std::uint32_t half_a_day = 12U * 60 * 60 * 90'000;
  const std::uint32_t clocks = unit_begins - cell_begins;
  return clocks < half_a_day ? clocks : 0;
}

class unit_trouble_list {
 public:
  /// No more are kept, whatever a disc holds.
  static constexpr std::size_t most = 300;

  /// Counts a unit with a trouble of this kind (any number for what is the same in other units),
  /// once if it comes again at once; true: it is the first of its cell, and is to be added.
  bool is_first(int vob, int cell, int kind, std::uint32_t sector);
  void add(int kind, unit_trouble one);

  /// By sector; nothing is left.
  std::vector<unit_trouble> take();

 private:
  struct counted {
    unit_trouble first;
    std::size_t others = 0;
    std::uint32_t last = 0;  // sector of the newest
  };
  std::map<std::tuple<int, int, int>, counted> all_;  // by VOB, cell and kind
};

}  // namespace corvane
