// Text subtitles on discs that corvane-author made, read back: streams, languages, times, and every
// dot of the first picture against the preview's.
#include "platform/files/paths.h"
#include "runner/run_files.h"
#include "studio.h"
#include "text_studio.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace corvane::disc {
namespace {

using testing::HasSubstr;

constexpr double frame = 1001.0 / 30000;

constexpr const char* english = "1\n00:00:01,500 --> 00:00:03,000\nHello, disc!\n\n";
constexpr const char* german = "1\n00:00:02,000 --> 00:00:04,000\nGr\xFC\xDF Gott\nund mehr\n\n";

const std::string row = "center,bottom,60,60,30,30,28.0,dejavusans.ttf,720,478,29.97,ISO-8859-1";

/// A settings row in which alignments and font are other ones.
std::string aligned(const std::string& horizontal, const std::string& vertical,
                    const std::string& left_margin = "60",
                    const std::string& font = "dejavusans.ttf") {
  return horizontal + "," + vertical + "," + left_margin + ",60,30,30,28.0," + font +
         ",720,478,29.97,ISO-8859-1";
}

class SubtitledDisc : public testing::Test {
 protected:
  /// A title with these subtitles and settings rows.
  project subtitled(const std::vector<std::string>& texts, const std::string& options) {
    project p = short_project();
    p.subtitledata[0] = "<none>";
    for (std::size_t i = 0; i < texts.size(); ++i) {
      const std::string name = "work/text" + std::to_string(i + 1) + ".srt";
      files_.push_back(s_.folder().add(name, texts[i]));
      p.subtitledata[0] = with_subtitle(p.subtitledata[0], stored_from_native(files_.back()));
    }
    p.subtitleoptions[0] = options;
    return p;
  }

  /// The first cue of the one subtitle drawn with this settings row.
  drawn_cue previewed(const std::string& settings_row) {
    text_studio preview;
    return preview.drawn({files_[0], parse_subtitle_settings(settings_row), "NTSC", 1});
  }

  /// The title of a disc with one subtitle drawn with this settings row.
  title authored(const std::string& settings_row, const char* text = english) {
    const contents disc = s_.authored(subtitled({text}, settings_row + "|"));
    EXPECT_EQ(disc.titles.size(), 1u);
    return disc.titles.empty() ? title() : disc.titles[0];
  }

