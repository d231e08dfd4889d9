#!/bin/sh
# Runs a command on a display of its own: Xvfb, a window manager, a fresh home folder.
# usage: run_under_xvfb.sh COMMAND [ARGUMENT...]
# CORVANE_TEST_SCREEN sets the screen's size (default 1280x1024x24).
set -u

# Listing tests needs no display, and a build must not need one.
case "${2:-}" in --gtest_list_tests*) exec "$@" ;; esac

for tool in Xvfb openbox xdotool xprop; do
  if ! command -v "$tool" >/dev/null; then
    echo "run_under_xvfb.sh: $tool is not installed" >&2
    exit 2
  fi
done

work=$(mktemp -d) || exit 2
xvfb= openbox=
finish() {
  [ -n "$openbox" ] && kill "$openbox" 2>/dev/null
  [ -n "$xvfb" ] && kill "$xvfb" 2>/dev/null
  wait
  rm -rf "$work"
}
trap finish EXIT
trap 'exit 130' INT TERM

# With -displayfd the server picks a free number and tells it when it is ready; with -r it repeats no
# key that is held, as the keys of a robot on a busy machine are.
mkfifo "$work/display"
Xvfb -r -displayfd 3 -screen 0 "${CORVANE_TEST_SCREEN:-1280x1024x24}" -nolisten tcp -noreset \
  3>"$work/display" >"$work/xvfb.log" 2>&1 &
xvfb=$!
number=$(timeout 20 head -n 1 "$work/display")
if [ -z "$number" ]; then
  echo "run_under_xvfb.sh: Xvfb did not start" >&2
  cat "$work/xvfb.log" >&2
  exit 2
fi

mkdir -p "$work/home" "$work/runtime"
chmod 700 "$work/runtime"
export DISPLAY=":$number" HOME="$work/home" XDG_RUNTIME_DIR="$work/runtime"
export XDG_CONFIG_HOME="$work/home/config" XDG_DATA_HOME="$work/home/data"
export XDG_CACHE_HOME="$work/home/cache"
export LANG=C.UTF-8 LC_ALL=C.UTF-8 GDK_BACKEND=x11 NO_AT_BRIDGE=1 GSETTINGS_BACKEND=memory
# Nobody is to hear the tests.
export SDL_AUDIODRIVER=dummy
unset WAYLAND_DISPLAY CORVANE_HOME DBUS_SESSION_BUS_ADDRESS

openbox >"$work/openbox.log" 2>&1 &
openbox=$!
waited=0
until xdotool getactivewindow >/dev/null 2>&1 || xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null |
  grep -q 'window id'; do
  waited=$((waited + 1))
  if [ "$waited" -gt 100 ]; then
    echo "run_under_xvfb.sh: openbox did not start" >&2
    cat "$work/openbox.log" >&2
    exit 2
  fi
  sleep 0.1
done

"$@"
