#!/usr/bin/env bash
# The main job on real input: a machining program cuts a block of material through the add-in.
#   scripts/demo.sh             the Linux build
#   scripts/demo.sh --windows   the Windows build, under Wine
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

preset=native
case "${1:-}" in
    "") ;;
    --windows) preset=windows ;;
    *) echo "usage: scripts/demo.sh [--windows]" >&2; exit 2 ;;
esac

work=build/demo/$preset
rm -rf "$work"
mkdir -p "$work" build/demo/input

scripts/setup.sh
say "Building ($preset)"
scripts/build.sh "$preset" --target qzhost QZTUtlA IFSweep QZCore QZUi QZTUtlRes

if [ "$preset" = windows ]; then
    prepare_wine
    qzhost() { wine build/windows/bin/qzhost.exe "$@"; }
else
    qzhost() { build/native/bin/qzhost "$@"; }
fi

# A real 3-axis program from the LinuxCNC project: block 100 x 100 x 50 mm, zero at the centre of
# the top, ball cutter of 10 mm. Without a package server a program of our own takes its place.
fetch_program() {
    local program=build/demo/input/3D_Chips.ngc
    [ -s "$program" ] && return 0
    local folder=build/demo/input/package
    rm -rf "$folder"
    mkdir -p "$folder"
    (cd "$folder" && apt-get download -qq linuxcnc-uspace >/dev/null 2>&1) || return 1
    dpkg-deb --fsys-tarfile "$folder"/linuxcnc-uspace_*.deb | tar -x -C "$folder" --wildcards '*3D_Chips.ngc*' || return 1
    local found
    found=$(find "$folder" -name '3D_Chips.ngc*' -type f | head -n 1)
    [ -n "$found" ] || return 1
    case "$found" in *.gz) gunzip -c "$found" >"$program" ;; *) cp "$found" "$program" ;; esac
    rm -rf "$folder"
}
say "Fetching the program"
if fetch_program; then
    program=build/demo/input/3D_Chips.ngc
    echo "3D_Chips.ngc, from Debian's package linuxcnc-uspace"
else
    program=samples/relief.ngc
    echo "the package cannot be had; using $program"
fi

say "Making the job"
qzhost new-job "$work/job" --stock box:-50,-50,-50,50,50,0 --gcode "$program" \
    --tools samples/tools-demo.json --tolerance 0.025

say "Cutting"
qzhost sweep "$work/job"

say "The result"
qzhost info "$work/job/StockModelOutput.tmp"
qzhost convert "$work/job/StockModelOutput.tmp" "$work/result.stl"
echo
echo "Job:    $work/job"
echo "Result: $work/job/StockModelOutput.tmp, as STL: $work/result.stl"
