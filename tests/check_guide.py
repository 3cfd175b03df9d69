#!/usr/bin/env python3
"""Holds docs/guide true: every transcript is typed into the program and must answer what the page
shows, and every picture must be what the program draws.

    tests/check_guide.py [--program PROGRAM] [--update] [PAGE...]

A page is one session. In its blocks a line "QUERY> ..." (or "FDEC> ...", "> ...") is typed; the
lines below it, up to the next such line, are the answer. A block "```file NAME" is a file that the
session finds in its folder. "![...](FILE.svg)" behind "<!-- draw DATABASE NAME COMPONENT -->" is the
picture of that component, drawn after the session, and behind "<!-- graphics N -->" what graphics
window N shows. --update writes answers and pictures anew: read
the difference before you keep it.

It also counts the steps of the first hour, looks for every message of the program on the page of
messages, marks the solutions of the exercises, and sees that the pictures of all examples say what
their text says.

Last line "N passed, N failed".
"""
import argparse
import os
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
GUIDE = ROOT / "docs/guide"
TYPED = re.compile(r"^(?:QUERY|TDEC|CDEC|FDEC|FDEF|     )> ?(.*)$")
TYPED_LINE = re.compile(r"^(?:QUERY|TDEC|CDEC|FDEC|FDEF|     )> ?.*$", re.M)
STEPS_OF_AN_HOUR = 60
BLOCK = re.compile(r"^```([^\n]*)\n(.*?)^```$", re.M | re.S)
GRAPHICS = re.compile(r"<!-- graphics (\d+) -->\n!\[[^\]]*\]\(([^)]+)\)")
DRAW = re.compile(r"<!-- draw (\S+) (\S+) (\d+) -->\n!\[[^\]]*\]\(([^)]+)\)")


def run(program, commands, folder):
    """What the program shows for these lines, messages and answers in their order."""
    # What the user has trusted or typed before must not count: the folder is the home as well.
    env = {k: v for k, v in os.environ.items() if not k.startswith(("VELORA_", "XDG_"))}
    env.update(HOME=str(folder), TERM="dumb", NO_COLOR="1", LC_ALL="C.UTF-8")
    done = subprocess.run([program, "--batch", "--no-notes"], input=commands, text=True, env=env,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, cwd=folder, timeout=60,
                          check=False)
    return done.stdout.replace(f"{ROOT}/", "")


def groups_of(block):
    """The commands of a block: lists of typed lines and of the lines shown below them."""
    groups = []
    for line in block.splitlines():
        match = TYPED.match(line)
        if match and (line.startswith("QUERY>") or not groups):
            groups.append(([line], []))
        elif match:
            groups[-1][0].append(line)
        elif groups:
            groups[-1][1].append(line)
    return groups


def typed(groups):
    return "".join(TYPED.match(line).group(1) + "\n" for lines, _ in groups for line in lines)


def fresh_folder(text):
    folder = tempfile.TemporaryDirectory()
    for info, body in BLOCK.findall(text):
        if info.startswith("file "):
            (pathlib.Path(folder.name) / info[5:].strip()).write_text(body)
    return folder


def clean(text):
    return [line.rstrip() for line in text.splitlines()]


def answers_of(program, text, groups):
    """The answer of each command, by what is shown more with it than without it."""
    answers, before = [], ""
    for end in range(1, len(groups) + 1):
        with fresh_folder(text) as folder:
            now = run(program, typed(groups[:end]), folder)
        answers.append(clean(now[len(before):] if now.startswith(before) else now))
        before = now
    return answers


def update_page(program, page):
    text = page.read_text()
    blocks = [b for i, b in BLOCK.findall(text) if "QUERY> " in b and not i.startswith("file ")]
    groups = [g for block in blocks for g in groups_of(block)]
    answers = iter(answers_of(program, text, groups))
    for block in blocks:
        lines = []
        for group, _ in groups_of(block):
            lines += group + next(answers)
        text = text.replace(block, "\n".join(lines) + "\n", 1)
    page.write_text(text)


def pictures_of(program, page):
    """The pictures that a page shows: pairs of a file and the text the program draws."""
    text = page.read_text()
    groups = [g for i, b in BLOCK.findall(text) if not i.startswith("file ") for g in groups_of(b)]
    for window, file in GRAPHICS.findall(text):
        with fresh_folder(text) as folder:
            run(program, typed(groups) + f":graphics save {window} drawn.svg\n", folder)
            drawn = pathlib.Path(folder) / "drawn.svg"
            yield page.parent / file, drawn.read_text() if drawn.exists() else "nothing is drawn"
    for database, name, component, file in DRAW.findall(text):
        with fresh_folder(text) as folder:
            run(program, typed(groups) + ":close\nNo\n", folder)
            run(program, f":open {database}\n:draw {name} {component} drawn.svg\n", folder)
            drawn = pathlib.Path(folder) / "drawn.svg"
            yield page.parent / file, drawn.read_text() if drawn.exists() else "nothing is drawn"


