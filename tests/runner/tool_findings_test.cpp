// What the runner of a script finds: of each line that went wrong, what says most of it.
#include "noting_host.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing_support::noting_host;
using end_kind = program_end::kind;

const program_end failed{end_kind::exited, 1, ""};

/// "error: title 2, video: ... [rule]" of each.
std::vector<std::string> found(const noting_host& host) {
  std::vector<std::string> lines;
  for (const finding& f : host.findings)
    lines.push_back(line_of(f) + " [" + f.rule + "]");
  return lines;
}

TEST(ToolFindings, KnownMessageIsOneWithItemConsequenceAndRemedy) {
  noting_host host;
  host.printed = {"STAT: Processing /o/title2.mpg...\n",
                  "WARN: attempt to update tv format from ntsc to pal; skipping\n"};
  EXPECT_FALSE(run_script("bin/dvdauthor.exe -x c.xml\n", host));
  EXPECT_THAT(found(host),
              ElementsAre("error: title 2, video: its video is PAL, but the disc is declared NTSC. "
                          "[dvdauthor-mixed-standards]"));
  EXPECT_EQ(host.findings.at(0).consequence, "Players show no picture or a wrong one");
  EXPECT_EQ(host.findings.at(0).remedy,
            "Encode it in the video standard of the project, or choose the other standard");
}

TEST(ToolFindings, MessageThatIsSaidOftenIsOne) {
  noting_host host;
  const std::string said = "++ WARN: [mplex] Stream bd: data will arrive too late sent\n";
  host.printed = {said, said, said};
  EXPECT_TRUE(run_script("bin/mplex.exe -o /o/title3.mpg a.m2v\n", host));
  EXPECT_THAT(found(host), ElementsAre("warning: title 3: data of stream bd comes too late (said 3 "
                                       "times). [mplex-late-data]"));
}

TEST(ToolFindings, ErrorInWordsOfTheToolsOwnIsOne) {
  noting_host host;
  host.printed = {"ERR:  no luck\x1B[2J today\nERR:  none at all\nERR:  none at all\n"};
  host.ends = {failed};
  EXPECT_FALSE(run_script("bin/dvdauthor.exe -x c.xml\n", host));
  EXPECT_THAT(found(host),
              ElementsAre("error: disc: dvdauthor says \"ERR:  no luck?[2J today\". [tool-error]",
                          "error: disc: dvdauthor says \"ERR:  none at all\" (said 2 times). "
                          "[tool-error]"));
  EXPECT_EQ(host.notes.find("dvdauthor says"), std::string::npos) << "the line stands there itself";
}

TEST(ToolFindings, EndAloneIsOneWhenNothingSaysWhy) {
  noting_host host;
  host.ends = {failed};
  EXPECT_FALSE(run_script("bin/mplex.exe -o /o/title1.mpg a.m2v\n", host));
  EXPECT_THAT(found(host),
              ElementsAre("error: title 1: mplex.exe ended with status 1. [tool-failed]"));
  host.findings.clear();
  host.printed = {"**ERROR: [mplex] Unable to read from a.m2v.\n"};
  EXPECT_FALSE(run_script("bin/mplex.exe -o /o/title1.mpg a.m2v\n", host));
  EXPECT_THAT(found(host), ElementsAre("error: title 1: there is nothing to read in a.m2v. "
                                       "[mplex-cannot-read]"));
}

TEST(ToolFindings, OfASubtitleItsJudgementStandsForSpumuxsOwnWords) {
  noting_host host;
  host.printed = {"ERR:  Could not determine format\n"};
  host.control = "<textsub filename=\"/s.srt\"";
  host.ends = {failed};
  EXPECT_FALSE(run_script(
      "bin/spumux.exe -s 1 \"/app/sub3-2.xml\" <\"/o/presub.mpg\" > \"/o/title3.mpg\"\n", host));
  EXPECT_THAT(
      found(host),
      ElementsAre("error: title 3, subtitle 2: subtitle 2 of title 3 (/s.srt) is not on the "
                  "disc: it is in none of the subtitle formats that spumux reads. "
                  "[spumux-subtitle]"));
}

TEST(ToolFindings, MenuWithoutItsButtonsIsOne) {
  noting_host host;
  host.why_no_buttons = "no picture of them was added";
  EXPECT_FALSE(run_script("bin/spumux.exe /app/menu2.xml </o/menu2.mpg > /o/menusub2.mpg\n", host));
  EXPECT_THAT(found(host), ElementsAre("error: menu 2: the buttons of menu 2 will not be seen: no "
                                       "picture of them was added. [spumux-buttons]"));
}

TEST(ToolFindings, StepThatFailsIsOne) {
  noting_host host;
  host.failures["mkdir /o"] = "No space left on device";
  EXPECT_FALSE(run_script("mkdir /o\nevil.exe\n", host));
  EXPECT_THAT(found(host),
              ElementsAre("error: disc: mkdir /o: No space left on device. [step-failed]",
                          "error: disc: evil.exe is not started: it is not one of the program's "
                          "tools. [step-failed]"));
}

TEST(ToolFindings, ThereIsNoneOfToolsThatSayNothing) {
  noting_host host;
  host.printed = {"INFO: [mplex] MUX STATUS: no under-runs detected.\n"};
  EXPECT_TRUE(run_script("bin/mplex.exe -o /o/title1.mpg a.m2v\n", host));
  EXPECT_THAT(found(host), IsEmpty());
}

}  // namespace
}  // namespace corvane
