#!/usr/bin/env python3
"""Runs every operation at n, 2n and 4n and prints a table of seconds of processor time, which
other work on the machine hardly changes, and of peak memory.

measure_growth.py QZHOST FOLDER: the inputs and results go to FOLDER.
"""

import array
import json
import math
import os
import resource
import struct
import subprocess
import sys

QZHOST = os.path.abspath(sys.argv[1])
FOLDER = os.path.abspath(sys.argv[2])
RUNS = 3


def path_to(name):
    return os.path.join(FOLDER, name)


def write_wavy_ring(name, facets, lift=0.0, open_every=0):
    """A ring of tube radius 10 about radius 30 whose skin is wavy; `lift` moves the skin outwards.
    Half of it has colour 1, the other half 2. Every `open_every`-th facet is left out."""
    around = max(3, round(math.sqrt(facets / 2 / 3)))
    along = 3 * around
    vertices = array.array("d")
    for i in range(along):
        turn = 2 * math.pi * i / along
        for j in range(around):
            lean = 2 * math.pi * j / around
            tube = 10 + lift + 0.5 * math.sin(7 * turn) * math.sin(4 * lean)
            out = 30 + tube * math.cos(lean)
            vertices.extend((out * math.cos(turn), out * math.sin(turn), tube * math.sin(lean)))
    record = struct.Struct("<3iB").pack
    records = []
    for i in range(along):
        here, there = i * around + 1, (i + 1) % along * around + 1
        colour = 1 if 2 * i < along else 2
        for j in range(around):
            k = (j + 1) % around
            records.append(record(here + j, there + j, there + k, colour))
            records.append(record(here + j, there + k, here + k, colour))
    if open_every:
        del records[::open_every]
    with open(path_to(name), "wb") as file:
        file.write(b"binary surface" + struct.pack("<ii", len(vertices) // 3, len(records)))
        vertices.tofile(file)
        file.write(b"".join(records))
    return path_to(name)


def write_program(name, positions):
    """Parallel lines over a wavy ground, as many positions a line as there are lines."""
    lines = round(math.sqrt(positions))
    with open(path_to(name), "w", encoding="ascii") as file:
        file.write("G21 G90 G17\nT1 M6\nG0 Z10\nG0 X-50 Y-50\nF500\n")
        for i in range(lines):
            y = -50 + 100 * i / (lines - 1)
            for j in range(lines):
                x = -50 + 100 * (j if i % 2 == 0 else lines - 1 - j) / (lines - 1)
                z = -6 + 4 * math.sin(x / 9) * math.cos(y / 7)
                file.write(f"G1 X{x:.5f} Y{y:.5f} Z{z:.5f}\n")
        file.write("G0 Z10\nM2\n")
    return path_to(name)


def prepare_sweep(size):
    program = write_program("program.ngc", size)
    tools = path_to("tools.json")
    with open(tools, "w", encoding="ascii") as file:
        json.dump({"units": "mm", "tools": [{"number": 1, "kind": "ball", "diameter": 6}]}, file)
    job = path_to("job")
    subprocess.run([QZHOST, "--quiet", "new-job", job, "--stock", "box:-50,-50,-40,50,50,0",
                    "--gcode", program, "--tools", tools, "--tolerance", "0.025", "--force"],
                   check=True, stdout=subprocess.DEVNULL)
    return ["sweep", job]


def prepare_compare(size):
    part = write_wavy_ring("part.iff", size)
    stock = write_wavy_ring("stock.iff", size, lift=0.3)
    return ["compare", "--part", part, "--stock", stock, "--band", "0.1=3", "--band", "0.31=4",
            "--output", path_to("compared.iff")]


def prepare_compress(size):
    os.makedirs(path_to("compress"), exist_ok=True)
    return ["compress", path_to("compress"), write_wavy_ring("fine.iff", size),
            path_to("coarse.iff"), "--tolerance", "0.01"]


def prepare_heal(size):
    return ["heal", write_wavy_ring("holes.iff", size, open_every=97), path_to("healed.iff"),
            "--tolerance", "0.0001"]


def prepare_filter(size):
    return ["filter", write_wavy_ring("two.iff", size), path_to("one.iff"), "--colour", "1"]


def prepare_silhouette(size):
    return ["silhouette", write_wavy_ring("ring.iff", size), path_to("shadow.crv"),
            "--distance", "0"]


def prepare_spin(size):
    return ["spin-silhouette", write_wavy_ring("ring.iff", size), path_to("spun.crv"),
            "--distance", "0.01"]


def prepare_offset(size):
    return ["offset", write_wavy_ring("ring.iff", size), path_to("offset.iff"),
            "--distance", "2", "--angle", "20"]


OPERATIONS = [
    ("sweep", "positions", 12000, prepare_sweep),
    ("compare", "facets", 50000, prepare_compare),
    ("compress", "facets", 50000, prepare_compress),
    ("heal", "facets", 50000, prepare_heal),
    ("filter", "facets", 50000, prepare_filter),
    ("silhouette", "facets", 50000, prepare_silhouette),
    ("spin-silhouette", "facets", 50000, prepare_spin),
    ("offset", "facets", 50000, prepare_offset),
]


def processor_time():
    used = resource.getrusage(resource.RUSAGE_CHILDREN)
    return used.ru_utime + used.ru_stime


def measure(arguments):
    """The least seconds and MiB of a few runs."""
    seconds, memory = [], []
    for _ in range(RUNS):
        before = processor_time()
        run = subprocess.run([QZHOST, "--quiet", "--json", *arguments], capture_output=True)
        if run.returncode != 0:
            sys.exit(f"qzhost {' '.join(arguments)} ended with {run.returncode}:\n"
                     + run.stderr.decode())
        report = json.loads(run.stdout)
        seconds.append(processor_time() - before)
        memory.append(report["peak_memory"] / 2**20)
    return min(seconds), min(memory)


def main():
    print(f"{'operation':16} {'n':>16} {'seconds at n, 2n, 4n':>26} {'growth':>12}"
          f" {'MiB at n, 2n, 4n':>22} {'growth':>12}")
    for name, unit, size, prepare in OPERATIONS:
        results = [measure(prepare(size * factor)) for factor in (1, 2, 4)]
        seconds, memory = zip(*results)
        print(f"{name:16} {size:>6} {unit:9}"
              f" {seconds[0]:8.3f} {seconds[1]:8.3f} {seconds[2]:8.3f}"
              f" {seconds[1] / seconds[0]:6.2f}{seconds[2] / seconds[1]:6.2f}"
              f" {memory[0]:7.0f} {memory[1]:6.0f} {memory[2]:6.0f}"
              f" {memory[1] / memory[0]:7.2f}{memory[2] / memory[1]:6.2f}", flush=True)


main()
