// The check of a project with real streams of several encoders: each kind of wrong material is
// named with its item and time, and clean material is not.
#include "command.h"
#include "disc/finding.h"
#include "examine/examination.h"
#include "project/disc_of.h"
#include "studio.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace corvane::disc {
namespace {

using testing::ContainsRegex;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;

// Short streams made for one test, and what an examination of a project of them finds.
class Check : public ::testing::Test {
 protected:
  // Runs a shell line in the folder; its files are named without a path.
  void make(const std::string& line) const {
    command c{{"/bin/sh", "-c", line}};
    c.folder = folder_.path();
    const finished made = run(c);
    ASSERT_EQ(made.status, 0) << line << "\n" << made.out;
  }
  void video(const std::string& name, const std::string& how, int seconds = 2) const {
    make("ffmpeg -nostdin -v error -y -f lavfi -i testsrc=" + how + ",format=yuv420p -t " +
         std::to_string(seconds) + encoding_ + " " + name);
  }
  void sound(const std::string& name, const std::string& how, int seconds = 2) const {
    make("ffmpeg -nostdin -v error -y -f lavfi -i sine=d=" + std::to_string(seconds) + " " + how +
         " " + name);
  }
  std::string stored(const std::string& name) const { return folder_.stored(name); }

  void title(const std::vector<std::string>& names) {
    std::vector<std::string> streams;
    for (const std::string& name : names)
      streams.push_back(stored(name));
    add_title(p_, streams);
  }

  // "error: title 1, video: ..." becomes "video-standard at title 1, video".
  std::vector<std::string> found(std::vector<finding_severity> severities = {
                                     finding_severity::error, finding_severity::warning}) const {
    fact_store store;
    examination e(disc_of(p_), examination::depth::whole_files, store);
    while (e.step(1000)) {
    }
    std::vector<std::string> texts;
    for (const finding& f : e.findings())
      if (std::find(severities.begin(), severities.end(), f.severity) != severities.end())
        texts.push_back(f.rule + " at " + place_text(f));
    return texts;
  }
  std::vector<std::string> errors() const { return found({finding_severity::error}); }

  void clean_pair() const {
    video("ntsc.m2v", "s=720x480:r=30000/1001");
    sound("a.ac3", "-ar 48000 -ac 2 -b:a 192k");
  }

