#!/usr/bin/env bash
# The real program where what it stands on breaks: a full disk, a read-only home, a session bus or an X server that is
# gone or never was, a calendar folder that hangs, events without an end.
#   broken-surroundings.sh PROGRAM
# Exits with 77 where a program is missing, or where a user may not have mounts of his own.
set -euo pipefail
program=$(realpath "$1")
for needed in Xvfb dbus-daemon xdotool unshare mount; do
    command -v "$needed" >/dev/null || exit 77
done
if [ -z "${MIVORA_OWN_MOUNTS:-}" ]; then
    unshare -rm true 2>/dev/null || exit 77
    MIVORA_OWN_MOUNTS=1 exec unshare -rm "$0" "$program"
fi

run=$(mktemp -d)
mivora= bus= display=
finish() {
    exec 7>&-
    kill $mivora $bus $display 2>/dev/null || true
    wait $mivora $bus $display 2>/dev/null || true
    for _ in 1 2; do umount -l "$run"/*/ 2>/dev/null || true; done
    rm -rf "$run"
}
trap finish EXIT
fail() {
    printf 'FAILED: %s: %s\n' "$fault" "$1" >&2
    cat "$run/log" >&2
    exit 1
}
# await COMMAND…: until it succeeds.
await() {
    local end=$((SECONDS + 30))
    until "$@" >/dev/null 2>&1; do
        [ "$SECONDS" -lt "$end" ] || return 1
        sleep 0.1
    done
}

export HOME=$run/home XDG_CONFIG_HOME=$run/config XDG_RUNTIME_DIR=$run/runtime XDG_STATE_HOME=$run/home/state
export DBUS_SYSTEM_BUS_ADDRESS=disabled: LC_ALL=C.UTF-8 TZ=UTC MIVORA_CALENDARS=$run/home/calendars MIVORA_EDS=none
unset WAYLAND_DISPLAY QT_QPA_PLATFORM DBUS_SESSION_BUS_ADDRESS
mkdir -m 700 -p "$HOME/calendars/work" "$XDG_CONFIG_HOME/mivora" "$XDG_RUNTIME_DIR" "$run/hanging"
event() { # NAME TITLE
    printf 'BEGIN:VCALENDAR\nBEGIN:VEVENT\nUID:%s\nSUMMARY:%s\nDTSTART:%s\nDURATION:PT1H\nURL:https://zoom.us/j/1\n%s\n' \
        "$1" "$2" "$(date -u +%Y%m%dT%H%M%SZ)" $'END:VEVENT\nEND:VCALENDAR' >"$HOME/calendars/work/$1.ics"
}
event review "Design review"
start_display() {
    local number
    exec 6<> <(:)
    Xvfb -displayfd 6 -screen 0 1280x800x24 -nolisten tcp -noreset >/dev/null 2>&1 &
    display=$!
    read -r -t 20 -u 6 number
    export DISPLAY=:$number
}
start_bus() {
    exec 6<> <(:)
    dbus-daemon --session --nofork --nosyslog --print-address=6 >/dev/null 2>&1 &
    bus=$!
    read -r -t 20 -u 6 DBUS_SESSION_BUS_ADDRESS
    export DBUS_SESSION_BUS_ADDRESS
}
start() { # Returns when the calendars that can be read have been read.
    "$program" >"$run/log" 2>&1 6<&- 7<&- &
    mivora=$!
    await "$program" copy || fail "it starts"
}
ended() { ! kill -0 "$mivora" 2>/dev/null || grep -q '^State:.Z' "/proc/$mivora/status" 2>/dev/null; }
ends_with() { # STATUS
    local status=0
    await ended || fail "it ends"
    wait "$mivora" || status=$?
    [ "$status" -eq "$1" ] || fail "it ends with $1, not $status"
}
quit() {
    "$program" quit || fail "it can be told to quit"
    ends_with 0
}
change_setting() { # by the keyboard, on the first page of the settings
    "$program" settings general
    await xdotool search --onlyvisible --name '^General$' || fail "the settings are shown"
    xdotool search --onlyvisible --name '^General$' windowfocus --sync key Tab space
}
lines() { grep -c "$1" "$run/log" || true; }
saved() { ! cmp -s "$run/before" "$XDG_CONFIG_HOME/mivora/mivora.json"; }

start_display
start_bus
"$program" access allow
mount -t tmpfs -o size=32k none "$XDG_CONFIG_HOME"
"$program" defaults write hasCompletedOnboarding true
cp "$XDG_CONFIG_HOME/mivora/mivora.json" "$run/before"

fault="full disk"
start
cat /dev/zero >"$XDG_CONFIG_HOME/fill" 2>/dev/null || true
change_setting
await grep -q "settings can't be saved: $XDG_CONFIG_HOME/mivora/mivora.json: No space" "$run/log" || fail "it is told of"
xdotool key space
sleep 0.5
[ "$(lines "can't be saved")" -eq 1 ] || fail "it is told of once"
saved && fail "the old settings are whole"
rm "$XDG_CONFIG_HOME/fill"
xdotool key space
await saved || fail "later changes are saved"
quit

fault="read-only home"
cp "$XDG_CONFIG_HOME/mivora/mivora.json" "$run/before"
for folder in "$XDG_CONFIG_HOME" "$HOME"; do
    mount --bind "$folder" "$folder"
    mount -o remount,bind,ro "$folder"
done
start
change_setting
await grep -q "settings can't be saved: $XDG_CONFIG_HOME/mivora/.*: Read-only" "$run/log" || fail "it is told of"
"$program" access allow 2>"$run/errors" && fail "a command tells of it"
grep -q "$XDG_STATE_HOME/mivora/state.json" "$run/errors" || fail "a command names the file"
quit
umount "$HOME" "$XDG_CONFIG_HOME"

fault="endless events"
event endless "$(head -c 1000000 /dev/zero | tr '\0' a)"
start
"$program" agenda --json >"$run/agenda" || fail "they are told of"
grep -q '"title": "aaaa' "$run/agenda" || fail "their titles are told"
[ "$(wc -c <"$run/agenda")" -lt 50000 ] || fail "what is told of them is bounded"
quit
rm "$HOME/calendars/work/endless.ics"

fault="hanging calendars"
hang() { # A file system whose server never answers.
    [ -w /dev/fuse ] && exec 7<>/dev/fuse &&
        mount -i -t fuse -o "fd=7,rootmode=40000,user_id=0,group_id=0" hanging "$run/hanging" 2>/dev/null
}
if hang; then
    MIVORA_CALENDARS=$run/hanging:$HOME/calendars start
    [ "$(lines "$run/hanging: the folder does not answer")" -eq 1 ] || fail "it is told of"
    "$program" agenda | grep -q "Design review" || fail "other calendars are shown"
    umount -l "$run/hanging"
    sed 's/Design review/Late review/' "$HOME/calendars/work/review.ics" >"$run/hanging/late.ics"
    exec 7>&-
    await bash -c "'$program' agenda | grep -q 'Late review'" || fail "the folder is read once it answers"
    quit

    hang
    MIVORA_CALENDARS=$run/hanging "$program" >"$run/log" 2>&1 7<&- &
    mivora=$!
    await "$program" quit || fail "it can be told to quit"
    ends_with 0
    umount -l "$run/hanging"
else
    echo "without FUSE: no calendars that hang"
fi

fault="session bus gone"
start
kill "$bus"
await grep -q "there is no session bus" "$run/log" || fail "it is told of"
ticks() { awk '{ print $14 + $15 }' "/proc/$mivora/stat"; }
before=$(ticks)
sleep 2
ended && fail "it runs on"
[ $(($(ticks) - before)) -lt 50 ] || fail "it does not spin"
kill "$mivora"
ends_with 0

fault="no session bus"
DBUS_SESSION_BUS_ADDRESS=disabled: "$program" >"$run/log" 2>&1 &
mivora=$!
await grep -q "there is no session bus" "$run/log" || fail "it is told of"
kill "$mivora"
ends_with 0

fault="X server gone"
start_bus
start
: >"$run/log"
kill "$display"
ends_with 1
# Xlib may find out first, and adds two lines of its own.
grep -q "X11 connection broke" "$run/log" || fail "it says why it ends"
[ "$(grep -cv -e '^XIO:' -e '^  *after [0-9]* requests' "$run/log")" -eq 1 ] || fail "it says so once"

fault="no X server"
"$program" >"$run/log" 2>&1 &
mivora=$!
ends_with 1
grep -q "the display can't be used: .*$DISPLAY" "$run/log" || fail "it names the display"
[ "$(wc -l <"$run/log")" -eq 1 ] || fail "it ends in one line"
echo passed
