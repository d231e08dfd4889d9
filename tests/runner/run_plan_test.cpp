#include "runner/run_plan.h"

#include "platform/files/paths.h"

#include <gtest/gtest.h>

#include <map>

namespace corvane {
namespace {

/// A disk of which only names, sizes and a few texts are known.
struct listed_files {
  std::map<std::string, double> sizes{};
  std::map<std::string, std::string> texts{};

  plan_files access() {
    return {[this](const std::string& path) {
              const auto found = sizes.find(path);
              return found == sizes.end() ? std::nullopt : std::optional(found->second);
            },
            [this](const std::string& path) { return texts[path]; }};
  }
};

const std::string two_titles =
    "@echo off\r\n"
    "mkdir \"/dvd\"\r\n"
    "echo ***please wait while the titles are multiplexed.\r\n"
    "echo *multiplexing title: 1.....\r\n"
    "\"/bin/mplex.exe\" -f 8 -O 0ms -o \"/dvd/title1.mpg\"  \"/a.m2v\"  \"/a.ac3\" \r\n"
    "echo *multiplexing title: 2.....\r\n"
    "\"/bin/mplex.exe\" -f 8 -O -40ms -o \"/dvd/100%%/title2.mpg\"  \"/b.m2v\" \r\n"
    "echo *processing subtitles for title: 1 sub 1...\r\n"
    "rename \"/dvd/title1.mpg\" presub.mpg\r\n"
    "\"/bin/spumux.exe\" -s 0 \"/app/sub1-1.xml\" <\"/dvd/presub.mpg\" > \"/dvd/title1.mpg\"\r\n"
    "erase \"/dvd/presub.mpg\"\r\n"
    "echo *authoring title(s).....\r\n"
    "\r\n"
    "\"/bin/dvdauthor.exe\" -x \"/app/config.xml\"\r\n"
    "erase \"/dvd\"/*.mpg\r\n"
    "echo *generating udf iso.....\r\n"
    "\"/bin/mkisofs.exe\" -dvd-video -V DVDVideo -udf -o \"/dvd.iso\" \"/dvd\"\r\n"
    "echo *process complete\r\n";

listed_files two_titles_files() {
  listed_files files;
  files.sizes = {{"/a.m2v", 1e9}, {"/a.ac3", 1e8}, {"/b.m2v", 5e8}, {"/ready.vob", 2e8}};
  files.texts["/app/sub1-1.xml"] =
      "<subpictures><stream><textsub filename=\"/a.srt\"/></stream></subpictures>";
  files.texts["/a.srt"] = "1\n00:00:01,000 --> 00:00:02,000\nA\n\n2\n00:00:03 --> 00:00:04\nB\n";
  files.texts["/app/config.xml"] =
      "<dvdauthor dest=\"/dvd\"><titleset><titles><pgc>"
      "<vob file=\"/dvd/title1.mpg\"/><vob file=\"/dvd/100%/title2.mpg\"/>"
      "<vob file=\"/ready.vob\"/></pgc></titles></titleset></dvdauthor>";
  return files;
}

const planned_work* work_of_kind(const run_plan& plan, work_kind kind, std::size_t nth = 0) {
  for (const planned_step& step : plan.steps())
    for (const planned_work& work : step.works)
      if (work.kind == kind && nth-- == 0)
        return &work;
  return nullptr;
}

TEST(RunPlan, StepsAreThoseThatHaveSomethingToDoAndTheLookAtTheDisc) {
  listed_files files = two_titles_files();
  const run_plan plan(two_titles, true, files.access());
  std::vector<std::string> lines;
  for (const planned_step& step : plan.steps())
    lines.push_back(step.line);
  EXPECT_EQ(lines, (std::vector<std::string>{
                       "*multiplexing title: 1.....", "*multiplexing title: 2.....",
                       "*processing subtitles for title: 1 sub 1...", "*authoring title(s).....",
                       "*generating udf iso.....", "*reading the disc back....."}));
}

TEST(RunPlan, ScriptThatMakesNoDiscIsNotReadBack) {
  listed_files files;
  const run_plan plan("echo *creating m2v still\r\n\"/bin/jpeg2yuv.exe\" -f F | \"/bin/m.exe\"\r\n",
                      true, files.access());
  ASSERT_EQ(plan.steps().size(), 1u);
  EXPECT_EQ(plan.steps()[0].works[0].kind, work_kind::other);
}

TEST(RunPlan, SizesFollowFromWhatThingsAreMadeOf) {
  listed_files files = two_titles_files();
  const run_plan plan(two_titles, true, files.access());
  const double title1 = 1.1e9 * 1.02, title2 = 5e8 * 1.02;
  EXPECT_NEAR(work_of_kind(plan, work_kind::multiplex)->amount, title1, 1);
  EXPECT_EQ(work_of_kind(plan, work_kind::multiplex)->grows, "/dvd/title1.mpg");
  EXPECT_NEAR(work_of_kind(plan, work_kind::multiplex, 1)->amount, title2, 1);
  EXPECT_EQ(work_of_kind(plan, work_kind::multiplex, 1)->grows, "/dvd/100%/title2.mpg");
  EXPECT_NEAR(work_of_kind(plan, work_kind::overlay)->amount, title1 * 1.003, 1);
  EXPECT_EQ(work_of_kind(plan, work_kind::cues)->amount, 2);
  const double disc = title1 * 1.003 + title2 + 2e8;
  EXPECT_NEAR(work_of_kind(plan, work_kind::collect)->amount, disc, 1);
  EXPECT_EQ(work_of_kind(plan, work_kind::collect)->grows, join_path("/dvd", "VIDEO_TS"));
  EXPECT_NEAR(work_of_kind(plan, work_kind::fix)->amount, disc, 1);
  EXPECT_NEAR(work_of_kind(plan, work_kind::image)->amount, disc, 1);
  EXPECT_NEAR(work_of_kind(plan, work_kind::read_back)->amount, 2 * disc, 1);
}

TEST(RunPlan, WhatWasMadeTakesThePlaceOfTheGuess) {
  listed_files files = two_titles_files();
  run_plan plan(two_titles, true, files.access());
  plan.was_made(work_of_kind(plan, work_kind::multiplex)->command, 3e8);
  EXPECT_NEAR(work_of_kind(plan, work_kind::overlay)->amount, 3e8 * 1.003, 1);
  EXPECT_NEAR(work_of_kind(plan, work_kind::image)->amount, 3e8 * 1.003 + 5.1e8 + 2e8, 1);
}

TEST(RunPlan, CuesAreCountedInEveryFormatThatMarksThem) {
  EXPECT_EQ(cues_in("1\n00:00:01,000 --> 00:00:02,000\nA\n"), 1);
  EXPECT_EQ(cues_in("[Events]\nDialogue: 0,a\nDialogue: 0,b\n"), 2);
  EXPECT_EQ(cues_in("{1}{2}a\n{3}{4}b\n{5}{6}c\n"), 2);
  EXPECT_EQ(cues_in("<SAMI><SYNC Start=1>a<SYNC Start=2>"), 2);
  EXPECT_EQ(cues_in("00:00:01:a\n00:00:02:b\n"), 1);
  EXPECT_EQ(cues_in(""), 0);
}

}  // namespace
}  // namespace corvane
