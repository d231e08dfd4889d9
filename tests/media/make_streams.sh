#!/bin/sh
# Makes the streams of the media tests with other programs' encoders and multiplexers:
#
#   tests/media/make_streams.sh FOLDER
#
# Each NAME.m2v (.m1v, .mpg, .vob) is small and moves from picture to picture. A second run with
# nothing changed only compares a stamp.
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

video_stream closed.m2v 352x240 30000/1001 70 mpeg2video -g 15 -bf 2 -flags +cgop -b:v 900k
video_stream open.m2v 352x240 30000/1001 70 mpeg2video -g 15 -bf 2 -b:v 900k
video_stream pal.m2v 720x576 25 40 mpeg2video -g 12 -bf 2 -flags +ilme+ildct -top 1 -b:v 3000k -aspect 16:9
video_stream intra.m2v 352x288 25 40 mpeg2video -g 1 -b:v 2000k
video_stream long.m2v 96x64 25 700 mpeg2video -g 600 -bf 2 -b:v 200k
video_stream predicted.m2v 352x240 24 40 mpeg2video -g 20 -bf 0 -b:v 900k
video_stream odd.m2v 354x242 24000/1001 30 mpeg2video -g 12 -bf 2 -b:v 900k
video_stream one.m1v 352x288 25 60 mpeg1video -g 12 -bf 2 -b:v 900k
video_stream still.m2v 720x480 30000/1001 1 mpeg2video -b:v 3000k
by_mpeg2enc interlaced.m2v 352x288 25 50 tff -f 3 -I 1 -b 1500 -g 9 -G 12 -R 2
by_mpeg2enc progressive.m2v 352x240 24000/1001 60 prog -f 3 -b 1500 -g 12 -G 12 -R 2
by_mpeg2enc no-b.m2v 352x240 24000/1001 60 prog -f 3 -c -b 1500 -g 12 -G 12 -R 0
rm -f mpeg2enc.log

ff -f lavfi -i sine=duration=3 -c:a mp2 -b:a 192k -f mp2 sound.mp2
ff -f mpegvideo -i open.m2v -i sound.mp2 -c copy -f vob open.vob 2>/dev/null
ff -f mpegvideo -i one.m1v -i sound.mp2 -c copy -f mpeg one.mpg 2>/dev/null
mplex -v 0 -f 8 -o pal.mpg pal.m2v sound.mp2 >mplex.log 2>&1 || { cat mplex.log >&2; exit 1; }
VIDEO_FORMAT=PAL dvdauthor -o disc -t pal.mpg >dvdauthor.log 2>&1 || { cat dvdauthor.log >&2; exit 1; }
mv disc/VIDEO_TS/VTS_01_1.VOB disc.vob
rm -rf disc mplex.log dvdauthor.log
# Files of other kinds, some with MPEG video in them.
mkdir -p foreign
ff -i still.m2v -frames:v 1 foreign/picture.jpg
ff -i still.m2v -frames:v 1 foreign/picture.png
ff -i sound.mp2 -c:a ac3 foreign/sound.ac3
ff -i sound.mp2 foreign/sound.wav
cp sound.mp2 foreign/sound.mp2
ff -f mpegvideo -i open.m2v -c:v mpeg4 -f m4v foreign/part2.m4v
ff -f mpegvideo -i open.m2v -c:v libx264 -f h264 foreign/avc.264
for container in mp4 avi mkv ts; do
  ff -fflags +genpts -f mpegvideo -i predicted.m2v -c copy "foreign/mpeg2.$container" 2>/dev/null
done
printf 'An ordinary text.\n' >foreign/text.m2v
printf '%s\n' "$stamp" >.stamp
