#include "authoring/material_check.h"

#include <algorithm>
#include <utility>

namespace corvane {
namespace {

constexpr int slice_milliseconds = 100;

look_end examine_whole_files(examination& e, const material_equipment& equipment) {
  const bool more = e.step_beginnings(slice_milliseconds);
  if ((more || e.bytes_to_read() > 0) && equipment.examine) {
    const look_end end = equipment.examine(e);
    while (end == look_end::skipped && e.step_beginnings(slice_milliseconds)) {
    }
    return end;
  }
  while (e.step(slice_milliseconds)) {
  }
  return look_end::whole;
}

}  // namespace

std::vector<finding> known_faults(const disc_description& d, examination_around around,
                                  const material_equipment& e) {
  if (e.facts == nullptr)
    return {};
  examination look(d, examination::depth::whole_files, *e.facts, std::move(around));
  while (look.step_beginnings(slice_milliseconds)) {
  }
  return question_about(look.findings()).findings;
}

material_answer look_at_material(const disc_description& d, examination_around around,
                                 const material_equipment& e, prompts& ask,
                                 const std::vector<finding>& told) {
  if (e.facts == nullptr)
    return {};
  examination look(d, examination::depth::whole_files, *e.facts, std::move(around));
  const look_end end = examine_whole_files(look, e);
  if (end == look_end::stopped)
    return {false, true, true};
  const bool unseen = end == look_end::skipped;
  std::vector<finding> findings = look.findings();
  findings_question question = question_about(findings);
  const bool is_told = std::ranges::all_of(question.findings, [&](const finding& f) {
    return std::ranges::find(told, f) != told.end();
  });
  if (!is_told && !ask.go_on_despite(question))
    return {false, unseen};
  std::erase_if(findings, [](const finding& f) { return f.severity != finding_severity::error; });
  return {true, unseen, false, std::move(question.findings), std::move(findings)};
}

}  // namespace corvane
