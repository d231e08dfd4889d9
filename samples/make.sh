#!/bin/sh
# Makes the sample media and the sample projects.
#
#   samples/make.sh [FOLDER]        (default: the folder "media" beside this script)
#
# Pictures move and carry a burnt-in clock, so that a chapter point can be checked by eye; each
# "language" is a beep of its own once a second, at the full second of the clock, so that a delay
# can be heard. Every MPEG-2 stream has closed groups of pictures of about half a second, because
# a chapter on a disc can only begin where such a group does.
#
# Made are: the media of the sample projects (garden.*, tour.vob; main-menu.* moves and sounds,
# chapter-menu.* is a still of one picture and has arrow.bmp for buttons), subtitles for the garden
# (German in ISO-8859-1, French in CP1252), short clips for the tests (clip-*, muxed-*, short-*,
# menu-*), sample.cvp (NTSC) and sample-pal.cvp. Project files hold the absolute paths of this
# machine, which is why they are made here and not kept.
#
# A second run with nothing changed only compares a stamp.
set -eu

here=$(cd "$(dirname "$0")" && pwd)
mkdir -p "${1:-$here/media}"
media=$(cd "${1:-$here/media}" && pwd)
font=/usr/share/fonts/truetype/dejavu/DejaVuSans-Bold.ttf

say() { printf '%s\n' "$*"; }
fail() { printf 'samples/make.sh: %s\n' "$*" >&2; exit 1; }

for tool in ffmpeg mplex jpeg2yuv mpeg2enc dvdauthor iconv sha256sum; do
  command -v "$tool" >/dev/null 2>&1 || fail "$tool is not installed (scripts/setup.sh installs it)"
done
[ -r "$font" ] || fail "no font $font (Debian package fonts-dejavu-core)"

stamp=$(
  { sha256sum <"$0"; ffmpeg -version | head -n 1; printf '%s\n' "$media"; } | sha256sum
)
if [ "$(cat "$media/.stamp" 2>/dev/null)" = "$stamp" ]; then
  say "sample media are up to date: $media"
  exit 0
fi
rm -f "$media/.stamp"

# ff ARGUMENTS...: ffmpeg, silent but for errors, with the same bytes on every run.
ff() { ffmpeg -nostdin -v error -y -bitexact "$@"; }

# video FILE NTSC|PAL SECONDS TITLE SOURCE [KILOBITS]: an MPEG-2 elementary stream. SOURCE is an
# lavfi picture source without its size and rate.
video() {
  measures "$2"
  clock="drawtext=fontfile=$font:fontsize=56:fontcolor=white:box=1:boxcolor=black@0.6:boxborderw=12"
  clock="$clock:x=(w-tw)/2:y=140:text='%{pts\\:hms}'"
  name="drawtext=fontfile=$font:fontsize=40:fontcolor=white:box=1:boxcolor=black@0.6"
  name="$name:boxborderw=12:x=(w-tw)/2:y=60:text='$4'"
  encode "$1" "$5=size=$size:rate=$rate" "$3" "$name,$clock" "${6:-2500}"
}

# measures NTSC|PAL: sets size, rate and group (pictures in half a second).
measures() {
  case $1 in
    NTSC) size=720x480 rate=30000/1001 group=16 ;;
    PAL) size=720x576 rate=25 group=13 ;;
  esac
}

# encode FILE SOURCE SECONDS FILTERS KILOBITS
encode() {
  ff -f lavfi -i "$2" -t "$3" -vf "$4" -aspect 4:3 \
    -c:v mpeg2video -pix_fmt yuv420p -threads 1 -g "$group" -bf 2 -flags +cgop \
    -sc_threshold 1000000000 -b:v "${5}k" -maxrate 6000k -bufsize 1835k \
    -f mpeg2video "$media/$1"
}

# label SIZE X Y TEXT: a filter that draws the text, its top left corner there.
label() {
  printf "drawtext=fontfile=%s:fontsize=%s:fontcolor=white:shadowx=2:shadowy=2:x=%s:y=%s:text='%s'" \
    "$font" "$1" "$2" "$3" "$4"
}

