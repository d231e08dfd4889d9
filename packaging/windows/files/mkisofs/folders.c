/* Reading a folder: see elsewhere.h. */
#include <errno.h>
#include <string.h>
#include <windows.h>

struct folder {
  HANDLE search;
  WIN32_FIND_DATAW found;
  int waiting; /* whether `found` has not been given out yet */
  struct folder_entry entry;
};

struct folder* open_folder(const char* name) {
  wchar_t pattern[PATH_MAX + 2];
  const int length = MultiByteToWideChar(CP_UTF8, 0, name, -1, pattern, PATH_MAX);
  if (length == 0) {
    errno = ENAMETOOLONG;
    return NULL;
  }
  wcscpy(pattern + length - 1, L"\\*");
  struct folder* opened = calloc(1, sizeof *opened);
  if (!opened)
    return NULL;
  opened->search = FindFirstFileW(pattern, &opened->found);
  if (opened->search == INVALID_HANDLE_VALUE) {
    errno = GetLastError() == ERROR_ACCESS_DENIED ? EACCES : ENOENT;
    free(opened);
    return NULL;
  }
  opened->waiting = 1;
  return opened;
}

struct folder_entry* read_folder(struct folder* from) {
  if (!from->waiting && !FindNextFileW(from->search, &from->found))
    return NULL;
  from->waiting = 0;
  if (WideCharToMultiByte(CP_UTF8, 0, from->found.cFileName, -1, from->entry.d_name,
                          sizeof from->entry.d_name, NULL, NULL) == 0)
    return NULL;
  return &from->entry;
}

int close_folder(struct folder* from) {
  FindClose(from->search);
  free(from);
  return 0;
}
