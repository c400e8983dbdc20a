#!/usr/bin/env bash
# Installs into a directory of its own and uses that as an ordinary user who cannot write there: the tour passes, a language
# is chosen, the manual pages and completions are there, and nothing but the user's file is left.
set -euo pipefail
cd "$(dirname "$0")/.."
. packaging/packages.sh

need "${kestrel_packages[@]}" man-db xvfb xdotool
build release kestrel kestrelctl kestrel-board mkindex mklang manual_pages installation
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
chmod 755 "$work"
prefix=$work/prefix home=$work/home
cmake --install build/release --prefix "$prefix" >/dev/null
for program in kestrel kestrelctl kestrel-board mkindex mklang; do
    "$prefix/bin/$program" --help >"$work/help" || fail "$program --help fails"
    man --warnings -l "$prefix/share/man/man1/$program.1" 2>&1 >"$work/page" | { ! grep .; } || fail "$program.1 is not sound"
    bash -n "$prefix/share/bash-completion/completions/$program"
    # The three are made from one table: each option of the help stands in both others.
    grep -oE '^  --[a-z-]+' "$work/help" | while read -r option; do
        grep -qe "$option" "$work/page" || fail "$option is not in $program.1"
        grep -qe "$option" "$prefix/share/bash-completion/completions/$program" || fail "$program does not complete $option"
    done
done

mkdir "$home"
cp packaging/choose_language.sh "$work/"
as_user=(env HOME="$home" TMPDIR="$home" PATH="$prefix/bin:$PATH" XDG_CONFIG_HOME= XDG_RUNTIME_DIR="$home")
if [ "$(id -u)" -eq 0 ]; then
    chown nobody "$home"
    as_user=(setpriv --reuid=nobody --clear-groups "${as_user[@]}")
else
    chmod -R a-w "$prefix"
fi
find "$prefix" -type f -exec sha256sum {} + | sort >"$work/before"
(cd "$home" && "${as_user[@]}" bash "$work/choose_language.sh")
find "$prefix" -type f -exec sha256sum {} + | sort | diff "$work/before" - || fail "something was written in $prefix"
[ "$(tr -d '\r' <"$home/.config/kestrel/kestrel.ini" | paste -sd ' ')" = 'Com=1 Lingua=Deutsch' ] || fail 'the language is lost'
left=$(cd "$home" && find . -type f ! -name 'tmp.*' ! -path ./.config/kestrel/kestrel.ini)
[ -z "$left" ] || fail "something else is left: $left"
"${as_user[@]}" QT_QPA_PLATFORM=offscreen kestrel --demo --tour "$home/tour" >"$work/tour" ||
    { cat "$work/tour" >&2 && fail 'the tour does not pass'; }
echo "Installed, used and left alone: $(find "$home/tour" -name '*.png' | wc -l) pages"
chmod -R u+w "$work"
