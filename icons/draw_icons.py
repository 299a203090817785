#!/usr/bin/env python3
"""Draws the toolbar icons icons/*.xpm and lib/*.xpm: 24 x 24 pixels on a transparent background.

Shapes are signed distance functions in pixels, with x to the right and y down. Each pixel is the average of SAMPLES x
SAMPLES samples. XPM has no partial transparency: pixels covered by less than EDGE are transparent, and pixels on the
edge of a shape are blended with RIM, a grey that suits light and dark toolbars.

Usage: icons/draw_icons.py (writes to the icons and lib folders of the project)
"""

import math
from pathlib import Path

SIZE = 24
SAMPLES = 8
EDGE = 0.34
RIM = (128, 136, 148)
MAX_COLORS = 60

INK = (52, 62, 78)  # outlines
BOND = (58, 128, 226)
CARBON = (122, 130, 142)
HYDROGEN = (242, 245, 249)
OXYGEN = (228, 62, 52)
RED = (226, 58, 50)
GREEN = (72, 176, 82)
ORANGE = (246, 150, 32)
PAPER = (250, 251, 253)

# Shapes: functions of (x, y) that return the distance to the edge of the shape, negative inside.


def circle(cx, cy, r):
    return lambda x, y: math.hypot(x - cx, y - cy) - r


def stroke(x1, y1, x2, y2, width):
    """A straight stroke with round ends."""
    dx, dy = x2 - x1, y2 - y1
    square = dx * dx + dy * dy

    def distance(x, y):
        t = max(0.0, min(1.0, ((x - x1) * dx + (y - y1) * dy) / square))
        return math.hypot(x - x1 - t * dx, y - y1 - t * dy) - width / 2

    return distance


def polyline(points, width, closed=False):
    ends = points[1:] + points[:1] if closed else points[1:]
    return union(*(stroke(*a, *b, width) for a, b in zip(points, ends)))


def arc(cx, cy, r, start, end, width):
    """A stroke along a circle from `start` to `end` degrees, clockwise from the x axis, with flat ends."""

    def distance(x, y):
        angle = math.degrees(math.atan2(y - cy, x - cx))
        while angle < start:
            angle += 360
        if angle <= end:
            return abs(math.hypot(x - cx, y - cy) - r) - width / 2
        return min(math.hypot(x - px, y - py) for px, py in (polar(cx, cy, r, start), polar(cx, cy, r, end))) + 0.01

    return distance


def polygon(points):
    sides = list(zip(points, points[1:] + points[:1]))

    def distance(x, y):
        near = min(stroke(*a, *b, 0)(x, y) for a, b in sides)
        inside = False
        for (x1, y1), (x2, y2) in sides:
            if (y1 > y) != (y2 > y) and x < x1 + (y - y1) * (x2 - x1) / (y2 - y1):
                inside = not inside
        return -near if inside else near

    return distance


def union(*shapes):
    return lambda x, y: min(shape(x, y) for shape in shapes)


def polar(cx, cy, r, degrees):
    return cx + r * math.cos(math.radians(degrees)), cy + r * math.sin(math.radians(degrees))


def mix(a, b, share):
    """Interpolates from a (share 0) to b (share 1)."""
    return tuple(p + (q - p) * share for p, q in zip(a, b))


class Picture:
    def __init__(self):
        n = SIZE * SAMPLES
        self.samples = [[None] * n for _ in range(n)]

    def paint(self, shape, color):
        """`color` is a triple or a function of (x, y)."""
        for row, line in enumerate(self.samples):
            y = (row + 0.5) / SAMPLES
            for column in range(len(line)):
                x = (column + 0.5) / SAMPLES
                if shape(x, y) <= 0:
                    line[column] = color(x, y) if callable(color) else color

    def outlined(self, shape, color, width=1.0, ink=INK):
        self.paint(lambda x, y: shape(x, y) - width, ink)
        self.paint(shape, color)

    def ball(self, cx, cy, r, color, width=0.9, ink=INK):
        """A shaded ball, lit from the top left."""

        def shade(x, y):
            away = math.hypot(x - cx + 0.38 * r, y - cy + 0.42 * r) / r
            if away < 0.75:
                return mix(mix(color, PAPER, 0.75), color, away / 0.75)
            return mix(color, INK, 0.35 * min(1.0, (away - 0.75) / 0.8))

        self.outlined(circle(cx, cy, r), shade, width, ink)

    def pixels(self):
        """Rows of colours, None where the picture is transparent."""
        return [[self.pixel(row, column) for column in range(SIZE)] for row in range(SIZE)]

    def pixel(self, row, column):
        block = [color for line in self.samples[row * SAMPLES:(row + 1) * SAMPLES]
                 for color in line[column * SAMPLES:(column + 1) * SAMPLES] if color]
        covered = len(block) / SAMPLES**2
        if covered < EDGE:
            return None
        mean = tuple(sum(channel) / len(block) for channel in zip(*block))
        return tuple(round(c) for c in mix(RIM, mean, covered))


