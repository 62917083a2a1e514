#!/usr/bin/env bash
# What the user asks for comes to the front where no window may do so by itself: the settings, and then the browser that
# Join opens, a Wayland program that runs already.
#   front-on-desktops.sh mutter|gnome-shell|kwin_wayland|sway|labwc BIN_FOLDER
desktop=$1 BIN=$2 platform=wayland
. "$(dirname "$0")/session.sh"
need "$desktop" Xwayland dbus-run-session

screen
bus
"start_$desktop"
enter_session
tokens=$run/tokens
mkfifo "$tokens"
exec 6<>"$tokens"
terminal
await last_saw + || fail "the browser gets the keyboard"
record_links
printf 'printf "%%s\\n" "$XDG_ACTIVATION_TOKEN" >%s/tokens\n' "$run" >>"$run/open"
echo StartupNotify=true >>"$XDG_DATA_HOME/applications/recorder.desktop"
used_before
start_program WAYLAND_DEBUG=1
gdbus wait --session --timeout 30 app.kelo.Mivora || fail "the program starts"

for opening in first second; do
    user mousemove 200 500 click 1
    user type --delay 40 "typed before the $opening opening"
    await last_saw + || fail "typing takes the keyboard"
    mivora settings general
    await last_saw - || fail "the settings come to the front at the $opening opening"
    [ "$opening" = second ] || user key ctrl+w
done
event review Review 40
# In layers it gets the pointer, once that moves there.
is_shown() {
    user mousemove 655 $((118 + $(bar))) mousemove_relative 1 1
    sed -n '/get_layer_surface/,$p' "$printed" | grep -aq "pointer.*enter(" || xdotool search --onlyvisible --name "^Mivora\$"
}
await is_shown || fail "the panel is shown"
: >"$printed"
user sleep 0.3 mousemove_relative 2 1 sleep 0.3 mousedown 1
[[ "$desktop" == @(mutter|gnome-shell) ]] || await grep -aq "activation_token_v1.*done(" "$printed" || fail "the press gets a token"
user mouseup 1
await was_opened https://zoom.us/j/1 || fail "Join opens the link"
await last_saw + || fail "the browser comes to the front with $(cat "$run/opened")"
echo passed
