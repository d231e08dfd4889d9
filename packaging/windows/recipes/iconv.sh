# The character sets of text subtitles, for spumux: the converter that the Windows programs check
# them with.  Windows knows some of the sets not at all (BIG5-HKSCS, ISO-8859-10) and others a little
# differently, so their tables are made of the building machine's own, and a subtitle reads the same
# as there.
source=
upstream=1
files=src/platform/text/iconv

build() {
  cc -O1 -Wall -Wextra -Werror make_tables.c -o make_tables
  xargs ./make_tables <charsets.txt >tables.c
  $CC $CPPFLAGS $CFLAGS -Wall -Wextra -Werror -c iconv.c tables.c
  mkdir -p "$prefix/lib" "$prefix/include"
  $AR rcs "$prefix/lib/libiconv.a" iconv.o tables.o
  cp iconv.h "$prefix/include/"
}
