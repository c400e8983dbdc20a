#!/usr/bin/env bash
# Makes a release in build/release-VERSION: source archive, package and checksums, from a clean clone of what is committed,
# twice, and compares the bytes. release.sh [--trial]; but for a trial the change log has to begin with the version and a
# date, as in "## 1.2.3, 2026-01-31".
set -euo pipefail
cd "$(dirname "$0")/.."
. packaging/packages.sh

need git "${kestrel_packages[@]}" "${kestrel_package_packages[@]}"
version=$(sed -nE 's/^project\(kestrel VERSION ([0-9.]+).*/\1/p' CMakeLists.txt)
latest=$(sed -nE '/^## /{s/^## //p;q}' CHANGELOG.md)
[ "${1:-}" = --trial ] || { [[ "$latest" = "$version, "* ]] && date -d "${latest#*, }" >/dev/null; } ||
    fail "CHANGELOG.md begins with \"$latest\", not with \"$version, \" and a date; CMakeLists.txt has the version"
[ -z "$(git status --porcelain)" ] || fail 'there are changes that are not committed'
commit=$(git rev-parse HEAD)
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct "$commit")
export SOURCE_DATE_EPOCH LC_ALL=C.UTF-8 TZ=UTC
umask 022

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# make NAME: all of a release in $work/NAME/out, from a clone of its own. The package is made from the archive, so that
# what is built is what others get.
make() {
    local directory=$work/$1
    mkdir -p "$directory/out"
    git clone -q --no-local . "$directory/clone"
    git -C "$directory/clone" archive --prefix="kestrel-$version/" "$commit" | gzip -9n >"$directory/out/kestrel-$version.tar.gz"
    tar -xzf "$directory/out/kestrel-$version.tar.gz" -C "$directory"
    (cd "$directory/kestrel-$version" && CCACHE_DISABLE=1 packaging/deb.sh) >"$directory/log" 2>&1 ||
        { tail -n 20 "$directory/log" >&2 && fail 'the package cannot be made from the archive'; }
    cp "$directory/kestrel-$version"/build/package/*.deb "$directory/out/"
    (cd "$directory/out" && sha256sum -- * >SHA256SUMS)
}
make first
make the-second-time
diff -r "$work/first/out" "$work/the-second-time/out" || fail 'two runs made different bytes'
rm -rf "build/release-$version"
mkdir -p build
cp -r "$work/first/out" "build/release-$version"
echo "Twice the same bytes. The release lies in build/release-$version:"
cat "build/release-$version/SHA256SUMS"
