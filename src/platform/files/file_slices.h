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

  /// From now on a thread reads up to 8 MB before they are asked for, while somebody works on what
  /// he has. `next` gives less than `most` at the end of each megabyte, too.
  void read_ahead();

  file_slices(file_slices&&) noexcept;
  file_slices& operator=(file_slices&&) noexcept;
  ~file_slices();

 private:
  class reader;

  file_slices();

  std::ifstream stream_;
  std::unique_ptr<read_buffer<slice_size>> buffer_;
  std::uint64_t size_ = 0;
  std::uint64_t left_ = 0;
  std::unique_ptr<reader> reader_;  ///< if it is read ahead
};

}  // namespace corvane
