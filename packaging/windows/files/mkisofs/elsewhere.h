/* Read before every file of the source: what it takes of the system and Windows lacks, or has
   otherwise. Files are told apart by device and number, which the C library does not give here. */
#ifndef ELSEWHERE_H
#define ELSEWHERE_H

#include <fcntl.h>
#include <io.h>
#include <limits.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <time.h>
#include <unistd.h>

#define HAVE_USLEEP 1
#define _POSIX_VERSION 200112L

typedef int uid_t;
typedef int gid_t;
typedef int nlink_t;
typedef uint64_t file_number;
#define ino_t file_number
#define dev_t uint32_t

struct file_status {
  dev_t st_dev, st_rdev;
  ino_t st_ino;
  mode_t st_mode;
  nlink_t st_nlink;
  uid_t st_uid;
  gid_t st_gid;
  off_t st_size;
  time_t st_atime, st_mtime, st_ctime;
};

/* What stat tells; names are UTF-8. -1 and errno when there is no such file. */
int file_status(const char* name, struct file_status* status);
#undef stat
#define stat file_status
#define lstat file_status

/* 0 when the file or folder can be read, which is all that is asked; else -1 and errno. */
int file_access(const char* name);
#define access(name, mode) file_access(name)

/* Folders, with names of any length and in UTF-8, which is up to three times as long. */
#undef PATH_MAX
#define PATH_MAX 4096
#undef NAME_MAX
#define NAME_MAX 1023
#undef FILENAME_MAX
#define FILENAME_MAX PATH_MAX

struct folder_entry {
  char d_name[NAME_MAX + 1];
};
struct folder;
struct folder* open_folder(const char* name);
struct folder_entry* read_folder(struct folder* from);
int close_folder(struct folder* from);
#define _DIRENT_H_
#define DIR struct folder
#define dirent folder_entry
#define opendir open_folder
#define readdir read_folder
#define closedir close_folder

/* The time, or $SOURCE_DATE_EPOCH, in seconds since 1970: what an image says it was made at. */
time_t image_time(time_t* when);
#define time image_time

#define S_ISLNK(mode) 0
#define S_ISSOCK(mode) 0
#define major(device) 0
#define minor(device) 0
#define readlink(name, text, size) (-1)
#define getuid() 0
#define getgid() 0
#define setuid(user) 0
#define sbrk(size) 0

/* Jigdo templates are left out; the source names their variables all the same. */
extern char *jtemplate_out, *jjigdo_out, *jmd5_list;
extern FILE *jtjigdo, *jttemplate;

#endif
