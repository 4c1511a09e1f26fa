#!/usr/bin/env bash
# Runs every fuzz target for a number of seconds (default 10), from the seeds in fuzz/seeds/.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
seconds=${1:-10}

scripts/build.sh fuzz --target fuzz_targets
count=0
for target in build/fuzz/bin/fuzz_*; do
    [ -x "$target" ] || continue
    name=$(basename "$target")
    corpus=build/fuzz/corpus/$name
    mkdir -p "$corpus" "build/fuzz/findings"
    seeds=fuzz/seeds/${name#fuzz_}
    [ -d "$seeds" ] || { echo "$name has no seeds in $seeds"; exit 1; }
    say "$name, $seconds s"
    "$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
        -artifact_prefix=build/fuzz/findings/ "$corpus" "$seeds" >"build/fuzz/$name.log" 2>&1 ||
        { tail -n 60 "build/fuzz/$name.log"; exit 1; }
    grep -E 'stat::number_of_executed_units|stat::average_exec_per_sec' "build/fuzz/$name.log" || true
    count=$((count + 1))
done
[ "$count" -gt 0 ] || { echo "no fuzz target was built"; exit 1; }
echo "$count fuzz targets ran without a finding"
