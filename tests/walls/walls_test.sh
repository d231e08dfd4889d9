#!/bin/sh
# Whether a room can include a header of its own, and none of the rooms above it:
#   walls_test.sh COMPILER FLAGS-FILE OWN-HEADER [HEADER-ABOVE...]
set -eu

compiler=$1 flags=$2 own=$3
shift 3
# A header beside the source would be found without a flag.
empty=$(mktemp -d)
trap 'rm -rf "$empty"' EXIT
cd "$empty"

includes() {
  printf '#include "%s"\n' "$1" | LC_ALL=C "$compiler" -x c++ "@$flags" -fsyntax-only - >errors 2>&1
}

includes "$own" || {
  cat errors
  echo "$own does not compile in its own room: this test shows nothing."
  exit 1
}
for header; do
  if includes "$header"; then
    echo "$own stands below $header, and what includes both compiles."
    exit 1
  fi
  # For this reason and no other.
  grep -q "fatal error: .*$header.*\(No such file\|not found\)" errors || {
    cat errors
    exit 1
  }
done
