#!/bin/sh
# Makes the program streams of the examination's tests with other programs' multiplexers, and notes
# what ffprobe says of each:
#
#   tests/examine/make_program.sh FOLDER
#
# NAME.probe holds a line for each stream inside: its number as ffprobe gives it, packets, bytes in
# them, packets with a time stamp, the earliest and the latest of those. A second run with nothing
# changed only compares a stamp.
set -eu

script=$(readlink -f -- "$0")
encoders=${script%/*/*}/support/encoders.sh
# shellcheck source=tests/support/encoders.sh
. "$encoders"
mkdir -p "$1"
cd "$1"
stamp=$({ cat "$script" "$encoders"; ffmpeg -version | head -n 1; } | sha256sum)
[ "$(cat .stamp 2>/dev/null)" != "$stamp" ] || { touch .stamp; exit 0; }
rm -rf .stamp disc ./*.mpg ./*.vob

# quiet COMMAND...: shows what it said only when it fails.
quiet() { "$@" >log 2>&1 </dev/null || { cat log >&2; exit 1; }; }

ff -f lavfi -i testsrc2=size=352x480:rate=30000/1001 -frames:v 75 -c:v mpeg2video -g 15 -bf 2 \
  -b:v 1500k -maxrate 4000k -bufsize 1835k -pix_fmt yuv420p -threads 1 -f mpeg2video video.m2v
ff -f lavfi -i testsrc2=size=352x288:rate=25 -frames:v 50 -c:v mpeg1video -g 12 -bf 2 -b:v 1100k \
  -bufsize 327k -maxrate 1150k -pix_fmt yuv420p -threads 1 -f mpeg1video video.m1v
ff -f lavfi -i sine=440:sample_rate=48000:duration=2.5 -ac 2 -b:a 192k sound.ac3
ff -f lavfi -i sine=880:sample_rate=48000:duration=2.5 -ac 2 -b:a 224k sound.mp2
ff -f lavfi -i sine=880:sample_rate=44100:duration=2 -ac 2 -b:a 224k cd.mp2
ff -f lavfi -i color=red:size=720x480,format=rgba,drawbox=t=fill:x=50:y=100:w=60:h=20:color=blue \
  -vf colorkey=red:0.1:0 -frames:v 1 text.png

ff -i video.m2v -i sound.ac3 -i sound.mp2 -map 0 -map 1 -map 2 -c copy -f dvd ffmpeg-dvd.vob
quiet ff -i video.m2v -i sound.ac3 -i sound.mp2 -map 0 -map 1 -map 2 -map 1 -c:v copy -c:a:0 pcm_s16be \
  -c:a:1 copy -c:a:2 dca -strict -2 -b:a:2 768k -f vob ffmpeg-vob.vob
ff -i video.m1v -i cd.mp2 -c copy -f mpeg ffmpeg-one.mpg
quiet mplex -v 1 -f 8 -o mplex-dvd.mpg video.m2v sound.ac3 sound.mp2
quiet mplex -v 1 -f 3 -o mplex-generic.mpg video.m2v sound.mp2
quiet mplex -v 1 -f 1 -o mplex-vcd.mpg video.m1v cd.mp2

cat >spu.xml <<TEXT
<subpictures><stream><spu start="00:00:00.5" end="00:00:01" image="text.png"/>
<spu start="00:00:01.5" end="00:00:02" image="text.png"/></stream></subpictures>
TEXT
cat >disc.xml <<TEXT
<dvdauthor><vmgm/><titleset><titles><subpicture lang="en"/><pgc>
<vob file="spumux.mpg" chapters="0,0:01"/><vob file="mplex-dvd.mpg" chapters="0"/>
</pgc></titles></titleset></dvdauthor>
TEXT
export VIDEO_FORMAT=NTSC
spumux -s 0 spu.xml <mplex-dvd.mpg >spumux.mpg 2>log || { cat log >&2; exit 1; }
quiet dvdauthor -o disc -x disc.xml
mv disc/VIDEO_TS/VTS_01_1.VOB dvdauthor.vob

for stream in *.mpg *.vob; do
  ffprobe -v error -probesize 50M -fflags +noparse+nofillin -of compact \
    -show_entries stream=index,id:packet=stream_index,pts,size "$stream" | awk -F '|' '
      function value(name, i) { for (i = 2; i <= NF; ++i) if (index($i, name "=") == 1) return substr($i, length(name) + 2) }
      $1 == "stream" { id[value("index")] = value("id") }
      $1 == "packet" {
        n = value("stream_index"); ++packets[n]; bytes[n] += value("size"); pts = value("pts")
        if (pts != "N/A") {
          if (!stamps[n]++) first[n] = last[n] = pts + 0
          if (pts + 0 < first[n]) first[n] = pts + 0
          if (pts + 0 > last[n]) last[n] = pts + 0
        }
      }
      END { for (n in id) print id[n], packets[n] + 0, bytes[n] + 0, stamps[n] + 0, first[n] + 0, last[n] + 0 }' |
    sort >"$stream.probe"
done
rm -rf disc log spu.xml disc.xml text.png
printf '%s\n' "$stamp" >.stamp
