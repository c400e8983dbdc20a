#!/usr/bin/env bash
# Runs the fuzz targets one after the other, each so many seconds from its seeds on, and says what each did.
#     tests/fuzz/run.sh [SECONDS (default 600)] [TARGET...]
# What breaks a target stays in build/fuzz/found/TARGET; mended, it belongs into tests/fuzz/seeds.cpp.
set -euo pipefail
cd "$(dirname "$0")/../.."
. packaging/packages.sh

seconds=${1:-600}
shift || true
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(index language configuration reply frame options settings)

need clang cmake ninja-build libgtest-dev
build fuzz "${targets[@]/#/fuzz_}"
status=0
for target in "${targets[@]}"; do
    grown=build/fuzz/grown/$target
    found=build/fuzz/found/$target
    log=build/fuzz/$target.log
    mkdir -p "$grown" "$found"
    broken=
    KESTREL_FUZZ_SEEDS=$grown "build/fuzz/tests/fuzz_$target" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 \
        -artifact_prefix="$found/" "$grown" >"$log" 2>&1 || broken=yes
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
    cover=$(grep -o 'cov: [0-9]*' "$log" | tail -n 1)
    echo "$target: ${runs:-?} runs, ${cover:-cov: ?} edges, $(find "$grown" -type f | wc -l) inputs kept," \
        "$(find "$found" -type f | wc -l) found"
    [ -z "$broken" ] || { tail -n 30 "$log"; status=1; }
done
exit "$status"
