#!/usr/bin/env python3
"""What the counters of a build with --coverage say of some folders of the source tree.

count_lines_run.py BUILD PERCENT FOLDER...: exit code 1 when fewer lines were run than PERCENT.
"""

import collections
import json
import os
import subprocess
import sys

ROOT = os.path.realpath(os.path.join(os.path.dirname(__file__), ".."))


def counter_files(build):
    for folder, _, names in os.walk(build):
        for name in names:
            if name.endswith(".gcda"):
                yield os.path.join(folder, name)


def counts_of(build, folders):
    """{source file: {line: times run}}; a template's line counts with its best instance."""
    counts = collections.defaultdict(dict)
    for path in counter_files(build):
        printed = subprocess.run(["gcov", "--json-format", "--stdout", path], check=True,
                                 capture_output=True).stdout
        for document in printed.splitlines():
            for file in json.loads(document)["files"]:
                # Headers are seen through links in the build tree.
                source = os.path.relpath(os.path.realpath(file["file"]), ROOT)
                if source.split(os.sep)[0] not in folders:
                    continue
                lines = counts[source]
                for line in file["lines"]:
                    number = line["line_number"]
                    lines[number] = max(lines.get(number, 0), line["count"])
    return counts


def print_missed(source, missed):
    with open(os.path.join(ROOT, source), encoding="utf-8") as file:
        text = file.read().splitlines()
    for number in missed:
        print(f"{source}:{number}: {text[number - 1].strip()}")


def main():
    build, least, folders = sys.argv[1], float(sys.argv[2]), sys.argv[3:]
    counts = counts_of(build, folders)
    all_run = all_lines = 0
    for folder in folders:
        run = lines = 0
        for source in sorted(counts):
            if source.split(os.sep)[0] == folder:
                missed = sorted(n for n, count in counts[source].items() if count == 0)
                print_missed(source, missed)
                lines += len(counts[source])
                run += len(counts[source]) - len(missed)
        if lines == 0:
            sys.exit(f"{folder}: nothing was counted")
        print(f"{folder:12} {run:5} of {lines:5} lines, {100 * run / lines:.1f} %")
        all_run += run
        all_lines += lines
    share = 100 * all_run / all_lines
    print(f"{'together':12} {all_run:5} of {all_lines:5} lines, {share:.1f} %")
    sys.exit(share < least)


main()
