#!/usr/bin/env bash
# Checks all sources with clang-tidy (.clang-tidy, tests/.clang-tidy) and those of the program with cppcheck; exits with
# 1 if one of them reports anything. Requires a build of all tests with the release preset, whose compile commands and
# generated files are used.
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
# shellcheck source=scripts/setup.sh
. "$root/scripts/setup.sh"
cd "$root"

install_missing clang-tidy cppcheck git
build=build/release
[ -f "$build/compile_commands.json" ] || fail "release preset not configured: run ./test.sh"
# tracked PATHSPEC...: fills `sources` with the tracked C++ sources.
tracked() {
    mapfile -d '' -t sources < <(git -c safe.directory="$root" ls-files -z -- "$@")
    [ ${#sources[@]} -gt 0 ] || fail "no tracked sources found"
}

tracked '*.cpp'
say "Checking ${#sources[@]} sources with clang-tidy"
printf '%s\0' "${sources[@]}" |
    xargs -0 -P "${KYTSTUDIO_JOBS:-$(nproc)}" -n 3 clang-tidy -p "$build" --quiet 2>/dev/null ||
    fail "clang-tidy reported problems"

tracked '*.cpp' ':!tests' ':!bench'
say "Checking ${#sources[@]} sources with cppcheck"
cppcheck --quiet --language=c++ --std=c++20 --library=qt --inline-suppr --error-exitcode=1 \
    --enable=warning,performance,portability --suppress=missingIncludeSystem --suppress=cppcheckError \
    -j "${KYTSTUDIO_JOBS:-$(nproc)}" -I . \
    "${sources[@]}" || fail "cppcheck reported problems"
