#!/usr/bin/env bash
# A new player's way through the screens: splash, the card of the display, title, options, the first
# ticket, the board with a locked ticket, the bench, and back and out.
#   way_around.sh GAME
set -euo pipefail
game=$1
. "$(dirname "$0")/common.sh"

size=(--width 1280 --height 800)

# shows SCENE [options...]: whether the window shows what a picture of the scene shows.
shows() {
    "$game" --scene "$1" "${size[@]}" "${@:2}" --capture "$work/wanted.png"
    import -silent -window "$window" "$work/seen.png"
    [ "$(compare -metric AE "$work/wanted.png" "$work/seen.png" null: 2>&1)" = 0 ]
}
wait_to_show() { wait_for 15 "the picture of $1" shows "$@"; }

kept() { wait_for 5 "$2 in $1" grep -q "$2" "$data/$1"; }
is_gone() { ! kill -0 "$1" 2>/dev/null; }

start_server
xdotool mousemove 1439 899 # away from what has hints

open_game --windowed "${size[@]}"
wait_to_show splash --fresh --look modern
press space
wait_to_show title:overlay-textmode --fresh --look modern
press k # the other look
kept settings.json '"look": "classic"'
press Return
wait_to_show title --fresh --look classic
press b s r # what a new player is not offered yet
wait_to_show title --fresh --look classic
press o
sleep 0.5
press a # amber
kept settings.json '"theme": "amber"'
press m
kept settings.json '"music_on": false'
press m
kept settings.json '"music_on": true'
press Escape Home # the highlight stood on the options
wait_to_show title --fresh --look classic --theme amber
stop_game

open_game --windowed "${size[@]}"
press space # the card does not come again
wait_to_show title --fresh --look classic --theme amber
press c
sleep 0.3
for byte in 55 AA 55 AA 55 AA; do
    type_text "tx \$$byte"
    press Return
done
type_text "halt"
press F8
kept progress.json '"solved": true'
sleep 1
press b
sleep 0.5
press Return # what the shift is about
press Down Down Down
wait_to_show board:locked --closed 1 --look classic --theme amber
press Return # is refused
press Up Up Return
kept progress.json '"current": "1-02-loopback"'
sleep 0.3
press alt+b
sleep 0.3
press Escape t
wait_to_show title:1-02-loopback --closed 1 --look classic --theme amber
press alt+x
sleep 0.2
press Escape Home # stays
wait_to_show title:1-02-loopback --closed 1 --look classic --theme amber
press alt+x
sleep 0.2
press Return
wait_for 10 "the end of the program" is_gone "$game_pid"
wait "$game_pid" || fail "the program left with $?"
game_pid=
echo "A new player found the way through every screen and out."
