#!/usr/bin/env python3
# SPDX-License-Identifier: GPL-3.0-or-later
"""Draws the standard logos that go beside the program, in LoghiStandard/.

For each logo of the numbered set it writes the picture NN_name.bmp (what
the logo screen shows) and the printer files NN_name_80.bin and
NN_name_60.bin; then KX81_loghi.tlg with every logo in one file. The
pictures are drawn here from simple shapes and a small letter set of our
own. The byte layout is told in docs/logos.md.

    python3 tools/make-logos.py [output folder]     (default: LoghiStandard/)

Python 3 standard library only; the output is the same on every run.
"""

import math
import os
import struct
import sys

HEIGHT = 96          # dots, every logo
NARROW = 384         # dots across a 58/60 mm roll (48 mm printable at 8 dots/mm)
WIDE = 576           # dots across an 80 mm roll (72 mm printable)

# 5 x 7 letters, '#' a dot. Only those the logos' words need.
FONT = {
    "A": [" ### ", "#   #", "#   #", "#####", "#   #", "#   #", "#   #"],
    "B": ["#### ", "#   #", "#   #", "#### ", "#   #", "#   #", "#### "],
    "C": [" ####", "#    ", "#    ", "#    ", "#    ", "#    ", " ####"],
    "E": ["#####", "#    ", "#    ", "#### ", "#    ", "#    ", "#####"],
    "F": ["#####", "#    ", "#    ", "#### ", "#    ", "#    ", "#    "],
    "G": [" ####", "#    ", "#    ", "#  ##", "#   #", "#   #", " ### "],
    "H": ["#   #", "#   #", "#   #", "#####", "#   #", "#   #", "#   #"],
    "I": [" ### ", "  #  ", "  #  ", "  #  ", "  #  ", "  #  ", " ### "],
    "L": ["#    ", "#    ", "#    ", "#    ", "#    ", "#    ", "#####"],
    "N": ["#   #", "##  #", "# # #", "#  ##", "#   #", "#   #", "#   #"],
    "O": [" ### ", "#   #", "#   #", "#   #", "#   #", "#   #", " ### "],
    "P": ["#### ", "#   #", "#   #", "#### ", "#    ", "#    ", "#    "],
    "Q": [" ### ", "#   #", "#   #", "#   #", "# # #", "#  # ", " ## #"],
    "R": ["#### ", "#   #", "#   #", "#### ", "# #  ", "#  # ", "#   #"],
    "S": [" ####", "#    ", "#    ", " ### ", "    #", "    #", "#### "],
    "T": ["#####", "  #  ", "  #  ", "  #  ", "  #  ", "  #  ", "  #  "],
    "U": ["#   #", "#   #", "#   #", "#   #", "#   #", "#   #", " ### "],
    "V": ["#   #", "#   #", "#   #", "#   #", "#   #", " # # ", "  #  "],
    "W": ["#   #", "#   #", "#   #", "# # #", "# # #", "## ##", "#   #"],
    "Z": ["#####", "    #", "   # ", "  #  ", " #   ", "#    ", "#####"],
    " ": ["     "] * 7,
}


class Canvas:
    def __init__(self, width, height):
        self.width, self.height = width, height
        self.dots = [[False] * width for _ in range(height)]

    def set(self, x, y, on=True):
        if 0 <= x < self.width and 0 <= y < self.height:
            self.dots[y][x] = on

    def fill(self, inside, left, top, size, on=True):
        """Sets every dot of a size x size box for which inside(x, y) holds,
        x and y taken from the box's centre (-1..1)."""
        for y in range(size):
            for x in range(size):
                u = (x + 0.5) / size * 2 - 1
                v = (y + 0.5) / size * 2 - 1
                if inside(u, v):
                    self.set(left + x, top + y, on)

    def text(self, words, left, width):
        """Writes words centred in [left, left + width), as large as fits."""
        for scale in (4, 3, 2, 1):
            advance = 6 * scale
            if len(words) * advance - scale <= width:
                break
        x0 = left + (width - (len(words) * advance - scale)) // 2
        y0 = (self.height - 7 * scale) // 2
        for i, letter in enumerate(words):
            for row, line in enumerate(FONT[letter]):
                for col, mark in enumerate(line):
                    if mark == "#":
                        for dy in range(scale):
                            for dx in range(scale):
                                self.set(x0 + i * advance + col * scale + dx, y0 + row * scale + dy)

    def centred_on(self, width):
        """The same drawing in the middle of a wider canvas."""
        wide = Canvas(width, self.height)
        margin = (width - self.width) // 2
        for y in range(self.height):
            wide.dots[y][margin:margin + self.width] = self.dots[y]
        return wide


