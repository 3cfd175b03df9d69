"""Counts instructions of whole programs under callgrind and compares them with a table.

The count of one build is the same in every run, so a step of the reducer that takes more than it
did is seen however busy the machine is. The start of the program (p00) is taken off. The table,
bench/instructions.txt, has two counts for each program: `before`, those of the reducer before its
calls were made straight, from which the gains are told, and `now`, those that must not grow. Counts
of another compiler are told but not compared.
"""
import math
import pathlib
import re
import shutil
import subprocess

HERE = pathlib.Path(__file__).resolve().parent
TABLE = HERE / "instructions.txt"
# What the geometric mean is taken over; p13 is mostly the collector's.
MEAN_OF = ("p01", "p03", "p04", "p05", "p06", "p09", "p10", "p11")
MOST_GROWTH = 1.03


def compiler():
    done = subprocess.run(["c++", "-dumpfullversion"], capture_output=True, text=True, check=False)
    machine = subprocess.run(["c++", "-dumpmachine"], capture_output=True, text=True, check=False)
    return f"{done.stdout.strip()} {machine.stdout.strip()}"


def counted(program, query):
    """Instructions that the whole run of one query file takes; None when it cannot be counted."""
    with open(query, "rb") as stdin:
        done = subprocess.run(["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null",
                               program, "--batch"], stdin=stdin, cwd=query.parent,
                              capture_output=True, check=False)
    found = re.search(rb"Collected : (\d+)", done.stderr)
    return int(found.group(1)) if found else None


def read_table():
    """The compiler that the table was made with, and {program: [before, now]}."""
    made_with, rows = "", {}
    for line in TABLE.read_text().splitlines():
        if line.startswith("# compiler: "):
            made_with = line[len("# compiler: "):]
        elif line and not line.startswith("#"):
            name, before, now = line.split()
            rows[name] = [int(before), int(now)]
    return made_with, rows


def write_table(rows):
    kept = [line for line in TABLE.read_text().splitlines() if line.startswith("#")]
    kept = [f"# compiler: {compiler()}" if line.startswith("# compiler: ") else line
            for line in kept]
    kept += [f"{name} {before} {now}" for name, (before, now) in sorted(rows.items())]
    TABLE.write_text("\n".join(kept) + "\n")


def count_all(options, queries):
    """Prints the table of counts; how many programs were compared with it, and how many grew."""
    if shutil.which("valgrind") is None:
        print("instructions: valgrind is not installed, nothing is counted")
        return 0, 0
    made_with, rows = read_table()
    comparable = made_with == compiler()
    start = counted(options.program, queries["p00"])
    print(f"{'program':<9}{'instructions':>16}{'table':>16}{'growth':>9}{'gain':>7}")
    grown, gains = 0, []
    for name, query in queries.items():
        if name == "p00":
            continue
        count = counted(options.program, query) - start
        row = rows.setdefault(name, [count, count])
        growth, gain = count / row[1], row[0] / count
        bad = comparable and growth > MOST_GROWTH and not options.update_counts
        grown += bad
        if name in MEAN_OF:
            gains.append(gain)
        print(f"{name:<9}{count:>16}{row[1]:>16}{100 * (growth - 1):>8.1f}%{gain:>7.2f}"
              f"{'  GREW' if bad else ''}", flush=True)
        row[1] = count
    if gains:
        mean = math.exp(sum(map(math.log, gains)) / len(gains))
        print(f"geometric mean of the gains since the table began ({len(gains)} programs): "
              f"{mean:.2f}")
    if not comparable:
        print(f"made with {compiler()}, the table with {made_with}: not compared")
    if options.update_counts:
        write_table(rows)
    return len(queries) - 1 if comparable else 0, grown
