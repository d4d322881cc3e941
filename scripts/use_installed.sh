#!/usr/bin/env bash
# Builds the smallest example against the library that is installed under a prefix, in a folder that has nothing else of
# this repository, and plays its user there (see examples/drive_example.cpp).
#   scripts/use_installed.sh PREFIX FOLDER
set -euo pipefail
root=$(dirname -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")")
prefix=$(readlink -f -- "${1:?usage: scripts/use_installed.sh PREFIX FOLDER}")
folder=${2:?usage: scripts/use_installed.sh PREFIX FOLDER}

mkdir -p "$folder"
cp "$root"/tests/package/CMakeLists.txt "$root"/examples/{minimal_host,drive_example}.cpp "$folder"
cd -- "$folder"
options=()
! command -v ccache >/dev/null || options+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
cmake -S . -B build -G Ninja -DCMAKE_PREFIX_PATH="$prefix" "${options[@]}"
grep -q "^QZLinePaintToolFactory_DIR:PATH=$prefix/" build/CMakeCache.txt # and no other one
cmake --build build
for run in draw find; do
    QT_QPA_PLATFORM=offscreen build/host "$run" figures
done
