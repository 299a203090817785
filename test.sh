#!/usr/bin/env bash
set -euo pipefail
root=$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")
# shellcheck source=scripts/setup.sh
. "$root/scripts/setup.sh"

usage() {
    cat <<'END'
Usage: test.sh [--asan]

Installs missing packages with apt, builds KytStudio and runs all tests, each on its own
virtual screen.

  --asan   build and test with AddressSanitizer, LeakSanitizer and UndefinedBehaviorSanitizer
  --help   show this text
END
}

preset=release
for argument in "$@"; do
    case $argument in
    --asan)
        preset=asan
        build_packages+=("${fuzz_packages[@]}")
        ;;
    --help | -h)
        usage
        exit 0
        ;;
    *)
        echo "test.sh: unknown option \"$argument\" (see --help)" >&2
        exit 2
        ;;
    esac
done

say "Building KytStudio ($preset) and running all tests"
install_missing "${build_packages[@]}" "${converter_packages[@]}" "${judge_packages[@]}" "${screen_packages[@]}" \
    "${packaging_packages[@]}"
build "$preset" all -DKYTSTUDIO_WERROR="${KYTSTUDIO_WERROR:-OFF}" -DBUILD_TESTING=ON
exec ctest --preset "$preset" --parallel "${KYTSTUDIO_JOBS:-$(nproc)}"
