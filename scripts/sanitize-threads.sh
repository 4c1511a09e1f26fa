#!/usr/bin/env bash
# The kernel under ThreadSanitizer: its tests of threads and of stopping them, or with the argument
# "all" every one of its tests.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

[ "${1:-}" = all ] || export GTEST_FILTER='*Thread*:*Callback*'
scripts/build.sh tsan --target tests/kernel/all
ctest --test-dir build/tsan -R '^kernel_' --output-on-failure -j "$jobs"
