// Files that are no video, damaged ones, and ones that change under our hands: a reason or a
// picture, at once, and nothing on standard error.
#include "media/streams.h"
#include "media/tiny_stream.h"
#include "media/video_file.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>

namespace corvane {
namespace {

using namespace std::string_literals;
using media_test::stream;
using media_test::tiny_stream;
using testing_support::temporary_folder;

class DamagedVideo : public testing::Test {
 protected:
  void SetUp() override { testing::internal::CaptureStderr(); }
  void TearDown() override { EXPECT_EQ(testing::internal::GetCapturedStderr(), ""); }

  /// Whatever the file holds: it is refused with a reason, or every picture comes or has a reason.
  /// Returns how many came.
  std::int64_t use(const std::string& path) {
    auto video = video_file::open(path);
    if (!video) {
      EXPECT_FALSE(video.error.empty());
      return 0;
    }
    const auto first = (*video)->first_picture();
    EXPECT_TRUE(first || !first.error.empty());
    const auto progress = (*video)->scan(60'000);
    EXPECT_TRUE(progress ? progress->finished : !progress.error.empty());
    std::int64_t came = 0;
    for (std::int64_t n = 0; n < (*video)->pictures(); ++n) {
      const auto p = (*video)->picture_number(n);
      EXPECT_TRUE(p || !p.error.empty());
      came += p ? 1 : 0;
    }
    return came;
  }

  static std::string bytes_of(const std::string& path) { return *read_file(path, 1u << 28); }

  temporary_folder folder;
};

TEST_F(DamagedVideo, FilesOfOtherKindsAreRefusedWithAReason) {
  int files = 0;
  for (const auto& entry : std::filesystem::directory_iterator(path_of(stream("foreign")))) {
    const auto video = video_file::open(text_of(entry.path()));
    EXPECT_FALSE(video) << entry.path();
    EXPECT_TRUE(video.error == "it is neither MPEG video nor an MPEG program stream" ||
                video.error == "it holds no MPEG-1 or MPEG-2 pictures")
        << entry.path() << ": " << video.error;
    ++files;
  }
  EXPECT_EQ(files, 12);
}

TEST_F(DamagedVideo, WhatIsNoFileIsRefusedWithAReason) {
  EXPECT_EQ(video_file::open(folder.path()).error, "it is a folder, not a file");
  EXPECT_EQ(video_file::open(folder.path("missing.m2v")).error, "the file does not exist");
  EXPECT_EQ(video_file::open(folder.add("empty.m2v", "")).error, "the file is empty");
#ifndef _WIN32  // where there are no such devices
  EXPECT_EQ(video_file::open("/dev/zero").error, "it is not a file");
#endif
  EXPECT_EQ(video_file::open("").error, "the file does not exist");
}

TEST_F(DamagedVideo, AProgramStreamOfSoundHasNoPictures) {
  const std::string pack = "\0\0\1\xBA\x44\0\4\0\4\1\0\0\3\xF8"s;
  std::string file;
  for (int i = 0; i < 100; ++i)
    file += pack + "\0\0\1\xC0\0\x0A\x81\0\0so\0\0\1\0nd"s;
  EXPECT_EQ(video_file::open(folder.add("a.vob", file)).error,
            "it holds no MPEG-1 or MPEG-2 pictures");
}

TEST_F(DamagedVideo, HeadersWithoutPicturesAreRefused) {
  tiny_stream tiny;
  tiny.sequence().group();
  EXPECT_EQ(video_file::open(folder.add("a.m2v", tiny.bytes)).error,
            "it holds no MPEG-1 or MPEG-2 pictures");
}

TEST_F(DamagedVideo, PicturesTooLargeForAnyDiscAreRefused) {
  tiny_stream tiny(true, 16'000, 16'000);
  media_test::tiny_picture p;
  p.slices = 1;
  tiny.sequence().group().add(p);
  EXPECT_EQ(video_file::open(folder.add("a.m2v", tiny.bytes)).error, "its pictures are too large");
}

TEST_F(DamagedVideo, PicturesThatBecomeTooLargeAreNoCrash) {
  tiny_stream tiny;
  tiny.sequence().group().add('I', 50);
  tiny.resize(16'000, 16'000);
  media_test::tiny_picture p;
  p.slices = 1;
  tiny.sequence().group().add(p);
  EXPECT_GE(use(folder.add("a.m2v", tiny.bytes)), 1);
}

TEST_F(DamagedVideo, AStreamCutAnywhere) {
  tiny_stream tiny;
  tiny.sequence().group().add('I', 50).add('P', 60).add('B', 70);
  tiny.sequence().group(false).add('I', 80).add('B', 90).end();
  for (std::size_t size = 0; size <= tiny.bytes.size(); ++size)
    use(folder.add("a.m2v", tiny.bytes.substr(0, size)));
  EXPECT_EQ(use(folder.add("a.m2v", tiny.bytes)), 5);
  for (std::size_t begin = 0; begin < tiny.bytes.size(); ++begin)
    use(folder.add("a.m2v", tiny.bytes.substr(begin)));
}

TEST_F(DamagedVideo, AStreamWithOverwrittenBytes) {
  std::mt19937 random(3);
  for (const char* name : {"open.m2v", "one.m1v", "interlaced.m2v", "disc.vob"}) {
    const std::string whole = bytes_of(stream(name));
    for (int round = 0; round < 3; ++round) {
      std::string damaged = whole;
      for (int i = 0; i < 300; ++i)
        damaged[1000 + random() % (damaged.size() - 1000)] = static_cast<char>(random() & 0xFF);
      EXPECT_GT(use(folder.add("a.m2v", damaged)), 0) << name;
    }
  }
}

TEST_F(DamagedVideo, AStreamWithAMissingPieceStillHasItsOtherPictures) {
  std::string bytes = bytes_of(stream("closed.m2v"));
  bytes.erase(bytes.size() / 3, bytes.size() / 3);
  EXPECT_GT(use(folder.add("a.m2v", bytes)), 35);
}

TEST_F(DamagedVideo, BytesOfEverySort) {
  std::mt19937 random(4);
  for (int round = 0; round < 200; ++round) {
    tiny_stream tiny;
    tiny.sequence().group().add('I', 50);
    std::string bytes = tiny.bytes;
    for (int i = 0; i < 400; ++i) {
      const char choices[] = {0, 0, 0, 1, 1, 0, '\xB3', '\xB8', '\xB5', 2};
      bytes += random() % 4 == 0 ? static_cast<char>(random() & 0xFF)
                                 : choices[random() % sizeof choices];
      if (random() % 20 == 0)
        bytes += tiny.bytes.substr(random() % tiny.bytes.size());
    }
    use(folder.add("a.m2v", bytes));
    use(folder.add("a.vob", media_test::in_packets(bytes, 100)));
  }
}

TEST_F(DamagedVideo, AFileThatBecomesShorterGivesAReason) {
  const std::string path = folder.add("a.m2v", bytes_of(stream("closed.m2v")));
  auto video = video_file::open(path);
  ASSERT_TRUE(video) << video.error;
  ASSERT_TRUE((*video)->scan(60'000)->finished);
  std::filesystem::resize_file(path_of(path), 100'000);
  EXPECT_TRUE((*video)->picture_number(0));
  EXPECT_EQ((*video)->picture_number(60).error, "the file has become shorter since it was opened");
  EXPECT_TRUE((*video)->picture_number(1));
}

TEST_F(DamagedVideo, AFileThatBecomesShorterWhileItIsScannedGivesAReason) {
  std::string bytes;
  for (int i = 0; i < 10; ++i)
    bytes += bytes_of(stream("closed.m2v"));
  const std::string path = folder.add("a.m2v", bytes);
  auto video = video_file::open(path);
  ASSERT_TRUE(video) << video.error;
  std::filesystem::resize_file(path_of(path), 1'000'000);
  for (int i = 0; i < 2; ++i)
    EXPECT_EQ((*video)->scan(60'000).error, "the file has become shorter since it was opened");
  EXPECT_GT((*video)->pictures(), 100);
  EXPECT_TRUE((*video)->picture_number(100));
}

#ifndef _WIN32  // where nobody can remove a file that is being read
TEST_F(DamagedVideo, AFileThatVanishesCanStillBeSeen) {
  const std::string path = folder.add("a.m2v", bytes_of(stream("closed.m2v")));
  auto video = video_file::open(path);
  ASSERT_TRUE(video) << video.error;
  std::filesystem::remove(path_of(path));
  ASSERT_TRUE((*video)->scan(60'000)->finished);
  EXPECT_TRUE((*video)->picture_number(69));
}
#endif

TEST_F(DamagedVideo, AFileThatGrowsIsTheOneThatWasOpened) {
  const std::string bytes = bytes_of(stream("closed.m2v"));
  const std::string path = folder.add("a.m2v", bytes);
  auto video = video_file::open(path);
  ASSERT_TRUE(video) << video.error;
  std::ofstream(path_of(path), std::ios::binary | std::ios::app) << bytes;
  ASSERT_TRUE((*video)->scan(60'000)->finished);
  EXPECT_EQ((*video)->pictures(), 70);
}

TEST_F(DamagedVideo, AFileThatIsOverwrittenGivesAPictureOrAReason) {
  const std::string bytes = bytes_of(stream("closed.m2v"));
  const std::string path = folder.add("a.m2v", bytes);
  auto video = video_file::open(path);
  ASSERT_TRUE(video) << video.error;
  ASSERT_TRUE((*video)->scan(60'000)->finished);
  folder.add("a.m2v", std::string(bytes.size(), 'x'));
  for (std::int64_t n = 0; n < (*video)->pictures(); n += 9) {
    const auto p = (*video)->picture_number(n);
    EXPECT_TRUE(p || p.error == "the picture cannot be decoded") << p.error;
  }
}

}  // namespace
}  // namespace corvane
