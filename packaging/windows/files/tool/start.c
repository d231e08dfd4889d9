/* Linked into every outside tool: what its source takes for granted of the system it starts on. */
#include <fcntl.h>
#include <io.h>
#include <stdarg.h>
#include <stdio.h>
#include <stdlib.h>
#include <windows.h>

/* Arguments are names, never patterns. */
int _dowildcard = 0;

__attribute__((constructor)) static void start_as_elsewhere(void) {
  /* Streams of pictures and sound, not lines of text. Messages go to standard error, which stays
     text and has no buffer here. */
  _fmode = _O_BINARY;
  (void)_setmode(0, _O_BINARY);
  (void)_setmode(1, _O_BINARY);
  /* A tool that breaks down ends with a status: there is nobody to answer a window. */
  (void)SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX | SEM_NOOPENFILEERRORBOX);
  (void)_set_error_mode(_OUT_TO_STDERR);
}

/* In place of the compiler's own, which would write a message to standard error letter by letter,
   so that those of two tools of a pipe are mixed: all of it in one go. */
int __mingw_vfprintf(FILE* stream, const char* format, va_list values) {
  char line[1024];
  va_list again;
  va_copy(again, values);
  const int length = __mingw_vsnprintf(line, sizeof line, format, values);
  char* text = length < (int)sizeof line ? line : malloc((size_t)length + 1);
  if (length < 0 || text == NULL) {
    va_end(again);
    return -1;
  }
  if (text != line)
    (void)__mingw_vsnprintf(text, (size_t)length + 1, format, again);
  va_end(again);
  int written = 0;
  if (stream == stderr)
    written = _write(_fileno(stream), text, (unsigned)length);
  else
    written = (int)fwrite(text, 1, (size_t)length, stream);
  if (text != line)
    free(text);
  return written < length ? -1 : length;
}
