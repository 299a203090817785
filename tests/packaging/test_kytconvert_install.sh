#!/usr/bin/env bash
# test_kytconvert_install.sh TREE VERSION
# shellcheck source=tests/packaging/checks.sh
. "$(dirname "$0")/checks.sh"
need man col
tree=$1/usr

# ---- the program

program=$tree/bin/kytconvert
[ -x "$program" ] || fail "The converter is not installed."
expect_equal "The version" "$(env -u DISPLAY "$program" --version)" "kytconvert $2"
smiles=$(echo 'C1=CC=CC=C1' | env -u DISPLAY "$program" --from smi --to smi -)
expect_equal "What the installed converter makes of benzene" "$smiles" "c1ccccc1"

# ---- the manual page

page=$tree/share/man/man1/kytconvert.1
export LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80
warnings=$(man --warnings --encoding=UTF-8 --local-file --troff-device=utf8 --ditroff "$page" 2>&1 >"$work/formatted")
expect_equal "What man warns of" "$warnings" ""
man --local-file "$page" | col -b >"$work/page"
for words in 'kytconvert - convert' 'EXIT STATUS' "KytStudio $2"; do
    grep -q -F -- "$words" "$work/page" || fail "The page does not show \"$words\"."
done
# Every option that the program tells is on the page, and no other.
options() { grep -o -E -- '--[a-z][a-z0-9-]+' "$1" | sort -u; }
"$program" --help >"$work/help"
expect_equal "The options of the page" "$(options "$work/page")" "$(options "$work/help")"

# ---- the completion

# shellcheck disable=SC1091  # it is where it was installed
. "$tree/share/bash-completion/completions/kytconvert"
# completed WORD...: what completes the last of the words in the folder of the test.
completed() {
    # shellcheck disable=SC2034  # read by the completion
    COMP_WORDS=(kytconvert "$@") COMP_CWORD=$#
    _kytconvert
    echo "${COMPREPLY[*]}"
}
cd "$work"
touch drawing.kyt drawing.txt drawing.pdf
expect_equal "The completion of --ch" "$(completed --ch)" "--check"
expect_equal "The completion of a format" "$(completed --to p)" "png pdf"
expect_equal "The completion of an input" "$(completed dr)" "drawing.kyt"
touch table.csv.gz table.xyz
expect_equal "The completion of a compressed input" "$(completed ta)" "table.csv.gz"
expect_equal "The completion of an output" "$(completed -o drawing.p)" "drawing.pdf"
