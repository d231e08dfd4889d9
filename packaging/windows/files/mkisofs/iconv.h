/* As much of iconv as the source asks of it: from UTF-8 to big-endian UCS-2, the names of files in
   UDF and Joliet. */
#ifndef ICONV_H
#define ICONV_H

#include <stddef.h>

typedef void* iconv_t;

/* (iconv_t)-1 for any other pair of character sets. */
iconv_t iconv_open(const char* to, const char* from);

/* 0 or more; (size_t)-1 and errno E2BIG when `out` is full, EILSEQ at what is no UTF-8. A character
   beyond UCS-2 is EILSEQ as well. */
size_t iconv(iconv_t set, char** in, size_t* in_left, char** out, size_t* out_left);

#endif
