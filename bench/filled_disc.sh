#!/bin/sh
# Whether "fill the disc" fills it: a film of three minutes is imported as one of so many as make up
# the length that is asked about, and the disc is authored of all of them. One line for each length:
# minutes, kbit/s of video, bytes of the disc and what per cent of its capacity they are. Fails where
# they are more than the capacity or more than 2 % below it.
#
#   bench/filled_disc.sh [MINUTES...]      (default 90 and 150; multiples of three)
#
# A sparse file that the project holds already takes the room of all other titles. CORVANE_BIN: where
# the programs are; CORVANE_WORK: where 10 GB are free.
set -eu

cd "$(dirname -- "$0")/.."
here=$(pwd)
bin=${CORVANE_BIN:-$here/build/release/bin}
work=${CORVANE_WORK:-$here/build/bench-filled}
export CORVANE_HOME="$work/home"
capacity=4700372992
seconds=180

fail() {
  echo "filled_disc.sh: $*" >&2
  exit 1
}
[ -x "$bin/corvane-author" ] || fail "no $bin/corvane-author: build the release preset first"
rm -rf "$work"
mkdir -p "$CORVANE_HOME"
trap 'rm -rf "$work"' EXIT
[ "$#" -gt 0 ] || set -- 90 150

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

# A project whose one title is a file of so many bytes.
make_project() {
  rm -f "$work/rest.vob" "$work/disc.cvp"
  truncate -s "$1" "$work/rest.vob"
  stored=$(printf '%s' "$work/rest.vob" | tr / '\\')
  {
    printf 'Corvane 0.997 - 1/2/2005\r\n%s\r\n***\r\n00:00:00.00\r\n***\r\n0\r\n***\r\n***\r\n' "$stored"
    printf '***\r\n***\r\n***\r\n***\r\n<none>\r\n***\r\n'
    printf 'center,bottom,60,60,30,30,28.0,arial.ttf,720,478,29.97,ISO-8859-1|\r\n***\r\n'
    printf '<default>\r\nNTSC\r\nTrue\r\nTrue\r\n'
  } >"$work/disc.cvp"
}

author() {
  mplex -v 0 -f 8 -o "$work/film.mpg" "$work/to/film.m2v" "$work/to/film.ac3" >"$work/output" 2>&1 ||
    { cat "$work/output" >&2; fail "mplex failed"; }
  {
    echo '<dvdauthor><vmgm/><titleset><titles><video format="ntsc"/>'
    for _ in $(seq "$1"); do echo "<pgc><vob file=\"$work/film.mpg\"/></pgc>"; done
    echo '</titles></titleset></dvdauthor>'
  } >"$work/disc.xml"
  rm -rf "$work/disc"
  VIDEO_FORMAT=NTSC dvdauthor -o "$work/disc" -x "$work/disc.xml" >"$work/output" 2>&1 ||
    { cat "$work/output" >&2; fail "dvdauthor failed"; }
}

make_film
for minutes; do
  titles=$((minutes * 60 / seconds))
  make_project $((capacity - capacity / titles))
  rm -rf "$work/to"
  "$bin/corvane-author" --import "$work/film.mkv" --to "$work/to" "$work/disc.cvp" >"$work/output" 2>&1 </dev/null ||
    { cat "$work/output" >&2; fail "the import failed"; }
  author "$titles"
  bytes=$(find "$work/disc/VIDEO_TS" -type f -printf '%s\n' | awk '{ sum += $1 } END { printf "%d", sum }')
  rate=$(($(stat -c %s "$work/to/film.m2v") * 8 / seconds / 1000))
  awk -v m="$minutes" -v r="$rate" -v b="$bytes" -v c="$capacity" 'BEGIN {
    printf "filled %d %d %d %.2f\n", m, r, b, 100 * b / c
    exit b > c || b < 0.98 * c
  }' || fail "$minutes minutes do not fill the disc, or are too much for it"
  rm -rf "$work/disc"
done