def limited(rows):
    """Limits the rows to MAX_COLORS colours by repeatedly merging the two nearest ones."""
    counts = {}
    for color in (c for row in rows for c in row if c):
        counts[color] = counts.get(color, 0) + 1
    groups = {color: (color, count) for color, count in sorted(counts.items())}
    members = {color: [color] for color in groups}
    while len(groups) > MAX_COLORS:
        keys = list(groups)
        cost, a, b = min(
            (sum((p - q)**2 for p, q in zip(groups[a][0], groups[b][0])) * min(groups[a][1], groups[b][1]), a, b)
            for i, a in enumerate(keys) for b in keys[:i])
        total = groups[a][1] + groups[b][1]
        merged = mix(groups[a][0], groups[b][0], groups[b][1] / total)
        groups[a] = (merged, total)
        members[a] += members.pop(b)
        del groups[b]
    table = {color: tuple(round(c) for c in groups[key][0]) for key, colors in members.items() for color in colors}
    return [[c and table[c] for c in row] for row in rows]


KEYS = ".+@#$%&*=-;>,')!~{]^/(_:<[}|1234567890abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"


def write_xpm(path, picture):
    rows = limited(picture.pixels())
    colors = sorted({c for row in rows for c in row if c}, key=lambda c: (sum(c), c))
    keys = {None: " "} | dict(zip(colors, KEYS))
    lines = [f"{SIZE} {SIZE} {len(keys)} 1", "  c None"]
    lines += [f"{keys[c]} c #{c[0]:02X}{c[1]:02X}{c[2]:02X}" for c in colors]
    lines += ["".join(keys[c] for c in row) for row in rows]
    body = ",\n".join(f'"{line}"' for line in lines)
    path.write_text(f"/* XPM */\nstatic const char* const {path.stem}[] = {{\n{body}\n}};\n", encoding="ascii")


# Positions of the two atoms of the bond tools.
LOW = (4.3, 19.6)
HIGH = (19.6, 4.3)


def view():
    p = Picture()
    p.outlined(polygon([(6.5, 2.8), (6.5, 18.2), (10.1, 14.9), (12.6, 20.6), (15.3, 19.4), (12.8, 13.8), (17.5, 13.6)]),
               lambda x, y: mix(PAPER, (205, 214, 226), max(0.0, min(1.0, (x + y - 16) / 14))), 1.25)
    return p


def rotate():
    p = Picture()
    ring = arc(12, 12, 8.7, 20, 312, 2.1)
    head = polygon([polar(12, 12, 12.6, 308), polar(12, 12, 4.7, 303), polar(12, 12, 9.2, 352)])
    p.outlined(union(ring, head), BOND, 0.9)
    p.ball(12, 12, 3.1, CARBON)
    return p


def two_atoms(p):
    p.ball(*LOW, 3.1, CARBON)
    p.ball(*HIGH, 3.1, CARBON)
    return p


def singlebond():
    p = Picture()
    p.outlined(stroke(*LOW, *HIGH, 2.6), BOND)
    return two_atoms(p)


def along(share):
    return LOW[0] + (HIGH[0] - LOW[0]) * share, LOW[1] + (HIGH[1] - LOW[1]) * share


