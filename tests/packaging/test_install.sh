#!/usr/bin/env bash
# test_install.sh PROJECT BUILD CMAKE: an installation below any prefix, which may be moved afterwards.
# shellcheck source=tests/packaging/checks.sh
. "$(dirname "$0")/checks.sh"
prefix="$work/a place/of my own"

DESTDIR='' "$3" --install "$2" --prefix "$prefix" >/dev/null
[ -x "$prefix/libexec/kytstudio/kytstudio" ] || fail "The program is not installed."
for file in "$1"/icons/*.xpm "$1"/lib/*.xpm "$1"/lib/*.kyf "$1"/data/*.kyt; do
    cmp "$file" "$prefix/share/kytstudio/${file#"$1"/}"
done
strange=$(find "$prefix/share/kytstudio" -type f ! -name '*.xpm' ! -name '*.kyf' ! -name '*.kyt' ! -name '*.qm')
expect_equal "What else is among the data" "$strange" ""
expect_equal "What others may not read" "$(find "$prefix" ! -perm -a+r)" ""

# The program itself is put aside: what counts is where the launcher leads.
mv "$work/a place" "$work/elsewhere"
prefix="$work/elsewhere/of my own"
cat >"$prefix/libexec/kytstudio/kytstudio" <<'PROGRAM'
#!/bin/sh
cat data/alanine.kyt icons/view.xpm lib/water.kyf
PROGRAM
HOME=$work XDG_DATA_HOME=$work/data "$prefix/bin/kytstudio" >"$work/read"
cat "$1/data/alanine.kyt" "$1/icons/view.xpm" "$1/lib/water.kyf" | cmp - "$work/read"
