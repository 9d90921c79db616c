#!/usr/bin/env bash
# Builds the program and solves the shipped 3-D example by Bishop's method.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh
cmake -S . -B build/release -DCMAKE_BUILD_TYPE=Release -DTOBEL_TESTS=OFF -DTOBEL_BENCH=OFF >/dev/null
cmake --build build/release -j"$(nproc)" --target tobel
build/release/tobel solve examples/slope3d-layers-piezo-force.tob "$@"
