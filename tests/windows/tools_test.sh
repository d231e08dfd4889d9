#!/bin/sh
# The outside tools of the Windows program, run under Wine beside those of this machine: the same
# command on the same files must leave the same bytes.
#
#   tests/windows/tools_test.sh TEST [FOLDER]      (default folder: build/windows/tools_test/TEST)
#   tests/windows/tools_test.sh --prepare          makes what the tests need and is not there: the tools,
#                                                  the sample media and the programs of this machine
#
# The tools are those that packaging/windows/recipes.sh made, the media those of samples/make.sh.
set -eu

here=$(CDPATH='' cd -- "$(dirname -- "$0")/../.." && pwd)
media=$here/samples/media
recipes=$here/packaging/windows/recipes.sh
wine=$here/tests/windows/wine.sh
prefix=${CORVANE_WINEPREFIX:-$here/build/wine}
font=/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf
work=${2:-$here/build/windows/tools_test/${1:-}}

fail() {
  echo "tools_test.sh: $*" >&2
  exit 1
}

# The Windows program of that name: `tool spumux`.
tool() {
  recipe=$(awk -v tool="$1.exe" '$1 == tool { print $2 }' "$here/packaging/windows/tools.txt")
  [ -n "$recipe" ] || fail "packaging/windows/tools.txt has no $1.exe"
  program=$("$recipes" --where "$recipe")/bin/$1.exe
  [ -f "$program" ] || fail "$program is not built: run packaging/windows/recipes.sh $recipe"
  echo "$program"
}

# Runs the Windows program of that name: `under_wine mplex -f 8 ...`.
under_wine() {
  program=$(tool "$1")
  shift
  "$wine" "$program" "$@"
}

# A path as Windows programs name it: Wine's drive Z is this machine's "/".
named() {
  printf 'Z:%s' "$1" | tr / '\\'
}

# Puts a font file into a folder, whole in one step, since other tests may read it there at the same
# time: `give_font FILE FOLDER [NAME]`.
give_font() {
  mkdir -p "$2"
  cp "$1" "$2/.$$"
  mv "$2/.$$" "$2/${3:-$(basename "$1")}"
}

# Fails unless both files have the same bytes, and some.
same() {
  [ -s "$1" ] || fail "$1 is empty"
  cmp "$1" "$2" || fail "$2 is not what the tool of this machine wrote"
}

# Fails unless the file says so.
says() {
  grep -q -F -e "$2" "$1" || {
    cat "$1" >&2
    fail "not said: $2"
  }
}

# Fails unless both logs say the same, but for lines that name files and the order of two tools' lines.
same_messages() {
  for log in "$1" "$2"; do
    tr '\r' '\n' <"$log" | grep -v -e '[/\]' -e '\.m2v' -e '^$' | sort >"$log.messages"
  done
  [ -s "$1.messages" ] || fail "$1 says nothing"
  diff "$1.messages" "$2.messages" || fail "$2 says something else"
}

# The highlight and the select picture of a menu, and its control file: `menu_xml NAME HIGHLIGHT SELECT`.
draw_menu() {
  for picture in highlight select; do
    gm convert -size 720x480 null:#010101 "$picture.png"
    gm mogrify +antialias -fill yellow -draw "roundrectangle 110,150 428,205, 2,3" "$picture.png"
    gm mogrify +antialias -fill '#010101' -draw "roundrectangle 114,154 424,201, 2,3" "$picture.png"
  done
  gm mogrify +antialias -fill white -draw "roundrectangle 130,362 298,364, 2,3" select.png
  gm composite -geometry +84+242 "$media/arrow.bmp" highlight.png highlight.png
}

menu_xml() {
  cat >"$1" <<XML
<?xml version="1.0" encoding="UTF-8"?>
<subpictures>
  <stream>
    <spu start="00:00:00.0" end="00:00:00.0"
         highlight="$2"
         select="$3"
         transparent="010101" force="yes"
         autoorder="rows">
    <button x0="110" y0="150" x1="430" y1="206"/>
    <button x0="84" y0="242" x1="114" y1="274"/>
    <button x0="130" y0="362" x1="300" y1="365"/>
    </spu>
  </stream>
</subpictures>
XML
}

