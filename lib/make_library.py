#!/usr/bin/env python3
"""Generates the library molecules lib/*.kyf from bond lengths and angles and positions them on the canvas.

All six molecules can be inserted into one drawing, so they share the part of the canvas that a new window shows. A
random search with a fixed seed finds the positions with the least overlap; the script prints the remaining overlap.

Usage: lib/make_library.py (writes to its own folder)
"""

import itertools
import math
import random
from pathlib import Path

# The part of the canvas that a new window shows, in canvas pixels.
VISIBLE = (0, 0, 385, 240)
# Free space to the left, top, right and bottom of every atom centre; the label is to its lower right.
MARGIN = (7, 7, 14, 22)
LABEL = (12, 18)
# Minimum and preferred distance between atom centres of different molecules.
CLEARANCE = 9.0
ROOM = 24.0
SEED = 23

# Lengths in angstroms and angles in degrees: common tabulated values, with the substance they were measured on.
SINGLE = 1.54  # C-C: diamond
AROMATIC = 1.39  # C-C: benzene
CAGE = 1.57  # C-C: cubane
CH = 1.09  # methane
OH = 0.96  # water vapour
TETRAHEDRAL = math.degrees(math.acos(-1 / 3))  # 109.47: methane, by symmetry
WATER_ANGLE = 104.5  # water vapour

PIXELS = 20  # per angstrom, as in kytconvert

COLORS = {"C": (64, 64, 64), "H": (255, 255, 255), "O": (255, 0, 0)}
ELECTRONS = {"C": 4, "H": 1, "O": 2}


class Molecule:
    """Atoms as (symbol, position in angstroms, y down and z towards the viewer), bonds as {(from, to): order}."""

    def __init__(self, name, tilt=(0.0, 0.0), turns=(0.0,)):
        self.name = name
        self.tilt = tilt
        self.turns = turns
        self.symbols = []
        self.points = []
        self.bonds = {}
        self.rings = []  # indices of their carbons; planar

    def atom(self, symbol, point):
        self.symbols.append(symbol)
        self.points.append(tuple(point))
        return len(self.symbols) - 1

    def bond(self, a, b, order=1):
        self.bonds[min(a, b), max(a, b)] = order

    def hydrogen(self, at, direction, length=CH):
        self.bond(at, self.atom("H", add(self.points[at], scaled(unit(direction), length))))

    def neighbours(self, i):
        return [a + b - i for a, b in self.bonds if i in (a, b)]

    def check(self):
        """Checks the valences and the distances between atoms that are not bonded."""
        for i, symbol in enumerate(self.symbols):
            valence = sum(order for ends, order in self.bonds.items() if i in ends)
            assert valence == ELECTRONS[symbol], f"{self.name}: atom {i} ({symbol}) has valence {valence}"

        for a, b in itertools.combinations(range(len(self.points)), 2):
            distance = math.dist(self.points[a], self.points[b])
            assert (a, b) in self.bonds or distance > 1.5, f"{self.name}: atoms {a} and {b} are {distance:.2f} A apart"

    def tilted(self):
        """Positions in pixels, centred at the origin and rotated about the y axis, then about the x axis."""
        about_y, about_x = map(math.radians, self.tilt)
        centre = scaled(add(*self.points), 1 / len(self.points))
        result = []
        for point in self.points:
            x, y, z = scaled(add(point, scaled(centre, -1)), PIXELS)
            x, z = x * math.cos(about_y) + z * math.sin(about_y), z * math.cos(about_y) - x * math.sin(about_y)
            y, z = y * math.cos(about_x) - z * math.sin(about_x), z * math.cos(about_x) + y * math.sin(about_x)
            result.append((x, y, z))
        return result


def add(*vectors):
    return tuple(map(sum, zip(*vectors)))


def scaled(vector, factor):
    return tuple(c * factor for c in vector)


def unit(vector):
    return scaled(vector, 1 / math.hypot(*vector))


def from_to(a, b):
    return add(b, scaled(a, -1))


def on_circle(radius, degrees, z=0.0):
    return radius * math.cos(math.radians(degrees)), radius * math.sin(math.radians(degrees)), z


def water():
    m = Molecule("water", turns=(0.0, 15.0, -15.0, 165.0, 180.0, 195.0))
    oxygen = m.atom("O", (0, 0, 0))
    for side in (-1, 1):
        m.hydrogen(oxygen, on_circle(1, 90 + side * WATER_ANGLE / 2), OH)
    return m


