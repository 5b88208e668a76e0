# What the end-to-end runs share; sourced. They start the real program in a window of its own X server
# with an empty data folder, and press keys as a player does.

work=$(mktemp -d)
game_pid=
other_pid=
manager_pid=
server_pid=
finish() {
    local pid
    for pid in $game_pid $other_pid $manager_pid $server_pid; do kill -KILL "$pid" 2>/dev/null || true; done
    wait 2>/dev/null
    rm -rf "$work"
}
trap finish EXIT

# SDL never gives back what it has from the D-Bus library, which is no leak of the program's.
echo "leak:libdbus-1" >"$work/known_leaks"
export LSAN_OPTIONS=suppressions=$work/known_leaks:print_suppressions=0

export XDG_DATA_HOME=$work/data
data=$work/data/vantor-kest
mkdir -p "$XDG_DATA_HOME"
# A Windows program keeps its files in the user's folder of Wine, on the X server there is.
run=()
if [ "${game%.exe}" != "$game" ]; then
    run=(wine)
    data="$WINEPREFIX/drive_c/users/$(id -un)/AppData/Roaming/Vantor Kest"
    rm -rf "$data"
fi

fail() {
    echo "FAILED: $*" >&2
    [ -s "$work/errors" ] && sed 's/^/  the game said: /' "$work/errors" >&2
    exit 1
}

# wait_for SECONDS WHAT command...: until the command succeeds.
wait_for() {
    local tries=$(($1 * 20)) what=$2
    shift 2
    until "$@" >/dev/null 2>&1; do
        tries=$((tries - 1))
        [ "$tries" -gt 0 ] || fail "waited too long for $what"
        sleep 0.05
    done
}

# A server that starts over when its last client leaves refuses the one that comes meanwhile: never reset.
start_server() {
    [ "${#run[@]}" -eq 0 ] || return 0
    Xvfb -noreset -displayfd 3 -screen 0 1440x900x24 -nolisten tcp 3>"$work/display" >/dev/null 2>&1 &
    server_pid=$!
    wait_for 20 "the X server" test -s "$work/display"
    export DISPLAY=:$(cat "$work/display")
}

# A window manager, for runs that need full screen, minimising and several windows.
start_manager() {
    HOME=$work openbox >/dev/null 2>&1 &
    manager_pid=$!
    wait_for 10 "the window manager" sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q "window id"'
}

# open_game [arguments...]: and gives its window the keyboard. What it says goes through a pipe, so
# that a limit on its files does not silence it.
open_game() {
    "${run[@]}" "$game" "$@" 2> >(cat >"$work/errors") &
    game_pid=$!
    wait_for 20 "the window" xdotool search --onlyvisible --name '^Vantor Kest$'
    window=$(xdotool search --onlyvisible --name '^Vantor Kest$' | head -n 1)
    xdotool windowfocus --sync "$window"
    sleep 0.3
}

start_game() {
    open_game "$@"
    go_to_title
}

# Past the splash, and past the card that a new player meets; on the title Esc does nothing.
go_to_title() {
    local time
    for time in 1 2; do
        press Escape
        sleep 0.3
    done
}

press() { xdotool key --delay 20 "$@"; }
type_text() { xdotool type --delay 12 "$1"; }

# Ends the program as the system does, and waits until it has left with success.
stop_game() {
    if [ "${#run[@]}" -eq 0 ]; then kill -TERM "$game_pid"; else press alt+F4; fi
    wait_for 10 "the program's end" sh -c "! kill -0 $game_pid"
    wait "$game_pid" || fail "the program left with $?"
    game_pid=
}
