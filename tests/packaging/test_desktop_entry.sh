#!/usr/bin/env bash
# test_desktop_entry.sh TREE: the entry of the installed program in the desktop's menu.
# shellcheck source=tests/packaging/checks.sh
. "$(dirname "$0")/checks.sh"
need desktop-file-validate
entry=$1/usr/share/applications/kytstudio.desktop

silent desktop-file-validate "$entry"

value() {
    sed -n "s/^$1=//p" "$entry"
}
command=$(value Exec)
[ -x "$1/usr/bin/${command%% *}" ] || fail "The entry starts \"$command\", which is not installed."
[ -f "$1/usr/share/icons/hicolor/48x48/apps/$(value Icon).png" ] || fail "The icon \"$(value Icon)\" is not installed."
# Behind "--", a file whose name starts with "-" is no option.
expect_equal "How the entry hands over a file" "$command" "kytstudio -- %f"
expect_equal "The list of file types to open" "$(value MimeType)" "application/x-kytstudio-workspace;"
