# shellcheck shell=bash disable=SC2034
# Shared by ./test --windows and the packages for Windows: installs what is missing to build the Windows program on Debian and
# to run it under Wine, and does so. Sourced after scripts/setup.sh.

# The cross compiler, and what builds libraries from Debian's source packages; the licences of those come from the packages for Linux.
windows_build_packages=("${velmora_build_packages[@]}" "${velmora_image_packages[@]}" g++-mingw-w64-x86-64-posix dpkg-dev xz-utils)
# Wine, and a display with what its windows draw through.
windows_run_packages=("${velmora_font_packages[@]}" wine64 xvfb xauth libgl1 libxcomposite1 libxcursor1 libxi6 libxinerama1
    libxrandr2 libxrender1 libxxf86vm1)

# What is built beside Qt Base, in this order.
windows_libraries=(uchardet zlib bzip2 xz zstd lz4 libarchive taglib imageformats)

# once STEP COMMAND…: runs the command unless it has succeeded before for build/windows-libs.
once() {
    local done=build/windows-libs/.$1-done
    shift
    [[ -f $done ]] || { "$@" >&2 && touch "$done"; }
}

# build_windows PRESET: puts Qt and the other libraries into build/windows-libs if they are not there, builds everything that the
# preset names, and makes the programs of build/PRESET/bin ready to be started.
build_windows() {
    mkdir -p build/windows-libs
    once qt packaging/windows/build-qt.sh build/windows-libs
    local library
    for library in "${windows_libraries[@]}"; do
        once "$library" packaging/windows/build-deps.sh build/windows-libs "$library"
    done
    build "$1"
    packaging/windows/stage.sh build/windows-libs "build/$1/bin"
}

# start_wine [FOLDER]: starts the Windows of FOLDER, else of build/wine, made when it is missing, for all programs that follow;
# stop_wine ends it. Otherwise the first program would start it, and whoever reads its output would wait for the end of both.
start_wine() {
    export WINEPREFIX=${1:-$PWD/build/wine}
    if [[ ! -f $WINEPREFIX/system.reg ]]; then
        say "Making a Windows in $WINEPREFIX"
        packaging/windows/under-wine.sh wineboot >/dev/null 2>&1
        /usr/lib/wine/wineserver -w
    fi
    /usr/lib/wine/wineserver -p >/dev/null 2>&1 || true # runs already
    packaging/windows/under-wine.sh wineboot >/dev/null 2>&1
}

stop_wine() {
    /usr/lib/wine/wineserver -k >/dev/null 2>&1 || true
}
