#!/usr/bin/env bash
# Installs the package in a fresh system of its own (a chroot that is thrown away), uses it there as an ordinary user,
# removes it, and looks what is left. install_check.sh [PACKAGE.deb]; packaging/deb.sh makes one unless given.
set -euo pipefail
cd "$(dirname "$0")/.."
. packaging/packages.sh
. packaging/fresh_system.sh

skip() {
    echo "install_check.sh: skipped: $*"
    exit 0
}
[ "$(id -u)" -eq 0 ] || skip 'only root can make a chroot'
package=${1:-}
if [ -z "$package" ]; then
    packaging/deb.sh
    package=$(ls build/package/*.deb)
fi
mirror=$(apt-get indextargets --format '$(SITE)' 'Created-By: Packages' | head -n 1)
suite=$(. /etc/os-release && echo "${VERSION_CODENAME:-}")
[ -n "$mirror" ] && [ -n "$suite" ] || skip 'this system does not say where its packages come from'

fresh_system "$suite" "$mirror" || skip 'a fresh system could not be made'

as_user() { inside setpriv --reuid=technician --regid=technician --init-groups env HOME=/home/technician "$@"; }
quietly() { "$@" >"$system/tmp/said" 2>&1 || { tail -n 20 "$system/tmp/said" >&2; fail "failed: $*"; }; }
every_file() {
    find "$system" -xdev \( -path "$system/var/*" -o -path "$system/tmp/*" -o -path "$system/root/*" \) -prune -o \
        ! -type d -printf '%P %s %m\n' -o -type d -printf '%P %m\n' | sort
}

cp "$package" "$system/tmp/kestrel.deb"
quietly inside apt-get update
quietly inside apt-get install -y --no-install-recommends xvfb xdotool /tmp/kestrel.deb
quietly inside useradd --create-home technician
quietly inside apt-get purge -y kestrel # what it depends on stays, and is none of its own
every_file >"$system/tmp/before"
quietly inside apt-get install -y --no-install-recommends /tmp/kestrel.deb
echo "Installed: $(inside kestrel --version), $(inside kestrel-board --version)"

mkdir "$system/tmp/tour"
chmod 777 "$system/tmp/tour"
quietly as_user kestrel --demo --tour /tmp/tour
echo "The tour made $(find "$system/tmp/tour" -name '*.png' | wc -l) pictures"

# The language is chosen as a user does: by the keys of the menu.
cp packaging/choose_language.sh "$system/tmp/"
quietly as_user bash /tmp/choose_language.sh
file=home/technician/.config/kestrel/kestrel.ini
[ "$(tr -d '\r' <"$system/$file" | paste -sd ' ')" = 'Com=1 Lingua=Deutsch' ] || fail "the language was not saved in $file"
echo "The language that was chosen stands in $file"

quietly inside apt-get purge -y kestrel
every_file >"$system/tmp/after"
diff "$system/tmp/before" "$system/tmp/after" | sed -n 's/^> \([^ ]*\).*/\1/p' >"$system/tmp/left" || true
printf '%s\n' "home/technician/.config" "${file%/*}" "$file" | sort >"$system/tmp/allowed"
diff "$system/tmp/allowed" "$system/tmp/left" >&2 || fail 'something else than that file is left, or it is gone'
echo "Removed: nothing is left but the user's file"
