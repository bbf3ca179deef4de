#!/usr/bin/env bash
# build-qt.sh PREFIX: puts Qt Base for Windows x64 into PREFIX, from a ready archive when there is one, else built from Debian's
# source package (about 25 minutes on two cores).
#
# The archive is named by VELMORA_QT_ARCHIVE, or lies at ../shared/windows/ beside the project's folder. It holds what the
# installation below leaves.
# Packages: qt6-base-dev g++-mingw-w64-x86-64-posix cmake ninja-build dpkg-dev xz-utils
set -euo pipefail
(($# == 1)) || { echo "usage: build-qt.sh PREFIX" >&2; exit 2; }
mkdir -p "$1"
prefix=$(cd "$1" && pwd)
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
project=$(cd "$here/../.." && pwd)
source "$project/scripts/debian-source.sh"

archive=${VELMORA_QT_ARCHIVE:-$project/../shared/windows/qt-6.4.2-mingw64.tar.xz}
if [[ -f $archive ]]; then
    echo "Unpacking $archive"
    tar xJf "$archive" -C "$prefix"
    exit
elif [[ -n ${VELMORA_QT_ARCHIVE:-} ]]; then
    echo "VELMORA_QT_ARCHIVE names no file: $archive" >&2
    exit 1
fi

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
debian_source qt6-base "$work/source"

# Everything that the program needs is taken from the bundled copies; what it does not need is off. "tabletevent" is off because
# the source package leaves out a header that is not free.
cmake -G Ninja -S "$work"/source/qt6-base-*/ -B "$work/build" \
    -DCMAKE_TOOLCHAIN_FILE="$project/cmake/mingw-w64.cmake" -DCMAKE_BUILD_TYPE=Release -DCMAKE_INSTALL_PREFIX="$prefix" \
    -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF \
    -DFEATURE_sql=OFF -DFEATURE_dbus=OFF -DFEATURE_printsupport=OFF -DINPUT_opengl=no -DFEATURE_vulkan=OFF \
    -DFEATURE_tabletevent=OFF -DFEATURE_pkg_config=OFF -DFEATURE_openssl=OFF -DFEATURE_schannel=OFF \
    -DFEATURE_system_zlib=OFF -DFEATURE_system_pcre2=OFF -DFEATURE_system_png=OFF -DFEATURE_system_jpeg=OFF \
    -DFEATURE_system_harfbuzz=OFF -DFEATURE_system_freetype=OFF -DFEATURE_system_doubleconversion=OFF
cmake --build "$work/build"
cmake --install "$work/build" --strip
