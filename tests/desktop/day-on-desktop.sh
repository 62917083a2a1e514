#!/usr/bin/env bash
# A day of the real program on a desktop with a window manager, a status area and a terminal: the first start by the
# keyboard, programs around it that hang, the end. And nothing that is stored knows of a meeting then.
#   day-on-desktop.sh BIN_FOLDER
BIN=$(realpath "$1")
. "$(dirname "$0")/session.sh"
need openbox xfce4-panel xterm xprop python3

shows_title() { property app.kelo.Mivora /StatusNotifierItem org.kde.StatusNotifierItem Title | grep -q "$1"; }
has_item() { has_host && [ "$(watcher RegisteredStatusNotifierItems | grep -o "'[^']*'" | wc -l)" -eq 1 ]; }
has_windows() { [ "$(xdotool search --onlyvisible --class mivora 2>/dev/null | wc -l)" -eq "$1" ]; }
is_active() { [ "$(xdotool getactivewindow getwindowpid)" = "$program" ]; }
is_completed() { [ "$(setting hasCompletedOnboarding)" = true ]; }
setting() { mivora defaults read "$1" 2>/dev/null; }
soon() { timeout 5 "$BIN/mivora" "$@" >/dev/null; } # Sooner than a call on the bus is given up.

screen
bus
window_manager
xfce_panel systray
patience=60 await has_host || fail "a status area appears"
start xterm -T terminal -geometry 60x12+80+320 -e sh -c "cat >>'$run/typed'"
await sh -c 'xdotool getactivewindow getwindowname | grep -q terminal' || fail "the terminal has the keyboard"
event review "Design review" 1500 https://zoom.us/j/81234567890

case="first start"
start_program
await is_active || fail "the walkthrough has the keyboard"
shows_title "Design review" && fail "it may not read calendars yet"
xdotool key Return key Tab key space
await shows_title "Design review · 2" || fail "the countdown is shown once calendars may be read"
has_windows 1 || fail "the walkthrough goes on"
xdotool key Return key Return
await has_windows 0 || fail "the walkthrough ends"
await is_completed || fail "it was completed"
[ ! -s "$run/typed" ] || fail "the keys were the walkthrough's alone"
quit
start_program
await shows_title "Design review" || fail "it starts again"

case="frozen host"
start sh -c "exec '$BIN/mivora' events --json >'$run/events'"
kill -STOP "$host"
for width in 5 6 7 8 9 10; do mivora defaults write titleWidth "$width"; done
await shows_title "Design re… · " || fail "the title follows the settings"
soon agenda || fail "it answers"
quit
start_program
await tells "Design review" || fail "it starts all the same"
kill -CONT "$host"
await has_item || fail "the item is shown at last"

case="hanging services"
quit
for name in org.freedesktop.portal.Desktop org.freedesktop.Notifications; do
    start /usr/bin/python3 -m dbusmock "$name" / "$name"
    await gdbus introspect --session --dest "$name" --object-path / || fail "$name appears"
    kill -STOP $!
done
start sh -c "exec dbus-monitor --session \"destination='org.freedesktop.portal.Desktop'\" >'$run/asked'"
await grep -q NameAcquired "$run/asked" || fail "calls of the portal are seen"
start_program
patience=10 await tells "Design review" || fail "it starts"
await grep -q "^method call" "$run/asked" || fail "it asks"
grep -m1 "^method call" "$run/asked" | grep -q member=Register || fail "it says who it is before it asks"
event standup "Stand-up" 40
await has_windows 1 || fail "the panel is shown"
await grep -q '^{"event":"MeetingDue","meeting":{.*"Stand-up"' "$run/events" || fail "scripts are told"
soon snooze || fail "it obeys"
await has_windows 0 || fail "the panel goes"

case="frozen program"
kill -STOP "$program"
for command in join ""; do
    soon $command 2>"$run/errors" && fail "mivora $command fails"
    grep -q "not answer" "$run/errors" || fail "mivora $command says why"
done
kill -CONT "$program"

case="secret address"
quit
start_program -u MIVORA_EDS
await soon settings || fail "it starts"
env -u MIVORA_EDS "$BIN/mivora" calendars add webcal://127.0.0.1:9/hush-hush >>"$printed" 2>&1 && fail "nobody is there"

case=end
quit
mivora join 2>"$run/errors" && fail "mivora join fails"
[ "$(wc -l <"$run/errors")" -eq 1 ] || fail "mivora join says so in a line"

case=privacy
find "$home" -path "$home/calendars" -prune -o -path "$home/*/evolution" -prune -o -type f -print0 >"$run/stored"
[ -s "$run/stored" ] || fail "something is stored"
found=$(xargs -0 grep -laF -e "Design review" -e "Stand-up" -e 81234567890 -e hush-hush <"$run/stored" || true)
[ -z "$found" ] || fail "these files know of meetings: $found"
grep -q hush-hush "$printed" && fail "the address is in the log"
echo passed
