#!/usr/bin/env bash
# Builds one preset (native, windows, asan, tsan, fuzz): programs and libraries land in build/PRESET/bin.
# Further arguments go to the build tool, for instance: scripts/build.sh native --target qzhost
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

preset=${1:?usage: scripts/build.sh PRESET [build options]}
shift
[ "$preset" != native ] || [ $# -gt 0 ] || set -- --target all benches
mkdir -p build
log=build/configure-$preset.log
cmake --preset "$preset" >"$log" 2>&1 || { cat "$log"; exit 1; }
cmake --build "build/$preset" -j "$jobs" "$@"
