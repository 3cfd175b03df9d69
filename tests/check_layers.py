#!/usr/bin/env python3
"""Checks the house rules that a compiler does not: includes point down, nothing throws or catches
outside the return point, every header compiles alone, tables and texts stay where they belong.

    tests/check_layers.py [--headers] [--self-test]

Prints one line a fault and last "N passed, N failed" (a file is one check).
"""
import argparse
import concurrent.futures
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
SRC = ROOT / "src"

# Folder -> level; the longest prefix wins. A file may include its own level and lower ones.
LEVELS = {
    "platform": 0, "core": 1, "front": 2, "eval": 3, "editor/model": 4, "db": 5, "network": 6,
    "editor": 7, "shell": 8, "shell/terminal": 9, "shell/win32": 9, "shell/qt": 9,
}
# Folders of one level that may not know each other.
APART = [("shell/terminal", "shell/win32"), ("shell/terminal", "shell/qt"), ("shell/qt", "shell/win32")]
# Files that may throw and catch.
RETURN_POINT = {"shell/return_point.cpp"}
# Folders whose code may call the platform's own interfaces.
MACHINE_FOLDERS = {"platform", "shell/terminal", "shell/win32", "shell/qt"}
MACHINE_HEADERS = re.compile(r'^\s*#\s*include\s*<(windows\.h|unistd\.h|pthread\.h|readline/|termios\.h|sys/)')

INCLUDE = re.compile(r'^\s*#\s*include\s*"([^"]+)"')
# Procedures that the window system calls; they guard their work, since nothing may unwind there.
CALLED_BACK = re.compile(r"^(?:LRESULT|INT_PTR) CALLBACK \w+\([^)]*\) \{.*?^\}", re.M | re.S)
# What changes the segments of a picture. Shown pictures change inside edit_picture alone, so who
# calls these either works on stored pictures below the funnel, or includes it.
EDITS = re.compile(
    r"\b(?:add_node|put_arc_between|remove_segment|remove_node|remove_arc|CleanUpSegments|"
    r"setup_for_fdef|initialise_segment|extra_segment|deleteSelectedItems)\("
    r"|->(?:lx|ly|ux|uy|label|style) [-+|&]?= ")
FUNNEL = '#include "editor/edit.h"'
# The model and the loaders, the history itself, what makes stored pictures, and the parts of the
# hand that run inside the funnel.
BELOW_FUNNEL = ("editor/model/", "editor/history", "editor/hand/tools", "editor/builder",
                "editor/make_picture", "editor/tidy", "editor/guard", "editor/vel_cmp_start",
                "network/", "shell/show_value")
THROW = re.compile(r"\b(throw|catch|try)\b")
LONGEST = 500


def folder_of(name):
    """The folder of LEVELS that the file `name` (relative to src) belongs to, or None."""
    parents = [str(p) for p in pathlib.PurePosixPath(name).parents]
    return max((f for f in LEVELS if f in parents), key=len, default=None)


def code_lines(text):
    """The lines of a file without comments, strings and character literals."""
    pattern = re.compile(
        r'//[^\n]*|/\*.*?\*/|R"\((?:.*?)\)"|"(?:\\.|[^"\\\n])*"|\'(?:\\.|[^\'\\\n])*\'', re.S)

    def blank(match):
        return '""' + "\n" * match.group(0).count("\n")
    return pattern.sub(blank, text).splitlines()


def check_source(name, text):
    """The faults of one file of src."""
    faults = []
    folder = folder_of(name)
    if folder is None:
        return [f"{name}: stands in no level"]
    for number, line in enumerate(text.splitlines(), 1):
        where = f"{name}:{number}"
        match = INCLUDE.match(line)
        if match:
            other = folder_of(match.group(1))
            if other is None:
                faults.append(f"{where}: {match.group(1)} is not named from the root of src")
            elif LEVELS[other] > LEVELS[folder]:
                faults.append(f"{where}: {folder} includes {other}, which stands above it")
            elif (folder, other) in APART or (other, folder) in APART:
                faults.append(f"{where}: {folder} and {other} stand apart")
        elif MACHINE_HEADERS.match(line) and folder not in MACHINE_FOLDERS:
            faults.append(f"{where}: {line.strip()} belongs to the platform or a shell folder")
    if name not in RETURN_POINT:
        for number, line in enumerate(code_lines(text), 1):
            if THROW.search(line):
                faults.append(f"{name}:{number}: only the return point throws and catches")
    if not name.startswith(BELOW_FUNNEL) and FUNNEL not in text:
        faults += [f"{name}:{number}: changes segments outside edit_picture"
                   for number, line in enumerate(code_lines(text), 1) if EDITS.search(line)]
    faults += [f"{name}: lets exceptions through: {found.splitlines()[0]}"
               for found in CALLED_BACK.findall(text) if "guarded<" not in found]
    faults += check_length(name, text)
    if not text.startswith("//") and name.endswith((".h", ".cpp")):
        faults.append(f"{name}: no opening comment")
    return faults


