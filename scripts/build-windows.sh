#!/bin/sh
# From a fresh clone to the Windows program: installs what is missing, cross-builds the libraries and
# the outside tools (once, into the cache of packaging/windows/recipes.sh), then corvane.exe,
# corvane-author.exe and conspawn.exe, puts them together in build/windows/bundle, packs that into
# build/windows/packages, and runs the Windows tests under Wine.
#
#   scripts/build-windows.sh [--without-tests | --libraries]
#
# --libraries: only the libraries and the outside tools.
# $CORVANE_JOBS: programs run at once (default: the number of processors)
set -eu

cd "$(dirname -- "$0")/.."
jobs=${CORVANE_JOBS:-$(nproc)}
tests=yes
case "${1:-}" in
  '') ;;
  --without-tests | --libraries) tests=no ;;
  *)
    echo "usage: build-windows.sh [--without-tests | --libraries]" >&2
    exit 2
    ;;
esac

fail() {
  echo "build-windows.sh: $*" >&2
  exit 1
}

./scripts/setup.sh --windows

./packaging/windows/recipes.sh wx ffmpeg
if [ "${1:-}" = --libraries ]; then
  # Names of recipes, one word each.
  # shellcheck disable=SC2046
  exec ./packaging/windows/recipes.sh $(awk '!/^#/ && NF == 2 { print $2 }' packaging/windows/tools.txt)
fi
mkdir -p build
if ! cmake --preset windows -DCORVANE_UI=ON \
  -DCORVANE_WX="$(./packaging/windows/recipes.sh --where wx)" \
  -DCORVANE_FFMPEG="$(./packaging/windows/recipes.sh --where ffmpeg)" \
  >build/windows.configure.log 2>&1 </dev/null; then
  cat build/windows.configure.log >&2
  fail "configuring \"windows\" failed"
fi
echo "Building windows"
cmake --build build/windows -j "$jobs" </dev/null || fail "building \"windows\" failed"

./packaging/windows/pack.sh

[ "$tests" = no ] || ctest --test-dir build/windows -j "$jobs" --output-on-failure --no-tests=error </dev/null
