#!/bin/bash
# Layout (clang-format) and lint (clang-tidy) of all C++ of ours.
#
#   scripts/lint.sh              both
#   scripts/lint.sh --format     only the layout; "clang-format -i FILE" repairs
#   scripts/lint.sh --tidy       only clang-tidy, on every file that is compiled on Linux
#   scripts/lint.sh --tidy FILE...
#
# What clang-tidy has passed is remembered in build/lint by the content of a file and of all headers
# of ours that it includes, so that a second run looks at changed files only.
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
  echo "layout: $(our_files '*.cpp' '*.h' | wc -l) files"
}

# Prints "FILE KEY..." for every source: the hashes of it and of what it includes of ours, directly
# or not. Headers are found as the compiler finds them: from src/ or tests/, or beside the file.
closures() {
  our_files 'src/*.cpp' 'src/*.h' 'tests/*.cpp' 'tests/*.h' | xargs -d '\n' sha256sum |
    awk '
      { hash = $1; file = substr($0, 67); hashes[file] = hash; order[++count] = file }
      function folder(path) { sub(/[^\/]*$/, "", path); return path }
      function visit(file, line, name, place) {
        if (file in seen) return
        seen[file] = 1
        text = text " " hashes[file]
        for (place = 1; place <= included[file]; place++) visit(includes[file, place])
      }
      END {
        for (i = 1; i <= count; i++) {
          file = order[i]
          while ((getline line < file) > 0)
            if (match(line, /^ *#include "[^"]+"/)) {
              name = line; sub(/^ *#include "/, "", name); sub(/".*/, "", name)
              split("src/ tests/ " folder(file), places, " ")
              for (p in places)
                if ((places[p] name) in hashes) includes[file, ++included[file]] = places[p] name
            }
          close(file)
        }
        for (i = 1; i <= count; i++)
          if (order[i] ~ /\.cpp$/) { split("", seen); text = ""; visit(order[i]); print order[i] text }
      }'
}

# Passed once means passed until it changes; called by xargs below.
tidy_one() {
  file=$1 stamp=$2
  if ! output=$(clang-tidy --quiet -p build/lint/tree "$file" 2>&1); then
    printf '%s\n' "$output" | grep -v -E '^[0-9]+ warnings (generated|treated as errors)' >&2
    echo "clang-tidy: $file" >&2
    return 1
  fi
  : >"$stamp"
}
export -f tidy_one

check_tidy() {
  mkdir -p build/lint/passed
  # A tree of its own: clang cannot read the precompiled headers of g++.
  cmake --preset lint >build/lint/configure.log 2>&1 </dev/null || {
    cat build/lint/configure.log >&2
    return 1
  }
  local rules todo=() compiled file key stamp total=0
  rules=$({ clang-tidy --version; cat .clang-tidy tests/.clang-tidy CMakePresets.json; } | sha256sum)
  compiled=$(sed -n 's/^ *"file": "\(.*\)",\{0,1\}$/\1/p' build/lint/tree/compile_commands.json)
  while read -r file key; do
    [ $# = 0 ] || [[ " $* " == *" $file "* ]] || continue
    grep -qxF "$PWD/$file" <<<"$compiled" || continue
    total=$((total + 1))
    stamp=build/lint/passed/$(printf '%s' "$rules $file $key" | sha256sum | cut -c1-40)
    [ -e "$stamp" ] || todo+=("$file" "$stamp")
  done < <(closures)
  [ "$total" -gt 0 ] || {
    echo "clang-tidy: no file to look at" >&2
    return 1
  }
  echo "clang-tidy: $total files, $((${#todo[@]} / 2)) of them changed"
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
