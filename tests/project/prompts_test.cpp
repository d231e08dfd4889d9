// The question whether to author although something was found.
#include "project/prompts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

finding found(finding_severity severity, int title, const std::string& text) {
  finding f;
  f.severity = severity;
  f.item = {finding_item::whole_kind::title, title};
  f.found = text;
  return f;
}

TEST(QuestionAboutFindings, HoldsErrorsAndWarningsAtOnceWithoutNotes) {
  const auto error = found(finding_severity::error, 1, "the first");
  const auto warning = found(finding_severity::warning, 2, "the second");
  const findings_question question =
      question_about({error, warning, found(finding_severity::note, 3, "the third")});
  EXPECT_EQ(question.text, "The disc would be wrong, or the run would fail. Author anyway?");
  EXPECT_THAT(question.findings, ElementsAre(error, warning));
}

TEST(QuestionAboutFindings, OfWarningsAloneIsLessGrave) {
  const auto warning = found(finding_severity::warning, 2, "the second");
  const findings_question question = question_about({warning});
  EXPECT_EQ(question.text, "The disc may not be what is wanted. Author anyway?");
  EXPECT_THAT(question.findings, ElementsAre(warning));
}

TEST(QuestionAboutFindings, LeavesNothingOutOfALongList) {
  EXPECT_THAT(
      question_about(std::vector<finding>(200, found(finding_severity::error, 1, "bad"))).findings,
      SizeIs(200));
}

TEST(QuestionAboutFindings, NotesAloneLeaveNothingToAsk) {
  EXPECT_THAT(question_about({found(finding_severity::note, 1, "this")}).findings, IsEmpty());
}

}  // namespace
}  // namespace corvane
