#!/usr/bin/env bash
# build-static-qt.sh PREFIX: builds Qt Core as a static library, from Debian's source package, into PREFIX (five minutes on two
# cores). The preset "static" looks for it in build/static-qt and makes a velmora-cli that needs the C library only.
#
# Such a program runs on servers without Qt. It also starts faster: loading the system's Qt Core and the twelve libraries behind
# it takes three milliseconds, twice as long as comparing two files of some thousand lines.
# Packages: qt6-base-dev g++ cmake ninja-build dpkg-dev
set -euo pipefail
(($# == 1)) || { echo "usage: build-static-qt.sh PREFIX" >&2; exit 2; }
mkdir -p "$1"
prefix=$(cd "$1" && pwd)
project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
source "$project/scripts/debian-source.sh"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
debian_source qt6-base "$work/source"
# What the program needs is taken from the bundled copies. It does without ICU: charsets are the C library's business here.
cmake -G Ninja -S "$work"/source/qt6-base-*/ -B "$work/build" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" -DQT_HOST_PATH=/usr -DQT_FORCE_FIND_TOOLS=ON \
    -DBUILD_SHARED_LIBS=OFF -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF \
    -DFEATURE_gui=OFF -DFEATURE_network=OFF -DFEATURE_sql=OFF -DFEATURE_dbus=OFF -DFEATURE_xml=OFF \
    -DFEATURE_testlib=OFF -DFEATURE_concurrent=OFF -DFEATURE_glib=OFF -DFEATURE_icu=OFF -DFEATURE_zstd=OFF \
    -DFEATURE_system_libb2=OFF -DFEATURE_system_pcre2=OFF -DFEATURE_system_doubleconversion=OFF \
    -DFEATURE_system_zlib=OFF
cmake --build "$work/build"
cmake --install "$work/build"
