# Encoders of other programs, for the scripts that make the tests' streams: to be sourced. A script's
# stamp holds this file too, so that the streams are made again when it changes.

ff() { ffmpeg -nostdin -v error -y -bitexact "$@"; }

# video_stream FILE SIZE RATE PICTURES ENCODER OPTION...
video_stream() {
  out=$1 size=$2 rate=$3 pictures=$4 encoder=$5
  shift 5
  ff -f lavfi -i "testsrc2=size=$size:rate=$rate" -frames:v "$pictures" -c:v "$encoder" \
    -pix_fmt yuv420p -threads 1 -sc_threshold 1000000000 "$@" -f "$encoder" "$out"
}

# by_mpeg2enc FILE SIZE RATE PICTURES INTERLACING OPTION...: what FFmpeg's encoder cannot make.
by_mpeg2enc() {
  out=$1 size=$2 rate=$3 pictures=$4 interlacing=$5
  shift 5
  ff -f lavfi -i "testsrc2=size=$size:rate=$rate" -frames:v "$pictures" \
    -vf "setfield=$interlacing,setsar=1" -pix_fmt yuv420p -f yuv4mpegpipe - |
    mpeg2enc -v 0 -o "$out" "$@" >mpeg2enc.log 2>&1 || { cat mpeg2enc.log >&2; exit 1; }
}
