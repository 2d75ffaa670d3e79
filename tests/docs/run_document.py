#!/usr/bin/env python3
"""Runs the examples of a document, or of every command's --help, as a reader would.

    run_document.py PROGRAM EXAMPLES DOCUMENT.md
    run_document.py PROGRAM EXAMPLES help_texts

PROGRAM is the built `vellumtide`, EXAMPLES the folder examples/. All blocks of a document run in one
scratch folder, in their order. It holds photo.png, in.0001.exr to in.0010.exr and the example
kernels and graphs (beside them and in examples/); vellumtide is on the PATH.

    ```sh                  run by bash, up to the first command that fails (in pipes, too)
    ```sh status=3         the same, but the command that ends it has to end with that status
    ```pbk file=tint.pbk   written to that file first; so is any block with file=
    ```text output         what the block run last wrote, both streams; ... stands for anything, alone on
                           its line for any lines
    ```text                never run: what cannot run here, such as the installation of packages
"""
import os, pathlib, re, shutil, subprocess, sys, tempfile

PRELUDE = "set -e -o pipefail; trap 'echo $LINENO >.line' ERR\n"


def fail(place, message, shown=""):
    sys.exit(f"{place}: {message}\n{shown}".rstrip())


class Scratch:
    """The folder with its fixtures, and the commands run in it."""

    def __init__(self, program, examples, folder):
        self.folder = pathlib.Path(folder)
        path = os.path.dirname(os.path.abspath(program)) + os.pathsep + os.environ["PATH"]
        self.environment = {**os.environ, "PATH": path, "HOME": folder, "TERM": "dumb"}
        self.environment.pop("VELLUMTIDE_MODULE", None)
        shutil.copytree(examples, self.folder / "examples")
        for file in list(self.folder.glob("examples/*/*.pb[kg]")):
            shutil.copy(file, self.folder)
        status, text = self.run("vellumtide render landscape.pbk --size 192x108 -o photo.png\n"
                                "vellumtide render landscape.pbk --size 96x54 -o in.0001.exr\n"
                                "for n in 02 03 04 05 06 07 08 09 10; do cp in.0001.exr in.00$n.exr; done")
        if status != 0:
            fail("fixtures", f"status {status}", text)

    def run(self, script):
        """Returns the exit status and what was written."""
        done = subprocess.run(["bash", "-c", PRELUDE + script], cwd=self.folder, text=True,
                              env=self.environment, errors="replace", stdin=subprocess.DEVNULL,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
        return done.returncode, done.stdout

    def line(self):
        """The line of the script that failed, from 1; 1 when the shell cannot say."""
        file = self.folder / ".line"
        return int(file.read_text()) - 1 if file.exists() else 1


def blocks(document):
    """Yields (line of the first line, words behind the fence, text)."""
    fence, words, lines, before = None, [], [], ""
    for number, line in enumerate(document.read_text(encoding="utf-8").splitlines(), 1):
        mark = re.match(r"\s*(```+)(.*)", line)
        if fence is None and mark:
            fence, words, lines, start = mark[1], mark[2].split(), [], number + 1
        elif fence is not None and line.strip() == fence:
            yield start, words, "\n".join(lines) + "\n"
            fence = None
        elif fence is not None:
            lines.append(line)
        elif line.startswith("    ") and not before:
            fail(f"{document}:{number}", "indented code is not run; put it between fences")
        before = line.strip()
    if fence is not None:
        fail(document, "a block has no end")


def check_output(place, expected, got):
    lines = ["(.*\n)*?" if line.strip() == "..." else
             re.escape(line.rstrip()).replace(r"\.\.\.", ".*") + " *\n"
             for line in expected.rstrip().splitlines()]
    if not re.fullmatch("".join(lines), got.rstrip() + "\n"):
        fail(place, "this was written instead:", got)


def run_document(scratch, document):
    written, commands = "", 0
    for start, words, text in blocks(document):
        place = f"{document}:{start}"
        options = dict(word.split("=", 1) for word in words[1:] if "=" in word)
        if "file" in options:
            (scratch.folder / options["file"]).write_text(text, encoding="utf-8")
        elif words[:2] == ["text", "output"]:
            check_output(place, text, written)
        elif words[:1] == ["sh"]:
            status, written = scratch.run(text)
            commands += 1
            if status != int(options.get("status", 0)):
                fail(f"{document}:{start + max(scratch.line(), 1) - 1}",
                     f"status {status}, expected {options.get('status', 0)}", written)
            if status != 0:
                (scratch.folder / ".line").unlink(missing_ok=True)
        elif words[:1] != ["text"]:
            fail(place, "neither sh, text nor a block with file=, so nothing tries it")
    prose = re.sub(r"```.*?```", "", document.read_text(encoding="utf-8"), flags=re.S)
    for target in re.findall(r"\]\(([^)#:]+)[^):]*\)", prose):
        if not (document.parent / target).exists():
            fail(document, f"{target}: there is no such file to link to")
    print(f"{document}: {commands} blocks run")


def run_help_texts(scratch, documents):
    described = "".join(document.read_text(encoding="utf-8") for document in documents)

    def help_of(*command):
        return scratch.run(" ".join(["vellumtide", *command, "--help"]))[1]

    def walk(*command):
        text = help_of(*command)
        named = re.search(r"^Commands:\n((?:  .*\n)+)", text, re.M)
        if named:
            for name in re.findall(r"^  ([a-z]+)", named[1], re.M):
                walk(*command, name)
            return
        for option in re.findall(r"^ +(?:-. *, )? *(--[a-z-]+)", text, re.M):
            if option not in described and option != "--help":
                fail(" ".join(command), f"no document speaks of {option}")
        shown = re.search(r"^Examples:\n((?:  .*\n|\n)+)", text, re.M)
        if not shown:
            fail(" ".join(command), "its --help has no example")
        examples = re.findall(r"^  ((?:.*\\\n)*[^#\n].*)", shown[1], re.M)
        script = "\n".join(examples)
        status, output = scratch.run(script)
        if status != 0:
            line = script.splitlines()[max(scratch.line(), 1) - 1]
            fail(" ".join(command), f"this example of its --help ends with status {status}: {line}",
                 output[-2000:])
        print(f"{' '.join(command)}: {len(examples)} examples run")

    walk()


if __name__ == "__main__":
    program, examples, subject = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        scratch = Scratch(program, examples, folder)
        if subject == "help_texts":
            run_help_texts(scratch, pathlib.Path(examples).parent.glob("docs/*.md"))
        else:
            run_document(scratch, pathlib.Path(subject))
