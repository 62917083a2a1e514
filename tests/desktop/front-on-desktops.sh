#!/usr/bin/env bash
# What the user asks for comes to the front on mutter, which lets no window do so by itself: the settings, and then the
# browser that Join opens, a Wayland program that runs already.
#   front-on-desktops.sh BIN_FOLDER
BIN=$1
. "$(dirname "$0")/session.sh"
need mutter Xwayland dbus-run-session xprop

screen
bus
start_mutter
enter_session
mkfifo "$run/tokens"
exec 6<>"$run/tokens"
QT_QPA_PLATFORM=wayland "$BIN/key-log" <&6 >>"$run/typed" 2>>"$run/log" &
processes+=($!)
last_saw() { [ "$(tr -cd '+-' <"$run/typed" | tail -c 1)" = "$1" ]; } # +|-
await last_saw + || fail "the browser gets the keyboard"
record_links
printf 'printf "%%s\\n" "$XDG_ACTIVATION_TOKEN" >%s/tokens\n' "$run" >>"$run/open"
echo StartupNotify=true >>"$XDG_DATA_HOME/applications/recorder.desktop"
used_before
start "$BIN/mivora"
gdbus wait --session --timeout 30 app.kelo.Mivora || fail "the program starts"

is_active() { xdotool getactivewindow getwindowname | grep -q "^$1"; }
for opening in first second; do
    user mousemove 200 500 click 1
    user type --delay 40 "typed before the $opening opening"
    await last_saw + || fail "typing takes the keyboard"
    mivora settings general
    await is_active General || fail "the settings come to the front at the $opening opening"
    [ "$opening" = second ] || user key ctrl+w
done
event review Review 40
await xdotool search --onlyvisible --name '^Mivora$' || fail "the panel is shown"
eval "$(xdotool getwindowgeometry --shell "$(xdotool search --onlyvisible --name '^Mivora$')")"
user mousemove $((X + 80)) $((Y + 107)) sleep 0.3 mousemove_relative 2 1 sleep 0.3 click 1
await was_opened https://zoom.us/j/1 || fail "Join opens the link"
await last_saw + || fail "the browser comes to the front with $(cat "$run/opened")"
echo passed
