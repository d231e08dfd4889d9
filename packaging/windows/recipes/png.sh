# libpng: the PNG pictures of the menus' buttons.  zlib comes with the cross-compilers.
source=libpng1.6
upstream=1.6.39
licences='LICENSE debian/copyright'

build() {
  ./configure --host=$host --prefix="$prefix" --disable-shared --enable-static
  make -j"$jobs" libpng16.la
  make install-libLTLIBRARIES install-pkgincludeHEADERS install-nodist_pkgincludeHEADERS \
    install-pkgconfigDATA install-header-links
  ln -s libpng16.a "$prefix/lib/libpng.a"
  # There is no zlib.pc to be found, so the library is named plainly.
  sed -i -e '/^Requires.private/d' -e 's/^Libs:.*/& -lz/' "$prefix/lib/pkgconfig/libpng16.pc"
  ln -s libpng16.pc "$prefix/lib/pkgconfig/libpng.pc"
  mkdir -p "$prefix/licences/zlib"
  cp /usr/share/doc/libz-mingw-w64-dev/copyright "$prefix/licences/zlib/"
}
