#!/usr/bin/env python3
"""Feeds the program what nobody should type: very long lines, very deep nesting, strange bytes,
directories, files that load themselves. Each must get a message or a right answer, and the next
query must be right. Also the interrupt key where it is hardest: in scripts, long loads, full spaces.

    tests/check_hard_inputs.py [--program FILE] [--scale N]

`--scale` divides the sizes (sanitizers are slow). Last line "N passed, N failed".
"""
import argparse
import os
import pathlib
import resource
import signal
import subprocess
import sys
import tempfile
import time

import check_terminal

ROOT = pathlib.Path(__file__).resolve().parent.parent
SECTION = b"fdec\nf ::= %s ;\n;\n"
FUNCTION = b"fdec\nf ::= int -> int ;\n;\nfdef\n"


def inputs(n):
    """Name -> (what is typed, what the output or the messages must hold); n is a million, scaled."""
    deep = n // 10
    return {
        "a string of ten megabytes": (b'"' + b"x" * (10 * n) + b'" ;\n', b"xxxxxxxx"),
        "a line of names": (b"foldr " * n + b";\n", b"foldr"),
        "open brackets": (b"(" * n + b" ;\n", b"Unmatched round brackets"),
        "closed brackets": (b"(" * n + b"#1" + b")" * n + b" ;\n", b"#1"),
        "nested lists": (b"[" * n + b"]" * n + b" ;\n", b"["),
        "a long list": (b"[" + b"#1 " * n + b"] ;\n", b"#1 #1 #1"),
        "a bracketed type": (SECTION % (b"(" * deep + b"int" + b")" * deep) + b":type f\n",
                             b"f ::= int"),
        "a nested type": (SECTION % (b"list (" * deep + b"int" + b")" * deep) +
                          b"fdec\nf ::= int ;\n;\n:type f\n", b"f ::= int"),
        "a deep pattern": (FUNCTION + b"f " + b"(: #1 " * deep + b"nil" + b")" * deep +
                           b" ::= #1 ;\n;\nf [] ;\n:list f\n:code f\n", b"FUNCTION"),
        "a deep body": (FUNCTION + b"f ?0 ::= " + b"(+ #1 " * deep + b"?0" + b")" * deep +
                        b" ;\n;\nf #1 ;\n", b"Too many nested calls within the Query"),
        "names at the bound": (b"fdec\n" + b"a" * 255 + b" ::= int ;\n;\n:type " + b"a" * 255 + b"\n",
                               b"a" * 255 + b" ::= int"),
        "names past the bound": (b"fdec\n" + b"b" * 256 + b" ::= int ;\n" + b"c" * (n // 10) +
                                 b" ::= int ;\n;\n:type " + b"d" * n + b"\n" + b"e" * n + b" ;\n",
                                 b"255"),
        "NUL bytes": (b"+ #1\0#2 ;\n\0\0;\n", b"#3"),
        "a directory": (b'lload "folder"\n:load .\n', b"Can't read from file folder"),
        "a file that loads itself": (b'lload "self.ddb"\n', b"too deeply"),
        "a file without an end": (b'lload "open.ddb"\n', b"Loaded."),
        "a file without an end of its own": (b'lload "/dev/zero"\n', b"Can't read from file /dev/zero"),
        "numbers past all bounds": (b"#99999999999999999999 ;\n#r1e999 ;\n?99999999999 ;\n", b""),
    }


def check_input(program, folder, text, wanted):
    done = subprocess.run([program, "--batch"], input=text + b"\n;\n+ #40 #2 ;\n",
                          capture_output=True, cwd=folder, timeout=300, check=False)
    assert done.returncode in (0, 1), f"status {done.returncode}: {done.stderr[-2000:]!r}"
    assert done.stdout.endswith(b"#42\n"), f"the next query: {done.stdout[-100:]!r}"
    assert wanted in done.stdout + done.stderr, f"no {wanted[:60]!r} in {done.stderr[-300:]!r}"


def check_script_interrupt(program, folder):
    """The key ends a script with 130, in a computation and while it waits for input."""
    for text in (check_terminal.ENDLESS.encode() + b"endless #0 ;\n#1 ;\n", b""):
        with subprocess.Popen([program, "--batch"], stdin=subprocess.PIPE, cwd=folder,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE) as process:
            process.stdin.write(text)
            process.stdin.flush()
            time.sleep(1.0)
            process.send_signal(signal.SIGINT)
            out, _ = process.communicate(timeout=20)
        assert process.returncode == 130, f"status {process.returncode}"
        assert out == b"Query interrupted\n", f"output {out!r}"


def check_endless_input(program, folder):
    """Input without line ends can be interrupted, and is given up when nobody does."""
    with open("/dev/zero", "rb") as zero:
        with subprocess.Popen([program, "--batch"], stdin=zero, cwd=folder,
                              stdout=subprocess.PIPE, stderr=subprocess.PIPE) as process:
            time.sleep(0.1)
            process.send_signal(signal.SIGINT)
            process.communicate(timeout=20)
        assert process.returncode == 130, f"status {process.returncode}"
        done = subprocess.run([program, "--batch"], stdin=zero, capture_output=True, cwd=folder,
                              timeout=60, check=False)
    assert done.returncode == 1, f"status {done.returncode}"
    assert b"A line of the input is too long" in done.stderr, done.stderr[-300:]


def check_lost_output(program, folder):
    """Output that does not arrive is a failure: on a full disk, and where there is no output."""
    for words, close in (["--batch"], False), (["--help"], False), (["--batch"], True):
        with open("/dev/full", "wb") as full:
            done = subprocess.run([program, *words], input=b"#1 ;\n", stdout=full, cwd=folder,
                                  stderr=subprocess.PIPE, timeout=20, check=False,
                                  preexec_fn=(lambda: os.close(1)) if close else None)
        assert done.returncode == 1, f"status {done.returncode} of {words}"
        assert b"could not be written" in done.stderr, done.stderr


def check_strange_files(program, folder):
    """Pipes and folders in the place of a database are refused, and leave nothing behind."""
    os.mkfifo(pathlib.Path(folder, "pipe.ddb"))
    pathlib.Path(folder, "x.ddb").write_text("fdec\nf ::= int ;\n;\n")
    pathlib.Path(folder, "x.seg").mkdir()
    pathlib.Path(folder, "good.ddb").write_text("fdec\n;\n")
    before = sorted(os.listdir(folder))
    done = subprocess.run([program, "--batch", "x"], cwd=folder, capture_output=True, check=False,
                          input=b":open pipe\n:open x\n:open folder\n:status\n", timeout=20)
    told = [line for line in done.stderr.splitlines() if not line.startswith(b"note: ")]
    assert told == [b"Failed to open x.seg", b"Failed to open pipe.ddb", b"Failed to open x.seg",
                    b"Failed to open folder.ddb"], done.stderr
    assert b"note: x.seg: Is a directory" in done.stderr, done.stderr
    assert b"note: pipe.ddb: Not a plain file" in done.stderr, done.stderr
    assert sorted(os.listdir(folder)) == before, os.listdir(folder)
    done = subprocess.run([program, "--batch"], cwd=folder, capture_output=True, check=False,
                          input=b":open x\n:open good\n:status\n", timeout=20)
    assert b"Database good.ddb" in done.stdout, done.stdout


def check_bounded_file(program, folder):
    """A save into a file that may not grow fails and leaves the old one; the session goes on."""
    path = pathlib.Path(folder, "old.ddb")
    path.write_text("fdec\nf ::= int ;\n;\n")
    old = path.read_text()
    new = b"fdec\n" + b"".join(b"f%d ::= int ;\n" % i for i in range(2000)) + b";\n"
    done = subprocess.run([program, "--batch", "old"], input=new + b":save\n#7 ;\n", cwd=folder,
                          capture_output=True, timeout=20, check=False,
                          preexec_fn=lambda: resource.setrlimit(resource.RLIMIT_FSIZE, (8192, 8192)))
    assert done.returncode == 1 and done.stdout.endswith(b"#7\n"), (done.returncode, done.stdout)
    assert path.read_text() == old, "the old file has changed"


def check_load_interrupt(program, folder):
    """The key during a long load brings the prompt back, and what was loaded is whole."""
    path = pathlib.Path(folder, "long.ddb")
    with path.open("w") as f:
        for i in range(60000):
            f.write(f"fdec\nlong{i} ::= int -> int ;\n;\nfdef\nlong{i} ?0 ::= + ?0 #{i} ;\n;\n")
    t = check_terminal.start(program, folder)
    t.type('lload "long.ddb"\n')
    t.wait(". . . .")
    t.mark = len(t.raw)
    os.write(t.master, b"\x03")
    took = t.wait("QUERY> ")
    assert "Query interrupted" in t.seen(), t.seen()[-200:]
    assert took < 1.0, f"{took:.2f} s"
    t.type("long1 #41 ;\n")
    t.wait("#42\nQUERY> ")
    t.leave_unsaved()


def check_collection_interrupt(program, folder):
    """The key while a large space is collected over and over."""
    t = check_terminal.start(program, folder, "--space", "3000000")
    t.type("fdec\ncount ::= int -> list int ;\nspin ::= list int -> int -> int ;\n;\nfdef\n"
           "count #0 ::= nil ;\ncount ?0 ::= : ?0 (count (- ?0 #1)) ;\n"
           "spin ?0 #-1 ::= #0 ;\nspin ?0 ?1 ::= spin ?0 (+ ?1 #1) ;\n;\n")
    t.wait("QUERY> ")
    check_terminal.interrupt_often(t, "spin (count #200000) #0 ;\n", 1.0, 5)
    t.leave_unsaved()


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", default=str(ROOT / "build/release/bin/velora"))
    parser.add_argument("--scale", type=int, default=1)
    parser.add_argument("--only", default="")
    options = parser.parse_args()
    program = os.path.abspath(options.program)
    checks = [(name, lambda p, f, t=text, w=wanted: check_input(p, f, t, w))
              for name, (text, wanted) in inputs(1000000 // options.scale).items()]
    checks += [("interrupt of a script", check_script_interrupt),
               ("input without line ends", check_endless_input),
               ("lost output", check_lost_output),
               ("strange files", check_strange_files),
               ("a file that may not grow", check_bounded_file),
               ("interrupt of a load", check_load_interrupt),
               ("interrupt of collections", check_collection_interrupt)]
    checks = [c for c in checks if options.only in c[0]]
    failed = 0
    for name, check in checks:
        with tempfile.TemporaryDirectory(prefix="velora-hard-") as folder:
            pathlib.Path(folder, "folder").mkdir()
            pathlib.Path(folder, "self.ddb").write_text('lload "self.ddb"\n')
            pathlib.Path(folder, "open.ddb").write_text('fdec\nf ::= int ;\n;\nfdef\nf ::= "open')
            try:
                check(program, folder)
            except (AssertionError, OSError, subprocess.TimeoutExpired) as fault:
                failed += 1
                print(f"FAILED {name}: {str(fault)[:2500]}")
    print(f"{len(checks) - failed} passed, {failed} failed")
    return 1 if failed or not checks else 0


if __name__ == "__main__":
    sys.exit(main())
