# FreeType: spumux draws the letters of text subtitles with it.
source=freetype
upstream=2.12.1
licences='LICENSE.TXT docs/FTL.TXT docs/GPLv2.TXT debian/copyright'

build() {
  ./configure --host=$host --prefix="$prefix" --disable-shared --enable-static \
    --with-zlib=yes --with-png=no --with-bzip2=no --with-brotli=no --with-harfbuzz=no
  make -j"$jobs"
  make install
}