# A control file for text subtitles: `text_xml FILE SUBTITLES FONT CHARSET`.
text_xml() {
  cat >"$1" <<XML
<?xml version="1.0" encoding="UTF-8"?>
<subpictures>
  <stream>
    <textsub filename="$2"
         fontsize="28.0" font="$3" characterset="$4"
         horizontal-alignment="center" vertical-alignment="bottom"
         left-margin="60" right-margin="60"
         top-margin="30" bottom-margin="30"
         movie-fps="29.97" subtitle-fps="29.97"
         movie-width="720" movie-height="478"
    />
  </stream>
</subpictures>
XML
}

# The navigation of a disc of one title: `disc_xml FOLDER VIDEO`.
disc_xml() {
  cat <<XML
<dvdauthor dest="$1"><vmgm><fpc>jump title 1;</fpc></vmgm>
<titleset><titles><pgc><vob file="$2" pause="inf"/></pgc></titles></titleset></dvdauthor>
XML
}

subtitles() {
  printf '1\r\n00:00:00,500 --> 00:00:02,000\r\n%s\r\n' "$1"
}

# Nothing but what Windows has is needed beside a tool.
test_imports() {
  systems='advapi32 bcrypt gdi32 kernel32 msvcrt ole32 shell32 user32 ws2_32 winmm'
  while read -r name _; do
    case $name in '' | '#'*) continue ;; esac
    x86_64-w64-mingw32-objdump -p "$(tool "${name%.exe}")" |
      sed -n 's/^[[:space:]]*DLL Name: \(.*\)\.dll$/\1/Ip' | tr '[:upper:]' '[:lower:]' >imports
    [ -s imports ] || fail "$name imports nothing: is it a program?"
    while read -r library; do
      case " $systems " in *" $library "*) ;; *) fail "$name needs $library.dll" ;; esac
    done <imports
  done <"$here/packaging/windows/tools.txt"
}

test_mplex() {
  mplex -f 8 -O 120ms -o here.mpg "$media/garden.m2v" "$media/garden-english.ac3" \
    "$media/garden-german.mp2" 2>here.log
  under_wine mplex -f 8 -O 120ms -o "$(named "$work/there.mpg")" "$(named "$media/garden.m2v")" \
    "$(named "$media/garden-english.ac3")" "$(named "$media/garden-german.mp2")" 2>there.log
  same here.mpg there.mpg
  says there.log 'INFO: [mplex] MUX STATUS: no under-runs detected.'
  same_messages here.log there.log
}

test_mplex_refusals() {
  status=0
  under_wine mplex -f 8 -o out.mpg 'Z:\no\such.m2v' 2>log || status=$?
  [ "$status" = 1 ] || fail "status $status for a missing file"
  says log '**ERROR: [mplex]'
  says log 'no\such.m2v'
  under_wine mplex -f 8 -O 12,5ms -o out.mpg "$(named "$media/clip-ntsc.m2v")" 2>log && fail 'no refusal'
  says log '**ERROR: [mplex] Time offset units'
  : >empty.m2v
  under_wine mplex -f 8 -o out.mpg empty.m2v 2>log && fail 'no refusal of an empty file'
  says log '**ERROR: [mplex] Unable to read from'
}

test_mplex_names() {
  mkdir -p 'a & b/Ä ö 日本'
  cp "$media/clip-ntsc.m2v" 'a & b/Ä ö 日本/film.m2v'
  mplex -f 8 -o here.mpg "$media/clip-ntsc.m2v" 2>here.log
  under_wine mplex -f 8 -o "$(named "$work/a & b/Ä ö 日本/50%% of ü.mpg")" \
    "$(named "$work/a & b/Ä ö 日本/film.m2v")" 2>there.log
  same here.mpg 'a & b/Ä ö 日本/50% of ü.mpg'
}

test_spumux_menu() {
  draw_menu
  mplex -f 8 -o in.mpg "$media/menu-ntsc.m2v" "$media/menu.ac3" 2>mplex.log
  menu_xml here.xml highlight.png select.png
  menu_xml there.xml "$(named "$work/highlight.png")" "$(named "$work/select.png")"
  spumux here.xml <in.mpg >here.mpg 2>here.log
  under_wine spumux "$(named "$work/there.xml")" <in.mpg >there.mpg 2>there.log
  says there.log 'INFO: 1 subtitles added, 0 subtitles skipped, stream: 32'
  same here.mpg there.mpg
}

