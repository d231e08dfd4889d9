// The preview of text subtitles, drawn by the real spumux.
#include "support/environment_variable.h"
#include "text_studio.h"

#include <array>
#include <csignal>
#include <fstream>
#include <map>
#include <vector>

namespace corvane::disc {
namespace {

using state = subtitle_preview::state;

constexpr const char* two_cues =
    "1\n00:00:01,000 --> 00:00:02,500\nA first line\n\n"
    "2\n01:50:00,500 --> 01:50:03,000\nThe second one\nhas two\n\n";

TEST(SubtitlePreview, NothingIsDrawnBeforeItIsWanted) {
  text_studio studio;
  EXPECT_EQ(studio.preview().poll(), state::idle);
}

TEST(SubtitlePreview, ACueHasItsTimesAndTextInTheBottomThird) {
  text_studio studio;
  const drawn_cue cue = studio.drawn(two_cues);
  EXPECT_EQ(cue.number, 1);
  EXPECT_NEAR(cue.begin, 1, 0.02);
  EXPECT_NEAR(cue.end, 2.5, 0.04);
  EXPECT_EQ(cue.width, 720);
  EXPECT_EQ(cue.height, 480);
  const seen_area area = seen(cue);
  EXPECT_GE(area.y0, 320);
  EXPECT_LT(area.x0, 360);
  EXPECT_GT(area.x1, 360);
}

TEST(SubtitlePreview, ALateCueIsThereAtOnce) {
  text_studio studio;
  const auto begin = std::chrono::steady_clock::now();
  const drawn_cue cue =
      studio.drawn(text_studio::request(studio.folder().add("a.srt", two_cues), 2));
  EXPECT_NEAR(cue.begin, 6600.5, 0.02);
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(2));
}

TEST(SubtitlePreview, ANumberPastTheLastCueIsAReason) {
  text_studio studio;
  EXPECT_EQ(studio.refused(text_studio::request(studio.folder().add("a.srt", two_cues), 3)),
            "\"a.srt\" cannot be shown: it has 2 subtitles, no number 3.");
}

TEST(SubtitlePreview, CuesAreNumberedByTheirTimes) {
  text_studio studio;
  const std::string file = studio.folder().add(
      "a.srt",
      "1\n00:00:05,000 --> 00:00:07,000\nlater\n\n2\n00:00:01,000 --> 00:00:02,500\nfirst\n\n");
  EXPECT_NEAR(studio.drawn(text_studio::request(file, 1)).begin, 1, 0.02);
  EXPECT_NEAR(studio.drawn(text_studio::request(file, 2)).begin, 5, 0.02);
  EXPECT_NEAR(studio.drawn(text_studio::request(file, 1)).begin, 1, 0.02);
}

TEST(SubtitlePreview, AFileThatHasChangedIsDrawnAnew) {
  text_studio studio;
  const auto before = studio.drawn(two_cues, "a.srt").rgba;
  EXPECT_TRUE(studio.drawn("1\n00:00:01,000 --> 00:00:02,000\nOther\n\n", "a.srt").rgba != before);
}

TEST(SubtitlePreview, OfAPalTitleIsAPalFrame) {
  text_studio studio;
  const std::string file = studio.folder().add("a.srt", two_cues);
  const drawn_cue cue = studio.drawn(text_studio::request(file, 1, "PAL"));
  EXPECT_EQ(cue.height, 576);
  EXPECT_EQ(cue.rgba.size(), std::size_t{720} * 576 * 4);
  EXPECT_GE(seen(cue).y0, 384);
}

TEST(SubtitlePreview, TextIsWhiteWithABlackOutlineOnNothing) {
  text_studio studio;
  const drawn_cue cue = studio.drawn(two_cues);
  std::map<std::array<int, 4>, int> dots;
  for (std::size_t i = 0; i < cue.rgba.size(); i += 4)
    ++dots[{cue.rgba[i], cue.rgba[i + 1], cue.rgba[i + 2], cue.rgba[i + 3]}];
  ASSERT_EQ(dots.size(), 3u);
  EXPECT_GT((dots[{0, 0, 0, 0}]), 720 * 400);
  EXPECT_GT((dots[{0, 0, 0, 255}]), 100);
  EXPECT_GT((dots[{255, 255, 255, 255}]), 100);
}

TEST(SubtitlePreview, SettingsThatWouldBreakTheControlFileAreAReason) {
  text_studio studio;
  preview_request r = text_studio::request(studio.folder().add("a.srt", two_cues));
  r.settings[subtitle_field::left_margin] = "wide";
  EXPECT_EQ(studio.refused(r),
            "\"a.srt\" cannot be shown: its settings have the left margin \"wide\", which is not a "
            "number.");
  r = text_studio::request(r.file);
  r.settings[subtitle_field::character_set] = "\" image=\"x";
  EXPECT_EQ(
      studio.refused(r),
      "\"a.srt\" cannot be shown: its settings have the character set \"\" image=\"x\", which "
      "contains a quote.");
}

TEST(SubtitlePreview, TextThatWillBeMissingOnTheDiscIsTold) {
  text_studio studio;
  preview_request r = text_studio::request(studio.folder().add("a.srt", two_cues));
  subtitle_preview preview(studio.app(), {});
  EXPECT_EQ(preview.missing(), "");
  preview.want(r);
  ASSERT_EQ(text_studio::settle(preview), state::ready) << preview.reason();
  EXPECT_EQ(preview.missing(), "");
  r.settings[subtitle_field::bottom_margin] = "470";
  preview.want(r);
  ASSERT_EQ(text_studio::settle(preview), state::ready) << preview.reason();
  for (int i = 0; i < 100 && preview.missing().empty(); ++i) {  // it may come after the cue
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    preview.poll();
  }
  EXPECT_EQ(preview.missing(),
            "lines of its text are missing, since they do not fit on the screen");
}

TEST(SubtitlePreview, AToolThatIsMissingIsAReason) {
  text_studio studio;
  std::filesystem::remove(path_of(tool_path(studio.app(), "spumux")));
  EXPECT_EQ(studio.refused(two_cues, "a.srt"),
            "\"a.srt\" cannot be shown: spumux, which draws it, is not installed.");
}

/// A program folder whose spumux hangs, and temporary files in a folder of the test's own.
class HangingSpumux : public testing::Test {
 protected:
  HangingSpumux() {
    make_folders(temporary_);
    const std::string tool = tool_path(studio_.app(), "spumux");
    std::filesystem::remove(path_of(tool));
    std::ofstream(tool) << "#!/bin/sh\necho $$ >>" << pids_ << "\nexec sleep 600\n";
    std::filesystem::permissions(path_of(tool), std::filesystem::perms::all);
  }

