#include "platform/files/long_paths.h"

#include <windows.h>

namespace corvane {

std::optional<std::size_t> longest_path() {
  DWORD enabled = 0;
  DWORD size = sizeof enabled;
  ::RegGetValueW(HKEY_LOCAL_MACHINE, L"SYSTEM\\CurrentControlSet\\Control\\FileSystem",
                 L"LongPathsEnabled", RRF_RT_REG_DWORD, nullptr, &enabled, &size);
  return enabled != 0 ? std::nullopt : std::optional<std::size_t>(MAX_PATH - 1);
}

}  // namespace corvane
