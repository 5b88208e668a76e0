#!/usr/bin/env bash
# The Windows programs do what the machine's own do: the smoke run, pictures, songs, names of any
# language; and a crash leaves a report.
#   windows.sh GAME OWN_LC1
set -euo pipefail
game=$1
bin=$(dirname "$1")
own=$(dirname "$2")
root=$(cd "$(dirname "$0")/../.." && pwd)
. "$(dirname "$0")/common.sh"

# The path as Windows programs know it.
windows_path() { printf 'Z:%s' "${1//\//\\}"; }

lines=$work/lines
wine "$game" --smoke >"$lines" 2>&1 || fail "the smoke run failed: $(cat "$lines")"
[ -s "$lines" ] || fail "the smoke run said nothing"
! tr -d '\r' <"$lines" | grep -v '^smoke: .*ok' || fail "not every line says ok"
[ ! -e "$data" ] || fail "the smoke run touched the player's folder"

wine "$game" --fonts | tr -d '\r' >"$lines"
"$own/vantor-kest" --fonts | cmp -s - "$lines" || fail "the fonts differ: $(cat "$lines")"

# Pictures of what the recorded texts do not hold: the pixels of both looks, in a folder whose name
# only Unicode can write.
folder=$work/Zoë-线路
mkdir "$folder"
for look in classic modern; do
    options=(--scene bench:passed --look "$look" --width 1280 --height 800)
    wine "$game" "${options[@]}" --capture "$(windows_path "$folder/windows.png")"
    "$own/vantor-kest" "${options[@]}" --capture "$folder/own.png"
    cmp "$folder/windows.png" "$folder/own.png" || fail "the $look look differs in its pixels"
done

cp "$root/tests/solutions/1-01-carrier-check/plain.lc1" "$folder/ça va.lc1"
wine "$bin/lc1.exe" verify 1-01 "$(windows_path "$folder/ça va.lc1")" | tr -d '\r' >"$lines" ||
    fail "lc1 does not pass: $(cat "$lines")"
"$own/lc1" verify 1-01 "$folder/ça va.lc1" | cmp -s - "$lines" || fail "lc1 says something else"

twenty_seconds=960000
for song in mainloop pipeline autoexec finale bluenote holdtune warmboot idletime; do
    "$own/hum" render "$song" "$work/own.wav" --samples "$twenty_seconds" &
    wine "$bin/hum.exe" render "$song" "$(windows_path "$work/windows.wav")" \
        --samples "$twenty_seconds" || fail "$song was not rendered"
    wait $!
    [ "$(stat -c %s "$work/own.wav")" -gt 3800000 ] || fail "$song is too short"
    cmp "$work/own.wav" "$work/windows.wav" || fail "$song sounds different"
done

report=$folder/crash-report.txt
for way in write:touched abort:"gave up" deep:"stack ran out"; do
    rm -f "$report"
    ! wine "$bin/crash_probe.exe" "$(windows_path "$folder")" "${way%%:*}" 2>/dev/null ||
        fail "the probe did not crash by ${way%%:*}"
    grep -q "^What happened: .*${way#*:}" "$report" || fail "no report of ${way%%:*}"
    grep -q "^Where: .* + [0-9a-f]*" "$report" || fail "the report of ${way%%:*} has no place"
done
echo "The Windows programs do what the machine's own do."
