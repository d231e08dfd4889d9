# dvdauthor and spumux.  Without fontconfig: fonts are named by their files, which are looked for where
# Windows keeps them (see the patch).  Compiled by hand, since the configure script of this source
# would first have to be made, which needs half a dozen packages more.
source=dvdauthor
upstream=0.7.2
pristine=yes
needs='tool iconv png freetype fribidi libxml2'
licences='COPYING /usr/share/doc/dvdauthor/copyright'

# Where both programs are told what there is, and what the build machine makes of the grammar.
prepare() {
  cat >config.h <<'CONFIG'
#define PACKAGE_NAME "DVDAuthor"
#define PACKAGE_VERSION "0.7.2"
#define PACKAGE_STRING "DVDAuthor 0.7.2"
#define PACKAGE_BUGREPORT "dvdauthor-users@lists.sourceforge.net"
#define HAVE_STDBOOL_H 1
#define HAVE_STDLIB_H 1
#define HAVE_STDINT_H 1
#define HAVE_STRINGS_H 1
#define HAVE_STRING_H 1
#define HAVE_UNISTD_H 1
#define HAVE_INTTYPES_H 1
#define HAVE_MEMORY_H 1
#define HAVE_SYS_STAT_H 1
#define HAVE_SYS_TYPES_H 1
#define HAVE_GETOPT_H 1
#define HAVE_GETOPT_LONG 1
#define HAVE_IO_H 1
#define HAVE_SETMODE 1
#define HAVE_DECL_O_BINARY 1
#define HAVE_ICONV 1
#define HAVE_FREETYPE 1
#define HAVE_FT2BUILD_H 1
#define HAVE_FRIBIDI 1
#define fsync _commit
#define bzero(to, size) memset(to, 0, size)
CONFIG
  flex -s -B -Cem -odvdvml.c -Pdvdvm dvdvml.l
  bison -o dvdvmy.c -d -p dvdvm dvdvmy.y
}

build() {
  cd src
  prepare
  flags="$CPPFLAGS $CFLAGS -I. -D_FILE_OFFSET_BITS=64 -D__USE_MINGW_ANSI_STDIO=1 -DLIBXML_STATIC \
    -DFRIBIDI_LIB_STATIC -DSYSCONFDIR=\"/etc\" -Werror=implicit -Wl,$(where tool)/lib/tool.o"
  for need in libxml2/include/libxml2 freetype/include/freetype2 fribidi/include/fribidi; do
    flags="$flags -I$(where "${need%%/*}")/${need#*/}"
  done
  mkdir -p "$prefix/bin"
  $CC $flags -o "$prefix/bin/dvdauthor.exe" dvdauthor.c dvdcompile.c dvdvml.c dvdvmy.c dvdifo.c \
    dvdvob.c dvdpgc.c dvdcli.c readxml.c conffile.c compat.c $LDFLAGS -lxml2 -lws2_32 -liconv
  $CC $flags -o "$prefix/bin/spumux.exe" subgen.c subgen-parse-xml.c readxml.c subgen-encode.c \
    subgen-image.c conffile.c compat.c subrender.c subreader.c subfont.c \
    $LDFLAGS -lxml2 -lws2_32 -lpng -lfreetype -lfribidi -liconv -lz -lm
}
