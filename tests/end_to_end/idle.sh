#!/usr/bin/env bash
# With nothing changing the program sleeps: on the title always, on the bench but for the caret, and
# there too with motion off. What it was woken by is counted by the system.
#   idle.sh GAME
set -euo pipefail
game=$1
. "$(dirname "$0")/common.sh"

# Times that the program went to sleep, all its threads together.
sleeps() { cat /proc/"$game_pid"/task/*/status | awk '/^voluntary_ctxt_switches/ { n += $2 } END { print n }'; }
# wakes_in_three_seconds FEWEST MOST WHERE
wakes_in_three_seconds() {
    sleep 1.5 # what a key has started comes to an end
    local before after
    before=$(sleeps)
    sleep 3
    after=$(sleeps)
    local wakes=$((after - before))
    [ "$wakes" -ge "$1" ] && [ "$wakes" -le "$2" ] || fail "$wakes wakes in three seconds $3"
}

start_server
for motion in true false; do
    mkdir -p "$data"
    printf '{"settings_version": 3, "motion": %s}' "$motion" >"$data/settings.json"
    start_game --windowed
    wakes_in_three_seconds 0 0 "on the title with motion $motion"
    press c # Continue
    # A caret that blinks changes every 0.53 seconds; each change may take a sleep more to present.
    if [ "$motion" = true ]; then
        wakes_in_three_seconds 5 24 "on the bench"
    else
        wakes_in_three_seconds 0 0 "on the bench with motion off"
    fi
    stop_game
done
echo "The program sleeps while nothing changes."
