#include "runner/run_speeds.h"

#include "formats/text.h"

#include <array>
#include <charconv>
#include <cstddef>

namespace corvane {
namespace {

constexpr std::array<std::string_view, work_kinds> names = {
    "draw", "multiplex", "overlay",   "cues",  "collect",
    "fix",  "image",     "read-back", "other", "remove"};

/// Times a thousand longer or shorter than the usual one are no machine's.
bool is_likely(double cost, double usual) {
  return cost > usual / 1000 && cost < usual * 1000;
}

}  // namespace

work_costs usual_costs() {
  return {0.06, 6e-9, 8e-9, 0.006, 3.2e-9, 0.3e-9, 1.1e-9, 0.3e-9, 1, 0.3e-9};
}

work_costs parse_costs(std::string_view text) {
  const work_costs usual = usual_costs();
  work_costs costs = usual;
  for (const std::string& line : split(text, "\n"))
    for (std::size_t kind = 0; kind < names.size(); ++kind) {
      const std::string name = std::string(names[kind]) + " ";
      if (!line.starts_with(name))
        continue;
      double cost = 0;
      const char* const end = line.data() + line.size();
      if (std::from_chars(line.data() + name.size(), end, cost).ec == std::errc() &&
          is_likely(cost, usual[kind]))
        costs[kind] = cost;
    }
  return costs;
}

std::string costs_text(const work_costs& costs) {
  std::string text;
  for (std::size_t kind = 0; kind < names.size(); ++kind) {
    std::array<char, 32> digits{};
    const auto written = std::to_chars(digits.data(), digits.data() + digits.size(), costs[kind],
                                       std::chars_format::scientific, 3);
    text.append(names[kind]).append(" ").append(digits.data(), written.ptr).append("\n");
  }
  return text;
}

}  // namespace corvane
