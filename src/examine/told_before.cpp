#include "examine/told_before.h"

#include "formats/numbers.h"

#include <map>
#include <string>

namespace corvane {
namespace {

bool is_of_times(const std::string& rule) {
  return rule == "disc-clock" || rule == "disc-times";
}

bool is_of_material(const std::string& rule) {
  return rule == "disc-picture-stated" || rule == "disc-sound-stated" || is_of_times(rule);
}

/// How many breaks may be told of a title. dvdauthor moves the times behind one of them, which may
/// make two.
double breaks_known_of(int title, const disc_traits& foreseen) {
  const finding_item item{finding_item::whole_kind::title, title, finding_item::part_kind::whole,
                          0};
  const disc_trait* const breaks = foreseen.find(item, disc_trait_kind::breaks);
  return breaks == nullptr ? 0 : 2 * leading_number(breaks->value);
}

}  // namespace

void soften_what_was_told(std::vector<finding>& of_disc, const foreseen_run& asked) {
  std::map<int, double> told;  // breaks of each title
  for (finding& one : of_disc) {
    if (one.severity != finding_severity::error)
      continue;
    const bool is_known_break =
        is_of_times(one.rule) && one.item.whole == finding_item::whole_kind::title &&
        ++told[one.item.number] <= breaks_known_of(one.item.number, asked.disc);
    if (is_known_break || (asked.in_spite_of_errors && is_of_material(one.rule)))
      one.severity = finding_severity::warning;
  }
}

}  // namespace corvane
