// A file from its beginning to its end, in slices, as fast as the system gives them away.
#pragma once

#include "platform/files/read_buffer.h"
#include "platform/result.h"

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <memory>
#include <span>
#include <string>

namespace corvane {

class file_slices {
 public:
  /// Bytes of a slice; the last one has fewer.
  static constexpr std::size_t slice_size = std::size_t{128} * 1024;

  /// Takes a native path. Fails on what is not a file (a device or a pipe is none) or cannot be
  /// opened, with the system's reason. An empty file has no slices.
  static result<file_slices> open(const std::string& path);

  /// Of the file when it was opened: what is added later is not read.
  std::uint64_t size() const { return size_; }

  /// The next bytes, until the call after it: `most` of them (a slice at most), fewer at the end,
  /// none behind it. Fails if they cannot be read, or if the file has become shorter.
  result<std::span<const std::uint8_t>> next(std::size_t most = slice_size);

 private:
  std::ifstream stream_;
  std::unique_ptr<read_buffer<slice_size>> buffer_;
  std::uint64_t size_ = 0;
  std::uint64_t left_ = 0;
};

}  // namespace corvane
