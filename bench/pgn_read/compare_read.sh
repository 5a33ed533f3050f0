#!/usr/bin/env bash
# Times the PGN reader beside pgn-extract on the same file in one run.
#
#   bench/pgn_read/compare_read.sh [bench_pgn_read binary] [file.pgn]
#
# Defaults: the release build in build-release/ (built here if missing) and
# the largest file of the shared corpus. Prints games per second and
# megabytes per second of CPU time for the full read (moves resolved) and the
# tags-only read, pgn-extract's figures for `pgn-extract -s -o /dev/null FILE`,
# and the ratios.
set -euo pipefail

root=$(cd "$(dirname "$0")/../.." && pwd)
bench=${1:-$root/build-release/bench/pgn_read/bench_pgn_read}
file=${2:-$(ls -S "$root"/../shared/corpus/*.pgn 2>/dev/null | head -n 1 || true)}
extract=$(command -v pgn-extract || echo /usr/games/pgn-extract)

if [[ -z "$file" || ! -r "$file" ]]; then
    echo "no PGN file to read (give one as the second argument)" >&2
    exit 1
fi
if [[ ! -x "$bench" ]]; then
    cmake -S "$root" -B "$root/build-release" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
    cmake --build "$root/build-release" -j2 --target bench_pgn_read >/dev/null
    bench=$root/build-release/bench/pgn_read/bench_pgn_read
fi
if [[ ! -x "$extract" ]]; then
    echo "pgn-extract is not installed" >&2
    exit 1
fi

bytes=$(stat -c %s "$file")
json=$(mktemp)
trap 'rm -f "$json"' EXIT
"$bench" --benchmark_format=json --benchmark_repetitions=3 \
    --benchmark_report_aggregates_only=true "$file" >"$json" 2>/dev/null

# pgn-extract, best of three, in CPU seconds (user + system) like the
# benchmark's figures.
best=""
for _ in 1 2 3; do
    TIMEFORMAT='%U %S'
    seconds=$( { time "$extract" -s -o /dev/null "$file" >/dev/null 2>&1; } 2>&1 | awk '{ print $1 + $2 }')
    if [[ -z "$best" ]] || awk -v a="$seconds" -v b="$best" 'BEGIN { exit !(a < b) }'; then
        best=$seconds
    fi
done

python3 - "$json" "$best" "$bytes" "$file" <<'PY'
import json, sys
data = json.load(open(sys.argv[1]))
extract_seconds = float(sys.argv[2])
size = int(sys.argv[3])
rows = {}
for b in data["benchmarks"]:
    if b.get("aggregate_name") == "median":
        rows[b["run_name"]] = b
full = rows["BM_ReadPgnFile"]
tags = rows["BM_ReadPgnFileTagsOnly"]
games = full["games"]
extract_gps = games / extract_seconds
extract_mbps = size / extract_seconds / 1e6
print(f"file: {sys.argv[4]} ({size / 1e6:.1f} MB, {games:.0f} games)")
print(f"{'reader':<34}{'games/s':>12}{'MB/s':>10}{'ratio':>8}")
for name, row in (("orvan, moves resolved", full), ("orvan, tags only", tags)):
    gps = row["items_per_second"]
    print(f"{name:<34}{gps:>12.0f}{row['bytes_per_second'] / 1e6:>10.1f}{gps / extract_gps:>7.1f}x")
print(f"{'pgn-extract -s -o /dev/null':<34}{extract_gps:>12.0f}{extract_mbps:>10.1f}{1:>7.1f}x")
PY
