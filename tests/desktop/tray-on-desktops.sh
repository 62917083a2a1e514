#!/usr/bin/env bash
# Runs Mivora in the status area of a desktop: makes pictures of its item at rest, urgent and with its menu open, chooses
# the first meeting with the pointer and looks what was opened. To be run for all of them before a release, and looked at.
#   tray-on-desktops.sh xfce|indicator|mate|waybar|gnome|plasma light|dark BIN_FOLDER OUTPUT_FOLDER
# Packages beyond those of the tests: mate-panel mate-indicator-applet; gnome-shell gnome-shell-extension-appindicator
# gjs libgl1-mesa-dri python3-dbusmock and the gir1.2 packages that gnome-shell recommends; plasma-workspace
# plasma-desktop plasma-pa kwin-x11 kded5 qml-module-org-kde-kitemmodels qml-module-qt-labs-platform.
desktop=$1 scheme=$2 BIN=$(realpath "$3") output=$(realpath -m "$4")
[ "$(id -u)" -ne 0 ] || install -d -o nobody "$output"
. "$(dirname "$0")/session.sh"
need import xprop
mkdir -p "$output"
case=$desktop-$scheme
is_dark=$([ "$scheme" = dark ] && echo true || echo false)
settings() { # SCHEMA KEY VALUE…
    while [ $# -gt 0 ]; do
        printf '[%s]\n%s=%s\n' "$1" "$2" "$3" >>"$XDG_CONFIG_HOME/glib-2.0/settings/keyfile"
        shift 3
    done
}
mkdir -p "$XDG_CONFIG_HOME/gtk-3.0"
printf '[Settings]\ngtk-application-prefer-dark-theme=%s\n' "$is_dark" >"$XDG_CONFIG_HOME/gtk-3.0/settings.ini"

# Where the item and the first entry of its menu are on the screen.
icon="20 14" entry="60 44"
bring_up_xfce() {
    need openbox xfce4-panel
    window_manager
    xfce_panel systray "$is_dark"
    icon="16 14"
}
bring_up_indicator() {
    need openbox xfce4-panel
    indicator=$(find /usr/lib /usr/libexec -name ayatana-indicator-application-service 2>/dev/null | head -1)
    [ -n "$indicator" ] || exit 77
    window_manager
    xfce_panel indicator "$is_dark"
    start "$indicator"
    icon="40 14"
}
bring_up_mate() {
    need mate-panel openbox
    # As MATE's settings daemon has it: without, the panel's items are buttons without pictures.
    echo 'gtk-button-images=true' >>"$XDG_CONFIG_HOME/gtk-3.0/settings.ini"
    settings org/mate/panel/general object-id-list "['notification-area']" \
        org/mate/panel/general toplevel-id-list "['top']" \
        org/mate/panel/toplevels/top size 28 \
        org/mate/panel/toplevels/top orientation "'top'" \
        org/mate/panel/objects/notification-area applet-iid "'NotificationAreaAppletFactory::NotificationArea'" \
        org/mate/panel/objects/notification-area object-type "'applet'" \
        org/mate/panel/objects/notification-area toplevel-id "'top'" \
        org/mate/panel/objects/notification-area position 0
    window_manager
    start mate-panel
}
bring_up_gnome() {
    need gnome-shell
    [ -d /usr/share/gnome-shell/extensions/ubuntu-appindicators@ubuntu.com ] || exit 77
    settings org/gnome/shell enabled-extensions "['ubuntu-appindicators@ubuntu.com']" \
        org/gnome/shell welcome-dialog-last-shown-version "'99'" \
        org/gnome/desktop/interface color-scheme "'$([ "$scheme" = dark ] && echo prefer-dark || echo default)'" \
        org/gnome/desktop/interface enable-animations false
    # A system bus with a logind of the test's own.
    local session=$DBUS_SESSION_BUS_ADDRESS
    bus
    export DBUS_SYSTEM_BUS_ADDRESS=$DBUS_SESSION_BUS_ADDRESS DBUS_SESSION_BUS_ADDRESS=$session
    export LIBGL_ALWAYS_SOFTWARE=1 XDG_CURRENT_DESKTOP=GNOME
    start /usr/bin/python3 -m dbusmock --template logind
    await gdbus introspect --system --dest org.freedesktop.login1 --object-path /org/freedesktop/login1
    start gnome-shell --x11 --unsafe-mode
    await gdbus call --session --dest org.gnome.Shell --object-path /org/gnome/Shell --method org.gnome.Shell.Eval \
        'Main.overview.hide()'
    icon="890 14" entry="800 66"
}
bring_up_plasma() {
    need plasmashell kwin_x11 kded5
    export QT_QUICK_BACKEND=software XDG_CURRENT_DESKTOP=KDE KDE_FULL_SESSION=true
    [ "$scheme" = light ] || printf '[Theme]\nname=breeze-dark\n' >"$XDG_CONFIG_HOME/plasmarc"
    start kded5
    start kwin_x11
    start plasmashell
    # What a session's start does last.
    await gdbus call --session -d org.kde.kded5 -o /kded -m org.kde.kded5.loadModule statusnotifierwatcher
    sleep 5
    icon="790 576" entry="850 405"
}
bring_up_waybar() {
    need sway waybar Xwayland
    local colours="background: #f4f4f4; color: #202020"
    [ "$scheme" = light ] || colours="background: #202020; color: #ffffff"
    printf 'window#waybar { %s; }\n' "$colours" >"$run/waybar.css"
    echo '{ "position": "top", "height": 28, "modules-left": ["tray"], "tray": { "icon-size": 22, "spacing": 8 } }' \
        >"$run/waybar.json"
    printf 'xwayland enable\ndefault_border none\nexec echo "$DISPLAY $WAYLAND_DISPLAY" >%s\n' "$run/session" >"$run/sway"
    start env WLR_BACKENDS=x11 WLR_RENDERER=pixman WLR_X11_OUTPUTS=1 sway -c "$run/sway"
    await test -s "$run/session" || fail "sway starts"
    read -r DISPLAY WAYLAND_DISPLAY <"$run/session"
    export DISPLAY WAYLAND_DISPLAY
    start waybar -c "$run/waybar.json" -s "$run/waybar.css"
    entry="80 34"
}

screen +extension GLX +iglx
outer=$DISPLAY
bus
user() { DISPLAY=$outer xdotool "$@"; }
picture() {
    sleep 1
    DISPLAY=$outer import -window root "$output/$case-$1.png"
}
"bring_up_$desktop"
patience=60 await has_host || fail "a status area appears"

record_links
used_before
# The last minute is urgent; the panel would cover the menu.
mivora defaults write leadMinutes 0
event planning "Planning" 3300 https://meet.google.com/abc-defg-hij
event review "Design review" 1500 https://zoom.us/j/123456789
start "$BIN/mivora"
await tells 'Design review' || fail "it shows the meeting"
picture rest
event review "Design review" 55 https://zoom.us/j/123456789
await tells '"urgent": *true' || fail "the last minute is urgent"
picture urgent
chooses_the_first() { # The first opening of some hosts only asks for the menu.
    user mousemove $icon sleep 0.3 click 1
    picture menu
    user mousemove $entry sleep 0.3 mousemove_relative 4 2 sleep 0.3 click 1
    patience=3 await was_opened https://zoom.us/j/123456789 || { user key Escape; false; }
}
await chooses_the_first || fail "the chosen meeting is opened"
echo passed
