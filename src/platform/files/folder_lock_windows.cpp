#include "platform/files/files.h"
#include "platform/files/folder_lock.h"
#include "platform/files/paths.h"

#include <windows.h>

namespace corvane {

struct folder_lock::state {
  std::string path;
  HANDLE file = INVALID_HANDLE_VALUE;
  bool held = false;

  bool open() {
    if (file == INVALID_HANDLE_VALUE)
      file = ::CreateFileW(path_of(path).c_str(), GENERIC_READ | GENERIC_WRITE,
                           FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                           OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    return file != INVALID_HANDLE_VALUE;
  }
};

folder_lock::folder_lock(const std::string& folder) : s_(std::make_unique<state>()) {
  s_->path = join_path(folder, "corvane.lock");
  s_->open();
}

folder_lock::~folder_lock() {
  if (s_->file != INVALID_HANDLE_VALUE)
    ::CloseHandle(s_->file);
}

bool folder_lock::take() {
  if (s_->held)
    return true;
  OVERLAPPED at{};
  s_->held =
      s_->open() && ::LockFileEx(s_->file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0,
                                 1, 0, &at) != 0;
  return s_->held;
}

void folder_lock::release() {
  OVERLAPPED at{};
  if (s_->held)
    ::UnlockFileEx(s_->file, 0, 1, 0, &at);
  s_->held = false;
}

bool folder_lock::held() const {
  return s_->held;
}

}  // namespace corvane
