#!/usr/bin/env bash
# What a player types arrives on the keyboards of the world: dead keys, a layout without Latin
# letters, on which shortcuts go by the place of the letter, AltGr, and keys that are held.
#   keyboard.sh GAME
set -euo pipefail
game=$1
. "$(dirname "$0")/common.sh"

firmware=$data/firmware/1-01-carrier-check.lc1
export LC_ALL=C.UTF-8 # whose dead keys the X library knows

# Keys by their places on the board, whatever the layout says.
key_q=24 key_a=38 key_s=39 key_f=41 key_g=42 key_h=43 control=37 alt_graph=108
layout() {
    setxkbmap "$@"
    sleep 0.3
}
press_with() { xdotool keydown "$1" key "$2" keyup "$1"; }
saved() { [ "$(head -n "$1" "$firmware" 2>/dev/null | tail -n 1)" = "$2" ]; }
save() {
    press_with "$control" "$key_s"
    wait_for 5 "line $1 to be saved as $2" saved "$1" "$2"
}

start_server
layout us -variant intl
start_game --windowed
press c # Continue
sleep 0.3
# The coach has written three lines.
press dead_acute e dead_diaeresis u Return
save 4 "éü"
layout ru
press "$key_f" "$key_g" "$key_h" Return
save 5 "апр"
layout de
press_with "$alt_graph" "$key_q"
press "$key_q" Return
save 6 "@q"
layout us
xdotool keydown "$key_a"
sleep 1.2 # the server repeats it after 0.6
xdotool keyup "$key_a"
press Return
press_with "$control" "$key_s"
wait_for 5 "the letter that was held" grep -q '^aaa' "$firmware"
stop_game
echo "Dead keys, Cyrillic, AltGr and held keys arrive."
