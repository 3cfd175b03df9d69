#!/usr/bin/env python3
"""Ends the desktop program at many points of a session and opens the database again.

A script of events draws, commits and queries; it is cut after each of its lines by a kill, some time
after the last change or at once. What the next session offers must hold everything that was old
enough to be written, and a session that was saved must offer nothing."""

import argparse
import os
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
    "drag @2.bottom @1.top",
    "query dbl #1 ;",
    "click @1",
    "key F2\nkey ctrl+A\ntype int\nkey Enter",
    "choose Save New Component of Function...\nanswer f\nmenu 501",
    "click @3 double\ntype #7\nkey Enter\nchoose Save New Component\nmenu 501",
    "choose Remove Picture and Orvek Code\n" * 2 + "menu 908",
    "undo 1",
    "menu 903",
    "choose Replace Component\nmenu 501",
    "click @2",
    "menu 301",
    "menu 309",
    "click 400 400",
    "menu 302",
    "menu 303",
    "menu 602",
    "click 300 250",
    "key Esc",
    "menu 504",
    "menu 601\nclick 100 20\nkey Esc",
]
# Steps that store or remove something: it must be written at once.
STORING = ("menu 501", "menu 908")
SETTLED = 2500  # milliseconds after which a change must have been written


def run(program, folder, lines):
    """Runs a script on the database; its output and what it complains of."""
    script = pathlib.Path(folder, "script.events")
    script.write_text("".join(line + "\n" for line in lines), encoding="utf-8")
    done = subprocess.run([program, "--events", script.name, "mine"], cwd=folder, timeout=60,
                          env={**os.environ, "HOME": folder, "XDG_STATE_HOME": folder},
                          capture_output=True, text=True, errors="replace", check=False)
    return done.stdout, done.stderr


def start_database(folder):
    pathlib.Path(folder, "mine.ddb").write_text(DATABASE, encoding="utf-8")
    pathlib.Path(folder, "mine.seg").write_text("$$$$", encoding="utf-8")


def saved_files(program, folder, lines):
    """Both files after a script that ends with a save of what is committed."""
    run(program, folder, lines + ["choose Save Without", "menu 107"])
    return [pathlib.Path(folder, name).read_text("utf-8") for name in ("mine.ddb", "mine.seg")]


def dump_of(output):
    """The lines that the last `dump` of a script printed."""
    return output.rpartition("> dump\n")[2].partition("\n> ")[0].strip()


def attempt(program, steps, settled):
    """Kills after some steps; a complaint, or an empty text."""
    with tempfile.TemporaryDirectory() as folder:
        start_database(folder)
        wait = [f"wait {SETTLED}"] if settled else []
        before, complaint = run(program, folder, steps + ["dump"] + wait + ["die"])
        if complaint:
            return complaint
        shown = dump_of(before)
        looked, _ = run(program, folder, ["choose Recover", "windows", "dump", "die"])
        offered = "Unsaved work on" in looked
        drawn = "\n" in shown
        must_stand = settled or steps[-1].endswith(STORING)
        if must_stand and drawn and not offered:
            return "nothing was offered"
        if must_stand and drawn and dump_of(looked) != shown:
            return f"came back as\n{dump_of(looked)}\ninstead of\n{shown}"
        if not must_stand or not offered:
            return ""
        recovered = saved_files(program, folder, ["choose Recover"])
    with tempfile.TemporaryDirectory() as folder:
        start_database(folder)
        # Declarations read back stand in another order.
        once = saved_files(program, folder, steps)
        if recovered[1] != once[1] or sorted(recovered[0].split()) != sorted(once[0].split()):
            return f"saved as\n{recovered}\ninstead of\n{once}"
    return ""


def false_question(program, ending):
    """A session that was saved, or whose work was given up, must leave no question behind, nor one
    that changed nothing."""
    with tempfile.TemporaryDirectory() as folder:
        start_database(folder)
        run(program, folder, ending)
        again, _ = run(program, folder, ["windows"])
        return "an ended session was asked about" if "Unsaved work on" in again else ""


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--program", default=str(ROOT / "build" / "debug" / "bin" / "velora"))
    program = str(pathlib.Path(parser.parse_args().program).resolve())
    faults = []
    for count in range(1, len(STEPS) + 1):
        for settled in (True, False):
            if complaint := attempt(program, STEPS[:count], settled):
                faults.append(f"killed after {count} steps: {complaint}")
    drawn = STEPS[:10] + [f"wait {SETTLED}"]
    endings = (drawn + ["choose Save Without", "menu 107", "choose Discard", "close", "menu 103"],
               drawn + ["choose Discard", "choose No", "menu 103"],
               drawn + ["choose Discard", "choose No", "menu 113"],
               drawn + ["undo all", f"wait {SETTLED}", "die"],
               drawn + ["choose Discard", "close", f"wait {SETTLED}", "die"],
               ["function", "answer f", "menu 902", "cancel", "menu 908", "query dbl #3 ;",
                "function", f"wait {SETTLED}", "die"],
               ["choose Save", "cancel", "menu 501", f"wait {SETTLED}", "die"])
    for ending in endings:
        if complaint := false_question(program, ending):
            faults.append(f"{complaint}: {ending}")
    for fault in faults:
        print(fault)
    total = 2 * len(STEPS) + len(endings)
    print(f"{total - len(faults)} passed, {len(faults)} failed")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
