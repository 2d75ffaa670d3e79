#!/usr/bin/env python3
"""Presses TAB in a real shell: try_completions.py bash|zsh|fish PROGRAM EXAMPLES

For bash and zsh each line is typed on a terminal and completed, then turned into the arguments of
printf, so that what is compared is what the shell makes of the completed line.
"""
import os, pathlib, pty, re, select, shutil, subprocess, sys, tempfile

# What is typed, and the last word that TAB makes of it.
CASES = [
    ("rend", "render"),
    ("--vers", "--version"),
    ("project sh", "show"),
    ("help compl", "completion"),
    ("completion z", "zsh"),
    ("render mosaic.pbk --downs", "--downsample"),
    ("render mosaic.pbk --depth 3", "32"),
    ("project render --ro", "--root-folder"),
    ("inspect mos", "mosaic.pbk"),
    ("render mosaic.pbk -o ph", "photo.png"),
    ("project show sh", "shot.json"),
    ("project render shot.json --root-folder fo", "folder"),
    ("render mosaic.pbk -p Til", "Tile Size="),
    ("render mosaic.pbk -p Shape=Dis", "Shape=Disc"),
    ("render folder/mosaic.pbk --set Stag", "Staggered="),
]
READY = "ready>"


class Terminal:
    def __init__(self, shell, folder, script):
        start = {"bash": ["bash", "--norc", "--noprofile", "-i"], "zsh": ["zsh", "-f", "-i"]}[shell]
        pid, self.terminal = pty.fork()
        if pid == 0:
            os.chdir(folder)
            os.environ.update(TERM="dumb", PS1=READY, HISTFILE="")
            os.execvp(start[0], start)
        if shell == "zsh":
            self.enter(f"PS1='{READY}'; autoload -Uz compinit; compinit -u -D; bindkey -e")
        else:
            self.enter("bind 'set enable-bracketed-paste off'")
        self.enter(f"source '{script}'")

    def until(self, pattern):
        got = ""
        while not re.search(pattern, got):
            if not select.select([self.terminal], [], [], 20)[0]:
                sys.exit(f"the shell says no more than this:\n{got}")
            got += os.read(self.terminal, 4096).decode(errors="replace")
        return got

    def enter(self, line):
        os.write(self.terminal, (line + "; echo do'ne'\n").encode())
        self.until(r"done\s")

    def completed(self, line):
        """The words of the shell's line after TAB."""
        os.write(self.terminal, f"{line}\t".encode())
        os.write(self.terminal, b"\x01printf '<%s>' \x05; echo do'ne'\n")
        return re.findall(r"<([^>]*)>", self.until(r"done\s").split("\n", 1)[1])


def fish_offers(folder, script, line):
    done = subprocess.run(["fish", "-N", "-c", f"source '{script}'; complete -C '{line}'"],
                          cwd=folder, text=True, stdout=subprocess.PIPE)
    return [offer.split("\t")[0] for offer in done.stdout.splitlines()]


def main(shell, program, examples):
    os.environ["PATH"] = os.path.dirname(program) + os.pathsep + os.environ["PATH"]
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        script = folder / "completion"
        script.write_bytes(subprocess.check_output([program, "completion", shell]))
        (folder / "folder").mkdir()
        for copy in (folder / "mosaic.pbk", folder / "folder/mosaic.pbk"):
            shutil.copy(f"{examples}/kernels/mosaic.pbk", copy)
        for other in ("mosaic.txt", "photo.png", "shot.json", "shot.txt", "forest.png"):
            (folder / other).touch()
        terminal = None if shell == "fish" else Terminal(shell, folder, script)
        for line, word in CASES:
            if terminal:
                got = terminal.completed(f"vellumtide {line}")[-1:]
            else:
                got = [offer for offer in fish_offers(folder, script, f"vellumtide {line}")
                       if offer.startswith(word[:1])]
            # zsh takes the slash of a folder back when something else follows
            if [answer.rstrip("/") for answer in got] != [word]:
                sys.exit(f"{shell}: vellumtide {line}<TAB> gives {got} instead of {word}")
        print(f"{shell}: {len(CASES)} lines completed")


if __name__ == "__main__":
    main(*sys.argv[1:])
