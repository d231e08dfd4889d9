# mplex, mpeg2enc and jpeg2yuv.  Without their hand-written vector code, which keeps to the calling
# convention of other systems: pictures come out the same, and stills are a handful of them.
source=mjpegtools
upstream=2.1.0
pristine=yes
needs='tool jpeg'
licences='COPYING /usr/share/doc/mjpegtools/copyright'

# What the configure script cannot know.
adjust() {
  sed -i '/define HAVE_X86CPU/d' config.h
  cat >>config.h <<'CONFIG'
#include <stdio.h>
#undef FILENAME_MAX
#define FILENAME_MAX 4096 /* names of files may be longer than Windows once allowed */
#define HAVE___PROGNAME 1
#define _SC_PAGESIZE 0
#define sysconf(name) 4096
CONFIG
}

build() {
  # make must not want the very autotools that upstream had.
  touch aclocal.m4
  find . -name Makefile.in -exec touch configure config.h.in {} +
  mkdir debian
  touch debian/Makefile.in debian/control.in
  CPPFLAGS="$CPPFLAGS -D__USE_MINGW_ANSI_STDIO=1"
  ./configure --host=$host --disable-shared --enable-static --disable-dependency-tracking \
    --disable-simd-accel --without-x --without-gtk --without-libsdl --without-libquicktime \
    --without-libdv --without-libpng --without-v4l
  adjust
  $CC $CFLAGS -Wall -Wextra -Werror -c program_name.c
  objects="-Wl,$(where tool)/lib/tool.o -Wl,$(pwd)/program_name.o"
  # -all-static is libtool's word for -static.
  make -j"$jobs" -C utils
  mkdir -p "$prefix/bin"
  for program in mpeg2enc/mpeg2enc mplex/mplex lavtools/jpeg2yuv; do
    make -j"$jobs" -C "${program%/*}" "${program#*/}.exe" LDFLAGS="$LDFLAGS -all-static $objects"
    cp "$program.exe" "$prefix/bin/"
  done
}
