#!/usr/bin/env bash
# Builds targets under a preset of CMakePresets.json in build/<preset>, configuring first when that is not done yet:
#   scripts/build.sh [--configure] PRESET [-DNAME=VALUE ...] [TARGET ...]
# --configure  configures anew, so that the values given here hold in a folder that exists already.
set -euo pipefail
root=$(dirname -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")")

configure=no
if [[ ${1:-} == --configure ]]; then
    configure=yes
    shift
fi
preset=${1:?usage: scripts/build.sh [--configure] PRESET [-DNAME=VALUE ...] [TARGET ...]}
shift
values=()
while [[ ${1:-} == -D* ]]; do
    values+=("$1")
    shift
done

# Otherwise ccache keeps nothing that was compiled with a precompiled header.
export CCACHE_SLOPPINESS=${CCACHE_SLOPPINESS:-$(ccache --get-config sloppiness 2>/dev/null || true),pch_defines,time_macros}

folder=$root/build/$preset
options=()
[[ -f $folder/build.ninja ]] || configure=yes
# A folder that was configured elsewhere (the repository was moved or copied) is of no use here.
if [[ -f $folder/CMakeCache.txt ]] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$folder/CMakeCache.txt"; then
    configure=yes
    options+=(--fresh)
fi
if [[ $configure == yes ]]; then
    cmake -S "$root" --preset "$preset" "${options[@]}" "${values[@]}"
fi

targets=()
[[ $# -eq 0 ]] || targets=(--target "$@")
cmake --build "$folder" "${targets[@]}"
