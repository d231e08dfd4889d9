#include "authoring/material_check.h"

#include <utility>

namespace corvane {
namespace {

constexpr int slice_milliseconds = 100;

bool examine_whole_files(examination& e, const material_equipment& equipment) {
  const bool more = e.step_beginnings(slice_milliseconds);
  if ((more || e.bytes_to_read() > 0) && equipment.examine) {
    const bool whole = equipment.examine(e);
    while (e.step_beginnings(slice_milliseconds)) {
    }
    return whole;
  }
  while (e.step(slice_milliseconds)) {
  }
  return true;
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
                                 const material_equipment& e, prompts& ask) {
  if (e.facts == nullptr)
    return {};
  examination look(d, examination::depth::whole_files, *e.facts, std::move(around));
  const bool whole = examine_whole_files(look, e);
  const std::vector<finding> findings = look.findings();
  const findings_question question = question_about(findings);
  if (!question.findings.empty() && !ask.go_on_despite(question))
    return {false, !whole, false};
  return {true, !whole, count_of(findings, finding_severity::error) > 0};
}

}  // namespace corvane
