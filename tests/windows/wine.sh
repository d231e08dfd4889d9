#!/bin/sh
# Runs a Windows program under Wine the way tests want it: in a Wine folder of the build's own,
# without first-start questions, crash dialogs, debug chatter or a display.
#
#   tests/windows/wine.sh PROGRAM.exe [ARGUMENT...]
#   tests/windows/wine.sh --prepare     makes the Wine folder (seconds; nothing when it is there)
#   tests/windows/wine.sh --shutdown    ends the folder's Wine server and what still runs under it
#
# The folder is $CORVANE_WINEPREFIX, or build/wine of the repository. With CORVANE_WINE_UTF8=1 it is
# build/wine-utf8, a Windows whose own code pages are UTF-8: Wine's cmd.exe reads scripts in the
# system's code page, where that of Windows takes the console's, which "chcp 65001" sets.
#
# With CORVANE_WINE_DISPLAY=1 it is build/wine-display, where programs have the display of the caller:
# Wine would give none to later programs of a folder whose first had none.
#
# Drive D: of each is an empty folder.
set -eu

repository=$(CDPATH='' cd -- "$(dirname -- "$0")/../.." && pwd)
utf8=${CORVANE_WINE_UTF8:+-utf8}
display=${CORVANE_WINE_DISPLAY:+-display}
WINEPREFIX=${CORVANE_WINEPREFIX:-$repository/build/wine$utf8$display}
WINEDEBUG=-all
WINEARCH=win64
# No .NET, no HTML engine, no debugger that would ask, no desktop entries for installed programs.
WINEDLLOVERRIDES='mscoree,mshtml=;winedbg.exe=d;winemenubuilder.exe=d'
# Wine takes the bytes of file names by the locale; without one it has no names but ASCII ones.
LC_ALL=C.UTF-8
export WINEPREFIX WINEDEBUG WINEARCH WINEDLLOVERRIDES LC_ALL
[ -n "$display" ] || unset DISPLAY
unset WAYLAND_DISPLAY
if [ -n "$utf8" ]; then
  # Of a country whose language no 8-bit code page can write, Wine takes UTF-8. The name is all it
  # looks at, so the C locale under that name will do.
  LOCPATH=$WINEPREFIX/locale
  LC_ALL=hi_IN.UTF-8
  export LOCPATH
fi

wine=$(command -v wine64 || command -v /usr/lib/wine/wine64 || command -v wine) || {
  echo "wine.sh: Wine is not installed (scripts/setup.sh installs it)." >&2
  exit 1
}
server=$(command -v wineserver || command -v /usr/lib/wine/wineserver64 || command -v wineserver-stable || echo wineserver)

prepare() {
  [ ! -e "$WINEPREFIX/.ready" ] || return 0
  mkdir -p "$WINEPREFIX/drive_d" "$WINEPREFIX/locale"
  ln -sfn /usr/lib/locale/C.utf8 "$WINEPREFIX/locale/hi_IN.UTF-8"
  DISPLAY='' "$wine" wineboot -i >/dev/null 2>&1 </dev/null || {
    echo "wine.sh: wineboot could not make $WINEPREFIX." >&2
    exit 1
  }
  ln -sfn ../drive_d "$WINEPREFIX/dosdevices/d:"
  # The programs are made for Windows 10 and later; Wine's own default is an older one.
  DISPLAY='' "$wine" reg add 'HKCU\Software\Wine' /v Version /d win10 /f >/dev/null 2>&1 </dev/null
  "$server" -w
  : >"$WINEPREFIX/.ready"
}

case "${1:-}" in
  --prepare) prepare ;;
  --shutdown) "$server" -k || true ;;
  '')
    echo "usage: wine.sh PROGRAM.exe [ARGUMENT...] | --prepare | --shutdown" >&2
    exit 2
    ;;
  *)
    prepare
    exec "$wine" "$@"
    ;;
esac