def alkane(name, length, tilt, turns):
    """An unbranched chain with all bonds anti, the carbons in a plane, the hydrogens in front of it and behind it."""
    m = Molecule(name, tilt, turns)
    half = math.radians(TETRAHEDRAL / 2)
    rise, run = SINGLE * math.cos(half), SINGLE * math.sin(half)
    for i in range(length):
        m.atom("C", (run * i, -rise * (i % 2), 0.0))
        if i:
            m.bond(i - 1, i)
    for i in range(length):
        outwards = 1 if i % 2 == 0 else -1
        if i in (0, length - 1):  # in place of the next carbon
            m.hydrogen(i, (-run if i == 0 else run, -rise * outwards, 0.0))
        for side in (1, -1):
            m.hydrogen(i, (0.0, outwards * math.cos(half), side * math.sin(half)))
    return m


def benzene():
    m = Molecule("benzene", turns=(0.0, 30.0))
    for i in range(6):
        m.atom("C", on_circle(AROMATIC, 60 * i - 90))
    m.rings.append(list(range(6)))
    for i in range(6):
        m.bond(i, (i + 1) % 6)
    for i in range(6):
        m.hydrogen(i, m.points[i])
    return m


def cubane():
    m = Molecule("cubane", tilt=(30.0, -11.0))
    corners = list(itertools.product((-0.5, 0.5), repeat=3))
    for corner in corners:
        m.atom("C", scaled(corner, CAGE))
    for a, b in itertools.combinations(range(8), 2):
        if sum(p != q for p, q in zip(corners[a], corners[b])) == 1:
            m.bond(a, b)
    for i, corner in enumerate(corners):
        m.hydrogen(i, corner)
    return m


def megaphon():
    """Benzene rings in rows: the horn opens to the right, the mouthpiece is on the left, the handle below it.

    With the handle one ring closer to the horn, two hydrogens would overlap.
    """
    m = Molecule("megaphon", turns=(-15.0, -12.0, -9.0, -6.0, -3.0, 0.0, 3.0))
    rows = {-1: (1.5, 2.5), 0: (-1, 0, 1, 2), 1: (-1.5, 1.5, 2.5)}
    for row, columns in rows.items():
        for column in columns:
            centre = (math.sqrt(3) * AROMATIC * column, 1.5 * AROMATIC * row, 0.0)
            m.rings.append([carbon_at(m, add(centre, on_circle(AROMATIC, 60 * i - 90))) for i in range(6)])
    for ring in m.rings:
        for i in range(6):
            m.bond(ring[i - 1], ring[i])
    carbons = range(len(m.points))
    for i in carbons:
        around = m.neighbours(i)
        if len(around) == 2:
            m.hydrogen(i, add(*(from_to(m.points[j], m.points[i]) for j in around)))
    return m


def carbon_at(m, point):
    """The carbon at `point`; created unless another ring has it."""
    for i, known in enumerate(m.points):
        if math.dist(point, known) < 0.1:
            return i
    return m.atom("C", point)


def kekule_structures(m):
    """All Kekulé structures, as sets of double bonds: every unsaturated carbon has exactly one."""
    open_carbons = [i for i, s in enumerate(m.symbols) if s == "C" and len(m.neighbours(i)) == 3]
    partners = {i: [j for j in m.neighbours(i) if j in open_carbons] for i in open_carbons}

    def pair(left):
        if not left:
            yield frozenset()
            return
        first = min(left, key=lambda i: (sum(j in left for j in partners[i]), i))
        for j in partners[first]:
            if j in left:
                for rest in pair(left - {first, j}):
                    yield rest | {(min(first, j), max(first, j))}

    return list(pair(frozenset(open_carbons)))


def set_double_bonds(m, points):
    """Chooses the Kekulé structure with the most second lines inside the rings; they are drawn left of the first."""

    def strays(structure):
        return sum(not drawn_inside(m, points, a, b) for a, b in structure)

    structures = kekule_structures(m)
    assert structures, f"{m.name}: no Kekulé structure"
    best = min(structures, key=lambda s: (strays(s), sorted(s)))
    for bond in best:
        m.bonds[bond] = 2
    return len(structures), strays(best)