def inside_polygon(points, u, v):
    inside = False
    for (x1, y1), (x2, y2) in zip(points, points[1:] + points[:1]):
        if (y1 > v) != (y2 > v) and u < x1 + (v - y1) * (x2 - x1) / (y2 - y1):
            inside = not inside
    return inside


def ring(u, v, rx, ry, thickness):
    r = (u / rx) ** 2 + (v / ry) ** 2
    return (1 - thickness) ** 2 <= r <= 1


# The shapes, each in a box of HEIGHT dots on the left of the logo.
def egg(c, left):
    c.fill(lambda u, v: ring(u, v * (1.0 - 0.12 * v), 0.62, 0.92, 0.1), left, 0, HEIGHT)
    zig = lambda u: 0.12 * abs(((u * 4) % 2) - 1)
    c.fill(lambda u, v: (u / 0.62) ** 2 + (v / 0.92) ** 2 <= 1 and abs(v - zig(u)) < 0.07, left, 0, HEIGHT)


def pumpkin(c, left):
    c.fill(lambda u, v: (u / 0.9) ** 2 + ((v - 0.12) / 0.75) ** 2 <= 1, left, 0, HEIGHT)
    c.fill(lambda u, v: abs(u) < 0.08 and -0.95 < v < -0.55, left, 0, HEIGHT)
    eye = lambda cx: [(cx - 0.18, -0.05), (cx + 0.18, -0.05), (cx, -0.35)]
    mouth = [(-0.5, 0.3), (0.5, 0.3), (0.3, 0.55), (0.0, 0.45), (-0.3, 0.55)]
    for shape in (eye(-0.35), eye(0.35), mouth):
        c.fill(lambda u, v, s=shape: inside_polygon(s, u, v), left, 0, HEIGHT, on=False)


def tree(c, left):
    for top, bottom, half in ((-0.9, -0.3, 0.45), (-0.5, 0.2, 0.65), (-0.1, 0.7, 0.85)):
        c.fill(lambda u, v, t=top, b=bottom, h=half: t <= v <= b and abs(u) <= h * (v - t) / (b - t),
               left, 0, HEIGHT)
    c.fill(lambda u, v: abs(u) < 0.12 and 0.7 < v < 0.95, left, 0, HEIGHT)


def star_points(points, outer, inner):
    out = []
    for k in range(points * 2):
        r = outer if k % 2 == 0 else inner
        a = -math.pi / 2 + k * math.pi / points
        out.append((r * math.cos(a), r * math.sin(a) + 0.05))
    return out


def star(c, left):
    shape = star_points(5, 0.95, 0.4)
    c.fill(lambda u, v: inside_polygon(shape, u, v), left, 0, HEIGHT)
    hole = star_points(5, 0.6, 0.25)
    c.fill(lambda u, v: inside_polygon(hole, u, v), left, 0, HEIGHT, on=False)


def heart(c, left):
    def inside(u, v):
        x, y = u * 1.25, -v * 1.25 + 0.2
        return (x * x + y * y - 1) ** 3 - x * x * y ** 3 <= 0
    c.fill(inside, left, 0, HEIGHT)


def balloons(c, left):
    for cx, cy in ((-0.45, -0.45), (0.0, -0.6), (0.45, -0.4)):
        c.fill(lambda u, v, x=cx, y=cy: ring(u - x, v - y, 0.3, 0.36, 0.25), left, 0, HEIGHT)
        c.fill(lambda u, v, x=cx, y=cy: v > y + 0.36 and v < 0.95
               and abs(u - (x + (0.0 - x) * (v - y - 0.36) / (0.95 - y - 0.36))) < 0.03, left, 0, HEIGHT)


def sun(c, left):
    c.fill(lambda u, v: u * u + v * v <= 0.4 ** 2, left, 0, HEIGHT)
    def ray(u, v):
        r = math.hypot(u, v)
        a = math.atan2(v, u) % (math.pi / 6)
        return 0.55 <= r <= 0.95 and min(a, math.pi / 6 - a) * r < 0.05
    c.fill(ray, left, 0, HEIGHT)


