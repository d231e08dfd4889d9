#!/bin/sh
# Puts the cross-built programs and the outside tools together as they are installed
# (build/windows/bundle), and packs that into build/windows/packages:
#
#   corvane-VERSION-setup.exe                 the installer, with the tools
#   corvane-VERSION-setup-without-tools.exe   the installer of the program alone
#   corvane-VERSION-portable.zip              a folder "Corvane" to be unpacked, with the tools
#   sources/                                  the sources of all that is not ours, with our patches
#
#   packaging/windows/pack.sh                 after `cmake --build build/windows`
#
# The tools are those of tools.txt; they are built when their recipes are not in the cache yet.
# What has not changed since the last time is not packed again.
set -eu

repository=$(CDPATH='' cd -- "$(dirname -- "$0")/../.." && pwd)
here=$repository/packaging/windows
tree=$repository/build/windows
bundle=$tree/bundle
packages=$tree/packages
work=$tree/pack
recipes=$here/recipes.sh
version=$(sed -n 's/^project(corvane VERSION \([0-9.]*\).*/\1/p' "$repository/CMakeLists.txt")
full=$packages/corvane-$version-setup.exe
bare=$packages/corvane-$version-setup-without-tools.exe
portable=$packages/corvane-$version-portable.zip

fail() {
  echo "pack.sh: $*" >&2
  exit 1
}

# The names in one column of tools.txt, each once; comments begin with "#".
tools() {
  [ -f "$here/tools.txt" ] || return 0
  awk -v column="$1" '!/^#/ && NF == 2 && !seen[$column]++ { print $column }' "$here/tools.txt"
}