test_spumux_missing_picture() {
  mplex -f 8 -o in.mpg "$media/menu-ntsc.m2v" 2>mplex.log
  menu_xml there.xml 'Z:\no\highlight.png' 'Z:\no\select.png'
  under_wine spumux there.xml <in.mpg >there.mpg 2>there.log
  says there.log 'ERR:  Unable to open file Z:\no\highlight.png'
}

# A still as its work script makes it, run by Windows' own interpreter and by ours.
test_stills() {
  conspawn=${CORVANE_CONSPAWN:-$here/build/windows/bin/conspawn.exe}
  mkdir 'the bin'
  for program in "$conspawn" "$(tool jpeg2yuv)" "$(tool mpeg2enc)"; do
    cp "$program" 'the bin/' || fail "$program is not built"
  done
  bin=$(named "$work/the bin")
  while read -r name rate norm; do
    {
      jpeg2yuv -n 3 -I p -f "$rate" -j "$media/$name.jpg" |
        mpeg2enc -f 8 -n "$norm" -o here.m2v
    } >here.log 2>&1
    printf '@echo off\r\n"%s" -n 3 -I p -f %s -j "%s" | "%s" -f 8 -n %s -o "%s"\r\necho *process complete' \
      "$bin\\jpeg2yuv.exe" "$rate" "$(named "$media/$name.jpg")" \
      "$bin\\mpeg2enc.exe" "$norm" "$(named "$work/there.m2v")" >process.bat
    rm -f there.m2v
    "$wine" cmd /c "$(named "$work/process.bat")" >cmd.log 2>&1 </dev/null
    same here.m2v there.m2v
    rm there.m2v
    "$wine" 'the bin/conspawn.exe' "$(named "$work/process.bat")" >conspawn.log 2>&1 </dev/null
    # conspawn has the stream say that it is 4:3, which the tool does when it is told.
    jpeg2yuv -n 3 -I p -f "$rate" -j "$media/$name.jpg" 2>stated.log |
      mpeg2enc -f 8 -a 2 -n "$norm" -o stated.m2v >>stated.log 2>&1
    same stated.m2v there.m2v
    sed -i '/^\*process complete/d' conspawn.log
    same_messages here.log conspawn.log
  done <<'STILLS'
chapter-menu 29.97 n
chapter-menu-pal 25 p
STILLS
}

# A text of letters that all 23 sets have, and one of each set's own.
test_spumux_charsets() {
  mplex -f 8 -o in.mpg "$media/clip-ntsc.m2v" "$media/clip.ac3" 2>mplex.log
  while read -r charset text; do
    subtitles "Plain, $text" | iconv -f UTF-8 -t "$charset" >text.srt
    text_xml text.xml text.srt "$font" "$charset"
    spumux -s 0 text.xml <in.mpg >here.mpg 2>here.log
    status=0
    under_wine spumux -s 0 text.xml <in.mpg >there.mpg 2>there.log || status=$?
    [ "$status" = 0 ] || {
      cat there.log >&2
      fail "status $status for $charset"
    }
    says there.log 'INFO: 1 subtitles added, 0 subtitles skipped, stream: 32'
    same here.mpg there.mpg
  done <<'SETS'
ISO-8859-1 äéñß
ISO-8859-2 łőčď
ISO-8859-3 ĉĝħŭ
ISO-8859-5 Привет
ISO-8859-6 سلام
ISO-8859-7 Γειά
ISO-8859-8 שלום
ISO-8859-9 ığşü
ISO-8859-10 ąęðþ
ISO-8859-13 ąčęž
ISO-8859-15 €œŠž
KOI8-R Привет
SHIFT_JIS 日本語カタ
ISO-2022-JP 日本語カタ
EUC-JP 日本語カタ
CP1250 łőč€
CP1251 Привет№
CP1252 „ä“€œ
CP1254 ığş€
CP850 äéñß
MACINTOSH äéñ†
BIG5 中文字
BIG5-HKSCS 中文字咗
SETS
}

