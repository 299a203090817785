#!/usr/bin/env bash
set -euo pipefail
root=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
# shellcheck source=scripts/setup.sh
. "$root/scripts/setup.sh"

usage() {
    cat <<'END'
Usage: run.sh [--demo]

Installs what KytStudio needs and this machine lacks (with apt), builds the editor and starts it.

  --demo   start the editor on a virtual screen, draw with it, and leave the saved
           workspace and pictures in build/demo/; also done where there is no display
  --help   show this text
END
}

demo=no
for argument in "$@"; do
    case $argument in
    --demo) demo=yes ;;
    --help | -h)
        usage
        exit 0
        ;;
    *)
        echo "run.sh: There is no option \"$argument\"; --help lists those that there are." >&2
        exit 2
        ;;
    esac
done

# has_display: whether DISPLAY is set and, where it names a display of this machine, an X server listens there.
has_display() {
    [ -n "${DISPLAY:-}" ] || return 1
    local number=${DISPLAY#:}
    [ "$number" != "$DISPLAY" ] || return 0
    grep -q "/tmp/\.X11-unix/X${number%%.*}\$" /proc/net/unix
}

if [ $demo = no ] && ! has_display; then
    say "There is no display (DISPLAY is \"${DISPLAY:-}\"), so the editor is shown at work on a virtual screen."
    demo=yes
fi

if [ $demo = yes ]; then
    say "Building KytStudio for a demonstration on a virtual screen."
    install_missing "${build_packages[@]}" "${screen_packages[@]}"
    build release kytstudio -DKYTSTUDIO_WERROR=OFF
    exec "$root/scripts/demo.sh"
fi

say "Building and starting KytStudio."
install_missing "${build_packages[@]}"
build release kytstudio -DKYTSTUDIO_WERROR=OFF
# The editor finds icons/, lib/, data/ and its translations in its working directory, and is made for X11.
cd "$root"
for translation in build/release/translations/kytstudio.*.qm; do
    [ ! -e "$translation" ] || ln -sfn "$translation" .
done
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-xcb}
exec build/release/kytstudio
