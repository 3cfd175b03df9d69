#!/usr/bin/env python3
"""Draws the icons and cursors of the desktop program into art/.

Every shape is given as a function of the unit square, so one description serves all sizes; edges
are smoothed by sampling each pixel 4 x 4 times. Run it after a change of a shape and check the
files in: the build itself needs no Python.
"""
import math
import os
import struct

SAMPLES = 4


def polygon(points):
    """Inside test of a polygon by counting crossings."""
    def inside(x, y):
        odd = False
        for (x1, y1), (x2, y2) in zip(points, points[1:] + points[:1]):
            if (y1 > y) != (y2 > y) and x < (x2 - x1) * (y - y1) / (y2 - y1) + x1:
                odd = not odd
        return odd
    return inside


def box(left, top, right, bottom):
    return lambda x, y: left <= x <= right and top <= y <= bottom


def disc(cx, cy, r):
    return lambda x, y: (x - cx) ** 2 + (y - cy) ** 2 <= r * r


def hexagon(left, top, right, bottom):
    """Flat top and bottom, a point at each side, as the pictures draw parameters."""
    cut = (bottom - top) * 0.5
    return polygon([(left + cut, top), (right - cut, top), (right, (top + bottom) / 2),
                    (right - cut, bottom), (left + cut, bottom), (left, (top + bottom) / 2)])


def stroke(x1, y1, x2, y2, width):
    dx, dy = x2 - x1, y2 - y1
    length2 = dx * dx + dy * dy or 1

    def inside(x, y):
        t = max(0, min(1, ((x - x1) * dx + (y - y1) * dy) / length2))
        return math.hypot(x - x1 - t * dx, y - y1 - t * dy) <= width / 2
    return inside


def union(*shapes):
    return lambda x, y: any(s(x, y) for s in shapes)


def ring(make, left, top, right, bottom, width):
    outer = make(left, top, right, bottom)
    inner = make(left + width * 1.15, top + width, right - width * 1.15, bottom - width)
    return lambda x, y: outer(x, y) and not inner(x, y)


def arrow(x1, y1, x2, y2, width, head):
    angle = math.atan2(y2 - y1, x2 - x1)
    tip = polygon([(x2, y2)] + [(x2 + head * math.cos(angle + a), y2 + head * math.sin(angle + a))
                                for a in (math.pi - 0.5, math.pi + 0.5)])
    return union(stroke(x1, y1, x2 - head * 0.5 * math.cos(angle),
                        y2 - head * 0.5 * math.sin(angle), width), tip)


def coverage(shape, size, px, py):
    hits = 0
    for i in range(SAMPLES):
        for j in range(SAMPLES):
            hits += shape((px + (i + 0.5) / SAMPLES) / size, (py + (j + 0.5) / SAMPLES) / size)
    return hits / SAMPLES ** 2


def render(layers, size):
    """Paints (shape, rgb) layers from the back; returns rows of (r, g, b, a)."""
    rows = []
    for py in range(size):
        row = []
        for px in range(size):
            r = g = b = a = 0.0
            for shape, (lr, lg, lb) in layers:
                c = coverage(shape, size, px, py)
                if c:
                    out = c + a * (1 - c)
                    r, g, b = ((n * c + o * a * (1 - c)) / out
                               for n, o in ((lr, r), (lg, g), (lb, b)))
                    a = out
            row.append((round(r), round(g), round(b), round(a * 255)))
        rows.append(row)
    return rows


