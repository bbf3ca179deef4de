#!/usr/bin/env bash
# package.sh: builds the Debian package and says where it is: build/debian/velmora_VERSION-1_ARCHITECTURE.deb.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
source scripts/setup.sh

need_packages "${velmora_build_packages[@]}" dpkg-dev file
date_the_build debian
build debian
rm -f build/debian/*.deb
(cd build/debian && quietly "Packing" cpack -G DEB)
ls "$PWD"/build/debian/*.deb
