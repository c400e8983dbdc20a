#!/usr/bin/env bash
# Tests the tester: plants one fault after another in a copy of the source of link, mirror and fan-out, and demands that
# the simulation finds each within a minute. Prints a table; ends with 1 if one was not found.
set -euo pipefail
cd "$(dirname "$0")/../.."
root=$PWD
work=$root/build/planted
runs=(--small-worlds --seeds 1-500)
limit=60

# What goes wrong, the file, and the change of one line.
faults=(
    "a fifth repeat@link_engine.cpp@s/BadRepliesAllowed = 4/BadRepliesAllowed = 5/"
    "a late reply time-out goes on@link_engine.cpp@s/restart(link.Timer2);/link.Timer2.Enabled = true;/"
    "a gate that opens one pass early@link_engine.cpp@s/(period \& 0xF0) != 0/(period \& 0xE0) != 0/"
    "a write stays due and goes again@link_engine.cpp@s/flags \& ~flag::WriteDue/flags | 0/"
    "the scan leaves a record out@link_engine.cpp@s/link.ScanIndex + 1, end/link.ScanIndex + 2, end/"
    "bytes while idle stay unread@link_engine.cpp@s/link.Comm1->Input();  .*//"
    "a bad reply leaves its count behind@link_engine.cpp@s/link.RetryCount = 0;//"
    "a silent board is never asked again@link_engine.cpp@s/RepeatWithoutEnd = 2/RepeatWithoutEnd = 8/"
    "records of one reading are polled@link_engine.cpp@s/if (record.Period == 0) flags \&= notPending;//"
    "the upper bytes of a short value stay@link_engine.cpp@s/link.ReplyData\[i\] : 0;/link.ReplyData[i] : record.Value[i];/"
    "the last bank is never scanned@link_engine.cpp@s/CurrentBank >= Banks - 1/CurrentBank >= Banks - 2/"
    "a write leaves the old value fresh@param_table.cpp@s/flag::Pending) \& ~flag::Valid);/flag::Pending));/"
    "the last release keeps the countdown@param_table.cpp@s/record.Period \&= 15;//"
    "a release too many@param_table.cpp@s/record.Watchers == 1)/record.Watchers <= 2)/"
    "the second subscriber is not counted@param_table.cpp@s/++record.Watchers;/record.Watchers = 1;/"
    "a write of one byte goes out empty@frames.cpp@s/Command >= FirstCommandWithData/Command > FirstCommandWithData + 1/"
    "half a reply is taken for a whole one@frames.cpp@s/bytesReceived > request.n + 1/bytesReceived > request.n/"
    "any first byte acknowledges@frames.cpp@s/received == Bytes{acknowledgement}/received[0] == acknowledgement/"
    "the newest page is not told@fan_out.cpp@s/i < state().loaded.size(); ++i) state/i + 1 < state().loaded.size(); ++i) state/"
    "pages are told less than came@fan_out.cpp@s/std::min(n, static_cast<int>(data.size()) - 1)/std::min(n, static_cast<int>(data.size()) - 2)/"
    "a list is not released to its end@subscriptions.cpp@s/forEach(runs, ParamRelease)/forEach(runs.first(runs.size() - 1), ParamRelease)/"
)

release=$root/build/release
launcher=()
if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
cmake --preset release "${launcher[@]}" >/dev/null
cmake --build --preset release --target kestrel_simulation >/dev/null
mkdir -p "$work"
# Last of all commands: how the simulation is linked. An object in front of the library takes the place of the one in it.
link=$(ninja -C "$release" -t commands kestrel_simulation | tail -n 1)

# build FILE: compiles the changed copy and links the simulation with it.
build() {
    local object=$work/${1%.cpp}.o compile
    compile=$(ninja -C "$release" -t commands kestrel_simulation | grep -F "/src/link/$1" | tail -n 1)
    compile=${compile//"$root/src/link/$1"/"$work/$1"}
    compile=$(sed -E "s| -o [^ ]+| -o $object|; s| -MF [^ ]+| -MF $object.d|" <<<"$compile")
    (cd "$release" && eval "$compile" && eval "${link/ -o tests\/kestrel_simulation / $object -o $work/simulation }") \
        >"$work/log" 2>&1 || { cat "$work/log" >&2 && exit 1; }
}

# play PROGRAM: the check that failed first, or nothing.
play() {
    { timeout "$limit" "$1" "${runs[@]}" || true; } | sed -n 's/^FAILED: //p'
}

found=$(play "$release/tests/kestrel_simulation")
[ -z "$found" ] || { echo "planted_faults.sh: without any fault: $found" >&2 && exit 1; }
missed=0
printf '%-40s %-17s %8s  %s\n' 'fault' 'file' 'seconds' 'found by'
for fault in "${faults[@]}"; do
    IFS=@ read -r what file change <<<"$fault"
    sed "$change" "src/link/$file" >"$work/$file"
    changed=$(diff "src/link/$file" "$work/$file" | grep -c '^>' || true)
    [ "$changed" -eq 1 ] || { echo "planted_faults.sh: \"$what\" changes $changed lines of $file" >&2 && exit 1; }
    build "$file"
    begun=$(date +%s%N)
    found=$(play "$work/simulation")
    tenths=$((($(date +%s%N) - begun) / 100000000))
    printf '%-40s %-17s %6d.%d  %s\n' "$what" "$file" $((tenths / 10)) $((tenths % 10)) "${found:-NOT FOUND}"
    [ -n "$found" ] || missed=$((missed + 1))
done
echo "$((${#faults[@]} - missed)) of ${#faults[@]} found"
[ "$missed" -eq 0 ]