def drawn_inside(m, points, a, b):
    """Whether the second line of the bond from a to b, drawn to the left of it or above it, is inside a ring."""
    nx, ny = points[a][1] - points[b][1], points[b][0] - points[a][0]
    if nx > 1e-6 or (abs(nx) <= 1e-6 and ny > 0):
        nx, ny = -nx, -ny
    for ring in m.rings:
        if a in ring and b in ring:
            x, y, _ = scaled(add(*(points[i] for i in ring)), 1 / len(ring))
            if (x - points[a][0]) * nx + (y - points[a][1]) * ny > 0:
                return True
    return False


# Finding positions.


class Placed:
    """A molecule rotated in the canvas plane by `turn` degrees and moved to (x, y), in pixels."""

    def __init__(self, molecule, tilted, x, y, turn):
        self.position = (x, y, turn)
        cos, sin = math.cos(math.radians(turn)), math.sin(math.radians(turn))
        self.points = [(px * cos - py * sin + x, px * sin + py * cos + y, pz) for px, py, pz in tilted]
        self.bonds = [(self.points[a], self.points[b]) for a, b in molecule.bonds]
        xs, ys = [p[0] for p in self.points], [p[1] for p in self.points]
        self.box = (min(xs), min(ys), max(xs), max(ys))

    def outside(self):
        left, top, right, bottom = self.box
        return (max(0.0, VISIBLE[0] + MARGIN[0] - left) + max(0.0, VISIBLE[1] + MARGIN[1] - top) +
                max(0.0, right - VISIBLE[2] + MARGIN[2]) + max(0.0, bottom - VISIBLE[3] + MARGIN[3]))


def near(p, q, reach=ROOM):
    """Whether the bounding boxes of two placed molecules are closer than `reach`."""
    return (p.box[0] - reach < q.box[2] and q.box[0] - reach < p.box[2] and p.box[1] - reach < q.box[3]
            and q.box[1] - reach < p.box[3])


def label_overlap(p, q):
    """The overlap area of the labels of two atoms."""
    return max(0.0, LABEL[0] - abs(p[0] - q[0])) * max(0.0, LABEL[1] - abs(p[1] - q[1]))


def crossed(first, second):
    (ax, ay, _), (bx, by, _) = first
    (cx, cy, _), (dx, dy, _) = second
    if max(ax, bx) < min(cx, dx) or max(cx, dx) < min(ax, bx) or max(ay, by) < min(cy, dy) or max(cy, dy) < min(ay, by):
        return False

    def side(px, py, qx, qy, rx, ry):
        return (qx - px) * (ry - py) - (qy - py) * (rx - px)

    return (side(ax, ay, bx, by, cx, cy) * side(ax, ay, bx, by, dx, dy) < 0
            and side(cx, cy, dx, dy, ax, ay) * side(cx, cy, dx, dy, bx, by) < 0)


def crossings(p, q):
    return sum(crossed(a, b) for a in p.bonds for b in q.bonds)


def cost(p, q):
    """The cost of the overlap and closeness of two placed molecules."""
    if not near(p, q):
        return 0.0
    total = 0.0
    left, top, right, bottom = q.box[0] - ROOM, q.box[1] - ROOM, q.box[2] + ROOM, q.box[3] + ROOM
    for a in p.points:
        ax, ay = a[0], a[1]
        if not (left < ax < right and top < ay < bottom):
            continue
        for b in q.points:
            dx, dy = ax - b[0], ay - b[1]
            if -ROOM < dx < ROOM and -ROOM < dy < ROOM:
                distance = math.sqrt(dx * dx + dy * dy)
                if distance < ROOM:
                    total += (ROOM - distance)**2
                if distance < CLEARANCE + 0.5:
                    total += 4000 * (CLEARANCE + 1.0 - distance)
                total += 5 * label_overlap(a, b)
    if near(p, q, 0):
        total += 800 * crossings(p, q)
    return total


