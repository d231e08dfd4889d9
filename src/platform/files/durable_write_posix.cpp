#include "platform/files/durable_write.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <utility>

namespace corvane {
namespace {

std::string last_error() {
  return std::strerror(errno);
}

failure write_all(int file, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = ::write(file, text.data(), text.size());
    if (written >= 0)
      text.remove_prefix(static_cast<std::size_t>(written));
    else if (errno != EINTR)
      return last_error();
  }
  return std::nullopt;
}

/// Closes the file in any case. Gives the first failure.
failure flush_and_close(int file, failure why) {
  if (!why && ::fsync(file) != 0)
    why = last_error();
  if (::close(file) != 0 && !why)
    why = last_error();
  return why;
}

}  // namespace

unsigned long process_number() {
  return static_cast<unsigned long>(::getpid());
}

bool has_ended(unsigned long process) {
  const auto number = static_cast<pid_t>(process);
  return number > 0 && ::kill(number, 0) != 0 && errno == ESRCH;
}

failure why_write_protected(const std::filesystem::path& file) {
  struct stat there {};
  if (::stat(file.c_str(), &there) != 0)
    return std::nullopt;
  // The system's administrator may write into a file that is not to be written, too.
  if ((there.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) == 0)
    return "is write-protected";
  if (::faccessat(AT_FDCWD, file.c_str(), W_OK, AT_EACCESS) == 0)
    return std::nullopt;
  return errno == EROFS ? "is on a disk that can only be read" : "is write-protected";
}

bool must_stay_this_file(const std::filesystem::path& file) {
  const std::filesystem::path parent = file.parent_path();
  const char* const folder = parent.empty() ? "." : parent.c_str();
  if (::faccessat(AT_FDCWD, folder, W_OK | X_OK, AT_EACCESS) != 0)
    return true;
  struct stat of_folder {};
  struct stat of_file {};
  // In a folder for everybody only the owners of folder and file may give its name to another.
  const uid_t us = ::geteuid();
  return ::stat(folder, &of_folder) == 0 && ::stat(file.c_str(), &of_file) == 0 &&
         (of_folder.st_mode & S_ISVTX) != 0 && us != 0 && us != of_folder.st_uid &&
         us != of_file.st_uid;
}

failure write_durably(const std::filesystem::path& path, std::string_view text) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (file < 0)
    return last_error();
  return flush_and_close(file, write_all(file, text));
}

failure overwrite_durably(const std::filesystem::path& path, std::string_view text) {
  const int file = ::open(path.c_str(), O_WRONLY | O_CLOEXEC);
  if (file < 0)
    return last_error();
  struct stat old {};
  failure why;
  const auto size = static_cast<off_t>(text.size());
  if (::fstat(file, &old) != 0)
    why = last_error();
  if (!why && size > old.st_size)
    if (const int error = ::posix_fallocate(file, 0, size)) {
      why = std::strerror(error);
      if (::ftruncate(file, old.st_size) != 0)
        *why += ", and it could not be set back";
    }
  if (!why)
    why = write_all(file, text);
  if (!why && ::ftruncate(file, size) != 0)
    why = last_error();
  return flush_and_close(file, std::move(why));
}

std::filesystem::path lasting_temporary_folder() {
  std::error_code error;
  if (::access("/var/tmp", W_OK | X_OK) == 0)
    return "/var/tmp";
  return std::filesystem::temp_directory_path(error);
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
