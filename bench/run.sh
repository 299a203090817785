#!/usr/bin/env bash
# Builds the benchmarks with the release preset, runs them on a virtual screen, and writes the results and the machine's
# properties into docs/performance.md. Takes about ten minutes; nothing else should run at the same time.
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
# shellcheck source=scripts/setup.sh
. "$root/scripts/setup.sh"
cd "$root"

page=docs/performance.md
table=build/release/bench/table.md

machine() {
    printf 'Measured on %s: %s, %s processors, %s MiB of memory, %s, Qt %s, software rendering.\n\n' \
        "$(date -u +%F)" "$(awk -F ': *' '/^model name/ { print $2; exit }' /proc/cpuinfo)" "$(nproc)" \
        "$(awk '/^MemTotal/ { print int($2 / 1024) }' /proc/meminfo)" \
        "$(. /etc/os-release && printf '%s' "$PRETTY_NAME")" "$(qtpaths6 --query QT_VERSION)"
}

install_missing "${build_packages[@]}" "${converter_packages[@]}" "${screen_packages[@]}" "${judge_packages[@]}" libxcb-xtest0-dev
for target in kytstudio kytconvert kytstudio_bench empty_window deep_bench i3d_bench; do
    build release "$target"
done

{
    machine
    tests/on_screen build/release/bench/kytstudio_bench
    fence='```'
    printf '\nDeep and dense drawings:\n\n%s\n' "$fence"
    tests/on_screen build/release/bench/deep_bench
    printf '%s\n\nThe 3D window:\n\n%s\n' "$fence" "$fence"
    tests/on_screen build/release/bench/i3d_bench
    printf '%s\n\nThe converter:\n\n' "$fence"
    bench/convert.sh
    printf '\n'
    bench/lists.sh
} | tee "$table"

# Replace the text between the two marks in the page.
awk -v table="$table" '
    /<!-- figures -->/ { print; print ""; while ((getline line < table) > 0) print line; print ""; skipping = 1 }
    /<!-- end of figures -->/ { skipping = 0 }
    !skipping && !/<!-- figures -->/ { print }
' "$page" >"$page.new"
mv "$page.new" "$page"
