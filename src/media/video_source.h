// The bytes of one video stream in a file: the file itself, or what the packets of a program
// stream carry of its first video stream. A position is a byte of the video stream, from 0.
#pragma once

#include "platform/result.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

namespace corvane {

using byte_vector = std::vector<std::uint8_t>;

class video_source {
 public:
  video_source() = default;
  video_source(const video_source&) = delete;
  video_source& operator=(const video_source&) = delete;
  virtual ~video_source() = default;

  /// Replaces `bytes` by the next ones of the stream, about a quarter of a megabyte of the file at
  /// a time: perhaps none, when the file holds other things there. False at the end of the file.
  virtual result<bool> next(byte_vector& bytes) = 0;

  /// Up to `count` bytes from `position`, which `next` must have given before: fewer when the file
  /// has become shorter.
  virtual result<byte_vector> read(std::uint64_t position, std::size_t count) = 0;

  /// Where the video begins in each unit (VOBU) of a stream that is ready for a disc: the position
  /// behind each navigation packet that `next` has been through, in order. None in any other
  /// stream.
  virtual const std::vector<std::uint64_t>& units() const = 0;

  /// How much of the file `next` has been through, and the file's size when it was opened.
  virtual std::uint64_t done() const = 0;
  virtual std::uint64_t total() const = 0;
};

/// Opens a file by its native path. Fails on what is not a file, is empty or cannot be read, and on
/// files that do not begin as such a stream does.
result<std::unique_ptr<video_source>> open_video_source(const std::string& path);

}  // namespace corvane
