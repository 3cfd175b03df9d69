"""A screen in memory with a Wine of its own, and the desktop program on it with its driver.

The tests beside it use what stands here: `Desk` does what a person does and sees, `check` and
`check_soon` tell what is wrong, `pixels` reads a saved picture.
"""
import glob
import os
import select
import shutil
import struct
import subprocess
import sys
import time
import zlib

ROOT = os.path.dirname(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
BUILD = os.path.join(ROOT, "build", "windows")
PROGRAM = os.path.join(BUILD, "bin", "velora.exe")
DRIVER = os.path.join(BUILD, "bin", "driver.exe")
PREFIX = os.path.join(ROOT, "build", "wine-prefix")
SHOTS = os.path.join(ROOT, "build", "wine-shots")
COMPILER = "x86_64-w64-mingw32-g++-posix"
PACKAGES = ["g++-mingw-w64-x86-64-posix", "wine64", "wine", "xvfb", "imagemagick"]
SLOW = float(os.environ.get("VELORA_SLOW", "2"))  # patience on a busy machine


class Failure(Exception):
    pass


def check(condition, what):
    if not condition:
        raise Failure(what)


def check_soon(condition, what, seconds=5):
    """Waits until `condition` holds; `what` tells the fault."""
    end = time.time() + seconds * SLOW
    while not condition():
        check(time.time() < end, what())
        time.sleep(0.1)


def missing_tools():
    tools = (COMPILER, "wine", "Xvfb", "import", "cmake", "ninja")
    return [t for t in tools if shutil.which(t) is None]


def install():
    """Installs what is missing where that is possible."""
    if not missing_tools():
        return
    if shutil.which("apt-get") and os.geteuid() == 0:
        env = dict(os.environ, DEBIAN_FRONTEND="noninteractive")
        subprocess.run(["apt-get", "update", "-qq"], env=env, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, timeout=300)
        subprocess.run(["apt-get", "install", "-y", "-qq", "--no-install-recommends"] + PACKAGES,
                       env=env, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=600)


def build():
    if not os.path.exists(os.path.join(BUILD, "build.ninja")):
        subprocess.run(["cmake", "--preset", "windows"], cwd=ROOT, check=True,
                       stdout=subprocess.DEVNULL)
    made = subprocess.run(["cmake", "--build", BUILD, "--target", "velora"], cwd=ROOT,
                          stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    if made.returncode != 0:
        print(made.stdout[-3000:])
        sys.exit("0 passed, 1 failed")
    source = os.path.join(ROOT, "tests", "wine", "driver.cpp")
    changed = max(os.path.getmtime(source.replace(".cpp", end))
                  for end in (".cpp", "_text.h", "_windows.h"))
    if not os.path.exists(DRIVER) or os.path.getmtime(DRIVER) < changed:
        subprocess.run([COMPILER, "-std=c++20", "-O1", "-static", "-s", "-Wall", "-Wextra",
                        "-o", DRIVER, source, "-luser32", "-loleacc", "-loleaut32", "-lole32",
                        "-luuid"], check=True)


class Screen:
    """A screen in memory with a Wine of our own: every window stands in a Wine desktop."""

    def __init__(self):
        reading, writing = os.pipe()
        self.xvfb = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0",
                                      "1024x768x24", "-nolisten", "tcp", "-noreset"],
                                     pass_fds=[writing], stdout=subprocess.DEVNULL,
                                     stderr=subprocess.DEVNULL)
        os.close(writing)
        number = b""  # it comes in pieces, and the server ends when nobody reads all of them
        while not number.endswith(b"\n") and select.select([reading], [], [], 30)[0]:
            piece = os.read(reading, 20)
            number += piece or b"\n"
        os.close(reading)
        number = number.decode().strip()
        check(number, "no screen")
        self.env = dict(os.environ, DISPLAY=":" + number, WINEPREFIX=PREFIX, WINEDEBUG="-all",
                        WINEDLLOVERRIDES="mscoree,mshtml=", WINEARCH="win64")
        fresh = not os.path.exists(os.path.join(PREFIX, "system.reg"))
        if fresh:
            self.wine(["wineboot", "-i"], 300)
        explorer = r"HKCU\Software\Wine\Explorer"
        for key, name, value in ((explorer, "Desktop", "Default"),
                                 (explorer + r"\Desktops", "Default", "1024x768")):
            self.wine(["wine", "reg", "add", key, "/v", name, "/d", value, "/f"], 120)
        self.stop_wine()

    def wine(self, command, seconds):
        subprocess.run(command, env=self.env, stdout=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL, timeout=seconds * SLOW)

    def stop_wine(self):
        """Ends what runs in our own Wine, and nothing else."""
        subprocess.run(["wineserver", "-k"], env=self.env, stderr=subprocess.DEVNULL, timeout=60)
        subprocess.run(["wineserver", "-w"], env=self.env, stderr=subprocess.DEVNULL, timeout=60)

    def forget_work(self):
        """Removes what programs that were ended kept for the next start, which would ask about it."""
        for folder in glob.glob(os.path.join(PREFIX, "drive_c/users/*/AppData/Local/velora")):
            shutil.rmtree(folder, ignore_errors=True)

    def shot(self, name):
        subprocess.run(["import", "-window", "root", os.path.join(SHOTS, name + ".png")],
                       env=self.env, stderr=subprocess.DEVNULL, timeout=60)

    def look(self):
        """What stands on the screen, as `pixels` answers it."""
        seen = subprocess.run(["import", "-window", "root", "-type", "TrueColor", "bmp3:-"],
                              env=self.env, stdout=subprocess.PIPE, check=True, timeout=60)
        return pixels(seen.stdout)

    def close(self):
        self.stop_wine()
        self.xvfb.terminate()
        self.xvfb.wait(20)


