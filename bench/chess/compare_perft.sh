#!/usr/bin/env bash
# Times perft 5 from the start position with our generator (bench_chess) and
# with stockfish, in one run, and prints both nodes-per-second figures.
# Both figures are per CPU second (user + system), so that other load on the
# machine changes them little; stockfish's start-up is measured apart and
# taken off. Each side: the best of three runs.
# Usage: bench/chess/compare_perft.sh [build directory]   (default: build)
set -euo pipefail
cd "$(dirname "$0")/../.."
build=${1:-build}
bench="$build/bench/chess/bench_chess"
stockfish=/usr/games/stockfish

[[ -x $bench ]] || { echo "no $bench: build the target bench_chess first" >&2; exit 1; }
[[ -x $stockfish ]] || { echo "no $stockfish: apt-get install stockfish" >&2; exit 1; }

python3 - "$bench" "$stockfish" <<'PYTHON'
import json, resource, subprocess, sys

bench, stockfish = sys.argv[1], sys.argv[2]
nodes = 4865609

def cpu_seconds(command, stdin=None):
    """CPU time of one child run, and its output."""
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    output = subprocess.run(command, input=stdin, capture_output=True, text=True, check=True).stdout
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return (after.ru_utime - before.ru_utime) + (after.ru_stime - before.ru_stime), output

result = subprocess.run([bench, "--benchmark_filter=^Perft/start/5$", "--benchmark_repetitions=3",
                         "--benchmark_format=json"], capture_output=True, text=True, check=True).stdout
ours = max(run["nodes/s"] for run in json.loads(result)["benchmarks"] if run.get("run_type") == "iteration")

perft_runs = []
for _ in range(3):
    seconds, output = cpu_seconds([stockfish], "position startpos\ngo perft 5\nquit\n")
    if f"Nodes searched: {nodes}" not in output:
        sys.exit("stockfish gave another node count")
    perft_runs.append(seconds)
startup = min(cpu_seconds([stockfish], "quit\n")[0] for _ in range(3))
theirs = nodes / max(min(perft_runs) - startup, 1e-6)

print(f"{'perft 5, start position':28} {'nodes per CPU second':>22}")
print(f"{'liborvan (bench_chess)':28} {ours:22,.0f}")
print(f"{'stockfish (go perft 5)':28} {theirs:22,.0f}")
print(f"{'stockfish / liborvan':28} {theirs / ours:22.2f}")
PYTHON
