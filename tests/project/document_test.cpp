// The guard of hand-edited XML and the picking of files.
#include "project/document.h"

#include "formats/sanitized.h"
#include "project/messages.h"
#include "project/picked_file.h"
#include "support/command_test.h"

namespace corvane {
namespace {

class Workbench : public testing_support::command_test {};

TEST_F(Workbench, WithoutHandEditedXmlTheGuardAsksNothing) {
  EXPECT_EQ(custom(doc), 1);
}

TEST_F(Workbench, GuardEmptiesTheXmlOnOk) {
  p.customxml = "<dvdauthor/>";
  expect_guard(answer::ok);
  EXPECT_EQ(custom(doc), 1);
  EXPECT_EQ(p.customxml, "");
}

TEST_F(Workbench, GuardKeepsTheXmlOnCancel) {
  p.customxml = "<dvdauthor/>";
  expect_guard(answer::cancel);
  EXPECT_EQ(custom(doc), 2);
  EXPECT_EQ(p.customxml, "<dvdauthor/>");
}

TEST_F(Workbench, PickedFileComesInStoredForm) {
  const file_dialog dialog{"title", "all|*.*", "preset"};
  ask.expect_open(dialog, folder.path("a b.m2v"));
  EXPECT_EQ(pick_file(doc, dialog, file_use::title), folder.stored("a b.m2v"));
}

TEST_F(Workbench, CancelledDialogPicksNothing) {
  ask.expect_open({"title", "all|*.*", ""}, "");
  EXPECT_EQ(pick_file(doc, {"title", "all|*.*", ""}, file_use::title), std::nullopt);
}

TEST_F(Workbench, NamesThatARowCannotHoldAreRefusedWithTheReason) {
  const std::pair<const char*, const char*> table[] = {
      {"a\"b", "contains a double quote (\")"},
      {"a|b", "contains a vertical bar (|)"},
      {"a<b", "contains a less-than sign (<)"},
      {"a\nb", "contains a control character"},
      {"a\xFFz", "contains bytes that are not UTF-8 text"},
#ifdef _WIN32
      {"a/b", "contains a slash (/)"},
#else
      {"a\\b", "contains a backslash (\\)"},
#endif
  };
  for (const auto& [name, why] : table) {
    const std::string path = folder.path(name);
    ask.expect_open({"title", "all|*.*", ""}, path);
    expect_refusal("\"" + sanitized(path) + "\" cannot be used: its name " + why +
                   ".  Please rename it.");
    EXPECT_EQ(pick_file(doc, {"title", "all|*.*", ""}, file_use::title), std::nullopt) << name;
  }
}

TEST(Messages, ShownTextIsReadableWhateverTheBytes) {
  EXPECT_EQ(sanitized("M\xC3\xBCller"), "M\xC3\xBCller");
  EXPECT_EQ(sanitized("a\tb\x01\x7f"), "a?b??");
  EXPECT_EQ(sanitized("M\xC3\xBCller\xFF"), "M??ller?");
}

TEST(Messages, LongTextIsShortenedBetweenCharacters) {
  EXPECT_EQ(sanitized_short("abc", 3), "abc");
  EXPECT_EQ(sanitized_short("abcd", 3), "abc...");
  EXPECT_EQ(sanitized_short("ab\xC3\xBC\xC3\xBC", 3), "ab...");
  EXPECT_EQ(sanitized_short("ab\xC3\xBC\xC3\xBC", 4), "ab\xC3\xBC...");
}

}  // namespace
}  // namespace corvane
