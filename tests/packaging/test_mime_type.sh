#!/usr/bin/env bash
# test_mime_type.sh TREE CHECKER: the type of workspaces and library molecules, in a database made by the desktop's own
# tool; CHECKER asks that database.
# shellcheck source=tests/packaging/checks.sh
. "$(dirname "$0")/checks.sh"
need xmllint update-mime-database
package=$1/usr/share/mime/packages/kytstudio.xml
shared=/usr/share/mime/packages/freedesktop.org.xml

# The document type is at the head of the desktop's own definitions.
sed -n '/<!DOCTYPE mime-info/,/^\]>/p' "$shared" >"$work/typed.xml"
grep -q '<!ELEMENT mime-type' "$work/typed.xml" || fail "$shared has no document type."
sed 1d "$package" >>"$work/typed.xml"
silent xmllint --valid --noout "$work/typed.xml"

mkdir -p "$work/share/mime/packages"
cp "$shared" "$package" "$work/share/mime/packages"
export XDG_DATA_DIRS=$work/share XDG_DATA_HOME=$work/none PKGSYSTEM_ENABLE_FSYNC=0
silent update-mime-database "$work/share/mime"
"$2"
