#!/usr/bin/env python3
"""Marks a learner's file: runs the tests of each exercise on it.

    mark.py FILE.ddb [--program velora]

Prints a line an exercise: right, or the first query whose answer is not the expected one. Last line
"N of M exercises are right"; the exit status is 0 when all are.
"""
import argparse
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile

TESTS = pathlib.Path(__file__).resolve().parent / "tests.txt"
SECONDS = "30"


def exercises():
    """Pairs of a title and the text of its tests."""
    parts = re.split(r"^== (.*)$", TESTS.read_text(), flags=re.M)
    return list(zip(parts[1::2], parts[2::2]))


def mark(program, file, tests):
    """"right", or what is wrong first, after the learner's file was opened in a fresh folder."""
    with tempfile.TemporaryDirectory() as folder:
        shutil.copy(file, pathlib.Path(folder) / "answers.ddb")
        (pathlib.Path(folder) / "tests").write_text(tests)
        done = subprocess.run([program, "--batch", "--notes", "none", "--timeout", SECONDS, "--test",
                               "tests", "answers.ddb"], text=True, cwd=folder,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
    if done.returncode == 0:
        return "right"
    wrong = re.search(r"^tests:\d+: (.*)\n  expected (.*)\n  answered (.*)$", done.stdout, re.M)
    if wrong is None:
        return done.stdout.strip().splitlines()[0] if done.stdout.strip() else "no answer"
    return "{} answers {}, not {}".format(wrong[1], wrong[3], wrong[2])


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("file")
    parser.add_argument("--program", default="velora")
    options = parser.parse_args()
    right = 0
    for title, tests in exercises():
        verdict = mark(options.program, options.file, tests)
        right += verdict == "right"
        print(f"{title}: {verdict}")
    total = len(exercises())
    print(f"{right} of {total} exercises are right")
    return 0 if right == total else 1


if __name__ == "__main__":
    sys.exit(main())
