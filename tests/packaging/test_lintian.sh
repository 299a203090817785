#!/usr/bin/env bash
# test_lintian.sh PACKAGES: Debian's checker finds nothing wrong with the package.
# shellcheck source=tests/packaging/checks.sh
. "$(dirname "$0")/checks.sh"
need lintian dpkg-deb
packages=("$1"/kytstudio_*.deb)
expect_equal "The number of packages" "${#packages[@]}" 1

# On standard error is only whether root should run it.
findings=$(lintian --no-cfg --fail-on none "${packages[0]}" 2>"$work/err") || fail "lintian failed: $(cat "$work/err")"
expect_equal "What lintian finds" "$findings" ""
depends=$(dpkg-deb --field "${packages[0]}" Depends)
for library in libc6 libgl1 libglu1 libqt6widgets6 libqt6printsupport6 libsdl1.2; do
    case ", $depends" in *", $library"*) ;; *) fail "The package does not depend on $library, but on: $depends" ;; esac
done
dpkg-deb --fsys-tarfile "${packages[0]}" | tar -xO ./usr/libexec/kytstudio/kytstudio >"$work/program"
case $(file -b "$work/program") in *", stripped"*) ;; *) fail "The program is not stripped." ;; esac
