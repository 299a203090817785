#!/usr/bin/env bash
# test_icons.sh TREE ICONS: the installed icons have the sizes of their folders and show what the vector pictures do.
# shellcheck source=tests/packaging/checks.sh
. "$(dirname "$0")/checks.sh"
need rsvg-convert compare identify xmllint
theme=$1/usr/share/icons/hicolor

silent xmllint --noout "$theme/scalable/apps/kytstudio.svg"
"$2/draw_icons.sh" "$work"
for size in 16 22 24 32 48 64 128 256; do
    icon=$theme/${size}x$size/apps/kytstudio.png
    expect_equal "The size of $icon" "$(identify -format '%m %w %h' "$icon")" "PNG $size $size"
    # Another version of the renderer may differ by a shade.
    difference=$(compare -metric RMSE "$icon" "$work/kytstudio-$size.png" "$work/difference.png" 2>&1 |
        sed 's/.*(\(.*\)).*/\1/') || true
    awk -v d="$difference" 'BEGIN { exit !(d ~ /^[0-9.e-]+$/ && d < 0.03) }' ||
        fail "$icon is not what draw_icons.sh draws (difference $difference)."
done
