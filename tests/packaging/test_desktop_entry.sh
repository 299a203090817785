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
[ -x "$1/usr/bin/$(value Exec)" ] || fail "The entry starts \"$(value Exec)\", which is not installed."
[ -f "$1/usr/share/icons/hicolor/48x48/apps/$(value Icon).png" ] || fail "The icon \"$(value Icon)\" is not installed."
# The program takes no file: nothing may offer to open one with it.
case $(value Exec) in *%*) fail "The entry hands over files." ;; esac
expect_equal "The list of file types to open" "$(value MimeType)" ""
