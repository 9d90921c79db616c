#!/usr/bin/env bash
# Runs the search of a data file as SHARDS shards with GNU parallel, on this
# machine or on the hosts of an ssh login file, then merges the parts: the
# result is that of `tobel search FILE --grid [search options]` in one run.
# A grid search shares its centres; a search across the slope (--across and
# --aspects, grid or auto) shares its X and aspect pairs.
#
#   search-parallel.sh [options] SHARDS FILE.tob OUTDIR [-- search options]
#
# Options:
#   -j JOBS               shards run at once on each machine (default: 1 per machine
#                         with --sshloginfile, else all cores / --threads)
#   --threads N           threads of each shard (tobel search --threads; default 1)
#   --sshloginfile FILE   the hosts, as GNU parallel reads them; each needs `tobel`
#                         (or --tobel) on its path. FILE.tob is sent to each host
#                         and the parts come back; give FILE.tob and OUTDIR as paths
#                         relative to the current folder.
#   --tobel PATH          the program (default: $TOBEL, or tobel on the path)
# Search options after `--` go to every shard (--method M, --composite, --valid-only,
# --auto in place of the grid search with --across, --across X0,X1,DX --aspects A1,...).
# Writes OUTDIR/part-K-of-SHARDS.json, OUTDIR/shards.log, OUTDIR/result.json (as `search --json`
# prints it) and prints the result as `tobel search` does.
set -euo pipefail

jobs="" threads=1 sshlogin="" tobel="${TOBEL:-tobel}"
usage() { sed -n '2,21p' "$0" | sed 's/^# \{0,1\}//'; exit 1; }
while (($#)); do
    case "$1" in
    -j) jobs="$2"; shift 2 ;;
    --threads) threads="$2"; shift 2 ;;
    --sshloginfile) sshlogin="$2"; shift 2 ;;
    --tobel) tobel="$2"; shift 2 ;;
    -h|--help) usage ;;
    --) break ;;
    -*) echo "search-parallel.sh: unknown option $1" >&2; usage ;;
    *) break ;;
    esac
done
(($# >= 3)) || usage
shards="$1" file="$2" outdir="$3"
shift 3
[ "${1:-}" = "--" ] && shift
extra=("$@")
# The grid search unless the options choose the auto search.
kind="--grid"
for a in "${extra[@]}"; do [ "$a" = "--auto" ] && kind=""; done
command -v parallel >/dev/null || { echo "search-parallel.sh: GNU parallel is not installed" >&2; exit 1; }
[[ "$shards" =~ ^[1-9][0-9]*$ ]] || { echo "search-parallel.sh: SHARDS must be a whole number" >&2; exit 1; }
[ -f "$file" ] || { echo "search-parallel.sh: $file not found" >&2; exit 1; }
mkdir -p "$outdir"
rm -f "$outdir"/part-*-of-"$shards".json

part="$outdir/part-{}-of-$shards.json"
# {} is the shard number, put in by parallel: it stays out of the quoting.
shard_cmd="$(printf '%q' "$tobel") search $(printf '%q' "$file") $kind --threads $threads --shard {}/$shards"
shard_cmd+=" --out $(printf '%q' "$outdir")/part-{}-of-$shards.json"
for a in "${extra[@]}"; do shard_cmd+=" $(printf '%q' "$a")"; done

popts=(--halt now,fail=1)
if [ -n "$sshlogin" ]; then
    popts+=(--sshloginfile "$sshlogin" --workdir . --transferfile "$file" --return "$part" --cleanup
            --env PATH)
    [ -n "$jobs" ] || jobs=1
    # The remote side needs the output folder before it writes there.
    shard_cmd="mkdir -p $(printf '%q' "$outdir") && $shard_cmd"
fi
[ -n "$jobs" ] && popts+=(-j "$jobs")
# The shards' progress lines and warnings go to a log, shown when one fails.
log="$outdir/shards.log"
if ! parallel "${popts[@]}" "$shard_cmd" ::: $(seq 1 "$shards") 2>"$log"; then
    cat "$log" >&2
    echo "search-parallel.sh: a shard failed" >&2
    exit 1
fi

parts=()
for k in $(seq 1 "$shards"); do parts+=("$outdir/part-$k-of-$shards.json"); done
exec "$tobel" merge "${parts[@]}" --json "$outdir/result.json"
