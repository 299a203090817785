# shellcheck shell=bash
# Functions for the demo: windows, toolbar buttons, the mouse on the canvas, pictures, and checks of saved files. To be
# sourced; the caller sets `out` to the folder for pictures and workspaces.
# shellcheck disable=SC2154  # out is set by the caller

say() {
    printf '%s\n' "$*"
}

# fail MESSAGE: prints an error message, saves a picture of the whole screen and ends the script.
fail() {
    import -silent -window root "$out/failure.png" 2>/dev/null || true
    printf 'demo: %s\n' "$*" >&2
    printf 'demo: %s\n' "screenshot: build/demo/failure.png" >&2
    exit 1
}

# settle [SECONDS]: waits until the editor has processed all input and repainted.
settle() {
    sleep "${1:-0.4}"
}

# ---- windows

# wait_window TITLE: waits for the window with this title and prints its id.
wait_window() {
    local id
    for _ in $(seq 150); do
        id=$(xdotool search --onlyvisible --name "^$1\$" 2>/dev/null | head -n 1)
        if [ -n "$id" ]; then
            settle
            printf '%s\n' "$id"
            return
        fi
        sleep 0.2
    done
    fail "window \"$1\" did not open"
}

# wait_closed TITLE: waits until no window has this title.
wait_closed() {
    for _ in $(seq 150); do
        [ -z "$(xdotool search --onlyvisible --name "^$1\$" 2>/dev/null)" ] && return
        sleep 0.2
    done
    fail "window \"$1\" did not close"
}

# start_editor: starts the editor and sets `editor` (process id), `window` and the positions of canvas and buttons.
start_editor() {
    build/release/kytstudio >"$out/output.log" 2>&1 &
    editor=$!
    window=$(wait_window 'KytStudio [0-9.]+') || exit 1
    xdotool windowactivate --sync "$window"
    settle 1
    find_canvas
    find_buttons
}

# quit_editor: ends the editor with the Exit command and checks its exit status.
quit_editor() {
    press ctrl+q
    wait_window 'Quit !' >/dev/null || exit 1
    press Return
    local status=0
    wait "$editor" || status=$?
    [ $status -eq 0 ] || fail "editor exited with status $status"
}

# picture NAME [WINDOW]: saves a picture of a window, by default the editor's.
picture() {
    settle
    import -silent -window "${2:-$window}" "$out/$1.png" || fail "cannot take picture \"$1\""
    say "    picture: build/demo/$1.png"
}

# ---- finding things on the screen

# find_canvas: sets canvas_x and canvas_y, the canvas origin in window coordinates: the top-left corner of the white
# area around the centre of the empty window.
find_canvas() {
    local shot=$out/find.png size width height
    import -silent -window "$window" "$shot"
    size=$(identify -format '%w %h' "$shot")
    read -r width height <<<"$size"
    canvas_x=$(white_from "$shot" "$((width / 2))x1+0+$((height / 2))")
    canvas_y=$(white_from "$shot" "1x$((height / 2))+$((width / 2))+0")
    if [ "$canvas_x" -ge $((width / 2)) ] || [ "$canvas_y" -ge $((height / 2)) ]; then
        fail "canvas not found in the editor's window"
    fi
}

# white_from PICTURE STRIP: prints the start of the white run at the end of a strip that is one pixel wide.
white_from() {
    convert "$1" -crop "$2" +repage -depth 8 rgb:- | od -An -v -t u1 -w3 |
        awk '{ if ($1 == 255 && $2 == 255 && $3 == 255) { if (!run) { start = NR - 1; run = 1 } } else run = 0 }
             END { print run ? start : NR }'
}

declare -A button_x button_y

