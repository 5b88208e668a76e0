#!/usr/bin/env bash
# A new player does on 1-01 what the coach says, key by key, and closes the ticket. The coach's row
# is looked at in the window: it goes on when the player has, and only then.
#   coach.sh GAME
set -euo pipefail
game=$1
. "$(dirname "$0")/common.sh"

firmware=$data/firmware/1-01-carrier-check.lc1
shape=(--look classic --theme vga --text large --width 640 --height 400)
row=640x16+0+352 # of 80 by 25 cells, in the smallest window

row_of() { convert "$1" -crop $row -depth 8 rgb:- | sha1sum; }
coach() {
    import -silent -window "$window" "$work/seen.png"
    row_of "$work/seen.png"
}
says() { [ "$(coach)" = "$1" ]; }
says_else() { ! says "$1"; }
# Waits until the coach says something that he has not said before, and learns it as $line.
goes_on() {
    local before=$line
    wait_for 10 "the coach to go on after: $1" says_else "$before"
    sleep 0.3
    line=$(coach)
    [ "$line" != "$before" ] || fail "the coach went back after: $1"
}

start_server
xdotool mousemove 1439 899 # away from what has hints
"$game" "${shape[@]}" --fresh --scene 1-01-carrier-check --capture "$work/first.png"
first=$(row_of "$work/first.png")

start_game --windowed "${shape[@]}"
press Return # Continue
wait_for 10 "the coach's first line" says "$first"
line=$first

press t
sleep 0.3
says "$first" || fail "the coach went on after half a word"
type_text 'x $55'
press Return
goes_on "the first instruction"
run=$line
press F5 # as he says; it sends one byte and then too many
sleep 1
press F6 F7 F1 F2 ctrl+r ctrl+Next # not open yet
for byte in AA 55 AA 55 AA; do
    type_text "tx \$$byte"
    press Return
    wait_for 5 "the coach to stay at the run after tx $byte" says "$run"
done
type_text halt
goes_on "halt"
press F5
goes_on "a test that passes"
press F8
wait_for 10 "the closed ticket" grep -q '"solved": true' "$data/progress.json"
press Escape
wait_for 5 "the coach to leave" says_else "$line"
stop_game
head -n 1 "$firmware" | grep -q '^; ' || fail "the coach's notes are not above the firmware"
[ "$(grep -c '^tx' "$firmware")" = 6 ] || fail "the firmware is not what was typed"
echo "The coach led through 1-01."
