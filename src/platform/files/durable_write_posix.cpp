#include "platform/files/durable_write.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace corvane {
namespace {

std::string last_error() {
  return std::strerror(errno);
}

}  // namespace

std::filesystem::path unused_name_beside(const std::filesystem::path& target) {
  std::filesystem::path beside = target;
  beside += ".part" + std::to_string(::getpid());
  return beside;
}

failure write_durably(const std::filesystem::path& path, std::string_view text) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (file < 0)
    return last_error();
  failure why;
  while (!text.empty() && !why) {
    const ssize_t written = ::write(file, text.data(), text.size());
    if (written >= 0)
      text.remove_prefix(static_cast<std::size_t>(written));
    else if (errno != EINTR)
      why = last_error();
  }
  if (!why && ::fsync(file) != 0)
    why = last_error();
  if (::close(file) != 0 && !why)
    why = last_error();
  return why;
}

failure replace_durably(const std::filesystem::path& from, const std::filesystem::path& to) {
  struct stat old {};
  if (::lstat(to.c_str(), &old) == 0 && S_ISREG(old.st_mode) &&
      ::chmod(from.c_str(), old.st_mode & 07777) != 0)
    return last_error();
  if (std::rename(from.c_str(), to.c_str()) != 0)
    return last_error();
  // The new name is safe only once the folder is on the disk too; a file system that cannot
  // flush folders is not a failed save.
  const int folder = ::open(to.parent_path().empty() ? "." : to.parent_path().c_str(),
                            O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (folder >= 0) {
    ::fsync(folder);
    ::close(folder);
  }
  return std::nullopt;
}

}  // namespace corvane
