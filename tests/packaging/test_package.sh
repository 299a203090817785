#!/usr/bin/env bash
# test_package.sh PROJECT PACKAGES VERSION: the life of the Debian package in a clean root: it is installed, started from
# another folder, used with mouse and keyboard, and removed without a trace. Runs on a virtual screen.
#
# Where mounts are allowed, the clean root is this system seen through an overlay: with its libraries, package database
# and triggers, but without the project's folder; nothing of this system is changed. Elsewhere it is a folder with a copy
# of the package database, in which dpkg checks the dependencies all the same. KYTSTUDIO_CLEAN_ROOT=overlay or =folder
# asks for one of them.
# shellcheck source=tests/packaging/checks.sh
. "$(dirname "$0")/checks.sh"
need dpkg chroot xprop xdotool compare
project=$1
version=$3
pictures=$(dirname "$2") # of a failure
packages=("$2"/kytstudio_*.deb)
expect_equal "The number of packages" "${#packages[@]}" 1

# ---- the clean root

# overlay: makes $work/root out of this system. To be called in a mount namespace of its own.
overlay() {
    mkdir "$work/layer" "$work/root"
    mount -t tmpfs -o mode=755 tmpfs "$work/layer" || return
    mkdir "$work/layer/changes" "$work/layer/work"
    mount -t overlay -o "lowerdir=/,upperdir=$work/layer/changes,workdir=$work/layer/work" overlay "$work/root" || return
    mkdir -p "$work/root/dev" "$work/root/proc" "$work/root$work"
    mount --rbind /dev "$work/root/dev" || return
    mount --rbind /proc "$work/root/proc" || return
    mount --bind "$work" "$work/root$work" || return
    mount -t tmpfs tmpfs "$work/root$project" || return
    chroot "$work/root" dpkg --version >/dev/null
}

# Mounts are made in a second run of this script, in a namespace that ends with it; only then is `work` cleared away.
if [ -n "${KYTSTUDIO_OVERLAY_IN:-}" ]; then
    trap - EXIT
    rmdir "$work"
    work=$KYTSTUDIO_OVERLAY_IN
    if ! overlay 2>"$work/overlay.log"; then
        touch "$work/refused"
        exit 1
    fi
    kind=overlay
    # Indexing all manual pages takes long and tells nothing here.
    rm -f "$work/root/var/lib/man-db/auto-update"
