#include "platform/files/file_stamp.h"

#include "platform/files/files.h"

#include <filesystem>
#include <system_error>

namespace corvane {

std::optional<file_stamp> stamp_of(const std::string& path) {
  std::error_code error;
  const std::filesystem::path native = path_of(path);
  file_stamp stamp;
  if (!std::filesystem::is_regular_file(native, error))
    return std::nullopt;
  stamp.size = std::filesystem::file_size(native, error);
  if (error)
    return std::nullopt;
  stamp.changed = static_cast<std::int64_t>(
      std::filesystem::last_write_time(native, error).time_since_epoch().count());
  if (error)
    return std::nullopt;
  return stamp;
}

}  // namespace corvane
