#include "platform/system_version.h"

#include <windows.h>

namespace corvane {
namespace {

/// From the system's core: GetVersionEx tells what a manifest makes it tell. 0 when it is not
/// known.
unsigned long build_number() {
  using get_version = LONG(WINAPI*)(OSVERSIONINFOW*);
  const HMODULE core = ::GetModuleHandleW(L"ntdll.dll");
  const auto get = reinterpret_cast<get_version>(
      reinterpret_cast<void*>(::GetProcAddress(core, "RtlGetVersion")));
  OSVERSIONINFOW version{};
  version.dwOSVersionInfoSize = sizeof version;
  if (get == nullptr || get(&version) != 0)
    return 0;
  return version.dwMajorVersion >= 10 ? version.dwBuildNumber : 0;
}

}  // namespace

failure why_system_is_too_old() {
  return why_windows_is_too_old(build_number(), ::GetACP());
}

}  // namespace corvane