  testing_support::temporary_folder folder_;
  project p_;
  std::string encoding_ =
      " -c:v mpeg2video -b:v 2M -maxrate 6M -bufsize 1835k -g 15 -flags +cgop "
      "-sc_threshold 1000000000 -aspect 4:3 -f mpeg2video";
};

TEST_F(Check, CleanStreamsHaveNoErrorAndNoWarning) {
  clean_pair();
  sound("a.mp2", "-ar 48000 -ac 2 -c:a mp2 -b:a 224k");
  title({"ntsc.m2v", "a.ac3", "a.mp2"});
  EXPECT_THAT(found(), IsEmpty());
}

TEST_F(Check, CleanStreamsOfOtherEncoders) {
  make(
      "ffmpeg -nostdin -v error -y -f lavfi -i testsrc=s=720x480:r=30000/1001 -t 0.3 -pix_fmt "
      "yuv420p "
      "-f yuv4mpegpipe - | mpeg2enc -v 0 -f 8 -a 2 -n n -b 4000 -o m.m2v");
  make(
      "ffmpeg -nostdin -v error -y -f lavfi -i sine=d=0.4 -ar 48000 -ac 2 m.wav; "
      "mp2enc -v 0 -r 48000 -b 192 -o m.mp2 <m.wav");
  title({"m.m2v", "m.mp2"});
  EXPECT_THAT(errors(), IsEmpty());
}

TEST_F(Check, PalTitleInAnNtscProject) {
  clean_pair();
  video("pal.m2v", "s=720x576:r=25");
  title({"ntsc.m2v", "a.ac3"});
  title({"pal.m2v", "a.ac3"});
  EXPECT_THAT(errors(),
              ElementsAre("video-standard at title 2, video", "titleset-size at title 2, video"));
}

TEST_F(Check, ChaptersThatFallTogether) {
  clean_pair();
  title({"ntsc.m2v", "a.ac3"});
  p_.chapters = {"00:00:00.00,00:00:00.90,00:00:01.10"};
  EXPECT_THAT(found(), ElementsAre("chapter-merged at title 1, chapter 3, 00:00:01"));
}

TEST_F(Check, ReadyPalVobInAnNtscProject) {
  add_title(p_, {stored_media("muxed-pal.vob")});
  EXPECT_THAT(errors(), ElementsAre("video-standard at title 1, video"));
}

TEST_F(Check, Ac3TitleBesideAnMp2Title) {
  clean_pair();
  sound("b.mp2", "-ar 48000 -ac 2 -c:a mp2 -b:a 192k");
  title({"ntsc.m2v", "a.ac3"});
  title({"ntsc.m2v", "b.mp2"});
  EXPECT_THAT(errors(), ElementsAre("titleset-audio-kind at title 2, audio 1"));
}

TEST_F(Check, NarrowTitleBesideAWideOne) {
  clean_pair();
  encoding_.replace(encoding_.find("4:3"), 3, "16:9");
  video("wide.m2v", "s=720x480:r=30000/1001");
  title({"ntsc.m2v", "a.ac3"});
  title({"wide.m2v", "a.ac3"});
  EXPECT_THAT(errors(), ElementsAre("titleset-aspect at title 2, video"));
}

TEST_F(Check, SizesRatesAndCodingsThatNoDiscTakes) {
  clean_pair();
  video("small.m2v", "s=640x480:r=30000/1001");
  title({"small.m2v", "a.ac3"});
  EXPECT_THAT(errors(), ElementsAre("video-size at title 1, video"));
  p_ = {};
  video("large.m2v", "s=1280x720:r=30000/1001");
  title({"large.m2v", "a.ac3"});
  EXPECT_THAT(errors(), ElementsAre("video-size at title 1, video"));
  p_ = {};
  for (const char* const rate : {"44100", "32000"}) {
    const std::string name = std::string(rate) + ".ac3";
    sound(name, std::string("-ac 2 -b:a 192k -ar ") + rate);
    title({"ntsc.m2v", name});
  }
  EXPECT_THAT(errors(), ElementsAre("audio-sample-rate at title 1, audio 1",
                                    "audio-sample-rate at title 2, audio 1"));
}

TEST_F(Check, Mpeg1BesideMpeg2) {
  clean_pair();
  encoding_ = " -c:v mpeg1video -b:v 1150k -maxrate 1150k -bufsize 320k -g 15 -f mpeg1video";
  video("vcd.m1v", "s=352x240:r=30000/1001");
  title({"ntsc.m2v", "a.ac3"});
  title({"vcd.m1v", "a.ac3"});
  EXPECT_THAT(errors(),
              ElementsAre("titleset-size at title 2, video", "titleset-coding at title 2, video"));
}

TEST_F(Check, StrayByteInTheMiddleOfMp2) {
  video("ntsc.m2v", "s=720x480:r=30000/1001", 24);
  sound("whole.mp2", "-ar 48000 -ac 2 -c:a mp2 -b:a 192k", 24);
  make(
      "head -c 288000 whole.mp2 >stray.mp2; printf x >>stray.mp2; "
      "tail -c +288001 whole.mp2 >>stray.mp2");
  title({"ntsc.m2v", "stray.mp2"});
  EXPECT_THAT(errors(), ElementsAre("audio-gap at title 1, audio 1, 00:00:12"));
}

TEST_F(Check, EndCodeInTheMiddle) {
  clean_pair();
  video("b.m2v", "s=720x480:r=30000/1001");
  make("printf '\\000\\000\\001\\267' >end; cat ntsc.m2v end b.m2v >joined.m2v");
  title({"joined.m2v", "a.ac3"});
  EXPECT_THAT(errors(), ElementsAre("video-end-code at title 1, video, 00:00:02"));
}

TEST_F(Check, FileThatIsGone) {
  clean_pair();
  title({"ntsc.m2v", "gone.ac3"});
  EXPECT_THAT(errors(), ElementsAre("file-missing at title 1, audio 1"));
}

TEST_F(Check, PeakRateOverTheLimit) {
  sound("a.ac3", "-ar 48000 -ac 2 -b:a 192k");
  make(
      "ffmpeg -nostdin -v error -y -f lavfi -i testsrc=s=720x480:r=30000/1001,noise=alls=80:allf=t "
      "-t 2 -pix_fmt yuv420p -c:v mpeg2video -b:v 16M -minrate 16M -maxrate 16M -bufsize 1835k "
      "-g 15 -flags +cgop -sc_threshold 1000000000 -aspect 4:3 -f mpeg2video rich.m2v");
  title({"rich.m2v", "a.ac3"});
  EXPECT_THAT(errors(), ElementsAre("video-peak-rate at title 1, video, 00:00:00"));
}

TEST_F(Check, LayerThreeAndWavAreNamed) {
  clean_pair();
  sound("a.mp3", "-ar 48000 -ac 2 -c:a libmp3lame -b:a 192k -id3v2_version 0 -write_xing 0");
  sound("a.wav", "-ar 48000 -ac 2");
  title({"ntsc.m2v", "a.mp3"});
  title({"ntsc.m2v", "a.wav"});
  EXPECT_THAT(errors(),
              IsSupersetOf({"audio-kind at title 1, audio 1", "audio-kind at title 2, audio 1"}));
}

TEST_F(Check, SampleProjectsHaveNotesAlone) {
  for (const char* const name : {"sample.cvp", "sample-pal.cvp"}) {
    const testing_support::temporary_folder home;
    const finished checked =
        run({{CORVANE_AUTHOR, "--check", media(name)}, {{"CORVANE_HOME", home.path("app")}}});
    EXPECT_EQ(checked.status, 0) << checked.out;
    EXPECT_THAT(checked.out, ContainsRegex("\n[0-9]+ notes?\n$"));
  }
}

}  // namespace
}  // namespace corvane::disc
