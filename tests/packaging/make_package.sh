#!/usr/bin/env bash
# Makes the Debian package of the build in an empty folder: make_package.sh CPACK BUILD FOLDER
set -euo pipefail
rm -rf "$3"
"$1" -G DEB --config "$2/CPackConfig.cmake" -B "$3"
rm -r "$3/_CPack_Packages"
