# GraphicsMagick: draws the pictures of the menus' buttons.  With the picture formats that need no
# library beside PNG's and JPEG's, and as many bits a pixel as the distribution's.  What it knows of
# colours is compiled in; it needs no files of its own and asks the registry nothing.
source=graphicsmagick
upstream=1.4+really1.3.40
needs='tool png jpeg'
licences='Copyright.txt debian/copyright'

build() {
  mkdir cross
  cd cross
  CPPFLAGS="-I$(where png)/include -I$(where jpeg)/include"
  LDFLAGS="-L$(where png)/lib -L$(where jpeg)/lib -static -s"
  # shellcheck disable=SC2046  # a list of options
  ../configure --host=$host --prefix="$prefix" --disable-shared --enable-static --disable-openmp \
    --disable-installed --disable-compressed-files --with-quantum-depth=16 \
    $(printf -- '--without-%s ' threads modules magick-plus-plus perl bzlib dps gdi32 gs jbig webp \
      heif jp2 jxl lcms2 lzma tiff trio ttf wmf xml zstd x)
  # Libtool takes "-static" for its own libraries only.  The object goes to the program alone: by
  # LDFLAGS it would be linked twice.
  make -j"$jobs" utilities/gm.exe LDFLAGS="$LDFLAGS -all-static" \
    utilities_gm_LDFLAGS="-Wl,$(where tool)/lib/tool.o"
  mkdir "$prefix/bin"
  cp utilities/gm.exe "$prefix/bin/"
}
