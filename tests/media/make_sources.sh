#!/bin/sh
# Makes files such as people have, small ones, with the ffmpeg program:
#
#   tests/media/make_sources.sh FOLDER
#
# What they are for is in source_probe_test.cpp. A second run with nothing changed only compares a
# stamp.
set -eu

script=$(readlink -f -- "$0")
encoders=${script%/*/*}/support/encoders.sh
# shellcheck source=tests/support/encoders.sh
. "$encoders"
# shellcheck source=tests/support/own_folder.sh
. "${script%/*/*}/support/own_folder.sh"
mkdir -p "$1"
cd "$1"
stamp=$({ cat "$script" "$encoders"; ffmpeg -version | head -n 1; } | sha256sum)
[ "$(cat .stamp 2>/dev/null)" != "$stamp" ] || { touch .stamp; exit 0; }
own_folder "$1"
rm -rf -- *

picture() { echo "testsrc2=size=${1:-64x48}:rate=${2:-25}:duration=${3:-0.6}"; }
sound='sine=frequency=440:sample_rate=48000:duration=0.6'
x264='-c:v libx264 -preset ultrafast -pix_fmt yuv420p -threads 1'

# both FILE OPTION...: a picture that moves, and sound
both() {
  out=$1
  shift
  ff -f lavfi -i "$(picture)" -f lavfi -i "$sound" "$@" "$out"
}
# video FILE SIZE RATE OPTION...
video() {
  out=$1 size=$2 rate=$3
  shift 3
  ff -f lavfi -i "$(picture "$size" "$rate")" "$@" "$out"
}
# audio FILE OPTION...
audio() {
  out=$1
  shift
  ff -f lavfi -i "$sound" "$@" "$out"
}

# Containers and codecs.
both h264-aac.mp4 $x264 -c:a aac -metadata:s:a:0 language=deu
both h264-ac3.mkv $x264 -bf 2 -c:a ac3 -metadata:s:a:0 language=eng -metadata:s:a:0 title=Director
both h264-aac.ts $x264 -c:a aac
both h264-aac.flv $x264 -ar 44100 -c:a aac
both h264-pcm.mov $x264 -c:a pcm_s16le
both hevc-aac.mp4 -c:v libx265 -preset ultrafast -x265-params log-level=none -pix_fmt yuv420p -tag:v hvc1 -c:a aac
both vp9-opus.webm -c:v libvpx-vp9 -deadline realtime -cpu-used 8 -c:a libopus
both vp8-vorbis.webm -c:v libvpx -deadline realtime -c:a libvorbis
both av1-opus.webm -c:v libaom-av1 -cpu-used 8 -usage realtime -c:a libopus
both mpeg4-mp3.avi -c:v mpeg4 -c:a libmp3lame
both mjpeg-pcm.avi -c:v mjpeg -pix_fmt yuvj420p -c:a pcm_s16le
both prores-pcm.mov -c:v prores_ks -pix_fmt yuv422p10le -c:a pcm_s24le
both prores4444.mov -c:v prores_ks -profile:v 4444 -pix_fmt yuva444p10le -an
both mpeg1-mp2.mpg -c:v mpeg1video -c:a mp2 -f mpeg
both mpeg2-mp2.mpg -c:v mpeg2video -c:a mp2 -f vob
both mpeg2-ac3.ts -c:v mpeg2video -c:a ac3
both wmv2-wma.asf -c:v wmv2 -c:a wmav2
both theora-vorbis.ogv -c:v libtheora -c:a libvorbis
both ffv1-flac.mkv -c:v ffv1 -c:a flac
both h264-dts.mkv $x264 -c:a dca -strict -2
video dv.dv 720x576 25 -c:v dvvideo -pix_fmt yuv420p -s 720x576
video h264.264 64x48 25 $x264 -f h264
video gif.gif 64x48 10
audio sound.mp3 -c:a libmp3lame
audio sound.flac -c:a flac
audio sound.wav -c:a pcm_s16le
audio sound.ogg -c:a libvorbis
audio sound.opus -c:a libopus
audio sound.m4a -c:a aac
audio sound.aac -c:a aac -f adts
audio sound.ac3 -ac 6 -c:a ac3
audio sound.dts -c:a dca -strict -2
audio sound.aiff -c:a pcm_s16be

