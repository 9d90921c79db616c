#!/usr/bin/env bash
# Peak memory and time of opening and solving a project of N by N columns
# with four surfaces (three layers and a water table) and an ellipsoid, by
# the command-line program: writes the data file and runs it under
# /usr/bin/time -v.
#
#   fuzz/mesh_memory.sh TOBEL_PROGRAM N [METHOD]
set -euo pipefail
program=$1
n=$2
method=${3:-bishop}
file=$(mktemp --suffix=.tob)
trap 'rm -f "$file"' EXIT
{
    printf 'Memory at the mesh limit\r\n%s by %s columns, four surfaces\r\nmesh_memory.sh\r\n' "$n" "$n"
    printf ' 9.81  3  1  0 \r\n 0  120  0  100 \r\n %s  %s  2 \r\n 1  0  0 \r\n' "$n" "$n"
    for m in Rock Clay Sand; do
        printf '%s\r\n 20  1  10  10  28  28 \r\n 0  0  0  0 -1  0 -1  0 \r\n' "$m"
    done
    for k in 1 2 3 4 5; do printf ' 0  0 *.GRD\r\n'; done
    for x in 0 100; do
        printf ' %s \r\n' "$x"
        printf ' 2 \r\n 0  2 \r\n 120  2 \r\n'
        printf ' 4 \r\n 0  8 \r\n 40  8 \r\n 70  20 \r\n 120  20 \r\n'
        printf ' 4 \r\n 0  15 \r\n 40  15 \r\n 70  30 \r\n 120  30 \r\n'
        printf ' 4 \r\n 0  12 \r\n 45  12 \r\n 80  24 \r\n 120  24 \r\n'
        printf ' 0 \r\n'
    done
    printf ' 0 \r\n 50  60  55  12  1  43 \r\n 0  0  0  0  0  0  0  0  0 \r\n 0  0  0  0 \r\n'
    printf ' 0 \r\n 0 \r\n 0  0  0  0 \r\nTrue\r\n'
} >"$file"
/usr/bin/time -v -o "$file.time" "$program" solve "$file" --surface ellipsoid --method "$method" 2>&1 | grep -iE "factor|F\. of S|error|usage|tobel:" | head -5 || true
grep -E "Maximum resident set size|Elapsed \(wall clock\)" "$file.time"
rm -f "$file.time"
