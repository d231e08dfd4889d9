// By the system itself: the compiler's library takes "\\server\share" for folders of the current
// drive, lists no folder with a long path, removes what a junction leads to, and takes any two
// files for one and the same, which it does not copy over itself.
#include "platform/files/files.h"
#include "platform/text/utf16_windows.h"

#include <algorithm>
#include <cwchar>
#include <system_error>
#include <utility>
#include <windows.h>

namespace corvane {
namespace {

struct folder_entry {
  std::wstring name;
  bool is_folder = false;
};

/// What a folder holds; nullopt if it cannot be read.
std::vector<folder_entry> entries_of(std::wstring folder) {
  std::vector<folder_entry> entries;
  if (!folder.empty() && folder.back() != L'\\')
    folder += L'\\';
  WIN32_FIND_DATAW found{};
  const HANDLE search = ::FindFirstFileExW((folder + L"*").c_str(), FindExInfoBasic, &found,
                                           FindExSearchNameMatch, nullptr, 0);
  if (search == INVALID_HANDLE_VALUE)
    return entries;
  do {
    if (std::wcscmp(found.cFileName, L".") != 0 && std::wcscmp(found.cFileName, L"..") != 0)
      entries.push_back(
          {found.cFileName, (found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0});
  } while (::FindNextFileW(search, &found) != 0);
  ::FindClose(search);
  return entries;
}

/// 0, or the system's number for what went wrong.
DWORD remove_with_contents(const std::wstring& path) {
  const DWORD kind = ::GetFileAttributesW(path.c_str());
  if (kind == INVALID_FILE_ATTRIBUTES)
    return ::GetLastError();
  const bool folder = (kind & FILE_ATTRIBUTE_DIRECTORY) != 0;
  // A junction or a link goes, what it leads to stays.
  if (folder && (kind & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
    for (const folder_entry& entry : entries_of(path))
      if (const DWORD error = remove_with_contents(path + L'\\' + entry.name); error != 0)
        return error;
  const BOOL gone = folder ? ::RemoveDirectoryW(path.c_str()) : ::DeleteFileW(path.c_str());
  return gone != 0 ? 0 : ::GetLastError();
}

}  // namespace

bool current_folder_holds_a_file() {
  const auto entries = entries_of({});
  return std::any_of(entries.begin(), entries.end(),
                     [](const folder_entry& entry) { return !entry.is_folder; });
}

std::vector<std::string> files_in(std::string_view native_folder) {
  std::vector<std::string> names;
  for (const folder_entry& entry : entries_of(utf16(native_folder)))
    if (!entry.is_folder)
      names.push_back(utf8_of_utf16(entry.name));
  std::sort(names.begin(), names.end());
  return names;
}

failure remove_all(std::string_view native) {
  const DWORD error = remove_with_contents(utf16(native));
  if (error == 0 || error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND)
    return std::nullopt;
  return std::system_category().message(static_cast<int>(error));
}

failure move_entry(std::string_view from, std::string_view to) {
  constexpr int tries = 10;
  constexpr DWORD pause = 50;  // ms
  for (int left = tries;; --left) {
    if (::MoveFileExW(utf16(from).c_str(), utf16(to).c_str(), MOVEFILE_WRITE_THROUGH) != 0)
      return std::nullopt;
    const DWORD error = ::GetLastError();
    // A file that is open, of the folder too, is told as either.
    const bool may_pass = error == ERROR_SHARING_VIOLATION || error == ERROR_ACCESS_DENIED;
    if (left == 1 || !may_pass)
      return std::system_category().message(static_cast<int>(error));
    ::Sleep(pause);
  }
}

failure copy_file(std::string_view from, std::string_view to) {
  if (::CopyFileW(utf16(from).c_str(), utf16(to).c_str(), FALSE) != 0)
    return std::nullopt;
  return std::system_category().message(static_cast<int>(::GetLastError()));
}

std::string absolute_path(std::string_view native) {
  const std::wstring given = utf16(native);
  std::wstring path(::GetFullPathNameW(given.c_str(), 0, nullptr, nullptr), L'\0');
  // The room includes the zero at the end, the length does not.
  const DWORD length =
      ::GetFullPathNameW(given.c_str(), static_cast<DWORD>(path.size()), path.data(), nullptr);
  if (length == 0 || length >= path.size())
    return std::string(native);
  path.resize(length);
  // "C:\" stays as it is: "C:" would be that drive's current folder.
  const bool root = path.size() == 3 && path[1] == L':';
  if (path.back() == L'\\' && !root)
    path.pop_back();
  return utf8_of_utf16(path);
}

}  // namespace corvane
