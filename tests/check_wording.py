#!/usr/bin/env python3
"""Checks that the files of the project speak in the project's own voice: comments say what the code
guarantees, not from which paper a rule came, and no path of somebody's machine stands in a file.

Prints one line a fault and last "N passed, N failed" (a file is one check).
"""
import pathlib
import re
import shutil
import subprocess
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

# Each pattern is put together from pieces, so that this file does not blame itself.
WORDS = [r"\bthe " + r"specification\b", r"\bPart " + r"\d+\.\d+", r"\bspec" + r"\.md\b",
         r"/wo" + r"rk/", r"\bAs an? A" + r"I\b", r"\blanguage " + r"model\b",
         r"\bT" + r"ODO\b", r"\bF" + r"IXME\b", r"\bX" + r"XX\b"]
PATTERN = re.compile("|".join(WORDS))
TEXTS = {".h", ".cpp", ".py", ".md", ".txt", ".cmake", ".case", ".fdb", ".ddb", ".sh", ".json",
         ".rc", ".q", ".hs", ""}


def project_files():
    listed = []
    if shutil.which("git"):
        listed = subprocess.run(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT,
                                capture_output=True, text=True, check=False).stdout.split("\n")
    if not any(listed):  # no checkout, or nothing to ask: everything but what is built
        listed = [str(p.relative_to(ROOT)) for p in ROOT.rglob("*")
                  if not {"build", ".git"} & set(p.relative_to(ROOT).parts)]
    return [ROOT / name for name in listed if name]


def main():
    checked = failed = 0
    for path in project_files():
        if path.suffix not in TEXTS or not path.is_file():
            continue
        checked += 1
        faults = [f"{path.relative_to(ROOT)}:{number}: {line.strip()[:120]}"
                  for number, line in enumerate(path.read_text("utf-8", "replace").split("\n"), 1)
                  if PATTERN.search(line)]
        print(*faults, sep="\n", end="\n" if faults else "")
        failed += bool(faults)
    if checked == 0 or not PATTERN.search("see Part " + "1.2"):
        print("nothing was checked")
        failed += 1
    print(f"{checked - failed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
