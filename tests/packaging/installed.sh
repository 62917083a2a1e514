#!/usr/bin/env bash
# What `cmake --install` puts into a prefix works from there: the desktop's files are valid, the bus finds the program,
# which finds its plug-ins, and being started by the bus is no second start. And the demo shows it to a newcomer on a
# server: ends by itself, makes the pictures that it names, and cleans up.
#   installed.sh CMAKE BUILD_FOLDER SCRIPTS_FOLDER
# Exits with 77 where a program of the virtual desktop is missing.
set -euo pipefail
cmake=$1 build=$2 scripts=$3
for needed in Xvfb xfwm4 xfce4-panel scrot hsetroot xdotool xprop gdbus; do
    command -v "$needed" >/dev/null || exit 77
done
run=$(mktemp -d)
trap 'rm -rf "$run"' EXIT
export prefix="$run/with blank" LC_ALL=C.UTF-8
"$cmake" --install "$build" --prefix "$prefix" >/dev/null

where_installed() { ! command -v "$1" >/dev/null || "$@"; }
where_installed desktop-file-validate "$prefix/share/applications/app.kelo.Mivora.desktop"
where_installed appstreamcli validate --no-net "$prefix/share/metainfo/app.kelo.Mivora.metainfo.xml"
man --warnings --local-file "$prefix/share/man/man1/mivora.1" 2>&1 >/dev/null | grep . && exit 1

activate() {
    set -euo pipefail
    local mivora="$prefix/bin/mivora"
    fail() { echo "FAILED: $1" >&2; exit 1; }
    await() { for _ in $(seq 60); do if "$@" >/dev/null 2>&1; then return 0; fi; sleep 0.5; done; return 1; }
    request() { gdbus call --session -d app.kelo.Mivora -o /app/kelo/Mivora -m "org.freedesktop.Application.$1" "${@:2}"; }
    shows_settings() { xdotool search --onlyvisible --class mivora search --onlyvisible --name "^$1\$"; }

    mkdir -p "$XDG_DATA_HOME/dbus-1"
    ln -s "$prefix/share/dbus-1/services" "$XDG_DATA_HOME/dbus-1/services"
    gdbus call --session -d org.freedesktop.DBus -o / -m org.freedesktop.DBus.ReloadConfig
    request Activate {} || fail "the bus starts the program"
    await "$mivora" copy || fail "it obeys"
    ! shows_settings General || fail "the start opens no settings"
    request Activate {}
    await shows_settings General || fail "being started again opens them"
    "$mivora" quit
    await bash -c '! "$1" quit' _ "$mivora" || fail "it quits"
    request ActivateAction join '[]' {} || fail "an action that starts the program finds the calendars"
    await grep -q :// "$HOME/joined" || fail "the link is opened"
    "$mivora" quit
}
export -f activate

mkdir "$run/tmp"
env -u DISPLAY -u WAYLAND_DISPLAY TMPDIR="$run/tmp" MIVORA_DEMO_OUTPUT="$run/output" "$scripts/demo" "$prefix/bin/mivora" \
    >"$run/printed" 2>&1 || { cat "$run/printed" "$run/output/messages.log" >&2; exit 1; }
# A picture of nothing has few colours, and those of different moments differ.
for name in 1-running 2-countdown 3-menu 4-settings; do
    grep -q "$run/output/$name.png" "$run/printed" && [ "$(stat -c %s "$run/output/$name.png")" -gt 5000 ] || exit 1
done
[ "$(sha256sum "$run"/output/*.png | cut -d' ' -f1 | sort -u | wc -l)" -eq 4 ]
[ -z "$(ls -A "$run/tmp")" ]

"$scripts/demo-home" "$prefix/bin/mivora" "$run/home"
. "$run/home/environment"
"$scripts/demo-desktop" "$run/messages" bash -c activate || { cat "$run/messages" >&2; exit 1; }
echo passed
