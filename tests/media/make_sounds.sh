#!/bin/sh
# Makes sounds such as menus have, of several encoders: 440 Hz on the left and 660 Hz on the right for
# two seconds, where nothing else is said.
#
#   tests/media/make_sounds.sh FOLDER
#
# What they are for is in source_sound_test.cpp. A second run with nothing changed only compares a
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

# tones RATE LEFT RIGHT: two seconds
tones() { echo "aevalsrc=0.3*sin(2*PI*$2*t)|0.3*sin(2*PI*$3*t):s=$1:d=2"; }
both=$(tones 48000 440 660)
# sound FILE OPTION...
sound() {
  out=$1
  shift
  ff -f lavfi -i "$both" "$@" "$out"
}

# What menus take.
sound ffmpeg.ac3 -c:a ac3 -b:a 192k
ff -f lavfi -i "aevalsrc=0.3*sin(2*PI*440*t)|0.3*sin(2*PI*660*t)|0|0|0|0:c=5.1:s=48000:d=2" -c:a ac3 -b:a 448k six.ac3
ff -f lavfi -i "aevalsrc=0.3*sin(2*PI*440*t):s=48000:d=2" -c:a ac3 one.ac3
sound ffmpeg.mp2 -c:a mp2 -b:a 224k
sound twolame.mp2 -c:a libtwolame -b:a 224k
sound plain.wav -fflags +bitexact -c:a pcm_s16le
mp2enc -v 0 -r 48000 -b 224 -o mp2enc.mp2 <plain.wav >mp2enc.log 2>&1 || { cat mp2enc.log >&2; exit 1; }
# Others.
sound deep.wav -c:a pcm_s24le
ff -f lavfi -i "$(tones 44100 440 660)" -c:a pcm_s16le cd.wav
sound film.dts -c:a dca -strict -2 -b:a 754k
sound lame.mp3 -c:a libmp3lame
sound flac.flac -c:a flac
sound vorbis.ogg -c:a libvorbis
sound opus.opus -c:a libopus
sound aac.m4a -c:a aac -b:a 256k

# With a picture: in the order of a disc, sounds that begin later or earlier than it, of a disc's kinds.
picture='testsrc2=size=64x48:rate=25:duration=2'
video='-c:v mpeg2video -g 12'
ff -f lavfi -i "$picture" -f lavfi -i "$both" -f lavfi -i "$(tones 48000 880 880)" -map 0 -map 1 -map 2 \
  $video -c:a ac3 -b:a 192k -f vob two.vob
ff -f lavfi -i "$picture" -f lavfi -i "$both" $video -c:a pcm_dvd -f vob lpcm.vob
ff -f lavfi -i "$picture" -itsoffset 0.5 -f lavfi -i "$both" -map 0 -map 1 $video -c:a mp2 -f vob late.vob
ff -itsoffset 0.5 -f lavfi -i "$picture" -f lavfi -i "$both" -map 0 -map 1 -fps_mode passthrough $video -c:a mp2 -f vob early.vob
ff -f lavfi -i "$picture" $video -f mpeg2video silent.m2v

# Longer than what is heard of one, and one that changes halfway.
ff -f lavfi -i "aevalsrc=0.3*sin(2*PI*440*t):s=48000:d=310" -c:a ac3 -b:a 64k long.ac3
ff -f lavfi -i "aevalsrc='0.3*sin(2*PI*if(lt(t,1),440,880)*t)':s=48000:d=2" -ac 2 -c:a ac3 change.ac3
ff -i ffmpeg.mp2 -ac 1 -ar 44100 -c:a mp2 other.mp2
cat ffmpeg.mp2 other.mp2 >joined.mp2

# Pieces.
size=$(stat -c %s ffmpeg.ac3)
head -c $((size / 2)) ffmpeg.ac3 >half.ac3
{
  head -c $((size / 3)) ffmpeg.ac3
  head -c 3000 /dev/zero
  tail -c $((size / 3)) ffmpeg.ac3
} >hole.ac3
printf '%s\n' "$stamp" >.stamp
