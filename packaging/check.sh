#!/usr/bin/env bash
# Checks that no test sees: the layout of the sources, which floor includes which, and what clang-tidy finds in them.
set -euo pipefail
cd "$(dirname "$0")/.."
. packaging/packages.sh

need "${kestrel_packages[@]}" "${kestrel_check_packages[@]}"
sources() { git ls-files -- '*.h' '*.cpp'; }
sources | xargs clang-format --dry-run --Werror || fail "run clang-format -i on the files named above"
git ls-files -- '*.h' '*.cpp' '*.sh' | xargs wc -l |
    awk '$2 != "total" && $1 > ($2 ~ /\.h$/ ? 250 : 400) { print $2 ": " $1 " lines"; long = 1 } END { exit long }' ||
    fail "the files named above are too long: 400 lines at most, a header 250"
packaging/floors.sh
packaging/parameters.sh
tests/share.sh >/dev/null || fail "there are too many tests: see tests/share.sh"
build release kestrel
desktop-file-validate packaging/desktop/kestrel.desktop || fail "the desktop entry is not as it should be"
appstreamcli validate --no-net build/release/*.metainfo.xml >/dev/null || fail "ask appstreamcli about the description"
# As for the compiler, but for the headers that only it can read precompiled and a warning that only it knows.
commands=build/tidy/compile_commands.json
mkdir -p build/tidy
sed -E 's/ -Winvalid-pch -include [^ ]+cmake_pch\.hxx//; s/ -Wno-(restrict|maybe-uninitialized)//g' build/release/compile_commands.json >$commands
git ls-files -- 'src/*.cpp' 'tools/*.cpp' |
    xargs -P "$(nproc)" -n 4 clang-tidy --quiet -p build/tidy 2>build/tidy/errors ||
    { grep -v 'warnings generated' build/tidy/errors >&2; fail "clang-tidy found what stands above"; }
echo "The sources pass clang-format and clang-tidy"
