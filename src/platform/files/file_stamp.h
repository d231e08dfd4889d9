// Size and time of change of a file, by which it is known to be as it was.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace corvane {

struct file_stamp {
  std::uint64_t size = 0;
  std::int64_t changed = 0;  ///< in the file system's own clock
  bool operator==(const file_stamp&) const = default;
};

/// Of the file at a native path. Not set if there is no such file.
std::optional<file_stamp> stamp_of(const std::string& path);

}  // namespace corvane
