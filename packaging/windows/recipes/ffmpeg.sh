# FFmpeg, twice of one build: the program that the import runs, and the libraries that the windows
# link to look into people's files.  With Debian's parts that are under the GPL, as Corvane is.
#
# All of its own decoders and parsers, and dav1d for AV1; the demuxers that src/media/ffmpeg_containers.cpp
# names, since a file is opened as what was found in it, and those of text subtitles.  Of what writes and
# filters only what src/import has use for.  No network: the one protocol is that of files, and the
# windows' reading allows none (src/media/ffmpeg_source_file.cpp).
source=ffmpeg
upstream=5.1.9
needs='tool iconv dav1d zimg'
licences='LICENSE.md COPYING.GPLv2 COPYING.LGPLv2.1 debian/copyright'

demuxers='
  mov matroska avi mpegts mpegps mpegvideo m4v h264 hevc vc1 dv flv asf ogg rm mxf gxf wtv nut ivf
  obu swf dhav mjpeg yuv4mpegpipe
  wav w64 aiff caf au voc mp3 aac loas ac3 eac3 dts dtshd truehd mlp flac ape tta wv mpc mpc8 tak amr oma
  gif apng image_png_pipe image_jpeg_pipe image_jpegls_pipe image_j2k_pipe image_bmp_pipe image_tiff_pipe
  image_webp_pipe image_ppm_pipe image_pgm_pipe image_pbm_pipe image_pam_pipe image_pcx_pipe
  image_psd_pipe image_qoi_pipe
'

texts='srt ass webvtt sami'

encoders='mpeg2video ac3 mp2 srt text mjpeg png rawvideo pcm_s16le wrapped_avframe'
muxers='mpeg2video ac3 mp2 srt image2 image2pipe rawvideo wav yuv4mpegpipe null'

filters='
  scale zscale tonemap colorspace format premultiply setparams overlay color
  crop pad transpose hflip vflip rotate setsar setdar
  bwdif interlace fieldorder setfield fps setpts trim loop tpad select null
  aresample asetrate aformat asetpts atrim apad adelay loudnorm volume pan anull anullsrc
'

# A list with commas between.
listed() {
  # shellcheck disable=SC2086
  printf '%s,' $1
}

build() {
  # The headers of the tool recipe are for sources that were never built for Windows.
  CPPFLAGS=-I$(where iconv)/include
  ./configure --prefix="$prefix" --enable-cross-compile --target-os=mingw32 --arch=x86_64 \
    --cross-prefix=$host- --cc="$CC" --cxx="$CXX" --pkg-config=pkg-config --pkg-config-flags=--static \
    --disable-everything --disable-autodetect --disable-programs --disable-doc --disable-network \
    --disable-debug --enable-static --disable-shared --enable-gpl --disable-postproc --enable-ffmpeg \
    --extra-ldexeflags="-Wl,$(where tool)/lib/tool.o" \
    --enable-zlib --enable-iconv --extra-libs=-liconv --enable-libdav1d --enable-libzimg \
    --enable-decoders --enable-parsers \
    --enable-demuxer="$(listed "$demuxers $texts")" --enable-encoder="$(listed "$encoders")" \
    --enable-muxer="$(listed "$muxers")" --enable-filter="$(listed "$filters")" \
    --enable-indev=lavfi --enable-protocol=file,pipe
  make -j"$jobs"
  make install
  # What the libraries are linked with stands beside them.
  cp "$(where dav1d)/lib/libdav1d.a" "$(where iconv)/lib/libiconv.a" "$prefix/lib/"
  mkdir -p "$prefix/licences/zlib"
  cp /usr/share/doc/libz-mingw-w64-dev/copyright "$prefix/licences/zlib/"
}
