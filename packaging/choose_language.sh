#!/usr/bin/env bash
# Opens the demo on a screen in memory and chooses German by the keys of its menu. Used by install_check.sh.
set -euo pipefail
exec 3<>"$(mktemp)"
Xvfb -displayfd 3 -screen 0 1366x768x24 -nolisten tcp 2>/dev/null &
screen=$!
trap 'kill $screen' EXIT
for _ in $(seq 50); do
    sleep 0.2
    number=$(head -n 1 /proc/$$/fd/3)
    [ -z "$number" ] || break
done
export DISPLAY=:$number XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR:-$(mktemp -d)}
kestrel --demo &
program=$!
window=$(timeout 60 xdotool search --sync --onlyvisible --pid $program --name Kestrel | head -n 1)
sleep 5 # until the boards are known
xdotool windowfocus "$window"
# From the first menu leftwards: version, ports, windows, languages, of which German is the first.
xdotool key --delay 300 alt+f Left Left Left Left Return
sleep 2
kill $program
wait $program || true
