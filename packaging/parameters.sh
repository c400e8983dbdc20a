#!/usr/bin/env bash
# Checks that pages and the simulated machine name every parameter by the catalogue and write no number of one. Tables,
# orders and subscriptions take catalogue names alone; what is left are the ways round them that are named here.
set -euo pipefail
cd "$(dirname "$0")/.."

wrong=0
# What is wrong, and the form of a line that shows it. Comments do not count.
refuse() {
    local found
    found=$(git ls-files -- 'src/pages/*' 'src/simulator/*' | xargs grep -nHE "$2" | grep -vE '^[^:]+:[0-9]+: *//' || true)
    [ -z "$found" ] || { echo "$found" && echo "  $1" && wrong=1; }
}
refuse 'a parameter made of a bare number' '[bB]oard[A-Za-z_:]*,[[:space:]]*[0-9]'
refuse 'a procedure of the mirror that is given a bare number' '\bParam[A-Z][A-Za-z]*\([^;]*\b[0-9]{2,}, *[^;]*\)|\bParam[A-Z][A-Za-z]*\([0-9]'
refuse 'a parameter that came compared with a bare number' '\bn[[:space:]]*([=!<>]=|[<>])[[:space:]]*[0-9]'
refuse 'a number compared with a bare one' '(\bparameter|\.number)[[:space:]]*([=!<>]=|[<>])[[:space:]]*([2-9]|[0-9]{2})'
refuse 'a bank instead of a board' '\bCurrentBank[[:space:]]*[=!]?=[[:space:]]*[0-9]'
refuse 'a constant that holds a number which the catalogue has' 'constexpr int [A-Za-z]*([pP]arameter|[sS]etting|[sS]hadow|[mM]ailbox|[cC]opy) = [0-9]'
refuse 'a subscription by number' '\bParam(Watch|Release)\b'
[ "$wrong" = 0 ] || { echo 'Parameters are named by data/catalogue alone' >&2 && exit 1; }
echo 'Every parameter is named by the catalogue'
