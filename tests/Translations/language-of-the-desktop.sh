#!/bin/sh
# Runs the program in the languages of several desktops: language-of-the-desktop.sh PROGRAM CALENDARS
set -u
program=$1
calendars=$2
home=$(mktemp -d)
trap 'rm -rf "$home"' EXIT
unset XDG_CONFIG_HOME XDG_STATE_HOME XDG_DATA_HOME MIVORA_CALENDARS LANGUAGE LANG
unset LC_ALL LC_CTYPE LC_MESSAGES LC_TIME LC_NUMERIC
export HOME="$home" TZ=Europe/Berlin LC_CTYPE=C.UTF-8
failures=0

# check WHAT EXPECTED ACTUAL
check() {
    [ "$2" = "$3" ] && return
    printf 'FAILED: %s\n--- expected\n%s\n--- actual\n%s\n' "$1" "$2" "$3"
    failures=$((failures + 1))
}

# Puts plain blanks in the place of the no-break ones, U+00A0 and U+202F.
blanks() {
    sed -e "s/$(printf '\302\240')/ /g" -e "s/$(printf '\342\200\257')/ /g"
}

# refusal ENVIRONMENT…: what the program says where it can reach nobody
refusal() {
    env "$@" DBUS_SESSION_BUS_ADDRESS=disabled: "$program" snooze 2>&1 | grep '^mivora:' | blanks
}

english='mivora: there is no session bus to reach Mivora on; run this in your desktop session'
german='mivora: kein Sitzungsbus, über den Mivora zu erreichen wäre; führen Sie dies in Ihrer Arbeitsumgebung aus'
french='mivora: aucun bus de session pour joindre Mivora ; lancez ceci dans votre session de bureau'
check 'no language' "$english" "$(refusal A=)"
check 'C with a list of languages' "$english" "$(refusal LC_ALL=C.UTF-8 LANG=de_DE.UTF-8 LANGUAGE=de)"
check 'messages in another language than the rest' "$french" "$(refusal LANG=de_DE.UTF-8 LC_MESSAGES=fr_FR.UTF-8)"
check 'one for all' "$german" "$(refusal LANG=fr_FR.UTF-8 LC_MESSAGES=fr_FR.UTF-8 LC_ALL=de_DE.UTF-8)"
check 'a list of languages' "$german" "$(refusal LANG=es_ES.UTF-8 LANGUAGE=es:de:fr)"
check 'a language without a translation' "$english" "$(refusal LANG=ja_JP.UTF-8)"

# agenda ENVIRONMENT…: the first two lines and the countdown
agenda() {
    env "$@" "$program" agenda --calendars "$calendars" --at 2026-03-10T13:05:00+01:00 |
        sed -n -e 's/ – .*//' -e 1,2p -e '/Design review ·/p' | blanks
}
check 'German texts with American times' 'Tuesday, March 10, 2026
→ 2:00 PM
Als Nächstes: Design review · 55 min' "$(agenda LANG=de_DE.UTF-8 LC_TIME=en_US.UTF-8)"
exit "$failures"
