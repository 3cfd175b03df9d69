"""Tests of the other windows, of files and dialogs, and of the program's start and end."""
import os
import shutil
import time

from desk import PROGRAM, ROOT, SLOW, Desk, check, check_soon, pixels, png_size

ORVEK = "fdec\n twice ::= int -> int ;\n;\nfdef\n twice ?0 ::= + ?0 ?0 ;\n;\n"


def test_orvek(desk):
    desk.started()
    desk.command(509)
    desk.window("OrvekChild", "Orvek [1 of 1]")
    desk.do("settext", "OrvekChild", "", ORVEK)
    desk.command(501)
    desk.shows("Orvek Code Stored\n")
    desk.query("twice #21", "#42")
    desk.command(509)
    desk.window("OrvekChild", "Orvek [2 of 2]")
    check(desk.do("count", "OrvekChild") == "2", "two windows")
    desk.do("settext", "OrvekChild", "Orvek [2", "not stored")
    desk.do("close", "OrvekChild", "Orvek [2")
    check("Save Changes to: Orvek Code?" in desk.dialog(), "question")
    desk.press("Cancel")
    check(desk.do("count", "OrvekChild") == "2", "cancel keeps the window")
    desk.do("close", "OrvekChild", "Orvek [2")
    desk.dialog()
    desk.press("Discard")
    desk.window("OrvekChild", "Orvek [1 of 1]")
    desk.do("activate", "OrvekChild", "")
    desk.command(111)
    desk.choose_file("text.bmp", "Save")
    desk.shows("Window saved in file")
    width, height, at = pixels(desk.file("text.bmp"))
    dark = sum(sum(at(x, y)) < 200 for x in range(width) for y in range(height // 2))
    check(100 < dark < width * height // 8, f"the text is in the picture: {dark} dark dots")
    desk.do("activate", "OrvekChild", "")
    desk.command(208)
    desk.dialog()
    desk.fill("TWICE")
    desk.gone("#32770")
    desk.query("twice #1", "#2")


def test_database(desk):
    shutil.copy(os.path.join(ROOT, "tests", "golden", "seg", "pictures.seg"),
                os.path.join(desk.folder, "pics.seg"))
    with open(os.path.join(desk.folder, "pics.ddb"), "w") as f:
        f.write("\n;\n")
    desk.started()
    desk.command(101)
    check("New Database name?" in desk.dialog(), "asks for the name")
    desk.fill("mine")
    desk.window("ControlChild", "CONTROL [mine]")
    check(os.path.exists(os.path.join(desk.folder, "mine.seg")), "picture file")
    desk.command(509)
    desk.window("OrvekChild")
    desk.do("settext", "OrvekChild", "", ORVEK)
    desk.command(501)
    desk.shows("Orvek Code Stored\n")
    desk.command(107)
    desk.shows("DataBase and Graphs Saved OK\n")
    desk.gone("OrvekChild")
    check(b"  twice ?0  ::=\n      + ?0 ?0  ;" in desk.file("mine.ddb").replace(b"\r", b""),
          "the saved text")
    desk.command(103)
    desk.window("ControlChild", "CONTROL []")
    desk.command(102)
    desk.choose_file("mine.ddb", "Open")
    desk.window("ControlChild", "CONTROL [")
    desk.query("twice #4", "#8")
    desk.command(103)
    desk.window("ControlChild", "CONTROL []")
    desk.command(102)
    desk.choose_file("pics.ddb", "Open")
    desk.shows("Loading picture segments. . . . Loaded\n")
    desk.command(504)
    desk.window("FunctionChild", "Functions")
    desk.do("activate", "FunctionChild", "")
    desk.command(902)
    check("Function Name?|Please type here" in desk.dialog(), "asks for the function")
    desk.fill("quadratic")
    desk.window("FunctionChild", "quadratic [1 of 1]")
    desk.command(111)
    desk.choose_file("shot.bmp", "Save")
    desk.shows("Window saved in file")
    width, height, at = pixels(desk.file("shot.bmp"))
    dots = [at(x, y) for x in range(width) for y in range(height)]
    dark = dots.count((0, 0, 0))
    check(dark > 500, f"the picture is drawn: {dark} black dots")
    soft = sum(1 for r, g, b in dots if r == g == b and 0 < r < 255)
    check(soft > 500, f"its lines and letters are smooth: {soft} grey dots")
    desk.command(1663)
    desk.choose_file("shot.png", "Save")
    desk.shows("shot.png\n")
    check(png_size(desk.file("shot.png")) == (width, height), "the same picture as an image")
    desk.command(1664)
    desk.choose_file("shot.svg", "Save")
    desk.shows("shot.svg\n")
    check(b">square</text>" in desk.file("shot.svg"), "the picture as a drawing")
    heard = desk.do("described", "FunctionChild", "")
    check(heard.startswith("quadratic [1 of 1]|quadratic: result real, input box ") and
          heard.endswith("|40"), "a screen reader hears: " + heard)
    heard = desk.do("described", "ControlChild", "")
    check(heard.startswith("CONTROL [") and heard.endswith("|42"), "of CONTROL: " + heard)
    desk.do("activate", "FunctionChild", "")
    desk.command(302)
    time.sleep(0.5)
    desk.command(508)
    desk.window("AnnChild", "Annotation")
    desk.do("settext", "AnnChild", "", "a note")
    desk.do("close", "AnnChild", "")
    desk.gone("AnnChild")
    desk.do("activate", "FunctionChild", "")
    desk.command(508)
    desk.window("AnnChild", "Annotation")
    check(desk.do("text", "AnnChild", "").strip() == "a note", "the annotation was stored")
    desk.do("close", "AnnChild", "")
    desk.gone("AnnChild")
    desk.do("close", "FunctionChild", "")
    check("Save Changes to: quadratic?|Save|Discard|Cancel" in desk.dialog(), "question")
    desk.press("Save")
    check("Please choose action for: quadratic" in desk.dialog(), "action: " + desk.dialog())
    desk.press("Replace Component")
    # The text does not know the functions that the picture calls: nothing is replaced or closed.
    desk.shows("replacing component 0 of quadratic\n")
    desk.shows("Please insert output type for square\n")
    desk.do("close", "FunctionChild", "")
    check("Save Changes to: quadratic?|Save|Discard|Cancel" in desk.dialog(), "asked again")
    desk.press("Discard")
    desk.gone("FunctionChild")
    desk.command(504)
    desk.command(503)
    desk.command(505)
    for kind in ("FunctionChild", "DataChild", "NetworkChild"):
        desk.window(kind)
    desk.command(512)
    time.sleep(1)  # for the screenshot


def test_graphics(desk):
    desk.started()
    desk.query("gr_open", "True")
    desk.window("GraphicChild", "Graphics [1 of 1]")
    check(desk.do("place", "GraphicChild", "") == "100 50 350 400", "place of the window")
    desk.query("gr_forecolor Red", "True")
    desk.query("gr_fillrect #20 #30 #120 #90", "True")
    desk.query("nar_line \"told\"", "True")
    desk.window("NarChild", "narrative")
    check(desk.do("text", "NarChild", "").strip() == "told", "the narrative")
    desk.do("activate", "GraphicChild", "")
    desk.command(111)
    desk.choose_file("shot.bmp", "Save")
    desk.shows("Window saved in file")
    width, height, at = pixels(desk.file("shot.bmp"))
    check(330 < width <= 350 and 360 < height <= 400, f"size {width} {height}")
    check(at(70, 60) == (255, 0, 0) and at(200, 200) == (255, 255, 255), "the colours")
    desk.command(506)
    desk.window("GraphicChild", "Graphics [2 of 2]")
    desk.do("close", "GraphicChild", "Graphics [2")
    desk.window("GraphicChild", "Graphics [1 of 1]")
    desk.do("close", "NarChild", "")
    desk.gone("NarChild")


def test_wheel(desk):
    """The wheel scrolls down and, with Shift, across; many small turns make one large one."""
    desk.started()
    desk.query("gr_open", "True")
    desk.query("gr_fillrect #1500 #1500 #1510 #1510", "True")
    desk.query("gr_forecolor Red", "True")
    desk.query("gr_fillrect #200 #220 #210 #230", "True")
    desk.do("activate", "GraphicChild", "")

    def corner():  # of the red box
        at = desk.screen.look()[2]
        left, top, width, height = map(int, desk.do("place", "GraphicChild", "").split())
        return next(((x, y) for y in range(top, top + height) for x in range(left, left + width)
                     if at(x, y) == (255, 0, 0)), (0, 0))

    first = corner()
    scrolled = []
    for keys, turn, times in ((0, -120, 2), (0, 120, 1), (4, -120, 2), (4, 120, 1), (0, -1, 120)):
        for _ in range(times):
            desk.do("wheel", "GraphicChild", "", str(keys), str(turn))
        desk.pause(100)
        x, y = corner()
        scrolled.append((first[0] - x, first[1] - y))
    check(scrolled == [(0, 120), (0, 60), (120, 60), (60, 60), (60, 120)], f"{scrolled}")


def test_closing(desk):
    desk.started()
    check(desk.do("logoff") == "yes", "nothing is unsaved")
    desk.do("close", "ControlChild", "")
    desk.shows("You're not allowed to close CONTROL window\n")
    desk.command(509)
    desk.window("OrvekChild")
    desk.do("settext", "OrvekChild", "", ORVEK)
    desk.command(501)
    desk.shows("Orvek Code Stored\n")
    desk.command(113)
    asked = desk.dialog()
    check("Save Changes to Database:" in asked and "|Yes|No|Cancel" in asked, asked)
    desk.press("Cancel")
    desk.query("twice #1", "#2")
    check(desk.do("logoff") == "no", "the database is not saved")
    check("Save Changes to Database:" in desk.dialog(), "the question")
    desk.press("Cancel")
    desk.do("type", "sum (list_of_int #1 #2000000000 #1)\n")
    time.sleep(1.0 * SLOW)
    desk.do("close", "OrvekChild", "")  # it can wait for the end
    asked = desk.dialog()
    check("Something is still running." in asked, asked)
    desk.press("Cancel")
    desk.do("close", "ControlChild", "")  # never
    check_soon(lambda: desk.console().count("You're not allowed to close CONTROL window\n") == 2,
               desk.console)
    desk.do("close", "VELORA", "")  # stops the query and asks
    desk.dialog()
    desk.press("No")
    desk.gone("VELORA")
    check(desk.ends() == 0, "exit code")


def test_failed_start(desk):
    """A library beside the program comes before the one inside it."""
    desk.close()
    shutil.copy(PROGRAM, desk.folder)
    for name in ("bis.fdb", "sys.fdb"):
        with open(os.path.join(desk.folder, name), "w") as f:
            f.write("fdec\n;\n")
    other = Desk(desk.screen, desk.folder, os.path.join(desk.folder, "velora.exe"))
    desk.driver, desk.program = other.driver, other.program
    desk.window("VELORA", seconds=60)
    desk.dialog()
    desk.press("OK")
    desk.window("#32770", "Loading info:", 60)
    check("Sorry - failed" in desk.dialog(), "message")
    desk.press("OK")
    desk.gone("VELORA")
    desk.ends()


def test_named_database(desk):
    """The program opens the database that it is started with."""
    desk.close()
    shutil.copy(os.path.join(ROOT, "examples", "welcome.ddb"), desk.folder)
    with open(os.path.join(desk.folder, "welcome.seg"), "w") as f:
        f.write("$$$$\n")
    other = Desk(desk.screen, desk.folder, arguments=["welcome.ddb"])
    desk.driver, desk.program = other.driver, other.program
    desk.started()
    desk.window("ControlChild", "CONTROL [welcome]")
    desk.shows("Loading welcome.ddb. . .")
    desk.shows("Loaded\n")


def test_dialogs(desk):
    """A dialog holds the whole program, whatever its text; then the focus goes back."""
    desk.started()
    desk.command(509)
    desk.window("OrvekChild")
    desk.do("settext", "OrvekChild", "", "text")
    desk.do("close", "OrvekChild", "")
    desk.dialog()
    for kind in ("VELORA", "ControlChild", "OrvekChild"):
        check(desk.do("enabled", kind, "") == "no", kind + " takes keys beside a dialog")
    desk.do("close", "VELORA", "")  # waits for the answer to the question that stands
    desk.do("strike", 0x1B)
    desk.gone("#32770")
    for kind in ("VELORA", "ControlChild", "OrvekChild"):
        check(desk.do("enabled", kind, "") == "yes", kind + " stays without keys")
    desk.do("strike", ord("X"))
    check(desk.do("text", "OrvekChild", "") == "textx", "the focus is back in the text")
    desk.do("close", "OrvekChild", "")
    desk.dialog()
    desk.press("Discard")
    desk.gone("OrvekChild")
    for prompt in ('"short"', '(str_concat (repeat #2000 "word "))',
                   '(str_concat (repeat #10000 "w"))'):
        desk.do("type", f"gr_dialog {prompt}\n")
        desk.dialog()
        left, top, width, height = map(int, desk.do("place", "#32770", "").split())
        check(left >= 0 and top >= 0 and left + width <= 1024 and top + height <= 768,
              f"{prompt} leaves the screen: {left} {top} {width} {height}")
        for letter in "YES":
            desk.do("strike", ord(letter))
        desk.do("strike", 13)
        desk.gone("#32770")
        desk.shows('"yes"\nQUERY> ')
        desk.command(511)
        desk.query("+ #1 #1", "#2")


def test_file_names(desk):
    """A file is never written over unasked because its ending was left out."""
    desk.started()
    for name in ("log.txt", "log.old.txt"):
        with open(os.path.join(desk.folder, name), "w") as f:
            f.write("kept")
    for name, file in (("log", "log.txt"), ("log.old", "log.old.txt")):
        desk.command(112)
        desk.dialog()
        desk.do("fill", "Z:" + os.path.join(desk.folder, name).replace("/", "\\"))
        desk.do("strike", 13)
        desk.pause(1000)
        asked = desk.dialog()
        check("|Yes|No" in asked, f"{name} asks nothing: {asked}")
        check(desk.file(file) == b"kept", f"{file} is gone")
        desk.press("Yes")
        desk.shows("CONTROL text saved in file")
        desk.gone("#32770")
        check(b"Velora" in desk.file(file), f"{file} was not written")
        desk.command(511)


def test_frame(desk):
    """Ctrl+Tab walks the windows; a maximised one leaves the menus free and follows the frame."""
    desk.started()
    desk.command(509)
    desk.window("OrvekChild")
    desk.do("ctrl", 9)
    desk.do("strike", ord("A"))
    check_soon(lambda: desk.console().endswith("QUERY> a"), lambda: "Ctrl+Tab: " + desk.console())
    desk.do("ctrl", 0x75)  # F6
    desk.do("strike", ord("B"))
    check_soon(lambda: desk.do("text", "OrvekChild", "") == "b", lambda: "Ctrl+F6 goes back to it")
    desk.do("system", "OrvekChild", "", 0xF030)  # maximises
    desk.pause(500)
    left, top, width, height = map(int, desk.do("place", "OrvekChild", "").split())
    check(top > 20 and width > 900 and top + height <= 770, f"maximised: {top} {width} {height}")
    desk.do("system", "VELORA", "", 0xF120)  # restores the frame, which stands maximised
    desk.pause(500)
    frame = list(map(int, desk.do("place", "VELORA", "").split()))
    left, top, width, height = map(int, desk.do("place", "OrvekChild", "").split())
    check(frame[2] < 1000 and left > frame[0] and top > frame[1] + 20 and
          left + width < frame[0] + frame[2] and top + height < frame[1] + frame[3],
          f"{left} {top} {width} {height} in the frame {frame}")


def test_resolution(desk):
    """A screen of finer dots shows pictures and their texts larger, both alike."""
    key = r"HKCU\Control Panel\Desktop"

    def inked(dpi):
        desk.close()
        desk.screen.stop_wine()
        desk.screen.wine(["wine", "reg", "add", key, "/v", "LogPixels", "/t", "REG_DWORD", "/d",
                          str(dpi), "/f"], 60)
        desk.screen.stop_wine()
        other = Desk(desk.screen, desk.folder)
        desk.driver, desk.program = other.driver, other.program
        desk.started()
        desk.query("gr_open", "True")
        desk.query("gr_moveto #20 #40", "True")
        desk.query('gr_text "Ten of ten"', "True")
        desk.query("gr_framerect #20 #100 #120 #190", "True")
        desk.do("activate", "GraphicChild", "")
        desk.command(111)
        desk.choose_file(f"shot{dpi}.bmp", "Save")
        desk.shows("Window saved in file")
        width, height, at = pixels(desk.file(f"shot{dpi}.bmp"))
        def columns(top, bottom):
            dark = [x for x in range(width) for y in range(top * dpi // 96, bottom * dpi // 96)
                    if sum(at(x, y)) < 300]
            return max(dark) - min(dark)
        return columns(20, 70), columns(90, 200)

    try:
        text, box = inked(96)
        fine_text, fine_box = inked(144)
    finally:
        desk.screen.wine(["wine", "reg", "delete", key, "/v", "LogPixels", "/f"], 60)
    check(1.4 < fine_box / box < 1.6, f"boxes {box} and {fine_box} dots wide")
    check(1.35 < fine_text / text < 1.65, f"texts {text} and {fine_text} dots wide")
