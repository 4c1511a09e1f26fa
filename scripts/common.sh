# Sourced by the other scripts: where things are, and what they share.
set -euo pipefail
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"
jobs=$(nproc)

# What scripts/fetch-samples.sh has fetched. The tests find it through the environment.
samples=build/samples
export QZ_PROGRAMS="$root/$samples/programs"
export QZ_MESHES="$root/$samples/meshes"

# Wine keeps its world under the build folder and says nothing of its own.
export WINEPREFIX="$root/build/windows/wine"
export WINEDEBUG=-all
export WINEDLLOVERRIDES="mscoree,mshtml="

say() { printf '\n== %s\n' "$*"; }

# Makes the Wine world once, before several programs would try to at the same time, and keeps its
# server until the script ends: a program that starts just as the server goes is turned away.
prepare_wine() {
    mkdir -p "$(dirname "$WINEPREFIX")"
    [ -f "$WINEPREFIX/system.reg" ] || wineboot --init >/dev/null 2>&1
    wineserver -w
    wineserver -p </dev/null >/dev/null 2>&1
    # Wine's own services start with the first program and stay; were that one of the tests, whoever
    # reads its output would wait for theirs to end.
    wine cmd /c exit </dev/null >/dev/null 2>&1
    trap 'wineserver -k || true' EXIT
}