  studio s_;
  std::vector<std::string> files_;
};

/// The frame that a player shows with the title's subpicture `stream` (0-based).
drawn_cue frame_of(const title& t, std::size_t stream) {
  drawn_cue shown;
  shown.rgba.assign(std::size_t{720} * 480 * 4, 0);
  if (stream >= t.subpictures.size() || !t.subpictures[stream].first) {
    ADD_FAILURE() << "no subtitle in stream " << stream;
    return shown;
  }
  const subpicture& picture = t.subpictures[stream].first->picture;
  for (int y = 0; y < 480; ++y)
    for (int x = 0; x < 720; ++x) {
      const int code = picture.code_at(x, y);
      if (code < 0 || picture.at_rest.opacity[static_cast<std::size_t>(code)] == 0)
        continue;
      const auto index = static_cast<std::size_t>(code);
      const dot d = colour_of(t.palette[static_cast<std::size_t>(picture.at_rest.colour[index])]);
      const auto at = (static_cast<std::size_t>(y) * 720 + static_cast<std::size_t>(x)) * 4;
      const std::array<int, 4> values = {d.red, d.green, d.blue,
                                         picture.at_rest.opacity[index] * 17};
      for (std::size_t i = 0; i < values.size(); ++i)
        shown.rgba[at + i] = static_cast<std::uint8_t>(values[i]);
    }
  return shown;
}

TEST_F(SubtitledDisc, HasTwoStreamsWithTheirLanguagesAndTheSoundsOwn) {
  project p = subtitled({english, german}, row + "|" + row + "|");
  p.languagetags = {"Audio tag:\tJAPANESE JA", "Subtitle tag:\tENGLISH EN",
                    "Subtitle tag:\tGERMAN DE"};
  const contents disc = s_.authored(p);
  ASSERT_EQ(disc.titles.size(), 1u);
  const title& t = disc.titles[0];
  ASSERT_EQ(t.subpictures.size(), 2u);
  EXPECT_EQ(t.subpictures[0].language, "en");
  EXPECT_EQ(t.subpictures[1].language, "de");
  ASSERT_EQ(t.audio.size(), 1u);
  EXPECT_EQ(t.audio[0].language, "ja");
  // The second spumux read what the first had written: both are there.
  ASSERT_TRUE(t.subpictures[0].first && t.subpictures[1].first);
  EXPECT_NEAR(t.subpictures[0].first->begins, 1.5, frame);
  EXPECT_NEAR(t.subpictures[0].first->ends, 3, frame);
  EXPECT_NEAR(t.subpictures[1].first->begins, 2, frame);
  EXPECT_NEAR(t.subpictures[1].first->ends, 4, frame);
}

TEST_F(SubtitledDisc, ShowsDotForDotWhatThePreviewShows) {
  const title t = authored(row, german);
  const drawn_cue preview = previewed(row);
  EXPECT_TRUE(frame_of(t, 0).rgba == preview.rgba);
  ASSERT_TRUE(t.subpictures[0].first);
  EXPECT_NEAR(t.subpictures[0].first->begins, preview.begin, frame);
  EXPECT_NEAR(t.subpictures[0].first->ends, preview.end, frame);
}

TEST_F(SubtitledDisc, TextAtTheBottomStandsInTheBottomThird) {
  const seen_area area = seen(frame_of(authored(aligned("center", "bottom")), 0));
  EXPECT_GE(area.y0, 320);
  EXPECT_LT(area.x0, 360);
  EXPECT_GT(area.x1, 360);
}

TEST_F(SubtitledDisc, TextAtTheTopLeftStandsInTheTopAndLeftThirds) {
  const char* const brief = "1\n00:00:01,500 --> 00:00:03,000\nHello\n\n";
  const seen_area area = seen(frame_of(authored(aligned("left", "top"), brief), 0));
  EXPECT_LT(area.x0, area.x1);
  EXPECT_LT(area.x1, 240);
  EXPECT_LT(area.y1, 160);
}

TEST_F(SubtitledDisc, TextAtTheLeftOfALargeMarginStandsInTheRightThird) {
  const seen_area area = seen(frame_of(authored(aligned("left", "bottom", "480")), 0));
  EXPECT_GE(area.x0, 480);
  EXPECT_GT(area.x1, area.x0);
}

TEST_F(SubtitledDisc, TextAtTheRightLosesLettersWhichTheRunCallsAnError) {
  const finished done = s_.author(subtitled({english}, aligned("right", "bottom") + "|"));
  EXPECT_EQ(done.status, 1) << done.out;
  const auto log = read_file(join_path(s_.app(), run_file::log), std::uintmax_t{1} << 20);
  ASSERT_TRUE(log) << log.error;
  EXPECT_THAT(*log, HasSubstr("ERR:  subtitle 1 of title 1 (" + files_[0] +
                              ") is not as it should be: letters of its text are missing, since "
                              "they stand beyond the margins.  spumux does not place text at the "
                              "right as it should"));
}

TEST_F(SubtitledDisc, IsDrawnInTheFontAskedForAndInNoOther) {
  const std::string mono = aligned("center", "bottom", "60", "dejavusansmono.ttf");
  const drawn_cue shown = frame_of(authored(mono), 0);
  EXPECT_TRUE(shown.rgba == previewed(mono).rgba);
  EXPECT_FALSE(shown.rgba == previewed(row).rgba);
}

TEST_F(SubtitledDisc, WithFewerSettingsThanFilesDrawsTheRestWithTheLastOnes) {
  const contents disc = s_.authored(subtitled({english, english}, aligned("center", "top") + "|"));
  ASSERT_EQ(disc.titles.size(), 1u);
  const drawn_cue first = frame_of(disc.titles[0], 0), second = frame_of(disc.titles[0], 1);
  EXPECT_LT(seen(second).y1, 160);
  EXPECT_TRUE(first.rgba == second.rgba);
}

TEST_F(SubtitledDisc, FileThatSpumuxCannotReadEndsTheRunWithItsNameAndTheReason) {
  const finished done = s_.author(
      subtitled({"[0][25]a\n[30][55]MPL2, which spumux does not read\n"}, row + "|"), {"--force"});
  EXPECT_EQ(done.status, 1) << done.out;
  const auto log = read_file(join_path(s_.app(), run_file::log), std::uintmax_t{1} << 20);
  ASSERT_TRUE(log) << log.error;
  EXPECT_THAT(*log, HasSubstr("ERR:  subtitle 1 of title 1 (" + files_[0] +
                              ") is not on the disc: it is in none of the subtitle formats that "
                              "spumux reads"));
}

TEST_F(SubtitledDisc, TextThatLastsNoTimeIsMissingWhichTheRunCallsAnError) {
  const char* const brief =
      "1\n00:00:01,500 --> 00:00:01,500\nHello\n\n"
      "2\n00:00:01,500 --> 00:00:03,000\ndisc\n\n";
  const finished done = s_.author(subtitled({brief}, row + "|"));
  EXPECT_EQ(done.status, 1) << done.out;
  const auto log = read_file(join_path(s_.app(), run_file::log), std::uintmax_t{1} << 20);
  ASSERT_TRUE(log) << log.error;
  EXPECT_THAT(*log, HasSubstr("ERR:  subtitle 1 of title 1 (" + files_[0] +
                              ") is not as it should be: 1 text of it that lasts no time is "
                              "missing"));
}

TEST_F(SubtitledDisc, WithoutSubtitlesHasNoStream) {
  const contents disc = s_.authored(subtitled({}, row + "|"));
  ASSERT_EQ(disc.titles.size(), 1u);
  EXPECT_TRUE(disc.titles[0].subpictures.empty());
  EXPECT_FALSE(file_exists(join_path(s_.app(), "sub1-1.xml")));
}

}  // namespace
}  // namespace corvane::disc
