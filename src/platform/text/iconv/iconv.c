#include "iconv.h"

#include "tables.h"

#include <errno.h>
#include <stdlib.h>
#include <string.h>
#include <strings.h>

/* The three ways that bytes are read: by tables, by tables between escapes (ISO-2022-JP), and
 * UTF-8. */
enum kind { BY_TABLES, WITH_ESCAPES, FROM_UTF8 };

/* What ISO-2022-JP's escapes choose. */
enum chosen { ASCII, ROMAN, KANJI };

struct iconv_state {
  enum kind kind;
  int root;
  enum chosen chosen;
};

/* What was read: up to two characters (none for an escape), from so many bytes; or an error. */
struct reading {
  uint32_t characters[2];
  int count;
  size_t bytes;
  int error;
};

static struct reading one(uint32_t character, size_t bytes) {
  return (struct reading){{character, 0}, 1, bytes, 0};
}

static struct reading wrong(int error) {
  return (struct reading){{0, 0}, 0, 0, error};
}

static int root_of(const char* name) {
  for (const struct set* set = sets; set->name != NULL; ++set)
    if (strcasecmp(set->name, name) == 0)
      return set->root;
  return -1;
}

static struct reading read_by_tables(int root, const unsigned char* in, size_t left) {
  uint32_t found = TABLE + (uint32_t)root;
  for (size_t i = 0; i < left; ++i) {
    found = tables[found - TABLE][in[i]];
    if (found == NONE)
      return wrong(EILSEQ);
    if (found < NONE)
      return one(found, i + 1);
    if (found < TABLE) {
      const uint32_t* both = pairs[found - PAIR];
      return (struct reading){{both[0], both[1]}, 2, i + 1, 0};
    }
  }
  return wrong(EINVAL);
}

/* An escape that chooses nothing is a character like others. */
static struct reading read_escape(struct iconv_state* state, const unsigned char* in, size_t left) {
  static const struct {
    char bytes[4];
    enum chosen chosen;
  } escapes[] = {{"\33(B", ASCII}, {"\33(J", ROMAN}, {"\33$@", KANJI}, {"\33$B", KANJI}};
  if (left < 3)
    return wrong(EINVAL);
  for (size_t i = 0; i < sizeof escapes / sizeof escapes[0]; ++i) {
    if (memcmp(escapes[i].bytes, in, 3) == 0) {
      state->chosen = escapes[i].chosen;
      return (struct reading){{0, 0}, 0, 3, 0};
    }
  }
  return one(in[0], 1);
}

/* `root` is that of EUC-JP, which has the same characters at the same places, 0x80 higher. */
static struct reading read_with_escapes(struct iconv_state* state, const unsigned char* in,
                                        size_t left) {
  if (in[0] == 0x1b)
    return read_escape(state, in, left);
  if (in[0] >= 0x80)
    return wrong(EILSEQ);
  if (state->chosen == ASCII || in[0] <= 0x20 || in[0] == 0x7f)
    return one(in[0], 1);
  if (state->chosen == ROMAN)
    return one(in[0] == 0x5c ? 0xa5 : in[0] == 0x7e ? 0x203e : in[0], 1);
  if (left < 2)
    return wrong(EINVAL);
  if (in[1] >= 0x80)
    return wrong(EILSEQ);
  const unsigned char higher[2] = {in[0] | 0x80, in[1] | 0x80};
  return read_by_tables(state->root, higher, 2);
}

static struct reading read_utf8(const unsigned char* in, size_t left) {
  static const uint32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
  const size_t length = in[0] < 0x80   ? 1
                        : in[0] < 0xc2 ? 0
                        : in[0] < 0xe0 ? 2
                        : in[0] < 0xf0 ? 3
                        : in[0] < 0xf5 ? 4
                                       : 0;
  if (length == 0)
    return wrong(EILSEQ);
  uint32_t character = length == 1 ? in[0] : in[0] & (0x7fU >> length);
  for (size_t i = 1; i < length; ++i) {
    if (i == left)
      return wrong(EINVAL);
    if ((in[i] & 0xc0) != 0x80)
      return wrong(EILSEQ);
    character = character << 6 | (in[i] & 0x3fU);
  }
  const int is_one = character >= least[length] && character < 0x110000 &&
                     (character < 0xd800 || character >= 0xe000);
  return is_one ? one(character, length) : wrong(EILSEQ);
}

static struct reading read_one(struct iconv_state* state, const unsigned char* in, size_t left) {
  if (state->kind == FROM_UTF8)
    return read_utf8(in, left);
  if (state->kind == WITH_ESCAPES)
    return read_with_escapes(state, in, left);
  return read_by_tables(state->root, in, left);
}

static size_t utf8_length(uint32_t character) {
  return character < 0x80 ? 1 : character < 0x800 ? 2 : character < 0x10000 ? 3 : 4;
}

static char* put_utf8(uint32_t character, char* out) {
  static const unsigned first[] = {0, 0, 0xc0, 0xe0, 0xf0};
  const size_t length = utf8_length(character);
  for (size_t i = length - 1; i > 0; --i, character >>= 6)
    out[i] = (char)(0x80 | (character & 0x3f));
  out[0] = (char)(first[length] | character);
  return out + length;
}

iconv_t iconv_open(const char* to, const char* from) {
  struct iconv_state state = {BY_TABLES, 0, ASCII};
  if (strcasecmp(from, "UTF-8") == 0) {
    state.kind = FROM_UTF8;
  } else if (strcasecmp(from, "ISO-2022-JP") == 0) {
    state.kind = WITH_ESCAPES;
    state.root = root_of("EUC-JP");
  } else {
    state.root = root_of(from);
  }
  struct iconv_state* made = NULL;
  if (strcasecmp(to, "UTF-8") != 0 || state.root < 0)
    errno = EINVAL;
  else if ((made = malloc(sizeof *made)) == NULL)
    errno = ENOMEM;
  if (made == NULL)
    return (iconv_t)-1;
  *made = state;
  return made;
}

size_t iconv(iconv_t converter, char** in, size_t* in_left, char** out, size_t* out_left) {
  if (in == NULL || *in == NULL) {
    converter->chosen = ASCII;
    return 0;
  }
  while (*in_left > 0) {
    const enum chosen before = converter->chosen;
    const struct reading reading = read_one(converter, (const unsigned char*)*in, *in_left);
    size_t length = 0;
    for (int i = 0; i < reading.count; ++i)
      length += utf8_length(reading.characters[i]);
    if (reading.error != 0 || length > *out_left) {
      converter->chosen = before;
      errno = reading.error != 0 ? reading.error : E2BIG;
      return (size_t)-1;
    }
    for (int i = 0; i < reading.count; ++i)
      *out = put_utf8(reading.characters[i], *out);
    *out_left -= length;
    *in += reading.bytes;
    *in_left -= reading.bytes;
  }
  return 0;
}

int iconv_close(iconv_t converter) {
  free(converter);
  return 0;
}