def dashedbond():
    p = Picture()
    for start in (0.21, 0.445, 0.68):
        a, b = across(start, 1.2)
        c, d = across(start + 0.11, 1.2)
        p.outlined(polygon([a, b, d, c]), BOND, 0.6)
    return two_atoms(p)


def across(share, half):
    """The two points on either side of the bond axis."""
    x, y = along(share)
    length = math.dist(LOW, HIGH)
    nx, ny = -(HIGH[1] - LOW[1]) / length * half, (HIGH[0] - LOW[0]) / length * half
    return (x + nx, y + ny), (x - nx, y - ny)


def stereoup():
    p = Picture()
    a, b = across(1.0, 4.9)
    p.outlined(polygon([LOW, a, b]), BOND)
    p.ball(*LOW, 2.9, CARBON)
    return p


def stereodown():
    p = Picture()
    for share in (0.29, 0.465, 0.64, 0.815, 0.99):
        a, b = across(share, 5.0 * share)
        p.outlined(stroke(*a, *b, 1.5), BOND, 0.45)
    p.ball(*LOW, 2.9, CARBON)
    return p


def zigzag():
    p = Picture()
    points = [(3.2, 16.4), (9.1, 7.6), (14.9, 16.4), (20.8, 7.6)]
    p.outlined(polyline(points, 2.2), BOND, 0.9)
    for x, y in points:
        p.ball(x, y, 2.3, CARBON)
    return p


def delete():
    p = singlebond()
    cross = union(stroke(8.4, 8.6, 15.8, 16.0, 2.9), stroke(15.8, 8.6, 8.4, 16.0, 2.9))
    p.outlined(cross, RED, 1.1, (110, 22, 22))
    return p


def fixedlength():
    p = Picture()
    left, right = (4.3, 7.2), (19.7, 7.2)
    p.outlined(stroke(*left, *right, 2.6), BOND)
    p.ball(*left, 2.9, CARBON)
    p.ball(*right, 2.9, CARBON)
    shaft = stroke(6, 17.5, 18, 17.5, 1.5)
    heads = [polygon([(4.0, 17.5), (8.2, 14.6), (8.2, 20.4)]), polygon([(20.0, 17.5), (15.8, 14.6), (15.8, 20.4)])]
    stops = [stroke(2.4, 14.2, 2.4, 20.8, 1.3), stroke(21.6, 14.2, 21.6, 20.8, 1.3)]
    p.outlined(union(shaft, *heads, *stops), ORANGE, 0.8)
    return p


def fixedangle():
    p = Picture()
    corner, flat, steep = (4.0, 19.4), (20.2, 19.4), (12.6, 4.4)
    p.outlined(arc(*corner, 9.6, -60, 0, 1.9), ORANGE, 0.8)
    p.outlined(union(stroke(*corner, *flat, 1.8), stroke(*corner, *steep, 1.8)), BOND, 0.8)
    for x, y in (flat, steep, corner):
        p.ball(x, y, 2.6, CARBON)
    return p


def i3d():
    p = Picture()
    middle, ends = (12.4, 11.4), {(13.0, 3.6): (GREEN, 2.6), (20.2, 15.6): (BOND, 2.9), (5.2, 17.8): (RED, 4.0)}
    p.outlined(union(*(stroke(*middle, *end, 2.2) for end in ends)), (158, 166, 178), 0.9)
    p.ball(*middle, 3.0, CARBON)
    for end, (color, radius) in ends.items():
        p.ball(*end, radius, color)
    return p


def whatsthis():
    p = Picture()
    p.outlined(polygon([(2.6, 4.8), (2.6, 18.2), (5.8, 15.3), (8.0, 20.3), (10.4, 19.2), (8.2, 14.4), (12.2, 14.2)]),
               lambda x, y: mix(PAPER, (205, 214, 226), max(0.0, min(1.0, (x + y - 12) / 14))), 1.15)
    mark = union(arc(16.8, 6.8, 3.9, -170, 60, 2.4), stroke(18.2, 10.3, 16.8, 13.2, 2.4), circle(16.8, 17.8, 1.5))
    p.outlined(mark, BOND, 0.9)
    return p


