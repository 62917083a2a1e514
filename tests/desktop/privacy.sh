#!/usr/bin/env bash
# Nothing about meetings is stored: after the program was used, no file of the home but the calendars themselves knows
# a title or a link.
#   privacy.sh SCRIPTS_FOLDER PROGRAM
# Exits with 77 where a program of the virtual desktop is missing.
set -euo pipefail
scripts=$1 program=$2
for needed in Xvfb xfwm4 xfce4-panel scrot hsetroot xdotool xprop; do
    command -v "$needed" >/dev/null || exit 77
done
home=$(mktemp -d)
trap 'rm -rf "$home" "$home-output"' EXIT
mkdir "$home-output"
export LC_ALL=C.UTF-8

# Everything that a user can do with a meeting, on the command line and by way of the desktop.
use() {
    "$1" >/dev/null 2>&1 &
    local mivora=$!
    # Done when the running program shows its panel; the agenda alone is printed without one, too.
    until "$1" snooze 2>/dev/null; do
        kill -0 "$mivora"
        sleep 0.5
    done
    "$1" agenda --json --follow >/dev/null 2>&1 &
    local follower=$!
    trap "kill $follower 2>/dev/null || true" EXIT
    "$1" copy
    "$1" settings calendars
    "$1" defaults write remindWithoutLink true
    "$1" defaults write titleWidth 40
    xdotool mousemove 1264 15 click 1
    sleep 1
    xdotool key Escape
    "$1" join
    sleep 1
    kill "$follower"
    "$1" quit
    wait "$mivora"
}
export -f use

"$scripts/demo-home" "$program" "$home"
. "$home/environment"
timeout 100 "$scripts/demo-desktop" "$home-output/messages" bash -euc 'use "$1"' _ "$program"
[ -s "$home/joined" ] || { echo "FAILED: nothing was joined" >&2; exit 1; }

secrets=("Stand-up" "Design review" "Release planning" "Lunch with Sam" "Choir rehearsal" "abc-defg-hij" "81234567890"
    "northwind.example" "meetup-join")
where() { grep -rlaF "${secrets[@]/#/-e}" "$home" | sed "s|^$home/||" | sort; }
# The demo's own notes are what was opened: made by the browser's stand-in.
found=$(where | grep -v -e '^calendars/' -e '^joined$' || true)
[ "$(where | grep -c '^calendars/')" -gt 5 ] || { echo "FAILED: the search finds nothing at all" >&2; exit 1; }
[ -z "$found" ] || { printf 'FAILED: these files know of meetings:\n%s\n' "$found" >&2; exit 1; }
echo "passed; searched $(find "$home" -type f | wc -l) files"
