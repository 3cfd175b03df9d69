#!/usr/bin/env python3
"""Prints how the time of some jobs grows with their size: seconds of processor time for n, 2n, 4n,
8n, and the ratio of each to the one before. About 2 is linear, about 4 a square.

    bench/growth.py [--program FILE] [--only NAME]
"""
import argparse
import os
import pathlib
import resource
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
LIST = "(list_of_int #1 #{n} #1)"


def many_clauses(n):
    clauses = "".join(f"big #{i} ::= #{i + 1} ;\n" for i in range(n))
    return f"fdec big ::= int -> int ; ;\nfdef\n{clauses};\nbig #7 ;\n"


def remembered(n):
    return ("fdec sq ::= int -> int ; fill ::= int -> bool ; ;\n"
            "fdef sq ?0 ::= * ?0 ?0 ; fill #0 ::= True ;\n"
            "fill ?0 ::= prog1 (fill (- ?0 #1)) (remember (sq ?0)) ; ;\n" +
            "".join(f"remember (sq #{i}) ;\n" for i in range(n)))


def tagged(n):
    return ("fdec t ::= int -> list int -> list int ; ;\nfdef t ?0 ?1 ::= tag ?1 ?0 ; ;\n"

            f"$ (foldl t [#0] {LIST.format(n=n)}) ;\n")


def appended(n):
    return ("fdec a ::= int -> list int -> list int ; ;\nfdef a ?0 ?1 ::= append ?1 [?0] ; ;\n"
            f"$ (foldl a nil {LIST.format(n=n)}) ;\n")


def stuck(n):
    return ("fdec rv ::= list ?0 -> list ?0 ; ;\nfdef rv (: ?0 ?1) ::= append (rv ?1) [?0] ; ;\n"
            f"null (rv {LIST.format(n=n)}) ;\n")


def nested(n):
    return "fdec u ::= ?0 -> ?1 ; ;\n" + "(explode " * n + "(u #1)" + ")" * n + " ;\n"


def small_queries(n):
    return "#1 ;\n" * n


def classes(n):
    rows = "".join(f'["v{i}" "c{i}"] ' for i in range(n))
    return f'prob_learn [["sky" "do"] {rows}] ;\n'


def faults_of_one_line(n):
    return "undefined ; " * n + "\n"


def long_name(n):
    return "a" * n + " ;\n"


def open_brackets(n):
    return "(" * n + " #1 ;\n"


def network(bodies):
    def make(n):
        names = "".join(f"f{i} ::= int -> int ;\n" for i in range(n + 1))
        return f"tdec\n;\ncdec\n;\nfdec\n{names};\nfdef\n{bodies(n)};\n"
    return make


def chain(n):
    return "".join(f"f{i} ?0 ::= f{i + 1} ?0 ;\n" for i in range(n))


def arcs_into_one(n):
    return "".join(f"f{i} ?0 ::= f0 ?0 ;\n" for i in range(1, n + 1))


# Name, what makes the text for a size, the smallest size, options. With DRAWN the text is a database
# whose network is drawn; otherwise commands.
DRAWN = ["--network", "o.svg", "n.ddb"]
JOBS = {
    "loading clauses of one function": (many_clauses, 12500, []),
    "remember": (remembered, 2000, []),
    "tag on a growing list": (tagged, 10000, []),
    "append of one element in a fold": (appended, 500, []),
    "a forgotten base case": (stuck, 250, ["--nesting", "9000"]),
    "nested stuck built-ins": (nested, 1000, ["--nesting", "9999"]),
    "prob_learn with as many classes": (classes, 5000, []),
    "small queries": (small_queries, 20000, []),
    "small queries, 20,000,000 nodes": (small_queries, 20000, ["--space", "20000000"]),
    "faulty queries in one line": (faults_of_one_line, 10000, []),
    "one long name": (long_name, 500000, []),
    "open brackets": (open_brackets, 500000, []),
    "drawing a chain of nodes": (network(chain), 1000, DRAWN),
    "drawing arcs into one node": (network(arcs_into_one), 1000, DRAWN),
}


def seconds(program, text, options):
    with tempfile.TemporaryDirectory() as folder:
        pathlib.Path(folder, "n.ddb").write_text(text if options == DRAWN else "")
        text = "" if options == DRAWN else text
        before = resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime
        subprocess.run([program, "--batch", *options], input=text.encode(), capture_output=True,
                       cwd=folder, env=dict(os.environ, HOME=folder), timeout=600, check=False)
        return resource.getrusage(resource.RUSAGE_CHILDREN).ru_utime - before


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", default=str(HERE.parent / "build/release/bin/velora"))
    parser.add_argument("--only", default="")
    options = parser.parse_args()
    program = os.path.abspath(options.program)
    start = min(seconds(program, "", []) for _ in range(3))
    for name, (make, n, words) in JOBS.items():
        if options.only not in name:
            continue
        times = [max(seconds(program, make(n * k), words) - start, 0.001) for k in (1, 2, 4, 8)]
        ratios = " ".join(f"{b / a:.2f}" for a, b in zip(times, times[1:]))
        print(f"{name:<34}{n:>6} to {8 * n:<7}" + " ".join(f"{t:.3f}" for t in times) +
              f"   ratios {ratios}", flush=True)
    return 0


if __name__ == "__main__":
    sys.exit(main())
