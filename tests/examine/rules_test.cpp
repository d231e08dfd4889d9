// The table of rules as a whole, and the page that is written from it.
#include "examine/rules.h"

#include "examine/tool_rules.h"
#include "platform/files/files.h"
#include "runner/tools/known_messages.h"
#include "runner/tools/tool_outcomes.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <map>
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

TEST(Rules, WhatToolsSayHasARuleEach) {
  std::map<std::string_view, finding_severity> severities;
  each_rule([&](const rule& r) { severities[r.id] = r.severity; });
  std::size_t messages = 0;
  for (const char* const tool : {"mplex.exe", "spumux.exe", "dvdauthor.exe", "mkisofs.exe"})
    for (const known_message& message : known_messages_of(tool)) {
      ++messages;
      ASSERT_TRUE(severities.contains(message.rule)) << message.rule;
      EXPECT_GE(severities[message.rule], message.severity) << message.rule;
    }
  EXPECT_GT(messages, 100u);
  EXPECT_FALSE(tool_outcomes().empty());
  for (const tool_outcome& outcome : tool_outcomes()) {
    ASSERT_TRUE(severities.contains(outcome.rule)) << outcome.rule;
    EXPECT_EQ(severities[outcome.rule], outcome.severity) << outcome.rule;
  }
}

TEST(Rules, TextsOfToolsLeaveOpenWhatAMessageFillsIn) {
  for (const rule& r : tool_rules())
    for (const std::string_view text : {r.subject, r.consequence, r.remedy, r.source})
      EXPECT_EQ(text.find_first_of("{}~"), text.npos) << r.id << ": " << text;
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