class Footprint:
    """The area covered by a rotated molecule, as bits on a grid of CELL pixels: one int with STRIDE bits per row.

    It includes a margin around atoms, labels and bonds, so that footprints overlap if molecules are too close.
    """

    CELL = 3
    STRIDE = 256

    def __init__(self, molecule, tilted, turn):
        placed = Placed(molecule, tilted, 0.0, 0.0, turn)
        self.left, self.top, self.right, self.bottom = placed.box
        self.bits = 0
        for x, y, _ in placed.points:
            self.cover(x, y, ROOM / 2)
            self.cover(x + LABEL[0] / 2, y + LABEL[1] / 2, LABEL[1] / 2)
        for (ax, ay, _), (bx, by, _) in placed.bonds:
            for i in range(11):
                self.cover(ax + (bx - ax) * i / 10, ay + (by - ay) * i / 10, 5.0)

    def cover(self, x, y, radius):
        """Sets the cells around a point; the grid starts ROOM to the left of and above the bounding box."""
        x, y = (x - self.left + ROOM) / self.CELL, (y - self.top + ROOM) / self.CELL
        reach = radius / self.CELL
        for row in range(math.ceil(y - reach), math.floor(y + reach) + 1):
            half = math.sqrt(max(0.0, reach * reach - (row - y)**2))
            for column in range(math.ceil(x - half), math.floor(x + half) + 1):
                self.bits |= 1 << (row * self.STRIDE + column)

    def columns(self):
        """The number of horizontal positions; at least one."""
        return max(1, int((VISIBLE[2] - VISIBLE[0] - MARGIN[0] - MARGIN[2] - self.right + self.left) / self.CELL) + 1)

    def rows(self):
        """The number of vertical positions; at least one."""
        return max(1, int((VISIBLE[3] - VISIBLE[1] - MARGIN[1] - MARGIN[3] - self.bottom + self.top) / self.CELL) + 1)

    def at(self, column, row):
        return self.bits << (row * self.STRIDE + column)

    def centre(self, column, row):
        """The centre of the molecule in canvas pixels, for this column and row."""
        return (VISIBLE[0] + MARGIN[0] + column * self.CELL - self.left,
                VISIBLE[1] + MARGIN[1] + row * self.CELL - self.top)


def spread(prints, chance, rounds=60000):
    """Separates the footprints by annealing. Returns the overlap in cells and (turn, column, row) of each molecule."""

    def anywhere(i):
        turn = chance.choice(list(prints[i]))
        return turn, chance.randrange(prints[i][turn].columns()), chance.randrange(prints[i][turn].rows())

    def stepped(i, turn, column, row, reach):
        column += chance.randint(-reach, reach)
        row += chance.randint(-reach, reach)
        return turn, *kept(prints[i][turn], column, row)

    def kept(footprint, column, row):
        return min(max(column, 0), footprint.columns() - 1), min(max(row, 0), footprint.rows() - 1)

    def mask(i, state):
        return prints[i][state[0]].at(*state[1:])

    count = len(prints)
    states = [anywhere(i) for i in range(count)]
    masks = [mask(i, states[i]) for i in range(count)]
    best, best_overlap = list(states), math.inf
    overlap = sum((masks[i] & masks[j]).bit_count() for i in range(count) for j in range(i))
    for step in range(rounds):
        share = 1 - step / rounds
        i = chance.randrange(count)
        kind = chance.random()
        if kind < 0.1:
            state = anywhere(i)
        elif kind < 0.3:
            turn = chance.choice(list(prints[i]))
            state = turn, *kept(prints[i][turn], *states[i][1:])
        else:
            state = stepped(i, *states[i], 1 + int(12 * share))
        moved = mask(i, state)
        change = sum((moved & masks[j]).bit_count() - (masks[i] & masks[j]).bit_count()
                     for j in range(count) if j != i)
        if change <= 0 or chance.random() < math.exp(-change / (60 * share**2 + 0.5)):
            states[i], masks[i] = state, moved
            overlap += change
            if overlap < best_overlap:
                best, best_overlap = list(states), overlap
    return best_overlap, best


def find_positions(molecules, starts=16, finalists=3):
    """The best arrangement found, and its cost: the best results of spread() are refined by settle()."""
    chance = random.Random(SEED)
    tilted = [m.tilted() for m in molecules]
    prints = [{turn: Footprint(m, t, turn) for turn in m.turns} for m, t in zip(molecules, tilted)]
    rough = sorted((spread(prints, chance) for _ in range(starts)), key=lambda result: result[0])
    settled = []
    for _, states in rough[:finalists]:
        placed = [Placed(m, t, *footprints[turn].centre(column, row), turn)
                  for m, t, footprints, (turn, column, row) in zip(molecules, tilted, prints, states)]
        settled.append(settle(molecules, tilted, placed, chance))
    return min(settled, key=lambda result: result[1])


