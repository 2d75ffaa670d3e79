#!/bin/sh
# Makes the packages of both builds, unpacks each in a clean place and tries it as a user would.
# Needs build/ and build-windows/ built (scripts/test.sh builds both).
#   scripts/try_packages.sh [--no-windows] [--rebuild]
#     --no-windows   the Debian package alone
#     --rebuild      also builds the last commit again elsewhere and expects the same bytes
set -eu

here=$(cd "$(dirname "$0")/.." && pwd)
cd "$here"
builds="build build-windows"
rebuild=no
for argument in "$@"; do
  case $argument in
    --no-windows) builds=build ;;
    --rebuild) rebuild=yes ;;
    *)
      echo "vellumtide: unknown option '$argument'; see the top of scripts/try_packages.sh" >&2
      exit 2
      ;;
  esac
done

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

fail() {
  echo "vellumtide: $1" >&2
  exit 1
}

# pack BUILD: makes the package of a build folder and prints its path.
pack() {
  (cd "$1" && rm -rf packages && cpack) >"$work/log" 2>&1 || {
    cat "$work/log" >&2
    fail "no package could be made of $1"
  }
  find "$1/packages" -maxdepth 1 -type f
}

# try EXAMPLES PICTURE PROGRAM...: the program of a package; leaves what it renders in PICTURE.
try() {
  examples=$1
  picture=$2
  shift 2
  "$@" --version | grep -q "^vellumtide [0-9]" || fail "$*: no version"
  "$@" about | grep -q "^OpenGL vendor" || fail "$*: no GL device"
  "$@" render "$examples/kernels/test_chart.pbk" --size 320x180 -o "$work/chart.png"
  cp "$examples/graphs/star_glow.pbg" "$work/星 é.pbg"
  "$@" render "$work/星 é.pbg" -i "$work/chart.png" -o "$picture"
}

for build in $builds; do
  package=$(pack "$build")
  cp "$package" "$work/first"
  sleep 2  # the file times of the archives have a step of two seconds
  pack "$build" >/dev/null
  cmp "$work/first" "$package" || fail "$package: packed twice, it differs"
  echo "$package"
done

root=$work/debian
dpkg-deb -x build/packages/*.deb "$root"
apt-get -s install ./build/packages/*.deb >/dev/null || fail "the package cannot be installed here"
program=$root/usr/bin/vellumtide
try "$root/usr/share/vellumtide/examples" "$work/linux.png" env -u VELLUMTIDE_MODULE "$program"
tests/shells/try_manual.sh "$root/usr/share/man/man1/vellumtide.1.gz" "$program"
for file in bash-completion/completions/vellumtide zsh/vendor-completions/_vellumtide \
  fish/vendor_completions.d/vellumtide.fish doc/vellumtide/README.md \
  doc/vellumtide/docs/kernel-authors.md; do
  [ -s "$root/usr/share/$file" ] || fail "the Debian package lacks $file"
done
echo "The Debian package works."

if [ "$builds" != build ]; then
  (cd "$work" && cmake -E tar xf "$here"/build-windows/packages/*.zip)
  root=$(echo "$work"/Vellumtide-*-win64)
  for file in Vellumtide.aex vellumtide.exe README.txt LICENSE.txt licences/glew.txt; do
    [ -s "$root/$file" ] || fail "the archive for Windows lacks $file"
  done
  try "$root/examples" "$work/windows.png" scripts/run_on_wine.sh "$root/vellumtide.exe"
  idiff -fail 0.004 -warn 0.004 "$work/linux.png" "$work/windows.png" >"$work/log" || {
    cat "$work/log" >&2
    fail "the packages for Debian and Windows render different pictures"
  }
  echo "The archive for Windows works."
fi

if [ $rebuild = yes ]; then
  [ -z "$(git status --porcelain)" ] || fail "--rebuild: commit your changes first"
  git clone -q . "$work/again"
  for build in $builds; do
    preset=release
    if [ $build = build-windows ]; then
      preset=windows
      mkdir "$work/again/$build"
      cp -R "$build/sources" "$work/again/$build/"
    fi
    (cd "$work/again" && cmake --preset $preset -DVELLUMTIDE_TESTS=OFF -DVELLUMTIDE_BENCH=OFF &&
      cmake --build --preset $preset) >"$work/log" 2>&1 || {
      cat "$work/log" >&2
      fail "the second build failed"
    }
    package=$(pack "$work/again/$build")
    cmp "$package" "$build/packages/$(basename "$package")" ||
      fail "$(basename "$package"): two builds of one commit differ"
    echo "$(basename "$package"): two builds, the same bytes"
  done
fi
