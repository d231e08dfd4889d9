#!/bin/sh
# The large sets of the tests as a whole, of which scripts/test.sh takes a tenth: 200 clean projects,
# each authored, read back and judged, 100 discs with one wrong byte, tools that do half of their work,
# the arrow keys of 200 menus and the looks of 200 others, 2000 menus edited at random, 50 maps of
# discs, the pages that all designs give for discs of all kinds, and 160 discs with menus that are
# made of titles by every design. Then the players that are installed are asked about the samples' discs.
#
#   scripts/whole-sets.sh
set -eu
cd "$(dirname -- "$0")/.."

./scripts/setup.sh --test
[ -f build/debug/build.ninja ] || cmake --preset debug >/dev/null </dev/null
cmake --build build/debug -j "${CORVANE_JOBS:-$(nproc)}" \
  --target test_authored_disc test_menus test_letters test_made_menus </dev/null
./samples/make.sh
CORVANE_WHOLE_SETS=1 build/debug/bin/test_authored_disc \
  --gtest_filter='CleanProjects.*:*WrongByte*:StandIn*:*ArrowKeysLead*:SpumuxLooks.*:DiscMaps.*'
CORVANE_WHOLE_SETS=1 build/debug/bin/test_menus --gtest_filter='MenuEditorRandom.*'
CORVANE_WHOLE_SETS=1 build/debug/bin/test_letters --gtest_filter='DesignPictures.*'
CORVANE_WHOLE_SETS=1 build/debug/bin/test_made_menus
if command -v mplayer >/dev/null || command -v HandBrakeCLI >/dev/null; then
  ./scripts/players.sh
else
  echo "No player was asked: neither mplayer nor HandBrakeCLI is installed."
fi
