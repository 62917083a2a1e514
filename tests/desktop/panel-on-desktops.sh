#!/usr/bin/env bash
# The Join panel of the real program on a desktop, beside a window that is typed into, a native one or one on XWayland: no
# key is lost before, while and after it is shown, and none is an answer; a click gives it the keyboard, and leaving it or
# joining gives the keyboard back. It is clear of the top bar of GNOME Shell.
#   panel-on-desktops.sh openbox|sway|mutter|gnome-shell|kwin_wayland wayland|xcb BIN_FOLDER
# With a scale in percent and a number of outputs the panel is in the layers of the compositor: on the last output, the
# one in use, sharp, clear of a bar and above a full-screen window.
#   panel-on-desktops.sh sway|labwc|kwin_wayland wayland BIN_FOLDER PERCENT OUTPUTS
desktop=$1 platform=$2 BIN=$3 percent=${4:-} outputs=${5:-1} fills='' left=0
. "$(dirname "$0")/session.sh"
need "$desktop" xprop
[ "$desktop" = openbox ] || need Xwayland dbus-run-session
[ -z "$percent" ] || need waybar wlr-randr

screen ${percent:+-screen 0 2080x800x24 +extension GLX}
bus
start_openbox() { xset r off && window_manager && start "$run/started"; }
"start_$desktop"
enter_session

prepare_outputs() {
    local output shown scale=$((percent / 100)).$((percent % 100 / 10))
    fills=X11-$outputs left=$((1040 * (outputs - 1)))
    for output in $(seq "$outputs"); do
        if [ "$desktop" = kwin_wayland ]; then
            fills=X11-$((outputs - 1))
            await kscreen-doctor "output.$output.scale.$scale"
        else
            await wlr-randr --output "X11-$output" --scale "$scale"
        fi || fail "the outputs can be scaled"
    done
    # Nobody has placed the outputs' windows.
    shown=$(DISPLAY=$outer xwininfo -root -children | awk '/^ +0x/ && !/ 1x1[+]| 10x10[+]/ { print $1 }' | sort | tail -n 1)
    user windowmove "$shown" "$left" 0
    eval "$(user getwindowgeometry --shell "$shown")"
    right=$((left + WIDTH))
    printf '{ "height": 30 }' >"$run/bar"
    start waybar -c "$run/bar"
    await grep -q "Bar configured" "$run/log" || fail "there is a bar"
    user mousemove $((left + 260)) 500 sleep 0.3
    [ "$desktop" = labwc ] || user click 1 # There a click would open a menu.
}
[ -z "$percent" ] || prepare_outputs
terminal $fills
# mutter leaves some first windows on XWayland without the keyboard until they are clicked.
has_keyboard() { { [ -n "$percent" ] || user mousemove 200 500 click 1 sleep 0.3; } && last_saw +; }
await has_keyboard || fail "the terminal gets the keyboard"
[[ "$desktop$percent" != @(openbox|sway|kwin_wayland) ]] || export MIVORA_PLATFORM=xcb
record_links
used_before
start_program WAYLAND_DEBUG=1
gdbus wait --session --timeout 30 app.kelo.Mivora || fail "the program starts"

px() { echo $((($1 * ${percent:-100} + 50) / 100)); } # Pixels of so many units.
if [ -n "$percent" ]; then
    said() { grep -ac "$1" "$printed"; }
    panel() { [ "$(said get_layer_surface)" -gt "$(said 'zwlr_layer_surface_v1[@#][0-9]*.destroy')" ]; }
    geometry() { # Below the bar.
        await grep -aq "layer_surface.*ack_configure" "$printed"
        eval "$(sed -n 's/.*layer_surface.*set_size(\(.*\), \(.*\))/W=\1 H=\2/p' "$printed")"
        WIDTH=$(px W) HEIGHT=$(px H) Y=$(px 42)
        X=$((right - $(px 12) - WIDTH))
    }
else
    panel() { xdotool search --onlyvisible --class mivora; }
    geometry() { eval "$(xdotool getwindowgeometry --shell "$(panel)")"; }
fi
is_hidden() { ! panel; }
show() {
    event review Review 40
    await panel || fail "the panel is shown"
    geometry
}
can_be_focused() { [ -n "$percent" ] || xprop -id "$(panel)" _NET_WM_WINDOW_TYPE | grep -q NORMAL; }
has_focus() { [ "$(xdotool getwindowfocus)" = "$(panel)" ]; }
lacks_focus() { [ -n "$percent" ] && last_saw + || ! has_focus; }
move_to_panel() { # On the card, where there is no button; a second motion shows that the pointer isn't only passing.
    local x=$((X + WIDTH - $(px 100))) y=$((Y + HEIGHT - $(px 50)))
    user mousemove $((x - 30)) $((y - 40)) sleep 0.1 mousemove $x $y
    [ "$desktop" = openbox ] || await can_be_focused || fail "the compositor may focus the panel under the pointer"
}
click_panel() {
    move_to_panel
    user click 1
    case "$desktop $platform$percent" in
        "sway xcb") sleep 0.5 ;; # Nobody is told.
        kwin*[db]) await has_focus ;;
        *) await last_saw - ;;
    esac || fail "a click gives the keyboard"
}
leave_panel() {
    user mousemove $((left + 200)) 500
    [ "$desktop" != openbox ] || user click 1
    await lacks_focus || fail "leaving it gives the keyboard back"
}
expect_keyboard() { # WHEN: the terminal has it, and may not have been told that it had not
    [[ "$desktop $platform$percent" == @(sway\ xcb|kwin*[db]) ]] || await last_saw + || fail "$1, the keyboard goes back"
    user type --delay 40 "$1"
    expect_typed "$1"
}

: >"$run/typed"
until [ -e "$run/shown" ]; do user type --delay 40 0123456789 && printf 0123456789 >>"$run/sent"; done &
typing=$!
await grep -q 9 "$run/typed"
show
: >"$run/shown"
wait "$typing"
expect_typed "$(cat "$run/sent")"
[ -n "$percent" ] || [ "$((X + WIDTH)) $((Y - $(bar)))" = "1012 12" ] || fail "the panel is in the upper right corner"
answers_nothing() { # WHERE the pointer is
    user key Return key Escape type --delay 40 "$1"
    expect_typed $'\r\e'"$1"
    panel >/dev/null && [ ! -e "$run/opened" ] || fail "$1, a key typed elsewhere is no answer"
}
move_to_panel
answers_nothing "on it"
click_panel
leave_panel
expect_keyboard "left"
answers_nothing "beside it"
# KWin gives keys to windows that it manages, and some to XWayland.
[ "$desktop$percent" != kwin_wayland ] || { echo passed; exit; }
click_panel
user key Return
await was_opened https://zoom.us/j/1 || fail "Return joins"
await is_hidden || fail "joining hides the panel"
expect_keyboard "joined"
[ -z "$percent" ] || grep -aq "create_buffer(.*, $WIDTH, $HEIGHT," "$printed" || fail "it is drawn in the output's own pixels"
echo passed
