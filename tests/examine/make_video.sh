#!/bin/sh
# Makes the video streams of the examination's tests with other programs' encoders, and notes what
# ffprobe says of each:
#
#   tests/examine/make_video.sh FOLDER
#
# NAME.probe holds a line for each: the stream's properties, packets (coded pictures) and the bytes of
# the largest, then frames, fields and I pictures that it decoded. A second run with nothing changed
# only compares a stamp.
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

video_stream pal.m2v 720x576 25 30 mpeg2video -g 12 -bf 2 -flags +ilme+ildct -top 1 -b:v 3000k -aspect 16:9
video_stream ntsc.m2v 720x480 30000/1001 32 mpeg2video -g 15 -bf 2 -b:v 3000k -maxrate 8000k \
  -bufsize 1835k -aspect 4:3
video_stream closed.m2v 352x240 30000/1001 50 mpeg2video -g 15 -bf 2 -flags +cgop -b:v 900k
video_stream low-delay.m2v 352x288 25 30 mpeg2video -g 15 -bf 0 -flags +low_delay -b:v 900k
video_stream long.m2v 352x480 30000/1001 70 mpeg2video -g 20 -bf 1 -b:v 900k
video_stream wide.m2v 1280x720 25 5 mpeg2video -g 12 -bf 2 -b:v 3000k
video_stream film.m2v 352x480 24000/1001 30 mpeg2video -g 12 -bf 2 -b:v 900k
video_stream one.m1v 352x288 25 40 mpeg1video -g 12 -bf 2 -b:v 900k
ff -f lavfi -i "nullsrc=size=352x240:rate=30000/1001,geq=random(1)*255:128:128" -frames:v 35 \
  -c:v mpeg2video -pix_fmt yuv420p -threads 1 -g 15 -bf 2 -q:v 8 -f mpeg2video loud.m2v
by_mpeg2enc dvd.m2v 720x576 25 13 tff -f 8 -a 3 -b 6000
by_mpeg2enc pulldown.m2v 720x480 24000/1001 16 prog -f 8 -p -b 6000
by_mpeg2enc open.m2v 352x240 24000/1001 30 prog -f 3 -b 1500 -g 12 -G 12 -R 2
by_mpeg2enc vcd.m1v 352x288 25 30 prog -f 1
ff -f lavfi -i testsrc2=size=720x480 -frames:v 1 -pix_fmt yuvj420p still.jpg
jpeg2yuv -v 0 -f 29.97 -n 1 -I p -j still.jpg 2>/dev/null |
  mpeg2enc -v 0 -f 8 -T 90 -o still.m2v >mpeg2enc.log 2>&1 || { cat mpeg2enc.log >&2; exit 1; }
rm -f mpeg2enc.log still.jpg

properties=codec_name,profile,level,width,height,display_aspect_ratio,r_frame_rate
for stream in *.m2v *.m1v; do
  ffprobe -v error -of compact -show_entries "packet=size:frame=pict_type,repeat_pict:stream=$properties" \
    "$stream" | awk -F '|' '
      function value(name, i) {
        for (i = 2; i <= NF; ++i)
          if (index($i, name "=") == 1) return substr($i, length(name) + 2)
      }
      $1 == "packet" { ++packets; if (value("size") + 0 > largest) largest = value("size") + 0 }
      $1 == "frame" { ++frames; fields += 2 + value("repeat_pict"); intra += value("pict_type") == "I" }
      $1 == "stream" { for (i = 2; i <= NF; ++i) print $i }
      END {
        printf "packets=%d\nlargest=%d\n", packets, largest
        printf "frames=%d\nfields=%d\nintra=%d\n", frames, fields, intra
      }' \
    >"$stream.probe"
done
printf '%s\n' "$stamp" >.stamp
