"""Event scripts in real windows: the cases that `velora --events` passes without a screen must give
the same text when the script's mouse and keys go through the messages of the window system."""
import os
import pathlib
import re
import shutil
import subprocess
import sys

from desk import PROGRAM, ROOT, SLOW, check

sys.path.insert(0, os.path.join(ROOT, "tests"))
import run_cases  # noqa: E402  (stands beside this folder)

CASES = pathlib.Path(ROOT, "tests", "cases", "events")
# A control of the window system takes one step back only, and its clipboard is the screen's.
# Which window becomes the current one after another has closed is told by the window system in its
# own time here.
LEFT_OUT = {"the text of a refused window is asked about, also when a step back has emptied it",
            "opens windows of every kind, goes from one to another and closes them"}


# Where the nodes of a picture stand depends on the inside of its window, which has a frame here.
PLACES = re.compile(r"^(.* \d+ \d+ \d+)(?: -?\d+){4}((?: \d+)?)$")


def lines_of(text):
    return [PLACES.sub(r"\1\2", line) for line in text.replace("\r\n", "\n").splitlines()]


def run_script(desk, case):
    """The complaints about one case in real windows."""
    folder = pathlib.Path(desk.folder, f"case{case.line}")
    folder.mkdir()
    for name, how, body in case.files:
        (folder / name).write_bytes(run_cases.decode(how, body))
    for name in case.argument("copy").split():
        shutil.copy(os.path.join(ROOT, name), folder)
    (folder / "script.events").write_text(case.body("events"), encoding="utf-8")
    words = case.argument("options").split()
    done = subprocess.run(["wine", PROGRAM, "--events", "script.events", *words],
                          env=desk.screen.env, cwd=folder, stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE, timeout=60 * SLOW, check=False)
    wanted, got = lines_of(case.body("output")), lines_of(done.stdout.decode("utf-8", "replace"))
    faults = [f"line {i + 1}: {g!r} for {w!r}"
              for i, (w, g) in enumerate(zip(wanted, got)) if w != g][:3]
    if len(wanted) != len(got):
        faults.append(f"{len(got)} lines for {len(wanted)}")
    if done.returncode != int(case.argument("status") or 0):
        faults.append(f"exit status {done.returncode}")
    return [f"{case.name}: {fault}" for fault in faults]


def check_file(desk, name):
    faults = []
    for case in run_cases.read_cases(CASES / name):
        # The program for Windows takes a database only, and no further options.
        if case.name not in LEFT_OUT and not case.argument("options").startswith("--"):
            faults += run_script(desk, case)
    check(not faults, "; ".join(faults))


def test_event_windows(desk):
    check_file(desk, "windows.case")


def test_event_dialogs(desk):
    check_file(desk, "dialogs.case")


def test_event_hand(desk):
    check_file(desk, "hand.case")
