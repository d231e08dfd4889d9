#include "import/import_speeds.h"

#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

/// An hour of PAL in two passes.
import_job film(const std::string& codec) {
  import_job job;
  job.plan.seconds = 3600;
  job.plan.video.codec = codec;
  job.plan.video.size = {1920, 1080};
  job.plan.video.work.geometry.disc = {704, 576};
  job.plan.video.work.rate = {25, 1};
  job.bits.quality = import_quality::mean_rate;
  return job;
}

import_job copy_of(std::int64_t bytes) {
  import_job job;
  job.plan.video.fate = stream_fate::copied;
  job.plan.source_bytes = bytes;
  return job;
}

TEST(ImportSpeeds, WorkIsThatOfBothPasses) {
  import_job job = film("h264");
  const double both = work_of_import(job);
  EXPECT_NEAR(both, 2 * 90000 * (704 * 576 + 0.2 * 1920 * 1080), 1);
  job.bits.quality = import_quality::constant;
  EXPECT_NEAR(work_of_import(job), both / 2, 1);
  EXPECT_EQ(work_of_import(copy_of(5000)), 5000);
}

TEST(ImportSpeeds, WithoutAnyIsALikelyGuess) {
  const double guess = expected_seconds(film("h264"), {});
  EXPECT_GT(guess, 300);
  EXPECT_LT(guess, 3600);
  EXPECT_LT(expected_seconds(copy_of(4'000'000'000), {}), 60);
}

TEST(ImportSpeeds, ThoseOfEarlierImportsCount) {
  import_speeds speeds;
  learn_speed(speeds, film("hevc"), 2000);
  EXPECT_NEAR(expected_seconds(film("hevc"), speeds), 2000, 1);
  learn_speed(speeds, film("hevc"), 1000);
  EXPECT_NEAR(expected_seconds(film("hevc"), speeds), 1500, 1);
  learn_speed(speeds, film("mpeg4"), 600);
  // Of a kind that is not known, the slowest is expected; copies are nothing like them.
  EXPECT_NEAR(expected_seconds(film("av1"), speeds), 1500, 1);
  EXPECT_LT(expected_seconds(copy_of(4'000'000'000), speeds), 60);
  learn_speed(speeds, film("mpeg4"), 0.5);
  EXPECT_NEAR(expected_seconds(film("mpeg4"), speeds), 600, 1);
}

TEST(ImportSpeeds, AreKeptAsText) {
  const import_speeds speeds = {{"copy", 3e-9}, {"h264", 2.125e-8}};
  EXPECT_EQ(import_speeds_text(speeds), "copy 3.000e-09\nh264 2.125e-08\n");
  EXPECT_EQ(parse_import_speeds(import_speeds_text(speeds)), speeds);
  EXPECT_EQ(parse_import_speeds("h264 fast\nav1 5000\n 1e-8\nvp9 1e-8"),
            (import_speeds{{"vp9", 1e-8}}));
}

TEST(ImportSpeeds, StandInAFileOfTheProgramFolder) {
  const testing_support::temporary_folder app;
  EXPECT_EQ(read_import_speeds(app.path()), import_speeds{});
  app.add("import-speeds.txt", "h264 1e-8\n");
  EXPECT_EQ(read_import_speeds(app.path()), (import_speeds{{"h264", 1e-8}}));
  app.add("import-speeds.txt", "h264 1e-8\n" + std::string(5000, 'x'));
  EXPECT_EQ(read_import_speeds(app.path()), import_speeds{});
}

TEST(ImportSpeeds, DurationsAreInWords) {
  EXPECT_EQ(duration_text(1500), "about 25 min");
  EXPECT_EQ(duration_text(2), "a few seconds");
}

}  // namespace
}  // namespace corvane
