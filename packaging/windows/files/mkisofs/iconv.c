/* See iconv.h. */
#include "iconv.h"

#include <errno.h>
#include <stdint.h>
#include <string.h>

iconv_t iconv_open(const char* to, const char* from) {
  static int the_only_one;
  if (strcmp(to, "UCS-2BE") == 0 && strcmp(from, "utf-8") == 0)
    return &the_only_one;
  errno = EINVAL;
  return (iconv_t)-1;
}

/* The character at `in`, and its length in bytes; length 0 when it is none of UCS-2. */
static uint32_t character_at(const unsigned char* in, size_t left, size_t* length) {
  static const uint32_t least[] = {0, 0, 0x80, 0x800};
  *length = in[0] < 0x80 ? 1 : (in[0] & 0xe0) == 0xc0 ? 2 : (in[0] & 0xf0) == 0xe0 ? 3 : 0;
  if (*length == 0 || *length > left) {
    *length = 0;
    return 0;
  }
  uint32_t character = *length == 1 ? in[0] : *length == 2 ? in[0] & 0x1f : in[0] & 0x0f;
  for (size_t i = 1; i < *length; i++) {
    if ((in[i] & 0xc0) != 0x80) {
      *length = 0;
      return 0;
    }
    character = character << 6 | (in[i] & 0x3f);
  }
  if (character < least[*length] || (character >= 0xd800 && character < 0xe000))
    *length = 0;
  return character;
}

size_t iconv(iconv_t set, char** in, size_t* in_left, char** out, size_t* out_left) {
  (void)set;
  if (!in || !*in)
    return 0;
  while (*in_left > 0) {
    size_t length;
    const uint32_t character = character_at((const unsigned char*)*in, *in_left, &length);
    if (length == 0 || *out_left < 2) {
      errno = length == 0 ? EILSEQ : E2BIG;
      return (size_t)-1;
    }
    *(*out)++ = (char)(character >> 8);
    *(*out)++ = (char)(character & 0xff);
    *in += length;
    *in_left -= length;
    *out_left -= 2;
  }
  return 0;
}