# Pictures of other shapes and depths.
video ten-bit.mkv 64x48 25 -c:v libx265 -preset ultrafast -x265-params log-level=none -pix_fmt yuv420p10le \
  -color_primaries bt2020 -color_trc smpte2084 -colorspace bt2020nc
video 444.mkv 64x48 25 -c:v libx264 -preset ultrafast -pix_fmt yuv444p
video alpha.webm 64x48 25 -c:v libvpx -deadline realtime -pix_fmt yuva420p -auto-alt-ref 0
ff -f lavfi -i color=lime:size=2x2:rate=25:duration=0.6,format=gbrp,crop=1:1 -c:v ffv1 -pix_fmt gbrp one-pixel.mkv
video odd.mkv 1920x1080 5 -vf scale=1919:1081 -c:v libx264 -preset ultrafast -pix_fmt yuv444p
video anamorphic.mp4 72x58 25 -vf setsar=64/45 -c:v mpeg4
video ntsc.mp4 64x48 30000/1001 $x264
video film.mkv 64x48 24000/1001 $x264
video full-range.mp4 64x48 25 $x264 -vf scale=out_range=full -color_range pc -colorspace bt709 -color_primaries bt709 -color_trc bt709
for turn in 90 180 270; do
  ff -i h264-aac.mp4 -an -c copy -metadata:s:v:0 rotate=$turn turned-$turn.mp4
done

# Interlaced ones.
ff -f lavfi -i "$(picture 64x64 50)" -vf interlace=scan=tff,setfield=tff $x264 -flags +ilme+ildct \
  -x264-params tff=1 -f mpegts h264-top.ts
ff -f lavfi -i "$(picture 64x64 50)" -vf interlace=scan=bff,setfield=bff $x264 -flags +ilme+ildct \
  -x264-params bff=1 -bsf:v h264_mp4toannexb h264-bottom.mkv
ff -f lavfi -i "$(picture 64x64 50)" -vf interlace=scan=tff,setfield=tff -c:v mpeg2video -flags +ilme+ildct \
  -top 1 mpeg2-top.mpg
ff -f lavfi -i "$(picture 64x64 50)" -vf interlace=scan=bff,setfield=bff -c:v mpeg2video -flags +ilme+ildct \
  -top 0 mpeg2-bottom.mpg

# Times. The variable ones leave pictures out here and there, or slow down behind the beginning.
video variable.mp4 64x48 25 -vf "select='not(between(mod(n,7),3,5))'" -fps_mode vfr $x264
video variable.mkv 64x48 25 -vf "select='not(between(mod(n,7),3,5))'" -fps_mode vfr $x264
ff -f lavfi -i "$(picture 16x16 25 24)" -vf "select='lt(n,400)+not(mod(n,2))'" -fps_mode vfr $x264 late-variable.mp4
ff -f lavfi -i "$(picture 16x16 25 20)" -vf 'setpts=PTS+gte(N\,450)*0.2/TB' -fps_mode vfr $x264 late-gap.mp4
ff -i h264-aac.ts -c copy -copyts -output_ts_offset 40000 -f mpegts large-start.ts
ff -i h264-ac3.mkv -c copy -output_ts_offset 7 -avoid_negative_ts disabled start-7.mkv
both trimmed.mp4 $x264 -bf 2 -c:a aac -avoid_negative_ts disabled -output_ts_offset -0.3 -movflags +negative_cts_offsets
ff -i h264-ac3.mkv -itsoffset 0.25 -i h264-ac3.mkv -map 0:v -map 1:a -c copy late-sound.mkv

# Larger than what is looked through whole: sound that is not packed, and ends before the picture.
ff -f lavfi -i "$(picture 16x16 25 24)" -f lavfi -i anullsrc=channel_layout=7.1:sample_rate=48000 -t 24 \
  -filter_complex '[1]atrim=duration=22.5[a]' -map 0:v -map '[a]' $x264 -c:a pcm_s16le large.mkv
ff -f lavfi -i "$(picture 16x16 25 24)" -f lavfi -i anullsrc=channel_layout=7.1:sample_rate=48000 -t 24 \
  -filter_complex '[1]atrim=duration=22.5[a]' -map 0:v -map '[a]' -c:v mpeg2video -c:a s302m -strict -2 large.ts

# Many streams, names, chapters, subtitles.
video silent.mp4 64x48 25 $x264
ff -f lavfi -i "$(picture)" -f lavfi -i "$sound" -map 0:v $(printf ' -map 1:a%.0s' 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16) \
  $x264 -c:a libmp3lame sixteen.mkv
