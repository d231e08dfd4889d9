#!/bin/sh
# Measures, in a few minutes, and writes the table docs/benchmarks.md. Speed is never a test: what
# is compared is compared within one run on one machine, in turns.
#
#   scripts/bench.sh            writes docs/benchmarks.md
#   scripts/bench.sh --quick    fewer repetitions, prints the table only
set -eu

cd "$(dirname -- "$0")/.."
quick=no
[ "${1:-}" != --quick ] || quick=yes

./scripts/setup.sh --test
mkdir -p build
echo "Building"
cmake --preset bench >build/bench.configure.log 2>&1 || {
  cat build/bench.configure.log >&2
  exit 1
}
cmake --build build/bench >build/bench.build.log 2>&1 || {
  tail -n 50 build/bench.build.log >&2
  exit 1
}

bin=$(pwd)/build/bench/bin
work=$(pwd)/build/bench/work
rm -rf "$work"
mkdir -p "$work"
table=$work/benchmarks.md

row() { printf '| %s | %s | %s |\n' "$1" "$2" "$3" >>"$table"; }

cat >"$table" <<TEXT
# How fast it is

Written by \`./scripts/bench.sh\`: each line compares things measured in turns in one run, so the ratios hold
elsewhere and the milliseconds only on this machine: $(nproc) cores ($(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1)),
$(. /etc/os-release && echo "$PRETTY_NAME"), $(date -u +%Y-%m-%d). "At most" is what a change must not go beyond.

| What | At most | Measured |
|---|---|---|
TEXT

# The largest project: 99 titles of 8 audio streams and 99 chapters, 99 menus of 36 buttons.
project() {
  echo "The largest project"
  repetitions=9
  [ $quick = no ] || repetitions=3
  CORVANE_BENCH_FOLDER="$work/project" "$bin/project_bench" --benchmark_repetitions=$repetitions \
    --benchmark_report_aggregates_only=true --benchmark_min_time=0.2 \
    --benchmark_format=csv 2>/dev/null | tr -d '"' >"$work/project.csv"
  median() { awk -F, -v name="$1/$2/real_time_median" '$1 == name { printf "%.1f", $3 }' "$work/project.csv"; }
  for name in load save parse build_text; do
    whole=$(median $name 99)
    sizes="$(median $name 25) / $(median $name 50) / $whole ms"
    case $name in
      load) row "Load the largest project, every file looked up; a quarter / half / the whole" "50 ms, linear" "$sizes" ;;
      save) row "Save it, flushed to the disk; a quarter / half / the whole" "50 ms, linear" "$sizes" ;;
      parse) row "of loading: the text taken apart" "" "$sizes" ;;
      build_text) row "of saving: the text built" "" "$sizes" ;;
    esac
  done
  "$bin/project_bench" --write "$work/largest" >"$work/largest.txt"
  "$bin/project_bench" --peak "$work/largest" >>"$work/largest.txt"
  row "Memory while loading it (file of $(awk '/^bytes/ { printf "%.0f", $2 / 1000 }' "$work/largest.txt") kB)" "" \
    "$(awk '/^before/ { before = $2 } /^peak/ { printf "%.1f MB at most, %.1f MB before", $2 / 1024, before / 1024 }' "$work/largest.txt")"
}

# A display of its own without a window manager; the number is the first free one.
window() {
  echo "The window"
  [ -x "$bin/corvane" ] || {
    echo "bench.sh: no $bin/corvane" >&2
    exit 1
  }
  runs=15
  [ $quick = no ] || runs=5
  mkdir -p "$work/home"
  env HOME="$work/home" XDG_CONFIG_HOME="$work/home/config" XDG_DATA_HOME="$work/home/data" \
    CORVANE_HOME="$work/home/corvane" GDK_BACKEND=x11 NO_AT_BRIDGE=1 \
    xvfb-run -a -s '-screen 0 1280x1024x24 -nolisten tcp' \
    "$bin/first_paint" "$runs" "$bin/corvane" "$bin/empty_window" 2>/dev/null >"$work/window.txt"
  cells() { awk -v name="$1" -v by="$2" -v unit="$3" '$1 == name {
    printf "%.2f (%.0f against %.0f %s)", $4, $2 / by, $3 / by, unit }' "$work/window.txt"; }
  row "Start of the window to its first paint, against an empty wxWidgets window" "1.3" "$(cells first-paint-ms 1 ms)"
  row "The same, the fastest start of each" "" "$(cells first-paint-fastest-ms 1 ms)"
  row "Resident memory a second later, against the same" "1.3" "$(cells resident-kB 1024 MB)"
  row "The same, shared pages counted by their share" "" "$(cells proportional-kB 1024 MB)"
}

# A button of the menu editor, one of 36, dragged over the picture of the sample's menu.
editor() {
  echo "The menu editor"
  ./tests/ui/run_under_xvfb.sh "$bin/menu_editor_bench" samples/media/main-menu.m2v \
    2>/dev/null >"$work/editor.txt"
  told() { awk -v name="$1" -v unit="$2" '$1 == name { printf unit, $2 }' "$work/editor.txt"; }
  row "Dragging a button in the menu editor: redraws a second (a toolkit's clock without a screen ticks 60 times)" \
    "at least 60" "$(told redraws_per_second %.0f)"
  row "The longest pause between two of them" "" "$(told longest_pause_ms '%.0f ms')"
  CORVANE_TEST_SCREEN=2000x1300x24 ./tests/ui/run_under_xvfb.sh "$bin/menu_editor_bench" \
    samples/media/main-menu.m2v 2 2>/dev/null >"$work/editor.txt"
  row "The same with the picture twice as large; the longest pause" "at least 60" \
    "$(told redraws_per_second %.0f); $(told longest_pause_ms '%.0f ms')"
}

# A tool that prints as fast as it can, through the runner and into cat.
runner() {
  echo "The runner"
  "$bin/runner_bench" >"$work/runner.txt"
  told() { awk -v name="$1" '$1 == name { print $2 }' "$work/runner.txt"; }
  row "A tool that prints as fast as it can for 5 s: through the runner / into \`cat >/dev/null\`" "" \
    "$(told runner_megabytes_per_second) / $(told cat_megabytes_per_second) MB/s: $(told ratio)"
  row "The runner's longest pass meanwhile; of that, processor time" "5 ms" \
    "$(told longest_pass_ms) ms; $(told longest_pass_cpu_ms) ms"
  row "Its peak memory, for a log of $(told log_megabytes) MB" "" "$(told peak_memory_mb) MB"
}

# The sample by corvane-author against the same commands by hand.
sample() {
  echo "The sample"
  runs=9
  [ $quick = no ] || runs=3
  CORVANE_BIN="$bin" ./bench/authoring_bench.sh $runs >"$work/sample.txt" ||
    grep -q 'less one polling' "$work/sample.txt"
  seconds() { sed -n "s/^ *$1 *\([0-9.]*\) s\$/\1/p" "$work/sample.txt"; }
  row "The sample by corvane-author / by the same commands from sh" "1.02 and 0.1 s" \
    "$(seconds corvane-author) / $(seconds 'by hand from sh') s: $(sed -n 's/^ *ratio *//p' "$work/sample.txt"); less the 0.1 s $(
      sed -n 's/^ *less one polling interval of 0.1 s: \([0-9.]*\).*/\1/p' "$work/sample.txt")"
}

# Films by corvane-author --import against ffmpeg's commands by hand, cat, and ffmpeg's own settings.
imports() {
  echo "Imports"
  runs=5 seconds=40
  [ $quick = no ] || runs=3 seconds=15
  CORVANE_BIN="$bin" CORVANE_WORK="$work" ./bench/import_bench.sh $runs $seconds 2000 >"$work/import.txt"
  for name in encode copy psnr; do
    grep -q "^$name " "$work/import.txt" || {
      echo "bench.sh: import_bench.sh says nothing of \"$name\"" >&2
      exit 1
    }
  done
  told() { awk -v name="$1" '$1 == name { printf "%s / %s s: %s", $2, $3, $4 }' "$work/import.txt"; }
  row "Import of a film of $seconds s in two passes / the same ffmpeg commands from sh" "1.03" "$(told encode)"
  row "Import of 2 GB that a disc takes as it is / \`cat\` of it into another file" "2" "$(told copy)"
  row "Pictures of an import, in two passes / of \`ffmpeg -target ntsc-dvd\` at the same mean rate: $(
    awk '$1 == "psnr" { printf "%s%s of %s kb/s", before, $2, $5; before = ", " }' "$work/import.txt")" "not lower" "$(
    awk '$1 == "psnr" { printf "%s%.1f / %.1f", before, $3, $4; before = ", " } END { print " dB" }' "$work/import.txt")"
}

# A stream of 2 GB, the sample's again and again; gone when it is measured.
video() {
  echo "The index and the examination of a video file"
  runs=5
  [ $quick = no ] || runs=3
  ./samples/make.sh >/dev/null
  stream=$work/video.m2v
  cp samples/media/garden.m2v "$stream"
  while [ "$(wc -c <"$stream")" -lt 1000000000 ]; do
    cat "$stream" "$stream" >"$stream.more"
    mv "$stream.more" "$stream"
  done
  head -c $((2000000000 - $(wc -c <"$stream"))) "$stream" >"$stream.more"
  cat "$stream.more" >>"$stream"
  rm "$stream.more"
  "$bin/media_bench" "$stream" $runs >"$work/video.txt"
  "$bin/examine_bench" video "$stream" $runs >"$work/examine.txt"
  rm "$stream"
  told() { awk -v name="$1" '$1 == name { print $2 }' "$work/examine.txt"; }
  row "Examination of a 2 GB video stream ($(told pictures) pictures) / \`cat >/dev/null\` of it, both from memory" "2.5" \
    "$(told ratio) ($(told scan_s) / $(told cat_s) s)"
  told() { awk -v name="$1" '$1 == name { print $2 }' "$work/video.txt"; }
  row "Index of a 2 GB video stream ($(told pictures) pictures) / \`cat >/dev/null\` of it, both from memory" "3" \
    "$(told ratio) ($(told scan_s) / $(told cat_s) s)"
  row "Its longest slice of 10 ms; the memory that it keeps" "" "$(told longest_slice_ms) ms; $(told index_mb) MB"
  row "After it, any picture: pictures decoded at most / in the longest group" "one group" \
    "$(told most_decoded) / $(told longest_group)"
  row "Time for it: middle / slowest / a whole group, picture by picture" "" \
    "$(told picture_ms) / $(told slowest_picture_ms) / $(told group_ms) ms"
}

# Streams of 2 GB, some seconds of noise again and again.
audio() {
  echo "The examination of audio files"
  runs=5
  [ $quick = no ] || runs=3
  for kind in ac3 mp2; do
    stream=$work/sound.$kind
    ffmpeg -nostdin -v error -y -f lavfi -i anoisesrc=duration=40:sample_rate=48000 -ac 2 \
      -c:a $kind -b:a 192k "$stream"
    while [ "$(wc -c <"$stream")" -lt 1900000000 ]; do
      cat "$stream" "$stream" >"$stream.more"
      mv "$stream.more" "$stream"
    done
    "$bin/examine_bench" audio "$stream" $runs >"$work/audio.txt"
    rm "$stream"
    told() { awk -v name="$1" '$1 == name { print $2 }' "$work/audio.txt"; }
    case $kind in
      ac3) what="AC-3, checksums included" ;;
      mp2) what="MPEG audio" ;;
    esac
    row "Examination of 2 GB of $what / \`cat >/dev/null\` of it, both from memory" "1.5" \
      "$(told ratio) ($(told scan_s) / $(told cat_s) s)"
  done
}

# Some seconds of a video and of noise, as the files of the largest project.
headers() {
  echo "The header rules"
  runs=15
  [ $quick = no ] || runs=5
  ./samples/make.sh >/dev/null
  mkdir -p "$work/headers"
  head -c 400000 samples/media/garden.m2v >"$work/headers/video.m2v"
  ffmpeg -nostdin -v error -y -f lavfi -i anoisesrc=duration=16:sample_rate=48000 -ac 2 \
    -c:a ac3 -b:a 192k "$work/headers/sound.ac3"
  "$bin/examine_bench" headers "$work/headers" $runs >"$work/headers.txt"
  rm -r "$work/headers"
  told() { awk -v name="$1" '$1 == name { print $2 }' "$work/headers.txt"; }
  row "Header rules of a project of 99 titles with 8 audio streams each ($(told files) files from memory); once they are known" \
    "50 ms" "$(told titles_ms); $(told again_ms) ms"
  row "The same, with 99 menus of 36 buttons" "" "$(told with_menus_ms); $(told with_menus_again_ms) ms"
}

# A program stream of 2 GB, the sample's again and again.
program() {
  echo "The examination of program streams"
  runs=5
  [ $quick = no ] || runs=3
  ./samples/make.sh >/dev/null
  stream=$work/program.vob
  cp samples/media/tour.vob "$stream"
  while [ "$(wc -c <"$stream")" -lt 1900000000 ]; do
    cat "$stream" "$stream" >"$stream.more"
    mv "$stream.more" "$stream"
  done
  "$bin/examine_bench" program "$stream" $runs >"$work/program.txt"
  "$bin/examine_bench" program-counted "$stream" $runs >"$work/counted.txt"
  rm "$stream"
  told() { awk -v name="$1" '$1 == name { print $2 }' "$work/counted.txt"; }
  row "Examination of a 2 GB program stream ($(told packs) packs), packets and times alone / \`cat >/dev/null\` of it, both from memory" \
    "1.5" "$(told ratio) ($(told scan_s) / $(told cat_s) s)"
  told() { awk -v name="$1" '$1 == name { print $2 }' "$work/program.txt"; }
  row "The same, with the facts of its video and sound" "1.5" "$(told ratio) ($(told scan_s) s)"
}

# A disc of four titles of 1 GB, and its image.
disc() {
  echo "The look at a finished disc"
  runs=3 seconds=850
  [ $quick = no ] || seconds=60
  ffmpeg -nostdin -v error -y -f lavfi -i testsrc2=s=720x480:r=30000/1001 -t $seconds -c:v mpeg2video \
    -pix_fmt yuv420p -b:v 8500k -minrate 8500k -maxrate 8500k -bufsize 1835k -g 15 -flags +cgop \
    -sc_threshold 1000000000 -aspect 4:3 -f mpeg2video "$work/long.m2v"
  ffmpeg -nostdin -v error -y -f lavfi -i sine=d=$seconds:r=48000 -ac 2 -b:a 192k "$work/long.ac3"
  # Four files, as far as anybody can tell, so that each of them is examined.
  for number in 2 3 4; do ln "$work/long.m2v" "$work/long$number.m2v"; done
  stored() { printf '%s' "$1" | tr / '\\'; }
  four() { for _ in 1 2 3 4; do printf '%s\r\n' "$1"; done; }
  {
    head -n 1 samples/media/sample.cvp
    for number in '' 2 3 4; do
      printf '%s/%s\r\n' "$(stored "$work/long$number.m2v")" "$(stored "$work/long.ac3")"
    done
    printf '***\r\n'; four 00:00:00.00; printf '***\r\n'; four 0
    printf '***\r\n%.0s' 1 2 3 4 5 6
    four '<none>'; printf '***\r\n'; four ''; printf '***\r\n'
    printf '<default>\r\nNTSC\r\nTrue\r\nFalse\r\n'
  } >"$work/long.cvp"
  CORVANE_HOME=$work/home "$bin/corvane-author" --replace "$work/long.cvp" "$work/long" >"$work/long.txt" 2>&1 ||
    { cat "$work/long.txt" >&2; return 1; }
  "$bin/examine_bench" disc "$work/long" $runs >"$work/disc.txt"
  rm -r "$work/long" "$work/long.iso"
  # The tools' hours are minutes here: no second run would tell more.
  CORVANE_BIN="$bin" ./bench/authoring_bench.sh 1 "$work/long.cvp" >"$work/whole.txt"
  rm "$work"/long*.m2v
  told() { awk -v name="$1" '$1 == name { print $2 }' "$work/disc.txt"; }
  row "Verification of a disc of 4 GB with its image ($(told bytes) bytes in all) / \`cat >/dev/null\` of both, from memory" \
    "1.5" "$(told ratio) ($(told scan_s) / $(told cat_s) s)"
  seconds() { sed -n "s/^ *$1 *\([0-9.]*\) s\$/\1/p" "$work/whole.txt"; }
  row "The whole run of it, with the material examined and the disc verified / the same commands from sh" "1.2" \
    "$(sed -n 's/^ *ratio *//p' "$work/whole.txt") ($(seconds corvane-author) / $(seconds 'by hand from sh') s)"
}

sample
imports
runner
project
video
audio
headers
program
disc
window
editor

cat "$table"
if [ $quick = no ]; then
  mkdir -p docs
  cp "$table" docs/benchmarks.md
  echo "Written: docs/benchmarks.md"
fi
