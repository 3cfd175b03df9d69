#!/usr/bin/env python3
"""Random programs, asked two ways: the reducer as it runs, and with plain bodies, which copy each
clause's combinator term and reduce it step by step. Every byte that is shown must be the same.

The programs are made of what has gone wrong or could: clauses that overlap, heads of several
lengths, nested patterns, constants behind variables, parts without variables, guards (`quote`),
effects inside arguments (`putchar`, `error`, `rand`, `print`), observers of unevaluated terms,
partial applications, functions of many arguments, definitions that come and go while they are used,
and tracing. The last line is "N passed, N failed"; the exit status is 1 when a program differs.

    tests/check_random.py [--program FILE] [--against FILE] [--queries N] [--seed N] [--stress K]

With --against the second answer comes from another program instead of from plain bodies.
"""
import argparse
import concurrent.futures
import os
import pathlib
import random
import signal
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent
QUERIES_A_PROGRAM = 40
LETTERS = "abcdefgh"
SKIPPED = "skipped"
PATIENCE = 3  # seconds of processor time for a program; one that computes for longer is left out
SPACE = 20480  # nodes; a program that needs more is left out too


class Program:
    """One random program: declarations, clauses and queries as text. Terms are made for a kind of
    value that is wanted (i an integer, l a list of integers, p a pair of them, b a truth value), so
    that most of them reduce; now and then one of another kind is taken."""

    def __init__(self, seed):
        self.random = random.Random(seed)
        self.kinds = {}   # name -> kinds of its arguments
        self.results = {}

    def constant(self, kind):
        return self.random.choice({"i": ["#0", "#1", "#2", "#3"], "l": ["nil", "[#1 #2]", "[#0]"],
                                   "p": ["(Pair #1 #2)", "(Pair #0 #1)"],
                                   "b": ["True", "False"]}[kind])

    def any_kind(self):
        return self.random.choice("iiilpb")

    def call(self, kind, variables, depth, below):
        names = [n for n, result in self.results.items() if int(n[1:]) < below and result == kind]
        if not names:
            return self.built_in(kind, variables, depth, below)
        name = self.random.choice(names)
        kinds = list(self.kinds[name])
        if self.random.random() < 0.06:
            kinds = kinds[:-1] if self.random.random() < 0.5 else [*kinds, self.any_kind()]
        parts = [self.term(k, variables, depth - 1, below) for k in kinds]
        return f"({' '.join([name, *parts])})" if parts else name

    def built_in(self, kind, variables, depth, below):
        def t(wanted):
            return self.term(wanted, variables, depth - 1, below)
        forms = {
            "i": ["(+ {i} {i})", "(- {i} {i})", "(% {i} #3)", "(if {b} {i} {i})", "(head {l})",
                  "($ {l})", "(max {l})", "(foldr + #0 {l})", "(K {i} {l})", "(I {i})",
                  "(prog1 {i} {l})", "(first {p})", "(second {p})", "(@ (+ {i}) {i})",
                  "(compose {fi} {i})", "({fi} {i})", "(foldl - {i} {l})", "(S + I {i})",
                  "(B {fi} {fi} {i})", "(C - {i} {i})"],
            "l": ["(: {i} {l})", "[{i} {i}]", "(append {l} {l})", "(tail {l})", "(map (+ #1) {l})",
                  "(map {fi} {l})", "(reverse {l})", "(if {b} {l} {l})", "(filter (< #1) {l})",
                  "(take #1 {l})", "(sort < {l})", "(replicate #2 {i})", "(mkset {l})"],
            "p": ["(Pair {i} {i})", "(Pair {i} {l})", "(if {b} {p} {p})"],
            "b": ["(< {i} {i})", "(= {i} {i})", "(null {l})", "(not {b})", "(>= {i} {i})",
                  "(= {l} {l})", "(member {i} {l})", "(&& {b} {b})"]}
        made = self.random.choice(forms[kind])
        for wanted in "ilpb":
            while "{" + wanted + "}" in made:
                made = made.replace("{" + wanted + "}", t(wanted), 1)
        while "{fi}" in made:
            made = made.replace("{fi}", self.partial(below), 1)
        return made

    def effect(self, kind, variables, depth, below):
        letter = self.random.choice(LETTERS)
        def t(wanted=kind):
            return self.term(wanted, variables, depth - 1, below)
        forms = [
            lambda: "(% rand #3)", lambda: f"(prog1 {t()} (putchar '{letter}'))",
            lambda: f'(error "{letter}")', lambda: f"(prog1 {t()} (print {t()}))",
            lambda: f"(quote {t()})", lambda: f"(quote {t()})", lambda: f"(eval {t()})",
            lambda: f"(exptolistq {t()})", lambda: f"(exptolist {t()})", lambda: f"(argeval {t()})",
            lambda: f"(match ?0 {t()})", lambda: f"(matchq (?0 ?1) {t()})",
            lambda: f"(permuteN #1 {self.partial(below)} {t('i')})",
            lambda: f"(catch {t()} {t()})", lambda: f"((lambda ?9 (+ ?9 {t('i')})) {t('i')})",
            lambda: f"(tag {t('l')} {t('i')})", lambda: f"(HOLD {t()})",
            lambda: f"(iterate (> #3) (+ #1) {t('i')})", lambda: f"(compose {self.partial(below)} {t('i')})",
        ]
        return self.random.choice(forms)()

    def partial(self, below):
        names = [n for n, kinds in self.kinds.items()
                 if int(n[1:]) < below and kinds and kinds[-1] == "i"]
        if not names or self.random.random() < 0.3:
            return self.random.choice(["(+ #1)", "(- #5)", "(K #1)", "(lesser #2)", "I"])
        name = self.random.choice(names)
        parts = [self.constant(k) for k in self.kinds[name][:-1]]
        return f"({' '.join([name, *parts])})" if parts else name

    def term(self, kind, variables, depth, below):
        if self.random.random() < 0.03:
            kind = self.any_kind()
        chance = self.random.random()
        if depth <= 0 or chance < 0.2:
            fitting = [v for v, k in variables.items() if k == kind]
            if fitting and self.random.random() < 0.8:
                return f"?{self.random.choice(fitting)}"
            return self.constant(kind)
        if chance < 0.55:
            return self.call(kind, variables, depth, below)
        if chance < 0.88:
            return self.built_in(kind, variables, depth, below)
        return self.effect(kind, variables, depth, below)

    def pattern(self, kind, variables, depth):
        """A pattern; the variables that it binds are added to `variables`."""
        chance = self.random.random()
        if chance < 0.6 or depth == 0 or kind in "ib":
            if chance < 0.62:
                v = len(variables)
                if variables and self.random.random() < 0.05:
                    v = self.random.choice(list(variables))
                variables[v] = kind
                return f"?{v}"
            return self.random.choice(["nil", "#1"]) if kind in "lp" and chance < 0.8 else \
                self.constant("i" if kind == "p" else kind)
        if kind == "l":
            return (f"(: {self.pattern('i', variables, depth - 1)} "
                    f"{self.pattern('l', variables, depth - 1)})")
        return (f"(Pair {self.pattern('i', variables, depth - 1)} "
                f"{self.pattern('i', variables, depth - 1)})")

    def clause(self, name, plain=False):
        kinds = list(self.kinds[name])
        if self.random.random() < 0.04:
            kinds = kinds[:self.random.randint(0, len(kinds))]
        variables = {}
        patterns = [self.pattern(k, variables, 0 if plain else 2) for k in kinds]
        depth = self.random.randint(1, 4)
        body = self.term(self.results[name], variables, depth, int(name[1:]))
        # One function in three calls itself on a number that gets smaller.
        if kinds and kinds[0] == "i" and patterns[0] == "?0" and int(name[1:]) % 3 == 0:
            body = self.term(self.results[name], variables, 1, 0)
            again = " ".join([name, "(- ?0 #1)", *(self.term(k, variables, 1, 0)
                                                   for k in kinds[1:])])
            result = self.results[name]
            joined = {"i": f"(+ {body} ({again}))", "l": f"(append ({again}) {body})"}
            body = f"(if (< ?0 #1) {body} {joined.get(result, f'({again})')})"
        return f"{' '.join([name, *patterns])} ::= {body} ;"

    def query(self):
        chance = self.random.random()
        top = len(self.kinds)
        name = self.random.choice(list(self.kinds))
        if chance < 0.04:
            return f"trace {self.random.choice(['True', 'False', 'False'])}"
        if chance < 0.07:
            head = " ".join([name, *(self.constant(k) for k in self.kinds[name])])
            return f"assert {head} {self.term(self.results[name], {}, 2, int(name[1:]))}"
        if chance < 0.08:
            head = " ".join([name, *(self.constant(k) for k in self.kinds[name])])
            return f"prog1 ({head}) (deny [{head}])"
        if chance < 0.09:
            head = " ".join([name, *(self.constant(k) for k in self.kinds[name])])
            return f"remember ({head})"
        kind = self.any_kind()
        make = self.call if chance < 0.8 else self.term
        return make(kind, {}, 3, top)

    def text(self):
        for i in range(self.random.randint(4, 7)):
            count = self.random.randint(0, 3)
            if self.random.random() < 0.05:
                count = self.random.randint(11, 14)
            kinds = "".join(self.any_kind() for _ in range(count))
            if i % 3 == 0 and kinds:
                kinds = "i" + kinds[1:]
            self.kinds[f"f{i}"] = kinds
            self.results[f"f{i}"] = self.any_kind()
        types = {"i": "int", "l": "list int", "p": "pair int int", "b": "bool"}
        lines = ["fdec"]
        for name, kinds in self.kinds.items():
            arrows = "".join(f"{types[k]} -> " for k in kinds)
            lines.append(f"{name} ::= {arrows}{types[self.results[name]]} ;")
        lines += [";", "fdef"]
        for name in self.kinds:
            many = 20 if self.random.random() < 0.05 else 4
            lines += [self.clause(name) for _ in range(self.random.randint(1, many))]
            if self.random.random() < 0.8:
                lines.append(self.clause(name, plain=True))
        lines.append(";")
        lines += [f"{self.query()} ;" for _ in range(QUERIES_A_PROGRAM)]
        return "\n".join(lines) + "\n"


