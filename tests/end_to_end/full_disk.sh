#!/usr/bin/env bash
# A ticket is closed while the disk takes nothing: the game says so and goes on, and the next save
# works. A limit on the size of files stands in for the full disk.
#   full_disk.sh GAME LC1
set -euo pipefail
game=$1
lc1=$2
. "$(dirname "$0")/common.sh"

ticket=1-01-carrier-check
firmware=$data/firmware/$ticket.lc1
sentence="save: Progress could not be saved: cannot write $data/progress.json (File too large)"
says() { grep -qF "$1" "$work/errors"; }
closed() { grep -q '"solved": true' "$data/progress.json"; }
# set_room BYTES: how large a file of the running game may become.
set_room() { prlimit --pid "$game_pid" --fsize="$1:unlimited"; }

trap '' XFSZ # as on a full disk, a write that does not fit fails and does not end the program
start_server
start_game
press Return # Continue
sleep 0.3
cp "$data/progress.json" "$work/before"
for byte in 55 AA 55 AA 55 AA; do
    type_text "tx \$$byte"
    press Return
done
type_text "halt"
set_room 0
press F8
wait_for 10 "the sentence" says "$sentence"
kill -0 "$game_pid" || fail "the game did not go on"
cmp -s "$data/progress.json" "$work/before" || fail "the old progress is not whole"

set_room unlimited
press Escape # keeps editing
sleep 0.2
press F8
wait_for 10 "the closed ticket in progress.json" closed
"$lc1" verify "$ticket" "$firmware" >/dev/null || fail "the saved firmware does not pass"
press Escape
stop_game
grep -q '"FIRST_SHIP"' "$data/progress.json" || fail "the achievement was lost"
echo "1-01 was closed on a full disk, and kept by the next save."
