# What outside tools are linked with (lib/tool.o: the manifest that makes UTF-8 their code page and
# lets paths be long, and binary streams), and headers that their sources expect and Windows lacks.  A
# recipe links it with `-Wl,$(where tool)/lib/tool.o`, which libtool leaves alone.
source=
upstream=1

build() {
  mkdir "$prefix/lib"
  $CC $CPPFLAGS $CFLAGS -Wall -Wextra -Werror -c start.c -o start.o
  $WINDRES tool.rc manifest.o
  ${host}-ld -r start.o manifest.o -o "$prefix/lib/tool.o"
  cp -R include "$prefix/include"
}
