#!/usr/bin/env bash
# Runs the program in the languages of several desktops: language-of-the-desktop.sh PROGRAM CALENDARS
set -u
program=$1 calendars=$2
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
unset XDG_CONFIG_HOME XDG_STATE_HOME XDG_DATA_HOME MIVORA_CALENDARS LANGUAGE LANG LC_ALL LC_MESSAGES LC_TIME LC_NUMERIC
export HOME="$home" TZ=Europe/Berlin LC_CTYPE=C.UTF-8 DBUS_SESSION_BUS_ADDRESS=disabled:
failures=0

# expect TEXT ENVIRONMENT… -- ARGUMENT…: what the program prints, with plain blanks for no-break ones, has the text.
expect() {
    local text=$1 environment=()
    while shift && [ "$1" != -- ]; do environment+=("$1"); done
    env "${environment[@]}" "$program" "${@:2}" 2>&1 | sed -e $'s/\u00a0/ /g' -e $'s/\u202f/ /g' | grep -qF -e "$text" && return
    printf 'FAILED: %s %s: %s\n' "${environment[*]}" "${*:2}" "$text"
    failures=$((failures + 1))
}

english='there is no session bus to reach Mivora on; run this in your desktop session'
german='kein Sitzungsbus, über den Mivora zu erreichen wäre; führen Sie dies in Ihrer Desktopsitzung aus'
french='aucun bus de session pour joindre Mivora ; lancez ceci dans votre session de bureau'
expect "$english" A= -- snooze
expect "$english" LC_ALL=C.UTF-8 LANG=de_DE.UTF-8 LANGUAGE=de -- snooze
expect "$french" LANG=de_DE.UTF-8 LC_MESSAGES=fr_CA.UTF-8 -- snooze
expect "$german" LANG=es_ES.UTF-8 LANGUAGE=es:de:fr -- snooze

day=(agenda --calendars "$calendars" --at 2026-03-10T13:05:00+01:00)
expect 'À venir : Design review · 55 min' LANG=fr_FR.UTF-8 -- "${day[@]}"
expect 'Als Nächstes: Design review · 55 min' LANG=de_DE.UTF-8 LC_TIME=en_US.UTF-8 -- "${day[@]}"
expect '"granted"' LANG=de_DE.UTF-8 -- "${day[@]}" --json
exit "$failures"
