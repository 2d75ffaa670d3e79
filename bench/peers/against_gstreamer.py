#!/usr/bin/env python3
"""Times `vellumtide render` against GStreamer's glshader element: the same arithmetic on the same
pictures, in turn. README.md beside this file says what is measured and how."""
import argparse, contextlib, json, os, pathlib, shutil, statistics, subprocess, sys, tempfile, time

here = pathlib.Path(__file__).resolve().parent
options = argparse.ArgumentParser(description=__doc__)
options.add_argument("--program", type=pathlib.Path,
                     default=here.parents[1] / "build/bin/vellumtide")
options.add_argument("--size", default="1920x1080", metavar="WxH")
options.add_argument("--frames", default=30, type=int, metavar="N", help="time N and 2 N frames")
options.add_argument("--rounds", default=5, type=int)
options.add_argument("--threads", default=1, type=int,
                     help="readers and writers of vellumtide; GStreamer has one of each")
options.add_argument("--gpu", action="store_true", help="not on Mesa's software rasteriser")
options = options.parse_args()
width, height = options.size.split("x")

SIZE = ["-p", f"size={width},{height}"]
LEVEL = 4  # of compression
CASES = {"grade": [], "spiral": SIZE, "spiral_loop": SIZE}
QUEUE = ["!", "queue", "max-size-buffers=4", "max-size-bytes=0", "max-size-time=0"]
RGBA = ["!", "video/x-raw,format=RGBA"]


def run(command, environment):
    """Runs it in the scratch folder and returns the seconds it took."""
    start = time.perf_counter()
    done = subprocess.run([str(word) for word in command], env=environment, text=True,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    seconds = time.perf_counter() - start
    if done.returncode != 0:
        sys.exit(f"{done.args}\nended with {done.returncode}:\n{done.stdout}")
    return seconds


@contextlib.contextmanager
def display():
    """The name of an X display: GStreamer's GL wants one even to show nothing."""
    server = subprocess.Popen(["Xvfb", "-displayfd", "1", "-screen", "0", "64x64x24"], text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)
    try:
        yield ":" + server.stdout.readline().strip()
    finally:
        server.terminate()
        server.wait()


def shader(case):
    text = (here / f"{case}.frag").read_text().replace("\\\n", " ")
    return ["!", "glupload", "!", "glshader", f'fragment="{text}"', "!", "gldownload", *RGBA]


def vellumtide_files(case, frames, environment):
    return run([options.program, "render", here / f"{case}.pbk", "-i", "in.%04d.png",
                "-o", "vellumtide/%04d.png", "--frames", f"1-{frames}", "--compression", LEVEL,
                "--threads", options.threads, "--progress", "none", *CASES[case]], environment)


def gstreamer_files(case, frames, environment):
    return run(["gst-launch-1.0", "-q", "multifilesrc", "location=in.%04d.png", "start-index=1",
                f"stop-index={frames}", "caps=image/png,framerate=(fraction)25/1", "!", "pngdec",
                *RGBA, *QUEUE, *shader(case), *QUEUE, "!",
                "pngenc", f"compression-level={LEVEL}", "!", "multifilesink", "index=1",
                "location=gstreamer/%04d.png"], environment)


def vellumtide_alone(case, frames, environment):
    """Seconds spent on uploading, drawing and reading back, as the report has them. One picture in
    flight at a time, so that writing does not take the processor away from it."""
    run([options.program, "render", here / f"{case}.pbk", "-i", "in.0001.png",
         "-o", "still/%04d.tif", "--frames", f"1-{frames}", "--compression", 0, "--threads", 1,
         "--memory", 1, "--progress", "none", "--report", "report.json", *CASES[case]], environment)
    report = json.loads(pathlib.Path("report.json").read_text())
    return sum(frame["renderMs"] for frame in report["frames"]) / 1000


def gstreamer_alone(case, frames, environment):
    """The picture is decoded once; what comes out is read by a sink that stores nothing."""
    return run(["gst-launch-1.0", "-q", "filesrc", "location=in.0001.png", "!", "pngdec", *RGBA,
                "!", "imagefreeze", f"num-buffers={frames}", *shader(case), "!",
                "filesink", "location=/dev/null"], environment)


def per_frame(measure, case, environment):
    """Milliseconds a frame: what N more frames cost, so that starting up does not count."""
    few = measure(case, options.frames, environment)
    return (measure(case, 2 * options.frames, environment) - few) * 1000 / options.frames


def main(screen):
    environment = {**os.environ, "DISPLAY": screen, "XDG_RUNTIME_DIR": os.getcwd(),
                   "GST_GL_PLATFORM": "glx", "GST_GL_API": "opengl",
                   "LP_NUM_THREADS": str(os.cpu_count())}
    if not options.gpu:
        environment |= {"LIBGL_ALWAYS_SOFTWARE": "1", "GALLIUM_DRIVER": "llvmpipe"}
    for folder in ("vellumtide", "gstreamer", "still"):
        os.mkdir(folder)
    landscape = here.parents[1] / "examples/kernels/landscape.pbk"
    run([options.program, "render", landscape, "--size", options.size, "-o", "in.0001.png"],
        environment)
    for frame in range(2, 2 * options.frames + 1):
        shutil.copy("in.0001.png", f"in.{frame:04}.png")

    print(f"{options.size}, medians of {options.rounds} rounds: milliseconds a frame, and ratio\n\n"
          "                              vellumtide  GStreamer  ratio")
    for case in CASES:
        vellumtide_files(case, 2, environment)
        gstreamer_files(case, 2, environment)
        run([options.program, "compare", "vellumtide/0002.png", "gstreamer/0002.png", "--tolerance",
             "0.004"], environment)
        for name, ours, theirs in (("without files", vellumtide_alone, gstreamer_alone),
                                   ("PNG to PNG", vellumtide_files, gstreamer_files)):
            rounds = [(per_frame(ours, case, environment), per_frame(theirs, case, environment))
                      for _ in range(options.rounds)]
            mine, other = (statistics.median(column) for column in zip(*rounds))
            ratio = statistics.median(a / b for a, b in rounds)
            print(f"{case:12}{name:16}{mine:12.1f}{other:11.1f}{ratio:7.2f}", flush=True)
        sizes = [os.path.getsize(f"{name}/0002.png") for name in ("vellumtide", "gstreamer")]
        print(f"{case:12}bytes of a PNG  {sizes[0]:12}{sizes[1]:11}{sizes[0] / sizes[1]:7.2f}")


if __name__ == "__main__":
    options.program = options.program.resolve()
    for tool in (options.program, "gst-launch-1.0", "Xvfb"):
        if not shutil.which(tool):
            sys.exit(f"{tool} is missing: build it, or run scripts/install_packages.sh peers")
    with tempfile.TemporaryDirectory() as scratch, display() as screen:
        os.chdir(scratch)
        main(screen)
        os.chdir(here)
