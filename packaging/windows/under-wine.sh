#!/usr/bin/env bash
# under-wine.sh PROGRAM [ARGUMENT…]: runs a Windows program under Wine, in a Windows of the project's own: build/wine, or the folder
# that WINEPREFIX names. Makes it when it is missing. The exit status is the program's.
#
# With "--desktop" first, the program gets a display of its own, so that it can open real windows.
# Packages: wine64; for "--desktop" xvfb and the X libraries named in scripts/setup.sh
set -euo pipefail
project=$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)
wine=/usr/lib/wine/wine64

export WINEPREFIX=${WINEPREFIX:-$project/build/wine}
export WINEARCH=win64
# What goes to Windows's recycle bin goes to the one of the home: not to that of whoever runs this.
export HOME=$WINEPREFIX.home
unset XDG_DATA_HOME
mkdir -p "$HOME/.local/share"
# Tests may write into the registry's current user, who is nobody here.
export VELMORA_THROWAWAY_PROFILE=1
# Every call of every operation fails once in some tests: five minutes, QtTest's own limit, are short for that on a busy machine.
export QTEST_FUNCTION_TIMEOUT=${QTEST_FUNCTION_TIMEOUT:-1200000}
# Wine's own messages would mix with the program's. Neither Mono nor Gecko is needed, which it would offer to download, and a
# test must not put entries into the menus of whoever runs it.
export WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe=${WINEDLLOVERRIDES:+;$WINEDLLOVERRIDES}"

with_display=()
if [[ ${1:-} == --desktop ]]; then
    shift
    with_display=(xvfb-run --auto-servernum --server-args="-screen 0 1400x900x24")
else
    unset DISPLAY WAYLAND_DISPLAY # a question would wait there for ever, asked by a test; without one it counts as cancelled
fi
(($# > 0)) || { echo "usage: under-wine.sh [--desktop] PROGRAM [ARGUMENT…]" >&2; exit 2; }

if [[ ! -f $WINEPREFIX/system.reg ]]; then
    mkdir -p "${WINEPREFIX%/*}"
    # One of several programs that start at once makes it; the others wait.
    exec {lock}>"$WINEPREFIX.lock"
    flock "$lock"
    if [[ ! -f $WINEPREFIX/system.reg ]]; then
        DISPLAY='' "$wine" wineboot --init >/dev/null 2>&1 {lock}>&-
        while [[ ! -f $WINEPREFIX/system.reg ]]; do sleep 0.2; done # written some time after the last program has ended
    fi
    exec {lock}>&-
fi
exec "${with_display[@]}" "$wine" "$@"
