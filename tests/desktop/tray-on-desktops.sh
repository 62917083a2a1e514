#!/usr/bin/env bash
# The real program in the status area of a desktop: chooses the first meeting in its menu with the pointer and looks
# what was opened.
#   tray-on-desktops.sh indicator|waybar BIN_FOLDER
host_name=$1 BIN=$(realpath "$2")
. "$(dirname "$0")/session.sh"
need xprop

# Where the item and the first entry of its menu are on the screen.
bring_up_indicator() {
    need openbox xfce4-panel
    indicator=$(find /usr/lib /usr/libexec -name ayatana-indicator-application-service 2>/dev/null | head -1)
    [ -n "$indicator" ] || exit 77
    window_manager
    xfce_panel indicator
    start "$indicator"
    icon="40 14" entry="60 44"
}
bring_up_waybar() {
    need sway waybar Xwayland
    echo 'window#waybar { background: #f4f4f4; color: #202020; }' >"$run/waybar.css"
    echo '{ "height": 28, "modules-left": ["tray"], "tray": { "icon-size": 22, "spacing": 8 } }' >"$run/waybar.json"
    start_sway
    enter_session
    start waybar -c "$run/waybar.json" -s "$run/waybar.css"
    icon="20 14" entry="80 34"
}

screen
bus
"bring_up_$host_name"
patience=60 await has_host || fail "a status area appears"

record_links
used_before
event review "Design review" 1500 https://zoom.us/j/123456789
start "$BIN/mivora"
await tells 'Design review' || fail "it shows the meeting"
chooses_the_first() { # The first opening of some hosts only asks for the menu.
    user mousemove $icon sleep 0.3 click 1
    sleep 1
    user mousemove $entry sleep 0.3 mousemove_relative 4 2 sleep 0.3 click 1
    patience=3 await was_opened https://zoom.us/j/123456789 || { user key Escape; false; }
}
await chooses_the_first || fail "the chosen meeting is opened"
echo passed
