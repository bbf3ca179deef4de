#!/usr/bin/env bash
# build-deps.sh PREFIX: cross-builds the libraries other than Qt for Windows x64 from Debian's source packages into PREFIX.
# Packages: g++-mingw-w64-x86-64-posix cmake ninja-build dpkg-dev
set -euo pipefail
(($# == 1)) || { echo "usage: build-deps.sh PREFIX" >&2; exit 2; }
mkdir -p "$1"
prefix=$(cd "$1" && pwd)
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
project=$(cd "$here/../.." && pwd)
source "$project/scripts/debian-source.sh"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# cross_build PACKAGE OPTION…: builds a CMake project of Debian's and installs it, stripped.
cross_build() {
    local package=$1
    shift
    debian_source "$package" "$work/$package/source"
    cmake -G Ninja -S "$work/$package"/source/*/ -B "$work/$package/build" \
        -DCMAKE_TOOLCHAIN_FILE="$project/cmake/mingw-w64.cmake" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_INSTALL_PREFIX="$prefix" "$@"
    cmake --build "$work/$package/build"
    cmake --install "$work/$package/build" --strip
}

cross_build uchardet -DBUILD_SHARED_LIBS=OFF -DBUILD_BINARY=OFF
