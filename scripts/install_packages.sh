#!/bin/sh
# Installs the Debian packages that are missing.
#   scripts/install_packages.sh [build] [test] [windows] [peers]
# Without a group, all that scripts/test.sh needs: build, test and windows.
# Without root nothing is changed: the command to run as root is printed and the exit status is 1.
set -eu

# What the Linux module, the headless host and the command line are built from, and run on.
build="g++ cmake ninja-build ccache pkg-config
  libglew-dev libtinyxml-dev duktape-dev nlohmann-json3-dev libcli11-dev
  libpng-dev libopenimageio-dev openimageio-tools libfreetype-dev fonts-dejavu-core
  libegl-dev libgl-dev libglu1-mesa-dev libegl1 libegl-mesa0 libgl1-mesa-dri"

# What the tests (of documents, completions, the manual page and recipes for render farms, too), the
# benchmarks, the fuzzers and the checks of style need beside that.
test="libgtest-dev libgmock-dev libbenchmark-dev
  clang clang-format clang-tidy libclang-rt-14-dev
  python3 graphviz bash bash-completion zsh fish groff-base mandoc
  python3-yaml munge slurmctld slurmd slurm-client"

# The cross-compiler, the sources that dependencies of the Windows module are built from, and a
# Windows to run it on: Wine with a virtual display and a software rasteriser.
windows="g++-mingw-w64-x86-64-posix binutils-mingw-w64-x86-64 libz-mingw-w64-dev
  cmake ninja-build ccache dpkg-dev zip ca-certificates googletest nlohmann-json3-dev libcli11-dev
  wine wine64 xvfb xauth libgl1-mesa-dri libglx-mesa0"

# What bench/peers compares with, and its display.
peers="gstreamer1.0-tools gstreamer1.0-plugins-base gstreamer1.0-plugins-good gstreamer1.0-gl
  xvfb xauth python3"

wanted=""
for group in "${@:-all}"; do
  case $group in
    build) wanted="$wanted $build" ;;
    test) wanted="$wanted $test" ;;
    windows) wanted="$wanted $windows" ;;
    peers) wanted="$wanted $peers" ;;
    all) wanted="$build $test $windows" ;;
    *)
      echo "vellumtide: unknown group of packages '$group'; there are build, test, windows and peers" >&2
      exit 2
      ;;
  esac
done

missing=""
for package in $wanted; do
  case " $missing " in *" $package "*) continue ;; esac
  status=$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null || true)
  [ "$status" = installed ] || missing="$missing $package"
done
[ -n "$missing" ] || exit 0

if [ "$(id -u)" != 0 ]; then
  echo "vellumtide: packages are missing. Install them as root, then start this again:" >&2
  echo "    apt-get update && apt-get install$missing" >&2
  exit 1
fi

echo "Installing:$missing"
export DEBIAN_FRONTEND=noninteractive
apt-get -q -o DPkg::Lock::Timeout=600 update
# shellcheck disable=SC2086  # one word for each package
apt-get -q -y -o DPkg::Lock::Timeout=600 install --no-install-recommends $missing
