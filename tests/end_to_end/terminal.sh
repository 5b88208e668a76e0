#!/usr/bin/env bash
# The game in a text terminal: a new player solves 1-01 while the terminal changes its size, the keys
# that a terminal keeps for itself reach the bench, and every way out leaves the terminal as it was.
#   terminal.sh GAME LC1
set -euo pipefail
game=$1
lc1=$2
. "$(dirname "$0")/common.sh"
command -v tmux >/dev/null || { echo "skipped: tmux is not installed"; exit 0; }

ticket=1-01-carrier-check
firmware=$data/firmware/$ticket.lc1
socket=kest-$$
export LC_ALL=C.UTF-8
export ASAN_OPTIONS=handle_segv=0 # a crash that is asked for is none of the sanitizer's
trap 'tmux -L "$socket" kill-server 2>/dev/null || true; rm -rf "$work"' EXIT

in_tmux() { tmux -L "$socket" "$@"; }
shows() { in_tmux capture-pane -p -t 0 | grep -qF -- "$1"; }
see() { wait_for 10 "\"$1\" on the screen" shows "$1"; }
keys() { in_tmux send-keys -t 0 "$@"; }
type_line() { in_tmux send-keys -t 0 -l "$1"; keys Enter; }
saved() { grep -qF -- "$1" "$firmware" 2>/dev/null; }
ends_with() { [ "$(tail -n 1 "$firmware")" = "$1" ]; }
resize() { in_tmux resize-window -t 0 -x "$1" -y "$2"; }
left() { [ -s "$work/left" ]; }

# A shell in a terminal of its own, which writes down how the game has left it.
open_terminal() {
    cat >"$work/shell" <<END
stty -g >"$work/before"
"$game" --terminal $* 2>"$work/errors"
echo "code \$?" >"$work/code"
stty -g >"$work/after"
mv "$work/code" "$work/left"
exec sleep 1000
END
    rm -f "$work/left"
    in_tmux -f /dev/null new-session -d -x 80 -y 25 "exec sh '$work/shell'"
    in_tmux pipe-pane -t 0 "cat >>'$work/output'"
    see "Vantor Kest"
}
game_pid() { pgrep -n -f "^$game --terminal"; }

# close_terminal CODE: the game has left with the code, and the terminal is as it was before.
close_terminal() {
    wait_for 10 "the game's end" left
    [ "$(cat "$work/left")" = "code $1" ] || fail "it left with $(cat "$work/left"): $(cat "$work/errors")"
    cmp -s "$work/before" "$work/after" || fail "the terminal's settings are others"
    local state
    state=$(in_tmux display-message -p -t 0 '#{alternate_on} #{mouse_any_flag} #{cursor_flag} #{keypad_flag}')
    [ "$state" = "0 0 1 0" ] || fail "screen, mouse, cursor and keypad are left as $state"
    in_tmux kill-server
    # What tmux does not tell: each mode that was switched on is switched off again behind it.
    local mode last
    for mode in 1000 1002 1003 1004 1006 1049 2004; do
        last=$(grep -aoE "\[\?$mode[hl]" "$work/output" | tail -n 1) || true
        [ "${last%h}" = "$last" ] || fail "mode $mode is left on"
    done
    rm -f "$work/output"
}

open_terminal
keys Enter
see "TEXT MODE" # asked at the first start only
keys Enter
see "Continue"
keys Enter
see "FIRMWARE"
for byte in 55 AA 55; do type_line "tx \$$byte"; done
resize 160 50
see "NOTES"
for byte in AA 55 AA; do type_line "tx \$$byte"; done
resize 79 24
see "needs 80 columns and 25 rows"
resize 80 25
see "FIRMWARE"
in_tmux send-keys -t 0 -l "halt"
keys F8
see "Verify: 2 of 2 passed."
wait_for 5 "the closed ticket" grep -q '"solved": true' "$data/progress.json"
keys Escape

# Keys that end, stop or suspend other programs copy, save and undo here.
sleep 0.2
keys C-Home S-End C-c C-End Enter C-v
see "  ; The card runs"
keys C-s
wait_for 5 "the copied line" ends_with "; The card runs one line per tick."
keys C-z C-z C-s
wait_for 5 "the undone line" ends_with halt
"$lc1" verify "$ticket" "$firmware" >/dev/null || fail "the saved firmware does not pass"
kill -TERM "$(game_pid)"
close_terminal 0

# Every other way out. A crash cannot be answered, so what was typed has to be kept by then.
for way in INT:0 HUP:0 TERM:0 SEGV:139 ABRT:134; do
    signal=${way%%:*}
    open_terminal
    keys Enter
    see "Continue"
    keys Enter
    see "FIRMWARE"
    type_line "; before $signal"
    see "; before $signal"
    [ "${way#*:}" = 0 ] || wait_for 10 "the text to be saved by itself" saved "; before $signal"
    kill -"$signal" "$(game_pid)"
    close_terminal "${way#*:}"
    saved "; before $signal" || fail "what was typed before $signal is gone"
done

# Whoever cannot have a terminal is told so.
! "$game" --terminal </dev/null >"$work/out" 2>&1 || fail "no terminal, and it started"
grep -q "terminal" "$work/out" || fail "no sentence: $(cat "$work/out")"
echo "1-01 was solved in a terminal, and every way out left the terminal as it was."
