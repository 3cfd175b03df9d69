#!/usr/bin/env python3
"""Runs case files through the terminal program, or those with event scripts through the native
desktop program, and compares every byte it writes.

A case file is a script that a user would type with the answer in it; tests/README.md describes
the format. Each case runs in an empty folder of its own, two at a time. The last line is
"N passed, N failed"; the exit status is 1 when a case failed.

    tests/run_cases.py [--program FILE] [--stress K] [--plain-bodies] [--update] [FILE or FOLDER ...]
"""
import argparse
import concurrent.futures
import difflib
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

TESTS = pathlib.Path(__file__).resolve().parent
ROOT = TESTS.parent
SECTION = re.compile(r"^--- (\w+)(?: (.*))?$")
ESCAPE = re.compile(r"^\\(?=--- |=== |\\)")  # what keeps a line from being a marker
EVENTS = "script.events"
LISTS = {"file", "left"}
SINGLE = {"options", "copy", "events", "input", "output", "errors", "status", "gone", "env"}


class CaseError(Exception):
    """A case file that does not follow the format."""


class Case:
    """One case: its sections as written, and where it stands."""

    def __init__(self, path, line, name):
        self.path, self.line, self.name = path, line, name
        self.sections = {}  # name -> (argument, body)
        self.files = []     # (name, how, body)
        self.left = []

    def title(self):
        return f"{os.path.relpath(self.path, ROOT)}:{self.line}: {self.name}"

    def body(self, name):
        return self.sections.get(name, ("", ""))[1]

    def argument(self, name):
        return self.sections.get(name, ("", ""))[0]


def store_section(case, name, argument, lines):
    body = "".join(ESCAPE.sub("", line) for line in lines)
    if name in LISTS:
        file_name, _, how = argument.partition(" ")
        if not file_name:
            raise CaseError(f"{case.title()}: --- {name} wants a file name")
        (case.files if name == "file" else case.left).append((file_name, how, body))
    elif name in SINGLE:
        if name in case.sections:
            raise CaseError(f"{case.title()}: --- {name} stands twice")
        case.sections[name] = (argument, body)
    else:
        raise CaseError(f"{case.title()}: unknown section --- {name}")


def read_cases(path):
    """All cases of one file, in order."""
    cases, case, section, lines = [], None, None, []

    def finish():
        if case is not None and section is not None:
            store_section(case, section[0], section[1], lines)

    text = path.read_bytes().decode("utf-8")
    for number, line in enumerate(text.splitlines(keepends=True), 1):
        plain = line.rstrip("\r\n")
        match = SECTION.match(plain)
        if plain.startswith("=== "):
            if lines and not lines[-1].strip():
                lines.pop()  # the blank line between two cases
            finish()
            case, section, lines = Case(path, number, plain[4:].strip()), None, []
            cases.append(case)
        elif match and case is not None:
            finish()
            section, lines = (match.group(1), (match.group(2) or "").strip()), []
        elif section is not None:
            lines.append(line)
        elif plain and not plain.startswith("#"):
            raise CaseError(f"{path}:{number}: text outside of a section")
    finish()
    if not cases:
        raise CaseError(f"{path}: no case in this file")
    for each in cases:
        if "output" not in each.sections:
            raise CaseError(f"{each.title()}: no --- output section")
    return cases


def decode(how, body):
    """The bytes of a section body; `escaped` bodies may hold \\n, \\x00 and the like."""
    if "escaped" in how.split():
        joined = "".join(body.splitlines())
        return joined.encode("latin-1", "backslashreplace").decode("unicode_escape").encode("latin-1")
    return body.encode("utf-8")


def differences(title, expected, got, how=""):
    """The lines of a diff, empty when all is as expected."""
    if "any" in how.split():
        return []
    if "matches" in how.split():
        patterns, lines = expected.decode().splitlines(), got.decode("utf-8", "replace").splitlines()
        if len(patterns) == len(lines) and all(map(re.fullmatch, patterns, lines)):
            return []
    elif "contains" in how.split():
        text = got.decode("utf-8", "replace")
        missing = [l for l in expected.decode().splitlines() if l not in text]
        return [f"  {title} lacks: {l}" for l in missing] + (
            ["  " + title + " was:"] + ["  | " + l for l in text.splitlines()[:40]] if missing else [])
    elif expected == got:
        return []
    want = expected.decode("utf-8", "backslashreplace").splitlines(keepends=True)
    have = got.decode("utf-8", "backslashreplace").splitlines(keepends=True)
    diff = difflib.unified_diff(want, have, f"{title} expected", f"{title} got")
    out = []
    for line in diff:
        out.append("  " + line.rstrip("\n") + ("" if line.endswith("\n") else "   <no line end>"))
    return out[:80]