def benzene():
    p = Picture()
    ring = [polar(12, 12, 10.0, -90 + 60 * i) for i in range(6)]
    p.outlined(polyline(ring, 1.9, closed=True), BOND, 0.8)
    inner = [polar(12, 12, 6.0, -90 + 60 * i) for i in range(6)]
    for i in (0, 2, 4):
        a, b = inner[i], inner[i + 1]
        p.outlined(stroke(*mix(a, b, 0.06), *mix(a, b, 0.94), 1.3), BOND, 0.5)
    return p


def cubane():
    p = Picture()
    front = [(3.2, 8.4), (14.6, 8.4), (14.6, 20.6), (3.2, 20.6)]
    back = [(x + 6.2, y - 5.2) for x, y in front]
    p.outlined(union(polyline(back, 1.1, closed=True), *(stroke(*a, *b, 1.1) for a, b in zip(front, back))),
               mix(BOND, RIM, 0.5), 0.5)
    for corner in back:
        p.ball(*corner, 1.4, CARBON, 0.8)
    p.outlined(polyline(front, 1.6, closed=True), BOND, 0.7)
    for corner in front:
        p.ball(*corner, 1.9, CARBON, 0.8)
    return p


def chain(carbons, carbon_radius, hydrogen_radius, hydrogens, width, ink_width):
    """A chain of carbons with its hydrogens, each a (carbon index, x, y)."""
    p = Picture()
    for i, x, y in hydrogens:
        p.paint(stroke(*carbons[i], x, y, 1.4), (112, 122, 136))
    p.outlined(polyline(carbons, width), BOND, ink_width)
    for i, x, y in hydrogens:
        p.ball(x, y, hydrogen_radius, HYDROGEN, ink_width)
    for x, y in carbons:
        p.ball(x, y, carbon_radius, CARBON, ink_width)
    return p


def hexane():
    carbons = [(2.5 + 3.8 * i, 14.6 if i % 2 == 0 else 9.4) for i in range(6)]
    hydrogens = [(i, x, y + (6.6 if i % 2 == 0 else -6.6)) for i, (x, y) in enumerate(carbons)]
    return chain(carbons, 1.5, 1.35, hydrogens, 1.5, 0.7)


def prop():
    carbons = [(5.4, 14.2), (12.0, 9.8), (18.6, 14.2)]
    hydrogens = [(0, 2.6, 9.2), (0, 4.6, 20.4), (1, 8.6, 3.6), (1, 15.4, 3.6), (2, 21.4, 9.2), (2, 19.4, 20.4)]
    return chain(carbons, 2.6, 1.7, hydrogens, 1.9, 0.8)


def water():
    p = Picture()
    p.ball(4.9, 16.4, 3.7, HYDROGEN)
    p.ball(19.1, 16.4, 3.7, HYDROGEN)
    p.ball(12, 10.4, 6.4, OXYGEN)
    return p


def megaphon():
    p = Picture()
    pitch, lift = 4.4, 4.9
    rings = [(-1.5, 1), (-1, 0), (0, 0), (1, 0), (1.5, -1), (1.5, 1), (2, 0), (2.5, -1), (2.5, 1)]
    corners = []
    for column, row in rings:
        x, y = 9.8 + pitch * column, 12.0 + lift * row
        half, third = pitch / 2, lift / 3
        corners.append([(x, y - 2 * third), (x + half, y - third), (x + half, y + third), (x, y + 2 * third),
                        (x - half, y + third), (x - half, y - third)])
    p.outlined(union(*(polygon(ring) for ring in corners)), (255, 208, 120), 0.6)
    for ring in corners:
        p.paint(polyline(ring, 1.0, closed=True), (40, 98, 196))
    return p


PICTURES = {
    "icons": (view, rotate, singlebond, dashedbond, stereoup, stereodown, zigzag, delete, fixedlength, fixedangle, i3d,
              whatsthis),
    "lib": (benzene, cubane, hexane, megaphon, prop, water),
}


def main():
    root = Path(__file__).resolve().parent.parent
    for folder, functions in PICTURES.items():
        for draw in functions:
            write_xpm(root / folder / f"{draw.__name__}.xpm", draw())


if __name__ == "__main__":
    main()
