#!/usr/bin/env bash
# A short tour of the orvan program on the sample games the project ships:
# create, import, search, show, export and stats, printing what each step prints.
# Usage: cli/tour/tour.sh PATH/TO/orvan
set -euo pipefail
orvan=$(realpath "$1")
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

step() {
  echo
  echo "\$ orvan $*"
  "$orvan" "$@"
}

step create tour.ovg
step import tour.ovg "$here/sample.pgn"
step search tour.ovg white~ller
step search tour.ovg eco^=B or eco^=C --limit 5
step search tour.ovg --json --limit 1 round=1
step show tour.ovg 1 --ply 6
step search tour.ovg --fen 'rnbqkbnr/pp2pppp/2pp4/8/3P4/8/PPPNPPPP/R1BQKBNR w KQkq - 0 3'
step export tour.ovg white~ller -o mueller.pgn
head -n 9 mueller.pgn
step delete tour.ovg 36
step stats tour.ovg
