#!/bin/sh
# Builds everything and runs every test: GCC with all tests, clang with the sanitizers, and the
# Windows programs on Wine. Installs what is missing (as root; else says what to install).
#   scripts/test.sh [--long] [--no-windows]
#     --long         also builds file by file, runs each fuzzer for 60 seconds, scenarios for ten
#                    minutes and clang-tidy over the whole code, and builds the last commit twice for
#                    the same bytes
#     --no-windows   leaves the Windows part out
set -eu

here=$(cd "$(dirname "$0")/.." && pwd)
cd "$here"
long=no
windows=yes
for argument in "$@"; do
  case $argument in
    --long) long=yes ;;
    --no-windows) windows=no ;;
    *)
      echo "vellumtide: unknown option '$argument'; see the top of scripts/test.sh" >&2
      exit 2
      ;;
  esac
done

step() { printf '\n== %s (%s)\n' "$1" "$(date +%H:%M:%S)"; }

# No driver but the software rasteriser may decide a test; a machine with a GPU can ask for it.
if [ -z "${VELLUMTIDE_TEST_ON_GPU:-}" ]; then
  export LIBGL_ALWAYS_SOFTWARE=1 GALLIUM_DRIVER=llvmpipe
fi

# Only a build of each file alone shows that a file includes what it uses.
if [ $long = yes ]; then unity=OFF; else unity=ON; fi

step "Packages"
if [ $windows = yes ]; then scripts/install_packages.sh; else scripts/install_packages.sh build test; fi

step "Format"
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run -Werror
echo "formatted"

step "Build with GCC, warnings as errors"
cmake --preset release -DVELLUMTIDE_WERROR=ON -DVELLUMTIDE_TESTS=ON -DVELLUMTIDE_BENCH=ON \
  -DVELLUMTIDE_UNITY=$unity >build-release.log || { cat build-release.log; exit 1; }
rm -f build-release.log
cmake --build --preset release

step "All tests"
ctest --test-dir build --output-on-failure -j "$(nproc)"

step "Build with clang and the sanitizers, warnings as errors"
cmake --preset fuzz -DVELLUMTIDE_WERROR=ON -DVELLUMTIDE_UNITY=$unity >build-fuzz.log ||
  { cat build-fuzz.log; exit 1; }
rm -f build-fuzz.log
cmake --build --preset fuzz

step "The same under address and undefined-behaviour sanitizers"
# Graphics drivers keep memory until the process ends; a test that crashes a program on purpose wants
# to see the signal.
ASAN_OPTIONS=detect_leaks=0:handle_segv=0 ctest --test-dir build-fuzz --output-on-failure \
  -j "$(nproc)" -LE resident_memory

if [ $long = yes ]; then
  step "Fuzzers, 60 seconds each"
  for fuzzer in build-fuzz/bin/fuzz_*; do
    name=$(basename "$fuzzer")
    echo "$name"
    corpus=$(mktemp -d)
    "$fuzzer" -max_total_time=60 -rss_limit_mb=4096 -print_final_stats=1 "$corpus" \
      "fuzz/corpus/${name#fuzz_}" 2>&1 | tail -5
    rm -rf "$corpus"
  done
  step "clang-tidy"
  # Its compile commands, one a file, come from a build folder of its own that is only configured.
  cmake --preset fuzz -B build-fuzz/tidy -DVELLUMTIDE_UNITY=OFF >/dev/null
  git ls-files '*.cpp' | grep -v -e _win32 -e _wgl -e ^tests/windows/ |
    xargs -n 4 -P "$(nproc)" clang-tidy --quiet -p build-fuzz/tidy
  step "Scenarios, ten minutes of seeds that were not tried before"
  build-fuzz/bin/test_scenarios --from "$(date +%s)" --minutes 10
fi

if [ $windows = yes ]; then
  step "Build for Windows, warnings as errors"
  scripts/fetch_windows_sources.sh
  cmake --preset windows -DVELLUMTIDE_WERROR=ON >build-windows.log ||
    { cat build-windows.log; exit 1; }
  rm -f build-windows.log
  cmake --build --preset windows

  step "The Windows tests on Wine"
  scripts/with_wine.sh ctest --test-dir build-windows --output-on-failure
fi

step "Packages, unpacked in a clean place and tried"
options=""
[ $long = no ] || options=--rebuild
if [ $windows = yes ]; then
  scripts/with_wine.sh scripts/try_packages.sh $options
else
  scripts/try_packages.sh --no-windows $options
fi

step "Done"
