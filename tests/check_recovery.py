#!/usr/bin/env python3
"""Ends the desktop program at many points of a session and opens the database again.

A script of events draws, commits and queries; it is cut after each of its lines by a kill, some time
after the last change or at once. What the next session offers must hold everything that was old
enough to be written, and a session that was saved must offer nothing."""

import argparse
import pathlib
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
DATABASE = """fdec
dbl ::= int -> int ;
f ::= int -> int ;
;
fdef
dbl ?0 ::= * #2 ?0 ;
;
"""
# A picture of f is drawn piece by piece, committed and changed once more.
STEPS = [
    "menu 504",
    "menu 602",
    "click 200 150",
    "type dbl",
    "key Enter",
    "menu 601",
    "click 200 20",
    "type int",
    "key Enter",
    "drag @3.bottom @2.top",
    "query dbl #1 ;",
    "click @2",
    "menu 301",
    "menu 309",
    "click 400 400",
    "menu 302",
    "menu 303",
    "menu 602",
    "click 300 250",
    "key Escape",
]
SETTLED = 2500  # milliseconds after which a change must have been written


def run(program, folder, lines):
    """Runs a script on the database; its output."""
    script = pathlib.Path(folder, "script.events")
    script.write_text("".join(line + "\n" for line in lines), encoding="utf-8")
    done = subprocess.run([program, "--events", script.name, "mine"], cwd=folder, timeout=60,
                          capture_output=True, text=True, errors="replace", check=False)
    return done.stdout


def dump_of(output):
    """The lines that the last `dump` of a script printed."""
    return output.rpartition("> dump\n")[2].partition("\n> ")[0].strip()


def attempt(program, steps, settled):
    """Kills after some steps; a complaint, or an empty text."""
    with tempfile.TemporaryDirectory() as folder:
        pathlib.Path(folder, "mine.ddb").write_text(DATABASE, encoding="utf-8")
        pathlib.Path(folder, "mine.seg").write_text("$$$$", encoding="utf-8")
        wait = [f"wait {SETTLED}"] if settled else []
        before = run(program, folder, steps + ["dump"] + wait + ["die"])
        shown = dump_of(before)
        after = run(program, folder, ["choose Recover", "windows", "dump"])
        offered = "Unsaved work on" in after
        drawn = shown not in ("", "no picture") and "\n" in shown
        if settled and drawn and not offered:
            return "nothing was offered"
        if settled and offered and drawn and dump_of(after) != shown:
            return f"came back as\n{dump_of(after)}\ninstead of\n{shown}"
    return ""


def false_question(program):
    """A session that was saved must leave no question behind."""
    with tempfile.TemporaryDirectory() as folder:
        pathlib.Path(folder, "mine.ddb").write_text(DATABASE, encoding="utf-8")
        pathlib.Path(folder, "mine.seg").write_text("$$$$", encoding="utf-8")
        run(program, folder, STEPS[:10] + [f"wait {SETTLED}", "choose Save Without", "menu 107",
                                           "choose Discard", "close", "menu 103"])
        again = run(program, folder, ["windows"])
        return "a saved session was asked about" if "Unsaved work on" in again else ""


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", default=str(ROOT / "build" / "debug" / "bin" / "velora"))
    program = str(pathlib.Path(parser.parse_args().program).resolve())
    faults = []
    for count in range(1, len(STEPS) + 1):
        for settled in (True, False):
            if complaint := attempt(program, STEPS[:count], settled):
                faults.append(f"killed after {count} steps: {complaint}")
    if complaint := false_question(program):
        faults.append(complaint)
    for fault in faults:
        print(fault)
    total = 2 * len(STEPS) + 1
    print(f"{total - len(faults)} passed, {len(faults)} failed")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
