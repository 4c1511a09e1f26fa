#!/usr/bin/env bash
# Installs every package that building, testing and checking need (Debian 12 or later).
. "$(dirname "${BASH_SOURCE[0]}")/common.sh"

packages=(
    # both builds
    cmake ninja-build git g++ g++-mingw-w64-x86-64-posix wine wine64 binutils python3 locales
    # libraries; the header-only ones serve the cross build too
    googletest libcgal-dev libboost-dev libeigen3-dev libcli11-dev nlohmann-json3-dev libbenchmark-dev
    # sanitizers, fuzzing, lint
    clang clang-tidy clang-format libclang-rt-14-dev llvm
)

missing=()
for package in "${packages[@]}"; do
    dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

say "Installing ${missing[*]}"
as_root=()
[ "$(id -u)" -eq 0 ] || as_root=(sudo)
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
