#!/bin/sh
# Builds Vellumtide and renders every example into out/, with a contact sheet of them all.
# Installs what is missing (as root; without root it says what to install and stops).
#   scripts/demo.sh
set -eu

here=$(cd "$(dirname "$0")/.." && pwd)
cd "$here"

scripts/install_packages.sh build

echo "Building"
options=""
# Tests and benchmarks are built when their libraries are there; the demonstration needs neither.
[ -e /usr/include/gtest/gtest.h ] || options="$options -DVELLUMTIDE_TESTS=OFF"
[ -e /usr/include/benchmark/benchmark.h ] || options="$options -DVELLUMTIDE_BENCH=OFF"
# shellcheck disable=SC2086  # one word for each option
cmake --preset release $options >/dev/null
cmake --build --preset release --target vellumtide Vellumtide

vellumtide=build/bin/vellumtide
out=out
work=$out/.work
rm -rf "$work"
mkdir -p "$work"
pictures=""  # of the contact sheet, in their order

# render EXAMPLE [OPTION]...: renders examples/EXAMPLE to out/.
render() {
  example=$1
  shift
  file=$out/$(basename "${example%.*}").png
  echo "  $example"
  "$vellumtide" render "examples/$example" "$@" -o "$file"
  pictures="$pictures $file"
}

echo "Rendering into $here/$out"
picture=$out/landscape.png
chart=$out/test_chart.png
render kernels/landscape.pbk --size 960x540
render kernels/test_chart.pbk --size 960x540
render kernels/twirl.pbk -i "$chart" -p "Twist=200" -p "Radius=420"
"$vellumtide" render examples/graphs/gaussian_blur.pbg -i "$picture" -p "Radius=45" \
  -o "$work/map.png"
render kernels/displace.pbk -i "$chart" -i "$work/map.png" -p "Amount=150,110"

render kernels/color_grade.pbk -i "$picture" -p "Highlights=#ffd08c" -p "Saturation=135"
render kernels/color_matrix.pbk -i "$picture"
render kernels/bokeh.pbk -i "$picture" -p "Focus=480,165" -p "Tilt=-4"
render kernels/zoom_blur.pbk -i "$picture" -p "Center=674,168" -p "Quality=Best"

render kernels/kaleidoscope.pbk -i "$picture" -p "Source=672,230" -p "Rotation=-70" -p "Zoom=160"
render kernels/mosaic.pbk -i "$picture" -p "Tile Size=14"
render kernels/halftone.pbk -i "$picture"
render kernels/oil_paint.pbk -i "$picture"

render kernels/sketch.pbk -i "$picture"
render kernels/corner_pin.pbk -i "$picture"
"$vellumtide" render examples/kernels/test_chart.pbk --size 960x540 \
  -p "Transparent Ground=true" -o "$work/transparent.png"
render kernels/drop_shadow.pbk -i "$work/transparent.png"
render kernels/blend.pbk -i "$picture" -i "$chart" -p "Mode=Soft Light"

render graphs/gaussian_blur.pbg -i "$picture" -p "Stretch=300"
render graphs/old_print.pbg -i "$picture"
render graphs/star_glow.pbg -i "$picture"
render graphs/double_exposure.pbg -i "$picture" -i "$chart"

# shellcheck disable=SC2086  # one word for each picture
"$vellumtide" sheet $pictures --title "" --columns 4 -o "$out/contact-sheet.png"
rm -rf "$work"
echo "The pictures and contact-sheet.png are in $here/$out"
