#!/bin/bash
# The installer, its uninstaller and the portable ZIP, as packaging/windows/pack.sh left them, tried
# under Wine.
#
#   tests/windows/installer_test.sh CASE     one of the functions below "Cases"
#
# $CORVANE_TREE is the build tree (default: build/windows).  The entries of an installed Corvane are
# one for each user, so one case runs at a time.
set -eu -o pipefail

here=$(cd -- "$(dirname -- "$0")" && pwd)
repository=$(cd -- "$here/../.." && pwd)
tree=${CORVANE_TREE:-$repository/build/windows}
packages=$tree/packages
bundle=$tree/bundle
prefix=${CORVANE_WINEPREFIX:-$repository/build/wine}
version=$(sed -n 's/^project(corvane VERSION \([0-9.]*\).*/\1/p' "$repository/CMakeLists.txt")
full=$packages/corvane-$version-setup.exe
bare=$packages/corvane-$version-setup-without-tools.exe
portable=$packages/corvane-$version-portable.zip

entry='HKCU\Software\Microsoft\Windows\CurrentVersion\Uninstall\Corvane'
classes='HKCU\Software\Classes'
settings='HKCU\Software\Corvane\preferences'

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
name='Corvane ü & Söhne 字'
folder=$work/$name

fail() {
  echo "FAILED: $*" >&2
  exit 1
}

wine() { "$here/wine.sh" "$@" </dev/null 7>&-; }

# As Windows names a file of this system.
windows_path() { printf 'Z:%s' "${1//\//\\}"; }

# The installer takes the folder as the rest of its command line, without quotes.
install_with() {
  local setup=$1 status=0
  # shellcheck disable=SC2046  # split at blanks, which Wine puts between the words again
  wine "$setup" /S $(printf '/D=%s' "$(windows_path "$folder")") || status=$?
  return $status
}

# Ended when the copy of it that does the work has removed the original.
uninstall() {
  wine "$folder/uninstall.exe" /S
  for _ in $(seq 300); do
    [ -e "$folder/uninstall.exe" ] || return 0
    sleep 0.1
  done
  fail "the uninstaller does not end"
}

# A key with all below it, as a registry script says it; nothing when there is none.
registry() {
  rm -f "$work/exported.reg"
  wine reg export "$1" "$(windows_path "$work/exported.reg")" /y >/dev/null 2>&1 || return 0
  iconv -f UTF-16 -t UTF-8 "$work/exported.reg" | tr -d '\r'
}

# expect_line TEXT LINE: one whole line of the text.
expect_line() { grep -qxF -- "$2" <<<"$1" || fail "no line $2 in:"$'\n'"$1"; }

expect_there() { [ -e "$1" ] || fail "$1 is not there"; }
expect_gone() { [ ! -e "$1" ] || fail "$1 is still there"; }

# The folder as registry scripts and commands quote it.
in_script() { windows_path "$folder" | sed 's/\\/\\\\/g'; }

menu_folder() { find "$prefix/drive_c/users" -type d -path '*/Start Menu/Programs/Corvane'; }

# Without what an earlier case that failed may have left.
clean() {
  for key in "$entry" "$classes\\.cvp" "$classes\\cvp_auto_file"; do
    wine reg delete "$key" /f >/dev/null 2>&1 || true
  done
  find "$prefix/drive_c/users" -path '*/Start Menu/Programs/Corvane*' -delete 2>/dev/null || true
}

# A program that waits for input keeps Wine up: it ends when nothing runs, and starting it anew for
# each command would take most of the time.
keep_wine_up() {
  mkfifo "$work/quiet"
  "$here/wine.sh" cmd.exe <"$work/quiet" >/dev/null 2>&1 &
  exec 7>"$work/quiet"
}
end() {
  clean
  exec 7>&-
  wait
  rm -rf "$work"
}

expect_association() {
  local kind
  kind=$(registry "$classes\\cvp_auto_file")
  expect_line "$(registry "$classes\\.cvp")" '@="cvp_auto_file"'
  expect_line "$kind" '@="corvane project"'
  expect_line "$kind" '"EditFlags"=dword:00000000'
  expect_line "$kind" '"BrowserFlags"=dword:00000008'
  expect_line "$kind" "@=\"$(in_script)\\\\corvane.exe,0\""
  expect_line "$kind" '@=""'
  expect_line "$kind" "@=\"\\\"$(in_script)\\\\corvane.exe\\\" \\\"%1\\\"\""
}

