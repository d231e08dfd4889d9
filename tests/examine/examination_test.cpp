// Files that a project names, read by slices, and what is kept of them from one examination to the
// next.
#include "examine/examination.h"

#include "examine/menu_facts.h"
#include "made_audio.h"
#include "made_video.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>
#include <string>
#include <vector>

namespace corvane {
namespace {

using namespace examine_test;
using testing::ElementsAre;
using testing::IsEmpty;

class Examination : public ::testing::Test {
 protected:
  // A title whose video is missing, so that only its sound is read.
  disc_description disc_with_sound(const std::string& name) const {
    disc_description d;
    d.standard = video_standard::ntsc;
    disc_title t;
    t.is_multiplexed_here = true;
    t.delay = number_of("0");
    t.streams = {folder_.stored("none.m2v"), folder_.stored(name)};
    d.titles.push_back(t);
    return d;
  }

  std::vector<std::string> found(const disc_description& d) {
    examination e(d, examination::depth::whole_files, store_);
    while (e.step_beginnings(1000)) {
    }
    read_in_last_ = e.bytes_to_read();
    while (e.step(1000)) {
    }
    std::vector<std::string> rules;
    for (const finding& f : e.findings())
      rules.push_back(f.rule);
    return rules;
  }

  static std::string stray() {
    return times(5000, mpeg_frame({})) + "x" + times(100, mpeg_frame({}));
  }

