#!/usr/bin/env bash
# stage.sh PREFIX FOLDER: copies what Windows programs in FOLDER need to start beside them: the libraries and plugins that were
# put into PREFIX, and the runtime libraries of the cross compiler.
set -euo pipefail
(($# == 2)) || { echo "usage: stage.sh PREFIX FOLDER" >&2; exit 2; }
prefix=$1
folder=$2
compiler=x86_64-w64-mingw32-g++-posix

cp -u "$prefix"/bin/*.dll "$folder"
for kind in platforms styles imageformats tls; do
    mkdir -p "$folder/$kind"
    cp -u "$prefix/plugins/$kind"/*.dll "$folder/$kind"
done
for library in libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll; do
    cp -u "$("$compiler" -print-file-name="$library")" "$folder"
done
