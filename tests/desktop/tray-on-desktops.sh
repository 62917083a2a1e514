#!/usr/bin/env bash
# Runs Mivora in the status area of each desktop that is installed: makes pictures of its item at rest, urgent and with
# its menu open, on a light and on a dark panel, chooses the first meeting with the pointer and looks what was opened.
# To be run before a release, and looked at.
#   tray-on-desktops.sh BIN_FOLDER OUTPUT_FOLDER [xfce|indicator|mate|waybar|gnome|plasma …]
# Packages beyond those of the tests: mate-panel mate-indicator-applet; gnome-shell gnome-shell-extension-appindicator
# gjs libgl1-mesa-dri python3-dbusmock and the gir1.2 packages that gnome-shell recommends; plasma-workspace
# plasma-desktop plasma-pa kwin-x11 kded5 qml-module-org-kde-kitemmodels qml-module-qt-labs-platform.
# SCHEMES=light leaves the dark panels out.
# Exits with 1 when a desktop fails, with 77 when none is installed.
set -euo pipefail
script=$(realpath "$0")
bin=$(cd "$1" && pwd)
mkdir -p "$2"
output=$(cd "$2" && pwd)

if [ -z "${ON_DESKTOP:-}" ]; then
    shift 2
    [ $# -gt 0 ] || set -- xfce indicator mate waybar gnome plasma
    done=0 failed=0
    for scheme in ${SCHEMES:-light dark}; do
        sessions=()
        for desktop in "$@"; do
            ON_DESKTOP=$desktop SCHEME=$scheme "$script" "$bin" "$output" &
            sessions+=("$! $desktop, $scheme")
        done
        for session in "${sessions[@]}"; do
            status=0
            wait "${session%% *}" || status=$?
            case $status in
                0) echo "${session#* }: passed"; done=1 ;;
                77) echo "${session#* }: not installed" ;;
                *) echo "${session#* }: FAILED"; failed=1 ;;
            esac
        done
    done
    [ "$failed" -eq 0 ] || exit 1
    [ "$done" -eq 1 ] || exit 77
    exit 0
fi

