#!/bin/sh
# Makes files as people have them, for the tests of import: containers and codecs that no disc takes,
# and MPEG-2 that one does.
#
#   tests/import/make_sources.sh FOLDER
#
# A second run with nothing changed only compares a stamp.
set -eu

script=$(readlink -f -- "$0")
encoders=${script%/*/*}/support/encoders.sh
# shellcheck source=tests/support/encoders.sh
. "$encoders"
mkdir -p "$1"
cd "$1"
stamp=$({ cat "$script" "$encoders"; ffmpeg -version | head -n 1; } | sha256sum)
[ "$(cat .stamp 2>/dev/null)" != "$stamp" ] || { touch .stamp; exit 0; }
rm -f .stamp

picture() { printf 'testsrc2=size=%s:rate=%s:duration=4' "$1" "$2"; }
tone() { printf 'sine=frequency=440:sample_rate=%s:duration=4' "$1"; }
h264='-c:v libx264 -preset ultrafast -pix_fmt yuv420p'

cat >chapters.txt <<END
;FFMETADATA1
[CHAPTER]
TIMEBASE=1/1000
START=0
END=1300
[CHAPTER]
TIMEBASE=1/1000
START=1300
END=4000
END

# A phone's: turned, 44.1 kHz, sound that begins 0.4 s after the picture.
# shellcheck disable=SC2086
ff -f lavfi -i "$(picture 640x360 30)" -itsoffset 0.4 -f lavfi -i "$(tone 44100)" $h264 -c:a aac \
  -metadata:s:v rotate=90 phone.mp4
# Cinema: 10 bits, 23.976, six channels, chapters, text.
printf '1\n00:00:00,500 --> 00:00:02,000\nf\303\274r\n' >film.srt
ff -f lavfi -i "$(picture 960x400 24000/1001)" -f lavfi -i "$(tone 48000)" -i chapters.txt -i film.srt \
  -map 0 -map 1 -map 3 -map_metadata 2 -c:v libx265 -preset ultrafast -x265-params log-level=none \
  -pix_fmt yuv420p10le -c:a flac -ac 6 -c:s ass film.mkv
# Marks: at 1, 6 and 11 s a picture is white and a tone begins. The sound begins 2 s before the picture
# in one file, half a second after it in the other.
marks="between(mod(T,5),0.99,1.03)"
# shellcheck disable=SC2086
ff -f lavfi -i "color=black:size=320x240:rate=24:duration=12,format=gray,geq=lum='255*$marks'" \
  -f lavfi -i "aevalsrc='0.5*sin(2*PI*1000*t)*between(mod(t,5),1,1.1)':s=44100:d=12" \
  -map 0 -map 1 $h264 -bf 2 -c:a pcm_s16le marks.mkv
ff -itsoffset 2 -i marks.mkv -f lavfi \
  -i "aevalsrc='0.5*sin(2*PI*1000*t)*between(mod(t+3,5),1,1.1)':s=44100:d=14" \
  -map 0:v -map 1 -c:v copy -c:a pcm_s16le early.mkv
ff -i marks.mkv -itsoffset 0.5 -f lavfi \
  -i "aevalsrc='0.5*sin(2*PI*1000*t)*between(mod(t+0.5,5),1,1.1)':s=44100:d=11" \
  -map 0:v -map 1 -c:v copy -c:a aac late.mp4
# Pictures at uneven times.
# shellcheck disable=SC2086
ff -f lavfi -i "$(picture 640x480 30)" -f lavfi -i "$(tone 48000)" \
  -vf "select='not(eq(mod(n,7),3))'" -fps_mode vfr $h264 -c:a libopus uneven.mkv
# More bits than there can be.
# shellcheck disable=SC2086
ff -f lavfi -i "testsrc2=size=704x480:rate=30000/1001:duration=5,noise=alls=35:allf=t" \
  -f lavfi -i "anoisesrc=sample_rate=48000:duration=5" $h264 -crf 8 -c:a flac -ac 6 noise.mkv
# Hard to code for its size, now more and now less.
ff -f lavfi -i "testsrc2=size=352x240:rate=30000/1001:duration=25,noise=alls=14:allf=t" \
  -f lavfi -i "mandelbrot=size=352x240:rate=30000/1001:end_pts=300" \
  -f lavfi -i "anoisesrc=sample_rate=48000:duration=60:amplitude=0.2" \
  -filter_complex "[1]format=yuv420p,setsar=1[m];[0][m]concat,setsar=10/11[v]" \
  -map '[v]' -map 2 -t 60 -c:v mpeg4 -q:v 3 -c:a ac3 -b:a 192k -ac 2 filling.mkv
# A camera's fields.
ff -f lavfi -i "$(picture 720x540 50)" -f lavfi -i "$(tone 48000)" \
  -vf interlace,setsar=4/3 -c:v mpeg2video -flags +ilme+ildct -top 1 -b:v 6M -c:a mp2 camera.ts
# A tape's: bottom field first, not to be scaled.
ff -f lavfi -i "$(picture 720x480 60000/1001)" -f lavfi -i "$(tone 48000)" \
  -vf interlace=scan=bff,setsar=8/9 -c:v dvvideo -pix_fmt yuv411p -flags +ilme+ildct -top 0 \
  -c:a pcm_s16le tape.avi
# What a disc takes, from one encoder, as it is and in containers that no disc takes.
ff -f lavfi -i "$(picture 720x480 30000/1001)" -f lavfi -i "$(tone 48000)" -map 0 -map 1 \
  -c:v mpeg2video -pix_fmt yuv420p -g 15 -bf 2 -aspect 4:3 -b:v 4M -maxrate 8M -bufsize 1835008 \
  -c:a ac3 -b:a 192k -ac 2 -f tee \
  '[f=mpeg2video:select=v]ready.m2v|[f=ac3:select=a]ready.ac3|[f=dvd]ready.mpg|[f=matroska]ready.mkv'
# With more buffer and longer groups than players know.
ff -f lavfi -i "$(picture 720x480 30000/1001)" -f lavfi -i "$(tone 48000)" -c:v mpeg2video \
  -pix_fmt yuv420p -g 15 -bf 2 -aspect 4:3 -b:v 4M -maxrate 8M -bufsize 4000000 -c:a ac3 buffer.mkv
ff -f lavfi -i "$(picture 720x480 30000/1001)" -f lavfi -i "$(tone 48000)" -c:v mpeg2video \
  -pix_fmt yuv420p -g 60 -sc_threshold 1000000000 -bf 2 -aspect 4:3 -b:v 4M -maxrate 8M \
  -bufsize 1835008 -c:a ac3 groups.mkv
# The same as it was received badly: of the third second 0.6 are missing.
lost_sound="noise=drop='gt(n,59)*lt(n,79)'"
ff -i ready.mkv -map 0 -c copy -bsf:a "$lost_sound" -f mpegts lost-sound.ts
ff -i ready.mkv -map 0 -c copy -bsf:a "$lost_sound" -bsf:v "noise=drop='gt(n,57)*lt(n,76)'" \
  -f mpegts lost-both.ts
printf '%s\n' "$stamp" >.stamp
