#!/usr/bin/env bash
# How much of src/link the tests of the logic run: lines and branches, a file a row and in sum.
# Branches are the two sides of each condition in the source, as clang counts them; ways out by an exception are none.
# Ends with 1 below 100 % of lines or 95 % of branches. "tests/coverage.sh --show" also prints what is missed.
set -euo pipefail
cd "$(dirname "$0")/.."
. packaging/packages.sh

need clang llvm cmake ninja-build libgtest-dev
build coverage kestrel_core_tests
tests=build/coverage/tests/kestrel_core_tests
LLVM_PROFILE_FILE=build/coverage/tests.profraw "$tests" --gtest_brief=1
llvm-profdata merge -o build/coverage/tests.profdata build/coverage/tests.profraw
look=(-instr-profile=build/coverage/tests.profdata "$tests" -ignore-filename-regex='/(tests|tools)/|src/[^l][^/]*/|/usr/')
if [ "${1:-}" = --show ]; then
    llvm-cov show -show-branches=count "${look[@]}" | grep -E '^/.*:$|\| +0\||(True|False): 0[],]' || true
fi
llvm-cov report "${look[@]}" | awk '
    function share(all, missed) { return all ? 100 * (all - missed) / all : 100 }
    NF == 13 && $2 ~ /^[0-9]+$/ {
        lines = share($8, $9); branches = share($11, $12)
        printf "%-28s %6d lines %7.2f %%  %5d branches %7.2f %%\n", $1, $8, lines, $11, branches
    }
    $1 == "TOTAL" { seen = 1; exit lines < 100 || branches < 95 }
    END { if (!seen) exit 1 }'
