#!/usr/bin/env python3
"""Runs every example: a folder of examples/ with queries.q must give what answers.txt says.

    tests/check_examples.py [--program FILE] [--update] [NAME ...]

The last line counts the examples. --update writes the answers: read the difference before you
keep it.
"""
import argparse
import difflib
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent


def answers_of(program, folder):
    """What the program writes for the queries, run on a copy of the folder."""
    with tempfile.TemporaryDirectory(prefix="velora-example-") as scratch:
        copy = pathlib.Path(scratch, "example")
        shutil.copytree(folder, copy)
        # An example with a library of its own uses the one that was built beside the program.
        env = dict(os.environ)
        for source in folder.glob("*.c"):
            env["VELORA_USER_LIBRARY"] = str(pathlib.Path(program).parent / f"{source.stem}.so")
        done = subprocess.run([program, "--batch"], input=(copy / "queries.q").read_bytes(), cwd=copy,
                              env=env, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, timeout=300, check=False)
        status = "" if done.returncode == 0 else f"exit status {done.returncode}\n"
        return done.stdout.decode("utf-8", "replace") + status


def main():
    parser = argparse.ArgumentParser(description="Runs the examples.")
    parser.add_argument("--program", default=str(ROOT / "build/debug/bin/velora"))
    parser.add_argument("--update", action="store_true", help="write what the program said")
    parser.add_argument("names", nargs="*")
    options = parser.parse_args()
    folders = sorted(path.parent for path in (ROOT / "examples").glob("*/queries.q"))
    folders = [f for f in folders if not options.names or f.name in options.names]
    passed = failed = 0
    for folder in folders:
        got = answers_of(str(pathlib.Path(options.program).resolve()), folder)
        expected = folder / "answers.txt"
        if options.update:
            expected.write_text(got)
        wanted = expected.read_text() if expected.exists() else ""
        if got == wanted:
            passed += 1
            continue
        failed += 1
        print(f"FAILED examples/{folder.name}")
        print(*difflib.unified_diff(wanted.splitlines(), got.splitlines(), "expected", "got",
                                    lineterm=""), sep="\n")
    print(f"{passed} passed, {failed} failed")
    return 1 if failed or not folders else 0


if __name__ == "__main__":
    sys.exit(main())
