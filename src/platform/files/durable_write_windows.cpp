#include "platform/files/durable_write.h"

#include <algorithm>
#include <string>
#include <system_error>
#include <windows.h>

namespace corvane {
namespace {

std::string system_message(DWORD error) {
  return std::system_category().message(static_cast<int>(error));
}

std::string last_error() {
  return system_message(::GetLastError());
}

/// Virus scanners and the search index open files that were just written, for a moment each.
constexpr int tries = 10;
constexpr DWORD pause = 50;  // ms

/// Whether another program may have a file open that stands in the way. The system calls it a
/// sharing violation or a denied access, according to the program.
bool may_pass(DWORD error, const std::filesystem::path& target) {
  if (error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION)
    return true;
  return error == ERROR_ACCESS_DENIED &&
         ::GetFileAttributesW(target.c_str()) != INVALID_FILE_ATTRIBUTES;
}

}  // namespace

std::filesystem::path unused_name_beside(const std::filesystem::path& target) {
  std::filesystem::path beside = target;
  beside += L".part" + std::to_wstring(::GetCurrentProcessId());
  return beside;
}

failure write_durably(const std::filesystem::path& path, std::string_view text) {
  const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE)
    return last_error();
  failure why;
  while (!text.empty() && !why) {
    const DWORD want = static_cast<DWORD>(std::min<std::size_t>(text.size(), 1u << 30));
    DWORD written = 0;
    if (::WriteFile(file, text.data(), want, &written, nullptr) == 0)
      why = last_error();
    text.remove_prefix(written);
  }
  if (!why && ::FlushFileBuffers(file) == 0)
    why = last_error();
  if (::CloseHandle(file) == 0 && !why)
    why = last_error();
  return why;
}

failure replace_durably(const std::filesystem::path& from, const std::filesystem::path& to) {
  // Not every system keeps a file from being replaced because it is marked so.
  const DWORD kind = ::GetFileAttributesW(to.c_str());
  if (kind != INVALID_FILE_ATTRIBUTES && (kind & FILE_ATTRIBUTE_READONLY) != 0)
    return "the file is read-only";
  for (int left = tries;; --left) {
    if (::MoveFileExW(from.c_str(), to.c_str(),
                      MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0)
      return std::nullopt;
    const DWORD error = ::GetLastError();
    if (left == 1 || !may_pass(error, to))
      return system_message(error);
    ::Sleep(pause);
  }
}

}  // namespace corvane
