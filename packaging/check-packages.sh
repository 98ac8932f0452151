#!/usr/bin/env bash
# Makes the packages and does with them what their users do; makes them again elsewhere and compares.
#   packaging/check-packages.sh [BUILD-FOLDER]
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
build=$(realpath -m "${1:-$top/build/package}")
debian=$top/packaging/debian
again=$(mktemp -d)
trap 'rm -rf "$again"' EXIT

step() {
    printf '== %s (%d s)\n' "$1" "$SECONDS"
}

step "packages"
"$top/packaging/build-packages.sh" "$build"
packages=("$build"/debs/*.deb)
[ "${#packages[@]}" -eq 3 ] || { echo "${#packages[@]} packages instead of three"; exit 1; }
version=$(dpkg-parsechangelog -l "$debian/changelog" -S Version)
library=kestrelsetUI/libkestrel-settingui.so.${version%-*}
for package in "${packages[@]}"; do
    [ "$(dpkg-deb -f "$package" Version)" = "$version" ] ||
        { echo "$package is not of version $version, as the changelog says"; exit 1; }
done

step "lintian"
root=()
[ "$(id -u)" -ne 0 ] || root=(--allow-root)
lintian "${root[@]}" --fail-on error,warning "${packages[@]}"

step "desktop entry and manual pages"
desktop-file-validate "$top/scanhost/kestrel-scan.desktop"
for page in "$top"/scanhost/*.[1-8] "$top"/simulator/*.[1-8]; do
    complaints=$(LC_ALL=C.UTF-8 MANROFFSEQ='' MANWIDTH=80 man --warnings -E UTF-8 -l -Tutf8 -Z "$page" 2>&1 >/dev/null)
    [ -z "$complaints" ] || { echo "$complaints"; exit 1; }
done

step "binary interface"
dpkg-gensymbols -c4 -plibkestrel-settingui1 "-v$version" "-e$build/$library" \
    "-I$debian/libkestrel-settingui1/symbols" -O"$build/symbols"
"$top/packaging/abi/dump.sh" "$build/$library" "$build/interface.abi"
for release in "$top"/packaging/abi/*.abi; do
    abidiff --no-added-syms "$release" "$build/interface.abi"
done

step "install, use and purge"
"$top/packaging/try-packages.sh" "$build/debs"

step "again, elsewhere"
mkdir -p "$again/in/another/folder"
tar -C "$top" --exclude=./.git --exclude=./build --exclude='./build-*' --exclude=./out -cf - . |
    tar -C "$again/in/another/folder" -xmf -
(umask 002 && TZ=Asia/Shanghai "$again/in/another/folder/packaging/build-packages.sh" "$again/made")
cmp "$build/$library" "$again/made/$library"
for package in "${packages[@]}"; do
    cmp "$package" "$again/made/debs/$(basename "$package")"
done
step "same bytes"
