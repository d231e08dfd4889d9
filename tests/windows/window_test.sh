#!/bin/sh
# Runs a command with a sample video and two of its pictures for the tests of the windows.
#
#   tests/windows/window_test.sh COMMAND [ARGUMENT...]
set -eu

repository=$(CDPATH='' cd -- "$(dirname -- "$0")/../.." && pwd)
video=$repository/samples/media/garden-pal.m2v
"$repository/samples/make.sh" >/dev/null
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
for picture in 0 40; do
  ffmpeg -v error -nostdin -i "$video" -vf "select=eq(n\\,$picture)" -frames:v 1 \
    "$folder/$picture.ppm" </dev/null
done
CORVANE_SAMPLE_VIDEO=Z:$video
CORVANE_FIRST_PICTURE=Z:$folder/0.ppm
CORVANE_LATER_PICTURE=Z:$folder/40.ppm
export CORVANE_SAMPLE_VIDEO CORVANE_FIRST_PICTURE CORVANE_LATER_PICTURE
"$@"
