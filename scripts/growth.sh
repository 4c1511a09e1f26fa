#!/usr/bin/env bash
# Prints how the time and the memory of each operation grow when its input doubles twice, up to ten
# times the size of the real samples.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

scripts/build.sh native --target qzhost QZTUtlA IFSweep IFHeal IFSilhouette IFSpinsil IFSphoffset \
    QZCore QZUi QZTUtlRes
rm -rf build/growth
mkdir -p build/growth
python3 scripts/measure_growth.py build/native/bin/qzhost build/growth
rm -rf build/growth
