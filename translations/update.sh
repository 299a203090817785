#!/usr/bin/env bash
# Brings the .ts files up to date with the texts in the sources: translations/update.sh [FILE.ts...]
# Texts that are new are left there as "unfinished"; texts that are no longer in the program are dropped.
set -euo pipefail
cd "$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")"
[ $# -gt 0 ] || set -- translations/*.ts

tool=$(command -v lupdate || true)
[ -n "$tool" ] || tool=$(qmake6 -query QT_INSTALL_BINS)/lupdate
"$tool" app view doc model bonds canvas i3d app/Version.h.in -I . -locations none -no-obsolete -ts "$@"
