#!/usr/bin/env bash
# What was typed outlives a crash, a second copy is turned away meanwhile, and the crash leaves
# nothing behind that would keep the next start from going on.
#   crash.sh GAME
set -euo pipefail
game=$1
. "$(dirname "$0")/common.sh"

firmware=$data/firmware/1-01-carrier-check.lc1
windows() { xdotool search --onlyvisible --name '^Vantor Kest$' | wc -l; }
two_windows() { [ "$(windows)" = 2 ]; }

start_server
start_game
press Return # Continue
sleep 0.3
type_text "; typed before the crash"

"$game" 2>"$work/second" &
second_pid=$!
wait_for 10 "the second copy's window" two_windows
grep -q "^save: Vantor Kest is already open with these files" "$work/second" ||
    fail "the second copy did not say why it leaves"
kill -TERM "$second_pid"
code=0
wait "$second_pid" || code=$?
[ "$code" = 1 ] || fail "the second copy left with $code"

wait_for 10 "the text to be saved by itself" grep -q "^; typed before the crash$" "$firmware"
kill -KILL "$game_pid"
wait "$game_pid" 2>/dev/null || true

start_game
press Return # Continue
sleep 0.3
type_text "; and after it"
press Return ctrl+s
wait_for 10 "both lines" grep -q "^; and after it$" "$firmware"
grep -q "^; typed before the crash$" "$firmware" || fail "what was typed is gone"
stop_game
echo "What was typed outlived a crash, and a second copy kept its hands off."
