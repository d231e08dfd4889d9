# FriBidi: spumux orders the letters of Arabic and Hebrew subtitles with it.
source=fribidi
upstream=1.0.8
licences='COPYING debian/copyright'

build() {
  ./configure --host=$host --prefix="$prefix" --disable-shared --enable-static \
    --disable-dependency-tracking
  make -C gen.tab
  make -C lib -j"$jobs"
  make -C lib install
  make install-pkgconfigDATA
}
