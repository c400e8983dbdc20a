#!/usr/bin/env bash
# Tests the tester: plants each fault of planted_faults.tsv in a copy of its source, and demands that the program named
# there finds it within two minutes. Prints a table; ends with 1 if a fault was not found.
#   planted_faults.sh [WORDS]   only the rows with these words; ALL=1 names every test that finds a fault, not the first alone
set -euo pipefail
cd "$(dirname "$0")/.."
root=$PWD
work=$root/build/planted
release=$root/build/release
limit=120

launcher=() linker=()
if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
if command -v ld.lld >/dev/null; then linker=(-fuse-ld=lld); fi
mapfile -t faults < <(tail -n +2 tests/planted_faults.tsv | grep -F -- "${1:-}")
declare -A programs=([core]=kestrel_core_tests [simulation]=kestrel_simulation [window]=kestrel_qt_tests)
rm -rf "$work" && mkdir -p "$work"
cmake --preset release "${launcher[@]}" >/dev/null
for program in $(printf '%s\n' "${faults[@]}" | cut -f1 | cut -d' ' -f1 | sort -u); do
    cmake --build --preset release --target "${programs[$program]}" >/dev/null
    ninja -C "$release" -t commands "${programs[$program]}" >"$work/$program"
done

# The tests of the pages; the others' faults are for all.
ofPages=$(sed -nE 's/^TEST(_[FP])?\(([A-Za-z]+), .*/*\2.*/p' tests/pages/*.cpp | sort -u | paste -sd:)

# sources FILE: what is compiled anew when the file changes.
sources() {
    case $1 in
        *.h) grep -lF "\"${1#src/}\"" $(git ls-files 'src/*.cpp' 'src/*.h') | sed 's/\.h$/.cpp/' | sort -u ;;
        *) echo "$1" ;;
    esac
}

# build HERE FILE PROGRAM: compiles what the changed copy of the file belongs to and links the program with it. The last of
# all commands says how that is done; an object in front of the library takes the place of the one in it.
build() {
    local here=$1 source object command link objects=()
    for source in $(sources "$2"); do
        object=$here/$(basename "$source" .cpp).o
        command=$(grep -F -- "-c $root/$source" "$work/$3" | tail -n 1)
        if [ "$source" = "$2" ]; then command=${command//"-c $root/$source"/"-c $here/$source"}; fi
        # A changed header must not come from the precompiled ones.
        if [[ $2 == *.h ]]; then command=$(sed -E 's| -include [^ ]+cmake_pch\.hxx||' <<<"$command"); fi
        command=$(sed -E "s| -I| -I$here/src -I|; s| -Werror | |; s| -o [^ ]+| -o $object|; s| -MF [^ ]+| -MF $object.d|" <<<"$command")
        (cd "$release" && eval "$command")
        objects+=("$object")
    done
    link=$(tail -n 1 "$work/$3" | sed -E "s| -o tests/[^ ]+| ${linker[*]} ${objects[*]} -o $here/planted|; s|&& cd .*||")
    (cd "$release" && eval "$link")
}

# play PROGRAM FILE TESTS: what failed, one a line. A test that never ends has found something, a simulation that does has not.
play() {
    local status=0 arguments=(--gtest_filter="${3:-*}")
    case $1 in
        simulation) arguments=(--small-worlds --seeds 1-2000) ;;
        core) if [[ $2 == src/pages/* ]]; then arguments=(--gtest_filter="$ofPages"); fi ;;
    esac
    if [ -z "${ALL:-}" ] && [ "$1" != simulation ]; then arguments+=(--gtest_fail_fast); fi
    QT_QPA_PLATFORM=offscreen timeout "$limit" ./planted "${arguments[@]}" >log 2>&1 || status=$?
    if [ "$status" -eq 0 ] || [[ $1 == simulation && $status == 124 ]]; then return; fi
    sed -nE 's/^\[  FAILED  \] ([A-Za-z0-9_./]+).* \(.*ms\)$/\1/p; s/^FAILED: //p' log | grep . || echo "(stopped)"
}

# plant NUMBER: leaves the tests that found the fault, one a line.
plant() {
    local program file change what test here=$work/plant$1 changed
    IFS=$'\t' read -r program file change what <<<"${faults[$1]}"
    read -r program test <<<"$program"
    mkdir -p "$here/$(dirname "$file")"
    sed "$change" "$file" >"$here/$file"
    changed=$(diff "$file" "$here/$file" | grep -c '^>' || true)
    if [ "$changed" -ne 1 ] || ! build "$here" "$file" "$program" >"$here/log" 2>&1; then
        echo "planted_faults.sh: \"$what\" changes $changed lines of $file, or does not build" >&2
        return 1
    fi
    (cd "$here" && play "$program" "$file" "$test" >found)
    rm -f "$here/planted"
}

for i in "${!faults[@]}"; do
    while [ "$(jobs -rp | wc -l)" -ge "${JOBS:-2}" ]; do wait -n || true; done
    plant "$i" &
done
wait

missed=0
printf '%-44s %-44s %s\n' 'fault' 'file' 'found by'
for i in "${!faults[@]}"; do
    IFS=$'\t' read -r _ file _ what <<<"${faults[$i]}"
    found=NOT\ FOUND
    if [ -s "$work/plant$i/found" ]; then found=$(paste -sd' ' "$work/plant$i/found"); else missed=$((missed + 1)); fi
    printf '%-44s %-44s %s\n' "$what" "$file" "$found"
done
echo "$((${#faults[@]} - missed)) of ${#faults[@]} found"
[ "$missed" -eq 0 ]
