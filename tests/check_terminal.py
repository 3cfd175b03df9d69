#!/usr/bin/env python3
"""Sits at a terminal and uses the program as a person does: prompt, editing, history, completion,
several lines, the interrupt key, leaving. What cannot be seen through a pipe is tested here.

    tests/check_terminal.py [--program FILE] [--limit SECONDS]

Last line "N passed, N failed".
"""
import argparse
import os
import pathlib
import pty
import re
import select
import signal
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parent.parent
ESCAPES = re.compile(rb"\x1b\[[0-9;?]*[A-Za-z]")
ENDLESS = ("fdec\nendless ::= int -> int ;\nmore ::= int -> list int ;\n;\nfdef\n"
           "endless ?0 ::= endless ?0 ;\nmore ?0 ::= : ?0 (more ?0) ;\n;\n")
USED = ("fdec\none ::= int ;\ntwo ::= int ;\n;\n"
        "fdef\none ::= #1 ;\ntwo ::= one ;\n;\n")


class Terminal:
    """The program on a pseudo-terminal of its own."""

    def __init__(self, program, home, *options, **env):
        self.master, slave = pty.openpty()
        full = {k: v for k, v in os.environ.items() if k not in ("NO_COLOR", "XDG_STATE_HOME")}
        full.update({"HOME": home, "TERM": "xterm", "LC_ALL": "C.UTF-8"} | env)
        self.process = subprocess.Popen([program, *options], stdin=slave, stdout=slave,
                                        stderr=slave, cwd=home, env=full, start_new_session=True,
                                        preexec_fn=lambda: take_terminal(slave))
        os.close(slave)
        self.raw = b""
        self.mark = 0

    def type(self, text):
        self.mark = len(self.raw)
        os.write(self.master, text.encode())

    def say(self, text, *answers):
        """Types `text` and waits until each of `answers` shows."""
        self.type(text)
        for answer in answers:
            self.wait(answer)

    def seen(self):
        """What the screen got since the last typing, without escape sequences."""
        return ESCAPES.sub(b"", self.raw[self.mark:]).replace(b"\r", b"").decode("utf-8", "replace")

    def take(self, seconds):
        """What comes within that time is read, so that the program need not wait."""
        if select.select([self.master], [], [], seconds)[0]:
            self.raw += os.read(self.master, 1 << 20)

    def wait(self, text, seconds=20.0, at_end=False):
        """Waits until `text` shows, or ends what shows; answers the time it took, or fails."""
        start = time.monotonic()
        while not (self.seen().endswith(text) if at_end else text in self.seen()):
            left = start + seconds - time.monotonic()
            if left <= 0:
                raise AssertionError(f"no {text!r} within {seconds} s; seen: {self.seen()[-600:]!r}")
            ready, _, _ = select.select([self.master], [], [], left)
            if ready:
                try:
                    piece = os.read(self.master, 65536)
                except OSError:
                    piece = b""
                if not piece:
                    assert text in self.seen(), f"ended without {text!r}: {self.seen()[-600:]!r}"
                self.raw += piece
        return time.monotonic() - start

    def end_input(self):
        """Ctrl+D at the prompt. Before it the key is the terminal's own, and the editor never sees
        it."""
        self.wait("QUERY> ", at_end=True)
        self.type("\x04")

    def leave(self):
        """Ctrl+D; answers the exit status."""
        self.end_input()
        return self.end()

    def leave_unsaved(self):
        """Ctrl+D, and "No" when asked whether to save what was declared."""
        self.end_input()
        self.wait("Cancel")
        self.type("No\n")
        return self.end()

    def end(self):
        deadline = time.monotonic() + 20
        while self.process.poll() is None and time.monotonic() < deadline:
            ready, _, _ = select.select([self.master], [], [], 0.05)
            if ready:
                try:
                    self.raw += os.read(self.master, 65536)
                except OSError:
                    pass
        if self.process.poll() is None:
            self.process.kill()
            raise AssertionError("the program did not end")
        os.close(self.master)
        return self.process.returncode


def take_terminal(slave):
    """In the program's process, before it starts. Who runs these checks in the background has
    signals ignored, which the program would take over."""
    import fcntl
    import termios
    for each in (signal.SIGHUP, signal.SIGINT, signal.SIGQUIT):
        signal.signal(each, signal.SIG_DFL)
    fcntl.ioctl(slave, termios.TIOCSCTTY, 0)


def start(program, home, *options, **env):
    terminal = Terminal(program, home, *options, **env)
    terminal.wait("QUERY> ")
    return terminal


