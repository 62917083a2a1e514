# Sourced by the tests of this folder: a home, a session bus and X displays of a test's own, which go with the test, and
# the program in them. BIN is the folder of the built programs. What is missing ends the test with 77: skipped.
set -euo pipefail

need() { # PROGRAM…
    for program in "$@"; do command -v "$program" >/dev/null || exit 77; done
}
# sway doesn't run as root, and nobody has to.
if [ "$(id -u)" -eq 0 ] && [ -z "${MIVORA_OWN_MOUNTS:-}" ]; then
    need setpriv
    nobody=(setpriv --reuid=nobody --regid=nogroup --clear-groups)
    "${nobody[@]}" test -x "$BIN/mivora" -a -x "$0" || exit 77
    exec "${nobody[@]}" "$0" "$@"
fi
need Xvfb dbus-daemon xdotool gdbus

run=$(mktemp -d)
home=$run/home
processes=()
finish() {
    local status=$? process
    set +e
    for ((i = ${#processes[@]} - 1; i >= 0; --i)); do kill -CONT "${processes[i]}" && kill "${processes[i]}"; done
    # What the bus started has no other parent, but this home.
    for process in $(timeout 10 grep -lzx "HOME=$home" /proc/[0-9]*/environ | cut -d/ -f3); do
        [ "$process" -eq $$ ] || kill -KILL "$process"
    done
    [ "$status" -eq 0 ] || [ "$status" -eq 77 ] || cat "$run"/{log,printed} >&3
    wait
    umount -l "$run/hanging" # Of a test that has mounts of its own.
    rm -rf "$run"
} 3>&2 2>/dev/null
trap finish EXIT
fail() {
    echo "FAILED: ${case:+$case: }$1" >&2
    exit 1
}
await() { # COMMAND…: until it succeeds
    local end=$((SECONDS + ${patience:-30}))
    until "$@" >/dev/null 2>&1; do
        [ "$SECONDS" -lt "$end" ] || return 1
        sleep 0.05
    done
}
start() { # COMMAND…: in the background; $! is its process
    "$@" >>"$run/log" 2>&1 &
    processes+=($!)
}

export HOME=$home XDG_CONFIG_HOME=$home/config XDG_CACHE_HOME=$home/cache XDG_DATA_HOME=$home/data
export XDG_STATE_HOME=$home/state XDG_RUNTIME_DIR=$run/runtime MIVORA_CALENDARS=$home/calendars MIVORA_EDS=none
export LC_ALL=C.UTF-8 NO_AT_BRIDGE=1 GSETTINGS_BACKEND=keyfile DBUS_SYSTEM_BUS_ADDRESS=disabled:
unset WAYLAND_DISPLAY QT_QPA_PLATFORM MIVORA_PLATFORM MIVORA_PANEL XDG_CURRENT_DESKTOP DBUS_SESSION_BUS_ADDRESS GTK_THEME
# Noon, so that the day doesn't end meanwhile.
ahead=$((12 - 10#$(date -u +%H)))
export TZ="Etc/GMT$([ "$ahead" -gt 0 ] && echo "-$ahead" || echo "+$((-ahead))")"
mkdir -p "$home"/{calendars/work,config/glib-2.0/settings,data/applications}
mkdir -m 700 "$XDG_RUNTIME_DIR"

screen() { # ARGUMENTS FOR THE X SERVER…
    local number
    exec 8<> <(:)
    start Xvfb -displayfd 8 -screen 0 1024x600x24 -nolisten tcp -noreset "$@" 8>&8
    read -r -t 20 -u 8 number
    export DISPLAY=:$number
    outer=$DISPLAY
}
user() { DISPLAY=$outer xdotool "$@"; } # Keyboard and mouse before the screen, whatever runs on it.
bus() {
    exec 7<> <(:)
    start dbus-daemon --session --nofork --nosyslog --print-address=7 7>&7
    read -r -t 20 -u 7 DBUS_SESSION_BUS_ADDRESS
    export DBUS_SESSION_BUS_ADDRESS
}
window_manager() {
    start openbox
    await sh -c 'xprop -root _NET_SUPPORTING_WM_CHECK | grep -q "window id"' || fail "no window manager appears"
}
# Whoever brings a display of its own, in a window on the screen, starts this to tell of it.
printf '#!/bin/sh\necho "$DISPLAY ${WAYLAND_DISPLAY:-none} ${XAUTHORITY:-none}" >%s.new\nmv %s.new %s\nexec sleep 1000\n' \
    "$run/session" "$run/session" "$run/session" >"$run/started"
chmod +x "$run/started"
start_sway() { # No key repeats on its own, however slow the machine is.
    printf '%s\n' 'xwayland enable' 'default_border none' 'input * repeat_rate 0' 'focus_on_window_activation smart' "exec $run/started" >"$run/sway"
    start env WLR_BACKENDS=x11 WLR_RENDERER=pixman WLR_X11_OUTPUTS="${outputs:-1}" sway -c "$run/sway"
}
start_labwc() {
    mkdir -p "$XDG_CONFIG_HOME/labwc"
    echo '<labwc_config><keyboard><repeatRate>0</repeatRate></keyboard></labwc_config>' >"$XDG_CONFIG_HOME/labwc/rc.xml"
    start env WLR_BACKENDS=x11 WLR_RENDERER=pixman WLR_X11_OUTPUTS="${outputs:-1}" labwc -s "$run/started"
}
start_kwin_wayland() {
    printf '[Keyboard]\nKeyRepeat=nothing\n' >"$XDG_CONFIG_HOME/kcminputrc"
    start env QT_QUICK_BACKEND=software LIBGL_ALWAYS_SOFTWARE=1 kwin_wayland --x11-display "$DISPLAY" --xwayland \
        --output-count "${outputs:-1}" --width 1024 --height 600 --socket kwin "$run/started"
}
mutter_in() { # COMMAND…
    printf '%s\n' '[org/gnome/desktop/peripherals/keyboard]' repeat=false '[org/gnome/shell]' \
        "welcome-dialog-last-shown-version='99'" >"$XDG_CONFIG_HOME/glib-2.0/settings/keyfile"
    start env MUTTER_DEBUG_DUMMY_MODE_SPECS=1024x600 LIBGL_ALWAYS_SOFTWARE=1 "$@"
}
start_mutter() { mutter_in dbus-run-session -- mutter --wayland --nested -- "$run/started"; }
start_gnome-shell() { # It begins with its overview, and not without logind.
    export XDG_CURRENT_DESKTOP=GNOME DBUS_SYSTEM_BUS_ADDRESS=$DBUS_SESSION_BUS_ADDRESS
    start python3 -m dbusmock --template logind
    gdbus wait --session --timeout 30 org.freedesktop.login1 || exit 77
    mutter_in gnome-shell --wayland --nested --unsafe-mode
    local begin="Main.overview.visible && (Main.overview.hide(), GLib.spawn_command_line_async('$run/started'))"
    patience=60 await sh -c 'gdbus call --session --timeout 5 --dest org.gnome.Shell --object-path /org/gnome/Shell \
        --method org.gnome.Shell.Eval "$1" | grep -q true,.*true' - "$begin" || true
}
enter_session() {
    await test -s "$run/session" || { echo "the desktop doesn't start here" >&2; exit 77; }
    read -r DISPLAY WAYLAND_DISPLAY XAUTHORITY <"$run/session"
    export DISPLAY WAYLAND_DISPLAY XAUTHORITY
    for name in WAYLAND_DISPLAY XAUTHORITY; do [ "${!name}" != none ] || unset "$name"; done
}
bar() { echo $(($(xprop -root _NET_WORKAREA | cut -sd, -f2) + 0)); } # The height of what is on top of the screen.
terminal() { # [SCREEN TO FILL]: a window that is typed into, and takes activation tokens from $tokens
    QT_QPA_PLATFORM=$platform "$BIN/key-log" "$@" <"${tokens:-/dev/null}" >>"$run/typed" 2>>"$run/log" &
    processes+=($!)
}
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
property() { # SERVICE PATH INTERFACE NAME: of an object on the bus
    gdbus call --session --dest "$1" --object-path "$2" --method org.freedesktop.DBus.Properties.Get "$3" "$4"
}
watcher() { property org.kde.StatusNotifierWatcher /StatusNotifierWatcher org.kde.StatusNotifierWatcher "$1"; }
has_host() { watcher IsStatusNotifierHostRegistered | grep -q true; }
xfce_panel() { # PLUG-IN OF THE STATUS AREA
    local settings=$XDG_CONFIG_HOME/xfce4/xfconf/xfce-perchannel-xml
    mkdir -p "$settings"
    cat >"$settings/xfce4-panel.xml" <<END
<channel name="xfce4-panel" version="1.0">
  <property name="configver" type="int" value="2"/>
  <property name="panels" type="array"><value type="int" value="1"/><property name="panel-1" type="empty">
    <property name="position" type="string" value="p=6;x=0;y=0"/>
    <property name="length" type="uint" value="100"/><property name="size" type="uint" value="28"/>
    <property name="plugin-ids" type="array"><value type="int" value="1"/></property>
  </property></property>
  <property name="plugins" type="empty"><property name="plugin-1" type="string" value="$1"/></property>
</channel>
END
    start xfce4-panel --disable-wm-check
    host=$!
}

mivora() { "$BIN/mivora" "$@"; }
printed=$run/printed
start_program() { # [VARIABLE=VALUE…]: $printed has what it prints
    : >"$printed"
    env "$@" "$BIN/mivora" >>"$printed" 2>&1 9<&- &
    program=$!
    processes+=("$program")
}
has_ended() { ! kill -0 "$program" 2>/dev/null || grep -q '^State:.Z' "/proc/$program/status" 2>/dev/null; }
ends_with() { # STATUS
    local status=0
    await has_ended || fail "it ends"
    wait "$program" || status=$?
    [ "$status" -eq "$1" ] || fail "it ends with $1, not $status"
}
quit() {
    await mivora quit || fail "it can be told to quit"
    ends_with 0
}
event() { # ID TITLE SECONDS-FROM-NOW [LINK]
    printf '%s\r\n' BEGIN:VCALENDAR VERSION:2.0 BEGIN:VEVENT "UID:$1" "SUMMARY:$2" "DURATION:PT30M" \
        "DTSTART:$(date -u -d "$3 seconds" +%Y%m%dT%H%M%SZ)" "URL:${4:-https://zoom.us/j/1}" END:VEVENT END:VCALENDAR \
        >"$home/calendars/work/$1.ics"
}
used_before() {
    mivora access allow
    mivora defaults write hasCompletedOnboarding true
}
# Links are opened by a program that writes them down.
record_links() {
    printf '#!/bin/sh\nprintf "%%s\\n" "$@" >>"%s/opened"\n' "$run" >"$run/open"
    chmod +x "$run/open"
    printf '[Desktop Entry]\nType=Application\nName=Recorder\nExec=%s %%u\nMimeType=x-scheme-handler/https;\n' \
        "$run/open" >"$XDG_DATA_HOME/applications/recorder.desktop"
    printf '[Default Applications]\nx-scheme-handler/https=recorder.desktop\n' >"$XDG_CONFIG_HOME/mimeapps.list"
}
was_opened() { [ "$(cat "$run/opened")" = "$1" ]; }
tells() { mivora agenda --json | tr -d '\n' | grep -q "$1"; }
