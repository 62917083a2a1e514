#!/bin/sh
# Draws the walkthrough in its steps and states: onboarding-pictures.sh PROGRAM FOLDER
set -eu
program=$1
folder=$2
for look in light dark; do
    MIVORA_APPEARANCE=$look QT_QPA_PLATFORM=offscreen "$program" "$folder/$look"
done
MIVORA_APPEARANCE=light QT_QPA_PLATFORM=offscreen QT_SCALE_FACTOR=2 "$program" "$folder/double"
MIVORA_APPEARANCE=light QT_QPA_PLATFORM=offscreen "$program" "$folder/mirrored" -reverse
