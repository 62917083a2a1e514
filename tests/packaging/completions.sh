#!/usr/bin/env bash
# The shells complete what the program takes: its own messages say what that is.
#   completions.sh PROGRAM FOLDER
# fish is asked where it is installed.
set -euo pipefail
export LC_ALL=C.UTF-8
program=$1 folder=$2
failures=0

# expected ARGUMENT…: the words that the program names when it is given a wrong one at the end.
expected() { # shellcheck disable=SC2001
    "$program" "$@" nonsense 2>&1 | sed 's/.*expected \(one of \)*//; s/, got .*//; s/ (mivora .*//; s/-h, //' | tr -d ' ' | tr ',' '\n'
}
# offers SHELL LINE WORD…: after the line.
offers() {
    local left
    left=$(printf '%s\n' "${@:3}" | grep -vxF -e "$("by_$1" "$2")") || return 0
    printf 'FAILED: after "%s" %s does not offer %s\n' "$2" "$1" "${left//$'\n'/, }" >&2
    failures=$((failures + 1))
}

by_bash() {
    bash -c '. "$1"; read -ra COMP_WORDS <<<"$2"; COMP_WORDS+=("$3"); COMP_CWORD=$((${#COMP_WORDS[@]} - 1))
        _mivora; printf "%s\n" "${COMPREPLY[@]}"' _ "$folder/mivora.bash" "${1% *}" "${1##* }"
}
by_fish() {
    fish --no-config -c 'source $argv[1]; complete -C $argv[2]' "$folder/mivora.fish" "$1" | cut -f1
}
mapfile -t commands < <(expected)
mapfile -t keys < <(expected defaults read)
mapfile -t actions < <(expected defaults)
[ "${#commands[@]}" -gt 8 ] && [ "${#keys[@]}" -gt 8 ] || { echo "FAILED: the program's messages are others" >&2; exit 1; }
for shell in bash fish; do
    command -v "$shell" >/dev/null || continue
    offers "$shell" "mivora " "${commands[@]}"
    offers "$shell" "mivora defaults " "${actions[@]}"
    offers "$shell" "mivora defaults write " "${keys[@]}"
    offers "$shell" "mivora defaults write panelCorner " topLeft topRight bottomLeft bottomRight
    offers "$shell" "mivora access " $(expected access)
    offers "$shell" "mivora settings " general calendars
    offers "$shell" "mivora agenda --" $(expected agenda)
    offers "$shell" "mivora detect --" $(expected detect)
done
[ "$failures" -eq 0 ] || exit 1
echo passed
