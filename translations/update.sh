#!/usr/bin/env bash
# Updates the .ts files from the texts in the sources: translations/update.sh [FILE.ts...]
# New texts are added as "unfinished"; texts that are no longer in the program are removed.
set -euo pipefail
cd "$(dirname "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")")"
[ $# -gt 0 ] || set -- translations/*.ts

tool=$(command -v lupdate || true)
[ -n "$tool" ] || tool=$(qmake6 -query QT_INSTALL_BINS)/lupdate
"$tool" app view doc model bonds canvas i3d app/Version.h.in -I . -locations none -no-obsolete -ts "$@"