# Two subtitle files, the second into what the first left, and names that are not ASCII.
test_spumux_two_subtitles() {
  mplex -f 8 -o in.mpg "$media/clip-ntsc.m2v" "$media/clip.ac3" 2>mplex.log
  mkdir -p 'ü 日本'
  subtitles 'Grün & blau' >'ü 日本/one.srt'
  subtitles 'Vert et bleu' >'ü 日本/two.srt'
  for n in one two; do
    text_xml "here-$n.xml" "ü 日本/$n.srt" "$font" ISO-8859-1
    text_xml "there-$n.xml" "$(named "$work/ü 日本/$n.srt")" "$(named "$font")" ISO-8859-1
  done
  spumux -s 0 here-one.xml <in.mpg 2>here.log | spumux -s 1 here-two.xml >here.mpg 2>>here.log
  under_wine spumux -s 0 there-one.xml <in.mpg >middle.mpg 2>there.log
  under_wine spumux -s 1 there-two.xml <middle.mpg >there.mpg 2>>there.log
  says there.log 'stream: 33'
  same here.mpg there.mpg
}

# A font is found by the name of its file where Windows keeps fonts, for all users and for one; any
# other name is refused instead of answered with another font.
test_spumux_fonts() {
  mplex -f 8 -o in.mpg "$media/clip-ntsc.m2v" 2>mplex.log
  fonts=$prefix/drive_c/windows/Fonts
  own_fonts=$prefix/drive_c/users/$(id -un)/AppData/Local/Microsoft/Windows/Fonts
  give_font "$font" "$fonts" corvane-test.ttf
  give_font "$font" "$own_fonts" für-mich.ttf
  subtitles 'A text' >text.srt
  text_xml text.xml text.srt "$font" ISO-8859-1
  spumux text.xml <in.mpg >here.mpg 2>here.log
  for name in corvane-test.ttf für-mich.ttf; do
    text_xml text.xml text.srt "$name" ISO-8859-1
    under_wine spumux text.xml <in.mpg >there.mpg 2>there.log
    same here.mpg there.mpg
  done
  text_xml text.xml text.srt no-such.ttf ISO-8859-1
  status=0
  under_wine spumux text.xml <in.mpg >there.mpg 2>there.log || status=$?
  [ "$status" = 1 ] || fail "status $status for a font that is not there"
  says there.log 'ERR:  Please supply the text font file (no-such.ttf).'
}

test_spumux_bad_bytes() {
  mplex -f 8 -o in.mpg "$media/clip-ntsc.m2v" 2>mplex.log
  printf '1\n00:00:00,500 --> 00:00:02,000\nabc \377\376 def\n' >text.srt
  text_xml text.xml text.srt "$(named "$font")" EUC-JP
  status=0
  under_wine spumux text.xml <in.mpg >there.mpg 2>there.log || status=$?
  [ "$status" = 1 ] || fail "status $status for bytes that are no characters"
  says there.log 'decoding subtitle file at approx line pos'
}

# A whole disc: a menu with buttons, a title with chapters and a ready VOB.
test_dvdauthor() {
  draw_menu
  mplex -f 8 -o menu.mpg "$media/menu-ntsc.m2v" "$media/menu.ac3" 2>mplex.log
  menu_xml menu.xml highlight.png select.png
  spumux menu.xml <menu.mpg >menusub.mpg 2>spumux.log
  mplex -f 8 -o title.mpg "$media/garden.m2v" "$media/garden-english.ac3" 2>mplex.log
  for place in here 'there ä &amp; 日'; do
    cat >config.xml <<XML
<dvdauthor dest="$place">
<vmgm>
<fpc>jump titleset 1 menu;</fpc>
</vmgm>
<titleset>
<menus>
<audio lang="EN"/>
<pgc>
<vob file="menusub.mpg" pause="inf"/>
<button>jump title 1;</button>
<button>jump title 1 chapter 2;</button>
<button>jump title 2;</button>
</pgc>
</menus>
<titles>
<audio lang="EN"/>
<pgc>
<vob file="title.mpg" chapters="0,4.5,9"/>
<post>call menu;</post>
</pgc>
<pgc>
<vob file="MEDIA/tour.vob"/>
<post>call menu;</post>
</pgc>
</titles>
</titleset>
</dvdauthor>
XML
    if [ "$place" = here ]; then
      sed -i "s|MEDIA|$media|" config.xml
      VIDEO_FORMAT=NTSC dvdauthor -x config.xml 2>here.log
    else
      sed -i -e "s|MEDIA/tour|$(named "$media" | sed 's/\\/\\\\/g')\\\\tour|" config.xml
      VIDEO_FORMAT=NTSC under_wine dvdauthor -x "$(named "$work/config.xml")" 2>there.log
    fi
  done
  [ "$(find here -type f | wc -l)" -ge 6 ] || fail 'the tool of this machine made no disc'
  diff -r here 'there ä & 日' || fail 'the disc is another'
  says there.log 'INFO: dvdauthor creating table of contents'
  says there.log 'STAT: fixing VOBU'
}