# menu_video FILE NTSC|PAL SECONDS HEADING ENTRY...: a menu that moves.
menu_video() {
  file=$1 seconds=$3
  measures "$2"
  shift 3
  menu_picture "$@"
  encode "$file" "$source" "$seconds" "$filters" 1500
}

# still_menu NAME NTSC|PAL HEADING ENTRY...: a menu of one picture, NAME.jpg, and the video that
# "create m2v still" makes of it (which puts the proportions right afterwards).
still_menu() {
  name=$1
  measures "$2"
  case $2 in
    NTSC) frame_rate=29.97 norm=n ;;
    PAL) frame_rate=25 norm=p ;;
  esac
  shift 2
  menu_picture "$@"
  ff -f lavfi -i "$source" -frames:v 1 -vf "$filters" -pix_fmt yuvj420p -q:v 3 -update 1 \
    "$media/$name.jpg"
  # A pattern for numbered files to jpeg2yuv.
  pattern=$(printf %s "$media/$name.jpg" | sed 's/%/%%/g')
  jpeg2yuv -v 0 -n 1 -I p -f "$frame_rate" -j "$pattern" |
    mpeg2enc -v 0 -f 8 -n "$norm" -a 2 -o "$media/$name.m2v" >"$media/$name.log" 2>&1 &&
    [ -s "$media/$name.m2v" ] || { cat "$media/$name.log" >&2; fail "making $name.m2v failed"; }
  rm "$media/$name.log"
}

# menu_picture HEADING ENTRY...: sets source and filters to a slowly turning background with a
# heading and its entries one below the other, 80 lines from one to the next.
menu_picture() {
  source="gradients=size=$size:rate=$rate:nb_colors=2:c0=0x0c1a33:c1=0x27508f:x0=0:y0=0:x1=719"
  source="$source:y1=479:seed=7:speed=0.02"
  filters="drawbox=x=60:y=130:w=420:h=270:color=black@0.35:t=fill,$(label 44 90 60 "$1")"
  shift
  line=163
  for entry; do
    filters="$filters,$(label 30 130 $line "$entry")"
    line=$((line + 80))
  done
}

# arrow FILE RED GREEN BLUE: an arrow of that colour, 30 x 32 pixels, on the colour that a button
# shows through: a bitmap of 4 bits a pixel, run-length encoded, its lines from the last to the
# first.
arrow() {
  printf %b "$(awk -v r="$2" -v g="$3" -v b="$4" '
    function byte(n) { out = out sprintf("\\0%03o", n) }
    function word(n) { byte(n % 256); byte(int(n / 256) % 256); byte(int(n / 65536)); byte(0) }
    function short(n) { byte(n); byte(0) }
    BEGIN {
      width = 30; height = 32; colours = 16
      start = 14 + 40 + 4 * colours; data = height * 6 + 2
      byte(66); byte(77); word(start + data); word(0); word(start)
      word(40); word(width); word(height); short(1); short(4); word(2); word(data)
      word(2835); word(2835); word(colours); word(0)
      byte(1); byte(1); byte(1); byte(0)
      byte(b); byte(g); byte(r); byte(0)
      for (i = 2; i < colours; i++) word(0)
      for (y = 0; y < height; y++) {
        run = 2 * (y < height / 2 ? y : height - 1 - y)
        if (run < 2) run = 2
        if (run >= width) run = width - 2
        byte(run); byte(17); byte(width - run); byte(0); byte(0); byte(0)
      }
      byte(0); byte(1)
      print out
    }')" >"$media/$1"
}

# audio FILE SECONDS HERTZ CODEC KILOBITS [CHANNELS]: a beep at each full second over a quiet tone.
audio() {
  beep="0.5*sin(2*PI*$3*t)*lt(mod(t\\,1)\\,0.12)+0.04*sin(PI*$3*t)"
  ff -f lavfi -i "aevalsrc=exprs='$beep':sample_rate=48000:duration=$2" \
    -ac "${6:-2}" -c:a "$4" -b:a "$5k" -f "$(printf %s "$4" | sed 's/^libtwolame$/mp2/')" "$media/$1"
}

