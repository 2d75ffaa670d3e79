#!/bin/sh
# Downloads the Debian source packages that the Windows build compiles for its target, and unpacks
# them with Debian's patches applied.
#   scripts/fetch_windows_sources.sh [FOLDER]        (build-windows/sources when none is named)
# Works without root: the source entries are the machine's own Debian entries, read through a
# package list of their own inside FOLDER; the machine's lists stay as they are.
set -eu

packages="glew tinyxml duktape libpng1.6"
here=$(cd "$(dirname "$0")/.." && pwd)
folder=${1:-$here/build-windows/sources}
mkdir -p "$folder"
folder=$(cd "$folder" && pwd)

complete() {
  for package in $packages; do [ -e "$folder/$package/.complete" ] || return 1; done
}
if complete; then exit 0; fi

fail() {
  echo "vellumtide: $1" >&2
  exit 1
}
command -v dpkg-source >/dev/null || fail "dpkg-source is missing; run scripts/install_packages.sh windows"

apt=$folder/apt
rm -rf "$apt"
mkdir -p "$apt/lists/partial" "$apt/cache/archives/partial" "$apt/entries" "$apt/unpacked"

# Debian's own entries of this machine, binary turned into source; other vendors' are left out.
for list in /etc/apt/sources.list /etc/apt/sources.list.d/*; do
  [ -r "$list" ] || continue
  case $list in
    *.list | */sources.list)
      sed -n 's/^deb \(.*debian\)/deb-src \1/p' "$list" >>"$apt/entries/binary.list"
      ;;
    *.sources)
      awk -v RS= -v ORS='\n\n' '/debian-archive-keyring|\/debian/' "$list" |
        sed 's/^Types:.*/Types: deb-src/' >"$apt/entries/$(basename "$list")"
      ;;
  esac
done

run_apt() {
  apt-get -q -o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$apt/entries" \
    -o Dir::State::Lists="$apt/lists" -o Dir::Cache="$apt/cache" -o APT::Sandbox::User= "$@"
}
run_apt update || fail "the lists of Debian source packages cannot be read; is the network there?"

# The newest version first; a mirror may not have the sources of the latest security update yet.
release=$(. /etc/os-release && echo "$VERSION_CODENAME")
fetch() {
  run_apt source --only-source "$1" || run_apt source --only-source --target-release "$release" "$1"
}

cd "$apt/unpacked"
for package in $packages; do
  [ -e "$folder/$package/.complete" ] && continue
  fetch "$package" ||
    fail "the Debian source package '$package' cannot be fetched into $folder"
  rm -rf "${folder:?}/$package"
  mv "$package"-*/ "$folder/$package"
  touch "$folder/$package/.complete"
done
rm -rf "$apt"
