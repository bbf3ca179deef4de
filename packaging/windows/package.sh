#!/usr/bin/env bash
# package.sh: builds the two Windows packages on Debian and says where they are: in build/windows-package,
#   velmora-VERSION-windows-x64.zip        to unpack anywhere
#   velmora-VERSION-windows-x64-setup.exe  an installer for one user, without administrator rights
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
source scripts/setup.sh
source scripts/windows.sh

need_packages "${windows_build_packages[@]}" nsis zip
date_the_build windows-package
build_windows windows-package

built=build/windows-package
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$built/CMakeCache.txt")
name=velmora-$version
rm -rf "$built/stage" "$built"/velmora-*.{zip,exe}
stage=$built/stage/$name
mkdir -p "$stage/licences"

# Out of the folder that the programs start from goes what they load; the rest of Qt stays.
cp "$built"/bin/{velmora.exe,velmora-cli.exe,velmora-cli-image.exe,velmora-cli-mp3.exe} "$stage"
for library in Qt6Core Qt6Gui Qt6Network Qt6Widgets libgcc_s_seh-1 libstdc++-6 libwinpthread-1; do
    cp "$built/bin/$library.dll" "$stage"
done
for plugin in platforms/qwindows styles/qwindowsvistastyle imageformats/q{gif,ico,jpeg,tiff,webp}; do
    install -D "$built/bin/$plugin.dll" "$stage/$plugin.dll"
done
find "$stage" -name '*.dll' -o -name '*.exe' | xargs x86_64-w64-mingw32-strip --strip-unneeded
cp packaging/windows/qt.conf "$stage"
# What a program needs and this folder lacks must be Windows' own: it then is not among what was put beside it for the build.
for binary in "$stage"/*.exe "$stage"/*.dll "$stage"/*/*.dll; do
    for needed in $(x86_64-w64-mingw32-objdump -p "$binary" | sed -n 's/^\s*DLL Name: //p'); do
        if [[ -e $built/bin/$needed && ! -e $stage/$needed ]]; then
            fail "${binary##*/} needs $needed, which is not in the package."
        fi
    done
done

# Texts for people on Windows have its line ends.
dos() { sed 's/$/\r/' "$1" >"$stage/$2"; }
dos LICENSE licences/velmora.txt
dos packaging/windows/licences.txt licences/README.txt
dos /usr/share/common-licenses/LGPL-3 licences/LGPL-3.txt
dos /usr/share/common-licenses/GPL-3 licences/GPL-3.txt
dos /usr/share/common-licenses/MPL-1.1 licences/MPL-1.1.txt
dos /usr/share/doc/qt6-base-dev/copyright licences/qt.txt
dos /usr/share/doc/qt6-image-formats-plugins/copyright licences/qt-image-formats.txt
dos /usr/share/doc/libuchardet-dev/copyright licences/uchardet.txt
dos /usr/share/doc/libarchive13/copyright licences/libarchive.txt
dos /usr/share/doc/libtag1-dev/copyright licences/taglib.txt
dos /usr/share/doc/zlib1g/copyright licences/zlib.txt
dos /usr/share/doc/libbz2-1.0/copyright licences/bzip2.txt
dos /usr/share/doc/liblzma5/copyright licences/xz.txt
dos /usr/share/doc/libzstd1/copyright licences/zstd.txt
dos /usr/share/doc/liblz4-1/copyright licences/lz4.txt
dos /usr/share/doc/gcc-mingw-w64-x86-64-posix-runtime/copyright licences/gcc-runtime.txt
dos /usr/share/doc/mingw-w64-x86-64-dev/copyright licences/mingw-w64.txt
dos packaging/windows/readme.txt README.txt

# Neither the clock and its zone nor rights and order in the folder may show in what is packed.
export TZ=UTC
chmod -R u=rwX,go=rX "$stage"
(cd "$built/stage" && find "$name" -exec touch --no-dereference --date="@$SOURCE_DATE_EPOCH" {} + &&
    find "$name" -type f | LC_ALL=C sort | zip -q -X -9 "../$name-windows-x64.zip" -@)
(cd "$stage" && find . -type f -printf '%P\n' | LC_ALL=C sort | while read -r file; do
    [[ $file == */* ]] && folder="\\${file%/*}" || folder=
    printf 'SetOutPath "$INSTDIR%s"\nFile "%s"\n' "${folder//\//\\}" "$PWD/$file"
done) >"$built/install-files.nsh"

# The uninstaller removes what was installed, file by file, and never a folder with something else in it.
(cd "$stage" && find . -type f -printf '%P\n' | LC_ALL=C sort | tr / '\\' | sed 's/.*/Delete "$INSTDIR\\&"/' &&
    find . -mindepth 1 -type d -printf '%P\n' | LC_ALL=C sort -r | tr / '\\' | sed 's/.*/RMDir "$INSTDIR\\&"/') \
    >"$built/uninstall-files.nsh"
quietly "Making the installer" makensis -V2 -DVERSION="$version" -DSTAGE="$PWD/$stage" \
    -DINSTALL_FILES="$PWD/$built/install-files.nsh" \
    -DUNINSTALL_FILES="$PWD/$built/uninstall-files.nsh" -DICON="$PWD/resources/icons/app.ico" \
    -DSIZE_KB="$(find "$stage" -type f -printf '%s\n' | awk '{sum += $1} END {print int(sum / 1024) + 1}')" \
    -DOUTPUT="$PWD/$built/$name-windows-x64-setup.exe" packaging/windows/installer.nsi
ls "$PWD/$built"/velmora-*.{zip,exe}
