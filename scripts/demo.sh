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
font=/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf
work=$out/.work
rm -rf "$work"
mkdir -p "$work"
count=0

# render EXAMPLE [OPTION]...: renders examples/EXAMPLE to out/ and adds it to the contact sheet.
render() {
  example=$1
  shift
  name=$(basename "${example%.*}")
  echo "  $example"
  "$vellumtide" render "examples/$example" "$@" -o "$out/$name.png"
  count=$((count + 1))
  tile "$out/$name.png" "$(basename "$example")" "$work/$(printf %02d $count).tif"
}

# tile PICTURE LABEL FILE: a small picture over a checkered ground, with its name below.
tile() {
  oiiotool \
    "$1" --resize 320x180 \
    --pattern checker:width=10:color1=0.55,0.55,0.55,1:color2=0.7,0.7,0.7,1 320x180 4 --over \
    --ch R,G,B --pattern constant:color=0.09,0.1,0.12 336x214 3 --paste +8+8 \
    --text:x=10:y=206:size=14:color=0.82,0.84,0.88:font="$font" "$2" -d uint8 -o "$3"
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

rows=$(((count + 3) / 4))
oiiotool "$work"/[0-9]*.tif --mosaic:pad=0 4x$rows \
  --pattern constant:color=0.09,0.1,0.12 1352x$((214 * rows + 8)) 3 --paste +4+4 \
  -d uint8 --attrib png:compressionLevel 9 -o "$out/contact-sheet.png"
rm -rf "$work"
echo "$count pictures and contact-sheet.png are in $here/$out"
