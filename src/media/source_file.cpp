#include "media/source_file.h"

#include "platform/files/files.h"

#include <algorithm>
#include <filesystem>
#include <ios>
#include <system_error>
#include <utility>

namespace corvane {

result<source_file> source_file::open(const std::string& path) {
  using opened = result<source_file>;
  const auto size = file_size(path);
  if (!size) {
    std::error_code error;
    return opened::fail(folder_exists(path) ? "it is a folder, not a file"
                        : std::filesystem::exists(path_of(path), error)
                            ? "it is not a file"
                            : "the file does not exist");
  }
  if (*size == 0)
    return opened::fail("the file is empty");
  source_file file;
  file.stream_.open(path_of(path), std::ios::binary);
  if (!file.stream_)
    return opened::fail("the file cannot be opened");
  file.size_ = *size;
  return opened::ok(std::move(file));
}

failure source_file::read(std::uint64_t position, std::size_t count, byte_vector& bytes) {
  const std::uint64_t left = size_ - std::min(size_, position);
  bytes.resize(static_cast<std::size_t>(std::min<std::uint64_t>(count, left)));
  stream_.clear();
  if (position != position_)
    stream_.seekg(static_cast<std::streamoff>(position));
  stream_.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
  if (stream_.bad())
    return "the file cannot be read";
  bytes.resize(static_cast<std::size_t>(stream_.gcount()));
  position_ = position + bytes.size();
  return std::nullopt;
}

}  // namespace corvane
