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
# Making the Windows folder takes seconds and must not happen twice at once.
"$here/scripts/run_on_wine.sh" wineboot -i >/dev/null 2>&1
trap 'WINEDEBUG=-all wineserver -k 2>/dev/null || true' EXIT
WINEDEBUG=-all wineserver -p
"$@"
