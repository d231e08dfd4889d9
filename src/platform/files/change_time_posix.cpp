#include "platform/files/change_time.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>

namespace corvane {
namespace {

// A file system may hold any number; far from now is far from now.
std::int64_t nanoseconds(const struct timespec& time) {
  constexpr std::int64_t farthest = 9'000'000'000;  // seconds, in the year 2255
  const std::int64_t seconds = std::clamp<std::int64_t>(time.tv_sec, -farthest, farthest);
  return seconds * 1'000'000'000 + time.tv_nsec;
}

}  // namespace

std::optional<std::int64_t> changed_at(std::string_view native) {
  struct stat found {};
  if (::lstat(std::string(native).c_str(), &found) != 0)
    return std::nullopt;
  return std::max(nanoseconds(found.st_ctim), nanoseconds(found.st_mtim));
}

failure mark_changed(std::string_view native) {
  if (::utimensat(AT_FDCWD, std::string(native).c_str(), nullptr, 0) != 0)
    return std::strerror(errno);
  return std::nullopt;
}

}  // namespace corvane
