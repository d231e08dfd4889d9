/* Writes the tables of iconv.c: what the C library of this machine makes of every sequence of bytes
   of the character sets. Run while building, on the building machine.

   A set is a tree: 256 numbers for a first byte, and more for the bytes that may follow one. A
   number is a character's, or NONE, or PAIR and the number of a pair of characters, or TABLE and
   the number of the 256 for the next byte. */
#include "tables.h"

#include <errno.h>
#include <iconv.h>
#include <stdint.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static int table_count, pair_count;
static uint32_t pair[1000][2];

/* The characters of some bytes: how many (0 to 2); -1: no characters; -2: more bytes are missing.
 */
static int decoded(iconv_t converter, const unsigned char* bytes, size_t length, uint32_t* to) {
  uint32_t characters[8];
  char *in = (char*)bytes, *out = (char*)characters;
  size_t left = length, room = sizeof characters;
  iconv(converter, NULL, NULL, NULL, NULL);
  errno = 0;
  if (iconv(converter, &in, &left, &out, &room) == (size_t)-1)
    return errno == EINVAL ? -2 : -1;
  iconv(converter, NULL, NULL, &out, &room);
  const int count = (int)((sizeof characters - room) / 4);
  memcpy(to, characters, sizeof characters - room);
  return count;
}

/* Writes the tables for what may follow some bytes, the deepest first; gives the first one's
 * number. */
static int table(iconv_t converter, unsigned char* bytes, size_t length) {
  uint32_t numbers[256];
  for (int i = 0; i < 256; ++i) {
    uint32_t to[8];
    bytes[length] = (unsigned char)i;
    const int count = decoded(converter, bytes, length + 1, to);
    if (count == 1) {
      numbers[i] = to[0];
    } else if (count == 2) {
      pair[pair_count][0] = to[0];
      pair[pair_count][1] = to[1];
      numbers[i] = PAIR + (uint32_t)pair_count++;
    } else if (count == -2 && length < 3) {
      numbers[i] = TABLE + (uint32_t)table(converter, bytes, length + 1);
    } else {
      numbers[i] = NONE;
    }
  }
  printf("  {");
  for (int i = 0; i < 256; ++i)
    printf("%s0x%x,", i % 12 == 0 ? "\n   " : "", (unsigned)numbers[i]);
  printf("\n  },\n");
  return table_count++;
}

int main(int argc, char** argv) {
  int roots[100];
  printf("#include \"tables.h\"\n\nconst uint32_t tables[][256] = {\n");
  for (int i = 1; i < argc; ++i) {
    unsigned char bytes[8];
    const iconv_t converter = iconv_open("UCS-4LE", argv[i]);
    if (converter == (iconv_t)-1) {
      fprintf(stderr, "make_tables: this machine has no character set %s\n", argv[i]);
      return EXIT_FAILURE;
    }
    roots[i] = table(converter, bytes, 0);
    iconv_close(converter);
  }
  printf("};\n\nconst uint32_t pairs[][2] = {\n");
  for (int i = 0; i < pair_count; ++i)
    printf("  {0x%x, 0x%x},\n", (unsigned)pair[i][0], (unsigned)pair[i][1]);
  printf("  {0, 0}\n};\n\nconst struct set sets[] = {\n");
  for (int i = 1; i < argc; ++i)
    printf("  {\"%s\", %d},\n", argv[i], roots[i]);
  printf("  {0, 0}\n};\n");
  return EXIT_SUCCESS;
}