def check_answers(program, home, _):
    t = start(program, home)
    t.say("+ #1 #2 ;\n", "#3\nQUERY> ")
    t.say("+ #1\n#41\n;\n", "> ", "#42\nQUERY> ")
    t.say("\n", "QUERY> ")
    assert t.leave() == 0, "status"


def check_editing(program, home, _):
    t = start(program, home)
    t.type("+ #1 #9 ;\x1b[D\x1b[D\x1b[D\x7f#2\n")  # back over " ;" and 9, replace "#"
    t.wait("QUERY> ")
    t.say("* #6 #7 ;\n", "#42\nQUERY> ")
    t.say("\x1b[A\n", "#42\nQUERY> ")
    t.leave()
    again = start(program, home)
    again.say("\x1b[A\n", "#42\nQUERY> ")
    assert again.leave() == 0, "status"


def check_completion(program, home, _):
    t = start(program, home)
    t.say("replic\t", "replicate")
    t.say("#2 #5 ;\n", "[ #5 #5 ]", "QUERY> ")
    (pathlib.Path(home) / "checked.tests").write_text("+ #1 #2 ;\n#3\n")
    t.say(":test chec\t\n", "1 of 1 answers are right\nQUERY> ")
    t.say(":ti\t", ":time")
    t.say("on\n", "QUERY> ")
    t.say("+ #1 #1 ;\n", "reductions", "QUERY> ")
    t.say("+ \t", " more\nQUERY> + ")  # never more than a screen
    assert t.seen().count("\n") < 30, "the list is longer than the screen"
    t.say("#1 #4 ;\n", "#5\n")
    t.leave()


def check_no_colour(program, home, _):
    """An empty NO_COLOR is none; a terminal without a name has no colours."""
    t = start(program, home, NO_COLOR="")
    assert b"\x1b[1;36m" in t.raw, "an empty NO_COLOR takes the colour away"
    t.leave()
    bare = Terminal(program, home, TERM="")
    bare.wait("QUERY> ")
    assert b"\x1b[1;36m" not in bare.raw, "colour without a terminal's name"
    bare.leave()


def check_prompt_key(program, home, _):
    t = start(program, home)
    t.say("no such thing", "thing")
    t.say("\x03", "QUERY> ")
    t.say("+ #2 #2 ;\n", "#4\nQUERY> ")
    t.say("+ #2\n", "   ; > ")
    t.say("\x03", "QUERY> ")
    t.say("+ #3 #3 ;\n", "#6\nQUERY> ")
    assert t.leave() == 0, "status"


def interrupt_often(t, query, limit, times):
    slowest = 0.0
    for _ in range(times):
        t.type(query)
        time.sleep(0.15)
        t.say("\x03", "Query interrupted\n")
        slowest = max(slowest, t.wait("QUERY> "))
        t.say("+ #20 #22 ;\n", "#42\nQUERY> ")
    assert slowest < limit, f"the slowest interrupt took {slowest:.3f} s"


def check_interrupt(program, home, limit):
    t = start(program, home)
    t.say(ENDLESS, "QUERY> ")
    interrupt_often(t, "endless #0 ;\n", limit, 20)
    t.leave_unsaved()


def check_interrupt_printing(program, home, limit):
    t = start(program, home)
    t.say(ENDLESS, "QUERY> ")
    interrupt_often(t, "more #7 ;\n", limit, 20)
    t.leave_unsaved()


def check_interrupt_long_work(program, home, limit):
    """Single built-ins that take long: endless files, matrices, plots, one long text."""
    pathlib.Path(home, "long.txt").write_text("x" * 30_000_000)
    t = start(program, home)
    t.say("fdec square ::= int -> list (list real) ; ;\n"
          "fdef square ?0 ::= replicate ?0 (replicate ?0 #r1.5) ; ;\n", "QUERY> ")
    for query in ('file_to_list "/dev/zero" ;', "mat_times (square #600) (square #600) ;",
                  'plotit "line" "t" (list_of_int #1 #300000 #1) ;', 'file_to_list "long.txt" ;'):
        for seconds in (0.1, 0.2, 0.4, 0.8):
            t.type(query + "\n")
            end = time.monotonic() + seconds
            while time.monotonic() < end:
                t.take(0.01)
            t.mark = len(t.raw)
            t.say("\x03")
            took = t.wait("QUERY> ")
            assert took < limit + 1, f"{query} took {took:.3f} s to stop"
    t.leave_unsaved()