  testing_support::temporary_folder folder_;
  fact_store store_;
  std::uint64_t read_in_last_ = 0;
};

TEST_F(Examination, BeginningsDoNotTellWhatOnlyTheWholeFileTells) {
  folder_.add("a.mp2", stray());
  examination beginnings(disc_with_sound("a.mp2"), examination::depth::beginnings, store_);
  EXPECT_FALSE(beginnings.step(10'000));
  EXPECT_EQ(beginnings.bytes_to_read(), 0u);
  ASSERT_EQ(beginnings.findings().size(), 1u);
  EXPECT_EQ(beginnings.findings()[0].rule, "file-missing");
  EXPECT_THAT(found(disc_with_sound("a.mp2")), ElementsAre("file-missing", "audio-gap"));
}

TEST_F(Examination, WrongKindShowsInTheBeginning) {
  folder_.add("a.mp2", times(5000, mpeg_frame({.layer = 3})));
  examination beginnings(disc_with_sound("a.mp2"), examination::depth::beginnings, store_);
  EXPECT_FALSE(beginnings.step(10'000));
  ASSERT_EQ(beginnings.findings().size(), 2u);
  EXPECT_EQ(beginnings.findings()[1].rule, "audio-kind");
}

TEST_F(Examination, BeginningsAreReadOneByOneAndBeforeTheFiles) {
  disc_description d = disc_with_sound("1.mp2");
  for (int i = 1; i <= 8; ++i) {
    const std::string name = std::to_string(i) + ".mp2";
    folder_.add(name, times(5000, mpeg_frame({.layer = 3})));
    if (i > 1)
      d.titles[0].streams.push_back(folder_.stored(name));
  }
  examination e(d, examination::depth::whole_files, store_);
  EXPECT_THAT(e.findings(), IsEmpty()) << "nothing was read yet";
  int slices = 0;
  std::size_t before = 0;
  for (bool more = true; more; ++slices) {
    more = e.step_beginnings(0);
    EXPECT_EQ(e.current_file(), "");
    EXPECT_LE(e.findings().size(), before + 2);
    before = e.findings().size();
  }
  EXPECT_EQ(slices, 9) << "the video and 8 files of sound";
  EXPECT_EQ(e.bytes_read(), 0u);
  EXPECT_GT(e.bytes_to_read(), 0u);
  EXPECT_TRUE(e.step(0));
  EXPECT_GT(e.bytes_read(), 0u);
}

TEST_F(Examination, AnotherExaminationGoesOnWithTheBeginningsThatAreKnown) {
  const std::string path = folder_.add("a.mp2", times(5000, mpeg_frame({.layer = 3})));
  folder_.add("b.mp2", times(5000, mpeg_frame({})));
  disc_description d = disc_with_sound("a.mp2");
  d.titles[0].streams.push_back(folder_.stored("b.mp2"));
  {
    examination dropped(d, examination::depth::beginnings, store_);
    EXPECT_TRUE(dropped.step(0));
    EXPECT_TRUE(dropped.step(0));
  }
  EXPECT_NE(store_.find(path, false), nullptr);
  EXPECT_EQ(store_.find(folder_.path("b.mp2"), false), nullptr);
}

TEST_F(Examination, AKnownFileIsNotReadAgain) {
  const std::string bytes = stray();
  folder_.add("a.mp2", bytes);
  found(disc_with_sound("a.mp2"));
  EXPECT_EQ(read_in_last_, bytes.size());
  EXPECT_THAT(found(disc_with_sound("a.mp2")), ElementsAre("file-missing", "audio-gap"));
  EXPECT_EQ(read_in_last_, 0u);
}

TEST_F(Examination, AFileOfAnotherSizeOrTimeIsReadAgain) {
  const std::string path = folder_.add("a.mp2", stray());
  found(disc_with_sound("a.mp2"));
  folder_.add("a.mp2", times(5000, mpeg_frame({})));
  EXPECT_THAT(found(disc_with_sound("a.mp2")), ElementsAre("file-missing"));
  EXPECT_GT(read_in_last_, 0u);
  const auto changed = std::filesystem::last_write_time(path_of(path));
  std::filesystem::last_write_time(path_of(path), changed - std::chrono::hours(1));
  found(disc_with_sound("a.mp2"));
  EXPECT_GT(read_in_last_, 0u);
}

TEST_F(Examination, AFileThatComesBackIsNoLongerMissing) {
  EXPECT_THAT(found(disc_with_sound("a.mp2")), ElementsAre("file-missing", "file-missing"));
  folder_.add("a.mp2", times(5000, mpeg_frame({})));
  EXPECT_THAT(found(disc_with_sound("a.mp2")), ElementsAre("file-missing"));
}

TEST_F(Examination, FoldersAndEmptyFilesAreNoStreams) {
  std::filesystem::create_directory(path_of(folder_.path("a.mp2")));
  EXPECT_THAT(found(disc_with_sound("a.mp2")), ElementsAre("file-missing", "file-missing"));
  folder_.add("b.mp2", "");
  EXPECT_THAT(found(disc_with_sound("b.mp2")), ElementsAre("file-missing", "file-empty"));
}

TEST_F(Examination, AFileNamedTwiceIsReadOnce) {
  const std::string bytes = stray();
  folder_.add("a.mp2", bytes);
  disc_description d = disc_with_sound("a.mp2");
  d.titles[0].streams.push_back(d.titles[0].streams[1]);
  d.titles.push_back(d.titles[0]);
  EXPECT_EQ(files_of(d).size(), 2u);
  found(d);
  EXPECT_EQ(read_in_last_, bytes.size());
}

TEST_F(Examination, AChapterTimeThatIsNoneIsToldOnce) {
  folder_.add("a.mp2", times(5000, mpeg_frame({})));
  disc_description d = disc_with_sound("a.mp2");
  d.titles[0].chapters = {time_of("0"), time_of("x")};
  EXPECT_THAT(found(d), ElementsAre("file-missing", "chapter-time-unreadable"));
}

/// A menu video of a group, 4:3 (2) or 16:9 (3).
std::string menu_video(int aspect_code) {
  made_sequence sequence;
  sequence.height = 480;
  sequence.aspect_code = aspect_code;
  sequence.rate_code = 4;
  return video_maker(sequence).whole_group("IPP").end().bytes;
}

/// A disc of these menus, each with thirteen buttons.
disc_description with_menus(const std::vector<std::string>& stored) {
  disc_description d;
  d.standard = video_standard::ntsc;
  for (const std::string& file : stored) {
    disc_menu m;
    m.files = {file, ""};
    m.spu_begin = m.spu_end = time_of("0");
    for (int i = 0; i < 13; ++i)
      m.buttons.push_back({number_of("100"),
                           number_of(std::to_string(30 + i * 30)),
                           number_of("300"),
                           number_of(std::to_string(50 + i * 30)),
                           command_of("exit"),
                           {"white", false},
                           {"grey", false}});
    d.menus.push_back(std::move(m));
  }
  return d;
}

TEST_F(Examination, ProportionsOfMenusShowInTheBeginningOfTheirFiles) {
  const auto told_of_buttons = [this](const disc_description& d, examination::depth depth) {
    examination e(d, depth, store_);
    while (e.step(1000)) {
    }
    std::vector<std::string> places;
    for (const finding& f : e.findings())
      if (f.rule == "menu-too-many-wide-buttons")
        places.push_back(place_text(f));
    return places;
  };
  folder_.add("narrow.m2v", menu_video(2));
  folder_.add("wide.m2v", menu_video(3));
  const disc_description wide = with_menus({folder_.stored("wide.m2v")}),
                         narrow = with_menus({folder_.stored("narrow.m2v")});
  for (const auto depth : {examination::depth::beginnings, examination::depth::whole_files}) {
    EXPECT_THAT(told_of_buttons(wide, depth), ElementsAre("menu 1"));
    EXPECT_THAT(told_of_buttons(narrow, depth), IsEmpty());
  }
}

TEST_F(Examination, FactsOfMenusAreReadUpToTheFirstThatNamesItsProportionsAndKept) {
  folder_.add("square.m2v", menu_video(1));
  const std::string wide = folder_.add("wide.m2v", menu_video(3));
  folder_.add("narrow.m2v", menu_video(2));
  const disc_description d = with_menus({folder_.stored("gone.m2v"), folder_.stored("square.m2v"),
                                         folder_.stored("wide.m2v"), folder_.stored("narrow.m2v")});
  const std::vector<menu_facts> facts = facts_of_first_menus(d, store_);
  ASSERT_EQ(facts.size(), 3u);
  EXPECT_FALSE(facts[0].is_wide);
  EXPECT_FALSE(facts[1].is_wide);
  EXPECT_EQ(facts[2].is_wide, true);
  EXPECT_NE(store_.find(wide, false), nullptr);
  folder_.add("wide.m2v", menu_video(2) + " ");
  EXPECT_EQ(facts_of_first_menus(d, store_).at(2).is_wide, false) << "the file is another one";
}

TEST_F(Examination, ErrorsStandBeforeWarningsAndNotes) {
  std::vector<finding> findings(3);
  findings[0].severity = finding_severity::note;
  findings[1].severity = finding_severity::error;
  findings[2].severity = finding_severity::warning;
  sort_by_severity(findings);
  EXPECT_EQ(findings[0].severity, finding_severity::error);
  EXPECT_EQ(findings[1].severity, finding_severity::warning);
}

}  // namespace
}  // namespace corvane
