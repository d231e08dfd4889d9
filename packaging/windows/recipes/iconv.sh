# The character sets of text subtitles, for spumux.  Windows knows some of them not at all
# (BIG5-HKSCS, ISO-8859-10) and others a little differently, so their tables are made of the building
# machine's own, and a subtitle reads the same as there.
source=
upstream=1

build() {
  cc -O1 -Wall -Wextra -Werror make_tables.c -o make_tables
  ./make_tables US-ASCII ISO-8859-1 ISO-8859-2 ISO-8859-3 ISO-8859-4 ISO-8859-5 ISO-8859-6 ISO-8859-7 \
    ISO-8859-8 ISO-8859-9 ISO-8859-10 ISO-8859-13 ISO-8859-14 ISO-8859-15 ISO-8859-16 KOI8-R KOI8-U \
    SHIFT_JIS EUC-JP CP1250 CP1251 CP1252 CP1253 CP1254 CP1256 CP1257 CP437 CP850 CP852 CP866 \
    CP932 CP10007 MACINTOSH BIG5 BIG5-HKSCS >tables.c
  $CC $CPPFLAGS $CFLAGS -Wall -Wextra -Werror -c iconv.c tables.c
  mkdir -p "$prefix/lib" "$prefix/include"
  $AR rcs "$prefix/lib/libiconv.a" iconv.o tables.o
  cp iconv.h "$prefix/include/"
}
