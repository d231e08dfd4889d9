#!/bin/sh
# Installs, by name, the Debian packages that this repository needs; does nothing, and needs no
# network, when they are all there.
#
#   scripts/setup.sh          everything (the same as --all)
#   scripts/setup.sh --run    what ./scripts/run.sh and ./scripts/author-sample.sh need
#   scripts/setup.sh --test   that, and what ./scripts/test.sh and ./scripts/bench.sh need
#   scripts/setup.sh --windows  that of --run, and what ./scripts/build-windows.sh needs
#   scripts/setup.sh --all    all of that, and what ./scripts/test.sh --all and ./scripts/fuzz.sh need
#   scripts/setup.sh --list   prints the names of all packages, one a line, and installs nothing
set -eu

# Compilers, the toolkit, the tools that make a disc, and the libraries that read one back.
run_packages="
build-essential cmake ninja-build pkg-config ccache git
libwxgtk3.2-dev libgtk-3-dev
mjpegtools dvdauthor graphicsmagick genisoimage fontconfig
ffmpeg libavcodec-dev libavformat-dev libswscale-dev libswresample-dev libsdl2-dev
fonts-dejavu-core libdvdread-dev libdvdnav-dev
"

# GoogleTest, a display without a screen, a desktop's own programs, a browser, libxml2's reader, what
# looks at the package, what a screen reader is told, what makes films that are imported, letters of
# East Asia on menus.
test_packages="
libgtest-dev libgmock-dev libbenchmark-dev clang-format
xvfb xauth xdotool openbox x11-utils x11-apps imagemagick librsvg2-common adwaita-icon-theme
libx11-dev dpkg-dev file procps util-linux
xdg-utils desktop-file-utils shared-mime-info libglib2.0-bin libfile-mimeinfo-perl
chromium libxml2-utils lintian at-spi2-core dbus-daemon libatspi2.0-dev
mkvtoolnix lame flac vorbis-tools opus-tools x264 x265
fonts-wqy-microhei
"

# The cross-compiler, what builds sources of the distribution (dpkg-dev, patch, nasm, the autotools, Meson),
# the installer's compiler, Wine, and a display for its windows.
windows_packages="
g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 libz-mingw-w64-dev wine wine64
dpkg-dev patch nasm bison flex autoconf automake libtool meson nsis zip unzip librsvg2-bin icoutils
googletest xvfb xauth xdotool openbox x11-utils imagemagick file util-linux
"

# The other compiler, its fuzzer and its lint.
clang_packages="
clang clang-tidy libclang-rt-14-dev llvm
"

fail() {
  echo "setup.sh: $*" >&2
  exit 1
}

# Prints the packages of the list that are not installed.
missing_of() {
  # shellcheck disable=SC2086  # a list of names
  dpkg-query -W -f '${db:Status-Abbrev} ${Package}\n' $1 2>/dev/null |
    awk -v wanted="$1" '
      substr($1, 2, 1) == "i" { there[$2] = 1 }
      END { n = split(wanted, names); for (i = 1; i <= n; i++) if (!(names[i] in there)) print names[i] }'
}

# Runs a command as root: directly, or through sudo, which may ask only where somebody can answer.
as_root() {
  if [ "$(id -u)" = 0 ]; then
    "$@"
  elif ! command -v sudo >/dev/null 2>&1; then
    fail "packages must be installed, which needs root: run this as root, or install sudo."
  elif [ -t 0 ]; then
    sudo "$@"
  else
    sudo -n "$@" || fail "sudo could not run \"$*\" without asking for a password."
  fi
}

case "${1:---all}" in
  --run) packages="$run_packages" ;;
  --windows) packages="$run_packages $windows_packages" ;;
  --test) packages="$run_packages $test_packages" ;;
  --all) packages="$run_packages $test_packages $clang_packages $windows_packages" ;;
  --list)
    # shellcheck disable=SC2086
    printf '%s\n' $run_packages $test_packages $clang_packages $windows_packages | sort -u
    exit 0
    ;;
  *) fail "unknown argument \"$1\" (--run, --test, --windows, --all or --list)." ;;
esac

if ! command -v dpkg-query >/dev/null 2>&1 || ! command -v apt-get >/dev/null 2>&1; then
  echo "setup.sh: this is not Debian (no apt-get).  Install what these Debian 12 packages hold:" >&2
  # shellcheck disable=SC2086
  echo $packages >&2
  exit 1
fi

missing=$(missing_of "$packages")
[ -n "$missing" ] || exit 0

# shellcheck disable=SC2086
echo "setup.sh: installing" $missing
apt="env DEBIAN_FRONTEND=noninteractive apt-get -q -y -o Dpkg::Use-Pty=0 -o Acquire::Retries=3"
# shellcheck disable=SC2086
as_root $apt update </dev/null || fail "apt-get update failed: is there a network?"
# shellcheck disable=SC2086
as_root $apt install --no-install-recommends $missing </dev/null ||
  fail "apt-get could not install the packages above (they are those of Debian 12, \"bookworm\")."

missing=$(missing_of "$packages")
# shellcheck disable=SC2086
[ -z "$missing" ] || fail "still not installed:" $missing
