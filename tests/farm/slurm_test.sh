#!/bin/bash
# Submits packaging/farm/slurm/vellumtide.sbatch to a one-machine Slurm: a whole sequence, one that
# is cancelled midway and submitted again, and one with a frame that fails.
#   slurm_test.sh PROGRAM SOURCES        exit status 77: this machine cannot run Slurm, and why
set -u
program=$1
sources=$2
here=$(cd "$(dirname "$0")" && pwd)
# shellcheck source-path=SCRIPTDIR
. "$here/one_machine_slurm.sh"

work=$(mktemp -d)
clean_up() {
  local status=$?
  trap - EXIT
  stop_slurm || { echo "FAILED: processes of Slurm were left"; status=1; }
  rm -rf "$work"
  exit $status
}
trap clean_up EXIT
trap 'exit 130' INT TERM

fail() {
  echo "FAILED: $*"
  tail -n 20 "$work"/*.log 2>/dev/null
  exit 1
}

cd "$work" || exit 1
start_slurm "$work/slurm" || { echo "SKIPPED: no Slurm can run here"; exit 77; }
export LIBGL_ALWAYS_SOFTWARE=1 GALLIUM_DRIVER=llvmpipe VELLUMTIDE=$program
recipe=$sources/packaging/farm/slurm/vellumtide.sbatch
count=18
mkdir direct farm again holed
"$program" render "$sources/examples/kernels/landscape.pbk" --size 480x270 --frames 1-$count \
  -o in.####.png --progress none || fail "no pictures to start from"
render=("$sources/examples/kernels/bokeh.pbk" -i in.####.png -p radius=20
  -k "Tilt@1=0" -k "Tilt@$count=90")
"$program" render "${render[@]}" -o direct/####.png --frames 1-$count --progress none ||
  fail "the direct render"

# submit FRAMES CHUNK ARGUMENT...: sets $job.
submit() {
  job=$(bash "$recipe" "$@" | grep -o '[0-9]*$') || fail "sbatch took nothing"
}
ended() { [ -z "$(squeue -h -j "$job")" ]; }
# The exit codes of a job's tasks, in the order of the tasks.
exit_codes() {
  scontrol -o show job "$job" |
    sed -n 's/.*ArrayTaskId=\([0-9]*\) .*ExitCode=\([0-9:]*\).*/\1 \2/p' | sort -n |
    cut -d' ' -f2 | paste -sd' '
}
expect_codes() {
  within 60 ended || fail "job $job does not end"
  [ "$(exit_codes)" = "$1" ] || fail "the tasks ended with $(exit_codes), not $1"
}
expect_same() { diff -rq direct "$1" || fail "$1 is not what the direct render made"; }

echo "A sequence in chunks of 5 frames, the last one shorter"
submit 1-$count 5 "${render[@]}" -o farm/####.png
expect_codes "0:0 0:0 0:0 0:0"
expect_same farm
grep -q "frames 16-18" "vellumtide-${job}_3.log" || fail "the log of the last task"

echo "Cancelled midway, submitted again"
some_done() { [ "$(find again -name '[0-9]*.png' | wc -l)" -ge 2 ]; }
submit 1-$count 9 "${render[@]}" -o again/####.png
within 30 some_done || fail "nothing is rendered"
scancel "$job"
within 20 ended || fail "cancelled tasks stay"
kept=$(ls -A again)
[ "$(echo "$kept" | wc -l)" -lt $count ] || fail "cancelled too late to tell anything"
for name in $kept; do
  cmp "direct/$name" "again/$name" || fail "cancelling left a file that is not complete"
done
sums=$(cd again && stat -c '%n %i %Y' -- *)
submit 1-$count 9 "${render[@]}" -o again/####.png
expect_codes "0:0 0:0"
expect_same again
# shellcheck disable=SC2086  # one word for each file
[ "$(cd again && stat -c '%n %i %Y' -- $kept)" = "$sums" ] || fail "complete frames were done again"

echo "A frame that fails fails its task, and no other"
rm in.0008.png
submit 1-$count 6 "${render[@]}" -o holed/####.png
expect_codes "0:0 4:0 0:0"
for frame in {0001..0007} {0013..0018}; do
  cmp "direct/$frame.png" "holed/$frame.png" || fail "the frame before the failure, or another task"
done
echo "Slurm passed"
