#!/usr/bin/env bash
# Makes the pictures of the README and of the manual anew from the demo, in each language of the manual.
set -euo pipefail
cd "$(dirname "$0")/.."
. packaging/packages.sh

pages=(FrmDosi FrmPrezzi FrmOpzioni FrmInOut FrmSchema FrmAllarmi)
need "${kestrel_packages[@]}"
build release kestrel installation
installation=$PWD/build/release/installation/kestrel
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
for manual in docs/manual/*.md; do
    language=$(basename "$manual" .md)
    mkdir "$work/$language"
    ln -s "$installation"/*.lng "$installation"/*.inx "$installation/pictures" "$work/$language/"
    printf 'Com=1\r\nLingua=%s\r\n' "$language" >"$work/$language/kestrel.ini"
    QT_QPA_PLATFORM=offscreen "$installation/kestrel" --demo --directory "$work/$language" --theme light \
        --tour "$work/$language/tour" >"$work/$language/table" ||
        { cat "$work/$language/table" >&2 && fail "some pages were not filled in time; is the computer busy?"; }
    mkdir -p "docs/manual/pictures/$language"
    for page in "${pages[@]}"; do cp "$work/$language/tour/$page.png" "docs/manual/pictures/$language/"; done
done
