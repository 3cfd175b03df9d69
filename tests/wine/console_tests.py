"""Tests of the CONTROL window: typing, pasting, copying, long texts, stopping a query."""
import time

from desk import SLOW, check, check_soon, pixels


def test_start(desk):
    about = desk.started()
    check(about.startswith("About Velora|") and "Velora For Windows 4.7.4" in about, about)
    check(desk.do("titles", "VELORA") == "Velora For Windows 4.7.4|", "title of the frame")
    check(desk.do("place", "ControlChild", "") == "30 384 512 192", "place of the console")
    text = desk.console()
    check(text.startswith("\n") and "Welcome to Velora\n" in text, text)
    check(text.endswith("\nQUERY> "), text)


def test_queries(desk):
    desk.started()
    desk.query("+ #1 #2", "#3")
    desk.do("type", "head [#1)\n")
    desk.shows("Unmatched square brackets\nPlease re-type QUERY:\nQUERY> ")
    desk.do("type", "nosuch\n")
    desk.shows("please define unrecognised symbol: nosuch\n")
    desk.do("caret", 0)  # typing and Enter in old text do no harm to it
    before = desk.console()
    desk.query("* #6 #7", "#42")
    check(desk.console().startswith(before), "old text was changed")
    desk.do("paste", "+ #10 #1\nsum [#1\n#2]\n+ #20 ")
    desk.shows("+ #10 #1\n#11\nQUERY> sum [#1 #2]\n#3\nQUERY> + #20 ")
    desk.do("type", "#2\n")
    desk.shows("+ #20 #2\n#22\nQUERY> ")
    desk.do("key", 38)  # up twice, down once
    desk.do("key", 38)
    desk.do("key", 40)
    desk.do("type", "\n")
    desk.shows("#22\nQUERY> + #20 #2\n#22\nQUERY> ")
    desk.query('"ä€"', '"ä€"')


def test_keyboard(desk):
    """Menus are reached from the keyboard, and the focus comes back to the console."""
    desk.started()
    desk.do("chord", "W")  # the Windows menu stands on "Commit..."; "Function" is two below
    desk.do("strike", 40)
    desk.do("strike", 40)
    desk.do("strike", 13)
    desk.window("FunctionChild", "Functions")
    desk.do("close", "FunctionChild", "")
    desk.gone("FunctionChild")
    desk.do("strike", 0x79)  # F10 and away again
    desk.do("strike", 0x1B)
    desk.do("strike", 0x1B)
    for letter in "TRUE":
        desk.do("strike", ord(letter))
    desk.do("strike", 13)
    desk.shows("please define unrecognised symbol: true")
    for query, kind in (("gr_open", "GraphicChild"), ("nar_line \"told\"", "NarChild")):
        desk.do("type", query + "\n")  # the window comes, and what is typed still goes to CONTROL
        desk.window(kind)
        desk.shows(query + "\nTrue\nQUERY> ")
        for letter in "TRUE":
            desk.do("strike", ord(letter))
        desk.shows("QUERY> true")
        desk.do("strike", 27)
        check_soon(lambda: desk.console().endswith("QUERY> "), desk.console)
    check(desk.do("text", "NarChild", "") == "told\n", "narrative")


def test_old_text(desk):
    """Whatever is typed or deleted, the text before the prompt stays and what is typed is read."""
    def type_slowly(text):  # characters are posted, places are set at once
        desk.do("type", text)
        desk.pause(300)

    desk.started()
    desk.query("+ #1 #1", "#2")
    old = desk.console()
    desk.do("select", 3, 3)
    type_slowly("\t")
    check_soon(lambda: desk.console() == old + "\t", lambda: "Tab in old text")
    desk.do("select", 3, 3)
    desk.do("type", "+ #2 #3\x0a")
    desk.shows("QUERY> + #2 #3\n#5\nQUERY> ")
    check(desk.console().startswith(old), "old text was changed")
    old = desk.console()
    end = len(old) + old.count("\n")  # the control counts two for a line end
    desk.do("type", "+ #4 #5")
    check_soon(lambda: desk.console() == old + "+ #4 #5", desk.console)
    desk.do("select", end - 4, end + 2)  # of what is selected only the typed part goes
    type_slowly("\b")
    check_soon(lambda: desk.console() == old + "#4 #5",
               lambda: "Backspace over the mark: " + desk.console()[-80:])
    desk.do("select", 0, -1)
    desk.do("key", 46)
    check_soon(lambda: desk.console() == old,
               lambda: "Delete over the mark: " + desk.console()[-80:])
    for place in (3, end):
        desk.do("select", place, place)
        type_slowly("\b\x7f")
        desk.command(201)
        desk.pause(200)
        check(desk.console().startswith(old), f"Backspace and undo at {place}: " +
              desk.console()[-80:])
        desk.do("key", 27)
    desk.do("activate", "ControlChild", "")
    typed = "+ " + "#1 " * 60  # some lines on the screen
    desk.do("type", typed)
    check_soon(lambda: desk.console() == old + typed, desk.console)
    desk.do("strike", 0x23)
    desk.do("strike", 0x24)
    check_soon(lambda: desk.selected() == f"{end} {end}",
               lambda: "Home: " + desk.selected() + f" instead of {end}")
    desk.command(511)
    check_soon(lambda: desk.console() == "\nQUERY> " + typed,
               lambda: "cleared: " + desk.console()[-300:])


