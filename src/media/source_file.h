// A file that is read in pieces, in any order.
#pragma once

#include "media/video_source.h"

#include <cstdint>
#include <fstream>
#include <string>

namespace corvane {

/// Its size is that at the time of opening: what is added later is not seen.
class source_file {
 public:
  /// Fails on what is not a file (a device or a pipe is none), is empty or cannot be opened.
  static result<source_file> open(const std::string& path);

  std::uint64_t size() const { return size_; }

  /// Replaces `bytes` by up to `count` bytes from `position`: fewer at the end of the file only.
  failure read(std::uint64_t position, std::size_t count, byte_vector& bytes);

 private:
  std::ifstream stream_;
  std::uint64_t size_ = 0;
  std::uint64_t position_ = 0;
};

}  // namespace corvane
