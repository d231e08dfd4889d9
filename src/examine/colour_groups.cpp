#include "examine/colour_groups.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <string>
#include <utility>

namespace corvane {
namespace {

using combination = std::pair<std::string, std::string>;

int group_of(std::size_t combination_index) {
  return static_cast<int>(combination_index) / 3;
}

/// The combinations, in the order in which the buttons have them from the last one on, which is
/// also the order in which they come into the groups.
std::vector<combination> from_the_last(const std::vector<disc_button>& buttons) {
  std::vector<combination> found;
  for (auto b = buttons.rbegin(); b != buttons.rend(); ++b) {
    combination c{b->highlight.text, b->select.text};
    if (std::find(found.begin(), found.end(), c) == found.end())
      found.push_back(std::move(c));
  }
  return found;
}

}  // namespace

int colour_combinations(const std::vector<disc_button>& buttons) {
  return static_cast<int>(from_the_last(buttons).size());
}

double ways_to_colour(const std::vector<disc_button>& buttons) {
  const std::vector<combination> all = from_the_last(buttons);
  const int groups = all.empty() ? 1 : group_of(all.size() - 1) + 1;
  double ways = 1;
  for (int fewer = 1; fewer < groups; ++fewer)
    ways += std::pow(fewer, static_cast<double>(buttons.size()));
  // The ways before the one that fits: a number whose digits are the groups.
  double before = 0;
  for (auto b = buttons.rbegin(); b != buttons.rend(); ++b) {
    const auto place =
        std::find(all.begin(), all.end(), combination{b->highlight.text, b->select.text});
    before = before * groups + group_of(static_cast<std::size_t>(place - all.begin()));
  }
  return ways + before;
}

}  // namespace corvane