test_dvdauthor_refusals() {
  disc_xml out 'Z:\no\such.vob' >config.xml
  status=0
  VIDEO_FORMAT=NTSC under_wine dvdauthor -x config.xml 2>log || status=$?
  [ "$status" = 1 ] || fail "status $status for a missing file"
  says log 'ERR:  2 opening input video file "Z:\no\such.vob" -- No such file or directory'
  status=0
  under_wine dvdauthor -x 'Z:\no\config.xml' 2>log || status=$?
  [ "$status" = 1 ] || fail "status $status without a control file"
  says log 'ERR:  '
}

# Names of more than 260 characters, through all of a run. (Not the folder of the disc itself: Wine
# makes none of such a name.)
test_long_names() {
  part="long$(printf ' long%.0s' 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20)"
  folder="$work/$part/$part/$part"
  mkdir -p "$folder"
  draw_menu
  cp highlight.png select.png "$media/chapter-menu.jpg" "$folder/"
  wide=$(named "$folder")
  [ "${#wide}" -gt 260 ] || fail 'the name is not long'
  menu_xml "$folder/menu.xml" "$wide\\highlight.png" "$wide\\select.png"
  under_wine jpeg2yuv -n 1 -I p -f 29.97 -j "$wide\\chapter-menu.jpg" 2>log >still.y4m
  under_wine mpeg2enc -f 8 -n n -o "$wide\\still.m2v" 2>>log <still.y4m
  under_wine mplex -f 8 -o "$wide\\menu.mpg" "$wide\\still.m2v" 2>>log
  under_wine spumux "$wide\\menu.xml" <"$folder/menu.mpg" >"$folder/menusub.mpg" 2>>log
  menu_xml menu.xml highlight.png select.png
  spumux menu.xml <"$folder/menu.mpg" >here.mpg 2>here.log
  same here.mpg "$folder/menusub.mpg"
  disc_xml "$(named "$work/there")" "$wide\\menu.mpg" >"$folder/config.xml"
  under_wine dvdauthor -x "$wide\\config.xml" 2>>log
  disc_xml here "$folder/menu.mpg" >config.xml
  dvdauthor -x config.xml 2>here.log
  [ "$(find here -type f | wc -l)" -ge 5 ] || fail 'the tool of this machine made no disc'
  diff -r here there || fail 'the disc is another'
}

# shellcheck source=tests/windows/gm_tests.sh
. "$here/tests/windows/gm_tests.sh"
# shellcheck source=tests/windows/import_tests.sh
. "$here/tests/windows/import_tests.sh"
# shellcheck source=tests/windows/licence_tests.sh
. "$here/tests/windows/licence_tests.sh"
# shellcheck source=tests/windows/menu_tests.sh
. "$here/tests/windows/menu_tests.sh"
# shellcheck source=tests/windows/mkisofs_tests.sh
. "$here/tests/windows/mkisofs_tests.sh"
# shellcheck source=tests/windows/script_tests.sh
. "$here/tests/windows/script_tests.sh"
# shellcheck source=tests/windows/sample_tests.sh
. "$here/tests/windows/sample_tests.sh"

if [ "${1:-}" = --prepare ]; then
  "$here/samples/make.sh"
  # shellcheck disable=SC2046  # a list of names
  "$recipes" $(awk '/^[^#]/ { print $2 }' "$here/packaging/windows/tools.txt" | sort -u)
  prepare_programs
  exit 0
fi
case " $(sed -n 's/^test_\([a-z_0-9]*\)() {.*$/\1/p' "$here"/tests/windows/*_test*.sh | tr '\n' ' ') " in
  *" ${1:-none} "*) ;;
  *) fail "there is no test \"${1:-}\"" ;;
esac
[ -f "$media/.stamp" ] || fail 'there are no sample media: run samples/make.sh'
rm -rf "$work"
mkdir -p "$work"
work=$(CDPATH='' cd -- "$work" && pwd)
cd "$work"
export VIDEO_FORMAT=NTSC
trap '[ $? = 0 ] || tail -v -n 5 ./*log >&2 2>/dev/null' EXIT
"test_$1"
echo "$1: passed"
