#!/usr/bin/env bash
# Installs the build into a folder as a package would: install_tree.sh CMAKE BUILD FOLDER
set -euo pipefail
rm -rf "$3"
DESTDIR=$3 "$1" --install "$2" --prefix /usr >/dev/null
