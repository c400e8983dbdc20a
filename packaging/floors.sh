#!/usr/bin/env bash
# Checks that no source includes a floor above its own: each folder of src may include itself and what is named here.
set -euo pipefail
cd "$(dirname "$0")/.."

declare -A below=(
    [catalogue]=''
    [platform]=''
    [command_line]=''
    [language]='platform'
    [link]='platform catalogue'
    [pages]='platform catalogue language link'
    [shell]='platform catalogue language link command_line'
    [simulator]='catalogue command_line'
    [demo]='platform simulator'
    [posix]='platform language'
    [ctl]='platform catalogue language link simulator demo command_line'
    [qt]='platform posix catalogue language link shell simulator demo command_line'
)
wrong=0
for file in $(git ls-files -- 'src/*/*.h' 'src/*/*.cpp'); do
    floor=${file#src/} floor=${floor%%/*}
    [ -v "below[$floor]" ] || { echo "$file: the floor $floor is unknown to packaging/floors.sh" && wrong=1 && continue; }
    for room in $(sed -nE 's|^#include "([a-z_]+)/.*|\1|p' "$file" | sort -u); do
        [[ " $floor ${below[$floor]} " == *" $room "* ]] || { echo "$file includes $room/, which lies above $floor" && wrong=1; }
    done
    [ "$floor" = qt ] || ! grep -nHE '^#include <Q' "$file" || wrong=1
done
[ "$wrong" = 0 ] || { echo 'Includes run downwards only; Qt is for src/qt alone' >&2 && exit 1; }
echo 'No include runs upwards'
