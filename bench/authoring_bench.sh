#!/bin/sh
# How much longer the sample, or another project, takes through corvane-author than the same tool
# commands run by hand from sh. Both author into an empty folder with the tools' output going to a
# file; they take turns, and the medians are compared.
#
#   bench/authoring_bench.sh [RUNS [PROJECT]]      (default 7; PROJECT: a full path, NTSC, with an image)
#
# Prints seconds, ratio, and the ratio that remains when one polling interval (0.1 s), by which the
# end of a run may be noticed later, is taken off. Of the sample that must not be above 1.02, or this
# fails.
set -eu

cd "$(dirname -- "$0")/.."
here=$(pwd)
runs=${1:-7}
bin=${CORVANE_BIN:-$here/build/release/bin}
project=${2:-$here/samples/media/sample.cvp}
limit=1.02
[ $# -lt 2 ] || limit=100
work=$here/build/bench-authoring
export CORVANE_HOME="$work/home"

fail() {
  echo "authoring_bench.sh: $*" >&2
  exit 1
}
case $here in
  *[\$\`\"\\]*) fail "the folder's name has characters that sh would expand: $here" ;;
esac
[ -x "$bin/corvane-author" ] || fail "no $bin/corvane-author: build the release preset first"
./samples/make.sh >/dev/null
rm -rf "$work"
mkdir -p "$work/home"
trap 'rm -rf "$work/disc" "$work/disc.iso"' EXIT

"$bin/corvane-author" --prepare "$project" "$work/disc" >"$work/prepared" 2>&1 || {
  cat "$work/prepared" >&2
  fail "the run could not be prepared"
}

# The work script as sh has it: the tools' lines are the same, only the built-ins are other words.
tr -d '\r' <"$CORVANE_HOME/process.bat" | sed \
  -e '/^@echo off$/d' \
  -e "/^echo/s/'/'\\\\''/g" -e "s/^echo \(.*\)/echo '\1'/" \
  -e 's/^mkdir /mkdir -p /' -e "s/ #010101 / '#010101' /" \
  -e 's|^rename "\(.*\)/\([^/]*\)" \(.*\)$|mv "\1/\2" "\1/\3"|' \
  -e 's|^erase "\(.*\)/\*\.mpg"|rm "\1"/*.mpg|' -e 's/^erase /rm /' >"$work/by-hand.sh"
grep -q dvdauthor "$work/by-hand.sh" || fail "the work script has no tool in it"
export VIDEO_FORMAT=NTSC

now() { date +%s%N; }
# timed FILE COMMAND...: appends the milliseconds that a command takes.
timed() {
  to=$1
  shift
  rm -rf "$work/disc" "$work/disc.iso"
  begin=$(now)
  "$@" >"$work/output" 2>&1 </dev/null || { cat "$work/output" >&2; fail "a run failed"; }
  echo $((($(now) - begin) / 1000000)) >>"$to"
  [ -f "$work/disc/VIDEO_TS/VTS_01_1.VOB" ] && [ -f "$work/disc.iso" ] || fail "a run made no disc"
}
median() { sort -n "$1" | sed -n "$(((runs + 1) / 2))p"; }

sh "$work/by-hand.sh" >/dev/null 2>&1 </dev/null || true # warms the disk cache
i=0
while [ "$i" -lt "$runs" ]; do
  timed "$work/hand" sh -e "$work/by-hand.sh"
  timed "$work/ours" "$bin/corvane-author" "$project" "$work/disc"
  i=$((i + 1))
done

awk -v ours="$(median "$work/ours")" -v hand="$(median "$work/hand")" -v runs="$runs" \
  -v name="$(basename -- "$project")" -v limit=$limit 'BEGIN {
  without = (ours - 100) / hand
  printf "%s, median of %d runs\n", name, runs
  printf "  by hand from sh   %.3f s\n  corvane-author    %.3f s\n", hand / 1000, ours / 1000
  printf "  ratio             %.3f\n", ours / hand
  printf "  less one polling interval of 0.1 s: %.3f (limit %s)\n", without, limit
  exit without > limit
}'
