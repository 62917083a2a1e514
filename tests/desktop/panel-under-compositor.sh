#!/usr/bin/env bash
# The Join panel on XWayland under sway or mutter, beside a window that is typed into, a native one or one on XWayland:
# no key is lost before, while and after the panel is shown; a click gives it the keyboard, and leaving or hiding it
# gives the keyboard back.
#   panel-under-compositor.sh sway|mutter wayland|xcb BIN_FOLDER
# Exits with 77 where the compositor or a tool is missing. sway doesn't run as root: then all runs as nobody.
set -euo pipefail
compositor=$1
terminal=$2
bin=$(cd "$3" && pwd)
for program in "$compositor" Xwayland Xvfb xdotool setpriv dbus-run-session; do
    command -v "$program" >/dev/null || exit 77
done

run=$(mktemp -d)
as_user=(env)
if [ "$(id -u)" -eq 0 ]; then
    chown nobody "$run"
    as_user=(setpriv --reuid=nobody --regid=nogroup --clear-groups env)
    "${as_user[@]}" test -x "$bin/panel-puppet" || exit 77
fi
user=("${as_user[@]}" HOME="$run" XDG_RUNTIME_DIR="$run" DBUS_SESSION_BUS_ADDRESS=disabled:)
processes=()
finish() {
    for process in "${processes[@]}"; do kill "$process" 2>/dev/null || true; done
    wait 2>/dev/null || true
    rm -rf "$run"
}
trap finish EXIT

# await SECONDS COMMAND…: until the command succeeds.
await() {
    local end=$((SECONDS + $1))
    shift
    until "$@" 2>/dev/null; do
        [ "$SECONDS" -lt "$end" ] || return 1
        sleep 0.05
    done
}
fail() {
    echo "FAILED: $1" >&2
    printf 'terminal: %s\npanel: %s\n' "$(cat "$run/terminal")" "$(tr '\n' ';' <"$run/panel")" >&2
    exit 1
}
expect() { # FILE TEXT WHAT: the file holds the text, and then is empty
    # How often the terminal's window saw the keyboard go and come is the compositor's affair.
    await 10 bash -c '[ "$(tr "\n" ";" <"$1" | tr -d "+-")" = "$2" ]' _ "$run/$1" "$2" || fail "$3"
    : >"$run/$1"
}

# The outer X server stands for the screen, keyboard and mouse.
exec 8<> <(:)
Xvfb -displayfd 8 -screen 0 1024x768x24 -nolisten tcp >/dev/null 2>&1 &
processes+=($!)
read -r -t 20 outer <&8
user_acts() { DISPLAY=":$outer" xdotool "$@"; }

cat >"$run/started" <<EOF
#!/bin/sh
echo "\$DISPLAY \$WAYLAND_DISPLAY \${XAUTHORITY:-}" >"$run/session.new"
mv "$run/session.new" "$run/session"
exec sleep 120
EOF
chmod 755 "$run/started"
# No key repeats on its own, however slow the machine is.
start_sway() {
    printf '%s\n' 'xwayland enable' 'default_border none' 'input * repeat_rate 0' "exec $run/started" >"$run/config"
    chmod 644 "$run/config"
    exec "${user[@]}" DISPLAY=":$outer" WLR_BACKENDS=x11 WLR_RENDERER=pixman WLR_X11_OUTPUTS=1 sway -c "$run/config"
}
start_mutter() {
    local settings=$run/.config/glib-2.0/settings
    "${user[@]}" mkdir -p "$settings"
    printf '[org/gnome/desktop/peripherals/keyboard]\nrepeat=false\n' >"$settings/keyfile"
    chmod 644 "$settings/keyfile"
    exec "${user[@]}" DISPLAY=":$outer" GSETTINGS_BACKEND=keyfile MUTTER_DEBUG_DUMMY_MODE_SPECS=1024x768 \
        dbus-run-session -- mutter --wayland --nested -- "$run/started"
}
"start_$compositor" >/dev/null 2>&1 &
processes+=($!)
await 30 test -s "$run/session" || { echo "$compositor doesn't start here" >&2; exit 77; }
read -r inner wayland authority <"$run/session"
session=("${user[@]}" DISPLAY="$inner" WAYLAND_DISPLAY="$wayland" XAUTHORITY="$authority")

: >"$run/panel"
"${session[@]}" QT_QPA_PLATFORM="$terminal" "$bin/key-log" >>"$run/terminal" 2>/dev/null &
processes+=($!)
await 10 grep -q "+" "$run/terminal" || fail "the terminal gets the keyboard"
mkfifo "$run/commands"
exec 9<>"$run/commands"
"${session[@]}" QT_QPA_PLATFORM=xcb "$bin/panel-puppet" <&9 >>"$run/panel" 2>/dev/null &
processes+=($!)

user_acts mousemove 200 500 click 1
user_acts type --delay 40 "typed before, while and after the panel is shown" &
typing=$!
sleep 0.5
echo show >&9
await 10 grep -q shown "$run/panel" || fail "the panel is shown"
kill -0 "$typing" 2>/dev/null || fail "the typing must outlast the showing"
wait "$typing"
expect terminal "typed before, while and after the panel is shown" "no key is lost"

read -r _ x y width height <"$run/panel"
: >"$run/panel"
[ "$((x + width))" -eq 1012 ] && [ "$y" -eq 12 ] || fail "the panel is in the upper right corner"
enter_panel() {
    user_acts mousemove $((x + width - 130)) $((y + height - 90))
    sleep 0.1
    user_acts mousemove $((x + width - 90 - $1)) $((y + height - 50))
    sleep 0.2
}
for round in 1 2; do
    enter_panel $((round * 10))
    user_acts click 1
    sleep 0.3
    user_acts key s key Return key Escape
    expect panel "action snooze review;action join review;action dismiss review;" "keys reach the panel after a click"
    user_acts mousemove 200 500
    sleep 0.3
    user_acts type --delay 40 "left$round"
    expect terminal "left$round" "leaving the panel gives the keyboard back"
done

enter_panel 40
user_acts click 1
sleep 0.3
echo hide >&9
expect panel "hidden;" "the panel hides"
sleep 0.3
user_acts type --delay 40 "hidden"
expect terminal "hidden" "hiding the panel gives the keyboard back"

echo show >&9
await 10 grep -q shown "$run/panel" || fail "the panel is shown again"
user_acts mousemove 200 500
enter_panel 50
user_acts type --delay 40 "hover"
expect terminal "hover" "the pointer alone doesn't move the keyboard"
echo "passed"
