# libxml2: dvdauthor and spumux read their control files with it.  Those are UTF-8, which it knows by
# itself, as it does UTF-16 and ISO-8859-1.
source=libxml2
upstream=2.9.14
licences='debian/copyright'

build() {
  # As upstream made them: after a patch to Makefile.am make would want the very automake of then.
  touch aclocal.m4
  find . -name Makefile.in -exec touch configure config.h.in {} +
  ./configure --host=$host --prefix="$prefix" --disable-shared --enable-static \
    --disable-dependency-tracking --without-python --without-iconv --without-icu --without-lzma \
    --without-zlib --without-http --without-ftp --without-modules --without-debug --without-docbook \
    --without-schematron --without-catalog --without-threads
  make -j"$jobs" libxml2.la
  make install-libLTLIBRARIES install-data
  # Upstream calls it Copyright, which Windows takes for the name of Debian's file.
  mkdir -p "$prefix/licences/libxml2"
  cp Copyright "$prefix/licences/libxml2/LICENCE"
}
