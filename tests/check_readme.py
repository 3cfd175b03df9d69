#!/usr/bin/env python3
"""Types the first session of README.md into the program and compares what it answers with what the
page shows. In the page's block a line "QUERY> ..." (or "FDEC> ...", "> ...") is typed; the lines
below it, up to the next such line, are the answer.

Last line "N passed, N failed".
"""
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
PROGRAM = ROOT / "build/release/bin/velora"
TYPED = re.compile(r"^(?:QUERY|TDEC|CDEC|FDEC|FDEF|     )> ?(.*)$")


def session_blocks(text):
    """The fenced blocks that hold a prompt."""
    return [b for b in re.findall(r"```\w*\n(.*?)```", text, re.S) if "QUERY> " in b]


def run(commands):
    with tempfile.TemporaryDirectory() as folder:
        done = subprocess.run([str(PROGRAM), "--batch", "--no-notes"], input=commands, text=True,
                              capture_output=True, cwd=folder, timeout=60, check=False)
    return done.stdout + done.stderr


def main():
    failed = checked = 0
    for block in session_blocks((ROOT / "README.md").read_text()):
        typed, shown = [], []
        for line in block.splitlines():
            match = TYPED.match(line)
            (typed if match else shown).append(match.group(1) if match else line)
        got = run("\n".join(typed) + "\n").splitlines()
        checked += 1
        if [l.rstrip() for l in got] != [l.rstrip() for l in shown] or not shown:
            failed += 1
            print("FAILED the session of README.md", "page:", *shown, "program:", *got, sep="\n  ")
    if not checked:
        failed = 1
        print("README.md shows no session")
    print(f"{checked - (failed if checked else 0)} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
