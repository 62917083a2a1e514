#!/usr/bin/env bash
# The demo as a newcomer on a server sees it: it ends by itself, shows and prints what it promises, and cleans up.
#   demo-without-display.sh SCRIPTS_FOLDER PROGRAM
# Exits with 77 where a program of the virtual desktop is missing.
set -euo pipefail
scripts=$1 program=$2
for needed in Xvfb xfwm4 xfce4-panel scrot hsetroot xdotool xprop; do
    command -v "$needed" >/dev/null || exit 77
done
run=$(mktemp -d)
trap 'rm -rf "$run"' EXIT
fail() {
    echo "FAILED: $1" >&2
    cat "$run/printed" "$run/output/messages.log" >&2
    exit 1
}

mkdir "$run/tmp"
env -u DISPLAY -u WAYLAND_DISPLAY TMPDIR="$run/tmp" MIVORA_DEMO_OUTPUT="$run/output" "$scripts/demo" "$program" \
    >"$run/printed" 2>&1 || fail "the demo ends well"

for text in "Design review .*Zoom" "Release planning" "Next: Design review" "Joining: .*81234567890"; do
    grep -q "$text" "$run/printed" || [ "$(date +%H)" -ge 22 ] || fail "it prints $text"
done
for name in 1-running 2-countdown 3-menu 4-settings; do
    grep -q "$run/output/$name.png" "$run/printed" || fail "it names the picture $name"
    # A picture of nothing has few colours, and those of different moments differ.
    [ "$(stat -c %s "$run/output/$name.png")" -gt 5000 ] || fail "the picture $name shows something"
done
[ "$(sha256sum "$run"/output/*.png | cut -d' ' -f1 | sort -u | wc -l)" -eq 4 ] || fail "every picture is another one"
[ -z "$(ls -A "$run/tmp")" ] || fail "the demo's home is gone"
echo passed
