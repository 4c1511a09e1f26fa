"""Files of a job, built field by field."""

import array
import math
import os
import random
import struct


def write_surface(path, vertices, facets, colour=5):
    """Zero-based facets; `colour` is that of all, or a list with one for each."""
    colours = colour if isinstance(colour, list) else [colour] * len(facets)
    data = b"binary surface" + struct.pack("<ii", len(vertices), len(facets))
    for vertex in vertices:
        data += struct.pack("<3d", *vertex)
    for facet, number in zip(facets, colours):
        data += struct.pack("<3iB", *(vertex + 1 for vertex in facet), number)
    with open(path, "wb") as file:
        file.write(data)


def read_surface(path):
    """Vertices, facets (zero-based) and colours."""
    with open(path, "rb") as file:
        data = file.read()
    if data[:14] != b"binary surface":
        raise ValueError(path + " is no binary surface")
    vertex_count, facet_count = struct.unpack_from("<ii", data, 14)
    if len(data) != 22 + 24 * vertex_count + 13 * facet_count:
        raise ValueError(path + " has the wrong length")
    vertices = [struct.unpack_from("<3d", data, 22 + 24 * i) for i in range(vertex_count)]
    start = 22 + 24 * vertex_count
    records = [struct.unpack_from("<3iB", data, start + 13 * i) for i in range(facet_count)]
    return (vertices, [tuple(n - 1 for n in record[:3]) for record in records],
            [record[3] for record in records])


def volume(vertices, facets):
    total = 0.0
    for a, b, c in facets:
        (ax, ay, az), (bx, by, bz), (cx, cy, cz) = vertices[a], vertices[b], vertices[c]
        total += ax * (by * cz - bz * cy) - ay * (bx * cz - bz * cx) + az * (bx * cy - by * cx)
    return total / 6.0


BOX_FACETS = [(0, 2, 3), (0, 3, 1), (4, 5, 7), (4, 7, 6), (0, 1, 5), (0, 5, 4),
              (2, 6, 7), (2, 7, 3), (0, 4, 6), (0, 6, 2), (1, 3, 7), (1, 7, 5)]


def box_corners(low, high):
    return [(x, y, z) for z in (low[2], high[2]) for y in (low[1], high[1])
            for x in (low[0], high[0])]


def write_box(path, low, high, colour=5):
    write_surface(path, box_corners(low, high), BOX_FACETS, colour)


def write_holed_torus(path, count, count_around, every):
    """A closed grid of facets, two a cell, without the second one of each cell whose number
    `every` divides."""
    ring = [(3 + math.cos(2 * math.pi * j / count_around), math.sin(2 * math.pi * j / count_around))
            for j in range(count_around)]
    vertices = array.array("d")
    for i in range(count):
        x, y = math.cos(2 * math.pi * i / count), math.sin(2 * math.pi * i / count)
        for radius, z in ring:
            vertices.extend((radius * x, radius * y, z))
    pack = struct.Struct("<3iB").pack
    records = []
    for i in range(count):
        a, b = i * count_around + 1, (i + 1) % count * count_around + 1
        for j in range(count_around):
            k = (j + 1) % count_around
            records.append(pack(a + j, b + j, b + k, 5))
            if (i * count_around + j) % every != 0:
                records.append(pack(a + j, b + k, a + k, 5))
    with open(path, "wb") as file:
        file.write(b"binary surface" + struct.pack("<ii", len(vertices) // 3, len(records)))
        vertices.tofile(file)
        file.write(b"".join(records))


def write_straws(path, count):
    """Long thin facets, every one of which crosses many of the others."""
    corners = random.Random(7)
    vertices = []
    for _ in range(count):
        x, y, z = (corners.uniform(-100, 100) for _ in range(3))
        far_x, far_y = corners.uniform(-100, 100), corners.uniform(-100, 100)
        vertices += [(x, y, z), (far_x, far_y, z), (far_x + 0.01, far_y + 0.01, z)]
    write_surface(path, vertices, [(i, i + 1, i + 2) for i in range(0, len(vertices), 3)])


def write_path(path, positions, tool=(0.0, 3.0, 0.0, 90.0, 0.0, 0.0), colour=9, tolerance=0.05):
    """A three-axis path of a convex tool: corner radius, flat radius, upper and lower taper angle,
    taper height, bevel radius. The default is a flat end mill of radius 3."""
    data = struct.pack("<hB3d", 1, colour, tolerance, tolerance, 0.0)
    data += struct.pack("<12d", 1, 0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0)
    data += struct.pack("<h6d", 1, *tool)
    for position in positions:
        data += struct.pack("<3d", *position)
    with open(path, "wb") as file:
        file.write(data)


def write_slot_job(directory):
    """A block 40 x 20 x 10 and a slot 6 wide and 4 deep along its whole length."""
    os.makedirs(directory, exist_ok=True)
    write_box(os.path.join(directory, "StockModelInput.tmp"), (0, 0, 0), (40, 20, 10))
    write_path(os.path.join(directory, "TmpPathInfo0.tmp"), [(-10, 10, 6), (50, 10, 6)])


SLOT_JOB_VOLUME_IN = 40 * 20 * 10
SLOT_JOB_VOLUME_OUT = SLOT_JOB_VOLUME_IN - 40 * 6 * 4
