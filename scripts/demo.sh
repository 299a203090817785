#!/usr/bin/env bash
# Demonstrates the editor on a virtual screen: draws, saves, checks the saved files and takes screenshots, all in
# build/demo/. With --update-pictures, also copies the pictures of the manual to docs/pictures/.
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
# shellcheck source=scripts/setup.sh
. "$root/scripts/setup.sh"
cd "$root"

[ -x build/release/kytstudio ] || fail "editor not built: use ./run.sh --demo"
rm -rf build/demo
mkdir -p build/demo
tests/on_screen scripts/demo_steps.sh "$root/build/demo"

# copy_picture NAME SIZE [OPTION...]: copies a picture, reduced in size and number of colours.
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
    # The paper picture of a sample that the manual shows beside its window, and all looks beside RDKit's own.
    build/release/kytconvert data/alanine.kyt -o docs/pictures/alanine-paper.png --dpi 160
    scripts/compare_pictures.py build/release/kytconvert docs/pictures/looks.png
fi
say "Done: workspaces and pictures are in build/demo/"
