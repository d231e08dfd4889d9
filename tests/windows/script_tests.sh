# Tests of whole scripts, read by tools_test.sh: gm's and mkisofs's commands as the authoring run writes
# them, through the program that runs them and through the system's own interpreter.

# `script_of PROJECT`: its commands of gm, for the tools in "the bin", and one of mkisofs for "a disc".
script_of() {
  wide=$(named "$work" | sed 's/\\/\\\\/g')
  images=$(named "$media" | sed 's/\\/\\\\/g')
  {
    printf '@echo off\r\n'
    grep 'gm\.exe"' "$here/tests/authoring/golden/windows/$1/process.bat" |
      sed -e "s|\"C:\\\\Program Files\\\\Corvane\\\\bin|\"$wide\\\\the bin|" \
        -e "s|\"C:\\\\Program Files\\\\Corvane|\"$wide\\\\there|g" \
        -e "s|\"C:\\\\media\\\\play|\"$images\\\\arrow|" \
        -e "s|\"C:\\\\media\\\\pressed|\"$images\\\\arrow-pressed|"
    printf '"%s" -dvd-video -V DVDVideo -udf -o "%s" "%s"\r\n' "$(named "$work/the bin/mkisofs.exe")" \
      "$(named "$work/a disc.iso")" "$(named "$work/a disc")"
    printf 'echo *process complete\r\n'
  } >process.bat
}

# `right_pictures PROJECT`: the pictures are those of this machine's gm, and there is an image.
right_pictures() {
  script_for_here "$1" >here.sh
  while read -r command; do
    eval "$command" >>here.log 2>&1 </dev/null || true
  done <here.sh
  for picture in here/*.png; do
    same_picture "$picture" "there/${picture#here/}"
  done
  isoinfo -i 'a disc.iso' -x '/VIDEO_TS/VIDEO_TS.IFO;1' >back
  same 'a disc/VIDEO_TS/VIDEO_TS.IFO' back
}

prepare_script() {
  mkdir here there 'the bin'
  conspawn=${CORVANE_CONSPAWN:-$here/build/windows/bin/conspawn.exe}
  for program in "$conspawn" "$(tool gm)" "$(tool mkisofs)"; do
    cp "$program" 'the bin/' || fail "$program is not built"
  done
  make_disc
  mv disc 'a disc'
  script_of "$1"
}

test_script_by_conspawn() {
  prepare_script jump_table
  "$wine" 'the bin/conspawn.exe' "$(named "$work/process.bat")" >conspawn.log 2>&1 </dev/null
  right_pictures jump_table
  says conspawn.log ' extents written ('
  says conspawn.log '*process complete'
}

test_script_by_cmd() {
  prepare_script one_menu
  "$wine" cmd /c "$(named "$work/process.bat")" >cmd.log 2>&1 </dev/null
  right_pictures one_menu
  says cmd.log ' extents written ('
}
