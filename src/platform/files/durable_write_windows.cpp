#include "platform/files/durable_write.h"

#include <algorithm>
#include <string>
#include <system_error>
#include <utility>
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

bool is_marked_read_only(const std::filesystem::path& file) {
  const DWORD kind = ::GetFileAttributesW(file.c_str());
  return kind != INVALID_FILE_ATTRIBUTES && (kind & FILE_ATTRIBUTE_READONLY) != 0;
}

failure write_all(HANDLE file, std::string_view text) {
  while (!text.empty()) {
    const DWORD want = static_cast<DWORD>(std::min<std::size_t>(text.size(), 1u << 30));
    DWORD written = 0;
    if (::WriteFile(file, text.data(), want, &written, nullptr) == 0)
      return last_error();
    text.remove_prefix(written);
  }
  return std::nullopt;
}

failure set_size(HANDLE file, LONGLONG bytes) {
  LARGE_INTEGER size{};
  size.QuadPart = bytes;
  if (::SetFilePointerEx(file, size, nullptr, FILE_BEGIN) == 0 || ::SetEndOfFile(file) == 0)
    return last_error();
  return std::nullopt;
}

/// Closes the file in any case. Gives the first failure.
failure flush_and_close(HANDLE file, failure why) {
  if (!why && ::FlushFileBuffers(file) == 0)
    why = last_error();
  if (::CloseHandle(file) == 0 && !why)
    why = last_error();
  return why;
}

}  // namespace

unsigned long process_number() {
  return ::GetCurrentProcessId();
}

bool has_ended(unsigned long process) {
  const HANDLE running = ::OpenProcess(SYNCHRONIZE, FALSE, process);
  if (running == nullptr)
    return ::GetLastError() == ERROR_INVALID_PARAMETER;  // there is none of that number
  const bool ended = ::WaitForSingleObject(running, 0) == WAIT_OBJECT_0;
  ::CloseHandle(running);
  return ended;
}

failure why_write_protected(const std::filesystem::path& file) {
  if (is_marked_read_only(file))
    return "is write-protected";
  return std::nullopt;
}

bool must_stay_this_file(const std::filesystem::path& file) {
  // Who may do what is best asked by doing it.
  const HANDLE tried =
      ::CreateFileW(unused_name_beside(file).c_str(), GENERIC_WRITE | DELETE, 0, nullptr,
                    CREATE_NEW, FILE_ATTRIBUTE_TEMPORARY | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
  if (tried == INVALID_HANDLE_VALUE)
    return ::GetLastError() == ERROR_ACCESS_DENIED;
  ::CloseHandle(tried);
  return false;
}

failure write_durably(const std::filesystem::path& path, std::string_view text) {
  const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE)
    return last_error();
  return flush_and_close(file, write_all(file, text));
}

failure overwrite_durably(const std::filesystem::path& path, std::string_view text) {
  const HANDLE file = ::CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE)
    return last_error();
  LARGE_INTEGER old{};
  failure why;
  if (::GetFileSizeEx(file, &old) == 0)
    why = last_error();
  const auto size = static_cast<LONGLONG>(text.size());
  if (!why && size > old.QuadPart && (why = set_size(file, size)))
    if (const failure not_back = set_size(file, old.QuadPart))
      *why += ", and it could not be set back";
  if (!why && ::SetFilePointerEx(file, LARGE_INTEGER{}, nullptr, FILE_BEGIN) == 0)
    why = last_error();
  if (!why)
    why = write_all(file, text);
  if (!why)
    why = set_size(file, size);
  return flush_and_close(file, std::move(why));
}

std::filesystem::path lasting_temporary_folder() {
  std::error_code error;
  return std::filesystem::temp_directory_path(error);
}

failure replace_durably(const std::filesystem::path& from, const std::filesystem::path& to) {
  // Not every system keeps a file from being replaced because it is marked so.
  if (is_marked_read_only(to))
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
