#!/bin/sh
# Cross-builds, from the distribution's source packages, what the Windows programs link and the
# outside tools that they run.  Each thing is a recipe (recipes/NAME.sh) and is built once into a
# folder of the cache; it is built anew when its recipe, a patch of it or something that it needs
# changes.  Needs what `scripts/setup.sh --windows` installs, and the network for what is not there.
#
#   packaging/windows/recipes.sh NAME...           builds these and all that they need
#   packaging/windows/recipes.sh --where NAME      prints the folder that NAME is (or will be) in
#   packaging/windows/recipes.sh --sources FOLDER NAME...
#                                                  copies the source packages that these and all
#                                                  that they need were built from, with our patches
#
# The cache is $CORVANE_CACHE, or corvane in $XDG_CACHE_HOME (~/.cache).  $CORVANE_JOBS: programs run
# at once (default: the number of processors).
#
# A recipe is read by the shell and sets
#   source      the Debian source package; empty when all of the source is our own
#   upstream    its upstream version as in "2.1.0": any Debian revision of it is taken, newest first
#   pristine    "yes": upstream's own source, without Debian's changes to it (optional)
#   needs       names of recipes that it is built upon (optional)
#   licences    files of the source to keep beside what is built (optional)
#   files       the folder, from the top of this repository, of our files that are put into the source
#               (optional; packaging/windows/files/NAME if there is one)
#   build       a function: run in the source, patched by Debian and by patches/NAME/*.patch, with
#               our files put into it; installs into $prefix.  $host is the cross compilers' prefix,
#               $jobs the number of programs; `where NAME` gives a needed thing's folder;
#               PKG_CONFIG_LIBDIR, CPPFLAGS and LDFLAGS lead to all of them, and CC, CXX, AR, RANLIB,
#               STRIP and WINDRES are set.
set -eu

rooms=$(CDPATH='' cd -- "$(dirname -- "$0")" && pwd)
cache=${CORVANE_CACHE:-${XDG_CACHE_HOME:-$HOME/.cache}/corvane}
jobs=${CORVANE_JOBS:-$(nproc)}
host=x86_64-w64-mingw32

fail() {
  echo "recipes.sh: $*" >&2
  exit 1
}

# Prints what the recipe says of itself: `told NAME needs`.
told() (
  needs='' licences='' source='' upstream='' pristine='' files=''
  # shellcheck disable=SC1090
  . "$rooms/recipes/$1.sh"
  eval "printf '%s' \"\$$2\""
)

known() {
  [ -f "$rooms/recipes/$1.sh" ] || fail "there is no recipe \"$1\"."
}

# The folder of our files for a recipe; it need not be there.
files_of() {
  files_told=$(told "$1" files)
  echo "$rooms/../../${files_told:-packaging/windows/files/$1}"
}

# A recipe's key: what it is made by, and the keys of what it needs.
key() (
  {
    cat "$rooms/recipes.sh" "$rooms/recipes/$1.sh"
    for folder in "$rooms/patches/$1" "$(files_of "$1")"; do
      [ ! -d "$folder" ] || (cd "$folder" && find . -type f | LC_ALL=C sort | xargs sha256sum)
    done
    for need in $(told "$1" needs); do
      key "$need"
    done
  } | sha256sum | cut -c 1-12
)

where() {
  known "$1"
  echo "$cache/windows/$1-$(told "$1" upstream)-$(key "$1")"
}

# All that a recipe needs, itself last, each once and after what it needs itself.
closure() {
  for name in "$@"; do
    known "$name"
    # shellcheck disable=SC2046
    closure $(told "$name" needs)
    echo "$name"
  done | awk '!seen[$0]++'
}

# An apt of our own: the machine's own places, asked for sources, without touching its lists.
apt_folder=$cache/apt
with_apt() {
  tool=$1
  shift
  "$tool" -q -o Dir::Etc::sourcelist="$apt_folder/sources.list" \
    -o Dir::Etc::sourceparts="$apt_folder/sources.d" -o Dir::State::lists="$apt_folder/lists" \
    -o Dir::Cache="$apt_folder/cache" -o APT::Sandbox::User=root -o Acquire::Retries=3 "$@"
}

# Asks for the lists of source packages; "again" when those from last time are out of date.
prepare_apt() {
  mkdir -p "$apt_folder"
  # Two recipes may begin at once.
  exec 8>"$apt_folder/.lock"
  flock 8
  if [ "${1:-}" != again ] && [ -e "$apt_folder/.asked" ]; then
    exec 8>&-
    return 0
  fi
  rm -rf "$apt_folder/lists" "$apt_folder/cache" "$apt_folder/sources.d" "$apt_folder/.asked"
  mkdir -p "$apt_folder/lists/partial" "$apt_folder/cache/archives/partial" "$apt_folder/sources.d"
  : >"$apt_folder/sources.list"
  for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
    [ -f "$list" ] || continue
    sed -n 's/^[[:space:]]*deb[[:space:]]/deb-src /p' "$list" >>"$apt_folder/sources.list"
  done
  for list in /etc/apt/sources.list.d/*.sources; do
    [ -f "$list" ] || continue
    sed 's/^Types:.*/Types: deb-src/' "$list" >"$apt_folder/sources.d/$(basename -- "$list")"
  done
  with_apt apt-get update >"$apt_folder/update.log" 2>&1 </dev/null || {
    cat "$apt_folder/update.log" >&2
    fail "the lists of source packages could not be fetched: is there a network?"
  }
  : >"$apt_folder/.asked"
  exec 8>&-
}

# Fetches one version of a source package, or only what is upstream's in it.
fetch_version() {
  if [ "$pristine" = yes ]; then
    with_apt apt-get source --download-only --dsc-only "$1" &&
      with_apt apt-get source --download-only --tar-only "$1"
  else
    with_apt apt-get source --download-only "$1"
  fi
}

