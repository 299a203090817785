#!/usr/bin/env bash
# test_folders.sh PROJECT: each folder, and each room of a folder, includes from those that docs/architecture.md names for
# it, and from no others.
set -euo pipefail
cd "$1"
page=docs/architecture.md

# The rows of the page's table, as "folder: included folders", both sorted.
told() {
    awk -F '|' '/^\| `[a-z0-9\/]+\/` \|/ {
        gsub(/[` ]/, "", $2)
        sub(/\/$/, "", $2)
        sub(/Qt alone/, "", $4)
        print $2 ":" $4
    }' "$page" | normalised
}

# The same from the #include lines.
real() {
    local folder
    for folder in $(told | cut -d : -f 1); do
        printf '%s: ' "$folder"
        find "$folder" -maxdepth 1 \( -name '*.h' -o -name '*.cpp' \) -exec cat {} + |
            sed -n 's|^#include "\([a-z0-9/]*\)/[^/]*"$|\1|p' | awk -v own="$folder" '$0 != own' | sort -u | tr '\n' ' '
        printf '\n'
    done | normalised
}

normalised() {
    local folder others
    while IFS=: read -r folder others; do
        # shellcheck disable=SC2086  # the folders are words
        printf '%s: %s\n' "$folder" "$(printf '%s\n' $others | sort | xargs)"
    done | sort
}

# A folder of sources that the table leaves out would be unchecked.
find . -name '*.cpp' -printf '%P\n' | sed 's|/[^/]*$||' | sort -u | while read -r folder; do
    case $folder/ in tests/* | bench/* | packaging/* | translations/* | build/*) continue ;; esac
    told | grep -q "^$folder:" || { echo "$page does not name the folder $folder/." >&2; exit 1; }
done
[ "$(told | wc -l)" -ge 12 ] || { echo "The table of folders in $page was not found." >&2; exit 1; }
diff --label "$page" --label 'the #include lines' <(told) <(real)
