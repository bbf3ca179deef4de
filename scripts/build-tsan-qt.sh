#!/usr/bin/env bash
# build-tsan-qt.sh PREFIX: builds Qt Core and Qt Test with the thread sanitizer, from Debian's source package, into PREFIX (a quarter of
# an hour on two cores). The preset "tsan" looks for it in build/tsan-qt.
#
# The system's Qt is not instrumented: the sanitizer does not see that posting an event hands its data to the other thread, and
# reports every such handing over as a race.
# Packages: qt6-base-dev g++ cmake ninja-build dpkg-dev
set -euo pipefail
(($# == 1)) || { echo "usage: build-tsan-qt.sh PREFIX" >&2; exit 2; }
mkdir -p "$1"
prefix=$(cd "$1" && pwd)
project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
source "$project/scripts/debian-source.sh"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
debian_source qt6-base "$work/source"
# Built so, Qt tells the sanitizer about its own locks.
cmake -G Ninja -S "$work"/source/qt6-base-*/ -B "$work/build" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" -DQT_HOST_PATH=/usr -DQT_FORCE_FIND_TOOLS=ON \
    -DFEATURE_sanitizer=ON -DFEATURE_sanitize_thread=ON \
    -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF \
    -DFEATURE_gui=OFF -DFEATURE_network=OFF -DFEATURE_sql=OFF -DFEATURE_dbus=OFF -DFEATURE_xml=OFF \
    -DFEATURE_concurrent=OFF -DFEATURE_glib=OFF -DFEATURE_system_pcre2=OFF -DFEATURE_system_doubleconversion=OFF \
    -DFEATURE_system_zlib=ON
cmake --build "$work/build"
cmake --install "$work/build"
