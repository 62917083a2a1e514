#!/usr/bin/env bash
# The Join panel of the real program under openbox, sway, mutter or KWin, beside a window that is typed into, a native
# one or one on XWayland: no key is lost before, while and after the panel is shown, and none of them is an answer; a
# click gives it the keyboard, and leaving it or joining gives the keyboard back.
#   panel-on-desktops.sh openbox|sway|mutter|kwin_wayland wayland|xcb BIN_FOLDER
desktop=$1 terminal=$2 BIN=$3
. "$(dirname "$0")/session.sh"
need "$desktop" xprop
[ "$desktop" = openbox ] || need Xwayland dbus-run-session

screen
bus
start_openbox() {
    xset r off
    window_manager
    start "$run/started"
}
"start_$desktop"
enter_session

QT_QPA_PLATFORM=$terminal "$BIN/key-log" >>"$run/typed" 2>>"$run/log" &
processes+=($!)
# mutter leaves some first windows on XWayland without the keyboard until they are clicked.
has_keyboard() { user mousemove 200 500 click 1 sleep 0.3 && grep -q "+" "$run/typed"; }
await has_keyboard || fail "the terminal gets the keyboard"
is_not_told() { [[ "$desktop $terminal" == @(sway\ xcb|kwin*) ]]; } # Of the keyboard that the panel has.
last_saw() { # +|-
    [ "$(tr -cd '+-' <"$run/typed" | tail -c 1)" = "$1" ]
}
typed() { # How often its window saw the keyboard go and come is the compositor's affair.
    [ "$(tr -d '+-' <"$run/typed")" = "$1" ]
}
expect_typed() { # TEXT
    await typed "$1" || fail "no key is lost: $(cat "$run/typed")"
    : >"$run/typed"
}
export MIVORA_PLATFORM=xcb
record_links
used_before
start "$BIN/mivora"
gdbus wait --session --timeout 30 app.kelo.Mivora || fail "the program starts"

panel() { xdotool search --onlyvisible --class mivora; }
is_hidden() { ! panel; }
show() {
    event review Review 40
    await panel || fail "the panel is shown"
    eval "$(xdotool getwindowgeometry --shell "$(panel)")"
}
can_be_focused() { xprop -id "$(panel)" _NET_WM_WINDOW_TYPE | grep -q NORMAL; }
has_focus() { [ "$(xdotool getwindowfocus)" = "$(panel)" ]; }
lacks_focus() { ! has_focus; }
move_to_panel() { # On the card, where there is no button; a second motion shows that the pointer isn't only passing.
    user mousemove $((X + WIDTH - 130)) $((Y + HEIGHT - 90)) sleep 0.1 mousemove $((X + WIDTH - 100)) $((Y + HEIGHT - 50))
    [ "$desktop" = openbox ] || await can_be_focused || fail "the compositor may focus the panel under the pointer"
}
click_panel() {
    move_to_panel
    user click 1
    case "$desktop $terminal" in
        "sway xcb") sleep 0.5 ;; # Nobody is told.
        kwin*) await has_focus ;;
        *) await last_saw - ;;
    esac || fail "a click gives the keyboard"
}
leave_panel() {
    user mousemove 200 500
    [ "$desktop" != openbox ] || user click 1
    await lacks_focus || fail "leaving it gives the keyboard back"
}
expect_keyboard() { # WHEN: the terminal has it
    is_not_told || await last_saw + || fail "$1, the keyboard goes back"
    user type --delay 40 "$1"
    expect_typed "$1"
}

until [ -e "$run/shown" ]; do user type --delay 40 0123456789 && printf 0123456789 >>"$run/sent"; done &
typing=$!
await grep -q 9 "$run/typed"
show
: >"$run/shown"
wait "$typing"
expect_typed "$(cat "$run/sent")"
[ "$((X + WIDTH)) $Y" = "1012 12" ] || fail "the panel is in the upper right corner"
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
[ "$desktop" != kwin_wayland ] || { echo passed; exit; }
click_panel
user key Return
await was_opened https://zoom.us/j/1 || fail "Return joins"
await is_hidden || fail "joining hides the panel"
expect_keyboard "joined"
echo passed
