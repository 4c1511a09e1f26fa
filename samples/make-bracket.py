#!/usr/bin/env python3
"""Writes the bracket that samples/bracket.apt machines: samples/make-bracket.py OUT.off

A block of 120 x 60 x 30 mm, its corner at the origin: an upright plate at x = 0 to 25 with a
chamfer of 3 mm, a base of 12 mm with a pocket of 7 mm and four drilled holes. Arcs are chords
whose corners lie on them.
"""

import math
import sys

LENGTH, WIDTH, HEIGHT = 120.0, 60.0, 30.0
UPRIGHT, BASE, CHAMFER = 25.0, 12.0, 3.0
POCKET = (48.0, 15.0, 98.0, 45.0)
POCKET_CORNER, POCKET_FLOOR = 6.0, 5.0
HOLES = [(35.0, 10.0), (110.0, 10.0), (110.0, 50.0), (35.0, 50.0)]
HOLE_RADIUS = 4.0
CHORDS_OF_TURN = 96


class Mesh:
    def __init__(self):
        self.vertices, self.facets, self.numbers = [], [], {}

    def number(self, point):
        if point not in self.numbers:
            self.numbers[point] = len(self.vertices)
            self.vertices.append(point)
        return self.numbers[point]

    def add(self, a, b, c):
        self.facets.append(tuple(self.number(point) for point in (a, b, c)))

    def polygon(self, corners):
        """Flat and convex, counter-clockwise seen from outside."""
        for b, c in zip(corners[1:], corners[2:]):
            self.add(corners[0], b, c)

    def wall(self, outline, low, high):
        """Over a closed outline, counter-clockwise about the material."""
        for (ax, ay), (bx, by) in zip(outline, outline[1:] + outline[:1]):
            self.polygon([(ax, ay, low), (bx, by, low), (bx, by, high), (ax, ay, high)])

    def flat(self, outline, holes, z, upwards):
        for triangle in triangulate(outline, holes):
            points = [(x, y, z) for x, y in triangle]
            self.add(*(points if upwards else points[::-1]))

    def write(self, path):
        with open(path, "w", encoding="ascii", newline="\n") as file:
            file.write("OFF\n%d %d 0\n" % (len(self.vertices), len(self.facets)))
            for vertex in self.vertices:
                file.write("%r %r %r\n" % vertex)
            for facet in self.facets:
                file.write("3 %d %d %d\n" % facet)


def turn(a, b, c):
    return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0])


def crosses(a, b, c, d):
    return turn(a, b, c) * turn(a, b, d) < 0 and turn(c, d, a) * turn(c, d, b) < 0


def bridge(outline, hole):
    """The outline with the hole joined to it by a double edge to the nearest corner in sight."""
    pairs = sorted((math.dist(a, b), i, j) for i, a in enumerate(outline)
                   for j, b in enumerate(hole))
    for _, i, j in pairs:
        a, b = outline[i], hole[j]
        edges = list(zip(outline, outline[1:] + outline[:1])) + list(zip(hole, hole[1:] + hole[:1]))
        if not any(crosses(a, b, c, d) for c, d in edges):
            return outline[:i + 1] + hole[j:] + hole[:j + 1] + outline[i:]
    raise ValueError("no corner in sight")


def triangulate(outline, holes):
    """Ears cut off one by one; the outline counter-clockwise, the holes clockwise."""
    for hole in sorted(holes, key=lambda ring: -max(x for x, _ in ring)):
        outline = bridge(outline, hole)
    left = list(outline)
    while len(left) > 3:
        ears = [i for i in range(len(left)) if is_ear(left, i)]
        # The roundest ear, so that no sliver is left over.
        best = max(ears, key=lambda i: roundness(left[i - 1], left[i], left[(i + 1) % len(left)]))
        yield left[best - 1], left[best], left[(best + 1) % len(left)]
        del left[best]
    yield tuple(left)


def is_ear(ring, i):
    a, b, c = ring[i - 1], ring[i], ring[(i + 1) % len(ring)]
    if turn(a, b, c) <= 1e-9:
        return False
    return not any(p not in (a, b, c) and turn(a, b, p) >= 0 and turn(b, c, p) >= 0 and
                   turn(c, a, p) >= 0 for p in ring)


def roundness(a, b, c):
    return turn(a, b, c) / (math.dist(a, b)**2 + math.dist(b, c)**2 + math.dist(c, a)**2)


def arc(x, y, radius, start, end):
    """Counter-clockwise, in degrees, both ends included."""
    count = round(CHORDS_OF_TURN * (end - start) / 360)
    angles = [math.radians(start + (end - start) * i / count) for i in range(count + 1)]
    return [(round(x + radius * math.cos(a), 9), round(y + radius * math.sin(a), 9))
            for a in angles]


def bracket():
    mesh = Mesh()
    x0, y0, x1, y1 = POCKET
    r = POCKET_CORNER
    pocket = (arc(x1 - r, y1 - r, r, 0, 90) + arc(x0 + r, y1 - r, r, 90, 180) +
              arc(x0 + r, y0 + r, r, 180, 270) + arc(x1 - r, y0 + r, r, 270, 360))
    holes = [arc(x, y, HOLE_RADIUS, 0, 360)[:-1] for x, y in HOLES]
    inwards = [ring[::-1] for ring in holes]
    top = HEIGHT - CHAMFER
    mesh.flat([(0, 0), (LENGTH, 0), (LENGTH, WIDTH), (0, WIDTH)], inwards, 0, False)
    mesh.flat([(UPRIGHT, 0), (LENGTH, 0), (LENGTH, WIDTH), (UPRIGHT, WIDTH)],
              inwards + [pocket[::-1]], BASE, True)
    mesh.flat(pocket, [], POCKET_FLOOR, True)
    mesh.wall(pocket[::-1], POCKET_FLOOR, BASE)
    for ring in inwards:
        mesh.wall(ring, 0, BASE)
    # The profile: base, upright, chamfer along its outer edge.
    profile = [(0, 0), (LENGTH, 0), (LENGTH, BASE), (UPRIGHT, BASE), (UPRIGHT, HEIGHT),
               (CHAMFER, HEIGHT), (0, top)]
    for (ax, az), (bx, bz) in zip(profile[1:], profile[2:] + profile[:1]):
        if az != bz or az != BASE:
            mesh.polygon([(ax, 0, az), (ax, WIDTH, az), (bx, WIDTH, bz), (bx, 0, bz)])
    for triangle in triangulate(profile, []):
        mesh.add(*((x, 0, z) for x, z in triangle))
        mesh.add(*((x, WIDTH, z) for x, z in triangle[::-1]))
    return mesh


if __name__ == "__main__":
    bracket().write(sys.argv[1])
