#!/bin/sh
# Asks the players that are installed (MPlayer, HandBrake) what is on a disc, and holds their answers
# against what corvane-author reads there: titles, and of each its chapters, the formats of its
# sounds and its subtitle streams; with MPlayer the languages too. Fails when one of them says
# something else, or when none is installed.
#
#   scripts/players.sh [DISC]     (a folder or an image; default: the samples, which
#                                  scripts/author-sample.sh makes)
set -eu

here=$(cd "$(dirname -- "$0")/.." && pwd)
author=$here/build/debug/bin/corvane-author
answers=$(mktemp -d)
trap 'rm -rf "$answers"' EXIT

# What corvane-author reads, a line a title: "title 1: 4 chapters; ac3 en, mpeg de; de fr".
ours() {
  "$author" --verify "$1" | awk '
    function tell() {
      if (title) printf "title %s: %s chapters;%s;%s\n", title, chapters, sounds, subtitles
    }
    /^[a-z]/ { tell(); title = "" }
    /^title [0-9]+$/ { title = $2; chapters = sounds = subtitles = "" }
    $1 == "chapters" { chapters = $2 }
    $1 == "audio" && $3 == "format" { format = $4 == "AC-3" ? "ac3" : "mpeg"; sounds = sounds " " format }
    $1 == "audio" && $3 == "language" { sounds = sounds " " $4 }
    $1 == "subtitle" && $3 == "language" { subtitles = subtitles " " $4 }
    END { tell() }'
}

mplayer_says() {
  disc=$1
  asked() {
    mplayer -noconfig all -really-quiet -identify -frames 0 -vo null -ao null \
      -dvd-device "$disc" "dvd://$1" 2>/dev/null </dev/null | sed -n '1,/^ID_FILENAME=/p'
  }
  titles=$(asked 1 | sed -n 's/^ID_DVD_TITLES=//p')
  number=0
  while [ $((number += 1)) -le "${titles:-0}" ]; do
    asked $number | awk -F'[_=]' -v title=$number '
      $1 == "ID" && $3 == "TITLE" && $4 == title && $5 == "CHAPTERS" { chapters = $6 }
      $2 == "AID" && $4 == "LANG" { sounds = sounds ($3 >= 128 ? " ac3 " : " mpeg ") $5 }
      $2 == "SID" && $4 == "LANG" { subtitles = subtitles " " $5 }
      END { printf "title %s: %s chapters;%s;%s\n", title, chapters, sounds, subtitles }'
  done
}

# Without languages, and only how many subtitle streams: it names them in words.
without_languages() {
  awk -F';' '{
    count = split($3, subtitles, " ")
    gsub(/ [a-z][a-z]( |$)/, " ", $2)
    gsub(/ +/, " ", $2)
    sub(/ $/, "", $2)
    printf "%s;%s; %s\n", $1, $2, count
  }'
}
handbrake_says() {
  HandBrakeCLI --scan -t 0 -i "$1" 2>&1 </dev/null | awk '
    function tell() {
      if (title) printf "title %s: %s chapters;%s; %s\n", title, counts["chapters"] + 0, sounds, counts["subtitle"] + 0
    }
    /^\+ title/ { tell(); title = $3 + 0; sounds = ""; split("", counts) }
    /^  \+/ { part = $2; sub(/:$/, "", part) }
    /^    \+ / { ++counts[part] }
    /^    \+ / && part == "audio" { sounds = sounds (/\(AC3\)/ ? " ac3" : " mpeg") }
    END { tell() }'
}

asked=no status=0
compare() {
  asked=yes
  if diff "$answers/ours" "$answers/theirs" >"$answers/differences"; then
    echo "  $1 says the same"
  else
    echo "  $1 says something else (<: corvane-author, >: $1):"
    sed 's/^/    /' "$answers/differences"
    status=1
  fi
}

ask_of() {
  echo "$1"
  ours "$1" >"$answers/all"
  [ -s "$answers/all" ] || {
    echo "players.sh: no title can be read there" >&2
    exit 2
  }
  sed 's/^/  /' "$answers/all"
  if command -v mplayer >/dev/null; then
    cp "$answers/all" "$answers/ours"
    mplayer_says "$1" >"$answers/theirs"
    compare MPlayer
  fi
  if command -v HandBrakeCLI >/dev/null; then
    without_languages <"$answers/all" >"$answers/ours"
    handbrake_says "$1" >"$answers/theirs"
    compare HandBrake
  fi
}

if [ $# -gt 0 ]; then
  ask_of "$1"
else
  for sample in sample sample-pal; do
    "$here/scripts/author-sample.sh" "$here/samples/media/$sample.cvp" >"$answers/log" 2>&1 || {
      cat "$answers/log" >&2
      exit 2
    }
    ask_of "$here/build/sample/$sample"
    ask_of "$here/build/sample/$sample.iso"
  done
fi
[ $asked = yes ] || {
  echo "players.sh: neither mplayer nor HandBrakeCLI is installed" >&2
  exit 2
}
exit $status
