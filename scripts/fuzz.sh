#!/usr/bin/env bash
# Runs every fuzz target for a number of seconds (default 10), from the seeds in fuzz/seeds/, as
# many at a time as the machine has cores.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
export seconds=${1:-10}

run_target() {
    target=$1
    name=$(basename "$target")
    corpus=build/fuzz/corpus/$name
    mkdir -p "$corpus" build/fuzz/findings
    seeds=fuzz/seeds/${name#fuzz_}
    [ -d "$seeds" ] || { echo "$name has no seeds in $seeds"; exit 1; }
    "$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
        -artifact_prefix=build/fuzz/findings/ "$corpus" "$seeds" >"build/fuzz/$name.log" 2>&1 ||
        { tail -n 60 "build/fuzz/$name.log"; echo "$name: a finding"; exit 1; }
    awk -v name="$name" '/number_of_executed_units/ { runs = $2 } /average_exec_per_sec/ { rate = $2 }
        END { printf "%-32s %10d runs, %7d a second\n", name, runs, rate }' "build/fuzz/$name.log"
}
export -f run_target

scripts/build.sh fuzz --target fuzz_targets
targets=$(ls build/fuzz/bin/fuzz_*)
say "$(wc -w <<<"$targets") targets, $seconds s each"
xargs -P "$jobs" -I{} bash -c 'set -euo pipefail; run_target {}' <<<"$targets"
echo "$(wc -w <<<"$targets") fuzz targets ran without a finding"
