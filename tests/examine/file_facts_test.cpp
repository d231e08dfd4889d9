// A file's kind and facts, from its beginning and from all of it, however many slices it has.
#include "examine/file_facts.h"

#include "made_audio.h"
#include "platform/files/files.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <string>

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
  EXPECT_TRUE(scan.read_slice());
  std::filesystem::resize_file(path_of(path), head + slice + 5);
  EXPECT_TRUE(scan.read_slice());
  EXPECT_FALSE(scan.read_slice());
  EXPECT_EQ(scan.facts().kind, file_kind::unreadable);
  EXPECT_EQ(scan.facts().why_unreadable, "it could not be read to its end");
  EXPECT_FALSE(scan.read_slice());
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
