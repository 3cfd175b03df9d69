#!/usr/bin/env python3
"""Holds the C++ files against .clang-format, and as many of them as the time allows against the few
rules of .clang-tidy, those changed last first.

    tests/check_format.py [--tidy SECONDS] [--build FOLDER]

Last line "N passed, N failed"; a file is one check. Without the tools there is nothing to check.
"""
import argparse
import pathlib
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent


def sources(*endings):
    return sorted(p for folder in ("src", "tests", "bench") for p in (ROOT / folder).rglob("*")
                  if p.suffix in endings)


def badly_formatted(files):
    """The files that clang-format would change."""
    for file in files:
        done = subprocess.run(["clang-format", str(file)], capture_output=True, text=True, check=False)
        if done.stdout != file.read_text(encoding="utf-8"):
            yield file


def changed_last(files):
    """The files in the order of their last change, newest first."""
    log = subprocess.run(["git", "log", "--name-only", "--format=", "-n", "400"], cwd=ROOT,
                         capture_output=True, text=True, check=False).stdout.splitlines()
    place = {name: at for at, name in reversed(list(enumerate(log)))}
    return sorted(files, key=lambda f: place.get(f.relative_to(ROOT).as_posix(), len(log)))


def tidied(files, build, seconds):
    """Pairs of a file and what clang-tidy says of it, until the time is over."""
    end = time.monotonic() + seconds
    for file in files:
        left = end - time.monotonic()
        if left <= 1:
            return
        try:
            done = subprocess.run(["clang-tidy", "--quiet", "-p", str(build), str(file)], cwd=ROOT,
                                  capture_output=True, text=True, check=False, timeout=left)
        except subprocess.TimeoutExpired:
            return
        faults = [l for l in done.stdout.splitlines() if " warning: " in l or " error: " in l]
        yield file, faults or [f"{file}: clang-tidy failed"] * (done.returncode != 0)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--tidy", type=float, default=60, metavar="SECONDS")
    parser.add_argument("--build", default=str(ROOT / "build/debug"))
    options = parser.parse_args()
    passed = failed = 0
    if shutil.which("clang-format"):
        files = sources(".cpp", ".h")
        bad = list(badly_formatted(files))
        for file in bad:
            print(f"FAILED {file.relative_to(ROOT)} is not formatted")
        passed, failed = len(files) - len(bad), len(bad)
    commands = pathlib.Path(options.build) / "compile_commands.json"
    if shutil.which("clang-tidy") and commands.exists():
        known = commands.read_text(encoding="utf-8")
        files = [f for f in changed_last(sources(".cpp")) if str(f) in known]
        for file, faults in tidied(files, options.build, options.tidy):
            passed, failed = passed + (not faults), failed + bool(faults)
            print(*(f"FAILED {fault}" for fault in faults), sep="\n", end="\n" if faults else "")
    print(f"{passed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
