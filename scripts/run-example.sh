#!/usr/bin/env bash
# Builds the program, solves the shipped 3-D example by Bishop's method and
# draws it: its longitudinal section with the sliding surface, the isometry
# of the sliding surface and the plan of active columns, as PNG files in out/.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh
cmake -S . -B build/release -DCMAKE_BUILD_TYPE=Release -DTOBEL_TESTS=OFF -DTOBEL_BENCH=OFF >/dev/null
cmake --build build/release -j"$(nproc)" --target tobel
example=examples/slope3d-layers-piezo-force.tob
build/release/tobel solve "$example" "$@"
mkdir -p out
# Headless: Qt paints offscreen when no display is asked for.
export QT_QPA_PLATFORM="${QT_QPA_PLATFORM:-offscreen}"
build/release/tobel draw "$example" --view longitudinal --x 50 --size 1200x800 --out out/section.png
build/release/tobel draw "$example" --view isometry --size 1200x800 --out out/isometry.png
build/release/tobel draw "$example" --view plan --size 1200x800 --out out/plan.png
echo "Pictures of $example: out/section.png, out/isometry.png, out/plan.png"
