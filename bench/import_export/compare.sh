#!/usr/bin/env bash
# Times import of a PGN file into a new game file (inside one bulk operation,
# as the host's import command runs it, and with a commit after every game)
# and export of all its games (bench_import_export), and pgn-extract reading and writing the same file
# (pgn-extract -s -o /dev/null), in one run; prints games per second of each
# and the ratios. Each side is timed three times and its best run counts, so
# that a cold first run (file cache, clock ramping up) weighs on neither.
# Usage: bench/import_export/compare.sh [build directory] [file.pgn]
#        (defaults: build, the self-play corpus)
set -euo pipefail
cd "$(dirname "$0")/../.."
build=${1:-build}
pgn=${2:-../shared/corpus/selfplay.pgn}
bench="$build/bench/import_export/bench_import_export"
extract=/usr/games/pgn-extract

[[ -x $bench ]] || { echo "no $bench: build the target bench_import_export first" >&2; exit 1; }
[[ -x $extract ]] || { echo "no $extract: apt-get install pgn-extract" >&2; exit 1; }
[[ -r $pgn ]] || { echo "cannot read $pgn" >&2; exit 1; }

# liborvan: the best of three repetitions of each benchmark.
read -r import_rate single_rate export_rate games < <("$bench" "$pgn" --benchmark_repetitions=3 \
    --benchmark_format=json 2>/dev/null |
    python3 -c 'import json,sys
best={}
for b in json.load(sys.stdin)["benchmarks"]:
    if b.get("run_type") == "iteration":
        name="/".join(b["name"].split("/")[:2])
        if name not in best or b["games/s"] > best[name]["games/s"]:
            best[name]=b
print("%.0f %.0f %.0f %d" % (best["BM_Import/InBulk"]["games/s"], best["BM_Import/GameByGame"]["games/s"],
                             best["BM_Export/iterations:1"]["games/s"], best["BM_Import/InBulk"]["games"]))')

# pgn-extract: best of three wall-clock runs.
best_ns=
for _ in 1 2 3; do
    start=$(date +%s%N)
    "$extract" -s -o /dev/null "$pgn" 2>/dev/null
    end=$(date +%s%N)
    (( ${best_ns:-0} == 0 || end - start < best_ns )) && best_ns=$((end - start))
done
extract_rate=$(python3 -c "print('%.0f' % ($games / ($best_ns / 1e9)))")

printf '%-36s %12s\n' "$(basename "$pgn"), $games games" "games/s"
printf '%-36s %12s\n' "liborvan import in one bulk" "$import_rate"
printf '%-36s %12s\n' "liborvan import, a commit a game" "$single_rate"
printf '%-36s %12s\n' "liborvan export (load..write)" "$export_rate"
printf '%-36s %12s\n' "pgn-extract -s -o /dev/null" "$extract_rate"
python3 -c "print('%-36s %12.2f' % ('ratio import in bulk / pgn-extract', $import_rate / $extract_rate))"
python3 -c "print('%-36s %12.2f' % ('ratio import by game / pgn-extract', $single_rate / $extract_rate))"
python3 -c "print('%-36s %12.2f' % ('ratio export / pgn-extract', $export_rate / $extract_rate))"