desktop=$ON_DESKTOP
scheme=$SCHEME
run=$(mktemp -d)
chmod 755 "$run"
processes=()
as_user=(env)
finish() {
    for ((i = ${#processes[@]} - 1; i >= 0; --i)); do kill "${processes[i]}" 2>/dev/null || true; done
    # What the bus started has no other parent, but this home.
    for process in $(grep -lzx "HOME=$run" /proc/[0-9]*/environ 2>/dev/null | cut -d/ -f3); do
        [ "$process" -eq $$ ] || kill -KILL "$process" 2>/dev/null || true
    done
    sleep 0.3
    for process in "${processes[@]}"; do kill -KILL "$process" 2>/dev/null || true; done
    wait 2>/dev/null || true
    [ -z "${KEEP:-}" ] || cp "$run/log" "$KEEP"
    rm -rf "$run" 2>/dev/null || { sleep 1; rm -rf "$run"; }
}
trap finish EXIT
need() {
    for program in "$@"; do command -v "$program" >/dev/null || exit 77; done
}
await() { # SECONDS COMMAND…
    local end=$((SECONDS + $1))
    shift
    until "$@" >/dev/null 2>&1; do
        [ "$SECONDS" -lt "$end" ] || return 1
        sleep 0.1
    done
}
fail() {
    echo "$desktop, $scheme: $1" >&2
    exit 1
}
start() {
    "$@" >>"$run/log" 2>&1 &
    processes+=($!)
}
picture() { import -window root -crop "${2:-$SIZE}" +repage "$output/$desktop-$scheme-$1.png"; }
has_host() {
    "${as_user[@]}" dbus-send --session --print-reply --dest=org.kde.StatusNotifierWatcher /StatusNotifierWatcher \
        org.freedesktop.DBus.Properties.Get string:org.kde.StatusNotifierWatcher \
        string:IsStatusNotifierHostRegistered | grep -q true
}
window_manager() {
    xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 'window id'
}

need Xvfb xdotool dbus-daemon import
SIZE=1024x600
export HOME=$run XDG_CONFIG_HOME=$run XDG_CACHE_HOME=$run XDG_DATA_HOME=$run XDG_STATE_HOME=$run XDG_RUNTIME_DIR=$run
export LC_ALL=C.UTF-8 NO_AT_BRIDGE=1 GSETTINGS_BACKEND=keyfile
unset WAYLAND_DISPLAY XDG_CURRENT_DESKTOP DBUS_SESSION_BUS_ADDRESS GTK_THEME
mkdir -p "$run/glib-2.0/settings" "$run/applications" "$run/calendars/work"
chmod 700 "$run"

screen() { # EXTRA ARGUMENTS…
    exec 8<> <(:)
    Xvfb -displayfd 8 -screen 0 "${SIZE}x24" -nolisten tcp "$@" >/dev/null 2>&1 &
    processes+=($!)
    read -r -t 20 number <&8
    export DISPLAY=:$number
}
bus() {
    exec 7<> <(:)
    "${as_user[@]}" dbus-daemon --session --nofork --print-address=7 >/dev/null 2>>"$run/log" &
    processes+=($!)
    read -r -t 20 DBUS_SESSION_BUS_ADDRESS <&7
    export DBUS_SESSION_BUS_ADDRESS
}
gtk_scheme() {
    mkdir -p "$run/gtk-3.0"
    printf '[Settings]\ngtk-application-prefer-dark-theme=%s\n' "$([ "$scheme" = dark ] && echo true || echo false)" \
        >"$run/gtk-3.0/settings.ini"
}
settings() { # SCHEMA KEY VALUE…
    while [ $# -gt 0 ]; do
        printf '[%s]\n%s=%s\n' "$1" "$2" "$3" >>"$run/glib-2.0/settings/keyfile"
        shift 3
    done
}

xfce_panel() { # the plug-in of the status area
    need openbox xfce4-panel
    gtk_scheme
    mkdir -p "$run/xfce4/xfconf/xfce-perchannel-xml"
    cat >"$run/xfce4/xfconf/xfce-perchannel-xml/xfce4-panel.xml" <<EOF
<?xml version="1.0" encoding="UTF-8"?>
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array">
    <value type="int" value="1"/>
    <property name="dark-mode" type="bool" value="$([ "$scheme" = dark ] && echo true || echo false)"/>
    <property name="panel-1" type="empty">
      <property name="position" type="string" value="p=6;x=0;y=0"/>
      <property name="length" type="uint" value="100"/>
      <property name="size" type="uint" value="28"/>
      <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
    </property>
  </property>
  <property name="plugins" type="empty"><property name="plugin-1" type="string" value="$1"/></property>
</channel>
EOF
    screen
    bus
    start openbox
    await 10 window_manager
    start xfce4-panel --disable-wm-check
    entry="60 44"
}
bring_up_xfce() {
    xfce_panel systray
    icon="16 14"
}
bring_up_indicator() {
    indicator=$(find /usr/lib /usr/libexec -name ayatana-indicator-application-service 2>/dev/null | head -1)
    [ -n "$indicator" ] || exit 77
    xfce_panel indicator
    start "$indicator"
    icon="40 14"
}
bring_up_mate() {
    need mate-panel openbox
    gtk_scheme
    # As MATE's settings daemon has it: without, the panel's items are buttons without pictures.
    echo 'gtk-button-images=true' >>"$run/gtk-3.0/settings.ini"
    settings org/mate/panel/general object-id-list "['notification-area']" \
        org/mate/panel/general toplevel-id-list "['top']" \
        org/mate/panel/toplevels/top size 28 \
        org/mate/panel/toplevels/top orientation "'top'" \
        org/mate/panel/objects/notification-area applet-iid "'NotificationAreaAppletFactory::NotificationArea'" \
        org/mate/panel/objects/notification-area object-type "'applet'" \
        org/mate/panel/objects/notification-area toplevel-id "'top'" \
        org/mate/panel/objects/notification-area position 0
    screen
    bus
    start openbox
    await 10 window_manager
    start mate-panel
    icon="20 14" entry="60 44"
}
bring_up_gnome() {
    need gnome-shell
    [ -d /usr/share/gnome-shell/extensions/ubuntu-appindicators@ubuntu.com ] || exit 77
    settings org/gnome/shell enabled-extensions "['ubuntu-appindicators@ubuntu.com']" \
        org/gnome/shell welcome-dialog-last-shown-version "'99'" \
        org/gnome/desktop/interface color-scheme "'$([ "$scheme" = dark ] && echo prefer-dark || echo default)'" \
        org/gnome/desktop/interface enable-animations false
    screen +extension GLX +iglx
    bus
    # A system bus with a logind of the test's own.
    exec 6<> <(:)
    dbus-daemon --session --nofork --print-address=6 >/dev/null 2>>"$run/log" &
    processes+=($!)
    read -r -t 20 DBUS_SYSTEM_BUS_ADDRESS <&6
    export DBUS_SYSTEM_BUS_ADDRESS LIBGL_ALWAYS_SOFTWARE=1 XDG_CURRENT_DESKTOP=GNOME
    start /usr/bin/python3 -m dbusmock --template logind
    sleep 1
    start gnome-shell --x11 --unsafe-mode
    icon="890 14" entry="800 66"
    after_bring_up() {
        gdbus call --session --dest org.gnome.Shell --object-path /org/gnome/Shell --method org.gnome.Shell.Eval \
            'Main.overview.hide()' >/dev/null
        sleep 1
    }
}
bring_up_plasma() {
    need plasmashell kwin_x11 kded5
    export QT_QUICK_BACKEND=software XDG_CURRENT_DESKTOP=KDE KDE_FULL_SESSION=true
    [ "$scheme" = light ] || printf '[Theme]\nname=breeze-dark\n' >"$run/plasmarc"
    screen
    bus
    start kded5
    start kwin_x11
    await 20 window_manager
    start plasmashell
    # What a session's start does last.
    await 20 gdbus call --session -d org.kde.kded5 -o /kded -m org.kde.kded5.loadModule statusnotifierwatcher
    icon="790 576" entry="850 405"
    after_bring_up() { sleep 5; }
}
bring_up_waybar() {
    need sway waybar Xwayland setpriv
    screen
    export OUTER=$DISPLAY
    cat >"$run/sway" <<EOF
xwayland enable
default_border none
exec sh -c 'echo "\$DISPLAY \$WAYLAND_DISPLAY" >"$run/session.new"; mv "$run/session.new" "$run/session"'
EOF
    cat >"$run/waybar.json" <<EOF
{ "position": "top", "height": 28, "modules-left": ["tray"], "tray": { "icon-size": 22, "spacing": 8 } }
EOF
    [ "$scheme" = dark ] && colours="background: #202020; color: #ffffff" || colours="background: #f4f4f4; color: #202020"
    printf 'window#waybar { %s; }\n' "$colours" >"$run/waybar.css"
    # sway doesn't run as root.
    [ "$(id -u)" -ne 0 ] || { chown -R nobody "$run" && as_user=(setpriv --reuid=nobody --regid=nogroup --clear-groups env); }
    as_user+=(HOME="$run")
    "${as_user[@]}" test -x "$bin/mivora" || exit 77
    bus
    start "${as_user[@]}" DISPLAY="$OUTER" WLR_BACKENDS=x11 WLR_RENDERER=pixman WLR_X11_OUTPUTS=1 \
        sway -c "$run/sway"
    await 30 test -s "$run/session" || fail "sway doesn't start"
    read -r DISPLAY WAYLAND_DISPLAY <"$run/session"
    export DISPLAY WAYLAND_DISPLAY
    start "${as_user[@]}" waybar -c "$run/waybar.json" -s "$run/waybar.css"
    icon="20 14" entry="80 34"
    picture() { DISPLAY=$OUTER import -window root -crop "${2:-$SIZE}" +repage "$output/$desktop-$scheme-$1.png"; }
    point() { DISPLAY=$OUTER xdotool "$@"; }
}
point() { xdotool "$@"; }
after_bring_up() { :; }

event() { # UID SUMMARY MINUTES-FROM-NOW URL
    printf 'BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:test\r\nBEGIN:VEVENT\r\nUID:%s\r\nSUMMARY:%s\r\n' "$1" "$2"
    printf 'DTSTART:%s\r\nDTEND:%s\r\nURL:%s\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n' \
        "$(date -u -d "$3 minutes" +%Y%m%dT%H%M%SZ)" "$(date -u -d "$(($3 + 30)) minutes" +%Y%m%dT%H%M%SZ)" "$4"
}
cat >"$run/open" <<EOF
#!/bin/sh
printf '%s\n' "\$@" >>"$run/opened"
EOF
chmod +x "$run/open"
printf '[Desktop Entry]\nType=Application\nName=Recorder\nExec=%s %%u\nMimeType=x-scheme-handler/https;\n' "$run/open" \
    >"$run/applications/recorder.desktop"
printf '[Default Applications]\nx-scheme-handler/https=recorder.desktop\n' >"$run/mimeapps.list"
event review "Design review" 25 https://zoom.us/j/123456789 >"$run/calendars/work/review.ics"
event planning "Planning" 55 https://meet.google.com/abc-defg-hij >"$run/calendars/work/planning.ics"
# Noon, so that the day doesn't end meanwhile.
ahead=$((12 - 10#$(date -u +%H)))
export TZ="Etc/GMT$([ "$ahead" -gt 0 ] && echo "-$ahead" || echo "+$((-ahead))")"
export MIVORA_CALENDARS=$run/calendars
"$bin/mivora" access allow
"$bin/mivora" defaults write hasCompletedOnboarding true
# The last minute is urgent; the panel would cover the menu.
"$bin/mivora" defaults write leadMinutes 0

"bring_up_$desktop"
await 60 has_host || fail "no status area appears"
after_bring_up
start "${as_user[@]}" "$bin/mivora"
await 20 "${as_user[@]}" "$bin/mivora" agenda
sleep 1
picture rest
event review "Design review" 1 https://zoom.us/j/123456789 >"$run/calendars/work/review.ics"
sleep 2
picture urgent

opened() { test -s "$run/opened"; }
# The first opening of some hosts only asks for the menu.
for _ in 1 2 3; do
    point mousemove $icon sleep 0.3 click 1
    sleep 1
    picture menu
    point mousemove $entry sleep 0.3 mousemove_relative 4 2 sleep 0.3 click 1
    await 3 opened && break
    point key Escape
done
[ "$(cat "$run/opened" 2>/dev/null)" = https://zoom.us/j/123456789 ] || fail "the chosen meeting wasn't opened"
