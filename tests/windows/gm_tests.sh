# Tests of gm.exe, read by tools_test.sh. A picture is right when it has the pixels, and the kind of
# pixels, of the one that this machine's gm makes by the same command.

same_picture() {
  for picture in "$1" "$2"; do
    gm identify -format '%m %wx%h %q bit, %k colours\n' "$picture" >"$picture.kind"
    gm convert "$picture" rgb:"$picture.pixels"
  done
  [ "$(head -c 3 "$1.kind")" = PNG ] || fail "$1 is no PNG: $(cat "$1.kind")"
  same "$1.kind" "$2.kind"
  same "$1.pixels" "$2.pixels"
}

# The same command for both: `both convert -size 720x480 ... FOLDER/picture.png`; FOLDER is "here" for
# this machine's gm and "there" for the other. Their status must be the same: $status.
both() {
  mkdir -p here there
  status=0
  (cd here && gm "$@") 2>here.log || status=$?
  there=0
  (cd there && under_wine gm "$@") 2>there.log || there=$?
  [ "$there" = "$status" ] || {
    cat there.log >&2
    fail "status $there, here $status: gm $*"
  }
}

# A project's commands of gm for this machine and a shell, drawing into "here": `script_for_here PROJECT`.
# A colour is quoted, since a shell would take "#010101" for a comment.
script_for_here() {
  grep 'gm\.exe"' "$here/tests/authoring/golden/linux/$1/process.bat" | tr -d '\r' |
    sed -e 's|"[^"]*gm\.exe"|gm|' -e "s|\"/home/anna/.local/share/corvane|\"$work/here|g" \
      -e "s|\"/media/play|\"$media/arrow|" -e "s|\"/media/pressed|\"$media/arrow-pressed|" \
      -e "s|-fill \\([^ ]*\\)|-fill '\\1'|"
}

