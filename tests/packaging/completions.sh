#!/usr/bin/env bash
# The shells' completions know every word that the program takes: its own messages say what these are.
#   completions.sh PROGRAM FOLDER
set -eu # The program refuses each time.
program=$1 folder=$2

# The words that the program names when it is given a wrong one after these.
expected() {
    "$program" "$@" nonsense 2>&1 | sed 's/.*expected \(one of \)*//; s/, got .*//; s/ (mivora .*//; s/-h, //' | tr -d ' ' | tr ',' '\n'
}
words=$(for command in "" defaults "defaults read" access calendars agenda detect; do expected $command; done | sed 's/^--//' | sort -u)
[ "$(wc -l <<<"$words")" -gt 25 ] || { echo "FAILED: the program's messages are others" >&2; exit 1; }
for word in $words; do
    for file in "$folder"/*; do
        grep -qwF -e "$word" "$file" || { echo "FAILED: $file doesn't have $word" >&2; exit 1; }
    done
done
bash -c '. "$1"; COMP_WORDS=(mivora se) COMP_CWORD=1; _mivora; [ "${COMPREPLY[*]}" = settings ]' _ "$folder/mivora.bash"
echo passed
