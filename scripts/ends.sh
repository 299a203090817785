#!/usr/bin/env bash
# Ends the real program in every way and in every state, and checks what is left. See usage() below.
set -uo pipefail
root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")

usage() {
    cat <<'END'
Usage: ends.sh [--short] [PROGRAM]

Starts the editor on a virtual screen for each state and each end, ends it, and prints a line for
each: whether and how fast it ended, whether a copy equals the drawing, and what is left behind.
Fails if one of them is not as it must be. Ends that need a file system of their own are left out
where mounting is not permitted.

  --short   a dozen pairs instead of all, with 20 seconds instead of 2 for each end
  --help    show this text

PROGRAM is build/release/kytstudio unless it is given.
END
}

ends=(TERM HUP INT QUIT KILL server manager closed session full readonly gone clock memory)
states=(idle bond drag open save close exit about print atom wedge viewer saving pasting)
short=("TERM idle" "TERM pasting" "HUP bond" "INT wedge" "QUIT drag" "KILL idle" "server idle" "server viewer"
    "server pasting" "manager drag" "closed idle" "session viewer" "full save" "readonly exit" "gone idle" "clock idle")

# The drawing of all states, and a large one for a save that takes a moment.
small_drawing() {
    printf 'KYTFILE\n MOLECULE 3 2\n  ATOM N 60 60 0 255 0 0\n  ATOM O 120 90 0 255 0 0\n  ATOM C 60 150 %s 255 0 0\n' 52.5303
    printf '  BOND 0 1 2 1 0\n  BOND 0 2 1 2\n END_MOLECULE\nEND_KYTFILE\n'
}
large_drawing() {
    local x y
    printf 'KYTFILE\n MOLECULE 20000 0\n'
    for ((y = 0; y < 2000; y += 20)); do
        for ((x = 0; x < 2000; x += 10)); do printf '  ATOM C %d %d 0 255 0 0\n' $x $y; done
    done
    printf ' END_MOLECULE\nEND_KYTFILE\n'
}

# --- one case, on a screen of its own ---

# Waits up to 20 seconds for a command to succeed.
until_true() {
    local i
    for ((i = 0; i < 400; ++i)); do
        "$@" >/dev/null 2>&1 && return
        sleep 0.05
    done
    return 1
}
shown() { [ -n "$(xdotool search --onlyvisible --name "$1" 2>/dev/null)" ]; }
ended() { [ ! -d "/proc/$program" ] || [ "$(cut -d' ' -f3 "/proc/$program/stat" 2>/dev/null)" = Z ]; }
focused() { [ "$(xdotool getwindowfocus)" = "$1" ]; }
key() {
    xdotool key --clearmodifiers "$@"
    sleep $pause
}
# Moves the pointer to a point of the canvas.
point() {
    xdotool mousemove --window "$window" $(($1 + canvas_x)) $(($2 + canvas_y))
    sleep $pause
}
processor_time() { awk '{print $14 + $15}' "/proc/$program/stat"; } # in hundredths of a second
copies() { find "$copies" -maxdepth 1 -name '*.kyt' 2>/dev/null; }

