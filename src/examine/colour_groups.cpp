#include "examine/colour_groups.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace corvane {
namespace {

constexpr int looks_of_a_group = 3;
constexpr std::size_t most_groups = 3;

/// The looks in the order in which the buttons have them from the last one on, which is also the
/// order in which they come into the groups.
std::vector<int> from_the_last(const std::vector<int>& looks) {
  std::vector<int> found;
  for (auto look = looks.rbegin(); look != looks.rend(); ++look)
    if (std::find(found.begin(), found.end(), *look) == found.end())
      found.push_back(*look);
  return found;
}

/// The way that fits.
struct colour_way {
  int groups = 1;
  std::vector<int> looks;  ///< of each button, numbered as they come into the groups

  int group_of(std::size_t button) const { return looks[button] / looks_of_a_group; }
};

colour_way fitting_way(const std::vector<int>& looks) {
  const std::vector<int> all = from_the_last(looks);
  colour_way way;
  way.looks.reserve(looks.size());
  for (const int look : looks)
    way.looks.push_back(static_cast<int>(std::find(all.begin(), all.end(), look) - all.begin()));
  if (!all.empty())
    way.groups = (static_cast<int>(all.size()) - 1) / looks_of_a_group + 1;
  return way;
}

/// How many ways to give the first buttons their groups go on to the next one, by the number of
/// those buttons, none at first: from each the looks that its groups hold by then, as bits.
class fitting_beginnings {
 public:
  fitting_beginnings(const std::vector<int>& looks, int groups)
      : groups_(static_cast<std::size_t>(groups)) {
    counts_.reserve(looks.size() + 1);
    held_ = {{{}, 1}};
    counts_.push_back(1);
    for (const int look : looks) {
      add(std::uint16_t(1U << static_cast<unsigned>(look)));
      double all = 0;
      for (const beginnings& b : held_)
        all += b.count;
      counts_.push_back(all);
    }
  }

  double after(std::size_t buttons) const { return counts_[buttons]; }

  /// The buttons that are looked at in all ways to give that many their groups, of which each may
  /// be followed by `behind` more.
  double steps(std::size_t buttons, std::size_t behind) const {
    double all = 0, ways = 1;
    for (std::size_t i = buttons; i-- > 0;) {
      ways *= static_cast<double>(groups_);
      all += counts_[i] * ways;
    }
    return all + counts_[buttons] * static_cast<double>(behind);
  }

 private:
  using held_looks = std::array<std::uint16_t, most_groups>;
  struct beginnings {
    held_looks held;  ///< in the order of their bits: which group is which makes no difference
    double count;
  };

  void add(std::uint16_t look) {
    std::vector<beginnings> next;
    next.reserve(held_.size() * groups_);
    for (const beginnings& b : held_)
      for (std::size_t group = 0; group < groups_; ++group) {
        beginnings more = b;
        more.held[group] |= look;
        if (std::popcount(more.held[group]) > looks_of_a_group)
          continue;
        std::sort(more.held.begin(), more.held.begin() + static_cast<std::ptrdiff_t>(groups_));
        next.push_back(more);
      }
    std::sort(next.begin(), next.end(),
              [](const beginnings& a, const beginnings& b) { return a.held < b.held; });
    held_.clear();
    for (const beginnings& b : next)
      if (!held_.empty() && held_.back().held == b.held)
        held_.back().count += b.count;
      else
        held_.push_back(b);
  }

  std::size_t groups_;
  std::vector<beginnings> held_;
  std::vector<double> counts_;
};

double counted_steps(const std::vector<int>& looks) {
  const colour_way way = fitting_way(looks);
  const std::size_t buttons = looks.size();
  auto steps = static_cast<double>(buttons);
  for (int fewer = 1; fewer < way.groups; ++fewer)
    steps += fitting_beginnings(way.looks, fewer).steps(buttons, 0);
  // The ways before the one that fits, by the last button whose group they have lower.
  const fitting_beginnings with_all(way.looks, way.groups);
  for (std::size_t i = 0; i < buttons; ++i)
    if (way.group_of(i) > 0)
      steps += way.group_of(i) * with_all.steps(i, buttons - i);
  return steps;
}

}  // namespace

std::vector<int> looks_of(const std::vector<disc_button>& buttons) {
  using look = std::pair<std::string, std::string>;
  std::vector<look> found;
  std::vector<int> numbers;
  numbers.reserve(buttons.size());
  for (const disc_button& b : buttons) {
    look of_button{b.highlight.text, b.select.text};
    const auto place = std::find(found.begin(), found.end(), of_button);
    numbers.push_back(static_cast<int>(place - found.begin()));
    if (place == found.end())
      found.push_back(std::move(of_button));
  }
  return numbers;
}

int count_of_looks(const std::vector<int>& looks) {
  return static_cast<int>(from_the_last(looks).size());
}

double ways_to_colour(const std::vector<int>& looks) {
  const colour_way way = fitting_way(looks);
  double ways = 1;
  for (int fewer = 1; fewer < way.groups; ++fewer)
    ways += std::pow(fewer, static_cast<double>(looks.size()));
  // The ways before the one that fits: a number whose digits are the groups.
  double before = 0;
  for (std::size_t i = looks.size(); i-- > 0;)
    before = before * way.groups + way.group_of(i);
  return ways + before;
}

double steps_to_colour(const std::vector<int>& looks) {
  const double ways = ways_to_colour(looks);
  const bool is_beyond = ways > most_steps_to_colour || count_of_looks(looks) > most_looks;
  return is_beyond ? ways : counted_steps(looks);
}

bool are_looks_too_slow(const std::vector<int>& looks) {
  if (count_of_looks(looks) > most_looks)
    return false;
  // Of most menus this tells at once.
  const double ways = ways_to_colour(looks);
  if (ways * static_cast<double>(looks.size()) <= most_steps_to_colour)
    return false;
  return steps_to_colour(looks) > most_steps_to_colour;
}

}  // namespace corvane
