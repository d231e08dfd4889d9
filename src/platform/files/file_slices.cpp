#include "platform/files/file_slices.h"

#include "platform/files/files.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <ios>
#include <system_error>
#include <utility>

namespace corvane {

result<file_slices> file_slices::open(const std::string& path) {
  using opened = result<file_slices>;
  const std::filesystem::path native = path_of(path);
  std::error_code error;
  const bool is_file = std::filesystem::is_regular_file(native, error);
  if (!error && !is_file)
    return opened::fail("it is no file");
  const std::uintmax_t size = error ? 0 : std::filesystem::file_size(native, error);
  if (error)
    return opened::fail(error.message());
  file_slices file;
  errno = 0;
  file.stream_.open(native, std::ios::binary);
  if (!file.stream_)
    return opened::fail(std::generic_category().message(errno != 0 ? errno : EIO));
  file.buffer_ = std::make_unique_for_overwrite<read_buffer<slice_size>>();
  file.size_ = file.left_ = size;
  return opened::ok(std::move(file));
}

result<std::span<const std::uint8_t>> file_slices::next(std::size_t most) {
  using read = result<std::span<const std::uint8_t>>;
  const auto count =
      static_cast<std::size_t>(std::min<std::uint64_t>(left_, std::min(most, slice_size)));
  const std::span<std::uint8_t> bytes = buffer_->first(count);
  stream_.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(count));
  if (stream_.gcount() != static_cast<std::streamsize>(count))
    return read::fail("the file cannot be read");
  left_ -= count;
  return read::ok(bytes);
}

}  // namespace corvane
