// The table of rules as a whole, and the page that is written from it.
#include "examine/rules.h"

#include "platform/files/files.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <set>
#include <string>

namespace corvane {
namespace {

template <typename Look>
void each_rule(Look look) {
  for (const rule_family& family : rule_families())
    for (const rule& r : family.rules)
      look(r);
}

TEST(Rules, IdentifiersAreSmallWordsAndEachStandsOnce) {
  std::set<std::string_view> seen;
  each_rule([&](const rule& r) {
    EXPECT_TRUE(seen.insert(r.id).second) << r.id;
    EXPECT_EQ(r.id.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-"), r.id.npos) << r.id;
    EXPECT_FALSE(r.id.empty());
  });
  EXPECT_GT(seen.size(), 40u);
}

TEST(Rules, EachSaysWhatMustBeWhatAViewerSeesWhatToDoAndWhy) {
  each_rule([](const rule& r) {
    for (const std::string_view text : {r.subject, r.wanted, r.consequence, r.remedy, r.source}) {
      EXPECT_FALSE(text.empty()) << r.id;
      EXPECT_FALSE(text.ends_with('.')) << r.id << ": " << text;
      EXPECT_EQ(text.find('\n'), text.npos) << r.id;
    }
  });
}

// With CORVANE_WRITE_GOLDEN set in the environment the page is written instead.
TEST(Rules, PageListsWhatTheTableHolds) {
  const std::string file = CORVANE_DOCS_FOLDER "/rules.md";
  if (std::getenv("CORVANE_WRITE_GOLDEN") != nullptr) {
    ASSERT_FALSE(write_file(file, rules_document()));
    FAIL() << "written, not checked";
  }
  const auto page = read_file(file, 1u << 20);
  ASSERT_TRUE(page) << page.error;
  EXPECT_EQ(*page, rules_document());
}

}  // namespace
}  // namespace corvane
