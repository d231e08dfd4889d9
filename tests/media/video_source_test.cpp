// The bytes of the video stream, out of a plain file and out of a program stream.
#include "media/video_source.h"

#include "media/tiny_stream.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <memory>
#include <random>
#include <string>

namespace corvane {
namespace {

using namespace std::string_literals;
using media_test::in_packets;
using testing_support::temporary_folder;

// A stream as far as its bytes are not looked at.
std::string noise(std::size_t size) {
  std::mt19937 random(1);
  std::string bytes(size, '\0');
  for (char& c : bytes)
    c = static_cast<char>(random() & 0xFF);
  bytes.replace(0, 4, "\0\0\1\xB3"s);
  return bytes;
}

std::unique_ptr<video_source> opened(const std::string& path) {
  auto source = open_video_source(path);
  EXPECT_TRUE(source) << source.error;
  return source ? std::move(*source) : nullptr;
}

std::string all_of(video_source& source) {
  std::string all;
  byte_vector bytes;
  for (;;) {
    const auto more = source.next(bytes);
    EXPECT_TRUE(more) << more.error;
    if (!more || !*more)
      return all;
    all.append(bytes.begin(), bytes.end());
  }
}

std::string text(const result<byte_vector>& bytes) {
  EXPECT_TRUE(bytes) << bytes.error;
  return bytes ? std::string(bytes->begin(), bytes->end()) : std::string();
}

TEST(VideoSource, APlainFileIsTheStream) {
  const temporary_folder folder;
  const std::string bytes = noise(700'000);
  const auto source = opened(folder.add("a.m2v", bytes));
  EXPECT_EQ(all_of(*source), bytes);
  EXPECT_EQ(source->done(), bytes.size());
  EXPECT_EQ(source->total(), bytes.size());
  EXPECT_EQ(text(source->read(123'456, 1000)), bytes.substr(123'456, 1000));
  EXPECT_EQ(text(source->read(699'990, 1000)), bytes.substr(699'990));
}

class PacketedSource : public testing::TestWithParam<std::tuple<std::size_t, bool>> {};

TEST_P(PacketedSource, GivesTheFirstVideoStreamAndFindsEveryPlaceAgain) {
  const auto [payload, mpeg2] = GetParam();
  const temporary_folder folder;
  const std::string stream = noise(900'000);
  const auto source = opened(folder.add("a.vob", in_packets(stream, payload, mpeg2)));
  ASSERT_EQ(all_of(*source), stream);
  EXPECT_EQ(source->done(), source->total());
  std::mt19937 random(2);
  for (int i = 0; i < 40; ++i) {
    const std::size_t position = random() % stream.size();
    const std::size_t count = random() % 100'000;
    ASSERT_EQ(text(source->read(position, count)), stream.substr(position, count)) << position;
  }
}

INSTANTIATE_TEST_SUITE_P(Payloads, PacketedSource,
                         testing::Combine(testing::Values(1990, 7001, 65'000),
                                          testing::Values(false, true)));

TEST(VideoSource, DamageBetweenPacketsLosesOnlyItself) {
  const temporary_folder folder;
  const std::string stream = noise(300'000);
  const std::string half = in_packets(stream.substr(0, 150'000), 2000);
  const std::string rest = in_packets(stream.substr(150'000), 2000);
  const auto source =
      opened(folder.add("a.vob", half + std::string(70'000, '\0') + "damage" + rest));
  EXPECT_EQ(all_of(*source), stream);
}

TEST(VideoSource, AHoleInAStreamIsNotReadThroughForOnePicture) {
  const temporary_folder folder;
  constexpr std::uint64_t hole = std::uint64_t{100} * 1024 * 1024;
  const std::string stream = noise(4000);
  const std::string path = folder.add("a.vob", in_packets(stream.substr(0, 2000), 2000));
  const std::uint64_t begin = *file_size(path);
  std::filesystem::resize_file(path_of(path), begin + hole);
  std::ofstream(path_of(path), std::ios::binary | std::ios::app)
      << in_packets(stream.substr(2000), 2000);
  const auto source = opened(path);
  ASSERT_EQ(all_of(*source), stream);
  EXPECT_EQ(text(source->read(0, 2000)), stream.substr(0, 2000));
  EXPECT_EQ(source->read(0, 4000).error, "the stream is interrupted there");
}

TEST(VideoSource, APacketCutByTheEndOfTheFileIsLost) {
  const temporary_folder folder;
  const std::string stream = noise(10'000);
  const std::string file = in_packets(stream, 2000);
  for (std::size_t cut = 1; cut < 3000; cut += 37) {
    const auto source = opened(folder.add("a.vob", file.substr(0, file.size() - cut)));
    const std::string all = all_of(*source);
    EXPECT_EQ(all, stream.substr(0, all.size()));
    EXPECT_GE(all.size() + 4000, stream.size());
  }
}

TEST(VideoSource, WhatIsAddedAfterOpeningIsNotSeen) {
  const temporary_folder folder;
  const std::string path = folder.add("a.m2v", noise(1000));
  const auto source = opened(path);
  folder.add("a.m2v", noise(5000));
  EXPECT_EQ(all_of(*source).size(), 1000u);
}

TEST(VideoSource, PlacesBeyondFourGibibytesAreRead) {
  const temporary_folder folder;
  constexpr std::uint64_t far = (std::uint64_t{1} << 32) + 12'345;
  const std::string path = folder.add("a.m2v", noise(1000));
  std::filesystem::resize_file(path_of(path), far);
  std::ofstream(path_of(path), std::ios::binary | std::ios::app) << noise(500);
  const auto source = opened(path);
  EXPECT_EQ(source->total(), far + 500);
  EXPECT_EQ(text(source->read(far - 3, 1000)), "\0\0\0"s + noise(500));
  EXPECT_EQ(text(source->read(0, 1000)), noise(1000));
}

TEST(VideoSource, AFileThatBecomesShorterIsAFailureAndNoHang) {
  const temporary_folder folder;
  for (const std::string& file : {noise(2'000'000), in_packets(noise(2'000'000), 2000)}) {
    const std::string path = folder.add("a", file);
    const auto source = opened(path);
    byte_vector bytes;
    ASSERT_TRUE(source->next(bytes));
    std::filesystem::resize_file(path_of(path), 300'000);
    int calls = 0;
    result<bool> more = result<bool>::ok(true);
    while (more && *more && ++calls < 100)
      more = source->next(bytes);
    EXPECT_FALSE(more);
    EXPECT_EQ(more.error, "the file has become shorter since it was opened");
  }
}

#ifndef _WIN32  // where nobody can remove a file that is being read, and there are no such devices
TEST(VideoSource, AFileThatVanishesIsReadToItsEnd) {
  const temporary_folder folder;
  const std::string bytes = noise(700'000);
  const std::string path = folder.add("a.m2v", bytes);
  const auto source = opened(path);
  std::filesystem::remove(path_of(path));
  EXPECT_EQ(all_of(*source), bytes);
}

TEST(VideoSource, ADeviceIsRefused) {
  EXPECT_EQ(open_video_source("/dev/zero").error, "it is not a file");
}
#endif

TEST(VideoSource, OtherBeginningsAreRefused) {
  const temporary_folder folder;
  for (const std::string& bytes :
       {"text"s, "\0"s, "\0\0\1"s, "\0\1\xB3\0\0\0"s, "\0\0\2\xB3"s, std::string(300'000, '\0'),
        "RIFF\0\0\1\xBA\x44\0\4\0\4\1\0\0\3\xF8"s, "\0\0\0\1\x67\x42\0\0\1\xB3"s})
    EXPECT_EQ(open_video_source(folder.add("a.m2v", bytes)).error,
              "it is neither MPEG video nor an MPEG program stream");
}

TEST(VideoSource, ZerosBeforeTheStreamAreSkipped) {
  const temporary_folder folder;
  const std::string bytes = std::string(1000, '\0') + noise(5000);
  EXPECT_EQ(all_of(*opened(folder.add("a.m2v", bytes))), bytes);
  const std::string packed = std::string(1000, '\0') + in_packets(noise(5000), 2000);
  EXPECT_EQ(all_of(*opened(folder.add("a.vob", packed))), noise(5000));
}

TEST(VideoSource, WhatIsNoFileIsRefused) {
  const temporary_folder folder;
  EXPECT_EQ(open_video_source(folder.path()).error, "it is a folder, not a file");
  EXPECT_EQ(open_video_source(folder.path("missing.m2v")).error, "the file does not exist");
  EXPECT_EQ(open_video_source(folder.add("empty.m2v", "")).error, "the file is empty");
}

}  // namespace
}  // namespace corvane
