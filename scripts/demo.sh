#!/usr/bin/env bash
# Shows the editor at work on a virtual screen: draws, saves, checks what was saved, and takes pictures on the way.
# Leaves everything in build/demo/. With --update-pictures, also copies the pictures of the manual to docs/pictures/.
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
# shellcheck source=scripts/setup.sh
. "$root/scripts/setup.sh"
cd "$root"

[ -x build/release/kytstudio ] || fail "The editor is not built yet; ./run.sh --demo builds it and runs this."
rm -rf build/demo
mkdir -p build/demo
tests/on_screen scripts/demo_steps.sh "$root/build/demo"

# copy_picture NAME SIZE [OPTION...]: a picture that is small enough to keep, with a limited set of colours.
copy_picture() {
    convert "build/demo/$1.png" "${@:3}" -resize "$2>" -strip +dither -colors 128 "PNG8:docs/pictures/$1.png"
}

if [ "${1:-}" = --update-pictures ]; then
    mkdir -p docs/pictures
    for picture in alanine first-bond double-bond drawing fixed chain-count chain merging whole library \
        atom-properties bond-properties close; do
        copy_picture $picture 550x400
    done
    for picture in viewer-wedges viewer-cubane viewer-hexane; do
        copy_picture $picture 400x300 -shave 8x8 -bordercolor black -border 1 -fuzz 5% -trim +repage -border 40
    done
fi
say "Done; the saved workspaces and the pictures are in build/demo/."