# Whether a copy is left that has a name with a date, can be read, and equals the drawing.
copy_equals() {
    local copy
    for copy in $(copies); do
        [[ ${copy##*/} =~ ^[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9-]{8}\.[0-9]{3}[+-][0-9]{4}\.kyt$ ]] || continue
        cmp -s "$copy" "$expected" && "$converter" --to mol "$copy" >/dev/null 2>&1 && return
    done
    return 1
}

canvas_x=40 canvas_y=106 # where the canvas begins in a window of the first size

start_program() {
    cd "$root" || fail "no folder $root" # whose icons give the tool bars their size
    mkdir "$work/bin"
    cp "$program_file" "$work/bin/kytstudio"
    # A converter that takes long, in place of the one beside the program.
    printf '#!/bin/sh\nexec sleep 120\n' >"$work/bin/kytconvert"
    chmod +x "$work/bin/kytconvert"
    mkdir -p "$state" "$work/home"
    # In the background, the shell lets some of the signals be ignored.
    HOME=$work/home XDG_STATE_HOME=$state KYTSTUDIO_OPEN=$drawing ENDS_MARK=$work \
        env --default-signal=HUP,INT,QUIT "$work/bin/kytstudio" >"$work/output" 2>&1 &
    program=$!
    until_true shown "^$drawing\$" || fail "the program did not start"
    window=$(xdotool search --onlyvisible --name "^$drawing\$" | head -n 1)
    xdotool windowactivate "$window"
    until_true focused "$window" || fail "the window has no focus"
    sleep $pause
}

# Starts a session manager, of which the program becomes a client.
start_session() {
    printf '#!/bin/sh\nprintenv SESSION_MANAGER >%q\n' "$work/session" >"$work/tell"
    chmod +x "$work/tell"
    echo "$work/tell" >"$work/.xsmstartup"
    export ICEAUTHORITY=$work/authority
    HOME=$work SM_SAVE_DIR=$work xsm >/dev/null 2>&1 &
    session=$!
    until_true test -s "$work/session" || fail "the session did not start"
    SESSION_MANAGER=$(cat "$work/session")
    export SESSION_MANAGER
}

enter_state() {
    case $1 in
    idle) ;;
    bond)
        key 3
        point 200 150
        xdotool mousedown 1
        point 240 190
        sed -i 's/^END_KYTFILE$/ MOLECULE 1 0\n  ATOM C 200 150 0 255 0 0\n END_MOLECULE\nEND_KYTFILE/' "$expected"
        ;;
    drag)
        point 60 60
        xdotool mousedown 1
        point 90 100
        # The wedge begins at the atom that is dragged and is shorter now.
        sed -i 's/ N 60 60 / N 90 100 /; s/52.5303/34.0335/' "$expected"
        ;;
    open) key ctrl+o && until_true shown "Choose a File" ;;
    save) key alt+f a && until_true shown "Choose a Filename" ;;
    close) key ctrl+w && until_true shown "Close !" ;;
    exit) key ctrl+q && until_true shown "Quit !" ;;
    about) key alt+h a && until_true shown "About" ;;
    print) key ctrl+p && until_true shown "Print" ;;
    atom) point 120 90 && xdotool click 3 && until_true shown "Atom Properties" ;;
    wedge) point 62 120 && xdotool click 3 && until_true shown "Bond Properties" ;;
    viewer) key ctrl+f && until_true shown "MOLECULAR I3D VIEWER" ;;
    saving) xdotool key ctrl+s ;;
    pasting)
        echo CCO | xclip -selection clipboard
        key ctrl+shift+v
        until_true pgrep -P "$program"
        ;;
    esac || fail "the state was not reached"
}

# Whether the program must end; what else must hold is set in $copy: equal, none, any.
act() {
    copy=equal
    case $1 in
    TERM | HUP | INT | QUIT) kill "-$1" "$program" ;;
    KILL) kill -KILL "$program" ;;
    server) pkill -KILL -P "$PPID" -x Xvfb ;;
    manager)
        pkill -KILL -P "$PPID" -x openbox
        return 1
        ;;
    closed)
        wmctrl -ic "$window"
        # A dialog and the viewer must be closed first.
        case $2 in open | save | close | exit | about | print | atom | wedge | viewer) return 1 ;; esac
        ;;
    session) kill -TERM "$session" ;; # saves all programs without a question and ends them
    full)
        copy=none
        dd if=/dev/zero of="$state/fill" bs=1k 2>/dev/null
        kill -TERM "$program"
        ;;
    readonly)
        copy=none
        mount -o remount,ro "$state"
        kill -TERM "$program"
        ;;
    gone)
        copy=any # the folder can be made anew where the file system was
        umount -l "$state"
        kill -TERM "$program"
        ;;
    clock)
        # What was written before lies in the future then.
        mkdir -p "$copies"
        local name
        name=$(date -d '+1 hour' +%Y-%m-%dT%H-%M-%S.000%z).kyt
        printf 'KYTFILE\nEND_KYTFILE\n' >"$copies/$name"
        touch -d "$(date -d '+1 hour' '+%F %T')" "$copies/$name"
        kill -TERM "$program"
        ;;
    memory)
        prlimit --pid "$program" --as=$(($(awk '{print $1}' "/proc/$program/statm") * 4096 + 2000000))
        xdotool key Escape Escape ctrl+o
        sleep 1
        xdotool type --delay 2 "$work/large.kyt"
        xdotool key Return
        sleep 3
        ended || return 1
        ;;
    esac
    [ "$2" != viewer ] || [ $copy = equal ] || copy=any # which was made before the viewer opened
}

fail() {
    printf '%-9s %-8s FAILED: %s\n' "$end" "$state_name" "$*"
    exit 1
}