# muxed FILE NTSC|PAL VIDEO AUDIO...: a program stream with navigation packets, as the first
# run of dvdauthor over these streams leaves it.
muxed() {
  out=$1 format=$2
  shift 2
  work=$(mktemp -d "${TMPDIR:-/tmp}/corvane-samples.XXXXXX")
  for stream; do
    shift
    set -- "$@" "$media/$stream"
  done
  mplex -v 0 -f 8 -o "$work/stream.mpg" "$@" >"$work/log" 2>&1 &&
    VIDEO_FORMAT=$format dvdauthor -o "$work/disc" -t "$work/stream.mpg" >>"$work/log" 2>&1 &&
    VIDEO_FORMAT=$format dvdauthor -o "$work/disc" -T >>"$work/log" 2>&1 ||
    { cat "$work/log" >&2; rm -r "$work"; fail "making $out failed"; }
  mv "$work/disc/VIDEO_TS/VTS_01_1.VOB" "$media/$out"
  rm -r "$work"
}

# subtitles FILE CHARACTER-SET: a text subtitle file (SubRip) from standard input.
subtitles() { iconv -f UTF-8 -t "$2" >"$media/$1" || fail "making $1 failed"; }

# stored PATH: the way a project file writes a path, with "\" between folders.
stored() { printf %s "$1" | tr / '\\'; }

# button X0 Y0 X1 Y1 ACTION HIGHLIGHT SELECT: its record, the numbers with the blank before them.
button() { printf ' %s/ %s/ %s/ %s/%s/%s/%s' "$@"; }

# menu_rows VIDEO1 VIDEO2: the sections of the sample's two menus. The first loops and has two frames, three lines
# thick, and an underline; the second has two arrows and a frame.
menu_rows() {
  printf '%s\n' "$root$1/${root}main-menu.ac3" "$root$2/" '***'
  printf ' 1\t00:00:00.0\t00:00:00.0\t 3\n 0\t00:00:00.0\t00:00:00.0\t 2\n***\n'
  printf 'menu01:%s\n' \
    "$(button 110 150 430 206 'jump title 1' yellow white)" \
    "$(button 110 230 430 286 'jump title 2' cyan white)" \
    "$(button 130 362 300 365 'jump menu 2' orange white)"
  printf 'menu02:%s\n' \
    "$(button 84 162 114 194 'jump title 1 chapter  2' "${root}arrow.bmp" "${root}arrow-pressed.bmp")" \
    "$(button 84 242 114 274 'jump title 1 chapter  3' "${root}arrow.bmp" "${root}arrow-pressed.bmp")" \
    "$(button 110 310 430 366 'jump menu 1' green white)"
  printf '***\n'
}

# project FILE NTSC|PAL VIDEO AUDIO1 AUDIO2 MUXED MENU1 MENU2 CHAPTERS: the project file of a sample,
# lines ended by CR LF, sections by "***".
project() {
  root=$(stored "$media/")
  tab=$(printf '\t')
  # titles, chapters, delays, language tags, menus, their options and buttons, post commands (padded
  # to 25 characters), subtitles and their options; then first play, region, "create iso", jump
  # table.
  {
    printf '%s\n' "Corvane 0.997 - 1/2/2005"
    printf '%s\n' "$root$3/$root$4/$root$5" "$root$6" '***'
    printf '%s\n' "$9" 00:00:00.00,00:00:06.00 '***'
    printf '%s\n' 120 0 '***'
    printf '%s\n' "Audio tag:${tab}ENGLISH EN" "Audio tag:${tab}GERMAN DE " \
      "Subtitle tag:${tab}GERMAN DE " "Subtitle tag:${tab}FRENCH FR" '***'
    menu_rows "$7" "$8"
    printf '%-25s\n' 'call last menu' 'call menu 2'
    printf '%s\n' '***'
    printf '%s\n' "${root}garden-german.srt/${root}garden-french.srt" '<none>' '***'
    case $2 in
      NTSC) frame=720,478,29.97 ;;
      PAL) frame=720,574,25 ;;
    esac
    place='center,bottom,60,60,30,30,28.0'
    printf '%s|%s|\n' "$place,dejavusans.ttf,$frame,ISO-8859-1" \
      "$place,dejavuserif.ttf,$frame,CP1252"
    printf '%s|\n' "$place,arial.ttf,$frame,ISO-8859-1"
    printf '***\n'
    printf '%s\n' '<default>' "$2" True True
  } | sed 's/$/\r/' >"$media/$1"
}

