# shellcheck shell=bash disable=SC2034
# Shared by ./run and ./test: installs what the build needs on Debian and Ubuntu, configures and builds.
# Sourced from the root folder of the project by bash with "set -euo pipefail". Messages go to the standard error output, so that
# the standard output belongs to the program that is run.

# For every build: compiler, build tools, Qt with its translation compiler, the OpenGL headers that Qt Gui asks for, and the
# detection of encodings.
velmora_build_packages=(g++ cmake ninja-build ccache qt6-base-dev qt6-l10n-tools libgl-dev libuchardet-dev libarchive-dev libtag1-dev)
# For anything that shows or measures text: one font with Latin and one with Chinese letters.
velmora_font_packages=(fonts-dejavu-core fonts-wqy-microhei)
# For pictures: TIFF and WebP.
velmora_image_packages=(qt6-image-formats-plugins)

# For the checks of formatting and of the sources lately changed; other versions than 14 decide differently.
velmora_lint_packages=(clang-format-14 clang-tidy-14)
# For the tests of remote folders, which start a server of their own on the loopback address.
velmora_ssh_packages=(openssh-client openssh-server)

say() { printf '%s\n' "$*" >&2; }

# fail LINE…: says the lines and ends the script.
fail() {
    printf '%s\n' "$@" >&2
    exit 1
}

is_installed() {
    [[ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" == installed ]]
}

# The build needs this much; an older Qt would stop it halfway with errors that do not name the cause.
refuse_old_qt() {
    local version=$1
    [[ "$(printf '%s\n' 6.4 "$version" | sort -V | head -n 1)" == 6.4 ]] ||
        fail "Qt 6.4 or newer is needed; this system has Qt $version." \
            "Debian 12, Ubuntu 23.04 and what came after them have it."
}

# quietly WHAT COMMAND…: runs the command and shows what it printed only when it fails.
quietly() {
    local what=$1 log
    shift
    log=$(mktemp)
    if ! "$@" </dev/null >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        fail "$what failed."
    fi
    rm -f "$log"
}

# show_progress LOG: reads what apt-get says with APT::Status-Fd, keeps it in LOG, and shows how far it has come: in one line
# that changes, or, where that cannot be seen, in a line for each tenth.
show_progress() {
    local log=$1 line kind percent what shown=-1
    while IFS= read -r line; do
        printf '%s\n' "$line" >>"$log"
        IFS=: read -r kind _ percent what <<<"$line"
        percent=${percent%%.*}
        [[ $kind == ??status && $percent =~ ^[0-9]+$ ]] || continue
        if [[ -t 2 ]]; then
            printf '\r\033[K%3d %% %.70s' "$percent" "$what" >&2
        elif ((percent / 10 != shown)); then
            shown=$((percent / 10))
            printf '%3d %% %s\n' "$percent" "$what" >&2
        fi
    done
    [[ ! -t 2 ]] || printf '\r\033[K' >&2
}

# apt_get ARGUMENT…: as root, showing how far it has come; when that fails, with what apt-get has said and with ${by_hand[@]}.
apt_get() {
    local as_root=() log
    ((EUID == 0)) || as_root=(sudo)
    log=$(mktemp)
    # What apt-get reports goes into the pipe; what sudo asks, and why it refuses, goes past it. The status has a number of its own:
    # dpkg closes that for the scripts of packages, which write to their standard output.
    if ! "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive sh -c 'exec apt-get "$@" 3>&1 2>&1' sh -q -o APT::Status-Fd=3 "$@" \
        </dev/null | show_progress "$log"; then
        grep -v '^[dp][lm]status:' "$log" >&2 || true
        rm -f "$log"
        fail "apt-get $1 failed." "${by_hand[@]}"
    fi
    rm -f "$log"
}

# need_packages NAME…: installs those that are missing; looks up nothing on the network when none is.
need_packages() {
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        say "This is not Debian or Ubuntu: nothing is installed, the build takes what it finds."
        return
    fi
    local missing=() name
    for name in "$@"; do
        is_installed "$name" || missing+=("$name")
    done
    if ((${#missing[@]} == 0)); then
        return
    fi
    local by_hand=("To install by hand, as root:"
        "  apt-get update && apt-get install --no-install-recommends ${missing[*]}")
    if ((EUID != 0)) && ! command -v sudo >/dev/null; then
        fail "Packages are missing, and there is no sudo to install them with." "${by_hand[@]}"
    fi
    say "These packages are missing and get installed now, with what they need: ${missing[*]}"
    ((EUID == 0)) || say "sudo may ask for your password."

    apt_get update
    local offered
    offered=$(apt-cache policy qt6-base-dev | awk '$1 == "Candidate:" && $2 != "(none)" {print $2}')
    [[ -z $offered ]] || refuse_old_qt "$offered"
    apt_get install -y --no-install-recommends "${missing[@]}"
}

# need_offered_packages NAME…: those of them that this system has at all; whatever uses them does without.
need_offered_packages() {
    local offered=() name
    for name in "$@"; do
        if [[ -n "$(apt-cache search --names-only "^$name\$" 2>/dev/null)" ]]; then
            offered+=("$name")
        fi
    done
    ((${#offered[@]} == 0)) || need_packages "${offered[@]}"
}

# The presets share what they compile alike, although each does so in a folder of its own.
export CCACHE_NOHASHDIR=1

# date_the_build PRESET: gives everything that is packed the time of the last commit, which a source archive carries along, so that
# the same sources make the same packages. What was built under another date is built anew.
date_the_build() {
    local dated=build/$1/.source-date
    export SOURCE_DATE_EPOCH=${SOURCE_DATE_EPOCH:-$(git log -1 --format=%ct 2>/dev/null || cat packaging/source-date)}
    [[ $SOURCE_DATE_EPOCH =~ ^[0-9]+$ ]] || fail "Without git, SOURCE_DATE_EPOCH has to say from when the sources are."
    [[ -f $dated && "$(<"$dated")" == "$SOURCE_DATE_EPOCH" ]] || rm -rf "build/$1"
    mkdir -p "build/$1"
    echo "$SOURCE_DATE_EPOCH" >"$dated"
}

# build PRESET [OPTION…]: configures, with options for CMake, and builds everything that the preset names.
build() {
    local preset=$1 folder=build/$1 qmake=/usr/lib/qt6/bin/qmake
    shift
    if [[ -x $qmake ]]; then
        refuse_old_qt "$("$qmake" -query QT_VERSION)"
    fi
    # A build folder knows where its sources lie; one that was copied along with them is of no use.
    if [[ -f $folder/CMakeCache.txt ]] && ! grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$PWD" "$folder/CMakeCache.txt"; then
        rm -rf "$folder"
    fi
    if [[ ! -f $folder/CMakeCache.txt ]]; then
        say "Building in $folder. The first time takes some minutes."
    fi
    quietly "Configuring" cmake --preset "$preset" "$@"
    cmake --build --preset "$preset" >&2
}
