#!/usr/bin/env bash
# The real program where what it stands on breaks: a session bus or an X server that is gone or never was, a calendar
# folder that hangs. Needs mounts of its own.
#   broken-surroundings.sh BIN_FOLDER
BIN=$(realpath "$1")
if [ -z "${MIVORA_OWN_MOUNTS:-}" ]; then
    unshare -rm true 2>/dev/null || exit 77
    MIVORA_OWN_MOUNTS=1 exec unshare -rm "$0" "$BIN"
fi
. "$(dirname "$0")/session.sh"

start_and_read() { # Returns when the calendars that can be read have been read.
    start_program "$@"
    await mivora copy || fail "it starts"
}
says() { await grep -q "$1" "$printed" || fail "it says $1"; }
says_once() { [ "$(grep -c "$1" "$printed")" -eq 1 ] || fail "it says once $1"; }

screen
server=${processes[-1]}
bus
event review "Design review" 0
used_before
mkdir "$run/hanging"

case="hanging calendars"
hang() { # A file system whose server never answers.
    [ -w /dev/fuse ] && exec 9<>/dev/fuse &&
        mount -i -t fuse -o "fd=9,rootmode=40000,user_id=0,group_id=0" hanging "$run/hanging" 2>/dev/null
}
if hang; then
    start_and_read MIVORA_CALENDARS="$run/hanging:$home/calendars"
    says_once "$run/hanging: the folder does not answer"
    mivora agenda | grep -q "Design review" || fail "other calendars are shown"
    umount -l "$run/hanging"
    sed 's/Design review/Late review/' "$home/calendars/work/review.ics" >"$run/hanging/late.ics"
    exec 9>&-
    await tells "Late review" || fail "the folder is read once it answers"
    quit

    hang
    start_program MIVORA_CALENDARS="$run/hanging"
    quit
    umount -l "$run/hanging"
    exec 9>&-
else
    echo "without FUSE: no calendars that hang"
fi

case="session bus gone"
bus
start_and_read
kill "${processes[-2]}"
says "there is no session bus"
kill "$program"
ends_with 0

case="no session bus"
start_program DBUS_SESSION_BUS_ADDRESS=disabled:
says "there is no session bus"
kill "$program"
ends_with 0

case="X server gone"
bus
start_and_read
: >"$printed"
kill "$server"
ends_with 1
# Xlib may find out first, and adds two lines of its own; what the log says of the status area may come late.
says_once "X11 connection broke"
[ "$(grep -cv -e '^XIO:' -e '^  *after [0-9]* requests' -e '^kelo\.' "$printed")" -eq 1 ] || fail "that is all it says"

case="no X server"
start_program
ends_with 1
says_once "the display can't be used: .*$DISPLAY"
[ "$(wc -l <"$printed")" -eq 1 ] || fail "that is all it says"
echo passed
