#!/usr/bin/env bash
# Fetches three releases each of some packages for merge_beside_git.py into benchmarks/data/releases/, by npm.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")"
for release in eslint@7.0.0 eslint@7.20.0 eslint@8.0.0 jquery@3.0.0 jquery@3.3.0 jquery@3.6.0 lodash@4.0.0 lodash@4.10.0 lodash@4.17.0 \
    three@0.120.0 three@0.125.0 three@0.130.0 typescript@4.0.2 typescript@4.1.2 typescript@4.2.2 webpack@5.10.0 webpack@5.40.0 webpack@5.75.0; do
    folder=data/releases/${release%@*}/${release#*@}
    [[ -d $folder ]] && continue
    mkdir -p "$folder"
    archive=$(cd "$folder" && npm pack --silent "$release")
    tar -xzf "$folder/$archive" -C "$folder"
    rm "$folder/$archive"
    echo "$release"
done
