// What stays in the main window of a run that has ended.
#include "authoring/last_disc.h"

#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

using testing_support::temporary_folder;

TEST(LastDisc, NamesTheFolderItsSizeAndTheImage) {
  temporary_folder folder;
  folder.add("dvd/VIDEO_TS/VTS_01_1.VOB", std::string(14'000'000, 'x'));
  folder.add("dvd/VIDEO_TS/VIDEO_TS.IFO", std::string(1'000'000, 'x'));
  const std::string out = folder.path("dvd");
  last_disc disc = look_at_last_disc(out, true, run_outcome::success);
  EXPECT_EQ(disc.text, "Ready: " + out + ", 0.02 GB");
  EXPECT_TRUE(disc.is_there);
  EXPECT_EQ(disc.to_play(), out);
  const std::string image = folder.add("dvd.iso");
  disc = look_at_last_disc(out, true, run_outcome::success);
  EXPECT_EQ(disc.text, "Ready: " + out + ", 0.02 GB, image " + image);
  EXPECT_EQ(disc.to_play(), image);
  EXPECT_EQ(look_at_last_disc(out, false, run_outcome::success).image, "") << "of another run";
}

TEST(LastDisc, OfARunThatWentWrongIsNoneToPlay) {
  temporary_folder folder;
  folder.add("dvd/VIDEO_TS/VIDEO_TS.IFO");
  const std::string out = folder.path("dvd");
  EXPECT_EQ(look_at_last_disc(out, true, run_outcome::failed).text,
            "The run failed: there is no new disc in " + out);
  EXPECT_EQ(look_at_last_disc(out, true, run_outcome::stopped).text,
            "The run was stopped: there is no new disc in " + out);
  EXPECT_FALSE(look_at_last_disc(out, true, run_outcome::failed).is_there);
}

}  // namespace
}  // namespace corvane
