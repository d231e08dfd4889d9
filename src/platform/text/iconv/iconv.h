/* From the character sets of text subtitles to UTF-8, and back from UTF-8 to UTF-8, as far as the
   outside tools call it: by the tables of the C library of the machine that this was built on, so
   that a subtitle reads the same on every system.

   Sets are named as there, in letters of any size. Errors are those of POSIX: EINVAL for an unknown
   set and for bytes that end in the middle of a character, EILSEQ for bytes that are none, E2BIG
   for no room. A converter belongs to one thread. */
#ifndef CORVANE_ICONV_H
#define CORVANE_ICONV_H

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

typedef struct iconv_state* iconv_t;

iconv_t iconv_open(const char* to, const char* from);
size_t iconv(iconv_t converter, char** in, size_t* in_left, char** out, size_t* out_left);
int iconv_close(iconv_t converter);

#ifdef __cplusplus
}
#endif

#endif
