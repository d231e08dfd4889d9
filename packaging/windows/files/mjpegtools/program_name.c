/* The program's name, which elsewhere the C library knows: it stands in every message. */
#include <stdlib.h>
#include <string.h>

const char* __progname = "";

__attribute__((constructor)) static void find_program_name(void) {
  static char name[64];
  const char* path = _pgmptr == NULL ? "" : _pgmptr;
  const char* last = strrchr(path, '\\');
  strncpy(name, last == NULL ? path : last + 1, sizeof name - 1);
  char* dot = strrchr(name, '.');
  if (dot != NULL)
    *dot = '\0';
  __progname = name;
}
