#include "platform/files/files.h"
#include "platform/files/folder_lock.h"
#include "platform/files/paths.h"

#include <system_error>
#include <windows.h>

namespace corvane {

struct folder_lock::state {
  std::string path;
  HANDLE file = INVALID_HANDLE_VALUE;
  bool held = false;
  bool held_elsewhere = false;
  std::string trouble;

  bool open() {
    if (file == INVALID_HANDLE_VALUE)
      file = ::CreateFileW(path_of(path).c_str(), GENERIC_READ | GENERIC_WRITE,
                           FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                           OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    return file != INVALID_HANDLE_VALUE;
  }
  void close() {
    if (file != INVALID_HANDLE_VALUE)
      ::CloseHandle(file);
    file = INVALID_HANDLE_VALUE;
    held = false;
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
  if (s_->held)
    return true;
  if (!s_->open()) {
    s_->trouble = std::system_category().message(static_cast<int>(::GetLastError()));
    return false;
  }
  OVERLAPPED at{};
  s_->held = ::LockFileEx(s_->file, LOCKFILE_EXCLUSIVE_LOCK | LOCKFILE_FAIL_IMMEDIATELY, 0, 1, 0,
                          &at) != 0;
  if (!s_->held) {
    const DWORD why = ::GetLastError();
    s_->held_elsewhere = why == ERROR_LOCK_VIOLATION || why == ERROR_IO_PENDING;
    s_->trouble = std::system_category().message(static_cast<int>(why));
  }
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

bool folder_lock::is_held_elsewhere() const {
  return s_->held_elsewhere;
}

const std::string& folder_lock::trouble() const {
  return s_->trouble;
}

// A file that is open keeps its folder from being removed, so it is closed first.
void folder_lock::vanish() {
  s_->close();
  ::DeleteFileW(path_of(s_->path).c_str());
}

}  // namespace corvane
