# shellcheck shell=bash
# What the packaging tests share. Meant to be sourced; makes a folder `work` of the test's own, which goes with the test.

set -euo pipefail
work=$(mktemp -d)
trap 'rm -rf --one-file-system "$work"' EXIT

# fail SENTENCE: says what is wrong, and ends the test.
fail() {
    printf '%s: %s\n' "${0##*/}" "$*" >&2
    exit 1
}

# need COMMAND...: the tools without which nothing would be checked.
need() {
    local tool
    for tool in "$@"; do
        command -v "$tool" >/dev/null || fail "The tool $tool is missing; ./test.sh installs it."
    done
}

# expect_equal WHAT ACTUAL EXPECTED
expect_equal() {
    [ "$2" = "$3" ] || fail "$1 should be \"$3\", but is \"$2\"."
}

# silent COMMAND...: succeeds, and has nothing to say.
silent() {
    local said
    said=$("$@" 2>&1) || fail "$1 failed: $said"
    [ -z "$said" ] || fail "$1 has something to say: $said"
}
