# The sample projects, authored by the Windows program under Wine with the Windows tools and by this
# machine's program with this machine's, read by tools_test.sh: the discs must be the same.
#
# $CORVANE_BIN: folder of the Windows programs (build/windows/bin)
# $CORVANE_LINUX_BIN: folder of corvane-author and disc-report of this machine (build/debug/bin)

windows_bin=${CORVANE_BIN:-$here/build/windows/bin}
linux_bin=${CORVANE_LINUX_BIN:-$here/build/debug/bin}

# This machine's programs, as scripts/test.sh builds them.
prepare_programs() {
  cd "$here"
  [ -f build/debug/build.ninja ] || cmake --preset debug
  cmake --build build/debug --target corvane-author conspawn disc-report
}

# A program folder as people have it, with all the tools: `windows_program FOLDER`.
windows_program() {
  mkdir -p "$1/bin"
  cp "$windows_bin/corvane-author.exe" "$1/"
  cp "$windows_bin/conspawn.exe" "$1/bin/"
  while read -r name _; do
    case $name in '' | '#'*) continue ;; esac
    cp "$(tool "${name%.exe}")" "$1/bin/"
  done <"$here/packaging/windows/tools.txt"
}

# A sample project as Windows holds it, its media on Wine's drive Z: `windows_project FROM TO`.
windows_project() {
  stored=$(printf '%s' "$media" | sed 's,/,\\\\,g')
  sed "s,$stored,Z:&,g" "$1" >"$2"
  grep -q -F 'Z:\' "$2" || fail "no media in $1"
}

# What disc-report says of a disc and its image beside the project, but for their own paths: `told DISC`.
# Fails when they are not what the project asks for.
told() {
  "$linux_bin/disc-report" --project "$media/$project" "$1" "$1.iso" >told.log ||
    fail "$1 is not what $project asks for"
  sed '/^Folder /d; /^Image /d' told.log
}

# `same_discs PROJECT`: the discs and images in here/ and there/.
same_discs() {
  project=$1
  mkdir -p here there 'Program & Töols 字'
  for name in DejaVuSans.ttf DejaVuSerif.ttf; do
    give_font "$(dirname "$font")/$name" "$prefix/drive_c/windows/Fonts"
  done
  CORVANE_HOME=$work/home "$linux_bin/corvane-author" --iso "$media/$project" here/disc >here.log 2>&1 ||
    fail 'the program of this machine failed'
  windows_program 'Program & Töols 字'
  windows_project "$media/$project" there/film.cvp
  "$wine" 'Program & Töols 字/corvane-author.exe' --iso there/film.cvp 'there/the disc & 字' \
    >there.log 2>&1 </dev/null || fail 'the program of Windows failed'
  says there.log 'Process complete.'
  same_folders here/disc/VIDEO_TS 'there/the disc & 字/VIDEO_TS'
  told here/disc >here.txt
  told 'there/the disc & 字' >there.txt
  same here.txt there.txt
}

# Fails unless both hold files of the same names and bytes, and a titleset's worth of them.
same_folders() {
  [ -s "$1/VTS_01_1.VOB" ] || fail "$1 holds no titleset"
  diff -r "$1" "$2" || fail "$2 is not what the program of this machine made"
}

test_sample_ntsc() { same_discs sample.cvp; }
test_sample_pal() { same_discs sample-pal.cvp; }
