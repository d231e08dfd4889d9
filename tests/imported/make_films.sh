#!/bin/sh
# Makes films as people have them, for the tests of what import makes of them, with the programs that
# people make them with:
#
#   tests/imported/make_films.sh FOLDER
#
# All show one test card, and marks: at 1 s, in the middle and 2 s before the end a strip at the bottom is
# white for a fifth of a second, and a tone of 1 kHz begins. What is on the card, and what is expected of
# each film, is in film_test.cpp and films.cpp. A second run with nothing changed only compares a stamp.
set -eu

script=$(readlink -f -- "$0")
encoders=${script%/*/*}/support/encoders.sh
# shellcheck source=tests/support/encoders.sh
. "$encoders"
# shellcheck source=tests/support/own_folder.sh
. "${script%/*/*}/support/own_folder.sh"

h264='-c:v libx264 -preset ultrafast -crf 16 -g 50 -threads 1'
h265='-c:v libx265 -preset ultrafast -crf 16 -x265-params log-level=none:pools=1:frame-threads=1'
vp9='-c:v libvpx-vp9 -deadline realtime -cpu-used 8 -crf 20 -b:v 0'
av1='-c:v libaom-av1 -usage realtime -cpu-used 8 -crf 24 -b:v 0'
mpeg2='-c:v mpeg2video -b:v 4M -maxrate 8M -bufsize 1835008'

# marks SECONDS RATE LATER: when there is a mark, from the first picture on that is not before it; so much
# later.
marks() {
  awk -v seconds="$1" -v rate="$2" -v later="$3" 'BEGIN {
    split(rate, r, "/"); rate = r[1] / (r[2] ? r[2] : 1)
    n = split("1 " seconds / 2 " " seconds - 2, at, " ")
    for (i = 1; i <= n; i++) {
      picture = int(at[i] * rate + 0.999)
      mark = picture / rate + later
      printf "%sbetween(t,%.4f,%.4f)", (i == 1 ? "" : "+"), mark - 0.001, mark + 0.2
    }
  }'
}

# The card of this size whose pixels are so many times as wide as high. Made anew where there is none.
card() {
  size=$1 aspect=$2
  card=card-$size-$(echo "$aspect" | tr / -).png
  [ ! -e "$card" ] || return 0
  width=${size%x*} height=${size#*x}
  numbers=$(awk -v w="$width" -v h="$height" -v aspect="$aspect" 'BEGIN {
    split(aspect, a, "/"); p = a[1] / (a[2] ? a[2] : 1)
    printf "ellipse %.3f,%.3f %.3f,%.3f 0,360\n", w / 2 - 0.5, 0.54 * h - 0.5, 0.25 * h / p, 0.25 * h
    split("#bfbfbf #bfbf00 #00bfbf #00bf00 #bf00bf #bf0000 #0000bf #000000", colour, " ")
    for (i = 0; i < 8; i++)
      printf "fill %s rectangle %d,%d %d,%d\n", colour[i + 1], int(i * w / 8), int(0.02 * h),
        int((i + 1) * w / 8) - 1, int(0.16 * h) - 1 }')
  convert -size "$size" xc:black -fill '#bfbfbf' -draw "$numbers" -depth 8 -define png:color-type=2 "$card.$$.png"
  mv "$card.$$.png" "$card"
}

# film FILE SIZE PIXEL-ASPECT RATE SECONDS OPTION...: the card and the marks. Variables change the rest:
film() {
  out=$1 size=$2 aspect=$3 rate=$4 seconds=$5
  shift 5
  card "$size" "$aspect"
  ff -framerate "${shown_rate:-$rate}" -i "$card" -f lavfi \
    -i "aevalsrc='0.5*sin(2*PI*1000*t)*($(marks "$seconds" "$rate" "${sound_later:-${later:-0}}"))':s=${hertz:-48000}:d=$seconds" \
    -vf "scale=out_color_matrix=${matrix:-bt601}:out_range=${range:-tv},format=${pixels:-yuv420p},loop=-1:1,$(
    )drawbox=x=0:y=trunc(ih*0.84):w=iw:h=trunc(ih*0.14):color=white:t=fill:enable='$(marks "$seconds" "$rate" "${later:-0}")'$(
    )${moving:+,$moving},setsar=$aspect${filter:+,$filter}" -map "${maps:-0:v}" ${sound--map 1:a} -t "$seconds" "$@" "$out"
}

