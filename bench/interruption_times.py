#!/usr/bin/env python3
"""How long a render takes to end after TERM, at every stage, with the stage stuck and not.

usage: interruption_times.py VELLUMTIDE TRAP [TIMES]

TRAP is the trap library of tests/cli/attack (build/lib or build/bin, libtrap.so). For each stage
the worst and the median of TIMES runs (50), from the signal to the end of the process.
"""
import os
import statistics
import subprocess
import sys
import tempfile
import time

KERNEL = """<languageVersion : 1.0;> kernel K < namespace : "n"; vendor : "v"; version : 1; >
{ input image4 src; output pixel4 dst; void evaluatePixel() { dst = sampleNearest(src, outCoord()); } }
"""
STAGES = {
    "reading the program": ("open", "k.pbk"),
    "reading": ("open", "in.png"),
    "building": ("eglInitialize", ""),
    "rendering": ("glReadPixels", ""),
    "writing": ("open", ".out."),
    "naming": ("rename", "out."),
    "reporting": ("open", ".r."),
}


def seconds_to_end(program, folder, environment):
    stamp = os.path.join(folder, "stamp")
    if os.path.exists(stamp):
        os.remove(stamp)
    command = [program, "render", "k.pbk", "-i", "in.png", "-o", "out.#.png", "--frames", "1-200",
               "--report", "r.json"]
    done = subprocess.run(command, cwd=folder, env=environment | {"TRAP_STAMP": stamp},
                          stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, check=False)
    end = time.time()
    if not os.path.exists(stamp):
        sys.exit(f"{environment['TRAP_CALL']} {environment['TRAP_NAME']} was not reached")
    with open(stamp, encoding="ascii") as file:
        return done.returncode, end - int(file.read()) / 1e9


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    program, trap = (os.path.abspath(path) for path in sys.argv[1:3])
    times = int(sys.argv[3]) if len(sys.argv) > 3 else 50
    with tempfile.TemporaryDirectory() as folder:
        with open(os.path.join(folder, "k.pbk"), "w", encoding="ascii") as file:
            file.write(KERNEL)
        subprocess.run([program, "render", "k.pbk", "--size", "64x64", "-o", "in.png"], cwd=folder,
                       check=True)
        print(f"{'stage':<22}{'':<8}{'worst':>8}{'median':>8}  ended by")
        for passes in (True, False):
            for stage, (call, name) in STAGES.items():
                environment = os.environ | {
                    "LD_PRELOAD": trap, "TRAP_CALL": call, "TRAP_NAME": name, "TRAP_SIGNALS": "15"}
                if passes:
                    environment["TRAP_PASSES"] = "1"
                runs = [seconds_to_end(program, folder, environment) for _ in range(times)]
                spent = [seconds for _, seconds in runs]
                print(f"{stage:<22}{'' if passes else 'stuck':<8}{max(spent):>7.2f}s"
                      f"{statistics.median(spent):>7.2f}s  {sorted({code for code, _ in runs})}",
                      flush=True)


main()
