// Lengths of titles for a list of them, from what is known of their files and from their
// beginnings.
#include "examine/title_lengths.h"

#include "platform/files/file_stamp.h"
#include "support/small_streams.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

namespace corvane {
namespace {

class TitleLengths : public testing::Test {
 protected:
  TitleLengths() {
    disc_title title;
    title.is_multiplexed_here = true;
    title.streams = {folder.stored("v.m2v"), folder.stored("s.mp2")};
    disc.titles = {title};
  }
  std::string looked_up() {
    title_lengths lengths(disc, store);
    EXPECT_EQ(lengths.text(1), "") << "no file has been touched yet";
    while (lengths.step())
      continue;
    EXPECT_TRUE(lengths.is_done());
    return lengths.text(1);
  }

  testing_support::temporary_folder folder;
  disc_description disc;
  fact_store store;
};

TEST_F(TitleLengths, AreEstimatedOfTheBeginningsOfTheFiles) {
  folder.add("v.m2v", testing_support::small_video());
  std::string sound;
  for (int frame = 0; frame < 1250; ++frame)  // 30 s
    sound += testing_support::small_sound();
  folder.add("s.mp2", sound);
  EXPECT_EQ(looked_up(), "about 30 s");
  EXPECT_NE(store.find(folder.path("v.m2v"), false), nullptr) << "what was found is kept";
}

TEST_F(TitleLengths, AreExactOnceTheFilesWereRead) {
  for (const char* const name : {"v.m2v", "s.mp2"}) {
    const std::string path = folder.add(name);
    file_facts facts;
    facts.whole = true;
    facts.size = 1;
    if (std::string(name) == "v.m2v") {
      facts.kind = file_kind::video;
      facts.video.emplace();
      facts.video->seconds = 24 * 60 + 9.7;
    } else {
      facts.kind = file_kind::audio;
      facts.audio.emplace();
    }
    store.keep(path, *stamp_of(path), facts);
  }
  EXPECT_EQ(looked_up(), "24:10");
}

TEST_F(TitleLengths, OfMissingFilesAreNotKnown) {
  EXPECT_EQ(looked_up(), "");
}

}  // namespace
}  // namespace corvane