def answer(program, text, env):
    with tempfile.TemporaryDirectory() as folder:
        done = subprocess.run(["sh", "-c", f'ulimit -t {PATIENCE}; exec "$@"', "sh", program,
                               "--batch", "--no-notes", "--max-space", str(SPACE),
                               "--nesting", "40"],
                              input=text.encode(), capture_output=True,
                              cwd=folder, env=dict(os.environ, HOME=folder, **env), check=False)
    return done.stdout, done.stderr, done.returncode


def too_large(outcome):
    """Out of time or of space: what was shown before may end anywhere."""
    shown, _, status = outcome
    return status in (-signal.SIGXCPU, -signal.SIGKILL) or b"Insufficient Query Space" in shown


def try_seed(options, seed):
    """Empty when both ways agree, else what differs."""
    text = Program(seed).text()
    stress = {"VELORA_STRESS": str(options.stress)} if options.stress else {}
    first = answer(options.program, text, stress)
    if too_large(first):
        return SKIPPED
    second = (answer(options.against, text, {}) if options.against
              else answer(options.program, text, {"VELORA_PLAIN_BODIES": "1"}))
    if too_large(second):
        return SKIPPED
    if first[2] < 0 or b"runtime error" in first[1] or b"AddressSanitizer" in first[1]:
        return f"seed {seed}: the program failed ({first[2]})\n{first[1][-2000:].decode(errors='replace')}"
    for name, a, b in zip(("output", "errors", "status"), first, second):
        if a == b:
            continue
        if name == "status":
            return f"seed {seed}: status {a}, and {b} the other way"
        a, b = a.decode(errors="replace").splitlines(), b.decode(errors="replace").splitlines()
        at = next((i for i, (x, y) in enumerate(zip(a, b)) if x != y), min(len(a), len(b)))
        return (f"seed {seed}: {name} differs at line {at + 1}\n"
                f"  {a[at][:300] if at < len(a) else '(nothing)'}\n"
                f"  {b[at][:300] if at < len(b) else '(nothing)'}")
    return ""


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", default=str(ROOT / "build/debug/bin/velora"))
    parser.add_argument("--against", default="")
    parser.add_argument("--queries", type=int, default=20000,
                        help="how many are compared; those of programs left out do not count")
    parser.add_argument("--seed", type=int, default=0)
    parser.add_argument("--stress", type=int, default=0)
    parser.add_argument("--show", action="store_true", help="print the program of --seed")
    options = parser.parse_args()
    if options.show:
        print(Program(options.seed).text(), end="")
        return 0
    options.program = os.path.abspath(options.program)
    wanted = -(-options.queries // QUERIES_A_PROGRAM)
    passed = failed = skipped = 0
    seed = options.seed
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count() or 1) as pool:
        while passed + failed < wanted and skipped <= wanted // 5:
            seeds = range(seed, seed + min(50, wanted - passed - failed))
            seed = seeds.stop
            for said in pool.map(lambda number: try_seed(options, number), seeds):
                skipped += said == SKIPPED
                passed += said == ""
                if said not in ("", SKIPPED):
                    failed += 1
                    print(said, flush=True)
    if skipped > wanted // 5:
        failed += 1
    print(f"{passed * QUERIES_A_PROGRAM} queries the same; {skipped} programs were too large")
    print(f"{passed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main())