# Prints a line; fails if something is not as it must be.
one_case() {
    end=$1 state_name=$2 program_file=$3 most_time=$4 # in hundredths of a second
    pause=0.3 # for the program to react
    [ "$most_time" -le 200 ] || pause=1
    converter=$(dirname "$program_file")/kytconvert
    work=$(mktemp -d)
    state=$work/state copies=$work/state/kytstudio drawing=$work/drawing.kyt expected=$work/expected.kyt
    trap 'umount -l "$state" 2>/dev/null; rm -rf "$work"' EXIT
    small_drawing >"$drawing"
    [ "$state_name" != saving ] || large_drawing >"$drawing"
    [ "$end" != memory ] || large_drawing >"$work/large.kyt"
    cp "$drawing" "$expected"
    case $end in full | readonly | gone)
        mkdir -p "$state"
        mount -t tmpfs -o size=256k,mode=700 tmpfs "$state" || fail "no file system can be mounted"
        ;;
    session) start_session ;;
    esac
    start_program
    case $end in KILL | memory) sleep 31 ;; esac # until the copy that is made without being asked for
    enter_state "$state_name"
    # A copy that is made without being asked for is older than the gesture.
    case $end in KILL | memory) cp "$drawing" "$expected" ;; esac
    local start mustEnd=1 problems=() took used
    start=$(date +%s%N)
    act "$end" "$state_name" || mustEnd=
    if [ -n "$mustEnd" ]; then
        until_true ended || { problems+=("does not end"); kill -KILL "$program"; }
        took=$((($(date +%s%N) - start) / 10000000))
        [ "$end" = memory ] || [ $took -le "$most_time" ] || problems+=("took too long")
        took="ended after $((took / 100)).$(printf %02d $((took % 100))) s"
        wait "$program" 2>/dev/null
        took+=" ($?)"
    else
        used=$(processor_time)
        sleep 2
        used=$(($(processor_time) - used))
        [ "$state_name" = viewer ] || [ $used -le 20 ] || problems+=("uses the processor")
        ended && problems+=("has ended")
        took="works on, $((used / 2)) % of a processor"
        xdotool mouseup 1
        kill -TERM "$program"
        if [ "$end" = memory ]; then
            # The toolkit may hang without memory; a second signal ends the program then.
            sleep 2
            kill -TERM "$program" 2>/dev/null
        fi
        until_true ended || { problems+=("does not end afterwards"); kill -KILL "$program"; }
    fi
    check_left
    printf '%-9s %-8s %-42s %s\n' "$end" "$state_name" "$took" "${problems[*]:-copy $copy, nothing left}"
    [ ${#problems[@]} -eq 0 ]
}

# What must hold after every end.
check_left() {
    local found process
    [ "$copy" != equal ] || copy_equals || problems+=("no copy equals the drawing: $(copies | tr '\n' ' ')")
    [ "$copy" != none ] || [ -z "$(copies)" ] || problems+=("there is a copy")
    found=$(find "$work" -name 'unfinished-*' -o -name 'drawing.kyt.*' -o -name 'new-*')
    [ -z "$found" ] || problems+=("left: $found")
    for process in /proc/[0-9]*; do
        if grep -qzx "ENDS_MARK=$work" "$process/environ" 2>/dev/null && [ "$(cut -d' ' -f3 "$process/stat")" != Z ]; then
            problems+=("still runs: $(tr '\0' ' ' <"$process/cmdline")")
        fi
    done
    # What is not freed when the X server is lost, in the middle of anything, is no leak.
    found=$(grep -m1 'ERROR: AddressSanitizer\|runtime error' "$work/output")
    [ -z "$found" ] || problems+=("$found")
    [ "$(tail -n 1 "$drawing")" = END_KYTFILE ] || problems+=("the document is not whole")
}

# --- all cases ---

main() {
    local program=$root/build/release/kytstudio most_time=200 pairs=() end state
    for end in "${ends[@]}"; do
        for state in "${states[@]}"; do
            pairs+=("$end $state")
        done
    done
    while [ $# -gt 0 ]; do
        case $1 in
        --short) pairs=("${short[@]}") most_time=2000 ;;
        --help | -h)
            usage
            exit 0
            ;;
        -*)
            echo "ends.sh: unknown option \"$1\" (see --help)" >&2
            exit 2
            ;;
        *) program=$(readlink -f "$1") ;;
        esac
        shift
    done
    # In name spaces of their own, file systems can be mounted that nobody else sees.
    local wrapper=() failed=0
    if unshare --mount true 2>/dev/null; then
        wrapper=(unshare --mount)
    elif unshare --user --map-root-user --mount true 2>/dev/null; then
        wrapper=(unshare --user --map-root-user --mount)
    fi
    for pair in "${pairs[@]}"; do
        read -r end state <<<"$pair"
        case $end in full | readonly | gone)
            if [ ${#wrapper[@]} -eq 0 ]; then
                printf '%-9s %-8s not tried: no permission to mount\n' "$end" "$state"
                continue
            fi
            ;;
        esac
        "${wrapper[@]}" "$root/tests/on_screen" "$root/scripts/ends.sh" --one "$end" "$state" "$program" $most_time 2>/dev/null || failed=$((failed + 1))
    done
    echo "${#pairs[@]} ends, $failed failed"
    [ $failed -eq 0 ]
}

if [ "${1-}" = --one ]; then
    shift
    one_case "$@"
else
    main "$@"
fi
