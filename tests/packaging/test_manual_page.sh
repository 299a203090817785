#!/usr/bin/env bash
# test_manual_page.sh TREE VERSION
# shellcheck source=tests/packaging/checks.sh
. "$(dirname "$0")/checks.sh"
need man groff
page=$1/usr/share/man/man1/kytstudio.1

export LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80
# What is formatted goes to standard output, warnings to standard error.
warnings=$(man --warnings --encoding=UTF-8 --local-file --troff-device=utf8 --ditroff "$page" 2>&1 >"$work/formatted")
expect_equal "What man warns of" "$warnings" ""
[ -s "$work/formatted" ] || fail "The page is empty."
man --local-file "$page" | col -b >"$work/page"
for words in 'kytstudio - draw' 'Ctrl+J' 'XDG_DATA_HOME' "KytStudio $2"; do
    grep -q -F -- "$words" "$work/page" || fail "The page does not show \"$words\"."
done
