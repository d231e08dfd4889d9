#include "project/prompts.h"

#include <algorithm>
#include <iterator>

namespace corvane {

findings_question question_about(const std::vector<finding>& findings) {
  findings_question question;
  question.text = count_of(findings, finding_severity::error) > 0
                      ? "The disc would be wrong, or the run would fail. Author anyway?"
                      : "The disc may not be what is wanted. Author anyway?";
  std::copy_if(findings.begin(), findings.end(), std::back_inserter(question.findings),
               [](const finding& f) { return f.severity != finding_severity::note; });
  return question;
}

}  // namespace corvane
