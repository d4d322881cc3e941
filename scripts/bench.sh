#!/usr/bin/env bash
# Builds the benchmarks and runs them one after the other, each comparison until its ratio is steady. Fails when one
# misses its target by more than noise.
#   scripts/bench.sh [NAME...]     of redraw, frame, search, store, chart, render; all without any
set -euo pipefail
root=$(dirname -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")")
cd -- "$root"

names=("$@")
if [[ $# -eq 0 ]]; then
    mapfile -t names < <(basename --multiple --suffix=_bench.cpp bench/*_bench.cpp)
fi
scripts/build.sh --configure release -DQZ_BUILD_BENCH=ON "${names[@]/%/_bench}"
status=0
for name in "${names[@]}"; do
    printf -- '-- %s\n' "$name"
    "build/release/bench/${name}_bench" --seconds 20 --check || status=1
done
exit "$status"
