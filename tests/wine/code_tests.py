"""Tests of the editing of texts: steps back, marks of faults, messages that lead to their place,
finding and replacing, the size of letters."""
from desk import check, check_soon

GOOD = "fdec\n twice ::= int -> int ;\n;\nfdef\n twice ?0 ::= + ?0 ?0 ;\n;\n"


def code(desk):
    return desk.do("text", "OrvekChild", "")


def is_soon(desk, text, what):
    check_soon(lambda: code(desk) == text, lambda: f"{what}: {code(desk)!r}")


def open_code(desk, text):
    desk.command(509)
    desk.window("OrvekChild")
    desk.do("settext", "OrvekChild", "", text)
    desk.do("activate", "OrvekChild", "")


def strike(desk, letters):
    for letter in letters:
        desk.do("strike", ord(letter))


def test_steps(desk):
    """Ctrl+Z takes back a word after the other, Ctrl+Shift+Z does it again."""
    desk.started()
    open_code(desk, "")
    strike(desk, "ONE TWO")
    is_soon(desk, "one two", "typed")
    desk.do("strike", 8)
    desk.do("strike", 8)
    for left in ("one two", "one ", "one", ""):
        desk.do("ctrl", ord("Z"))
        is_soon(desk, left, "Ctrl+Z")
    desk.command(201)  # there is nothing more
    for again in ("one", "one ", "one two", "one t"):
        desk.do("ctrl_shift", ord("Z"))
        is_soon(desk, again, "Ctrl+Shift+Z")
    desk.command(201)
    is_soon(desk, "one two", "Undo of the menu")
    desk.do("close", "OrvekChild", "")
    desk.dialog()
    desk.press("Discard")
    desk.do("activate", "ControlChild", "")
    desk.do("type", "+ #1 #2")
    check_soon(lambda: desk.console().endswith("+ #1 #2"), desk.console)
    desk.do("ctrl", ord("Z"))
    check_soon(lambda: desk.console().endswith("+ #1 "), lambda: "CONTROL: " + desk.console())
    desk.do("type", "#5\n")
    desk.shows("+ #1 #5\n#6\nQUERY> ")


def test_faults(desk):
    """A fault is marked and tells what is wrong; its message leads to it."""
    desk.started()
    bad = GOOD.replace("+ ?0 ?0", "nosuch ?0")
    open_code(desk, bad)
    desk.command(501)
    desk.shows("Orvek [1 of 1], line 5")
    line = bad.replace("\n", "\r\n")
    start = line.index("twice ?0")
    desk.do("activate", "OrvekChild", "")
    desk.pause(300)

    def red_dots():
        at = desk.screen.look()[2]
        left, top, width, height = map(int, desk.do("place", "OrvekChild", "").split())
        return sum(at(x, y) == (220, 0, 0) for x in range(left, left + width)
                   for y in range(top, top + height))

    check_soon(lambda: red_dots() > 20, lambda: f"{red_dots()} dots of the mark")
    told = desk.do("hover", "OrvekChild", "", start + 2)
    check("nosuch" in told, f"the tip: {told!r}")
    check(desk.do("hover", "OrvekChild", "", 1) == "", "a tip where no fault is")
    desk.do("activate", "ControlChild", "")
    shown = desk.console().replace("\n", "\r\n")
    desk.do("click", "ControlChild", "", shown.index("please define"))
    end = line.index(";", start) + 1
    check_soon(lambda: desk.selected("OrvekChild") == f"{start} {end}",
               lambda: f"{desk.selected('OrvekChild')} for {start} {end}")
    desk.do("strike", ord("X"))  # what the message led to has the focus, and is written over
    check_soon(lambda: red_dots() == 0, lambda: f"{red_dots()} dots of a mark that has gone")
    desk.do("ctrl", ord("Z"))
    is_soon(desk, bad, "taken back")


def test_replace(desk):
    """Replacing, one by one or all at once, which one step takes back; larger letters."""
    desk.started()
    text = "one two One two one\n" * 30
    open_code(desk, text)
    desk.do("ctrl", ord("H"))
    desk.dialog()
    desk.do("fill", "one")
    desk.do("fill_next", "three")
    desk.do("push", "Replace All")
    is_soon(desk, text.replace("one", "three").replace("One", "three"), "all replaced")
    check("90 replaced" in desk.dialog(), desk.dialog())
    desk.do("push", "Cancel")
    desk.gone("#32770")
    desk.do("activate", "OrvekChild", "")
    desk.do("ctrl", ord("Z"))
    is_soon(desk, text, "taken back")
    desk.do("ctrl", ord("H"))
    desk.dialog()
    desk.do("push", "Find Next")
    first = desk.selected("OrvekChild")
    desk.do("push", "Replace")
    is_soon(desk, "three" + text[3:], f"one replaced, {first} selected")
    desk.do("push", "Cancel")
    desk.gone("#32770")

    def line_height():
        return int(desk.do("line_height", "OrvekChild", ""))

    small = line_height()
    desk.do("activate", "OrvekChild", "")
    desk.do("ctrl", 0xBB)  # plus
    desk.do("ctrl", 0xBB)
    check_soon(lambda: line_height() > small, lambda: f"{line_height()} after {small}")
    desk.do("ctrl", 0x30)
    check_soon(lambda: line_height() == small, lambda: f"{line_height()} instead of {small}")
