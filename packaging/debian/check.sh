#!/usr/bin/env bash
# check.sh PACKAGE: installs a package of package.sh in a fresh minimal system, starts its programs there without a display as an
# ordinary user, removes the package, and fails when any of it fails or anything is left behind. Needs root.
#
# The system is that of the archive VELMORA_MINBASE (what "debootstrap --variant=minbase" leaves, as a tar), or is made now.
set -euo pipefail
(($# == 1)) || { echo "usage: check.sh PACKAGE" >&2; exit 2; }
package=$(realpath "$1")
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
source scripts/setup.sh
((EUID == 0)) || fail "check.sh needs root, for chroot."
system=$(mktemp -d /var/tmp/velmora-check.XXXXXX)
trap 'umount -q "$system/proc" || true; rm -rf --one-file-system "$system"' EXIT
chmod 755 "$system"

if [[ -n ${VELMORA_MINBASE:-} ]]; then
    tar xf "$VELMORA_MINBASE" -C "$system"
else
    need_packages debootstrap
    release=$(. /etc/os-release && echo "$VERSION_CODENAME")
    quietly "debootstrap" debootstrap --variant=minbase "$release" "$system" \
        "${VELMORA_DEBIAN_MIRROR:-http://deb.debian.org/debian}"
fi
mount -t proc proc "$system/proc"
cp /etc/resolv.conf "$system/etc/"

# Put before a command, to run it there: as root, or as somebody with a home of their own and Qt without a display.
inside=(chroot "$system" env -i PATH=/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8 DEBIAN_FRONTEND=noninteractive)
as_user=("${inside[@]}" setpriv --reuid=1000 --regid=1000 --clear-groups
    env HOME=/home/user USERNAME=user XDG_RUNTIME_DIR=/home/user QT_QPA_PLATFORM=offscreen)
# Files of the system outside of what installing and removing other packages changes.
files_named_so() { "${inside[@]}" find / -xdev -path /proc -prune -o -iname '*velmora*' -print | sort; }
expect() {
    [[ "$2" == "$3" ]] || fail "$1:" "expected: $3" "got:      $2"
    say "ok: $1"
}

install -d -m 700 -o 1000 -g 1000 "$system/home/user"
before=$(files_named_so)
cp "$package" "$system/home/user/package.deb"
quietly "apt-get update" "${inside[@]}" apt-get -q update
quietly "Installing" "${inside[@]}" apt-get -q install -y --no-install-recommends /home/user/package.deb
say "ok: installs in a minimal system"

printf 'one\ntwo\n' >"$system/home/user/left.txt"
printf 'one\nTWO\n' >"$system/home/user/right.txt"
expect "velmora tells its version" "$("${as_user[@]}" velmora --version)" "Velmora 1.0.0"
expect "velmora-cli tells its version" "$("${as_user[@]}" velmora-cli --version)" "velmora-cli 1.0.0"
"${as_user[@]}" velmora-cli text /home/user/left.txt /home/user/right.txt >/dev/null && status=0 || status=$?
expect "velmora-cli finds a difference" "$status" 1

# The window is started for good and compares; its report shows that it got there. Then it is told to end.
"${as_user[@]}" velmora --report /home/user/report.html /home/user/left.txt /home/user/right.txt &
window=$!
for ((tenth = 0; tenth < 300; ++tenth)); do
    [[ -s $system/home/user/report.html ]] && break
    sleep 0.1
done
kill "$window"
wait "$window" || true
expect "velmora compares in a window" "$(grep -c 'TWO' "$system/home/user/report.html")" 1

contents=$(dpkg-deb --contents "$package")
for file in usr/share/applications/velmora.desktop usr/share/applications/velmora-workspace.desktop \
    usr/share/metainfo/invalid.velmora.velmora.metainfo.xml usr/share/mime/packages/velmora.xml \
    usr/share/man/man1/velmora.1.gz usr/share/man/man1/velmora-cli.1.gz \
    usr/share/bash-completion/completions/velmora-cli \
    usr/share/icons/hicolor/scalable/apps/velmora.svg usr/share/doc/velmora/copyright; do
    # A minimal system leaves documentation out when it is configured to; the package itself must hold it.
    grep -q " \./$file\$" <<<"$contents" || fail "not in the package: $file"
done
say "ok: desktop entries, icons, file types and manuals are in the package"

quietly "Removing" "${inside[@]}" apt-get -q purge -y velmora
expect "nothing is left behind" "$(files_named_so)" "$before"
