#!/bin/sh
# From a fresh clone to a disc: installs what is missing, builds the programs, makes the sample
# media, authors the sample project with the real tools, reads the disc back and shows what is on
# it beside what the project asks for. Fails when anything is wrong with the disc.
#
#   scripts/author-sample.sh [PROJECT.cvp]     (default: the NTSC sample; samples/media/sample-pal.cvp
#                                               is the PAL one)
#
# Everything it makes is under build/ and samples/media/. Run again, it builds and encodes nothing
# anew, but authors again.
set -eu

cd "$(dirname -- "$0")/.."
here=$(pwd)
case ${1-} in
  '') project=$here/samples/media/sample.cvp ;;
  /*) project=$1 ;;
  *) project=$OLDPWD/$1 ;;
esac

fail() {
  echo "author-sample.sh: $*" >&2
  exit 1
}

./scripts/setup.sh --run

# In the tree of the tests, so that nothing is compiled twice; without them, which need more packages.
mkdir -p build
if [ ! -f build/debug/build.ninja ]; then
  cmake --preset debug -DBUILD_TESTING=OFF >build/debug.configure.log 2>&1 </dev/null || {
    cat build/debug.configure.log >&2
    fail "configuring the build failed"
  }
fi
echo "Building"
cmake --build build/debug -j "${CORVANE_JOBS:-$(nproc)}" \
  --target corvane-author --target conspawn </dev/null ||
  fail "the build failed"

./samples/make.sh

name=$(basename -- "$project" .cvp)
home=$here/build/sample/home
disc=$here/build/sample/$name
mkdir -p "$home"
echo "Authoring $project"
status=0
CORVANE_HOME=$home build/debug/bin/corvane-author --replace "$project" "$disc" || status=$?
[ "$status" = 0 ] || fail "corvane-author ended with status $status"

echo
CORVANE_HOME=$home build/debug/bin/corvane-author --verify "$project" "$disc" ||
  fail "the disc is not what the project asks for"

echo "Disc and project agree."
echo "  folder:  $disc"
[ ! -f "$disc.iso" ] || echo "  image:   $disc.iso"
echo "  log:     $home/CorvaneLOG.txt"
echo "  window:  ./scripts/run.sh \"$project\""