else
    kind=folder
    wanted=${KYTSTUDIO_CLEAN_ROOT:-overlay}
    if [ "$wanted" = overlay ] && [ "$(id -u)" -eq 0 ] && unshare --mount true 2>/dev/null; then
        status=0
        KYTSTUDIO_OVERLAY_IN=$work unshare --mount "$0" "$@" || status=$?
        [ -e "$work/refused" ] || exit $status
        cat "$work/overlay.log"
        rmdir "$work/root" "$work/layer"
    fi
    [ "${KYTSTUDIO_CLEAN_ROOT:-folder}" = folder ] || fail "There can be no overlay here."
    # What is installed here, but no triggers or scripts: what they would run is not there.
    database=var/lib/dpkg
    mkdir -p "$work/root/$database"/{info,triggers,updates}
    cp /$database/status "$work/root/$database"
    cp /$database/info/format /$database/info/*.list "$work/root/$database/info"
    for file in arch diversions statoverride; do
        [ ! -f /$database/$file ] || cp /$database/$file "$work/root/$database"
    done
fi
root=$work/root
printf 'The clean root: %s\n' $kind

# in_root COMMAND...: as root in the clean root.
in_root() {
    if [ $kind = overlay ]; then
        chroot "$root" env DEBIAN_FRONTEND=noninteractive PATH=/usr/sbin:/usr/bin:/sbin:/bin "$@"
    elif [ "$(id -u)" -eq 0 ]; then
        "$1" --root="$root" "${@:2}"
    else
        fakeroot "$1" --root="$root" "${@:2}"
    fi
}

# list: what is in the clean root, but for logs, caches and dpkg's own backups, and for the type chemical/x-mdl-molfile:
# update-mime-database creates its file, but does not remove files of media types other than the registered ones. In the
# overlay, only what differs from this system: files that it does not have, and marks in place of files that are gone.
list() {
    local top=$root
    [ $kind = folder ] || top=$work/layer/changes
    (cd "$top" && find . \( -path "./${work#/}" -o -path ./var/cache -o -path ./var/log -o -path ./var/tmp \
        -o -path ./usr/share/mime/chemical \) -prune -o \
        ! -path './var/lib/dpkg/*-old' ! -path './var/lib/dpkg/*lock*' ! -path './var/lib/dpkg/triggers/*' \
        -printf '%y %P\n' | sort) |
        while read -r type path; do
            if [ $kind = folder ] || [ "$type" = c ] || { [ ! -e "/$path" ] && [ ! -L "/$path" ]; }; then
                printf '%s %s\n' "$type" "$path"
            fi
        done
}

# ---- installed

if in_root dpkg --status kytstudio >"$work/dpkg.log" 2>&1; then
    in_root dpkg --force-unsafe-io --purge kytstudio >"$work/dpkg.log" 2>&1
fi
list >"$work/before"
cp "${packages[0]}" "$work/kytstudio.deb"
in_root dpkg --force-unsafe-io --install "$work/kytstudio.deb" >"$work/dpkg.log" 2>&1 || fail "It is not installed: $(cat "$work/dpkg.log")"
for file in usr/bin/kytstudio usr/libexec/kytstudio/kytstudio usr/share/applications/kytstudio.desktop \
    usr/share/icons/hicolor/48x48/apps/kytstudio.png usr/share/mime/packages/kytstudio.xml; do
    [ -f "$root/$file" ] || fail "The file /$file is not there."
done
if [ $kind = overlay ]; then
    grep -q kytstudio "$root/usr/share/mime/mime.cache" || fail "The file type is not in the system's database."
fi

# ---- used

# shellcheck source=scripts/demo_lib.sh
. "$project/scripts/demo_lib.sh"
out=$work/out
home="$work/a home"
elsewhere="$work/another folder"
runtime=$work/runtime
mkdir "$out" "$home" "$elsewhere"
mkdir -m 700 "$runtime"
fail() {
    import -silent -window root "$pictures/test_package.png" 2>/dev/null || true
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    [ ! -s "$out/output.log" ] || cat "$out/output.log" >&2
    exit 1
}

# run_installed: starts the program from another folder, in the environment of a new user.
run_installed() {
    local command=("$root/usr/bin/kytstudio")
    # shellcheck disable=SC2016  # the inner shell expands it
    [ $kind = folder ] || command=("$(command -v chroot)" "$root" sh -c 'cd "$1" && exec kytstudio' sh "$elsewhere")
    (cd "$elsewhere" && exec env -i PATH=/usr/bin:/bin HOME="$home" DISPLAY="$DISPLAY" XDG_RUNTIME_DIR="$runtime" \
        LC_ALL=C.UTF-8 "${command[@]}") \
        >"$out/output.log" 2>&1 &
    editor=$!
    window=$(wait_window "KytStudio $version") || exit 1
    xdotool windowactivate --sync "$window"
    settle 1
}

run_installed
xprop -id "$window" WM_CLASS >"$out/class"
grep -q "\"$(sed -n 's/^StartupWMClass=//p' "$root/usr/share/applications/kytstudio.desktop")\"" "$out/class" ||
    fail "The window is not the desktop entry's: $(cat "$out/class")"
xprop -id "$window" _NET_WM_ICON >"$out/icon"
for size in 16 32 48 128; do
    grep -a -q "Icon ($size x $size)" "$out/icon" || fail "The window has no icon of $size pixels."
done
for name in icons lib data; do
    link=$home/.local/share/kytstudio/$name
    [ -L "$link" ] || fail "There is no link $link."
done

cd "$project" # whose pictures are looked for on the screen
find_canvas
picture empty >/dev/null
find_icon lib/water.xpm "$out/empty.png" || fail "There is no button for water."
point "$found_x" "$found_y"
xdotool click 1
# The button is drawn as pressed, and the status bar tells; only the canvas counts.
size=$(identify -format '%w %h' "$out/empty.png")
read -r width height <<<"$size"
area=$((width - canvas_x - 30))x$((height - canvas_y - 60))+$canvas_x+$canvas_y
for _ in $(seq 40); do
    picture water >/dev/null
    changed=$(compare -metric AE -extract "$area" "$out/empty.png" "$out/water.png" null: 2>&1) || true
    [ "$changed" -lt 100 ] || break
done
[ "$changed" -ge 100 ] || fail "No water is seen on the canvas: $changed pixels changed."
save_as saved
for _ in $(seq 40); do
    [ ! -s "$out/saved.kyt" ] || break
    settle
done
expect_saved saved
expect_lines saved 1 '^  ATOM O ' "oxygen atoms"
expect_lines saved 2 '^  ATOM H ' "hydrogen atoms"
expect_lines saved 2 '^  BOND [0-9]+ [0-9]+ 1 1$' "single bonds"
quit_editor
expect_equal "What is made in the folder that it was started from" "$(ls -A "$elsewhere")" ""

# ---- removed; what is in the user's home is the user's

in_root dpkg --force-unsafe-io --purge kytstudio >"$work/dpkg.log" 2>&1 || fail "It is not removed: $(cat "$work/dpkg.log")"
list >"$work/after"
difference=$(diff "$work/before" "$work/after") || fail "The files are not those from before: $difference"
if [ $kind = overlay ]; then
    ! grep -rlq kytstudio "$root"/usr/share/mime/{mime.cache,globs,magic} "$root/usr/share/applications" ||
        fail "The desktop's databases still know it."
fi
status=$(in_root dpkg --status kytstudio 2>&1) && fail "dpkg still knows it: $status"
echo "Installed, used and removed."
