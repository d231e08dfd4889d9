#!/bin/sh
# Draws all designs of menus (designs/) as one picture, which docs/designs.md shows: each with seven
# titles, NTSC and 4:3.
#
#   scripts/draw-designs.sh [PICTURE]        (default: docs/designs.png)
#
# It needs gm (GraphicsMagick), and builds the program that draws.
set -eu
cd "$(dirname -- "$0")/.."
picture=${1:-docs/designs.png}

pages=$(mktemp -d)
trap 'rm -rf "$pages"' EXIT
[ -f build/debug/build.ninja ] || cmake --preset debug >/dev/null </dev/null
cmake --build build/debug -j "${CORVANE_JOBS:-$(nproc)}" --target draw_designs </dev/null
build/debug/bin/draw_designs designs "$pages" ntsc narrow 7-titles
gm montage -tile 5x -geometry 300x225+4+4 -background '#ffffff' "$pages"/*-1.png "$pages/all.png"
# So many colours are enough for a look, and a third of the bytes.
gm convert +dither "$pages/all.png" -type TrueColor -colors 250 "$picture"
