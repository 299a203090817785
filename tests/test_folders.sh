#!/usr/bin/env bash
# test_folders.sh PROJECT: each folder includes from those folders that docs/architecture.md names for it, and from no
# others.
set -euo pipefail
cd "$1"
page=docs/architecture.md

# The rows of the page's table, as "folder: included folders", both sorted.
told() {
    awk -F '|' '/^\| `[a-z0-9]+\/` \|/ {
        gsub(/[` \/]/, "", $2)
        sub(/Qt alone/, "", $4)
        print $2 ":" $4
    }' "$page" | normalised
}

# The same from the #include lines.
real() {
    local folder
    for folder in $(told | cut -d : -f 1); do
        printf '%s: ' "$folder"
        find "$folder" \( -name '*.h' -o -name '*.cpp' \) -exec cat {} + |
            awk -F '[/"]' -v own="$folder" '/^#include "[a-z0-9]+\// && $2 != own { print $2 }' | sort -u | tr '\n' ' '
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
for folder in */CMakeLists.txt; do
    folder=${folder%/CMakeLists.txt}
    case $folder in tests | bench | packaging | translations) continue ;; esac
    told | grep -q "^$folder:" || { echo "$page does not name the folder $folder/." >&2; exit 1; }
done
[ "$(told | wc -l)" -ge 8 ] || { echo "The table of folders in $page was not found." >&2; exit 1; }
diff --label "$page" --label 'the #include lines' <(told) <(real)
