#include "menus/menu_problems.h"

#include "examine/button_rules.h"
#include "examine/navigation_rules.h"
#include "formats/numbers.h"
#include "formats/sanitized.h"
#include "formats/text.h"
#include "menus/button_overlaps.h"
#include "project/disc_of.h"
#include "project/menu_rows.h"

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <string_view>
#include <utility>

namespace corvane {
namespace {

using problem_part = finding_item::part_kind;

constexpr std::size_t most_refused_pairs = 36;

bool is_about(const finding& f, int menu) {
  return f.item.whole == finding_item::whole_kind::menu && f.item.number == menu;
}

/// Whether somebody who edits this menu can do nothing about it here.
bool is_for_elsewhere(const finding& f) {
  return f.rule == "menu-not-reachable";
}

/// "accept" goes by its own rule, to which buttons that only touch overlap, too.
std::vector<finding> refused_overlaps(const project& p, int menu) {
  std::vector<finding> found;
  const std::string element = row_of(p.menubuttons, menu, {});
  for (const button_pair& pair : overlapping_buttons(pieces_of(element), most_refused_pairs)) {
    finding f;
    f.rule = "accept-overlap";
    f.item = {finding_item::whole_kind::menu, menu, problem_part::button, pair.a};
    f.found =
        "it overlaps or touches button " + trimmed(pair.b) + ", so \"accept\" refuses the menu";
    f.remedy = "move one of the two";
    found.push_back(std::move(f));
  }
  return found;
}

std::string count_text(std::size_t count, const char* what) {
  return count == 0 ? std::string()
                    : trimmed(static_cast<int>(count)) + " " + what + (count == 1 ? "" : "s");
}

}  // namespace

std::vector<finding> menu_problems(const project& p, int menu, std::span<const menu_facts> facts) {
  const disc_description disc = disc_of(p);
  std::vector<finding> problems = refused_overlaps(p, menu);
  const bool refused = !problems.empty();
  for (const std::vector<finding>& family :
       {button_findings(disc, facts), navigation_findings(disc)})
    std::copy_if(family.begin(), family.end(), std::back_inserter(problems), [&](const finding& f) {
      const bool told = refused && f.rule == "button-overlap";
      return is_about(f, menu) && !told && !is_for_elsewhere(f);
    });
  std::stable_sort(problems.begin(), problems.end(), [](const finding& a, const finding& b) {
    return std::pair(-static_cast<int>(a.severity), a.item.part_number) <
           std::pair(-static_cast<int>(b.severity), b.item.part_number);
  });
  return problems;
}

std::string problem_text(const finding& problem, bool remedy) {
  std::string text;
  if (problem.item.part == problem_part::button)
    text = "button " + trimmed(problem.item.part_number) + ": ";
  text += sanitized(problem.found);
  if (remedy && !problem.remedy.empty())
    text += ".  To do: " + problem.remedy;
  return text;
}

std::string problems_line(const std::vector<finding>& problems) {
  if (problems.empty())
    return "no problems";
  std::vector<std::string> counts;
  for (const auto& [severity, name] :
       {std::pair(finding_severity::error, "error"),
        std::pair(finding_severity::warning, "warning"), std::pair(finding_severity::note, "note")})
    if (const std::string count = count_text(count_of(problems, severity), name); !count.empty())
      counts.push_back(count);
  return join(counts, ", ") + ": " + problem_text(problems.front(), false);
}

}  // namespace corvane