def check_interrupt_reading(program, home, _):
    """The key while a query waits for a character, and while a question waits for its answer."""
    t = start(program, home)
    t.say("getchar ;\n", "getchar ;\n")
    time.sleep(0.3)
    t.say("\x03", "QUERY> ")
    t.say(USED, "QUERY> ")
    t.say("fdec one ::= real ;\n", "? ")
    t.say("\x03", "> ")
    t.say("\x03", "QUERY> ")
    t.say("+ one #1 ;\n", "#2\nQUERY> ")
    t.leave_unsaved()


def check_question(program, home, _):
    """A wrong answer is asked for again; a label in any case of letters will do."""
    t = start(program, home)
    t.say(USED, "QUERY> ")
    t.say("fdec one ::= real ;\n", "3 Cancel\n? ")
    t.say("7\n", "Please answer with a number from 1 to 3")
    t.say("yes\n", "FDEC> ")
    t.say(";\n:type one\n", "one ::= real\nQUERY> ")
    t.leave_unsaved()


def check_colour(program, home, _):
    t = start(program, home)
    assert b"\x1b[1;36m" in t.raw, "a coloured prompt"
    t.leave()
    plain = start(program, home, NO_COLOR="1")
    assert b"\x1b[1;36m" not in plain.raw, "no colour with NO_COLOR"
    plain.leave()


def check_time(program, home, _):
    t = start(program, home)
    t.say(":time on\n", "QUERY> ")
    time.sleep(1.5)
    t.say("+ #1\n", "   ; > ")
    time.sleep(1.5)
    t.say("#2 ;\n", " seconds)")
    seconds = float(re.search(r"(\S+) seconds", t.seen()).group(1))
    assert seconds < 1, f"{seconds} s: the time spent typing is counted"
    t.leave()


def check_unmatched(program, home, _):
    t = start(program, home)
    t.say("(+ #1 #2 ;\n", "Unmatched round brackets\n", "Please re-type QUERY:\nQUERY> ")
    t.say("(+ #1 #2) ;\n", "#3\nQUERY> ")
    t.leave()


def check_quit(program, home, _):
    t = start(program, home)
    t.type(":quit\n")
    assert t.end() == 0, "status"


def check_ends_of_the_session(program, home, _):
    """Work that nobody could answer for is offered at the next start."""
    path = pathlib.Path(home, "kept.ddb")
    path.write_text("fdec\n f ::= int ;\n;\n")
    for end, asked in ((signal.SIGTERM, False), (signal.SIGHUP, False), (signal.SIGTERM, True)):
        t = start(program, home, "kept.ddb")
        t.say("fdef f ::= #42 ; ;\n", "QUERY> ")
        if asked:  # and while a question waits
            t.say("\x04", "3 Cancel", "? ")
        os.kill(t.process.pid, end)
        assert t.end() == 128 + end, "status"
        assert path.with_suffix(".work").stat().st_mode & 0o777 == 0o600, "for its owner alone"
        again = Terminal(program, home, "kept.ddb")
        again.wait("3 Later")
        again.say("recover\n", "QUERY> ")
        again.say("f ;\n", "#42\nQUERY> ")
        again.say(":close\n", "Save Changes to Database:")
        again.say("no\n", "QUERY> ")
        again.leave()
        assert not path.with_suffix(".work").exists(), "closing takes it away"


def check_two_ends_leave(program, home, _):
    """An end at the prompt and one at the question that follows leave; a cancelled goodbye does not
    count, nor does an end with an answer in between."""
    pathlib.Path(home, "kept.ddb").write_text("fdec\n f ::= int ;\n;\n")
    t = start(program, home, "kept.ddb")
    t.say("fdef f ::= #42 ; ;\n", "QUERY> ")
    for goodbye in ("\x04", ":quit\n", "\x04"):
        t.say(goodbye, "3 Cancel", "? ")
        t.say("cancel\n", "QUERY> ")
    t.say("\x04", "3 Cancel", "? ")
    t.type("\x04")
    t.end()
    again = Terminal(program, home, "kept.ddb")
    again.wait("3 Later")
    again.say("recover\n", "QUERY> ")
    again.say("f ;\n", "#42\nQUERY> ")
    assert again.leave_unsaved() == 0, "status"


def check_running_query_is_ended(program, home, limit):
    t = start(program, home)
    t.say(ENDLESS, "QUERY> ")
    t.type("endless #1 ;\n")
    time.sleep(0.5)
    began = time.monotonic()
    os.kill(t.process.pid, signal.SIGTERM)
    assert t.end() == 128 + signal.SIGTERM, "status"
    assert time.monotonic() - began < limit + 2, "it took too long"


