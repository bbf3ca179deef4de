#!/usr/bin/env bash
# check.sh ZIP SETUP: tries both packages of package.sh under Wine, in a Windows made for this and removed afterwards. Unpacks the
# archive and starts its programs; installs, starts, updates and removes with the installer; fails when any of it fails or
# something is left behind.
set -euo pipefail
(($# == 2)) || { echo "usage: check.sh ZIP SETUP" >&2; exit 2; }
zip=$(realpath "$1")
setup=$(realpath "$2")
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
source scripts/setup.sh
source scripts/windows.sh
need_packages "${windows_run_packages[@]}" unzip

work=$(mktemp -d /var/tmp/velmora-check.XXXXXX)
export WINEPREFIX=$work/wine
trap 'stop_wine; rm -rf "$work"' EXIT
wine() { packaging/windows/under-wine.sh "$@" </dev/null | tr -d '\r'; }
# registry KEY: what is in the registry below a key of the current user; nothing when there is none.
registry() { wine reg query "HKCU\\$1" /s 2>/dev/null | grep -v '^reg:' || true; }
expect() {
    [[ "$2" == "$3" ]] || fail "$1:" "expected: $3" "got:      $2"
    say "ok: $1"
}
# has WHAT TEXT PART: fails unless TEXT contains PART.
has() {
    [[ "$2" == *"$3"* ]] || fail "$1:" "expected in it: $3" "got: $2"
    say "ok: $1"
}
say "Making a Windows"
start_wine "$WINEPREFIX"
c=$WINEPREFIX/dosdevices/c:
printf 'one\r\ntwo\r\n' >"$c/left.txt"
printf 'one\r\nTWO\r\n' >"$c/right.txt"

# open_window FOLDER: starts velmora of FOLDER in a true window and returns once it has compared two files.
open_window() {
    local tenth
    rm -f "$c/report.html"
    packaging/windows/under-wine.sh --desktop "$1/velmora.exe" --lang zh --report 'C:\report.html' 'C:\left.txt' \
        'C:\right.txt' </dev/null >/dev/null 2>&1 &
    window=$!
    for ((tenth = 0; tenth < 600; ++tenth)); do
        [[ -s $c/report.html ]] && return
        sleep 0.1
    done
    fail "The window of $1 has not compared within a minute."
}

close_window() {
    wine taskkill /f /im velmora.exe >/dev/null || true
    wait "$window" || true
}

# starts WHAT FOLDER: the programs of FOLDER answer, compare on the command line and in a window.
starts() {
    local what=$1 folder=$2
    expect "$what: velmora-cli tells its version" "$(wine "$folder/velmora-cli.exe" --version)" "velmora-cli 1.0.0"
    expect "$what: velmora tells its version" "$(wine "$folder/velmora.exe" --version)" "Velmora 1.0.0"
    has "$what: velmora-cli compares" "$(wine "$folder/velmora-cli.exe" text 'C:\left.txt' 'C:\right.txt' || true)" "2 diffs"
    open_window "$folder"
    expect "$what: velmora compares in a window" "$(grep -c TWO "$c/report.html")" 1
    close_window
}

mkdir "$work/unpacked folder"
unzip -q "$zip" -d "$work/unpacked folder"
starts "archive" "$(echo "$work"/unpacked\ folder/velmora-*)"

# A search path that is longer than any string of an installer, and names a variable.
path="%USERPROFILE%\\bin;$(printf 'C:\\a folder of %03d\\with tools;' {1..100})C:\\last"
set_search_path() { wine reg add 'HKCU\Environment' /v Path /t REG_EXPAND_SZ /d "$1" /f >/dev/null; }
set_search_path "$path"
search_path() { registry Environment | sed -n 's/^ *Path *REG_EXPAND_SZ *//p'; }
expect "a long search path is set" "$(search_path)" "$path"

before=$(registry 'Software\Classes'; find "$c" -iname '*velmora*' | sort)
wine "$setup" /S
expect "the search path stays when nobody asks" "$(search_path)" "$path"
expect "no entries in Explorer's menu when nobody asks" "$(registry 'Software\Classes' | grep -c 'VelmoraAs')" 0
wine "$setup" /S /EXPLORER /PATH
installed=$(echo "$c"/users/*/AppData/Local/Programs/Velmora)
menu=$(echo "$c"/users/*/AppData/Roaming/Microsoft/Windows/Start\ Menu/Programs)
native="C:\\$(tr / '\\' <<<"${installed#"$c"/}")"
[[ -f $installed/velmora.exe ]] || fail "The installer has not installed."
[[ -f $menu/Velmora.lnk ]] || fail "No entry in the start menu."
say "ok: installs for one user, with an entry in the start menu"
has "uninstaller is known" "$(registry 'Software\Microsoft\Windows\CurrentVersion\Uninstall\Velmora')" 'uninstall.exe" /S'
has "session files belong to the program" "$(registry 'Software\Classes\Velmora.Session')" 'velmora.exe" "%1"'
has "workspaces belong to the program" "$(registry 'Software\Classes\Velmora.Workspace')" 'velmora.exe" --workspace "%1"'
starts "installed" "$installed"
expect "the folder is behind the search path" "$(search_path)" "$path;$native"
# Wine passes over a long one, so that its programs are found by a short one only.
set_search_path "C:\\tools;$native"
has "velmora-cli is on the PATH" "$(wine cmd /c velmora-cli --version)" "velmora-cli 1.0.0"
set_search_path "$path;$native"
verbs() { registry 'Software\Classes' | grep -A3 'VelmoraAs\(Left\|Right\)'; }
has "Explorer's menu has the entries" "$(verbs)" "velmora.exe\" --as-right \"%1\""
entries=$(verbs)

# What only an older version had goes, what a person put there stays.
touch "$installed/mine.txt"
rm "$installed/velmora-cli.exe"
wine "$setup" /S
[[ -f $installed/velmora-cli.exe && -f $installed/mine.txt ]] || fail "An update does not bring back what it needs."
say "ok: an update brings back what it needs"
rm "$installed/mine.txt"
expect "an update keeps the entries in Explorer's menu" "$(verbs)" "$entries"
expect "an update keeps the search path" "$(search_path)" "$path;$native"

# Refuses while the program is in use; "_?=" keeps the uninstaller from going on in a copy of itself, so that its status is seen.
open_window "$installed"
wine "$installed/uninstall.exe" /S "_?=$native" && status=0 || status=$?
expect "does not remove a program in use" "$status $(ls "$installed/velmora.exe")" "3 $installed/velmora.exe"
close_window

# The program's own entries in Explorer's menu go along; those of another copy do not.
verb='HKCU\Software\Classes\*\shell'
wine reg add "$verb\\VelmoraAsLeft" /v Icon /d "$native\\velmora.exe,0" /f >/dev/null
wine reg add "$verb\\VelmoraAsRight" /v Icon /d 'D:\elsewhere\velmora.exe,0' /f >/dev/null
wine "$installed/uninstall.exe" /S
for ((tenth = 0; tenth < 300; ++tenth)); do
    [[ -d $installed ]] || break
    sleep 0.1
done
expect "another copy's entry in Explorer's menu stays" "$(registry 'Software\Classes\*\shell' | grep -c 'VelmoraAs[A-Z][a-z]*$')" 1
expect "no entry stays in the menu of folders" "$(registry 'Software\Classes\Directory' | grep -c Velmora)" 0
# Keys that hold the entries of all programs stay, empty here.
for class in '*' Directory; do
    wine reg delete "HKCU\\Software\\Classes\\$class" /f >/dev/null
done
expect "nothing is left behind" "$(registry 'Software\Classes'; find "$c" -iname '*velmora*' | sort)" "$before"
expect "the search path is as it was" "$(search_path)" "$path"
expect "the uninstaller is forgotten" "$(registry 'Software\Microsoft\Windows\CurrentVersion\Uninstall\Velmora')" ""