class Desk:
    """The program with its driver. Each method is something that a user does or sees."""

    def __init__(self, screen, folder, program=PROGRAM, arguments=()):
        self.folder = folder
        screen.forget_work()
        self.program = subprocess.Popen(["wine", program, *arguments], env=screen.env, cwd=folder,
                                        stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        self.driver = subprocess.Popen(["wine", DRIVER], env=screen.env, stdin=subprocess.PIPE,
                                       stdout=subprocess.PIPE, stderr=subprocess.DEVNULL)

    def ask(self, command, *words, seconds=40.0):
        """One command to the driver; answers (done, text). A last number is how long it waits."""
        if words and isinstance(words[-1], int):
            seconds += words[-1] / 1000
        def quoted(word):
            text = str(word).replace("\\", "\\\\").replace("\n", "\\n").replace('"', '\\"')
            return '"' + text + '"'
        line = " ".join([command] + [quoted(w) for w in words]) + "\n"
        self.driver.stdin.write(line.encode())
        self.driver.stdin.flush()
        ready, _, _ = select.select([self.driver.stdout], [], [], seconds * SLOW)
        check(ready, "the driver does not answer: " + line)
        answer = self.driver.stdout.readline().decode().rstrip("\r\n")
        text = answer[3:].replace("\\\\", "\0").replace("\\n", "\n").replace("\0", "\\")
        return answer.startswith("ok"), text

    def do(self, command, *words):
        done, text = self.ask(command, *words)
        check(done, f"{command} {words}: {text[-600:]}")
        return text

    def started(self):
        self.window("VELORA", seconds=60)
        about = self.dialog()
        self.press("OK")
        self.shows("QUERY> ", 30)
        return about

    def window(self, kind, title="", seconds=10):
        self.do("window", kind, title, int(seconds * 1000 * SLOW))

    def gone(self, kind, title="", seconds=10):
        self.do("gone", kind, title, int(seconds * 1000 * SLOW))

    def shows(self, text, seconds=10.0):
        self.do("shows", text, int(seconds * 1000 * SLOW))

    def query(self, text, answer, seconds=10.0):
        self.do("type", text + "\n")
        self.shows(text + "\n" + answer + "\nQUERY> ", seconds)

    def command(self, number):
        self.do("command", number)

    def pause(self, milliseconds):
        """Lets the program settle where nothing can be waited for."""
        self.do("sleep", int(milliseconds * SLOW))

    def dialog(self, seconds=10):
        return self.do("dialog", int(seconds * 1000 * SLOW))

    def press(self, label):
        self.do("press", label)

    def fill(self, text, button="OK"):
        self.do("fill", text)
        self.press(button)

    def choose_file(self, name, button):
        self.dialog()
        self.fill("Z:" + os.path.join(self.folder, name).replace("/", "\\"), button)

    def console(self):
        return self.do("text", "ControlChild", "")

    def selected(self, kind="ControlChild"):
        return self.do("selected", kind, "")

    def file(self, name):
        with open(os.path.join(self.folder, name), "rb") as f:
            return f.read()

    def ends(self, seconds=20):
        try:
            return self.program.wait(seconds * SLOW)
        except subprocess.TimeoutExpired:
            raise Failure("the program does not end")

    def close(self):
        for process in (self.driver, self.program):
            if process.poll() is None:
                process.kill()
            process.wait(20)


def pixels(bitmap):
    """Width, height and a function that answers (red, green, blue) of a bitmap file."""
    check(bitmap[:2] == b"BM", "no bitmap file")
    offset, = struct.unpack_from("<I", bitmap, 10)
    width, height = struct.unpack_from("<ii", bitmap, 18)
    stride = (width * 3 + 3) // 4 * 4

    def at(x, y):
        start = offset + (height - 1 - y) * stride + x * 3
        blue, green, red = bitmap[start:start + 3]
        return red, green, blue
    return width, height, at


def png_size(image):
    """Width and height of an image whose every line is whole."""
    check(image[:8] == b"\x89PNG\r\n\x1a\n", "no image file")
    at, packed, size = 8, b"", (0, 0, 0, 0)
    while at < len(image):
        length, kind = struct.unpack_from(">I4s", image, at)
        if kind == b"IHDR":
            size = struct.unpack_from(">IIBB", image, at + 8)
        elif kind == b"IDAT":
            packed += image[at + 8:at + 8 + length]
        at += length + 12
    width, height, depth, colour = size
    dot = depth * {0: 1, 2: 3, 3: 1, 6: 4}[colour]
    check(len(zlib.decompress(packed)) == height * (1 + (width * dot + 7) // 8), "lines are missing")
    return width, height
