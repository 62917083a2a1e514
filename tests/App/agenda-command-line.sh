#!/bin/sh
# Runs the program on the sample calendars, as a person would: agenda-command-line.sh PROGRAM CALENDARS
set -u
program=$1
calendars=$2
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
unset XDG_CONFIG_HOME XDG_STATE_HOME XDG_DATA_HOME MIVORA_CALENDARS DISPLAY WAYLAND_DISPLAY QT_QPA_PLATFORM
# No calendars of the desktop.
export DBUS_SESSION_BUS_ADDRESS=disabled:
export HOME="$home" TZ=Europe/Berlin LC_ALL=C.UTF-8
failures=0

# check WHAT EXPECTED ACTUAL
check() {
    [ "$2" = "$3" ] && return
    printf 'FAILED: %s\n--- expected\n%s\n--- actual\n%s\n' "$1" "$2" "$3"
    failures=$((failures + 1))
}

# agenda TIME: the table without its first line
agenda() {
    "$program" agenda --calendars "$calendars" --at "$1" | tail -n +2
}

# status EXPECTED ARGUMENTS…: the exit status, and one line on stderr where it is not 0
status() {
    expected=$1
    shift
    lines=$("$program" "$@" 2>&1 >/dev/null | wc -l)
    "$program" "$@" >/dev/null 2>&1
    check "$*" "$expected" "$?"
    [ "$expected" = 0 ] || check "lines for $*" 1 "$lines"
}

check 'a running meeting, an upcoming one and none declined' \
'→ 14:00 – 15:00  Design review                 Zoom
  14:30 – 15:30  Interview: back-end engineer  Google Meet
  15:00 – 15:30  Contoso sync                  Teams
  16:00 – 17:00  Quarterly numbers             Teams
  19:30 – 21:30  Choir
  21:30 – 22:00  Call with Auckland            Zoom' \
"$(agenda 2026-03-10T14:10:00+01:00 | head -n 6)"
check 'the morning' \
'→ 08:00 – 08:45  Dentist
  09:15 – 09:30  Team stand-up                 Google Meet' \
"$(agenda 2026-03-10T00:10:00+01:00 | head -n 2)"
check 'a night shift' '→ 07:30 – 08:30  Night shift' "$(agenda 2026-03-08T05:00:00+01:00 | head -n 1)"
check 'meetings of other zones, and one without length' \
'→ 09:00 – 09:30  Tokyo check-in       FaceTime
  13:00 – 13:00  Newsletter deadline
  14:00 – 15:00  Security training    Link
  19:00 – 20:30  Board meeting        Link' \
"$(agenda 2026-03-11T00:30:00+01:00 | head -n 4)"
check 'a moved occurrence' '→ 10:00 – 10:15  Team stand-up (moved)  Google Meet' \
"$(agenda 2026-03-12T09:00:00+01:00 | head -n 1)"
check 'a cancelled occurrence' '  No more meetings today' "$(agenda 2026-03-13T08:00:00+01:00)"
check 'before the clocks go forward' 'Next: Sunday on-call handover · 1h' \
"$(agenda 2026-03-29T00:30:00+01:00 | grep Next)"
check 'after the clocks went forward' '→ 01:30 – 04:30  Sunday on-call handover  Google Meet
  10:00 – 10:30  Family call              FaceTime' \
"$(agenda 2026-03-29T03:30:00+02:00 | head -n 2)"
check 'a zone that is none counts as UTC' 'Next: Design review · 1h' \
"$(TZ=No/Such agenda 2026-03-10T12:00:00Z | grep Next)"

mkdir "$home/orders"
printf 'BEGIN:VCALENDAR\nBEGIN:VEVENT\nUID:a\nSUMMARY:\302\2332J \342\200\256 \342\200\250Ü\n%s\nEND:VEVENT\nEND:VCALENDAR\n' \
    'DTSTART:20260310T120000Z' >"$home/orders/orders.ics"
check 'a title reaches no terminal as an order' '            "title": "\u009b2J \u202e \u2028Ü"' \
"$("$program" agenda --calendars "$home/orders" --at 2026-03-10T11:00:00Z --json | grep '2J.*Ü"$' | tail -n 1)"

status 0 agenda --calendars "$calendars" --json
status 1 agenda
status 1 agenda --calendars "$home/none"
status 2 agenda --at noon
status 2 nonsense
status 1 detect --notes 'no link'
status 0 defaults write leadMinutes 5
check 'a written setting' 5 "$("$program" defaults read leadMinutes)"
status 2 defaults write leadMinutes soon
status 0 defaults write leadMinutes 3
check 'a value kept but not used' 3 "$("$program" defaults read leadMinutes)"
check 'what it is used as' 'leadMinutes knows only 0, 1, 2, 5; "3" is kept, but read as 1' \
"$("$program" defaults write leadMinutes 3 2>&1 | sed 's/^mivora: //')"
[ -w /dev/full ] && check 'a full disk' 'mivora: stdout: No space left on device' \
"$("$program" defaults list 2>&1 >/dev/full)"
"$program" access allow
check 'access without calendars' denied "$("$program" access)"

status 1
DISPLAY=:4095
export DISPLAY
status 1

exit "$failures"
