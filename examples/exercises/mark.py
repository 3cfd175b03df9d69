#!/usr/bin/env python3
"""Marks a learner's file: runs the tests of each exercise on it.

    mark.py FILE.ddb [--program velora]

Prints a line an exercise: right, or the first query whose answer is not the expected one. Last line
"N of M exercises are right"; the exit status is 0 when all are.
"""
import argparse
import pathlib
import shutil
import subprocess
import sys
import tempfile

TESTS = pathlib.Path(__file__).resolve().parent / "tests.txt"


def exercises():
    """Pairs of a title and a list of (query, answer)."""
    found = []
    lines = [l for l in TESTS.read_text().splitlines() if l.strip()][1:]
    at = 0
    while at < len(lines):
        if lines[at].split(" ")[0].isdigit():
            found.append((lines[at], []))
            at += 1
        else:
            found[-1][1].append((lines[at], lines[at + 1]))
            at += 2
    return found


def answer(program, file, query):
    """What a query answers after the learner's file was loaded, in a folder of its own."""
    with tempfile.TemporaryDirectory() as folder:
        shutil.copy(file, pathlib.Path(folder) / "answers.ddb")
        done = subprocess.run([program, "--batch", "--no-notes"], text=True, cwd=folder, timeout=30,
                              input=f'lload "answers.ddb"\n{query}\n', stdout=subprocess.PIPE,
                              stderr=subprocess.STDOUT, check=False)
    lines = [l for l in done.stdout.splitlines() if l.strip()]
    return lines[-1].strip() if lines else ""


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("file")
    parser.add_argument("--program", default="velora")
    options = parser.parse_args()
    right = 0
    for title, tests in exercises():
        wrong = ""
        for query, expected in tests:
            try:
                got = answer(options.program, options.file, query)
            except subprocess.TimeoutExpired:
                got = "no answer within 30 seconds"
            if got != expected:
                wrong = f"{query} answers {got}, not {expected}"
                break
        right += not wrong
        print(f"{title}: {wrong or 'right'}")
    total = len(exercises())
    print(f"{right} of {total} exercises are right")
    return 0 if right == total else 1


if __name__ == "__main__":
    sys.exit(main())
