#!/usr/bin/env python3
"""Compares the tidied layout of call networks with that of Graphviz dot.

Both place the same boxes with the same arrows, drawn as straight lines. Networks are those of the
examples and of generated databases. Limits: no overlaps; without wrapping at most 1.25 times dot's
crossings and at most as many boxes crossed; with wrapping at most half of the stored layout's
crossings above 30 boxes; 100 boxes in 0.05 s, 1,000 in 1 s. Without dot nothing is compared.

    bench/network.py [--build build/release]
"""
import argparse
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
BUILTINS = ["+", "-", "*", "=", "<", "if", "map", "filter", "foldl", "append", "head", "tail",
            "length", "null", "concat", "strlen", "int_to_str", "and", "or", "not"]


def generated(functions, seed):
    """The text of a database whose functions call each other in modules, and built-ins."""
    rng = random.Random(seed)
    names = [f"{rng.choice(['make', 'find', 'show', 'next', 'sum', 'step'])}_{i}"
             for i in range(functions)]
    lines = ["tdec", ";", "cdec", ";", "fdec", ";", "fdef"]
    for i, name in enumerate(names):
        callees = []
        for _ in range(rng.choice([0, 1, 1, 2, 2, 3])):
            near = rng.random() < 0.8
            high = min(functions - 1, i + 8) if near else functions - 1
            if i < high:
                callees.append(names[rng.randint(i + 1, high)])
        if rng.random() < 0.03 and i > 3:
            callees.append(names[rng.randint(max(0, i - 6), i - 1)])
        for _ in range(rng.choice([0, 0, 1, 1])):
            callees.append(BUILTINS[min(int(rng.expovariate(0.3)), len(BUILTINS) - 1)])
        if not callees:
            callees = ["+"] if rng.random() < 0.5 else ["#1"]
        lines.append(f"{name} ?0 ::= " + " ( ".join(callees) + " ?0" + " )" * (len(callees) - 1)
                     + " ;")
    return "\n".join(lines + [";", ""])


def graph_of(bench, database):
    boxes, arrows = [], []
    for line in subprocess.run([bench, "graph", database], check=True, capture_output=True,
                               text=True).stdout.splitlines():
        kind, a, b = line.split()
        (boxes if kind == "box" else arrows).append((int(a), int(b)))
    return boxes, arrows


def dot_corners(boxes, arrows):
    """The upper left corners that dot gives the boxes."""
    text = ["digraph g { nodesep=%f; ranksep=%f; node [shape=box fixedsize=true];"
            % (24 / 72, 48 / 72)]
    text += [f"n{i} [width={w / 72:f} height={h / 72:f}];" for i, (w, h) in enumerate(boxes)]
    text += [f"n{a} -> n{b};" for a, b in arrows]
    plain = subprocess.run(["dot", "-Tplain"], input="\n".join(text + ["}"]), check=True,
                           capture_output=True, text=True).stdout
    corners = [None] * len(boxes)
    for line in plain.splitlines():
        words = line.split()
        if words[0] == "graph":
            height = float(words[3])
        elif words[0] == "node":
            i = int(words[1][1:])
            corners[i] = (round(float(words[2]) * 72 - boxes[i][0] / 2),
                          round((height - float(words[3])) * 72 - boxes[i][1] / 2))
    return corners


def measured(bench, database, corners_file):
    command = [bench, "measure", database] + ([corners_file] if corners_file else [])
    rows = {}
    for line in subprocess.run(command, check=True, capture_output=True,
                               text=True).stdout.splitlines():
        name, *numbers = line.split()
        rows[name] = [float(n) for n in numbers]
    return rows


def faults(rows):
    """What does not keep within the limits, in words."""
    boxes = rows["size"][0]
    found = []
    for name in ("tidy", "wrapped"):
        if rows[name][0]:
            found.append(f"{name}: boxes overlap")
        if rows[name][3] > (0.05 if boxes <= 100 else 1.0) and boxes <= 1100:
            found.append(f"{name}: slow")
    if boxes > 30 and rows["wrapped"][1] * 2 > rows["stored"][1]:
        found.append("wrapped: more than half of the stored layout's crossings")
    if "other" in rows:
        if rows["tidy"][1] > 1.25 * rows["other"][1]:
            found.append("tidy: more crossings than 1.25 times dot's")
        if rows["tidy"][2] > rows["other"][2]:
            found.append("tidy: more boxes crossed than dot's")
    return found


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--build", default="build/release")
    options = parser.parse_args()
    bench = str(ROOT / options.build / "bin" / "network_bench")
    has_dot = shutil.which("dot") is not None
    if not has_dot:
        print("skipped: the comparison with dot, which is not installed")
    bad = 0
    print("%-16s %5s %6s | %-13s | %-20s | %-20s | %-13s" %
          ("network", "boxes", "arrows", "stored x b", "tidy x b s", "wrapped x b s", "dot x b"))
    with tempfile.TemporaryDirectory() as folder:
        databases = sorted(ROOT.glob("examples/**/*.ddb"))
        for size, seed in [(8, 1), (16, 2), (30, 3), (50, 4), (50, 5), (80, 6), (120, 7),
                           (200, 8), (400, 9), (700, 10), (980, 11)]:
            path = pathlib.Path(folder) / f"generated{size}_{seed}.ddb"
            path.write_text(generated(size, seed))
            databases.append(path)
        for database in databases:
            boxes, arrows = graph_of(bench, database)
            corners_file = None
            if has_dot:
                corners_file = pathlib.Path(folder) / "corners"
                corners_file.write_text("\n".join(
                    f"{x} {y}" for x, y in dot_corners(boxes, arrows)))
            rows = measured(bench, database, corners_file)
            cells = ["%d %d" % tuple(rows["stored"][1:3])]
            cells += ["%d %d %.3f" % tuple(rows[n][1:4]) for n in ("tidy", "wrapped")]
            cells += ["%d %d" % tuple(rows["other"][1:3]) if has_dot else "-"]
            print("%-16s %5d %6d | %-13s | %-20s | %-20s | %-13s" %
                  (database.stem, *rows["size"], *cells))
            for fault in faults(rows):
                bad += 1
                print("    " + fault)
    return 1 if bad else 0


if __name__ == "__main__":
    sys.exit(main())
