#!/usr/bin/env bash
# Makes pictures of the Join panel and the toast in all their states: light and dark, at one and two pixels a point,
# with a compositor and without. Needs Xvfb, xfwm4 and its xfconf, dbus-run-session.
#   panel-screenshots.sh BUILD_FOLDER OUTPUT_FOLDER [DISPLAY_NUMBER]
set -euo pipefail
if [ -z "${IN_PRIVATE_BUS:-}" ]; then
    IN_PRIVATE_BUS=1 exec dbus-run-session -- "$0" "$@" 2> >(grep -v '^dbus-daemon' >&2)
fi
build=$(cd "$1" && pwd)
mkdir -p "$2"
output=$(cd "$2" && pwd)
number=${3:-101}
home=$(mktemp -d)
server= manager=
stop() {
    kill "$1"
    wait "$1" 2>/dev/null || true
}
finish() {
    [ -z "$manager" ] || stop "$manager"
    [ -z "$server" ] || stop "$server"
    rm -rf "$home"
}
trap finish EXIT

export HOME=$home XDG_CONFIG_HOME=$home XDG_RUNTIME_DIR=$home DISPLAY=:$number QT_QPA_PLATFORM=xcb
unset WAYLAND_DISPLAY
chmod 700 "$home"

for scale in 1 2; do
    Xvfb ":$number" -screen 0 "$((1000 * scale))x$((640 * scale))x24" -nolisten tcp >/dev/null 2>&1 &
    server=$!
    for _ in $(seq 100); do xdpyinfo >/dev/null 2>&1 && break; sleep 0.1; done
    for compositor in on off; do
        xfwm4 --compositor="$compositor" >/dev/null 2>&1 &
        manager=$!
        for _ in $(seq 100); do
            xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id' && break
            sleep 0.1
        done
        sleep 1
        for scheme in light dark; do
            QT_SCALE_FACTOR=$scale MIVORA_APPEARANCE=$scheme \
                "$build/bin/panel-pictures" "$output/panel-$scheme-${scale}x-composited-$compositor.png"
        done
        stop "$manager"
        manager=
    done
    stop "$server"
    server=
done
