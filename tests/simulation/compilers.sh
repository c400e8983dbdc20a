#!/usr/bin/env bash
# Plays the same runs in builds of g++ and of clang++: the traces of both must be the same.
# Usage: compilers.sh [ARGUMENT...] for the simulation, --seeds 1-100 --small-worlds if there are none.
set -euo pipefail
cd "$(dirname "$0")/../.."
[ $# -gt 0 ] || set -- --seeds 1-100 --small-worlds
launcher=()
if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
clang=$(command -v clang++ || command -v clang++-14) || { echo "compilers.sh: there is no clang++" >&2 && exit 1; }

traces=()
for compiler in g++ "$clang"; do
    build=build/compilers/$(basename "$compiler")
    cmake -G Ninja -B "$build" -DCMAKE_BUILD_TYPE=Release -DKESTREL_QT=OFF -DCMAKE_CXX_COMPILER="$compiler" \
        "${launcher[@]}" >/dev/null
    log=$(cmake --build "$build" --target kestrel_simulation 2>&1) || { echo "$log" >&2 && exit 1; }
    played=$("$build/tests/kestrel_simulation" "$@" | grep ' runs, ')
    echo "$(basename "$compiler"): $played"
    traces+=("${played##*trace }")
done
[ "${traces[0]}" = "${traces[1]}" ] || { echo "compilers.sh: the traces differ" >&2 && exit 1; }
