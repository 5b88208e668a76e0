#!/usr/bin/env bash
# The smoke run passes without a display and leaves the player's files alone; with one reference
# broken it fails and says which. A picture is taken likewise, and says what of its scene it does not
# know.
#   smoke.sh GAME
set -euo pipefail
game=$1
. "$(dirname "$0")/common.sh"

ticket=2-04-checksum
lines=$work/lines
export TMPDIR=$work/temporary
mkdir "$TMPDIR"
unset DISPLAY WAYLAND_DISPLAY

"$game" --smoke 2>"$lines" || fail "the smoke run failed: $(cat "$lines")"
! grep -v '^smoke: .*ok' "$lines" || fail "not every line says ok"
grep -q "^smoke: $ticket reference: ok$" "$lines" || fail "$ticket was not checked"

"$game" --scene bench:passed:nonsense --closed 3 --capture "$work/picture.png" 2>"$lines"
[ "$(cat "$lines")" = "capture: unknown request nonsense" ] || fail "the scene's answer: $(cat "$lines")"
[ -s "$work/picture.png" ] || fail "there is no picture"
! "$game" --capture "$work/no/folder.png" 2>"$lines" || fail "a picture nowhere was no failure"
grep -q "^capture: cannot write" "$lines" || fail "no reason was given: $(cat "$lines")"
! "$game" --audio-render "$work/no/out.wav" 2>"$lines" || fail "music nowhere was no failure"
grep -q "^audio: cannot write" "$lines" || fail "nothing was said of the music: $(cat "$lines")"
[ -z "$(find "$XDG_DATA_HOME" "$TMPDIR" -mindepth 1)" ] || fail "files were left behind"

cp -r "$(dirname "$0")/../../content" "$work/content"
printf '       halt\n' >"$work/content/missions/reference/$ticket.lc1"
! VANTORKEST_CONTENT=$work/content "$game" --smoke 2>"$lines" ||
    fail "a broken reference was not noticed"
grep -q "^smoke: $ticket reference: FAILED, test 1 produces no output$" "$lines" ||
    fail "the broken reference was not named: $(cat "$lines")"
grep -q "^smoke: 41 tickets embedded, expected 42$" "$lines" || fail "the tickets were not counted"
echo "The smoke run passes and finds a broken reference, and pictures say what they lack."
