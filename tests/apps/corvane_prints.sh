#!/bin/sh
# corvane --help and --version print and end, without a display.
# usage: corvane_prints.sh CORVANE
set -eu
program=$1
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
unset DISPLAY WAYLAND_DISPLAY

fail() {
  echo "corvane_prints.sh: $*" >&2
  exit 1
}

printed() {
  HOME=$work timeout 20 "$program" "$@" >"$work/out" 2>"$work/err" </dev/null ||
    fail "$* ended with status $?: $(cat "$work/err")"
  [ ! -s "$work/err" ] || fail "$* complained: $(cat "$work/err")"
}

printed --help
grep -q '^Usage: corvane \[PROJECT.cvp\]$' "$work/out" || fail "no usage in the help"
printed film.cvp --version
[ "$(cat "$work/out")" = 'corvane (Corvane 0.997 - 1/2/2005)' ] || fail "another version"
! HOME=$work "$program" --help >/dev/full 2>/dev/null || fail "a full disk was not noticed"
[ ! -e "$work/.local" ] || fail "a program folder was made"
