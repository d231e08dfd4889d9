#!/bin/sh
# Feeds the fuzz targets with made-up input; fails at the first crash, leak, hang or undefined
# behaviour, leaving the input that did it in build/fuzz/findings.
#
#   scripts/fuzz.sh [NAME...]     builds and runs these targets (audio, design, disc, font, program_stream,
#                                 project_file, script, source, subtitle, video_facts, video_index, xml;
#                                 default all)
#   scripts/fuzz.sh --run NAME    runs one that is built
#
# Each runs for $CORVANE_FUZZ_SECONDS (30). What it learns stays in build/fuzz/working/NAME, so that
# every run goes on where the last one stopped; seeds are in tests/fuzz/corpus/NAME.
set -eu

cd "$(dirname -- "$0")/.."
seconds=${CORVANE_FUZZ_SECONDS:-30}

run() {
  name=$1
  seeds=tests/fuzz/corpus/$name
  working=build/fuzz/working/$name
  mkdir -p "$working" build/fuzz/findings "$seeds"
  echo "fuzz_$name: $seconds seconds"
  if ! "build/fuzz/bin/fuzz_$name" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 \
    -max_len=65536 -print_final_stats=1 -artifact_prefix="build/fuzz/findings/$name-" \
    "$working" "$seeds" >"build/fuzz/$name.log" 2>&1 </dev/null; then
    tail -n 60 "build/fuzz/$name.log"
    echo "fuzz_$name failed: the input is in build/fuzz/findings" >&2
    exit 1
  fi
  grep -E 'stat::number_of_executed_units|stat::new_units_added' "build/fuzz/$name.log" || true
  # A target that ran nothing has shown nothing.
  grep -Eq '^stat::number_of_executed_units: +[1-9]' "build/fuzz/$name.log" || {
    echo "fuzz_$name executed no input" >&2
    exit 1
  }
}

if [ "${1:-}" = --run ]; then
  run "$2"
  exit 0
fi

[ $# -gt 0 ] || set -- audio design disc font program_stream project_file script source subtitle video_facts video_index xml
./scripts/setup.sh --all
cmake --preset fuzz >/dev/null
for name; do
  cmake --build build/fuzz --target "fuzz_$name"
  run "$name"
done
