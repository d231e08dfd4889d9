#include "platform/files/folder_lock.h"
#include "platform/files/paths.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace corvane {

struct folder_lock::state {
  std::string path;
  int file = -1;
  bool held = false;

  bool open() {
    if (file < 0)
      file = ::open(path.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
    return file >= 0;
  }
};

folder_lock::folder_lock(const std::string& folder) : s_(std::make_unique<state>()) {
  s_->path = join_path(folder, "corvane.lock");
  s_->open();
}

folder_lock::~folder_lock() {
  if (s_->file >= 0)
    ::close(s_->file);
}

bool folder_lock::take() {
  if (!s_->held)
    s_->held = s_->open() && ::flock(s_->file, LOCK_EX | LOCK_NB) == 0;
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

}  // namespace corvane
