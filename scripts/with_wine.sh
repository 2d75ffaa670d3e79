#!/bin/sh
# Runs a command, such as ctest, with one virtual display and one Wine server for all the Windows
# programs it starts.
#   scripts/with_wine.sh COMMAND [ARGUMENT]...
set -eu

if [ "${VELLUMTIDE_WINE_DISPLAY:-}" = "" ]; then
  command -v xvfb-run >/dev/null && command -v wine >/dev/null || {
    echo "vellumtide: Wine or xvfb-run is missing; run scripts/install_packages.sh windows" >&2
    exit 127
  }
  export VELLUMTIDE_WINE_DISPLAY=own
  exec xvfb-run -a "$0" "$@"
fi

here=$(cd "$(dirname "$0")/.." && pwd)
export WINEPREFIX="${WINEPREFIX:-$here/build-windows/wine}"
mkdir -p "$WINEPREFIX"
stop_wine() {
  WINEDEBUG=-all wineserver -k || true
  WINEDEBUG=-all wineserver -w || true
}
# A server left over from an interrupted run would keep the display it was started with.
stop_wine
WINEDEBUG=-all wineserver -p
trap stop_wine EXIT
# Making the Windows folder takes seconds and must not happen twice at once.
"$here/scripts/run_on_wine.sh" wineboot -i >/dev/null 2>&1 || {
  echo "vellumtide: Wine cannot make its folder $WINEPREFIX" >&2
  exit 127
}
# The first program that asks for a window starts Wine's desktop, which keeps that program's output
# open after it has ended. So the desktop is started here and held by a window until the end.
"$here/scripts/run_on_wine.sh" rundll32.exe user32.dll,GetDesktopWindow >/dev/null 2>&1 || true
"$here/scripts/run_on_wine.sh" explorer.exe >/dev/null 2>&1 </dev/null &
"$@"