  preview_request request(const std::string& name) {
    return text_studio::request(studio_.folder().add(name, two_cues));
  }
  /// Process numbers of those that were started, once there are `count`.
  std::vector<int> started(std::size_t count) {
    std::vector<int> found;
    const auto until = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (found.size() < count && std::chrono::steady_clock::now() < until) {
      std::this_thread::sleep_for(std::chrono::milliseconds(5));
      std::ifstream file(pids_);
      found.clear();
      for (int pid = 0; file >> pid;)
        found.push_back(pid);
    }
    EXPECT_EQ(found.size(), count);
    return found;
  }
  /// Whether it has ended, which may take the system a moment.
  static bool ends(int pid) {
    for (int i = 0; i < 500; ++i) {
      if (!runs(pid))
        return true;
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
  }
  static bool runs(int pid) { return ::kill(pid, 0) == 0; }

  text_studio studio_;
  std::string temporary_ = studio_.folder().path("tmp"), pids_ = studio_.folder().path("pids");
  const testing_support::environment_variable folder_of_ours_{"TMPDIR", temporary_};
};

TEST_F(HangingSpumux, IsEndedAfterAWhileAndAReason) {
  subtitle_preview preview(studio_.app(), {}, std::chrono::milliseconds(300));
  preview.want(request("a.srt"));
  const int pid = started(1).at(0);
  EXPECT_EQ(text_studio::settle(preview), state::failed);
  EXPECT_EQ(preview.reason(), "\"a.srt\" cannot be shown: spumux did not finish drawing it.");
  EXPECT_TRUE(ends(pid));
}

TEST_F(HangingSpumux, IsEndedWhenAnotherCueIsWanted) {
  subtitle_preview preview(studio_.app(), {});
  preview.want(request("a.srt"));
  EXPECT_EQ(preview.poll(), state::drawing);
  const int first = started(1).at(0);
  preview.want(request("b.srt"));
  const int second = started(2).at(1);
  EXPECT_TRUE(ends(first));
  EXPECT_TRUE(runs(second));
}

TEST_F(HangingSpumux, IsEndedWithThePreviewWhichLeavesNoFiles) {
  int pid = 0;
  {
    subtitle_preview preview(studio_.app(), {});
    preview.want(request("a.srt"));
    pid = started(1).at(0);
    EXPECT_FALSE(std::filesystem::is_empty(temporary_));
  }
  EXPECT_TRUE(ends(pid));
  EXPECT_TRUE(std::filesystem::is_empty(temporary_));
}

}  // namespace
}  // namespace corvane::disc
