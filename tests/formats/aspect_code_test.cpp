// The aspect code of a stream is set in every sequence header, and nothing else is touched.
#include "formats/aspect_code.h"

#include "platform/files/file_slices.h"
#include "support/temporary_folder.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

namespace corvane {
namespace {

using testing_support::temporary_folder;

/// 720x480 at 29.97 pictures a second (the lower half of the byte that holds the aspect code).
std::string header_with(int code) {
  std::string header("\0\0\1\xB3\x2D\x01\xE0\x04\x12\x4F\xA3\x80", 12);
  header[7] = static_cast<char>(code << 4 | 4);
  return header;
}

const std::string extension("\0\0\1\xB5\x14\x82\0\1\0\0", 10);
const std::string group("\0\0\1\xB8\0\x08\0\x40", 8);
const std::string picture = std::string("\0\0\1\0\0\x0F\xFF\xF8\0\0\1\1", 12) +
                            std::string(40, '\x13') + std::string("\0\0\1\x01\x13\x13", 6);
const std::string sequence_end("\0\0\1\xB7", 4);

/// A stream of so many groups, each with a header of this code.
std::string stream_of(int code, int groups) {
  std::string stream;
  for (int i = 0; i < groups; ++i)
    stream += header_with(code) + extension + group + picture + picture;
  return stream + sequence_end;
}

/// The stream after the code was set; what is to be set must work.
std::string set_in(const std::string& stream, int code) {
  const temporary_folder folder;
  const std::string file = folder.add("video.m2v", stream);
  EXPECT_EQ(set_aspect_code(file, code), std::nullopt);
  return folder.read("video.m2v");
}

/// Why it is not set; the file must be as it was.
std::string why_not_in(const std::string& stream) {
  const temporary_folder folder;
  const failure why = set_aspect_code(folder.add("video.m2v", stream), aspect_code::narrow);
  EXPECT_EQ(folder.read("video.m2v"), stream);
  return why.value_or("");
}

TEST(AspectCode, EveryHeaderGetsItAndNothingElseChanges) {
  for (const int groups : {1, 2, 5})
    for (const int code : {aspect_code::narrow, aspect_code::wide}) {
      EXPECT_EQ(set_in(stream_of(aspect_code::square, groups), code), stream_of(code, groups));
      EXPECT_EQ(set_in(stream_of(15, groups), code), stream_of(code, groups));
    }
}

TEST(AspectCode, HeaderIsFoundWhereverSlicesMeet) {
  constexpr std::size_t behind_header = 40;
  for (std::size_t before = 0; before < behind_header; ++before) {
    const std::string first = stream_of(aspect_code::square, 1);
    const std::string filling(file_slices::slice_size - before - first.size(), '\x13');
    const auto whole = [&](int code) { return stream_of(code, 1) + filling + stream_of(code, 2); };
    EXPECT_EQ(set_in(whole(aspect_code::square), aspect_code::wide), whole(aspect_code::wide))
        << before;
  }
}

TEST(AspectCode, StreamThatHasItIsNotWritten) {
  const temporary_folder folder;
  const std::string file = folder.add("video.m2v", stream_of(aspect_code::narrow, 3));
  const auto before = std::filesystem::last_write_time(path_of(file)) - std::chrono::hours(5);
  std::filesystem::last_write_time(path_of(file), before);
  const auto kept = std::filesystem::last_write_time(path_of(file));
  EXPECT_EQ(set_aspect_code(file, aspect_code::narrow), std::nullopt);
  EXPECT_EQ(std::filesystem::last_write_time(path_of(file)), kept);
}

TEST(AspectCode, HeadersOfSeveralCodesBecomeAlike) {
  const std::string mixed =
      stream_of(aspect_code::square, 2) + stream_of(aspect_code::narrow, 2) + stream_of(4, 1);
  const std::string wide = stream_of(aspect_code::wide, 2);
  EXPECT_EQ(set_in(mixed, aspect_code::wide), wide + wide + stream_of(aspect_code::wide, 1));
}

TEST(AspectCode, WhatIsNoMpeg2VideoIsNamedAndLeftAlone) {
  EXPECT_EQ(why_not_in(header_with(1) + group + picture + sequence_end), "it is no MPEG-2 video");
  EXPECT_EQ(why_not_in(header_with(1)), "it is no MPEG-2 video") << "cut behind a header";
  EXPECT_EQ(why_not_in(std::string(5000, '\0')), "there is no video in it");
  EXPECT_EQ(why_not_in(""), "there is no video in it");
}

TEST(AspectCode, FileThatCannotBeReadIsNamed) {
  const temporary_folder folder;
  const auto why = [](const std::string& path) {
    return set_aspect_code(path, aspect_code::narrow).value_or("");
  };
  EXPECT_TRUE(why(folder.path("none.m2v")).starts_with("it cannot be read: "));
  EXPECT_EQ(why(folder.path()), "it cannot be read: it is no file");
}

}  // namespace
}  // namespace corvane
