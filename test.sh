#!/usr/bin/env bash
set -euo pipefail
root=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
# shellcheck source=scripts/setup.sh
. "$root/scripts/setup.sh"

usage() {
    cat <<'END'
Usage: test.sh [--asan]

Installs what KytStudio and its tests need and this machine lacks (with apt), builds
everything and runs all tests, each on a virtual screen of its own.

  --asan   build and test with AddressSanitizer, LeakSanitizer and UndefinedBehaviorSanitizer
  --help   show this text
END
}

preset=release
for argument in "$@"; do
    case $argument in
    --asan) preset=asan ;;
    --help | -h)
        usage
        exit 0
        ;;
    *)
        echo "test.sh: There is no option \"$argument\"; --help lists those that there are." >&2
        exit 2
        ;;
    esac
done

say "Building KytStudio ($preset), then running all of its tests."
install_missing "${build_packages[@]}" "${converter_packages[@]}" "${screen_packages[@]}" "${packaging_packages[@]}"
build "$preset" all -DKYTSTUDIO_WERROR="${KYTSTUDIO_WERROR:-OFF}" -DBUILD_TESTING=ON
exec ctest --preset "$preset" --parallel "${KYTSTUDIO_JOBS:-$(nproc)}"
