#!/usr/bin/env bash
# clang-tidy over our own sources, with compile commands of a Linux build that compiles each alone
# and reads every header itself: what g++ has precompiled is nothing that clang can read.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

cmake --preset native -B build/lint -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON \
    -DQZ_JOIN_SOURCES=OFF >build/configure-lint.log
git ls-files '*.cpp' | grep -vE '/(win32|windows)/' | grep -E '^(addin|blocks|callbacks|toolpaths|stock|curves|platform/(mfc|posix)|formats|host|kernel)/' |
    xargs -P "$jobs" -n 4 clang-tidy --quiet --extra-arg=-Wno-unknown-warning-option -p build/lint 2>build/lint-notes.log
echo "lint: clean"
