// The look at the material before a run: when it asks, and what it does with the answer.
#include "authoring/material_check.h"

#include "platform/files/paths.h"
#include "support/scripted_prompts.h"
#include "support/small_streams.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

namespace corvane {
namespace {

using testing::ElementsAre;
using testing::Field;
using testing::IsEmpty;
using testing_support::scripted_prompts;
using testing_support::small_sound;
using testing_support::small_video;

class MaterialCheck : public ::testing::Test {
 protected:
  disc_description disc() const {
    disc_description d;
    d.standard = video_standard::ntsc;
    disc_title t;
    t.is_multiplexed_here = true;
    t.delay = number_of("0");
    t.streams = {folder_.stored("a.m2v"), folder_.stored("a.mp2")};
    d.titles.push_back(t);
    return d;
  }
  void make(const std::string& video) const {
    folder_.add("a.m2v", video);
    folder_.add("a.mp2", small_sound());
  }
  material_answer look(std::optional<bool> go_on = {}) {
    scripted_prompts ask;
    if (go_on) {
      examination e(disc(), examination::depth::whole_files, other_facts_);
      while (e.step(1000)) {
      }
      ask.expect_findings(scripted_prompts::words_of(question_about(e.findings())), *go_on);
    }
    return look_at_material(disc(), {}, equipment_, ask);
  }

  testing_support::temporary_folder folder_;
  fact_store facts_, other_facts_;
  material_equipment equipment_{&facts_};
  const material_answer go_on_{}, stop_{false, false};
};

TEST_F(MaterialCheck, CleanMaterialIsNotAskedAbout) {
  make(small_video());
  EXPECT_EQ(look(), go_on_);
}

TEST_F(MaterialCheck, ErrorsStopUnlessTheUserWantsToGoOn) {
  make(small_video(video_standard::pal));
  EXPECT_EQ(look(false), stop_);
  const material_answer in_spite = look(true);
  EXPECT_TRUE(in_spite.go_on);
  EXPECT_FALSE(in_spite.unseen);
  EXPECT_THAT(in_spite.accepted, ElementsAre(Field(&finding::rule, "video-standard")));
}

TEST_F(MaterialCheck, WarningsAreAskedAboutOnce) {
  make(small_video(video_standard::ntsc, 1));
  EXPECT_EQ(look(false), stop_);
  const material_answer told = look(true);
  EXPECT_TRUE(told.go_on);
  EXPECT_THAT(told.told, ElementsAre(Field(&finding::rule, "video-aspect-square")));
  EXPECT_THAT(told.accepted, IsEmpty());
}

TEST_F(MaterialCheck, NotesAreNotAskedAbout) {
  make(small_video());
  folder_.add("a.mp2", small_sound() + small_sound() + small_sound().substr(0, 100));
  EXPECT_EQ(look(), go_on_);
}

TEST_F(MaterialCheck, WithoutAStoreNothingIsLookedAt) {
  equipment_.facts = nullptr;
  EXPECT_EQ(look(), go_on_);
}

TEST_F(MaterialCheck, ALookThatIsSkippedStillTellsWhatBeginningsTell) {
  make(small_video(video_standard::pal));
  equipment_.examine = [](examination&) { return look_end::skipped; };
  const material_answer in_spite = look(true);
  EXPECT_TRUE(in_spite.go_on);
  EXPECT_TRUE(in_spite.unseen);
  EXPECT_THAT(in_spite.accepted, ElementsAre(Field(&finding::rule, "video-standard")));
}

TEST_F(MaterialCheck, ALookThatIsStoppedAsksNothing) {
  make(small_video(video_standard::pal));
  equipment_.examine = [](examination&) { return look_end::stopped; };
  EXPECT_EQ(look(), (material_answer{false, true, true}));
}

TEST_F(MaterialCheck, KnownFilesNeedNoProgress) {
  make(small_video());
  int examinations = 0;
  equipment_.examine = [&](examination& e) {
    ++examinations;
    while (e.step(1000)) {
    }
    return look_end::whole;
  };
  EXPECT_EQ(look(), go_on_);
  EXPECT_EQ(look(), go_on_);
  EXPECT_EQ(examinations, 1);
}

}  // namespace
}  // namespace corvane
