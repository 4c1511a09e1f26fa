#!/usr/bin/env bash
# clang-tidy over our own sources, with the Linux build's compile commands.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

[ -f build/native/compile_commands.json ] || scripts/build.sh native
git ls-files '*.cpp' | grep -vE '/(win32|windows)/' | grep -E '^(addin|blocks|callbacks|toolpaths|stock|curves|platform/(mfc|posix)|formats|host|kernel)/' |
    xargs -P "$jobs" -n 4 clang-tidy --quiet --extra-arg=-Wno-unknown-warning-option -p build/native 2>build/lint-notes.log
echo "lint: clean"