say "making the sample media in $media (once)"
say "  NTSC"
video garden.m2v NTSC 24 "Corvane sample - title 1" testsrc2
audio garden-english.ac3 24 880 ac3 192
audio garden-german.mp2 24 587 mp2 192
menu_video main-menu.m2v NTSC 8 "Corvane sample" "The garden" "The tour" "Chapters"
audio main-menu.ac3 8 220 ac3 192
still_menu chapter-menu NTSC "The garden" "From 8 seconds" "From 16 seconds" "Back"
arrow arrow.bmp 255 165 0
arrow arrow-pressed.bmp 255 255 255
video tour.m2v NTSC 12 "Corvane sample - title 2" mandelbrot
audio tour-english.ac3 12 660 ac3 192
audio tour-german.mp2 12 494 mp2 192
muxed tour.vob NTSC tour.m2v tour-english.ac3 tour-german.mp2
say "  PAL"
video garden-pal.m2v PAL 24 "Corvane sample - title 1, PAL" testsrc2
video tour-pal.m2v PAL 12 "Corvane sample - title 2, PAL" mandelbrot
menu_video main-menu-pal.m2v PAL 8 "Corvane sample, PAL" "The garden" "The tour" "Chapters"
still_menu chapter-menu-pal PAL "The garden" "From 8 seconds" "From 16 seconds" "Back"
muxed tour-pal.vob PAL tour-pal.m2v tour-english.ac3 tour-german.mp2
rm -f "$media"/tour.m2v "$media"/tour-pal.m2v "$media"/tour-english.ac3 "$media"/tour-german.mp2

say "  subtitles"
subtitles garden-german.srt ISO-8859-1 <<'END'
1
00:00:02,000 --> 00:00:05,000
Süße Äpfel, grüne Flächen:
Frühling über den Gärten.

2
00:00:09,000 --> 00:00:12,500
Öde Plätze gibt es hier nicht.

3
00:00:17,000 --> 00:00:20,000
Auf Wiedersehen, bis später!
END
subtitles garden-french.srt CP1252 <<'END'
1
00:00:03,000 --> 00:00:06,000
Où êtes-vous, chère sœur ?
Voilà déjà l'été.

2
00:00:09,500 --> 00:00:13,000
Les forêts, là-bas, s'éveillent…

3
00:00:18,000 --> 00:00:21,000
À bientôt, cœur léger !
END

say "  clips for the tests"
video clip-ntsc.m2v NTSC 6 "clip" testsrc2 1200
video clip-pal.m2v PAL 6 "clip, PAL" testsrc2 1200
audio clip.ac3 6 880 ac3 192
audio clip.mp2 6 587 mp2 128
audio clip-six-channels.ac3 6 440 ac3 384 6
video menu-ntsc.m2v NTSC 2 "menu" testsrc 1000
video menu-pal.m2v PAL 2 "menu, PAL" testsrc 1000
audio menu.ac3 2 330 ac3 192
muxed muxed-ntsc.vob NTSC clip-ntsc.m2v clip.ac3
muxed muxed-pal.vob PAL clip-pal.m2v clip.ac3
muxed short-ntsc.vob NTSC menu-ntsc.m2v menu.ac3

# The second chapter begins with a group of pictures, the third and fourth lie within one.
say "  projects"
project sample.cvp NTSC garden.m2v garden-english.ac3 garden-german.mp2 tour.vob \
  main-menu.m2v chapter-menu.m2v 00:00:00.00,00:00:08.01,00:00:16.00,00:00:20.25
project sample-pal.cvp PAL garden-pal.m2v garden-english.ac3 garden-german.mp2 tour-pal.vob \
  main-menu-pal.m2v chapter-menu-pal.m2v 00:00:00.00,00:00:08.32,00:00:16.00,00:00:20.25

printf '%s\n' "$stamp" >"$media/.stamp"
say "done: $(du -sh "$media" | cut -f 1)"
