// A video that is looked through while it is written.
#include "import/followed_video.h"

#include "support/small_streams.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <fstream>
#include <string>
#include <thread>

namespace corvane {
namespace {

class FollowedVideo : public testing::Test {
 protected:
  std::string path() const { return folder.path("film.m2v.part"); }
  /// Several pictures, with as many bytes as are read in several pieces.
  static std::string long_video() {
    std::string bytes;
    while (bytes.size() < 600'000)
      bytes += testing_support::small_video();
    return bytes;
  }
  static void wait() { std::this_thread::sleep_for(std::chrono::milliseconds(70)); }

  testing_support::temporary_folder folder;
};

TEST_F(FollowedVideo, TellsTheSameAsAScanOfTheWholeFile) {
  const std::string bytes = long_video();
  followed_video video(path());
  wait();  // there is no file yet
  {
    std::ofstream out(path(), std::ios::binary);
    for (std::size_t at = 0; at < bytes.size(); at += 150'001) {
      out << bytes.substr(at, 150'001) << std::flush;
      wait();
    }
  }
  const file_facts facts = video.facts();
  file_scan scan(path());
  while (scan.read_slice()) {
  }
  ASSERT_TRUE(facts.video && scan.facts().video);
  EXPECT_TRUE(facts.whole);
  EXPECT_EQ(facts.kind, file_kind::video);
  EXPECT_EQ(facts.size, bytes.size());
  EXPECT_EQ(facts.video->pictures, scan.facts().video->pictures);
  EXPECT_EQ(facts.video->seconds, scan.facts().video->seconds);
  EXPECT_GT(facts.video->seconds, 0);
}

TEST_F(FollowedVideo, WhatIsWrittenBeforeTheEndIsToldIsRead) {
  followed_video video(path());
  wait();
  folder.add("film.m2v.part", long_video());
  EXPECT_EQ(video.facts().size, long_video().size());
}

TEST_F(FollowedVideo, AFileThatIsNotThereCannotBeRead) {
  followed_video video(path());
  const file_facts facts = video.facts();
  EXPECT_EQ(facts.kind, file_kind::unreadable);
  EXPECT_NE(facts.why_unreadable, "");
}

TEST_F(FollowedVideo, OfWhatIsNoVideoOnlyTheSizeIsKnown) {
  folder.add("film.m2v.part", "stream");
  const file_facts facts = followed_video(path()).facts();
  EXPECT_EQ(facts.kind, file_kind::unknown);
  EXPECT_EQ(facts.size, 6u);
  EXPECT_FALSE(facts.video);
}

TEST_F(FollowedVideo, NothingIsToldOfAFileThatWasGivenUp) {
  folder.add("film.m2v.part", long_video());
  followed_video video(path());
  video.give_up();
  const file_facts facts = video.facts();
  EXPECT_FALSE(facts.video);
  EXPECT_FALSE(facts.whole);
}

}  // namespace
}  // namespace corvane
