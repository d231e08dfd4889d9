/* See elsewhere.h. */
#include <errno.h>
#include <string.h>
#include <windows.h>
#undef time

int set_progname(const char* name);

/* Messages begin with the program's name, not with its path. */
__attribute__((constructor)) static void name_program(void) {
  set_progname("mkisofs");
}

static time_t seconds_of(FILETIME when) {
  /* From tenths of microseconds since 1601. */
  const uint64_t ticks = ((uint64_t)when.dwHighDateTime << 32) | when.dwLowDateTime;
  return (time_t)(ticks / 10000000u) - 11644473600;
}

/* The file or folder, for that kind of access; INVALID_HANDLE_VALUE and errno when it cannot be had. */
static HANDLE opened(const char* name, DWORD access_wanted) {
  /* The system's own conversion of a name may end at 260 characters. */
  wchar_t wide[PATH_MAX];
  if (MultiByteToWideChar(CP_UTF8, 0, name, -1, wide, PATH_MAX) == 0) {
    errno = ENAMETOOLONG;
    return INVALID_HANDLE_VALUE;
  }
  const HANDLE file =
      CreateFileW(wide, access_wanted, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, NULL,
                  OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, NULL);
  if (file == INVALID_HANDLE_VALUE) {
    const DWORD error = GetLastError();
    errno = error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION ? EACCES : ENOENT;
  }
  return file;
}

int file_access(const char* name) {
  const HANDLE file = opened(name, GENERIC_READ);
  if (file == INVALID_HANDLE_VALUE)
    return -1;
  CloseHandle(file);
  return 0;
}

static int told_by_system(const char* name, BY_HANDLE_FILE_INFORMATION* told) {
  const HANDLE file = opened(name, FILE_READ_ATTRIBUTES);
  if (file == INVALID_HANDLE_VALUE)
    return 0;
  const BOOL known = GetFileInformationByHandle(file, told);
  CloseHandle(file);
  if (!known)
    errno = EIO;
  return known;
}

int file_status(const char* name, struct file_status* status) {
  BY_HANDLE_FILE_INFORMATION told;
  if (!told_by_system(name, &told))
    return -1;
  memset(status, 0, sizeof *status);
  status->st_dev = told.dwVolumeSerialNumber;
  status->st_ino = ((uint64_t)told.nFileIndexHigh << 32) | told.nFileIndexLow;
  status->st_mode =
      (told.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) ? S_IFDIR | 0755 : S_IFREG | 0644;
  status->st_nlink = (int)told.nNumberOfLinks;
  status->st_size = (off_t)(((uint64_t)told.nFileSizeHigh << 32) | told.nFileSizeLow);
  status->st_atime = seconds_of(told.ftLastAccessTime);
  status->st_mtime = seconds_of(told.ftLastWriteTime);
  status->st_ctime = status->st_mtime;
  return 0;
}

time_t image_time(time_t* when) {
  const char* told = getenv("SOURCE_DATE_EPOCH");
  const time_t now = told && *told ? (time_t)strtoll(told, NULL, 10) : time(NULL);
  if (when)
    *when = now;
  return now;
}
