// The model of a whole run against runs that are made up, second by second.
#include "runner/run_meter.h"

#include "platform/files/paths.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

namespace corvane {
namespace {

/// Something that takes its time and has files grow or lines printed.
struct made_up_part {
  double seconds = 0;
  std::string grows{};  ///< to `bytes` in these seconds
  double bytes = 0;
  std::string percent_line{};  ///< with "%1" for the percentage
};

struct made_up_step {
  std::string line;
  std::vector<made_up_part> parts;
};

/// What was told of a run, and when it ended.
struct told_run {
  std::vector<run_whole> told;
  std::vector<double> times;
  double end = 0;
};

class MeteredRun : public testing::Test {
 protected:
  static constexpr double look = 0.25;

  told_run play(run_meter& meter, const std::vector<made_up_step>& steps) {
    told_run run;
    double now = 0;
    for (const made_up_step& step : steps) {
      meter.line(step.line);
      for (const made_up_part& part : step.parts) {
        const double base = sizes_[part.grows];
        const double begin = now;
        for (; now < begin + part.seconds; now += look) {
          const double share = (now - begin) / part.seconds;
          show(meter, part, base, share);
          run.told.push_back(meter.at(now));
          run.times.push_back(now);
        }
        show(meter, part, base, 1);
      }
    }
    meter.line("*process complete");
    meter.settling(true);
    run.told.push_back(meter.at(now));
    run.times.push_back(now);
    run.end = now;
    return run;
  }

  plan_files files() {
    return {[this](const std::string& path) {
              const auto found = sizes_.find(path);
              return found == sizes_.end() ? std::nullopt : std::optional(found->second);
            },
            [this](const std::string& path) { return texts_[path]; }};
  }

  std::map<std::string, double> sizes_{{"/a.m2v", 2e9}, {"/b.m2v", 1e9}};
  std::map<std::string, std::string> texts_{
      {"/config.xml",
       "<dvdauthor dest=\"/dvd\"><vob file=\"/dvd/title1.mpg\"/><vob file=\"/dvd/title2.mpg\"/>"
       "</dvdauthor>"}};

