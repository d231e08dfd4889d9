#!/bin/bash
# Layout (clang-format) and lint (clang-tidy) of all C++ of ours.
#
#   scripts/lint.sh              both
#   scripts/lint.sh --format     only the layout; "clang-format -i FILE" repairs
#   scripts/lint.sh --tidy       only clang-tidy, on what is compiled on Linux of the programs and of the
#                                tests' disc reader
#   scripts/lint.sh --tidy FILE...    on these, tests too
#
# Tests are not looked at as a rule: every check walks all of GoogleTest's headers in every file, which
# takes as long as all the rest together, and most of what it would find there shows when they run.
#
# clang-tidy looks at units of several files (a unity build, configured and never built): most of its
# time goes into headers, which a unit has once.
#
# What clang-tidy has passed is remembered in build/lint by the content of a unit's files and of all
# headers of ours that they include, so that a second run looks at changed units only.  What a file
# includes is what the compiler said when it last built the tree "debug", as scripts/test.sh does
# before; a unit with a file that was not built is looked at every time.
set -eu -o pipefail
cd "$(dirname -- "$0")/.."

# Files under version control and new ones, not what is deleted or ignored.
our_files() {
  git ls-files --cached --others --exclude-standard -- "$@" | sort -u | while read -r file; do
    [ ! -f "$file" ] || printf '%s\n' "$file"
  done
}

check_format() {
  our_files '*.cpp' '*.h' | xargs -r -d '\n' clang-format --dry-run -Werror
  # An include by a relative path would climb over the walls between the rooms.
  if our_files 'src/*.cpp' 'src/*.h' | xargs -r -d '\n' grep -nE '^ *#include "\.\.?/' /dev/null; then
    echo "lint.sh: includes of ours begin with the room's name" >&2
    return 1
  fi
  echo "layout: $(our_files '*.cpp' '*.h' | wc -l) files"
}

# Prints "FILE KEY..." for every source: the hashes of it and of what it includes of ours, directly
# or not; a file that was not built has no key.
closures() {
  {
    our_files 'src/*.cpp' 'src/*.h' 'tests/*.cpp' 'tests/*.h' | xargs -d '\n' sha256sum
    [ ! -f build/debug/build.ninja ] || ninja -C build/debug -t deps
  } | awk -v here="$PWD/" '
    length($1) == 64 { hashes[substr($0, 67)] = $1; next }
    /^[^ ].*: #deps / { source = ""; next }
    /^    / {
      file = substr($0, 5)
      if (index(file, here) == 1) file = substr(file, length(here) + 1)
      sub(/^(\.\.\/)+/, "", file)
      sub(/^(build\/debug\/)?rooms\/[a-z]+\//, "src/", file)
      if (!(file in hashes)) next
      if (source == "") { source = file; known[source] = "" }
      known[source] = known[source] " " hashes[file]
    }
    END { for (file in hashes) if (file ~ /\.cpp$/) print file known[file] }' | sort
}

# Passed once means passed until it changes; called by xargs below.
tidy_one() {
  unit=$1 stamp=$2
  if ! output=$(clang-tidy --quiet -p build/lint/tree "$unit" 2>&1); then
    printf '%s\n' "$output" | grep -v -E '^[0-9]+ warnings (generated|treated as errors)' >&2
    echo "clang-tidy: $(files_of "$unit" | tr '\n' ' ')" >&2
    return 1
  fi
  [ "$stamp" = none ] || : >"$stamp"
}

# The files of a unit, one a line; one that is no unit is its own.
files_of() {
  case $1 in
    */Unity/unity_*) sed -n "s|^#include \"$PWD/\(.*\)\"\$|\1|p" "$1" ;;
    *) printf '%s\n' "${1#"$PWD"/}" ;;
  esac
}
export -f tidy_one files_of

check_tidy() {
  mkdir -p build/lint/passed
  # A tree of its own: clang cannot read the precompiled headers of g++.
  cmake --preset lint >build/lint/configure.log 2>&1 </dev/null || {
    cat build/lint/configure.log >&2
    return 1
  }
  local rules todo=() compiled unit files file keys key stamp wanted total=0
  local -A key_of=()
  rules=$({ clang-tidy --version; cat .clang-tidy tests/.clang-tidy CMakePresets.json; } | sha256sum)
  while read -r file key; do
    key_of[$file]=$key
  done < <(closures)
  compiled=$(sed -n 's/^ *"file": "\(.*\)",\{0,1\}$/\1/p' build/lint/tree/compile_commands.json)
  while read -r unit; do
    mapfile -t files < <(files_of "$unit")
    keys='' wanted=no stamp=
    for file in "${files[@]}"; do
      case $#,$file in
        0,src/* | 0,tests/disc/reader/*) wanted=yes ;;
        *) [[ " $* " != *" $file "* ]] || wanted=yes ;;
      esac
      key=${key_of[$file]:-}
      [ -n "$key" ] || stamp=none
      keys+=" $file $key"
    done
    [ "$wanted" = yes ] || continue
    total=$((total + ${#files[@]}))
    [ -n "$stamp" ] || stamp=build/lint/passed/$(printf '%s' "$rules$keys" | sha256sum | cut -c1-40)
    [ -e "$stamp" ] || todo+=("$unit" "$stamp")
  done <<<"$compiled"
  [ "$total" -gt 0 ] || {
    echo "clang-tidy: no file to look at" >&2
    return 1
  }
  echo "clang-tidy: $total files, $((${#todo[@]} / 2)) units of them changed"
  [ ${#todo[@]} = 0 ] ||
    printf '%s\0' "${todo[@]}" | xargs -0 -n 2 -P "${CORVANE_JOBS:-$(nproc)}" bash -c 'tidy_one "$@"' tidy_one
}

case "${1:-}" in
  --format) check_format ;;
  --tidy)
    shift
    check_tidy "$@"
    ;;
  '')
    check_format
    check_tidy
    ;;
  *)
    echo "usage: lint.sh [--format | --tidy [FILE...]]" >&2
    exit 2
    ;;
esac
