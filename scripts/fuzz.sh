#!/usr/bin/env bash
# Builds the libFuzzer targets of the file readers with clang, AddressSanitizer
# and UndefinedBehaviorSanitizer, and runs each for SECONDS (default 60), one
# after the other.
#
#   scripts/fuzz.sh [--smoke] [SECONDS] [TARGET...]
#
# TARGET is one of data_file legacy_file grid_file settings solve (default:
# all). Corpora grow in build/fuzz/corpus/TARGET, seeded from fuzz/corpus/TARGET
# (and the shipped examples for the data file targets); crashes are saved in
# build/fuzz/artifacts/TARGET/. With --smoke a missing clang or libFuzzer only
# skips the run, with a note. TOBEL_FUZZ_BUILD names another build folder and
# TOBEL_FUZZ_FLAGS adds libFuzzer flags (e.g. "-fork=1 -ignore_crashes=1" to go
# on after a crash).
set -euo pipefail
cd "$(dirname "$0")/.."

smoke=0
if [ "${1:-}" = "--smoke" ]; then
    smoke=1
    shift
fi
seconds=60
if [[ "${1:-}" =~ ^[0-9]+$ ]]; then
    seconds=$1
    shift
fi
targets=("$@")
[ ${#targets[@]} -eq 0 ] && targets=(data_file legacy_file grid_file settings solve)
build=${TOBEL_FUZZ_BUILD:-build/fuzz}
case $build in /*) ;; *) build="$(pwd)/$build" ;; esac

scripts/deps.sh clang libclang-rt-14-dev || true

# The newest clang++ there is, and whether it can link libFuzzer.
cxx=""
for c in clang++ clang++-14 clang++-15 clang++-16; do
    if command -v "$c" >/dev/null 2>&1; then
        cxx=$(command -v "$c")
        break
    fi
done
probe_dir=$(mktemp -d)
trap 'rm -rf "$probe_dir"' EXIT
if [ -z "$cxx" ] || ! echo 'extern "C" int LLVMFuzzerTestOneInput(const unsigned char*, unsigned long) { return 0; }' |
    "$cxx" -x c++ -fsanitize=fuzzer - -o "$probe_dir/probe" >/dev/null 2>&1; then
    note="clang++ with libFuzzer is not available (Debian packages clang and libclang-rt-14-dev)"
    if [ $smoke -eq 1 ]; then
        echo "NOTE: fuzzing smoke run skipped: $note"
        exit 0
    fi
    echo "fuzz.sh: $note" >&2
    exit 1
fi

cmake -S . -B "$build" -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O1 -gline-tables-only -DNDEBUG" -DTOBEL_FUZZ=ON \
    -DTOBEL_TESTS=OFF -DTOBEL_BENCH=OFF >/dev/null
cmake --build "$build" -j"$(nproc)" --target $(printf 'fuzz_%s ' "${targets[@]}")

export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
status=0
for t in "${targets[@]}"; do
    # Absolute paths: the targets work in a folder of their own.
    corpus="$build/corpus/$t"
    artifacts="$build/artifacts/$t"
    mkdir -p "$corpus" "$artifacts"
    seeds=("$(pwd)/fuzz/corpus/$t")
    case $t in data_file | solve) seeds+=("$(pwd)/examples") ;; esac
    # Inputs that once failed are replayed first: they must stay fixed.
    mapfile -t repro < <(find "$(pwd)/fuzz/reproducers" -type f -name "$t-*" 2>/dev/null | sort)
    if ((${#repro[@]})) && ! "$build/fuzz/fuzz_$t" "${repro[@]}" >"$build/fuzz_${t}_replay.log" 2>&1; then
        echo "fuzz_$t FAILED on a saved reproducer: see $build/fuzz_${t}_replay.log" >&2
        tail -40 "$build/fuzz_${t}_replay.log" >&2
        status=1
        continue
    fi
    echo "== fuzz_$t for ${seconds}s (${#repro[@]} reproducers replayed)"
    # A mesh at the limit of 3000 by 3000 with many surfaces needs some 3 GB.
    if ! "$build/fuzz/fuzz_$t" -max_total_time="$seconds" -timeout=120 -rss_limit_mb=6144 \
        -print_final_stats=1 -artifact_prefix="$artifacts/" ${TOBEL_FUZZ_FLAGS:-} "$corpus" "${seeds[@]}" \
        >"$build/fuzz_$t.log" 2>&1; then
        echo "fuzz_$t FAILED: see $build/fuzz_$t.log and $artifacts/" >&2
        tail -40 "$build/fuzz_$t.log" >&2
        status=1
    else
        grep -E '^stat::number_of_executed_units|^stat::peak_rss_mb' "$build/fuzz_$t.log" | tr '\n' ' '
        echo "corpus: $(find "$corpus" -type f | wc -l) files"
    fi
done
exit $status
