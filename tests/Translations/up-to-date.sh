#!/bin/sh
# Fails when the sources have texts that the translations don't know, or the other way round:
# up-to-date.sh LUPDATE SOURCE_FOLDER
set -eu
lupdate=$1
cd "$2"
copies=$(mktemp -d)
trap 'rm -rf "$copies"' EXIT
cp translations/*.ts "$copies"
options='-silent -no-obsolete -locations none'
# shellcheck disable=SC2086
"$lupdate" $options src -ts "$copies/mivora_de.ts" "$copies/mivora_fr.ts" 2>/dev/null
# shellcheck disable=SC2086
"$lupdate" $options -pluralonly src -ts "$copies/mivora_en.ts" 2>/dev/null
if ! diff -u translations "$copies"; then
    echo 'The target update_translations brings the translations in line with the sources.'
    exit 1
fi