def settle(molecules, tilted, placed, chance, rounds=3000):
    """Refines the positions of placed molecules in small random steps."""

    def own(p):
        return 1000 * p.outside()

    count = len(placed)
    costs = {(i, j): cost(placed[i], placed[j]) for i in range(count) for j in range(i)}
    for step in range(rounds):
        share = 1 - step / rounds
        i = chance.randrange(count)
        x, y, turn = placed[i].position
        if chance.random() < 0.2:
            turns = molecules[i].turns
            turn = turns[(turns.index(turn) + chance.choice((-1, 1))) % len(turns)]
        reach = 0.3 + 6 * share
        x, y = x + chance.uniform(-reach, reach), y + chance.uniform(-reach, reach)
        moved = Placed(molecules[i], tilted[i], x, y, turn)
        fresh = {(max(i, j), min(i, j)): cost(moved, placed[j]) for j in range(count) if j != i}
        change = sum(fresh.values()) - sum(costs[key] for key in fresh) + own(moved) - own(placed[i])
        if change <= 0 or chance.random() < math.exp(-change / (100 * share**2 + 1)):
            placed[i] = moved
            costs.update(fresh)
    return placed, sum(costs.values()) + sum(map(own, placed))


# Writing.


def number(value):
    return f"{round(value, 4) + 0.0:.6g}"


def workspace(m, points):
    lines = ["KYTFILE", f" MOLECULE {len(points)} {len(m.bonds)}"]
    for symbol, point in zip(m.symbols, points):
        lines.append(" ".join(["  ATOM", symbol, *map(number, point), *map(str, COLORS[symbol])]))
    for (a, b), order in sorted(m.bonds.items()):
        lines.append(" ".join(["  BOND", str(a), str(b), str(order)] + ["1"] * order))
    lines += [" END_MOLECULE", "END_KYTFILE"]
    return "\n".join(lines) + "\n"


def formula(m):
    return "".join(s + (str(m.symbols.count(s)) if m.symbols.count(s) > 1 else "")
                   for s in ("C", "H", "O") if s in m.symbols)


def report(molecules, placed):
    pairs = list(itertools.combinations(range(len(molecules)), 2))
    nearest = min((math.dist(a[:2], b[:2]), molecules[i].name, molecules[j].name)
                  for i, j in pairs for a in placed[i].points for b in placed[j].points)
    labels = [label_overlap(a, b) for i, j in pairs for a in placed[i].points for b in placed[j].points]
    print(f"minimum atom distance between molecules: {nearest[0]:.1f} pixels ({nearest[1]}, {nearest[2]})")
    print(f"bond crossings between molecules: {sum(crossings(placed[i], placed[j]) for i, j in pairs)}")
    pairs_of_labels = sum(area > 0 for area in labels)
    print(f"label overlaps between molecules: {pairs_of_labels} pairs, {sum(labels):.0f} square pixels")
    print(f"outside the visible part, including margins: {sum(p.outside() for p in placed):.1f} pixels")
    for m, p in zip(molecules, placed):
        inside = min(math.dist(a[:2], b[:2]) for a, b in itertools.combinations(p.points, 2))
        box = " ".join(f"{c:.0f}" for c in p.box)
        print(f"{m.name}: minimum atom distance {inside:.1f} pixels, bounding box {box}, rotated by {p.position[2]:g}")


def main():
    around = tuple(range(-180, 180, 5))
    molecules = [
        megaphon(), alkane("hexane", 6, (25.0, 0.0), around), benzene(), cubane(),
        alkane("prop", 3, (25.0, 0.0), around), water()
    ]
    placed, total = find_positions(molecules)
    print(f"cost of the arrangement: {total:.0f}")
    for m, p in zip(molecules, placed):
        if m.name in ("benzene", "megaphon"):
            count, strays = set_double_bonds(m, p.points)
            print(f"{m.name}: {count} Kekulé structures, {strays} double bonds of the selected one drawn outwards")
        m.check()
        print(f"{m.name}: {formula(m)}")
        Path(__file__).with_name(f"{m.name}.kyf").write_text(workspace(m, p.points), encoding="ascii")
    report(molecules, placed)


if __name__ == "__main__":
    main()
