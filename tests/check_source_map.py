#!/usr/bin/env python3
"""Keeps src/README.md true: one line for every source file, what it is for and what looks at it
first. What it is for is the first sentence of the file itself, so the two cannot differ.

    tests/check_source_map.py [--update]

Last line "N passed, N failed"; a file is one check. --update writes the page anew.
"""
import argparse
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent
SRC = ROOT / "src"
PAGE = SRC / "README.md"
HEAD = """# The source, file by file

Each line gives a file (a header and its source count as one), the first sentence of its opening
comment, and the test that looks at it first: a unit test that includes its header, or else the cases
of its level. `docs/architecture.md` draws the levels and tells how they work together.

Made by `tests/check_source_map.py --update`, which also holds it true.
"""
# Where a level without a unit test of a file is looked at.
CASES = {
    "platform": "tests/cases/files", "core": "tests/cases/front", "front": "tests/cases/front",
    "eval": "tests/cases/lists", "db": "tests/cases/db", "network": "tests/cases/network",
    "editor": "tests/cases/pictures", "shell": "tests/cases/events",
    "shell/terminal": "tests/cases/terminal", "shell/qt": "tests/qt", "shell/win32": "tests/wine",
}


def sentence(path):
    """The first sentence of a file's opening comment."""
    words = []
    for line in path.read_text(encoding="utf-8").splitlines():
        if not line.startswith("//"):
            break
        words.append(line[2:].strip())
    text = " ".join(words)
    end = re.search(r"\.(?= |$)", text)
    return text[:end.start()] if end else text


def modules():
    """Folder -> {name without ending: its files, the header first}."""
    found = {}
    for path in sorted(SRC.rglob("*")):
        if path.suffix in (".h", ".cpp"):
            folder = path.parent.relative_to(SRC).as_posix()
            found.setdefault(folder, {}).setdefault(path.stem, []).append(path)
    for names in found.values():
        for files in names.values():
            files.sort(key=lambda file: file.suffix != ".h")
    return found


def first_test(folder, name, tests):
    """The test that breaks first when the file is wrong."""
    header = f'#include "{folder}/{name}.h"'
    own = [t for t in tests if t.stem == f"{name}_test"]
    if own:
        return own[0].relative_to(ROOT).as_posix()
    including = [t for t, text in tests.items() if header in text and t.stem.endswith("_test")]
    if including:
        shortest = min(including, key=lambda t: (tests[t].count("#include"), t.as_posix()))
        return shortest.relative_to(ROOT).as_posix()
    levels = [f for f in CASES if folder == f or folder.startswith(f + "/")]
    return CASES[max(levels, key=len)]


def page_text():
    tests = {t: t.read_text(encoding="utf-8") for t in sorted((ROOT / "tests").rglob("*_test.cpp"))}
    lines = [HEAD]
    for folder, names in modules().items():
        lines += [f"\n## {folder}\n", "| file | what it is for | looked at first by |", "|---|---|---|"]
        for name, files in names.items():
            endings = ", ".join(file.suffix for file in files)
            about = sentence(files[0]).replace("|", "\\|")
            lines.append(f"| `{name}` {endings} | {about} | `{first_test(folder, name, tests)}` |")
    return "\n".join(lines) + "\n"


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--update", action="store_true")
    options = parser.parse_args()
    wanted = page_text()
    if options.update:
        PAGE.write_text(wanted, encoding="utf-8")
    standing = set(PAGE.read_text(encoding="utf-8").splitlines()) if PAGE.exists() else set()
    rows = [line for line in wanted.splitlines() if line.startswith("| `")]
    failed = 0
    for row in rows:
        if row not in standing:
            failed += 1
            print(f"FAILED src/README.md lacks: {row}")
    for line in sorted(standing - set(wanted.splitlines())):
        failed += 1
        print(f"FAILED src/README.md has what is no more: {line}")
    silent = [path for names in modules().values() for files in names.values() for path in files[:1]
              if not sentence(path)]
    for path in silent:
        failed += 1
        print(f"FAILED {path.relative_to(ROOT)} does not say what it is for")
    print(f"{max(len(rows) - failed, 0)} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
