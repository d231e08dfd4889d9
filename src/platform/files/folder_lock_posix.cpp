#include "platform/files/folder_lock.h"
#include "platform/files/paths.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace corvane {

struct folder_lock::state {
  std::string path;
  int file = -1;
  bool held = false;
  bool held_elsewhere = false;
  std::string trouble;

  bool open() {
    if (file < 0)
      file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    return file >= 0;
  }
  void close() {
    if (file >= 0)
      ::close(file);
    file = -1;
    held = false;
  }
  /// Whether the name still leads to the file that is open: whoever held the lock may have let it
  /// vanish meanwhile, and a lock on a file without a name keeps nobody off.
  bool is_the_named_one() const {
    struct stat opened {};
    struct stat named {};
    return ::fstat(file, &opened) == 0 && ::stat(path.c_str(), &named) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
  }
};

folder_lock::folder_lock(const std::string& folder) : s_(std::make_unique<state>()) {
  s_->path = join_path(folder, "corvane.lock");
  s_->open();
}

folder_lock::~folder_lock() {
  s_->close();
}

bool folder_lock::take() {
  s_->held_elsewhere = false;
  for (int tries = 0; !s_->held && tries < 3; ++tries) {
    if (!s_->open()) {
      s_->trouble = std::strerror(errno);
      return false;
    }
    if (::flock(s_->file, LOCK_EX | LOCK_NB) != 0) {
      s_->held_elsewhere = errno == EWOULDBLOCK;
      s_->trouble = std::strerror(errno);
      return false;
    }
    s_->held = s_->is_the_named_one();
    if (!s_->held)
      s_->close();
  }
  return s_->held;
}

void folder_lock::release() {
  if (s_->held)
    ::flock(s_->file, LOCK_UN);
  s_->held = false;
}

bool folder_lock::held() const {
  return s_->held;
}

bool folder_lock::is_held_elsewhere() const {
  return s_->held_elsewhere;
}

const std::string& folder_lock::trouble() const {
  return s_->trouble;
}

void folder_lock::vanish() {
  ::unlink(s_->path.c_str());
  s_->close();
}

}  // namespace corvane