def check_length(name, text):
    """The fault of a file that has grown too long."""
    return [f"{name}: longer than {LONGEST} lines"] if text.count("\n") > LONGEST else []


def other_texts():
    """The files beside the sources whose length counts too: scripts of resources, desktop tests."""
    desktop_tests = [p for p in (ROOT / "tests" / "wine").iterdir() if p.is_file()]
    return sorted(SRC.rglob("*.rc")) + sorted(desktop_tests)


def compile_header(path, compiler):
    """The compiler's complaint about a header that does not stand alone, or an empty text."""
    with tempfile.NamedTemporaryFile("w", suffix=".cpp") as unit:
        unit.write(f'#include "{path.relative_to(SRC)}"\n#include "{path.relative_to(SRC)}"\n')
        unit.flush()
        done = subprocess.run([compiler, "-std=c++20", "-fsyntax-only", "-Wall", "-Wextra",
                               "-I", str(SRC), unit.name], capture_output=True, text=True,
                              check=False)
    return "" if done.returncode == 0 and not done.stderr else done.stderr.strip()


def check_headers(compiler):
    headers = [p for p in sorted(SRC.rglob("*.h")) if not {"win32", "qt"} & set(p.parts)]
    with concurrent.futures.ThreadPoolExecutor(2) as pool:
        results = pool.map(lambda p: compile_header(p, compiler), headers)
    return [(str(p.relative_to(SRC)), [f"{p}: does not compile alone\n{r}"] if r else [])
            for p, r in zip(headers, results)]


def self_test():
    """The check must see the faults it is there for."""
    bad = {
        "core/a.cpp": '// x\n#include "eval/evaluate.h"\n',
        "eval/b.cpp": "// x\nvoid f() { throw 1; }\n",
        "eval/c.cpp": "// x\nvoid f() { try { g(); } catch (...) { } }\n",
        "shell/terminal/d.cpp": '// x\n#include "shell/win32/w.h"\n',
        "core/e.cpp": "// x\n#include <unistd.h>\n",
        "nowhere/f.cpp": "// x\n",
        "core/g.cpp": "int x;\n",
        "shell/j.cpp": "// x\nvoid f(WinInfo *wi) { remove_segment(1, wi); }\n",
        "editor/k.cpp": "// x\nvoid f(Segm *seg) { seg->lx += 5; }\n",
    }
    good = {
        "eval/a.cpp": '// throw and catch in a comment\n#include "core/space.h"\n'
                      'const char *t = "throw"; int bi_throw(); /* try */\n',
        "shell/terminal/b.cpp": '// x\n#include "shell/return_point.h"\n#include <unistd.h>\n',
    }
    bad["shell/win32/i.cpp"] = "// x\nLRESULT CALLBACK f(HWND h) {\n  return g(h);\n}\n"
    bad["core/h.cpp"] = "// x\n" + "\n" * LONGEST
    missed = [n for n, t in bad.items() if not check_source(n, t)]
    wrong = [n for n, t in good.items() if check_source(n, t)]
    return [("self-test", [f"missed: {missed}, wrongly blamed: {wrong}"] if missed or wrong else [])]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--headers", action="store_true", help="also compile each header alone")
    parser.add_argument("--compiler", default="g++")
    options = parser.parse_args()
    results = self_test()
    for path in sorted(SRC.rglob("*")):
        if path.suffix in (".h", ".cpp"):
            name = str(path.relative_to(SRC))
            results.append((name, check_source(name, path.read_text(encoding="utf-8"))))
    for path in other_texts():
        name = str(path.relative_to(ROOT))
        results.append((name, check_length(name, path.read_text(encoding="utf-8"))))
    if options.headers:
        results += check_headers(options.compiler)
    for _, faults in results:
        for fault in faults:
            print(fault)
    failed = sum(1 for _, faults in results if faults)
    print(f"{len(results) - failed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
