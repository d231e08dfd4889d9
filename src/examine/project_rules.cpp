#include "examine/project_rules.h"

#include <array>
#include <utility>

namespace corvane {
namespace {

constexpr std::array project_rules_table = {
    rule{"not-authorable", finding_severity::error, "A run takes the project",
         "a project that can be written down for the tools as it stands",
         "nothing: a run is refused, also where it should author whatever is found",
         "repair what is named, which is one thing at a time: check the project again then",
         "what texts, script and navigation XML can hold"}};

}  // namespace

std::span<const rule> project_rules() {
  return project_rules_table;
}

/// Found without a full stop, as every finding.
finding refused_project(std::string refusal) {
  if (refusal.ends_with('.'))
    refusal.pop_back();
  return finding_of(project_rules_table, "not-authorable", {}, std::move(refusal));
}

}  // namespace corvane
