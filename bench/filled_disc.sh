#!/bin/sh
# Whether "fill the disc" fills it: a film of three minutes is imported as one of so many as make up
# the length that is asked about, and the disc is authored of all of them. One line for each length:
# minutes, kbit/s of video, bytes of the disc and what per cent of its capacity they are. Fails where
# they are more than the capacity or more than 2 % below it.
#
#   bench/filled_disc.sh [MINUTES...]      (default 90 and 150; multiples of three)
#
# The rate is the one that all of them together are given. CORVANE_BIN: where the programs are;
# CORVANE_WORK: a folder where 10 GB are free (default: build), in which "bench-filled" is made and
# removed.
set -eu

cd "$(dirname -- "$0")/.."
here=$(pwd)
bin=${CORVANE_BIN:-$here/build/release/bin}
work=${CORVANE_WORK:-$here/build}/bench-filled
export CORVANE_HOME="$work/home"
capacity=4700372992
seconds=180

fail() {
  echo "filled_disc.sh: $*" >&2
  exit 1
}
[ -x "$bin/corvane-author" ] || fail "no $bin/corvane-author: build the release preset first"
[ "$#" -gt 0 ] || set -- 90 150
for minutes; do
  [ "$minutes" -gt 0 ] 2>/dev/null && [ $((minutes * 60 % seconds)) = 0 ] ||
    fail "\"$minutes\" are no minutes that can be made of films of $((seconds / 60))"
done
import=
leave() {
  if [ -n "$import" ]; then
    kill -TERM "$import" 2>/dev/null || :
    wait "$import" || :
  fi
  rm -rf "$work"
}
rm -rf "$work"
mkdir -p "$CORVANE_HOME"
trap leave EXIT
trap 'exit 130' INT TERM HUP

ff() { ffmpeg -nostdin -v error -y "$@" </dev/null; }

# Quiet and busy scenes, as films have them.
make_film() {
  part=0
  for scene in mandelbrot=size=720x480:rate=30000/1001 testsrc2=size=720x480:rate=30000/1001 \
    cellauto=size=720x480:rate=30000/1001:rule=110 gradients=size=720x480:rate=30000/1001 \
    life=size=720x480:rate=30000/1001:mold=10:life_color=yellow mandelbrot=size=720x480:rate=30000/1001:start_scale=0.1; do
    part=$((part + 1))
    grain=$((part * 4 % 17))
    ff -f lavfi -i "$scene" -t 30 -vf "noise=alls=$grain:allf=t,setsar=8/9" -c:v mpeg4 -q:v 3 \
      -pix_fmt yuv420p "$work/part$part.mkv"
    echo "file 'part$part.mkv'" >>"$work/parts.txt"
  done
  ff -f concat -i "$work/parts.txt" -f lavfi -i "anoisesrc=sample_rate=48000:amplitude=0.2" \
    -t $seconds -map 0:v -map 1:a -c:v copy -c:a pcm_s16le "$work/film.mkv"
}

# What "fill the disc" gives the video, in kbit/s, when so many such films are imported together; they
# are not made.
rate_for() {
  rm -rf "$work/films" "$work/to"
  mkdir "$work/films"
  for film in $(seq "$1"); do ln "$work/film.mkv" "$work/films/$film.mkv"; done
  "$bin/corvane-author" --import "$work/films/"*.mkv --to "$work/to" "$work/films/disc.cvp" >"$work/output" 2>&1 </dev/null &
  import=$!
  until grep -q 'video of' "$work/output"; do
    kill -0 $import 2>/dev/null || { cat "$work/output" >&2; fail "the import says no rate"; }
    sleep 0.2
  done
  kill -TERM $import
  wait $import || :
  import=
  sed -n 's|.*video of \([0-9.]*\) Mb/s.*|\1|p' "$work/output" | awk '{ printf "%d", 1000 * $1 }'
}

author() {
  mplex -v 0 -f 8 -o "$work/film.mpg" "$work/to/film.m2v" "$work/to/film.ac3" >"$work/output" 2>&1 ||
    { cat "$work/output" >&2; fail "mplex failed"; }
  {
    echo '<dvdauthor><vmgm/><titleset><titles><video format="ntsc"/>'
    for title in $(seq "$1"); do  # dvdauthor takes a file of one name once
      ln -f "$work/film.mpg" "$work/$title.mpg"
      echo "<pgc><vob file=\"$work/$title.mpg\"/></pgc>"
    done
    echo '</titles></titleset></dvdauthor>'
  } >"$work/disc.xml"
  rm -rf "$work/disc"
  VIDEO_FORMAT=NTSC dvdauthor -o "$work/disc" -x "$work/disc.xml" >"$work/output" 2>&1 ||
    { cat "$work/output" >&2; fail "dvdauthor failed"; }
}

make_film
for minutes; do
  titles=$((minutes * 60 / seconds))
  rate=$(rate_for "$titles")
  rm -rf "$work/to" "$work/disc.cvp"
  "$bin/corvane-author" --import "$work/film.mkv" --to "$work/to" --rate "$rate" "$work/disc.cvp" >"$work/output" 2>&1 </dev/null ||
    { cat "$work/output" >&2; fail "the import failed"; }
  author "$titles"
  bytes=$(find "$work/disc/VIDEO_TS" -type f -printf '%s\n' | awk '{ sum += $1 } END { printf "%.0f", sum }')
  awk -v m="$minutes" -v r="$rate" -v b="$bytes" -v c="$capacity" 'BEGIN {
    printf "filled %d %d %.0f %.2f\n", m, r, b, 100 * b / c
    exit b > c || b < 0.98 * c
  }' || fail "$minutes minutes do not fill the disc, or are too much for it"
  rm -rf "$work/disc" "$work"/*.mpg
done
