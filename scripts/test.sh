#!/usr/bin/env bash
# Sets the machine up, builds both systems' versions and runs every test of both.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"
started=$SECONDS

scripts/setup.sh
scripts/fetch-samples.sh
say "Linux build"
scripts/build.sh native --target all
say "Windows build"
scripts/build.sh windows
prepare_wine

say "Tests, Linux build"
ctest --test-dir build/native --output-on-failure -j "$jobs"
say "Tests, Windows build under Wine"
ctest --test-dir build/windows --output-on-failure -j "$jobs"
say "All tests of both builds passed in $((SECONDS - started)) s"
