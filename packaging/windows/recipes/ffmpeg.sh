# FFmpeg's libraries as far as pictures need them: the decoders of MPEG video, BMP and JPEG, and what
# turns their pictures into RGB.  The streams themselves our own code takes apart.
source=ffmpeg
upstream=5.1.9
licences='LICENSE.md COPYING.LGPLv2.1'

build() {
  ./configure --prefix="$prefix" --enable-cross-compile --target-os=mingw32 --arch=x86_64 \
    --cross-prefix=$host- --cc="$CC" --cxx="$CXX" --pkg-config=false \
    --disable-everything --disable-autodetect --disable-programs --disable-doc --disable-network \
    --disable-avdevice --disable-avformat --disable-avfilter --disable-swresample \
    --disable-postproc --disable-debug --enable-static --disable-shared \
    --enable-decoder=mpeg1video,mpeg2video,bmp,mjpeg
  make -j"$jobs"
  make install
}