def check_page(program, page):
    """The faults of a page."""
    text = page.read_text()
    faults = []
    blocks = [b for i, b in BLOCK.findall(text) if "QUERY> " in b and not i.startswith("file ")]
    groups = [g for block in blocks for g in groups_of(block)]
    with fresh_folder(text) as folder:
        got = clean(run(program, typed(groups), folder))
    shown = [line.rstrip() for _, lines in groups for line in lines]
    if got != shown:
        at = next((i for i, (a, b) in enumerate(zip(got, shown)) if a != b), min(len(got), len(shown)))
        faults.append(f"answer {at + 1}: the page says {shown[at:at + 2]}, the program {got[at:at + 2]}")
    for file, drawn in pictures_of(program, page):
        if not file.exists() or file.read_text() != drawn:
            faults.append(f"{file.name} is not what the program draws")
    for target in re.findall(r"\]\(([^)#:]+)(?:#[^)]*)?\)", text):
        if not (page.parent / target).exists():
            faults.append(f"nothing stands at {target}")
    return faults


# Where messages are given, and the texts there. What is only a frame for another text, or is told
# to developers, needs no explanation.
MESSAGE = re.compile(
    r'\b(?:BeepMsgef?|orvek_errorf?|error_exit|refuse)\(\s*(?:\d,\s*)?'
    r'((?:"(?:[^"\\]|\\.)*"\s*)+)')
NOTE = re.compile(r'\{Note::\w+,\s*((?:"(?:[^"\\]|\\.)*"\s*)+)\}')
FRAMES = re.compile(r"^[ …:]*$|^Use: |failed$|DB$")


def unexplained_messages():
    """The messages and notes of the program that docs/guide/messages.md does not name."""
    page = (GUIDE / "messages.md").read_text().replace("\\|", "|")
    for file in sorted((ROOT / "src").rglob("*.cpp")):
        for quoted in MESSAGE.findall(file.read_text()) + NOTE.findall(file.read_text()):
            text = "".join(re.findall(r'"((?:[^"\\]|\\.)*)"', quoted))
            text = text.replace('\\"', '"').replace("\\n", "").strip()
            text = re.sub(r"%(?:\.\*)?[-\d.]*(?:z|l|ll)?[sdufc]", "…", text)
            if not FRAMES.search(text) and text not in page:
                yield f"{file.name}: {text}"


def differing_examples(program):
    """The examples whose pictures and text do not say the same."""
    for pictures in sorted((ROOT / "examples").glob("*/*.seg")):
        with tempfile.TemporaryDirectory() as folder:
            for file in (pictures, pictures.with_suffix(".ddb")):
                (pathlib.Path(folder) / file.name).write_bytes(file.read_bytes())
            states = run(program, f":open {pictures.stem}\n:components\n", folder)
        if "\tsame" not in states or " newer\t" in states:
            yield pictures.name


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", default=str(ROOT / "build/debug/bin/velora"))
    parser.add_argument("--update", action="store_true")
    parser.add_argument("pages", nargs="*", default=sorted(map(str, GUIDE.glob("*.md"))))
    options = parser.parse_args()
    program = str(pathlib.Path(options.program).resolve())
    failed = 0
    for name in options.pages:
        page = pathlib.Path(name).resolve()
        if options.update:
            update_page(program, page)
            for file, drawn in pictures_of(program, page):
                file.write_text(drawn)
        faults = check_page(program, page)
        failed += 1 if faults else 0
        for fault in faults:
            print(f"FAILED {page.name}: {fault}")
    marked = subprocess.run([ROOT / "examples/exercises/mark.py", "--program", program,
                             ROOT / "examples/exercises/solutions.ddb"], capture_output=True,
                            text=True, check=False)
    if marked.returncode != 0:
        failed += 1
        print("FAILED the solutions of the exercises", marked.stdout, sep="\n")
    hour = len(TYPED_LINE.findall((GUIDE / "first-hour.md").read_text()))
    if hour >= STEPS_OF_AN_HOUR:
        failed += 1
        print(f"FAILED the first hour has {hour} steps")
    unexplained = list(unexplained_messages())
    if unexplained:
        failed += 1
        print("FAILED messages that docs/guide/messages.md does not explain:", *unexplained, sep="\n  ")
    differing = list(differing_examples(program))
    if differing:
        failed += 1
        print("FAILED pictures that differ from their text:", *differing)
    print(f"{len(options.pages) + 4 - failed} passed, {failed} failed")
    return 1 if failed or not options.pages else 0


if __name__ == "__main__":
    sys.exit(main())
