#!/usr/bin/env bash
# The main job on real input: a machining program cuts a block of material through the add-in.
#   scripts/demo.sh             the Linux build
#   scripts/demo.sh --windows   the Windows build, under Wine
#   scripts/demo.sh --compare   a bracket and, where QZ_SAMPLES names them, real parts are machined and
#                               compared with what they should be (with --windows too)
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

preset=native
act=cut
for option in "$@"; do
    case "$option" in
        --windows) preset=windows ;;
        --compare) act=compare ;;
        *) echo "usage: scripts/demo.sh [--compare] [--windows]" >&2; exit 2 ;;
    esac
done

work=build/demo/$preset-$act
[ "$act" = compare ] || work=build/demo/$preset
rm -rf "$work"
mkdir -p "$work"

scripts/setup.sh
say "Building ($preset)"
scripts/build.sh "$preset" --target qzhost QZTUtlA IFSweep QZCore QZUi QZTUtlRes

if [ "$preset" = windows ]; then
    prepare_wine
    qzhost() { wine build/windows/bin/qzhost.exe "$@"; }
else
    qzhost() { build/native/bin/qzhost "$@"; }
fi

if [ "$act" = compare ]; then
    . scripts/demo-compare.sh
    exit 0
fi

say "Fetching the program"
scripts/fetch-samples.sh
program=$samples/programs/3D_Chips.ngc
if [ -s "$program" ]; then
    echo "3D_Chips.ngc, from Debian's package linuxcnc-uspace"
else
    program=samples/relief.ngc
    echo "using $program"
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
