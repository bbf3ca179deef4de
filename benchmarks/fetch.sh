#!/usr/bin/env bash
# Fetches real pairs for text.py into benchmarks/data/: the same file from two releases of a package, by the registries' own
# clients. Needs npm, and a Debian system for the changelog.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
data=$PWD/data
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# npm_pair NAME PACKAGE OLD NEW FILE: FILE of two releases of an npm package.
npm_pair() {
    local name=$1 package=$2 old=$3 new=$4 file=$5 side version archive
    mkdir -p "$data/$name"
    for side in left right; do
        version=$([[ $side == left ]] && echo "$old" || echo "$new")
        archive=$(cd "$work" && npm pack --silent "$package@$version")
        tar -xzf "$work/$archive" -C "$work" "package/$file"
        mv "$work/package/$file" "$data/$name/$side.txt"
    done
    echo "$name: $file of $package $old and $new"
}

# changelog_pair NAME PACKAGE: the changelog of a Debian package, and the same without its newest tenth.
changelog_pair() {
    local name=$1 package=$2 lines
    mkdir -p "$data/$name"
    (cd "$work" && apt-get -q=2 download "$package")
    dpkg-deb --fsys-tarfile "$work/$package"_*.deb |
        tar -xO "./usr/share/doc/$package/changelog.Debian.gz" | gzip -dc > "$data/$name/right.txt"
    lines=$(wc -l < "$data/$name/right.txt")
    awk -v first=$((lines / 10)) 'begun || (NR > first && /^[^ ]/) { begun = 1; print }' \
        "$data/$name/right.txt" > "$data/$name/left.txt"
    echo "$name: changelog of $package, $lines lines"
}

npm_pair underscore underscore 1.13.1 1.13.6 underscore.js
npm_pair mime-db mime-db 1.52.0 1.54.0 db.json
npm_pair jquery jquery 3.6.0 3.7.1 dist/jquery.js
npm_pair lodash lodash 4.17.15 4.17.21 lodash.js
npm_pair three three 0.150.0 0.152.0 build/three.cjs
npm_pair tsc typescript 5.3.3 5.4.5 lib/tsc.js
npm_pair typescript typescript 5.3.3 5.4.5 lib/typescript.js
npm_pair typescript-far typescript 4.9.5 5.4.5 lib/typescript.js
changelog_pair changelog libc-bin