# fields FILE SIZE PIXEL-ASPECT RATE SECONDS ORDER OPTION...: of that many pictures a second, with a bar
# that moves to the right by each field.
fields() {
  order=$6
  file=$1 of=$2 as=$3 pictures=$4 long=$5
  shift 6
  w=${of%x*} h=${of#*x}
  top=1
  [ "$order" = tff ] || top=0
  ff -f lavfi -i "color=white:size=$((w / 16 / 2 * 2))x$((h * 6 / 100 / 2 * 2)):rate=25,format=${pixels:-yuv420p}" \
    -frames:v 1 "bar-$file.png"
  moving="settb=1/90000[card];movie=bar-$file.png,loop=-1:1[bar];[card][bar]overlay=x='0.9*main_w*mod(t,2)/2':y=trunc(main_h*0.18/2)*2:format=yuv420" \
    filter="format=${pixels:-yuv420p},interlace=scan=$order:lowpass=off,setfield=$order" shown_rate=$(twice "$pictures") \
    film "$file" "$of" "$as" "$pictures" "$long" -flags +ilme+ildct -top $top "$@"
  rm -f "bar-$file.png"
}
twice() {
  case $1 in
    */*) echo "$((${1%/*} * 2))/${1#*/}" ;;
    *) echo "$(($1 * 2))" ;;
  esac
}

# quiet COMMAND...: what it says is shown when it fails.
quiet() { "$@" >"by-$making.log" 2>&1 || { cat "by-$making.log" >&2; exit 1; }; }

