#!/bin/sh
# How an import compares with the same work by hand, one line "name value..." for each comparison:
#
#   encode   seconds of an import / of the same ffmpeg commands run from sh, and the ratio
#   copy     seconds of an import that copies all streams / of cat into another file, and the ratio
#   psnr     kind, dB of what import makes / of "ffmpeg -target ntsc-dvd" at the same mean rate, and
#            the two rates in kbit/s
#
#   bench/import_bench.sh [RUNS [SECONDS [MEGABYTES]]]      (default 3, 20 and 2000)
#
# What is compared takes turns; the medians count. CORVANE_BIN: where the programs are; CORVANE_WORK:
# a folder (default: build), in which "bench-import" is made and removed.
set -eu

cd "$(dirname -- "$0")/.."
here=$(pwd)
runs=${1:-3} seconds=${2:-20} megabytes=${3:-2000}
bin=${CORVANE_BIN:-$here/build/release/bin}
work=${CORVANE_WORK:-$here/build}/bench-import
export CORVANE_HOME="$work/home"

fail() {
  echo "import_bench.sh: $*" >&2
  exit 1
}
[ -x "$bin/corvane-author" ] || fail "no $bin/corvane-author: build the release preset first"
rm -rf "$work"
mkdir -p "$CORVANE_HOME"
trap 'rm -rf "$work"' EXIT
trap 'exit 130' INT TERM HUP

ff() { ffmpeg -nostdin -v error -y "$@"; }
now() { date +%s%N; }
# timed FILE COMMAND...: appends the milliseconds that a command takes.
timed() {
  to=$1
  shift
  begin=$(now)
  "$@" >"$work/output" 2>&1 </dev/null || { cat "$work/output" >&2; fail "a run failed"; }
  echo $((($(now) - begin) / 1000000)) >>"$to"
}
median() { sort -n "$1" | awk '{ all[NR] = $1 } END { print all[int((NR + 1) / 2)] / 1000 }'; }
# against NAME OURS THEIRS: the medians and their ratio.
against() {
  ours=$(median "$2") theirs=$(median "$3")
  echo "$1 $ours $theirs $(awk -v a="$ours" -v b="$theirs" 'BEGIN { printf "%.3f", a / b }')"
}
# import SOURCE OPTION...: into an empty folder.
import() {
  source=$1
  shift
  rm -rf "$work/to" "$work/new.cvp"
  "$bin/corvane-author" --import "$source" --to "$work/to" "$@" "$work/new.cvp"
}
rate_of() { ffprobe -v error -show_entries packet=size -of csv=p=0 "$1" | tr -d , | awk '{ sum += $1; n++ } END { printf "%d", sum * 8 * 30000 / 1001 / n / 1000 }'; }

encode() {
  ff -f lavfi -i "testsrc2=size=1280x720:rate=30000/1001:duration=$seconds,noise=alls=6:allf=t" \
    -f lavfi -i "anoisesrc=sample_rate=44100:duration=$seconds:amplitude=0.2" \
    -c:v libx264 -preset veryfast -pix_fmt yuv420p -c:a aac "$work/film.mp4"
  import "$work/film.mp4" --rate 5000 >/dev/null
  # The script of the import, as sh has it.
  tr -d '\r' <"$CORVANE_HOME/import.bat" | grep '/ffmpeg\.exe"' >"$work/by-hand.sh"
  [ "$(wc -l <"$work/by-hand.sh")" = 2 ] || fail "the script is not of two passes"
  for _ in $(seq "$runs"); do
    timed "$work/import.ms" import "$work/film.mp4" --rate 5000
    rm -rf "$work/to"
    mkdir "$work/to"
    timed "$work/hand.ms" sh -e "$work/by-hand.sh"
  done
  against encode "$work/import.ms" "$work/hand.ms"
}

copy_by_cat() { cat "$work/ready.mkv" >"$work/cat.mkv"; }
copy() {
  ff -f lavfi -i "testsrc2=size=720x480:rate=30000/1001:duration=20,noise=alls=20:allf=t" \
    -f lavfi -i "anoisesrc=sample_rate=48000:duration=20" -c:v mpeg2video -pix_fmt yuv420p -g 15 -bf 2 \
    -aspect 4:3 -b:v 7M -maxrate 8M -bufsize 1835008 -c:a ac3 -b:a 192k -ac 2 -f matroska "$work/short.mkv"
  times=$((megabytes * 1000000 / $(wc -c <"$work/short.mkv")))
  ff -stream_loop $times -i "$work/short.mkv" -c copy "$work/ready.mkv"
  for _ in $(seq "$runs"); do
    timed "$work/copied.ms" import "$work/ready.mkv"
    grep -q 'video: .* copied' "$work/output" || fail "the streams were not copied"
    rm -rf "$work/to"
    timed "$work/cat.ms" copy_by_cat
    rm "$work/cat.mkv"
  done
  rm "$work/ready.mkv"
  against copy "$work/copied.ms" "$work/cat.ms"
}

# decibels FILE: of its pictures against those of the source.
decibels() {
  ffmpeg -nostdin -v info -r 30000/1001 -i "$1" -r 30000/1001 -i "$work/source.mkv" \
    -lavfi "[0:v]format=yuv420p,settb=1/90000,setpts=N*3003[a];[1:v]settb=1/90000,setpts=N*3003[b];[a][b]psnr" \
    -f null - 2>&1 | sed -n 's/.*average:\([0-9.]*\).*/\1/p'
}
# psnr KIND RATE FILTER: at RATE kbit/s.
psnr() {
  ff -f lavfi -i "$3" -t 10 -vf 'setsar=8/9' -pix_fmt yuv420p -c:v ffv1 "$work/source.mkv"
  import "$work/source.mkv" --rate "$2" >/dev/null
  rate=$(rate_of "$work/to/source.m2v")
  # It misses its mean: a second time with what it missed.
  asked=$rate
  for _ in 1 2 3; do
    ff -i "$work/source.mkv" -target ntsc-dvd -b:v "${asked}k" -aspect 4:3 -an -f mpeg2video "$work/target.m2v"
    target=$(rate_of "$work/target.m2v")
    asked=$((asked * rate / target))
  done
  ours=$(decibels "$work/to/source.m2v") theirs=$(decibels "$work/target.m2v")
  [ -n "$ours" ] && [ -n "$theirs" ] || fail "the pictures of $1 cannot be compared"
  echo "psnr $1 $ours $theirs $rate $target"
}

size=size=720x480:rate=30000/1001
psnr drawing 3000 "testsrc2=$size"
psnr noise 6000 "testsrc2=$size,noise=alls=12:allf=t"
psnr zoom 4000 "mandelbrot=$size:end_pts=300"
psnr cells 5000 "life=size=360x240:rate=30000/1001:mold=20:life_color=#80ffc0:death_color=#c04030:mold_color=#203060,scale=720:480,boxblur=1"
psnr dark 2500 "testsrc2=$size,eq=brightness=-0.35,noise=alls=5:allf=t"
encode
copy