# Copies the licences of recipes and of all that they need into a folder; their sources tell which.
copy_licences() {
  to=$1
  shift
  rm -rf "$work/closure"
  mkdir -p "$work/closure" "$to"
  [ $# = 0 ] || "$recipes" --sources "$work/closure" "$@"
  for source in "$work"/closure/*; do
    [ -d "$source" ] || continue
    cp -R "$("$recipes" --where "$(basename -- "$source")")/licences/." "$to/"
  done
  rm -rf "$work/closure"
}

# What the cross compiler puts into every program.
copy_runtime_licences() {
  for package in gcc-mingw-w64-base mingw-w64-x86-64-dev libz-mingw-w64-dev; do
    [ -f "/usr/share/doc/$package/copyright" ] || fail "the licence of $package is not there."
    mkdir -p "$1/$package"
    cp -L "/usr/share/doc/$package/copyright" "$1/$package/"
  done
}

# strip writes the time into what it strips; that of the build, and the same program stays the same.
stage_program() {
  SOURCE_DATE_EPOCH=$(stat -c %Y "$tree/bin/corvane-author.exe") \
    cmake --install "$tree" --prefix "$work/program" --strip >/dev/null
  copy_runtime_licences "$work/program/licences"
  if [ -f "$work/program/corvane.exe" ]; then
    copy_licences "$work/program/licences" wx ffmpeg
  fi
}

# bin/tools.txt tells which tools came with the program, the uninstaller too.
stage_tools() {
  recipes_of_tools=$(tools 2)
  [ -n "$recipes_of_tools" ] || return 0
  # shellcheck disable=SC2086  # a list of names
  "$recipes" $recipes_of_tools
  # shellcheck disable=SC2086
  copy_licences "$work/tools/licences" $recipes_of_tools
  mkdir -p "$work/tools/bin"
  awk '!/^#/ && NF == 2' "$here/tools.txt" | while read -r tool recipe; do
    cp "$("$recipes" --where "$recipe")/bin/$tool" "$work/tools/bin/"
    echo "$tool, of $(cat "$("$recipes" --where "$recipe")/licences/$recipe/VERSION" 2>/dev/null || echo "$recipe")"
  done | sed 's/$/\r/' >"$work/tools/bin/tools.txt"
  for tool in $(tools 1); do
    [ -f "$work/tools/bin/$tool" ] || fail "no recipe has made $tool."
  done
  [ ! -f "$here/TOOLS.txt" ] || cp "$here/TOOLS.txt" "$work/tools/"
}

# The files of a folder, and its folders the deepest first.
files_of() {
  (cd "$1" && find . -type f | LC_ALL=C sort | sed 's/^\.\///')
}
folders_of() {
  (cd "$1" && find . -mindepth 1 -depth -type d | sed 's/^\.\///')
}

# Prints lines for the installer's compiler; "%" in the pattern stands for each name that is read,
# with backslashes.  (No shell's echo is trusted with those.)
lines_of() {
  # shellcheck disable=SC1003
  tr / '\\' | awk -v pattern="$1" '{
    at = index(pattern, "%")
    print substr(pattern, 1, at - 1) $0 substr(pattern, at + 1)
  }'
}

# Two macros: one puts the files of a folder in their places, the other removes them, and folders
# only when nothing else is in them.
macros_of() {
  printf '!macro Install%s\n' "$2"
  files_of "$1" | awk -v from="$1" '{
    folder = ""
    if (match($0, /.*\//))
      folder = "/" substr($0, 1, RLENGTH - 1)
    gsub("/", "\\", folder)
    if (folder != last || NR == 1)
      print "  SetOutPath \"$INSTDIR" folder "\""
    last = folder
    print "  File \"" from "/" $0 "\""
  }'
  printf '!macroend\n!macro Remove%s\n' "$2"
  # shellcheck disable=SC2016  # the names of the installer's variables
  files_of "$1" | lines_of '  Delete "$INSTDIR\\%"'
  # shellcheck disable=SC2016
  folders_of "$1" | lines_of '  RMDir "$INSTDIR\\%"'
  printf '!macroend\n'
}

write_macros() {
  macros_of "$work/program" Program
  macros_of "$work/tools" Tools
  printf '!macro EachProgram LOOK\n'
  # shellcheck disable=SC2016
  files_of "$bundle" | grep '\.exe$' | lines_of '  !insertmacro ${LOOK} "%"'
  printf '!macroend\n'
}

make_pictures() {
  for edge in 16 24 32 48 64 256; do
    rsvg-convert -w $edge -h $edge -o "$work/icon-$edge.png" "$repository/packaging/icons/corvane.svg"
  done
  icotool --create --output="$work/corvane.ico" "$work/icon-16.png" "$work/icon-24.png" \
    "$work/icon-32.png" "$work/icon-48.png" "$work/icon-64.png" --raw="$work/icon-256.png"
  rsvg-convert -w 112 -h 112 -o "$work/icon-112.png" "$repository/packaging/icons/corvane.svg"
  convert -size 164x314 'gradient:#dbe6f5-#ffffff' "$work/icon-112.png" -geometry +26+40 -composite \
    "BMP3:$work/side.bmp"
}

# make_installer FILE KILOBYTES [-DNAME...]
make_installer() {
  to=$1
  kilobytes=$2
  shift 2
  makensis -V2 -WX "-DVERSION=$version" "-DNUMBERS=$version.0.0" "-DKILOBYTES=$kilobytes" \
    "-DFILES=$work/files.nsh" "-DICON=$work/corvane.ico" "-DSIDE=$work/side.bmp" "-DLICENCE=$work/COPYING.txt" \
    "-DOUTPUT=$to.part" "$@" "$here/corvane.nsi" </dev/null >"$work/makensis.log" 2>&1 || {
    cat "$work/makensis.log" >&2
    fail "the installer could not be compiled."
  }
  mv "$to.part" "$to"
}

make_portable() {
  rm -rf "$work/zip" "$portable.part"
  mkdir "$work/zip"
  cp -R "$bundle" "$work/zip/Corvane"
  sed 's/$/\r/' "$here/PORTABLE.txt" >"$work/zip/Corvane/PORTABLE.txt"
  (cd "$work/zip" && zip -q -X -9 -r "$portable.part" Corvane)
  mv "$portable.part" "$portable"
  rm -rf "$work/zip"
}

# The recipes of all that is in the packages.
packed_recipes() {
  [ ! -f "$work/program/corvane.exe" ] || printf 'wx\nffmpeg\n'
  tools 2
}

copy_sources() {
  rm -rf "$packages/sources"
  mkdir -p "$packages/sources"
  names=$(packed_recipes)
  # shellcheck disable=SC2086  # a list of names
  [ -z "$names" ] || "$recipes" --sources "$packages/sources" $names
}

sizes_of() {
  du -sk --apparent-size "$@" | awk '{ sum += $1 } END { print sum }'
}

# What the packages are made of: the bundle, and the recipes, since the sources have those with them.
key() {
  {
    (cd "$bundle" && find . -type f | LC_ALL=C sort | xargs -d '\n' sha256sum)
    for name in $(packed_recipes); do
      "$recipes" --where "$name"
    done
    cat "$here/pack.sh" "$here/corvane.nsi" "$here/PORTABLE.txt" "$repository/packaging/icons/corvane.svg"
  } | sha256sum
}

[ -f "$tree/cmake_install.cmake" ] || fail "build/windows is not built (scripts/build-windows.sh does)."
[ -n "$version" ] || fail "CMakeLists.txt tells no version."
rm -rf "$work/program" "$work/tools"
mkdir -p "$work/program" "$work/tools" "$packages"
stage_program
stage_tools
# What is our own has its licence with the program.
find "$work/program" "$work/tools" -mindepth 1 -type d -empty -delete
rm -rf "$bundle"
mkdir "$bundle"
cp -R "$work/program/." "$work/tools/." "$bundle/"
same=$(cd "$bundle" && find . | tr '[:upper:]' '[:lower:]' | sort | uniq -d)
[ -z "$same" ] || fail "Windows would take two names for one: $same"

now=$(key)
if [ "$(cat "$packages/.key" 2>/dev/null)" != "$now" ] || [ ! -f "$full" ] || [ ! -f "$bare" ] ||
  [ ! -f "$portable" ] || [ ! -d "$packages/sources" ]; then
  echo "Packing Corvane $version for Windows"
  rm -f "$packages/.key"
  write_macros >"$work/files.nsh"
  make_pictures
  sed 's/$/\r/' "$repository/COPYING" >"$work/COPYING.txt"
  make_installer "$full" "$(sizes_of "$work/program" "$work/tools")" -DTOOLS
  make_installer "$bare" "$(sizes_of "$work/program")"
  make_portable
  copy_sources
  echo "$now" >"$packages/.key"
fi
(cd "$packages" && du -h --apparent-size "$(basename "$full")" "$(basename "$bare")" "$(basename "$portable")")