# How each is made. The name says what it is.
make_film() {
  making=$1
  case $1 in
    # A minute, in what phones, cameras, televisions and the net have.
    phone-h264-aac.mp4) hertz=44100 film "$1" 640x360 1 30 60 $h264 -bf 2 -c:a aac ;;
    camera-h264-pcm.mov) film "$1" 320x240 1 25 60 $h264 -c:a pcm_s16le ;;
    film-h264-ac3.mkv) film "$1" 640x360 1 24000/1001 60 $h264 -bf 3 -c:a ac3 ;;
    cinema-24.mp4) film "$1" 640x360 1 24 60 $h264 -bf 2 -c:a aac ;;
    pal-film-h264-dts.mkv) film "$1" 640x360 1 25 60 $h264 -bf 2 -c:a dca -strict -2 ;;
    hevc-eac3.mkv) film "$1" 320x180 1 30000/1001 60 $h265 -c:a eac3 ;;
    vp9-opus.webm) film "$1" 320x180 1 25 60 $vp9 -c:a libopus ;;
    divx-mp3.avi) hertz=44100 film "$1" 320x240 1 25 60 -c:v mpeg4 -bf 2 -q:v 2 -c:a libmp3lame ;;
    uneven-minute.mp4) filter="select='between(mod(n,7),1,4)'" film "$1" 320x240 1 30 60 $h264 -fps_mode vfr -c:a aac ;;
    uneven-minute.mkv) filter="select='lt(n,700)+not(mod(n,2))'" film "$1" 320x240 1 25 60 $h264 -fps_mode vfr -c:a libvorbis ;;
    television.ts) film "$1" 480x576 8/5 25 60 $mpeg2 -c:a mp2 -b:a 192k ;;
    cut-in-front.mp4)
      later=0.52 film front-$1 320x240 1 25 60 $h264 -bf 2 -c:a aac -t 60.52
      ff -ss 0.52 -i front-$1 -c copy "$1" ;;

    # A second or so: containers and codecs.
    h264-alac.mov) film "$1" 320x240 1 25 6 $h264 -c:a alac ;;
    h264-ac3.m4v) film "$1" 320x240 1 25 6 $h264 -c:a ac3 -f mp4 ;;
    hevc-aac.mp4) film "$1" 320x240 1 25 6 $h265 -tag:v hvc1 -c:a aac ;;
    av1-opus.mp4) film "$1" 320x240 1 25 6 $av1 -c:a libopus ;;
    av1-opus.webm) film "$1" 320x240 1 25 6 $av1 -c:a libopus ;;
    vp8-vorbis.webm) film "$1" 320x240 1 25 6 -c:v libvpx -deadline realtime -b:v 1M -c:a libvorbis ;;
    theora-vorbis.ogv) film "$1" 320x240 1 25 6 -c:v libtheora -q:v 9 -g 1 -c:a libvorbis ;;
    mpeg4-aac.mp4) film "$1" 320x240 1 25 6 -c:v mpeg4 -q:v 2 -c:a aac ;;
    xvid-ac3.avi) film "$1" 320x240 1 25 6 -c:v libxvid -q:v 2 -c:a ac3 ;;
    h264-mp3.avi) film "$1" 320x240 1 25 6 $h264 -bf 0 -c:a libmp3lame ;;
    mjpeg-pcm.avi) range=pc pixels=yuvj420p hertz=8000 film "$1" 320x240 1 15 6 -c:v mjpeg -q:v 2 -c:a pcm_u8 ;;
    mjpeg-pcm.mov) range=pc pixels=yuvj422p film "$1" 320x240 1 30 6 -c:v mjpeg -q:v 2 -c:a pcm_s16be ;;
    prores-pcm24.mov) pixels=yuv422p10le film "$1" 720x576 16/15 25 6 -c:v prores_ks -profile:v 0 -c:a pcm_s24le ;;
    dnxhd-pcm.mxf) matrix=bt709 pixels=yuv422p film "$1" 1280x720 1 50 6 -c:v dnxhd -b:v 60M -c:a pcm_s16le -colorspace bt709 ;;
    mpeg2-intra.mxf) pixels=yuv422p fields "$1" 720x576 16/15 25 6 tff -c:v mpeg2video -b:v 20M -g 1 -bf 0 -intra_vlc 1 -c:a pcm_s16le ;;
    ffv1-flac.mkv) film "$1" 320x240 1 25 6 -c:v ffv1 -c:a flac ;;
    huffyuv-pcm.avi) pixels=yuv422p film "$1" 320x240 1 25 6 -c:v huffyuv -c:a pcm_s16le ;;
    raw-pcm.avi) pixels=bgr24 film "$1" 320x240 1 25 6 -c:v rawvideo -c:a pcm_s16le ;;
    screen.avi) pixels=bgr0 film "$1" 640x480 1 10 6 -c:v zmbv -c:a pcm_s16le ;;
    wmv2-wma.wmv) hertz=44100 film "$1" 320x240 1 25 6 -c:v wmv2 -q:v 2 -c:a wmav2 ;;
    old-wmv1.asf) hertz=22050 film "$1" 320x240 1 15 6 -c:v wmv1 -q:v 2 -c:a wmav1 ;;
    sorenson-mp3.flv) hertz=44100 film "$1" 320x240 1 25 6 -c:v flv -q:v 2 -c:a libmp3lame ;;
    h264-aac.flv) hertz=44100 film "$1" 320x240 1 25 6 $h264 -bf 2 -c:a aac ;;
    h263-aac.3gp) hertz=16000 film "$1" 176x144 12/11 15 6 -c:v h263 -q:v 2 -c:a aac ;;
    h264-truehd.mkv) film "$1" 320x240 1 25 6 $h264 -c:a truehd -strict -2 ;;
    h264-bluray.m2ts) matrix=bt709 film "$1" 1280x720 1 24000/1001 6 $h264 -bf 2 -colorspace bt709 -c:a pcm_bluray -ac 2 -f mpegts -mpegts_m2ts_mode 1 ;;
    mpeg4.nut) film "$1" 320x240 1 25 6 -c:v mpeg4 -q:v 2 -c:a libvorbis ;;
    stream.h264) film "$1" 320x240 1 25 6 $h264 -bf 2 -f h264 -an ;;
    frames.y4m) film "$1" 320x240 1 25 6 -an -f yuv4mpegpipe ;;
    dance.gif) pixels=rgb24 film "$1" 320x240 1 10 6 -an ;;

    # What other programs make.
    x264-flac-by-mkvmerge.mkv)
      film by-$1.y4m 320x240 1 25 6 -an -f yuv4mpegpipe
      sound= film by-$1.wav 320x240 1 25 6 -vn -map 1:a
      quiet x264 --preset ultrafast --bframes 2 -o by-$1.264 by-$1.y4m
      flac --totally-silent -f -o by-$1.flac by-$1.wav
      mkvmerge -q -o "$1" --default-duration 0:25p by-$1.264 by-$1.flac
      rm -f by-$1.* ;;
    x265-opus-by-mkvmerge.mkv)
      film by-$1.y4m 320x240 1 30 6 -an -f yuv4mpegpipe
      sound= film by-$1.wav 320x240 1 30 6 -vn -map 1:a
      quiet x265 --preset ultrafast --input by-$1.y4m -o by-$1.hevc
      quiet opusenc by-$1.wav by-$1.opus
      mkvmerge -q -o "$1" --default-duration 0:30p by-$1.hevc by-$1.opus
      rm -f by-$1.* ;;
    mp3-by-lame.mkv)
      film by-$1.mkv 320x240 1 25 6 $h264 -an
      # Its sound is 51 ms late, which Matroska is not told.
      sound= hertz=44100 sound_later=-0.051 film by-$1.wav 320x240 1 25 6 -vn -map 1:a
      lame --quiet by-$1.wav by-$1.mp3
      mkvmerge -q -o "$1" by-$1.mkv by-$1.mp3
      rm -f by-$1.* ;;
    vorbis-by-oggenc-late.mkv)
      film by-$1.mkv 320x240 1 25 6 $h264 -bf 2 -an
      sound= sound_later=-0.7 film by-$1.wav 320x240 1 25 6 -vn -map 1:a
      oggenc -Q -o by-$1.ogg by-$1.wav
      mkvmerge -q -o "$1" by-$1.mkv --sync 0:700 by-$1.ogg
      rm -f by-$1.* ;;
    video-cd.mpg)
      film by-$1.y4m 352x288 12/11 25 6 -an -f yuv4mpegpipe
      sound= hertz=44100 sound_later=-0.011 film by-$1.mp2 352x288 1 25 6 -vn -map 1:a -b:a 224k -c:a mp2
      quiet mpeg2enc -v 0 -r 8 -4 4 -2 4 -f 1 -o by-$1.m1v <by-$1.y4m
      mplex -v 0 -f 1 -o "$1" by-$1.m1v by-$1.mp2
      rm -f by-$1.* ;;
    super-video-cd.mpg)
      film by-$1.y4m 480x480 4/3 30000/1001 6 -an -f yuv4mpegpipe
      sound= hertz=44100 sound_later=-0.011 film by-$1.mp2 352x288 1 30000/1001 6 -vn -map 1:a -b:a 224k -c:a mp2
      quiet mpeg2enc -v 0 -r 8 -4 4 -2 4 -f 4 -a 2 -o by-$1.m2v <by-$1.y4m
      mplex -v 0 -f 4 -o "$1" by-$1.m2v by-$1.mp2
      rm -f by-$1.* ;;
    by-mpeg2enc.mpg)
      film by-$1.y4m 720x576 16/15 25 6 -an -f yuv4mpegpipe
      sound= film by-$1.mp2 352x288 1 25 6 -vn -map 1:a -b:a 224k -c:a mp2
      quiet mpeg2enc -v 0 -r 8 -4 4 -2 4 -f 8 -a 2 -o by-$1.m2v <by-$1.y4m
      mplex -v 0 -f 3 -o "$1" by-$1.m2v by-$1.mp2
      rm -f by-$1.* ;;
    from-a-disc.vob)
      film by-$1.mpg 720x480 8/9 30000/1001 6 $mpeg2 -g 15 -bf 2 -aspect 4:3 -c:a ac3 -b:a 192k -f dvd
      VIDEO_FORMAT=NTSC quiet dvdauthor -o by-$1.disc -t by-$1.mpg
      mv by-$1.disc/VIDEO_TS/VTS_01_1.VOB "$1"
      rm -rf by-$1.* ;;

    # Colours and shapes.
    ten-bit.mkv) pixels=yuv420p10le film "$1" 640x360 1 25 6 $h265 -c:a aac ;;
    four-four-four.mkv) pixels=yuv444p film "$1" 320x240 1 25 6 $h264 -c:a aac ;;
    four-two-two-ten.mov) pixels=yuv422p10le matrix=bt709 film "$1" 1280x720 1 25 6 $h264 -colorspace bt709 -c:a pcm_s16le ;;
    red-green-blue.mkv) pixels=bgr0 film "$1" 320x240 1 25 6 -c:v libx264rgb -preset ultrafast -crf 5 -c:a aac ;;
    alpha-prores.mov) pixels=yuva444p10le film "$1" 320x240 1 25 6 -c:v prores_ks -profile:v 4444 -c:a pcm_s16le ;;
    alpha-vp8.webm) pixels=yuva420p film "$1" 320x240 1 25 6 -c:v libvpx -deadline realtime -b:v 2M -auto-alt-ref 0 -c:a libvorbis ;;
    full-range.mp4) range=pc matrix=bt709 film "$1" 640x360 1 25 6 $h264 -color_range pc -colorspace bt709 -c:a aac ;;
    bt709-small.mp4) matrix=bt709 film "$1" 640x360 1 25 6 $h264 -colorspace bt709 -color_primaries bt709 -color_trc bt709 -c:a aac ;;
    hd-untagged.mp4) matrix=bt709 film "$1" 1920x1080 1 25 6 $h264 -c:a aac ;;
    hdr-pq.mkv) pixels=yuv420p10le matrix=bt2020 film "$1" 640x360 1 25 6 $h265 -color_primaries bt2020 -color_trc smpte2084 -colorspace bt2020nc -c:a aac ;;
    hdr-hlg.mp4) pixels=yuv420p10le matrix=bt2020 film "$1" 640x360 1 50 6 $h265 -color_primaries bt2020 -color_trc arib-std-b67 -colorspace bt2020nc -c:a aac ;;
    one-pixel.mkv) film whole-$1 2x2 1 25 6 -c:v ffv1 -pix_fmt gbrp -c:a flac; ff -i whole-$1 -vf format=gbrp,crop=1:1 -c:v ffv1 -c:a copy "$1" ;;
    odd-size.mkv) matrix=bt709 pixels=yuv444p film "$1" 1919x1081 1 25 6 $h264 -c:a aac ;;
    eight-k.mp4) matrix=bt709 film "$1" 7680x4320 1 25 1 $h264 -tune zerolatency -c:a aac ;;
    upright.mp4) film "$1" 360x640 1 30 6 $h264 -c:a aac ;;
    very-wide.mkv) film "$1" 1000x200 1 25 6 $h264 -c:a aac ;;
    anamorphic.mp4) film "$1" 352x288 16/11 25 6 $h264 -c:a aac ;;
    television-size.mp4) film "$1" 704x480 10/11 30000/1001 6 $h264 -c:a aac ;;
    turned-90.mp4 | turned-180.mov | turned-270.mp4)
      turn=${1#turned-}
      turn=${turn%.*}
      case $turn in
        90) filter=transpose=clock ;;
        180) filter=hflip,vflip ;;
        *) filter=transpose=cclock ;;
      esac
      film whole-$1 640x360 1 30 6 $h264 -c:a aac
      ff -i whole-$1 -c copy -metadata:s:v:0 rotate=$turn "$1" ;;

    # Fields.
    dv-pal.avi) pixels=yuv420p fields "$1" 720x576 16/15 25 6 bff -c:v dvvideo -c:a pcm_s16le ;;
    dv-ntsc.dv) pixels=yuv411p fields "$1" 720x480 8/9 30000/1001 6 bff -c:v dvvideo -c:a pcm_s16le -ac 2 ;;
    dv-pal.mov) pixels=yuv420p fields "$1" 720x576 16/15 25 6 bff -c:v dvvideo -c:a pcm_s16le ;;
    avchd-1080i.mts) matrix=bt709 fields "$1" 1440x1080 4/3 25 6 tff $h264 -x264-params tff=1 -colorspace bt709 -c:a ac3 -f mpegts ;;
    hdtv-1080i-30.ts) matrix=bt709 fields "$1" 1920x1080 1 30000/1001 6 tff $h264 -x264-params tff=1 -colorspace bt709 -c:a ac3 ;;
    television-576i.mpg) fields "$1" 720x576 16/15 25 6 tff $mpeg2 -g 12 -aspect 4:3 -c:a mp2 -f vob ;;
    recorder-480i.mkv) fields "$1" 720x480 8/9 30000/1001 6 bff $h264 -x264-params bff=1 -c:a ac3 ;;
    fifty.mp4) film "$1" 640x360 1 50 6 $h264 -c:a aac ;;
    sixty.mp4) film "$1" 640x360 1 60 6 $h264 -c:a aac ;;
    hundred-and-twenty.mp4) film "$1" 320x180 1 120 6 $h264 -c:a aac ;;
    five.mp4) film "$1" 320x240 1 5 6 $h264 -c:a aac ;;

    # Times.
    uneven.webm) filter="select='not(eq(mod(n,5),2))'" film "$1" 320x240 1 25 6 -fps_mode vfr $vp9 -c:a libopus ;;
    sound-late.mp4)
      film whole-$1 320x240 1 25 6 $h264 -c:a aac
      sound_later=-0.5 film sound-$1 320x240 1 25 6 $h264 -c:a aac
      ff -i whole-$1 -itsoffset 0.5 -i sound-$1 -map 0:v -map 1:a -c copy "$1" ;;
    sound-early.mkv)
      film whole-$1 320x240 1 25 6 $h264 -an
      sound= film sound-$1.wav 320x240 1 25 6 -vn -af adelay=1500:all=1 -map 1:a
      ff -itsoffset 1.5 -i whole-$1 -i sound-$1.wav -map 0:v -map 1:a -c:v copy -c:a flac "$1" ;;
    sound-with-a-gap.mkv) film "$1" 320x240 1 25 6 $h264 -af "aselect='not(between(t,1.5,2.5))'" -c:a flac ;;
    sound-ends-early.mp4) film "$1" 320x240 1 25 6 $h264 -af atrim=end=4.5 -c:a aac ;;
    picture-ends-early.mkv) filter=trim=end=5 film "$1" 320x240 1 24000/1001 6 $h264 -bf 2 -c:a ac3 ;;
    picture-ends-early.mp4) filter=trim=end=5 film "$1" 320x240 1 50 6 $h264 -c:a aac ;;
    picture-ends-early.avi)
      pixels=yuv420p fields whole-$1 720x576 16/15 25 6 bff -c:v dvvideo -c:a pcm_s16le
      ff -t 5 -i whole-$1 -i whole-$1 -map 0:v -map 1:a -c copy "$1" ;;
    picture-ends-early.mpg)
      film whole-$1 720x576 16/15 25 6 $mpeg2 -g 12 -aspect 4:3 -c:a ac3 -f vob
      ff -t 5 -i whole-$1 -i whole-$1 -map 0:v -map 1:a -c copy -f vob "$1" ;;
    large-start.ts) film whole-$1 320x240 1 25 6 $h264 -bf 2 -c:a aac -f mpegts; ff -i whole-$1 -c copy -copyts -output_ts_offset 40000 -f mpegts "$1" ;;
    counter-turns-over.ts) film whole-$1 320x240 1 25 6 $h264 -bf 2 -c:a aac -f mpegts; ff -i whole-$1 -c copy -copyts -output_ts_offset 95438 -f mpegts "$1" ;;
    joined-back.ts)
      film whole-$1.mkv 320x240 1 25 8 $h264 -g 25 -bf 0 -c:a aac
      joined whole-$1.mkv 0 0 mpegts ;;
    joined-forwards.ts)
      film whole-$1.mkv 320x240 1 25 8 $h264 -g 25 -bf 0 -c:a aac
      joined whole-$1.mkv 0 1000 mpegts ;;
    joined-where-the-counter-turns.ts)
      film whole-$1.mkv 320x240 1 25 8 $h264 -g 25 -bf 0 -c:a aac
      joined whole-$1.mkv 95438 40 mpegts ;;
    joined-mpeg2.ts)
      film whole-$1.mkv 720x576 16/15 25 8 $mpeg2 -g 12 -aspect 4:3 -force_key_frames 5 -c:a mp2 -b:a 192k
      joined whole-$1.mkv 3000 7 mpegts ;;
    joined-ac3.vob)
      film whole-$1.mkv 720x576 16/15 25 8 $mpeg2 -g 12 -aspect 4:3 -force_key_frames 5 -c:a ac3 -b:a 192k
      joined whole-$1.mkv 30 0 vob ;;
    second-of-a-set.vob)
      film whole-$1 720x480 8/9 30000/1001 6 $mpeg2 -g 15 -aspect 4:3 -c:a ac3 -b:a 192k -f vob
      ff -i whole-$1 -c copy -copyts -output_ts_offset 20000 -f vob "$1" ;;
    begins-at-7.mkv) film whole-$1 320x240 1 25 6 $h264 -bf 2 -c:a ac3; ff -i whole-$1 -c copy -output_ts_offset 7 -avoid_negative_ts disabled "$1" ;;
    begins-before-0.mp4) later=0.32 film "$1" 320x240 1 25 6 $h264 -bf 2 -c:a aac -avoid_negative_ts disabled -t 6.32 -output_ts_offset -0.32 -movflags +negative_cts_offsets ;;
    in-fragments.mp4) film "$1" 320x240 1 25 6 $h264 -bf 2 -c:a aac -movflags frag_keyframe+empty_moov ;;

    # Sound.
    sixteen-sounds.mkv) film "$1" 320x240 1 25 6 $h264 $(printf ' -map 1:a%.0s' 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15) -c:a libvorbis ;;
    six-channels.mkv) film "$1" 320x240 1 25 6 $h264 -c:a flac -ac 6 -ar 96000 ;;
    eight-channels.mkv) film "$1" 320x240 1 25 6 $h264 -c:a pcm_f32le -ac 8 ;;
    silent.mp4) sound= film "$1" 320x240 1 25 6 $h264 ;;

    # Broken ends.
    broken.mkv) film whole-$1 320x240 1 25 8 $h264 -c:a ac3; cut "whole-$1" 90 >"$1" ;;
    broken.avi) film whole-$1 320x240 1 25 8 -c:v mpeg4 -q:v 2 -c:a libmp3lame; cut "whole-$1" 90 >"$1" ;;
    broken.ts) film whole-$1 320x240 1 25 8 $h264 -c:a aac; cut "whole-$1" 90 >"$1" ;;
    broken-in-front.mp4) film whole-$1 320x240 1 25 8 $h264 -c:a aac -movflags +faststart; cut "whole-$1" 90 >"$1" ;;
    broken.mp4) film whole-$1 320x240 1 25 6 $h264 -c:a aac; cut "whole-$1" 90 >"$1" ;;

    # No films.
    empty.mp4) : >"$1" ;;
    text.mkv) echo 'no medium' >"$1" ;;
    sound.mp3) sound= film "$1" 320x240 1 25 6 -vn -map 1:a -c:a libmp3lame ;;
    sound.m4a) sound= film "$1" 320x240 1 25 6 -vn -map 1:a -c:a aac ;;
    picture.png) card 320x240 1; cp "$card" "$1" ;;
    zeros.mpg) head -c 100000 /dev/zero >"$1" ;;
    *)
      echo "make_films.sh: \"$1\"?" >&2
      exit 1 ;;
  esac
  rm -f "whole-$1" "front-$1" "sound-$1" "sound-$1.wav"
}
# joined FROM CLOCK CLOCK CONTAINER: the first five seconds and the rest, with clocks that begin there, joined
# as "cat" does. What is in the second part begins with a key picture.
joined() {
  ff -i "$1" -t 5 -map 0 -c copy -output_ts_offset "$2" -f "$4" "$1.1"
  ff -ss 5.2 -i "$1" -map 0 -c copy -output_ts_offset "$3" -f "$4" "$1.2"
  out=${1#whole-}
  cat "$1.1" "$1.2" >"${out%.mkv}"
  rm -f "$1" "$1.1" "$1.2"
}
cut() { head -c $(($(stat -c %s "$1") * $2 / 100)) "$1"; }

# All names above.
names() { sed -n '/^make_film() {/,/^}/s/^    \([a-z0-9][a-z0-9-]*\.[a-z0-9]\{2,4\}[a-z0-9.| -]*\)).*/\1/p' "$script" | tr -d ' ' | tr '|' '\n'; }

case $1 in
  --one)
    cd "$2"
    trap '[ $? = 0 ] || echo "make_films.sh: \"$3\" could not be made" >&2' EXIT
    make_film "$3"
    exit 0 ;;
  --names)
    names
    exit 0 ;;
esac
mkdir -p "$1"
cd "$1"
stamp=$({ cat "$script" "$encoders"; ffmpeg -version | head -n 1; } | sha256sum)
[ "$(cat .stamp 2>/dev/null)" != "$stamp" ] || { touch .stamp; exit 0; }
own_folder "$1"
rm -rf -- *
names | xargs -P 2 -n 1 "$script" --one .
rm -f card-*.png
printf '%s\n' "$stamp" >.stamp
