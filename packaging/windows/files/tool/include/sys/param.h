/* Names of files may be longer than Windows once allowed. */
#include_next <sys/param.h>

#undef MAXPATHLEN
#define MAXPATHLEN 4096
