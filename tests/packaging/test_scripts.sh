#!/usr/bin/env bash
# test_scripts.sh PROJECT LAUNCHER: shellcheck has nothing to say about the launcher and the project's scripts.
# shellcheck source=tests/packaging/checks.sh
. "$(dirname "$0")/checks.sh"
need shellcheck

cd "$1"
mapfile -d '' -t scripts < <(find . -name .git -prune -o -path ./build -prune -o -type f -size -200k -print0 |
    xargs -0 awk 'FNR == 1 { if (/^#!.*[\/ ](ba)?sh$/ || /^# shellcheck shell=/) printf "%s%c", FILENAME, 0; nextfile }')
[ ${#scripts[@]} -ge 10 ] || fail "Only ${#scripts[@]} scripts were found."
silent shellcheck --external-sources "${scripts[@]}"
silent shellcheck --shell=sh "$2"