def check_control_characters(program, home, _):
    t = start(program, home)
    t.say("putchar (decode #27) ;\n", "\\x1b")
    t.say("implode [(decode #27) '[' '3' '1' 'm'] ;\n", "\\x1b[31m")
    assert b"\x1b[31m\"" not in t.raw
    t.leave()


def check_pages(program, home, _):
    """A long answer stops at the end of the screen; Enter, a and q decide; colon commands too."""
    import fcntl
    import struct
    import termios
    t = start(program, home)
    fcntl.ioctl(t.master, termios.TIOCSWINSZ, struct.pack("HHHH", 10, 40, 0, 0))
    t.say("list_of_int #1 #300 #1 ;\n", "-- more")
    assert "#250" not in t.seen(), "more than a screen was shown"
    t.say("\n", "-- more")
    t.say("q\n", "QUERY> ")
    t.say("list_of_int #1 #300 #1 ;\n", "-- more")
    t.say("a\n", "#300 ]", "QUERY> ")
    t.say(":help\n", "-- more")
    t.say("q\n", "QUERY> ")
    t.say("+ #1 #2 ;\n", "#3\nQUERY> ")
    t.say(":set page off\n", "QUERY> ")
    t.say("list_of_int #1 #300 #1 ;\n", "#300 ]", "QUERY> ")
    assert t.leave() == 0, "status"


def check_it(program, home, _):
    """`it` is the last answer in queries alone, as long as that reads back."""
    t = start(program, home)
    t.say("+ it #1 ;\n", "please define unrecognised symbol: it", "QUERY> ")
    t.say("list_of_int #1 #3 #1 ;\n", "[ #1 #2 #3 ]\nQUERY> ")
    t.say("map (+ #1) it ;\n", "[ #2 #3 #4 ]\nQUERY> ")
    t.say("Pair it \"it\" ;\n", "( Pair [ #2 #3 #4 ] \"it\")\nQUERY> ")
    t.say("putchar '(' ;\n", "QUERY> ")
    t.say("first it ;\n", "unrecognised symbol: it", "QUERY> ")
    t.say("fdec it ::= int ; ;\nfdef it ::= #42 ; ;\n", "QUERY> ")
    t.say("#7 ;\n", "#7\nQUERY> ")
    t.say("+ it #0 ;\n", "#42\nQUERY> ")
    t.leave_unsaved()


def check_first_steps(program, home, _):
    """The lines of the start; a bare word without a semicolon; what a continuation waits for."""
    t = Terminal(program, home)
    t.wait("\":tour\" shows the language in a few steps.\nQUERY> ")
    t.say("help\n", "commands begin with a colon: :help", "QUERY> ")
    t.say("quit\n", "commands begin with a colon: :quit", "QUERY> ")
    t.say("+ (+ #1\n", "   ) > ")
    t.say("#1) [\n", "   ] > ")
    t.say("]\n", "   ; > ")
    t.say(";\n", "QUERY> ")
    t.say("gr_open #1 \"w\" #10 #10 ;\n", "QUERY> ")
    assert t.leave() == 0, "status"


CHECKS = [check_pages, check_it, check_first_steps, check_no_colour,
          check_ends_of_the_session, check_two_ends_leave, check_running_query_is_ended,
          check_control_characters,
          check_answers, check_editing, check_completion, check_prompt_key, check_interrupt,
          check_interrupt_printing, check_interrupt_long_work, check_interrupt_reading, check_question, check_colour,
          check_time, check_unmatched, check_quit]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--program", default=str(ROOT / "build/debug/bin/velora"))
    parser.add_argument("--limit", type=float, default=0.5,
                        help="seconds from the key to the prompt (sanitizers are slow)")
    parser.add_argument("--only", default="")
    options = parser.parse_args()
    failed = 0
    checks = [c for c in CHECKS if options.only in c.__name__]
    for check in checks:
        with tempfile.TemporaryDirectory(prefix="velora-term-") as home:
            try:
                check(os.path.abspath(options.program), home, options.limit)
            except (AssertionError, OSError) as fault:
                failed += 1
                print(f"FAILED {check.__name__}: {fault}")
    print(f"{len(checks) - failed} passed, {failed} failed")
    return 1 if failed else 0


if __name__ == "__main__":
    signal.signal(signal.SIGTTOU, signal.SIG_IGN)
    sys.exit(main())
