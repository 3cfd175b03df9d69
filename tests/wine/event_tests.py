"""Event scripts in real windows: the cases that `velora --events` passes without a screen must give
the same text when the script's mouse and keys go through the messages of the window system."""
import os
import pathlib
import shutil
import subprocess
import sys

from desk import PROGRAM, ROOT, SLOW, check

sys.path.insert(0, os.path.join(ROOT, "tests"))
import run_cases  # noqa: E402  (stands beside this folder)

CASES = pathlib.Path(ROOT, "tests", "cases", "events")


def run_script(desk, case):
    """The complaints about one case in real windows, where every byte is the same."""
    folder = pathlib.Path(desk.folder, f"{case.path.stem}{case.line}")
    folder.mkdir()
    for name, how, body in case.files:
        (folder / name).write_bytes(run_cases.decode(how, body))
    for name in case.argument("copy").split():
        shutil.copy(os.path.join(ROOT, name), folder)
    (folder / "script.events").write_text(case.body("events"), encoding="utf-8")
    words = case.argument("options").split()
    desk.screen.forget_work()
    # Into files: a pipe stays open as long as any process of Wine that this one happens to start.
    shown, told = folder / "shown.txt", folder / "told.txt"
    with open(shown, "wb") as out, open(told, "wb") as errors:
        status = subprocess.run(["wine", PROGRAM, "--events", "script.events", *words],
                                env=desk.screen.env, cwd=folder, stdin=subprocess.DEVNULL,
                                stdout=out, stderr=errors, timeout=60 * SLOW,
                                check=False).returncode
    faults = []
    for name, file in (("output", shown), ("errors", told)):
        wanted = run_cases.decode(case.argument(name), case.body(name))
        got = file.read_bytes().replace(b"\r\n", b"\n")
        faults += run_cases.differences(name, wanted, got, case.argument(name))
    if status != int(case.argument("status") or 0):
        faults.append(f"exit status {status}")
    faults += run_cases.check_files(case, folder)
    return [f"{case.name}: {fault}" for fault in faults[:5]]


def check_files(desk, *names):
    faults = []
    for name in names:
        for case in run_cases.read_cases(CASES / name):
            # The program for Windows takes a database only, and no further options.
            if not case.argument("options").startswith("--"):
                faults += run_script(desk, case)
    check(not faults, "; ".join(faults))


def test_event_windows(desk):
    check_files(desk, "windows.case", "dialogs.case", "console.case", "keys.case")


def test_event_pictures(desk):
    check_files(desk, "hand.case", "faults.case", "commit.case")
