#!/usr/bin/env bash
# Formats every C++ file of ours; with --check only says which ones are not formatted, and fails.
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

mode=(-i)
[ "${1:-}" != --check ] || mode=(--dry-run --Werror)
git ls-files -z '*.h' '*.cpp' | xargs -0 -r clang-format "${mode[@]}"
