# zimg: brings pictures of a high dynamic range to the light and the colours of a DVD, in FFmpeg's
# filter "zscale".
source=zimg
upstream=3.0.4
licences='COPYING README.md debian/copyright'

build() {
  autoreconf -i
  # This compiler keeps no stack of 32 bytes' alignment on Windows (its bug 54412), so the vectors of
  # newer processors are moved as if they were not aligned.
  CFLAGS="$CFLAGS -Wa,-muse-unaligned-vector-move"
  CXXFLAGS="$CXXFLAGS -Wa,-muse-unaligned-vector-move"
  ./configure --host=$host --prefix="$prefix" --disable-shared --enable-static \
    --disable-dependency-tracking --disable-testapp --disable-example --disable-unit-test
  make -j"$jobs"
  make install
  # The programs that link it are C's.
  sed -i 's/^Libs\.private:.*//; s/^Libs:.*/& -lstdc++ -lm/' "$prefix/lib/pkgconfig/zimg.pc"
}
