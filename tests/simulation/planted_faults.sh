#!/usr/bin/env bash
# Tests the tester: plants one fault after another in a copy of a source, and demands that the simulation finds each within
# a minute, or a test of the window what only a window can do. Prints a table; ends with 1 if one was not found.
#   planted_faults.sh [WORDS]    only those whose name holds the words
set -euo pipefail
cd "$(dirname "$0")/../.."
root=$PWD
work=$root/build/planted
runs=(--small-worlds --seeds 1-2000)
limit=60

# What goes wrong, the file, and the change of one line; where a test of the window is to find it, the name of that test.
faults=(
    "a fifth repeat@link_engine.cpp@s/BadRepliesAllowed = 4/BadRepliesAllowed = 5/"
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
    "the newest page is not told@loaded_pages.cpp@s/i < state().loaded.size(); ++i) state/i + 1 < state().loaded.size(); ++i) state/"
    "what a page is told is taken for the user's@page.cpp@s/const ByThePage shown(\*this);//"
    "pages are told less than came@loaded_pages.cpp@s/std::min(n, static_cast<int>(data.size()) - 1)/std::min(n, static_cast<int>(data.size()) - 2)/"
    "a list is not released to its end@subscriptions.cpp@s/: runs) Release(run);/: runs.first(runs.size() - 1)) Release(run);/"
    "an act comes into an exchange@outside.cpp@s/if (!here.exchangeIsOpen \&\& /if (/"
    "an edit is overwritten by an older reply@link_engine.cpp@s/const bool older = (stored/const bool older = link.RetryCount < 0 \&\& (stored/"
    "what has not been read is edited@control.cpp@s/unread_ = valueProperty()/unread_ = Visible.get() != Visible.get() \&\& valueProperty()/"
    "closing a page enters what was typed@text_box_view.cpp@/::dropTyping/,/^}/s/entered_ = false;/leave();/@Closing.*"
    "an absent board is scanned@link_engine.cpp@s/while (BoardPresent(CurrentBank)) {/for (;;) {/"
    "an order goes before its mailbox@mailbox.cpp@s/ || !isTaken()) return;/) return;/"
    "an order given up goes out@mailbox.cpp@s/    if (!isOwed(written)) return;/    if (isOwed(written) || written.setting.number > 0) return;/"
    "nobody is asked after an interruption@link_engine.cpp@s/^    if (Link().Timer1.Enabled || LineIsClosed/    if (LineIsClosed/"
    "what was held goes in spite of a no@recheck.cpp@s/releaseWrites(send);/releaseWrites(send || !here.held.empty());/"
    "what was not taken is not told@changes.cpp@s/change.control->tellNotTaken(.*);/static_cast<void>(change.wanted);/"
    "what a closed page leaves is not told@leaving.cpp@s/count = LeaveChanges(page)/count = 0 * LeaveChanges(page)/"
)

release=$root/build/release
launcher=()
if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
cmake --preset release "${launcher[@]}" >/dev/null
cmake --build --preset release --target kestrel_simulation kestrel_qt_tests >/dev/null
mkdir -p "$work"

# build FILE TARGET: compiles the changed copy and links the target with it. The last of all commands says how that is
# done; an object in front of the library takes the place of the one in it.
build() {
    local object=$work/$(basename "$1" .cpp).o compile link
    compile=$(ninja -C "$release" -t commands "$2" | grep -F -- "-c $root/$1" | tail -n 1)
    link=$(ninja -C "$release" -t commands "$2" | tail -n 1)
    compile=${compile//"$root/$1"/"$work/$(basename "$1")"}
    compile=$(sed -E "s| -o [^ ]+| -o $object|; s| -MF [^ ]+| -MF $object.d|" <<<"$compile")
    link=$(sed -E "s| -o tests/[^ ]+| $object -o $work/planted|; s|&& cd .*||" <<<"$link")
    (cd "$release" && eval "$compile" && eval "$link") >"$work/log" 2>&1 || { cat "$work/log" >&2 && exit 1; }
}

# play PROGRAM: the check that failed first, or nothing.
play() {
    { timeout "$limit" "$1" "${runs[@]}" || true; } | sed -n 's/^FAILED: //p'
}

# inWindow PROGRAM TEST: the same with a test of the window.
inWindow() {
    { QT_QPA_PLATFORM=offscreen timeout "$limit" "$1" --gtest_filter="$2" || true; } |
        sed -n 's/^\[  FAILED  \] \([A-Za-z.]*\) (.*/\1/p' | head -n 1
}

found=$(play "$release/tests/kestrel_simulation")
[ -z "$found" ] || { echo "planted_faults.sh: without any fault: $found" >&2 && exit 1; }
missed=0 played=0
printf '%-40s %-17s %8s  %s\n' 'fault' 'file' 'seconds' 'found by'
for fault in "${faults[@]}"; do
    IFS=@ read -r what file change test <<<"$fault"
    [[ $what == *"${1:-}"* ]] || continue
    path=$(git ls-files "src/*/$file")
    sed "$change" "$path" >"$work/$file"
    changed=$(diff "$path" "$work/$file" | grep -c '^>' || true)
    [ "$changed" -eq 1 ] || { echo "planted_faults.sh: \"$what\" changes $changed lines of $file" >&2 && exit 1; }
    played=$((played + 1))
    build "$path" "$([ -n "$test" ] && echo kestrel_qt_tests || echo kestrel_simulation)"
    begun=$(date +%s%N)
    found=$([ -n "$test" ] && inWindow "$work/planted" "$test" || play "$work/planted")
    tenths=$((($(date +%s%N) - begun) / 100000000))
    printf '%-40s %-17s %6d.%d  %s\n' "$what" "$file" $((tenths / 10)) $((tenths % 10)) "${found:-NOT FOUND}"
    [ -n "$found" ] || missed=$((missed + 1))
done
echo "$((played - missed)) of $played found"
[ "$missed" -eq 0 ]
