#!/usr/bin/env bash
# Makes a picture of every page in every language, look and scale, from the demo: DIR/<language>-<theme>-<scale>/<page>.png.
# all_pictures.sh [DIR [LANGUAGE...]]; DIR is build/all-pictures unless given.
set -euo pipefail
cd "$(dirname "$0")/.."
. packaging/packages.sh

directory=$(realpath -m "${1:-build/all-pictures}")
shift || true
languages=("$@")
[ ${#languages[@]} -gt 0 ] || languages=(Italiano English Deutsch Francais Espanol)
need "${kestrel_packages[@]}"
build release kestrel installation
installation=$PWD/build/release/installation/kestrel
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# tour LANGUAGE THEME SCALE: a tour spends its time waiting for the boards, so that many can run at once.
tour() {
    local name=$1-$2-$3
    mkdir "$work/$name"
    ln -s "$installation"/*.lng "$installation"/*.inx "$installation/pictures" "$work/$name/"
    printf 'Com=1\r\nLingua=%s\r\n' "$1" >"$work/$name/kestrel.ini"
    if QT_QPA_PLATFORM=offscreen QT_SCALE_FACTOR=$3 "$installation/kestrel" --demo --directory "$work/$name" \
        --theme "$2" --tour "$directory/$name" >"$work/$name.log" 2>&1; then
        echo "$name"
    else
        sed "s/^/$name: /" "$work/$name.log" >&2
        return 1
    fi
}
export -f tour
export installation work directory

for language in "${languages[@]}"; do
    [ -e "$installation/$language.lng" ] || fail "there is no language \"$language\""
    for theme in light dark contrast; do
        for scale in 1 1.5 2; do printf '%s %s %s\n' "$language" "$theme" "$scale"; done
    done
done | xargs -P $(($(nproc) * 5)) -L 1 bash -c 'tour "$@"' tour || fail "some pictures could not be made"
echo "The pictures lie in $directory"
