#!/usr/bin/env python3
"""Runs one task of the Open Job Description template and of the OpenCue job as a worker would:
takes the command out of the file, puts the task's values in, and expects the frames of a direct
render.

    templates_test.py PROGRAM SOURCES        exit status 77: a Python module is missing
"""
import os, pathlib, re, shlex, subprocess, sys, tempfile
import xml.etree.ElementTree as xml

try:
    import yaml
except ImportError:
    print("SKIPPED: python3-yaml is not installed")
    sys.exit(77)

program, sources = pathlib.Path(sys.argv[1]).resolve(), pathlib.Path(sys.argv[2]).resolve()
environment = {**os.environ, "PATH": f"{program.parent}:{os.environ['PATH']}",
               "LIBGL_ALWAYS_SOFTWARE": "1", "GALLIUM_DRIVER": "llvmpipe"}


def run(command, folder, **more_environment):
    return subprocess.run(command, cwd=folder, env={**environment, **more_environment}, check=True,
                          stdout=subprocess.PIPE, text=True, timeout=60).stdout


def open_job_description(work, kernel):
    """Returns what one task wrote to standard output."""
    template = yaml.safe_load((sources / "packaging/farm/openjd/vellumtide.yaml").read_text())
    assert template["specificationVersion"] == "jobtemplate-2023-09"
    given = {"Program": kernel, "InputFolder": work, "OutputFolder": work / "openjd",
             "OutputName": "####.png", "Frames": "1-5:2", "Extra": '--depth 16 -p "Tile Size=24"'}
    values = {"Param." + each["name"]: str(given.pop(each["name"], each.get("default")))
              for each in template["parameterDefinitions"]}
    assert not given, f"the template has no parameter {given}"

    def put(text):
        return re.sub(r"{{\s*([\w.]+)\s*}}", lambda name: values[name[1]], text)

    put(template["name"])
    step, = template["steps"]
    frame, = step["parameterSpace"]["taskParameterDefinitions"]
    assert put(frame["chunks"]["defaultTaskCount"]) == "10"
    values["Task.Param." + frame["name"]] = put(frame["range"])
    for file in step["script"]["embeddedFiles"]:
        path = work / file["filename"]
        path.write_text(put(file["data"]))
        values["Task.File." + file["name"]] = str(path)
    task = step["script"]["actions"]["onRun"]
    assert task["cancelation"]["mode"] == "NOTIFY_THEN_TERMINATE" and task["timeout"] > 0
    return run([put(task["command"])] + [put(argument) for argument in task["args"]], work)


def open_cue(work, kernel):
    job = xml.parse(sources / "packaging/farm/opencue/vellumtide.xml").find("job")
    variables = {key.get("name"): key.text for key in job.find("env")}
    assert sorted(variables) == ["INPUT", "OUTPUT", "PROGRAM"]
    command = job.find("layers/layer/cmd").text
    options = shlex.quote("Tile Size=24")
    run(["sh", "-c", command.replace("#FRAMESPEC#", "1-5x2") + f" --depth 16 -p {options}"], work,
        PROGRAM=str(kernel), INPUT="in.####.png", OUTPUT="opencue/####.png")


with tempfile.TemporaryDirectory() as folder:
    work = pathlib.Path(folder)
    kernel = sources / "examples/kernels/mosaic.pbk"
    for frame in range(1, 6):
        run(["vellumtide", "render", sources / "examples/kernels/test_chart.pbk", "--size",
             f"{150 + 2 * frame}x90", "-o", f"in.{frame:04}.png"], work)
    for name in ("direct", "openjd", "opencue"):
        (work / name).mkdir()
    for frame in (1, 3, 5):
        run(["vellumtide", "render", kernel, "-i", f"in.{frame:04}.png", "-o",
             f"direct/{frame:04}.png", "--depth", "16", "-p", "Tile Size=24"], work)
    progress = open_job_description(work, kernel)
    open_cue(work, kernel)
    for name in ("openjd", "opencue"):
        subprocess.run(["diff", "-rq", "direct", name], cwd=work, check=True)
        print(f"{name}: one task run, the frames of a direct render")
    percents = [float(each) for each in re.findall(r"^openjd_progress: ([\d.]+)$", progress, re.M)]
    assert percents and percents == sorted(percents) and percents[-1] == 100, progress
