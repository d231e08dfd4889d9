// Whether a still video is whole: made ones, and the line of a script that makes one.
#include "runner/tools/still_pictures.h"

#include "noting_host.h"
#include "platform/files/files.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <string>

namespace corvane {
namespace {

using testing_support::noting_host;
using testing_support::temporary_folder;
using end_kind = program_end::kind;

const std::string sequence_end("\0\0\1\xB7", 4);

/// A stream of so many pictures, NTSC or PAL, without the code at its end.
std::string pictures_of(int count, int lines = 480) {
  std::string stream("\0\0\1\xB3\x2D\x01\xE0\x24\x12\x4F\xA3\x80", 12);
  if (lines == 576)
    stream.replace(5, 2, "\x02\x40");
  for (int i = 0; i < count; ++i)
    stream += std::string("\0\0\1\0\0\x0F\xFF\xF8\0\0\1\1", 12) + std::string(40, 'x');
  return stream;
}

std::string why_not(const std::string& stream, const still_form& asked) {
  const temporary_folder folder;
  return why_not_this_still(folder.add("still.m2v", stream), asked);
}

TEST(StillPictures, WholeStillIsRight) {
  EXPECT_EQ(why_not(pictures_of(1) + sequence_end, {1, 480}), "");
  EXPECT_EQ(why_not(pictures_of(15, 576) + sequence_end, {15, 576}), "");
}

TEST(StillPictures, StillOfFewerOrMorePicturesIsNamed) {
  EXPECT_EQ(why_not(pictures_of(7) + sequence_end, {15, 480}), "it has 7 pictures, not 15");
  EXPECT_EQ(why_not(pictures_of(1) + sequence_end, {2, 480}), "it has 1 picture, not 2");
  EXPECT_EQ(why_not(pictures_of(2) + sequence_end, {1, 480}), "it has 2 pictures, not 1");
  EXPECT_EQ(why_not(pictures_of(0) + sequence_end, {1, 480}), "it has 0 pictures, not 1");
}

TEST(StillPictures, StillThatIsCutAnywhereIsNamed) {
  const std::string whole = pictures_of(1) + sequence_end;
  for (std::size_t size = 0; size < whole.size(); ++size)
    EXPECT_NE(why_not(whole.substr(0, size), {1, 480}), "") << size;
  EXPECT_EQ(why_not(whole.substr(0, whole.size() - 1), {1, 480}), "it is cut off");
  EXPECT_EQ(why_not(whole + "x", {1, 480}), "it is cut off") << "something else follows";
}

TEST(StillPictures, OtherSizeAndOtherFilesAreNamed) {
  EXPECT_EQ(why_not(pictures_of(1, 576) + sequence_end, {1, 480}),
            "its picture is 720x576, not 720x480");
  EXPECT_EQ(why_not(std::string(5000, '\0'), {1, 480}), "there is no video in it");
  EXPECT_EQ(why_not("", {1, 480}), "there is no video in it");
  EXPECT_TRUE(
      why_not_this_still("/no/such/still.m2v", {1, 480}).starts_with("it cannot be read: "));
}

// The line of the script -------------------------------------------------------------------------

const char* const still_line =
    "bin/jpeg2yuv.exe -n 15 -I p -f 25 -j /p.jpg | bin/mpeg2enc.exe -f 8 -n p -o /s.m2v\n";
const std::string both_ran =
    "[run /own/jpeg2yuv.exe,-n,15,-I,p,-f,25,-j,/p.jpg]\n"
    "[run /own/mpeg2enc.exe,-f,8,-n,p,-o,/s.m2v]\n";
const std::string looked_at = "[look at /s.m2v]\n", put_right = "[set aspect 2 in /s.m2v]\n";
const std::string wrong = "\nERR:  the still video \"/s.m2v\" is not as it should be: ";

TEST(StillLine, VideoIsLookedAtWhenBothToolsEndedWell) {
  noting_host host;
  EXPECT_TRUE(run_script(still_line, host));
  EXPECT_EQ(host.notes, both_ran + looked_at + put_right);
  EXPECT_EQ(host.still, (still_form{15, 576}));
}

TEST(StillLine, VideoThatIsNotWholeIsAnErrorThoughBothToolsEndedWell) {
  noting_host host;
  host.why_no_still = "it is cut off";
  EXPECT_FALSE(run_script(still_line, host));
  EXPECT_EQ(host.notes, both_ran + looked_at + wrong + "it is cut off\n");
}

TEST(StillLine, VideoOfAnEarlierRunThatWasNotWrittenIsAnError) {
  noting_host host;
  host.lies_there = host.leaves_it = true;
  EXPECT_FALSE(run_script(still_line, host));
  EXPECT_EQ(host.notes,
            both_ran + wrong + "mpeg2enc did not write it, and what lies there is older\n");
}

TEST(StillLine, VideoOfAnEarlierRunMayBeReplaced) {
  noting_host host;
  host.lies_there = true;
  EXPECT_TRUE(run_script(still_line, host));
  EXPECT_EQ(host.notes, both_ran + looked_at + put_right);
}

TEST(StillLine, VideoWhoseProportionsStayWrongIsAnErrorAndAFinding) {
  noting_host host;
  host.failures["set aspect 2 in /s.m2v"] = "it cannot be written: Permission denied";
  EXPECT_FALSE(run_script(still_line, host));
  EXPECT_EQ(host.notes, both_ran + looked_at + put_right +
                            "\nERR:  the still video \"/s.m2v\" does not get the proportions of a "
                            "DVD: it cannot be written: Permission denied\n");
  ASSERT_EQ(host.findings.size(), 1u);
  EXPECT_EQ(host.findings[0].rule, "still-aspect");
  EXPECT_EQ(host.findings[0].severity, finding_severity::error);
  EXPECT_EQ(host.findings[0].file, "/s.m2v");
}

/// The proportions for which a line with these arguments of mpeg2enc asks.
std::string put_right_by(const std::string& arguments) {
  noting_host host;
  EXPECT_TRUE(run_script(
      "bin/jpeg2yuv.exe -n 1 -j /p.jpg | bin/mpeg2enc.exe -f 8 -n n " + arguments + " -o /s.m2v\n",
      host));
  return host.notes.substr(host.notes.find("[set"));
}

TEST(StillLine, ProportionsThatTheLineAsksForAreKept) {
  EXPECT_EQ(put_right_by("-a 3"), "[set aspect 3 in /s.m2v]\n");
  EXPECT_EQ(put_right_by("-a 2"), put_right);
  EXPECT_EQ(put_right_by("-a 1"), put_right);
}

TEST(StillLine, FailureIsToldOnce) {
  noting_host host;
  host.ends = {{end_kind::exited, 0, ""}, {end_kind::exited, 1, ""}};
  host.why_no_still = "it is cut off";
  EXPECT_FALSE(run_script(still_line, host));
  EXPECT_EQ(host.notes, both_ran + "\nERR:  mpeg2enc.exe ended with status 1\n");
}

TEST(StillLine, Jpeg2yuvAloneMakesNoStill) {
  noting_host host;
  EXPECT_TRUE(run_script("bin/jpeg2yuv.exe -n 1 -j /p.jpg > /p.y4m\n", host));
  EXPECT_EQ(host.notes, "[run /own/jpeg2yuv.exe,-n,1,-j,/p.jpg]\n");
}

// The system's host -------------------------------------------------------------------------------

namespace fs = std::filesystem;

class WrittenFile : public ::testing::Test {
 protected:
  const temporary_folder folder_;
  const std::string file_ = folder_.add("still.m2v", "12345");
  const fs::file_time_type own_ = fs::last_write_time(path_of(file_));
  system_script_host host_{folder_.path()};
};

TEST_F(WrittenFile, IsKnownThoughItsSizeAndTimeAreAsBefore) {
  ASSERT_TRUE(host_.set_time_back(file_));
  folder_.add("still.m2v", "54321");
  fs::last_write_time(path_of(file_), own_);  // as a disk does that keeps times to two seconds
  EXPECT_FALSE(host_.was_left_alone(file_));
}

TEST_F(WrittenFile, OneThatIsLeftAloneKeepsItsTime) {
  ASSERT_TRUE(host_.set_time_back(file_));
  EXPECT_NE(fs::last_write_time(path_of(file_)), own_);
  EXPECT_TRUE(host_.was_left_alone(file_));
  EXPECT_EQ(fs::last_write_time(path_of(file_)), own_);
}

TEST_F(WrittenFile, OneThatWasNotThereOrGoesIsNotLeftAlone) {
  EXPECT_FALSE(host_.set_time_back(folder_.path("none.m2v")));
  EXPECT_FALSE(host_.was_left_alone(folder_.path("none.m2v")));
  ASSERT_TRUE(host_.set_time_back(file_));
  fs::remove(path_of(file_));
  EXPECT_FALSE(host_.was_left_alone(file_));
}

}  // namespace
}  // namespace corvane
