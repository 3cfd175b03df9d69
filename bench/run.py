#!/usr/bin/env python3
"""Times whole programs and prints tables of medians.

(a) the programs under bench/programs beside their Haskell twins by runhugs, when that is installed,
    with the ratio of each and the geometric mean; (b) the loading of a generated database;
(c) the start to the first prompt, on a pseudo-terminal. With --count instead the instructions of
the programs, beside those of the table bench/instructions.txt; the exit status is then 1 when one
has grown by more than 3 %. --update-counts writes what was counted into the table.

    bench/run.py [--program FILE] [--runs N] [--only pNN] [--clauses N] [--count [--update-counts]]
"""
import argparse
import math
import os
import pathlib
import pty
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

import instructions

HERE = pathlib.Path(__file__).resolve().parent
PROGRAMS = HERE / "programs"


def timed(command, **how):
    start = time.perf_counter()
    done = subprocess.run(command, capture_output=True, check=False, timeout=600, **how)
    return time.perf_counter() - start, done.stdout.decode("utf-8", "replace")


def median_of(runs, command, **how):
    results = []
    for _ in range(runs):
        if "stdin_file" in how:
            with open(how["stdin_file"], "rb") as stdin:
                results.append(timed(command, stdin=stdin, cwd=how["cwd"]))
        else:
            results.append(timed(command, **how))
    return statistics.median(t for t, _ in results), results[-1][1]


def last_number(text):
    words = text.replace("#", " ").split()
    return words[-1] if words else "?"


def compare_programs(options):
    hugs = shutil.which("runhugs")
    print(f"{'program':<14}{'velora':>9}{'hugs':>9}{'ratio':>8}  answer")
    ratios, wrong = [], 0
    for query in sorted(PROGRAMS.glob("p*.q")):
        name = query.stem
        if options.only and name not in options.only:
            continue
        seconds, text = median_of(options.runs, [options.program, "--batch"],
                                  stdin_file=query, cwd=PROGRAMS)
        answer, note, theirs, ratio = last_number(text), "", "", ""
        twins = sorted(PROGRAMS.glob(f"{name}_*.hs"))
        if hugs and twins:
            hugs_seconds, hugs_text = median_of(options.runs, [hugs, twins[0].name], cwd=PROGRAMS)
            theirs, ratio = f"{hugs_seconds:.3f}", f"{hugs_seconds / seconds:.2f}"
            if name != "p00":
                ratios.append(hugs_seconds / seconds)
            if last_number(hugs_text) != answer:
                wrong += 1
                note = f"  but the twin says {last_number(hugs_text)}"
        print(f"{twins[0].stem if twins else name:<14}{seconds:>9.3f}{theirs:>9}{ratio:>8}  "
              f"{answer}{note}", flush=True)
    if ratios:
        mean = math.exp(sum(map(math.log, ratios)) / len(ratios))
        print(f"geometric mean of the ratios (without p00): {mean:.2f}")
    return wrong


def write_database(path, clauses):
    """Declarations and clauses of the common shapes, five clauses a function."""
    functions = clauses // 5
    lines = ["tdec", "shade ::= enum ;", ";", "cdec", "Dark ::= shade ;", "Light ::= shade ;", ";",
             "fdec"]
    lines += [f"gen{i} ::= int -> shade -> list int ;" for i in range(functions)]
    lines += [";", "fdef"]
    for i in range(functions):
        before = f"gen{i - 1}" if i else "gen0"
        lines += [f"gen{i} #0 Dark ::= nil ;",
                  f"gen{i} #1 ?0 ::= [#{i} #2 #3] ;",
                  f"gen{i} ?0 Light ::= : ?0 ({before} (- ?0 #1) Dark) ;",
                  f"gen{i} ?0 Dark ::= if (< ?0 #10) (: ?0 nil) ({before} (- ?0 #1) Light) ;",
                  f"gen{i} ?0 ?1 ::= append ({before} (- ?0 #1) ?1) [?0 (+ ?0 #{i})] ;"]
    lines += [";", ""]
    path.write_text("\n".join(lines))


def time_loading(options):
    with tempfile.TemporaryDirectory() as folder:
        path = pathlib.Path(folder, "generated.ddb")
        write_database(path, options.clauses)
        empty = pathlib.Path(folder, "empty.q")
        empty.write_text("#0 ;\n")
        load = pathlib.Path(folder, "load.q")
        load.write_text('lload "generated.ddb"\ngen7 #3 Dark ;\n')
        command = [options.program, "--batch"]
        base, _ = median_of(options.runs, command, stdin_file=empty, cwd=folder)
        full, text = median_of(options.runs, command, stdin_file=load, cwd=folder)
        print(f"loading {options.clauses} clauses ({path.stat().st_size // 1024} KB): "
              f"{full - base:.3f} s (whole run {full:.3f} s); then gen7 #3 Dark is "
              f"{text.strip().splitlines()[-1] if text.strip() else '?'}")


def first_prompt(program, home):
    """Seconds from the start of the program to its first prompt."""
    env = dict(os.environ, HOME=home, TERM="xterm", NO_COLOR="1")
    start = time.perf_counter()
    pid, master = pty.fork()
    if pid == 0:
        os.execve(program, [program], env)
    seen = b""
    while b"QUERY> " not in seen:
        seen += os.read(master, 65536)
    seconds = time.perf_counter() - start
    os.write(master, b"\x04")
    try:
        while os.read(master, 65536):
            pass
    except OSError:
        pass
    os.close(master)
    os.waitpid(pid, 0)
    return seconds


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", default=str(HERE.parent / "build/release/bin/velora"))
    parser.add_argument("--runs", type=int, default=5)
    parser.add_argument("--only", action="append", default=[])
    parser.add_argument("--clauses", type=int, default=10000)
    parser.add_argument("--count", action="store_true")
    parser.add_argument("--update-counts", action="store_true")
    options = parser.parse_args()
    options.program = os.path.abspath(options.program)
    if not os.access(options.program, os.X_OK):
        print(f"{options.program} is not there; build it with ./run or cmake --preset release")
        return 1
    if options.count:
        queries = {query.stem: query for query in sorted(PROGRAMS.glob("p*.q"))
                   if not options.only or query.stem in ["p00", *options.only]}
        compared, grown = instructions.count_all(options, queries)
        print(f"{compared - grown} passed, {grown} failed")
        return 1 if grown else 0
    wrong = compare_programs(options)
    time_loading(options)
    with tempfile.TemporaryDirectory() as home:
        starts = sorted(first_prompt(options.program, home) for _ in range(max(options.runs, 11)))
    print(f"start to first prompt: {1000 * statistics.median(starts):.1f} ms (median), "
          f"{1000 * starts[0]:.1f} ms (best)")
    return 1 if wrong else 0


if __name__ == "__main__":
    sys.exit(main())
