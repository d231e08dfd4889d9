// Findings written down by one program and read by another.
#include "disc/finding_file.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvane {
namespace {

using part = finding_item::part_kind;
using whole = finding_item::whole_kind;

std::vector<finding> several() {
  finding full;
  full.rule = "mplex-damaged-audio";
  full.severity = finding_severity::warning;
  full.item = {whole::title, 2, part::audio, 3};
  full.file = "/films/a \"b\" & <c>\n\t\r\xC3\xBC.ac3";
  full.seconds = 65.25;
  full.byte = 18446744073709551615u;
  full.found = "its AC3 sound is damaged";
  full.wanted = "a whole sound";
  full.consequence = "  silence  ";
  full.remedy = "encode it again";
  finding bare;
  bare.severity = finding_severity::note;
  bare.item = {whole::menu, 1, part::button, 2};
  finding at_the_beginning;
  at_the_beginning.seconds = 0;
  at_the_beginning.byte = 0;
  return {full, bare, at_the_beginning, finding{}};
}

TEST(FindingFile, AllComeBackAsTheyWere) {
  const auto read = parse_findings(findings_text(several()));
  ASSERT_TRUE(read) << read.error;
  EXPECT_EQ(*read, several());
  EXPECT_TRUE(parse_findings(findings_text({})));
  EXPECT_TRUE(parse_findings(findings_text({}))->empty());
}

TEST(FindingFile, WhatNoTextCanHoldIsAQuestionMark) {
  finding f;
  f.found = std::string("a\0b\x1B[2Jc\xFF\xEF\xBF\xBE\xC3", 13) + "d";
  const auto read = parse_findings(findings_text({f}));
  ASSERT_TRUE(read) << read.error;
  ASSERT_EQ(read->size(), 1u);
  EXPECT_EQ((*read)[0].found, "a?b?[2Jc?????d");
}

TEST(FindingFile, OtherTextsAreRefusedWithTheirLine) {
  EXPECT_EQ(parse_findings("").error.substr(0, 8), "line 1: ");
  EXPECT_EQ(parse_findings("<foreseen/>").error, "it holds no findings");
  EXPECT_EQ(parse_findings("<findings>\n<finding severity=\"bad\" of=\"disc\"/></findings>").error,
            "line 2 is no finding");
  EXPECT_EQ(parse_findings("<findings>\n<finding severity=\"note\" of=\"sea\"/></findings>").error,
            "line 2 is no finding");
  const std::string whole_text = findings_text(several());
  EXPECT_FALSE(parse_findings(whole_text.substr(0, whole_text.size() - 3)));
}

}  // namespace
}  // namespace corvane
