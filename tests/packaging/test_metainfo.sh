#!/usr/bin/env bash
# test_metainfo.sh TREE VERSION: what software centres are told, together with the desktop entry that it names.
# shellcheck source=tests/packaging/checks.sh
. "$(dirname "$0")/checks.sh"
need appstreamcli xmllint
info=$1/usr/share/metainfo/local.kytstudio.kytstudio.metainfo.xml

# appstreamcli passes over a file that is not there.
xmllint --noout "$info" || fail "There is no well-formed metainfo file."
report=$(appstreamcli validate-tree --no-net --no-color --pedantic "$1" 2>&1) || fail "It is not valid: $report"
# The project has no domain; the name begins with one that is nobody's.
remarks=$(grep -E '^ *[EWIP]: ' <<<"$report" | grep -v ' cid-maybe-not-rdns ' || true)
[ -z "$remarks" ] || fail "The validator has something to say: $remarks"
expect_equal "The newest version" "$(xmllint --xpath 'string(//release[1]/@version)' "$info")" "$2"
