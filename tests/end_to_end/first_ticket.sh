#!/usr/bin/env bash
# A new player solves 1-01 in a real window, leaves, comes back and finds it closed.
#   first_ticket.sh GAME LC1
set -euo pipefail
game=$1
lc1=$2
. "$(dirname "$0")/common.sh"

ticket=1-01-carrier-check
firmware=$data/firmware/$ticket.lc1
closed() { "$lc1" json "$data/progress.json" --json >/dev/null && grep -q '"solved": true' "$data/progress.json"; }

start_server
start_game
press Return # Continue
sleep 0.3
for byte in 55 AA 55 AA 55 AA; do
    type_text "tx \$$byte"
    press Return
done
type_text "halt"
press F8
wait_for 10 "the closed ticket in progress.json" closed
grep -q "\"$ticket\"" "$data/progress.json" || fail "progress.json does not name $ticket"
wait_for 5 "the firmware file" test -s "$firmware"
"$lc1" verify "$ticket" "$firmware" || fail "the saved firmware does not pass"
press Escape # keeps editing
sleep 0.2
press ctrl+End
press Return
type_text "; left by the window's close"
stop_game
tail -n 1 "$firmware" | grep -q "; left by the window's close" ||
    fail "what was typed last was not saved on the way out"
cp "$firmware" "$work/first"

start_game
press Return # Continue: the same ticket with its firmware
sleep 0.3
type_text "; back"
press Return
press ctrl+s
wait_for 5 "the second save" grep -q '^; back$' "$firmware"
sed 1d "$firmware" | cmp -s - "$work/first" || fail "the firmware did not come back as it was left"
closed || fail "the ticket is no longer closed"
echo "1-01 was solved in a window, closed, kept and found again."
