#!/usr/bin/env bash
# The window behaves as a window: it shows in every size, look and text size what a picture of that
# size shows; full screen, minimising and the loss of the keyboard lose nothing; and closed by the
# window manager the program saves the firmware and leaves.
#   window.sh GAME
set -euo pipefail
game=$1
. "$(dirname "$0")/common.sh"

firmware=$data/firmware/1-01-carrier-check.lc1
title=(--scene title --fresh)

# shows WIDTH HEIGHT [options...]: whether the window shows the title as a picture of this size does.
shows() {
    local width=$1 height=$2
    shift 2
    "$game" "${title[@]}" --width "$width" --height "$height" "$@" --capture "$work/wanted.png"
    import -silent -window "$window" "$work/seen.png"
    [ "$(compare -metric AE "$work/wanted.png" "$work/seen.png" null: 2>&1)" = 0 ]
}
wait_to_show() { wait_for 10 "the title in $1x$2 pixels" shows "$@"; }
has_keyboard() { [ "$(xdotool getwindowfocus)" = "$1" ]; }
is_gone() { ! kill -0 "$1" 2>/dev/null; }

start_server
start_manager
xdotool mousemove 1439 899 # away from what has hints

start_game --windowed --width 900 --height 620 --look modern
wait_to_show 900 620 --look modern
xdotool windowsize --sync "$window" 640 400
wait_to_show 640 400 --look modern
xdotool windowsize --sync "$window" 1111 701
wait_to_show 1111 701 --look modern
press F11
wait_to_show 1440 900 --look modern
press alt+Return
wait_to_show 1111 701 --look modern
xdotool windowminimize --sync "$window"
sleep 0.3
xdotool windowmap "$window" windowactivate --sync "$window"
wait_to_show 1111 701 --look modern

first=$window first_pid=$game_pid
XDG_DATA_HOME=$work/other "$game" --windowed --width 400 --height 300 --look classic 2>/dev/null &
other_pid=$!
wait_for 10 "another window" xdotool search --onlyvisible --pid "$other_pid"
other=$(xdotool search --onlyvisible --pid "$other_pid" | head -n 1)
xdotool windowactivate --sync "$other"
wait_for 5 "the keyboard in the other window" has_keyboard "$other"
press c # the other one's, so that the title here stands as it stood
xdotool windowactivate --sync "$first"
wait_for 5 "the keyboard in the first window" has_keyboard "$first"
kill "$other_pid"
wait "$other_pid" || true
wait_to_show 1111 701 --look modern

press c # Continue
sleep 0.3
type_text "; typed before the close"
press alt+F4 # the window manager's
wait_for 10 "the end of the program" is_gone "$first_pid"
wait "$first_pid" || fail "the program left with $?"
game_pid=
grep -q "^; typed before the close" "$firmware" || fail "what was typed is gone"

for options in "--look classic --text large" "--look classic --text normal --theme amber" \
    "--look modern --text normal --theme lcd"; do
    rm -rf "$data"
    # shellcheck disable=SC2086
    start_game --windowed --width 1280 --height 800 $options
    # shellcheck disable=SC2086
    wait_to_show 1280 800 $options
    stop_game
done
rm -rf "$data"
start_game --look classic # and full screen, as a new player's settings say
wait_to_show 1440 900 --look classic
stop_game
echo "The window was sized, filled the screen, was left and found again, and was closed."