def dib(rows):
    """A 32-bit bitmap with its mask, bottom row first, as icon files hold it."""
    size = len(rows)
    head = struct.pack("<IiiHHIIiiII", 40, size, size * 2, 1, 32, 0, 0, 0, 0, 0, 0)
    pixels = b"".join(struct.pack("4B", b, g, r, a) for row in reversed(rows) for r, g, b, a in row)
    stride = (size + 31) // 32 * 4
    mask = b""
    for row in reversed(rows):
        bits = bytearray(stride)
        for x, (_, _, _, a) in enumerate(row):
            if a == 0:
                bits[x // 8] |= 0x80 >> (x % 8)
        mask += bytes(bits)
    return head + pixels + mask


def write_images(path, kind, images):
    """`images` holds (rows, hotspot); kind 1 is an icon file, 2 a cursor file."""
    head = struct.pack("<HHH", 0, kind, len(images))
    offset = 6 + 16 * len(images)
    entries, data = b"", b""
    for rows, (hx, hy) in images:
        blob = dib(rows)
        size = len(rows)
        planes, depth = (hx, hy) if kind == 2 else (1, 32)
        entries += struct.pack("<BBBBHHII", size & 255, size & 255, 0, 0, planes, depth,
                               len(blob), offset + len(data))
        data += blob
    with open(path, "wb") as out:
        out.write(head + entries + data)


BLACK, WHITE, GREY = (0, 0, 0), (255, 255, 255), (96, 96, 96)
NAVY, GOLD, TEAL, RED, GREEN = (24, 48, 120), (255, 196, 40), (20, 130, 130), (200, 40, 40), (40, 140, 60)
PAPER, INK = (252, 252, 248), (60, 60, 70)


def paper(accent):
    sheet = polygon([(0.14, 0.04), (0.66, 0.04), (0.86, 0.24), (0.86, 0.96), (0.14, 0.96)])
    inner = polygon([(0.18, 0.08), (0.64, 0.08), (0.82, 0.26), (0.82, 0.92), (0.18, 0.92)])
    fold = polygon([(0.66, 0.04), (0.86, 0.24), (0.66, 0.24)])
    return [(sheet, INK), (inner, PAPER), (fold, accent)]


def text_lines():
    return union(*(box(0.26, y, r, y + 0.06)
                   for y, r in ((0.34, 0.72), (0.48, 0.66), (0.62, 0.74), (0.76, 0.54))))


ICONS = {
    # The frame: a V made of two branches that meet in a node.
    "vel": [(box(0.03, 0.03, 0.97, 0.97), NAVY),
            (union(stroke(0.24, 0.24, 0.5, 0.72, 0.11), stroke(0.76, 0.24, 0.5, 0.72, 0.11)), WHITE),
            (disc(0.24, 0.24, 0.12), GOLD), (disc(0.76, 0.24, 0.12), GOLD),
            (disc(0.5, 0.74, 0.14), GOLD)],
    # A function: a box with two arrows in and one out.
    "fun": [(box(0.12, 0.36, 0.88, 0.66), INK), (box(0.17, 0.41, 0.83, 0.61), (255, 223, 223)),
            (union(arrow(0.3, 0.04, 0.3, 0.36, 0.07, 0.18), arrow(0.7, 0.04, 0.7, 0.36, 0.07, 0.18),
                   arrow(0.5, 0.66, 0.5, 0.98, 0.07, 0.18)), RED)],
    # Constructors: a double hexagon with a constructor above it.
    "con": [(hexagon(0.06, 0.56, 0.94, 0.94), INK), (hexagon(0.13, 0.61, 0.87, 0.89), WHITE),
            (hexagon(0.19, 0.65, 0.81, 0.85), GREEN), (hexagon(0.26, 0.7, 0.74, 0.8), (223, 255, 223)),
            (box(0.26, 0.06, 0.74, 0.3), INK), (box(0.31, 0.11, 0.69, 0.25), (223, 255, 223)),
            (arrow(0.5, 0.3, 0.5, 0.58, 0.07, 0.18), GREEN)],
    # The network: one box that calls three.
    "net": [(union(stroke(0.5, 0.24, 0.17, 0.78, 0.06), stroke(0.5, 0.24, 0.5, 0.78, 0.06),
                   stroke(0.5, 0.24, 0.83, 0.78, 0.06)), GREY)] +
           [layer for x, y in ((0.5, 0.2), (0.17, 0.8), (0.5, 0.8), (0.83, 0.8))
            for layer in ((box(x - 0.16, y - 0.13, x + 0.16, y + 0.13), INK),
                          (box(x - 0.11, y - 0.08, x + 0.11, y + 0.08), (223, 223, 255)))],
    # The console: a screen with its prompt.
    "ctrl": [(box(0.04, 0.1, 0.96, 0.9), INK), (box(0.1, 0.16, 0.9, 0.84), PAPER),
             (union(stroke(0.22, 0.32, 0.4, 0.48, 0.08), stroke(0.4, 0.48, 0.22, 0.64, 0.08)), NAVY),
             (box(0.48, 0.62, 0.74, 0.7), NAVY)],
    "text": paper(TEAL) + [(text_lines(), TEAL)],
}

HAND = """
............oo..........
.........oo.oXo.oo......
........oXoooXooXo......
........oXo.oXo.oXo.....
........oXo.oXo.oXo.oo..
........oXo.oXo.oXo.oXo.
........oXo.oXo.oXo.oXo.
........oXo.oXo.oXo.oXo.
..ooo...oXo.oXo.oXo.oXo.
.oXXXo..oXo.oXo.oXo.oXo.
.oXXXXo.oXooXXXXXXXXXXo.
..oXXXXooXXXXXXXXXXXXXo.
...oXXXXoXXXXXXXXXXXXXo.
....oXXXXXXXXXXXXXXXXXo.
.....oXXXXXXXXXXXXXXXXo.
......oXXXXXXXXXXXXXXo..
.......oXXXXXXXXXXXXXo..
........oXXXXXXXXXXXo...
.........oXXXXXXXXXXo...
..........oXXXXXXXXo....
..........oooooooooo....
"""
FINGER = """
........oo..............
.......oXXo.............
.......oXXo.............
.......oXXo.............
.......oXXo.............
.......oXXo.............
.......oXXooo...........
.......oXXoXXoooo.......
.......oXXoXXoXXooo.....
..ooo..oXXoXXoXXoXXo....
.oXXXo.oXXXXXXXXXXXo....
.oXXXXooXXXXXXXXXXXo....
..oXXXXoXXXXXXXXXXXo....
...oXXXXXXXXXXXXXXXo....
....oXXXXXXXXXXXXXXo....
....oXXXXXXXXXXXXXo.....
.....oXXXXXXXXXXXXo.....
......oXXXXXXXXXXo......
......oXXXXXXXXXXo......
......oooooooooooo......
"""


def bitmap(art, size=32):
    """A drawn shape: 'o' black, 'X' white, '.' clear."""
    colours = {"o": (0, 0, 0, 255), "X": (255, 255, 255, 255)}
    clear = (0, 0, 0, 0)
    rows = [[colours.get(c, clear) for c in line] for line in art.strip("\n").split("\n")]
    rows = [row + [clear] * (size - len(row)) for row in rows]
    return rows + [[clear] * size for _ in range(size - len(rows))]


def hard(layers, size=32):
    """Cursors have hard edges: every pixel is clear or opaque."""
    return [[(r, g, b, 255) if a > 110 else (0, 0, 0, 0) for r, g, b, a in row]
            for row in render(layers, size)]


def u(n):
    return n / 32


def outlined(make, left, top, right, bottom, width):
    halo = make(u(left - 1.3), u(top - 1), u(right + 1.3), u(bottom + 1))
    return [(halo, WHITE), (make(u(left), u(top), u(right), u(bottom)), BLACK),
            (make(u(left + width * 1.3), u(top + width), u(right - width * 1.3),
                  u(bottom - width)), WHITE)]


def doubled(make, left, top, right, bottom):
    return outlined(make, left, top, right, bottom, 1) + \
        outlined(make, left + 4, top + 3, right - 4, bottom - 3, 1)[1:]


def join(down):
    """An arc's end at a box: leaving it (start) or entering it (end)."""
    if down:
        return [(box(u(2), u(2), u(20), u(10)), BLACK), (box(u(3), u(3), u(19), u(9)), WHITE),
                (arrow(u(11), u(10), u(11), u(30), u(2.2), u(8)), BLACK)]
    return [(box(u(2), u(20), u(20), u(28)), BLACK), (box(u(3), u(21), u(19), u(27)), WHITE),
            (arrow(u(11), u(1), u(11), u(20), u(2.2), u(8)), BLACK)]


CURSORS = {
    "box": (hard(outlined(box, 3, 9, 29, 23, 1)), (16, 16)),
    "bbox": (hard(outlined(box, 3, 9, 29, 23, 3)), (16, 16)),
    "dbox": (hard(doubled(box, 3, 8, 29, 24)), (16, 16)),
    "hex": (hard(outlined(hexagon, 2, 9, 30, 23, 1)), (16, 16)),
    "bhex": (hard(outlined(hexagon, 2, 8, 30, 24, 3)), (16, 16)),
    "dhex": (hard(doubled(hexagon, 1, 7, 31, 25)), (16, 16)),
    "jct": (hard([(disc(u(16), u(16), u(7)), WHITE), (disc(u(16), u(16), u(6)), BLACK),
                  (disc(u(16), u(16), u(4)), WHITE), (disc(u(16), u(16), u(2.2)), BLACK)]), (16, 16)),
    "hand": (bitmap(HAND), (12, 10)),
    "finger": (bitmap(FINGER), (8, 1)),
    "sjn": (hard(join(True)), (11, 6)),
    "ejn": (hard(join(False)), (11, 24)),
    "ibeam": (hard([(union(box(u(14.4), u(4), u(17.6), u(28)), box(u(11), u(3), u(21), u(6)),
                           box(u(11), u(26), u(21), u(29))), WHITE),
                    (union(box(u(15), u(5), u(17), u(27)), box(u(12), u(4), u(20), u(5)),
                           box(u(12), u(27), u(20), u(28))), BLACK)]), (16, 16)),
    "cross": (hard([(union(box(u(14.4), u(2), u(17.6), u(30)), box(u(2), u(14.4), u(30), u(17.6))),
                     WHITE),
                    (union(box(u(15), u(3), u(17), u(29)), box(u(3), u(15), u(29), u(17))),
                     BLACK)]), (16, 16)),
}


def main():
    art = os.path.join(os.path.dirname(os.path.abspath(__file__)), "art")
    os.makedirs(art, exist_ok=True)
    for name, layers in ICONS.items():
        images = [(render(layers, size), (0, 0)) for size in (16, 24, 32, 48)]
        write_images(os.path.join(art, name + ".ico"), 1, images)
    for name, (rows, hotspot) in CURSORS.items():
        write_images(os.path.join(art, name + ".cur"), 2, [(rows, hotspot)])


if __name__ == "__main__":
    main()
