#!/bin/sh
# Builds everything and runs every test: the rooms' tests and conversations, discs authored with the
# real tools and read back, the windows under a display of their own, the core under the sanitizers,
# the Windows programs under Wine, the fuzz targets for a minute each, layout and clang-tidy.
# Ends with CTest's closing line; fails when any test failed or did not run.
#
#   scripts/test.sh [CTEST ARGUMENT...]      for example: scripts/test.sh -R sanitize
#
# $CORVANE_JOBS: programs run at once (default: the number of processors)
# $CORVANE_FUZZ_SECONDS: how long each fuzz target runs (default 60)
set -eu

cd "$(dirname -- "$0")/.."
jobs=${CORVANE_JOBS:-$(nproc)}

./scripts/setup.sh --test

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

build debug -DCORVANE_UI=ON -DCORVANE_DISC_TESTS=ON
build sanitize
build fuzz
./scripts/build-windows.sh --without-tests

# One CTest run over all trees, so that there is one closing line. The names of the other trees'
# tests begin with "sanitize.", "wine." and "fuzz.".
mkdir -p build/all
here=$(pwd)
cat >build/all/CTestTestfile.cmake <<TESTS
subdirs([==[$here/build/debug]==])
subdirs([==[$here/build/sanitize]==])
subdirs([==[$here/build/fuzz]==])
subdirs([==[$here/build/windows]==])
add_test(lint.format [==[$here/scripts/lint.sh]==] --format)
add_test(lint.tidy [==[$here/scripts/lint.sh]==] --tidy)
set_tests_properties(lint.tidy PROPERTIES TIMEOUT 3600 COST 1000)
TESTS

# Not run counts as failed: CTest itself would let a skipped test pass.
status=0
# The longest go first. A window test mostly waits for its window: half as many again at once keep the
# processors busy.
ctest --test-dir build/all -j $((jobs + (jobs + 1) / 2)) --output-on-failure --no-tests=error \
  --output-junit "$here/build/all/results.xml" "$@" </dev/null || status=$?
if grep -q '<testsuite[^>]*' build/all/results.xml 2>/dev/null &&
  ! tr -d '\n' <build/all/results.xml | grep -q '<testsuite[^>]*skipped="0"'; then
  echo "test.sh: tests were skipped; see the list above." >&2
  [ "$status" != 0 ] || status=1
fi
exit "$status"