def cake(c, left):
    c.fill(lambda u, v: abs(u) < 0.85 and 0.3 < v < 0.9, left, 0, HEIGHT)
    c.fill(lambda u, v: abs(u) < 0.6 and -0.15 < v <= 0.3, left, 0, HEIGHT)
    c.fill(lambda u, v: abs(u) < 0.8 and abs(v - 0.55) < 0.05, left, 0, HEIGHT, on=False)
    for x in (-0.35, 0.0, 0.35):
        c.fill(lambda u, v, x=x: abs(u - x) < 0.05 and -0.5 < v <= -0.15, left, 0, HEIGHT)
        c.fill(lambda u, v, x=x: ((u - x) / 0.07) ** 2 + ((v + 0.65) / 0.12) ** 2 <= 1, left, 0, HEIGHT)


# The numbered set: number, name (the file names' middle part), shape, words.
LOGOS = [
    (2, "pasqua", egg, "BUONA PASQUA"),
    (3, "halloween", pumpkin, "HALLOWEEN"),
    (4, "nataleA", tree, "BUON NATALE"),
    (5, "NataleB", star, "BUONE FESTE"),
    (6, "valentino", heart, "SAN VALENTINO"),
    (7, "palloncini", balloons, "FESTA"),
    (8, "vacanze", sun, "BUONE VACANZE"),
    (9, "torta", cake, "AUGURI"),
]


def draw(shape, words):
    c = Canvas(NARROW, HEIGHT)
    shape(c, 4)
    c.text(words, HEIGHT + 12, NARROW - HEIGHT - 16)
    return c


def packed_rows(c):
    """Rows top to bottom, 8 dots a byte, the leftmost dot in the high bit,
    1 a printed (black) dot."""
    out = bytearray()
    for row in c.dots:
        for x in range(0, c.width, 8):
            byte = 0
            for bit in range(8):
                if x + bit < c.width and row[x + bit]:
                    byte |= 0x80 >> bit
            out.append(byte)
    return bytes(out)


def logo_record(c, number):
    """One logo for the printer: the raster with its key, the logo number
    as two ASCII digits."""
    data = packed_rows(c)
    body = b"\x30\x43\x30" + b"%02d" % number + b"\x01" + struct.pack("<HH", c.width, c.height) + b"\x31" + data
    return b"\x1d\x28\x4c" + struct.pack("<H", len(body)) + body


def bmp(c):
    """A 1-bit Windows bitmap: palette 0 white, 1 black, rows bottom up."""
    stride = (c.width + 31) // 32 * 4
    rows = packed_rows(c)
    per_row = (c.width + 7) // 8
    pixels = b"".join(rows[y * per_row:(y + 1) * per_row].ljust(stride, b"\0") for y in reversed(range(c.height)))
    palette = b"\xff\xff\xff\x00" + b"\x00\x00\x00\x00"
    offset = 14 + 40 + len(palette)
    header = b"BM" + struct.pack("<IHHI", offset + len(pixels), 0, 0, offset)
    info = struct.pack("<IiiHHIIiiII", 40, c.width, c.height, 1, 1, 0, len(pixels), 7874, 7874, 2, 2)
    return header + info + palette + pixels


def main():
    here = os.path.dirname(os.path.abspath(__file__))
    folder = sys.argv[1] if len(sys.argv) > 1 else os.path.join(here, "..", "LoghiStandard")
    os.makedirs(folder, exist_ok=True)
    written = {}
    all_logos = b""
    for number, name, shape, words in LOGOS:
        picture = draw(shape, words)
        stem = "%02d_%s" % (number, name)
        written[stem + ".bmp"] = bmp(picture)
        written[stem + "_60.bin"] = logo_record(picture, number)
        written[stem + "_80.bin"] = logo_record(picture.centred_on(WIDE), number)
        all_logos += logo_record(picture, number)
    written["KX81_loghi.tlg"] = all_logos
    for file_name, content in written.items():
        with open(os.path.join(folder, file_name), "wb") as f:
            f.write(content)
        print("%-26s %6d bytes" % (file_name, len(content)))


if __name__ == "__main__":
    main()
