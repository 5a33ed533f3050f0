#!/usr/bin/env bash
# Times perft 5 from the start position with our generator (bench_chess) and
# with stockfish, in one run, and prints both nodes-per-second figures.
# Usage: bench/chess/compare_perft.sh [build directory]   (default: build)
set -euo pipefail
cd "$(dirname "$0")/../.."
build=${1:-build}
bench="$build/bench/chess/bench_chess"
stockfish=/usr/games/stockfish
nodes=4865609

[[ -x $bench ]] || { echo "no $bench: build the target bench_chess first" >&2; exit 1; }
[[ -x $stockfish ]] || { echo "no $stockfish: apt-get install stockfish" >&2; exit 1; }

ours=$("$bench" --benchmark_filter='^Perft/start/5$' --benchmark_repetitions=3 \
         --benchmark_report_aggregates_only=true --benchmark_format=json |
       python3 -c 'import json,sys
runs=[b for b in json.load(sys.stdin)["benchmarks"] if b.get("aggregate_name")=="median"]
print("%.0f" % runs[0]["nodes/s"])')

# Stockfish prints the node count only; time the whole run and take off the
# time of a run that only starts and quits. Best of three for each.
now_ns() { date +%s%N; }
best_run_ns() {
    local best= start end
    for _ in 1 2 3; do
        start=$(now_ns)
        printf '%b' "$1" | "$stockfish" >/tmp/compare_perft.$$ 2>&1
        end=$(now_ns)
        (( ${best:-0} == 0 || end - start < best )) && best=$((end - start))
    done
    echo "$best"
}
perft_ns=$(best_run_ns 'position startpos\ngo perft 5\nquit\n')
grep -q "Nodes searched: $nodes" /tmp/compare_perft.$$ || { echo "stockfish gave another count" >&2; exit 1; }
startup_ns=$(best_run_ns 'quit\n')
rm -f /tmp/compare_perft.$$
theirs=$(python3 -c "print('%.0f' % ($nodes / (max($perft_ns - $startup_ns, 1) / 1e9)))")

printf '%-28s %15s\n' "perft 5, start position" "nodes/s"
printf '%-28s %15s\n' "liborvan (bench_chess)" "$ours"
printf '%-28s %15s\n' "stockfish (go perft 5)" "$theirs"
python3 -c "print('%-28s %15.2f' % ('ratio stockfish/liborvan', $theirs / $ours))"