# find_buttons: finds the buttons of all tools and library molecules by their icons.
find_buttons() {
    local icon name
    import -silent -window "$window" "$out/find.png"
    for icon in icons/*.xpm lib/*.xpm; do
        name=$(basename "$icon" .xpm)
        find_icon "$icon" "$out/find.png" || fail "button with $icon not found in the toolbars"
        button_x[$name]=$found_x
        button_y[$name]=$found_y
    done
    rm "$out/find.png"
}

# find_icon ICON PICTURE: sets found_x and found_y to the centre of the area that matches the opaque pixels of the icon.
find_icon() {
    local found
    found=$(
        {
            identify -format 'icon %w %h\n' "$1"
            convert "$1" -depth 8 rgba:- | od -An -v -t u1 -w4
            identify -format 'picture %w %h\n' "$2"
            convert "$2" -depth 8 rgb:- | od -An -v -t u1 -w3
        } | awk '
            $1 == "icon" { iw = $2; ih = $3; n = 0; next }
            $1 == "picture" { w = $2; h = $3; p = 0; next }
            NF == 4 { if ($4 == 255) { ix[n] = at % iw; iy[n] = int(at / iw); rgb[n++] = $1 " " $2 " " $3 } at++ }
            NF == 3 { seen[p++] = $1 " " $2 " " $3 }
            END {
                for (y = 0; y <= h - ih; y++)
                    for (x = 0; x <= w - iw; x++) {
                        for (i = 0; i < n; i++)
                            if (seen[(y + iy[i]) * w + x + ix[i]] != rgb[i])
                                break
                        if (n > 0 && i == n) {
                            print x + int(iw / 2), y + int(ih / 2)
                            exit
                        }
                    }
            }'
    )
    [ -n "$found" ] && read -r found_x found_y <<<"$found"
}

# ---- mouse and keyboard

# point X Y: moves the pointer to a point of the window, in a few steps like a hand.
point() {
    local step
    for step in 12 6 2; do
        xdotool mousemove --window "$window" $(($1 - step)) $(($2 - step / 2))
        sleep 0.02
    done
    xdotool mousemove --window "$window" "$1" "$2"
    sleep 0.1
}

# button NAME: clicks the toolbar button with this icon.
button() {
    point "${button_x[$1]}" "${button_y[$1]}"
    xdotool click 1
    settle 0.3
}

# click X Y [BUTTON]: clicks a point of the canvas.
click() {
    point $((canvas_x + $1)) $((canvas_y + $2))
    xdotool click "${3:-1}"
    settle 0.2
}

# aim X Y: moves the pointer to a point of the canvas.
aim() {
    point $((canvas_x + $1)) $((canvas_y + $2))
}

# bond X1 Y1 X2 Y2: draws a bond in the current mode with two clicks.
bond() {
    click "$1" "$2"
    click "$3" "$4"
}

# take X Y: presses the left button at a point of the canvas and holds it.
take() {
    aim "$1" "$2"
    xdotool mousedown 1
}

# carry X1 Y1 X2 Y2: moves the pointer over the canvas in ten steps.
carry() {
    local i
    for i in $(seq 10); do
        xdotool mousemove --window "$window" $((canvas_x + $1 + ($3 - $1) * i / 10)) \
            $((canvas_y + $2 + ($4 - $2) * i / 10))
        sleep 0.03
    done
}

# drag X1 Y1 X2 Y2: drags the item at the first point of the canvas to the second.
drag() {
    take "$1" "$2"
    carry "$@"
    xdotool mouseup 1
    settle 0.3
}

# press KEY...: presses keys in the window that has the focus.
press() {
    xdotool key --delay 60 "$@"
    settle 0.3
}

# hold KEY SECONDS: holds a key down.
hold() {
    xdotool keydown "$1"
    sleep "$2"
    xdotool keyup "$1"
    settle 0.2
}

# enter TEXT: replaces the text of the field that has the focus.
enter() {
    xdotool key ctrl+a
    xdotool type --delay 25 "$1"
    settle 0.2
}

# save_dialog NAME: waits for the Save dialog and saves build/demo/NAME.kyt.
save_dialog() {
    wait_window 'Choose a Filename to save under' >/dev/null || exit 1
    enter "$out/$1"
    press Return
    wait_closed 'Choose a Filename to save under'
    settle
}

# save_as NAME: File, Save as...
save_as() {
    press alt+f
    press a
    save_dialog "$1"
}

# open_viewer: opens the 3D viewer, sets `viewer` (its window) and moves the camera close to the model.
open_viewer() {
    press ctrl+f
    viewer=$(wait_window 'MOLECULAR I3D VIEWER') || exit 1
    settle 2
    press o
    fly_nearer 420
}

# turn KEY TIMES: taps a key in the 3D viewer.
turn() {
    local i
    for i in $(seq "$2"); do
        hold "$1" 0.1
    done
}

# close_viewer: closes the 3D viewer and waits until the editor accepts input again.
close_viewer() {
    press Escape
    wait_closed 'MOLECULAR I3D VIEWER'
    xdotool windowactivate --sync "$window"
    settle 2
}

# fly_nearer WIDTH: moves the camera of the 3D viewer towards the model until it is WIDTH pixels wide.
fly_nearer() {
    local width
    for _ in $(seq 40); do
        import -silent -window "$viewer" "$out/find.png"
        # The background is black; the edges of the window are not painted.
        width=$(convert "$out/find.png" -shave 8x8 -bordercolor black -border 1 -fuzz 5% -trim -format %w info: \
            2>/dev/null)
        rm "$out/find.png"
        [ "$width" -ge 20 ] || fail "no model visible in the 3D viewer"
        [ "$width" -ge "$1" ] && return
        xdotool key --delay 20 w w w w w w
        settle 0.2
    done
    fail "camera of the 3D viewer does not approach the model"
}

# ---- checks

# expect_saved NAME: checks that the workspace was written completely.
expect_saved() {
    local file=$out/$1.kyt
    [ -f "$file" ] || fail "$1.kyt: not saved"
    [ "$(head -n 1 "$file")" = KYTFILE ] || fail "$1.kyt: does not start with KYTFILE"
    [ "$(tail -n 1 "$file")" = END_KYTFILE ] || fail "$1.kyt: does not end with END_KYTFILE"
}

# expect_lines NAME COUNT PATTERN WHAT: checks that COUNT lines of a workspace match the pattern.
expect_lines() {
    local count
    count=$(grep -c -E "$3" "$out/$1.kyt" || true)
    [ "$count" -eq "$2" ] || fail "$1.kyt: $count instead of $2 $4"
}
