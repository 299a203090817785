#!/usr/bin/env bash
# The steps of the demo: demo_steps.sh FOLDER. Runs on a virtual screen, from the project's folder.
set -euo pipefail
out=$1
# shellcheck source=scripts/demo_lib.sh
. "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")/demo_lib.sh"

say "Starting the editor"
start_editor
picture start

say "Drawing bonds: single, double, wedge up, wedge down, dashed"
button singlebond
click 60 125
aim 103 100
picture first-bond
xdotool click 1
bond 103 100 147 125
bond 60 125 103 100
picture double-bond
button stereoup
bond 147 125 190 100
button stereodown
bond 147 125 195 145
button dashedbond
bond 103 100 103 50
picture bonds

say "Dragging the end of the wedge"
button view
drag 190 100 200 75
picture drawing

say "Saving with the dialog"
press ctrl+s
save_dialog drawing
expect_saved drawing
expect_lines drawing 6 '^  ATOM ' 'atoms'
expect_lines drawing 5 '^  BOND ' 'bonds'
expect_lines drawing 1 '^  BOND [0-9]+ [0-9]+ 2 1 1$' 'double bonds'
expect_lines drawing 1 '^  BOND [0-9]+ [0-9]+ 1 1$' 'single bonds'
expect_lines drawing 1 '^  BOND [0-9]+ [0-9]+ 1 2$' 'wedges up'
expect_lines drawing 1 '^  BOND [0-9]+ [0-9]+ 1 3$' 'wedges down'
expect_lines drawing 1 '^  BOND [0-9]+ [0-9]+ 1 0$' 'dashed bonds'
expect_lines drawing 1 '^  ATOM C 200 75 ' 'atoms at the position that the wedge was dragged to'

say "Showing the wedges from the side in the 3D viewer"
open_viewer
turn x 12
picture viewer-wedges "$viewer"
close_viewer

say "Changing the symbol and colour of an atom and the angle of a wedge"
click 200 75 3
dialog=$(wait_window 'Atom Properties') || exit 1
enter OH
for colour in 255 0 0; do
    press Tab
    enter $colour
done
picture atom-properties "$dialog"
press Return
wait_closed 'Atom Properties'
click 182 92 3
dialog=$(wait_window 'Bond Properties') || exit 1
enter 35
picture bond-properties "$dialog"
press Return
wait_closed 'Bond Properties'
save_as edited
expect_saved edited
expect_lines edited 1 '^  ATOM OH 200 75 [^ ]+ 255 0 0$' 'atoms renamed to OH'

say "Drawing a ring with fixed length and fixed angle, with Control held"
press ctrl+n
button fixedlength
button fixedangle
button singlebond
click 150 180
xdotool keydown ctrl
click 165 154
click 195 154
click 210 180
click 195 206
click 165 206
aim 152 183
picture fixed
xdotool keyup ctrl
click 150 180
button fixedlength
button fixedangle
save_as ring
expect_saved ring
expect_lines ring 6 '^  ATOM C ' 'atoms of the ring'
expect_lines ring 6 '^  BOND [0-9]+ [0-9]+ 1 1$' 'bonds of the ring'

say "Merging two atoms"
press ctrl+n
button singlebond
bond 70 150 130 115
bond 230 115 290 150
button view
take 230 115
carry 230 115 133 116
picture merging
xdotool mouseup 1
save_as merged
expect_saved merged
expect_lines merged 1 '^ MOLECULE 3 2$' 'molecules of three atoms'

say "Moving and rotating whole molecules"
press ctrl+n
button benzene
drag 95 82 95 162
button hexane
button rotate
drag 121 37 124 37
picture whole
save_as whole
expect_saved whole
expect_lines whole 1 '^  ATOM C 96\.3497 162\.047 ' 'atoms of the moved benzene'
expect_lines whole 1 '^  ATOM C 117\.879 37\.4678 ' 'atoms at the rotation centre of the hexane'
expect_lines whole 0 '^  ATOM C 140\.671 19\.6854 ' 'atoms at their position before the rotation'
press ctrl+w
dialog=$(wait_window 'Close !') || exit 1
picture close "$dialog"
press Escape
wait_closed 'Close !'

say "Opening and saving the samples"
for sample in alanine caffeine; do
    press ctrl+o
    wait_window 'Choose a File' >/dev/null || exit 1
    enter $sample.kyt
    press Return
    wait_closed 'Choose a File'
    settle 4.5 # until the status bar no longer shows the path of the file
    picture $sample
    save_as $sample
    cmp -s data/$sample.kyt "$out/$sample.kyt" || fail "$sample.kyt: differs from the sample that was opened"
done

say "Drawing a zigzag chain"
press ctrl+n
press ctrl+g
click 30 170
point $((canvas_x + 330)) $((canvas_y + 70))
picture chain-count
xdotool click 1
picture chain
save_as chain
expect_saved chain
expect_lines chain 13 '^  ATOM C ' 'atoms of the chain'
expect_lines chain 12 '^  BOND [0-9]+ [0-9]+ 1 1$' 'bonds of the chain'

say "Inserting the library molecules"
press ctrl+n
for molecule in benzene hexane cubane prop water megaphon; do
    button $molecule
done
picture library
save_as library
expect_saved library
expect_lines library 6 '^ MOLECULE ' 'molecules'

for molecule in cubane hexane; do
    say "Showing $molecule in the 3D viewer"
    press ctrl+n
    button $molecule
    open_viewer
    picture viewer-$molecule-front "$viewer"
    hold x 0.4
    hold e 0.4
    picture viewer-$molecule "$viewer"
    if cmp -s "$out/viewer-$molecule-front.png" "$out/viewer-$molecule.png"; then
        fail "the model was not rotated"
    fi
    close_viewer
done

say "Ending the editor"
quit_editor
