#!/usr/bin/env bash
# Every test of the Linux build under AddressSanitizer, UBSan and LeakSanitizer.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

scripts/build.sh asan
ctest --test-dir build/asan --output-on-failure -j "$jobs"
