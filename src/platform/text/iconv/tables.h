/* The tables that make_tables.c writes and iconv.c reads. */
#ifndef CORVANE_ICONV_TABLES_H
#define CORVANE_ICONV_TABLES_H

#include <stdint.h>

enum { NONE = 0x10000000, PAIR = 0x20000000, TABLE = 0x40000000 };

struct set {
  const char* name; /* none in the last one */
  int root;
};

extern const uint32_t tables[][256];
extern const uint32_t pairs[][2];
extern const struct set sets[];

#endif
