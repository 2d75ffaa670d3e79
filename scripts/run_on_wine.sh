#!/bin/sh
# Runs one Windows program on Wine, with GL on the software rasteriser. CTest starts the tests of
# the Windows build through it.
#   scripts/run_on_wine.sh PROGRAM.exe [ARGUMENT]...
# Without a display each call starts a virtual one; scripts/with_wine.sh gives many calls one.
set -eu

if [ -z "${DISPLAY:-}" ]; then
  command -v xvfb-run >/dev/null && command -v wine >/dev/null || {
    echo "vellumtide: Wine or xvfb-run is missing; run scripts/install_packages.sh windows" >&2
    exit 127
  }
  exec xvfb-run -a "$0" "$@"
fi

here=$(cd "$(dirname "$0")/.." && pwd)
# A Windows of the build's own; the first program to start makes it.
export WINEPREFIX="${WINEPREFIX:-$here/build-windows/wine}"
export WINEARCH=win64
# No messages of Wine's own, no offers to download Mono or Gecko, no menu entries or file types.
export WINEDEBUG="${WINEDEBUG:--all}"
export WINEDLLOVERRIDES="mscoree,mshtml,winemenubuilder.exe="
# File names are UTF-8 whatever the caller's locale is.
export LC_ALL=C.UTF-8
export LIBGL_ALWAYS_SOFTWARE=1
export GALLIUM_DRIVER=llvmpipe
mkdir -p "$WINEPREFIX"
exec wine "$@"
