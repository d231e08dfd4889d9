// A file's kind and facts, from its beginning and from all of it, however many slices it has.
#include "examine/file_facts.h"

#include "made_audio.h"
#include "made_packs.h"
#include "platform/files/files.h"
#include "support/small_streams.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace corvane {
namespace {

using namespace examine_test;

constexpr std::uint64_t head = std::uint64_t{256} << 10;
constexpr std::uint64_t slice = std::uint64_t{4} << 20;

// Sound of this size in bytes, its last frame cut.
std::string sound_of(std::uint64_t size) {
  const std::string frame = mpeg_frame({});
  return times(static_cast<int>(size / frame.size() + 1), frame).substr(0, size);
}

TEST(FileFacts, OfAllSizesEachByteIsReadOnce) {
  const testing_support::temporary_folder folder;
  for (const std::uint64_t size : {std::uint64_t{2000}, head - 1, head, head + 1, head + slice,
                                   head + slice + 1, head + 2 * slice + 77777}) {
    const std::string bytes = sound_of(size);
    audio_scanner expected;
    expected.feed(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    expected.finish();
    file_scan scan(folder.add("a.mp2", bytes));
    EXPECT_EQ(scan.bytes_read(), std::min(size, head));
    while (scan.read_slice())
      EXPECT_FALSE(scan.facts().whole);
    EXPECT_EQ(scan.bytes_read(), size);
    const file_facts& facts = scan.facts();
    ASSERT_EQ(facts.kind, file_kind::audio) << size;
    EXPECT_TRUE(facts.whole);
    EXPECT_EQ(facts.size, size);
    EXPECT_EQ(facts.audio->bytes, size);
    EXPECT_EQ(facts.audio->frames, expected.facts().frames) << size;
    EXPECT_EQ(facts.audio->frame_bytes, expected.facts().frame_bytes) << size;
    EXPECT_EQ(facts.audio->cut.has_value(), expected.facts().cut.has_value()) << size;
    EXPECT_TRUE(facts.audio->gaps.empty()) << size;
  }
}

TEST(FileFacts, ACallReadsAboutFourMegabytes) {
  const testing_support::temporary_folder folder;
  file_scan scan(folder.add("a.mp2", sound_of(head + 2 * slice + 5)));
  EXPECT_TRUE(scan.read_slice());
  EXPECT_EQ(scan.bytes_read(), head);
  EXPECT_TRUE(scan.read_slice());
  EXPECT_EQ(scan.bytes_read(), head + slice);
  EXPECT_TRUE(scan.read_slice());
  EXPECT_EQ(scan.bytes_read(), head + 2 * slice);
  EXPECT_FALSE(scan.read_slice());
  EXPECT_EQ(scan.bytes_read(), head + 2 * slice + 5);
}

TEST(FileFacts, AFileThatBecomesShorterIsUnreadable) {
  const testing_support::temporary_folder folder;
  const std::string path = folder.add("a.mp2", sound_of(head + 3 * slice));
  file_scan scan(path);
  std::filesystem::resize_file(path_of(path), head + slice + 5);
  int calls = 0;
  while (scan.read_slice())
    ASSERT_LT(++calls, 4);
  EXPECT_EQ(scan.facts().kind, file_kind::unreadable);
  EXPECT_EQ(scan.facts().why_unreadable, "it could not be read to its end");
  EXPECT_FALSE(scan.read_slice());
}

// What of the beginning is told must not depend on how much of it was read.
TEST(FileFacts, OfABeginningAreTheKindThatTheWholeFileHas) {
  const testing_support::temporary_folder folder;
  const std::string sound = sound_of(100'000), stray = "x" + sound;
  int number = 0;
  for (const auto& [bytes, kind] : std::vector<std::pair<std::string, file_kind>>{
           {"", file_kind::empty},
           {std::string(300'000, 'x'), file_kind::unknown},
           {sound.substr(0, 3000), file_kind::audio},
           {sound.substr(0, 65536), file_kind::audio},
           {sound, file_kind::audio},
           {stray, file_kind::audio},
           {stray + sound + sound, file_kind::audio},
           {testing_support::small_video(), file_kind::video},
           {"x" + testing_support::small_video(), file_kind::video},
           {testing_support::small_video() + sound, file_kind::video},
           {sound + testing_support::small_video(), file_kind::audio}}) {
    const std::string path = folder.add(std::to_string(++number), bytes);
    const file_facts beginning = read_file_head(path);
    EXPECT_EQ(beginning.kind, kind) << number;
    EXPECT_EQ(beginning.size, bytes.size());
    EXPECT_EQ(beginning.audio.has_value(), kind == file_kind::audio) << number;
    EXPECT_EQ(beginning.video.has_value(), kind == file_kind::video) << number;
    const file_scan scan(path);
    EXPECT_EQ(scan.facts().kind, kind) << number;
    EXPECT_EQ(scan.facts().whole, beginning.whole) << number;
  }
}

TEST(FileFacts, OfPlainSoundOnlyTheFirst64KiBAreRead) {
  const testing_support::temporary_folder folder;
  const std::string sound = sound_of(65536);
  const std::string packs = pack_maker().pack(0).packet(0xE0, std::string(500, 'v')).bytes;
  EXPECT_EQ(read_file_head(folder.add("b", sound + packs)).kind, file_kind::audio);
  EXPECT_EQ(read_file_head(folder.add("c", sound.substr(0, 60'000) + packs)).kind,
            file_kind::program_stream);
  const file_facts plain = read_file_head(folder.add("a", sound + std::string(300'000, 'x')));
  ASSERT_EQ(plain.kind, file_kind::audio);
  EXPECT_EQ(plain.audio->gap_count, 0u);
  audio_scanner expected;
  expected.feed(reinterpret_cast<const std::uint8_t*>(sound.data()), sound.size());
  expected.stop();
  EXPECT_EQ(*plain.audio, expected.facts());
}

TEST(FileFacts, WhatIsNoFileIsUnreadable) {
  const testing_support::temporary_folder folder;
  const file_facts of_folder = read_file_head(folder.path());
  EXPECT_EQ(of_folder.kind, file_kind::unreadable);
  EXPECT_EQ(of_folder.why_unreadable, "it is no file");
  const file_facts missing = read_file_head(folder.path("none.mp2"));
  EXPECT_EQ(missing.kind, file_kind::unreadable);
  EXPECT_FALSE(missing.why_unreadable.empty());
  EXPECT_NE(missing.why_unreadable, of_folder.why_unreadable);
}

}  // namespace
}  // namespace corvane
