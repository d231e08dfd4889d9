#include "platform/processes/standard_files.h"

#include <windows.h>

namespace corvane {
namespace {

bool is_open(HANDLE file) {
  if (file == nullptr || file == INVALID_HANDLE_VALUE)
    return false;
  ::SetLastError(NO_ERROR);
  return ::GetFileType(file) != FILE_TYPE_UNKNOWN || ::GetLastError() == NO_ERROR;
}

}  // namespace

// The C library keeps the numbers of its own for them; but a handle that was closed may be another
// file's by the time that something is written to it.
void fill_standard_files() {
  for (const DWORD which : {STD_INPUT_HANDLE, STD_OUTPUT_HANDLE, STD_ERROR_HANDLE})
    if (!is_open(::GetStdHandle(which)))
      ::SetStdHandle(which, ::CreateFileW(L"NUL", GENERIC_READ | GENERIC_WRITE,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                          OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
}

}  // namespace corvane
