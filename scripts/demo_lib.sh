# shellcheck shell=bash
# A pair of hands and eyes for the demo: windows, toolbar buttons, the mouse on the canvas, pictures, and checks of what
# was saved. Meant to be sourced; the caller sets `out` to the folder for pictures and workspaces, and `viewer` to the 3D
# viewer's window while it is open.
# shellcheck disable=SC2154  # out and viewer are the caller's

say() {
    printf '%s\n' "$*"
}

# fail SENTENCE: says what went wrong, leaves a picture of the whole screen, and ends the script.
fail() {
    import -silent -window root "$out/failure.png" 2>/dev/null || true
    printf 'demo: %s\n' "$*" >&2
    printf 'demo: %s\n' "The screen at that moment is in build/demo/failure.png." >&2
    exit 1
}

# Time for the editor to take what was sent and to paint it.
settle() {
    sleep "${1:-0.4}"
}

# ---- windows

# wait_window TITLE: prints the id of the window with this title once it is there.
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
    fail "The window \"$1\" did not open."
}

# wait_closed TITLE: returns once no window with this title is left.
wait_closed() {
    for _ in $(seq 150); do
        [ -z "$(xdotool search --onlyvisible --name "^$1\$" 2>/dev/null)" ] && return
        sleep 0.2
    done
    fail "The window \"$1\" did not close."
}

# start_editor: starts the editor and sets `editor` (its process), `window` and where its canvas begins.
start_editor() {
    build/release/kytstudio >"$out/output.log" 2>&1 &
    editor=$!
    window=$(wait_window 'KytStudio [0-9.]+') || exit 1
    xdotool windowactivate --sync "$window"
    settle 1
    find_canvas
    find_buttons
}

# quit_editor: leaves by the Exit command, and expects the editor to end well.
quit_editor() {
    press ctrl+q
    wait_window 'Quit !' >/dev/null || exit 1
    press Return
    local status=0
    wait "$editor" || status=$?
    [ $status -eq 0 ] || fail "The editor ended with status $status."
}

# picture NAME [WINDOW]: takes a picture of a window, the editor's unless another is named.
picture() {
    settle
    import -silent -window "${2:-$window}" "$out/$1.png" || fail "No picture \"$1\" could be taken."
    say "    picture: build/demo/$1.png"
}

# ---- finding things on the screen

# find_canvas: sets canvas_x and canvas_y, where the canvas's corner (0, 0) is in the window. The canvas is white; from
# the middle of the empty window, its corner is where the white ends to the left and above.
find_canvas() {
    local shot=$out/find.png size width height
    import -silent -window "$window" "$shot"
    size=$(identify -format '%w %h' "$shot")
    read -r width height <<<"$size"
    canvas_x=$(white_from "$shot" "$((width / 2))x1+0+$((height / 2))")
    canvas_y=$(white_from "$shot" "1x$((height / 2))+$((width / 2))+0")
    if [ "$canvas_x" -ge $((width / 2)) ] || [ "$canvas_y" -ge $((height / 2)) ]; then
        fail "The canvas was not found in the editor's window."
    fi
}

# white_from PICTURE STRIP: prints where, in a strip one pixel wide, the white that reaches its end begins.
white_from() {
    convert "$1" -crop "$2" +repage -depth 8 rgb:- | od -An -v -t u1 -w3 |
        awk '{ if ($1 == 255 && $2 == 255 && $3 == 255) { if (!run) { start = NR - 1; run = 1 } } else run = 0 }
             END { print run ? start : NR }'
}

declare -A button_x button_y

# find_buttons: looks for every tool's and library molecule's icon in the picture of the window.
find_buttons() {
    local icon name
    import -silent -window "$window" "$out/find.png"
    for icon in icons/*.xpm lib/*.xpm; do
        name=$(basename "$icon" .xpm)
        find_icon "$icon" "$out/find.png" || fail "The button with $icon was not found in the toolbars."
        button_x[$name]=$found_x
        button_y[$name]=$found_y
    done
    rm "$out/find.png"
}

# find_icon ICON PICTURE: sets found_x and found_y to the middle of the place where the icon's opaque pixels are seen.
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

# point X Y: moves the pointer to a point of the window, over a few points on the way as a hand does.
point() {
    local step
    for step in 12 6 2; do
        xdotool mousemove --window "$window" $(($1 - step)) $(($2 - step / 2))
        sleep 0.02
    done
    xdotool mousemove --window "$window" "$1" "$2"
    sleep 0.1
}

# button NAME: presses the toolbar button with the icon of this name.
button() {
    point "${button_x[$1]}" "${button_y[$1]}"
    xdotool click 1
    settle 0.3
}

# click X Y [BUTTON]: clicks on a point of the canvas.
click() {
    point $((canvas_x + $1)) $((canvas_y + $2))
    xdotool click "${3:-1}"
    settle 0.2
}

# aim X Y: points at a point of the canvas.
aim() {
    point $((canvas_x + $1)) $((canvas_y + $2))
}

# bond X1 Y1 X2 Y2: draws in the current mode, by a click at either end.
bond() {
    click "$1" "$2"
    click "$3" "$4"
}

# take X Y: presses the button on what is at a point of the canvas, and keeps it down.
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

# drag X1 Y1 X2 Y2: drags what is at the first point of the canvas to the second.
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

# hold KEY SECONDS: keeps a key down.
hold() {
    xdotool keydown "$1"
    sleep "$2"
    xdotool keyup "$1"
    settle 0.2
}

# enter TEXT: types over what stands in the field that has the focus.
enter() {
    xdotool key ctrl+a
    xdotool type --delay 25 "$1"
    settle 0.2
}

# save_dialog NAME: types a name into the Save dialog that is about to open, and lets it save build/demo/NAME.kyt.
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

# open_viewer: opens the 3D viewer, sets `viewer` and flies near to the model.
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

# close_viewer: closes it, and waits until the editor listens again.
close_viewer() {
    press Escape
    wait_closed 'MOLECULAR I3D VIEWER'
    xdotool windowactivate --sync "$window"
    settle 2
}

# fly_nearer WIDTH: flies towards the model in the 3D viewer until it is that many pixels wide on the screen.
fly_nearer() {
    local width
    for _ in $(seq 40); do
        import -silent -window "$viewer" "$out/find.png"
        # The background is black; the window's rim is not drawn.
        width=$(convert "$out/find.png" -shave 8x8 -bordercolor black -border 1 -fuzz 5% -trim -format %w info: \
            2>/dev/null)
        rm "$out/find.png"
        [ "$width" -ge 20 ] || fail "The 3D viewer shows no model."
        [ "$width" -ge "$1" ] && return
        xdotool key --delay 20 w w w w w w
        settle 0.2
    done
    fail "The 3D viewer does not come nearer to the model."
}

# ---- checks

# expect_saved NAME: the workspace was written, and written to its end.
expect_saved() {
    local file=$out/$1.kyt
    [ -f "$file" ] || fail "The workspace $1.kyt was not saved."
    [ "$(head -n 1 "$file")" = KYTFILE ] || fail "The workspace $1.kyt does not begin with KYTFILE."
    [ "$(tail -n 1 "$file")" = END_KYTFILE ] || fail "The workspace $1.kyt does not end with END_KYTFILE."
}

# expect_lines NAME COUNT PATTERN WHAT: so many lines of a workspace match the pattern.
expect_lines() {
    local count
    count=$(grep -c -E "$3" "$out/$1.kyt" || true)
    [ "$count" -eq "$2" ] || fail "$1.kyt should hold $2 of these, but holds $count: $4."
}
