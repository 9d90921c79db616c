#!/usr/bin/env bash
# Builds everything with warnings as errors under AddressSanitizer and
# UndefinedBehaviorSanitizer, and runs every test. The fuzz targets' seeds and
# saved reproducers are replayed among the tests; fuzzing itself, which needs
# a second build of everything with clang, is scripts/fuzz.sh.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
# Pictures are painted without a display; the leak check ignores what the
# font libraries under Qt keep for the process's lifetime (see the file).
export QT_QPA_PLATFORM=offscreen
export LSAN_OPTIONS="suppressions=$(pwd)/scripts/lsan.supp:print_suppressions=0"
# The benchmarks are built here too, so that they at least build cleanly
# without a second build of everything.
cmake -S . -B build/sanitize -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTOBEL_WERROR=ON -DTOBEL_SANITIZE=ON \
    -DTOBEL_BENCH=ON >/dev/null
cmake --build build/sanitize -j"$(nproc)"
ctest --test-dir build/sanitize --output-on-failure -j"$(nproc)"
