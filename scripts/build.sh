#!/usr/bin/env bash
# Builds one preset (native, windows, asan, fuzz): programs and libraries land in build/PRESET/bin.
# Further arguments go to the build tool, for instance: scripts/build.sh native --target qzhost
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

preset=${1:?usage: scripts/build.sh PRESET [build options]}
shift
cmake --preset "$preset" >build-configure.log 2>&1 || { cat build-configure.log; rm -f build-configure.log; exit 1; }
rm -f build-configure.log
cmake --build "build/$preset" -j "$jobs" "$@"
