#!/bin/sh
# Builds everything for this system and runs its tests: the rooms' tests and conversations and the
# seeds of the fuzz targets, under the sanitizers, discs authored with the real tools and read back,
# the windows under a display of their own, layout.
# With --all also the Windows programs, cross-built, packed and tried under Wine, fuzzing for half a
# minute each target, and clang-tidy.
# Ends with CTest's closing line; fails when any test failed or did not run.
#
#   scripts/test.sh [--all] [CTEST ARGUMENT...]      for example: scripts/test.sh -R Project
#
# $CORVANE_JOBS: programs run at once (default: the number of processors)
# $CORVANE_FUZZ_SECONDS: how long each fuzz target runs (default 30)
set -eu

cd "$(dirname -- "$0")/.."
jobs=${CORVANE_JOBS:-$(nproc)}

all=no
if [ "${1:-}" = --all ]; then
  all=yes
  shift
fi
case $all in
  yes) ./scripts/setup.sh --all ;;
  no) ./scripts/setup.sh --test ;;
esac

# Configures a tree and builds it, quietly unless something is wrong with it.
build() {
  preset=$1
  shift
  mkdir -p build
  if ! cmake --preset "$preset" "$@" >"build/$preset.configure.log" 2>&1 </dev/null; then
    cat "build/$preset.configure.log" >&2
    echo "test.sh: configuring \"$preset\" failed." >&2
    exit 1
  fi
  echo "Building $preset"
  cmake --build "build/$preset" -j "$jobs" </dev/null || {
    echo "test.sh: building \"$preset\" failed." >&2
    exit 1
  }
}

# What the Windows programs need of others is mostly configured, one program at a time: beside our own
# builds that costs little.
libraries=
if [ "$all" = yes ]; then
  mkdir -p build
  ./scripts/build-windows.sh --libraries >build/libraries.log 2>&1 </dev/null &
  libraries=$!
  trap 'kill "$libraries" 2>/dev/null || :' EXIT
fi

# The rooms' tests are those of the sanitizers' tree; by name they can be built in "debug" too.
# The benchmarks are built, since nothing else would tell that they do not compile any more.
build debug -DBUILD_TESTING=ON -DCORVANE_UI=ON -DCORVANE_DISC_TESTS=ON -DCORVANE_ROOM_TESTS=OFF \
  -DCORVANE_BENCH=ON
build sanitize
if [ "$all" = yes ]; then
  build fuzz
  wait "$libraries" || {
    cat build/libraries.log >&2
    echo "test.sh: building what the Windows programs need failed." >&2
    exit 1
  }
  trap - EXIT
  ./scripts/build-windows.sh --without-tests
fi

# One CTest run over all trees, so that there is one closing line. Names of tests that other trees
# have in another way begin with "fuzz." and "wine.".
mkdir -p build/all
here=$(pwd)
{
  echo "subdirs([==[$here/build/debug]==])"
  echo "subdirs([==[$here/build/sanitize]==])"
  echo "add_test(lint.format [==[$here/scripts/lint.sh]==] --format)"
  if [ "$all" = yes ]; then
    echo "subdirs([==[$here/build/fuzz]==])"
    echo "subdirs([==[$here/build/windows]==])"
    echo "add_test(lint.tidy [==[$here/scripts/lint.sh]==] --tidy)"
    echo "set_tests_properties(lint.tidy PROPERTIES TIMEOUT 3600 COST 1000)"
  fi
} >build/all/CTestTestfile.cmake

# How many tests stand behind the entries, most of which are a suite.
echo "GoogleTest's tests in the rooms: $(find build/debug/tests build/sanitize/tests -name '*_suites.cmake' \
  -exec sed -n 's/^# tests: //p' {} + | awk '{ n += $1 } END { print n + 0 }')"

# Not run counts as failed: CTest itself would let a skipped test pass.
status=0
# The longest go first. A window test mostly waits for its window: twice as many at once keep the
# processors busy; with more, the first windows of a cold start come up too late. Beside clang-tidy, which takes all of them, half as many again are enough.
at_once=$((jobs * 2))
[ "$all" = no ] || at_once=$((jobs + (jobs + 1) / 2))
ctest --test-dir build/all -j "$at_once" --output-on-failure --no-tests=error \
  --output-junit "$here/build/all/results.xml" "$@" </dev/null || status=$?
if grep -q '<testsuite[^>]*' build/all/results.xml 2>/dev/null &&
  ! tr -d '\n' <build/all/results.xml | grep -q '<testsuite[^>]*skipped="0"'; then
  echo "test.sh: tests were skipped; see the list above." >&2
  [ "$status" != 0 ] || status=1
fi
exit "$status"