 private:
  void show(run_meter& meter, const made_up_part& part, double base, double share) {
    if (!part.grows.empty())
      sizes_[part.grows] = base + part.bytes * share;
    if (std::string text = part.percent_line; !text.empty()) {
      text.replace(text.find("%1"), 2, std::to_string(static_cast<int>(share * 100)));
      meter.line(text);
    }
  }
};

const std::string script =
    "echo *multiplexing title: 1.....\n\"/bin/mplex.exe\" -f 8 -o \"/dvd/title1.mpg\" \"/a.m2v\"\n"
    "echo *multiplexing title: 2.....\n\"/bin/mplex.exe\" -f 8 -o \"/dvd/title2.mpg\" \"/b.m2v\"\n"
    "echo *authoring title(s).....\n\"/bin/dvdauthor.exe\" -x \"/config.xml\"\n"
    "echo *generating udf iso.....\n\"/bin/mkisofs.exe\" -o \"/dvd.iso\" \"/dvd\"\n"
    "echo *process complete\n";

/// Each kind of work `slower` times as slow as `costs` knows; mplex's streams grow by `grown`.
std::vector<made_up_step> run_of(const work_costs& costs, double slower, double grown = 1.02) {
  const auto seconds = [&](work_kind kind, double bytes) {
    return slower * costs[static_cast<std::size_t>(kind)] * bytes;
  };
  const double a = 2e9 * grown, b = 1e9 * grown;
  const std::string fixing = "STAT: fixing VOBU at 7MB (17/113, %1%)";
  const auto collect = [&](double bytes) {
    return made_up_part{
        seconds(work_kind::collect, bytes), join_path("/dvd", "VIDEO_TS"), bytes, {}};
  };
  const auto fix = [&](double bytes) {
    return made_up_part{seconds(work_kind::fix, bytes), {}, 0, fixing};
  };
  return {
      {"*multiplexing title: 1.....",
       {{seconds(work_kind::multiplex, a), "/dvd/title1.mpg", a, {}}}},
      {"*multiplexing title: 2.....",
       {{seconds(work_kind::multiplex, b), "/dvd/title2.mpg", b, {}}}},
      {"*authoring title(s).....",
       {collect(a), fix(a), {0.25, {}, 0, "STAT: fixed %1 VOBUs"}, collect(b), fix(b)}},
      {"*generating udf iso.....", {{seconds(work_kind::image, a + b), "/dvd.iso", a + b, {}}}},
      {"*reading the disc back.....",
       {{seconds(work_kind::read_back, 2 * (a + b)), {}, 0, "INFO: reading the disc back: %1%"}}}};
}

void expect_never_back_and_100_only_at_the_end(const told_run& run) {
  double before = 0;
  for (const run_whole& whole : run.told) {
    EXPECT_GE(whole.percent, before);
    EXPECT_LT(whole.percent, 100);
    before = whole.percent;
  }
  EXPECT_GT(before, 95);
}

/// The worst error of the time left after ten seconds, as a part of what was really left; of the
/// last seconds two are forgiven.
double worst_error(const told_run& run) {
  double worst = 0;
  for (std::size_t i = 0; i < run.told.size(); ++i) {
    if (run.times[i] < 10)
      continue;
    const double left = run.end - run.times[i];
    const double error = std::abs(run.told[i].seconds_left.value_or(1e9) - left);
    worst = std::max(worst, std::max(0.0, error - 2) / std::max(left, 1.0));
  }
  return worst;
}

TEST_F(MeteredRun, OfAKnownMachineIsForeseen) {
  run_meter meter(script, true, usual_costs(), files());
  const told_run run = play(meter, run_of(usual_costs(), 1));
  expect_never_back_and_100_only_at_the_end(run);
  EXPECT_LT(worst_error(run), 0.1) << "of " << run.end << " s";
  EXPECT_FALSE(run.told[0].seconds_left) << "nothing is known yet";
}

TEST_F(MeteredRun, OfAMachineTwiceAsSlowOrFastIsForeseenAfterTenSeconds) {
  for (const double slower : {2.0, 0.5}) {
    sizes_ = {{"/a.m2v", 4e9}, {"/b.m2v", 2e9}};
    run_meter meter(script, true, usual_costs(), files());
    const told_run run = play(meter, run_of(usual_costs(), slower, 2.04));
    expect_never_back_and_100_only_at_the_end(run);
    EXPECT_LT(worst_error(run), 0.34) << slower << " times as slow: " << run.end << " s";
  }
}

TEST_F(MeteredRun, OfStreamsThatBecomeLargerThanForeseenNeverGoesBack) {
  run_meter meter(script, true, usual_costs(), files());
  expect_never_back_and_100_only_at_the_end(play(meter, run_of(usual_costs(), 1, 1.5)));
}

// A disk takes the first gigabytes at once, and the rest as fast as it is.
TEST_F(MeteredRun, ThatGoesOnFiveTimesAsSlowIsForeseenAgainSoonAfter) {
  const std::string one =
      "echo *generating udf iso.....\n\"/bin/mplex.exe\" -o \"/x\" \"/a.m2v\"\n";
  run_meter meter(one, false, usual_costs(), files());
  const told_run run =
      play(meter, {{"*generating udf iso.....", {{15, "/x", 1.53e9, {}}, {25, "/x", 0.51e9, {}}}}});
  expect_never_back_and_100_only_at_the_end(run);
  for (std::size_t i = 0; i < run.told.size(); ++i) {
    const double left = run.end - run.times[i];
    if (run.times[i] > 29 && left > 5) {
      EXPECT_NEAR(run.told[i].seconds_left.value_or(0) / left, 1, 0.34) << "at " << run.times[i];
    }
  }
}

// The same at the beginning of a run, on a machine of which nothing is known yet.
TEST_F(MeteredRun, WhoseQuickBeginningDoesNotLastIsNotPromisedToEndSoon) {
  run_meter meter(script, true, usual_costs(), files());
  std::vector<made_up_step> steps = run_of(usual_costs(), 1.16);
  steps[0].parts[0].seconds *= 0.6;
  const told_run run = play(meter, steps);
  expect_never_back_and_100_only_at_the_end(run);
  for (std::size_t i = 0; i < run.told.size(); ++i)
    if (const double left = run.end - run.times[i]; run.times[i] >= 10 && left >= 4) {
      EXPECT_NEAR(run.told[i].seconds_left.value_or(0) / left, 1, 0.334) << "at " << run.times[i];
    }
}

// The image is written at once for a while, and then as fast as the disk is.
TEST_F(MeteredRun, WhoseDiskSlowsDownInItsLastTenSecondsIsForeseenSoonAfter) {
  const std::string one =
      "echo *generating udf iso.....\n\"/bin/mplex.exe\" -o \"/x\" \"/a.m2v\"\n";
  run_meter meter(one, false, usual_costs(), files());
  const told_run run =
      play(meter, {{"*generating udf iso.....", {{15, "/x", 1.6e9, {}}, {9, "/x", 0.44e9, {}}}}});
  expect_never_back_and_100_only_at_the_end(run);
  for (std::size_t i = 0; i < run.told.size(); ++i) {
    const double left = run.end - run.times[i];
    if (run.times[i] >= 17.5 && left >= 1) {
      EXPECT_NEAR(run.told[i].seconds_left.value_or(0) / left, 1, 0.34) << "at " << run.times[i];
    }
  }
}

// Another program has the machine's processors for a while; the disk is not slower for it.
TEST_F(MeteredRun, OfAKnownMachineDoesNotTakeOneSlowStepForAllThatFollow) {
  work_costs known = usual_costs();
  known[static_cast<std::size_t>(work_kind::draw)] *= 0.9;
  run_meter meter(script, true, known, files());
  std::vector<made_up_step> steps = run_of(known, 1);
  for (made_up_step& step : steps)
    if (step.line.starts_with("*multiplexing"))
      step.parts[0].seconds *= 2;
  const told_run run = play(meter, steps);
  expect_never_back_and_100_only_at_the_end(run);
  for (std::size_t i = 0; i < run.told.size(); ++i) {
    const double left = run.end - run.times[i];
    if (run.times[i] >= 25 && left >= 2) {
      EXPECT_NEAR(run.told[i].seconds_left.value_or(0) / left, 1, 0.34) << "at " << run.times[i];
    }
  }
}

TEST_F(MeteredRun, CountsTheRemovalOfTheEarlierDiscAsItsLastStep) {
  sizes_["/dvd.earlier/VIDEO_TS"] = 4e9;
  sizes_["/dvd.earlier/image.iso"] = 4e9;
  run_meter meter(script, true, usual_costs(), files(),
                  {"/dvd.earlier/VIDEO_TS", "/dvd.earlier/AUDIO_TS", "/dvd.earlier/image.iso"});
  const told_run run = play(meter, run_of(usual_costs(), 1));
  const run_whole& last = run.told.back();
  EXPECT_EQ(last.name, "removing the earlier disc");
  EXPECT_EQ(last.step, 6);
  EXPECT_EQ(last.count, 6);
  const double foreseen = usual_costs()[static_cast<std::size_t>(work_kind::remove)] * 8e9;
  EXPECT_NEAR(last.seconds_left.value_or(0), foreseen, 0.4);
  meter.settled();
  EXPECT_LT(meter.at(run.end + 2 * foreseen).seconds_left.value_or(9), 0.4);
  const double learned = meter.learned()[static_cast<std::size_t>(work_kind::remove)] * 8e9;
  EXPECT_GT(learned, 1.3 * foreseen);
  EXPECT_LT(learned, 2.1 * foreseen);
}

TEST_F(MeteredRun, NamesTheReturnOfTheEarlierDiscForWhatItIs) {
  sizes_["/dvd.earlier/VIDEO_TS"] = 4e9;
  run_meter meter(script, true, usual_costs(), files(), {"/dvd.earlier/VIDEO_TS"});
  meter.at(0);
  meter.line("*process complete");
  meter.settling(false);
  const run_whole last = meter.at(60);
  EXPECT_EQ(last.name, "putting the earlier disc back");
  EXPECT_EQ(last.step, last.count);
  EXPECT_EQ(last.seconds_left, 0);
  run_meter nothing_to_put_back(script, true, usual_costs(), files());
  nothing_to_put_back.line("*generating udf iso.....");
  nothing_to_put_back.settling(false);
  EXPECT_EQ(nothing_to_put_back.at(60).name, "generating udf iso");
}

TEST_F(MeteredRun, TeachesTheSpeedsOfTheMachine) {
  run_meter meter(script, true, usual_costs(), files());
  play(meter, run_of(usual_costs(), 2));
  const work_costs learned = meter.learned();
  for (const work_kind kind : {work_kind::multiplex, work_kind::collect, work_kind::image}) {
    const double usual = usual_costs()[static_cast<std::size_t>(kind)];
    EXPECT_GT(learned[static_cast<std::size_t>(kind)], usual * 1.6);
    EXPECT_LT(learned[static_cast<std::size_t>(kind)], usual * 2.1);
  }
  EXPECT_EQ(learned[static_cast<std::size_t>(work_kind::cues)],
            usual_costs()[static_cast<std::size_t>(work_kind::cues)]);
  sizes_ = {{"/a.m2v", 2e9}, {"/b.m2v", 1e9}};
  run_meter next(script, true, learned, files());
  EXPECT_LT(worst_error(play(next, run_of(usual_costs(), 2))), 0.25);
}

TEST_F(MeteredRun, NamesTheStepThatWasPrintedLast) {
  run_meter meter(script, true, usual_costs(), files());
  meter.line("***please wait while the titles are multiplexed.");
  EXPECT_EQ(meter.at(0).name, "please wait while the titles are multiplexed");
  EXPECT_EQ(meter.at(0).step, 1);
  EXPECT_EQ(meter.at(0).count, 5);
  meter.line("*multiplexing title: 2.....");
  EXPECT_EQ(meter.at(1).name, "multiplexing title: 2");
  EXPECT_EQ(meter.at(1).step, 2);
  meter.line("*process complete");
  EXPECT_EQ(meter.at(2).step, 5);
  EXPECT_LT(meter.at(2).percent, 100);
}

TEST_F(MeteredRun, FileThatAStepReplacesIsNotTakenForItsWork) {
  run_meter meter(script, false, usual_costs(), files());
  sizes_["/dvd/title1.mpg"] = 2.04e9;  // of an earlier step, about to get another name
  meter.line("*multiplexing title: 1.....");
  meter.at(0.1);
  sizes_["/dvd/title1.mpg"] = 0;
  const double percent = meter.at(0.2).percent;
  EXPECT_LT(percent, 5);
}

TEST_F(MeteredRun, CallsOfWhichNothingIsSeenGoOnByTheClock) {
  std::string many = "echo *generating button images.......\n";
  for (int i = 0; i < 500; ++i)
    many += "\"/bin/gm.exe\" convert\n";
  run_meter meter(many, false, usual_costs(), files());
  const told_run run = play(meter, {{"*generating button images.......", {{30, {}, 0, {}}}}});
  expect_never_back_and_100_only_at_the_end(run);
  EXPECT_LT(worst_error(run), 0.1);
}

TEST(WholeText, SaysStepNameAndTimeLeft) {
  run_whole whole{12.5, 2, 5, "authoring title(s)", 41};
  EXPECT_EQ(whole_text(whole), "step 2 of 5: authoring title(s), about 40 s left");
  whole.seconds_left.reset();
  EXPECT_EQ(whole_text(whole), "step 2 of 5: authoring title(s)");
  EXPECT_EQ(whole_text({}), "");
}

TEST(WholeText, TimesAreRoundedAsTheyAreKnown) {
  const auto text = [](double seconds) { return time_left_text(seconds); };
  EXPECT_EQ(text(0), "a few seconds left");
  EXPECT_EQ(text(4.4), "a few seconds left");
  EXPECT_EQ(text(7), "about 7 s left");
  EXPECT_EQ(text(12), "about 10 s left");
  EXPECT_EQ(text(59), "about 1 min left");
  EXPECT_EQ(text(59.9), "about 1 min left");
  EXPECT_EQ(text(62), "about 1 min left");
  EXPECT_EQ(text(148), "about 2 min 30 s left");
  EXPECT_EQ(text(1234), "about 21 min left");
  EXPECT_EQ(text(3600), "about 1 h left");
  EXPECT_EQ(text(7260), "about 2 h 1 min left");
}

TEST(RunSpeeds, AreWrittenAndReadAgain) {
  work_costs costs = usual_costs();
  costs[0] = 0.125;
  costs[7] = 2.5e-9;
  const work_costs read = parse_costs(costs_text(costs));
  for (std::size_t kind = 0; kind < work_kinds; ++kind)
    EXPECT_DOUBLE_EQ(read[kind], costs[kind]);
}

TEST(RunSpeeds, WhatIsNoTimeOfAMachineIsTheUsualOne) {
  for (const char* const text : {"", "multiplex", "multiplex x\n", "multiplex -1\n",
                                 "multiplex 1e300\n", "multiplex nan\n", "multiplex 0\n"})
    EXPECT_EQ(parse_costs(text), usual_costs()) << text;
  EXPECT_EQ(parse_costs("odd 1\r\nmultiplex 2e-8\r\n")[1], 2e-8);
}

}  // namespace
}  // namespace corvane
