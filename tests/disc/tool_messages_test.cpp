// Runs of which the tools themselves say that all is well, though their disc is wrong; and what the
// log says of ordinary ones.
#include "platform/files/paths.h"
#include "runner/run_files.h"
#include "studio.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>

namespace corvane::disc {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string log_of(const studio& s) {
  const auto log = read_file(join_path(s.app(), run_file::log), std::uintmax_t{16} << 20);
  return log ? *log : std::string();
}

/// A copy of the sample's MPEG sound, 250 frames of 384 bytes, with these bytes at this place.
std::string changed_sound(const studio& s, std::size_t at, const std::string& bytes) {
  auto sound = read_file(media("clip.mp2"), std::uintmax_t{1} << 20);
  EXPECT_TRUE(sound) << sound.error;
  EXPECT_EQ(sound->size(), 96000u);
  const std::string name = s.folder().path("work/sound.mp2");
  EXPECT_FALSE(write_file(name, sound->insert(at, bytes)));
  return stored_from_native(name);
}

project project_with_sound(const std::string& sound) {
  project p;
  add_title(p, {stored_media("clip-ntsc.m2v"), sound});
  return p;
}

TEST(ToolMessages, SoundWithAStrayByteIsNeverComplete) {
  const studio s;
  const finished done =
      s.author(project_with_sound(changed_sound(s, 48000, std::string(1, 'x'))), {"--force"});
  EXPECT_EQ(done.status, 1) << done.out;
  EXPECT_THAT(log_of(s), HasSubstr("ERR:  title 1, audio 1, 00:00:03: "));
  EXPECT_THAT(log_of(s), HasSubstr("mplex stopped reading the sound at byte 48000"));
  EXPECT_FALSE(std::filesystem::exists(s.image()));
}

TEST(ToolMessages, SoundWithATagAtItsEndIsComplete) {
  const studio s;
  const finished done =
      s.author(project_with_sound(changed_sound(s, 96000, "TAG" + std::string(125, ' '))));
  EXPECT_EQ(done.status, 0) << done.out;
  EXPECT_THAT(log_of(s), HasSubstr("INFO: title 1, audio 1: "));
  EXPECT_THAT(log_of(s), HasSubstr("128 bytes follow the last frame of the sound"));
}

TEST(ToolMessages, ATitleOfTheOtherVideoStandardIsNeverComplete) {
  project p;
  add_title(p, {stored_media("clip-ntsc.m2v"), stored_media("clip.ac3")});
  add_title(p, {stored_media("clip-pal.m2v"), stored_media("clip.ac3")});
  const studio s;
  const finished done = s.author(p, {"--force"});
  EXPECT_EQ(done.status, 1) << done.out;
  EXPECT_THAT(log_of(s), HasSubstr("ERR:  title 2, video: its video is PAL, but the disc is "
                                   "declared NTSC."));
  EXPECT_FALSE(std::filesystem::exists(s.image()));
}

TEST(ToolMessages, OfAGoodDiscTheLogSaysNothingNew) {
  const studio s;
  EXPECT_EQ(s.author(short_project()).status, 0);
  const std::string log = log_of(s);
  EXPECT_THAT(log, HasSubstr("MUX STATUS: no under-runs detected."));
  EXPECT_THAT(log, HasSubstr("*process complete"));
  for (const char* said : {"WARN:", "ERR:", "INFO: title", "INFO: menu", "tool: "})
    EXPECT_THAT(log, Not(HasSubstr(said)));
}

}  // namespace
}  // namespace corvane::disc
