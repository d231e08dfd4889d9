#!/bin/sh
# Makes the audio streams of the tests with other programs' encoders:
#
#   tests/examine/make_audio.sh FOLDER
#
# The file "expected" there has a line for each: name, codec, sampling rate, channels and number of
# frames as ffprobe finds them. A second run with nothing changed only compares a stamp.
set -eu

script=$(readlink -f -- "$0")
encoders=${script%/*/*}/support/encoders.sh
# shellcheck source=tests/support/encoders.sh
. "$encoders"
mkdir -p "$1"
cd "$1"
stamp=$({ cat "$script" "$encoders"; ffmpeg -version | head -n 1; } | sha256sum)
[ "$(cat .stamp 2>/dev/null)" != "$stamp" ] || { touch .stamp; exit 0; }
rm -f .stamp expected

# Noise has frames of every content; it begins and ends with silence, whose frames are all alike.
noise() { echo "anoisesrc=duration=$1:sample_rate=48000:amplitude=0.5:seed=7,adelay=300,apad=pad_dur=0.3"; }

# stream FILE SECONDS RATE CHANNELS ENCODER OPTION...
stream() {
  out=$1 seconds=$2 rate=$3 channels=$4 encoder=$5
  shift 5
  ff -f lavfi -i "$(noise "$seconds")" -ar "$rate" -ac "$channels" -c:a "$encoder" -strict -2 "$@" "$out"
  tell "$out"
}

tell() {
  found=$(ffprobe -v error -count_packets -of csv=p=0 \
    -show_entries stream=codec_name,sample_rate,channels,nb_read_packets "$1")
  echo "$1,$found" | tr , ' ' >>expected
}

stream film.ac3 23.4 48000 2 ac3 -b:a 192k
stream film.mp2 23.4 48000 2 mp2 -b:a 224k
stream surround.ac3 3 48000 6 ac3 -b:a 448k
stream cd-rate.ac3 3 44100 2 ac3 -b:a 224k
stream mono.ac3 3 48000 1 ac3_fixed -b:a 96k
stream low-rate.ac3 3 32000 2 ac3_fixed -b:a 128k
stream plus.eac3 3 48000 6 eac3 -b:a 384k
stream fixed.mp2 3 44100 1 mp2fixed -b:a 64k
stream largest.mp2 3 48000 2 libtwolame -b:a 384k
stream low-rate.mp2 3 32000 2 libtwolame -b:a 192k
stream half-rate.mp2 3 24000 2 libtwolame -b:a 64k
stream constant.mp3 3 48000 2 libmp3lame -b:a 128k -write_xing 0 -id3v2_version 0
stream varying.mp3 3 44100 2 libmp3lame -q:a 4 -write_xing 0 -id3v2_version 0
stream half-rate.mp3 3 22050 1 libmp3lame -b:a 56k -write_xing 0 -id3v2_version 0
stream shine.mp3 3 44100 2 libshine -b:a 128k -write_xing 0 -id3v2_version 0
ff -f lavfi -i "$(noise 3)" -ac 2 -f wav sound.wav
mp2enc -v 0 -b 192 -r 48000 -o mp2enc.mp2 <sound.wav
tell mp2enc.mp2
ff -i sound.wav -metadata title=Noise -write_id3v1 1 -c:a libmp3lame tagged.mp3
ff -i sound.wav -c:a dca -strict -2 sound.dts
ff -i sound.wav -c:a aac sound.aac
printf '%s\n' "$stamp" >.stamp
