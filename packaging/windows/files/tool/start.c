/* Linked into every outside tool: what its source takes for granted of the system it starts on. */
#include <fcntl.h>
#include <io.h>
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
