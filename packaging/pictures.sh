#!/usr/bin/env bash
# Makes the pictures of the README anew from the demo.
set -euo pipefail
cd "$(dirname "$0")/.."
. packaging/packages.sh

pages=(FrmDosi FrmPrezzi FrmOpzioni FrmInOut FrmSchema FrmAllarmi)
need "${kestrel_packages[@]}"
build release kestrel installation
tour=$(mktemp -d)
trap 'rm -rf "$tour"' EXIT
QT_QPA_PLATFORM=offscreen build/release/installation/kestrel/kestrel --demo --theme light --tour "$tour"
mkdir -p docs/pictures
for page in "${pages[@]}"; do cp "$tour/$page.png" docs/pictures/; done