printf '1\n00:00:00,100 --> 00:00:00,400\nGood evening\n' >words.srt
printf ';FFMETADATA1\n[CHAPTER]\nTIMEBASE=1/1000\nSTART=0\nEND=200\ntitle=First\n[CHAPTER]\nTIMEBASE=1/1000\nSTART=200\nEND=600\ntitle=Zweites – ß\n' >chapters.txt
ff -i h264-ac3.mkv -i words.srt -i chapters.txt -map 0 -map 1 -map_metadata 2 -c copy -c:s subrip \
  -metadata:s:s:0 language=ger -disposition:s:0 forced named.mkv
ff -i h264-aac.mp4 -i words.srt -i chapters.txt -map 0 -map 1 -map_metadata 2 -c copy -c:s mov_text named.mp4
sed 's/START=0/START=5000/; s/START=200/START=5200/; s/END=200/END=5200/; s/END=600/END=5600/' chapters.txt >late-chapters.txt
ff -i start-7.mkv -i late-chapters.txt -map 0 -map_metadata 1 -c copy -copyts -output_ts_offset -2 late-chapters.mkv
# A subtitle that is a picture: FFmpeg makes none of texts, but copies those of a small PGS stream.
printf 'PG\000\000\000\000\000\000\000\000\026\000\013\000\100\000\060\020\000\000\200\000\000\000PG\000\000\000\000\000\000\000\000\200\000\000' >bitmap.sup
ff -i h264-ac3.mkv -f sup -i bitmap.sup -map 0:v -map 1 -c copy bitmap-text.mkv || :

# Stills and covers.
ff -f lavfi -i "$(picture)" -vf scale=65:47,setsar=1 -frames:v 1 -pix_fmt rgba still.png
ff -f lavfi -i "$(picture)" -vf scale=65:47,setsar=1 -frames:v 1 -pix_fmt yuvj420p still.jpg
ff -f lavfi -i "$(picture)" -vf scale=65:47,setsar=1 -frames:v 1 still.bmp
ff -f lavfi -i "$(picture)" -vf scale=65:47,setsar=1 -frames:v 1 -pix_fmt rgb24 still.tiff
ff -f lavfi -i "$(picture)" -vf scale=65:47,setsar=1 -frames:v 1 one.gif
ff -i sound.mp3 -i still.jpg -map 0 -map 1 -c copy -disposition:v attached_pic cover.mp3
# The quadrants of which colours are known, for turning.
ff -f lavfi -i "color=red:size=32x32:rate=5:duration=1[a];color=lime:size=32x32:rate=5:duration=1[b];color=blue:size=32x32:rate=5:duration=1[c];color=white:size=32x32:rate=5:duration=1[d];[a][b]hstack[t];[c][d]hstack[u];[t][u]vstack,crop=64:48:0:8" \
  -c:v libx264 -qp 10 -pix_fmt yuv420p quadrants.mp4
ff -i quadrants.mp4 -c copy -metadata:s:v:0 rotate=90 quadrants-90.mp4
ff -i quadrants.mp4 -frames:v 1 -pix_fmt yuvj444p -q:v 1 quadrants.jpg
ff -i quadrants.mp4 -vf format=rgba,colorchannelmixer=aa=0.5 -frames:v 1 half.png
# One colour a second.
ff -f lavfi -i "color=red:size=64x48:rate=5:duration=1[a];color=lime:size=64x48:rate=5:duration=1[b];color=blue:size=64x48:rate=5:duration=1[c];[a][b][c]concat=n=3" \
  -c:v libx264 -g 50 -pix_fmt yuv420p colours.mkv

# Pieces of files.
for file in h264-aac.mp4 h264-ac3.mkv mpeg4-mp3.avi mpeg2-ac3.ts still.jpg still.png sound.wav; do
  size=$(stat -c %s "$file")
  head -c $((size * 3 / 5)) "$file" >"cut-$file"
done
ff -i h264-aac.mp4 -c copy -movflags +faststart front.mp4
head -c $(($(stat -c %s front.mp4) * 4 / 5)) front.mp4 >cut-front.mp4
head -c 40 h264-ac3.mkv >head.mkv
: >empty.mp4
printf '%s\n' "$stamp" >.stamp
