// The question whether to author although something was found.
#include "project/prompts.h"

#include "support/scripted_prompts.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvane {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing_support::scripted_prompts;

finding found(finding_severity severity, int title, const std::string& text) {
  finding f;
  f.severity = severity;
  f.item = {finding_item::whole_kind::title, title};
  f.found = text;
  return f;
}

TEST(QuestionAboutFindings, ErrorsAreListedWithoutWhatIsLess) {
  const message_box box = question_about({found(finding_severity::error, 1, "the first"),
                                          found(finding_severity::warning, 2, "the second")});
  EXPECT_EQ(box.text,
            "The disc would be wrong, or the run would fail:\n"
            "\n"
            "title 1: the first.\n"
            "\n"
            "Author anyway?");
  EXPECT_EQ(box.picture, icon::exclamation);
  EXPECT_EQ(box.choice, buttons::yes_no);
  EXPECT_FALSE(box.enter_answers_yes);
}

TEST(QuestionAboutFindings, WarningsAreAskedAboutWhereThereIsNoError) {
  const message_box box = question_about({found(finding_severity::warning, 2, "the second"),
                                          found(finding_severity::note, 3, "the third")});
  EXPECT_EQ(box.text,
            "The disc may not be what is wanted:\n"
            "\n"
            "title 2: the second.\n"
            "\n"
            "Author it?");
}

TEST(QuestionAboutFindings, ALongListIsCutAndCounted) {
  std::vector<finding> many(20, found(finding_severity::error, 1, "bad"));
  many.push_back(found(finding_severity::error, 2, "last"));
  const std::string text = question_about(many).text;
  EXPECT_THAT(text, HasSubstr("\n... and 13 more.\n"));
  EXPECT_THAT(text, Not(HasSubstr("last")));
}

TEST(QuestionAboutFindings, OnlyYesGoesOn) {
  const std::vector<finding> findings = {found(finding_severity::error, 1, "bad")};
  for (const answer reply : {answer::yes, answer::no, answer::cancel}) {
    scripted_prompts ask;
    ask.expect(question_about(findings), reply);
    EXPECT_EQ(ask.go_on_despite(findings), reply == answer::yes);
  }
}

}  // namespace
}  // namespace corvane
