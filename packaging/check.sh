#!/usr/bin/env bash
# Checks that no test sees: the layout of the sources, which floor includes which, and what clang-tidy finds in them.
set -euo pipefail
cd "$(dirname "$0")/.."
. packaging/packages.sh

need "${kestrel_packages[@]}" "${kestrel_check_packages[@]}"
sources() { git ls-files -- '*.h' '*.cpp'; }
sources | xargs clang-format --dry-run --Werror || fail "run clang-format -i on the files named above"
packaging/floors.sh
packaging/parameters.sh
tests/share.sh
build release kestrel kestrel_core_tests
# The window's layer takes as long again as all the rest, so it is looked through only when asked for.
skipped='src/qt/|src/main.cpp'
[ "${1:-}" = --all ] && skipped='^$'
git ls-files -- 'src/*.cpp' 'tools/*.cpp' | grep -vE "$skipped" |
    xargs -P "$(nproc)" -n 4 clang-tidy --quiet --extra-arg=-Wno-unknown-warning-option -p build/release 2>/dev/null ||
    fail "clang-tidy found what stands above"
echo "The sources pass clang-format and clang-tidy"
