# FFmpeg's libraries as far as the windows need them: what takes files that people have apart, what
# decodes their streams, and what turns pictures into RGB. All of it is FFmpeg's own code under the
# LGPL; zlib comes with the cross compiler. No protocol is in it: bytes reach it through a program's
# own reading, and nothing in a file can have another one opened.
#
# The demuxers are those that src/media/ffmpeg_containers.cpp names.
source=ffmpeg
upstream=5.1.9
licences='LICENSE.md COPYING.LGPLv2.1'

demuxers='
  mov matroska avi mpegts mpegps mpegvideo m4v h264 hevc vc1 dv flv asf ogg rm mxf gxf wtv nut ivf
  obu swf dhav mjpeg yuv4mpegpipe
  wav w64 aiff caf au voc mp3 aac loas ac3 eac3 dts dtshd truehd mlp flac ape tta wv mpc mpc8 tak amr oma
  gif apng image_png_pipe image_jpeg_pipe image_jpegls_pipe image_j2k_pipe image_bmp_pipe image_tiff_pipe
  image_webp_pipe image_ppm_pipe image_pgm_pipe image_pbm_pipe image_pam_pipe image_pcx_pipe
  image_psd_pipe image_qoi_pipe
'

decoders='
  mpeg1video mpeg2video mpeg4 h261 h263 h263i h263p flv msmpeg4v1 msmpeg4v2 msmpeg4v3 wmv1 wmv2 wmv3 vc1
  h264 hevc vp3 vp5 vp6 vp6a vp6f vp7 vp8 vp9 theora dirac mjpeg mjpegb dvvideo prores dnxhd cfhd hq_hqa hqx
  speedhq aic ffv1 huffyuv ffvhuff utvideo lagarith magicyuv rawvideo v210 v308 v408 v410 r210 yuv4
  rv10 rv20 rv30 rv40 svq1 svq3 cinepak indeo2 indeo3 indeo4 indeo5 msvideo1 msrle qtrle rpza smc eightbps
  flashsv flashsv2 tscc tscc2 zmbv g2m mss1 mss2 screenpresso fraps asv1 asv2 mimic
  png apng gif bmp tiff webp targa jpegls jpeg2000 ppm pgm pgmyuv pbm pam pcx psd qoi
  aac aac_latm ac3 eac3 dca truehd mlp mp1float mp2float mp3float opus vorbis flac alac ape tta wavpack tak
  shorten mpc7 mpc8 als wmav1 wmav2 wmapro wmalossless wmavoice cook ra_144 ra_288 ralf sipr atrac1 atrac3
  atrac3p nellymoser qdm2 qdmc mace3 mace6 amrnb amrwb gsm gsm_ms speex g723_1 g729 truespeech imc s302m
  pcm_* adpcm_*
  ass subrip srt mov_text webvtt text dvbsub dvdsub pgssub xsub
'

# A list with commas between.
listed() {
  # shellcheck disable=SC2086
  printf '%s,' $1
}

build() {
  # The lists hold patterns, which are not for the shell.
  set -f
  ./configure --prefix="$prefix" --enable-cross-compile --target-os=mingw32 --arch=x86_64 \
    --cross-prefix=$host- --cc="$CC" --cxx="$CXX" --pkg-config=false \
    --disable-everything --disable-autodetect --disable-programs --disable-doc --disable-network \
    --disable-avdevice --disable-avfilter --disable-postproc --disable-debug \
    --enable-static --disable-shared --enable-zlib --enable-parsers \
    --enable-demuxer="$(listed "$demuxers")" --enable-decoder="$(listed "$decoders")"
  set +f
  make -j"$jobs"
  make install
  mkdir -p "$prefix/licences/zlib"
  cp /usr/share/doc/libz-mingw-w64-dev/copyright "$prefix/licences/zlib/"
}
