#!/usr/bin/env bash
# build-deps.sh PREFIX LIBRARY…: cross-builds libraries other than Qt Base for Windows x64 from Debian's source packages into PREFIX,
# where Qt Base must be for `imageformats`. The libraries are those of `windows_libraries` in scripts/windows.sh; one that another
# needs comes before it.
# Packages: g++-mingw-w64-x86-64-posix cmake ninja-build dpkg-dev xz-utils
set -euo pipefail
(($# >= 2)) || { echo "usage: build-deps.sh PREFIX LIBRARY…" >&2; exit 2; }
mkdir -p "$1"
prefix=$(cd "$1" && pwd)
shift
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
project=$(cd "$here/../.." && pwd)
source "$project/scripts/debian-source.sh"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# cross_build PACKAGE SUBFOLDER OPTION…: builds a CMake project of Debian's, whose CMakeLists.txt is in SUBFOLDER, and installs it,
# stripped.
cross_build() {
    local package=$1 subfolder=$2
    shift 2
    [[ -d $work/$package/source ]] || debian_source "$package" "$work/$package/source"
    cmake -G Ninja -S "$work/$package"/source/*/"$subfolder" -B "$work/$package/build" \
        -DCMAKE_TOOLCHAIN_FILE="$project/cmake/mingw-w64.cmake" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_INSTALL_PREFIX="$prefix" -DBUILD_SHARED_LIBS=OFF "$@"
    cmake --build "$work/$package/build"
    cmake --install "$work/$package/build" --strip
}

build_uchardet() { cross_build uchardet . -DBUILD_BINARY=OFF; }

# compile PACKAGE LIBRARY "HEADER…" SOURCE…: compiles the sources, named without ".c", of a package whose own build cannot cross-compile
# them, and installs the library with the headers.
compile() {
    local package=$1 library=$2 headers=$3 source
    shift 3
    debian_source "$package" "$work/$package/source"
    (
        cd "$work/$package"/source/*/
        for source in "$@"; do
            x86_64-w64-mingw32-gcc-posix -O2 -D_FILE_OFFSET_BITS=64 -c "$source.c"
        done
        x86_64-w64-mingw32-ar rcs "$prefix/lib/$library" ./*.o
        # shellcheck disable=SC2086
        cp $headers "$prefix/include"
    )
}

# Debian's source of zlib is without the folder that its project takes the resources of the shared form from.
build_zlib() {
    compile zlib libz.a "zlib.h zconf.h" adler32 compress crc32 deflate gzclose gzlib gzread gzwrite infback inffast inflate inftrees trees \
        uncompr zutil
}

# bzip2 has a makefile only, which knows no cross compiler.
build_bzip2() { compile bzip2 libbz2.a bzlib.h blocksort huffman crctable randtable compress decompress bzlib; }

build_xz() {
    cross_build xz-utils .
    rm -f "$prefix"/bin/xz.exe "$prefix"/bin/xzdec.exe
}

build_lz4() { cross_build lz4 build/cmake -DLZ4_BUILD_CLI=OFF -DLZ4_BUILD_LEGACY_LZ4C=OFF -DBUILD_STATIC_LIBS=ON; }

build_zstd() { cross_build libzstd build/cmake -DZSTD_BUILD_PROGRAMS=OFF -DZSTD_BUILD_SHARED=OFF -DZSTD_BUILD_CONTRIB=OFF; }

# Encrypted entries go through what Windows has for that (CNG). The programs of libarchive are not wanted. How zlib was built would be
# found out by a program that is run. Its source asks for "Bcrypt", which is "bcrypt" where case counts.
build_libarchive() {
    mkdir -p "$work/libarchive-names"
    echo '#include <bcrypt.h>' >"$work/libarchive-names/Bcrypt.h"
    ln -sf "$(x86_64-w64-mingw32-gcc -print-file-name=libbcrypt.a)" "$work/libarchive-names/libBcrypt.a"
    cross_build libarchive . -DCMAKE_C_FLAGS="-isystem $work/libarchive-names" -DCMAKE_SHARED_LINKER_FLAGS="-L$work/libarchive-names" \
        -DENABLE_TEST=OFF -DENABLE_TAR=OFF -DENABLE_CPIO=OFF -DENABLE_CAT=OFF -DENABLE_WERROR=OFF \
        -DENABLE_OPENSSL=OFF -DENABLE_LIBXML2=OFF -DENABLE_EXPAT=OFF -DENABLE_PCREPOSIX=OFF -DENABLE_ICONV=OFF \
        -DENABLE_CNG=ON -DENABLE_LZO=OFF -DENABLE_LZ4=ON \
        -DZLIB_WINAPI=OFF -DZLIB_WINAPI_WITH_LIB="$prefix/lib/libz.a"
    rm -f "$prefix"/bin/libarchive.dll "$prefix"/lib/libarchive.dll.a
    mv "$prefix"/lib/libarchive_static.a "$prefix"/lib/libarchive.a # the name that CMake looks for
}

# Debian's TagLib takes utf8cpp from the system; the copy in its source does as well.
build_taglib() {
    debian_source taglib "$work/taglib/source"
    mkdir "$work/include"
    ln -s "$work"/taglib/source/*/3rdparty/utf8-cpp "$work/include/utf8"
    cross_build taglib . -DBUILD_EXAMPLES=OFF -DBUILD_TESTING=OFF -DBUILD_BINDINGS=OFF -DCMAKE_CXX_FLAGS="-isystem $work/include"
}

# TIFF and WebP through the copies of libtiff and libwebp that come with the plug-ins. The zlib in Qt Core is not exported whole, so
# libtiff gets one of its own, which has to be linked before Qt's.
build_imageformats() {
    cross_build qt6-imageformats . -DBUILD_SHARED_LIBS=ON -DQT_BUILD_TESTS=OFF -DQT_BUILD_EXAMPLES=OFF \
        -DINPUT_tiff=qt -DINPUT_webp=qt -DFEATURE_jasper=OFF -DFEATURE_mng=OFF \
        -DCMAKE_MODULE_LINKER_FLAGS="-Wl,--whole-archive $prefix/lib/libz.a -Wl,--no-whole-archive"
    rm -f "$prefix"/plugins/imageformats/q{icns,tga,wbmp}.dll "$prefix"/lib/cmake/Qt6Gui/Qt6Q{ICNS,Tga,Wbmp}Plugin*
}

for library in "$@"; do
    "build_$library"
done
