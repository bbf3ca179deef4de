# shellcheck shell=bash
# Sourced by scripts that build from source packages of Debian.

# debian_source PACKAGE FOLDER: fetches and unpacks Debian's source package, with Debian's changes applied, into the new folder
# FOLDER. apt works on lists of its own in there, so that neither the system's sources nor its state change and no root is needed.
debian_source() {
    local package=$1 folder=$2 release
    release=$(. /etc/os-release && echo "$VERSION_CODENAME")
    mkdir -p "$folder"/apt/{lists,cache}/partial
    echo "deb-src [signed-by=/usr/share/keyrings/debian-archive-keyring.gpg]" \
        "${VELMORA_DEBIAN_MIRROR:-http://deb.debian.org/debian} $release main" >"$folder/apt/sources.list"
    (
        cd "$folder" || return
        options=(-q
            -o "Dir::Etc::SourceList=$folder/apt/sources.list" -o "Dir::Etc::SourceParts=-"
            -o "Dir::State::Lists=$folder/apt/lists" -o "Dir::Cache=$folder/apt/cache"
            -o "APT::Sandbox::User=$(id -un)")
        apt-get "${options[@]}" update
        apt-get "${options[@]}" source "$package"
    )
    rm -rf "$folder/apt"
}