# Fetches a source package into the current folder: the newest revision of the upstream version
# that is still there.  (A list may name one whose file is gone already.)
fetch_newest() {
  versions=$(with_apt apt-cache showsrc "$1" 2>/dev/null |
    awk -v name="$1" '/^Package: /{ ours = $2 == name } /^Version: /{ if (ours) print $2 }' |
    sort -u -V -r)
  for version in $versions; do
    bare=${version#*:}
    case $bare in
      "$2"[-+~.]* | "$2") ;;
      *) continue ;;
    esac
    if fetch_version "$1=$version" >fetch.log 2>&1 </dev/null; then
      return 0
    fi
    rm -f ./*.dsc
  done
  return 1
}

# The same; asks for new lists when those of last time lead nowhere.
fetch() {
  prepare_apt
  fetch_newest "$1" "$2" && return 0
  prepare_apt again
  fetch_newest "$1" "$2" && return 0
  cat fetch.log >&2 2>/dev/null || true
  fail "no version $2 of the source package \"$1\" could be fetched (there are:" $versions")."
}

# Makes the folder "unpacked" of a source package's files.
unpack() {
  if [ "$pristine" = yes ]; then
    mkdir unpacked
    tar -x -f "$(find "$1" -name '*.orig.tar.*' ! -name '*.asc')" -C unpacked --strip-components=1
  else
    dpkg-source --no-check -x "$1"/*.dsc unpacked
  fi
}

build_one() (
  name=$1
  prefix=$(where "$name")
  # Two runs may want the same thing at once.
  exec 9>"$cache/windows/.$name.lock"
  flock 9
  [ ! -e "$prefix/.built" ] || exit 0
  echo "Building $name for Windows"
  rm -rf "$prefix"
  mkdir -p "$prefix"
  work=$(mktemp -d)
  trap 'rm -rf "$work"' EXIT
  trap 'exit 130' INT TERM
  log=$prefix/build.log

  needs='' licences='' source='' upstream='' pristine=''
  # shellcheck disable=SC1090
  . "$rooms/recipes/$name.sh"
  cd "$work"
  if [ -n "$source" ]; then
    mkdir "$prefix/source"
    (cd "$prefix/source" && fetch "$source" "$upstream")
    unpack "$prefix/source" >"$log" 2>&1 || {
      cat "$log" >&2
      fail "the source of $name could not be unpacked."
    }
  else
    mkdir unpacked
  fi
  cd unpacked
  ours=$(files_of "$name")
  [ ! -d "$ours" ] || cp -R "$ours/." .
  for patch in "$rooms/patches/$name"/*.patch; do
    [ -f "$patch" ] || continue
    patch -p1 <"$patch" >>"$log" 2>&1 || fail "$(basename -- "$patch") does not apply to $name."
  done

  PKG_CONFIG_PATH='' PKG_CONFIG_LIBDIR='' CPPFLAGS='' LDFLAGS='-static -s'
  # shellcheck disable=SC2086  # a list of names
  needed=$(closure $needs)
  for need in $needed; do
    folder=$(where "$need")
    PKG_CONFIG_LIBDIR=$PKG_CONFIG_LIBDIR:$folder/lib/pkgconfig
    CPPFLAGS="$CPPFLAGS -I$folder/include"
    LDFLAGS="-L$folder/lib $LDFLAGS"
  done
  # The cross compilers' own headers and libraries (zlib) come with the distribution.
  CC=$host-gcc-posix CXX=$host-g++-posix AR=$host-ar RANLIB=$host-ranlib
  STRIP=$host-strip WINDRES=$host-windres CFLAGS='-O2' CXXFLAGS='-O2'
  ! command -v ccache >/dev/null 2>&1 || CC="ccache $CC" CXX="ccache $CXX"
  export CC CXX AR RANLIB STRIP WINDRES CFLAGS CXXFLAGS CPPFLAGS LDFLAGS PKG_CONFIG_PATH PKG_CONFIG_LIBDIR
  unset CMAKE_PREFIX_PATH LIBRARY_PATH CPATH

  # In the background, since a shell whose status is asked for does not end at what fails in it.
  (set -eux; build) >>"$log" 2>&1 </dev/null &
  wait $! || {
    tail -n 60 "$log" >&2
    fail "building $name failed; all of it is in $log"
  }
  mkdir -p "$prefix/licences/$name"
  for licence in $licences; do
    cp "$licence" "$prefix/licences/$name/" || fail "$name has no file $licence."
  done
  [ -z "$source" ] || basename "$prefix"/source/*.dsc .dsc | sed 's/_/ /' >"$prefix/licences/$name/VERSION"
  : >"$prefix/.built"
)

case "${1:-}" in
  '')
    echo "usage: recipes.sh NAME... | --where NAME | --sources FOLDER NAME..." >&2
    exit 2
    ;;
  --where)
    where "$2"
    ;;
  --sources)
    folder=$2
    shift 2
    for name in $(closure "$@"); do
      mkdir -p "$folder/$name"
      [ ! -d "$(where "$name")/source" ] ||
        find "$(where "$name")/source" -type f ! -name '*.log' -exec cp {} "$folder/$name/" \;
      cp "$rooms/recipes/$name.sh" "$folder/$name/"
      [ ! -d "$rooms/patches/$name" ] || cp -R "$rooms/patches/$name" "$folder/$name/patches"
      ours=$(files_of "$name")
      [ ! -d "$ours" ] || cp -R "$ours" "$folder/$name/files"
    done
    ;;
  *)
    mkdir -p "$cache/windows"
    names=$(closure "$@")
    for name in $names; do
      build_one "$name"
    done
    ;;
esac
