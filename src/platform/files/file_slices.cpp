#include "platform/files/file_slices.h"

#include "platform/files/files.h"

#include <algorithm>
#include <ios>
#include <utility>

namespace corvane {

result<file_slices> file_slices::open(const std::string& path) {
  using opened = result<file_slices>;
  const auto size = file_size(path);
  if (!size)
    return opened::fail("it is not a file, or it does not exist");
  file_slices file;
  file.stream_.open(path_of(path), std::ios::binary);
  if (!file.stream_)
    return opened::fail("the file cannot be opened");
  file.buffer_ = std::make_unique<buffer>();
  file.size_ = file.left_ = *size;
  return opened::ok(std::move(file));
}

result<std::span<const std::uint8_t>> file_slices::next() {
  using read = result<std::span<const std::uint8_t>>;
  const auto count = static_cast<std::size_t>(std::min<std::uint64_t>(left_, slice_size));
  char* const bytes = buffer_->bytes.data();
  stream_.read(bytes, static_cast<std::streamsize>(count));
  if (stream_.gcount() != static_cast<std::streamsize>(count))
    return read::fail("the file cannot be read");
  left_ -= count;
  return read::ok({reinterpret_cast<const std::uint8_t*>(bytes), count});
}

}  // namespace corvane
