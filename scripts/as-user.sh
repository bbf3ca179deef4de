#!/usr/bin/env bash
# as-user.sh USER PROGRAM [ARGUMENT…]: runs a test program, as root, the way USER would who has just got an account: with an empty
# home, nothing in the environment and the fonts of the system. Fails when it leaves anything in the folder for temporary files.
# Status 77 says that USER cannot get at the program.
set -euo pipefail
(($# >= 2)) || { echo "usage: as-user.sh USER PROGRAM [ARGUMENT…]" >&2; exit 2; }
user=$1
shift
become=(setpriv --reuid="$user" --regid="$user" --clear-groups env -i PATH=/usr/bin:/bin)

if ! "${become[@]}" test -x "$1"; then
    echo "Not tried: $user may not get at $1." >&2
    exit 77
fi
room=$(mktemp -d)
trap 'rm -rf "$room"' EXIT
chmod 755 "$room"
install -d -m 700 -o "$user" -g "$user" "$room/home" "$room/tmp"

cd /
"${become[@]}" HOME="$room/home" TMPDIR="$room/tmp" QT_QPA_PLATFORM=offscreen "$@" && status=0 || status=$?
left=$(find "$room/tmp" -mindepth 1)
if [[ -n $left ]]; then
    printf 'Left behind:\n%s\n' "$left" >&2
    status=1
fi
exit "$status"