def test_many_lines(desk):
    """Much narration, many messages and long pastes are as quick as plain text."""
    desk.started()
    begin = time.time()
    desk.do("type", 'map (nar_line "line ") (list_of_int #1 #3000 #1)\n')
    desk.shows("]\nQUERY> ", 60)
    told = desk.do("text", "NarChild", "")
    check(told == "".join(f"line {i}\n" for i in range(1, 3001)), "the narration: " + told[-80:])
    desk.do("paste", "nosuch\n" * 400 + "+ #1 #1\n")
    desk.shows("QUERY> + #1 #1\n#2\nQUERY> ", 60)
    seconds = time.time() - begin
    print(f"    3000 lines of narration and 400 faulty queries took {seconds:.1f} s")
    check(seconds < 5 * SLOW, "many lines are slow")
    check(desk.console().count("please define unrecognised symbol: nosuch") == 400, "all messages")
    desk.do("activate", "ControlChild", "")
    desk.do("paste", "nosuch\n")
    desk.pause(500)
    desk.command(111)
    desk.choose_file("text.bmp", "Save")
    desk.shows("Window saved in file")
    width, height, at = pixels(desk.file("text.bmp"))
    colours = [at(x, y) for x in range(width) for y in range(height)]
    check(colours.count((176, 0, 0)) > 50, "messages are red in the picture")
    check(at(width - 2, height // 2) == (255, 255, 255), "no bar at the edge")
    check(colours.count((0, 0, 0)) < len(colours) // 4, "no black bars")


def test_long_paste(desk):
    """A long word is pasted at once, broken for showing only, and can be edited like any text."""
    desk.started()
    word = "w" * 50000
    begin = time.time()
    desk.do("paste", '"' + word + '"')
    seconds = time.time() - begin
    print(f"    pasting a word of 50000 letters took {seconds:.2f} s")
    check(seconds < 1.0 * SLOW, "pasting a long word is slow")
    check(word[:2000] not in desk.console(), "the word is broken for showing")
    desk.do("type", "\n")
    desk.shows("w\"\nQUERY> ", 20)
    desk.command(112)
    desk.choose_file("log.txt", "Save")
    desk.shows("CONTROL text saved in file")
    log = desk.file("log.txt").decode()
    check(log.count('"' + word + '"\n') == 2, "query and answer are whole in the log")
    desk.command(511)
    check_soon(lambda: desk.console() == "\nQUERY> ", lambda: "cleared: " + desk.console()[-80:])
    mark = len("\r\nQUERY> ")
    desk.do("type", '"ab"')
    check_soon(lambda: desk.console().endswith('"ab"'), desk.console)
    desk.do("select", mark + 2, mark + 3)  # the b
    desk.do("paste", "v" * 3000)
    desk.do("type", "c")
    check_soon(lambda: 'vc"' in desk.console(), lambda: "the caret: " + desk.console()[-80:])
    desk.do("select", mark, -1)
    desk.command(204)
    desk.pause(200)
    pasted = '"a' + "v" * 3000 + 'c"'
    check_soon(lambda: desk.do("clipboard") == pasted, lambda: "copied: " + desk.do("clipboard"))
    desk.do("paste", '"short"')
    check_soon(lambda: desk.console() == '\nQUERY> "short"', lambda: "replaced: " + desk.console())
    desk.command(201)
    check_soon(lambda: "vvv" in desk.console() and "short" not in desk.console(),
               lambda: "undone: " + desk.console()[-80:])
    desk.do("type", "\n")
    desk.shows("c\"\nQUERY> ", 20)
    desk.do("key", 38)  # the query comes back whole

    def copied():
        desk.do("select", 0, -1)
        desk.command(204)
        desk.pause(200)
        return desk.do("clipboard")

    check_soon(lambda: copied().count(pasted) == 3,
               lambda: "query, answer and query again: " + copied()[-80:])


def test_messages(desk):
    """Messages stay red on the screen whatever happens to the window."""
    def red_dots():
        at = desk.screen.look()[2]
        left, top, width, height = map(int, desk.do("place", "ControlChild", "").split())
        return sum(at(x, y) == (176, 0, 0) for x in range(left, left + width)
                   for y in range(top, min(top + height, 768)))

    def red_again(after):
        check_soon(lambda: red_dots() == red, lambda: f"{red_dots()} instead of {red} {after}")

    desk.started()
    desk.query("+ #1 #1", "#2")
    desk.do("type", "nosuch\n")
    desk.shows("^\n\nQUERY> ")
    desk.pause(200)
    red = red_dots()
    check(red > 100, f"{red} red dots")
    desk.do("select", 0, -1)
    desk.pause(200)
    check(red_dots() < red // 4, "what is selected looks so")
    end = len(desk.console().replace("\n", "\r\n"))
    desk.do("select", end, end)
    red_again("after a selection")
    desk.do("drag", 20)
    red_again("after the window was made wider")
    for _ in range(8):
        desk.query("+ #1 #1", "#2")
    desk.pause(500)
    check(red_dots() == 0, "it is scrolled away")
    desk.do("select", 0, 0)
    desk.do("key", 33)
    desk.do("strike", 0x24)
    red_again("after scrolling back")


def test_copy(desk):
    """Text is copied as it was written, though long lines were broken for showing."""
    desk.started()
    desk.do("type", "list_of_int #1 #3000 #1\n")
    desk.shows("#3000 ]\nQUERY> ", 30)
    answer = "[ " + " ".join(f"#{i}" for i in range(1, 3001)) + " ]\n"
    check(answer not in desk.console(), "the answer is broken for showing")
    desk.do("select", 0, -1)
    desk.command(204)
    desk.pause(300)
    copied = desk.do("clipboard")
    check(("QUERY> list_of_int #1 #3000 #1\n" + answer + "\nQUERY> ").replace("\n\n", "\n") in
          copied.replace("\n\n", "\n"), "copied: " + copied[:400])
    desk.command(203)  # cutting old text copies it
    desk.pause(300)
    check(desk.do("clipboard") == copied and "#3000 ]" in desk.console(), "cut")
    shown = desk.console()
    broken_at = shown.index("\n", shown.index("[ #1 "))
    desk.command(208)  # what stands on both sides of a break is found
    desk.dialog()
    desk.fill(shown[broken_at - 6:broken_at] + shown[broken_at + 1:broken_at + 6])
    check_soon(lambda: desk.selected() != f"0 {len(shown) + shown.count(chr(10))}",
               lambda: "Find: " + desk.selected())
    before = shown.count("\n", 0, broken_at)  # the control counts two for a line end
    check(desk.selected() == f"{broken_at - 6 + before} {broken_at + 7 + before}",
          f"Find at {broken_at}, {before}: " + desk.selected())
    desk.do("type", "list_of_int #1 #160000 #1\n")  # places move when text goes from the front
    desk.shows("#160000 ]\nQUERY> ", 60)
    desk.do("paste", "list_of_int #1 #90000 #1\n")
    # Where lines break depends on how much text went from the front.
    check_soon(lambda: desk.console().split()[-3:] == ["#90000", "]", "QUERY>"],
               lambda: "the end: " + desk.console()[-60:], 60)
    desk.do("select", 0, -1)
    desk.command(204)
    desk.pause(500)
    check("#89001 #89002 #89003 " in desk.do("clipboard"), "copied")
    check(desk.do("clipboard").startswith("[earlier text: File, Save CONTROL Text...]\n"),
          "what went has a mark in its place: " + desk.do("clipboard")[:80])
    tail = " ".join(f"#{i}" for i in range(60000, 90001)) + " ]\n"
    check(tail in desk.do("clipboard"), "no break is left")
    milliseconds = int(desk.do("drag", 20))
    print(f"    20 steps of dragging the frame took {milliseconds} ms")
    check(milliseconds < 2500 * SLOW, "dragging the frame of a long text is slow")


def test_interrupt(desk):
    desk.started()
    for key in (27, 3):  # Esc, Ctrl+Break
        desk.do("type", "sum (list_of_int #1 #2000000000 #1)\n")
        time.sleep(1.0 * SLOW)
        begin = time.time()
        desk.do("key", key)
        desk.shows("Query interrupted\n", 10)
        check(time.time() - begin < 5 * SLOW, "slow to stop")
        desk.query("+ #1 #1", "#2")
        desk.command(511)
        desk.query("+ #2 #2", "#4")


def test_long_answer(desk):
    desk.started()
    begin = time.time()
    desk.do("type", "list_of_int #1 #160000 #1\n")
    desk.shows("#160000 ]\nQUERY> ", 60)
    seconds = time.time() - begin
    print(f"    an answer of 1.2 MB took {seconds:.1f} s")
    check(seconds < 20 * SLOW, "a long answer is slow")
    check(len(desk.console()) >= 200000, "the window keeps too little")
    desk.command(112)
    desk.choose_file("log.txt", "Save")
    desk.shows("CONTROL text saved in file")
    log = desk.file("log.txt")
    check(b"[ #1 #2 #3 #4 " in log and b" #80000 #80001 #80002 " in log, "the log lacks text")
    desk.query("+ #1 #2", "#3")
