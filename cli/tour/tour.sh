#!/usr/bin/env bash
# A short tour of the orvan program on the sample games the project ships and
# the default opening tree: create, import, search, classify, show, export,
# sort and stats, printing what each step prints.
# Usage: cli/tour/tour.sh BUILD_DIR
set -euo pipefail
build=$(realpath "$1")
orvan=$build/cli/orvan
here=$(cd "$(dirname "$0")" && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"

step() {
  echo
  echo "\$ $(basename "$1") ${*:2}"
  "$@"
}

step "$orvan" create tour.ovg
step "$build/ovkey/ovkey-eco-tree" tour.ovg
step "$orvan" import tour.ovg "$here/sample.pgn"
step "$orvan" search tour.ovg white~ller
step "$orvan" search tour.ovg eco^=B or eco^=C --limit 4
step "$orvan" search tour.ovg --json --limit 1 round=1
step "$orvan" classify tour.ovg --games 1-6
step "$orvan" keys tour.ovg C41
step "$orvan" search tour.ovg --key C41
step "$orvan" show tour.ovg 1 --ply 6
step "$orvan" search tour.ovg --fen 'rnbqkbnr/pp2pppp/2pp4/8/3P4/8/PPPNPPPP/R1BQKBNR w KQkq - 0 3'
step "$orvan" export tour.ovg white~ller -o mueller.pgn
step head -n 9 mueller.pgn
step "$orvan" sort tour.ovg --by date --descending --limit 3
step "$orvan" delete tour.ovg 36
step "$orvan" stats tour.ovg
