#include "platform/durable_write.h"

#include <algorithm>
#include <string>
#include <system_error>
#include <windows.h>

namespace corvane {
namespace {

std::string last_error() {
  return std::system_category().message(static_cast<int>(::GetLastError()));
}

}  // namespace

std::filesystem::path unused_name_beside(const std::filesystem::path& target) {
  std::filesystem::path beside = target;
  beside += L".part" + std::to_wstring(::GetCurrentProcessId());
  return beside;
}

failure write_durably(const std::filesystem::path& path, std::string_view text) {
  const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
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
  if (::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) ==
      0)
    return last_error();
  return std::nullopt;
}

}  // namespace corvane