def run_program(case, program, folder, mode):
    env = {k: v for k, v in os.environ.items() if not k.startswith("VELORA_")}
    env.update(HOME=folder, TERM="dumb", NO_COLOR="1", LC_ALL="C.UTF-8")
    env.setdefault("ASAN_OPTIONS", "detect_leaks=1:allocator_may_return_null=1")
    env.setdefault("UBSAN_OPTIONS", "print_stacktrace=1")
    # A desktop program draws into memory; what the library of windows remarks is not its own.
    env.setdefault("QT_QPA_PLATFORM", "offscreen")
    env.update(XDG_RUNTIME_DIR=folder, QT_LOGGING_RULES="default.warning=false")
    for line in case.body("env").splitlines():
        key, _, value = line.partition("=")
        env[key] = value.replace("{BIN}", str(pathlib.Path(program).resolve().parent))
    if mode.stress:
        env["VELORA_STRESS"] = str(mode.stress)
    if mode.plain_bodies:
        env["VELORA_PLAIN_BODIES"] = "1"
    options = shlex.split(case.argument("options"))
    if "events" in case.sections:  # an event script instead of commands
        pathlib.Path(folder, EVENTS).write_text(case.body("events"), encoding="utf-8")
        options = ["--events", EVENTS] + options
    elif "plain" in options:  # run without --batch
        options.remove("plain")
    else:
        options = ["--batch", "--notes", "messages"] + options
    return subprocess.run([program, *options], input=decode(case.argument("input"), case.body("input")),
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE, cwd=folder, env=env,
                          timeout=300 if mode.stress else 120, check=False)


def check_files(case, folder):
    out = []
    for name, how, body in case.left:
        path = pathlib.Path(folder, name)
        if not path.is_file():
            out.append(f"  no file {name} was left")
        else:
            out += differences(name, decode(how, body), path.read_bytes(), how)
    for name in case.argument("gone").split():
        if pathlib.Path(folder, name).exists():
            out.append(f"  {name} should be gone")
    return out


def run_case(case, program, mode):
    """The complaints about one case; empty when it passed."""
    with tempfile.TemporaryDirectory(prefix="velora-case-") as folder:
        for name, how, body in case.files:
            path = pathlib.Path(folder, name)
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_bytes(decode(how, body))
        for name in case.argument("copy").split():
            shutil.copy(ROOT / name, folder)
        try:
            done = run_program(case, program, folder, mode)
        except subprocess.TimeoutExpired:
            return ["  did not end in time"], None
        fold = folder.encode()
        case.got = (done.stdout.replace(fold, b"{DIR}"), done.stderr.replace(fold, b"{DIR}"),
                    done.returncode)
        out = differences("output", decode(case.argument("output"), case.body("output")),
                          case.got[0], case.argument("output"))
        out += differences("errors", decode(case.argument("errors"), case.body("errors")),
                           case.got[1], case.argument("errors"))
        status = int(case.argument("status") or 0)
        if done.returncode != status:
            out.append(f"  exit status {done.returncode}, expected {status}")
        return out + check_files(case, folder), done


def update_file(path, cases):
    """Writes what the program said into the plain output and errors sections of a case file."""
    lines, out, skip = path.read_text(encoding="utf-8").splitlines(keepends=True), [], False
    index = -1
    for line in lines:
        match = SECTION.match(line.rstrip("\n"))
        if line.startswith("=== "):
            if skip:
                out.append("\n")
            index, skip = index + 1, False
        elif match:
            skip = match.group(1) in ("output", "errors") and not match.group(2)
            if skip and hasattr(cases[index], "got"):
                got = cases[index].got[0 if match.group(1) == "output" else 1].decode()
                out.append(line)
                out += ["\\" + l if l.startswith(("--- ", "=== ", "\\")) else l
                        for l in got.splitlines(keepends=True)]
                continue
            skip = False
        if not skip:
            out.append(line)
    path.write_text("".join(out), encoding="utf-8")


def collect(paths):
    for path in map(pathlib.Path, paths):
        if path.is_dir():
            yield from sorted(path.rglob("*.case"))
        else:
            yield path


def main():
    parser = argparse.ArgumentParser(description="Runs case files through the terminal program.")
    parser.add_argument("--program", default=str(ROOT / "build/debug/bin/velora"))
    parser.add_argument("--stress", type=int, default=0, help="collect at every K-th allocation")
    parser.add_argument("--plain-bodies", action="store_true",
                        help="reduce clause bodies combinator by combinator")
    parser.add_argument("--update", action="store_true", help="write what the program said")
    parser.add_argument("--jobs", type=int, default=2)
    parser.add_argument("--only", default="", help="run the cases whose title holds this text")
    parser.add_argument("paths", nargs="*", default=[str(TESTS / "cases")])
    options = parser.parse_args()
    try:
        by_file = {path: read_cases(path) for path in collect(options.paths)}
    except (CaseError, OSError) as error:
        print(error)
        print("0 passed, 1 failed")
        return 1
    cases = [c for cs in by_file.values() for c in cs if options.only in c.title()]
    program = os.path.abspath(options.program)
    failed = 0
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        results = pool.map(lambda c: run_case(c, program, options), cases)
        for case, (complaints, _) in zip(cases, results):
            if complaints:
                failed += 1
                print(f"FAILED {case.title()}", *complaints, sep="\n")
    if options.update:
        for path, its_cases in by_file.items():
            update_file(path, its_cases)
    print(f"{len(cases) - failed} passed, {failed} failed")
    return 1 if failed or not cases else 0


if __name__ == "__main__":
    sys.exit(main())
