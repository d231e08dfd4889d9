#include "platform/files/change_time.h"
#include "platform/files/files.h"

#include <algorithm>
#include <system_error>
#include <windows.h>

namespace corvane {
namespace {

/// Opens a file, a folder or a link itself, whoever else uses it.
HANDLE open_attributes(std::string_view native, DWORD access) {
  return ::CreateFileW(
      path_of(native).c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
      nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS | FILE_FLAG_OPEN_REPARSE_POINT, nullptr);
}

failure last_failure() {
  return std::system_category().message(static_cast<int>(::GetLastError()));
}

}  // namespace

// FAT keeps no time of change, and gives 0; what is copied there has the time of its making.
std::optional<std::int64_t> changed_at(std::string_view native) {
  const HANDLE file = open_attributes(native, FILE_READ_ATTRIBUTES);
  if (file == INVALID_HANDLE_VALUE)
    return std::nullopt;
  FILE_BASIC_INFO found{};
  const bool known = ::GetFileInformationByHandleEx(file, FileBasicInfo, &found, sizeof found) != 0;
  ::CloseHandle(file);
  if (!known)
    return std::nullopt;
  return std::max(
      {found.CreationTime.QuadPart, found.LastWriteTime.QuadPart, found.ChangeTime.QuadPart});
}

// The time of its bytes is this machine's, which another machine's disk need not share and which is
// finer than a disk's: so it is moved on by a tick alone, and the file system notes by its own
// clock when that was done. FAT, which does not, is given the time of now.
failure mark_changed(std::string_view native) {
  const HANDLE file = open_attributes(native, FILE_READ_ATTRIBUTES | FILE_WRITE_ATTRIBUTES);
  if (file == INVALID_HANDLE_VALUE)
    return last_failure();
  FILE_BASIC_INFO found{};
  FILETIME time{};
  ::GetSystemTimeAsFileTime(&time);
  if (::GetFileInformationByHandleEx(file, FileBasicInfo, &found, sizeof found) != 0 &&
      found.ChangeTime.QuadPart != 0) {
    const LONGLONG next = found.LastWriteTime.QuadPart + 1;
    time = {static_cast<DWORD>(next & 0xFFFFFFFF), static_cast<DWORD>(next >> 32)};
  }
  const failure why =
      ::SetFileTime(file, nullptr, nullptr, &time) != 0 ? std::nullopt : last_failure();
  ::CloseHandle(file);
  return why;
}

}  // namespace corvane
