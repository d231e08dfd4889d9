#include "import/import_bits.h"

#include "import/disc_budget.h"
#include "made_source.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using import_test::made_disc_video;
using import_test::made_sound;
using import_test::made_source;
using import_test::made_video;

import_job film_of(double seconds, bool ready = false) {
  source_stream video = ready ? made_disc_video() : made_video(1920, 1080, {30, 1});
  video.length = seconds;
  source_facts facts = made_source(video, made_sound("ac3"));
  facts.bytes = 1'000'000'000;
  import_job job;
  job.source = "/films/film.mkv";
  job.plan = import_plan_for(facts, {}, {}, {}, video_standard::ntsc);
  return job;
}

TEST(ImportBits, FillTheDisc) {
  for (const double minutes : {90.0, 150.0}) {
    std::vector<import_job> jobs = {film_of(minutes * 20), film_of(minutes * 40)};
    ASSERT_FALSE(settle_bits(jobs, {}, 0));
    EXPECT_EQ(jobs[0].bits.mean, jobs[1].bits.mean);
    const double part =
        static_cast<double>(disc_bytes_of(jobs)) / static_cast<double>(single_layer_bytes);
    EXPECT_LE(part, 0.991);
    EXPECT_GE(part, 0.98);
  }
}

TEST(ImportBits, WhatIsCopiedTakesItsPartOfTheRoom) {
  std::vector<import_job> alone = {film_of(7200)}, beside = {film_of(7200), film_of(1800, true)};
  ASSERT_FALSE(settle_bits(alone, {}, 0));
  ASSERT_FALSE(settle_bits(beside, {}, 0));
  // A gigabyte and half an hour of sound: 1.2 Mb/s of two hours.
  EXPECT_NEAR(static_cast<double>(alone[0].bits.mean - beside[0].bits.mean), 1.17e6, 5e4);
}

TEST(ImportBits, ARateThatIsChosenIsKeptWithinWhatPlayersRead) {
  import_choices choices;
  choices.quality = import_quality::mean_rate;
  choices.mean_rate = 5'000'000;
  std::vector<import_job> jobs = {film_of(0)};
  ASSERT_FALSE(settle_bits(jobs, choices, 0));
  EXPECT_EQ(jobs[0].bits.mean, 5'000'000);
  EXPECT_EQ(jobs[0].bits.peak, 9'000'000);
  choices.mean_rate = 20'000'000;
  ASSERT_FALSE(settle_bits(jobs, choices, 0));
  EXPECT_EQ(jobs[0].bits.mean, 9'000'000);
}

TEST(ImportBits, WhatCannotBeSharedIsSaid) {
  std::vector<import_job> jobs = {film_of(7200)};
  const failure full = settle_bits(jobs, {}, single_layer_bytes);
  ASSERT_TRUE(full);
  EXPECT_NE(full->find("not enough room on the disc"), std::string::npos);
  jobs.push_back(film_of(7200));
  jobs[1].plan.seconds = 0;
  const failure unknown = settle_bits(jobs, {}, 0);
  ASSERT_TRUE(unknown);
  EXPECT_NE(unknown->find("Nobody knows how long"), std::string::npos);
  // Nothing to encode needs no room for it.
  std::vector<import_job> copied = {film_of(0, true)};
  EXPECT_FALSE(settle_bits(copied, {}, 0));
}

}  // namespace
}  // namespace corvane