# Puts the stand-in of a tool, which does not end by itself, into the installed folder's bin, and
# starts it as a run does.
start_something() {
  cp "$tree/bin/test_apps_tool.exe" "$folder/bin/waiting.exe"
  echo wait >"$folder/bin/behaviour"
  printf '"%s"\r\n' "$(windows_path "$folder/bin/waiting.exe")" >"$folder/process.bat"
  wine "$folder/bin/conspawn.exe" "$(windows_path "$folder/process.bat")" >/dev/null 2>&1 7>&- &
  something=$!
  for _ in $(seq 300); do
    [ -e "$folder/bin/calls" ] && return 0
    sleep 0.1
  done
  fail "the stand-in does not start"
}
end_something() {
  rm -f "$folder/bin/behaviour"
  wait "$something"
  rm -f "$folder/bin/waiting.exe" "$folder/bin/calls"
}

# Cases -------------------------------------------------------------------------------------------

puts_everything_in_its_place() {
  install_with "$full"
  diff -r --exclude=uninstall.exe "$bundle" "$folder" || fail "other files than in the bundle"
  local values
  values=$(registry "$entry")
  expect_line "$values" "\"DisplayName\"=\"Corvane $version\""
  expect_line "$values" "\"DisplayVersion\"=\"$version\""
  expect_line "$values" '"Publisher"="The Corvane developers"'
  expect_line "$values" "\"DisplayIcon\"=\"$(in_script)\\\\corvane.exe,0\""
  expect_line "$values" "\"InstallLocation\"=\"$(in_script)\""
  expect_line "$values" "\"UninstallString\"=\"\\\"$(in_script)\\\\uninstall.exe\\\"\""
  expect_line "$values" "\"QuietUninstallString\"=\"\\\"$(in_script)\\\\uninstall.exe\\\" /S\""
  local told installed
  told=$((16#$(sed -n 's/^"EstimatedSize"=dword://p' <<<"$values")))
  installed=$(du -sk --apparent-size "$folder" | cut -f 1)
  [ $((told * 10)) -gt $((installed * 8)) ] && [ $((told * 10)) -lt $((installed * 12)) ] ||
    fail "told to be of $told KB, but of $installed"
  expect_association
  expect_there "$(menu_folder)/Corvane.lnk"
  expect_there "$(menu_folder)/Uninstall Corvane.lnk"
  expect_gone "$prefix/drive_c/users/$(id -un)/Desktop/Corvane.lnk"
  # In UTF-16; without its zeros the ASCII parts of the path can be found.
  tr -d '\0' <"$(menu_folder)/Corvane.lnk" >"$work/shortcut"
  grep -qaF "$(basename "$work")" "$work/shortcut" && grep -qaF 'corvane.exe' "$work/shortcut" ||
    fail "the shortcut leads elsewhere"
  [ "$(wine "$folder/corvane-author.exe" --version | tr -d '\r')" = \
    'corvane-author (Corvane 0.997 - 1/2/2005)' ] || fail "corvane-author.exe does not start"
}

# What the sources say that the program folder holds.
names_in_the_program_folder() {
  sed -n '/^\/\/ In the program folder/,/^\/\/ In the output folder/s/^inline constexpr const char\*.*= "\([^"]*\.[a-z]*\)";$/\1/p' \
    "$repository/src/runner/run_files.h"
}

removes_itself_and_what_the_program_made() {
  install_with "$full"
  local made names
  names=$(names_in_the_program_folder)
  [ "$(wc -w <<<"$names")" -gt 10 ] || fail "the sources name too few files: $names"
  for made in $names menu1.xml menu99.xml sub1-1.xml sub12-32.xml highlight1.png select99.png fake.png \
    fake.xml extension.reg removeextension.reg CorvaneLOG.txt.part CorvaneIMPORT.txt.part corvane.lock; do
    echo made >"$folder/$made"
  done
  mkdir "$folder/kept"
  local menu
  menu=$(menu_folder)
  # From within its folder, as the file manager starts it.
  cd "$folder"
  wine uninstall.exe /S
  cd /
  for _ in $(seq 300); do [ -e "$folder/uninstall.exe" ] || break; sleep 0.1; done
  for _ in $(seq 50); do [ -e "$folder" ] || break; sleep 0.1; done
  [ ! -e "$folder" ] || fail "left: $(find "$folder")"
  expect_gone "$menu"
  [ -z "$(registry "$entry")" ] || fail "the entry is still there"
  [ -z "$(registry "$classes\\.cvp")" ] || fail "the association is still there"
  [ -z "$(registry "$classes\\cvp_auto_file")" ] || fail "the kind of file is still there"
}

leaves_projects_and_files_of_others() {
  install_with "$full"
  mkdir -p "$folder/disc/VIDEO_TS" "$folder/licences/mine" "$folder/kept/1"
  echo mine >"$folder/film.cvp"
  echo mine >"$folder/menu.xml"
  echo mine >"$folder/menu1a.xml"
  echo mine >"$folder/sub1-notes.xml"
  echo mine >"$folder/cover.png"
  echo mine >"$folder/bin/of others.exe"
  echo mine >"$folder/disc/VIDEO_TS/VIDEO_TS.IFO"
  echo mine >"$folder/licences/mine/text"
  echo mine >"$folder/kept/1/project"
  uninstall
  sleep 1
  local left
  left=$(cd "$folder" && find . -type f | LC_ALL=C sort | tr '\n' '|')
  [ "$left" = './bin/of others.exe|./cover.png|./disc/VIDEO_TS/VIDEO_TS.IFO|./film.cvp|./kept/1/project|./licences/mine/text|./menu.xml|./menu1a.xml|./sub1-notes.xml|' ] ||
    fail "left: $left"
  grep -rL mine "$folder" | grep . && fail "these have changed"
  [ -z "$(registry "$entry")" ] || fail "the entry is still there"
}

leaves_an_association_that_another_program_has_taken() {
  install_with "$bare"
  wine reg add "$classes\\.cvp" /ve /d other.document /f >/dev/null
  wine reg add "$classes\\other.document\\shell\\open\\command" /ve /d 'other.exe "%1"' /f >/dev/null
  install_with "$bare"
  expect_line "$(registry "$classes\\.cvp")" '@="other.document"'
  uninstall
  expect_line "$(registry "$classes\\.cvp")" '@="other.document"'
  expect_line "$(registry "$classes\\other.document")" '@="other.exe \"%1\""'
  [ -z "$(registry "$classes\\cvp_auto_file")" ] || fail "the kind of file is still there"
  wine reg delete "$classes\\other.document" /f >/dev/null
}

leaves_an_association_with_a_corvane_in_another_folder() {
  install_with "$bare"
  wine reg add "$classes\\cvp_auto_file\\shell\\open\\command" /ve \
    /d '"C:\elsewhere\corvane.exe" %1' /f >/dev/null
  uninstall
  expect_line "$(registry "$classes\\.cvp")" '@="cvp_auto_file"'
  expect_line "$(registry "$classes\\cvp_auto_file")" '@="\"C:\\elsewhere\\corvane.exe\" %1"'
}

# An earlier version that had a file more, made as the present one is.
earlier_setup() {
  mkdir "$work/earlier"
  echo old >"$work/earlier/old.txt"
  sed -e "/^!macro InstallProgram/a SetOutPath \"\$INSTDIR\"\\nFile \"$work/earlier/old.txt\"" \
    -e '/^!macro RemoveProgram/a Delete "$INSTDIR\\old.txt"' "$tree/pack/files.nsh" >"$work/files.nsh"
  makensis -V1 -DVERSION=0.9 -DNUMBERS=0.9.0.0 -DKILOBYTES=1 "-DFILES=$work/files.nsh" \
    "-DICON=$tree/pack/corvane.ico" "-DSIDE=$tree/pack/side.bmp" \
    "-DLICENCE=$tree/pack/COPYING.txt" \
    "-DOUTPUT=$work/earlier/setup.exe" "$@" "$repository/packaging/windows/corvane.nsi" >&2
  echo "$work/earlier/setup.exe"
}

upgrades_and_keeps_settings_projects_and_the_log() {
  install_with "$(earlier_setup -DTOOLS)"
  expect_there "$folder/old.txt"
  expect_line "$(registry "$entry")" '"DisplayVersion"="0.9"'
  echo mine >"$folder/film.cvp"
  echo made >"$folder/CorvaneLOG.txt"
  wine reg add "$settings" /v dvdregion /d PAL /f >/dev/null
  # Where the earlier one stands, without being told.
  wine "$full" /S
  expect_gone "$folder/old.txt"
  diff -r --exclude=uninstall.exe --exclude=film.cvp --exclude=CorvaneLOG.txt "$bundle" "$folder" ||
    fail "other files than in the bundle"
  expect_line "$(registry "$entry")" "\"DisplayVersion\"=\"$version\""
  expect_line "$(registry "$settings")" '"dvdregion"="PAL"'
  expect_there "$folder/film.cvp"
  expect_there "$folder/CorvaneLOG.txt"
  expect_association
  # The installer without tools leaves those that the other one has brought.
  install_with "$bare"
  diff -r --exclude=uninstall.exe --exclude=film.cvp --exclude=CorvaneLOG.txt "$bundle" "$folder" ||
    fail "the tools are gone"
  uninstall
  sleep 1
  [ "$(cd "$folder" && find . -type f)" = ./film.cvp ] || fail "left: $(find "$folder")"
  expect_line "$(registry "$settings")" '"dvdregion"="PAL"'
  # What is left there is no reason not to come back.
  install_with "$bare"
  expect_there "$folder/corvane-author.exe"
}

refuses_a_folder_with_files_that_the_program_would_remove() {
  mkdir -p "$folder"
  echo mine >"$folder/report.xml"
  local status=0
  install_with "$bare" || status=$?
  [ $status = 4 ] || fail "ended with $status"
  [ "$(cd "$folder" && find . -type f)" = ./report.xml ] || fail "something was installed"
  [ -z "$(registry "$entry")" ] || fail "an entry was made"
}

refuses_while_the_program_runs() {
  install_with "$bare"
  start_something
  local status=0
  install_with "$bare" || status=$?
  [ $status = 3 ] || fail "installing ended with $status"
  diff "$bundle/bin/conspawn.exe" "$folder/bin/conspawn.exe"
  # From its own folder and not as a copy, so that its end can be waited for.
  status=0
  # shellcheck disable=SC2046  # as the installer takes a folder
  wine "$folder/uninstall.exe" /S $(printf '_?=%s' "$(windows_path "$folder")") || status=$?
  [ $status = 3 ] || fail "uninstalling ended with $status"
  expect_there "$folder/corvane-author.exe"
  [ -n "$(registry "$entry")" ] || fail "the entry is gone"
  end_something
  install_with "$bare"
  uninstall
}

without_tools_is_below_fifteen_megabytes() {
  local size
  size=$(stat -c %s "$bare")
  echo "$size bytes"
  [ "$size" -lt 15000000 ] || fail "$size bytes"
}

with_tools_is_at_most_twenty_five_megabytes() {
  local size
  size=$(stat -c %s "$full")
  echo "$size bytes"
  [ "$size" -le 25000000 ] || fail "$size bytes"
}

without_tools_installs_the_program_alone() {
  install_with "$bare"
  (cd "$bundle" && find . -type f -name '*.exe' ! -path './bin/*'; echo ./bin/conspawn.exe) |
    LC_ALL=C sort >"$work/wanted"
  (cd "$folder" && find . -type f -name '*.exe' ! -name uninstall.exe) | LC_ALL=C sort |
    diff "$work/wanted" - || fail "other programs"
}

the_zip_holds_the_same_files() {
  unzip -q "$portable" -d "$work/zip"
  [ "$(ls "$work/zip")" = Corvane ] || fail "more than one folder"
  diff -r --exclude=PORTABLE.txt "$bundle" "$work/zip/Corvane" || fail "other files than in the bundle"
  expect_there "$work/zip/Corvane/PORTABLE.txt"
  [ "$(wine "$work/zip/Corvane/corvane-author.exe" --version | tr -d '\r')" = \
    'corvane-author (Corvane 0.997 - 1/2/2005)' ] || fail "corvane-author.exe does not start"
}

for package in "$full" "$bare" "$portable"; do
  [ -f "$package" ] || fail "$package is not there: packaging/windows/pack.sh makes it"
done
[ "$(type -t "${1:-}")" = function ] || fail "there is no case \"${1:-}\""
keep_wine_up
trap end EXIT
clean
"$1"
echo "passed: $1"
