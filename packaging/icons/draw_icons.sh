#!/usr/bin/env bash
# Renders kytstudio-<size>.png from the two SVG files next to this script: sizes up to 24 pixels from
# kytstudio-small.svg, larger ones from kytstudio.svg. Needs rsvg-convert (package librsvg2-bin on Debian).
# Usage: packaging/icons/draw_icons.sh [FOLDER]; the default folder is that of this script.
set -euo pipefail
here=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
folder=${1:-$here}

for size in 16 22 24 32 48 64 128 256; do
    picture=kytstudio.svg
    [ "$size" -gt 24 ] || picture=kytstudio-small.svg
    rsvg-convert --width "$size" --height "$size" --output "$folder/kytstudio-$size.png" "$here/$picture"
done
