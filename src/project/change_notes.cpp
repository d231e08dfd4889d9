#include "project/change_notes.h"

#include "formats/numbers.h"
#include "project/post_rows.h"

#include <algorithm>

namespace corvane {
namespace {

std::int64_t post_commands(const project& p) {
  return std::ranges::count_if(
      p.postinfo, [](const std::string& row) { return !post_command_of(row).empty(); });
}

bool is_locked_for_nothing(const project& p) {
  return !p.Comboregion_enabled && p.List11.empty() && p.menulist.empty();
}

}  // namespace

std::string change_note(const project& before, const project& after) {
  // A project that was loaded has commands of its own.
  const bool has_its_titles =
      after.List11.size() >= before.List11.size() &&
      std::equal(before.List11.begin(), before.List11.end(), after.List11.begin());
  const std::int64_t commands = post_commands(before);
  if (commands > 0 && post_commands(after) == 0 && has_its_titles)
    return (commands == 1 ? "The command after a title was"
                          : "The commands after " + trimmed(commands) + " titles were") +
           std::string(" removed, as adding a title does; \"undo\" brings back what was.");
  if (is_locked_for_nothing(after) && !is_locked_for_nothing(before))
    return "The DVD format stays locked although nothing is loaded; \"new project\" frees it.";
  return {};
}

}  // namespace corvane
