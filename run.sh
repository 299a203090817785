#!/usr/bin/env bash
set -euo pipefail
root=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
# shellcheck source=scripts/setup.sh
. "$root/scripts/setup.sh"

usage() {
    cat <<'END'
Usage: run.sh [--demo]

Installs missing packages with apt, builds KytStudio and starts it.

  --demo   run a demonstration on a virtual screen and save its workspaces and
           pictures in build/demo/; default if there is no display
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
        echo "run.sh: unknown option \"$argument\" (see --help)" >&2
        exit 2
        ;;
    esac
done

# has_display: checks that DISPLAY is set and, for a local display, that an X server is listening.
has_display() {
    [ -n "${DISPLAY:-}" ] || return 1
    local number=${DISPLAY#:}
    [ "$number" != "$DISPLAY" ] || return 0
    grep -q "/tmp/\.X11-unix/X${number%%.*}\$" /proc/net/unix
}

if [ $demo = no ] && ! has_display; then
    say "No display (DISPLAY is \"${DISPLAY:-}\"): running the demonstration on a virtual screen"
    demo=yes
fi

if [ $demo = yes ]; then
    say "Building KytStudio for the demonstration"
    install_missing "${build_packages[@]}" "${screen_packages[@]}"
    build release kytstudio -DKYTSTUDIO_WERROR=OFF
    exec "$root/scripts/demo.sh"
fi

say "Building and starting KytStudio"
install_missing "${build_packages[@]}"
build release kytstudio -DKYTSTUDIO_WERROR=OFF
# The editor reads icons/, lib/, data/ and its translations from its working directory, and needs X11.
cd "$root"
for translation in build/release/translations/kytstudio.*.qm; do
    [ ! -e "$translation" ] || ln -sfn "$translation" .
done
export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-xcb}
exec build/release/kytstudio
