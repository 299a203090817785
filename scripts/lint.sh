#!/usr/bin/env bash
# Reads the program's sources with clang-tidy (.clang-tidy) and cppcheck; ends with 1 when one of them finds something.
# The release preset must have been built: its compile commands and generated headers are used.
set -euo pipefail
root=$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")
# shellcheck source=scripts/setup.sh
. "$root/scripts/setup.sh"
cd "$root"

install_missing clang-tidy cppcheck git
build=build/release
[ -f "$build/compile_commands.json" ] || fail "The release preset has not been configured; ./test.sh does it."
mapfile -d '' -t sources < <(git -c safe.directory="$root" ls-files -z -- '*.cpp' ':!tests' ':!bench')
[ ${#sources[@]} -gt 0 ] || fail "No tracked source was found to check."

say "Reading ${#sources[@]} sources with clang-tidy."
printf '%s\0' "${sources[@]}" |
    xargs -0 -P "${KYTSTUDIO_JOBS:-$(nproc)}" -n 3 clang-tidy -p "$build" --quiet 2>/dev/null ||
    fail "clang-tidy found something; see above."

say "Reading them with cppcheck."
cppcheck --quiet --language=c++ --std=c++20 --library=qt --inline-suppr --error-exitcode=1 \
    --enable=warning,performance,portability --suppress=missingIncludeSystem --suppress=cppcheckError -j "${KYTSTUDIO_JOBS:-$(nproc)}" -I . \
    "${sources[@]}" || fail "cppcheck found something; see above."
