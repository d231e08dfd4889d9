#!/bin/sh
# Builds the program and starts its window: scripts/run.sh [PROJECT.cvp]
set -eu

here=$(CDPATH= cd -- "$(dirname -- "$0")/.." && pwd)

# From where the user stands: the project may be named by a relative path.
(
  cd "$here"
  [ -f build/release/CMakeCache.txt ] || cmake --preset release
  cmake --build build/release --target corvane conspawn
) >&2

if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  echo "run.sh: no display: set DISPLAY or start this from a desktop" >&2
  exit 1
fi
exec "$here/build/release/bin/corvane" "$@"
