# libjpeg-turbo: the JPEG pictures that stills are made of.
source=libjpeg-turbo
upstream=2.1.5
licences='LICENSE.md README.ijg debian/copyright'

build() {
  cmake -S . -B cross -DCMAKE_SYSTEM_NAME=Windows -DCMAKE_SYSTEM_PROCESSOR=x86_64 \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" -DCMAKE_INSTALL_LIBDIR=lib \
    -DENABLE_SHARED=OFF -DENABLE_STATIC=ON -DWITH_TURBOJPEG=OFF -DWITH_SIMD=OFF
  cmake --build cross -j"$jobs" --target jpeg-static
  # Not all is built, so not all can be installed.
  mkdir -p "$prefix/lib/pkgconfig" "$prefix/include"
  cp cross/libjpeg.a "$prefix/lib/"
  sed "s|^libdir=.*|libdir=$prefix/lib|" cross/pkgscripts/libjpeg.pc >"$prefix/lib/pkgconfig/libjpeg.pc"
  cp cross/jconfig.h jerror.h jmorecfg.h jpeglib.h "$prefix/include/"
}
