#!/usr/bin/env bash
# Builds TOBEL-3 in Release (no tests, no benchmarks) and makes its Debian
# package with CPack. Usage: scripts/package.sh [BUILD_DIR] (default
# build/package). The build takes the shared build lock when there is one.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build/package}
lock=${TOBEL_BUILD_LOCK:-/tmp/tobel-build.lock}
jobs=${JOBS:-2}

locked() {
    if command -v flock >/dev/null 2>&1; then
        flock "$lock" "$@"
    else
        "$@"
    fi
}

cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=Release -DTOBEL_TESTS=OFF -DTOBEL_BENCH=OFF \
    -DTOBEL_SANITIZE=OFF -DTOBEL_WERROR=OFF -DTOBEL_GUI=ON -DCMAKE_INSTALL_PREFIX=/usr
locked cmake --build "$build" -j"$jobs" --target tobel tobel-gui
rm -f "$build"/*.deb
(cd "$build" && cpack -G DEB)
deb=$(ls -t "$build"/*.deb | head -1)
echo "Package: $deb"
dpkg-deb --field "$deb" Package Version Maintainer Depends Recommends