# All that the script of a project draws: `run_script PROJECT`. The commands are the scripts' own, for
# either system; only the folders in them are others.
run_script() {
  mkdir -p here there
  rm -f here/*.png there/*.png
  script_for_here "$1" >here.sh
  grep 'gm\.exe"' "$here/tests/authoring/golden/windows/$1/process.bat" | tr -d '\r' | tr '\\' '/' |
    sed -e 's|"[^"]*gm\.exe"|under_wine gm|' -e "s|\"C:/Program Files/Corvane|\"Z:$work/there|g" \
      -e "s|\"C:/media/play|\"Z:$media/arrow|" -e "s|\"C:/media/pressed|\"Z:$media/arrow-pressed|" \
      -e "s|-fill \\([^ ]*\\)|-fill '\\1'|" -e ':again' -e 's|\("Z:[^"]*\)/|\1\\|' -e 'tagain' >there.sh
  for script in here there; do
    while read -r command; do
      # A frame thicker than its button is refused, on both systems.
      eval "$command" >>"$script.log" 2>&1 </dev/null || echo "refused: ${command##*gm }" >>"$script.log"
    done <"$script.sh"
  done
  [ "$(grep -c . here.sh)" = "$(grep -c . there.sh)" ] || fail 'the scripts have not as many commands'
  grep -c '^refused' here.log >here.refused || true
  grep -c '^refused' there.log >there.refused || true
  same here.refused there.refused
  for picture in here/*.png; do
    same_picture "$picture" "there/${picture#here/}"
  done
}

test_gm_menu() { run_script one_menu; }
test_gm_menus_of_pal() { run_script plain_menus; }
test_gm_menus_with_bitmaps() { run_script jump_table; }

# Every colour that a button can have, and the one that stands for nothing.
test_gm_colours() {
  both convert -size 720x480 null:#010101 colours.png
  top=10
  for colour in black brown yellow orange green blue white grey magenta cyan '#010101'; do
    both mogrify +antialias -fill "$colour" -draw "roundrectangle 10,$top 300,$((top + 30)), 2,3" \
      colours.png
    [ "$status" = 0 ] || fail "no colour $colour"
    top=$((top + 40))
  done
  same_picture here/colours.png there/colours.png
  [ "$(gm identify -format %k there/colours.png)" = 11 ] || fail 'not all colours are there'
}

# A Windows bitmap of 4 x 2 pixels: `bitmap FILE BITS COMPRESSION COLOURS BYTES`; COLOURS and BYTES are
# as printf has them, of the two lowest rows and padded to 4 bytes a row.
bitmap() {
  palette=$(printf '%b' "$4" | wc -c)
  pixels=$(printf '%b' "$5" | wc -c)
  {
    printf 'BM'
    number $((54 + palette + pixels)) 4
    number 0 4
    number $((54 + palette)) 4
    number 40 4
    number 4 4
    number 2 4
    number 1 2
    number "$2" 2
    number "$3" 4
    number "$pixels" 4
    number 2835 4
    number 2835 4
    number $((palette / 4)) 4
    number 0 4
    printf '%b' "$4"
    printf '%b' "$5"
  } >"$1"
}

# A number in so many bytes, the lowest first.
number() {
  rest=$1
  for _ in $(seq "$2"); do
    printf '%b' "\\0$(printf %o $((rest % 256)))"
    rest=$((rest / 256))
  done
}

two_colours='\0000\0000\0000\0000\0377\0377\0000\0000'
four_colours="$two_colours"'\0000\0200\0377\0000\0000\0000\0377\0000'

# Pasted as they are: 1 and 4 bits a pixel, plain and run-length encoded.
test_gm_bitmaps() {
  mkdir -p here
  bitmap one.bmp 1 0 "$two_colours" '\0240\0000\0000\0000\0120\0000\0000\0000'
  bitmap four.bmp 4 0 "$four_colours" '\0001\0043\0000\0000\0062\0020\0000\0000'
  # Two runs, the end of the row; a run, two pixels as they are, the end of the picture.
  bitmap runs.bmp 4 2 "$four_colours" '\0002\0021\0002\0063\0000\0000\0001\0000\0003\0042\0000\0001'
  for kind in one four runs; do
    both convert -size 720x480 null:#010101 "$kind.png"
    both composite -geometry +299+101 "../$kind.bmp" "$kind.png" "$kind.png"
    [ "$status" = 0 ] || fail "$kind.bmp was refused"
    same_picture "here/$kind.png" "there/$kind.png"
    [ "$(gm identify -format %k "there/$kind.png")" -ge 3 ] || fail "nothing of $kind.bmp is there"
  done
}

# Another depth is refused, and the picture stays what it was.
test_gm_bitmap_of_2_bits() {
  bitmap two.bmp 2 0 "$four_colours" '\0033\0000\0000\0000\0344\0000\0000\0000'
  both convert -size 720x480 null:#010101 two.png
  cp there/two.png before.png
  both composite -geometry +10+10 ../two.bmp two.png two.png
  [ "$status" = 1 ] || fail "status $status"
  says there.log 'gm.exe composite: Unrecognized bits per pixel (../two.bmp).'
  cmp before.png there/two.png
}

test_gm_missing_bitmap() {
  both convert -size 720x480 null:#010101 menu.png
  cp there/menu.png before.png
  both composite -geometry +10+10 no-such.bmp menu.png menu.png
  [ "$status" = 1 ] || fail "status $status"
  says there.log 'gm.exe composite: Unable to open file (no-such.bmp)'
  cmp before.png there/menu.png
}

test_gm_corners_the_wrong_way_round() {
  both convert -size 720x480 null:#010101 menu.png
  both mogrify +antialias -fill yellow -draw 'roundrectangle 44,204  34,199, 2,3' menu.png
  [ "$status" = 1 ] || fail "status $status"
  says there.log 'gm.exe mogrify: Non-conforming drawing primitive definition (roundrectangle).'
}

test_gm_off_the_canvas() {
  both convert -size 720x480 null:#010101 menu.png
  both mogrify +antialias -fill yellow -draw 'roundrectangle 700,470 800,600, 2,3' menu.png
  [ "$status" = 0 ] || fail "status $status"
  both mogrify +antialias -fill cyan -draw 'roundrectangle 900,700 950,750, 2,3' menu.png
  [ "$status" = 0 ] || fail "status $status"
  same_picture here/menu.png there/menu.png
}

test_gm_names() {
  folder='a & b/Größe 50% – 日本'
  mkdir -p "$folder"
  cp "$media/arrow.bmp" "$folder/pfeil ü.bmp"
  there="$(named "$work/$folder")\\hervor gehoben ž.png"
  gm convert -size 720x576 null:#010101 here.png
  gm composite -geometry +84+162 "$media/arrow.bmp" here.png here.png
  gm mogrify +antialias -fill grey -draw 'roundrectangle 10,20  108, 22, 2,3' here.png
  under_wine gm convert -size 720x576 null:#010101 "$there"
  under_wine gm composite -geometry +84+162 "$(named "$work/$folder")\\pfeil ü.bmp" "$there" "$there"
  under_wine gm mogrify +antialias -fill grey -draw 'roundrectangle 10,20  108, 22, 2,3' "$there"
  cp "$folder/hervor gehoben ž.png" there.png
  same_picture here.png there.png
  [ "$(find "$folder" -type f | wc -l)" = 2 ] || fail 'something is left beside the picture'
}

# More than the 260 characters that Windows once ended at.
test_gm_long_names() {
  part="long$(printf ' long%.0s' 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16 17 18 19 20)"
  folder="$work/$part/$part/$part"
  mkdir -p "$folder"
  cp "$media/arrow.bmp" "$folder/"
  wide=$(named "$folder")
  [ "${#wide}" -gt 260 ] || fail 'the name is not long'
  gm convert -size 720x480 null:#010101 here.png
  gm composite -geometry +84+162 "$media/arrow.bmp" here.png here.png
  under_wine gm convert -size 720x480 null:#010101 "$wide\\menu.png"
  under_wine gm composite -geometry +84+162 "$wide\\arrow.bmp" "$wide\\menu.png" "$wide\\menu.png"
  cp "$folder/menu.png" there.png
  same_picture here.png there.png
}

# The picture of a still, by the words of the script that makes it, out of each form that the gm of the
# Windows product reads: from standard input, and to standard output.
test_gm_still() {
  gm convert -size 160x120 plasma:red-blue drawn.png
  for form in PNG JPEG BMP GIF PCX PNM; do
    gm convert drawn.png "$form:picture"
    set -- convert "$form:-[0]" -flop -rotate 90 -colorspace RGB -background black -flatten \
      -crop 100x150+10+5 +page -filter Lanczos -resize 704x480! -extent 720x480-8-0 -depth 8 -type TrueColor \
      +profile '*' -sampling-factor 2x2 -quality 100 JPEG:-
    gm "$@" <picture >here.jpg
    under_wine gm "$@" <picture >there.jpg
    for side in here there; do
      gm identify -format '%m %wx%h %q bit\n' "$side.jpg" >"$side.kind"
      gm convert "$side.jpg" "rgb:$side.pixels"
    done
    [ "$(cat there.kind)" = 'JPEG 720x480 8 bit' ] || fail "$form became $(cat there.kind)"
    same here.pixels there.pixels
  done
}
